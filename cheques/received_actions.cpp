#include "cheques/received_actions.h"

#include <QRegularExpression>
#include <cmath>

#include "common/db/database_error.h"
#include "common/db/query_helpers.h"
#include "common/db/transaction.h"
#include "common/persian/amount.h"
#include "common/persian/persian_date.h"
#include "instruments/cheque_actions.h"
#include "instruments/cheque_work_tables.h"
#include "instruments/latest_state.h"

namespace tr::cheques {

namespace {

using tr::db::firstColumn;
using tr::db::openQuery;
using tr::instruments::chequeActions;
using tr::instruments::Side;

const QStringList kLevels = {QStringLiteral("Koll"), QStringLiteral("Moein"), QStringLiteral("Tafsily"),
                             QStringLiteral("Tafsily2"), QStringLiteral("ProjectCod")};

QString accountColumns(const QString& prefix) {
    QStringList out;
    for (const QString& level : kLevels) out << prefix + level;
    return out.join(QStringLiteral(", "));
}

bool wellFormedDate(const QString& date) {
    static const QRegularExpression shape(QStringLiteral("^\\d{4}/\\d{2}/\\d{2}$"));
    return shape.match(date).hasMatch();
}

}  // namespace

const QString ReceivedChequeActions::kWaitText = QStringLiteral("لطفا صبر کنيد");
const QString ReceivedChequeActions::kUnlinkQuestion =
    QStringLiteral("ارتباط چک هاي برگشتي با صورتحساب ها قطع خواهد شد آيا ادامه ميدهيد؟");

ReceivedChequeActions::ReceivedChequeActions(const tr::Services& services)
    : services_(services),
      messages_(services.dialog),
      table_(*services.database, QStringLiteral("##TT") + services.global->sessionText),
      split_(*services.database, QStringLiteral("##TTT") + services.global->sessionText),
      rows_(services.database->Connection) {}

void ReceivedChequeActions::setServices(const tr::Services& services) {
    services_ = services;
    messages_.setDialog(services.dialog);
}

QString ReceivedChequeActions::field(const char* name) const {
    const int column = rows_.fieldIndex(QString::fromLatin1(name));
    return column < 0 || rows_.IsEmpty() ? QString() : rows_.value(rows_.RecNo() - 1, column).toString().trimmed();
}

void ReceivedChequeActions::setField(const char* name, const QVariant& value) {
    if (rows_.state() == tr::db::Query::State::Browse) rows_.Edit();
    rows_.FieldByName(QString::fromLatin1(name)).SetValue(value);
}

bool ReceivedChequeActions::refuse(const QString& message) {
    messages_.show(message, QStringLiteral("1ER"));
    return false;
}

void ReceivedChequeActions::fill() {
    tr::db::Connection& c = connection();
    if (tr::db::objectExistsInTempdb(c, table_.name())) c.execute(QStringLiteral("Drop Table ") + table_.name());
    c.execute(QStringLiteral("Create Table ") + table_.name() + QStringLiteral(" (") +
              tr::instruments::chequeActionWorkTableColumns() + QStringLiteral(")"));
    if (tr::db::objectExistsInTempdb(c, split_.name())) c.execute(QStringLiteral("Drop Table ") + split_.name());
    c.execute(QStringLiteral("Create Table ") + split_.name() + QStringLiteral(" (") +
              tr::instruments::returnSplitWorkTableColumns() + QStringLiteral(")"));
    // Each received cheque once: its receipt row (the state row of kind 71 points at it) and its
    // latest action, whichever side wrote it.
    QString where = QStringLiteral(" Where R.WhatDoc = '71' And R.IDX = (Select Max(R2.IDX) From N_ChqLastTrans As R2 "
                                   "Where R2.WhatDoc = '71' And R2.ChqNo = R.ChqNo And IsNull(R2.Joz, '') = "
                                   "IsNull(R.Joz, ''))");
    if (!filters_.chequeNumber.trimmed().isEmpty())
        where += QStringLiteral(" And R.ChqNo = ") + c.text(filters_.chequeNumber.trimmed());
    if (!filters_.fromDate.isEmpty()) where += QStringLiteral(" And R.SanadDate >= ") + c.text(filters_.fromDate);
    if (!filters_.toDate.isEmpty()) where += QStringLiteral(" And R.SanadDate <= ") + c.text(filters_.toDate);
    if (!filters_.state.isEmpty()) where += QStringLiteral(" And L.WhatDoc = ") + c.text(filters_.state);
    c.execute(QStringLiteral("Insert Into ") + table_.name() +
              QStringLiteral(" (IDX, IsFirst, Serial, BankCod, ShobehCod, ShobehNam, AcountCod, Des, Joz, ChqNo, ChqValue, "
                             "GetterCheque, SodorDate, SarResidDate, LastActionDate, WhatDocNam, LastWhatDoc, "
                             "LastWhatDocNam, Havaleh, Tazmin, sOrder) "
                             "Select N.IDX, Case When Exists (Select * From N_ChqFirst As F Where F.ChqOrTaraf = 1 And "
                             "F.ChqNo = R.ChqNo And IsNull(F.Joz, '') = IsNull(R.Joz, '')) Then 'Y' Else 'N' End, "
                             "N.Serial, N.WhatDoc2, N.CodWhatDoc2, N.Des1, N.Des2, N.Des5, R.Joz, R.ChqNo, "
                             "IsNull((Select Max(A.Bed) From Asnad As A Where A.TypeSys = 'N' And A.WhatDoc = '71' And "
                             "A.Document = Cast(N.IDX As Varchar(20))), (Select Max(F.sValue) From N_ChqFirst As F "
                             "Where F.IDX = N.IDX)), N.Des6, R.SanadDate, "
                             "IsNull((Select Max(A.AtfDate) From Asnad As A Where A.TypeSys = 'N' And A.WhatDoc = '71' "
                             "And A.Document = Cast(N.IDX As Varchar(20))), (Select Max(F.SarResidDate) From "
                             "N_ChqFirst As F Where F.IDX = N.IDX)), L.SanadDate, '', L.WhatDoc, K.NDocNam, N.Des3, "
                             "N.Des4, Right('000000000000' + Cast(R.IDX As Varchar(12)), 12) "
                             "From N_ChqLastTrans As R Inner Join N_NaghdTrans As N On (Cast(N.IDX As Varchar(20)) = "
                             "R.CodWhatDoc) Inner Join N_ChqLastTrans As L On (L.ChqNo = R.ChqNo And IsNull(L.Joz, '') "
                             "= IsNull(R.Joz, '') And L.IDX = (Select Max(M.IDX) From N_ChqLastTrans As M Where "
                             "M.ChqNo = R.ChqNo And IsNull(M.Joz, '') = IsNull(R.Joz, ''))) Left Join N_AsnadNaghd As "
                             "K On (K.WhatDoc = L.WhatDoc)") +
              where);
    // Where each cheque stands: the debit line of its latest voucher, or its opening row.
    const tr::db::Query listed = openQuery(c, QStringLiteral("Select ChqNo, Joz, IDX From ") + table_.name());
    for (int i = 0; i < listed.RecordCount(); ++i) {
        const QString number = listed.value(i, 0).toString().trimmed();
        const QString series = listed.value(i, 1).toString().trimmed();
        QStringList standing = accountsWhere(
            QStringLiteral("Select Top 1 Koll, Moein, Tafsily, Tafsily2, ProjectCod From Asnad Where TypeSys = 'N' "
                           "And WhatDoc Like '7%' And AtfCh = ") +
            c.text(number) + QStringLiteral(" And DocToDate = ") + c.text(series) +
            QStringLiteral(" And Bed > 0 Order By REC Desc"));
        if (standing.isEmpty()) {
            standing = accountsWhere(QStringLiteral("Select Koll, Moein, Tafsily, Tafsily2, ProjectCod From N_ChqFirst "
                                                    "Where ChqOrTaraf = 1 And IDX = ") +
                                     tr::db::sqlNumber(listed.value(i, 2).toLongLong()));
        }
        QStringList sets;
        for (int k = 0; k < kLevels.size(); ++k)
            sets << QStringLiteral("V") + kLevels[k] + QStringLiteral(" = ") + c.text(standing.value(k));
        c.execute(QStringLiteral("Update ") + table_.name() + QStringLiteral(" Set ") + sets.join(QStringLiteral(", ")) +
                  QStringLiteral(" Where ChqNo = ") + c.text(number) + QStringLiteral(" And IsNull(Joz, '') = ") +
                  c.text(series));
    }
    rows_.setSql(QStringLiteral("Select * From ") + table_.name() + QStringLiteral(" Order By sOrder"));
    rows_.Open();
}

QStringList ReceivedChequeActions::accountsWhere(const QString& sql) const {
    const tr::db::Query q = openQuery(connection(), sql);
    if (q.IsEmpty()) return {};
    QStringList out;
    for (int k = 0; k < kLevels.size(); ++k) out << q.value(0, k).toString().trimmed();
    return out;
}

void ReceivedChequeActions::setAccounts(const char* prefix, const QStringList& accounts) {
    for (int k = 0; k < kLevels.size(); ++k) {
        const QByteArray column = QByteArray(prefix) + kLevels[k].toLatin1();
        setField(column.constData(), accounts.value(k));
    }
}

tr::instruments::InstrumentFacts ReceivedChequeActions::facts() const {
    tr::instruments::InstrumentFacts f;
    f.side = Side::Received;
    f.guarantee = field("Tazmin") == QStringLiteral("ض");
    const QString state = field("LastWhatDoc");
    tr::db::Connection& c = connection();
    f.paidOut = firstColumn(c, QStringLiteral("Select Count(*) From N_ChqLastTrans Where WhatDoc = '81' And ChqNo = ") +
                                   c.text(field("ChqNo")) + QStringLiteral(" And IsNull(Joz, '') = ") +
                                   c.text(field("Joz")))
                    .toLongLong() > 0;
    // An opening cheque still in the state its opening document set.
    f.opening = field("IsFirst") == QLatin1String("Y") && state == QLatin1String("71");
    return f;
}

QStringList ReceivedChequeActions::dropDownNames() const {
    return QStringList{QString()} + chequeActions().names(Side::Received);
}

QStringList ReceivedChequeActions::menu() const {
    if (rows_.IsEmpty()) return {};
    return chequeActions().menu(field("LastWhatDoc"), facts());
}

void ReceivedChequeActions::spaceOnAction() {
    if (rows_.IsEmpty()) return;
    const QString next = chequeActions().step(field("LastWhatDoc"), facts(), field("WhatDocNam"));
    setField("WhatDocNam", next);
    // No action, no date: the row goes back to how the list showed it.
    if (next.isEmpty()) setField("ActionDate", QString());
    if (!next.isEmpty()) fillAccounts(chequeActions().kindOf(next, Side::Received).value_or(QString()));
    if (!next.isEmpty() && field("ActionDate").isEmpty())
        setField("ActionDate", tr::persian::defaultDocumentDate(services_.global->fiscalStart, services_.global->fiscalEnd));
    rows_.Post();
}

bool ReceivedChequeActions::chooseAction(const QString& name) {
    if (rows_.IsEmpty()) return false;
    if (!name.isEmpty() && !chequeActions().allows(field("LastWhatDoc"), facts(), name)) {
        setField("WhatDocNam", QString());
        rows_.Post();
        return refuse(QStringLiteral("عمليات ") + name + QStringLiteral(" براي چك در وضعيت ") + field("LastWhatDocNam") +
                      QStringLiteral(" مجاز نيست."));
    }
    setField("WhatDocNam", name);
    if (name.isEmpty()) setField("ActionDate", QString());
    if (!name.isEmpty()) fillAccounts(chequeActions().kindOf(name, Side::Received).value_or(QString()));
    if (!name.isEmpty() && field("ActionDate").isEmpty())
        setField("ActionDate", tr::persian::defaultDocumentDate(services_.global->fiscalStart, services_.global->fiscalEnd));
    rows_.Post();
    return true;
}

// The Va-accounts each action hands the cheque to (undo and "کسر موجودي" move nothing).
void ReceivedChequeActions::fillAccounts(const QString& kind) {
    tr::db::Connection& c = connection();
    const QString standing = QStringLiteral("V");
    QStringList to;
    if (kind == QLatin1String("72")) {
        const qint64 account = field("AcountID").toLongLong();
        if (account > 0) {
            to = accountsWhere(QStringLiteral("Select ") + accountColumns(QStringLiteral("H")) +
                               QStringLiteral(" From N_BankHesab Where AcountID = ") + tr::db::sqlNumber(account));
        }
    } else if (kind == QLatin1String("73")) {
        // Into the bank account that the cheque went to collection with.
        to = accountsWhere(QStringLiteral("Select Top 1 ") + accountColumns(QStringLiteral("H.J")) +
                           QStringLiteral(" From N_NaghdTrans As N Inner Join N_BankHesab As H On "
                                          "(Cast(H.AcountID As Varchar(20)) = N.CodWhatDoc2) Where N.WhatDoc = '72' And "
                                          "N.CodWhatDoc = ") +
                           c.text(field("ChqNo")) + QStringLiteral(" And IsNull(N.Joz, '') = ") + c.text(field("Joz")) +
                           QStringLiteral(" Order By N.IDX Desc"));
    } else if (kind == QLatin1String("77") || kind == QLatin1String("79") || kind == QLatin1String("88")) {
        const QString row = kind == QLatin1String("79") ? QStringLiteral("79") : QStringLiteral("71");
        to = accountsWhere(QStringLiteral("Select ") + accountColumns(QString()) +
                           QStringLiteral(" From N_AsnadDaryaftani Where WhatDoc = ") + c.text(row));
    } else if (kind == QLatin1String("78")) {
        // Back to the customer: the account the cheque was received from.
        to = accountsWhere(QStringLiteral("Select Top 1 ") + accountColumns(QString()) +
                           QStringLiteral(" From Asnad Where TypeSys = 'N' And WhatDoc = '71' And AtfCh = ") +
                           c.text(field("ChqNo")) + QStringLiteral(" And DocToDate = ") + c.text(field("Joz")) +
                           QStringLiteral(" And Bes > 0 Order By REC Desc"));
        if (to.isEmpty()) {
            to = accountsWhere(QStringLiteral("Select Top 1 ") + accountColumns(QString()) +
                               QStringLiteral(" From N_ChqFirst Where ChqOrTaraf = 2 And ChqNo = ") +
                               c.text(field("ChqNo")) + QStringLiteral(" And IsNull(Joz, '') = ") + c.text(field("Joz")));
        }
    } else if (kind == QLatin1String("76")) {
        QStringList same;
        for (const QString& level : kLevels) same << field((standing + level).toLatin1().constData());
        to = same;
    }
    setAccounts("Va", to);
}

void ReceivedChequeActions::setBankAccount(qint64 acountId) {
    if (rows_.IsEmpty()) return;
    setField("AcountID", acountId);
    if (chequeActions().kindOf(field("WhatDocNam"), Side::Received) == QStringLiteral("72"))
        fillAccounts(QStringLiteral("72"));
    rows_.Post();
}

QList<QPair<qint64, QString>> ReceivedChequeActions::bankAccounts() const {
    const tr::db::Query q = openQuery(connection(), QStringLiteral("Select H.AcountID, IsNull(B.BankNam, '') + ' - ' + "
                                                                   "H.AcountCod From N_BankHesab As H Left Join N_Bank "
                                                                   "As B On (B.BankCod = H.BankCod) Order By H.AcountID"));
    QList<QPair<qint64, QString>> out;
    for (int i = 0; i < q.RecordCount(); ++i) out.append({q.value(i, 0).toLongLong(), q.value(i, 1).toString().trimmed()});
    return out;
}

QList<QPair<QString, QString>> ReceivedChequeActions::gridColumns() {
    return {{QStringLiteral("ChqNo"), QStringLiteral("شماره چك")},
            {QStringLiteral("Joz"), QStringLiteral("سري")},
            {QStringLiteral("ChqValue"), QStringLiteral("مبلغ")},
            {QStringLiteral("SarResidDate"), QStringLiteral("تاريخ سررسيد")},
            {QStringLiteral("GetterCheque"), QStringLiteral("در وجه")},
            {QStringLiteral("WhatDocNam"), QStringLiteral("عمليات جاري")},
            {QStringLiteral("ActionDate"), QStringLiteral("تاريخ عملکرد")},
            {QStringLiteral("AcountID"), QStringLiteral("حساب بانکي")},
            {QStringLiteral("LastWhatDocNam"), QStringLiteral("آخرين عمليات")},
            {QStringLiteral("LastActionDate"), QStringLiteral("تاريخآخرينعمل")},
            {QStringLiteral("VKoll"), QStringLiteral("كل")},
            {QStringLiteral("VMoein"), QStringLiteral("معين")},
            {QStringLiteral("VaKoll"), QStringLiteral("كل مقصد")},
            {QStringLiteral("VaMoein"), QStringLiteral("معين مقصد")},
            {QStringLiteral("VaTafsily"), QStringLiteral("تفصيلي مقصد")}};
}

QList<QPair<QString, QString>> ReceivedChequeActions::stateNames() const {
    const tr::db::Query q = openQuery(connection(), QStringLiteral("Select WhatDoc, NDocNam From N_AsnadNaghd Where "
                                                                   "WhatDoc Like '7%' Order By WhatDoc"));
    QList<QPair<QString, QString>> out;
    for (int i = 0; i < q.RecordCount(); ++i)
        out.append({q.value(i, 0).toString().trimmed(), q.value(i, 1).toString().trimmed()});
    return out;
}

bool ReceivedChequeActions::setActionDate(const QString& typed) {
    if (rows_.IsEmpty()) return false;
    const QString date = tr::persian::latinDigits(typed.trimmed());
    if (!wellFormedDate(date)) return refuse(QStringLiteral("تاريخ وارد شده اشکال دارد"));
    if (date < services_.global->fiscalStart || date > services_.global->fiscalEnd)
        return refuse(QStringLiteral("تاريخ بايد در بازه سال مالي باشد !"));
    const QString last = field("LastActionDate");
    if (date < last) {
        return refuse(QStringLiteral("تاريخ عمليات ") + date + QStringLiteral(" نبايد كوچکتر از ") + last +
                      QStringLiteral(" باشد"));
    }
    if (chequeActions().kindOf(field("WhatDocNam"), Side::Received) == QStringLiteral("72")) {
        tr::db::Connection& c = connection();
        const qint64 same = firstColumn(c, QStringLiteral("Select Count(*) From Asnad Where TypeSys = 'N' And WhatDoc = "
                                                          "'72' And AtfCh = ") +
                                               c.text(field("ChqNo")) + QStringLiteral(" And DocToDate = ") +
                                               c.text(field("Joz")) + QStringLiteral(" And SanadDate = ") + c.text(date))
                                .toLongLong();
        if (same > 0)
            return refuse(QStringLiteral("براي اين چک در اين تاريخ يكبار عمليات <در جريان وصول> تعريف شده است."));
    }
    setField("ActionDate", date);
    rows_.Post();
    return true;
}

QList<ReturnLine> ReceivedChequeActions::returnLines() const {
    if (rows_.IsEmpty()) return {};
    tr::db::Connection& c = connection();
    const QString cheque = c.text(field("ChqNo"));
    const QString series = c.text(field("Joz"));
    // Columns: the account's five levels, description, credit, part.
    auto read = [&](const QString& sql) {
        const tr::db::Query q = openQuery(c, sql);
        QList<ReturnLine> out;
        for (int i = 0; i < q.RecordCount(); ++i) {
            ReturnLine line;
            for (int k = 0; k < kLevels.size(); ++k) line.account << q.value(i, k).toString().trimmed();
            line.des = q.value(i, 5).toString().trimmed();
            line.credited = q.value(i, 6).toDouble();
            line.newValue = q.value(i, 7).toDouble();
            out << line;
        }
        return out;
    };
    // The parts typed so far; else the lines of its receipt's voucher; else its opening rows.
    QList<ReturnLine> lines = read(QStringLiteral("Select ") + accountColumns(QString()) +
                                   QStringLiteral(", Des, ChqValue, NewValue From ") + split_.name() +
                                   QStringLiteral(" Where ChqNo = ") + cheque + QStringLiteral(" And IsNull(Joz, '') = ") +
                                   series + QStringLiteral(" Order By Raj"));
    if (lines.isEmpty()) {
        lines = read(QStringLiteral("Select ") + accountColumns(QString()) +
                     QStringLiteral(", Des, Bes, 0 From Asnad Where TypeSys = 'N' And WhatDoc = '71' And AtfCh = ") +
                     cheque + QStringLiteral(" And DocToDate = ") + series + QStringLiteral(" And Bes > 0 Order By REC"));
    }
    if (lines.isEmpty()) {
        lines = read(QStringLiteral("Select ") + accountColumns(QString()) +
                     QStringLiteral(", Des, sValue, 0 From N_ChqFirst Where ChqOrTaraf = 2 And ChqNo = ") + cheque +
                     QStringLiteral(" And IsNull(Joz, '') = ") + series + QStringLiteral(" Order By Raj"));
    }
    return lines;
}

bool ReceivedChequeActions::returnNeedsSplit() const {
    return !rows_.IsEmpty() && chequeActions().kindOf(field("WhatDocNam"), Side::Received) == QStringLiteral("78") &&
           returnLines().size() > 1;
}

bool ReceivedChequeActions::splitReturn(const QList<double>& parts) {
    const QList<ReturnLine> lines = returnLines();
    if (lines.isEmpty() || parts.size() != lines.size()) return false;
    double total = 0;
    for (int i = 0; i < lines.size(); ++i) {
        if (parts[i] - lines[i].credited > 0.005)
            return refuse(QStringLiteral("مبلغ وارد شده بايد كوچكتر يا مساوي با مبلغ بستانكار باشد."));
        total += parts[i];
    }
    const double amount = field("ChqValue").toDouble();
    if (std::fabs(total - amount) > 0.005)
        return refuse(QStringLiteral("جمع مبلغ بايد برابر <") + QString::number(amount, 'f', 0) + QStringLiteral("> شود."));
    tr::db::Connection& c = connection();
    const QString cheque = c.text(field("ChqNo"));
    const QString series = c.text(field("Joz"));
    tr::db::Transaction transaction(c);
    c.execute(QStringLiteral("Delete From ") + split_.name() + QStringLiteral(" Where ChqNo = ") + cheque +
              QStringLiteral(" And IsNull(Joz, '') = ") + series);
    for (int i = 0; i < lines.size(); ++i) {
        QStringList values{QString::number(i + 1), QStringLiteral("'RET'"), QStringLiteral("'78'"), cheque, series,
                           tr::db::sqlNumber(lines[i].credited), tr::db::sqlNumber(parts[i]), c.text(lines[i].des)};
        for (const QString& level : lines[i].account) values << c.text(level);
        c.execute(QStringLiteral("Insert Into ") + split_.name() +
                  QStringLiteral(" (Raj, Status, WhatDoc, ChqNo, Joz, ChqValue, NewValue, Des, ") +
                  accountColumns(QString()) + QStringLiteral(") Values (") + values.join(QStringLiteral(", ")) +
                  QLatin1Char(')'));
    }
    transaction.commit();
    return true;
}

bool ReceivedChequeActions::splitReturnTyped(const QStringList& typed) {
    QList<double> parts;
    for (const QString& text : typed) {
        const tr::persian::AmountReading reading = tr::persian::readAmount(text);
        if (!reading.ok()) {
            messages_.show(tr::persian::amountRefusal(reading, text), tr::persian::kAmountMessageKind);
            return false;
        }
        parts << reading.value;
    }
    return splitReturn(parts);
}

QList<QStringList> ReceivedChequeActions::history(const QString& number, const QString& series) const {
    tr::db::Connection& c = connection();
    const QString cheque = QStringLiteral(" L.ChqNo = ") + c.text(number.trimmed()) +
                           QStringLiteral(" And IsNull(L.Joz, '') = ") + c.text(series.trimmed());
    const tr::db::Query q = openQuery(
        c, QStringLiteral("Select L.WhatDoc, K.NDocNam, L.SanadDate, (Select Max(A.SanadNo) From Asnad As A Where "
                          "A.TypeSys = 'N' And A.WhatDoc = L.WhatDoc And A.AtfCh = L.ChqNo And A.Document = "
                          "L.CodWhatDoc) From N_ChqLastTrans As L Left Join N_AsnadNaghd As K On (K.WhatDoc = "
                          "L.WhatDoc) Where") +
               cheque + QStringLiteral(" Order By L.IDX"));
    QStringList kinds;
    for (int i = 0; i < q.RecordCount(); ++i) kinds << q.value(i, 0).toString().trimmed();
    const bool spentAndBack = kinds.contains(QStringLiteral("71")) && kinds.contains(QStringLiteral("81")) &&
                              kinds.contains(QStringLiteral("88"));
    QList<QStringList> out;
    for (int i = 0; i < q.RecordCount(); ++i) {
        const QString name = spentAndBack && kinds[i] == QLatin1String("88") ? QStringLiteral("برگشت از خرج چك")
                                                                             : q.value(i, 1).toString().trimmed();
        const QVariant voucher = q.value(i, 3);
        out.append({name, q.value(i, 2).toString().trimmed(), voucher.isNull() ? QString() : voucher.toString()});
    }
    return out;
}

void ReceivedChequeActions::showHistory() {
    if (rows_.IsEmpty() || !services_.pickList) return;
    const QString number = field("ChqNo");
    const QList<QStringList> rows = history(number, field("Joz"));
    tr::db::Connection& c = connection();
    tr::db::ScopedTempTable list(*services_.database, QStringLiteral("##ChqHist") + services_.global->sessionText);
    if (tr::db::objectExistsInTempdb(c, list.name())) c.execute(QStringLiteral("Drop Table ") + list.name());
    c.execute(QStringLiteral("Create Table ") + list.name() +
              QStringLiteral(" (Raj Int, ActName NVarchar(100), ActDate Varchar(10), SanadNo Varchar(20))"));
    int raj = 0;
    for (const QStringList& r : rows) {
        c.execute(QStringLiteral("Insert Into ") + list.name() + QStringLiteral(" Values (") + QString::number(++raj) +
                  QStringLiteral(", ") + c.text(r[0]) + QStringLiteral(", ") + c.text(r[1]) + QStringLiteral(", ") +
                  c.text(r[2]) + QStringLiteral(")"));
    }
    services_.pickList->pick(QStringLiteral("گردش چک ") + number,
                             QStringLiteral("Select * From ") + list.name() + QStringLiteral(" Order By Raj"),
                             {{QStringLiteral("ActName"), QStringLiteral("عمليات"), 180},
                              {QStringLiteral("ActDate"), QStringLiteral("تاريخ"), 90},
                              {QStringLiteral("SanadNo"), QStringLiteral("شماره سند"), 80}},
                             0);
    list.drop();
}

bool ReceivedChequeActions::apply() {
    tr::db::Connection& c = connection();
    const tr::db::Query chosen = openQuery(
        c, QStringLiteral("Select ChqNo, Joz, WhatDocNam, ActionDate, SarResidDate From ") + table_.name() +
               QStringLiteral(" Where LTrim(RTrim(IsNull(WhatDocNam, ''))) <> '' Order By sOrder"));
    if (chosen.IsEmpty()) return false;
    // 1. Collected not before its due date.
    QStringList returned;
    for (int i = 0; i < chosen.RecordCount(); ++i) {
        const auto kind = chequeActions().kindOf(chosen.value(i, 2).toString().trimmed(), Side::Received);
        const QString due = chosen.value(i, 4).toString().trimmed();
        if (kind == QStringLiteral("73") && !due.isEmpty() && chosen.value(i, 3).toString().trimmed() < due)
            return refuse(QStringLiteral("تاريخ اعلام وصول نمي تواند از تاريخ سررسيد كمتر باشد."));
        if (kind == QStringLiteral("78")) {
            returned << QStringLiteral("(AtfCh = ") + c.text(chosen.value(i, 0).toString().trimmed()) +
                            QStringLiteral(" And IsNull(DocToDate, '') = ") +
                            c.text(chosen.value(i, 1).toString().trimmed()) + QLatin1Char(')');
        }
    }
    // 2. Returned cheques tied to sales invoices lose their links, if the user agrees.
    const QString links = QStringLiteral(" From R_ForoshRelatedNaghd Where WhatDoc = '71' And (") +
                          returned.join(QStringLiteral(" Or ")) + QLatin1Char(')');
    const bool unlink = !returned.isEmpty() && firstColumn(c, QStringLiteral("Select Count(*)") + links).toLongLong() > 0;
    if (unlink && !messages_.ask(kUnlinkQuestion)) return false;
    // 3. One call for the whole list, with the unlinking, in one transaction.
    if (services_.progress) services_.progress->showState(kWaitText);
    try {
        tr::db::Transaction transaction(c);
        if (unlink) c.execute(QStringLiteral("Delete") + links);
        c.execute(QStringLiteral("Exec sp_N_Asnad_ChqGetAction_Apply ") + c.text(table_.name()) + QStringLiteral(", ") +
                  c.text(services_.global->userName) + QStringLiteral(", ") + c.text(services_.global->fiscalStart) +
                  QStringLiteral(", ") + c.text(services_.global->fiscalEnd) + QStringLiteral(", ") +
                  c.text(split_.name()));
        transaction.commit();
    } catch (const tr::db::DatabaseError& e) {
        if (services_.progress) services_.progress->closeState();
        return refuse(e.message());
    }
    if (services_.progress) services_.progress->closeState();
    // 4. The list as the book now has it.
    fill();
    return true;
}

}  // namespace tr::cheques
