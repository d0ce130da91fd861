#include <itemmodels/catalogue_filter_model.h>

#include <keynames/name_path.h>
#include <keynames/name_pattern.h>

#include <QElapsedTimer>

#include <algorithm>
#include <numeric>

namespace Velk {

namespace {

// Two refreshes of a screen are 33 ms; what is left is for the view to show the result.
constexpr int setterBudgetMs = 14;
constexpr int sliceBudgetMs = 8;
constexpr int unlimitedBudget = -1;

// The clock is asked between this many names.
constexpr int namesPerClockReading = 256;

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

/// The folded names of all source rows, end to end: read in one sweep, at the speed of the memory.
struct CatalogueFilterModel::FoldedNames
{
    explicit FoldedNames(const CatalogueModel& source)
    {
        size_t size = 0;
        for (int row = 0; row < source.count(); ++row)
            size += size_t(source.key(row).name().size());
        text.reserve(int(size));
        ends.reserve(size_t(source.count()));
        for (int row = 0; row < source.count(); ++row) {
            text += foldedCase(source.key(row).name());
            ends.push_back(int(text.size()));
        }
    }

    QStringView name(int row) const
    {
        const int begin = row == 0 ? 0 : ends[size_t(row) - 1];
        return QStringView(text).mid(begin, ends[size_t(row)] - begin);
    }

    QString text;
    std::vector<int> ends;
};

/// One run of the filter over the source rows.
struct CatalogueFilterModel::Pass
{
    std::unique_ptr<NamePattern> pattern;
    int natures = 0;
    std::vector<int> candidates; // the rows to look at when isNarrowing; otherwise all
    bool isNarrowing = false;
    int next = 0;
    std::vector<int> accepted;
};

CatalogueFilterModel::CatalogueFilterModel(CatalogueModel* source, QObject* parent)
    : QAbstractProxyModel(parent)
    , m_pattern(std::make_unique<NamePattern>())
    , m_shownPattern(std::make_unique<NamePattern>())
{
    m_passTimer.setSingleShot(true);
    m_passTimer.setInterval(0);
    connect(&m_passTimer, &QTimer::timeout, this, [this] { continuePass(sliceBudgetMs); });
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
    auto pass = std::make_unique<Pass>();
    pass->pattern = std::make_unique<NamePattern>(*m_pattern);
    pass->natures = m_natures;
    // Each further character of a word only takes rows away.
    pass->isNarrowing = m_pattern->narrows(*m_shownPattern) && (m_natures & ~m_shownNatures) == 0;
    if (pass->isNarrowing)
        pass->candidates = m_accepted;
    m_pass = std::move(pass);
    continuePass(setterBudgetMs);
}

void CatalogueFilterModel::continuePass(int budgetMs)
{
    if (!m_pass)
        return;
    QElapsedTimer clock;
    clock.start();
    if (m_source && m_pass->pattern->wantsFoldedName() && !m_pass->pattern->acceptsEverything() && !m_foldedNames)
        m_foldedNames = std::make_unique<FoldedNames>(*m_source);

    const NamePattern& pattern = *m_pass->pattern;
    const bool readsFoldedNames = pattern.wantsFoldedName() && m_foldedNames;
    const bool takesAllNames = pattern.acceptsEverything();
    const int sourceCount = m_source ? m_source->count() : 0;
    const int end = m_pass->isNarrowing ? int(m_pass->candidates.size()) : sourceCount;
    while (m_pass->next < end) {
        const int sliceEnd = std::min(end, m_pass->next + namesPerClockReading);
        for (int i = m_pass->next; i < sliceEnd; ++i) {
            const int row = m_pass->isNarrowing ? m_pass->candidates[size_t(i)] : i;
            const MemoryKey& key = m_source->key(row);
            if (!(key.nature() & m_pass->natures))
                continue;
            if (takesAllNames ||
                pattern.accepts(key.name(), readsFoldedNames ? m_foldedNames->name(row) : QStringView()))
                m_pass->accepted.push_back(row);
        }
        m_pass->next = sliceEnd;
        if (m_pass->next < end && budgetMs != unlimitedBudget && clock.elapsed() >= budgetMs) {
            m_passTimer.start();
            xSetFiltering(true);
            return;
        }
    }

    m_passTimer.stop();
    const std::unique_ptr<Pass> pass = std::move(m_pass);
    *m_shownPattern = *pass->pattern;
    m_shownNatures = pass->natures;
    showRows(std::move(pass->accepted));
    // A slot may have changed the filter again.
    xSetFiltering(m_pass != nullptr);
}

void CatalogueFilterModel::finishFiltering()
{
    while (m_pass)
        continuePass(unlimitedBudget);
}

void CatalogueFilterModel::showRows(std::vector<int> accepted)
{
    if (accepted != m_accepted) {
        beginResetModel();
        m_accepted = std::move(accepted);
        m_shown = sorted(m_accepted);
        endResetModel();
    }
    announceCount();
}

// Following the source

void CatalogueFilterModel::dropRows()
{
    // What the rows of before tell means nothing any more, to the views neither.
    m_pass.reset();
    m_foldedNames.reset();
    beginResetModel();
    m_accepted.clear();
    m_shown.clear();
    m_sortedSourceRows.clear();
    endResetModel();
    // No rows are what no natures give: the next pass is over all names.
    *m_shownPattern = NamePattern();
    m_shownNatures = 0;
}

void CatalogueFilterModel::onSourceReset()
{
    updateSortedSourceRows();
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
    updateSortedSourceRows();
    for (int row = first; row <= last; ++row) {
        if (!isShownByFilter(row))
            continue;
        std::vector<int> accepted = m_accepted;
        accepted.insert(std::lower_bound(accepted.begin(), accepted.end(), row), row);
        std::vector<int> shown = sorted(accepted);
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
        // Natures and descriptions may have changed, by which rows are chosen and sorted. The present rows are
        // no base for a narrower choice.
        m_shownNatures = 0;
        updateSortedSourceRows();
        refilter();
        if (!m_sortedSourceRows.empty() && sorted(m_accepted) != m_shown)
            sort(m_sortColumn, m_sortOrder);
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
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    m_sortColumn = column;
    m_sortOrder = order;
    updateSortedSourceRows();

    const QModelIndexList before = persistentIndexList();
    std::vector<int> sourceRows;
    for (const QModelIndex& index : before)
        sourceRows.push_back(m_shown[size_t(index.row())]);
    m_shown = sorted(m_accepted);
    std::vector<int> positions(m_source ? size_t(m_source->count()) : 0);
    for (size_t position = 0; position < m_shown.size(); ++position)
        positions[size_t(m_shown[position])] = int(position);
    QModelIndexList after;
    for (int i = 0; i < before.size(); ++i)
        after << index(positions[size_t(sourceRows[size_t(i)])], before.at(i).column());
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void CatalogueFilterModel::updateSortedSourceRows()
{
    m_sortedSourceRows.clear();
    const bool isAscending = m_sortOrder == Qt::AscendingOrder;
    const bool isByName = m_sortColumn == CatalogueModel::NameColumn;
    const bool isByKey =
        m_sortColumn == CatalogueModel::DescriptionColumn || m_sortColumn == CatalogueModel::NatureColumn;
    if (!m_source || !(isByKey || (isByName && !isAscending)))
        return;
    m_sortedSourceRows.resize(size_t(m_source->count()));
    std::iota(m_sortedSourceRows.begin(), m_sortedSourceRows.end(), 0);
    if (isByKey) {
        const CatalogueModel& source = *m_source;
        const bool isByNature = m_sortColumn == CatalogueModel::NatureColumn;
        std::stable_sort(m_sortedSourceRows.begin(), m_sortedSourceRows.end(), [&source, isByNature](int a, int b) {
            return isByNature ? source.key(a).nature() < source.key(b).nature()
                              : comparePaths(source.key(a).description(), source.key(b).description()) < 0;
        });
    }
    if (!isAscending)
        std::reverse(m_sortedSourceRows.begin(), m_sortedSourceRows.end());
}

std::vector<int> CatalogueFilterModel::sorted(const std::vector<int>& accepted) const
{
    if (m_sortedSourceRows.empty())
        return accepted;
    std::vector<bool> isAccepted(m_sortedSourceRows.size());
    for (int row : accepted)
        isAccepted[size_t(row)] = true;
    std::vector<int> rows;
    rows.reserve(accepted.size());
    std::copy_if(m_sortedSourceRows.begin(), m_sortedSourceRows.end(), std::back_inserter(rows),
                 [&isAccepted](int row) { return isAccepted[size_t(row)]; });
    return rows;
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
    const auto found = m_sortedSourceRows.empty() ? std::lower_bound(m_shown.begin(), m_shown.end(), sourceIndex.row())
                                                  : std::find(m_shown.begin(), m_shown.end(), sourceIndex.row());
    if (found == m_shown.end() || *found != sourceIndex.row())
        return {};
    return index(int(found - m_shown.begin()), sourceIndex.column());
}

QVariant CatalogueFilterModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    // The source is asked directly: the base class takes the section from a row, and there may be none.
    if (m_source && orientation == Qt::Horizontal)
        return m_source->headerData(section, orientation, role);
    return QAbstractItemModel::headerData(section, orientation, role);
}

// Notification on a change

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
