// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <apps/arguments/private_arguments.h>

#include <algorithm>
#include <cstring>

namespace Velk {

namespace {

void hidePassword(char* argument)
{
    char* const scheme = std::strstr(argument, "://");
    char* const at = scheme ? std::strrchr(scheme, '@') : nullptr;
    char* const colon = at ? std::find(scheme + 3, at, ':') : nullptr;
    if (colon && colon != at)
        std::fill(colon + 1, at, '*');
}

} // namespace

PrivateArguments::PrivateArguments(int argc, char** argv)
    : m_count(argc)
    , m_texts(argv, argv + argc)
{
    for (std::string& text : m_texts)
        m_values.push_back(text.data());
    m_values.push_back(nullptr);
    std::for_each(argv, argv + argc, hidePassword);
}

} // namespace Velk
