// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_APPS_VELK_FAKE_WRITER_H
#define TESTS_APPS_VELK_FAKE_WRITER_H

#include <connections/link/robot_writer.h>

#include <QMap>
#include <QStringList>
#include <QVariant>

#include <optional>
#include <utility>
#include <vector>

namespace Velk {

/// A server under the test's hand: it logs what it is given, and answers when the test asks it to.
class FakeWriter : public RobotWriter
{
public:
    QString url() const override { return QStringLiteral("server:"); }
    bool isConnected() const override { return m_isConnected; }
    WriteLosses losses() const override { return lost; }
    qint64 openCount() const override { return m_openCount; }
    bool isIdle() const override { return m_openCount == 0 && areDeclarationsAnswered; }
    bool areDeclarationsWritten() const override
    {
        return m_isConnected && areDeclarationsAnswered && !areDeclarationsRefused;
    }
    void open() override {}
    void close() override {}
    void declare(const KeyNames&) override {}
    void setRealTimeSupported(bool) override {}
    void put(const QString& name, const QVariant& value, std::optional<double> timeStamp, Done done) override
    {
        log << "put " + name;
        dones.push_back(std::move(done));
        samples.insert(timeStamp.value_or(0.0), value);
        ++m_openCount;
    }
    void raise(const QString& name, const QVariant&, std::optional<double>, Done done) override
    {
        log << "raise " + name;
        dones.push_back(std::move(done));
        ++m_openCount;
        ++m_openOccurrences;
    }
    void remove(const QStringList&, Done) override {}

    void connectServer()
    {
        m_isConnected = true;
        emit connected();
    }
    void loseServer(const QString& reason)
    {
        m_isConnected = false;
        m_openCount -= m_openOccurrences;
        lost.unknown += std::exchange(m_openOccurrences, 0);
        emit connectionLost();
        emit failed("Server lost", reason);
    }
    void answer()
    {
        m_openCount = 0;
        m_openOccurrences = 0;
        areDeclarationsAnswered = true;
        emit idle();
    }

    QStringList log;
    QMap<double, QVariant> samples; // that were put
    std::vector<Done> dones;        // of what was put and raised
    WriteLosses lost;
    bool areDeclarationsAnswered = true;
    bool areDeclarationsRefused = false;

private:
    qint64 m_openCount = 0;
    qint64 m_openOccurrences = 0;
    bool m_isConnected = false;
};

} // namespace Velk

#endif
