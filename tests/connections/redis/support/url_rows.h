// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_URL_ROWS_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_URL_ROWS_H

#include <QString>
#include <QTest>

/// A table of tests with the columns "url" and "expected". Each call adds a row; the texts are UTF-8.
class UrlRows
{
public:
    UrlRows()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("expected");
    }
    void operator()(const char* name, const char* url, const char* expected) const
    {
        QTest::newRow(name) << QString::fromUtf8(url) << QString::fromUtf8(expected);
    }
};

#endif
