// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/network/back_off.h>

#include <QTest>

using Velk::BackOff;

class TestBackOff : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachPauseIsTwiceAsLongAsTheOneBeforeUpToALimit_data()
    {
        QTest::addColumn<int>("attempt");
        QTest::addColumn<int>("expectedMs");
        QTest::newRow("first") << 1 << 250;
        QTest::newRow("second") << 2 << 500;
        QTest::newRow("fifth") << 5 << 4000;
        QTest::newRow("the longest") << 6 << 8000;
        QTest::newRow("it stays the longest") << 7 << 8000;
        QTest::newRow("no overflow") << 1000000 << 8000;
        QTest::newRow("no attempt counts as the first") << 0 << 250;
    }
    void eachPauseIsTwiceAsLongAsTheOneBeforeUpToALimit()
    {
        QFETCH(int, attempt);
        QFETCH(int, expectedMs);

        QCOMPARE(BackOff::pauseMs(attempt), expectedMs);
    }

    void theJitterIsAQuarterAtMost()
    {
        for (int run = 0; run < 200; ++run) {
            BackOff backOff;
            for (int attempt = 1; attempt <= 8; ++attempt) {
                const int pauseMs = backOff.nextPauseMs();
                const int meanMs = BackOff::pauseMs(attempt);
                QVERIFY2(pauseMs >= meanMs - meanMs / 4 && pauseMs <= meanMs + meanMs / 4, QByteArray::number(pauseMs));
            }
        }
    }

    void clientsDoNotAllPauseEquallyLong()
    {
        QSet<int> pauses;
        for (int client = 0; client < 100; ++client)
            pauses.insert(BackOff().nextPauseMs());

        QVERIFY(pauses.size() > 10);
    }

    void afterAResetThePauseIsShortAgain()
    {
        BackOff backOff;
        for (int attempt = 0; attempt < 6; ++attempt)
            backOff.nextPauseMs();

        backOff.reset();

        QVERIFY(backOff.nextPauseMs() <= 250 + 250 / 4);
    }
};

QTEST_GUILESS_MAIN(TestBackOff)
#include "tst_back_off.moc"
