// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_CATALOGUE_PANEL_H
#define APPS_VELK_WATCH_CATALOGUE_PANEL_H

#include <memorykeymodel/memory_key.h>

#include <QSet>
#include <QWidget>

class QAbstractItemView;
class QLabel;
class QLineEdit;
class QStackedWidget;
class QTableView;
class QToolButton;
class QTreeView;

namespace Velk {

class CatalogueFilterModel;
class CatalogueModel;
class CatalogueTreeModel;
class MemoryKeyListModel;

/// The robot's keys to choose from: a search by text and nature, a tree or a table, and a field for names that the
/// robot does not list. Enter, a double click and a drag choose a key; the panel only reports the choice.
class CataloguePanel : public QWidget
{
    Q_OBJECT

public:
    explicit CataloguePanel(QWidget* parent = nullptr);
    ~CataloguePanel() override;

    /// Shows the keys of this catalogue, which is not owned; none with null.
    void setCatalogue(MemoryKeyListModel* catalogue);

    /// Checks these keys in the views, and no others. Keys that the robot does not list are shown as well.
    void setWatchedKeys(const QSet<MemoryKey>& keys);

    bool isTree() const;
    void setTree(bool isTree);

    /// Puts the cursor into the search field, with its text selected.
    void focusSearch();

Q_SIGNALS:
    /// The user chose keys of the catalogue.
    void keysChosen(const QSet<Velk::MemoryKey>& keys);
    /// The user cleared the check boxes of keys.
    void keysDropped(const QSet<Velk::MemoryKey>& keys);
    /// The user typed in a name, which is not empty. The robot may list it or not.
    void nameTyped(const QString& name);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAbstractItemView* createView(QAbstractItemView* view, const QString& name);
    QWidget* createNatureButtons();
    void onSearchEdited();
    void chooseSelected();
    void chooseSearched();
    void typeName();
    void onSelectionEdited();
    void updateCount();
    void expandFew();
    QAbstractItemView* currentView() const;

    CatalogueModel* m_model;
    CatalogueFilterModel* m_filter;
    CatalogueTreeModel* m_tree;
    QLineEdit* m_search;
    QToolButton* m_syntaxButton;
    QToolButton* m_treeButton;
    QStackedWidget* m_views;
    QTreeView* m_treeView;
    QTableView* m_tableView;
    QLabel* m_count;
    QLineEdit* m_name;
    QSet<MemoryKey> m_watchedKeys;
};

} // namespace Velk

#endif
