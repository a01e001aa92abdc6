#include "vouchers/document_session.h"

#include <QThread>

#include "common/db/query_helpers.h"
#include "common/db/transaction.h"
#include "vouchers/transfer_table.h"

namespace tr::vouchers {

QString freeWorkTableName(tr::db::Connection& connection, const QString& formKey,
                          const QString& sessionText, const QString& suffix) {
    // Two screens of one kind opened by one session within the same hundredth of a second would
    // get the same name: wait for the next time stamp instead.
    QString name = transferTableName(formKey, sessionText);
    for (int attempt = 0;
         attempt < 100 && tr::db::objectExistsInTempdb(connection, name + suffix);
         ++attempt) {
        QThread::msleep(5);
        name = transferTableName(formKey, sessionText);
    }
    return name;
}

QString documentStateCaption(bool isNew) {
    return isNew ? QStringLiteral("ثبت ") : QStringLiteral("اصلاح ");
}

void copyDocumentVoucherAside(tr::db::MyDatabase& db, const QString& historyTable,
                              const QString& kind, const QString& serial) {
    tr::db::Connection& c = *db.Connection;
    tr::db::execute(db, dropHistoryTableStatement(c, historyTable));
    tr::db::execute(db, QStringLiteral("select * into ") + historyTable +
                            QStringLiteral(" from Asnad where TypeSys='N' and ltrim(rtrim(Document)) "
                                           "in( select IDX from n_naghdtrans where "
                                           "ltrim(rtrim(Serial)) =") +
                            c.text(serial.trimmed()) + QStringLiteral(" and WhatDoc = ") +
                            c.text(kind) + QStringLiteral(") order by Raj"));
}

void copyVoucherAsideByNumber(tr::db::MyDatabase& db, const QString& historyTable,
                              const QString& voucherNo) {
    tr::db::Connection& c = *db.Connection;
    tr::db::execute(db, dropHistoryTableStatement(c, historyTable));
    tr::db::execute(db, QStringLiteral("select * into ") + historyTable +
                            QStringLiteral(" from Asnad where TypeSys='N' and ltrim(rtrim(SanadNo)) "
                                           "= ") +
                            c.text(voucherNo.trimmed()) + QStringLiteral(" order by Raj"));
}

bool commitDocumentWrite(tr::db::Connection& connection, const DocumentWrite& write) {
    // The copy aside and the check read only the document's own lines, which its hold keeps
    // other users from writing.
    tr::db::Transaction transaction(connection, tr::db::WriteTurn::ownRows());
    if (write.copyAside) write.copyAside();
    if (!write.callTakesTurn) connection.takeWritersTurn();
    if (write.proceed && !write.proceed()) return false;
    const auto* first = write.logBeforeCall ? &write.log : &write.call;
    const auto* second = write.logBeforeCall ? &write.call : &write.log;
    for (const auto* step : {first, second, &write.invoiceLinks, &write.readBack}) {
        if (*step) (*step)();
        // Invoices are settled by what they still owe, read and then written.
        if (step == &write.call) connection.takeWritersTurn();
    }
    transaction.commit();
    return true;
}

}  // namespace tr::vouchers
