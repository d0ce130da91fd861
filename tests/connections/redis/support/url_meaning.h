// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_URL_MEANING_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_URL_MEANING_H

#include <connections/redis/client/redis_url.h>

#include <QString>

/// The parsed URL on one line, without what has its usual value.
QString meaning(const Velk::RedisUrl& url);
/// The parsed URL; one that is not valid ends the test program.
Velk::RedisUrl parsed(const QString& url);
/// The sentence that says what is wrong with the URL; "parsed: " and its meaning when nothing is.
QString errorOf(const QString& url);

#endif
