// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

// Connects a robot of one's own: implements its link and its memory service, and shows a key's values.

#include <connections/link/robot_link.h>
#include <connections/link/unix_time.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <robotconnection/memory_interface.h>
#include <session/robot_session.h>

#include <QCoreApplication>
#include <QSet>
#include <QTimer>
#include <QtConcurrent>

#include <cstdio>

using namespace Velk;

// The memory service. This robot has one wheel, and counts its turns.
class WheelMemory : public MemoryInterface
{
public:
    WheelMemory() { connect(&m_gatherTimer, &QTimer::timeout, this, &WheelMemory::deliver); }

    // The names may take their time: the futures run beside the event loop.
    QFuture<QStringList> getDataList() override { return list({QStringLiteral("Wheel/Turns")}); }
    QFuture<QStringList> getEventList() override { return list({QStringLiteral("Wheel/Blocked")}); }
    QFuture<QStringList> getMicroEventList() override { return list({}); }

    void watchKey(const QString& name, int) override { m_watched.insert(name); }
    void unwatchKey(const QString& name) override { m_watched.remove(name); }
    void unwatchAll() override { m_watched.clear(); }
    void startWatcher(int gatherPeriod, int) override { m_gatherTimer.start(gatherPeriod); }
    void stopWatcher() override { m_gatherTimer.stop(); }
    void setGatherPeriod(int period) override { m_gatherTimer.setInterval(period); }
    void setSamplingPeriod(int) override {} // one sample a delivery, whatever was asked for

    void isRealTimeSupported(QObject* receiver, const char* member) override
    {
        QMetaObject::invokeMethod(receiver, member, Qt::QueuedConnection, Q_ARG(bool, false));
    }

private:
    static QFuture<QStringList> list(const QStringList& names)
    {
        return QtConcurrent::run([names] { return names; });
    }

    void deliver()
    {
        ++m_turns;
        GatheredData batch;
        if (m_watched.contains(QStringLiteral("Wheel/Turns")))
            batch[QStringLiteral("Wheel/Turns")][unixTime()] = m_turns;
        emit dataGathered(batch);
    }

    QSet<QString> m_watched;
    QTimer m_gatherTimer;
    int m_turns = 0;
};

// The connection. This robot is always there: nothing takes time, and nothing fails.
class WheelLink : public RobotLink
{
public:
    ~WheelLink() override { shutDown(); }
    QString url() const override { return QStringLiteral("wheel:"); }

protected:
    void startConnecting() override
    {
        const auto connect = [this] {
            establish(boost::shared_ptr<MemoryInterface>(new WheelMemory));
            setRealTimeSupport(false); // as the memory service answers
        };
        QMetaObject::invokeMethod(this, connect, Qt::QueuedConnection);
    }
    void stopConnecting() override {}
    void endService(MemoryInterface& service, Ending) override { service.stopWatcher(); }
};

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    RobotSession session(std::make_unique<WheelLink>());
    QObject::connect(session.displayedKeys(), &DisplayedMemoryKeyListModel::keysUpdated,
                     [](const QSet<DisplayedMemoryKey>& keys) {
                         for (const DisplayedMemoryKey& displayed : keys) {
                             if (displayed.valueHistory().isEmpty())
                                 continue; // its nature is known now, and no value yet
                             const int turns = displayed.valueHistory().last().toInt();
                             std::printf("%s %s: %d\n", qPrintable(displayed.key().natureToString()),
                                         qPrintable(displayed.key().name()), turns);
                             if (turns == 3)
                                 QCoreApplication::quit();
                         }
                     });
    session.watchByName(QStringLiteral("Wheel/Turns"));
    session.link()->open();
    return QCoreApplication::exec();
}
