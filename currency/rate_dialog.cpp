#include "currency/rate_dialog.h"

#include <cfenv>
#include <cmath>

namespace tr::currency {

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
    return format(value(field));
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

void RateDialog::edit(Field field, const QString& text) {
    slot(field) = parse(text);
    follow(field);
}

bool RateDialog::leave(Field field) {
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
    set(Field::RialAmount, double(values_.mainAmount) * values_.mainRate);
    if (values_.mainAmount == 0 || values_.rialAmount == 0) {
        messages_.show(QStringLiteral("مبالغ تعيين نشده است !"), QStringLiteral("1ER"));
        return std::nullopt;
    }
    return values_;
}

float RateDialog::round2(double value) {
    // nearbyint rounds in the current mode; the default mode is to nearest, ties to even.
    const int previous = std::fegetround();
    std::fesetround(FE_TONEAREST);
    const double rounded = std::nearbyint(value * 100.0) / 100.0;
    std::fesetround(previous);
    return static_cast<float>(rounded);
}

float RateDialog::parse(const QString& text) {
    QString plain;
    plain.reserve(text.size());
    for (const QChar c : text) {
        const ushort u = c.unicode();
        if (u >= 0x06F0 && u <= 0x06F9) plain += QChar(u'0' + (u - 0x06F0));       // Persian
        else if (u >= 0x0660 && u <= 0x0669) plain += QChar(u'0' + (u - 0x0660));  // Arabic
        else if (u == 0x066B) plain += QLatin1Char('.');                           // ٫
        else if (c == QLatin1Char(',') || u == 0x066C || c.isSpace()) continue;
        else plain += c;
    }
    bool ok = false;
    const double value = plain.toDouble(&ok);
    return ok ? static_cast<float>(value) : 0.0f;
}

QString RateDialog::format(float value) {
    QString digits = QString::number(double(value), 'f', 2);
    if (digits.endsWith(QLatin1String(".00"))) digits.chop(3);
    else if (digits.contains(QLatin1Char('.')) && digits.endsWith(QLatin1Char('0'))) digits.chop(1);
    const bool negative = digits.startsWith(QLatin1Char('-'));
    if (negative) digits.remove(0, 1);
    const int point = digits.indexOf(QLatin1Char('.'));
    for (int i = (point < 0 ? digits.size() : point) - 3; i > 0; i -= 3) {
        digits.insert(i, QLatin1Char(','));
    }
    return negative ? QLatin1Char('-') + digits : digits;
}

}  // namespace tr::currency
