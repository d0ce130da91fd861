// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_ITEMMODELS_TESTED_WATCH_H
#define TESTS_ITEMMODELS_TESTED_WATCH_H

#include "model_text.h"
#include "watched_robot.h"

#include <itemmodels/watch_model.h>

#include <QAbstractItemModelTester>
#include <QLocale>

namespace Velk {

/// A watch model on a robot. It reports to the views when the test calls flush(), and its clock shows `nowMs`.
struct TestedWatch
{
    TestedWatch()
    {
        QLocale::setDefault(QLocale::c()); // the cells show numbers as the user's locale writes them
        constexpr int neverMs = 24 * 3600 * 1000;
        model.setUpdateInterval(neverMs);
        model.setClock([this] { return nowMs; });
    }

    QString cell(const char* name, int column, int role = Qt::DisplayRole) const
    {
        return model.index(model.row(text(name)), column).data(role).toString();
    }
    QStringList values() const { return columnText(model, WatchModel::ValueColumn); }

    WatchedRobot robot;
    qint64 nowMs = 0;
    WatchModel model{robot.keys};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace Velk

#endif
