// Records each call on the parent widget, with the header row it could read at that moment, so
// tests can see what the module passed and that the tables existed during the call.
#include <QString>
#include <QVariant>
#include <QWidget>

#include "common/db/my_database.h"

extern "C" __attribute__((visibility("default"))) void PrintDesignForm_Show(
    const char16_t* mode, const char16_t* layoutKey, const char16_t* layoutSelection,
    const char16_t* headerTable, const char16_t* linesTable, const char16_t* linkFields,
    tr::db::MyDatabase* database, QWidget* parent) {
    const QString header = QString::fromUtf16(headerTable);
    const QString lines = QString::fromUtf16(linesTable);
    parent->setProperty("mode", QString::fromUtf16(mode));
    parent->setProperty("layoutKey", QString::fromUtf16(layoutKey));
    parent->setProperty("layoutSelection", QString::fromUtf16(layoutSelection));
    parent->setProperty("headerTable", header);
    parent->setProperty("linesTable", lines);
    parent->setProperty("linkFields", QString::fromUtf16(linkFields));
    // Every header column as "head.<column in lower case>" (servers differ in the case they
    // answer names in), the treasury name of a cash document also as "cashNam".
    const tr::db::ExecResult head =
        database->Connection->execute(QStringLiteral("Select * From ") + header);
    const tr::db::ResultSet& row = head.resultSets.front();
    for (int i = 0; i < row.columns.size(); ++i) {
        const QString column = row.columns[i].toLower();
        const QVariant& value = row.rows.front()[size_t(i)];
        parent->setProperty(("head." + column).toUtf8().constData(), value);
        if (column == QLatin1String("cashnam")) parent->setProperty("cashNam", value.toString());
    }
    const tr::db::ExecResult rows =
        database->Connection->execute(QStringLiteral("Select * From ") + lines);
    parent->setProperty("lineCount", int(rows.resultSets.front().rows.size()));
}
