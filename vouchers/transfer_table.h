#pragma once
// The transfer table in which a screen edits one document's counter lines (a ## table of the
// fixed layout the document procedures read and fill), its history table, and the text of the
// five procedure calls that move a document between it and the ledger.
#include <QString>

#include "common/db/my_database.h"
#include "vouchers/document_kinds.h"

namespace tr::vouchers {

// "##" + form key + session text + time stamp.
QString transferTableName(const QString& formKey, const QString& sessionText);
// Where a document's current voucher lines are copied before it changes: one per transfer table,
// so as unique per session as the transfer table itself.
QString historyTableName(const QString& transferTable);

// "Create Table <name> (...)" with the columns every document procedure expects.
QString createTransferTableStatement(const QString& name);
// "Select * From <name> Order By Raj".
QString openTransferTableStatement(const QString& name);
// The If Exists ... Exec('Drop Table ...') that clears an older history table of this name.
QString dropHistoryTableStatement(const tr::db::Connection& connection, const QString& name);

void createTransferTable(tr::db::MyDatabase& db, const QString& name);
void dropTransferTable(tr::db::MyDatabase& db, const QString& name);

// The nine values after the action word.
struct ProcedureArguments {
    QString table;
    QString serial;
    QString treasuryCode;
    QString referenceNumber;
    QString date;
    QString description;
    QString userName;
    QString formState;  // "NEW" / "EDIT" on a save
    QString computerName;
};

enum class DocumentAction { Load, Save, Cancel, UndoCancel, Delete };
QString actionWord(DocumentAction action);  // 'DB->TRANS', 'TRANS->DB', 'ABTAL', ...

// The call of the kind's procedure. A currency document (currency not empty) goes to the _Arzi
// twin with the rate and the currency first. The values each action does not take are sent as ''.
QString procedureCall(const tr::db::Connection& connection, const TreasuryDocumentKind& kind,
                      DocumentAction action, const ProcedureArguments& arguments,
                      bool currencyDocument = false, double rate = 0,
                      const QString& currency = QString());

}  // namespace tr::vouchers
