// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_ARGUMENT_VALUES_H
#define APPS_VELK_SRC_ARGUMENT_VALUES_H

#include <CLI/CLI.hpp>

#include <QStringList>

#include <string>
#include <vector>

namespace Velk {

/// A number of seconds, greater than zero, that a timer can wait for.
CLI::Validator seconds();
int milliseconds(double seconds);

/// What was typed, as Qt text.
QString toQString(const std::string& text);
QStringList toQStrings(const std::vector<std::string>& texts);

} // namespace Velk

#endif
