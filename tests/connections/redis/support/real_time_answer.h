// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_REAL_TIME_ANSWER_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_REAL_TIME_ANSWER_H

#include <QList>
#include <QObject>

/// Receives the answer to the question for real time.
class RealTimeAnswer : public QObject
{
    Q_OBJECT

public:
    QList<bool> answers;

public Q_SLOTS:
    void take(bool isSupported) { answers.append(isSupported); }
};

#endif
