#pragma once
// MyDate, the host's Persian-date service: date validation, the fiscal-period check (which tells
// the user through the message box), month names, conversion, today's date, clock texts, and the
// handlers that keep day and month edit fields in range.
#include <QObject>
#include <QString>

#include "host/sdk/sdk_export.h"

class QLineEdit;

namespace tr::dialog {
class MessageDialog;
}

namespace tr {
struct Global;
}

namespace tr::sdk {

using tr::Global;

class TR_SDK_EXPORT MyDate : public QObject {
    Q_OBJECT
  public:
    // The fiscal period is read from `global` at every check, so a new login takes effect at once.
    explicit MyDate(const Global* global = nullptr, tr::dialog::MessageDialog* dialog = nullptr,
                    QObject* parent = nullptr);

    void setGlobal(const Global* global) { global_ = global; }
    void setDialog(tr::dialog::MessageDialog* dialog) { dialog_ = dialog; }

    bool isValidDate(const QString& date) const;
    // False, after telling the user ("1ER"), when the date lies outside the fiscal period.
    bool checkInFiscalPeriod(const QString& date) const;
    QString monthName(int month) const;
    // "DD/MM/YYYY" by the suite's own fixed-offset rule.
    QString persianToGregorian(const QString& date) const;
    // Today in the Persian calendar, "YYYY/MM/DD".
    QString today() const;
    QString timeText() const;
    QString timeStamp() const;

    // Day fields: above 31 becomes 31 while typing; on leaving, below 1 becomes 1, and a single
    // digit gets a leading zero. Month fields the same with 12.
    void attachDayField(QLineEdit* edit) const;
    void attachMonthField(QLineEdit* edit) const;

  private:
    const Global* global_;
    tr::dialog::MessageDialog* dialog_;
};

}  // namespace tr::sdk
