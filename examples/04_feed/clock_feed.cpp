// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

// A robot of our own that velk and velk-watch open by URL: a clock, as a plugin.
//
//   MEMORYKEYMODEL_CONNECTIONS=FOLDER/OF/THE/PLUGIN velk watch --all --robot clock:

#include <connections/embedded/embedded_link.h>
#include <connections/embedded/loop_feed.h>
#include <connections/link/connection_factory.h>

#include <QObject>
#include <QTime>

using namespace Velk;

class ClockFeed : public LoopFeed
{
public:
    ClockFeed()
        : LoopFeed(std::chrono::milliseconds(100))
    {}
    QString url() const override { return QStringLiteral("clock:"); }

protected:
    // On the feed's thread, every 100 ms; the first step comes before the link is connected.
    void step() override
    {
        const QTime now = QTime::currentTime();
        memory()->setData(QStringLiteral("Clock/Second"), now.second());
        memory()->declareEvent(QStringLiteral("Clock/Minute"));
        if (now.minute() != m_minute)
            memory()->raiseEvent(QStringLiteral("Clock/Minute"), now.minute());
        m_minute = now.minute();
    }

private:
    int m_minute = -1;
};

class ClockConnection : public QObject, public ConnectionFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID MemoryKeyModel_ConnectionFactory_iid)
    Q_INTERFACES(Velk::ConnectionFactory)

public:
    QList<UrlScheme> schemes() const override
    {
        return {{QStringLiteral("clock"), QStringLiteral("clock:"), QStringLiteral("the time of day")}};
    }
    std::unique_ptr<RobotLink> createLink(const QString&, QString*) const override
    {
        return std::make_unique<EmbeddedLink>(std::make_shared<ClockFeed>());
    }
};

#include "clock_feed.moc"
