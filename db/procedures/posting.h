#pragma once
// The pieces every treasury procedure posts with (the cash and bank documents now, cheques and
// notes next): the checks of a call's serial, date and work table, the next voucher number, and
// the rows of a posting: a treasury row (N_NaghdTrans), a voucher line (Asnad) and a currency
// row (N_ArzTrans). Values enter the SQL through the connection's quoting, numbers typed.
#include <QList>
#include <QString>
#include <QVariant>

#include "common/db/connection.h"

namespace tr::db {
class Query;
}

namespace tr::procedures {

enum class LedgerSide { Bed, Bes };

inline LedgerSide opposite(LedgerSide side) {
    return side == LedgerSide::Bed ? LedgerSide::Bes : LedgerSide::Bed;
}
inline QString sideColumn(LedgerSide side) {
    return side == LedgerSide::Bed ? QStringLiteral("Bed") : QStringLiteral("Bes");
}

// A refusal the screen shows as it stands (DatabaseError with the message alone).
[[noreturn]] void refuse(const QString& message);

// A value as SQL text: Null, a number, or quoted text.
QString literal(const tr::db::Connection& c, const QVariant& value);
// A value as the document's text columns keep it: trimmed, '' rather than Null.
QString trimmedText(const QVariant& value);
// The ledger is in rials: an amount derived from a currency amount is kept to two decimals, so a
// voucher's lines add up to exactly what its treasury line says, rounded as the screens round.
double round2(double value);

// One row of a query by column name; a column the query lacks is a fault of the caller.
struct Record {
    const tr::db::Query* set = nullptr;
    int row = 0;
    QVariant operator[](const char* column) const;
};

// "سريال " + title + " معتبر نيست." unless the text is 1 to 9 digits.
qint64 validSerial(const QString& text, const QString& title);
// "تاريخ سند معتبر نيست." unless the text is shaped yyyy/mm/dd.
QString validDate(const QString& text);
// A "##" work table's name: refused unless "##" and then letters, digits and _ (it goes into
// the SQL as a name). `what` names the table in the refusal ("a transfer table").
QString validWorkTable(const QString& name, const QString& what);

// The next voucher number, through the book's dbo.sp_M_Asnad_GetMaxSanadNo().
qint64 newVoucherNumber(tr::db::Connection& c);
// A voucher numbered last: its lines were written with number 0; they take the next number now.
// The caller has taken the writers' turn, which a server keeps until the commit.
void numberVoucher(tr::db::Connection& c, const QList<qint64>& lineRecs);

struct TreasuryRow {
    QString whatDoc;
    qint64 serial = 0;
    int raj = 0;
    QString codWhatDoc, whatDoc2, codWhatDoc2;
    QVariant namWhatDoc2, joz, manabehCod;
    QString date;
    QVariant des1, des2, des3, des4, des5, des6;
};
// Writes the row and answers its IDX.
qint64 insertTreasuryRow(tr::db::Connection& c, const TreasuryRow& row);

struct VoucherLine {
    QString whatDoc, whatDoc2;
    qint64 document = 0;  // the treasury row's IDX
    qint64 voucherNo = 0;
    QString date;
    int raj = 0;
    QString koll, moein, tafsily, tafsily2, projectCod;
    QString des;
    LedgerSide side = LedgerSide::Bed;
    double rials = 0;
    QString atfCh, user;
    // '0' on a document's own voucher; a cheque's line holds the cheque's series there (every
    // cheque query joins on it) and its due date in AtfDate.
    QString docToDate = QStringLiteral("0");
    QVariant atfDate;
};
// A line of a treasury voucher; answers its Rec.
qint64 insertVoucherLine(tr::db::Connection& c, const VoucherLine& line);

struct CurrencyRow {
    qint64 idx = 0;  // the treasury row's
    QString whatDoc;
    qint64 serial = 0;
    int raj = 0;
    QString code, name;
    double count = 0, rate = 0;
    QVariant count2, name2, code2, rate2;
    double unitPrice = 0, rials = 0;
};
void insertCurrencyRow(tr::db::Connection& c, const CurrencyRow& row);

}  // namespace tr::procedures
