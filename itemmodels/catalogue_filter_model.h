#ifndef ITEMMODELS_CATALOGUE_FILTER_MODEL_H
#define ITEMMODELS_CATALOGUE_FILTER_MODEL_H

#include <itemmodels/catalogue_model.h>
#include <itemmodels/itemmodels_export.h>

#include <QAbstractProxyModel>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <memory>
#include <vector>

namespace Velk {

class NamePattern;

/// The rows of a catalogue model that match a text and a mask of natures. For a tree of them, put a CatalogueTreeModel
/// on top: its branches are then made of what matches.
///
/// Fast enough to type in with 100 000 names. A change of the filter is one reset of this model, or nothing when the
/// rows stay the same; it takes effect before the setter returns unless it takes longer than a view can wait. The
/// work goes on from the event loop then, the rows stay what they were, and isFiltering() is true until it is done.
///
/// Sorting by the header is by this class too: by name path, description or nature.
///
/// Lives on the source model's thread.
class ITEMMODELS_EXPORT CatalogueFilterModel : public QAbstractProxyModel
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(Syntax syntax READ syntax WRITE setSyntax NOTIFY syntaxChanged)
    Q_PROPERTY(Qt::CaseSensitivity filterCaseSensitivity READ filterCaseSensitivity WRITE setFilterCaseSensitivity
                   NOTIFY filterCaseSensitivityChanged)
    Q_PROPERTY(int natures READ natures WRITE setNatures NOTIFY naturesChanged)
    Q_PROPERTY(QString textError READ textError NOTIFY textErrorChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(bool filtering READ isFiltering NOTIFY filteringChanged)

public:
    enum Syntax
    {
        FixedString, ///< the text itself
        Wildcard,    ///< `*` any characters, also the separators of a path; `?` any one; `[abc]`, `[!abc]` one of a set
        RegularExpression ///< as QRegularExpression takes it
    };
    Q_ENUM(Syntax)

    /// Shows all rows of `source`, which is not owned and may be null or die at any time.
    explicit CatalogueFilterModel(CatalogueModel* source, QObject* parent = nullptr);
    ~CatalogueFilterModel() override;

    CatalogueModel* catalogueModel() const { return m_source; }
    /// Only a CatalogueModel or null: any other leaves this model empty, with a warning.
    void setSourceModel(QAbstractItemModel* source) override;

    /// What a name has to contain, anywhere in it; every name contains the empty text, which is the default.
    QString text() const { return m_text; }
    void setText(const QString& text);
    /// How the text is read; Wildcard by default, which finds a plain text as well.
    Syntax syntax() const { return m_syntax; }
    void setSyntax(Syntax syntax);
    /// Qt::CaseSensitive by default, as with Qt's own proxy models.
    Qt::CaseSensitivity filterCaseSensitivity() const { return m_caseSensitivity; }
    void setFilterCaseSensitivity(Qt::CaseSensitivity caseSensitivity);
    /// Why the text is no regular expression, translated; empty when it is one. The rows stay what they were until it
    /// is one again: people type expressions one character after the other.
    QString textError() const { return m_textError; }

    /// The natures to show, as bits of MemoryKeyNature; all by default. A key has the nature that the catalogue
    /// model shows for it, so 0 shows nothing.
    int natures() const { return m_natures; }
    void setNatures(int natures);
    /// Shows the keys of this nature, or hides them, and leaves the others as they are.
    Q_INVOKABLE void setNatureShown(int nature, bool isShown);

    /// How many keys are shown; catalogueModel()->count() are there.
    int count() const { return int(m_shown.size()); }
    bool isFiltering() const { return m_isFiltering; }
    /// Ends the work that isFiltering() tells of before it returns.
    void finishFiltering();

    /// The rows of the catalogue model that are shown, ascending, however this model is sorted.
    const std::vector<int>& sourceRows() const { return m_accepted; }

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex mapToSource(const QModelIndex& proxyIndex) const override;
    QModelIndex mapFromSource(const QModelIndex& sourceIndex) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    /// A column of CatalogueModel; any other number, and the name column ascending, is the order of the name paths.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

Q_SIGNALS:
    void textChanged();
    void syntaxChanged();
    void filterCaseSensitivityChanged();
    void naturesChanged();
    void textErrorChanged();
    /// count() changed.
    void countChanged();
    /// isFiltering() changed.
    void filteringChanged();

private:
    struct FoldedNames;
    struct Pass;

    void dropRows();
    void onSourceReset();
    void onSourceRowsInserted(const QModelIndex& parent, int first, int last);
    void onSourceDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QVector<int>& roles);
    void refilter();
    void onTextSettingsChanged();
    bool isShownByFilter(int sourceRow) const;
    void continuePass(int budgetMs);
    void showRows(std::vector<int> accepted);
    void updateSortedSourceRows();
    std::vector<int> sorted(const std::vector<int>& accepted) const;
    void announceCount();
    void xSetTextError(const QString& error);
    void xSetFiltering(bool isFiltering);

    QPointer<CatalogueModel> m_source;
    QString m_text;
    Syntax m_syntax = Wildcard;
    Qt::CaseSensitivity m_caseSensitivity = Qt::CaseSensitive;
    int m_natures = DataNature | EventNature | UnknownNature;
    QString m_textError;
    std::unique_ptr<NamePattern> m_pattern;      // of the last text that was one
    std::unique_ptr<NamePattern> m_shownPattern; // what the shown rows are the result of, with the next member
    int m_shownNatures = DataNature | EventNature | UnknownNature;
    std::unique_ptr<FoldedNames> m_foldedNames; // of all source rows; made when first needed
    std::unique_ptr<Pass> m_pass;               // the work under way
    bool m_isFiltering = false;
    std::vector<int> m_accepted;         // source rows, ascending
    std::vector<int> m_shown;            // the same, as sorted
    std::vector<int> m_sortedSourceRows; // all source rows, as sorted; empty when that is ascending
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    int m_announcedCount = 0;
    QTimer m_passTimer;
};

} // namespace Velk

#endif
