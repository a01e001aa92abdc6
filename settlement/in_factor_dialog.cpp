#include "settlement/in_factor_dialog.h"

#include <algorithm>
#include <cmath>

#include "common/db/query_helpers.h"
#include "common/persian/amount.h"

namespace tr::settlement {

namespace {

// Amounts are rials in floating point; a thousandth of a rial is no difference.
constexpr double kTolerance = 0.0005;

const QString kSelect = QStringLiteral("sSelect");
const QString kAllocation = QStringLiteral("NaghdValue");
const QString kOpen = QStringLiteral("GetValue");

}  // namespace

std::vector<InFactorDialog::Column> InFactorDialog::columns(const SettlementKind& kind) {
    return {
        {QStringLiteral("sSelect"), QStringLiteral("P")},
        {QStringLiteral("DorehMali"), QStringLiteral("دوره مالي")},
        {QStringLiteral("SanadNoForosh"), QStringLiteral("شماره صورتحساب")},
        {QStringLiteral("FactorDate"), QStringLiteral("تاريخ صورتحساب")},
        {QStringLiteral("FactorValue"), QStringLiteral("مبلغ صورتحساب")},
        {QStringLiteral("GetValue"), QStringLiteral("مانده صورتحساب")},
        {QStringLiteral("NaghdValue"), QStringLiteral("مبلغ تخصيصي"), true, true},
        {QStringLiteral("CustomerNam"), QStringLiteral("نام مشتري")},
        {QStringLiteral("ChqValue"), QStringLiteral("مبلغ چک"), kind.chequeColumns},
        {QStringLiteral("ChqNo"), QStringLiteral("شماره چک"), kind.chequeColumns},
        {QStringLiteral("CustomerCod"), QString(), false},
        {QStringLiteral("ID"), QString(), false},
    };
}

QString InFactorDialog::amountText(double amount) {
    return tr::persian::formatAmount(amount);
}

InFactorDialog::InFactorDialog(InvoicePayer& payer)
    : payer_(payer),
      messages_(payer.services().dialog),
      table_(payer.listTable()),
      list_(&payer.services().connection()),
      amount_(payer.amount()),
      customer_(payer.customer()),
      filter_(!payer.kind().filterBySelection) {
    payer_.fillOpenInvoices(table_);
    if (kind().chequeColumns) {
        tr::db::Connection& c = payer_.services().connection();
        tr::db::execute(*payer_.services().database,
                        QStringLiteral("Update ") + table_ + QStringLiteral(" Set ChqValue = ") + tr::db::sqlNumber(amount_) +
                            QStringLiteral(", ChqNo = ") + c.text(payer_.chequeNumber()));
    }
    reopen();
}

void InFactorDialog::reopen() {
    QString sql = QStringLiteral("Select * From ") + table_;
    if (filter_ && !customer_.isEmpty())
        sql += QStringLiteral(" Where CustomerCod = ") + payer_.services().connection().text(customer_);
    list_.Close();
    list_.setSql(sql + QStringLiteral(" Order By DorehMali, SanadNoForosh"));
    list_.Open();
}

bool InFactorDialog::setCustomerFilter(bool on) {
    if (on && kind().filterBySelection) {
        const tr::db::Query chosen = tr::db::openQuery(
            payer_.services().connection(),
            QStringLiteral("Select Distinct CustomerCod From ") + table_ + QStringLiteral(" Where sSelect = 'P'"));
        if (chosen.RecordCount() > 1) {
            filter_ = false;
            reopen();
            return refuse(
                QStringLiteral("صورتحساب هاي انتخاب شده متعلق به بيش از يک مشتري است لذا پالايش ممکن نيست"));
        }
        customer_ = chosen.IsEmpty() ? payer_.customer() : chosen.value(0, 0).toString().trimmed();
    }
    if (on == filter_) return true;
    filter_ = on;
    reopen();
    return true;
}

double InFactorDialog::allocated() const {
    return tr::db::firstColumn(payer_.services().connection(),
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
    if (kind().rowTakesWholeAmount && value > amount_ + kTolerance)
        return refuse(QStringLiteral("مبلغ تخصيصي نبايد از مبلغ ") + kind().documentName + QStringLiteral(" بيشتر باشد"));
    if (value > list_.FieldByName(kOpen).AsFloat() + kTolerance)
        return refuse(QStringLiteral("مبلغ تخصيصي نبايد از مبلغ مانده صورتحساب بيشتر باشد"));
    if (!kind().rowTakesWholeAmount && value > remaining() + own + kTolerance)
        return refuse(QStringLiteral("مبلغ تخصيصي نبايد از باقيمانده ") + kind().documentName +
                      QStringLiteral(" بيشتر باشد"));
    return select(value);
}

bool InFactorDialog::select(double value) {
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

bool InFactorDialog::moveTo(const QString& invoice, const QString& period) {
    if (!list_.Active()) return false;
    for (list_.First(); !list_.Eof(); list_.Next()) {
        if (list_.FieldByName(QStringLiteral("SanadNoForosh")).AsString().trimmed() != invoice.trimmed()) continue;
        if (period.isEmpty() || list_.FieldByName(QStringLiteral("DorehMali")).AsString().trimmed() == period.trimmed())
            return true;
    }
    return false;
}

bool InFactorDialog::toggleSelect() {
    if (!list_.Active() || list_.IsEmpty()) return false;
    if (list_.FieldByName(kSelect).AsString() == QLatin1String("P")) return setAllocation(0);
    const double proposal = std::min(list_.FieldByName(kOpen).AsFloat(), remaining());
    if (proposal <= kTolerance) {
        if (!kind().rowTakesWholeAmount)
            return refuse(QStringLiteral("مبلغ تخصيصي نبايد از باقيمانده ") + kind().documentName +
                          QStringLiteral(" بيشتر باشد"));
        // Nothing of the cheque is left to propose: the invoice is chosen and waits for its amount.
        list_.Edit();
        list_.FieldByName(kAllocation).SetAsFloat(0);
        list_.FieldByName(kSelect).SetAsString(QStringLiteral("P"));
        list_.Post();
        return true;
    }
    return setAllocation(proposal);
}

void InFactorDialog::showPayments() {
    if (!list_.Active() || list_.IsEmpty()) return;
    payer_.showPayments(list_.FieldByName(QStringLiteral("SanadNoForosh")).AsString(),
                        list_.FieldByName(QStringLiteral("DorehMali")).AsString());
}

bool InFactorDialog::cmdOkClick() {
    // The payer's amount may have been lowered since the allocations were made.
    if (allocated() > amount_ + kTolerance)
        return refuse(QStringLiteral("مجموع مبالغ تخصيصي نمي تواند از مبلغ ") + kind().documentName +
                      QStringLiteral(" بيشتر باشد"));
    if (tr::db::firstColumn(payer_.services().connection(),
                            QStringLiteral("Select Count(*) From ") + table_ +
                                QStringLiteral(" Where sSelect = 'P' And IsNull(NaghdValue, 0) = 0"))
            .toInt() > 0)
        return refuse(QStringLiteral("براي صورتحساب هاي انتخاب شده مبلغ تخصيصي را وارد کنيد"));
    payer_.keepAllocations(table_);
    return true;
}

}  // namespace tr::settlement
