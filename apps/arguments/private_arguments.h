// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_ARGUMENTS_PRIVATE_ARGUMENTS_H
#define APPS_ARGUMENTS_PRIVATE_ARGUMENTS_H

#include <string>
#include <vector>

namespace Velk {

/// The arguments of a program whose robot URLs can hold passwords.
///
/// Every user of a computer can read the arguments of its processes. This keeps a copy for the program, and overwrites
/// the passwords in the original, which the process list shows. Make it first thing in main(), and use it in place of
/// argc and argv. It shortens the time for which a password can be read; a file or a variable (password-file,
/// password-env in the URL) never shows it.
class PrivateArguments
{
public:
    /// Overwrites the user's password in each argument of the form …scheme://user:password@….
    PrivateArguments(int argc, char** argv);
    PrivateArguments(const PrivateArguments&) = delete;
    PrivateArguments& operator=(const PrivateArguments&) = delete;

    /// As main() got them. References and pointers are valid as long as this object.
    int& count() { return m_count; }
    char** values() { return m_values.data(); }

private:
    int m_count;
    std::vector<std::string> m_texts;
    std::vector<char*> m_values; ///< with a null pointer at the end
};

} // namespace Velk

#endif
