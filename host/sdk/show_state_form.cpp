#include "host/sdk/show_state_form.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "host/sdk/persian_font.h"

namespace tr::sdk {

TShowStateForm::TShowStateForm(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint) {
    setObjectName(QStringLiteral("ShowStateForm"));
    setLayoutDirection(Qt::RightToLeft);
    setFont(persianFont(12));
    setModal(false);

    text_ = new QLabel(this);
    text_->setObjectName(QStringLiteral("lbl_State"));
    text_->setMinimumWidth(260);
    text_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    stopButton_ = new QPushButton(QStringLiteral("توقف"), this);
    stopButton_->setObjectName(QStringLiteral("cmdStop"));
    connect(stopButton_, &QPushButton::clicked, this, [this] { stop_ = true; });

    auto* layout = new QHBoxLayout(this);
    layout->addWidget(text_, 1);
    layout->addWidget(stopButton_);
}

void TShowStateForm::showState(const QString& text) {
    stop_ = false;
    setStateText(text);
    show();
    raise();
    QCoreApplication::processEvents();
}

void TShowStateForm::setStateText(const QString& text) {
    text_->setText(text);
}

QString TShowStateForm::stateText() const {
    return text_->text();
}

bool TShowStateForm::stopRequested() {
    QCoreApplication::processEvents();
    return stop_;
}

void TShowStateForm::closeState() {
    hide();
}

}  // namespace tr::sdk
