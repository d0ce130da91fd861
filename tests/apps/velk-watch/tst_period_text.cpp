#include <apps/velk-watch/src/period_control.h>

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <robotconnection/connection_manager.h>

#include <QSignalSpy>
#include <QTest>

using namespace Velk;

namespace {

// A robot that is not there; its model takes periods all the same.
class AbsentRobot : public ConnectionManager
{
public:
    boost::shared_ptr<MemoryInterface> memoryInterface() override { return {}; }
    bool isConnected() const override { return false; }
};

} // namespace

class TestPeriodControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTextTellsWhatIsReallyInForce_data()
    {
        QTest::addColumn<int>("asked");
        QTest::addColumn<int>("inForce");
        QTest::addColumn<int>("min");
        QTest::addColumn<QString>("text");
        QTest::newRow("granted") << 500 << 500 << 200
                                 << QStringLiteral("500 ms in force, this robot gives 200 ms and more");
        QTest::newRow("faster than the robot")
            << 10 << 200 << 200 << QStringLiteral("10 ms asked, this robot gives 200 ms and more: 200 ms in force");
        QTest::newRow("chosen on a faster robot")
            << 10 << 10 << 200 << QStringLiteral("10 ms in force, below the 200 ms that this robot gives");
        QTest::newRow("slower than any robot")
            << 20000000 << 9999990 << 10
            << QStringLiteral("20000000 ms asked, this robot gives 9999990 ms at most: 9999990 ms in force");
    }

    void theTextTellsWhatIsReallyInForce()
    {
        QFETCH(int, asked);
        QFETCH(int, inForce);
        QFETCH(int, min);

        QTEST(PeriodControl::text(asked, inForce, min, 9999990), "text");
    }

    void theModelsPeriodCountsAtFirst()
    {
        AbsentRobot robot;
        DisplayedMemoryKeyListModel model(&robot);

        const PeriodControl control(&model);

        QCOMPARE(control.askedPeriod(), 1000);
        QCOMPARE(control.periodInForce(), 1000);
    }

    void askingWithoutARobotIsToldAsWell()
    {
        AbsentRobot robot;
        DisplayedMemoryKeyListModel model(&robot);
        PeriodControl control(&model);
        QSignalSpy changed(&control, &PeriodControl::changed);

        control.ask(300);

        QCOMPARE(model.samplingPeriod(), 300);
        QVERIFY(changed.count() > 0);
    }

    void whatWasAskedComesIntoForceOnceTheRobotCan()
    {
        AbsentRobot robot;
        DisplayedMemoryKeyListModel model(&robot);
        PeriodControl control(&model);
        control.ask(10);
        QCOMPARE(control.periodInForce(), 200);

        // The robot's answer, by the name that it calls.
        QVERIFY(QMetaObject::invokeMethod(&model, "gotRealTimeSupported", Q_ARG(bool, true)));

        QCOMPARE(control.askedPeriod(), 10);
        QCOMPARE(control.periodInForce(), 10);
    }

    void aSlowerRobotIsNotAskedForMoreThanItCan()
    {
        AbsentRobot robot;
        DisplayedMemoryKeyListModel model(&robot);
        PeriodControl control(&model);
        QVERIFY(QMetaObject::invokeMethod(&model, "gotRealTimeSupported", Q_ARG(bool, true)));
        control.ask(10);

        QVERIFY(QMetaObject::invokeMethod(&model, "gotRealTimeSupported", Q_ARG(bool, false)));

        QCOMPARE(control.periodInForce(), 200);
        QCOMPARE(control.askedPeriod(), 10);
    }
};

QTEST_MAIN(TestPeriodControl)
#include "tst_period_control.moc"
