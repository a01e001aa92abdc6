#pragma once
// The table model of every grid: rows and fields of a tr::db::Query, edits written through the
// query (Edit / SetValue / Post), refreshed whenever the query reports a change, title texts and
// title colours per field. One model per query; the query must outlive its use by the model.
#include <QAbstractTableModel>
#include <QColor>
#include <QHash>
#include <QPointer>
#include <QSet>
#include <functional>

#include "common/db/database_error.h"
#include "common/db/query.h"

namespace tr::ui {

class DatasetModel : public QAbstractTableModel {
    Q_OBJECT
public:
    // headerData(section, Horizontal, FieldNameRole): the field a column shows.
    static constexpr int FieldNameRole = Qt::UserRole + 1;
    // data(index, MaxLengthRole): the most characters the cell's column holds, 0 when unbounded.
    static constexpr int MaxLengthRole = Qt::UserRole + 2;
    using Formatter = std::function<QString(const QVariant&)>;
    using ErrorHandler = std::function<void(const tr::db::DatabaseError&)>;

    explicit DatasetModel(tr::db::Query* query = nullptr, QObject* parent = nullptr);

    void setQuery(tr::db::Query* query);
    tr::db::Query* query() const { return query_; }
    bool datasetOpen() const { return query_ && query_->Active(); }

    QString fieldName(int column) const;
    int fieldColumn(const QString& fieldName) const;  // case-insensitive; -1 when absent

    void setTitle(const QString& fieldName, const QString& title);
    void setFieldFormat(const QString& fieldName, Formatter format);
    void setFieldReadOnly(const QString& fieldName, bool readOnly = true);
    // The text columns' widths (field -> characters), for the cell editors to hold typing to.
    void setFieldLengths(const QHash<QString, int>& lengths);
    void setReadOnly(bool readOnly) { readOnly_ = readOnly; }
    // An invalid colour leaves the title to the style.
    void setTitleColour(const QString& fieldName, const QColor& colour);
    void setAllTitleColours(const QColor& colour);
    QColor titleColour(const QString& fieldName) const;
    // Post each edited value at once (the default), or leave the row in edit for the screen.
    void setAutoPost(bool autoPost) { autoPost_ = autoPost; }
    // Database errors raised by an edit go here; without a handler they propagate to the caller.
    void setErrorHandler(ErrorHandler handler) { onError_ = std::move(handler); }

    // The view row the query is on: the row being inserted while inserting.
    int currentRow() const;
    // Moves the query to a view row; a pending edit or insert is posted first.
    void setCurrentRow(int row);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // Re-reads the query's shape; called on every change the query reports.
    void refresh();

    // Lets go of the queries of every model `owner` holds. A screen whose rows belong to one of
    // its members calls it first thing in its destructor: its grids outlive the members (child
    // widgets go last) and a cell editor still open would commit into rows already gone.
    static void releaseQueries(QObject* owner);

    // What a cell's editor opens on (Qt::EditRole): the value, an amount (a double) as its full
    // text, so that the grid edits it in a line editor and the row's checks read what was typed.
    static QVariant editText(const QVariant& value);

private:
    void queryChanged(tr::db::Query& query);
    int insertRow() const;
    bool moveTo(int row);
    template <typename F>
    bool guarded(F&& action);

    tr::db::Query* query_ = nullptr;
    QStringList columns_;  // the shape the views know
    int rows_ = 0;
    int insertRow_ = -1;   // view row of the insert buffer, -1 when not inserting
    QHash<QString, QString> titles_;
    QHash<QString, Formatter> formats_;
    QSet<QString> readOnlyFields_;
    QHash<QString, int> lengths_;
    QHash<QString, QColor> titleColours_;
    bool readOnly_ = false;
    bool autoPost_ = true;
    ErrorHandler onError_;
};

}  // namespace tr::ui
