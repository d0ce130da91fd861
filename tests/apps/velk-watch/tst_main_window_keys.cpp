// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/main_window.h>

#include "window_fixture.h"

#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QTableView>
#include <QTest>
#include <QToolButton>

using namespace Velk;

class TestMainWindowKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void theSearchCountsTheKeysThatMatch_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("count");
        QTest::newRow("a part of a name") << QStringLiteral("elb") << QStringLiteral("1 of 3 keys");
        QTest::newRow("a wildcard") << QStringLiteral("Arm/*/Pos") << QStringLiteral("2 of 3 keys");
        QTest::newRow("nothing like it") << QStringLiteral("xyz") << QStringLiteral("0 of 3 keys");
    }

    void theSearchCountsTheKeysThatMatch()
    {
        QFETCH(QString, text);
        QFETCH(QString, count);
        WindowFixture f;
        f.connectRobot();

        QTest::keyClicks(f.search(), text);

        QTRY_COMPARE(f.count(), count);
    }

    void enterInTheSearchFieldWatchesTheOnlyKey()
    {
        WindowFixture f;
        f.connectRobot();

        QTest::keyClicks(f.search(), QStringLiteral("elbow"));
        QTest::keyClick(f.search(), Qt::Key_Return);

        QCOMPARE(f.watched(), QStringLiteral("Arm/Elbow/Position DATA"));
        QTRY_COMPARE(f.valueOf(elbow), QStringLiteral("1.5"));
    }

    void enterInTheTreeWatchesTheSelectedKeys()
    {
        WindowFixture f;
        f.connectRobot();
        f.tree()->setCurrentIndex(f.inTree(QStringLiteral("Arm")));

        QTest::keyClick(f.tree(), Qt::Key_Return);

        QCOMPARE(f.watched(), QStringLiteral("Arm/Elbow/Position DATA, Arm/Wrist/Position DATA"));
    }

    void aDoubleClickWatchesTheKey()
    {
        WindowFixture f;
        f.connectRobot();
        f.tree()->expandAll();
        const QPoint position = f.tree()->visualRect(f.inTree(bumper)).center();

        QTest::mouseClick(f.tree()->viewport(), Qt::LeftButton, {}, position);
        QTest::mouseDClick(f.tree()->viewport(), Qt::LeftButton, {}, position);

        QCOMPARE(f.watched(), QStringLiteral("Bumper/Front EVENT"));
    }

    void aKeyIsDraggedToTheTable()
    {
        WindowFixture f;
        f.connectRobot();
        const std::unique_ptr<QMimeData> data(f.tree()->model()->mimeData({f.inTree(wrist)}));

        QDragEnterEvent enter(QPoint(20, 40), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(f.table()->viewport(), &enter);
        QDropEvent drop(QPointF(20, 40), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(f.table()->viewport(), &drop);

        QCOMPARE(f.watched(), QStringLiteral("Arm/Wrist/Position DATA"));
    }

    void theCheckBoxesOfTheCatalogueShowTheWatchedKeys()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);
        QCOMPARE(f.inTree(elbow).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));

        QVERIFY(f.tree()->model()->setData(f.inTree(wrist), Qt::Checked, Qt::CheckStateRole));
        QCOMPARE(f.watched(), QStringLiteral("Arm/Elbow/Position DATA, Arm/Wrist/Position DATA"));

        QVERIFY(f.tree()->model()->setData(f.inTree(elbow), Qt::Unchecked, Qt::CheckStateRole));
        QCOMPARE(f.watched(), QStringLiteral("Arm/Wrist/Position DATA"));
    }

    void aKeyThatTheRobotDoesNotListIsTypedIn()
    {
        WindowFixture f;
        f.connectRobot();

        QTest::keyClicks(f.find<QLineEdit>("keyName"), QStringLiteral("Later/Value"));
        QTest::keyClick(f.find<QLineEdit>("keyName"), Qt::Key_Return);

        QCOMPARE(f.watched(), QStringLiteral("Later/Value UNKNOWN"));
        QCOMPARE(f.count(), QStringLiteral("4 of 4 keys"));
        f.memory->setData(QStringLiteral("Later/Value"), 7);
        QTRY_COMPARE(f.valueOf(QStringLiteral("Later/Value")), QStringLiteral("7"));
    }

    void theNatureButtonsHideKeys()
    {
        WindowFixture f;
        f.connectRobot();

        QTest::mouseClick(f.find<QToolButton>("natureDATA"), Qt::LeftButton);

        QTRY_COMPARE(f.count(), QStringLiteral("1 of 3 keys"));
    }

    void theCatalogueIsATreeOrATable()
    {
        WindowFixture f;
        f.connectRobot();
        QVERIFY(f.tree()->isVisible());

        QTest::mouseClick(f.find<QToolButton>("treeButton"), Qt::LeftButton);

        auto* const table = f.find<QTableView>("catalogueTable");
        QVERIFY(table->isVisible());
        QCOMPARE(table->model()->rowCount(), 3);
        QCOMPARE(table->model()->index(0, 0).data().toString(), elbow);
    }

    void deleteUnwatches()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);
        f.watch(wrist);
        f.table()->selectRow(0);

        QTest::keyClick(f.table(), Qt::Key_Delete);

        QCOMPARE(f.watched(), QStringLiteral("Arm/Wrist/Position DATA"));
    }

    void theMenuUnwatchesTheSelectedKeys()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);
        f.watch(wrist);

        f.action("unwatchAction")->trigger();
        QCOMPARE(f.watched(), QStringLiteral("Arm/Elbow/Position DATA, Arm/Wrist/Position DATA"));

        f.table()->selectRow(1);
        f.action("unwatchAction")->trigger();
        QCOMPARE(f.watched(), QStringLiteral("Arm/Elbow/Position DATA"));
    }

    void spaceHidesTheCurve()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);
        f.table()->selectRow(0);

        QTest::keyClick(f.table(), Qt::Key_Space);

        QVERIFY(!f.window->watchModel()->isShown(elbow));
        QTRY_VERIFY(f.find<QLabel>("plotHint")->isVisible());
    }
};

QTEST_MAIN(TestMainWindowKeys)
#include "tst_main_window_keys.moc"
