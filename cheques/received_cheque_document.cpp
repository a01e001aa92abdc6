#include "cheques/received_cheque_document.h"

#include <QCalendar>
#include <QDate>
#include <cmath>

#include "common/clock.h"
#include "common/db/database_error.h"
#include "common/db/query_helpers.h"
#include "common/db/transaction.h"
#include "common/persian/amount.h"
#include "common/persian/persian_date.h"
#include "instruments/cheque_receipt_rule.h"
#include "instruments/cheque_work_tables.h"
#include "vouchers/serials.h"
#include "vouchers/treasury_log.h"

namespace tr::cheques {

namespace {

using tr::db::firstColumn;
using tr::db::openQuery;

const QString kOpeningTitle = QStringLiteral("دريافت چک - چک اول دوره");
const QString kNotThere = QStringLiteral("اين شماره دريافت چک در دسترس نمي باشد");

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

const QString ReceivedChequeDocument::kTitle = QStringLiteral("دريافت چک");
const QString ReceivedChequeDocument::kFormKey = QStringLiteral("N_A_CHQGET_");
const QString ReceivedChequeDocument::kKind = QStringLiteral("71");

ReceivedChequeDocument::ReceivedChequeDocument(const tr::Services& services)
    : services_(services),
      messages_(services.dialog),
      prefix_(kFormKey + services.global->sessionText),
      chequeTable_(*services.database, QStringLiteral("##") + prefix_ + QStringLiteral("_Chq")),
      counterpartyTable_(*services.database, QStringLiteral("##") + prefix_ + QStringLiteral("_Taraf")),
      cheques_(services.database->Connection),
      counterparties_(services.database->Connection) {
    tr::db::Connection& c = connection();
    for (const auto& [table, columns] :
         {std::pair{chequeTable_.name(), tr::instruments::chequeWorkTableColumns()},
          std::pair{counterpartyTable_.name(), tr::instruments::counterpartyWorkTableColumns()}}) {
        if (tr::db::objectExistsInTempdb(c, table)) c.execute(QStringLiteral("Drop Table ") + table);
        c.execute(QStringLiteral("Create Table ") + table + QStringLiteral(" (") + columns + QStringLiteral(")"));
    }
    cheques_.setSql(QStringLiteral("Select * From ") + chequeTable_.name() + QStringLiteral(" Order By Raj"));
    counterparties_.setSql(QStringLiteral("Select * From ") + counterpartyTable_.name() + QStringLiteral(" Order By Raj"));
    cheques_.BeforePost = [this](tr::db::Query& row) { return checkCheque(row); };
    cheques_.AfterPost = [this](tr::db::Query& row) { keepCounterpartyInStep(row); };
    cheques_.Open();
    counterparties_.Open();
}

ReceivedChequeDocument::~ReceivedChequeDocument() {
    try {
        tr::vouchers::releaseScreenHolds(*services_.database, kKind, QString::number(services_.global->userNumber));
    } catch (const tr::db::DatabaseError&) {
        // A connection the host already closed: the holds go with the session.
    }
}

QString ReceivedChequeDocument::caption() const {
    QString text = mode_ == DocumentMode::New ? QStringLiteral("ثبت") : QStringLiteral("اصلاح");
    if (saved_) text += QStringLiteral(" (به روزآوري شده است)");
    return text;
}

bool ReceivedChequeDocument::refuse(const QString& message) {
    messages_.show(message, QStringLiteral("1ER"));
    return false;
}

void ReceivedChequeDocument::newDocument() {
    tr::db::Connection& c = connection();
    c.execute(QStringLiteral("Delete From ") + chequeTable_.name());
    c.execute(QStringLiteral("Delete From ") + counterpartyTable_.name());
    cheques_.Open();
    counterparties_.Open();
    header_ = {};
    header_.serial = tr::vouchers::takeNewSerial(*services_.database, kKind, QString::number(services_.global->userNumber));
    header_.date = tr::persian::defaultDocumentDate(services_.global->fiscalStart, services_.global->fiscalEnd);
    header_.userName = services_.global->userName;
    mode_ = DocumentMode::New;
    opening_ = false;
    saved_ = false;
}

void ReceivedChequeDocument::cancelEdits() {
    if (mode_ == DocumentMode::Edit) {
        const QString serial = header_.serial;
        open(serial);
    } else {
        newDocument();
    }
}

void ReceivedChequeDocument::appendCheque() {
    if (cheques_.state() != tr::db::Query::State::Browse && !postCheque()) return;
    cheques_.Append();
    cheques_.FieldByName(QStringLiteral("ChqGetter")).SetValue(QStringLiteral("حامل"));
}

bool ReceivedChequeDocument::postCheque() {
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

double ReceivedChequeDocument::debitTotal() const {
    return firstColumn(connection(), QStringLiteral("Select IsNull(Sum(ChqValue), 0) From ") + chequeTable_.name())
        .toDouble();
}

double ReceivedChequeDocument::creditTotal() const {
    return firstColumn(connection(), QStringLiteral("Select IsNull(Sum(ChqValue), 0) From ") + counterpartyTable_.name())
        .toDouble();
}

// ---- the grids ----------------------------------------------------------------------------------

bool ReceivedChequeDocument::checkCheque(tr::db::Query& row) {
    tr::db::Connection& c = connection();
    const QString number = row.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed();
    const QString series = row.FieldByName(QStringLiteral("Joz")).AsString().trimmed();
    const double value = row.FieldByName(QStringLiteral("ChqValue")).AsFloat();
    const QString due = tr::persian::latinDigits(row.FieldByName(QStringLiteral("SarResidDate")).AsString().trimmed());
    if (number.isEmpty()) return refuse(QStringLiteral("شماره چك وارد نشده است."));
    if (!(value > 0)) return refuse(QStringLiteral("مبلغ چك وارد نشده است."));
    if (due.isEmpty() || due == QLatin1String("//")) return refuse(QStringLiteral("تاريخ سررسيد وارد نشده است."));
    if (!tr::persian::isValidDate(due)) return refuse(QStringLiteral("تاريخ سررسيد معتبر نميباشد."));
    // The same cheque twice in the document.
    const int skip = row.state() == tr::db::Query::State::Edit ? row.RecNo() - 1 : -1;
    const int numberColumn = row.fieldIndex(QStringLiteral("ChqNo"));
    const int seriesColumn = row.fieldIndex(QStringLiteral("Joz"));
    for (int i = 0; i < row.RecordCount(); ++i) {
        if (i == skip) continue;
        if (trimmed(row.value(i, numberColumn)) == number && trimmed(row.value(i, seriesColumn)) == series)
            return refuse(QStringLiteral("شماره چك تكراري ميباشد."));
    }
    // Received before (outside this document), as the procedure refuses it.
    const QString refusal = tr::instruments::chequeReceiptRefusal(
        c, number, series, header_.date, mode_ == DocumentMode::Edit ? header_.serial.toLongLong() : 0);
    if (!refusal.isEmpty()) return refuse(refusal);
    // A drawer whose cheque came back before: a warning, the row still posts.
    const QString account = row.FieldByName(QStringLiteral("AcountCod")).AsString().trimmed();
    if (!account.isEmpty()) {
        const QVariant bounced = firstColumn(
            c, QStringLiteral("Select Top 1 N.CodWhatDoc From N_NaghdTrans As N Where N.WhatDoc = '71' And N.Des2 = ") +
                   c.text(account) +
                   QStringLiteral(" And Exists (Select * From N_ChqLastTrans As L Where L.WhatDoc = '78' And L.ChqNo = "
                                  "N.CodWhatDoc And IsNull(L.Joz, '') = IsNull(N.Joz, ''))"));
        if (!bounced.isNull()) {
            messages_.show(QStringLiteral(" اين حساب جاري با شماره چک  ") + trimmed(bounced) +
                               QStringLiteral(" قبلا برگشت داده شده است. "),
                           QStringLiteral("1ER"));
        }
    }
    if (row.FieldByName(QStringLiteral("Raj")).IsNull())
        row.FieldByName(QStringLiteral("Raj")).SetValue(row.RecordCount() + (skip < 0 ? 0 : -1));
    if (row.FieldByName(QStringLiteral("ChqGetter")).AsString().trimmed().isEmpty())
        row.FieldByName(QStringLiteral("ChqGetter")).SetValue(QStringLiteral("حامل"));
    return true;
}

void ReceivedChequeDocument::keepCounterpartyInStep(tr::db::Query& row) {
    tr::db::Connection& c = connection();
    const QString number = row.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed();
    const QString series = row.FieldByName(QStringLiteral("Joz")).AsString().trimmed();
    const QString key = QStringLiteral(" Where ChqNo = ") + c.text(number) + QStringLiteral(" And IsNull(Joz, '') = ") +
                        c.text(series);
    const QString value = tr::db::sqlNumber(row.FieldByName(QStringLiteral("ChqValue")).AsFloat());
    const QString des = c.text(row.FieldByName(QStringLiteral("Des")).AsString());
    const qint64 lines =
        firstColumn(c, QStringLiteral("Select Count(*) From ") + counterpartyTable_.name() + key).toLongLong();
    if (lines == 0) {
        const qint64 next =
            firstColumn(c, QStringLiteral("Select IsNull(Max(Raj), -1) + 1 From ") + counterpartyTable_.name()).toLongLong();
        c.execute(QStringLiteral("Insert Into ") + counterpartyTable_.name() +
                  QStringLiteral(" (Raj, Joz, ChqNo, ChqValue, Des) Values (") + tr::db::sqlNumber(next) +
                  QStringLiteral(", ") + c.text(series) + QStringLiteral(", ") + c.text(number) + QStringLiteral(", ") +
                  value + QStringLiteral(", ") + des + QLatin1Char(')'));
    } else if (lines == 1) {
        // A cheque split over several lines keeps the split the user typed.
        c.execute(QStringLiteral("Update ") + counterpartyTable_.name() + QStringLiteral(" Set ChqValue = ") + value +
                  QStringLiteral(", Des = ") + des + key);
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

void ReceivedChequeDocument::reload() {
    tr::db::Connection& c = connection();
    c.execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqGet 'DB->TRANS', ") + c.text(prefix_) + QStringLiteral(", ") +
              c.text(header_.serial) + QStringLiteral(", '', '', ''"));
    opening_ = firstColumn(c, QStringLiteral("Select Count(*) From N_ChqFirst Where WhatDoc = '71' And Serial = ") +
                                  tr::db::sqlNumber(header_.serial.toLongLong()))
                   .toLongLong() > 0;
    if (opening_) {
        header_.voucherNo.clear();
        header_.date = trimmed(firstColumn(c, QStringLiteral("Select Max(SanadDate) From N_ChqLastTrans Where WhatDoc = '71' "
                                                             "And Serial = ") +
                                                  tr::db::sqlNumber(header_.serial.toLongLong())));
        header_.userName = trimmed(firstColumn(c, QStringLiteral("Select Max(User_Name) From N_ChqFirst Where ChqOrTaraf = 1 "
                                                                 "And WhatDoc = '71' And Serial = ") +
                                                      tr::db::sqlNumber(header_.serial.toLongLong())));
    } else {
        const tr::db::Query voucher = openQuery(
            c, QStringLiteral("Select Top 1 A.SanadNo, A.SanadDate, A.User_Name From Asnad As A Inner Join N_NaghdTrans As "
                              "N On (A.Document = Cast(N.IDX As Varchar(20))) Where A.TypeSys = 'N' And A.WhatDoc = '71' "
                              "And A.Bed > 0 And N.WhatDoc = '71' And N.Serial = ") +
                   tr::db::sqlNumber(header_.serial.toLongLong()));
        if (!voucher.IsEmpty()) {
            header_.voucherNo = trimmed(voucher.value(0, 0));
            header_.date = trimmed(voucher.value(0, 1));
            header_.userName = trimmed(voucher.value(0, 2));
        }
    }
    cheques_.Open();
    counterparties_.Open();
}

bool ReceivedChequeDocument::open(const QString& typed) {
    tr::db::Connection& c = connection();
    const QString serial = typed.trimmed();
    bool number = false;
    serial.toLongLong(&number);
    if (!number || firstColumn(c, QStringLiteral("Select Count(*) From N_NaghdTrans Where WhatDoc = '71' And Serial = ") +
                                      tr::db::sqlNumber(serial.toLongLong()))
                           .toLongLong() == 0)
        return refuse(kNotThere);
    tr::vouchers::holdOpenedDocument(*services_.database, kKind, serial, QString::number(services_.global->userNumber));
    header_ = {};
    header_.serial = serial;
    reload();
    mode_ = DocumentMode::Edit;
    saved_ = false;
    return true;
}

bool ReceivedChequeDocument::save(bool opening) {
    tr::db::Connection& c = connection();
    const QString taraf = counterpartyTable_.name();
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
    const bool isNew = mode_ == DocumentMode::New;
    try {
        tr::db::Transaction transaction(c);
        c.execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqGet ") +
                  c.text(opening ? QStringLiteral("FIRST->DB") : QStringLiteral("TRANS->DB")) + QStringLiteral(", ") +
                  c.text(prefix_) + QStringLiteral(", ") + c.text(header_.serial) + QStringLiteral(", ") +
                  c.text(header_.date) + QStringLiteral(", ") + c.text(services_.global->userName) + QStringLiteral(", ") +
                  c.text(isNew ? QStringLiteral("NEW") : QStringLiteral("EDIT")));
        const QString type = isNew ? QStringLiteral("I") : QStringLiteral("E");
        if (opening) {
            logAction(true, type, QString());
            c.execute(QStringLiteral("Insert Into N_ChqFirst_Log (IDX, WhatDoc, LastWhatDoc, ChqOrTaraf, Serial, Raj, ChqNo, "
                                     "Joz, sValue, Des, SarResidDate, WhatDoc2, Koll, Moein, Tafsily, Tafsily2, ProjectCod, "
                                     "SalMale, SherCode, User_Name, User_Name_Log, ActDate, ActTime) Select IDX, WhatDoc, "
                                     "LastWhatDoc, ChqOrTaraf, Serial, Raj, ChqNo, Joz, sValue, Des, SarResidDate, WhatDoc2, "
                                     "Koll, Moein, Tafsily, Tafsily2, ProjectCod, SalMale, SherCode, User_Name, ") +
                      c.text(services_.global->userName) + QStringLiteral(", ") + c.text(tr::persian::today()) +
                      QStringLiteral(", ") + c.text(tr::timeText()) +
                      QStringLiteral(" From N_ChqFirst Where WhatDoc = '71' And Serial = ") +
                      tr::db::sqlNumber(header_.serial.toLongLong()));
        } else {
            const QString voucher = trimmed(firstColumn(
                c, QStringLiteral("Select Max(A.SanadNo) From Asnad As A Inner Join N_NaghdTrans As N On (A.Document = "
                                  "Cast(N.IDX As Varchar(20))) Where A.TypeSys = 'N' And A.WhatDoc = '71' And N.WhatDoc = "
                                  "'71' And N.Serial = ") +
                       tr::db::sqlNumber(header_.serial.toLongLong())));
            logAction(false, type, voucher);
        }
        transaction.commit();
    } catch (const tr::db::DatabaseError& e) {
        return refuse(e.message());
    }
    mode_ = DocumentMode::Edit;
    saved_ = true;
    reload();
    return true;
}

// The log row of a save or delete: the action log's, or for opening cheques (which have no
// voucher) a row of ASNADACTIONS under their own title.
void ReceivedChequeDocument::logAction(bool opening, const QString& type, const QString& voucherNo) {
    tr::db::Connection& c = connection();
    if (!opening) {
        tr::vouchers::logTreasuryAction(*services_.database, *services_.global,
                                        {voucherNo, QStringLiteral("دريافت چك"), kKind, header_.serial}, type);
        return;
    }
    c.execute(QStringLiteral("Insert Into ASNADACTIONS (TypeSys, TypeDoc, ActDate, ActUser, ActType, DocNo, ActTime, REC, "
                             "ComputerName) Values ('N', ") +
              c.text(kOpeningTitle) + QStringLiteral(", ") + c.text(tr::persian::today()) + QStringLiteral(", ") +
              c.text(services_.global->userName) + QStringLiteral(", ") + c.text(type) + QStringLiteral(", ") +
              c.text(header_.serial) + QStringLiteral(", ") + c.text(tr::timeText()) + QStringLiteral(", Null, ") +
              c.text(services_.global->computerName) + QLatin1Char(')'));
}

bool ReceivedChequeDocument::remove() {
    if (mode_ != DocumentMode::Edit) return false;
    tr::db::Connection& c = connection();
    const QString serial = tr::db::sqlNumber(header_.serial.toLongLong());
    try {
        // 1, 2. Every cheque still in hand, as received.
        // The last actions' table of this desk (a ## table is seen by every desk).
        const QString last = QStringLiteral("##TmpChqLastTrans") + services_.global->sessionText;
        c.execute(QStringLiteral("Exec sp_N_Create_LastChqAction ") + c.text(last) + QStringLiteral(", '', 'FALSE'"));
        const tr::db::Query moved = openQuery(
            c, QStringLiteral("Select Top 1 T.ChqNo, K.NDocNam From ") + last +
                   QStringLiteral(" As T Inner Join N_ChqLastTrans As R "
                              "On (R.ChqNo = T.ChqNo And IsNull(R.Joz, '') = IsNull(T.Joz, '') And R.WhatDoc = '71' And "
                              "R.Serial = ") +
                   serial + QStringLiteral(") Left Join N_AsnadNaghd As K On (K.WhatDoc = T.WhatDoc) Where T.WhatDoc <> '71'"));
        c.execute(QStringLiteral("Drop Table ") + last);
        if (!moved.IsEmpty()) {
            return refuse(QStringLiteral("آخرين گردش چك شماره ") + trimmed(moved.value(0, 0)) + QLatin1Char(' ') +
                          trimmed(moved.value(0, 1)) + QStringLiteral(" ميباشد."));
        }
        // 3. Links to sales invoices go with it, if the user agrees.
        const QString links = QStringLiteral(" From R_ForoshRelatedNaghd Where WhatDoc = '71' And Serial = ") + serial;
        const bool linked = firstColumn(c, QStringLiteral("Select Count(*)") + links).toLongLong() > 0;
        if (linked && !messages_.ask(QStringLiteral("با حذف اين سريال،  ارتباط آن با صورتحساب هاي فروش قطع خواهد شد.") +
                                     QStringLiteral(" حذف شود؟")))
            return false;
        // 4, 5. The log row, the delete and the links, together.
        tr::db::Transaction transaction(c);
        logAction(opening_, QStringLiteral("D"), header_.voucherNo);
        c.execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqGet ") +
                  c.text(opening_ ? QStringLiteral("DELETE_FIRST") : QStringLiteral("DELETE_DOREH")) +
                  QStringLiteral(", '', ") + c.text(header_.serial) + QStringLiteral(", '', '', ''"));
        if (linked) c.execute(QStringLiteral("Delete") + links);
        transaction.commit();
    } catch (const tr::db::DatabaseError& e) {
        return refuse(e.message());
    }
    newDocument();
    return true;
}

std::optional<int> ReceivedChequeDocument::weightedDueDays() {
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

void ReceivedChequeDocument::showWeightedDueDate() {
    const std::optional<int> days = weightedDueDays();
    if (!days) {
        messages_.show(QStringLiteral("محاسبه راس چك امكان پذير نيست!"), QStringLiteral("1I"));
        return;
    }
    const double total = firstColumn(connection(), QStringLiteral("Select IsNull(Sum(ChqValue), 0) From ") +
                                                       chequeTable_.name())
                             .toDouble();
    messages_.show(QStringLiteral(" راس چكهاي دريافتي ") + QString::number(*days) + QStringLiteral(" روز ") +
                       QLatin1Char('\n') + QStringLiteral(" به مبلغ ") + tr::persian::formatAmount(total) +
                       QStringLiteral(" است "),
                   QStringLiteral("1I"));
}

}  // namespace tr::cheques
