#include "cheques/issued_actions.h"
#include "cheques/opening_states.h"

#include "common/db/query_helpers.h"
#include "common/db/transaction.h"
#include "instruments/cheque_work_tables.h"

namespace tr::cheques {

namespace {

using tr::db::openQuery;
using tr::db::sqlNumber;
using tr::instruments::Side;

const ActionListSide& issuedList() {
    static const ActionListSide side{Side::Issued,
                                     QStringLiteral("##TTPay"),
                                     tr::instruments::issuedChequeActionWorkTableColumns(),
                                     QStringLiteral("sp_N_Asnad_ChqPayAction_Apply"),
                                     QString(),
                                     QStringLiteral("8%")};
    return side;
}

}  // namespace

IssuedChequeActions::IssuedChequeActions(const tr::Services& services)
    : ChequeActionList(services, issuedList()) {}

QList<QPair<QString, QString>> IssuedChequeActions::columns() const {
    return {{QStringLiteral("ChqNo"), QStringLiteral("شماره چك")},
            {QStringLiteral("Joz"), QStringLiteral("سري")},
            {QStringLiteral("ChqValue"), QStringLiteral("مبلغ")},
            {QStringLiteral("SarResidDate"), QStringLiteral("تاريخ سررسيد")},
            {QStringLiteral("GetterCheque"), QStringLiteral("در وجه")},
            {QStringLiteral("AcountCod"), QStringLiteral("شماره حساب")},
            {QStringLiteral("WhatDocNam"), QStringLiteral("عمليات جاري")},
            {QStringLiteral("ActionDate"), QStringLiteral("تاريخ عملکرد")},
            {QStringLiteral("LastWhatDocNam"), QStringLiteral("آخرين عمليات")},
            {QStringLiteral("LastActionDate"), QStringLiteral("تاريخآخرينعمل")},
            {QStringLiteral("Koll"), QStringLiteral("كل")},
            {QStringLiteral("Moein"), QStringLiteral("معين")},
            {QStringLiteral("Tafsily"), QStringLiteral("تفصيلي")},
            {QStringLiteral("VaKoll"), QStringLiteral("كل مقصد")},
            {QStringLiteral("VaMoein"), QStringLiteral("معين مقصد")},
            {QStringLiteral("VaTafsily"), QStringLiteral("تفصيلي مقصد")}};
}

void IssuedChequeActions::listCheques() {
    tr::db::Connection& c = connection();
    // Each cheque's latest payment (P): our own leaf (its state row names the bank account) in
    // whatever state it is now, a cheque passed on only while that payment is its latest row.
    QString where = QStringLiteral(
        " Where P.WhatDoc = '81' And P.IDX = (Select Max(P2.IDX) From N_ChqLastTrans As P2 Where "
        "P2.WhatDoc = '81' And P2.ChqNo = P.ChqNo And IsNull(P2.Joz, '') = IsNull(P.Joz, '')) And "
        "(LTrim(RTrim(IsNull(P.CodWhatDoc, ''))) <> '' Or L.WhatDoc = '81')");
    const ActionFilters& f = filters_;
    if (!f.chequeNumber.trimmed().isEmpty())
        where += QStringLiteral(" And P.ChqNo = ") + c.text(f.chequeNumber.trimmed());
    if (!f.fromDate.isEmpty()) where += QStringLiteral(" And P.SanadDate >= ") + c.text(f.fromDate);
    if (!f.toDate.isEmpty()) where += QStringLiteral(" And P.SanadDate <= ") + c.text(f.toDate);
    if (!f.state.isEmpty()) where += QStringLiteral(" And L.WhatDoc = ") + c.text(f.state);
    if (f.bankAccount > 0)
        where += QStringLiteral(" And LTrim(RTrim(P.CodWhatDoc)) = ") +
                 c.text(QString::number(f.bankAccount));
    // The payment's treasury row of the cheque is its first row of that number (the counterparty
    // rows follow the cheques in a payment).
    const QString voucherLine = QStringLiteral(
        "From Asnad As A Where A.TypeSys = 'N' And A.WhatDoc = '81' And A.Document = Cast(N.IDX As "
        "Varchar(20))");
    const QString openingRow = QStringLiteral("From N_ChqFirst As F Where F.IDX = N.IDX");
    c.execute(
        QStringLiteral("Insert Into ") + workTable() +
        QStringLiteral(" (IDX, IsFirst, Serial, OldAcountID, AcountID, BankCod, ShobehCod, "
                       "ShobehNam, AcountCod, Des, Joz, ChqNo, ChqValue, GetterCheque, SodorDate, "
                       "SarResidDate, LastActionDate, WhatDocNam, LastWhatDoc, LastWhatDocNam, "
                       "Havaleh, Tazmin, sOrder) Select N.IDX, Case When Exists (Select * From "
                       "N_ChqFirst As F Where F.IDX = N.IDX) Then 'Y' Else 'N' End, P.Serial, Case "
                       "When LTrim(RTrim(IsNull(P.CodWhatDoc, ''))) = '' Then Null Else "
                       "Cast(LTrim(RTrim(P.CodWhatDoc)) As Int) End, Case When "
                       "LTrim(RTrim(IsNull(P.CodWhatDoc, ''))) = '' Then Null Else "
                       "Cast(LTrim(RTrim(P.CodWhatDoc)) As Int) End, N.WhatDoc2, N.CodWhatDoc2, "
                       "N.Des1, N.Des2, IsNull((Select Max(A.Des) ") +
        voucherLine + QStringLiteral(" And A.Bes > 0), (Select Max(F.Des) ") + openingRow +
        QStringLiteral(")), P.Joz, P.ChqNo, IsNull((Select Max(A.Bes) ") + voucherLine +
        QStringLiteral("), (Select Max(F.sValue) ") + openingRow +
        QStringLiteral(")), N.Des6, P.SanadDate, IsNull((Select Max(A.AtfDate) ") + voucherLine +
        QStringLiteral("), (Select Max(F.SarResidDate) ") + openingRow +
        QStringLiteral(
            ")), L.SanadDate, '', L.WhatDoc, K.NDocNam, N.Des3, N.Des4, Right('000000000000' + "
            "Cast(P.IDX As Varchar(12)), 12) From N_ChqLastTrans As P Inner Join N_NaghdTrans As N "
            "On (N.IDX = (Select Min(N2.IDX) From N_NaghdTrans As N2 Where N2.WhatDoc = '81' And "
            "N2.Serial = P.Serial And N2.CodWhatDoc = P.ChqNo And IsNull(N2.Joz, '') = "
            "IsNull(P.Joz, ''))) Inner Join N_ChqLastTrans As L On (L.ChqNo = P.ChqNo And "
            "IsNull(L.Joz, '') = IsNull(P.Joz, '') And L.IDX = (Select Max(M.IDX) From "
            "N_ChqLastTrans As M Where M.ChqNo = P.ChqNo And IsNull(M.Joz, '') = IsNull(P.Joz, "
            "''))) Left Join N_AsnadNaghd As K On (K.WhatDoc = L.WhatDoc)") +
        where);
}

QList<IssuedChequeActions::PaidLine> IssuedChequeActions::paidLines(const QString& number,
                                                                    const QString& series,
                                                                    qint64 serial) const {
    tr::db::Connection& c = connection();
    auto read = [&](const QString& sql) {
        const tr::db::Query q = openQuery(c, sql);
        QList<PaidLine> out;
        for (int i = 0; i < q.RecordCount(); ++i) {
            PaidLine line;
            for (int k = 0; k < accountLevels().size(); ++k)
                line.account << q.value(i, k).toString().trimmed();
            line.des = q.value(i, 5).toString().trimmed();
            line.value = q.value(i, 6).toDouble();
            out << line;
        }
        return out;
    };
    QList<PaidLine> lines =
        read(QStringLiteral("Select ") + accountColumns(QStringLiteral("A.")) +
             QStringLiteral(", A.Des, A.Bed From Asnad As A Inner Join N_NaghdTrans As N On "
                            "(A.Document = Cast(N.IDX As Varchar(20))) Where N.WhatDoc = '81' And "
                            "N.Serial = ") +
             sqlNumber(serial) +
             QStringLiteral(" And A.TypeSys = 'N' And A.WhatDoc = '81' And A.AtfCh = ") +
             c.text(number) + QStringLiteral(" And A.DocToDate = ") + c.text(series) +
             QStringLiteral(" And A.Bed > 0 Order By A.REC"));
    if (lines.isEmpty()) {
        lines = read(QStringLiteral("Select ") + accountColumns(QString()) +
                     QStringLiteral(", Des, sValue From N_ChqFirst Where WhatDoc = '81' And "
                                    "ChqOrTaraf = 2 And Serial = ") +
                     sqlNumber(serial) + QStringLiteral(" And ChqNo = ") + c.text(number) +
                     QStringLiteral(" And IsNull(Joz, '') = ") + c.text(series) +
                     QStringLiteral(" Order By Raj"));
    }
    return lines;
}

// Our cheque stands where its latest voucher credited it (its bank account's payable heads, or
// its protest's account), or on its opening row; a cheque passed on on the party it paid.
void IssuedChequeActions::fillStanding() {
    // Each row's payment row (N_NaghdTrans by the row's IDX) tells which: one without Des5 is a
    // cheque passed on, standing on the first debit line its payment wrote for it, else on its
    // opening payment row; one with Des5 is our leaf, on the last credit line of a paid-cheque
    // kind, else on its opening row; no payment row, nowhere. The sources are written from the
    // weakest to the strongest, so that the last that has the row wins. (The work table's row
    // is named only in the update's own join and in conditions: an update's joins cannot.)
    tr::db::Connection& c = connection();
    const QString T = workTable() + QStringLiteral(" As R");
    const QString payment = QStringLiteral("Select P.IDX From N_NaghdTrans As P Where P.IDX = R.IDX And IsNull(P.Des5, '') ");
    const QString update = QStringLiteral("Update R Set ");
    c.execute(update + standingSets({}) + QStringLiteral(" From ") + T);
    c.execute(update + standingSets(QStringLiteral("F")) + QStringLiteral(" From ") + T +
              QStringLiteral(" Inner Join N_ChqFirst As F On (F.ChqOrTaraf = 1 And F.IDX = R.IDX) Where Exists (") + payment +
              QStringLiteral("<> '')"));
    c.execute(update + standingSets(QStringLiteral("A")) + QStringLiteral(" From ") + T +
              QStringLiteral(" Inner Join Asnad As A On (A.REC = (Select Top 1 B.REC From Asnad As B Where B.TypeSys = 'N' "
                             "And B.WhatDoc Like '8%' And B.AtfCh = R.ChqNo And B.DocToDate = IsNull(R.Joz, '') And "
                             "B.Bes > 0 Order By B.REC Desc)) Where Exists (") +
              payment + QStringLiteral("<> '')"));
    c.execute(update + standingSets(QStringLiteral("F")) + QStringLiteral(" From ") + T +
              QStringLiteral(" Inner Join N_ChqFirst As F On (F.IDX = (Select Top 1 G.IDX From N_ChqFirst As G Inner Join "
                             "N_NaghdTrans As P On (P.Serial = G.Serial) Where P.IDX = R.IDX And IsNull(P.Des5, '') = '' "
                             "And G.WhatDoc = '81' And G.ChqOrTaraf = 2 And G.ChqNo = R.ChqNo And IsNull(G.Joz, '') = "
                             "IsNull(R.Joz, '') Order By G.Raj))"));
    c.execute(update + standingSets(QStringLiteral("A")) + QStringLiteral(" From ") + T +
              QStringLiteral(" Inner Join Asnad As A On (A.REC = (Select Top 1 D.REC From Asnad As D Inner Join N_NaghdTrans "
                             "As N On (D.Document = Cast(N.IDX As Varchar(20))) Inner Join N_NaghdTrans As P On (P.Serial = "
                             "N.Serial) Where P.IDX = R.IDX And IsNull(P.Des5, '') = '' And N.WhatDoc = '81' And "
                             "D.TypeSys = 'N' And D.WhatDoc = '81' And D.AtfCh = R.ChqNo And D.DocToDate = IsNull(R.Joz, "
                             "'') And D.Bed > 0 Order By D.REC))"));
}

tr::instruments::InstrumentFacts IssuedChequeActions::facts() const {
    tr::instruments::InstrumentFacts f;
    f.side = Side::Issued;
    f.own = field("OldAcountID").toLongLong() > 0;
    f.paidOut = !f.own;
    f.guarantee = f.own && field("Tazmin") == QStringLiteral("ض");
    // An opening cheque still in the state its opening payment set.
    f.opening = field("IsFirst") == QLatin1String("Y") && atOpeningState(connection(), field("ChqNo"), field("Joz"));
    return f;
}

void IssuedChequeActions::fillAccounts(const QString& kind) {
    tr::db::Connection& c = connection();
    QStringList to;
    if (kind == QLatin1String("82")) {
        // Paid out of the bank account the cheque was drawn on.
        to = accountsWhere(QStringLiteral("Select ") + accountColumns(QStringLiteral("J")) +
                           QStringLiteral(" From N_BankHesab Where AcountID = ") +
                           sqlNumber(field("OldAcountID").toLongLong()));
    } else if (kind == QLatin1String("85") || kind == QLatin1String("88")) {
        // The book's account of protested cheques of ours; cheques in hand for one that comes back.
        to = accountsWhere(
            QStringLiteral("Select ") + accountColumns(QString()) +
            QStringLiteral(" From N_AsnadDaryaftani Where WhatDoc = ") +
            c.text(kind == QLatin1String("85") ? QStringLiteral("85") : QStringLiteral("71")));
    } else if (kind == QLatin1String("86")) {
        to = standingAccounts();
    }
    if (kind == QLatin1String("87") || kind == QLatin1String("88")) {
        // A return gives the party its debt back; a cheque passed on leaves the party it paid.
        const QList<PaidLine> lines =
            paidLines(field("ChqNo"), field("Joz"), field("Serial").toLongLong());
        if (kind == QLatin1String("87")) to = lines.value(0).account;
        if (lines.size() > 1) splitOverPaidLines(kind, lines);
    }
    setAccounts(QStringLiteral("Va"), to);
}

void IssuedChequeActions::splitOverPaidLines(const QString& kind, const QList<PaidLine>& lines) {
    tr::db::Connection& c = connection();
    const QString cheque = c.text(field("ChqNo"));
    const QString series = c.text(field("Joz"));
    tr::db::Transaction transaction(c);
    c.execute(QStringLiteral("Delete From ") + splitTable() + QStringLiteral(" Where ChqNo = ") +
              cheque + QStringLiteral(" And IsNull(Joz, '') = ") + series);
    for (int i = 0; i < lines.size(); ++i) {
        QStringList values{sqlNumber(i + 1),
                           QStringLiteral("'RET'"),
                           c.text(kind),
                           cheque,
                           series,
                           sqlNumber(lines[i].value),
                           sqlNumber(lines[i].value),
                           c.text(lines[i].des)};
        for (const QString& level : lines[i].account) values << c.text(level);
        c.execute(QStringLiteral("Insert Into ") + splitTable() +
                  QStringLiteral(" (Raj, Status, WhatDoc, ChqNo, Joz, ChqValue, NewValue, Des, ") +
                  accountColumns(QString()) + QStringLiteral(") Values (") +
                  values.join(QStringLiteral(", ")) + QLatin1Char(')'));
    }
    transaction.commit();
}

// Cashed not before its due date.
QString IssuedChequeActions::applyRefusal(const QString& kind, const QString& number,
                                          const QString& date, const QString& due) const {
    if (kind == QLatin1String("82") && !due.isEmpty() && date < due)
        return QStringLiteral("تاريخ برداشت نمي تواند كمتر از تاريخ سررسيد باشد.") +
               QStringLiteral("\nشماره چك :") + number;
    return {};
}

}  // namespace tr::cheques
