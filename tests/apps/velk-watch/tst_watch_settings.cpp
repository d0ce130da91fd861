// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/watch_settings.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Velk;

class TestWatchSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void settingsAreKeptForTheNextRun()
    {
        QTemporaryDir folder;
        const QString fileName = folder.filePath(QStringLiteral("watch.ini"));
        const QList<WatchedKey> keys{{QStringLiteral("Arm/\"Elbow\";=%/ü"), QColor(0x12, 0x34, 0x56), false},
                                     {QStringLiteral("Battery/Charge"), QColor(), true}};
        {
            WatchSettings settings(fileName);
            settings.setGeometry("geometry");
            settings.setWindowState("state");
            settings.setSplitterState("splitter");
            settings.setTableState("table");
            settings.setRecentRobots({QStringLiteral("sim:?seed=1&keys=2")});
            settings.setWatchedKeys(keys);
            settings.setSamplingPeriod(250);
            settings.setTheme(ColorTheme::Dark);
            settings.setCatalogueTree(false);
            settings.setRecordingFolder(QStringLiteral("/data"));
            QVERIFY(settings.sync());
        }

        const WatchSettings settings(fileName);

        QCOMPARE(settings.geometry(), QByteArray("geometry"));
        QCOMPARE(settings.windowState(), QByteArray("state"));
        QCOMPARE(settings.splitterState(), QByteArray("splitter"));
        QCOMPARE(settings.tableState(), QByteArray("table"));
        QCOMPARE(settings.recentRobots(), QStringList{QStringLiteral("sim:?seed=1&keys=2")});
        QCOMPARE(settings.watchedKeys(), keys);
        QCOMPARE(settings.samplingPeriod(), 250);
        QCOMPARE(settings.theme(), ColorTheme::Dark);
        QCOMPARE(settings.isCatalogueTree(), false);
        QCOMPARE(settings.recordingFolder(), QStringLiteral("/data"));
    }

    void nothingIsRememberedAtFirst()
    {
        QTemporaryDir folder;

        const WatchSettings settings(folder.filePath(QStringLiteral("watch.ini")));

        QCOMPARE(settings.watchedKeys(), QList<WatchedKey>());
        QCOMPARE(settings.recentRobots(), QStringList());
        QCOMPARE(settings.samplingPeriod(), 0);
        QCOMPARE(settings.theme(), ColorTheme::Desktop);
        QCOMPARE(settings.isCatalogueTree(), true);
    }

    void aShorterListOfKeysLeavesNothingOfALongerOne()
    {
        QTemporaryDir folder;
        WatchSettings settings(folder.filePath(QStringLiteral("watch.ini")));
        settings.setWatchedKeys({{QStringLiteral("A"), {}, true}, {QStringLiteral("B"), {}, true}});

        settings.setWatchedKeys({{QStringLiteral("C"), {}, true}});

        QCOMPARE(settings.watchedKeys(), QList<WatchedKey>({{QStringLiteral("C"), {}, true}}));
        QVERIFY(settings.sync());
        QFile file(settings.fileName());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(!file.readAll().contains("name=B"));
    }

    void aDamagedFileCountsAsEmpty()
    {
        QTemporaryDir folder;
        const QString fileName = folder.filePath(QStringLiteral("watch.ini"));
        QFile file(fileName);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[watch]\nkeys\\1\\color=nonsense\nkeys\\size=3\nperiod=-7\n[window]\ntheme=plaid\n");
        file.close();

        const WatchSettings settings(fileName);

        QCOMPARE(settings.watchedKeys(), QList<WatchedKey>());
        QCOMPARE(settings.samplingPeriod(), 0);
        QCOMPARE(settings.theme(), ColorTheme::Desktop);
    }

    void aFileThatCannotBeWrittenIsReported()
    {
        WatchSettings settings(QStringLiteral("/proc/velk-watch/watch.ini"));
        settings.setSamplingPeriod(100);

        QVERIFY(!settings.sync());
    }
};

QTEST_APPLESS_MAIN(TestWatchSettings)
#include "tst_watch_settings.moc"
