#pragma once
// ADO-like query: SQL text, Open (reads the whole result, so several queries may be open on one
// connection), ExecSQL, a cursor, fields by name, an in-memory Sort, and editing of rows of a
// query over one table (the ## transfer tables): posting writes the row back to that table.
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <optional>
#include <vector>

#include "common/db/connection.h"

namespace tr::db {

class Query;

// The value of one field in the current row; setters work only while the row is being edited.
class Field {
public:
    Field(Query* query, int index) : query_(query), index_(index) {}
    QVariant Value() const;
    QString AsString() const;
    qint64 AsInteger() const;
    double AsFloat() const;
    bool IsNull() const;
    QString FieldName() const;
    void SetValue(const QVariant& value);
    void SetAsString(const QString& value) { SetValue(value); }
    void SetAsFloat(double value) { SetValue(value); }
    void SetAsInteger(qint64 value) { SetValue(value); }
    void Clear() { SetValue(QVariant()); }

private:
    Query* query_;
    int index_;
};

class Query {
public:
    enum class State { Inactive, Browse, Edit, Insert };
    using Hook = std::function<void(Query&)>;
    // Returns false to refuse: the row stays as it is (in edit for BeforePost).
    using Guard = std::function<bool(Query&)>;

    explicit Query(Connection* connection = nullptr) : connection_(connection) {}

    Connection* connection() const { return connection_; }
    void setConnection(Connection* connection) { connection_ = connection; }
    const QString& sql() const { return sql_; }
    void setSql(const QString& text);

    void Open();
    void Close();
    qint64 ExecSQL();  // runs the text, returns rows affected; an open result is closed first
    bool Active() const { return state_ != State::Inactive; }
    State state() const { return state_; }

    bool Eof() const;
    bool Bof() const { return bof_; }
    void First();
    void Last();
    void Next();
    void Prior();
    void MoveTo(int row);  // 0-based row number in the current order
    int RecordCount() const { return static_cast<int>(rows_.size()); }
    int RecNo() const { return rows_.empty() ? 0 : current_ + 1; }
    bool IsEmpty() const { return rows_.empty(); }

    const QStringList& fieldNames() const { return columns_; }
    int fieldIndex(const QString& name) const;  // -1 when absent
    Field FieldByName(const QString& name);     // throws DatabaseError for an unknown field
    QVariant value(int row, int column) const;  // in the current order, the edit buffer included

    void Edit();
    void Insert();  // a new row before the current one
    void Append();  // a new row at the end
    // Where the row being inserted stands among the rows value() reads; -1 outside Insert.
    int insertPosition() const { return state_ == State::Insert ? insertAt_ : -1; }
    void Post();
    void Cancel();
    void Delete();
    // Whether the row being edited or inserted differs from what it started as; what a new row
    // was given before markUnmodified() (its defaults) does not count. Edits are unaffected.
    bool Modified() const;
    void markUnmodified();

    // In-memory ordering, e.g. "Koll ASC" or "sOrder, SValue DESC"; empty keeps the order.
    void setSort(const QString& sort);
    const QString& sort() const { return sort_; }

    // The table that posting writes to: the single table of "Select ... From T ...".
    QString updateTable() const;

    Guard BeforePost, BeforeDelete;
    Hook AfterPost, AfterDelete, AfterScroll, AfterOpen;
    Hook DataChanged;  // rows or values changed (for views over the dataset)

private:
    friend class Field;
    QVariant cell(int column) const;
    void setCell(int column, const QVariant& value);
    void requireOpen(const char* operation) const;
    void checkBrowse();
    void applySort();
    void scrolled();
    void changed();
    QString rowCondition(const Row& row) const;
    QString valueLiteral(const QVariant& value) const;

    Connection* connection_;
    QString sql_;
    QString sort_;
    QStringList columns_;
    std::vector<Row> rows_;  // in the current order
    int current_ = 0;
    bool eof_ = true;
    bool bof_ = true;
    State state_ = State::Inactive;
    Row buffer_;                 // the row being edited or inserted
    std::optional<Row> original_;  // the row's values when editing started
    Row pristine_;                 // a new row's values before the user typed
    int insertAt_ = 0;
};

}  // namespace tr::db
