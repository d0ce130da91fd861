// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_CONTRACT_EMBEDDED_SUBJECT_H
#define TESTS_CONNECTIONS_CONTRACT_EMBEDDED_SUBJECT_H

#include "contract_subject.h"

#include <connections/embedded/embedded_link.h>
#include <connections/embedded/robot_memory.h>

#include <QPointer>

#include <memory>
#include <utility>
#include <vector>

namespace Velk {

/// A robot memory in the process. The first link is to the given feed; further ones are to its memory.
class EmbeddedSubject : public ContractSubject
{
public:
    explicit EmbeddedSubject(std::shared_ptr<RobotFeed> firstFeed = std::make_shared<RobotFeed>())
        : m_firstFeed(std::move(firstFeed))
        , m_memory(m_firstFeed->memory())
        , m_isRealTimeSupported(m_firstFeed->isRealTimeSupported())
    {}

    std::unique_ptr<RobotLink> createLink() override
    {
        std::shared_ptr<RobotFeed> feed = std::exchange(m_firstFeed, nullptr);
        auto link = std::make_unique<EmbeddedLink>(feed ? std::move(feed) : std::make_shared<RobotFeed>(m_memory));
        m_links.emplace_back(link.get());
        return link;
    }

    void setData(const QString& name, const QVariant& value) override { m_memory->setData(name, value); }
    void raiseEvent(const QString& name, const QVariant& value) override { m_memory->raiseEvent(name, value); }
    void raiseMicroEvent(const QString& name, const QVariant& value) override
    {
        m_memory->raiseMicroEvent(name, value);
    }
    void removeKey(const QString& name) override { m_memory->removeKey(name); }
    bool isRealTimeSupported() const override { return m_isRealTimeSupported; }

    void loseConnection() override { forEachFeed(&RobotFeed::outOfReach); }
    void restoreConnection() override { forEachFeed(&RobotFeed::inReach); }

private:
    void forEachFeed(void (RobotFeed::*report)())
    {
        for (const QPointer<EmbeddedLink>& link : m_links) {
            if (link)
                (link->feed().*report)();
        }
    }

    std::shared_ptr<RobotFeed> m_firstFeed;
    const std::shared_ptr<RobotMemory> m_memory;
    const bool m_isRealTimeSupported;
    std::vector<QPointer<EmbeddedLink>> m_links;
};

} // namespace Velk

#endif
