#include "db/procedures/cheque_permits.h"

#include <cmath>

#include "common/db/database_error.h"
#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "db/procedures/posting.h"

namespace tr::procedures {

namespace {

using tr::db::Connection;
using tr::db::DatabaseError;
using tr::db::firstColumn;
using tr::db::openQuery;
using tr::db::Query;
using tr::db::sqlNumber;

const QString kTitle = QStringLiteral("مجوز پرداخت چك");
const QString kNotThere = QStringLiteral("اين شماره مجوز پرداخت چك در دسترس نمي باشد");

enum Position { kPrefix, kSerial, kDate, kUser, kState, kCount };

// The columns both the permit's row table and the payment's cheque work table carry.
const QString kAccountColumns = QStringLiteral("Koll, Moein, Tafsily, Tafsily2, ProjectCod");

bool permitExists(Connection& c, qint64 serial) {
    return firstColumn(c, QStringLiteral("Select Count(*) From N_MojavezTrans Where Serial = ") + sqlNumber(serial))
               .toLongLong() > 0;
}

class PermitCall {
  public:
    PermitCall(Connection& c, const Args& args) : c_(c) {
        if (static_cast<int>(args.size()) != 1 + kCount) {
            throw DatabaseError(QStringLiteral("sp_N_Asnad_Trans_ChqMojavez expects %1 arguments, got %2")
                                    .arg(1 + kCount)
                                    .arg(args.size()));
        }
        mode_ = args[0].toString().trimmed().toUpper();
        for (int i = 0; i < kCount; ++i) values_ << args[1 + i].toString().trimmed();
    }

    tr::db::ExecResult run() {
        const qint64 serial = validSerial(values_[kSerial], kTitle);
        if (mode_ == QLatin1String("DB->TRANS")) {
            load(serial);
        } else if (mode_ == QLatin1String("TRANS->DB")) {
            save(serial);
        } else if (mode_ == QLatin1String("DELETE")) {
            remove(serial);
        } else {
            throw DatabaseError(QStringLiteral("sp_N_Asnad_Trans_ChqMojavez: unknown mode '%1'").arg(mode_));
        }
        return {};
    }

  private:
    QString table(const QString& suffix) const {
        return validWorkTable(QStringLiteral("##") + values_[kPrefix] + suffix, QStringLiteral("a permit work table"));
    }

    void load(qint64 serial) {
        if (!permitExists(c_, serial)) refuse(kNotThere);
        copyPermitRows(c_, serial, table(QStringLiteral("Bed")), table(QStringLiteral("_Taraf")), true);
        const QString fact = table(QStringLiteral("_Fact"));
        c_.execute(QStringLiteral("Delete From ") + fact);
        c_.execute(QStringLiteral("Insert Into ") + fact +
                   QStringLiteral(" (PMojavezCod, PMojavezNam, Sign, Nerkh, FactValue) Select PMojavezCod, PMojavezNam, "
                                  "Sign, Nerkh, FactValue From N_MojavezFact Where Serial = ") +
                   sqlNumber(serial) + QStringLiteral(" Order By PMojavezCod"));
    }

    // What the screen checks as well, checked again here before anything is written.
    void check() {
        const QString bed = table(QStringLiteral("Bed"));
        const QString taraf = table(QStringLiteral("_Taraf"));
        if (firstColumn(c_, QStringLiteral("Select Count(*) From ") + bed).toLongLong() == 0)
            refuse(QStringLiteral("چكي در سند وارد نشده است."));
        if (firstColumn(c_, QStringLiteral("Select Count(*) From ") + bed +
                                QStringLiteral(" Where LTrim(RTrim(IsNull(ChqNo, ''))) = ''"))
                .toLongLong() > 0)
            refuse(QStringLiteral("شماره چك براي برخي از رديفها وارد نشده است."));
        if (firstColumn(c_, QStringLiteral("Select Count(*) From ") + taraf +
                                QStringLiteral(" Where LTrim(RTrim(IsNull(Koll, ''))) = ''"))
                .toLongLong() > 0)
            refuse(QStringLiteral("سرفصل در قسمت طرف حساب پر نشده است"));
        const Query splits = openQuery(
            c_, QStringLiteral("Select C.ChqNo, C.ChqValue, (Select IsNull(Sum(T.ChqValue), 0) From ") + taraf +
                    QStringLiteral(" As T Where T.ChqNo = C.ChqNo And IsNull(T.Joz, '') = IsNull(C.Joz, '')) From ") + bed +
                    QStringLiteral(" As C Order By C.Raj"));
        for (int i = 0; i < splits.RecordCount(); ++i) {
            if (std::fabs(splits.value(i, 1).toDouble() - splits.value(i, 2).toDouble()) > 0.005)
                refuse(QStringLiteral("جمع مبلغ چك ") + trimmedText(splits.value(i, 0)) +
                       QStringLiteral(" در قسمت طرف حساب/بابت با مبلغ چك يكسان نميباشد."));
        }
        const QVariant stray = firstColumn(
            c_, QStringLiteral("Select Top 1 T.ChqNo From ") + taraf + QStringLiteral(" As T Where Not Exists (Select * From ") +
                    bed + QStringLiteral(" As C Where C.ChqNo = T.ChqNo And IsNull(C.Joz, '') = IsNull(T.Joz, ''))"));
        if (!stray.isNull()) refuse(QStringLiteral("چك ") + trimmedText(stray) + QStringLiteral(" در قسمت بالا ثبت نشده است !"));
    }

    void save(qint64 serial) {
        const QString date = validDate(values_[kDate]);
        const bool isNew = values_[kState].compare(QLatin1String("EDIT"), Qt::CaseInsensitive) != 0;
        const bool exists = permitExists(c_, serial);
        if (isNew && exists) refuse(kTitle + QStringLiteral(" با اين شماره ثبت شده است."));
        if (!isNew && !exists) refuse(kNotThere);
        if (exists) {
            const QString locked = permitLockedRefusal(c_, serial);
            if (!locked.isEmpty()) refuse(locked);
        }
        check();
        const QString n = sqlNumber(serial);
        if (exists) {
            c_.execute(QStringLiteral("Update N_MojavezTrans Set SanadDate = ") + c_.text(date) +
                       QStringLiteral(", User_Name = ") + c_.text(values_[kUser]) + QStringLiteral(" Where Serial = ") + n);
        } else {
            c_.execute(QStringLiteral("Insert Into N_MojavezTrans (Serial, SanadDate, User_Name, ModirMaleDate, "
                                      "ModirAmelDate, ModirMaleAbtalDate, ModirAmelAbtalDate, ChqPaySerial) Values (") +
                       n + QStringLiteral(", ") + c_.text(date) + QStringLiteral(", ") + c_.text(values_[kUser]) +
                       QStringLiteral(", '', '', '', '', 0)"));
        }
        c_.execute(QStringLiteral("Delete From N_MOJAVEZCHQ Where Serial = ") + n);
        c_.execute(QStringLiteral("Delete From N_MojavezFact Where Serial = ") + n);
        // The cheques: the amount written is the amount the permit allows.
        c_.execute(QStringLiteral("Insert Into N_MOJAVEZCHQ (Serial, ChqOrTaraf, Raj, ChqStateNam, AcountID, Joz, ChqNo, "
                                  "MojavezValue, FactValue, ChqValue, ChqGetter, Havaleh, Tazmin, SarResidDate, Des, ") +
                   kAccountColumns + QStringLiteral(") Select ") + n +
                   QStringLiteral(", 1, Raj, ChqStateNam, AcountID, LTrim(RTrim(IsNull(Joz, ''))), LTrim(RTrim(ChqNo)), ChqValue, "
                                  "FactValue, ChqValue, ChqGetter, Havaleh, Tazmin, SarResidDate, Des, ") +
                   kAccountColumns + QStringLiteral(" From ") + table(QStringLiteral("Bed")));
        c_.execute(QStringLiteral("Insert Into N_MOJAVEZCHQ (Serial, ChqOrTaraf, Raj, Joz, ChqNo, ChqValue, Des, WhatDoc2, "
                                  "CodWhatDoc2, NamWhatDoc2, ManabehCod, ") +
                   kAccountColumns + QStringLiteral(") Select ") + n +
                   QStringLiteral(", 2, Raj, LTrim(RTrim(IsNull(Joz, ''))), LTrim(RTrim(ChqNo)), ChqValue, Des, WhatDoc2, "
                                  "CodWhatDoc2, NamWhatDoc2, ManabehCod, ") +
                   kAccountColumns + QStringLiteral(" From ") + table(QStringLiteral("_Taraf")));
        // Components left at nothing are not kept.
        c_.execute(QStringLiteral("Insert Into N_MojavezFact (Serial, PMojavezCod, PMojavezNam, Sign, Nerkh, FactValue) "
                                  "Select ") +
                   n + QStringLiteral(", PMojavezCod, PMojavezNam, Sign, Nerkh, FactValue From ") + table(QStringLiteral("_Fact")) +
                   QStringLiteral(" Where LTrim(RTrim(IsNull(PMojavezCod, ''))) <> '' And (IsNull(FactValue, 0) <> 0 Or "
                                  "IsNull(Nerkh, 0) <> 0)"));
    }

    void remove(qint64 serial) {
        if (!permitExists(c_, serial)) refuse(kNotThere);
        const QString locked = permitLockedRefusal(c_, serial);
        if (!locked.isEmpty()) refuse(locked);
        const QString n = sqlNumber(serial);
        c_.execute(QStringLiteral("Delete From N_MOJAVEZCHQ Where Serial = ") + n);
        c_.execute(QStringLiteral("Delete From N_MojavezFact Where Serial = ") + n);
        c_.execute(QStringLiteral("Delete From N_MojavezTrans Where Serial = ") + n);
    }

    Connection& c_;
    QString mode_;
    QStringList values_;
};

}  // namespace

QString permitLockedRefusal(Connection& c, qint64 serial) {
    const Query p = openQuery(c, QStringLiteral("Select ChqPaySerial, IsNull(ModirAmelDate, ''), IsNull(ModirMaleDate, ''), "
                                                "IsNull(ModirAmelAbtalDate, ''), IsNull(ModirMaleAbtalDate, '') From "
                                                "N_MojavezTrans Where Serial = ") +
                                     sqlNumber(serial));
    if (p.IsEmpty()) return {};
    if (p.value(0, 0).toLongLong() != 0) return QStringLiteral("سريال مجوز دستور پرداخت به سريال پرداخت چك تبديل شده است.");
    if (!trimmedText(p.value(0, 1)).isEmpty()) return QStringLiteral("سريال مجوز دستور پرداخت توسط مدير عامل تاييد شده است.");
    if (!trimmedText(p.value(0, 2)).isEmpty()) return QStringLiteral("سريال مجوز دستور پرداخت توسط مدير مالي تاييد شده است.");
    if (!trimmedText(p.value(0, 3)).isEmpty()) return QStringLiteral("سريال مجوز دستور پرداخت توسط مدير عامل ابطال شده است.");
    if (!trimmedText(p.value(0, 4)).isEmpty()) return QStringLiteral("سريال مجوز دستور پرداخت توسط مدير مالي ابطال شده است.");
    return {};
}

void copyPermitRows(Connection& c, qint64 serial, const QString& chequeTable, const QString& counterpartyTable,
                    bool asSaved) {
    const QString n = sqlNumber(serial);
    c.execute(QStringLiteral("Delete From ") + chequeTable);
    c.execute(QStringLiteral("Delete From ") + counterpartyTable);
    // Our own leaf shows its bank account's number and name; a cheque passed on has none.
    c.execute(QStringLiteral("Insert Into ") + chequeTable +
              QStringLiteral(" (IsChange, IDX, Raj, ChqStateNam, AcountID, AcountCod, AcountNam, Koll, Moein, Tafsily, "
                             "Tafsily2, ProjectCod, Joz, ChqNo, MojavezValue, FactValue, ChqValue, ChqGetter, Havaleh, "
                             "Tazmin, SarResidDate, Des) Select ") +
              (asSaved ? QStringLiteral("'0', M.IDX, ") : QStringLiteral("'1', Null, ")) +
              QStringLiteral("M.Raj, M.ChqStateNam, H.AcountID, H.AcountCod, Case When H.AcountID Is Null Then Null Else "
                             "IsNull(B.BankNam, '') + ' - ' + IsNull(S.ShobehNam, '') End, M.Koll, M.Moein, M.Tafsily, "
                             "M.Tafsily2, M.ProjectCod, M.Joz, M.ChqNo, M.MojavezValue, M.FactValue, M.ChqValue, "
                             "M.ChqGetter, M.Havaleh, M.Tazmin, M.SarResidDate, M.Des From N_MOJAVEZCHQ As M Left Join "
                             "N_BankHesab As H On (H.AcountID = M.AcountID) Left Join N_Bank As B On (B.BankCod = "
                             "H.BankCod) Left Join N_Shoab As S On (S.BankCod = H.BankCod And S.ShobehCod = H.ShobehCod) "
                             "Where M.Serial = ") +
              n + QStringLiteral(" And M.ChqOrTaraf = 1 Order By M.Raj"));
    c.execute(QStringLiteral("Insert Into ") + counterpartyTable +
              QStringLiteral(" (IDX, Raj, WhatDoc2, NamWhatDoc2, Koll, CodWhatDoc2, Moein, Tafsily, Tafsily2, ProjectCod, "
                             "Joz, ChqNo, ChqValue, Des, ManabehCod) Select ") +
              (asSaved ? QStringLiteral("IDX") : QStringLiteral("Null")) +
              QStringLiteral(", Raj, WhatDoc2, NamWhatDoc2, Koll, CodWhatDoc2, Moein, Tafsily, Tafsily2, ProjectCod, Joz, "
                             "ChqNo, ChqValue, Des, ManabehCod From N_MOJAVEZCHQ Where Serial = ") +
              n + QStringLiteral(" And ChqOrTaraf = 2 Order By Raj"));
}

std::vector<ProcedureDefinition> chequePermitProcedures() {
    return {{QStringLiteral("sp_N_Asnad_Trans_ChqMojavez"),
             [](Connection& c, const Args& args) { return PermitCall(c, args).run(); }}};
}

}  // namespace tr::procedures
