// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TESTS_APPS_VELK_WATCH_WINDOW_FIXTURE_H
#define TESTS_APPS_VELK_WATCH_WINDOW_FIXTURE_H

#include <apps/velk-watch/src/main_window.h>

#include "support/patient_try.h"

#include <apps/velk-watch/src/watch_panel.h>
#include <apps/velk-watch/src/watch_settings.h>
#include <connections/embedded/embedded_link.h>
#include <connections/embedded/robot_memory.h>
#include <itemmodels/watch_model.h>
#include <session/robot_session.h>

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include <algorithm>
#include <memory>

namespace Velk {

inline const QString elbow = QStringLiteral("Arm/Elbow/Position");
inline const QString wrist = QStringLiteral("Arm/Wrist/Position");
inline const QString bumper = QStringLiteral("Bumper/Front");

/// The window on a robot whose memory and connection the test controls.
struct WindowFixture
{
    WindowFixture()
        : settings(folder.filePath(QStringLiteral("settings.ini")))
        , memory(std::make_shared<RobotMemory>())
    {
        memory->setData(elbow, 1.5);
        memory->setData(wrist, 2.5);
        memory->declareEvent(bumper);
        settings.setSamplingPeriod(200);
        window = std::make_unique<MainWindow>(&settings);
        window->show();
    }
    ~WindowFixture() { window.reset(); }

    void connectRobot(bool isRealTime = true)
    {
        auto robotLink = std::make_unique<EmbeddedLink>(memory);
        link = robotLink.get();
        link->setRealTimeSupported(isRealTime);
        window->openRobot(std::move(robotLink));
        QTRY_COMPARE(count(), QStringLiteral("3 of 3 keys"));
    }
    void watch(const QString& name)
    {
        window->session()->watchByName(name);
        QTRY_VERIFY(!valueOf(name).isEmpty());
    }

    template <typename Widget>
    Widget* find(const char* name) const
    {
        auto* const widget = window->findChild<Widget*>(QLatin1String(name));
        // A missing widget is a fault of the test.
        if (!widget)
            qFatal("no widget %s", name);
        return widget;
    }
    QLineEdit* search() const { return find<QLineEdit>("search"); }
    QTreeView* tree() const { return find<QTreeView>("catalogueTree"); }
    WatchPanel* table() const { return find<WatchPanel>("watchTable"); }
    QString count() const { return find<QLabel>("catalogueCount")->text(); }
    QString status(const char* name) const { return find<QLabel>(name)->text(); }
    QAction* action(const char* name) const { return find<QAction>(name); }
    QAction* menuAction(const QString& text) const
    {
        const QList<QAction*> actions = window->findChildren<QAction*>();
        const auto found = std::find_if(actions.cbegin(), actions.cend(),
                                        [&text](const QAction* action) { return action->text() == text; });
        // A missing action is a fault of the test.
        if (found == actions.cend())
            qFatal("no action %s", qPrintable(text));
        return *found;
    }

    // "Arm/Elbow/Position DATA, X UNKNOWN"
    QString watched() const
    {
        QStringList rows;
        for (int row = 0; row < window->watchModel()->count(); ++row) {
            const MemoryKey& key = window->watchModel()->key(row);
            rows << key.name() + QLatin1Char(' ') + key.natureToString();
        }
        rows.sort();
        return rows.join(QStringLiteral(", "));
    }
    QString valueOf(const QString& name) const
    {
        const WatchModel* const model = window->watchModel();
        const int row = model->row(name);
        return row < 0 ? QString() : model->index(row, WatchModel::ValueColumn).data().toString();
    }
    QModelIndex inTree(const QString& path) const
    {
        QModelIndex index;
        const QStringList segments = path.split(QLatin1Char('/'));
        for (const QString& segment : segments) {
            const QModelIndexList found = tree()->model()->match(tree()->model()->index(0, 0, index), Qt::DisplayRole,
                                                                 segment, 1, Qt::MatchExactly);
            index = found.value(0);
        }
        return index;
    }

    QTemporaryDir folder;
    WatchSettings settings;
    std::shared_ptr<RobotMemory> memory;
    std::unique_ptr<MainWindow> window;
    EmbeddedLink* link = nullptr;
};

} // namespace Velk

#endif
