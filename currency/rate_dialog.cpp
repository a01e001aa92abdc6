#include "currency/rate_dialog.h"

#include "common/persian/amount.h"

namespace tr::currency {

namespace {
// Factors between currencies may be small, and a typed value is kept as typed.
const tr::persian::AmountRules kRules{false, false, 6};
}  // namespace

RateDialog::RateDialog(tr::dialog::Messages messages, const RateRequest& request)
    : messages_(messages), request_(request), values_(request.values) {
    // A caller without a second currency leaves the factor at zero; 1 keeps the chain defined.
    if (values_.factor == 0) values_.factor = 1;
    follow(Field::MainAmount);
    follow(Field::MainRate);
}

QString RateDialog::title() {
    return QStringLiteral("دريافت نرخ ارز");
}

QString RateDialog::caption(Field field) const {
    switch (field) {
        case Field::MainAmount:
            return QStringLiteral("مقدار ارز اصلي :");
        case Field::MainRate:
            return QStringLiteral("نرخ تبديل به ريال :");
        case Field::Factor:
            return hasSecondCurrency() ? QStringLiteral("ضريب تبديل به ") + request_.secondName
                                       : QStringLiteral("ضريب تبديل :");
        case Field::SecondAmount:
            return QStringLiteral("مقدار ارز فرعي ") + request_.secondName;
        case Field::SecondRate:
            return QStringLiteral("نرخ ارز فرعي :");
        case Field::RialAmount:
            return QStringLiteral("مبلغ به ريال :");
    }
    return {};
}

bool RateDialog::enabled(Field field) const {
    const bool second =
        field == Field::Factor || field == Field::SecondAmount || field == Field::SecondRate;
    return !second || hasSecondCurrency();
}

float& RateDialog::slot(Field field) {
    switch (field) {
        case Field::MainAmount:
            return values_.mainAmount;
        case Field::MainRate:
            return values_.mainRate;
        case Field::Factor:
            return values_.factor;
        case Field::SecondAmount:
            return values_.secondAmount;
        case Field::SecondRate:
            return values_.secondRate;
        case Field::RialAmount:
            break;
    }
    return values_.rialAmount;
}

float RateDialog::value(Field field) const {
    return const_cast<RateDialog*>(this)->slot(field);
}

QString RateDialog::text(Field field) const {
    const auto typed = refused_.constFind(int(field));
    return typed != refused_.constEnd() ? *typed : format(value(field));
}

// Each edited value drives the others through the factor; the factor and the rates are what the
// user states, so an amount never changes a rate except the rial amount typed by hand.
void RateDialog::follow(Field field) {
    RateValues& v = values_;
    switch (field) {
        case Field::MainAmount:
            set(Field::SecondAmount, double(v.mainAmount) * v.factor);
            set(Field::RialAmount, double(v.mainAmount) * v.mainRate);
            break;
        case Field::MainRate:
            if (v.factor != 0) set(Field::SecondRate, double(v.mainRate) / v.factor);
            set(Field::RialAmount, double(v.mainAmount) * v.mainRate);
            break;
        case Field::Factor:
            set(Field::SecondAmount, double(v.mainAmount) * v.factor);
            if (v.factor != 0) set(Field::SecondRate, double(v.mainRate) / v.factor);
            break;
        case Field::SecondAmount:
            if (v.factor == 0) break;
            set(Field::MainAmount, double(v.secondAmount) / v.factor);
            set(Field::RialAmount, double(v.mainAmount) * v.mainRate);
            break;
        case Field::SecondRate:
            set(Field::MainRate, double(v.secondRate) * v.factor);
            set(Field::RialAmount, double(v.mainAmount) * v.mainRate);
            break;
        case Field::RialAmount:
            if (v.mainAmount != 0) {
                set(Field::MainRate, double(v.rialAmount) / v.mainAmount);
                if (v.factor != 0) set(Field::SecondRate, double(v.mainRate) / v.factor);
            } else if (v.mainRate != 0) {
                set(Field::MainAmount, double(v.rialAmount) / v.mainRate);
                set(Field::SecondAmount, double(v.mainAmount) * v.factor);
            }
            break;
    }
}

bool RateDialog::edit(Field field, const QString& text) {
    const tr::persian::AmountReading reading = tr::persian::readAmount(text, kRules);
    if (!reading.ok()) {
        refused_.insert(int(field), text);
        return false;
    }
    refused_.remove(int(field));
    slot(field) = static_cast<float>(reading.value);
    follow(field);
    return true;
}

bool RateDialog::refuseTyped(Field field) {
    const QString typed = refused_.value(int(field));
    messages_.show(tr::persian::amountRefusal(tr::persian::readAmount(typed, kRules), typed, kRules),
                   QStringLiteral("1ER"));
    return false;
}

bool RateDialog::leave(Field field) {
    if (refused_.contains(int(field))) return refuseTyped(field);
    const bool guarded =
        field == Field::MainRate || field == Field::Factor || field == Field::SecondRate;
    if (guarded && value(field) == 0) {
        slot(field) = 1;
        follow(field);
        messages_.show(field == Field::MainRate ? QStringLiteral("نرخ ارز نبايد صفر باشد !")
                                                : QStringLiteral("ضريب تبديل نبايد صفر باشد !"),
                       QStringLiteral("1ER"));
        return false;
    }
    // The rate derived from a typed rial amount is rounded, so the rial amount is brought back
    // to amount x rate once the user is done with it.
    if (field == Field::RialAmount) {
        set(Field::RialAmount, double(values_.mainAmount) * values_.mainRate);
    }
    return true;
}

std::optional<RateValues> RateDialog::cmdOkClick() {
    if (!refused_.isEmpty()) {
        refuseTyped(Field(refused_.constBegin().key()));
        return std::nullopt;
    }
    set(Field::RialAmount, double(values_.mainAmount) * values_.mainRate);
    if (values_.mainAmount == 0 || values_.rialAmount == 0) {
        messages_.show(QStringLiteral("مبالغ تعيين نشده است !"), QStringLiteral("1ER"));
        return std::nullopt;
    }
    return values_;
}

float RateDialog::round2(double value) {
    return static_cast<float>(tr::persian::roundAmount(value, 2));
}

QString RateDialog::format(float value) {
    return tr::persian::formatAmount(double(value), 2);
}

}  // namespace tr::currency
