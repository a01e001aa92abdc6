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
    const tr::db::ExecResult head =
        database->Connection->execute(QStringLiteral("Select CashNam From ") + header);
    parent->setProperty("cashNam", head.resultSets.front().rows.front().front().toString());
    const tr::db::ExecResult rows =
        database->Connection->execute(QStringLiteral("Select LastNam From ") + lines);
    parent->setProperty("lineCount", int(rows.resultSets.front().rows.size()));
}
