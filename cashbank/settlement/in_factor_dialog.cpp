#include "cashbank/settlement/in_factor_dialog.h"

#include <algorithm>
#include <cmath>

#include "common/db/query_helpers.h"
#include "common/persian/amount.h"

namespace tr::cashbank {

namespace {

// Amounts are rials in floating point; a thousandth of a rial is no difference.
constexpr double kTolerance = 0.0005;

const QString kSelect = QStringLiteral("sSelect");
const QString kAllocation = QStringLiteral("NaghdValue");
const QString kOpen = QStringLiteral("GetValue");

}  // namespace

const std::vector<InFactorDialog::Column>& InFactorDialog::columns() {
    static const std::vector<Column> list = {
        {QStringLiteral("sSelect"), QStringLiteral("P")},
        {QStringLiteral("DorehMali"), QStringLiteral("دوره مالي")},
        {QStringLiteral("SanadNoForosh"), QStringLiteral("شماره صورتحساب")},
        {QStringLiteral("FactorDate"), QStringLiteral("تاريخ صورتحساب")},
        {QStringLiteral("FactorValue"), QStringLiteral("مبلغ صورتحساب")},
        {QStringLiteral("GetValue"), QStringLiteral("مانده صورتحساب")},
        {QStringLiteral("NaghdValue"), QStringLiteral("مبلغ تخصيصي"), true, true},
        {QStringLiteral("CustomerNam"), QStringLiteral("نام مشتري")},
        {QStringLiteral("ChqValue"), QStringLiteral("مبلغ چک"), false},
        {QStringLiteral("ChqNo"), QStringLiteral("شماره چک"), false},
        {QStringLiteral("CustomerCod"), QString(), false},
        {QStringLiteral("ID"), QString(), false},
    };
    return list;
}

QString InFactorDialog::amountText(double amount) {
    return tr::persian::formatAmount(amount);
}

InFactorDialog::InFactorDialog(InvoiceSettlement& settlement)
    : settlement_(settlement),
      messages_(settlement.services().dialog),
      table_(settlement.invoiceListTable()),
      list_(&settlement.services().connection()) {
    tr::vouchers::N_Global& document = settlement_.document();
    amount_ = document.header().amount;
    // The paying line is the one under the grid's cursor; its amount and description find its
    // IDX again when the document is saved.
    tr::db::Query& grid = document.grid();
    if (grid.Active() && !grid.IsEmpty()) {
        lineAmount_ =
            grid.FieldByName(tr::vouchers::sideColumn(document.kind().gridSide())).AsFloat();
        lineDes_ = grid.FieldByName(QStringLiteral("Des")).AsString();
        tr::db::Connection& c = settlement.services().connection();
        const QString code = grid.FieldByName(QStringLiteral("CodWhatDoc2")).AsString().trimmed();
        const QVariant found = tr::db::firstValueWhere(
            c, QStringLiteral("CustomerCod"), QStringLiteral("R_Customer"),
            QStringLiteral("CustomerCod = ") + c.text(code) + QStringLiteral(" Or (Koll = ") +
                c.text(grid.FieldByName(QStringLiteral("Koll")).AsString().trimmed()) +
                QStringLiteral(" And Moein = ") +
                c.text(grid.FieldByName(QStringLiteral("Moein")).AsString().trimmed()) +
                QStringLiteral(" And Tafsily = ") +
                c.text(grid.FieldByName(QStringLiteral("Tafsily")).AsString().trimmed()) +
                QStringLiteral(")"));
        customer_ = found.toString().trimmed();
    }
    settlement_.fillOpenInvoices(table_);
    reopen();
}

QString InFactorDialog::serial() const {
    return settlement_.document().header().serial.trimmed();
}

void InFactorDialog::reopen() {
    QString sql = QStringLiteral("Select * From ") + table_;
    if (filter_ && !customer_.isEmpty())
        sql += QStringLiteral(" Where CustomerCod = ") +
               settlement_.services().connection().text(customer_);
    list_.Close();
    list_.setSql(sql + QStringLiteral(" Order By DorehMali, SanadNoForosh"));
    list_.Open();
}

void InFactorDialog::setCustomerFilter(bool on) {
    if (on == filter_) return;
    filter_ = on;
    reopen();
}

double InFactorDialog::allocated() const {
    return tr::db::firstColumn(
               settlement_.services().connection(),
               QStringLiteral("select sum(ISNULL(NaghdValue,0))SumNaghdValue from ") + table_ +
                   QStringLiteral(" where sSelect = 'P'"))
        .toDouble();
}

bool InFactorDialog::refuse(const QString& text) {
    messages_.show(text, QStringLiteral("1ER"));
    return false;
}

bool InFactorDialog::setAllocation(double value) {
    if (!list_.Active() || list_.IsEmpty() || value < 0 || !std::isfinite(value)) return false;
    const bool chosen = list_.FieldByName(kSelect).AsString() == QLatin1String("P");
    const double own = chosen ? list_.FieldByName(kAllocation).AsFloat() : 0.0;
    if (value > list_.FieldByName(kOpen).AsFloat() + kTolerance)
        return refuse(QStringLiteral("مبلغ تخصيصي نبايد از مبلغ مانده صورتحساب بيشتر باشد"));
    if (value > remaining() + own + kTolerance)
        return refuse(QStringLiteral("مبلغ تخصيصي نبايد از باقيمانده ") + kind().documentName +
                      QStringLiteral(" بيشتر باشد"));
    list_.Edit();
    list_.FieldByName(kAllocation).SetAsFloat(value);
    list_.FieldByName(kSelect).SetAsString(value > 0 ? QStringLiteral("P") : QString());
    list_.Post();
    return true;
}

bool InFactorDialog::setAllocationText(const QString& text) {
    const tr::persian::AmountReading reading = tr::persian::readAmount(text);
    if (!reading.ok()) return refuse(tr::persian::amountRefusal(reading, text));
    return setAllocation(reading.value);
}

bool InFactorDialog::toggleSelect() {
    if (!list_.Active() || list_.IsEmpty()) return false;
    if (list_.FieldByName(kSelect).AsString() == QLatin1String("P")) return setAllocation(0);
    const double proposal = std::min(list_.FieldByName(kOpen).AsFloat(), remaining());
    if (proposal <= kTolerance)
        return refuse(QStringLiteral("مبلغ تخصيصي نبايد از باقيمانده ") + kind().documentName +
                      QStringLiteral(" بيشتر باشد"));
    return setAllocation(proposal);
}

void InFactorDialog::showPayments() {
    if (!list_.Active() || list_.IsEmpty()) return;
    settlement_.showPayments(list_.FieldByName(QStringLiteral("SanadNoForosh")).AsString(),
                             list_.FieldByName(QStringLiteral("DorehMali")).AsString());
}

bool InFactorDialog::cmdOkClick() {
    // The document's amount may have been lowered since the allocations were made.
    if (allocated() > amount_ + kTolerance)
        return refuse(QStringLiteral("مجموع مبالغ تخصيصي نمي تواند از مبلغ ") +
                      kind().documentName + QStringLiteral(" بيشتر باشد"));
    settlement_.keepAllocations(table_, lineAmount_, lineDes_);
    return true;
}

}  // namespace tr::cashbank
