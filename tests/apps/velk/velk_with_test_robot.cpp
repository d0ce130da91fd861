// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <apps/velk/src/velk.h>
#include <connections/embedded/embedded_link.h>
#include <connections/embedded/robot_memory.h>

#include <QCoreApplication>
#include <QFutureInterface>
#include <QPointer>
#include <QSet>
#include <QSocketNotifier>
#include <QTimer>
#include <QUrl>
#include <QUrlQuery>

#include <csignal>
#include <functional>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

// velk on robots under the test's hand, each a scheme of its own:
//
//   test:[?keys=N][&no-real-time][&out-of-reach][&queue=N]  with further keys Extra/1…, sampling 200 ms and more only,
//                     not to be reached at first, with so short a queue. SIGUSR1 takes it out of reach; SIGUSR2
//                     brings it back, with a new key Foot/Position, and raises Bumper/Front.
//   mute:             connects, and never lists its keys
//   refusing:         gives up when it is opened
//   tardy:            finishes its newest lists first, and answers after the last list that it samples in real time

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
            link->feed().outOfReach();
            return;
        }
        link->feed().inReach();
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
        link->setBufferCapacity(query.queryItemValue(QStringLiteral("queue")).toInt());
    if (query.hasQueryItem(QStringLiteral("out-of-reach")))
        link->feed().outOfReach();
    obeySignals(link.get());
    return link;
}

// A memory service whose lists finish late or never.
class SlowMemoryInterface : public MemoryInterface
{
public:
    SlowMemoryInterface(bool isMute, std::function<void()> answered)
        : m_isMute(isMute)
        , m_answered(std::move(answered))
    {
        connect(&m_gatherTimer, &QTimer::timeout, this, [this] {
            QMap<QString, QMap<double, QVariant>> batch;
            for (const QString& name : std::as_const(m_watchedNames))
                batch[name].insert(++m_time, 42);
            emit dataGathered(batch);
        });
    }

    QFuture<QStringList> getDataList() override { return openList({QStringLiteral("Base/Odometer")}); }
    QFuture<QStringList> getEventList() override { return openList({}); }
    QFuture<QStringList> getMicroEventList() override { return openList({}); }
    void watchKey(const QString& name, int) override { m_watchedNames.insert(name); }
    void unwatchKey(const QString& name) override { m_watchedNames.remove(name); }
    void unwatchAll() override { m_watchedNames.clear(); }
    void startWatcher(int gatherPeriod, int) override { m_gatherTimer.start(gatherPeriod); }
    void stopWatcher() override { m_gatherTimer.stop(); }
    void setGatherPeriod(int period) override { m_gatherTimer.setInterval(period); }
    void setSamplingPeriod(int) override {}

    void isRealTimeSupported(QObject* receiver, const char* member) override
    {
        m_questions.append({receiver, member});
        if (m_areListsFinished)
            answer();
    }

private:
    struct Question
    {
        QPointer<QObject> receiver;
        QByteArray member;
    };
    struct OpenList
    {
        QFutureInterface<QStringList> future;
        QStringList names;
    };

    QFuture<QStringList> openList(const QStringList& names)
    {
        m_lists.append({QFutureInterface<QStringList>(), names});
        m_lists.last().future.reportStarted();
        // Three lists for the displayed key set's catalogue, and three for velk's.
        if (m_lists.size() == 6 && !m_isMute)
            QTimer::singleShot(0, this, &SlowMemoryInterface::finishNewestLists);
        return m_lists.last().future.future();
    }

    void finishNewestLists()
    {
        for (int i = 0; i < 3; ++i) {
            OpenList list = m_lists.takeLast();
            list.future.reportResult(list.names);
            list.future.reportFinished();
        }
        m_areListsFinished = m_lists.isEmpty();
        // With a pause: velk has all the time to do something too early.
        QTimer::singleShot(300, this,
                           m_areListsFinished ? &SlowMemoryInterface::answer : &SlowMemoryInterface::finishNewestLists);
    }

    void answer()
    {
        while (!m_questions.isEmpty()) {
            const Question question = m_questions.takeLast();
            if (question.receiver)
                QMetaObject::invokeMethod(question.receiver, question.member.constData(), Qt::QueuedConnection,
                                          Q_ARG(bool, true));
        }
        m_answered();
    }

    const bool m_isMute;
    const std::function<void()> m_answered;
    bool m_areListsFinished = false;
    double m_time = 0.0;
    QList<OpenList> m_lists;
    QList<Question> m_questions;
    QSet<QString> m_watchedNames;
    QTimer m_gatherTimer;
};

// A robot that connects and is mute or tardy, or that refuses.
class BadLink : public RobotLink
{
public:
    explicit BadLink(const QString& url)
        : m_url(url)
    {}
    ~BadLink() override { shutDown(); }
    QString url() const override { return m_url; }

protected:
    void startConnecting() override { QTimer::singleShot(0, this, &BadLink::answer); }
    void stopConnecting() override {}

private:
    void answer()
    {
        if (m_url == QStringLiteral("refusing:"))
            giveUp(QStringLiteral("Refused"), QStringLiteral("The robot does not let you in."));
        else
            establish(boost::shared_ptr<MemoryInterface>(
                new SlowMemoryInterface(m_url == QStringLiteral("mute:"), [this] { setRealTimeSupport(true); })));
    }

    const QString m_url;
};

std::unique_ptr<RobotLink> createLink(const QString& text, QString* error)
{
    const QUrl url(text);
    if (url.scheme() == QStringLiteral("test"))
        return testLink(QUrlQuery(url));
    if (QStringList{QStringLiteral("mute:"), QStringLiteral("refusing:"), QStringLiteral("tardy:")}.contains(text))
        return std::make_unique<BadLink>(text);
    *error = QStringLiteral("No such test robot: %1").arg(text);
    return nullptr;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return Velk::runVelk(argc, argv, createLink);
}
