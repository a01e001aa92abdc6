#pragma once
// Whether a payment may carry a cheque: our own leaf ("صدور چك") must lie in a cheque book of the
// chosen bank account and be neither issued, moved nor voided; a received cheque passed on
// ("خرج چك") must be in hand, not a guarantee cheque and keep its amount. The payment screen checks
// a row as it is typed and its procedure again before it writes.
#include <QList>
#include <QString>
#include <optional>

#include "common/db/connection.h"

namespace tr::instruments {

// The refusal for issuing leaf `number`/`series` on bank account `accountId`, or empty. The rows
// of payment `ownSerial` (the one being edited; 0 for none) do not count.
QString ownLeafRefusal(tr::db::Connection& c, qint64 accountId, const QString& number,
                       const QString& series, qint64 ownSerial = 0);

// The date of the leaf's void (a kind-83 row of serial 0, written by no document); nothing when
// the leaf was never voided or its void was undone. A voided leaf is never issued.
std::optional<QString> leafVoidedOn(tr::db::Connection& c, const QString& number, const QString& series);

// The cheque books of the series that hold the leaf, leaf and bounds compared as whole numbers,
// in the books' order; none for a leaf that is not a number.
struct ChequeBook {
    qint64 accountId = 0;
    QString formCode;  // the layout its leaves print in
};
QList<ChequeBook> booksHoldingLeaf(tr::db::Connection& c, const QString& number, const QString& series);
// The bank account of the first of them; nothing for a leaf in no book.
std::optional<qint64> leafBookAccount(tr::db::Connection& c, const QString& number, const QString& series);

// A received cheque as it stands in hand: what a payment spending it writes.
struct ChequeInHand {
    double value = 0;
    QString koll, moein, tafsily, tafsily2, projectCod;  // where it stands now
    QString state, stateDate;                            // its latest action's kind and date
    QString bank, branch, branchName, drawerAccount, payableToOrder, guarantee, payee;
    bool opening = false;
};
// Nothing when the book never received the cheque.
std::optional<ChequeInHand> chequeInHand(tr::db::Connection& c, const QString& number, const QString& series,
                                         qint64 ownSerial = 0);

// The refusal for spending received cheque `number`/`series` for `value` on `issueDate`, or empty.
QString spentChequeRefusal(tr::db::Connection& c, const QString& number, const QString& series, double value,
                           const QString& issueDate, qint64 ownSerial = 0);
// The same for a cheque already read (nothing: the book never received it).
QString spentChequeRefusal(const std::optional<ChequeInHand>& cheque, double value, const QString& issueDate);

}  // namespace tr::instruments
