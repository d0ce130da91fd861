// Connects a robot of one's own: implements the two classes of the contract for it, and shows a key's values.

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <robotconnection/connection_manager.h>
#include <robotconnection/memory_interface.h>

#include <QCoreApplication>
#include <QSet>
#include <QTimer>
#include <QtConcurrent>

#include <cstdio>

using namespace Velk;

// The memory service. This robot has one wheel, and its clock counts the turns.
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
    void setSamplingPeriod(int) override {} // one sample a delivery, whatever is asked for

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
        QMap<QString, QMap<double, QVariant>> batch;
        if (m_watched.contains(QStringLiteral("Wheel/Turns")))
            batch[QStringLiteral("Wheel/Turns")][m_turns * 1.0] = m_turns;
        emit dataGathered(batch);
    }

    QSet<QString> m_watched;
    QTimer m_gatherTimer;
    int m_turns = 0;
};

// The connection. It stands from open() on.
class WheelConnection : public ConnectionManager
{
public:
    boost::shared_ptr<MemoryInterface> memoryInterface() override { return m_memory; }
    bool isConnected() const override { return m_memory != nullptr; }

    void open()
    {
        m_memory = boost::shared_ptr<MemoryInterface>(new WheelMemory); // the new state first, then its signal
        emit connectionEstablished();
    }

private:
    boost::shared_ptr<MemoryInterface> m_memory;
};

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    WheelConnection robot;
    DisplayedMemoryKeyListModel model(&robot);
    QObject::connect(
        &model, &DisplayedMemoryKeyListModel::keysUpdated, &model, [&](const QSet<DisplayedMemoryKey>& keys) {
            if (model.keys().isEmpty()) { // the first one: the robot has listed its keys
                model.addKeys(
                    {MemoryKey(QStringLiteral("Wheel/Turns"), QStringLiteral("since the start"), DataNature)});
                return;
            }
            for (const DisplayedMemoryKey& displayed : keys) {
                const int turns = displayed.valueHistory().last().toInt();
                std::printf("%s %s: %d\n", qPrintable(displayed.key().natureToString()),
                            qPrintable(displayed.key().name()), turns);
                if (turns == 3)
                    QCoreApplication::quit();
            }
        });
    robot.open();
    return QCoreApplication::exec();
}
