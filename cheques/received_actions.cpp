#include "cheques/received_actions.h"
#include "cheques/opening_states.h"

#include <cmath>

#include "common/db/query_helpers.h"
#include "common/db/transaction.h"
#include "common/persian/amount.h"
#include "instruments/cheque_actions.h"
#include "instruments/cheque_work_tables.h"

namespace tr::cheques {

namespace {

using tr::db::firstColumn;
using tr::db::openQuery;
using tr::instruments::Side;

const ActionListSide& receivedList() {
    static const ActionListSide side{Side::Received,
                                     QStringLiteral("##TT"),
                                     tr::instruments::chequeActionWorkTableColumns(),
                                     QStringLiteral("sp_N_Asnad_ChqGetAction_Apply"),
                                     QStringLiteral("V"),
                                     QStringLiteral("7%")};
    return side;
}

}  // namespace

const QString ReceivedChequeActions::kUnlinkQuestion =
    QStringLiteral("ارتباط چک هاي برگشتي با صورتحساب ها قطع خواهد شد آيا ادامه ميدهيد؟");

ReceivedChequeActions::ReceivedChequeActions(const tr::Services& services)
    : ChequeActionList(services, receivedList()) {}

void ReceivedChequeActions::listCheques() {
    tr::db::Connection& c = connection();
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
    c.execute(QStringLiteral("Insert Into ") + workTable() +
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
}

// Where a cheque stands: the debit line of its latest voucher, or its opening row.
void ReceivedChequeActions::fillStanding() {
    // Where every listed cheque stands: the cheque's last debit line of a received-cheque
    // kind, else its opening row, else nothing; each level trimmed, a missing one empty. One
    // statement per source, from the weakest to the strongest so that the last that has the row
    // wins, each row found by the voucher lines' cheque index or by key.
    const QString T = workTable() + QStringLiteral(" As R");
    const QString update = QStringLiteral("Update R Set ");
    tr::db::Connection& c = connection();
    c.execute(update + standingSets({}) + QStringLiteral(" From ") + T);
    c.execute(update + standingSets(QStringLiteral("F")) + QStringLiteral(" From ") + T +
              QStringLiteral(" Inner Join N_ChqFirst As F On (F.ChqOrTaraf = 1 And F.IDX = R.IDX)"));
    c.execute(update + standingSets(QStringLiteral("A")) + QStringLiteral(" From ") + T +
              QStringLiteral(" Inner Join Asnad As A On (A.REC = (Select Top 1 B.REC From Asnad As B Where "
                             "B.TypeSys = 'N' And B.WhatDoc Like '7%' And B.AtfCh = R.ChqNo And B.DocToDate = "
                             "IsNull(R.Joz, '') And B.Bed > 0 Order By B.REC Desc))"));
}

tr::instruments::InstrumentFacts ReceivedChequeActions::facts() const {
    tr::instruments::InstrumentFacts f;
    f.side = Side::Received;
    f.guarantee = field("Tazmin") == QStringLiteral("ض");
    // An opening cheque still in the state its opening document set.
    // An opening cheque still in the state it entered the period in.
    f.opening = field("IsFirst") == QLatin1String("Y") && atOpeningState(connection(), field("ChqNo"), field("Joz"));
    return f;
}

// The Va-accounts each action hands the cheque to (undo and "کسر موجودي" move nothing).
void ReceivedChequeActions::fillAccounts(const QString& kind) {
    tr::db::Connection& c = connection();
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
        // A cheque that entered the period in collection has no such row: the bank account chosen
        // on the row.
        const qint64 account = field("AcountID").toLongLong();
        if (to.isEmpty() && account > 0) {
            to = accountsWhere(QStringLiteral("Select ") + accountColumns(QStringLiteral("J")) +
                               QStringLiteral(" From N_BankHesab Where AcountID = ") + tr::db::sqlNumber(account));
        }
    } else if (kind == QLatin1String("77") || kind == QLatin1String("79")) {
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
                               QStringLiteral(" From N_ChqFirst Where WhatDoc = '71' And ChqOrTaraf = 2 And ChqNo = ") +
                               c.text(field("ChqNo")) + QStringLiteral(" And IsNull(Joz, '') = ") + c.text(field("Joz")));
        }
    } else if (kind == QLatin1String("76")) {
        to = standingAccounts();
    }
    setAccounts(QStringLiteral("Va"), to);
}

void ReceivedChequeActions::setBankAccount(qint64 acountId) {
    if (rows().IsEmpty()) return;
    setField("AcountID", acountId);
    const QString kind = chosenKind();
    if (kind == QLatin1String("72") || kind == QLatin1String("73")) fillAccounts(kind);
    rows().Post();
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

QList<ReturnLine> ReceivedChequeActions::returnLines() const {
    if (rows().IsEmpty()) return {};
    tr::db::Connection& c = connection();
    const QString cheque = c.text(field("ChqNo"));
    const QString series = c.text(field("Joz"));
    // Columns: the account's five levels, description, credit, part.
    auto read = [&](const QString& sql) {
        const tr::db::Query q = openQuery(c, sql);
        QList<ReturnLine> out;
        for (int i = 0; i < q.RecordCount(); ++i) {
            ReturnLine line;
            for (int k = 0; k < accountLevels().size(); ++k) line.account << q.value(i, k).toString().trimmed();
            line.des = q.value(i, 5).toString().trimmed();
            line.credited = q.value(i, 6).toDouble();
            line.newValue = q.value(i, 7).toDouble();
            out << line;
        }
        return out;
    };
    // The parts typed so far; else the lines of its receipt's voucher; else its opening rows.
    QList<ReturnLine> lines = read(QStringLiteral("Select ") + accountColumns(QString()) +
                                   QStringLiteral(", Des, ChqValue, NewValue From ") + splitTable() +
                                   QStringLiteral(" Where ChqNo = ") + cheque + QStringLiteral(" And IsNull(Joz, '') = ") +
                                   series + QStringLiteral(" Order By Raj"));
    if (lines.isEmpty()) {
        lines = read(QStringLiteral("Select ") + accountColumns(QString()) +
                     QStringLiteral(", Des, Bes, 0 From Asnad Where TypeSys = 'N' And WhatDoc = '71' And AtfCh = ") +
                     cheque + QStringLiteral(" And DocToDate = ") + series + QStringLiteral(" And Bes > 0 Order By REC"));
    }
    if (lines.isEmpty()) {
        lines = read(QStringLiteral("Select ") + accountColumns(QString()) +
                     QStringLiteral(", Des, sValue, 0 From N_ChqFirst Where WhatDoc = '71' And ChqOrTaraf = 2 And ChqNo = ") + cheque +
                     QStringLiteral(" And IsNull(Joz, '') = ") + series + QStringLiteral(" Order By Raj"));
    }
    return lines;
}

bool ReceivedChequeActions::returnNeedsSplit() const {
    return !rows().IsEmpty() && chosenKind() == QLatin1String("78") &&
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
    c.execute(QStringLiteral("Delete From ") + splitTable() + QStringLiteral(" Where ChqNo = ") + cheque +
              QStringLiteral(" And IsNull(Joz, '') = ") + series);
    for (int i = 0; i < lines.size(); ++i) {
        QStringList values{QString::number(i + 1), QStringLiteral("'RET'"), QStringLiteral("'78'"), cheque, series,
                           tr::db::sqlNumber(lines[i].credited), tr::db::sqlNumber(parts[i]), c.text(lines[i].des)};
        for (const QString& level : lines[i].account) values << c.text(level);
        c.execute(QStringLiteral("Insert Into ") + splitTable() +
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
            messages().show(tr::persian::amountRefusal(reading, text), tr::persian::kAmountMessageKind);
            return false;
        }
        parts << reading.value;
    }
    return splitReturn(parts);
}

QString ReceivedChequeActions::dateRefusal(const QString& kind, const QString& date) const {
    if (kind != QLatin1String("72")) return {};
    tr::db::Connection& c = connection();
    const qint64 same = firstColumn(c, QStringLiteral("Select Count(*) From Asnad Where TypeSys = 'N' And WhatDoc = "
                                                      "'72' And AtfCh = ") +
                                           c.text(field("ChqNo")) + QStringLiteral(" And DocToDate = ") +
                                           c.text(field("Joz")) + QStringLiteral(" And SanadDate = ") + c.text(date))
                            .toLongLong();
    return same > 0 ? QStringLiteral("براي اين چک در اين تاريخ يكبار عمليات <در جريان وصول> تعريف شده است.") : QString();
}

// Collected not before its due date.
QString ReceivedChequeActions::applyRefusal(const QString& kind, const QString&, const QString& date,
                                            const QString& due) const {
    if (kind == QLatin1String("73") && !due.isEmpty() && date < due)
        return QStringLiteral("تاريخ اعلام وصول نمي تواند از تاريخ سررسيد كمتر باشد.");
    return {};
}

// Returned cheques tied to sales invoices lose their links, if the user agrees.
bool ReceivedChequeActions::confirmApply(const tr::db::Query& chosen, QStringList& alsoRun) {
    tr::db::Connection& c = connection();
    QStringList returned;
    for (int i = 0; i < chosen.RecordCount(); ++i) {
        if (tr::instruments::chequeActions().kindOf(chosen.value(i, 2).toString().trimmed(), Side::Received) !=
            QStringLiteral("78"))
            continue;
        returned << QStringLiteral("(AtfCh = ") + c.text(chosen.value(i, 0).toString().trimmed()) +
                        QStringLiteral(" And IsNull(DocToDate, '') = ") + c.text(chosen.value(i, 1).toString().trimmed()) +
                        QLatin1Char(')');
    }
    if (returned.isEmpty()) return true;
    const QString links = QStringLiteral(" From R_ForoshRelatedNaghd Where WhatDoc = '71' And (") +
                          returned.join(QStringLiteral(" Or ")) + QLatin1Char(')');
    if (firstColumn(c, QStringLiteral("Select Count(*)") + links).toLongLong() == 0) return true;
    if (!messages().ask(kUnlinkQuestion)) return false;
    alsoRun << QStringLiteral("Delete") + links;
    return true;
}

}  // namespace tr::cheques
