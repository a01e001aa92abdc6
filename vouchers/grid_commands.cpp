#include "vouchers/grid_commands.h"

#include "vouchers/fixed_descriptions.h"

namespace tr::vouchers {

using tr::db::Query;

const QString GridCommands::kDeleteQuestion = QStringLiteral("آيا حذف شود؟");

GridCommands::GridCommands(const tr::Services& services, Query& grid, tr::grid::GridKey key,
                           QStringList rowIdentity)
    : services_(services), grid_(grid), key_(std::move(key)), identity_(std::move(rowIdentity)) {}

void GridCommands::notify() const {
    if (changed) changed();
}

bool GridCommands::isIdentity(const QString& field) const {
    return identity_.contains(field, Qt::CaseInsensitive);
}

tr::grid::GridState GridCommands::gridState() const {
    const tr::dialog::Messages messages(services_.dialog);
    return tr::grid::GridState(
        *services_.database, services_.global->userNumber,
        [messages](const QString& text, const QString& caption, const QString& code) {
            return messages.show(text, code, caption);
        });
}

bool GridCommands::saveColumns(const tr::grid::GridColumns& columns) {
    return gridState().save(columns, key_);
}

void GridCommands::resetColumns() {
    gridState().reset(key_);
}

bool GridCommands::restoreColumns(tr::grid::GridColumns& columns) {
    Query layout(&services_.connection());
    return gridState().restore(columns, layout, key_);
}

int GridCommands::currentRowIndex() const {
    // New rows are always appended, so the row being inserted is the last one.
    if (grid_.state() == Query::State::Insert) return grid_.RecordCount();
    return grid_.IsEmpty() ? -1 : grid_.RecNo() - 1;
}

bool GridCommands::editCurrentRow() {
    if (!grid_.Active()) return false;
    if (grid_.state() == Query::State::Browse) {
        if (!grid_.IsEmpty())
            grid_.Edit();
        else if (appendRow)
            appendRow();
        else
            grid_.Append();
    }
    return grid_.state() == Query::State::Edit || grid_.state() == Query::State::Insert;
}

bool GridCommands::copyRowAbove() {
    const int row = currentRowIndex();
    if (row < 1 || !editCurrentRow()) return false;
    const QStringList& fields = grid_.fieldNames();
    for (int column = 0; column < fields.size(); ++column) {
        if (isIdentity(fields[column])) continue;
        grid_.FieldByName(fields[column]).SetValue(grid_.value(row - 1, column));
    }
    notify();
    return true;
}

QString GridCommands::clipboardText(const QList<ClipboardColumn>& columns) const {
    QStringList titles;
    QList<int> indexes;
    for (const ClipboardColumn& column : columns) {
        titles << column.title;
        indexes << grid_.fieldIndex(column.field);
    }
    QStringList lines{titles.join(QLatin1Char('\t'))};
    const int rows = grid_.RecordCount() + (grid_.state() == Query::State::Insert ? 1 : 0);
    for (int row = 0; row < rows; ++row) {
        QStringList cells;
        for (int index : indexes)
            cells << (index < 0 ? QString() : grid_.value(row, index).toString());
        lines << cells.join(QLatin1Char('\t'));
    }
    return lines.join(QLatin1Char('\n'));
}

void GridCommands::rememberRow() {
    rowMemory_.clear();
    if (currentRowIndex() < 0) return;
    for (const QString& field : grid_.fieldNames())
        if (!isIdentity(field)) rowMemory_.insert(field, grid_.FieldByName(field).Value());
}

bool GridCommands::restoreRow() {
    if (rowMemory_.isEmpty() || !editCurrentRow()) return false;
    for (auto it = rowMemory_.cbegin(); it != rowMemory_.cend(); ++it)
        grid_.FieldByName(it.key()).SetValue(it.value());
    notify();
    return true;
}

void GridCommands::rememberCell(const QString& field) {
    if (currentRowIndex() < 0 || grid_.fieldIndex(field) < 0) return;
    cellMemory_ = grid_.FieldByName(field).Value();
}

bool GridCommands::restoreCell(const QString& field) {
    if (!cellMemory_ || grid_.fieldIndex(field) < 0 || isIdentity(field) || !editCurrentRow())
        return false;
    grid_.FieldByName(field).SetValue(*cellMemory_);
    notify();
    return true;
}

bool GridCommands::pickFixedDescription(const QString& descriptionField) {
    if (!editCurrentRow()) return false;
    const bool picked = pickFixedDescriptionInto(services_, grid_, descriptionField);
    if (picked) notify();
    return picked;
}

bool GridCommands::deleteRow(const QString& question) {
    if (!grid_.Active() || currentRowIndex() < 0) return false;
    if (!tr::dialog::Messages(services_.dialog).ask(question)) return false;
    if (grid_.state() == Query::State::Insert)
        grid_.Cancel();
    else
        grid_.Delete();
    notify();
    return true;
}

}  // namespace tr::vouchers
