#include "cheques/cheque_document.h"

#include <QCalendar>
#include <QDate>
#include <cmath>

#include "common/clock.h"
#include "common/db/database_error.h"
#include "common/db/query_helpers.h"
#include "common/db/transaction.h"
#include "common/persian/amount.h"
#include "common/persian/amount_cells.h"
#include "common/persian/persian_date.h"
#include "instruments/cheque_receipt_rule.h"
#include "instruments/cheque_work_tables.h"
#include "currency/counter_currency_grid.h"
#include "currency/rates.h"
#include "vouchers/account_checks.h"
#include "vouchers/document_kinds.h"
#include "vouchers/document_session.h"
#include "vouchers/rights.h"
#include "vouchers/serials.h"
#include "vouchers/transfer_table.h"
#include "vouchers/treasury_log.h"

namespace tr::cheques {

namespace {

using tr::db::firstColumn;
using tr::db::openQuery;


QString trimmed(const QVariant& v) {
    return v.isNull() ? QString() : v.toString().trimmed();
}

// A Persian date as a day, exactly (the calendar's own leap years), invalid for a bad text.
QDate persianDay(const QString& text) {
    const QString date = tr::persian::latinDigits(text.trimmed());
    if (!tr::persian::isValidDate(date)) return {};
    static const QCalendar jalali(QCalendar::System::Jalali);
    return jalali.dateFromParts(date.mid(0, 4).toInt(), date.mid(5, 2).toInt(), date.mid(8, 2).toInt());
}

}  // namespace

const QString ChequeDocument::kMultiInvoiceNote = QStringLiteral("اين شماره سريال چند فاکتوري است");

ChequeDocument::ChequeDocument(const tr::Services& services, const ChequeDocumentSide& side)
    : side_(side),
      kindSql_(services.database->Connection->text(side.kind.code)),
      services_(services),
      messages_(services.dialog),
      // One name part for both tables, free of any other screen's of this session.
      prefix_(tr::vouchers::freeWorkTableName(*services.database->Connection, side_.kind.formKey, services.global->sessionText,
                                              side_.chequeSuffix)
                  .mid(2)),
      chequeTable_(*services.database, QStringLiteral("##") + prefix_ + side_.chequeSuffix),
      counterpartyTable_(*services.database, QStringLiteral("##") + prefix_ + QStringLiteral("_Taraf")),
      cheques_(services.database->Connection),
      counterparties_(services.database->Connection),
      historyTable_(tr::vouchers::historyTableName(QStringLiteral("##") + prefix_)),
      rights_(tr::vouchers::rightsPrefixes(services.global->rights, side_.kind.formKey)) {
    tr::db::Connection& c = connection();
    for (const auto& [table, columns] :
         {std::pair{chequeTable_.name(), side_.chequeColumns},
          std::pair{counterpartyTable_.name(), tr::instruments::counterpartyWorkTableColumns()}}) {
        if (tr::db::objectExistsInTempdb(c, table)) c.execute(QStringLiteral("Drop Table ") + table);
        c.execute(QStringLiteral("Create Table ") + table + QStringLiteral(" (") + columns + QStringLiteral(")"));
    }
    cheques_.setSql(QStringLiteral("Select * From ") + chequeTable_.name() + QStringLiteral(" Order By Raj"));
    counterparties_.setSql(QStringLiteral("Select * From ") + counterpartyTable_.name() + QStringLiteral(" Order By Raj"));
    cheques_.BeforePost = [this](tr::db::Query& row) { return readAmounts(row) && checkCheque(row); };
    cheques_.AfterPost = [this](tr::db::Query& row) { keepCounterpartyInStep(row); };
    counterparties_.BeforePost = [this](tr::db::Query& row) { return readAmounts(row) && checkCounterparty(row); };
    cheques_.Open();
    counterparties_.Open();
}

ChequeDocument::~ChequeDocument() {
    try {
        tr::vouchers::releaseScreenHolds(*services_.database, side_.kind.code, QString::number(services_.global->userNumber));
        tr::db::execute(*services_.database, tr::vouchers::dropHistoryTableStatement(connection(), historyTable_));
    } catch (const tr::db::DatabaseError&) {
        // A connection the host already closed: the holds go with the session.
    }
}

QString ChequeDocument::caption() const {
    QString text = tr::vouchers::documentStateCaption(mode_ == DocumentMode::New).trimmed();
    if (saved_) text += QLatin1Char(' ') + tr::vouchers::kUpdatedMark;
    return text;
}

bool ChequeDocument::canSave(bool opening) const {
    if (opening) return tr::vouchers::hasRight(rights_, QStringLiteral("F_"));
    return tr::vouchers::hasRight(rights_, mode_ == DocumentMode::New ? QStringLiteral("N_") : QStringLiteral("E_"));
}

bool ChequeDocument::canDelete() const {
    return mode_ == DocumentMode::Edit && tr::vouchers::hasRight(rights_, QStringLiteral("D_"));
}

bool ChequeDocument::readAmounts(tr::db::Query& row) {
    // The grids keep an amount as it was typed (group separators, Persian digits) until the row
    // posts; a text that is no amount is refused with its reason and the row stays in edit.
    static const QStringList fields = {QStringLiteral("ChqValue"),     QStringLiteral("ArzCount"),
                                       QStringLiteral("Nerkh"),        QStringLiteral("ArzCount2"),
                                       QStringLiteral("Nerkh2"),       QStringLiteral("MojavezValue"),
                                       QStringLiteral("FactValue")};
    const QString refusal = tr::persian::readAmountCells(row, fields);
    if (refusal.isEmpty()) return true;
    messages_.show(refusal, tr::persian::kAmountMessageKind);
    return false;
}

bool ChequeDocument::refuse(const QString& message) {
    messages_.show(message, QStringLiteral("1ER"));
    return false;
}

void ChequeDocument::newDocument() {
    tr::db::Connection& c = connection();
    c.execute(QStringLiteral("Delete From ") + chequeTable_.name());
    c.execute(QStringLiteral("Delete From ") + counterpartyTable_.name());
    cheques_.Open();
    counterparties_.Open();
    header_ = {};
    header_.serial = newSerial();
    header_.date = tr::persian::defaultDocumentDate(services_.global->fiscalStart, services_.global->fiscalEnd);
    header_.userName = services_.global->userName;
    mode_ = DocumentMode::New;
    opening_ = false;
    saved_ = false;
    loadedDate_.clear();
    invoiceNote_.clear();
    started();
}

QString ChequeDocument::newSerial() {
    return tr::vouchers::takeNewSerial(*services_.database, side_.kind.code, QString::number(services_.global->userNumber));
}

bool ChequeDocument::savedSerial(qint64 serial) {
    return firstColumn(connection(), QStringLiteral("Select Count(*) From N_NaghdTrans Where WhatDoc = ") + kindSql_ +
                                         QStringLiteral(" And Serial = ") + tr::db::sqlNumber(serial))
               .toLongLong() > 0;
}

void ChequeDocument::holdSerial(const QString& serial) {
    tr::vouchers::holdOpenedDocument(*services_.database, side_.kind.code, serial, QString::number(services_.global->userNumber));
}

QString ChequeDocument::noSaveRightMessage(bool opening) const {
    // The paying side says why; the receiving side's buttons are simply off.
    return side_.payment && !opening ? QStringLiteral("کاربر مجاز به ثبت پرداخت چك نميباشد") : QString();
}

QString ChequeDocument::deleteMode() const {
    return opening_ ? QStringLiteral("DELETE_FIRST") : QStringLiteral("DELETE_DOREH");
}

void ChequeDocument::cancelEdits() {
    if (mode_ == DocumentMode::Edit) {
        const QString serial = header_.serial;
        open(serial);
    } else {
        newDocument();
    }
}

void ChequeDocument::appendCheque() {
    if (cheques_.state() != tr::db::Query::State::Browse && !postCheque()) return;
    cheques_.Append();
    cheques_.FieldByName(QStringLiteral("ChqGetter")).SetValue(QStringLiteral("حامل"));
    startCheque(cheques_);
}

bool ChequeDocument::postCheque() {
    if (cheques_.state() == tr::db::Query::State::Browse) return true;
    // A new row left as it was started (no number, no amount) is dropped, not refused.
    if (cheques_.state() == tr::db::Query::State::Insert &&
        cheques_.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed().isEmpty() &&
        !(cheques_.FieldByName(QStringLiteral("ChqValue")).AsFloat() > 0)) {
        cheques_.Cancel();
        return true;
    }
    cheques_.Post();
    return cheques_.state() == tr::db::Query::State::Browse;
}

double ChequeDocument::debitTotal() const {
    // A payment credits its cheques and debits its counterparty lines.
    const QString table = side_.payment ? counterpartyTable_.name() : chequeTable_.name();
    return firstColumn(connection(), QStringLiteral("Select IsNull(Sum(ChqValue), 0) From ") + table).toDouble();
}

double ChequeDocument::creditTotal() const {
    const QString table = side_.payment ? chequeTable_.name() : counterpartyTable_.name();
    return firstColumn(connection(), QStringLiteral("Select IsNull(Sum(ChqValue), 0) From ") + table).toDouble();
}

// ---- the grids ----------------------------------------------------------------------------------

// A currency cheque is worth its count at its rate.
void ChequeDocument::valueCurrencyCheque(tr::db::Query& row) {
    if (row.FieldByName(QStringLiteral("ArzCod")).AsString().trimmed().isEmpty()) return;
    const double count = row.FieldByName(QStringLiteral("ArzCount")).AsFloat();
    const double rate = row.FieldByName(QStringLiteral("Nerkh")).AsFloat();
    if (count > 0 && rate > 0) row.FieldByName(QStringLiteral("ChqValue")).SetValue(tr::persian::roundAmount(count * rate));
}

bool ChequeDocument::twiceInDocument(tr::db::Query& row, const QString& number, const QString& series) const {
    const int skip = row.state() == tr::db::Query::State::Edit ? row.RecNo() - 1 : -1;
    const int numberColumn = row.fieldIndex(QStringLiteral("ChqNo"));
    const int seriesColumn = row.fieldIndex(QStringLiteral("Joz"));
    for (int i = 0; i < row.RecordCount(); ++i) {
        if (i == skip) continue;
        if (trimmed(row.value(i, numberColumn)) == number && trimmed(row.value(i, seriesColumn)) == series) return true;
    }
    return false;
}

void ChequeDocument::completeCheque(tr::db::Query& row) {
    const bool editing = row.state() == tr::db::Query::State::Edit;
    if (row.FieldByName(QStringLiteral("Raj")).IsNull())
        row.FieldByName(QStringLiteral("Raj")).SetValue(row.RecordCount() + (editing ? -1 : 0));
    if (row.FieldByName(QStringLiteral("ChqGetter")).AsString().trimmed().isEmpty())
        row.FieldByName(QStringLiteral("ChqGetter")).SetValue(QStringLiteral("حامل"));
}

// A counterparty line names a cheque of the document and, when it carries a currency, one that
// the cheques carry and its account is kept in.
bool ChequeDocument::checkCounterparty(tr::db::Query& row) {
    tr::db::Connection& c = connection();
    const QString number = row.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed();
    const QString series = row.FieldByName(QStringLiteral("Joz")).AsString().trimmed();
    const tr::db::Query cheque = openQuery(
        c, QStringLiteral("Select Top 1 IsNull(ArzCod, '') From ") + chequeTable_.name() +
               QStringLiteral(" Where LTrim(RTrim(ChqNo)) = ") + c.text(number) +
               QStringLiteral(" And LTrim(RTrim(IsNull(Joz, ''))) = ") + c.text(series));
    if (!number.isEmpty() && cheque.IsEmpty()) return refuse(QStringLiteral("شماره چك در ليست چك ها وجود ندارد !"));
    const QString currency = row.FieldByName(QStringLiteral("ArzCod")).AsString().trimmed();
    if (!currency.isEmpty() && !tr::currency::CounterCurrencyGrid::chequesCarry(services_, chequeTable_.name(), currency))
        return false;
    const tr::vouchers::LineAccount line = tr::vouchers::LineAccount::fromRow(row);
    if (line.koll.trimmed().isEmpty()) return true;
    if (!tr::vouchers::validateLineAccount(services_, line).accepted()) return false;
    const std::optional<tr::currency::Currency> kept = tr::currency::accountCurrency(
        c, {line.koll, line.moein, line.tafsily, line.tafsily2, line.projectCod}, tr::currency::bankAccountSet(side_.currencyScreen));
    const QString chequeCurrency = cheque.IsEmpty() ? QString() : trimmed(cheque.value(0, 0));
    if (kept && !chequeCurrency.isEmpty() && kept->arzCod.trimmed() != chequeCurrency)
        return refuse(QStringLiteral("نوع ارز اين سرفصل با چك انتخاب شده يكسان نيست !"));
    return true;
}

void ChequeDocument::keepCounterpartyInStep(tr::db::Query& row) {
    tr::db::Connection& c = connection();
    const QString number = row.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed();
    const QString series = row.FieldByName(QStringLiteral("Joz")).AsString().trimmed();
    const QString key = QStringLiteral(" Where ChqNo = ") + c.text(number) + QStringLiteral(" And IsNull(Joz, '') = ") +
                        c.text(series);
    const QString value = tr::db::sqlNumber(row.FieldByName(QStringLiteral("ChqValue")).AsFloat());
    const QString des = c.text(row.FieldByName(QStringLiteral("Des")).AsString());
    // The cheque's currencies travel with its amount.
    QStringList currencyColumns, currencyValues;
    // A payment's cheque rows carry one currency only.
    for (const char* field : {"ArzCod", "ArzNam", "ArzCod2", "ArzNam2"}) {
        if (row.fieldIndex(QString::fromLatin1(field)) < 0) continue;
        currencyColumns << QString::fromLatin1(field);
        currencyValues << c.text(row.FieldByName(QString::fromLatin1(field)).AsString().trimmed());
    }
    for (const char* field : {"ArzCount", "Nerkh", "ArzCount2", "Nerkh2"}) {
        if (row.fieldIndex(QString::fromLatin1(field)) < 0) continue;
        const tr::db::Field f = row.FieldByName(QString::fromLatin1(field));
        currencyColumns << QString::fromLatin1(field);
        currencyValues << (f.IsNull() ? QStringLiteral("Null") : tr::db::sqlNumber(f.AsFloat()));
    }
    QStringList currencySet;
    for (int i = 0; i < currencyColumns.size(); ++i) currencySet << currencyColumns[i] + QStringLiteral(" = ") + currencyValues[i];
    const qint64 lines =
        firstColumn(c, QStringLiteral("Select Count(*) From ") + counterpartyTable_.name() + key).toLongLong();
    if (lines == 0) {
        const qint64 next =
            firstColumn(c, QStringLiteral("Select IsNull(Max(Raj), -1) + 1 From ") + counterpartyTable_.name()).toLongLong();
        c.execute(QStringLiteral("Insert Into ") + counterpartyTable_.name() +
                  QStringLiteral(" (Raj, Joz, ChqNo, ChqValue, Des, ") + currencyColumns.join(QStringLiteral(", ")) +
                  QStringLiteral(") Values (") + tr::db::sqlNumber(next) + QStringLiteral(", ") + c.text(series) +
                  QStringLiteral(", ") + c.text(number) + QStringLiteral(", ") + value + QStringLiteral(", ") + des +
                  QStringLiteral(", ") + currencyValues.join(QStringLiteral(", ")) + QLatin1Char(')'));
    } else if (lines == 1) {
        // A cheque split over several lines keeps the split the user typed.
        c.execute(QStringLiteral("Update ") + counterpartyTable_.name() + QStringLiteral(" Set ChqValue = ") + value +
                  QStringLiteral(", Des = ") + des + QStringLiteral(", ") + currencySet.join(QStringLiteral(", ")) + key);
    }
    if (!lower_.empty()) {
        c.execute(QStringLiteral("Update ") + counterpartyTable_.name() + QStringLiteral(" Set WhatDoc2 = '01', Koll = ") +
                  c.text(lower_.koll.trimmed()) + QStringLiteral(", Moein = ") + c.text(lower_.moein.trimmed()) +
                  QStringLiteral(", Tafsily = ") + c.text(lower_.tafsily.trimmed()) + QStringLiteral(", Tafsily2 = ") +
                  c.text(lower_.tafsily2.trimmed()) + QStringLiteral(", ProjectCod = ") +
                  c.text(lower_.projectCod.trimmed()) + key);
    }
    counterparties_.Open();
}

// ---- opening, saving, deleting --------------------------------------------------------------

void ChequeDocument::reload() {
    tr::db::Connection& c = connection();
    // The load fills the currency columns either way; the twin is only told apart on writes.
    c.execute(QStringLiteral("Exec ") + procedure() + QStringLiteral(" 'DB->TRANS', ") + c.text(prefix_) + QStringLiteral(", ") +
              c.text(header_.serial) + QStringLiteral(", '', '', ''"));
    readSavedHeader();
    loadedDate_ = header_.date;
    if (side_.invoices) readInvoiceNote();
    cheques_.Open();
    counterparties_.Open();
}

void ChequeDocument::readSavedHeader() {
    tr::db::Connection& c = connection();
    opening_ = firstColumn(c, QStringLiteral("Select Count(*) From N_ChqFirst Where WhatDoc = ") + kindSql_ + QStringLiteral(" And Serial = ") +
                                  tr::db::sqlNumber(header_.serial.toLongLong()))
                   .toLongLong() > 0;
    if (opening_) {
        header_.voucherNo.clear();
        header_.date = trimmed(firstColumn(c, QStringLiteral("Select Max(SanadDate) From N_ChqLastTrans Where WhatDoc = ") +
                                                  kindSql_ + QStringLiteral(" And Serial = ") +
                                                  tr::db::sqlNumber(header_.serial.toLongLong())));
        header_.userName = trimmed(firstColumn(c, QStringLiteral("Select Max(User_Name) From N_ChqFirst Where ChqOrTaraf = 1 "
                                                                 "And WhatDoc = ") +
                                                      kindSql_ + QStringLiteral(" And Serial = ") +
                                                      tr::db::sqlNumber(header_.serial.toLongLong())));
    } else {
        const tr::db::Query voucher = openQuery(
            c, QStringLiteral("Select Top 1 A.SanadNo, A.SanadDate, A.User_Name From Asnad As A Inner Join N_NaghdTrans As "
                              "N On (A.Document = Cast(N.IDX As Varchar(20))) Where A.TypeSys = 'N' And A.WhatDoc = ") +
                   kindSql_ + QStringLiteral(" And N.WhatDoc = ") + kindSql_ + QStringLiteral(" And N.Serial = ") +
                   tr::db::sqlNumber(header_.serial.toLongLong()));
        if (!voucher.IsEmpty()) {
            header_.voucherNo = trimmed(voucher.value(0, 0));
            header_.date = trimmed(voucher.value(0, 1));
            header_.userName = trimmed(voucher.value(0, 2));
        }
    }
}

void ChequeDocument::readInvoiceNote() {
    tr::db::Connection& c = connection();
    const tr::db::Query invoices = openQuery(
        c, QStringLiteral("Select Distinct SanadNoForosh From R_ForoshRelatedNaghd Where WhatDoc = ") + kindSql_ + QStringLiteral(" And Serial = ") +
               tr::db::sqlNumber(header_.serial.toLongLong()));
    invoiceNote_ = invoices.RecordCount() > 1 ? kMultiInvoiceNote
                   : invoices.IsEmpty()       ? QString()
                                              : trimmed(invoices.value(0, 0));
}

void ChequeDocument::setInvoiceNumber(const QString& number) {
    invoiceNumber_ = number.trimmed();
    if (invoiceNumber_.isEmpty()) return;
    tr::db::Connection& c = connection();
    const tr::db::Query tied = openQuery(
        c, QStringLiteral("Select Top 1 * From R_ForoshRelatedNaghd Where SanadNoForosh = ") + c.text(invoiceNumber_) +
               QStringLiteral(" And TypeAction = '1'  And Whatdoc = ") + kindSql_ + QStringLiteral(" "));
    if (tied.IsEmpty())
        newDocument();
    else
        open(trimmed(tied.value(0, tied.fieldIndex(QStringLiteral("Serial")))));
}

QString ChequeDocument::firstMovedCheque() const {
    if (mode_ != DocumentMode::Edit) return {};
    tr::db::Connection& c = connection();
    // A later row of the cheque than its receipt by this document, on either side.
    return trimmed(firstColumn(
        c, QStringLiteral("Select Top 1 R.ChqNo From N_ChqLastTrans As R Where R.WhatDoc = ") + kindSql_ + QStringLiteral(" And R.Serial = ") +
               tr::db::sqlNumber(header_.serial.toLongLong()) +
               QStringLiteral(" And Exists (Select * From N_ChqLastTrans As L Where LTrim(RTrim(L.ChqNo)) = "
                              "LTrim(RTrim(R.ChqNo)) And LTrim(RTrim(IsNull(L.Joz, ''))) = LTrim(RTrim(IsNull(R.Joz, ''))) "
                              "And L.IDX > R.IDX) Order By R.ChqNo")));
}

bool ChequeDocument::checkDate() {
    const QString date = tr::persian::latinDigits(header_.date.trimmed());
    const QStringList parts = date.split(QLatin1Char('/'));
    // The cheque documents word their date refusals in their own way.
    if (tr::persian::invalidDatePart(parts.value(0), parts.value(1), parts.value(2)) != tr::persian::DatePart::None)
        return refuse(QStringLiteral("تاريخ وارد شده اشکال دارد."));
    const tr::Global& g = *services_.global;
    switch (tr::persian::checkInPeriod(date, g.fiscalStart, g.fiscalEnd)) {
        case tr::persian::PeriodCheck::Inside:
            break;
        case tr::persian::PeriodCheck::BeforeStart:
            return refuse(QStringLiteral("تاريخ از تاريخ ابتدايي دوره مالي كوچكتر است !"));
        case tr::persian::PeriodCheck::AfterEnd:
            return refuse(QStringLiteral("تاريخ از تاريخ انتهايي دوره مالي بزرگتر است !"));
    }
    if (mode_ == DocumentMode::Edit && date != loadedDate_) {
        const QString moved = firstMovedCheque();
        if (moved.isEmpty()) return true;
        if (!side_.payment)
            return refuse(QStringLiteral("بعلت گردش چك ") + moved + QStringLiteral(" نميتوانيد تاريخ صدور آنرا تغيير دهيد."));
        // A payment names the first later action's date when the new date passes it.
        const QString first = trimmed(firstColumn(
            connection(), QStringLiteral("Select Min(L.SanadDate) From N_ChqLastTrans As L Inner Join N_ChqLastTrans As R "
                                         "On (LTrim(RTrim(L.ChqNo)) = LTrim(RTrim(R.ChqNo)) And LTrim(RTrim(IsNull(L.Joz, "
                                         "''))) = LTrim(RTrim(IsNull(R.Joz, ''))) And L.IDX > R.IDX) Where R.WhatDoc = ") +
                              kindSql_ + QStringLiteral(" And R.Serial = ") + tr::db::sqlNumber(header_.serial.toLongLong())));
        if (!first.isEmpty() && date > first)
            return refuse(QStringLiteral("بعلت گردش چكها نميتوانيد تاريخ صدور چك را بزرگتر از تاريخ ") + first +
                          QStringLiteral(" وارد كنيد."));
        return refuse(QStringLiteral("بعلت گردش چك ") + moved + QStringLiteral(" نميتوانيد تاريخ صدور را تغيير دهيد."));
    }
    return true;
}

bool ChequeDocument::currencyDocument() const {
    tr::db::Connection& c = connection();
    for (const QString& table : {chequeTable_.name(), counterpartyTable_.name()}) {
        if (firstColumn(c, QStringLiteral("Select Count(*) From ") + table +
                               QStringLiteral(" Where LTrim(RTrim(IsNull(ArzCod, ''))) <> ''"))
                .toLongLong() > 0)
            return true;
    }
    return false;
}

QString ChequeDocument::procedure() const {
    const tr::vouchers::TreasuryDocumentKind& kind = side_.kind;
    return kind.hasCurrencyTwin && currencyDocument() ? kind.currencyProcedure() : kind.procedure;
}

bool ChequeDocument::chooseChequeCurrency() {
    if (!services_.pickList) return false;
    const std::optional<tr::currency::Currency> chosen = tr::currency::chooseCurrency(*services_.pickList);
    return chosen && setChequeCurrency(*chosen);
}

bool ChequeDocument::setChequeCurrency(const tr::currency::Currency& currency) {
    if (cheques_.state() == tr::db::Query::State::Browse) {
        if (cheques_.IsEmpty()) return false;
        cheques_.Edit();
    }
    const std::optional<tr::currency::CurrentRate> rate = tr::currency::currentRate(connection(), currency.arzCod);
    cheques_.FieldByName(QStringLiteral("ArzCod")).SetValue(currency.arzCod);
    cheques_.FieldByName(QStringLiteral("ArzNam")).SetValue(currency.arzNam);
    if (rate) {
        const auto side = tr::currency::defaultRateSide(side_.currencyScreen);
        cheques_.FieldByName(QStringLiteral("Nerkh")).SetValue(tr::currency::rateOf(*rate, side));
    }
    return true;
}

bool ChequeDocument::askCounterpartyCurrencies(tr::currency::CounterCurrencyPrompt& prompt) {
    if (counterparties_.IsEmpty() && counterparties_.state() != tr::db::Query::State::Insert) return false;
    if (!postCheque()) return false;
    const std::optional<QList<tr::currency::CounterCurrency>> chosen =
        prompt.askCounterCurrencies(prefix_, chequeTable_.name());
    if (!chosen || chosen->isEmpty()) return false;
    if (counterparties_.state() == tr::db::Query::State::Browse) counterparties_.Edit();
    double rials = 0;
    const char* names[2][4] = {{"ArzCod", "ArzNam", "ArzCount", "Nerkh"}, {"ArzCod2", "ArzNam2", "ArzCount2", "Nerkh2"}};
    for (int i = 0; i < 2; ++i) {
        const bool has = i < chosen->size();
        const tr::currency::CounterCurrency none;
        const tr::currency::CounterCurrency& line = has ? chosen->at(i) : none;
        counterparties_.FieldByName(QString::fromLatin1(names[i][0])).SetValue(has ? QVariant(line.arzCod) : QVariant());
        counterparties_.FieldByName(QString::fromLatin1(names[i][1])).SetValue(has ? QVariant(line.arzNam) : QVariant());
        counterparties_.FieldByName(QString::fromLatin1(names[i][2])).SetValue(has ? QVariant(line.arzCount) : QVariant());
        counterparties_.FieldByName(QString::fromLatin1(names[i][3])).SetValue(has ? QVariant(line.arzNerkh) : QVariant());
        if (has) rials += line.arzCount * line.arzNerkh;
    }
    counterparties_.FieldByName(QStringLiteral("ChqValue")).SetValue(tr::persian::roundAmount(rials));
    counterparties_.Post();
    return counterparties_.state() == tr::db::Query::State::Browse;
}

bool ChequeDocument::open(const QString& typed) {
    const QString serial = typed.trimmed();
    bool number = false;
    serial.toLongLong(&number);
    if (!number || !savedSerial(serial.toLongLong())) return refuse(side_.notThere);
    holdSerial(serial);
    header_ = {};
    header_.serial = serial;
    reload();
    mode_ = DocumentMode::Edit;
    saved_ = false;
    opened();
    return true;
}

bool ChequeDocument::save(bool opening) {
    if (!canSave(opening)) {
        const QString why = noSaveRightMessage(opening);
        if (!why.isEmpty()) refuse(why);
        return false;
    }
    tr::db::Connection& c = connection();
    const QString taraf = counterpartyTable_.name();
    if (!checkDate() || !checkBeforeSave(opening)) return false;
    // 1, 2. Every counterparty line has its account (and its source of funds, when kept).
    if (firstColumn(c, QStringLiteral("Select Count(*) From ") + taraf +
                           QStringLiteral(" Where LTrim(RTrim(IsNull(Koll, ''))) = ''"))
            .toLongLong() > 0)
        return refuse(QStringLiteral("سرفصل در قسمت طرف حساب پر نشده است"));
    if (tr::vouchers::treasuryOption(c, QStringLiteral("USE_MANABEH")).compare(QLatin1String("YES"), Qt::CaseInsensitive) ==
            0 &&
        firstColumn(c, QStringLiteral("Select Count(*) From ") + taraf +
                           QStringLiteral(" Where LTrim(RTrim(IsNull(ManabehCod, ''))) = ''"))
                .toLongLong() > 0)
        return refuse(QStringLiteral("منابع در قسمت طرف حساب پر نشده است"));
    // 3. Debits and credits.
    const double debit = firstColumn(c, QStringLiteral("Select IsNull(Sum(ChqValue), 0) From ") + chequeTable_.name()).toDouble();
    const double credit = firstColumn(c, QStringLiteral("Select IsNull(Sum(ChqValue), 0) From ") + taraf).toDouble();
    if (std::fabs(debit - credit) > 0.005 || debit <= 0) return refuse(QStringLiteral("سند تراز نميباشد."));
    // 4. Each cheque's lines make its amount.
    const tr::db::Query splits = openQuery(
        c, QStringLiteral("Select C.ChqNo, C.ChqValue, (Select IsNull(Sum(T.ChqValue), 0) From ") + taraf +
               QStringLiteral(" As T Where T.ChqNo = C.ChqNo And IsNull(T.Joz, '') = IsNull(C.Joz, '')) From ") +
               chequeTable_.name() + QStringLiteral(" As C Order By C.Raj"));
    for (int i = 0; i < splits.RecordCount(); ++i) {
        if (std::fabs(splits.value(i, 1).toDouble() - splits.value(i, 2).toDouble()) > 0.005) {
            return refuse(QStringLiteral("جمع مبلغ چك ") + trimmed(splits.value(i, 0)) +
                          QStringLiteral(" در قسمت طرف حساب/بابت با مبلغ چك يكسان نميباشد."));
        }
    }
    // 5. No counterparty line of a cheque the document lacks.
    const QVariant stray = firstColumn(
        c, QStringLiteral("Select Top 1 T.ChqNo From ") + taraf + QStringLiteral(" As T Where Not Exists (Select * From ") +
               chequeTable_.name() +
               QStringLiteral(" As C Where C.ChqNo = T.ChqNo And IsNull(C.Joz, '') = IsNull(T.Joz, ''))"));
    if (!stray.isNull()) return refuse(QStringLiteral("چك ") + trimmed(stray) + QStringLiteral(" در قسمت بالا ثبت نشده است !"));
    // 6, 7. The call and its log, together.
    const ScreenState before = screenState();
    const bool isNew = mode_ == DocumentMode::New;
    const QString type = isNew ? QStringLiteral("I") : QStringLiteral("E");
    const auto serial = [&] { return tr::db::sqlNumber(header_.serial.toLongLong()); };
    try {
        tr::vouchers::commitDocumentWrite(
            c, {.copyAside =
                    [&] {
                        if (!opening && side_.ledger)
                            tr::vouchers::copyDocumentVoucherAside(*services_.database, historyTable_, side_.kind.code,
                                                                   header_.serial);
                    },
                .call =
                    [&] {
                        beforeCall(isNew);
                        c.execute(QStringLiteral("Exec ") + procedure() + QLatin1Char(' ') +
                                  c.text(opening ? QStringLiteral("FIRST->DB") : QStringLiteral("TRANS->DB")) +
                                  QStringLiteral(", ") + c.text(prefix_) + QStringLiteral(", ") +
                                  c.text(header_.serial) + QStringLiteral(", ") + c.text(header_.date) +
                                  QStringLiteral(", ") + c.text(services_.global->userName) + QStringLiteral(", ") +
                                  c.text(isNew ? QStringLiteral("NEW") : QStringLiteral("EDIT")));
                    },
                .log =
                    [&] {
                        if (!opening) {
                            logAction(false, type,
                                      trimmed(firstColumn(c, QStringLiteral("Select Max(A.SanadNo) From Asnad As A "
                                                                            "Inner Join N_NaghdTrans As N On (A.Document = "
                                                                            "Cast(N.IDX As Varchar(20))) Where A.TypeSys = "
                                                                            "'N' And A.WhatDoc = ") +
                                                                 kindSql_ + QStringLiteral(" And N.WhatDoc = ") + kindSql_ +
                                                                 QStringLiteral(" And N.Serial = ") +
                                                                 serial())));
                            return;
                        }
                        logAction(true, type, QString());
                        c.execute(QStringLiteral(
                                      "Insert Into N_ChqFirst_Log (IDX, WhatDoc, LastWhatDoc, ChqOrTaraf, Serial, Raj, "
                                      "ChqNo, Joz, sValue, Des, SarResidDate, WhatDoc2, Koll, Moein, Tafsily, Tafsily2, "
                                      "ProjectCod, SalMale, SherCode, User_Name, User_Name_Log, ActDate, ActTime) Select "
                                      "IDX, WhatDoc, LastWhatDoc, ChqOrTaraf, Serial, Raj, ChqNo, Joz, sValue, Des, "
                                      "SarResidDate, WhatDoc2, Koll, Moein, Tafsily, Tafsily2, ProjectCod, SalMale, "
                                      "SherCode, User_Name, ") +
                                  c.text(services_.global->userName) + QStringLiteral(", ") +
                                  c.text(tr::persian::today()) + QStringLiteral(", ") + c.text(tr::timeText()) +
                                  QStringLiteral(" From N_ChqFirst Where WhatDoc = ") + kindSql_ + QStringLiteral(" And Serial = ") + serial());
                    },
                .invoiceLinks = [&] { alsoOnSave(opening); },
                // The saved document as the book now has it, read before the commit: nothing
                // after a commit may fail and leave a saved document looking unsaved.
                .readBack =
                    [&] {
                        mode_ = DocumentMode::Edit;
                        saved_ = true;
                        reload();
                    }});
    } catch (const tr::db::DatabaseError& e) {
        restore(before);
        return refuse(e.message());
    }
    return true;
}

ChequeDocument::ScreenState ChequeDocument::screenState() const {
    return {header_, lower_, mode_, opening_, saved_, loadedDate_, invoiceNote_, sideState()};
}

void ChequeDocument::restore(const ScreenState& state) {
    header_ = state.header;
    lower_ = state.lower;
    mode_ = state.mode;
    opening_ = state.opening;
    saved_ = state.saved;
    loadedDate_ = state.loadedDate;
    invoiceNote_ = state.invoiceNote;
    restoreSideState(state.side);
    // The rollback put the work tables back; the grids show them again.
    cheques_.Open();
    counterparties_.Open();
}

// The log row of a save or delete: the action log's, or for opening cheques (which have no
// voucher) a row of ASNADACTIONS under their own title.
void ChequeDocument::logAction(bool opening, const QString& type, const QString& voucherNo) {
    tr::db::Connection& c = connection();
    if (!opening) {
        tr::vouchers::logTreasuryAction(*services_.database, *services_.global,
                                        {voucherNo, side_.logTitle, side_.kind.code, header_.serial}, type);
        return;
    }
    c.execute(QStringLiteral("Insert Into ASNADACTIONS (TypeSys, TypeDoc, ActDate, ActUser, ActType, DocNo, ActTime, REC, "
                             "ComputerName) Values ('N', ") +
              c.text(side_.openingTitle) + QStringLiteral(", ") + c.text(tr::persian::today()) + QStringLiteral(", ") +
              c.text(services_.global->userName) + QStringLiteral(", ") + c.text(type) + QStringLiteral(", ") +
              c.text(header_.serial) + QStringLiteral(", ") + c.text(tr::timeText()) + QStringLiteral(", Null, ") +
              c.text(services_.global->computerName) + QLatin1Char(')'));
}

// Every cheque still in hand, as received.
bool ChequeDocument::checkBeforeDelete() {
    tr::db::Connection& c = connection();
    const QString serial = tr::db::sqlNumber(header_.serial.toLongLong());
    // The last actions' table of this desk (a ## table is seen by every desk).
    tr::db::ScopedTempTable lastActions(*services_.database,
                                        QStringLiteral("##TmpChqLastTrans") + services_.global->sessionText);
    const QString& last = lastActions.name();
    c.execute(QStringLiteral("Exec sp_N_Create_LastChqAction ") + c.text(last) + QStringLiteral(", '', 'FALSE'"));
    const tr::db::Query moved = openQuery(
        c, QStringLiteral("Select Top 1 T.ChqNo, K.NDocNam, T.Serial From ") + last +
               QStringLiteral(" As T Inner Join N_ChqLastTrans As R "
                          "On (R.ChqNo = T.ChqNo And IsNull(R.Joz, '') = IsNull(T.Joz, '') And R.WhatDoc = ") +
               kindSql_ + QStringLiteral(" And R.Serial = ") + serial +
               QStringLiteral(") Left Join N_AsnadNaghd As K On (K.WhatDoc = T.WhatDoc) Where T.WhatDoc <> ") + kindSql_ +
               QStringLiteral(" Order By T.IDX Desc"));
    lastActions.drop();
    if (!moved.IsEmpty()) {
        QString message = QStringLiteral("آخرين گردش چك شماره ") + trimmed(moved.value(0, 0)) + QLatin1Char(' ') +
                          trimmed(moved.value(0, 1)) + QStringLiteral(" ميباشد.");
        if (side_.payment)
            message += QLatin1Char('\n') + QStringLiteral("اين عمليات در سريال ") + trimmed(moved.value(0, 2)) +
                       QStringLiteral(" انجام گرفته شده است.");
        return refuse(message);
    }
    return true;
}

bool ChequeDocument::remove() {
    if (!canDelete()) return false;
    tr::db::Connection& c = connection();
    const QString serial = tr::db::sqlNumber(header_.serial.toLongLong());
    const ScreenState before = screenState();
    try {
        // 1, 2. What the side refuses a delete for.
        if (!checkBeforeDelete()) return false;
        // 3. Links to sales invoices go with it, if the user agrees; a payment is always confirmed.
        if (side_.invoices) {
            const QString links = QStringLiteral(" From R_ForoshRelatedNaghd Where WhatDoc = ") + kindSql_ +
                                  QStringLiteral(" And Serial = ") + serial;
            const bool linked = firstColumn(c, QStringLiteral("Select Count(*)") + links).toLongLong() > 0;
            if (linked && !messages_.ask(QStringLiteral("با حذف اين سريال،  ارتباط آن با صورتحساب هاي فروش قطع خواهد شد.") +
                                         QStringLiteral(" حذف شود؟")))
                return false;
        } else if (!messages_.ask(QStringLiteral(" حذف شود؟"))) {
            return false;
        }
        // 4, 5. The log row, the delete and the links, together.
        tr::vouchers::commitDocumentWrite(
            c, {.copyAside =
                    [&] {
                        if (!opening_ && side_.ledger)
                            tr::vouchers::copyDocumentVoucherAside(*services_.database, historyTable_, side_.kind.code,
                                                                   header_.serial);
                    },
                .call =
                    [&] {
                        c.execute(QStringLiteral("Exec ") + procedure() + QLatin1Char(' ') +
                                  c.text(deleteMode()) +
                                  QStringLiteral(", '', ") + c.text(header_.serial) + QStringLiteral(", '', '', ''"));
                    },
                .log = [&] { logAction(opening_, QStringLiteral("D"), header_.voucherNo); },
                .invoiceLinks = [&] { alsoOnDelete(); },
                // The procedure cuts the links and gives the invoices back what they were paid.
                // The screen turns to a new document inside the same transaction.
                .readBack = [&] { newDocument(); },
                .logBeforeCall = true});
    } catch (const tr::db::DatabaseError& e) {
        restore(before);
        return refuse(e.message());
    }
    return true;
}

std::optional<int> ChequeDocument::weightedDueDays() {
    const QDate from = persianDay(header_.date);
    if (!from.isValid()) return std::nullopt;
    double weighted = 0, total = 0;
    const int dueColumn = cheques_.fieldIndex(QStringLiteral("SarResidDate"));
    const int valueColumn = cheques_.fieldIndex(QStringLiteral("ChqValue"));
    for (int i = 0; i < cheques_.RecordCount(); ++i) {
        const QDate due = persianDay(trimmed(cheques_.value(i, dueColumn)));
        if (!due.isValid()) return std::nullopt;
        const double value = cheques_.value(i, valueColumn).toDouble();
        weighted += value * from.daysTo(due);
        total += value;
    }
    if (!(total > 0)) return std::nullopt;
    return int(std::lround(weighted / total));
}

void ChequeDocument::showWeightedDueDate() {
    const std::optional<int> days = weightedDueDays();
    if (!days) {
        messages_.show(QStringLiteral("محاسبه راس چك امكان پذير نيست!"), QStringLiteral("1I"));
        return;
    }
    const double total = firstColumn(connection(), QStringLiteral("Select IsNull(Sum(ChqValue), 0) From ") +
                                                       chequeTable_.name())
                             .toDouble();
    messages_.show(QStringLiteral(" راس چكهاي ") + side_.dueWord + QLatin1Char(' ') + QString::number(*days) + QStringLiteral(" روز ") +
                       QLatin1Char('\n') + QStringLiteral(" به مبلغ ") + tr::persian::formatAmount(total) +
                       QStringLiteral(" است "),
                   QStringLiteral("1I"));
}

}  // namespace tr::cheques
