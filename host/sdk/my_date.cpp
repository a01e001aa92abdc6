#include "host/sdk/my_date.h"

#include <QCalendar>
#include <QDate>
#include <QLineEdit>

#include "common/clock.h"
#include "common/dialog/message_dialog.h"
#include "common/persian/persian_date.h"
#include "host/sdk/global.h"

namespace tr::sdk {

namespace {

// Replaces the text only when the rule changes it, so typing keeps its cursor position.
void applyRule(QLineEdit* edit, QString (*rule)(const QString&)) {
    const QString fixed = rule(edit->text());
    if (fixed != edit->text()) edit->setText(fixed);
}

void attach(QLineEdit* edit, QString (*clamp)(const QString&), QString (*pad)(const QString&)) {
    QObject::connect(edit, &QLineEdit::textEdited, edit, [edit, clamp] { applyRule(edit, clamp); });
    QObject::connect(edit, &QLineEdit::editingFinished, edit,
                     [edit, pad] { applyRule(edit, pad); });
}

}  // namespace

MyDate::MyDate(const Global* global, tr::dialog::MessageDialog* dialog, QObject* parent)
    : QObject(parent), global_(global), dialog_(dialog) {}

bool MyDate::isValidDate(const QString& date) const {
    return tr::persian::isValidDate(date);
}

bool MyDate::checkInFiscalPeriod(const QString& date) const {
    const QString start = global_ ? global_->fiscalStart : QString();
    const QString end = global_ ? global_->fiscalEnd : QString();
    const auto check = tr::persian::checkInPeriod(date, start, end);
    if (check == tr::persian::PeriodCheck::Inside) return true;
    if (dialog_)
        tr::dialog::showMessage(*dialog_, tr::persian::periodMessage(check, start, end), QString(),
                                QStringLiteral("1ER"));
    return false;
}

QString MyDate::monthName(int month) const {
    return tr::persian::monthName(month);
}

QString MyDate::persianToGregorian(const QString& date) const {
    return tr::persian::persianToGregorian(date);
}

QString MyDate::today() const { return tr::persian::today(); }

QString MyDate::timeText() const {
    return tr::timeText();
}

QString MyDate::timeStamp() const {
    return tr::timeStamp();
}

void MyDate::attachDayField(QLineEdit* edit) const {
    attach(edit, &tr::persian::clampDayText, &tr::persian::padDayText);
}

void MyDate::attachMonthField(QLineEdit* edit) const {
    attach(edit, &tr::persian::clampMonthText, &tr::persian::padMonthText);
}

}  // namespace tr::sdk
