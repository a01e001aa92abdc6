#include "cheques/spend_picker.h"

#include "common/db/query_helpers.h"
#include "instruments/latest_state.h"

namespace tr::cheques {

namespace {

const QString kChosen = QStringLiteral("ض");

QString trimmed(const QVariant& v) {
    return v.isNull() ? QString() : v.toString().trimmed();
}

}  // namespace

const QString SpendPicker::kTitle = QStringLiteral("انتخاب چک دريافتي");

SpendPicker::SpendPicker(const tr::Services& services)
    : services_(services),
      messages_(services.dialog),
      table_(*services.database, QStringLiteral("##ChqGetSlct") + services.global->sessionText),
      rows_(services.database->Connection) {}

void SpendPicker::fill(const QStringList& onThePayment) {
    tr::db::Connection& c = *services_.database->Connection;
    if (tr::db::objectExistsInTempdb(c, table_.name())) c.execute(QStringLiteral("Drop Table ") + table_.name());
    c.execute(QStringLiteral("Create Table ") + table_.name() +
              QStringLiteral(" (Slct NVarchar(1) Null, Serial Int Null, ChqNo Varchar(20) Null, Joz Varchar(10) Null, "
                             "WhatDoc Varchar(2) Null, ChqGetter NVarchar(500) Null, ChqValue Float Null, SanadNo Int "
                             "Null, SanadDate Varchar(10) Null, SarResidDate Varchar(10) Null, Des NVarchar(500) Null, "
                             "BankCod Varchar(10) Null, ShobehCod Varchar(100) Null, AcountNam NVarchar(200) Null, "
                             "AcountCod Varchar(50) Null, Havaleh NVarchar(1) Null, Tazmin NVarchar(1) Null, IDX Int "
                             "Null)"));
    // Number and series right-aligned to the state table's widths, so that text order is number
    // order; details from the cheque's receipt (its latest one, for a cheque received again).
    const QString padded = QStringLiteral("Right(Replicate(' ', Col_Length('N_ChqLastTrans', '%1')) + LTrim(RTrim(L.%1)), "
                                          "Col_Length('N_ChqLastTrans', '%1'))");
    QString except;
    for (const QString& key : onThePayment) {
        except += QStringLiteral(" And Not (LTrim(RTrim(L.ChqNo)) = ") + c.text(key.section(QLatin1Char('_'), 0, 0)) +
                  QStringLiteral(" And LTrim(RTrim(IsNull(L.Joz, ''))) = ") + c.text(key.section(QLatin1Char('_'), 1)) +
                  QLatin1Char(')');
    }
    c.execute(QStringLiteral("Insert Into ") + table_.name() +
              QStringLiteral(" (Slct, Serial, ChqNo, Joz, WhatDoc, ChqGetter, ChqValue, SanadNo, SanadDate, SarResidDate, "
                             "Des, BankCod, ShobehCod, AcountNam, AcountCod, Havaleh, Tazmin, IDX) ") +
              tr::instruments::latestRowsQuery(
                  tr::instruments::chequeHistory(),
                  QStringLiteral("'', N.Serial, ") + padded.arg(QStringLiteral("ChqNo")) + QStringLiteral(", ") +
                      padded.arg(QStringLiteral("Joz")) +
                      QStringLiteral(", L.WhatDoc, N.Des6, IsNull(A.Bed, F.sValue), A.SanadNo, IsNull(A.SanadDate, "
                                     "R.SanadDate), IsNull(A.AtfDate, F.SarResidDate), IsNull(A.Des, F.Des), N.WhatDoc2, "
                                     "N.CodWhatDoc2, B.BankNam, N.Des2, N.Des3, N.Des4, N.IDX"),
                  QStringLiteral(" And L.WhatDoc In ('71', '77', '88')") + except,
                  QStringLiteral("Inner Join N_ChqLastTrans As R On (R.WhatDoc = '71' "
                                          "And R.ChqNo = L.ChqNo And IsNull(R.Joz, '') = IsNull(L.Joz, '') And R.IDX = "
                                          "(Select Max(Q.IDX) From N_ChqLastTrans As Q Where Q.WhatDoc = '71' And Q.ChqNo = "
                                          "L.ChqNo And IsNull(Q.Joz, '') = IsNull(L.Joz, ''))) Inner Join N_NaghdTrans As N "
                                          "On (Cast(N.IDX As Varchar(20)) = LTrim(RTrim(R.CodWhatDoc))) Left Join Asnad As "
                                          "A On (A.TypeSys = 'N' And A.WhatDoc = '71' And A.Bed > 0 And A.Document = "
                                          "Cast(N.IDX As Varchar(20))) Left Join N_ChqFirst As F On (F.IDX = N.IDX And "
                                          "F.WhatDoc = '71' And F.ChqOrTaraf = 1) Left Join N_Bank As B On (B.BankCod = "
                                          "N.WhatDoc2)")));
    // The book's collation passes over leading blanks, so the padding alone does not order the
    // numbers: their length comes first.
    rows_.setSql(QStringLiteral("Select * From ") + table_.name() +
                 QStringLiteral(" Order By LTrim(Joz), Len(LTrim(ChqNo)), LTrim(ChqNo)"));
    rows_.Open();
}

bool SpendPicker::toggle() {
    if (!rows_.Active() || rows_.IsEmpty()) return false;
    const bool chosen = trimmed(rows_.FieldByName(QStringLiteral("Slct")).Value()) == kChosen;
    if (!chosen && trimmed(rows_.FieldByName(QStringLiteral("Tazmin")).Value()) == kChosen) {
        messages_.show(QStringLiteral("چک هاي تضميني را نمي توان انتخاب کرد"), QStringLiteral("1ER"));
        return false;
    }
    rows_.Edit();
    rows_.FieldByName(QStringLiteral("Slct")).SetValue(chosen ? QString() : kChosen);
    rows_.Post();
    return true;
}

std::optional<QList<QPair<QString, QString>>> SpendPicker::confirm() {
    QList<QPair<QString, QString>> chosen;
    const int slct = rows_.fieldIndex(QStringLiteral("Slct"));
    const int number = rows_.fieldIndex(QStringLiteral("ChqNo"));
    const int series = rows_.fieldIndex(QStringLiteral("Joz"));
    for (int i = 0; rows_.Active() && i < rows_.RecordCount(); ++i) {
        if (trimmed(rows_.value(i, slct)) == kChosen)
            chosen.append({trimmed(rows_.value(i, number)), trimmed(rows_.value(i, series))});
    }
    if (chosen.isEmpty()) {
        messages_.show(QStringLiteral("چکي انتخاب نشده است. "), QStringLiteral("1ER"));
        return std::nullopt;
    }
    return chosen;
}

}  // namespace tr::cheques
