// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/memory/redis_sample_intake.h>

#include <QStringList>
#include <QTest>

using namespace Velk;

namespace {

SampleLimits limits(int samples, qint64 bytes = 1000)
{
    SampleLimits result;
    result.samples = samples;
    result.bytes = bytes;
    return result;
}

/// "1:a 2:b": time stamps and values of the key in the delivery.
QString text(const GatheredData& delivery, const QString& name)
{
    QStringList texts;
    const Samples samples = delivery.value(name);
    for (auto sample = samples.begin(); sample != samples.end(); ++sample)
        texts << QStringLiteral("%1:%2").arg(sample.key(), 0, 'g', 16).arg(sample.value().toString());
    return texts.join(' ');
}

} // namespace

class TestRedisSampleIntake : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void samplesAreDeliveredOnceByKey();
    void aSampleThatIsNotNewerMovesToAMicrosecondLater();
    void timeStampsAscendOverAReconnection();
    void theOldestSamplesOfTheKeyMakeRoomAndAreRecorded();
    void aKeyWithoutSamplesLosesTheNewOne();
    void theBytesOfAllKeysAreBounded();
    void anUnwatchedKeyMayOutliveTheIntake();

private:
    LossLedger m_ledger;
};

void TestRedisSampleIntake::samplesAreDeliveredOnceByKey()
{
    RedisSampleIntake intake(std::make_shared<RedisCarryOver>(&m_ledger));
    const std::vector<RedisWatchedKeyPtr> keys{intake.createKey("A"), intake.createKey("B"), intake.createKey("C")};
    intake.add(*keys[0], 1, "a", 1);
    intake.add(*keys[1], 1, "b", 1);
    intake.add(*keys[0], 2, "c", 1);

    const GatheredData delivery = RedisSampleIntake::take(keys);

    QCOMPARE(delivery.keys(), QStringList({"A", "B"}));
    QCOMPARE(text(delivery, "A"), QStringLiteral("1:a 2:c"));
    QCOMPARE(text(delivery, "B"), QStringLiteral("1:b"));
    QVERIFY(RedisSampleIntake::take(keys).isEmpty());
}

void TestRedisSampleIntake::aSampleThatIsNotNewerMovesToAMicrosecondLater()
{
    RedisSampleIntake intake(std::make_shared<RedisCarryOver>(&m_ledger));
    const RedisWatchedKeyPtr key = intake.createKey("A");

    intake.add(*key, 1000, "a", 1);
    intake.add(*key, 1000, "b", 1);
    intake.add(*key, 7, "c", 1);

    QCOMPARE(text(RedisSampleIntake::take({key}), "A"), QStringLiteral("1000:a 1000.000001:b 1000.000002:c"));
}

void TestRedisSampleIntake::timeStampsAscendOverAReconnection()
{
    const auto carryOver = std::make_shared<RedisCarryOver>(&m_ledger);
    RedisSampleIntake former(carryOver);
    former.add(*former.createKey("A"), 1000, "a", 1);

    RedisSampleIntake intake(carryOver);
    const RedisWatchedKeyPtr key = intake.createKey("A");
    intake.add(*key, 999, "b", 1);

    QCOMPARE(text(RedisSampleIntake::take({key}), "A"), QStringLiteral("1000.000001:b"));
}

void TestRedisSampleIntake::theOldestSamplesOfTheKeyMakeRoomAndAreRecorded()
{
    LossLedger ledger;
    RedisSampleIntake intake(std::make_shared<RedisCarryOver>(&ledger), limits(3));
    const RedisWatchedKeyPtr arm = intake.createKey("Arm");
    const RedisWatchedKeyPtr leg = intake.createKey("Leg");
    intake.add(*leg, 1, "leg", 1);
    QCOMPARE(intake.room(), 2);

    for (int i = 1; i <= 4; ++i)
        intake.add(*arm, i, i, 1);

    QCOMPARE(intake.room(), 0);
    const GatheredData delivery = RedisSampleIntake::take({arm, leg});
    QCOMPARE(text(delivery, "Arm"), QStringLiteral("3:3 4:4"));
    QCOMPARE(text(delivery, "Leg"), QStringLiteral("1:leg"));
    const LossSpan dropped = ledger.ofKey("Arm").span(LossCause::Dropped);
    QCOMPARE(dropped.count, 2);
    QCOMPARE(dropped.from, 1.0);
    QCOMPARE(dropped.to, 2.0);
    QCOMPARE(ledger.total().losses().dropped, 2);
    QCOMPARE(intake.room(), 3);
}

void TestRedisSampleIntake::aKeyWithoutSamplesLosesTheNewOne()
{
    LossLedger ledger;
    RedisSampleIntake intake(std::make_shared<RedisCarryOver>(&ledger), limits(1));
    const RedisWatchedKeyPtr arm = intake.createKey("Arm");
    const RedisWatchedKeyPtr leg = intake.createKey("Leg");
    intake.add(*arm, 1, "arm", 1);

    intake.add(*leg, 2, "leg", 1);

    QCOMPARE(RedisSampleIntake::take({arm, leg}).keys(), QStringList("Arm"));
    QCOMPARE(ledger.ofKey("Leg").span(LossCause::Dropped).from, 2.0);
    QCOMPARE(ledger.ofKey("Leg").losses().dropped, 1);
}

void TestRedisSampleIntake::theBytesOfAllKeysAreBounded()
{
    LossLedger ledger;
    RedisSampleIntake intake(std::make_shared<RedisCarryOver>(&ledger), limits(100, 10));
    const RedisWatchedKeyPtr arm = intake.createKey("Arm");
    const RedisWatchedKeyPtr leg = intake.createKey("Leg");
    intake.add(*leg, 1, "leg", 3);
    intake.add(*arm, 1, "a", 4);

    intake.add(*arm, 2, "larger", 7);
    intake.add(*arm, 3, "too large", 8);

    const GatheredData delivery = RedisSampleIntake::take({arm, leg});
    QCOMPARE(text(delivery, "Arm"), QStringLiteral("2:larger"));
    QCOMPARE(text(delivery, "Leg"), QStringLiteral("1:leg"));
    QCOMPARE(ledger.ofKey("Arm").losses().dropped, 2);
}

void TestRedisSampleIntake::anUnwatchedKeyMayOutliveTheIntake()
{
    RedisWatchedKeyPtr key;
    {
        RedisSampleIntake intake(std::make_shared<RedisCarryOver>(&m_ledger));
        key = intake.createKey("A");
        intake.add(*key, 1, "a", 1);
    }

    QCOMPARE(text(RedisSampleIntake::take({key}), "A"), QStringLiteral("1:a"));
}

QTEST_APPLESS_MAIN(TestRedisSampleIntake)
#include "tst_redis_sample_intake.moc"
