#include "instruments/cheque_issue_rule.h"

#include <cmath>

#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "common/persian/amount.h"

namespace tr::instruments {

namespace {

using tr::db::firstColumn;
using tr::db::openQuery;
using tr::db::sqlNumber;

QString trimmed(const QVariant& v) {
    return v.isNull() ? QString() : v.toString().trimmed();
}

// A leaf or book bound as a whole number; nothing for text that is not one.
std::optional<qint64> wholeNumber(const QString& text) {
    const QString t = text.trimmed();
    if (t.isEmpty() || t.size() > 18) return std::nullopt;
    for (const QChar ch : t)
        if (!ch.isDigit() || ch.unicode() > 127) return std::nullopt;
    return t.toLongLong();
}

// The rows of a cheque other than those payment `ownSerial` wrote.
QString otherRows(tr::db::Connection& c, const QString& number, const QString& series, qint64 ownSerial) {
    return QStringLiteral(" LTrim(RTrim(ChqNo)) = ") + c.text(number.trimmed()) +
           QStringLiteral(" And LTrim(RTrim(IsNull(Joz, ''))) = ") + c.text(series.trimmed()) +
           QStringLiteral(" And Not (WhatDoc = '81' And Serial = ") + sqlNumber(ownSerial) + QLatin1Char(')');
}

}  // namespace

std::optional<QString> leafVoidedOn(tr::db::Connection& c, const QString& number, const QString& series) {
    const QVariant date = firstColumn(
        c, QStringLiteral("Select Max(SanadDate) From N_ChqLastTrans Where WhatDoc = '83' And Serial = 0 And ChqNo = ") +
               c.text(number.trimmed()) + QStringLiteral(" And IsNull(Joz, '') = ") + c.text(series.trimmed()));
    if (date.isNull()) return std::nullopt;
    return trimmed(date);
}

QList<ChequeBook> booksHoldingLeaf(tr::db::Connection& c, const QString& number, const QString& series) {
    QList<ChequeBook> out;
    const std::optional<qint64> leaf = wholeNumber(number);
    if (!leaf) return out;
    const tr::db::Query books = openQuery(
        c, QStringLiteral("Select AcountID, FirstNum, LastNum, FormCode From N_Cheque Where "
                          "LTrim(RTrim(IsNull(Joz, ''))) = ") +
               c.text(series.trimmed()) + QStringLiteral(" Order By ChequeID"));
    for (int i = 0; i < books.RecordCount(); ++i) {
        const auto first = wholeNumber(trimmed(books.value(i, 1)));
        const auto last = wholeNumber(trimmed(books.value(i, 2)));
        if (first && last && *first <= *leaf && *leaf <= *last)
            out.append({books.value(i, 0).toLongLong(), trimmed(books.value(i, 3))});
    }
    return out;
}

std::optional<qint64> leafBookAccount(tr::db::Connection& c, const QString& number, const QString& series) {
    const QList<ChequeBook> books = booksHoldingLeaf(c, number, series);
    if (books.isEmpty()) return std::nullopt;
    return books.first().accountId;
}

QString ownLeafRefusal(tr::db::Connection& c, qint64 accountId, const QString& number, const QString& series,
                       qint64 ownSerial) {
    if (firstColumn(c, QStringLiteral("Select Count(*) From N_BankHesab Where AcountID = ") + sqlNumber(accountId))
            .toLongLong() == 0)
        return QStringLiteral("شماره حساب ثبت نشده است.");
    // A book of another account is named before a leaf in no book at all.
    bool inOwnBook = false, inOtherBook = false;
    for (const ChequeBook& book : booksHoldingLeaf(c, number, series))
        (book.accountId == accountId ? inOwnBook : inOtherBook) = true;
    if (!inOwnBook) {
        return inOtherBook ? QStringLiteral("تركيب سري و شماره چك مربوط به حساب بانكي انتخاب شده نمي باشد !")
                           : QStringLiteral("شماره چك ثبت نشده است.");
    }
    const QString rows = otherRows(c, number, series, ownSerial);
    const tr::db::Query issued = openQuery(
        c, QStringLiteral("Select Top 1 Serial From N_ChqLastTrans Where WhatDoc = '81' And") + rows +
               QStringLiteral(" Order By IDX Desc"));
    if (!issued.IsEmpty())
        return QStringLiteral("اين چك در سريال ") + trimmed(issued.value(0, 0)) + QStringLiteral(" صادر شده است.");
    // A void of the leaf itself (serial 0) is not a movement of it.
    if (firstColumn(c, QStringLiteral("Select Count(*) From N_ChqLastTrans Where Not (WhatDoc = '83' And Serial = 0) "
                                      "And") +
                           rows)
            .toLongLong() > 0)
        return QStringLiteral("اين چك قبلا ثبت شده و گردش پيدا كرده است.");
    if (const std::optional<QString> voided = leafVoidedOn(c, number, series))
        return QStringLiteral("شماره چك ") + number.trimmed() + QStringLiteral("در تاريخ '") + *voided +
               QStringLiteral("' ابطال شده است.");
    return {};
}

std::optional<ChequeInHand> chequeInHand(tr::db::Connection& c, const QString& number, const QString& series,
                                         qint64 ownSerial) {
    const QString key = QStringLiteral("LTrim(RTrim(%1)) = ") + c.text(number.trimmed()) +
                        QStringLiteral(" And LTrim(RTrim(IsNull(%2, ''))) = ") + c.text(series.trimmed());
    // The receipt: its treasury row (named by the receipt's state row) holds the cheque's own data.
    const tr::db::Query receipt = openQuery(
        c, QStringLiteral("Select Top 1 N.WhatDoc2, N.CodWhatDoc2, N.Des1, N.Des2, N.Des3, N.Des4, N.Des6, N.IDX From "
                          "N_ChqLastTrans As L Inner Join N_NaghdTrans As N On (Cast(N.IDX As Varchar(20)) = "
                          "LTrim(RTrim(L.CodWhatDoc))) Where L.WhatDoc = '71' And ") +
               key.arg(QStringLiteral("L.ChqNo"), QStringLiteral("L.Joz")) + QStringLiteral(" Order By L.IDX Desc"));
    if (receipt.IsEmpty()) return std::nullopt;
    ChequeInHand h;
    h.bank = trimmed(receipt.value(0, 0));
    h.branch = trimmed(receipt.value(0, 1));
    h.branchName = trimmed(receipt.value(0, 2));
    h.drawerAccount = trimmed(receipt.value(0, 3));
    h.payableToOrder = trimmed(receipt.value(0, 4));
    h.guarantee = trimmed(receipt.value(0, 5));
    h.payee = trimmed(receipt.value(0, 6));
    const tr::db::Query latest = openQuery(
        c, QStringLiteral("Select Top 1 WhatDoc, SanadDate From N_ChqLastTrans Where") +
               otherRows(c, number, series, ownSerial) + QStringLiteral(" Order By IDX Desc"));
    h.state = latest.IsEmpty() ? QString() : trimmed(latest.value(0, 0));
    h.stateDate = latest.IsEmpty() ? QString() : trimmed(latest.value(0, 1));
    const QString& state = h.state;
    // Where it stands: the debit line of its latest action that wrote one, else its opening rows.
    const tr::db::Query line = openQuery(
        c, QStringLiteral("Select Top 1 Koll, Moein, Tafsily, Tafsily2, ProjectCod, Bed From Asnad Where TypeSys = 'N' "
                          "And WhatDoc = ") +
               c.text(state) + QStringLiteral(" And Bed > 0 And ") + key.arg(QStringLiteral("AtfCh"), QStringLiteral("DocToDate")) +
               QStringLiteral(" Order By REC Desc"));
    const tr::db::Query opening = openQuery(
        c, QStringLiteral("Select Top 1 Koll, Moein, Tafsily, Tafsily2, ProjectCod, sValue From N_ChqFirst Where "
                          "WhatDoc = '71' And ChqOrTaraf = 1 And ") +
               key.arg(QStringLiteral("ChqNo"), QStringLiteral("Joz")));
    h.opening = !opening.IsEmpty();
    const tr::db::Query& at = line.IsEmpty() ? opening : line;
    if (!at.IsEmpty()) {
        h.koll = trimmed(at.value(0, 0));
        h.moein = trimmed(at.value(0, 1));
        h.tafsily = trimmed(at.value(0, 2));
        h.tafsily2 = trimmed(at.value(0, 3));
        h.projectCod = trimmed(at.value(0, 4));
    }
    // Its amount as received.
    const QVariant received = firstColumn(
        c, QStringLiteral("Select Max(Bed) From Asnad Where TypeSys = 'N' And WhatDoc = '71' And Bed > 0 And ") +
               key.arg(QStringLiteral("AtfCh"), QStringLiteral("DocToDate")));
    h.value = received.isNull() ? (opening.IsEmpty() ? 0 : opening.value(0, 5).toDouble()) : received.toDouble();
    return h;
}

QString spentChequeRefusal(tr::db::Connection& c, const QString& number, const QString& series, double value,
                           const QString& issueDate, qint64 ownSerial) {
    return spentChequeRefusal(chequeInHand(c, number, series, ownSerial), value, issueDate);
}

QString spentChequeRefusal(const std::optional<ChequeInHand>& h, double value, const QString& issueDate) {
    if (!h) return QStringLiteral("شماره چك ثبت نشده است.");
    if (h->guarantee == QStringLiteral("ض")) return QStringLiteral("چک هاي تضميني را نمي توان انتخاب کرد");
    if (h->state != QLatin1String("71") && h->state != QLatin1String("77") && h->state != QLatin1String("88"))
        return QStringLiteral("اين چك قبلا ثبت شده و گردش پيدا كرده است.");
    if (std::fabs(h->value - value) >= 0.005)
        return QStringLiteral("مبلغ چك خرج شده بايد ") + tr::persian::formatAmount(h->value) + QStringLiteral(" باشد.");
    // Spent the day it came in is fine; before it came in is not.
    if (!issueDate.isEmpty() && issueDate < h->stateDate)
        return QStringLiteral("تاريخ صدور چك بايد بزرگتر از تاريخ ") + h->stateDate + QStringLiteral(" باشد.");
    return {};
}

}  // namespace tr::instruments
