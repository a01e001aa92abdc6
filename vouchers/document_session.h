#pragma once
// What every treasury document screen shares whatever its kind (cash and bank, cheques, later
// notes): a work-table name no other screen of the session holds, the NEW/EDIT caption, the
// voucher copied aside before a change, and the write that commits the procedure's call together
// with its action-log row, its invoice links and what the screen reads back.
#include <QString>
#include <functional>

#include "common/db/my_database.h"

namespace tr::vouchers {

// "##" + form key + session text + time stamp, waiting for the next stamp while the name (with
// `suffix`, for a screen whose tables share the name as a prefix) is taken.
QString freeWorkTableName(tr::db::Connection& connection, const QString& formKey,
                          const QString& sessionText, const QString& suffix = QString());

// "ثبت " or "اصلاح ", and the mark a caption carries after a save.
QString documentStateCaption(bool isNew);
inline const QString kUpdatedMark = QStringLiteral("(به روزآوري شده است)");

// Into `historyTable` (replaced): the voucher lines of document `serial` of `kind`, or of the
// voucher `voucherNo`, as they stand before the change.
void copyDocumentVoucherAside(tr::db::MyDatabase& db, const QString& historyTable,
                              const QString& kind, const QString& serial);
void copyVoucherAsideByNumber(tr::db::MyDatabase& db, const QString& historyTable,
                              const QString& voucherNo);

// The steps of one document write, each run inside the same transaction, the copy aside first
// and then in this order; a DatabaseError from any of them rolls every step back and propagates.
// `proceed` may refuse (false: nothing written, the transaction rolled back, false answered).
struct DocumentWrite {
    std::function<bool()> proceed;        // e.g. the book unchanged since the screen read it
    std::function<void()> copyAside;      // the history copy
    std::function<void()> call;           // the procedure's call
    std::function<void()> log;            // the action-log row
    std::function<void()> invoiceLinks;   // links to sales invoices, made or undone
    std::function<void()> readBack;       // what the screen shows afterwards
    // A delete logs the document before the call removes it; a save logs what it wrote.
    bool logBeforeCall = false;
    // On a server, other writers wait for this one from the check on, unless the call asks for
    // the writers' turn itself where it first needs it (a save that numbers its voucher last).
    // Every step after the call runs in the turn either way.
    bool callTakesTurn = false;
};
bool commitDocumentWrite(tr::db::Connection& connection, const DocumentWrite& write);

}  // namespace tr::vouchers
