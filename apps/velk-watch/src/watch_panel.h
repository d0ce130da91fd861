#ifndef APPS_VELK_WATCH_WATCH_PANEL_H
#define APPS_VELK_WATCH_WATCH_PANEL_H

#include <memorykeymodel/memory_key.h>

#include <QSet>
#include <QTableView>

namespace Velk {

class WatchModel;
class WatchSortModel;

/// The table of the watched keys, with their newest values. Keys are dropped here from the catalogue, removed with
/// Delete, and shown or hidden in the plot by their check box, or by Space anywhere in the row.
class WatchPanel : public QTableView
{
    Q_OBJECT

public:
    /// The model must outlive the table.
    explicit WatchPanel(WatchModel* model, QWidget* parent = nullptr);

    /// The keys of the selected rows.
    QSet<MemoryKey> selectedKeys() const;

    /// The widths, the order and the sorting of the columns; restoring ignores what it does not know.
    QByteArray saveColumns() const;
    void restoreColumns(const QByteArray& state);

public Q_SLOTS:
    /// Asks for the colour of the present row.
    void chooseColor();

Q_SIGNALS:
    /// The user wants the selected keys to be watched no more.
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
