#ifndef TESTS_APPS_VELK_WATCH_PATIENT_TRY_H
#define TESTS_APPS_VELK_WATCH_PATIENT_TRY_H

#include <QTest>

// Machines that run the tests are slow at times, and run several tests at once: QtTest's five seconds are not enough.
#undef QTRY_VERIFY
#define QTRY_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 30000)
#undef QTRY_COMPARE
#define QTRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, 30000)

#endif
