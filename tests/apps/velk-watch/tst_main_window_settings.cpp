// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/main_window.h>

#include "support/fake_robot_link.h"
#include "window_fixture.h"

#include <apps/velk-watch/src/watch_settings.h>
#include <connections/embedded/embedded_link.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>

#include <QApplication>
#include <QSpinBox>
#include <QTest>

using namespace Velk;

class TestMainWindowSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void theNextRunRestoresTheSettings()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);
        f.watch(wrist);
        f.window->watchModel()->setColor(wrist, QColor(1, 2, 3));
        f.window->watchModel()->setShown(wrist, false);
        f.find<QSpinBox>("period")->setValue(300);
        f.window->resize(1000, 640);
        f.window->close();

        WatchSettings settings(f.settings.fileName());
        MainWindow next(&settings);
        next.show();
        auto link = std::make_unique<EmbeddedLink>(f.memory);
        next.openRobot(std::move(link));

        QTRY_COMPARE(next.watchModel()->count(), 2);
        QCOMPARE(next.watchModel()->color(wrist), QColor(1, 2, 3));
        QVERIFY(!next.watchModel()->isShown(wrist));
        QVERIFY(next.watchModel()->isShown(elbow));
        QCOMPARE(next.size(), QSize(1000, 640));
        QTRY_COMPARE(next.session()->displayedKeys()->samplingPeriod(), 300);
        QCOMPARE(settings.recentRobots(), QStringList{QStringLiteral("embedded:")});
    }

    void keysThatHaveNoRowYetAreSaved()
    {
        WindowFixture f;
        auto* const link = new FakeRobotLink;
        f.window->openRobot(std::unique_ptr<RobotLink>(link));
        f.window->session()->watchByName(elbow);
        link->establish(); // its lists never come: the displayed key set takes no further keys
        f.window->watchModel()->setColor(wrist, QColor(1, 2, 3));
        f.window->session()->watchByName(wrist);
        f.window->session()->unwatch({MemoryKey(elbow, QString(), UnknownNature)});
        QCOMPARE(f.watched(), QStringLiteral("Arm/Elbow/Position UNKNOWN"));

        f.window->close();

        QCOMPARE(f.settings.watchedKeys(), QList<WatchedKey>({{wrist, QColor(1, 2, 3), true}}));
    }

    void keysOfTheCommandLineReplaceThoseOfTheSettings()
    {
        WindowFixture f;
        f.settings.setWatchedKeys({{elbow, {}, true}});

        f.window->setWatchedNames({wrist});
        f.connectRobot();

        QTRY_COMPARE(f.watched(), QStringLiteral("Arm/Wrist/Position DATA"));
    }

    void themesAreAppliedAndRemembered()
    {
        WindowFixture f;

        f.action("theme-high-contrast")->trigger();

        QCOMPARE(QApplication::palette().color(QPalette::Window), QColor(Qt::black));
        f.window->close();
        QCOMPARE(f.settings.theme(), ColorTheme::HighContrast);
        f.window->setTheme(ColorTheme::Desktop);
    }
};

QTEST_MAIN(TestMainWindowSettings)
#include "tst_main_window_settings.moc"
