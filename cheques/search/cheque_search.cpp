#include "cheques/search/cheque_search.h"

#include "common/db/sql_literal.h"
#include "common/dialog/message_dialog.h"
#include "common/persian/amount.h"
#include "common/persian/persian_date.h"
#include "common/text/single_line_text.h"
#include "instruments/latest_state.h"

namespace tr::cheques {

const QString ChequeSearch::kSpentName = QStringLiteral("خرج چك");
const QString ChequeSearch::kSpentBackName = QStringLiteral("برگشت از خرج چك");
const QString ChequeSearch::kNoReplacementMessage = QStringLiteral("کلمه جايگزين وارد نشده است.");
const QString ChequeSearch::kReplaceQuestion =
    QStringLiteral("کلمات شرح در تمام رديفهاي اسناد چک يافت شده با کلمات جايگزين عوض شوند؟");

namespace {

// The kinds whose vouchers belong to each side; 88 of a received cheque is posted by the issued
// side, so it counts there.
const QString kReceivedVoucherKinds =
    QStringLiteral("('71', '72', '73', '74', '75', '76', '77', '78', '79', '80')");
const QString kIssuedVoucherKinds =
    QStringLiteral("('81', '82', '83', '84', '85', '86', '87', '88', '89')");

QString columnsOf(ChequeSide side) {
    QString columns = QStringLiteral(
        "IDX Int Identity(1,1), WhatDoc Varchar(2) Null, NDocNam NVarchar(100) Null, Serial Int "
        "Null, Joz Varchar(10) Null, BankCod Varchar(10) Null, BankNam NVarchar(100) Null, "
        "ShobehCod Varchar(20) Null, ShobehNam NVarchar(100) Null, AcountCod Varchar(20) Null, "
        "AcountId Int Null, SanadDate Varchar(10) Null, Des NVarchar(500) Null, SRDate "
        "Varchar(10) Null, ChqNo Varchar(20) Null, DocToDate Varchar(10) Null, SValue Float Null, "
        "CLId Int Null, sOrder Varchar(100) Not Null Default '', Sign Int Null");
    if (side == ChequeSide::Received)
        columns += QStringLiteral(", ChqGetter NVarchar(50) Null, O_IDX Int Null");
    return columns;
}

}  // namespace

ChequeSearch::ChequeSearch(const tr::Services& services, ChequeSide side)
    : services_(services), side_(side), table_(QStringLiteral("ChqSearch")) {
    filters_.states = QList<bool>(stateBoxes(side).size(), true);
    table_.setServices(services);
}

ChequeSearch::~ChequeSearch() { result_.Close(); }

const QList<ChequeStateBox>& ChequeSearch::stateBoxes(ChequeSide side) {
    // States without a box of their own ride with the box of where the cheque stands: a
    // shortfall (76) stays in collection, a protest (79) follows a return, a settled cheque (80)
    // was collected, a spent cheque back in hand (88) is still the spent box's.
    static const QList<ChequeStateBox> received = {
        {QStringLiteral("دريافت چک"), {QStringLiteral("71")}},
        {QStringLiteral("در جريان وصول"), {QStringLiteral("72"), QStringLiteral("76")}},
        {QStringLiteral("وصول چک"), {QStringLiteral("73"), QStringLiteral("80")}},
        {QStringLiteral("خرج چک"), {QStringLiteral("81"), QStringLiteral("88")}},
        {QStringLiteral("برگشت از در جريان"), {QStringLiteral("77")}},
        {QStringLiteral("برگشت چک در يافتي"), {QStringLiteral("78"), QStringLiteral("79")}},
    };
    static const QList<ChequeStateBox> issued = {
        {QStringLiteral("پرداخت چک"), {QStringLiteral("81")}},
        {QStringLiteral("برداشت چک"), {QStringLiteral("82")}},
        {QStringLiteral("واخواست چک"), {QStringLiteral("85")}},
        {QStringLiteral("کسر موجودي"), {QStringLiteral("86")}},
        {QStringLiteral("برگشت چک"), {QStringLiteral("87")}},
        {QStringLiteral("برگشت از خرج چک"), {QStringLiteral("88")}},
    };
    return side == ChequeSide::Received ? received : issued;
}

QString ChequeSearch::caption(ChequeSide side) {
    return side == ChequeSide::Received ? QStringLiteral("جستجوي دريافت چک")
                                        : QStringLiteral("جستجوي چک هاي پرداختي");
}

QString ChequeSearch::reportKey(ChequeSide side) {
    return side == ChequeSide::Received ? QStringLiteral("CHEQUE_GET") : QStringLiteral("CHEQUE_PAY");
}

QString ChequeSearch::sameCheque(const QString& a, const QString& aNumber, const QString& aSeries,
                                 const QString& b) const {
    // One cheque is one number and one series, blanks aside.
    return QStringLiteral(
               "LTrim(RTrim(%1.%2)) = LTrim(RTrim(%4.ChqNo)) And LTrim(RTrim(IsNull(%1.%3, ''))) = "
               "LTrim(RTrim(IsNull(%4.Joz, '')))")
        .arg(a, aNumber, aSeries, b);
}

QString ChequeSearch::sideRows() const {
    // A cheque is the received side's when it was received, the issued side's when it was paid
    // out (a received cheque spent is both).
    const QString origin = side_ == ChequeSide::Received ? QStringLiteral("'71'") : QStringLiteral("'81'");
    return QStringLiteral(" And Exists (Select F.IDX From N_ChqLastTrans As F Where F.WhatDoc = ") + origin +
           QStringLiteral(" And ") +
           sameCheque(QStringLiteral("F"), QStringLiteral("ChqNo"), QStringLiteral("Joz"), QStringLiteral("L")) +
           QStringLiteral(")") + stateKinds();
}

QString ChequeSearch::stateKinds() const {
    QStringList kinds;
    const QList<ChequeStateBox>& boxes = stateBoxes(side_);
    for (int i = 0; i < boxes.size(); ++i)
        if (i < filters_.states.size() && filters_.states[i])
            for (const QString& k : boxes[i].kinds) kinds << text(k);
    if (kinds.isEmpty()) return QStringLiteral(" And (0 = 1)");
    return QStringLiteral(" And L.WhatDoc In (") + kinds.join(QStringLiteral(", ")) + QStringLiteral(")");
}

void ChequeSearch::fillReceived() {
    // From the receipt rows (71): the receipt's voucher line holds amount and due date, so that
    // those filters apply before anything else is read; then the cheque's latest state (L, by
    // the number's index), the receipt's treasury row (drawee bank, branch, drawer's account,
    // payee) and the description, the last voucher line of the latest state's kind. With a
    // series, that line is looked up by the series as stored, so the voucher lines' cheque
    // index (AtfCh, DocToDate, WhatDoc) finds it at once.
    const ChequeSearchFilters& f = filters_;
    const auto& history = tr::instruments::chequeHistory();
    const QString insert =
        QStringLiteral("Insert Into ") + table_.name() +
        QStringLiteral(" (WhatDoc, NDocNam, Serial, Joz, BankCod, BankNam, ShobehCod, ShobehNam, AcountCod, SanadDate, "
                       "Des, SRDate, ChqNo, DocToDate, SValue, CLId, Sign, ChqGetter, O_IDX) ");
    // A received cheque passed on is named as spent, and back from spending as such.
    const QString columns =
        QStringLiteral("Select L.WhatDoc, Case L.WhatDoc When '81' Then ") + text(kSpentName) +
        QStringLiteral(" When '88' Then ") + text(kSpentBackName) +
        QStringLiteral(
            " Else NA.NDocNam End, L.Serial, L.Joz, N.WhatDoc2, K.BankNam, N.CodWhatDoc2, Case When "
            "IsNull(N.Des1, '') = '' And S.BankCod Is Not Null Then S.ShobehNam Else N.Des1 End, N.Des2, "
            "L.SanadDate, Case When A.REC Is Null Then '' Else A.Des End, %1, L.ChqNo, Case When A.REC Is Null "
            "Then L.Joz Else A.DocToDate End, %2, L.IDX, 0, N.Des6, Cast(F.CodWhatDoc As Int) From ");
    const QString latest = QStringLiteral(" Inner Join N_ChqLastTrans As L On (L.IDX = ") +
                           tr::instruments::latestIdxOf(history, QStringLiteral("F")) + QStringLiteral(")");
    const QString described = QStringLiteral(
        " Left Join Asnad As A On (A.REC = Case When IsNull(L.Joz, '') <> '' Then (Select Top 1 B.REC From Asnad "
        "As B Where B.AtfCh = L.ChqNo And B.DocToDate = L.Joz And B.WhatDoc = L.WhatDoc And B.TypeSys = 'N' Order "
        "By B.REC Desc) Else (Select Top 1 B.REC From Asnad As B Where B.AtfCh = L.ChqNo And IsNull(B.DocToDate, "
        "'') = '' And B.WhatDoc = L.WhatDoc And B.TypeSys = 'N' Order By B.REC Desc) End) Left Join N_AsnadNaghd "
        "As NA On (NA.WhatDoc = L.WhatDoc) Left Join N_Bank As K On (K.BankCod = N.WhatDoc2) Left Join N_Shoab As "
        "S On (S.BankCod = N.WhatDoc2 And S.ShobehCod = N.CodWhatDoc2)");
    // A cheque received again (after a return) is listed once, from its latest receipt. The
    // look-up names L so that it is made only for the rows the filters kept.
    const QString where =
        QStringLiteral(" Where F.WhatDoc = '71' And Not Exists (Select G.IDX From N_ChqLastTrans As G Where ") +
        sameCheque(QStringLiteral("G"), QStringLiteral("ChqNo"), QStringLiteral("Joz"), QStringLiteral("F")) +
        QStringLiteral(" And G.WhatDoc = '71' And G.IDX > F.IDX And G.IDX <= L.IDX)") + stateKinds() +
        QLatin1Char(' ') + range(QStringLiteral("L.SanadDate"), f.fromDate.text(), f.toDate.text());
    table_.run(insert + columns.arg(QStringLiteral("V.AtfDate"), QStringLiteral("V.Bed + V.Bes")) +
               QStringLiteral("N_ChqLastTrans As F Inner Join Asnad As V On (V.TypeSys = 'N' And V.WhatDoc = '71' And "
                              "V.Document = F.CodWhatDoc) Inner Join N_NaghdTrans As N On (N.IDX = Cast(F.CodWhatDoc "
                              "As Int))") +
               latest + described + where + range(QStringLiteral("V.AtfDate"), f.fromDue.text(), f.toDue.text()) +
               amountRange(QStringLiteral("(V.Bed + V.Bes)")));
    // An opening cheque has no receipt line: its amount and due date are those of the payment
    // that passed it on, else of its opening row, and are filtered with the others'.
    table_.run(insert + columns.arg(QStringLiteral("Null"), QStringLiteral("Null")) +
               QStringLiteral("N_ChqFirst As O Inner Join N_ChqLastTrans As F On (F.WhatDoc = '71' And ") +
               sameCheque(QStringLiteral("F"), QStringLiteral("ChqNo"), QStringLiteral("Joz"), QStringLiteral("O")) +
               QStringLiteral(") Left Join N_NaghdTrans As N On (N.IDX = Cast(F.CodWhatDoc As Int))") + latest +
               described + where +
               QStringLiteral(" And O.ChqOrTaraf = 1 And O.WhatDoc = '71' And Not Exists (Select V.REC From Asnad As "
                              "V Where V.TypeSys = 'N' And V.WhatDoc = '71' And V.Document = F.CodWhatDoc)"));
    const QString T = table_.name() + QStringLiteral(" As R");
    table_.run(QStringLiteral("Update R Set R.SValue = Q.Bes, R.SRDate = Q.AtfDate From ") + T +
               QStringLiteral(" Inner Join Asnad As Q On (Q.TypeSys = 'N' And Q.WhatDoc = '81' And Q.Bes > 0 And ") +
               sameCheque(QStringLiteral("Q"), QStringLiteral("AtfCh"), QStringLiteral("DocToDate"), QStringLiteral("R")) +
               QStringLiteral(") Where R.SValue Is Null"));
    table_.run(QStringLiteral("Update R Set R.SValue = O.sValue, R.SRDate = O.SarResidDate From ") + T +
               QStringLiteral(" Inner Join N_ChqFirst As O On (O.ChqOrTaraf = 1 And ") +
               sameCheque(QStringLiteral("O"), QStringLiteral("ChqNo"), QStringLiteral("Joz"), QStringLiteral("R")) +
               QStringLiteral(") Where R.SValue Is Null"));
}

void ChequeSearch::fill() {
    const QString T = table_.name();
    const auto& history = tr::instruments::chequeHistory();
    // The voucher lines of the state row L: its kind, number and series.
    const auto linesOfState = [&](const QString& alias) {
        return alias + QStringLiteral(".TypeSys = 'N' And ") + alias + QStringLiteral(".WhatDoc = L.WhatDoc And ") +
               sameCheque(alias, QStringLiteral("AtfCh"), QStringLiteral("DocToDate"), QStringLiteral("L"));
    };
    const QString voucherOfState = linesOfState(QStringLiteral("A"));
    const QString insert = QStringLiteral("Insert Into ") + T +
                           QStringLiteral(
                               " (WhatDoc, NDocNam, Serial, Joz, SanadDate, Des, ChqNo, DocToDate, "
                               "CLId, Sign) ");
    // The voucher of the latest state: its last line of the cheque names the description.
    const QString latestLine = linesOfState(QStringLiteral("B"));
    table_.run(insert +
               tr::instruments::latestRowsQuery(
                   history,
                   QStringLiteral("L.WhatDoc, NA.NDocNam, L.Serial, L.Joz, L.SanadDate, A.Des, "
                                  "L.ChqNo, A.DocToDate, L.IDX, 0"),
                   QStringLiteral(" And A.REC = (Select Max(B.REC) From Asnad As B Where ") +
                       latestLine + QStringLiteral(")") + sideRows(),
                   QStringLiteral("Inner Join Asnad As A On (") + voucherOfState +
                       QStringLiteral(") Left Join N_AsnadNaghd As NA On (NA.WhatDoc = L.WhatDoc)")));
    // States that write no voucher (a shortfall, the opening states) are their state row alone.
    table_.run(insert + tr::instruments::latestRowsQuery(
                            history,
                            QStringLiteral("L.WhatDoc, NA.NDocNam, L.Serial, L.Joz, L.SanadDate, "
                                           "'', L.ChqNo, L.Joz, L.IDX, 0"),
                            QStringLiteral(" And Not Exists (Select A.REC From Asnad As A Where ") +
                                voucherOfState + QStringLiteral(")") + sideRows(),
                            QStringLiteral("Left Join N_AsnadNaghd As NA On (NA.WhatDoc = L.WhatDoc)")));
}

// The issued side's rows, filled from their state rows, are described afterwards: our leaves
// from the bank account and the payment's line, received cheques passed on from their receipt.
void ChequeSearch::describe() {
    const QString T = table_.name() + QStringLiteral(" As R");
    const auto matching = [&](const QString& alias, const QString& number, const QString& series) {
        return sameCheque(alias, number, series, QStringLiteral("R"));
    };
    // Our own leaf: the bank account its payment drew it on, amount and due date from its line.
    table_.run(QStringLiteral("Update R Set R.AcountId = Cast(F.CodWhatDoc As Int) From ") + T +
               QStringLiteral(" Inner Join N_ChqLastTrans As F On (F.WhatDoc = '81' And IsNull(F.CodWhatDoc, '') <> '' And ") +
               matching(QStringLiteral("F"), QStringLiteral("ChqNo"), QStringLiteral("Joz")) +
               QStringLiteral(")"));
    table_.run(QStringLiteral("Update R Set R.BankCod = H.BankCod, R.ShobehCod = H.ShobehCod, R.AcountCod = "
                              "H.AcountCod From ") +
               T + QStringLiteral(" Inner Join N_BankHesab As H On (H.AcountID = R.AcountId)"));
    table_.run(QStringLiteral("Update R Set R.SValue = Q.Bes, R.SRDate = Q.AtfDate From ") + T +
               QStringLiteral(" Inner Join Asnad As Q On (Q.TypeSys = 'N' And Q.WhatDoc = '81' And Q.Bes > 0 And ") +
               matching(QStringLiteral("Q"), QStringLiteral("AtfCh"), QStringLiteral("DocToDate")) +
               QStringLiteral(")"));
    // A received cheque spent: its receipt's treasury row holds the drawee bank, branch and the
    // drawer's account; its line the amount and due date.
    const QString origin =
        QStringLiteral(" Inner Join N_ChqLastTrans As F On (F.WhatDoc = '71' And ") +
        matching(QStringLiteral("F"), QStringLiteral("ChqNo"), QStringLiteral("Joz")) +
        QStringLiteral(") Inner Join N_NaghdTrans As N On (Cast(N.IDX As Varchar(20)) = LTrim(F.CodWhatDoc))");
    table_.run(QStringLiteral("Update R Set R.BankCod = N.WhatDoc2, R.ShobehCod = N.CodWhatDoc2, R.ShobehNam = "
                              "N.Des1, R.AcountCod = N.Des2 From ") +
               T + origin);
    table_.run(QStringLiteral("Update R Set R.SValue = Q.Bed + Q.Bes, R.SRDate = Q.AtfDate From ") + T + origin +
               QStringLiteral(" Inner Join Asnad As Q On (Q.TypeSys = 'N' And Q.WhatDoc = '71' And LTrim(Q.Document) "
                              "= Cast(N.IDX As Varchar(20)))"));
    // Opening cheques have no voucher: their opening row holds amount and due date.
    table_.run(QStringLiteral("Update R Set R.SValue = O.sValue, R.SRDate = O.SarResidDate From ") + T +
               QStringLiteral(" Inner Join N_ChqFirst As O On (O.ChqOrTaraf = 1 And ") +
               matching(QStringLiteral("O"), QStringLiteral("ChqNo"), QStringLiteral("Joz")) +
               QStringLiteral(") Where R.SValue Is Null"));
    table_.run(QStringLiteral("Update R Set R.BankNam = B.BankNam From ") + T +
               QStringLiteral(" Inner Join N_Bank As B On (B.BankCod = R.BankCod)"));
    table_.run(QStringLiteral("Update R Set R.ShobehNam = S.ShobehNam From ") + T +
               QStringLiteral(" Inner Join N_Shoab As S On (S.BankCod = R.BankCod And S.ShobehCod = R.ShobehCod) "
                              "Where IsNull(R.ShobehNam, '') = ''"));
    // A received cheque passed on is named as spent on both sides.
    const QString received = QStringLiteral(" Where Exists (Select F.IDX From N_ChqLastTrans As F Where F.WhatDoc = "
                                            "'71' And ") +
                             matching(QStringLiteral("F"), QStringLiteral("ChqNo"), QStringLiteral("Joz")) +
                             QStringLiteral(")");
    table_.run(QStringLiteral("Update R Set R.NDocNam = ") + text(kSpentName) + QStringLiteral(" From ") + T +
               received + QStringLiteral(" And R.WhatDoc = '81'"));
    table_.run(QStringLiteral("Update ") + table_.name() + QStringLiteral(" Set NDocNam = ") + text(kSpentBackName) +
               QStringLiteral(" Where WhatDoc = '88'"));
}

QString ChequeSearch::range(const QString& column, const QString& from, const QString& to) const {
    QString c;
    if (!from.trimmed().isEmpty())
        c += QStringLiteral("And (") + column + QStringLiteral(" >= ") + text(from.trimmed()) + QStringLiteral(") ");
    if (!to.trimmed().isEmpty())
        c += QStringLiteral("And (") + column + QStringLiteral(" <= ") + text(to.trimmed()) + QStringLiteral(") ");
    return c;
}

QString ChequeSearch::amountRange(const QString& column) const {
    QString c;
    const tr::persian::AmountReading from = tr::persian::readAmount(filters_.fromAmount);
    const tr::persian::AmountReading to = tr::persian::readAmount(filters_.toAmount);
    if (from.ok() && !from.empty)
        c += QStringLiteral("And (") + column + QStringLiteral(" >= ") + tr::db::sqlNumber(from.value) +
             QStringLiteral(") ");
    if (to.ok() && !to.empty)
        c += QStringLiteral("And (") + column + QStringLiteral(" <= ") + tr::db::sqlNumber(to.value) +
             QStringLiteral(") ");
    return c;
}

QString ChequeSearch::filterCondition() const {
    const ChequeSearchFilters& f = filters_;
    QString c = range(QStringLiteral("LTrim(RTrim(IsNull(Joz, '')))"), f.fromSeries, f.toSeries) +
                range(QStringLiteral("LTrim(RTrim(ChqNo))"), f.fromNumber, f.toNumber) +
                range(QStringLiteral("(IsNull(BankCod, '') + IsNull(ShobehCod, '') + IsNull(AcountCod, ''))"),
                      f.fromAccount, f.toAccount) +
                range(QStringLiteral("SanadDate"), f.fromDate.text(), f.toDate.text()) +
                range(QStringLiteral("SRDate"), f.fromDue.text(), f.toDue.text()) + amountRange(QStringLiteral("SValue"));
    c += tr::search::wordsCondition(connection(), QStringLiteral("Des"), f.words, f.joins);
    return c;
}

bool ChequeSearch::filtersRead() {
    tr::dialog::Messages messages(services_.dialog);
    for (const QString* typed : {&filters_.fromAmount, &filters_.toAmount}) {
        const tr::persian::AmountReading reading = tr::persian::readAmount(*typed);
        if (reading.ok()) continue;
        messages.show(tr::persian::amountRefusal(reading, *typed), QStringLiteral("1ER"));
        return false;
    }
    for (const tr::search::DateBoxes* date :
         {&filters_.fromDate, &filters_.toDate, &filters_.fromDue, &filters_.toDue}) {
        if (date->empty()) continue;
        if (tr::persian::invalidDatePart(date->year, date->month, date->day) == tr::persian::DatePart::None)
            continue;
        messages.show(tr::persian::invalidDateMessage(date->text()), QStringLiteral("1ER"));
        return false;
    }
    const tr::text::LineField words{QStringLiteral("شرح"), 200, false};
    for (int i = 0; i < 3; ++i) {
        for (QString* box : {&filters_.words[i], &filters_.replacements[i]}) {
            *box = tr::text::joinLines(*box);
            const QString refusal = tr::text::lineRefusal(words, *box);
            if (refusal.isEmpty()) continue;
            messages.show(refusal, QStringLiteral("1ER"));
            return false;
        }
    }
    return true;
}

void ChequeSearch::total() {
    const QString T = table_.name();
    table_.run(QStringLiteral("Insert Into ") + T +
               QStringLiteral(" (NDocNam, Des, SValue, Sign, sOrder) Select NDocNam, ") + text(QStringLiteral("جمع ")) +
               QStringLiteral(" + NDocNam + ") + text(QStringLiteral(" : ")) +
               QStringLiteral(", Sum(SValue), 1, 'X' From ") + T +
               QStringLiteral(" Where Sign = 0 Group By NDocNam Order By NDocNam"));
}

bool ChequeSearch::mnuSearchClick() {
    if (!filtersRead()) return false;
    stopped_ = false;
    result_.Close();
    table_.setServices(services_);
    table_.begin(columnsOf(side_));
    const auto stop = [&] {
        stopped_ = true;
        table_.finishStopped(result_);
        return false;
    };
    if (table_.shouldStop()) return stop();
    if (side_ == ChequeSide::Received) {
        fillReceived();
    } else {
        fill();
        if (table_.shouldStop()) return stop();
        describe();
    }
    const QString kept = filterCondition();
    if (!kept.isEmpty()) {
        table_.run(QStringLiteral("Delete From ") + table_.name() + QStringLiteral(" Where IDX Not In (Select IDX From ") +
                   table_.name() + QStringLiteral(" Where 1 = 1 ") + kept + QStringLiteral(")"));
    }
    if (!filters_.opening) {
        table_.run(QStringLiteral("Delete From ") + table_.name() + QStringLiteral(" Where IDX In (Select R.IDX From ") +
                   table_.name() +
                   QStringLiteral(" As R Inner Join N_ChqFirst As O On (O.ChqOrTaraf = 1 And ") +
                   sameCheque(QStringLiteral("O"), QStringLiteral("ChqNo"), QStringLiteral("Joz"), QStringLiteral("R")) +
                   QStringLiteral("))"));
    }
    if (table_.shouldStop()) return stop();
    if (table_.any(QStringLiteral("Sign = 0"))) {
        total();
        table_.run(QStringLiteral("Insert Into ") + table_.name() + QStringLiteral(" (Des, SValue, Sign, sOrder) Select ") +
                   text(tr::search::SearchResultTable::kGrandTotal) + QStringLiteral(", Sum(SValue), 1, 'Y' From ") +
                   table_.name() + QStringLiteral(" Where Sign = 0"));
    }
    if (table_.shouldStop()) return stop();
    table_.finish(result_);
    return true;
}

bool ChequeSearch::mnuReplaceClick() {
    if (!filtersRead()) return false;
    tr::dialog::Messages messages(services_.dialog);
    QList<int> pairs;
    for (int i = 0; i < 3; ++i)
        if (!filters_.words[i].trimmed().isEmpty() && !filters_.replacements[i].isEmpty()) pairs << i;
    if (pairs.isEmpty()) {
        messages.show(kNoReplacementMessage, QStringLiteral("1ER"));
        return false;
    }
    if (!messages.ask(kReplaceQuestion)) return false;
    if (!mnuSearchClick()) return false;
    // Every voucher of this side that moved a cheque the search lists.
    const QString found =
        QStringLiteral("Select A.SanadNo From Asnad As A Where A.TypeSys = 'N' And A.WhatDoc In ") +
        (side_ == ChequeSide::Received ? kReceivedVoucherKinds : kIssuedVoucherKinds) +
        QStringLiteral(" And Exists (Select R.IDX From ") + table_.name() + QStringLiteral(" As R Where R.Sign = 0 And ") +
        sameCheque(QStringLiteral("A"), QStringLiteral("AtfCh"), QStringLiteral("DocToDate"), QStringLiteral("R")) +
        QStringLiteral(")");
    for (int i : pairs) {
        table_.run(QStringLiteral("Update Asnad Set Des = Replace(Des, ") + text(filters_.words[i].trimmed()) +
                   QStringLiteral(", ") + text(filters_.replacements[i]) +
                   QStringLiteral(") Where (Des Is Not Null) And TypeSys = 'N' And SanadNo In (") + found +
                   QStringLiteral(")"));
    }
    mnuSearchClick();
    return true;
}

QStringList ChequeSearch::shownFields() const {
    QStringList fields = {QStringLiteral("NDocNam"), QStringLiteral("ChqNo"),    QStringLiteral("Joz"),
                          QStringLiteral("SanadDate"), QStringLiteral("SRDate"), QStringLiteral("SValue"),
                          QStringLiteral("BankNam"),   QStringLiteral("ShobehNam"), QStringLiteral("AcountCod")};
    if (side_ == ChequeSide::Received) fields << QStringLiteral("ChqGetter");
    fields << QStringLiteral("Des") << QStringLiteral("Serial");
    return fields;
}

QString ChequeSearch::fieldCaption(const QString& field) const {
    static const QHash<QString, QString> captions = {
        {QStringLiteral("NDocNam"), QStringLiteral("وضعيت")},
        {QStringLiteral("ChqNo"), QStringLiteral("شماره چک")},
        {QStringLiteral("Joz"), QStringLiteral("سري")},
        {QStringLiteral("SanadDate"), QStringLiteral("تاريخ")},
        {QStringLiteral("SRDate"), QStringLiteral("سررسيد")},
        {QStringLiteral("SValue"), QStringLiteral("مبلغ")},
        {QStringLiteral("BankNam"), QStringLiteral("بانک")},
        {QStringLiteral("ShobehNam"), QStringLiteral("شعبه")},
        {QStringLiteral("AcountCod"), QStringLiteral("شماره حساب")},
        {QStringLiteral("ChqGetter"), QStringLiteral("در وجه")},
        {QStringLiteral("Des"), QStringLiteral("شرح")},
        {QStringLiteral("Serial"), QStringLiteral("سريال")},
    };
    return captions.value(field);
}

}  // namespace tr::cheques
