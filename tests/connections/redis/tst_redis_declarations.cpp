// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/redis_declarations_test.h"

using namespace Velk;

namespace {

void loseAnswers(const std::vector<RedisWrite>& writes)
{
    for (const RedisWrite& write : writes) {
        if (write.unanswered)
            write.unanswered();
    }
}

} // namespace

class TestRedisDeclarations : public RedisDeclarationsTest
{
    Q_OBJECT

private Q_SLOTS:
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
        const std::vector<RedisWrite> removal = m_declarations->write();
        m_declarations->declare({{"Angle"}, {}, {}});
        refuse(removal);
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
        const auto sizes = [](const std::vector<RedisWrite>& writes) {
            QStringList texts;
            for (const QByteArrayList& command : writes.at(0).commands)
                texts << QString("%1 %2").arg(QString::fromUtf8(command.first())).arg(command.size());
            return texts;
        };

        m_declarations->declare(names);
        QCOMPARE(sizes(m_declarations->write()), (QStringList{"SADD 1002", "SADD 3"}));
        m_declarations->declare({});
        QCOMPARE(sizes(m_declarations->write()), (QStringList{"SREM 1002", "SREM 3", "DEL 1001", "DEL 2"}));
    }

    void whatIsNotAnsweredIsRepeatedAtOnce()
    {
        m_declarations->declare({{"Angle", "Speed"}, {}, {}});
        m_declarations->write();
        m_declarations->declare({{"Speed"}, {"Bumper"}, {}});
        m_declarations->setRealTimeSupported(true);
        loseAnswers(m_declarations->write());
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
        const std::vector<RedisWrite> removal = m_declarations->write();
        RedisWrite lostValue;
        m_declarations->addListing(&lostValue, KeyKind::Data, "Angle");
        loseAnswers(removal);
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
        loseAnswers(m_declarations->write());

        m_declarations->declare({{"Angle"}, {}, {}});
        m_declarations->repeatAll();

        QCOMPARE(written(), QByteArrayList{"SADD mem:{arm1}:data Angle"});
    }

    void allIsListedAgainOnANewConnection()
    {
        m_declarations->declare({{"Angle"}, {"Bumper"}, {}});
        m_declarations->setRealTimeSupported(false);
        const std::vector<RedisWrite> write = m_declarations->write();
        RedisWrite other;
        m_declarations->addListing(&other, KeyKind::Event, "Other");

        m_declarations->repeatAll();

        QCOMPARE(written(), text(write));
        RedisWrite otherAgain;
        m_declarations->addListing(&otherAgain, KeyKind::Event, "Other");
        QCOMPARE(text(otherAgain), QByteArrayList{"SADD mem:{arm1}:event Other"});
    }

    void removalsEndTogetherWithTheFirstError()
    {
        QStringList ends;
        m_declarations->remove({"Angle"});
        m_declarations->declare({{"Speed"}, {}, {}});
        const std::vector<RedisWrite> writes = m_declarations->write([&ends](const QString& error) { ends << error; });
        QCOMPARE(int(writes.size()), 4); // of three kinds, and a list
        QVERIFY(!writes.back().done);

        writes.at(0).done({});
        writes.at(1).done("refused");
        QCOMPARE(ends, QStringList());
        writes.at(2).done("refused, too");

        QCOMPARE(ends, QStringList("refused"));
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
        const std::vector<RedisWrite> write = m_declarations->write();

        m_declarations->clear();
        m_declarations->setRealTimeSupported(true);
        m_declarations->declare({{"Angle"}, {}, {}});

        QCOMPARE(written(), text(write));
    }
};

QTEST_GUILESS_MAIN(TestRedisDeclarations)
#include "tst_redis_declarations.moc"
