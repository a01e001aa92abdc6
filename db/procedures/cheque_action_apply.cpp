#include "db/procedures/cheque_action_apply.h"

#include <QSet>
#include <cmath>

#include "common/db/database_error.h"
#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "db/procedures/posting.h"
#include "instruments/cheque_actions.h"
#include "instruments/latest_state.h"

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

// Kinds that move no money: a state row and a treasury row, no voucher.
bool movesNoMoney(const QString& kind) {
    return kind == QLatin1String("76");
}

struct Accounts {
    QString koll, moein, tafsily, tafsily2, projectCod;
    bool empty() const { return koll.isEmpty() || moein.isEmpty(); }
};

Accounts accounts(const Record& r, const char* prefix) {
    auto f = [&](const char* column) { return trimmedText(r[(QByteArray(prefix) + column).constData()]); };
    return {f("Koll"), f("Moein"), f("Tafsily"), f("Tafsily2"), f("ProjectCod")};
}

struct ActionRow {
    QString number, series, name, date, due, des, bank, expectedState;
    qint64 bankAccount = 0;
    double value = 0;
    Accounts from, to;  // V: where the cheque stands; Va: where the action hands it
};

class ApplyCall {
  public:
    ApplyCall(Connection& c, const Args& args) : c_(c) {
        if (args.size() != 4 && args.size() != 5) {
            throw DatabaseError(
                QStringLiteral("sp_N_Asnad_ChqGetAction_Apply expects 4 or 5 arguments, got %1").arg(args.size()));
        }
        table_ = validWorkTable(args[0].toString().trimmed(), QStringLiteral("an actions work table"));
        user_ = args[1].toString().trimmed();
        yearStart_ = validDate(args[2].toString().trimmed());
        yearEnd_ = validDate(args[3].toString().trimmed());
        if (args.size() == 5 && !args[4].toString().trimmed().isEmpty())
            splitTable_ = validWorkTable(args[4].toString().trimmed(), QStringLiteral("a return-split table"));
    }

    tr::db::ExecResult run() {
        const std::vector<ActionRow> rows = readRows();
        // Every row is checked before the first is written: a batch is whole or refused. A cheque
        // may appear once in a batch (its second action would be checked against a stale state).
        QSet<QString> seen;
        for (const ActionRow& r : rows) {
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
            a.from = accounts(r, "V");
            a.to = accounts(r, "Va");
            out.push_back(std::move(a));
        }
        return out;
    }

    [[noreturn]] static void refuseRow(const QString& message, const ActionRow& r) {
        refuse(message + QStringLiteral("\nشماره چك :") + r.number);
    }

    InstrumentFacts factsOf(const ActionRow& r, const tr::instruments::LatestRow& latest) {
        InstrumentFacts f;
        f.side = Side::Received;
        const QString history = QStringLiteral(" ChqNo = ") + c_.text(r.number) +
                                QStringLiteral(" And IsNull(Joz, '') = ") + c_.text(r.series);
        // The guarantee flag of the cheque's row in its latest receipt (the state row points at
        // it; the document's counterparty rows carry the same number and series).
        f.guarantee = firstColumn(c_, QStringLiteral("Select Top 1 IsNull(N.Des4, '') From N_ChqLastTrans As L "
                                                     "Inner Join N_NaghdTrans As N On (Cast(N.IDX As Varchar(20)) = "
                                                     "L.CodWhatDoc) Where L.WhatDoc = '71' And L.ChqNo = ") +
                                          c_.text(r.number) + QStringLiteral(" And IsNull(L.Joz, '') = ") +
                                          c_.text(r.series) + QStringLiteral(" Order By L.IDX Desc"))
                          .toString()
                          .trimmed() == QStringLiteral("ض");
        f.paidOut = firstColumn(c_, QStringLiteral("Select Count(*) From N_ChqLastTrans Where WhatDoc = '81' And") +
                                        history)
                        .toLongLong() > 0;
        // The state its opening document set: the latest row is that document's own.
        const Query first = openQuery(c_, QStringLiteral("Select Serial, LastWhatDoc From N_ChqFirst Where "
                                                         "ChqOrTaraf = 1 And") +
                                              history);
        if (!first.IsEmpty()) {
            const qint64 openingSerial = first.value(0, 0).toLongLong();
            const qint64 latestSerial =
                firstColumn(c_, QStringLiteral("Select Serial From N_ChqLastTrans Where IDX = ") + sqlNumber(latest.idx))
                    .toLongLong();
            f.opening = latest.kind == first.value(0, 1).toString().trimmed() && latestSerial == openingSerial;
        }
        return f;
    }

    void check(const ActionRow& r) {
        const auto latest =
            tr::instruments::latestRow(c_, tr::instruments::chequeHistory(), r.number, r.series);
        if (!latest) refuseRow(QStringLiteral("چك در دسترس نمي باشد."), r);
        // Another desk moved the cheque since this list was read.
        if (latest->kind != r.expectedState)
            refuseRow(QStringLiteral("وضعيت چك پس از خواندن فهرست تغيير كرده است؛ فهرست را دوباره بخوانيد."), r);
        const InstrumentFacts facts = factsOf(r, *latest);
        if (!chequeActions().allows(latest->kind, facts, r.name) || !known(r.name))
            refuseRow(QStringLiteral("عمليات ") + r.name + QStringLiteral(" براي اين چك مجاز نيست."), r);
        if (chequeActions().isUndo(r.name)) {
            if (actionRowOf(*latest) == 0)
                refuseRow(QStringLiteral("عمليات قبلي اين چك از اين صفحه ثبت نشده است و حذف نمي شود."), r);
            return;
        }
        checkDate(r, latest->date);
        const QString kind = *chequeActions().kindOf(r.name, Side::Received);
        if (kind == QLatin1String("72")) {
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
        if (kind == QLatin1String("73") && !r.due.isEmpty() && r.date < r.due)
            refuseRow(QStringLiteral("تاريخ اعلام وصول نمي تواند از تاريخ سررسيد كمتر باشد."), r);
        if (movesNoMoney(kind)) return;
        if (kind == QLatin1String("78")) {
            const std::vector<SplitLine> split = splitOf(r);
            if (!split.empty()) {
                double total = 0;
                for (const SplitLine& line : split) {
                    total += line.value;
                    checkActive(line.account, r);
                }
                if (std::fabs(total - r.value) > 0.005) {
                    refuseRow(QStringLiteral("جمع مبلغ بايد برابر <") + QString::number(r.value, 'f', 0) +
                                  QStringLiteral("> شود."),
                              r);
                }
                if (r.from.empty()) refuseRow(QStringLiteral("سرفصل عمليات چك مشخص نشده است."), r);
                checkActive(r.from, r);
                return;
            }
            if (r.to.empty()) refuseRow(QStringLiteral("        سرفصل مشتري مشخص شود"), r);
        }
        if (r.to.empty() || r.from.empty()) refuseRow(QStringLiteral("سرفصل عمليات چك مشخص نشده است."), r);
        checkActive(r.from, r);
        checkActive(r.to, r);
    }

    static bool known(const QString& name) {
        return chequeActions().isUndo(name) || chequeActions().kindOf(name, Side::Received).has_value();
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

    // An account made inactive after the list was read refuses the batch here, not half-way.
    void checkActive(const Accounts& a, const ActionRow& r) {
        const QString active = QStringLiteral("فعال");
        const QVariant koll = firstColumn(c_, QStringLiteral("Select IsActive From Koll Where Koll = ") + c_.text(a.koll));
        if (koll.toString().trimmed() != active) refuseRow(QStringLiteral("كد حساب كل غيرفعال مي باشد."), r);
        const QVariant moein = firstColumn(c_, QStringLiteral("Select IsActive From Moein Where Koll = ") +
                                                   c_.text(a.koll) + QStringLiteral(" And Moein = ") + c_.text(a.moein));
        if (moein.toString().trimmed() != active) refuseRow(QStringLiteral("كد حساب معين غيرفعال مي باشد."), r);
    }

    // The treasury row that the latest action wrote (its IDX in CodWhatDoc); 0 for a state that
    // no action row of these kinds wrote (a document's receipt, an opening state).
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

    void post(const ActionRow& r) {
        const QString kind = *chequeActions().kindOf(r.name, Side::Received);
        const qint64 serial =
            firstColumn(c_, QStringLiteral("Select IsNull(Max(Serial), 0) + 1 From N_NaghdTrans Where WhatDoc = ") +
                                c_.text(kind))
                .toLongLong();
        TreasuryRow row;
        row.whatDoc = kind;
        row.serial = serial;
        row.raj = 1;
        row.codWhatDoc = r.number;
        row.whatDoc2 = r.bank;
        row.codWhatDoc2 = r.bankAccount > 0 ? QString::number(r.bankAccount) : QString();
        row.joz = r.series;
        row.date = r.date;
        row.des1 = r.des;
        const qint64 idx = insertTreasuryRow(c_, row);
        if (!movesNoMoney(kind)) {
            const qint64 voucherNo = newVoucherNumber(c_);
            const QString des = r.name + QStringLiteral(" چك ") + r.number;
            // A return split over the lines the cheque was credited to debits each its part.
            const std::vector<SplitLine> split = kind == QLatin1String("78") ? splitOf(r) : std::vector<SplitLine>{};
            int raj = 0;
            if (split.empty()) voucherLine(idx, kind, voucherNo, ++raj, r.to, LedgerSide::Bed, r.value, des, r);
            for (const SplitLine& line : split)
                voucherLine(idx, kind, voucherNo, ++raj, line.account, LedgerSide::Bed, line.value, des, r);
            voucherLine(idx, kind, voucherNo, ++raj, r.from, LedgerSide::Bes, r.value, des, r);
        }
        c_.execute(QStringLiteral("Insert Into N_ChqLastTrans (WhatDoc, ChqNo, Joz, SanadDate, CodWhatDoc, Serial) "
                                  "Values (") +
                   c_.text(kind) + QStringLiteral(", ") + c_.text(r.number) + QStringLiteral(", ") + c_.text(r.series) +
                   QStringLiteral(", ") + c_.text(r.date) + QStringLiteral(", ") + c_.text(QString::number(idx)) +
                   QStringLiteral(", ") + sqlNumber(serial) + QStringLiteral(")"));
    }

    void voucherLine(qint64 idx, const QString& kind, qint64 voucherNo, int raj, const Accounts& a, LedgerSide side,
                     double value, const QString& des, const ActionRow& r) {
        VoucherLine l;
        l.whatDoc = kind;
        l.whatDoc2 = r.bank;
        l.document = idx;
        l.voucherNo = voucherNo;
        l.date = r.date;
        l.raj = raj;
        l.koll = a.koll;
        l.moein = a.moein;
        l.tafsily = a.tafsily;
        l.tafsily2 = a.tafsily2;
        l.projectCod = a.projectCod;
        l.des = des;
        l.side = side;
        l.rials = round2(value);
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

    struct SplitLine {
        Accounts account;
        double value = 0;
    };
    // The parts of a returned cheque typed in the split table (empty: one customer account).
    std::vector<SplitLine> splitOf(const ActionRow& r) {
        if (splitTable_.isEmpty()) return {};
        const Query q = openQuery(c_, QStringLiteral("Select Koll, Moein, Tafsily, Tafsily2, ProjectCod, NewValue From ") +
                                          splitTable_ + QStringLiteral(" Where ChqNo = ") + c_.text(r.number) +
                                          QStringLiteral(" And IsNull(Joz, '') = ") + c_.text(r.series) +
                                          QStringLiteral(" And NewValue > 0 Order By Raj"));
        std::vector<SplitLine> out;
        for (int i = 0; i < q.RecordCount(); ++i) {
            const Record row{&q, i};
            out.push_back({accounts(row, ""), row["NewValue"].toDouble()});
        }
        return out;
    }

    Connection& c_;
    QString table_, user_, yearStart_, yearEnd_, splitTable_;
};

}  // namespace


std::vector<ProcedureDefinition> chequeActionProcedures() {
    return {{QStringLiteral("sp_N_Asnad_ChqGetAction_Apply"),
             [](Connection& c, const Args& args) { return ApplyCall(c, args).run(); }}};
}

}  // namespace tr::procedures
