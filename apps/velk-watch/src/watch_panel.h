// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_WATCH_PANEL_H
#define APPS_VELK_WATCH_WATCH_PANEL_H

#include <memorykeymodel/memory_key.h>

#include <QSet>
#include <QTableView>

namespace Velk {

class WatchModel;
class WatchSortModel;

/// The table of the watched keys, with their newest values. It takes keys that are dragged from the catalogue. Delete
/// removes the selected keys; the check box, or Space anywhere in the row, shows or hides a key in the plot.
class WatchPanel : public QTableView
{
    Q_OBJECT

public:
    /// The model must outlive the table.
    explicit WatchPanel(WatchModel* model, QWidget* parent = nullptr);

    /// The keys of the selected rows.
    QSet<MemoryKey> selectedKeys() const;

    /// The widths, the order and the sorting of the columns. A state of another version is ignored.
    QByteArray saveColumns() const;
    void restoreColumns(const QByteArray& state);

public Q_SLOTS:
    /// Opens a dialog for the colour of the current row's key.
    void chooseColor();
    /// Emits removalRequested() for the selected keys, if there are any.
    void removeSelected();

Q_SIGNALS:
    /// The user wants to stop watching these keys.
    void removalRequested(const QSet<Velk::MemoryKey>& keys);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showHeaderMenu(const QPoint& position);
    void toggleShown();

    WatchModel* m_model;
    WatchSortModel* m_sortModel;
};

} // namespace Velk

#endif
