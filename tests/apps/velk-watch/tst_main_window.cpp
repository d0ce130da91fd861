#include <apps/velk-watch/src/main_window.h>

#include "patient_try.h"

#include <apps/velk-watch/src/message_bar.h>
#include <apps/velk-watch/src/plot_view.h>
#include <apps/velk-watch/src/recording_control.h>
#include <apps/velk-watch/src/watch_panel.h>
#include <apps/velk-watch/src/watch_settings.h>
#include <connections/embedded/embedded_link.h>
#include <connections/embedded/robot_memory.h>
#include <itemmodels/catalogue_model.h>
#include <itemmodels/watch_model.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <session/robot_session.h>

#include <QAbstractItemModelTester>
#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>

#include <functional>

using namespace Velk;

namespace {

const QString elbow = QStringLiteral("Arm/Elbow/Position");
const QString wrist = QStringLiteral("Arm/Wrist/Position");
const QString bumper = QStringLiteral("Bumper/Front");

// The window on a robot whose memory and connection are the test's.
struct Fixture
{
    Fixture()
        : settings(folder.filePath(QStringLiteral("settings.ini")))
        , memory(std::make_shared<RobotMemory>())
    {
        memory->setData(elbow, 1.5);
        memory->setData(wrist, 2.5);
        memory->declareEvent(bumper);
        settings.setSamplingPeriod(200);
        window = std::make_unique<MainWindow>(&settings);
        window->show();
    }
    ~Fixture() { window.reset(); }

    void connectRobot(bool isRealTime = true)
    {
        auto robotLink = std::make_unique<EmbeddedLink>(memory);
        link = robotLink.get();
        link->setRealTimeSupported(isRealTime);
        window->openRobot(std::move(robotLink));
        QTRY_COMPARE(count(), QStringLiteral("3 of 3 keys"));
    }
    void watch(const QString& name)
    {
        window->session()->watchByName(name);
        QTRY_VERIFY(!valueOf(name).isEmpty());
    }

    template <typename Widget>
    Widget* find(const char* name) const
    {
        auto* const widget = window->findChild<Widget*>(QLatin1String(name));
        // Nothing that a test looks for is ever missing.
        if (!widget)
            qFatal("no widget %s", name);
        return widget;
    }
    QLineEdit* search() const { return find<QLineEdit>("search"); }
    QTreeView* tree() const { return find<QTreeView>("catalogueTree"); }
    WatchPanel* table() const { return find<WatchPanel>("watchTable"); }
    QString count() const { return find<QLabel>("catalogueCount")->text(); }
    QString status(const char* name) const { return find<QLabel>(name)->text(); }
    QAction* action(const char* name) const { return find<QAction>(name); }

    // "Arm/Elbow/Position DATA, X UNKNOWN"
    QString watched() const
    {
        QStringList rows;
        for (int row = 0; row < window->watchModel()->count(); ++row) {
            const MemoryKey& key = window->watchModel()->key(row);
            rows << key.name() + QLatin1Char(' ') + key.natureToString();
        }
        rows.sort();
        return rows.join(QStringLiteral(", "));
    }
    QString valueOf(const QString& name) const
    {
        const WatchModel* const model = window->watchModel();
        const int row = model->row(name);
        return row < 0 ? QString() : model->index(row, WatchModel::ValueColumn).data().toString();
    }
    QModelIndex inTree(const QString& path) const
    {
        QModelIndex index;
        const QStringList segments = path.split(QLatin1Char('/'));
        for (const QString& segment : segments) {
            const QModelIndexList found = tree()->model()->match(tree()->model()->index(0, 0, index), Qt::DisplayRole,
                                                                 segment, 1, Qt::MatchExactly);
            index = found.value(0);
        }
        return index;
    }

    QTemporaryDir folder;
    WatchSettings settings;
    std::shared_ptr<RobotMemory> memory;
    std::unique_ptr<MainWindow> window;
    EmbeddedLink* link = nullptr;
};

// Answers the dialog of this class that is going to be shown, from within its own event loop.
template <typename Dialog>
void answerNext(const std::function<void(Dialog*)>& answer, int* answered)
{
    auto* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [=] {
        auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        timer->stop();
        timer->deleteLater();
        ++*answered;
        answer(dialog);
    });
    timer->start(10);
}

void clickNext(const char* button, int* answered)
{
    answerNext<QMessageBox>(
        [button](QMessageBox* box) { box->findChild<QPushButton*>(QLatin1String(button))->click(); }, answered);
}

void saveNextTo(const QString& fileName, int* answered)
{
    answerNext<QFileDialog>(
        [fileName](QFileDialog* dialog) {
            dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(fileName);
            QTest::keyClick(dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
        },
        answered);
}

QByteArray contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("no such file");
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QLocale::setDefault(QLocale::c());
        // The dialog of the desktop cannot be driven.
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    }

    void searching_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("count");
        QTest::newRow("a part of a name") << QStringLiteral("elb") << QStringLiteral("1 of 3 keys");
        QTest::newRow("a wildcard") << QStringLiteral("Arm/*/Pos") << QStringLiteral("2 of 3 keys");
        QTest::newRow("nothing like it") << QStringLiteral("xyz") << QStringLiteral("0 of 3 keys");
    }

    void searching()
    {
        QFETCH(QString, text);
        QFETCH(QString, count);
        Fixture f;
        f.connectRobot();

        QTest::keyClicks(f.search(), text);

        QTRY_COMPARE(f.count(), count);
    }

    void aSimulatedRobotIsOpenedByItsUrl()
    {
        Fixture f;

        QLineEdit* const url = f.find<QLineEdit>("robotUrlField");
        url->setText(QStringLiteral("sim:?seed=3"));
        QTest::keyClick(url, Qt::Key_Return);

        QTRY_VERIFY(f.window->session() && f.window->session()->catalogue());
        QTest::keyClicks(f.search(), QStringLiteral("Elbow/Pos"));
        QTest::keyClick(f.search(), Qt::Key_Return);
        QTRY_VERIFY(!f.valueOf(elbow).isEmpty());
        QVERIFY(f.status("connectionStatus").startsWith(QStringLiteral("Connected for ")));
    }

    void aUrlThatIsNoneIsToldAndChangesNothing()
    {
        Fixture f;
        f.connectRobot();

        QLineEdit* const url = f.find<QLineEdit>("robotUrlField");
        url->setText(QStringLiteral("nonsense:"));
        QTest::keyClick(url, Qt::Key_Return);

        QCOMPARE(f.window->messageBar()->title(), QStringLiteral("This robot cannot be opened"));
        QVERIFY(f.window->messageBar()->message().contains(QStringLiteral("nonsense")));
        QCOMPARE(f.window->session()->link(), f.link);
    }

    void enterInTheSearchFieldWatchesTheOnlyKey()
    {
        Fixture f;
        f.connectRobot();

        QTest::keyClicks(f.search(), QStringLiteral("elbow"));
        QTest::keyClick(f.search(), Qt::Key_Return);

        QCOMPARE(f.watched(), QStringLiteral("Arm/Elbow/Position DATA"));
        QTRY_COMPARE(f.valueOf(elbow), QStringLiteral("1.5"));
    }

    void enterInTheTreeWatchesWhatIsSelected()
    {
        Fixture f;
        f.connectRobot();
        f.tree()->setCurrentIndex(f.inTree(QStringLiteral("Arm")));

        QTest::keyClick(f.tree(), Qt::Key_Return);

        QCOMPARE(f.watched(), QStringLiteral("Arm/Elbow/Position DATA, Arm/Wrist/Position DATA"));
    }

    void aDoubleClickWatchesTheKey()
    {
        Fixture f;
        f.connectRobot();
        f.tree()->expandAll();
        const QPoint position = f.tree()->visualRect(f.inTree(bumper)).center();

        QTest::mouseClick(f.tree()->viewport(), Qt::LeftButton, {}, position);
        QTest::mouseDClick(f.tree()->viewport(), Qt::LeftButton, {}, position);

        QCOMPARE(f.watched(), QStringLiteral("Bumper/Front EVENT"));
    }

    void aKeyIsDraggedToTheTable()
    {
        Fixture f;
        f.connectRobot();
        const std::unique_ptr<QMimeData> data(f.tree()->model()->mimeData({f.inTree(wrist)}));

        QDragEnterEvent enter(QPoint(20, 40), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(f.table()->viewport(), &enter);
        QDropEvent drop(QPointF(20, 40), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(f.table()->viewport(), &drop);

        QCOMPARE(f.watched(), QStringLiteral("Arm/Wrist/Position DATA"));
    }

    void theCheckBoxesOfTheCatalogueTellWhatIsWatched()
    {
        Fixture f;
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
        Fixture f;
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
        Fixture f;
        f.connectRobot();

        QTest::mouseClick(f.find<QToolButton>("natureDATA"), Qt::LeftButton);

        QTRY_COMPARE(f.count(), QStringLiteral("1 of 3 keys"));
    }

    void theCatalogueIsATreeOrATable()
    {
        Fixture f;
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
        Fixture f;
        f.connectRobot();
        f.watch(elbow);
        f.watch(wrist);
        f.table()->selectRow(0);

        QTest::keyClick(f.table(), Qt::Key_Delete);

        QCOMPARE(f.watched(), QStringLiteral("Arm/Wrist/Position DATA"));
    }

    void spaceHidesTheCurve()
    {
        Fixture f;
        f.connectRobot();
        f.watch(elbow);
        f.table()->selectRow(0);

        QTest::keyClick(f.table(), Qt::Key_Space);

        QVERIFY(!f.window->watchModel()->isShown(elbow));
        QTRY_VERIFY(f.find<QLabel>("plotHint")->isVisible());
    }

    void theCurveIsPlotted()
    {
        Fixture f;
        f.connectRobot();
        f.watch(elbow);

        QTRY_VERIFY(f.window->plot()->drawnPoints() > 1);
    }

    void thePeriodThatTheRobotGivesIsTold()
    {
        Fixture f;
        f.connectRobot(false);
        auto* const period = f.find<QSpinBox>("period");

        period->setFocus();
        period->selectAll();
        QTest::keyClicks(period, QStringLiteral("10"));
        QTest::keyClick(period, Qt::Key_Return);

        QTRY_COMPARE(f.status("periodStatus"),
                     QStringLiteral("10 ms asked, this robot gives 200 ms and more: 200 ms in force"));
        QCOMPARE(f.window->session()->displayedKeys()->samplingPeriod(), 200);
    }

    void theWatcherIsPausedAndGoesOn()
    {
        Fixture f;
        f.connectRobot();
        f.watch(elbow);

        f.action("watcherAction")->trigger();
        QVERIFY(!f.window->session()->isWatcherRunning());
        QTRY_VERIFY(f.status("connectionStatus").endsWith(QStringLiteral(", sampling paused")));

        f.action("watcherAction")->trigger();
        QVERIFY(f.window->session()->isWatcherRunning());
    }

    void theTableIsFrozen()
    {
        Fixture f;
        f.connectRobot();
        f.watch(elbow);
        f.action("freezeAction")->trigger();
        f.memory->setData(elbow, 9);
        QTRY_COMPARE(f.window->session()->displayedKeys()->displayedKeys().constBegin()->valueHistory().last(),
                     QVariant(9));
        QCOMPARE(f.valueOf(elbow), QStringLiteral("1.5"));

        f.action("freezeAction")->trigger();

        QTRY_COMPARE(f.valueOf(elbow), QStringLiteral("9"));
    }

    void aRecordingIsMadeAndSaved()
    {
        Fixture f;
        f.connectRobot();
        f.watch(elbow);
        const QString fileName = f.folder.filePath(QStringLiteral("saved.csv"));
        int answered = 0;

        QTest::keyClick(f.window.get(), Qt::Key_R, Qt::ControlModifier);
        QTRY_VERIFY(f.window->recording()->rows() >= 2);
        QVERIFY(f.status("recordingStatus").startsWith(QStringLiteral("Recording for ")));
        QTest::keyClick(f.window.get(), Qt::Key_R, Qt::ControlModifier);
        const qint64 rows = f.window->recording()->rows();
        saveNextTo(fileName, &answered);
        f.action("saveAction")->trigger();

        QCOMPARE(answered, 1);
        const QList<QByteArray> lines = contentOf(fileName).split('\n');
        QCOMPARE(lines.first(), QByteArrayLiteral("Time;\"Arm/Elbow/Position\""));
        QCOMPARE(qint64(lines.size()), rows + 2); // the header, and what follows the last line feed
        QVERIFY(lines.at(1).endsWith(";1.5"));
        QCOMPARE(f.status("recordingStatus"), QStringLiteral("Not recording"));
        QCOMPARE(f.window->messageBar()->count(), 0);
    }

    void aRecordingThatCannotBeSavedIsKept()
    {
        Fixture f;
        f.connectRobot();
        f.watch(elbow);
        f.window->toggleRecording();
        QTRY_VERIFY(f.window->recording()->rows() >= 1);

        f.window->recording()->stop();
        const RecordSaveResult result =
            f.window->recording()->save(QStringLiteral("/proc/saved.csv"), RecordFileSaver::KeepExisting);

        QVERIFY(!result.isSaved());
        QCOMPARE(f.window->recording()->state(), RecordingControl::Unsaved);
        QVERIFY(f.action("saveAction")->isEnabled());
        f.window->recording()->discard();
    }

    void closingWhileRecordingAsks_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("isClosed");
        QTest::newRow("cancel") << QStringLiteral("cancelButton") << false;
        QTest::newRow("discard") << QStringLiteral("discardButton") << true;
    }

    void closingWhileRecordingAsks()
    {
        QFETCH(QString, button);
        QFETCH(bool, isClosed);
        Fixture f;
        f.connectRobot();
        f.watch(elbow);
        f.window->toggleRecording();
        QTRY_VERIFY(f.window->recording()->rows() >= 1);
        int answered = 0;
        const QByteArray name = button.toLatin1();

        clickNext(name.constData(), &answered);
        f.window->close();

        QCOMPARE(answered, 1);
        QCOMPARE(!f.window->isVisible(), isClosed);
        QCOMPARE(f.window->recording()->state() == RecordingControl::Recording, !isClosed);
        f.window->recording()->stop();
        f.window->recording()->discard();
    }

    void closingWithAnUnsavedRecordingOffersToSaveIt()
    {
        Fixture f;
        f.connectRobot();
        f.watch(elbow);
        f.window->toggleRecording();
        QTRY_VERIFY(f.window->recording()->rows() >= 1);
        f.window->toggleRecording();
        const QString fileName = f.folder.filePath(QStringLiteral("saved.csv"));
        int questions = 0;
        int files = 0;

        clickNext("saveButton", &questions);
        saveNextTo(fileName, &files);
        f.window->close();

        QCOMPARE(questions, 1);
        QCOMPARE(files, 1);
        QVERIFY(!f.window->isVisible());
        QVERIFY(contentOf(fileName).startsWith("Time;"));
    }

    void closingWithoutARecordingAsksNothing()
    {
        Fixture f;

        f.window->close();

        QVERIFY(!f.window->isVisible());
    }

    void aLostConnectionComesBackWithoutAClick()
    {
        Fixture f;
        f.connectRobot();
        f.watch(elbow);
        f.window->watchModel()->setColor(elbow, Qt::red);
        f.window->toggleRecording();
        QTRY_VERIFY(f.window->recording()->rows() >= 1);

        f.link->feed().outOfReach();
        QTRY_VERIFY(f.status("connectionStatus").startsWith(QStringLiteral("Connection lost for ")));
        QVERIFY(f.window->messageBar()->count() > 0);
        QCOMPARE(f.window->recording()->state(), RecordingControl::Unsaved);

        f.link->feed().inReach();
        f.memory->setData(elbow, 4.5);
        QTRY_COMPARE(f.valueOf(elbow), QStringLiteral("4.5"));
        QVERIFY(f.status("connectionStatus").startsWith(QStringLiteral("Connected for ")));
        QCOMPARE(f.window->watchModel()->color(elbow), QColor(Qt::red));
        f.window->recording()->discard();
    }

    void disconnectingAndConnectingAgain()
    {
        Fixture f;
        f.connectRobot();
        f.watch(elbow);
        auto* const button = f.find<QPushButton>("connectButton");
        QCOMPARE(button->text(), QStringLiteral("Dis&connect"));

        QTest::mouseClick(button, Qt::LeftButton);

        QCOMPARE(button->text(), QStringLiteral("&Connect"));
        QVERIFY(f.status("connectionStatus").startsWith(QStringLiteral("Disconnected for ")));
        QCOMPARE(f.window->messageBar()->count(), 0);
    }

    void anotherRobotIsWatchedForTheSameKeys()
    {
        Fixture f;
        f.connectRobot();
        f.watch(elbow);

        f.window->openRobot(QStringLiteral("sim:"));

        QTRY_VERIFY(f.window->session()->isWatcherRunning());
        QTRY_COMPARE(f.watched(), QStringLiteral("Arm/Elbow/Position DATA"));
    }

    void theNextRunRemembers()
    {
        Fixture f;
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

    void keysOfTheCommandLineTakeThePlaceOfTheRememberedOnes()
    {
        Fixture f;
        f.settings.setWatchedKeys({{elbow, {}, true}});

        f.window->setWatchedNames({wrist});
        f.connectRobot();

        QTRY_COMPARE(f.watched(), QStringLiteral("Arm/Wrist/Position DATA"));
    }

    void errorsOfTheModelDoNotBlock()
    {
        Fixture f;
        f.connectRobot();
        f.watch(elbow);
        qputenv("TMPDIR", "/proc");

        f.window->toggleRecording();

        qunsetenv("TMPDIR");
        QCOMPARE(f.window->messageBar()->title(), QStringLiteral("Memory recording"));
        QVERIFY(!QApplication::activeModalWidget());
        QVERIFY(!f.action("recordAction")->isChecked());
    }

    void everythingIsReachedByTab()
    {
        Fixture f;
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
        Fixture f;

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

    void itsModelsAreSound()
    {
        Fixture f;
        const QAbstractItemModelTester table(f.table()->model(),
                                             QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QAbstractItemModelTester tree(f.tree()->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QAbstractItemModelTester list(f.find<QTableView>("catalogueTable")->model(),
                                            QAbstractItemModelTester::FailureReportingMode::QtTest);

        f.connectRobot();
        f.watch(elbow);
        QTest::keyClicks(f.search(), QStringLiteral("el"));
        f.link->feed().outOfReach();
        QTRY_COMPARE(f.link->state(), RobotLink::Lost);
        f.link->feed().inReach();

        QTRY_VERIFY(f.window->session()->isReady());
        f.window->session()->unwatch(f.window->session()->watchedKeys());
        QCOMPARE(f.watched(), QString());
    }

    void themesAreAppliedAndRemembered()
    {
        Fixture f;

        f.action("theme-high-contrast")->trigger();

        QCOMPARE(QApplication::palette().color(QPalette::Window), QColor(Qt::black));
        f.window->close();
        QCOMPARE(f.settings.theme(), ColorTheme::HighContrast);
        f.window->setTheme(ColorTheme::Desktop);
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_main_window.moc"
