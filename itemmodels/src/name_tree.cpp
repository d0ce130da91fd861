// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "name_tree.h"

#include "catalogue_rows.h"

#include <keynames/name_path.h>

#include <algorithm>

namespace Velk {

NameTree::NameTree(const CatalogueRows& rows)
    : m_rows(rows)
{
    startOver(rows.count());
}

void NameTree::startOver(int rowCount)
{
    m_items.clear();
    makeItem(-1, 0, 0, rowCount, -1, -1);
}

int NameTree::makeItem(int parent, int row, int begin, int end, int segmentBegin, int segmentEnd) const
{
    Item item;
    item.parent = parent;
    item.row = row;
    item.begin = begin;
    item.end = end;
    item.segmentBegin = segmentBegin;
    item.segmentEnd = segmentEnd;
    m_items.push_back(item);
    return count() - 1;
}

const std::vector<int>& NameTree::children(int item) const
{
    if (!m_items[size_t(item)].hasChildList) {
        std::vector<int> children;
        const int segmentBegin = m_items[size_t(item)].segmentEnd + 1;
        const int end = m_items[size_t(item)].end;
        // The key that is the item itself comes before those below it.
        int begin = m_items[size_t(item)].begin;
        if (isKey(item))
            ++begin;
        while (begin < end) {
            const QString first = m_rows.name(begin);
            const QStringView segment = pathSegment(first, segmentBegin);
            const int childEnd = endOfSegment(begin, end, segmentBegin, segment);
            children.push_back(makeItem(item, int(children.size()), begin, childEnd, segmentBegin,
                                        segmentBegin + int(segment.size())));
            begin = childEnd;
        }
        m_items[size_t(item)].children = std::move(children);
        m_items[size_t(item)].hasChildList = true;
    }
    return m_items[size_t(item)].children;
}

// The end of the rows that have `segment` at this place, as the row `begin` has. A galloping search: the end is usually
// near, or it is `end`.
int NameTree::endOfSegment(int begin, int end, int segmentBegin, QStringView segment) const
{
    const auto hasSegment = [&](int row) {
        const QString other = m_rows.name(row);
        return pathSegment(other, segmentBegin) == segment;
    };
    int last = begin; // has the segment
    int step = 1;
    while (last + step < end && hasSegment(last + step)) {
        last += step;
        step *= 2;
    }
    int limit = std::min(last + step, end); // does not have the segment, or is the end
    while (last + 1 < limit) {
        const int middle = last + (limit - last) / 2;
        if (hasSegment(middle))
            last = middle;
        else
            limit = middle;
    }
    return limit;
}

bool NameTree::hasChildren(int item) const
{
    const Item& parent = this->item(item);
    return parent.end - parent.begin > (isKey(item) ? 1 : 0);
}

bool NameTree::isKey(int item) const
{
    const Item& key = this->item(item);
    return key.segmentEnd >= 0 && key.begin < key.end && m_rows.name(key.begin).size() == key.segmentEnd;
}

QString NameTree::segment(int item) const
{
    const Item& named = this->item(item);
    return m_rows.name(named.begin).mid(named.segmentBegin, named.segmentEnd - named.segmentBegin);
}

QString NameTree::path(int item) const
{
    const Item& named = this->item(item);
    return m_rows.name(named.begin).left(named.segmentEnd);
}

// The first child whose rows begin after `shownRow`; the one before it contains that row, if any child does. The
// children are listed.
std::vector<int>::const_iterator NameTree::childAfter(int item, int shownRow) const
{
    const std::vector<int>& list = this->item(item).children;
    return std::upper_bound(list.begin(), list.end(), shownRow,
                            [this](int row, int child) { return row < this->item(child).begin; });
}

int NameTree::find(const QString& path) const
{
    // The row of a key of that name, or else of the first key below the path.
    const int row = m_rows.lowerBound(path);
    int current = root;
    while (item(current).segmentEnd < int(path.size())) {
        children(current);
        const auto after = childAfter(current, row);
        if (after == item(current).children.begin())
            return -1;
        current = *(after - 1);
        const Item& found = item(current);
        if (row >= found.end || this->path(current) != path.left(found.segmentEnd) ||
            (found.segmentEnd < path.size() && path.at(found.segmentEnd) != pathSeparator))
            return -1;
    }
    return current;
}

int NameTree::madeItem(int shownRow) const
{
    int current = root;
    for (;;) {
        if (isKey(current) && item(current).begin == shownRow)
            return current;
        if (!item(current).hasChildList)
            return -1;
        const auto after = childAfter(current, shownRow);
        if (after == item(current).children.begin())
            return -1;
        current = *(after - 1);
    }
}

NameTree::Insertion NameTree::insertRow(int shownRow)
{
    // First all items keep the rows that they contain, some of which have moved on by one.
    for (Item& item : m_items) {
        if (item.begin >= shownRow)
            ++item.begin;
        if (item.end > shownRow)
            ++item.end;
    }

    // Then the new row is added to the items on its path, from the root to the one that is new or has become a key.
    Insertion insertion;
    const QString name = m_rows.name(shownRow);
    int current = root;
    for (;;) {
        const bool isBetween = item(current).begin < shownRow && shownRow < item(current).end;
        const bool isItself = item(current).segmentEnd == int(name.size());
        if (!item(current).hasChildList && isBetween)
            return insertion; // no view has seen the items below, and there were some already
        if (!isItself)
            children(current); // as they were: an item without children gets its first one now
        Item& containing = m_items[size_t(current)];
        if (containing.begin == shownRow + 1 || containing.begin == containing.end)
            containing.begin = shownRow;
        containing.end = std::max(containing.end, shownRow + 1);
        if (current != root)
            insertion.changed.push_back(current);
        if (isItself)
            return insertion;

        const QStringView newSegment = pathSegment(name, item(current).segmentEnd + 1);
        const std::vector<int>& list = item(current).children;
        const auto after = childAfter(current, shownRow);
        const auto isOnPath = [&](int child) { return QStringView(segment(child)) == newSegment; };
        if (after != list.begin() && isOnPath(*(after - 1))) {
            current = *(after - 1);
        } else if (after != list.end() && isOnPath(*after)) {
            current = *after;
        } else {
            insertion.parent = current;
            insertion.row = int(after - list.begin());
            return insertion;
        }
    }
}

void NameTree::addItem(const Insertion& insertion, int shownRow)
{
    const QString name = m_rows.name(shownRow);
    const int segmentBegin = item(insertion.parent).segmentEnd + 1;
    const int segmentEnd = segmentBegin + int(pathSegment(name, segmentBegin).size());
    const int added = makeItem(insertion.parent, insertion.row, shownRow, shownRow + 1, segmentBegin, segmentEnd);
    std::vector<int>& siblings = m_items[size_t(insertion.parent)].children;
    siblings.insert(siblings.begin() + insertion.row, added);
    for (size_t i = size_t(insertion.row) + 1; i < siblings.size(); ++i)
        m_items[size_t(siblings[i])].row = int(i);
}

} // namespace Velk
