#include "cheques/leaf_voiding.h"

#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "common/db/transaction.h"
#include "common/persian/persian_date.h"
#include "instruments/latest_state.h"

namespace tr::cheques {

namespace {

using tr::db::firstColumn;
using tr::db::openQuery;

const QString kNoNumber = QStringLiteral("شماره چك را وارد كنيد !");
const QString kAlreadyVoided = QStringLiteral("اين شماره چك قبلا ابطال شده است !");
const QString kNoBook = QStringLiteral("اين شماره چك در دسته چك ها تعريف نشده است !");
const QString kWrongSeries = QStringLiteral("سري چک را صحيح وارد کنيد.");
const QString kHasActions =
    QStringLiteral("اين برگه چک داراي گردش  مي باشد.\nبه فرم عمليات چک مراجعه کنيد.");
const QString kVoided = QStringLiteral("برگه چك باطل شد.");
const QString kNotVoided = QStringLiteral("اين چك قبلا ابطال نشده است !");
const QString kUndone = QStringLiteral("عمليات با موفقيت انجام شد.");

// The state rows of one leaf, by its number and series as typed (blanks aside, a missing series
// the empty one), as the cheque's other readers key it.
QString leafRows(tr::db::Connection& c, const QString& number, const QString& series) {
    return QStringLiteral(" ChqNo = ") + c.text(number.trimmed()) + QStringLiteral(" And IsNull(Joz, '') = ") +
           c.text(series.trimmed());
}

// A void of this screen: written by no document, so it has no voucher, and undoing it removes it
// alone. A kind-83 row of a document (the actions screen's "ابطال چک" of an issued cheque) is not.
const QString kLeafVoid = QStringLiteral(" WhatDoc = '83' And Serial = 0 And");

QString text(const QVariant& v) {
    return v.isNull() ? QString() : v.toString().trimmed();
}

}  // namespace

const QString LeafVoiding::kVoidTitle = QStringLiteral("       ابطال برگه چك");
const QString LeafVoiding::kVoidButton = QStringLiteral("تاييد ابطال چك");
const QString LeafVoiding::kUndoTitle = QStringLiteral("       برگشت ابطال برگه چك");
const QString LeafVoiding::kUndoButton = QStringLiteral("تاييد برگشت ابطال");

BookLookup findLeafBook(tr::db::Connection& c, const QString& number, const QString& series) {
    // The range as text: FirstNum and LastNum are texts and so is the number (a number literal
    // would turn the comparison numeric), so a book of numbers of unequal width, such as 99998 to
    // 100002, holds no leaf at all. Books of equal-width numbers behave as whole numbers would.
    const QString n = c.text(number.trimmed());
    const QString inRange = QStringLiteral(" C.FirstNum <= ") + n + QStringLiteral(" And C.LastNum >= ") + n;
    const tr::db::Query q = openQuery(
        c, QStringLiteral("Select Top 1 H.AcountID, B.BankNam, S.ShobehNam, H.AcountCod, K.NamHesab, M.NamHesab, "
                          "T.NamHesab, T2.NamHesab, P.ProjectNam From N_Cheque As C Inner Join N_BankHesab As H On "
                          "(H.AcountID = C.AcountID) Left Join N_Bank As B On (B.BankCod = H.BankCod) Left Join "
                          "N_Shoab As S On (S.BankCod = H.BankCod And S.ShobehCod = H.ShobehCod) Left Join Koll As K "
                          "On (K.Koll = H.JKoll) Left Join Moein As M On (M.Koll = H.JKoll And M.Moein = H.JMoein) "
                          "Left Join Tafsily As T On (T.Tafsily = H.JTafsily) Left Join Tafsily2 As T2 On "
                          "(T2.Tafsily2 = H.JTafsily2) Left Join M_Project As P On (P.ProjectCod = H.JProjectCod) "
                          "Where") +
               inRange + QStringLiteral(" And IsNull(C.Joz, '') = ") + c.text(series.trimmed()) +
               QStringLiteral(" Order By C.ChequeID"));
    if (q.IsEmpty()) {
        const bool otherSeries =
            firstColumn(c, QStringLiteral("Select Count(*) From N_Cheque As C Where") + inRange).toLongLong() > 0;
        return {std::nullopt, otherSeries ? kWrongSeries : kNoBook};
    }
    LeafBook book;
    book.acountId = q.value(0, 0).toLongLong();
    book.bank = text(q.value(0, 1));
    book.branch = text(q.value(0, 2));
    book.accountNumber = text(q.value(0, 3));
    for (int level = 4; level < 9; ++level) book.accountNames << text(q.value(0, level));
    return {book, QString()};
}

LeafVoiding::LeafVoiding(const tr::Services& services, bool voidMode)
    : services_(services), messages_(services.dialog), voidMode_(voidMode) {}

void LeafVoiding::setServices(const tr::Services& services) {
    services_ = services;
    messages_.setDialog(services.dialog);
}

int LeafVoiding::columnWidth(const char* table, const char* column) const {
    tr::db::Connection& c = connection();
    const QVariant width = firstColumn(c, QStringLiteral("Select Col_Length(%1, %2)")
                                              .arg(c.text(QString::fromLatin1(table)), c.text(QString::fromLatin1(column))));
    return width.isNull() ? 0 : width.toInt();
}

int LeafVoiding::numberWidth() const {
    // The number goes into both: the leaf's state rows, and the voucher lines that pay with it.
    const int state = columnWidth("N_ChqLastTrans", "ChqNo");
    const int voucher = columnWidth("Asnad", "ATFCH");
    if (state <= 0 || voucher <= 0) return qMax(state, voucher);
    return qMin(state, voucher);
}

int LeafVoiding::seriesWidth() const {
    return columnWidth("N_ChqLastTrans", "Joz");
}

void LeafVoiding::setNumber(const QString& number) {
    number_ = tr::persian::latinDigits(number).trimmed();
}

void LeafVoiding::setSeries(const QString& series) {
    series_ = tr::persian::latinDigits(series).trimmed();
}

bool LeafVoiding::findBook() {
    book_.reset();
    if (number_.isEmpty()) return false;
    BookLookup lookup = findLeafBook(connection(), number_, series_);
    if (!lookup.book) {
        messages_.show(lookup.refusal, QStringLiteral("1ER"));
        return false;
    }
    book_ = std::move(lookup.book);
    return true;
}

bool LeafVoiding::confirm() {
    return voidMode_ ? voidLeaf() : undoVoid();
}

QString LeafVoiding::voidRefusal(const BookLookup& lookup) const {
    tr::db::Connection& c = connection();
    if (number_.isEmpty()) return kNoNumber;
    if (firstColumn(c, QStringLiteral("Select Count(*) From N_ChqLastTrans Where WhatDoc = '83' And") +
                           leafRows(c, number_, series_))
            .toLongLong() > 0)
        return kAlreadyVoided;
    // A number in a book of another series is in no book of its own: the message names the book.
    if (!lookup.book) return kNoBook;
    // An issued leaf is voided as an action of its cheque, with a voucher, on the actions screen.
    if (tr::instruments::latestRow(c, tr::instruments::chequeHistory(), number_, series_)) return kHasActions;
    return {};
}

bool LeafVoiding::voidLeaf() {
    tr::db::Connection& c = connection();
    QString refusal;
    {
        // Checked and written under one transaction: two clerks voiding the same leaf write one row.
        tr::db::Transaction transaction(c);
        const BookLookup lookup = number_.isEmpty() ? BookLookup{} : findLeafBook(c, number_, series_);
        refusal = voidRefusal(lookup);
        book_ = lookup.book;
        if (refusal.isEmpty()) {
            const QString date =
                tr::persian::defaultDocumentDate(services_.global->fiscalStart, services_.global->fiscalEnd);
            // By position, as the table's six columns stand: kind, number, series, date, the bank
            // account of the book, and serial 0 (no document).
            c.execute(QStringLiteral("Insert Into N_ChqLastTrans Values ('83', %1, %2, %3, %4, 0)")
                          .arg(c.text(number_), c.text(series_), c.text(date),
                               c.text(QString::number(lookup.book->acountId))));
            transaction.commit();
        }
    }
    // The message waits for the transaction's end: a modal box must not hold the book.
    if (!refusal.isEmpty()) {
        messages_.show(refusal, QStringLiteral("1ER"));
        return false;
    }
    messages_.show(kVoided, QStringLiteral("1IR"));
    return true;
}

bool LeafVoiding::undoVoid() {
    tr::db::Connection& c = connection();
    bool undone = false;
    {
        tr::db::Transaction transaction(c);
        book_ = number_.isEmpty() ? std::nullopt : findLeafBook(c, number_, series_).book;
        const QString rows = kLeafVoid + leafRows(c, number_, series_);
        if (firstColumn(c, QStringLiteral("Select Count(*) From N_ChqLastTrans Where") + rows).toLongLong() > 0) {
            c.execute(QStringLiteral("Delete From N_ChqLastTrans Where") + rows);
            transaction.commit();
            undone = true;
        }
    }
    messages_.show(undone ? kUndone : kNotVoided, undone ? QStringLiteral("1IR") : QStringLiteral("1ER"));
    return undone;
}

}  // namespace tr::cheques
