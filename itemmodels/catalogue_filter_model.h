// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_CATALOGUE_FILTER_MODEL_H
#define ITEMMODELS_CATALOGUE_FILTER_MODEL_H

#include <itemmodels/catalogue_model.h>
#include <itemmodels/itemmodels_export.h>

#include <QAbstractProxyModel>
#include <QDeadlineTimer>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <memory>
#include <vector>

namespace Velk {

class CatalogueOrder;
class FilterPass;
class FoldedNames;
class NamePattern;

/// The rows of a catalogue model that match a text and a mask of natures. For a tree of them, put a CatalogueTreeModel
/// on top: it shows the branches of the rows that match.
///
/// Fast enough to type in with 100 000 names. A change of the filter is one reset of this model, or nothing when the
/// rows stay the same. It takes effect before the setter returns, unless it takes longer than 14 ms: then the event
/// loop goes on with it, the rows stay as they were, and isFiltering() is true until it is done.
///
/// Sorts by itself: by name path, description or nature.
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

    /// Shows all rows of `source`, which is not owned, may be null, and may be destroyed at any time.
    explicit CatalogueFilterModel(CatalogueModel* source, QObject* parent = nullptr);
    ~CatalogueFilterModel() override;

    CatalogueModel* catalogueModel() const { return m_source; }
    /// Only a CatalogueModel or null: any other leaves this model empty, with a warning.
    void setSourceModel(QAbstractItemModel* source) override;

    /// The text that a name has to contain, anywhere. Empty by default, which every name contains.
    QString text() const { return m_text; }
    void setText(const QString& text);
    /// How the text is read; Wildcard by default, which also finds a plain text.
    Syntax syntax() const { return m_syntax; }
    void setSyntax(Syntax syntax);
    /// Qt::CaseSensitive by default, as with Qt's own proxy models.
    Qt::CaseSensitivity filterCaseSensitivity() const { return m_caseSensitivity; }
    void setFilterCaseSensitivity(Qt::CaseSensitivity caseSensitivity);
    /// Why the text is not a valid expression or pattern, translated; empty when it is valid. While it is not, the rows
    /// stay as they were: people type expressions one character after the other.
    QString textError() const { return m_textError; }

    /// The natures to show, as bits of MemoryKeyNature; all by default. Every key has exactly one nature, so 0 shows
    /// nothing.
    int natures() const { return m_natures; }
    void setNatures(int natures);
    /// Shows the keys of this nature, or hides them, and leaves the others as they are.
    Q_INVOKABLE void setNatureShown(int nature, bool isShown);

    /// The number of keys that are shown, of catalogueModel()->count().
    int count() const { return int(m_shown.size()); }
    bool isFiltering() const { return m_isFiltering; }
    /// Finishes a filtering that is under way before it returns.
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
    void dropRows();
    void onSourceReset();
    void onSourceRowsInserted(const QModelIndex& parent, int first, int last);
    void onSourceDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QVector<int>& roles);
    void refilter();
    void onTextSettingsChanged();
    bool isShownByFilter(int sourceRow) const;
    void continuePass(QDeadlineTimer deadline);
    void showRows(std::vector<int> accepted);
    void resort();
    void announceCount();
    void xSetTextError(const QString& error);
    void xSetFiltering(bool isFiltering);

    QPointer<CatalogueModel> m_source;
    QString m_text;
    Syntax m_syntax = Wildcard;
    Qt::CaseSensitivity m_caseSensitivity = Qt::CaseSensitive;
    int m_natures = DataNature | EventNature | UnknownNature;
    QString m_textError;
    std::unique_ptr<NamePattern> m_pattern; // of the last text that is a valid pattern
    // The shown rows are the result of these two.
    std::unique_ptr<NamePattern> m_shownPattern;
    int m_shownNatures = DataNature | EventNature | UnknownNature;
    std::unique_ptr<FoldedNames> m_foldedNames; // of all source rows; made when first needed
    std::unique_ptr<FilterPass> m_pass;         // the work under way
    bool m_isFiltering = false;
    std::unique_ptr<CatalogueOrder> m_order;
    std::vector<int> m_accepted; // source rows, ascending
    std::vector<int> m_shown;    // the same, in m_order
    int m_announcedCount = 0;
    QTimer m_passTimer;
};

} // namespace Velk

#endif
