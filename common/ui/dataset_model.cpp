#include "common/ui/dataset_model.h"

#include <QLocale>

#include <algorithm>

#include <QBrush>

#include "common/persian/amount_cells.h"

namespace tr::ui {

using tr::db::Query;

namespace {
QString key(const QString& fieldName) { return fieldName.toUpper(); }
}  // namespace

QVariant DatasetModel::editText(const QVariant& value) {
    // An amount is edited as text, in full: a number box would show it in its own form, cut its
    // decimals and refuse the group separators every amount is typed with. The row's checks read
    // the text back as an amount.
    if (value.typeId() != QMetaType::Double) return value;
    return QString::number(value.toDouble(), 'f', QLocale::FloatingPointShortest);
}

void DatasetModel::releaseQueries(QObject* owner) {
    for (DatasetModel* model : owner->findChildren<DatasetModel*>()) model->setQuery(nullptr);
}

DatasetModel::DatasetModel(Query* query, QObject* parent) : QAbstractTableModel(parent) {
    setQuery(query);
}

void DatasetModel::setQuery(Query* query) {
    beginResetModel();
    query_ = query;
    insertRow_ = -1;
    if (query_) {
        // Chain to whatever the screen hooked before; a model that is gone is skipped.
        QPointer<DatasetModel> self(this);
        Query::Hook previous = query_->DataChanged;
        query_->DataChanged = [self, previous](Query& q) {
            if (previous) previous(q);
            if (self) self->queryChanged(q);
        };
    }
    columns_ = query_ && query_->Active() ? query_->fieldNames() : QStringList();
    rows_ = query_ && query_->Active() ? query_->RecordCount() + (insertRow() >= 0 ? 1 : 0) : 0;
    insertRow_ = insertRow();
    endResetModel();
}

void DatasetModel::queryChanged(Query& query) {
    if (&query == query_) refresh();
}

// The query keeps its insert position to itself: a fresh insert buffer is all null and sits
// either at the current row (Insert) or after the last row (Append). Once known it is kept.
int DatasetModel::insertRow() const {
    if (!query_ || query_->state() != Query::State::Insert) return -1;
    if (insertRow_ >= 0) return insertRow_;
    const int count = query_->RecordCount();
    const int current = count == 0 ? 0 : query_->RecNo() - 1;
    auto allNull = [&](int row) {
        for (int c = 0; c < query_->fieldNames().size(); ++c) {
            if (!query_->value(row, c).isNull()) return false;
        }
        return true;
    };
    return allNull(count) ? count : current;
}

void DatasetModel::refresh() {
    const bool active = query_ && query_->Active();
    const QStringList columns = active ? query_->fieldNames() : QStringList();
    if (!active || query_->state() != Query::State::Insert) insertRow_ = -1;
    const int inserting = active ? insertRow() : -1;
    const int rows = active ? query_->RecordCount() + (inserting >= 0 ? 1 : 0) : 0;
    if (columns != columns_ || rows != rows_ || inserting != insertRow_) {
        beginResetModel();
        columns_ = columns;
        rows_ = rows;
        insertRow_ = inserting;
        endResetModel();
    } else if (rows_ > 0 && !columns_.isEmpty()) {
        emit dataChanged(index(0, 0), index(rows_ - 1, columns_.size() - 1));
    }
}

QString DatasetModel::fieldName(int column) const {
    return column >= 0 && column < columns_.size() ? columns_[column] : QString();
}

int DatasetModel::fieldColumn(const QString& fieldName) const {
    for (int i = 0; i < columns_.size(); ++i) {
        if (columns_[i].compare(fieldName, Qt::CaseInsensitive) == 0) return i;
    }
    return -1;
}

void DatasetModel::setTitle(const QString& fieldName, const QString& title) {
    titles_[key(fieldName)] = title;
    if (!columns_.isEmpty()) emit headerDataChanged(Qt::Horizontal, 0, columns_.size() - 1);
}

void DatasetModel::setFieldFormat(const QString& fieldName, Formatter format) {
    formats_[key(fieldName)] = std::move(format);
}

void DatasetModel::setFieldLengths(const QHash<QString, int>& lengths) {
    lengths_.clear();
    for (auto it = lengths.cbegin(); it != lengths.cend(); ++it) lengths_.insert(key(it.key()), it.value());
}

void DatasetModel::setFieldReadOnly(const QString& fieldName, bool readOnly) {
    if (readOnly) readOnlyFields_.insert(key(fieldName));
    else readOnlyFields_.remove(key(fieldName));
}

void DatasetModel::setTitleColour(const QString& fieldName, const QColor& colour) {
    titleColours_[key(fieldName)] = colour;
    const int column = fieldColumn(fieldName);
    if (column >= 0) emit headerDataChanged(Qt::Horizontal, column, column);
}

void DatasetModel::setAllTitleColours(const QColor& colour) {
    for (const QString& field : columns_) titleColours_[key(field)] = colour;
    if (!columns_.isEmpty()) emit headerDataChanged(Qt::Horizontal, 0, columns_.size() - 1);
}

QColor DatasetModel::titleColour(const QString& fieldName) const {
    return titleColours_.value(key(fieldName));
}

int DatasetModel::currentRow() const {
    if (!datasetOpen() || rows_ == 0) return -1;
    if (insertRow_ >= 0) return insertRow_;
    // A row the screen's logic started itself (not through the view) is current too.
    if (query_->insertPosition() >= 0) return query_->insertPosition();
    return query_->RecNo() - 1;
}

void DatasetModel::setCurrentRow(int row) {
    if (!datasetOpen() || row == currentRow() || row < 0 || row >= rows_) return;
    guarded([&] { return moveTo(row); });
}

bool DatasetModel::moveTo(int row) {
    // A new row left as it was started is dropped, not posted.
    if (query_->state() == Query::State::Insert && !query_->Modified()) {
        const int at = query_->insertPosition();
        query_->Cancel();
        if (row > at) --row;
        row = std::min(row, query_->RecordCount() - 1);
        if (row >= 0) query_->MoveTo(row);
        return true;
    }
    if (query_->state() == Query::State::Edit || query_->state() == Query::State::Insert) {
        query_->Post();
        if (query_->state() != Query::State::Browse) return false;  // refused: stay on the row
    }
    // Posting an insert turns its buffer row into a real row at the same view position, so the
    // view's row numbers stay valid for MoveTo.
    query_->MoveTo(row);
    return true;
}

int DatasetModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }
int DatasetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant DatasetModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || !datasetOpen() || index.row() >= rows_ || index.column() >= columns_.size()) {
        return {};
    }
    if (role == MaxLengthRole) return lengths_.value(key(columns_[index.column()]), 0);
    if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
    const QVariant value = query_->value(index.row(), index.column());
    if (role == Qt::EditRole) return editText(value);
    const auto format = formats_.constFind(key(columns_[index.column()]));
    if (format != formats_.constEnd() && *format) return (*format)(value);
    if (value.isNull()) return QString();
    return tr::persian::cellDisplay(value);
}

QVariant DatasetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columns_.size()) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    const QString field = columns_[section];
    switch (role) {
        case Qt::DisplayRole:
            return titles_.value(key(field), field);
        case FieldNameRole:
            return field;
        case Qt::ForegroundRole: {
            const QColor colour = titleColours_.value(key(field));
            return colour.isValid() ? QVariant(QBrush(colour)) : QVariant();
        }
        default:
            return {};
    }
}

template <typename F>
bool DatasetModel::guarded(F&& action) {
    try {
        return action();
    } catch (const tr::db::DatabaseError& error) {
        if (!onError_) throw;
        onError_(error);
        refresh();
        return false;
    }
}

bool DatasetModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !index.isValid() || !(flags(index) & Qt::ItemIsEditable)) return false;
    if (index.row() >= rows_ || index.column() >= columns_.size()) return false;
    // An amount's editor given back as it opened: the number stays, exactly as it was.
    const QVariant current = query_->value(index.row(), index.column());
    if (current.typeId() == QMetaType::Double && value.typeId() == QMetaType::QString && value == editText(current))
        return true;
    const QString field = columns_[index.column()];
    return guarded([&] {
        if (index.row() != currentRow() && !moveTo(index.row())) return false;
        query_->FieldByName(field).SetValue(value);
        // A refusal in BeforePost keeps the row in edit, as the screens expect.
        if (autoPost_) query_->Post();
        return true;
    });
}

Qt::ItemFlags DatasetModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    Qt::ItemFlags result = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (!readOnly_ && !readOnlyFields_.contains(key(fieldName(index.column())))) {
        result |= Qt::ItemIsEditable;
    }
    return result;
}

}  // namespace tr::ui
