#include <QLayout>
#include <QStackedLayout>

#include "entry/screen_entry.h"

namespace tr::entry {

void embed(QWidget* form, QWidget* parent) {
    form->setParent(parent);
    if (parent) {
        QLayout* layout = parent->layout();
        if (!layout) {
            layout = new QStackedLayout(parent);
            layout->setContentsMargins(0, 0, 0, 0);
        }
        if (layout->indexOf(form) < 0) layout->addWidget(form);
        if (auto* stack = qobject_cast<QStackedLayout*>(layout)) stack->setCurrentWidget(form);
    }
    form->setWindowState(form->windowState() | Qt::WindowMaximized);
    form->show();
    form->raise();
}

void attach(QWidget* form, QWidget* parent) {
    form->setParent(parent);
    form->raise();
}

QString invoiceText(const char16_t* number) {
    return number ? QString::fromUtf16(number) : QString();
}

}  // namespace tr::entry
