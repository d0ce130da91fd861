// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

/// A library, and no plugin.
extern "C" int nothingToLoad()
{
    return 0;
}
