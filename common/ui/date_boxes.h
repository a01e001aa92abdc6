#pragma once
// The three digit boxes in which the search windows take a Persian date (day, month, year), and
// the box for digits they are made of.
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

}  // namespace tr::ui
