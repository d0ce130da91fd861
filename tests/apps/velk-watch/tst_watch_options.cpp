// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/watch_options.h>

#include <QTest>

using namespace Velk;

namespace {

WatchOptions parse(const QString& words)
{
    return WatchOptions(QStringList{QStringLiteral("velk-watch")} + words.split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

} // namespace

class TestWatchOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commandLines_data()
    {
        QTest::addColumn<QString>("words");
        QTest::addColumn<int>("request");
        QTest::addColumn<QString>("robot");
        QTest::addColumn<QString>("watch");
        const QString none;
        QTest::newRow("nothing") << none << int(WatchOptions::Run) << none << none;
        QTest::newRow("robot and keys") << QStringLiteral("--robot sim: --watch A B C") << int(WatchOptions::Run)
                                        << QStringLiteral("sim:") << QStringLiteral("A B C");
        QTest::newRow("keys first") << QStringLiteral("--watch A B --robot sim:") << int(WatchOptions::Run)
                                    << QStringLiteral("sim:") << QStringLiteral("A B");
        QTest::newRow("--watch again") << QStringLiteral("-w A -w B -w A") << int(WatchOptions::Run) << none
                                       << QStringLiteral("A B");
        QTest::newRow("help") << QStringLiteral("--help") << int(WatchOptions::Help) << none << none;
        QTest::newRow("version") << QStringLiteral("-v") << int(WatchOptions::Version) << none << none;
        QTest::newRow("an unknown option") << QStringLiteral("--nonsense") << int(WatchOptions::Error) << none << none;
        QTest::newRow("a key without --watch")
            << QStringLiteral("A") << int(WatchOptions::Error) << none << QStringLiteral("A");
        QTest::newRow("a robot that is missing")
            << QStringLiteral("--robot") << int(WatchOptions::Error) << none << none;
    }

    void commandLines()
    {
        QFETCH(QString, words);

        const WatchOptions options = parse(words);

        QTEST(int(options.request()), "request");
        QTEST(options.robot(), "robot");
        QTEST(options.watch().join(QLatin1Char(' ')), "watch");
        QCOMPARE(options.errorText().isEmpty(), options.request() != WatchOptions::Error);
    }

    void theHelpNamesTheRobots() { QVERIFY(WatchOptions::helpText().contains(QStringLiteral("sim:"))); }

    void withoutADisplayTheMessageHasTheCommandForTheSame_data()
    {
        QTest::addColumn<QString>("words");
        QTest::addColumn<QString>("command");
        QTest::newRow("nothing named") << QString() << QStringLiteral("velk watch --robot sim: '*'");
        QTest::newRow("robot and keys") << QStringLiteral("--robot sim:?seed=7 --watch Arm/Position it's")
                                        << QStringLiteral("velk watch --robot 'sim:?seed=7' Arm/Position 'it'\\''s'");
    }

    void withoutADisplayTheMessageHasTheCommandForTheSame()
    {
        QFETCH(QString, words);
        QFETCH(QString, command);

        const QString text = parse(words).noDisplayText();

        QVERIFY2(text.contains(command), qPrintable(text));
    }
};

QTEST_APPLESS_MAIN(TestWatchOptions)
#include "tst_watch_options.moc"
