#include "cheques/opening_states.h"

#include <QHash>
#include <QSet>

#include "common/db/database_error.h"
#include "common/db/query_helpers.h"
#include "common/db/transaction.h"
#include "instruments/latest_state.h"

namespace tr::cheques {

namespace {

using tr::db::firstColumn;
using tr::db::openQuery;
using tr::db::sqlNumber;
using tr::instruments::Side;

const QString kSet = QStringLiteral("ض");

QString workTableColumns() {
    // IDX is the opening document's state row of the cheque; OldWhatDoc the state as stored when
    // the list was read; sDate that row's date.
    return QStringLiteral(
        "IDX Int Null, Serial Int Null, ChqNo Varchar(20) Null, Joz Varchar(10) Null, WhatDoc "
        "Varchar(2) Null, "
        "Tazmin NVarchar(1) Null, SarResidDate Varchar(10) Null, WhatDocNam NVarchar(100) Null, "
        "CanEdit Int Null, "
        "AcountID Int Null, OldWhatDoc Varchar(2) Null, sDate Varchar(10) Null");
}

// The opening rows of one side: the cheque row of N_ChqFirst (F), its document's state row (O)
// and its treasury row (N).
QString openingRows(tr::db::Connection& c, const QString& kind) {
    return QStringLiteral(
               " From N_ChqFirst As F Inner Join N_ChqLastTrans As O On (O.WhatDoc = F.WhatDoc And "
               "O.Serial = F.Serial And O.ChqNo = F.ChqNo And IsNull(O.Joz, '') = IsNull(F.Joz, "
               "'')) "
               "Left Join N_NaghdTrans As N On (N.IDX = F.IDX) Where F.ChqOrTaraf = 1 And "
               "F.WhatDoc = ") +
           c.text(kind);
}

}  // namespace

const QString OpeningChequeStates::kScreenName = QStringLiteral("مقداردهي وضعيت چكهاي اول دوره");
const QString OpeningChequeStates::kCaption = QStringLiteral("        تعيين وضعيت چكهاي اول دوره");
const QString OpeningChequeStates::kReportKey = QStringLiteral("CHQFIRST");
const QString OpeningChequeStates::kReportProperties =
    QStringLiteral("مشخصات گزارش [ثبت وضعيت چكهاي اول دوره]");
const QString OpeningChequeStates::kReportTitle = QStringLiteral("گزارش ثبت وضعيت چكهاي اول دوره ");
const QString OpeningChequeStates::kMoved = QStringLiteral("چك گردش دارد.");
const QString OpeningChequeStates::kNoState = QStringLiteral("آخرين وضعيت چك وارد نشده است.");

OpeningChequeStates::OpeningChequeStates(const tr::Services& services, Side side)
    : side_(side),
      services_(services),
      messages_(services.dialog),
      table_(*services.database,
             QStringLiteral("##ChqFirst") + services.global->sessionText +
                 (side == Side::Received ? QStringLiteral("71") : QStringLiteral("81"))),
      rows_(services.database->Connection) {}

OpeningChequeStates::~OpeningChequeStates() = default;

void OpeningChequeStates::setServices(const tr::Services& services) {
    services_ = services;
    messages_.setDialog(services.dialog);
}

QString OpeningChequeStates::kind() const {
    return side_ == Side::Received ? QStringLiteral("71") : QStringLiteral("81");
}

QString OpeningChequeStates::sideName() const {
    return side_ == Side::Received ? QStringLiteral("دريافت چک") : QStringLiteral("پرداخت چک");
}

QList<QPair<QString, QString>> OpeningChequeStates::columns() {
    return {{QStringLiteral("Joz"), QStringLiteral("سري")},
            {QStringLiteral("ChqNo"), QStringLiteral("چك")},
            {QStringLiteral("SarResidDate"), QStringLiteral("سررسيد")},
            {QStringLiteral("WhatDocNam"), QStringLiteral("آخرين وضعيت چك")}};
}

QString OpeningChequeStates::movedAfterOpening() {
    // The opening state row is the one this screen writes: the opening document's serial, the
    // stored state's kind and no treasury row of its own. Every other later row, of either side,
    // is a movement.
    return QStringLiteral(
        "M.ChqNo = O.ChqNo And IsNull(M.Joz, '') = IsNull(O.Joz, '') And M.IDX > O.IDX And Not "
        "(M.Serial = "
        "O.Serial And M.WhatDoc = IsNull(F.LastWhatDoc, '') And M.WhatDoc <> O.WhatDoc And "
        "LTrim(RTrim(IsNull(M.CodWhatDoc, ''))) = '')");
}

// Received cheques may enter the period in hand, in collection (with a shortfall, or back from
// it), protested or returned; a guarantee cheque only in hand or returned. Our own cheques
// outstanding, protested, with a shortfall or returned; a guarantee one outstanding or returned.
// A received cheque passed on is spent or back from spending.
QStringList OpeningChequeStates::offeredKinds(bool guarantee, bool passedOn) const {
    if (side_ == Side::Received)
        return guarantee ? QStringList{"71", "78"}
                         : QStringList{"71", "72", "76", "77", "79", "78"};
    if (passedOn) return {"81", "88"};
    return guarantee ? QStringList{"81", "87"} : QStringList{"81", "85", "86", "87"};
}

QString OpeningChequeStates::nameOf(const QString& kind, bool passedOn) const {
    if (passedOn && kind == QLatin1String("81")) return QStringLiteral("خرج چك");
    if (passedOn && kind == QLatin1String("88")) return QStringLiteral("برگشت از خرج چك");
    tr::db::Connection& c = services_.connection();
    return firstColumn(c, QStringLiteral("Select NDocNam From N_AsnadNaghd Where WhatDoc = ") +
                              c.text(kind))
        .toString()
        .trimmed();
}

void OpeningChequeStates::fill() {
    tr::db::Connection& c = services_.connection();
    rows_.Close();
    if (tr::db::objectExistsInTempdb(c, table_.name()))
        c.execute(QStringLiteral("Drop Table ") + table_.name());
    c.execute(QStringLiteral("Create Table ") + table_.name() + QStringLiteral(" (") +
              workTableColumns() + QLatin1Char(')'));
    const tr::db::Query q = openQuery(
        c, QStringLiteral(
               "Select O.IDX, F.Serial, F.ChqNo, IsNull(F.Joz, ''), IsNull(F.LastWhatDoc, ''), "
               "IsNull(N.Des4, ''), F.SarResidDate, O.SanadDate, IsNull(O.CodWhatDoc, ''), (Select "
               "Count(*) From N_ChqLastTrans As M Where ") +
               movedAfterOpening() + QStringLiteral(")") + openingRows(c, kind()) +
               QStringLiteral(" Order By O.IDX Desc"));
    // One row per cheque and series: its latest opening.
    QSet<QString> seen;
    QHash<QString, QString> names;
    for (int i = 0; i < q.RecordCount(); ++i) {
        const QString number = q.value(i, 2).toString().trimmed();
        const QString series = q.value(i, 3).toString().trimmed();
        const QString key = number + QLatin1Char('_') + series;
        if (seen.contains(key)) continue;
        seen.insert(key);
        QString state = q.value(i, 4).toString().trimmed();
        if (state.isEmpty()) state = kind();
        const QString code = q.value(i, 8).toString().trimmed();
        const bool passedOn = side_ == Side::Issued && code.isEmpty();
        const QString nameKey = state + (passedOn ? QStringLiteral("P") : QString());
        if (!names.contains(nameKey)) names.insert(nameKey, nameOf(state, passedOn));
        // A received cheque's state row names its treasury row, not a bank account.
        const QString account = side_ == Side::Received ? QStringLiteral("Null")
                                : passedOn              ? QStringLiteral("0")
                                                        : sqlNumber(code.toLongLong());
        const QString sep = QStringLiteral(", ");
        c.execute(
            QStringLiteral("Insert Into ") + table_.name() +
            QStringLiteral(
                " (IDX, Serial, ChqNo, Joz, WhatDoc, Tazmin, SarResidDate, WhatDocNam, CanEdit, "
                "AcountID, OldWhatDoc, sDate) Values (") +
            sqlNumber(q.value(i, 0).toLongLong()) + sep + sqlNumber(q.value(i, 1).toLongLong()) +
            sep + c.text(number) + sep + c.text(series) + sep + c.text(state) + sep +
            c.text(q.value(i, 5).toString().trimmed() == kSet ? kSet : QString()) + sep +
            c.text(q.value(i, 6).toString().trimmed()) + sep + c.text(names.value(nameKey)) + sep +
            (q.value(i, 9).toLongLong() > 0 ? QStringLiteral("1") : QStringLiteral("0")) + sep +
            account + sep + c.text(state) + sep + c.text(q.value(i, 7).toString().trimmed()) +
            QLatin1Char(')'));
    }
    rows_.setSql(QStringLiteral("Select * From ") + table_.name() +
                 QStringLiteral(" Order By IDX"));
    rows_.Open();
}

QString OpeningChequeStates::field(const char* name) const {
    const int column = rows_.fieldIndex(QString::fromLatin1(name));
    return column < 0 || rows_.IsEmpty()
               ? QString()
               : rows_.value(rows_.RecNo() - 1, column).toString().trimmed();
}

void OpeningChequeStates::setField(const char* name, const QVariant& value) {
    if (rows_.state() == tr::db::Query::State::Browse) rows_.Edit();
    rows_.FieldByName(QString::fromLatin1(name)).SetValue(value);
}

bool OpeningChequeStates::refuse(const QString& message) {
    messages_.show(message, QStringLiteral("1ER"));
    return false;
}

bool OpeningChequeStates::lockedAt(int row) const {
    const int column = rows_.fieldIndex(QStringLiteral("CanEdit"));
    return column >= 0 && row >= 0 && row < rows_.RecordCount() &&
           rows_.value(row, column).toInt() == 1;
}

bool OpeningChequeStates::locked() const {
    return !rows_.IsEmpty() && lockedAt(rows_.RecNo() - 1);
}

QList<QPair<QString, QString>> OpeningChequeStates::choices() const {
    if (rows_.IsEmpty()) return {};
    const bool passedOn = side_ == Side::Issued && field("AcountID").toLongLong() == 0;
    QList<QPair<QString, QString>> out;
    for (const QString& k : offeredKinds(field("Tazmin") == kSet, passedOn))
        out.append({k, nameOf(k, passedOn)});
    return out;
}

bool OpeningChequeStates::beginChange() {
    if (rows_.IsEmpty()) return false;
    return locked() ? refuse(kMoved) : true;
}

bool OpeningChequeStates::chooseState(const QString& kind) {
    if (rows_.IsEmpty()) return false;
    if (locked()) return refuse(kMoved);
    for (const auto& [k, name] : choices()) {
        if (k != kind) continue;
        setField("WhatDoc", k);
        setField("WhatDocNam", name);
        rows_.Post();
        return true;
    }
    return false;
}

bool OpeningChequeStates::chooseStateNamed(const QString& name) {
    if (rows_.IsEmpty()) return false;
    if (locked()) return refuse(kMoved);
    for (const auto& [k, n] : choices())
        if (n == name.trimmed()) return chooseState(k);
    return false;
}

void OpeningChequeStates::spaceOnState() {
    if (rows_.IsEmpty()) return;
    if (locked()) {
        refuse(kMoved);
        return;
    }
    const auto offered = choices();
    if (offered.isEmpty()) return;
    int at = -1;
    for (int i = 0; i < offered.size(); ++i)
        if (offered[i].first == field("WhatDoc")) at = i;
    chooseState(offered[(at + 1) % offered.size()].first);
}

bool OpeningChequeStates::clearState() {
    if (rows_.IsEmpty()) return false;
    if (locked()) return refuse(kMoved);
    setField("WhatDoc", QString());
    setField("WhatDocNam", QString());
    rows_.Post();
    return true;
}

bool OpeningChequeStates::cmdOkClick() {
    tr::db::Connection& c = services_.connection();
    if (rows_.state() != tr::db::Query::State::Browse) rows_.Post();
    const qint64 empty =
        firstColumn(c, QStringLiteral("Select Count(*) From ") + table_.name() +
                           QStringLiteral(" Where LTrim(RTrim(IsNull(WhatDoc, ''))) = ''"))
            .toLongLong();
    if (empty > 0) return refuse(kNoState);
    const tr::db::Query changed = openQuery(
        c, QStringLiteral("Select IDX, Serial, ChqNo, Joz, WhatDoc, OldWhatDoc, sDate From ") +
               table_.name() +
               QStringLiteral(" Where CanEdit = 0 And WhatDoc <> OldWhatDoc Order By IDX"));
    if (changed.IsEmpty()) return true;
    try {
        tr::db::Transaction transaction(c);
        // Checked against the book as it is now, before the first write: another desk may have
        // moved a cheque, or set its state, since the list was read.
        for (int i = 0; i < changed.RecordCount(); ++i) {
            const QString number = changed.value(i, 2).toString().trimmed();
            const QString opening =
                QStringLiteral(" And O.IDX = ") + sqlNumber(changed.value(i, 0).toLongLong());
            const tr::db::Query now =
                openQuery(c, QStringLiteral("Select IsNull(F.LastWhatDoc, ''), (Select Count(*) "
                                            "From N_ChqLastTrans As M Where ") +
                                 movedAfterOpening() + QStringLiteral(")") +
                                 openingRows(c, kind()) + opening);
            if (now.IsEmpty() || now.value(0, 1).toLongLong() > 0)
                return refuse(kMoved + QStringLiteral("\nشماره چك :") + number);
            QString stored = now.value(0, 0).toString().trimmed();
            if (stored.isEmpty()) stored = kind();
            if (stored != changed.value(i, 5).toString().trimmed()) {
                return refuse(
                    QStringLiteral(
                        "وضعيت چك پس از خواندن فهرست تغيير كرده است؛ فهرست را دوباره بخوانيد.") +
                    QStringLiteral("\nشماره چك :") + number);
            }
        }
        const QString sep = QStringLiteral(", ");
        for (int i = 0; i < changed.RecordCount(); ++i) {
            const QString openingIdx = sqlNumber(changed.value(i, 0).toLongLong());
            const QString serial = sqlNumber(changed.value(i, 1).toLongLong());
            const QString number = c.text(changed.value(i, 2).toString().trimmed());
            const QString series = c.text(changed.value(i, 3).toString().trimmed());
            const QString state = changed.value(i, 4).toString().trimmed();
            const QString cheque = QStringLiteral(" ChqNo = ") + number +
                                   QStringLiteral(" And IsNull(Joz, '') = ") + series;
            c.execute(QStringLiteral("Update N_ChqFirst Set LastWhatDoc = ") + c.text(state) +
                      QStringLiteral(" Where ChqOrTaraf = 1 And WhatDoc = ") + c.text(kind()) +
                      QStringLiteral(" And Serial = ") + serial + QStringLiteral(" And") + cheque);
            // The cheque has not moved: every row after its opening is the old opening state row.
            c.execute(QStringLiteral("Delete From N_ChqLastTrans Where") + cheque +
                      QStringLiteral(" And IDX > ") + openingIdx);
            // The document's own kind is its opening row; any other state is a row of its own
            // after it, the cheque's latest, as the state of an action would be.
            if (state != kind()) {
                c.execute(
                    QStringLiteral(
                        "Insert Into N_ChqLastTrans (WhatDoc, ChqNo, Joz, SanadDate, CodWhatDoc, "
                        "Serial) Values (") +
                    c.text(state) + sep + number + sep + series + sep +
                    c.text(changed.value(i, 6).toString().trimmed()) + sep + c.text(QString()) +
                    sep + serial + QLatin1Char(')'));
            }
        }
        transaction.commit();
    } catch (const tr::db::DatabaseError& e) {
        return refuse(e.message());
    }
    fill();
    return true;
}

}  // namespace tr::cheques
