// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_EMBEDDED_EMBEDDED_SESSION_H
#define TESTS_CONNECTIONS_EMBEDDED_EMBEDDED_SESSION_H

#include <connections/embedded/embedded_link.h>
#include <connections/embedded/robot_memory.h>
#include <robotconnection/memory_interface.h>

#include <QTest>

#include <memory>

namespace Velk {

constexpr int timeoutMs = 60000;
constexpr int hoursMs = 9999990;

const QString data = QStringLiteral("Data");
const QString otherData = QStringLiteral("Other");
const QString anEvent = QStringLiteral("Event");

using Batch = QMap<QString, QMap<double, QVariant>>;

/// A link to a robot memory, connected, and what it has delivered.
struct EmbeddedSession
{
    explicit EmbeddedSession(int bufferCapacity = 4096)
        : memory(std::make_shared<RobotMemory>())
        , link(std::make_unique<EmbeddedLink>(memory))
    {
        link->setBufferCapacity(bufferCapacity);
        link->open();
        isConnected = QTest::qWaitFor([this] { return link->isConnected(); }, timeoutMs);
        service = link->memoryInterface();
        QObject::connect(service.get(), &MemoryInterface::dataGathered, service.get(), [this](const Batch& batch) {
            ++batches;
            for (auto key = batch.begin(); key != batch.end(); ++key) {
                for (auto sample = key->begin(); sample != key->end(); ++sample) {
                    stamps[key.key()] << sample.key();
                    values[key.key()] << sample.value().toString();
                }
            }
        });
    }

    std::shared_ptr<RobotMemory> memory;
    std::unique_ptr<EmbeddedLink> link;
    bool isConnected = false;
    boost::shared_ptr<MemoryInterface> service;
    int batches = 0;
    QMap<QString, QList<double>> stamps;
    QMap<QString, QStringList> values;
};

} // namespace Velk

#endif
