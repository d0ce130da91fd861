// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_NAME_TREE_H
#define ITEMMODELS_NAME_TREE_H

#include <QString>

#include <vector>

namespace Velk {

class CatalogueRows;

/// The tree of the names in sorted rows. An item is a number; it is made when its parent is asked for its children, and
/// keeps its number until the tree starts over.
///
/// An item contains neighbouring rows, all names of which begin with the item's path. It is a key when the first of
/// these names is that path; its children contain the other rows.
class NameTree
{
public:
    static constexpr int root = 0;

    struct Item
    {
        int parent;
        int row; // among the children of the parent
        // The shown rows [begin, end).
        int begin;
        int end;
        // The last segment of the path, in code units of the name in the row `begin`. The path ends at segmentEnd,
        // which is -1 for the root.
        int segmentBegin;
        int segmentEnd;
        bool hasChildList = false;
        std::vector<int> children; // filled when hasChildList
    };

    /// `rows` must outlive the tree.
    explicit NameTree(const CatalogueRows& rows);
    /// Forgets all items but the root, which contains this number of rows.
    void startOver(int rowCount);

    int count() const { return int(m_items.size()); }
    const Item& item(int item) const { return m_items[size_t(item)]; }
    const std::vector<int>& children(int item) const;
    bool hasChildren(int item) const;
    bool isKey(int item) const;
    /// The text of the last segment.
    QString segment(int item) const;
    QString path(int item) const;

    /// The item of a path; -1 when no row has it or is below it.
    int find(const QString& path) const;
    /// The item that is the key in this row; -1 when it was not made yet.
    int madeItem(int shownRow) const;

    /// What a new row changes. The row is counted already; addItem() makes its item.
    struct Insertion
    {
        std::vector<int> changed; ///< items that contain one row more or have become a key; from the root down
        int parent = -1;          ///< of the item that is to be made; -1 when none is
        int row = -1;             ///< of that item among its siblings
    };
    Insertion insertRow(int shownRow);
    void addItem(const Insertion& insertion, int shownRow);

private:
    int makeItem(int parent, int row, int begin, int end, int segmentBegin, int segmentEnd) const;
    int endOfSegment(int begin, int end, int segmentBegin, QStringView segment) const;
    std::vector<int>::const_iterator childAfter(int item, int shownRow) const;

    const CatalogueRows& m_rows;
    mutable std::vector<Item> m_items; // the first one is the root
};

} // namespace Velk

#endif
