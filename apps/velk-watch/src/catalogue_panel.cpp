// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "catalogue_panel.h"

#include <itemmodels/catalogue_filter_model.h>
#include <itemmodels/catalogue_keys.h>
#include <itemmodels/catalogue_model.h>
#include <itemmodels/catalogue_tree_model.h>
#include <memorykeymodel/memory_key_list_model.h>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableView>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace Velk {

namespace {

// Up to so many keys a search expands all branches of the tree.
constexpr int fewKeys = 200;

bool isReturn(const QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

CataloguePanel::CataloguePanel(QWidget* parent)
    : QWidget(parent)
    , m_model(new CatalogueModel(this))
    , m_filter(new CatalogueFilterModel(m_model, this))
    , m_tree(new CatalogueTreeModel(m_filter, this))
    , m_search(new QLineEdit(this))
    , m_syntaxButton(new QToolButton(this))
    , m_treeButton(new QToolButton(this))
    , m_views(new QStackedWidget(this))
    , m_treeView(new QTreeView)
    , m_tableView(new QTableView)
    , m_count(new QLabel(this))
    , m_name(new QLineEdit(this))
{
    setObjectName(QStringLiteral("cataloguePanel"));
    m_filter->setFilterCaseSensitivity(Qt::CaseInsensitive);

    m_search->setObjectName(QStringLiteral("search"));
    m_search->setPlaceholderText(tr("Search keys, for example Arm/*/Position"));
    m_search->setAccessibleName(tr("Search keys"));
    m_search->setToolTip(
        tr("Type a part of a name; * matches any text, ? one character. Enter watches the only key that is left."));
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, this, &CataloguePanel::onSearchEdited);
    connect(m_search, &QLineEdit::returnPressed, this, &CataloguePanel::chooseSearched);

    m_syntaxButton->setObjectName(QStringLiteral("regularExpression"));
    m_syntaxButton->setText(QStringLiteral(".*"));
    m_syntaxButton->setCheckable(true);
    m_syntaxButton->setToolTip(tr("The text is a regular expression"));
    m_syntaxButton->setAccessibleName(tr("Regular expression"));
    m_syntaxButton->setFocusPolicy(Qt::StrongFocus);
    connect(m_syntaxButton, &QToolButton::toggled, this, [this](bool isExpression) {
        m_filter->setSyntax(isExpression ? CatalogueFilterModel::RegularExpression : CatalogueFilterModel::Wildcard);
    });

    m_treeButton->setObjectName(QStringLiteral("treeButton"));
    m_treeButton->setText(tr("Tree"));
    m_treeButton->setCheckable(true);
    m_treeButton->setChecked(true);
    m_treeButton->setToolTip(tr("Show the keys as a tree by name, or as a table"));
    m_treeButton->setFocusPolicy(Qt::StrongFocus);
    connect(m_treeButton, &QToolButton::toggled, this, &CataloguePanel::setTree);

    createView(m_treeView, QStringLiteral("catalogueTree"));
    m_treeView->setModel(m_tree);
    m_treeView->setUniformRowHeights(true);
    m_treeView->setAllColumnsShowFocus(true);
    m_treeView->hideColumn(CatalogueModel::DescriptionColumn);
    m_treeView->header()->setStretchLastSection(false);
    m_treeView->header()->setSectionResizeMode(CatalogueModel::NameColumn, QHeaderView::Stretch);
    m_treeView->setColumnWidth(CatalogueModel::NatureColumn, 84);

    createView(m_tableView, QStringLiteral("catalogueTable"));
    m_tableView->setModel(m_filter);
    m_tableView->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_tableView->setSortingEnabled(true);
    m_tableView->sortByColumn(CatalogueModel::NameColumn, Qt::AscendingOrder);
    m_tableView->setShowGrid(false);
    m_tableView->setWordWrap(false);
    m_tableView->setTabKeyNavigation(false);
    m_tableView->verticalHeader()->hide();
    m_tableView->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_tableView->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_tableView->hideColumn(CatalogueModel::DescriptionColumn);
    m_tableView->horizontalHeader()->setSectionResizeMode(CatalogueModel::NameColumn, QHeaderView::Stretch);
    m_tableView->horizontalHeader()->setHighlightSections(false);
    m_tableView->setColumnWidth(CatalogueModel::NatureColumn, 84);

    m_count->setObjectName(QStringLiteral("catalogueCount"));
    m_count->setAccessibleName(tr("Number of keys that are shown"));

    m_name->setObjectName(QStringLiteral("keyName"));
    m_name->setPlaceholderText(tr("Name of any other key"));
    m_name->setAccessibleName(tr("Name of a key to watch"));
    m_name->setToolTip(
        tr("A key that the robot does not list is watched all the same, and has values once it exists."));
    auto* watchName = new QPushButton(tr("&Watch"), this);
    watchName->setObjectName(QStringLiteral("watchName"));
    watchName->setAccessibleName(tr("Watch the key of this name"));
    watchName->setEnabled(false);
    connect(m_name, &QLineEdit::textChanged, watchName,
            [watchName](const QString& text) { watchName->setEnabled(!text.trimmed().isEmpty()); });
    connect(m_name, &QLineEdit::returnPressed, this, &CataloguePanel::typeName);
    connect(watchName, &QPushButton::clicked, this, &CataloguePanel::typeName);

    QWidget* const natures = createNatureButtons();
    m_views->addWidget(m_treeView);
    m_views->addWidget(m_tableView);

    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(m_search, 1);
    searchRow->addWidget(m_syntaxButton);
    auto* buttonRow = new QHBoxLayout;
    buttonRow->addWidget(natures);
    buttonRow->addStretch(1);
    buttonRow->addWidget(m_treeButton);
    auto* nameRow = new QHBoxLayout;
    nameRow->addWidget(m_name, 1);
    nameRow->addWidget(watchName);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->setSpacing(6);
    layout->addLayout(searchRow);
    layout->addLayout(buttonRow);
    layout->addWidget(m_views, 1);
    layout->addWidget(m_count);
    layout->addLayout(nameRow);

    connect(m_filter, &CatalogueFilterModel::countChanged, this, &CataloguePanel::updateCount);
    connect(m_filter, &CatalogueFilterModel::textErrorChanged, this, &CataloguePanel::updateCount);
    connect(m_filter, &CatalogueFilterModel::filteringChanged, this, &CataloguePanel::updateCount);
    connect(m_model, &CatalogueModel::countChanged, this, &CataloguePanel::updateCount);
    connect(m_model, &CatalogueModel::dataChanged, this, &CataloguePanel::onSelectionEdited);
    connect(m_tree, &QAbstractItemModel::modelReset, this, &CataloguePanel::expandFew, Qt::QueuedConnection);
    updateCount();
}

CataloguePanel::~CataloguePanel()
{
    // The models are deleted after this, as children, and report that their rows are gone.
    m_filter->disconnect(this);
    m_model->disconnect(this);
}

QAbstractItemView* CataloguePanel::createView(QAbstractItemView* view, const QString& name)
{
    view->setObjectName(name);
    view->setAccessibleName(tr("Keys of the robot"));
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setDragEnabled(true);
    view->setDragDropMode(QAbstractItemView::DragOnly);
    view->setAlternatingRowColors(true);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->installEventFilter(this);
    connect(view, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& index) {
        // Chooses the key itself and not the keys below it. A branch that is no key is only expanded, by the view.
        if (index.data(CatalogueModel::IsKeyRole).toBool())
            emit keysChosen({m_model->key(m_model->row(index.data(CatalogueModel::NameRole).toString()))});
    });
    return view;
}

QWidget* CataloguePanel::createNatureButtons()
{
    auto* buttons = new QWidget(this);
    auto* layout = new QHBoxLayout(buttons);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    const QList<QPair<MemoryKeyNature, QString>> natures{{DataNature, MemoryKey::dataString},
                                                         {EventNature, MemoryKey::eventString},
                                                         {UnknownNature, MemoryKey::unknownString}};
    for (const auto& [nature, text] : natures) {
        auto* button = new QToolButton(buttons);
        button->setObjectName(QStringLiteral("nature") + text);
        button->setText(text);
        button->setCheckable(true);
        button->setChecked(true);
        button->setToolTip(tr("Show the keys of nature %1").arg(text));
        button->setFocusPolicy(Qt::StrongFocus);
        connect(button, &QToolButton::toggled, m_filter,
                [this, nature = nature](bool isShown) { m_filter->setNatureShown(nature, isShown); });
        layout->addWidget(button);
    }
    return buttons;
}

void CataloguePanel::setCatalogue(MemoryKeyListModel* catalogue)
{
    if (catalogue)
        catalogue->selectKeys(m_watchedKeys);
    m_model->setCatalogue(catalogue);
    m_model->refreshSelection();
    updateCount();
}

void CataloguePanel::setWatchedKeys(const QSet<MemoryKey>& keys)
{
    m_watchedKeys = keys;
    MemoryKeyListModel* const catalogue = m_model->catalogue();
    if (!catalogue || catalogue->selectedKeys() == keys)
        return;
    catalogue->selectKeys(keys);
    m_model->refreshSelection();
}

void CataloguePanel::onSelectionEdited()
{
    if (!m_model->catalogue())
        return;
    const QSet<MemoryKey> checked = m_model->catalogue()->selectedKeys();
    const QSet<MemoryKey> chosen = QSet<MemoryKey>(checked).subtract(m_watchedKeys);
    const QSet<MemoryKey> dropped = QSet<MemoryKey>(m_watchedKeys).subtract(checked);
    m_watchedKeys = checked;
    if (!chosen.isEmpty())
        emit keysChosen(chosen);
    if (!dropped.isEmpty())
        emit keysDropped(dropped);
}

bool CataloguePanel::isTree() const
{
    return m_views->currentWidget() == m_treeView;
}

void CataloguePanel::setTree(bool isTree)
{
    m_treeButton->setChecked(isTree);
    m_views->setCurrentWidget(isTree ? static_cast<QWidget*>(m_treeView) : m_tableView);
}

void CataloguePanel::focusSearch()
{
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

QAbstractItemView* CataloguePanel::currentView() const
{
    return isTree() ? static_cast<QAbstractItemView*>(m_treeView) : m_tableView;
}

void CataloguePanel::onSearchEdited()
{
    m_filter->setText(m_search->text());
}

void CataloguePanel::expandFew()
{
    if (!m_filter->text().isEmpty() && m_filter->count() <= fewKeys)
        m_treeView->expandAll();
}

void CataloguePanel::chooseSelected()
{
    const QModelIndexList selected = currentView()->selectionModel()->selectedRows();
    // Enter on a branch chooses all keys below it.
    const QSet<MemoryKey> keys = keysOf(selected);
    if (!keys.isEmpty())
        emit keysChosen(keys);
}

void CataloguePanel::chooseSearched()
{
    m_filter->finishFiltering();
    if (m_filter->count() == 1) {
        emit keysChosen({m_model->key(m_filter->sourceRows().front())});
        m_search->selectAll();
        return;
    }
    const int exact = m_model->row(m_search->text().trimmed());
    if (exact >= 0) {
        emit keysChosen({m_model->key(exact)});
        m_search->selectAll();
        return;
    }
    // Several keys are left: the focus moves to the list, to choose there.
    QAbstractItemView* const view = currentView();
    if (!view->currentIndex().isValid() && view->model()->rowCount() > 0)
        view->setCurrentIndex(view->model()->index(0, 0));
    view->setFocus(Qt::TabFocusReason);
}

void CataloguePanel::typeName()
{
    const QString name = m_name->text().trimmed();
    if (name.isEmpty())
        return;
    emit nameTyped(name);
    m_name->clear();
}

void CataloguePanel::updateCount()
{
    if (!m_filter->textError().isEmpty())
        m_count->setText(m_filter->textError());
    else if (m_filter->isFiltering())
        m_count->setText(tr("Searching…"));
    else
        m_count->setText(tr("%L1 of %L2 keys").arg(m_filter->count()).arg(m_model->count()));
}

bool CataloguePanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_search && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down) {
        currentView()->setFocus(Qt::TabFocusReason);
        if (!currentView()->currentIndex().isValid() && currentView()->model()->rowCount() > 0)
            currentView()->setCurrentIndex(currentView()->model()->index(0, 0));
        return true;
    }
    if (watched == currentView() && isReturn(event)) {
        chooseSelected();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace Velk
