#pragma once
// The logic of the rate dialog ("دريافت نرخ ارز"): a main currency amount and its rate to rials,
// a conversion factor to a second currency with that currency's amount and rate, and the rial
// amount, kept so that rial amount = main amount x main rate. Values are single precision.
#include <QHash>
#include <QString>
#include <optional>

#include "common/dialog/message_dialog.h"

namespace tr::currency {

struct RateValues {
    float mainAmount = 0;
    float mainRate = 0;    // rials per unit of the main currency
    float factor = 1;      // units of the second currency per unit of the main one
    float secondAmount = 0;
    float secondRate = 0;  // rials per unit of the second currency
    float rialAmount = 0;
};

// What a calling screen opens the dialog with.
struct RateRequest {
    QString mainName;
    QString secondName;  // empty: no second currency
    RateValues values;
};

// Lets a screen's logic ask for a currency amount and rate without knowing the window.
class RatePrompt {
  public:
    virtual ~RatePrompt() = default;
    // The confirmed values, or nothing when the user cancels.
    virtual std::optional<RateValues> askRate(const RateRequest& request) = 0;
};

class RateDialog {
  public:
    enum class Field { MainAmount, MainRate, Factor, SecondAmount, SecondRate, RialAmount };

    RateDialog(tr::dialog::Messages messages, const RateRequest& request);

    static QString title();
    // The caption before a field; the second currency's captions carry its name.
    QString caption(Field field) const;
    const QString& mainName() const { return request_.mainName; }
    bool hasSecondCurrency() const { return !request_.secondName.isEmpty(); }
    // The second currency's fields take input only when there is a second currency.
    bool enabled(Field field) const;

    const RateValues& values() const { return values_; }
    float value(Field field) const;
    // The value as the field shows it: thousands separated, at most two decimals; a text that
    // does not read as an amount is shown as typed.
    QString text(Field field) const;

    // Text typed into a field: the field holds it and the fields that depend on it follow. A
    // text that is not an amount is kept as typed and changes nothing (false).
    bool edit(Field field, const QString& text);
    // Leaving a field. False when the field held a zero rate or factor (it now holds 1) or a
    // text that is not an amount: the user has been told, and focus belongs back on the field.
    bool leave(Field field);

    // "تاييد": the values, or nothing (with the message) when no amounts are set or a field
    // holds a text that is not an amount.
    std::optional<RateValues> cmdOkClick();

    // To 10^-2, ties to even, as single precision.
    static float round2(double value);
    static QString format(float value);

  private:
    float& slot(Field field);
    void set(Field field, double value) { slot(field) = round2(value); }
    void follow(Field field);
    bool refuseTyped(Field field);

    tr::dialog::Messages messages_;
    QHash<int, QString> refused_;  // per field, the typed text that does not read
    RateRequest request_;
    RateValues values_;
};

}  // namespace tr::currency
