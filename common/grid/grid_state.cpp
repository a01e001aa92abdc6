#include "common/grid/grid_state.h"

#include "common/db/query_helpers.h"
#include "common/db/sql_literal.h"

namespace tr::grid {

using tr::db::sqlNumber;

GridState::GridState(tr::db::MyDatabase& database, qint64 userNumber, ShowMessage show)
    : showMessage(std::move(show)), database_(database), user_(QString::number(userNumber)) {}

QString GridState::text(const QString& value) const {
    tr::db::Connection* connection =
        database_.CommandQuery && database_.CommandQuery->connection()
            ? database_.CommandQuery->connection()
            : database_.Connection;
    return connection ? connection->text(value) : tr::db::sqlText(value);
}

QString GridState::deleteStatement(const GridKey& key) const {
    return QStringLiteral("Delete From Grid_State Where UserId=") + text(user_) + QStringLiteral(" ") +
           QStringLiteral("And sProg = ") + text(key.prog) + QStringLiteral(" And sItem = ") +
           text(key.item) + QStringLiteral(" And sForm =") + text(key.form) +
           QStringLiteral(" And sPart=") + text(key.part);
}

QString GridState::selectStatement(const GridKey& key) const {
    return QStringLiteral("Select * From Grid_State Where UserId=") + text(user_) +
           QStringLiteral(" And ") + QStringLiteral("sProg = ") + text(key.prog) +
           QStringLiteral(" And sItem = ") + text(key.item) + QStringLiteral(" And sForm = ") +
           text(key.form) + QStringLiteral(" ") + QStringLiteral("And sPart=") + text(key.part) +
           QStringLiteral(" Order By iRaj ");
}

bool GridState::save(const GridColumns& grid, const GridKey& key) {
    if (!grid.datasetOpen()) return false;
    tr::db::execute(database_, deleteStatement(key));
    for (int position = 0; position < grid.count(); ++position) {
        const GridColumn column = grid.column(position);
        tr::db::execute(
            database_,
            QStringLiteral("Insert Into Grid_State(UserId, sVisible, sProg, sItem, sForm, sPart, "
                           "sColName, iLen, iRaj) ") +
                QStringLiteral("Values(") + text(user_) + QStringLiteral(", ") +
                text(column.visible ? QStringLiteral("T") : QStringLiteral("F")) +
                QStringLiteral(", ") + text(key.prog) + QStringLiteral(", ") + text(key.item) +
                QStringLiteral(", ") + text(key.form) + QStringLiteral(", ") + text(key.part) +
                QStringLiteral(", ") + text(column.fieldName) + QStringLiteral(", ") +
                sqlNumber(column.width) + QStringLiteral(", ") + sqlNumber(position) +
                QStringLiteral(")"));
    }
    // The confirmation carries the error icon; users know it that way.
    if (showMessage) showMessage(QStringLiteral("وضعيت ستونها ثبت شد."), QString(), QStringLiteral("1ER"));
    return true;
}

void GridState::reset(const GridKey& key) {
    tr::db::execute(database_, deleteStatement(key));
    if (showMessage) {
        showMessage(QStringLiteral("ستونها به وضعيت اوليه بازگشت. \nلطفا براي مشاهده ستونهاي اوليه\nاز "
                                   "فرم خارج شده و دوباره وارد شويد."),
                    QString(), QStringLiteral("1ER"));
    }
}

bool GridState::restore(GridColumns& grid, tr::db::Query& query, const GridKey& key) {
    if (!query.connection()) query.setConnection(database_.Connection);
    query.setSql(selectStatement(key));
    query.Open();
    if (query.Eof()) return false;
    int nextPosition = 0;
    for (query.First(); !query.Eof(); query.Next()) {
        const int position =
            columnIndexByFieldName(grid, query.FieldByName(QStringLiteral("sColName")).AsString().trimmed());
        if (position < 0) continue;
        GridColumn column = grid.column(position);
        column.visible = query.FieldByName(QStringLiteral("sVisible")).AsString().trimmed() ==
                         QLatin1String("T");
        column.width = static_cast<int>(query.FieldByName(QStringLiteral("iLen")).AsInteger());
        grid.setColumn(position, column);
        // Rows arrive in saved order, so placing each at the next position rebuilds that order
        // even when the grid gained or lost columns since the layout was saved.
        if (position >= nextPosition) {
            if (position != nextPosition) grid.moveColumn(position, nextPosition);
            ++nextPosition;
        }
    }
    return true;
}

int columnIndexByFieldName(const GridColumns& grid, const QString& fieldName) {
    const QString wanted = fieldName.toUpper();
    for (int i = 0; i < grid.count(); ++i) {
        if (grid.column(i).fieldName.toUpper() == wanted) return i;
    }
    return -1;
}

TitleSort sortByTitle(const QString& currentSort, int lastSortedColumn, int clickedColumn,
                      const QString& clickedFieldName, const QString& leadingSort) {
    const bool ascendingNow = currentSort.toUpper().contains(QLatin1String(" ASC "));
    if (ascendingNow && clickedColumn == lastSortedColumn) {
        return {leadingSort + clickedFieldName + QStringLiteral(" DESC "), TitleColour::Blue, true};
    }
    return {leadingSort + clickedFieldName + QStringLiteral(" ASC "), TitleColour::Red, false};
}

}  // namespace tr::grid
