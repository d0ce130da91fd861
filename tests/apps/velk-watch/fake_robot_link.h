#ifndef TESTS_APPS_VELK_WATCH_FAKE_ROBOT_LINK_H
#define TESTS_APPS_VELK_WATCH_FAKE_ROBOT_LINK_H

#include <connections/link/robot_link.h>

#include <support/fake_robot.h>

#include <QRegularExpression>

namespace Velk {

/// A link under the test's hand, to a robot whose memory service is under it, too.
class FakeRobotLink : public RobotLink
{
public:
    FakeRobotLink()
        : memory(boost::make_shared<FakeMemoryInterface>(&log))
    {}
    /// The models are children: they go while the log is still there.
    ~FakeRobotLink() override { qDeleteAll(findChildren<QObject*>(QString(), Qt::FindDirectChildrenOnly)); }

    boost::shared_ptr<MemoryInterface> memoryInterface() override
    {
        return m_state == Connected ? memory : boost::shared_ptr<FakeMemoryInterface>();
    }
    QString url() const override { return QStringLiteral("fake:"); }
    State state() const override { return m_state; }
    void open() override { change(Connecting); }
    void close() override { change(Disconnected); }
    SampleLosses losses() const override { return {}; }
    SampleLosses losses(const QString&) const override { return {}; }

    void establish() { change(Connected); }
    void lose() { change(Lost); }

    /// What the memory service was asked since the last call, without what the lists of a catalogue ask.
    QStringList takeLog()
    {
        QStringList lines;
        lines.swap(log);
        return lines.filter(QRegularExpression(QStringLiteral("^(?!get|isReal)")));
    }

    QStringList log;
    boost::shared_ptr<FakeMemoryInterface> memory;

private:
    void change(State state)
    {
        const State former = m_state;
        if (state == former)
            return;
        m_state = state;
        emit stateChanged(state);
        if (state == Connected)
            emit connectionEstablished();
        else if (former == Connected && state == Lost)
            emit connectionLost();
        else if (former == Connected)
            emit disconnected();
    }

    State m_state = Disconnected;
};

} // namespace Velk

#endif
