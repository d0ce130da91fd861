// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "argument_values.h"

#include <cmath>
#include <limits>

namespace Velk {

CLI::Validator seconds()
{
    return CLI::Validator(
        [](std::string& text) {
            constexpr double most = std::numeric_limits<int>::max() / 1000;
            double value = 0.0;
            if (CLI::detail::lexical_cast(text, value) && value >= 0.001 && value <= most)
                return std::string();
            return "\"" + text + "\" is not a number of seconds from 0.001 to 2147483";
        },
        std::string());
}

int milliseconds(double seconds)
{
    return int(std::lround(seconds * 1000.0));
}

QString toQString(const std::string& text)
{
    return QString::fromLocal8Bit(text.data(), int(text.size()));
}

QStringList toQStrings(const std::vector<std::string>& texts)
{
    QStringList result;
    for (const std::string& text : texts)
        result.append(toQString(text));
    return result;
}

} // namespace Velk
