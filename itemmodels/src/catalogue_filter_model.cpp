// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/catalogue_filter_model.h>

#include "catalogue_order.h"
#include "filter_pass.h"
#include "folded_names.h"

#include <keynames/name_path.h>
#include <keynames/name_pattern.h>

#include <QDeadlineTimer>

#include <algorithm>
#include <optional>

namespace Velk {

namespace {

// A change of the filter is on the screen within two refreshes, 33 ms; the view needs the rest of that time.
constexpr int setterBudgetMs = 14;
constexpr int sliceBudgetMs = 8;

constexpr int allNatures = DataNature | EventNature | UnknownNature;

NamePattern patternOf(const QString& text, CatalogueFilterModel::Syntax syntax, Qt::CaseSensitivity caseSensitivity)
{
    switch (syntax) {
    case CatalogueFilterModel::FixedString:
        return NamePattern::ofText(text, caseSensitivity);
    case CatalogueFilterModel::RegularExpression:
        return NamePattern::ofRegularExpression(text, caseSensitivity);
    case CatalogueFilterModel::Wildcard:
        break;
    }
    return NamePattern::ofWildcard(text, caseSensitivity);
}

} // namespace

CatalogueFilterModel::CatalogueFilterModel(CatalogueModel* source, QObject* parent)
    : QAbstractProxyModel(parent)
    , m_pattern(std::make_unique<NamePattern>())
    , m_shownPattern(std::make_unique<NamePattern>())
    , m_order(std::make_unique<CatalogueOrder>())
{
    m_passTimer.setSingleShot(true);
    m_passTimer.setInterval(0);
    connect(&m_passTimer, &QTimer::timeout, this, [this] { continuePass(QDeadlineTimer(sliceBudgetMs)); });
    setSourceModel(source);
}

CatalogueFilterModel::~CatalogueFilterModel() = default;

void CatalogueFilterModel::setSourceModel(QAbstractItemModel* source)
{
    auto* const catalogueModel = qobject_cast<CatalogueModel*>(source);
    if (source && !catalogueModel)
        qWarning("CatalogueFilterModel: the source model has to be a CatalogueModel");
    if (m_source)
        m_source->disconnect(this);

    dropRows();
    beginResetModel();
    m_source = catalogueModel;
    QAbstractProxyModel::setSourceModel(catalogueModel);
    endResetModel();
    if (m_source) {
        connect(m_source, &QAbstractItemModel::modelAboutToBeReset, this, &CatalogueFilterModel::dropRows);
        connect(m_source, &QAbstractItemModel::modelReset, this, &CatalogueFilterModel::onSourceReset);
        connect(m_source, &QAbstractItemModel::rowsInserted, this, &CatalogueFilterModel::onSourceRowsInserted);
        connect(m_source, &QAbstractItemModel::dataChanged, this, &CatalogueFilterModel::onSourceDataChanged);
        connect(m_source, &QObject::destroyed, this, [this] {
            dropRows();
            onSourceReset();
        });
    }
    onSourceReset();
}

// The filter

void CatalogueFilterModel::setText(const QString& text)
{
    if (m_text == text)
        return;
    m_text = text;
    onTextSettingsChanged();
    emit textChanged();
}

void CatalogueFilterModel::setSyntax(Syntax syntax)
{
    if (m_syntax == syntax)
        return;
    m_syntax = syntax;
    onTextSettingsChanged();
    emit syntaxChanged();
}

void CatalogueFilterModel::setFilterCaseSensitivity(Qt::CaseSensitivity caseSensitivity)
{
    if (m_caseSensitivity == caseSensitivity)
        return;
    m_caseSensitivity = caseSensitivity;
    onTextSettingsChanged();
    emit filterCaseSensitivityChanged();
}

void CatalogueFilterModel::setNatures(int natures)
{
    natures &= allNatures;
    if (m_natures == natures)
        return;
    m_natures = natures;
    refilter();
    emit naturesChanged();
}

void CatalogueFilterModel::setNatureShown(int nature, bool isShown)
{
    setNatures(isShown ? m_natures | nature : m_natures & ~nature);
}

void CatalogueFilterModel::onTextSettingsChanged()
{
    auto pattern = std::make_unique<NamePattern>(patternOf(m_text, m_syntax, m_caseSensitivity));
    if (!pattern->errorString().isEmpty()) {
        xSetTextError(tr("\"%1\" is not a regular expression yet: %2").arg(m_text, pattern->errorString()));
        return;
    }
    m_pattern = std::move(pattern);
    refilter();
    xSetTextError(QString());
}

bool CatalogueFilterModel::isShownByFilter(int sourceRow) const
{
    const MemoryKey& key = m_source->key(sourceRow);
    return (key.nature() & m_shownNatures) && m_shownPattern->accepts(key.name(), foldedCase(key.name()));
}

void CatalogueFilterModel::refilter()
{
    // Each further character of a word only takes rows away.
    const bool isNarrowing = m_pattern->narrows(*m_shownPattern) && (m_natures & ~m_shownNatures) == 0;
    m_pass = std::make_unique<FilterPass>(*m_pattern, m_natures,
                                          isNarrowing ? std::make_optional(m_accepted) : std::nullopt);
    continuePass(QDeadlineTimer(setterBudgetMs));
}

void CatalogueFilterModel::continuePass(QDeadlineTimer deadline)
{
    if (!m_pass)
        return;
    if (m_source && m_pass->wantsFoldedNames() && !m_foldedNames)
        m_foldedNames = std::make_unique<FoldedNames>(*m_source);
    if (!m_pass->advance(m_source, m_foldedNames.get(), deadline)) {
        m_passTimer.start();
        xSetFiltering(true);
        return;
    }

    m_passTimer.stop();
    const std::unique_ptr<FilterPass> pass = std::move(m_pass);
    *m_shownPattern = pass->pattern();
    m_shownNatures = pass->natures();
    showRows(pass->takeAccepted());
    // A slot may have changed the filter again.
    xSetFiltering(m_pass != nullptr);
}

void CatalogueFilterModel::finishFiltering()
{
    while (m_pass)
        continuePass(QDeadlineTimer(QDeadlineTimer::Forever));
}

void CatalogueFilterModel::showRows(std::vector<int> accepted)
{
    if (accepted != m_accepted) {
        beginResetModel();
        m_accepted = std::move(accepted);
        m_shown = m_order->sorted(m_accepted);
        endResetModel();
    }
    announceCount();
}

// Following the source

void CatalogueFilterModel::dropRows()
{
    // No view reads the rows of the former keys from here on.
    m_pass.reset();
    m_foldedNames.reset();
    beginResetModel();
    m_accepted.clear();
    m_shown.clear();
    m_order->clear();
    endResetModel();
    // Without natures there are no rows: the next pass does not narrow them but looks at all names.
    *m_shownPattern = NamePattern();
    m_shownNatures = 0;
}

void CatalogueFilterModel::onSourceReset()
{
    m_order->update(m_source);
    refilter();
}

void CatalogueFilterModel::onSourceRowsInserted(const QModelIndex&, int first, int last)
{
    m_foldedNames.reset();
    const int inserted = last - first + 1;
    for (std::vector<int>* rows : {&m_accepted, &m_shown}) {
        for (int& row : *rows) {
            if (row >= first)
                row += inserted;
        }
    }
    m_order->update(m_source);
    for (int row = first; row <= last; ++row) {
        if (!isShownByFilter(row))
            continue;
        std::vector<int> accepted = m_accepted;
        accepted.insert(std::lower_bound(accepted.begin(), accepted.end(), row), row);
        std::vector<int> shown = m_order->sorted(accepted);
        const int position = int(std::find(shown.begin(), shown.end(), row) - shown.begin());
        beginInsertRows(QModelIndex(), position, position);
        m_accepted = std::move(accepted);
        m_shown = std::move(shown);
        endInsertRows();
    }
    announceCount();
    if (m_pass)
        refilter();
}

void CatalogueFilterModel::onSourceDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                               const QVector<int>& roles)
{
    if (roles.isEmpty()) {
        // Natures and descriptions may have changed, and rows are filtered and sorted by them. So the next pass must
        // not narrow the present rows.
        m_shownNatures = 0;
        m_order->update(m_source);
        refilter();
        if (!m_order->isBySourceRow() && m_order->sorted(m_accepted) != m_shown)
            resort();
    }
    if (m_shown.empty())
        return;
    QModelIndex first = index(0, topLeft.column());
    QModelIndex last = index(count() - 1, bottomRight.column());
    if (topLeft.row() == bottomRight.row()) {
        first = mapFromSource(topLeft);
        last = mapFromSource(bottomRight);
    }
    if (first.isValid() && last.isValid())
        emit dataChanged(first, last, roles);
}

// Sorting

void CatalogueFilterModel::sort(int column, Qt::SortOrder order)
{
    m_order->setColumn(column, order);
    resort();
}

void CatalogueFilterModel::resort()
{
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    m_order->update(m_source);

    const QModelIndexList before = persistentIndexList();
    std::vector<int> sourceRows;
    for (const QModelIndex& index : before)
        sourceRows.push_back(m_shown[size_t(index.row())]);
    m_shown = m_order->sorted(m_accepted);
    std::vector<int> positions(m_source ? size_t(m_source->count()) : 0);
    for (size_t position = 0; position < m_shown.size(); ++position)
        positions[size_t(m_shown[position])] = int(position);
    QModelIndexList after;
    for (int i = 0; i < before.size(); ++i)
        after << index(positions[size_t(sourceRows[size_t(i)])], before.at(i).column());
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

// Item model

QModelIndex CatalogueFilterModel::index(int row, int column, const QModelIndex& parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
}

QModelIndex CatalogueFilterModel::parent(const QModelIndex&) const
{
    return {};
}

int CatalogueFilterModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

int CatalogueFilterModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(CatalogueModel::ColumnCount);
}

bool CatalogueFilterModel::hasChildren(const QModelIndex& parent) const
{
    return !parent.isValid() && count() > 0;
}

QModelIndex CatalogueFilterModel::mapToSource(const QModelIndex& proxyIndex) const
{
    if (!m_source || !proxyIndex.isValid() || proxyIndex.row() >= count())
        return {};
    return m_source->index(m_shown[size_t(proxyIndex.row())], proxyIndex.column());
}

QModelIndex CatalogueFilterModel::mapFromSource(const QModelIndex& sourceIndex) const
{
    if (!sourceIndex.isValid() || sourceIndex.model() != m_source)
        return {};
    const auto found = m_order->isBySourceRow() ? std::lower_bound(m_shown.begin(), m_shown.end(), sourceIndex.row())
                                                : std::find(m_shown.begin(), m_shown.end(), sourceIndex.row());
    if (found == m_shown.end() || *found != sourceIndex.row())
        return {};
    return index(int(found - m_shown.begin()), sourceIndex.column());
}

QVariant CatalogueFilterModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    // Not from the base class, which finds the section through a row: there may be none.
    if (m_source && orientation == Qt::Horizontal)
        return m_source->headerData(section, orientation, role);
    return QAbstractItemModel::headerData(section, orientation, role);
}

// Notifications of changes

void CatalogueFilterModel::announceCount()
{
    if (m_announcedCount == count())
        return;
    m_announcedCount = count();
    emit countChanged();
}

void CatalogueFilterModel::xSetTextError(const QString& error)
{
    if (m_textError == error)
        return;
    m_textError = error;
    emit textErrorChanged();
}

void CatalogueFilterModel::xSetFiltering(bool isFiltering)
{
    if (m_isFiltering == isFiltering)
        return;
    m_isFiltering = isFiltering;
    emit filteringChanged();
}

} // namespace Velk
