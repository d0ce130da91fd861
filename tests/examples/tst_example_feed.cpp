// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <apps/velk/velk_run.h>

#include <QTest>

#include <csignal>

class TestExampleFeed : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void velkListsItsScheme();
    void velkWatchesItsKeys();
    void velkDoesNotKnowItWithoutTheVariable();
};

void TestExampleFeed::velkListsItsScheme()
{
    VelkRun velk(velkProgram);
    velk.setVariable("MEMORYKEYMODEL_CONNECTIONS", FEED_FOLDER);

    QCOMPARE(velk.run({"robots"}), 0);

    QVERIFY2(velk.output().contains("clock:\n    the time of day\n"), qPrintable(velk.output()));
}

void TestExampleFeed::velkWatchesItsKeys()
{
    VelkRun velk(velkProgram);
    velk.setVariable("MEMORYKEYMODEL_CONNECTIONS", FEED_FOLDER);

    velk.start({"watch", "--robot", "clock:", "--all", "--period", "10"});
    QVERIFY2(velk.waitForOutput("Clock/Second\t\\d+\n"), qPrintable(velk.messages()));
    velk.sendSignal(SIGINT);

    QCOMPARE(velk.end(), 0);
}

void TestExampleFeed::velkDoesNotKnowItWithoutTheVariable()
{
    VelkRun velk(velkProgram);

    QVERIFY(velk.run({"keys", "--robot", "clock:"}) != 0);

    QVERIFY2(velk.messages().contains("“clock”"), qPrintable(velk.messages()));
}

QTEST_GUILESS_MAIN(TestExampleFeed)
#include "tst_example_feed.moc"
