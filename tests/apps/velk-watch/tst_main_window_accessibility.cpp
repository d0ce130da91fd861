// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/main_window.h>

#include "window_fixture.h"

#include <apps/velk-watch/src/plot_view.h>

#include <QApplication>
#include <QTest>

using namespace Velk;

class TestMainWindowAccessibility : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void everythingIsReachedByTab()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);
        QApplication::setActiveWindow(f.window.get());
        f.search()->setFocus();
        QStringList visited;
        for (int step = 0; step < 60; ++step) {
            QWidget* const focus = QApplication::focusWidget();
            QVERIFY(focus);
            if (!visited.contains(focus->objectName()))
                visited << focus->objectName();
            QTest::keyClick(focus, Qt::Key_Tab);
        }

        for (const char* name : {"search", "regularExpression", "natureDATA", "treeButton", "catalogueTree", "keyName",
                                 "robotUrl", "connectButton", "period", "watchTable", "follow", "plot"})
            QVERIFY2(visited.contains(QLatin1String(name)),
                     qPrintable(QLatin1String(name) + QStringLiteral(" not in ") + visited.join(QLatin1Char(' '))));
        QVERIFY(visited.indexOf(QStringLiteral("search")) < visited.indexOf(QStringLiteral("catalogueTree")));
        QVERIFY(visited.indexOf(QStringLiteral("watchTable")) < visited.indexOf(QStringLiteral("plot")));
    }

    void everythingThatTakesTheFocusHasAName()
    {
        WindowFixture f;

        QStringList nameless;
        const QList<QWidget*> widgets = f.window->findChildren<QWidget*>();
        for (const QWidget* widget : widgets) {
            const bool isPartOfAnother = widget->inherits("QComboBoxListView") ||
                                         widget->objectName().startsWith(QStringLiteral("qt_")) ||
                                         qobject_cast<QAbstractItemView*>(widget->parentWidget());
            if (!(widget->focusPolicy() & Qt::TabFocus) || isPartOfAnother || !widget->accessibleName().isEmpty())
                continue;
            const QVariant text = widget->property("text");
            if (text.toString().isEmpty())
                nameless << QStringLiteral("%1 %2").arg(QLatin1String(widget->metaObject()->className()),
                                                        widget->objectName());
        }

        QCOMPARE(nameless.join(QLatin1Char('\n')), QString());
    }
};

QTEST_MAIN(TestMainWindowAccessibility)
#include "tst_main_window_accessibility.moc"
