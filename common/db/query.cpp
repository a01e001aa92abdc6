#include "common/db/query.h"

#include <QRegularExpression>
#include <algorithm>

#include "common/db/database_error.h"
#include "common/text/tsql_collation.h"

namespace tr::db {

// ---- Field -------------------------------------------------------------------------------

QVariant Field::Value() const { return query_->cell(index_); }
QString Field::AsString() const {
    const QVariant v = Value();
    if (v.isNull()) return {};
    if (v.typeId() == QMetaType::Double) return sqlNumber(v.toDouble());
    return v.toString();
}
qint64 Field::AsInteger() const {
    const QVariant v = Value();
    if (v.typeId() == QMetaType::Double) return static_cast<qint64>(v.toDouble());
    bool ok = false;
    const qint64 n = v.toString().trimmed().toLongLong(&ok);
    if (ok || v.isNull()) return ok ? n : 0;
    return static_cast<qint64>(v.toString().trimmed().toDouble());
}
double Field::AsFloat() const { return Value().isNull() ? 0.0 : Value().toString().toDouble(); }
bool Field::IsNull() const { return Value().isNull(); }
QString Field::FieldName() const { return query_->columns_.at(index_); }
void Field::SetValue(const QVariant& value) { query_->setCell(index_, value); }

// ---- Query -------------------------------------------------------------------------------

void Query::setSql(const QString& text) {
    if (Active()) Close();
    sql_ = text;
}

void Query::requireOpen(const char* operation) const {
    if (!Active()) {
        throw DatabaseError(QStringLiteral("%1: the dataset is closed").arg(QLatin1String(operation)),
                            sql_);
    }
}

void Query::Open() {
    if (Active()) Close();
    if (!connection_) throw DatabaseError(QStringLiteral("Query has no connection"), sql_);
    ExecResult result = connection_->execute(sql_);
    if (result.resultSets.empty()) {
        throw DatabaseError(QStringLiteral("The statement returned no result set"), sql_);
    }
    ResultSet& set = result.resultSets.back();
    columns_ = set.columns;
    rows_ = std::move(set.rows);
    state_ = State::Browse;
    applySort();
    current_ = 0;
    bof_ = true;
    eof_ = rows_.empty();
    if (AfterOpen) AfterOpen(*this);
    changed();
    scrolled();
}

void Query::Close() {
    state_ = State::Inactive;
    columns_.clear();
    rows_.clear();
    buffer_.clear();
    original_.reset();
    current_ = 0;
    eof_ = bof_ = true;
    changed();
}

qint64 Query::ExecSQL() {
    if (Active()) Close();
    if (!connection_) throw DatabaseError(QStringLiteral("Query has no connection"), sql_);
    return connection_->execute(sql_).rowsAffected;
}

bool Query::Eof() const { return eof_ || rows_.empty(); }

void Query::scrolled() {
    if (AfterScroll) AfterScroll(*this);
}
void Query::changed() {
    if (DataChanged) DataChanged(*this);
}

void Query::checkBrowse() {
    if (state_ == State::Edit || state_ == State::Insert) Post();
}

void Query::First() {
    requireOpen("First");
    checkBrowse();
    current_ = 0;
    bof_ = true;
    eof_ = rows_.empty();
    scrolled();
}

void Query::Last() {
    requireOpen("Last");
    checkBrowse();
    current_ = rows_.empty() ? 0 : RecordCount() - 1;
    eof_ = rows_.empty();
    bof_ = rows_.empty();
    scrolled();
}

void Query::Next() {
    requireOpen("Next");
    checkBrowse();
    bof_ = false;
    if (current_ + 1 < RecordCount()) {
        ++current_;
        scrolled();
    } else {
        eof_ = true;
    }
}

void Query::Prior() {
    requireOpen("Prior");
    checkBrowse();
    eof_ = false;
    if (current_ > 0) {
        --current_;
        scrolled();
    } else {
        bof_ = true;
    }
}

void Query::MoveTo(int row) {
    requireOpen("MoveTo");
    checkBrowse();
    if (rows_.empty()) return;
    current_ = std::clamp(row, 0, RecordCount() - 1);
    eof_ = bof_ = false;
    scrolled();
}

int Query::fieldIndex(const QString& name) const {
    for (int i = 0; i < columns_.size(); ++i) {
        if (columns_[i].compare(name, Qt::CaseInsensitive) == 0) return i;
    }
    return -1;
}

Field Query::FieldByName(const QString& name) {
    requireOpen("FieldByName");
    const int index = fieldIndex(name);
    if (index < 0) throw DatabaseError(QStringLiteral("Field '%1' not found").arg(name), sql_);
    return Field(this, index);
}

QVariant Query::cell(int column) const {
    if (state_ == State::Edit || state_ == State::Insert) return buffer_.at(column);
    if (rows_.empty() || state_ == State::Inactive) return {};
    return rows_.at(current_).at(column);
}

QVariant Query::value(int row, int column) const {
    const bool editingRow = (state_ == State::Edit && row == current_) ||
                            (state_ == State::Insert && row == insertAt_);
    if (editingRow) return buffer_.at(column);
    if (state_ == State::Insert && row > insertAt_) --row;
    if (row < 0 || row >= RecordCount()) return {};
    return rows_.at(row).at(column);
}

void Query::setCell(int column, const QVariant& value) {
    if (state_ == State::Browse) Edit();
    if (state_ != State::Edit && state_ != State::Insert) {
        throw DatabaseError(QStringLiteral("Dataset not in edit or insert mode"), sql_);
    }
    buffer_.at(column) = value;
    changed();
}

void Query::Edit() {
    requireOpen("Edit");
    if (state_ == State::Edit || state_ == State::Insert) return;
    if (rows_.empty()) {
        Append();
        return;
    }
    buffer_ = rows_.at(current_);
    original_ = buffer_;
    state_ = State::Edit;
}

void Query::Insert() {
    requireOpen("Insert");
    checkBrowse();
    buffer_.assign(columns_.size(), QVariant());
    pristine_ = buffer_;
    original_.reset();
    insertAt_ = rows_.empty() ? 0 : current_;
    state_ = State::Insert;
    changed();
}

void Query::Append() {
    requireOpen("Append");
    checkBrowse();
    buffer_.assign(columns_.size(), QVariant());
    pristine_ = buffer_;
    original_.reset();
    insertAt_ = RecordCount();
    state_ = State::Insert;
    changed();
}

bool Query::Modified() const {
    if (state_ == State::Insert) return buffer_ != pristine_;
    if (state_ == State::Edit) return !original_ || buffer_ != *original_;
    return false;
}

void Query::markUnmodified() {
    if (state_ == State::Insert) pristine_ = buffer_;
}

void Query::Cancel() {
    if (state_ != State::Edit && state_ != State::Insert) return;
    state_ = State::Browse;
    buffer_.clear();
    original_.reset();
    changed();
}

QString Query::valueLiteral(const QVariant& v) const {
    if (v.isNull()) return QStringLiteral("Null");
    switch (v.typeId()) {
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::UInt:
        case QMetaType::ULongLong:
            return sqlNumber(v.toLongLong());
        case QMetaType::Double:
        case QMetaType::Float:
            return sqlNumber(v.toDouble());
        case QMetaType::Bool:
            return sqlNumber(v.toBool() ? 1 : 0);
        default:
            return connection_->text(v.toString());
    }
}

QString Query::rowCondition(const Row& row) const {
    QStringList parts;
    for (int i = 0; i < columns_.size(); ++i) {
        const QString column = QLatin1Char('[') + columns_[i] + QLatin1Char(']');
        parts << (row[i].isNull() ? column + QStringLiteral(" Is Null")
                                  : column + QStringLiteral(" = ") + valueLiteral(row[i]));
    }
    return parts.join(QStringLiteral(" And "));
}

QString Query::updateTable() const {
    static const QRegularExpression pattern(
        QStringLiteral("^\\s*select\\s.+?\\sfrom\\s+([#\\w\\.\\[\\]]+)\\s*(?:(?:as\\s+)?\\w+\\s*)?"
                       "(?:where\\s.*|order\\s+by\\s.*)?$"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    const auto match = pattern.match(sql_);
    if (!match.hasMatch() || sql_.contains(QStringLiteral(" join "), Qt::CaseInsensitive)) return {};
    return match.captured(1);
}

void Query::Post() {
    if (state_ != State::Edit && state_ != State::Insert) return;
    if (BeforePost && !BeforePost(*this)) return;  // refused: the row stays in edit
    const QString table = updateTable();
    if (table.isEmpty()) {
        throw DatabaseError(QStringLiteral("This dataset cannot be updated: it reads more than one table"),
                            sql_);
    }
    QString statement;
    if (state_ == State::Insert) {
        QStringList names, values;
        for (int i = 0; i < columns_.size(); ++i) {
            if (buffer_[i].isNull()) continue;
            names << QLatin1Char('[') + columns_[i] + QLatin1Char(']');
            values << valueLiteral(buffer_[i]);
        }
        statement = names.isEmpty()
                        ? QStringLiteral("Insert Into %1 Default Values").arg(table)
                        : QStringLiteral("Insert Into %1(%2) Values(%3)")
                              .arg(table, names.join(QStringLiteral(", ")), values.join(QStringLiteral(", ")));
    } else {
        QStringList sets;
        for (int i = 0; i < columns_.size(); ++i) {
            if (text::compareValues(buffer_[i], (*original_)[i]) == 0 &&
                buffer_[i].isNull() == (*original_)[i].isNull()) {
                continue;
            }
            sets << QLatin1Char('[') + columns_[i] + QStringLiteral("] = ") + valueLiteral(buffer_[i]);
        }
        if (!sets.isEmpty()) {
            statement = QStringLiteral("Update %1 Set %2 Where %3")
                            .arg(table, sets.join(QStringLiteral(", ")), rowCondition(*original_));
        }
    }
    if (!statement.isEmpty()) {
        const qint64 affected = connection_->execute(statement).rowsAffected;
        if (affected == 0) {
            throw DatabaseError(
                QStringLiteral("Row cannot be located for updating: it was changed or deleted since it was read"),
                statement);
        }
    }
    if (state_ == State::Insert) {
        rows_.insert(rows_.begin() + insertAt_, buffer_);
        current_ = insertAt_;
    } else {
        rows_[current_] = buffer_;
    }
    state_ = State::Browse;
    buffer_.clear();
    original_.reset();
    eof_ = bof_ = false;
    if (AfterPost) AfterPost(*this);
    changed();
}

void Query::Delete() {
    requireOpen("Delete");
    if (state_ == State::Insert) {
        Cancel();
        return;
    }
    if (state_ == State::Edit) Cancel();
    if (rows_.empty()) return;
    if (BeforeDelete && !BeforeDelete(*this)) return;
    const QString table = updateTable();
    if (table.isEmpty()) {
        throw DatabaseError(QStringLiteral("This dataset cannot be updated: it reads more than one table"),
                            sql_);
    }
    const QString statement =
        QStringLiteral("Delete From %1 Where %2").arg(table, rowCondition(rows_.at(current_)));
    if (connection_->execute(statement).rowsAffected == 0) {
        throw DatabaseError(QStringLiteral("Row cannot be located for deleting"), statement);
    }
    rows_.erase(rows_.begin() + current_);
    if (current_ >= RecordCount()) current_ = std::max(0, RecordCount() - 1);
    eof_ = rows_.empty();
    if (AfterDelete) AfterDelete(*this);
    changed();
    scrolled();
}

void Query::setSort(const QString& sort) {
    checkBrowse();
    sort_ = sort;
    if (Active()) {
        applySort();
        current_ = 0;
        changed();
        scrolled();
    }
}

void Query::applySort() {
    if (sort_.trimmed().isEmpty()) return;
    struct Key {
        int column;
        bool descending;
    };
    std::vector<Key> keys;
    for (const QString& part : sort_.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QStringList words = part.simplified().split(QLatin1Char(' '));
        const int column = fieldIndex(QString(words.first()).remove(QLatin1Char('[')).remove(QLatin1Char(']')));
        if (column < 0) {
            throw DatabaseError(QStringLiteral("Sort field '%1' not found").arg(words.first()), sql_);
        }
        keys.push_back({column, words.size() > 1 && words[1].compare(QStringLiteral("DESC"), Qt::CaseInsensitive) == 0});
    }
    std::stable_sort(rows_.begin(), rows_.end(), [&](const Row& a, const Row& b) {
        for (const Key& key : keys) {
            const int c = text::compareValues(a[key.column], b[key.column]);
            if (c != 0) return key.descending ? c > 0 : c < 0;
        }
        return false;
    });
}

}  // namespace tr::db
