#include "common/ui/date_boxes.h"

#include <QLineEdit>
#include <QRegularExpressionValidator>

namespace tr::ui {

QLineEdit* digitsBox(QWidget* owner, int width, const QString& pattern) {
    auto* edit = new QLineEdit(owner);
    edit->setValidator(new QRegularExpressionValidator(QRegularExpression(pattern), edit));
    edit->setFixedWidth(width);
    edit->setAlignment(Qt::AlignCenter);
    return edit;
}

DateBoxes dateBoxes(QWidget* owner, const QString& name, int dayWidth, int yearWidth) {
    DateBoxes d{digitsBox(owner, dayWidth, QStringLiteral("\\d{0,2}")),
                digitsBox(owner, dayWidth, QStringLiteral("\\d{0,2}")),
                digitsBox(owner, yearWidth, QStringLiteral("\\d{0,4}"))};
    if (!name.isEmpty()) {
        d.day->setObjectName(QStringLiteral("ed%1Day").arg(name));
        d.month->setObjectName(QStringLiteral("ed%1Month").arg(name));
        d.year->setObjectName(QStringLiteral("ed%1Year").arg(name));
    }
    return d;
}

QLineEdit* maskedDateBox(QWidget* owner, const QString& name) {
    auto* box = new QLineEdit(owner);
    if (!name.isEmpty()) box->setObjectName(name);
    box->setInputMask(QStringLiteral("0000/00/00;_"));
    return box;
}

QString maskedDate(const QLineEdit* box) {
    const QString text = box->text().trimmed();
    return QString(text).remove(QLatin1Char('/')).trimmed().isEmpty() ? QString() : text;
}

}  // namespace tr::ui
