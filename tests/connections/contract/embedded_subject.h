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

/// A robot memory in the process. The first link may be another one than the plain embedded link, which then brings its
/// memory; further links are plain ones to that memory.
class EmbeddedSubject : public ContractSubject
{
public:
    explicit EmbeddedSubject(std::unique_ptr<EmbeddedLink> firstLink = nullptr)
        : m_firstLink(std::move(firstLink))
        , m_memory(m_firstLink ? m_firstLink->memory() : std::make_shared<RobotMemory>())
        , m_isRealTimeSupported(!m_firstLink || m_firstLink->isRealTimeSupported())
    {}

    std::unique_ptr<RobotLink> createLink() override
    {
        auto link = m_firstLink ? std::move(m_firstLink) : std::make_unique<EmbeddedLink>(m_memory);
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

    void loseConnection() override
    {
        for (const QPointer<EmbeddedLink>& link : m_links) {
            if (link)
                link->loseConnection();
        }
    }
    void restoreConnection() override
    {
        for (const QPointer<EmbeddedLink>& link : m_links) {
            if (link)
                link->restoreConnection();
        }
    }

private:
    std::unique_ptr<EmbeddedLink> m_firstLink;
    const std::shared_ptr<RobotMemory> m_memory;
    const bool m_isRealTimeSupported;
    std::vector<QPointer<EmbeddedLink>> m_links;
};

} // namespace Velk

#endif
