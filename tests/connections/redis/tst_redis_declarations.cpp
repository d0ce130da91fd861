// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/src/redis_declarations.h>

#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace Velk;

namespace {

constexpr int patienceMs = 60000;

// Of the data key Angle and the event key Bumper: keys of the same names that nothing was written to.
const QByteArrayList removalsOfOtherKinds = {"SREM mem:{arm1}:data Bumper",
                                             "DEL mem:{arm1}:v:Bumper",
                                             "SREM mem:{arm1}:event Angle",
                                             "DEL mem:{arm1}:e:Angle",
                                             "SREM mem:{arm1}:microevent Angle Bumper",
                                             "DEL mem:{arm1}:m:Angle mem:{arm1}:m:Bumper"};

/// "SADD mem:{arm1}:data Angle Speed": the commands of a write, each with its names sorted.
QByteArrayList text(const RedisWrite& write)
{
    QByteArrayList commands;
    for (QByteArrayList command : write.commands) {
        // The names come after the set of SADD and SREM.
        const QByteArray verb = command.first();
        std::sort(command.begin() + (verb == "HSET" ? command.size() : verb == "DEL" ? 1 : 2), command.end());
        commands << command.join(' ');
    }
    return commands;
}

QStringList sorted(const QSet<QString>& names)
{
    QStringList list = names.values();
    list.sort();
    return list;
}

using Change = void (*)(RedisDeclarations*);

} // namespace

Q_DECLARE_METATYPE(Change)

// What the server answers is what the test calls: nothing, refused(), or unanswered() and repeatAll().
class TestRedisDeclarations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_declarations = std::make_unique<RedisDeclarations>(RedisLayout("arm1")); }

    void nothingIsWrittenAtFirst()
    {
        QCOMPARE(written(), QByteArrayList());
        QVERIFY(!m_declarations->isPausing());
    }

    void namesAreListedOnceByTheirKind()
    {
        m_declarations->declare({{"Angle", "Speed"}, {"Bumper"}, {"Touch"}});

        QCOMPARE(written(), (QByteArrayList{"SADD mem:{arm1}:data Angle Speed", "SADD mem:{arm1}:event Bumper",
                                            "SADD mem:{arm1}:microevent Touch"}));
        QCOMPARE(written(), QByteArrayList());
        RedisWrite value;
        m_declarations->addListing(&value, KeyKind::Data, "Angle");
        QCOMPARE(text(value), QByteArrayList());
        QCOMPARE(m_declarations->kindOf("Touch"), KeyKind::MicroEvent);
        QCOMPARE(m_declarations->kindOf("Other"), KeyKind::Data);
    }

    void namesThatAreDeclaredNoLongerAreRemovedFirst()
    {
        m_declarations->declare({{"Angle", "Speed"}, {}, {}});
        m_declarations->write();

        const RedisDeclarations::Changes changes = m_declarations->declare({{"Speed", "Height"}, {}, {}});

        QCOMPARE(sorted(changes.gone), QStringList("Angle"));
        QCOMPARE(sorted(changes.moved), QStringList());
        QCOMPARE(sorted(m_declarations->removedData()), QStringList("Angle"));
        QCOMPARE(written(), (QByteArrayList{"SREM mem:{arm1}:data Angle", "DEL mem:{arm1}:v:Angle",
                                            "SADD mem:{arm1}:data Height"}));
        QCOMPARE(sorted(m_declarations->removedData()), QStringList());
    }

    void aNameThatChangesItsKindLeavesTheFormerOne()
    {
        m_declarations->declare({{"Angle"}, {}, {}});
        m_declarations->write();

        const RedisDeclarations::Changes changes = m_declarations->declare({{}, {"Angle"}, {}});

        QCOMPARE(sorted(changes.gone), QStringList());
        QCOMPARE(sorted(changes.moved), QStringList("Angle"));
        QCOMPARE(written(), (QByteArrayList{"SREM mem:{arm1}:data Angle", "DEL mem:{arm1}:v:Angle",
                                            "SADD mem:{arm1}:event Angle"}));
        QCOMPARE(m_declarations->kindOf("Angle"), KeyKind::Event);
    }

    void removedNamesLeaveEveryKind()
    {
        m_declarations->declare({{"Angle", "Speed"}, {}, {}});
        m_declarations->write();

        m_declarations->remove({"Angle"});

        QCOMPARE(written(), (QByteArrayList{"SREM mem:{arm1}:data Angle", "DEL mem:{arm1}:v:Angle",
                                            "SREM mem:{arm1}:event Angle", "DEL mem:{arm1}:e:Angle",
                                            "SREM mem:{arm1}:microevent Angle", "DEL mem:{arm1}:m:Angle"}));
        QCOMPARE(written(), QByteArrayList());
    }

    void aNameThatIsDeclaredAgainIsNotRemoved()
    {
        m_declarations->declare({{"Angle"}, {}, {}});
        m_declarations->write();
        m_declarations->declare({});
        m_declarations->declare({{"Angle"}, {}, {}});
        QCOMPARE(written(), QByteArrayList());

        // While the answer to the removal is due.
        m_declarations->declare({});
        const RedisWrite removal = m_declarations->write();
        m_declarations->declare({{"Angle"}, {}, {}});
        removal.refused();
        QVERIFY(waitUntilDue());
        QCOMPARE(written(), QByteArrayList{"SADD mem:{arm1}:data Angle"});
    }

    void realTimeSupportIsWrittenOncePerChange()
    {
        m_declarations->setRealTimeSupported(true);
        QCOMPARE(written(), QByteArrayList{"HSET mem:{arm1}:meta realtime 1"});
        m_declarations->setRealTimeSupported(true);
        QCOMPARE(written(), QByteArrayList());
        m_declarations->setRealTimeSupported(false);
        QCOMPARE(written(), QByteArrayList{"HSET mem:{arm1}:meta realtime 0"});
    }

    void manyNamesAreWrittenInPortions()
    {
        KeyNames names;
        for (int i = 0; i < 1001; ++i)
            names.data << QString::number(i);
        const auto sizes = [](const RedisWrite& write) {
            QStringList texts;
            for (const QByteArrayList& command : write.commands)
                texts << QString("%1 %2").arg(QString::fromUtf8(command.first())).arg(command.size());
            return texts;
        };

        m_declarations->declare(names);
        QCOMPARE(sizes(m_declarations->write()), (QStringList{"SADD 1002", "SADD 3"}));
        m_declarations->declare({});
        QCOMPARE(sizes(m_declarations->write()), (QStringList{"SREM 1002", "SREM 3", "DEL 1001", "DEL 2"}));
    }

    void whatIsRefusedIsWrittenAgainAfterAPause_data()
    {
        QTest::addColumn<Change>("change");
        QTest::newRow("a declaration") << Change([](RedisDeclarations* declarations) {
            declarations->declare({{"Angle", "Speed"}, {"Bumper"}, {}});
        });
        QTest::newRow("a name that is declared no longer")
            << Change([](RedisDeclarations* declarations) { declarations->declare({}); });
        QTest::newRow("a removal") << Change([](RedisDeclarations* declarations) { declarations->remove({"Angle"}); });
        QTest::newRow("real-time support")
            << Change([](RedisDeclarations* declarations) { declarations->setRealTimeSupported(true); });
    }
    void whatIsRefusedIsWrittenAgainAfterAPause()
    {
        QFETCH(Change, change);
        m_declarations->declare({{"Angle"}, {}, {}});
        m_declarations->write();
        change(m_declarations.get());
        const RedisWrite write = m_declarations->write();
        QVERIFY(!write.commands.isEmpty());

        write.refused();

        QVERIFY(waitUntilDue());
        QCOMPARE(written(), text(write));
    }

    void aNameThatIsDeclaredDuringThePauseIsNotRemoved()
    {
        m_declarations->declare({{"Angle", "Speed"}, {}, {}});
        m_declarations->write();
        m_declarations->declare({});
        refuse();

        m_declarations->declare({{"Angle"}, {}, {}});

        QVERIFY(waitUntilDue());
        QCOMPARE(written(), (QByteArrayList{"SREM mem:{arm1}:data Speed", "DEL mem:{arm1}:v:Speed",
                                            "SADD mem:{arm1}:data Angle"}));
    }

    void aKeyThatIsWrittenWithItsRefusedRemovalStays()
    {
        m_declarations->remove({"Angle", "Bumper"});
        const RedisWrite removal = m_declarations->write();
        RedisWrite value;
        RedisWrite occurrence;
        m_declarations->addListing(&value, KeyKind::Data, "Angle");
        m_declarations->addListing(&occurrence, KeyKind::Event, "Bumper");

        removal.refused();

        QVERIFY(waitUntilDue());
        QCOMPARE(written(), removalsOfOtherKinds);
    }

    void aKeyThatIsWrittenDuringThePauseStays()
    {
        m_declarations->remove({"Angle", "Bumper"});
        refuse();
        RedisWrite value;
        RedisWrite occurrence;
        m_declarations->addListing(&value, KeyKind::Data, "Angle");
        m_declarations->addListing(&occurrence, KeyKind::Event, "Bumper");

        QCOMPARE(text(value), QByteArrayList{"SADD mem:{arm1}:data Angle"});
        QCOMPARE(text(occurrence), QByteArrayList{"SADD mem:{arm1}:event Bumper"});
        QVERIFY(waitUntilDue());
        QCOMPARE(written(), removalsOfOtherKinds);
    }

    void aRefusedListingIsRepeatedWithTheNextWriteOfTheKey()
    {
        RedisWrite first;
        m_declarations->addListing(&first, KeyKind::Event, "Bumper");
        first.refused();

        RedisWrite second;
        m_declarations->addListing(&second, KeyKind::Event, "Bumper");

        QCOMPARE(text(second), QByteArrayList{"SADD mem:{arm1}:event Bumper"});
        QVERIFY(!m_declarations->isPausing());
    }

    void whatIsNotAnsweredIsRepeatedAtOnce()
    {
        m_declarations->declare({{"Angle", "Speed"}, {}, {}});
        m_declarations->write();
        m_declarations->declare({{"Speed"}, {"Bumper"}, {}});
        m_declarations->setRealTimeSupported(true);
        m_declarations->write().unanswered();
        QVERIFY(!m_declarations->isPausing());

        m_declarations->repeatAll();

        QVERIFY(!m_declarations->isPausing());
        QCOMPARE(written(),
                 (QByteArrayList{"SREM mem:{arm1}:data Angle", "DEL mem:{arm1}:v:Angle", "SADD mem:{arm1}:data Speed",
                                 "SADD mem:{arm1}:event Bumper", "HSET mem:{arm1}:meta realtime 1"}));
    }

    void aRemovalWithoutAnAnswerIsRepeatedBeforeTheValueThatFollowedIt()
    {
        m_declarations->declare({{"Angle"}, {}, {}});
        m_declarations->write();
        m_declarations->declare({});
        const RedisWrite removal = m_declarations->write();
        RedisWrite lostValue;
        m_declarations->addListing(&lostValue, KeyKind::Data, "Angle");
        removal.unanswered();
        m_declarations->repeatAll();

        QCOMPARE(written(), (QByteArrayList{"SREM mem:{arm1}:data Angle", "DEL mem:{arm1}:v:Angle"}));
        RedisWrite value;
        m_declarations->addListing(&value, KeyKind::Data, "Angle");
        QCOMPARE(text(value), QByteArrayList{"SADD mem:{arm1}:data Angle"});
    }

    void aNameThatIsDeclaredAfterALossIsNotRemoved()
    {
        m_declarations->declare({{"Angle"}, {}, {}});
        m_declarations->write();
        m_declarations->declare({});
        m_declarations->write().unanswered();

        m_declarations->declare({{"Angle"}, {}, {}});
        m_declarations->repeatAll();

        QCOMPARE(written(), QByteArrayList{"SADD mem:{arm1}:data Angle"});
    }

    void allIsListedAgainOnANewConnection()
    {
        m_declarations->declare({{"Angle"}, {"Bumper"}, {}});
        m_declarations->setRealTimeSupported(false);
        const RedisWrite write = m_declarations->write();
        RedisWrite other;
        m_declarations->addListing(&other, KeyKind::Event, "Other");

        m_declarations->repeatAll();

        QCOMPARE(written(), text(write));
        RedisWrite otherAgain;
        m_declarations->addListing(&otherAgain, KeyKind::Event, "Other");
        QCOMPARE(text(otherAgain), QByteArrayList{"SADD mem:{arm1}:event Other"});
    }

    void aNewConnectionEndsThePause()
    {
        m_declarations->declare({{"Angle"}, {}, {}});
        m_declarations->write();
        m_declarations->remove({"Angle"});
        const RedisWrite removal = m_declarations->write();
        removal.refused();
        QVERIFY(m_declarations->isPausing());

        m_declarations->repeatAll();

        QVERIFY(!m_declarations->isPausing());
        QCOMPARE(written(), text(removal));
    }

    void clearForgetsWhatWasDeclared()
    {
        m_declarations->declare({{"Angle"}, {"Bumper"}, {}});
        m_declarations->setRealTimeSupported(true);
        m_declarations->remove({"Speed"});

        m_declarations->clear();

        QCOMPARE(sorted(m_declarations->removedData()), QStringList());
        QCOMPARE(written(), QByteArrayList());
        QCOMPARE(m_declarations->kindOf("Bumper"), KeyKind::Data);
    }

    void clearForgetsWhatTheServerHas()
    {
        m_declarations->declare({{"Angle"}, {}, {}});
        m_declarations->setRealTimeSupported(true);
        const RedisWrite write = m_declarations->write();

        m_declarations->clear();
        m_declarations->setRealTimeSupported(true);
        m_declarations->declare({{"Angle"}, {}, {}});

        QCOMPARE(written(), text(write));
    }

    void clearForgetsWhatWasRefused()
    {
        m_declarations->remove({"Angle"});
        refuse();
        QVERIFY(m_declarations->isPausing());

        m_declarations->clear();

        QVERIFY(!m_declarations->isPausing());
        QCOMPARE(written(), QByteArrayList());
    }

    void clearForgetsARemovalThatIsRefusedLater()
    {
        m_declarations->remove({"Angle"});
        const RedisWrite removal = m_declarations->write();

        m_declarations->clear();
        removal.refused();

        QCOMPARE(sorted(m_declarations->removedData()), QStringList());
    }

private:
    QByteArrayList written() { return text(m_declarations->write()); }
    /// Has the next write() refused.
    void refuse() { m_declarations->write().refused(); }
    /// Waits until the pause after a refusal is over.
    bool waitUntilDue()
    {
        QSignalSpy due(m_declarations.get(), &RedisDeclarations::due);
        return m_declarations->isPausing() && due.wait(patienceMs) && !m_declarations->isPausing();
    }

    std::unique_ptr<RedisDeclarations> m_declarations;
};

QTEST_GUILESS_MAIN(TestRedisDeclarations)
#include "tst_redis_declarations.moc"
