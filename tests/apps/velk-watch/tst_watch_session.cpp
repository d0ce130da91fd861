#include <apps/velk-watch/src/watch_session.h>

#include "patient_try.h"
#include "support/fake_robot_link.h"

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <memorykeymodel/memory_key_list_model.h>

#include <QSignalSpy>

using namespace Velk;

namespace {

const QString a = QStringLiteral("A");
const QString b = QStringLiteral("B");
const QStringList startWatcher{QStringLiteral("startWatcher 1000 1000")};

QSet<MemoryKey> keys(const QStringList& names)
{
    QSet<MemoryKey> result;
    for (const QString& name : names)
        result.insert(MemoryKey(name, QString(), DataNature));
    return result;
}

// "A DATA, B UNKNOWN"
QString text(const QSet<MemoryKey>& set)
{
    QStringList lines;
    for (const MemoryKey& key : set)
        lines << key.name() + QLatin1Char(' ') + key.natureToString();
    lines.sort();
    return lines.join(QStringLiteral(", "));
}

// A session, its robot, and what happened.
struct Fixture
{
    Fixture()
    {
        auto robotLink = std::make_unique<FakeRobotLink>();
        link = robotLink.get();
        session = std::make_unique<WatchSession>(std::move(robotLink));
        catalogueReady = std::make_unique<QSignalSpy>(session.get(), &WatchSession::catalogueReady);
        failed = std::make_unique<QSignalSpy>(session.get(), &WatchSession::failed);
    }

    // Both catalogues of this connection, the model's own and the session's.
    void finishLists(const QStringList& data)
    {
        link->memory->finishLists(data, {}, {}, fetches);
        link->memory->finishLists(data, {}, {}, fetches + 1);
        fetches += 2;
        const int before = int(catalogueReady->count());
        QTRY_COMPARE(int(catalogueReady->count()), before + 1);
    }
    void connectWith(const QStringList& data)
    {
        link->establish();
        finishLists(data);
    }

    FakeRobotLink* link = nullptr;
    std::unique_ptr<WatchSession> session;
    std::unique_ptr<QSignalSpy> catalogueReady;
    std::unique_ptr<QSignalSpy> failed;
    int fetches = 0;
};

} // namespace

class TestWatchSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aConnectionBringsACatalogue()
    {
        Fixture f;

        f.connectWith({a, b});

        QCOMPARE(text(f.session->catalogue()->keys()), QStringLiteral("A DATA, B DATA"));
    }

    void watchingStartsTheWatcher()
    {
        Fixture f;
        f.connectWith({a});
        QCOMPARE(f.link->takeLog(), QStringList{QStringLiteral("unwatchAll")});
        // The model announces the rebuilt keys from its own catalogue, which may be the later of the two.
        QCoreApplication::processEvents();

        f.session->watch(keys({a}));

        QCOMPARE(f.link->takeLog(), QStringList({QStringLiteral("watchKey A 1000"), startWatcher.first()}));
        QVERIFY(f.session->isWatcherRunning());
    }

    void whatWasChosenBeforeTheConnectionIsWatchedWithIt()
    {
        Fixture f;
        f.session->watch(keys({a}));
        QCOMPARE(text(f.session->model()->keys()), QStringLiteral("A DATA"));
        QCOMPARE(f.failed->count(), 0);

        f.connectWith({a});

        QTRY_VERIFY(f.session->isWatcherRunning());
        QCOMPARE(f.link->takeLog(),
                 QStringList({QStringLiteral("unwatchAll"), QStringLiteral("watchKey A 100"), startWatcher.first()}));
    }

    void afterAReconnectionEverythingIsWatchedAgain()
    {
        Fixture f;
        f.session->watch(keys({a, b}));
        f.connectWith({a, b});
        QTRY_VERIFY(f.session->isWatcherRunning());
        f.link->takeLog();

        f.link->lose();
        QVERIFY(!f.session->isWatcherRunning());
        QCOMPARE(f.failed->count(), 1); // the loss itself
        f.link->takeLog();
        f.connectWith({a, b});

        QTRY_VERIFY(f.session->isWatcherRunning());
        QCOMPARE(text(f.session->model()->keys()), QStringLiteral("A DATA, B DATA"));
        QStringList log = f.link->takeLog();
        QCOMPARE(log.takeLast(), startWatcher.first());
        log.sort();
        QCOMPARE(log, QStringList({QStringLiteral("unwatchAll"), QStringLiteral("watchKey A 100"),
                                   QStringLiteral("watchKey B 100")}));
        QCOMPARE(f.failed->count(), 1);
    }

    void aWatcherThatTheUserStoppedStaysStopped()
    {
        Fixture f;
        f.session->watch(keys({a}));
        f.session->setWatcherWanted(false);
        f.connectWith({a});
        QTRY_VERIFY(!f.session->model()->displayedKeys().isEmpty());
        f.link->lose();
        f.connectWith({a});
        f.session->watch(keys({b}));

        QTRY_COMPARE(text(f.session->model()->keys()), QStringLiteral("A DATA, B DATA"));
        QVERIFY(!f.session->isWatcherRunning());
        QCOMPARE(f.link->memory->dataGatheredReceivers(), 0);
    }

    void aKeyThatIsChosenWhileTheKeysAreRebuiltIsNotLost()
    {
        Fixture f;
        f.session->watch(keys({a}));
        f.link->establish();

        f.session->watch(keys({b}));
        f.finishLists({a, b});

        QTRY_COMPARE(text(f.session->model()->keys()), QStringLiteral("A DATA, B DATA"));
        QTRY_VERIFY(f.session->isWatcherRunning());
        QVERIFY(f.link->takeLog().contains(QStringLiteral("watchKey B 1000")));
    }

    void aKeyThatIsDroppedWhileTheKeysAreRebuiltDoesNotComeBack()
    {
        Fixture f;
        f.session->watch(keys({a, b}));
        f.link->establish();

        f.session->unwatch(keys({b}));
        f.finishLists({a, b});

        QTRY_COMPARE(text(f.session->model()->keys()), QStringLiteral("A DATA"));
        QVERIFY(f.link->takeLog().contains(QStringLiteral("unwatchKey B")));
    }

    void changesThatAreMadeInTheModelItselfAreKeptToo()
    {
        Fixture f;
        f.session->watch(keys({a}));
        f.link->establish();

        f.session->model()->addKeys(keys({b}));
        f.session->model()->removeKeys(keys({a}));
        f.finishLists({a, b});

        QTRY_COMPARE(text(f.session->model()->keys()), QStringLiteral("B DATA"));
        QTRY_VERIFY(f.session->isWatcherRunning());
    }

    void aCatalogueThatComesAfterTheConnectionBrokeLosesNothing()
    {
        Fixture f;
        f.session->watch(keys({a}));
        f.link->establish();
        f.link->lose();
        f.session->watch(keys({b}));

        f.link->memory->finishLists({a, b}, {}, {}, 0);

        QTRY_COMPARE(text(f.session->model()->keys()), QStringLiteral("A DATA, B DATA"));
        QVERIFY(!f.session->isWatcherRunning());
    }

    void aTypedNameHasTheNatureThatTheRobotGivesIt()
    {
        Fixture f;
        f.connectWith({a});

        f.session->watchByName(a);

        QTRY_COMPARE(text(f.session->model()->keys()), QStringLiteral("A DATA"));
        QCOMPARE(text(f.session->catalogue()->keys(UnknownNature)), QString());
    }

    void aTypedNameThatTheRobotDoesNotListIsAUserKeyOfEveryCatalogue()
    {
        Fixture f;
        f.connectWith({a});
        f.session->watchByName(QStringLiteral("X"));
        QTRY_COMPARE(text(f.session->model()->keys()), QStringLiteral("X UNKNOWN"));
        QCOMPARE(text(f.session->catalogue()->keys(UnknownNature)), QStringLiteral("X UNKNOWN"));

        f.link->lose();
        f.connectWith({a});

        QCOMPARE(text(f.session->catalogue()->keys(UnknownNature)), QStringLiteral("X UNKNOWN"));
    }

    void anEmptyNameIsNoKey()
    {
        Fixture f;

        f.session->watchByName(QString());

        QCOMPARE(text(f.session->watchedKeys()), QString());
    }

    void withoutAMemoryServiceNothingRuns()
    {
        Fixture f;
        f.session->watch(keys({a}));
        f.link->memory.reset();

        f.link->establish();

        QVERIFY(!f.session->isWatcherRunning());
        QCOMPARE(f.failed->count(), 0);
    }

    void failuresAreHandedOn()
    {
        Fixture f;

        f.session->model()->startWatcher(false);

        QCOMPARE(f.failed->count(), 1);
        QCOMPARE(f.failed->at(0).at(0).toString(), QStringLiteral("Not connected to a robot"));
    }

    void aFailureThatRepeatsIsToldOnce()
    {
        Fixture f;
        const QString title = QStringLiteral("Not reached");

        emit f.link->failed(title, QStringLiteral("No answer."));
        emit f.link->failed(title, QStringLiteral("No answer."));
        QCOMPARE(f.failed->count(), 1);

        emit f.link->failed(title, QStringLiteral("Refused."));
        QCOMPARE(f.failed->count(), 2);
    }

    void theSameFailureIsNewsAfterAConnection()
    {
        Fixture f;
        emit f.link->failed(QStringLiteral("Lost"), QStringLiteral("Gone."));

        f.link->establish();
        emit f.link->failed(QStringLiteral("Lost"), QStringLiteral("Gone."));

        QCOMPARE(f.failed->count(), 2);
    }

    void closingTheRobotStopsTheWatcher()
    {
        Fixture f;
        f.session->watch(keys({a}));
        f.connectWith({a});
        QTRY_VERIFY(f.session->isWatcherRunning());

        f.link->close();

        QVERIFY(!f.session->isWatcherRunning());
        QCOMPARE(text(f.session->watchedKeys()), QStringLiteral("A DATA"));
    }
};

QTEST_MAIN(TestWatchSession)
#include "tst_watch_session.moc"
