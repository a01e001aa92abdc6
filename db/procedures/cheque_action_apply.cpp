#include "db/procedures/cheque_action_apply.h"

#include <QSet>
#include <cmath>
#include <optional>

#include "common/db/database_error.h"
#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "db/procedures/posting.h"
#include "instruments/cheque_actions.h"
#include "instruments/latest_state.h"
#include "instruments/opening_state.h"

namespace tr::procedures {

namespace {

using tr::db::Connection;
using tr::db::DatabaseError;
using tr::db::firstColumn;
using tr::db::openQuery;
using tr::db::Query;
using tr::db::sqlNumber;
using tr::instruments::chequeActions;
using tr::instruments::InstrumentFacts;
using tr::instruments::Side;

// What tells the two tabs' procedures apart.
struct ApplySide {
    QString procedure;
    Side side;
    const char* standing;  // the work table's prefix of the accounts where a cheque stands
    QString document;      // the kind of the document a cheque of this side starts with
};

const ApplySide& receivedSide() {
    static const ApplySide s{QStringLiteral("sp_N_Asnad_ChqGetAction_Apply"), Side::Received, "V",
                             QStringLiteral("71")};
    return s;
}

const ApplySide& issuedSide() {
    static const ApplySide s{QStringLiteral("sp_N_Asnad_ChqPayAction_Apply"), Side::Issued, "",
                             QStringLiteral("81")};
    return s;
}

// Kinds that move no money: a state row and a treasury row, no voucher.
bool movesNoMoney(const QString& kind) {
    return kind == QLatin1String("76") || kind == QLatin1String("86");
}

struct Accounts {
    QString koll, moein, tafsily, tafsily2, projectCod;
    bool empty() const { return koll.isEmpty() || moein.isEmpty(); }
};

Accounts accounts(const Record& r, const char* prefix) {
    auto f = [&](const char* column) { return trimmedText(r[(QByteArray(prefix) + column).constData()]); };
    return {f("Koll"), f("Moein"), f("Tafsily"), f("Tafsily2"), f("ProjectCod")};
}

// One side of an action's voucher: an account and the part of the cheque it takes.
struct Line {
    Accounts account;
    double value = 0;
};
using Lines = std::vector<Line>;

struct ActionRow {
    QString number, series, name, kind, date, due, des, bank, expectedState;
    qint64 bankAccount = 0;
    double value = 0;
    Accounts from, to;      // where the cheque stands; where the action hands it
    InstrumentFacts facts;  // as checked; the posting's direction follows whose cheque it is
};

class ApplyCall {
  public:
    ApplyCall(Connection& c, const Args& args, const ApplySide& side) : c_(c), side_(side) {
        if (args.size() != 4 && args.size() != 5) {
            throw DatabaseError(
                QStringLiteral("%1 expects 4 or 5 arguments, got %2").arg(side_.procedure).arg(args.size()));
        }
        table_ = validWorkTable(args[0].toString().trimmed(), QStringLiteral("an actions work table"));
        user_ = args[1].toString().trimmed();
        yearStart_ = validDate(args[2].toString().trimmed());
        yearEnd_ = validDate(args[3].toString().trimmed());
        if (args.size() == 5 && !args[4].toString().trimmed().isEmpty())
            splitTable_ = validWorkTable(args[4].toString().trimmed(), QStringLiteral("a return-split table"));
    }

    tr::db::ExecResult run() {
        std::vector<ActionRow> rows = readRows();
        // Every row is checked before the first is written: a batch is whole or refused. A cheque
        // may appear once in a batch (its second action would be checked against a stale state).
        QSet<QString> seen;
        for (ActionRow& r : rows) {
            if (seen.contains(r.number + QLatin1Char('_') + r.series))
                refuseRow(QStringLiteral("براي هر چك در هر بار فقط يك عمليات ثبت مي شود."), r);
            seen.insert(r.number + QLatin1Char('_') + r.series);
            check(r);
        }
        for (const ActionRow& r : rows) {
            if (chequeActions().isUndo(r.name)) undo(r);
            else post(r);
        }
        return {};
    }

  private:
    std::vector<ActionRow> readRows() {
        const Query q = openQuery(c_, QStringLiteral("Select * From ") + table_ +
                                          QStringLiteral(" Where LTrim(RTrim(IsNull(WhatDocNam, ''))) <> '' Order By "
                                                         "sOrder, IDX"));
        std::vector<ActionRow> out;
        for (int i = 0; i < q.RecordCount(); ++i) {
            const Record r{&q, i};
            ActionRow a;
            a.number = trimmedText(r["ChqNo"]);
            a.series = trimmedText(r["Joz"]);
            a.name = trimmedText(r["WhatDocNam"]);
            a.date = trimmedText(r["ActionDate"]);
            a.due = trimmedText(r["SarResidDate"]);
            a.des = trimmedText(r["Des"]);
            a.bank = trimmedText(r["BankCod"]);
            a.bankAccount = r["AcountID"].toLongLong();
            a.expectedState = trimmedText(r["LastWhatDoc"]);
            a.value = r["ChqValue"].toDouble();
            a.from = accounts(r, side_.standing);
            a.to = accounts(r, "Va");
            out.push_back(std::move(a));
        }
        return out;
    }

    [[noreturn]] static void refuseRow(const QString& message, const ActionRow& r) {
        refuse(message + QStringLiteral("\nشماره چك :") + r.number);
    }

    QString chequeRows(const ActionRow& r, const QString& alias = {}) const {
        const QString a = alias.isEmpty() ? QString() : alias + QLatin1Char('.');
        return QStringLiteral(" ") + a + QStringLiteral("ChqNo = ") + c_.text(r.number) + QStringLiteral(" And IsNull(") +
               a + QStringLiteral("Joz, '') = ") + c_.text(r.series);
    }

    // The cheque's facts as this side sees them; nothing for a cheque the side does not act on (a
    // received tab's cheque was received; an issued tab's is our leaf, or a cheque passed on and
    // not yet back).
    std::optional<InstrumentFacts> factsOf(const ActionRow& r, const tr::instruments::LatestRow& latest) {
        InstrumentFacts f;
        f.side = side_.side;
        // The cheque's row of the document it started with, the latest one: a receipt's state row
        // names its treasury row, a payment's the bank account of our own leaf (nothing for a
        // cheque passed on).
        const Query start = openQuery(c_, QStringLiteral("Select Top 1 L.CodWhatDoc, L.Serial From N_ChqLastTrans As L "
                                                         "Where L.WhatDoc = ") +
                                              c_.text(side_.document) + QStringLiteral(" And") + chequeRows(r, QStringLiteral("L")) +
                                              QStringLiteral(" Order By L.IDX Desc"));
        if (start.IsEmpty()) return std::nullopt;
        const qint64 startSerial = start.value(0, 1).toLongLong();
        if (side_.side == Side::Received) {
            f.guarantee = firstColumn(c_, QStringLiteral("Select IsNull(Des4, '') From N_NaghdTrans Where Cast(IDX As "
                                                         "Varchar(20)) = ") +
                                              c_.text(start.value(0, 0).toString().trimmed()))
                              .toString()
                              .trimmed() == QStringLiteral("ض");
            f.paidOut = firstColumn(c_, QStringLiteral("Select Count(*) From N_ChqLastTrans Where WhatDoc = '81' And") +
                                            chequeRows(r))
                            .toLongLong() > 0;
        } else {
            f.own = !start.value(0, 0).toString().trimmed().isEmpty();
            f.paidOut = !f.own;
            // A cheque passed on is the issued side's while it stands spent; back in hand (88) it
            // moves on the received side.
            if (!f.own && latest.kind != QLatin1String("81")) return std::nullopt;
            // Our leaf's guarantee flag is kept on its payment's treasury row.
            f.guarantee = f.own && firstColumn(c_, QStringLiteral("Select Max(IsNull(Des4, '')) From N_NaghdTrans Where "
                                                                  "WhatDoc = '81' And Serial = ") +
                                                       sqlNumber(startSerial) + QStringLiteral(" And CodWhatDoc = ") +
                                                       c_.text(r.number) + QStringLiteral(" And IsNull(Joz, '') = ") +
                                                       c_.text(r.series))
                                           .toString()
                                           .trimmed() == QStringLiteral("ض");
        }
        // The state its opening set: the opening document's own row or its opening state row is the
        // latest (an action dated later may carry the same kind and the document's serial).
        f.opening = tr::instruments::atOpeningState(c_, r.number, r.series);
        return f;
    }

    void check(ActionRow& r) {
        const auto latest =
            tr::instruments::latestRow(c_, tr::instruments::chequeHistory(), r.number, r.series);
        if (!latest) refuseRow(QStringLiteral("چك در دسترس نمي باشد."), r);
        // Another desk moved the cheque since this list was read.
        if (latest->kind != r.expectedState)
            refuseRow(QStringLiteral("وضعيت چك پس از خواندن فهرست تغيير كرده است؛ فهرست را دوباره بخوانيد."), r);
        const std::optional<InstrumentFacts> facts = factsOf(r, *latest);
        if (!facts) refuseRow(QStringLiteral("چك در دسترس نمي باشد."), r);
        r.facts = *facts;
        if (!chequeActions().allows(latest->kind, r.facts, r.name) || !known(r.name))
            refuseRow(QStringLiteral("عمليات ") + r.name + QStringLiteral(" براي اين چك مجاز نيست."), r);
        if (chequeActions().isUndo(r.name)) {
            if (actionRowOf(*latest) == 0)
                refuseRow(QStringLiteral("عمليات قبلي اين چك از اين صفحه ثبت نشده است و حذف نمي شود."), r);
            return;
        }
        checkDate(r, latest->date);
        r.kind = *chequeActions().kindOf(r.name, side_.side);
        if (r.kind == QLatin1String("72")) {
            const qint64 same = firstColumn(c_, QStringLiteral("Select Count(*) From Asnad Where TypeSys = 'N' And "
                                                               "WhatDoc = '72' And AtfCh = ") +
                                                    c_.text(r.number) + QStringLiteral(" And DocToDate = ") +
                                                    c_.text(r.series) + QStringLiteral(" And SanadDate = ") +
                                                    c_.text(r.date))
                                    .toLongLong();
            if (same > 0) {
                refuseRow(QStringLiteral("براي اين چک در اين تاريخ يكبار عمليات <در جريان وصول> تعريف شده است."), r);
            }
        }
        if (r.kind == QLatin1String("73") && !r.due.isEmpty() && r.date < r.due)
            refuseRow(QStringLiteral("تاريخ اعلام وصول نمي تواند از تاريخ سررسيد كمتر باشد."), r);
        if (r.kind == QLatin1String("82") && !r.due.isEmpty() && r.date < r.due)
            refuseRow(QStringLiteral("تاريخ برداشت نمي تواند كمتر از تاريخ سررسيد باشد."), r);
        if (movesNoMoney(r.kind)) return;
        if (r.kind == QLatin1String("78") && splitOf(r).empty() && r.to.empty())
            refuseRow(QStringLiteral("        سرفصل مشتري مشخص شود"), r);
        // Each side of the voucher: accounts present and active (an account made inactive after
        // the list was read refuses the batch here, not half-way), parts adding up to the cheque.
        for (const Lines& part : {handedTo(r), standing(r)}) {
            double total = 0;
            for (const Line& line : part) {
                if (line.account.empty()) refuseRow(QStringLiteral("سرفصل عمليات چك مشخص نشده است."), r);
                checkActive(line.account, r);
                total += line.value;
            }
            if (std::fabs(total - r.value) > 0.005) {
                refuseRow(QStringLiteral("جمع مبلغ بايد برابر <") + QString::number(r.value, 'f', 0) +
                              QStringLiteral("> شود."),
                          r);
            }
        }
    }

    bool known(const QString& name) const {
        return chequeActions().isUndo(name) || chequeActions().kindOf(name, side_.side).has_value();
    }

    void checkDate(const ActionRow& r, const QString& lastDate) {
        QString valid;
        try {
            valid = validDate(r.date);
        } catch (const DatabaseError&) {
            refuseRow(QStringLiteral("تاريخ وارد شده اشکال دارد"), r);
        }
        if (valid < yearStart_ || valid > yearEnd_) refuseRow(QStringLiteral("تاريخ بايد در بازه سال مالي باشد !"), r);
        if (valid < lastDate) {
            refuseRow(QStringLiteral("تاريخ عمليات ") + valid + QStringLiteral(" نبايد كوچکتر از ") + lastDate +
                          QStringLiteral(" باشد"),
                      r);
        }
    }

    void checkActive(const Accounts& a, const ActionRow& r) {
        const QString active = QStringLiteral("فعال");
        const QVariant koll = firstColumn(c_, QStringLiteral("Select IsActive From Koll Where Koll = ") + c_.text(a.koll));
        if (koll.toString().trimmed() != active) refuseRow(QStringLiteral("كد حساب كل غيرفعال مي باشد."), r);
        const QVariant moein = firstColumn(c_, QStringLiteral("Select IsActive From Moein Where Koll = ") +
                                                   c_.text(a.koll) + QStringLiteral(" And Moein = ") + c_.text(a.moein));
        if (moein.toString().trimmed() != active) refuseRow(QStringLiteral("كد حساب معين غيرفعال مي باشد."), r);
    }

    // The treasury row that the latest action wrote (its IDX in CodWhatDoc); 0 for a state that
    // no action row of these kinds wrote (a document's receipt or payment, an opening state).
    qint64 actionRowOf(const tr::instruments::LatestRow& latest) {
        if (latest.kind == QLatin1String("71") || latest.kind == QLatin1String("81")) return 0;
        const QString code =
            firstColumn(c_, QStringLiteral("Select CodWhatDoc From N_ChqLastTrans Where IDX = ") + sqlNumber(latest.idx))
                .toString()
                .trimmed();
        bool ok = false;
        const qint64 idx = code.toLongLong(&ok);
        if (!ok) return 0;
        return firstColumn(c_, QStringLiteral("Select Count(*) From N_NaghdTrans Where IDX = ") + sqlNumber(idx) +
                                   QStringLiteral(" And WhatDoc = ") + c_.text(latest.kind))
                           .toLongLong() > 0
                   ? idx
                   : 0;
    }

    // Where the action hands the cheque: the row's Va-accounts, or a return's parts over the
    // lines it goes back to.
    Lines handedTo(const ActionRow& r) {
        if (r.kind == QLatin1String("78") || r.kind == QLatin1String("87")) {
            Lines split = splitOf(r);
            if (!split.empty()) return split;
        }
        return {{r.to, r.value}};
    }
    // Where it stands: the row's accounts, or, for a cheque passed on that comes back, the parts
    // of the lines it was spent to.
    Lines standing(const ActionRow& r) {
        if (r.kind == QLatin1String("88")) {
            Lines split = splitOf(r);
            if (!split.empty()) return split;
        }
        return {{r.from, r.value}};
    }

    void post(const ActionRow& r) {
        const qint64 serial =
            firstColumn(c_, QStringLiteral("Select IsNull(Max(Serial), 0) + 1 From N_NaghdTrans Where WhatDoc = ") +
                                c_.text(r.kind))
                .toLongLong();
        TreasuryRow row;
        row.whatDoc = r.kind;
        row.serial = serial;
        row.raj = 1;
        row.codWhatDoc = r.number;
        row.whatDoc2 = r.bank;
        row.codWhatDoc2 = r.bankAccount > 0 ? QString::number(r.bankAccount) : QString();
        row.joz = r.series;
        row.date = r.date;
        row.des1 = r.des;
        const qint64 idx = insertTreasuryRow(c_, row);
        if (!movesNoMoney(r.kind)) {
            const qint64 voucherNo = newVoucherNumber(c_);
            const QString des = r.name + QStringLiteral(" چك ") + r.number;
            // A received cheque is ours to collect: it stands as a debit and moves off with a
            // credit. Our own cheque is a debt: it stands as a credit and moves off with a debit.
            const Lines to = handedTo(r), from = standing(r);
            const Lines& debits = r.facts.own ? from : to;
            const Lines& credits = r.facts.own ? to : from;
            int raj = 0;
            for (const Line& line : debits) voucherLine(idx, voucherNo, ++raj, line, LedgerSide::Bed, des, r);
            for (const Line& line : credits) voucherLine(idx, voucherNo, ++raj, line, LedgerSide::Bes, des, r);
        }
        c_.execute(QStringLiteral("Insert Into N_ChqLastTrans (WhatDoc, ChqNo, Joz, SanadDate, CodWhatDoc, Serial) "
                                  "Values (") +
                   c_.text(r.kind) + QStringLiteral(", ") + c_.text(r.number) + QStringLiteral(", ") + c_.text(r.series) +
                   QStringLiteral(", ") + c_.text(r.date) + QStringLiteral(", ") + c_.text(QString::number(idx)) +
                   QStringLiteral(", ") + sqlNumber(serial) + QStringLiteral(")"));
    }

    void voucherLine(qint64 idx, qint64 voucherNo, int raj, const Line& line, LedgerSide side, const QString& des,
                     const ActionRow& r) {
        VoucherLine l;
        l.whatDoc = r.kind;
        l.whatDoc2 = r.bank;
        l.document = idx;
        l.voucherNo = voucherNo;
        l.date = r.date;
        l.raj = raj;
        l.koll = line.account.koll;
        l.moein = line.account.moein;
        l.tafsily = line.account.tafsily;
        l.tafsily2 = line.account.tafsily2;
        l.projectCod = line.account.projectCod;
        l.des = des;
        l.side = side;
        l.rials = round2(line.value);
        l.atfCh = r.number;
        l.user = user_;
        l.docToDate = r.series;
        l.atfDate = r.due.isEmpty() ? QVariant() : QVariant(r.due);
        insertVoucherLine(c_, l);
    }

    void undo(const ActionRow& r) {
        const auto latest =
            tr::instruments::latestRow(c_, tr::instruments::chequeHistory(), r.number, r.series);
        const qint64 idx = actionRowOf(*latest);
        c_.execute(QStringLiteral("Delete From Asnad Where TypeSys = 'N' And WhatDoc = ") + c_.text(latest->kind) +
                   QStringLiteral(" And Document = ") + c_.text(QString::number(idx)));
        c_.execute(QStringLiteral("Delete From N_NaghdTrans Where IDX = ") + sqlNumber(idx));
        c_.execute(QStringLiteral("Delete From N_ChqLastTrans Where IDX = ") + sqlNumber(latest->idx));
    }

    // The parts typed or filled in the split table for the row's action (empty: one account).
    Lines splitOf(const ActionRow& r) {
        if (splitTable_.isEmpty()) return {};
        const Query q = openQuery(c_, QStringLiteral("Select Koll, Moein, Tafsily, Tafsily2, ProjectCod, NewValue From ") +
                                          splitTable_ + QStringLiteral(" Where") + chequeRows(r) +
                                          QStringLiteral(" And WhatDoc = ") + c_.text(r.kind) +
                                          QStringLiteral(" And NewValue > 0 Order By Raj"));
        Lines out;
        for (int i = 0; i < q.RecordCount(); ++i) {
            const Record row{&q, i};
            out.push_back({accounts(row, ""), row["NewValue"].toDouble()});
        }
        return out;
    }

    Connection& c_;
    const ApplySide& side_;
    QString table_, user_, yearStart_, yearEnd_, splitTable_;
};

}  // namespace


std::vector<ProcedureDefinition> chequeActionProcedures() {
    return {{receivedSide().procedure,
             [](Connection& c, const Args& args) { return ApplyCall(c, args, receivedSide()).run(); }},
            {issuedSide().procedure,
             [](Connection& c, const Args& args) { return ApplyCall(c, args, issuedSide()).run(); }}};
}

}  // namespace tr::procedures
