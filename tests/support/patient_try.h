// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_SUPPORT_PATIENT_TRY_H
#define TESTS_SUPPORT_PATIENT_TRY_H

#include <QTest>

// A busy machine needs more than the five seconds of QtTest.
#undef QTRY_VERIFY
#define QTRY_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 30000)
#undef QTRY_COMPARE
#define QTRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, 30000)

#endif
