#pragma once
// The three digit boxes in which the search windows take a Persian date (day, month, year), the
// box for digits they are made of, and the one-box date under a mask the other screens use.
#include <QString>

class QLineEdit;
class QWidget;

namespace tr::ui {

struct DateBoxes {
    QLineEdit *day = nullptr, *month = nullptr, *year = nullptr;
};

// A box that takes what `pattern` allows, `width` pixels wide, centred.
QLineEdit* digitsBox(QWidget* owner, int width, const QString& pattern);
// Day and month of `dayWidth`, a four-digit year of `yearWidth`; named ed<name>Day, ed<name>Month
// and ed<name>Year when `name` is given.
DateBoxes dateBoxes(QWidget* owner, const QString& name = {}, int dayWidth = 34, int yearWidth = 50);

// A box for a whole date through the mask "0000/00/00": the user types the digits alone.
QLineEdit* maskedDateBox(QWidget* owner, const QString& name = {});
// The date a masked box holds, "yyyy/mm/dd"; empty when only the mask's slashes are left.
QString maskedDate(const QLineEdit* box);

}  // namespace tr::ui
