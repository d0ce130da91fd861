// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "watch_panel.h"

#include <itemmodels/watch_model.h>
#include <itemmodels/watch_sort_model.h>

#include <QColorDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace Velk {

namespace {

// Draws the colour as a patch. There is no editor: the panel opens a dialog.
class ColorDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget*, const QStyleOptionViewItem&, const QModelIndex&) const override { return nullptr; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyleOptionViewItem plain = option;
        initStyleOption(&plain, index);
        plain.text.clear();
        plain.icon = QIcon();
        plain.features &= ~QStyleOptionViewItem::HasDecoration;
        const QStyle* style = option.widget->style();
        style->drawControl(QStyle::CE_ItemViewItem, &plain, painter, option.widget);
        const int size = std::min(option.rect.height(), option.rect.width()) - 8;
        QRect patch(0, 0, std::max(size, 8), std::max(size, 8));
        patch.moveCenter(option.rect.center());
        painter->fillRect(patch, index.data(WatchModel::ColorRole).value<QColor>());
        painter->setPen(option.palette.color(QPalette::Text));
        painter->drawRect(patch.adjusted(0, 0, -1, -1));
    }
};

} // namespace

WatchPanel::WatchPanel(WatchModel* model, QWidget* parent)
    : QTableView(parent)
    , m_model(model)
    , m_sortModel(new WatchSortModel(model, this))
{
    setObjectName(QStringLiteral("watchTable"));
    setAccessibleName(tr("Watched keys"));
    setModel(m_sortModel);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setSortingEnabled(true);
    // In the order in which keys were watched, until a header is clicked.
    m_sortModel->sort(-1);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    horizontalHeader()->setSortIndicatorClearable(true);

    setAcceptDrops(true);
    setDragDropMode(QAbstractItemView::DropOnly);
    setDropIndicatorShown(false);
    setDefaultDropAction(Qt::CopyAction);
    setDragDropOverwriteMode(false);

    setItemDelegateForColumn(WatchModel::ColorColumn, new ColorDelegate(this));
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (index.column() == WatchModel::ColorColumn)
            chooseColor();
    });

    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    QHeaderView* const header = horizontalHeader();
    header->setObjectName(QStringLiteral("watchHeader"));
    header->setHighlightSections(false);
    header->setSectionsMovable(true);
    header->setStretchLastSection(false);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QHeaderView::customContextMenuRequested, this, &WatchPanel::showHeaderMenu);
    const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    const QList<QPair<int, int>> widths{
        {WatchModel::ShownColumn, 7},        {WatchModel::ColorColumn, 7},   {WatchModel::NameColumn, 30},
        {WatchModel::DescriptionColumn, 24}, {WatchModel::NatureColumn, 11}, {WatchModel::ValueColumn, 18},
        {WatchModel::TimeColumn, 17},        {WatchModel::AgeColumn, 10},    {WatchModel::PeriodColumn, 10}};
    for (const auto& [column, digits] : widths)
        setColumnWidth(column, digits * digit);
    header->setSectionResizeMode(WatchModel::NameColumn, QHeaderView::Stretch);
    hideColumn(WatchModel::DescriptionColumn);
    // A key is watched with this period again after a connection; the period in force is that of the watcher.
    hideColumn(WatchModel::PeriodColumn);
}

QSet<MemoryKey> WatchPanel::selectedKeys() const
{
    QModelIndexList rows;
    const QModelIndexList selected = selectionModel()->selectedRows();
    for (const QModelIndex& index : selected)
        rows.append(m_sortModel->mapToSource(index));
    return m_model->keys(rows);
}

QByteArray WatchPanel::saveColumns() const
{
    return horizontalHeader()->saveState();
}

void WatchPanel::restoreColumns(const QByteArray& state)
{
    if (!state.isEmpty())
        horizontalHeader()->restoreState(state);
}

void WatchPanel::chooseColor()
{
    const QModelIndex index = currentIndex();
    if (!index.isValid())
        return;
    const QString name = index.data(WatchModel::NameRole).toString();
    auto* dialog = new QColorDialog(m_model->color(name), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Color of %1").arg(name));
    connect(dialog, &QColorDialog::colorSelected, m_model,
            [this, name](const QColor& color) { m_model->setColor(name, color); });
    dialog->open();
}

void WatchPanel::removeSelected()
{
    const QSet<MemoryKey> keys = selectedKeys();
    if (!keys.isEmpty())
        emit removalRequested(keys);
}

void WatchPanel::toggleShown()
{
    const QModelIndexList selected = selectionModel()->selectedRows();
    if (selected.isEmpty())
        return;
    // All selected rows get the opposite of the current row.
    const bool isShown = !currentIndex().data(WatchModel::ShownRole).toBool();
    for (const QModelIndex& index : selected)
        m_model->setShown(index.data(WatchModel::NameRole).toString(), isShown);
}

void WatchPanel::showHeaderMenu(const QPoint& position)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (int column = 0; column < WatchModel::ColumnCount; ++column) {
        if (column == WatchModel::NameColumn)
            continue;
        QAction* const action = menu->addAction(m_sortModel->headerData(column, Qt::Horizontal).toString());
        action->setCheckable(true);
        action->setChecked(!isColumnHidden(column));
        connect(action, &QAction::toggled, this, [this, column](bool isShown) { setColumnHidden(column, !isShown); });
    }
    menu->popup(horizontalHeader()->mapToGlobal(position));
}

void WatchPanel::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        removeSelected();
        return;
    case Qt::Key_Space:
        toggleShown();
        return;
    case Qt::Key_C:
        if (event->modifiers() == Qt::NoModifier) {
            chooseColor();
            return;
        }
        break;
    default:
        break;
    }
    QTableView::keyPressEvent(event);
}

void WatchPanel::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (m_sortModel->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(12, 12, -12, -12), Qt::AlignCenter | Qt::TextWordWrap,
                     tr("No key is watched. Choose one on the left with Enter or a double click, or drag it here."));
}

} // namespace Velk
