// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/redis_declarations_test.h"

using namespace Velk;

namespace {

// Of the data key Angle and the event key Bumper: keys of the same names that nothing was written to.
const QByteArrayList removalsOfOtherKinds = {"DEL mem:{arm1}:e:Angle",           "DEL mem:{arm1}:m:Angle",
                                             "DEL mem:{arm1}:m:Bumper",          "DEL mem:{arm1}:v:Bumper",
                                             "SREM mem:{arm1}:data Bumper",      "SREM mem:{arm1}:event Angle",
                                             "SREM mem:{arm1}:microevent Angle", "SREM mem:{arm1}:microevent Bumper"};

QByteArrayList sorted(QByteArrayList list)
{
    std::sort(list.begin(), list.end());
    return list;
}

using Change = void (*)(RedisDeclarations*);

} // namespace

Q_DECLARE_METATYPE(Change)

class TestRedisRefusedDeclarations : public RedisDeclarationsTest
{
    Q_OBJECT

private Q_SLOTS:
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
        const std::vector<RedisWrite> write = m_declarations->write();
        QVERIFY(!write.empty());

        refuse(write);

        QVERIFY(waitUntilDue());
        QCOMPARE(written(), text(write));
    }

    void aNameThatIsDeclaredDuringThePauseIsNotRemoved()
    {
        m_declarations->declare({{"Angle", "Speed"}, {}, {}});
        m_declarations->write();
        m_declarations->declare({});
        refuseNext();

        m_declarations->declare({{"Angle"}, {}, {}});

        QVERIFY(waitUntilDue());
        QCOMPARE(written(), (QByteArrayList{"SREM mem:{arm1}:data Speed", "DEL mem:{arm1}:v:Speed",
                                            "SADD mem:{arm1}:data Angle"}));
    }

    void aKeyThatIsWrittenWithItsRefusedRemovalStays()
    {
        m_declarations->remove({"Angle", "Bumper"});
        const std::vector<RedisWrite> removal = m_declarations->write();
        RedisWrite value;
        RedisWrite occurrence;
        m_declarations->addListing(&value, KeyKind::Data, "Angle");
        m_declarations->addListing(&occurrence, KeyKind::Event, "Bumper");

        refuse(removal);

        QVERIFY(waitUntilDue());
        QCOMPARE(sorted(written()), removalsOfOtherKinds);
    }

    void aKeyThatIsWrittenDuringThePauseStays()
    {
        m_declarations->remove({"Angle", "Bumper"});
        refuseNext();
        RedisWrite value;
        RedisWrite occurrence;
        m_declarations->addListing(&value, KeyKind::Data, "Angle");
        m_declarations->addListing(&occurrence, KeyKind::Event, "Bumper");

        QCOMPARE(text(value), QByteArrayList{"SADD mem:{arm1}:data Angle"});
        QCOMPARE(text(occurrence), QByteArrayList{"SADD mem:{arm1}:event Bumper"});
        QVERIFY(waitUntilDue());
        QCOMPARE(sorted(written()), removalsOfOtherKinds);
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

    void aRemovalDuringThePauseIsWrittenAtOnce()
    {
        m_declarations->declare({{"Goes"}, {}, {}});
        m_declarations->write();
        m_declarations->remove({"Forbidden"});
        refuseNext();
        QVERIFY(!m_declarations->hasUntried());

        m_declarations->remove({"Angle"});
        QCOMPARE(sorted(m_declarations->removedData()), QStringList("Angle"));
        QCOMPARE(written().mid(0, 2), (QByteArrayList{"SREM mem:{arm1}:data Angle", "DEL mem:{arm1}:v:Angle"}));
        m_declarations->declare({});
        QCOMPARE(written(), (QByteArrayList{"SREM mem:{arm1}:data Goes", "DEL mem:{arm1}:v:Goes"}));
        QVERIFY(!m_declarations->hasRemovals());
        QCOMPARE(written(), QByteArrayList());

        QVERIFY(waitUntilDue());
        QVERIFY(m_declarations->hasRemovals());
        QCOMPARE(written().mid(0, 2), (QByteArrayList{"SREM mem:{arm1}:data Forbidden", "DEL mem:{arm1}:v:Forbidden"}));
    }

    void aDeclarationDuringThePauseIsWrittenAtOnce()
    {
        m_declarations->declare({{"Angle"}, {}, {}});
        m_declarations->setRealTimeSupported(true);
        refuseNext();

        m_declarations->declare({{"Angle", "Speed"}, {"Bumper"}, {}});
        QVERIFY(m_declarations->hasUntried());
        QCOMPARE(written(), (QByteArrayList{"SADD mem:{arm1}:data Speed", "SADD mem:{arm1}:event Bumper"}));
        QVERIFY(!m_declarations->hasUntried());
        m_declarations->setRealTimeSupported(false);
        QCOMPARE(written(), QByteArrayList{"HSET mem:{arm1}:meta realtime 0"});

        QVERIFY(waitUntilDue());
        QCOMPARE(written(), QByteArrayList{"SADD mem:{arm1}:data Angle"});
    }

    void eachCanBeRefusedWithoutTheOthers()
    {
        m_declarations->declare({{"Goes", "Forbidden"}, {"Bumper"}, {}});
        m_declarations->write();
        m_declarations->declare({{"Angle"}, {}, {"Touch"}});
        m_declarations->setRealTimeSupported(true);

        const std::vector<RedisWrite> writes = m_declarations->write();
        QCOMPARE(int(writes.size()), 5); // two removals, two lists, and real-time support
        writes.front().refused();

        QVERIFY(waitUntilDue());
        const std::vector<RedisWrite> again = m_declarations->write();
        QCOMPARE(sorted(text(again)), (QByteArrayList{"DEL mem:{arm1}:v:Forbidden", "DEL mem:{arm1}:v:Goes",
                                                      "SREM mem:{arm1}:data Forbidden", "SREM mem:{arm1}:data Goes"}));
        QCOMPARE(int(again.size()), 2); // one for each name: the other one may be the cause
    }

    void aNewConnectionEndsThePause()
    {
        m_declarations->declare({{"Angle"}, {}, {}});
        m_declarations->write();
        m_declarations->remove({"Angle"});
        const std::vector<RedisWrite> removal = m_declarations->write();
        refuse(removal);
        QVERIFY(m_declarations->isPausing());

        m_declarations->repeatAll();

        QVERIFY(!m_declarations->isPausing());
        QCOMPARE(written(), text(removal));
    }

    void clearForgetsWhatWasRefused()
    {
        m_declarations->remove({"Angle"});
        refuseNext();
        QVERIFY(m_declarations->isPausing());

        m_declarations->clear();

        QVERIFY(!m_declarations->isPausing());
        QCOMPARE(written(), QByteArrayList());
    }

    void clearForgetsARemovalThatIsRefusedLater()
    {
        m_declarations->remove({"Angle"});
        const std::vector<RedisWrite> removal = m_declarations->write();

        m_declarations->clear();
        refuse(removal);

        QCOMPARE(sorted(m_declarations->removedData()), QStringList());
    }

private:
    /// Has the next write() refused.
    void refuseNext() { refuse(m_declarations->write()); }
};

QTEST_GUILESS_MAIN(TestRedisRefusedDeclarations)
#include "tst_redis_refused_declarations.moc"
