// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/display_check.h>

#include <QTest>

using namespace Velk;

class TestDisplayCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWindowCanBeShown_data()
    {
        QTest::addColumn<QStringList>("variables");
        QTest::addColumn<bool>("hasDisplay");
        const auto none = QStringList();
        const QString x11 = QStringLiteral("DISPLAY=:0");
        const QString wayland = QStringLiteral("WAYLAND_DISPLAY=wayland-0");
        QTest::newRow("nothing set") << none << false;
        QTest::newRow("set, and empty") << QStringList{QStringLiteral("DISPLAY=")} << false;
        QTest::newRow("X11") << QStringList{x11} << true;
        QTest::newRow("Wayland") << QStringList{wayland} << true;
        QTest::newRow("offscreen") << QStringList{QStringLiteral("QT_QPA_PLATFORM=offscreen")} << true;
        QTest::newRow("xcb without its display")
            << QStringList{QStringLiteral("QT_QPA_PLATFORM=xcb"), wayland} << false;
        QTest::newRow("xcb with its display") << QStringList{QStringLiteral("QT_QPA_PLATFORM=xcb"), x11} << true;
        QTest::newRow("Wayland asked for on X11")
            << QStringList{QStringLiteral("QT_QPA_PLATFORM=wayland"), x11} << false;
    }

    void aWindowCanBeShown()
    {
        QFETCH(QStringList, variables);
        QProcessEnvironment environment;
        for (const QString& variable : variables)
            environment.insert(variable.section(QLatin1Char('='), 0, 0), variable.section(QLatin1Char('='), 1));

        QTEST(Velk::hasDisplay(environment), "hasDisplay");
    }
};

QTEST_APPLESS_MAIN(TestDisplayCheck)
#include "tst_display_check.moc"
