#include "cheques/cheques_to_bank.h"

#include "common/db/query_helpers.h"
#include "common/db/sql_literal.h"
#include "common/dialog/host_windows.h"

namespace tr::cheques {

const QString ChequesToBank::kWaitText = QStringLiteral("لطفا صبر کنيد");
const QString ChequesToBank::kTicked = QStringLiteral("ض");

ChequesToBank::ChequesToBank(const tr::Services& services)
    : services_(services),
      table_(*services.database, QStringLiteral("##ChqToBank") + services.global->sessionText),
      rows_(services.database->Connection) {}

QPair<QString, QString> ChequesToBank::monthRange(const QString& yearMonth) {
    const QString month = yearMonth.trimmed().left(7);
    return {month + QStringLiteral("/01"), month + QStringLiteral("/31")};
}

QList<QPair<QString, QString>> ChequesToBank::columns() {
    return {{QStringLiteral("sSelect"), QStringLiteral("انتخاب")},
            {QStringLiteral("ChqNo"), QStringLiteral("شماره چک")},
            {QStringLiteral("Joz"), QStringLiteral("سري")},
            {QStringLiteral("ChqValue"), QStringLiteral("مبلغ")},
            {QStringLiteral("SarResidDate"), QStringLiteral("تاريخ سررسيد")},
            {QStringLiteral("ActionDate"), QStringLiteral("تاريخدرجريانوصول")},
            {QStringLiteral("HesabVago"), QStringLiteral("واگذار به بانك")},
            {QStringLiteral("BankName"), QStringLiteral("بانک")},
            {QStringLiteral("ShobehNam"), QStringLiteral("شعبه")},
            {QStringLiteral("AcountCod"), QStringLiteral("شماره حساب")},
            {QStringLiteral("GetterCheque"), QStringLiteral("در وجه")},
            {QStringLiteral("SanadNo"), QStringLiteral("شماره سند")},
            {QStringLiteral("Des"), QStringLiteral("شرح")}};
}

QString ChequesToBank::workTableColumns() const {
    // The bank code is copied from the account's row, so it must be no narrower than there.
    const int width = tr::db::firstColumn(connection(), QStringLiteral("Select Col_Length('N_BankHesab', 'BankCod')"))
                          .toInt();
    return QStringLiteral(
               "IDX Int, sSelect NVarchar(1), Serial Int, AcountID Int, BankCod Varchar(%1), ShobehCod Varchar(20), "
               "ShobehNam NVarchar(500), AcountCod Varchar(20), SanadNo Varchar(20), Des NVarchar(500), "
               "Joz Varchar(20), ChqNo Varchar(20), ChqValue Float, GetterCheque NVarchar(500), "
               "SodorDate Varchar(10), SarResidDate Varchar(10), ActionDate Varchar(10), BankName NVarchar(20), "
               "HesabVago NVarchar(100), Havaleh NVarchar(1), Tazmin NVarchar(1), sOrder1 NVarchar(100), "
               "sOrder2 NVarchar(100)")
        .arg(width > 0 ? width : 20);
}

void ChequesToBank::fill() {
    tr::db::Connection& c = connection();
    if (services_.progress) services_.progress->showState(kWaitText);
    struct Close {
        tr::dialog::ProgressWindow* p;
        ~Close() {
            if (p) p->closeState();
        }
    } close{services_.progress};
    rows_.Close();
    if (tr::db::objectExistsInTempdb(c, table_.name())) c.execute(QStringLiteral("Drop Table ") + table_.name());
    c.execute(QStringLiteral("Create Table ") + table_.name() + QStringLiteral(" (") + workTableColumns() +
              QStringLiteral(")"));
    c.execute(QStringLiteral("Exec sp_N_Asnad_Chq_SendToBank ") + c.text(table_.name()) + QStringLiteral(", ") +
              c.text(filters_.fromDate.trimmed()) + QStringLiteral(", ") + c.text(filters_.toDate.trimmed()) +
              QStringLiteral(", ") + c.text(filters_.account.trimmed()) + QStringLiteral(", ") +
              c.text(filters_.fromBank.trimmed()) + QStringLiteral(", ") + c.text(filters_.toBank.trimmed()));
    rows_.setSql(QStringLiteral("Select * From ") + table_.name() + QStringLiteral(" Order By sOrder1, sOrder2"));
    rows_.Open();
}

int ChequesToBank::toggleTick() {
    if (!rows_.Active() || rows_.IsEmpty()) return tickedCount();
    const bool ticked = rows_.FieldByName(QStringLiteral("sSelect")).AsString().trimmed() == kTicked;
    rows_.Edit();
    rows_.FieldByName(QStringLiteral("sSelect")).SetValue(ticked ? QString() : kTicked);
    rows_.Post();
    return tickedCount();
}

int ChequesToBank::tickedCount() const {
    if (!tr::db::objectExistsInTempdb(connection(), table_.name())) return 0;
    return tr::db::firstColumn(connection(), QStringLiteral("Select Count(*) From ") + table_.name() +
                                                 QStringLiteral(" Where sSelect = ") + connection().text(kTicked))
        .toInt();
}

void ChequesToBank::sortBy(const QString& field) {
    if (!rows_.Active() || rows_.fieldIndex(field) < 0) return;
    rows_.setSort(field == QLatin1String("ChqNo") ? field : field + QStringLiteral(", ChqNo"));
}

QList<QPair<QString, QString>> ChequesToBank::bankAccounts() const {
    const tr::db::Query q = tr::db::openQuery(
        connection(), QStringLiteral("Select H.AcountCod, IsNull(B.BankNam, '') + ' - ' + IsNull(S.ShobehNam, '') + "
                                     "' - ' + H.AcountCod From N_BankHesab As H Left Join N_Bank As B On (B.BankCod = "
                                     "H.BankCod) Left Join N_Shoab As S On (S.BankCod = H.BankCod And S.ShobehCod = "
                                     "H.ShobehCod) Order By H.AcountID"));
    QList<QPair<QString, QString>> out;
    for (int i = 0; i < q.RecordCount(); ++i)
        out.append({q.value(i, 0).toString().trimmed(), q.value(i, 1).toString().trimmed()});
    return out;
}

}  // namespace tr::cheques
