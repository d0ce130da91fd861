// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_SUPPORT_ENGLISH_ENVIRONMENT_H
#define TESTS_SUPPORT_ENGLISH_ENVIRONMENT_H

#include <QProcessEnvironment>

namespace Velk {

/// The environment of this test, for a program whose output is compared: in English, with numbers as in C. LANGUAGE
/// is removed because it has priority over LC_ALL.
inline QProcessEnvironment englishEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.remove(QStringLiteral("LANGUAGE"));
    return environment;
}

} // namespace Velk

#endif
