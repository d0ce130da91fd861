#include <apps/velk/src/velk.h>
#include <connections/embedded/embedded_link.h>
#include <connections/embedded/robot_memory.h>

#include <QCoreApplication>
#include <QFutureInterface>
#include <QSocketNotifier>
#include <QTimer>
#include <QUrl>
#include <QUrlQuery>

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

// velk on robots under the test's hand, each a scheme of its own:
//
//   test:[?keys=N][&no-real-time][&out-of-reach][&queue=N]  with further keys Extra/1…, sampling 200 ms and more only,
//                     not to be reached at first, with so short a queue. SIGUSR1 takes it out of reach; SIGUSR2
//                     brings it back, with a new key Foot/Position, and raises Bumper/Front.
//   mute:             connects, and never lists its keys
//   refusing:         gives up when it is opened

namespace {

using namespace Velk;

int signalPipe[2] = {-1, -1};

void onSignal(int signalNumber)
{
    const char byte = signalNumber == SIGUSR1 ? 'L' : 'R';
    if (::write(signalPipe[1], &byte, 1) != 1)
        ::_exit(126);
}

void obeySignals(EmbeddedLink* link)
{
    if (::pipe2(signalPipe, O_CLOEXEC) != 0)
        qFatal("The test robot cannot open a pipe.");
    auto* const notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, link);
    QObject::connect(notifier, &QSocketNotifier::activated, link, [link] {
        char byte = 0;
        if (::read(signalPipe[0], &byte, 1) != 1)
            return;
        if (byte == 'L') {
            link->loseConnection();
            return;
        }
        link->restoreConnection();
        link->memory()->setData(QStringLiteral("Foot/Position"), 7);
        link->memory()->raiseEvent(QStringLiteral("Bumper/Front"), true);
    });
    std::signal(SIGUSR1, onSignal);
    std::signal(SIGUSR2, onSignal);
}

std::unique_ptr<RobotLink> testLink(const QUrlQuery& query)
{
    const auto memory = std::make_shared<RobotMemory>();
    memory->setData(QStringLiteral("Arm/Elbow/Position"), 1.5);
    memory->setData(QStringLiteral("Arm/Wrist/Position"), -0.25);
    memory->setData(QStringLiteral("Base/Odometer"), 42);
    memory->setData(QStringLiteral("Speech/Text"), QStringLiteral("say \"a;b\"\nand \x1b[31mred"));
    memory->declareEvent(QStringLiteral("Bumper/Front"));
    memory->declareMicroEvent(QStringLiteral("Arm/LimitReached"));
    const int keys = query.queryItemValue(QStringLiteral("keys")).toInt();
    for (int i = 1; i <= keys; ++i)
        memory->setData(QStringLiteral("Extra/%1").arg(i), i);

    auto link = std::make_unique<EmbeddedLink>(memory);
    link->setRealTimeSupported(!query.hasQueryItem(QStringLiteral("no-real-time")));
    if (query.hasQueryItem(QStringLiteral("queue")))
        link->setQueueCapacity(query.queryItemValue(QStringLiteral("queue")).toInt());
    if (query.hasQueryItem(QStringLiteral("out-of-reach")))
        link->loseConnection();
    obeySignals(link.get());
    return link;
}

class MuteMemoryInterface : public MemoryInterface
{
public:
    QFuture<QStringList> getDataList() override { return unfinished(); }
    QFuture<QStringList> getEventList() override { return unfinished(); }
    QFuture<QStringList> getMicroEventList() override { return unfinished(); }
    void watchKey(const QString&, int) override {}
    void unwatchKey(const QString&) override {}
    void unwatchAll() override {}
    void startWatcher(int, int) override {}
    void stopWatcher() override {}
    void setGatherPeriod(int) override {}
    void setSamplingPeriod(int) override {}
    void isRealTimeSupported(QObject*, const char*) override {}

private:
    QFuture<QStringList> unfinished()
    {
        m_lists.append(QFutureInterface<QStringList>());
        m_lists.last().reportStarted();
        return m_lists.last().future();
    }

    QList<QFutureInterface<QStringList>> m_lists;
};

// A robot that connects and is mute, or that refuses.
class BadLink : public RobotLink
{
public:
    explicit BadLink(bool isRefusing)
        : m_isRefusing(isRefusing)
    {}
    QString url() const override { return m_isRefusing ? QStringLiteral("refusing:") : QStringLiteral("mute:"); }
    State state() const override { return m_state; }
    boost::shared_ptr<MemoryInterface> memoryInterface() override { return m_memory; }
    SampleLosses losses() const override { return {}; }
    SampleLosses losses(const QString&) const override { return {}; }

    void open() override
    {
        m_state = Connecting;
        emit stateChanged(m_state);
        QTimer::singleShot(0, this, &BadLink::answer);
    }
    void close() override { m_state = Disconnected; }

private:
    void answer()
    {
        m_state = m_isRefusing ? Disconnected : Connected;
        emit stateChanged(m_state);
        if (m_isRefusing) {
            emit failed(QStringLiteral("Refused"), QStringLiteral("The robot does not let you in."));
            return;
        }
        m_memory = boost::shared_ptr<MemoryInterface>(new MuteMemoryInterface);
        emit connectionEstablished();
    }

    const bool m_isRefusing;
    State m_state = Disconnected;
    boost::shared_ptr<MemoryInterface> m_memory;
};

std::unique_ptr<RobotLink> createLink(const QString& text, QString* error)
{
    const QUrl url(text);
    if (url.scheme() == QStringLiteral("test"))
        return testLink(QUrlQuery(url));
    if (url.scheme() == QStringLiteral("mute") || url.scheme() == QStringLiteral("refusing"))
        return std::make_unique<BadLink>(url.scheme() == QStringLiteral("refusing"));
    *error = QStringLiteral("No such test robot: %1").arg(text);
    return nullptr;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return Velk::runVelk(argc, argv, createLink);
}
