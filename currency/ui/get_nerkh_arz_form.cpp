#include "currency/ui/get_nerkh_arz_form.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "host/sdk/modal_runner.h"
#include "host/sdk/persian_font.h"

namespace tr::currency::ui {

namespace {

constexpr RateDialog::Field kFields[] = {
    RateDialog::Field::MainAmount,   RateDialog::Field::MainRate,
    RateDialog::Field::Factor,       RateDialog::Field::SecondAmount,
    RateDialog::Field::SecondRate,   RateDialog::Field::RialAmount,
};

const char* fieldObjectName(RateDialog::Field field) {
    switch (field) {
        case RateDialog::Field::MainAmount:
            return "txtArzCount";
        case RateDialog::Field::MainRate:
            return "txtNerkh";
        case RateDialog::Field::Factor:
            return "txtZarib";
        case RateDialog::Field::SecondAmount:
            return "txtArzCount2";
        case RateDialog::Field::SecondRate:
            return "txtNerkh2";
        case RateDialog::Field::RialAmount:
            return "txtRialValue";
    }
    return "";
}

// No field is being typed into: every field shows its value.
constexpr auto kNone = static_cast<RateDialog::Field>(-1);

}  // namespace

TGetNerkhArzForm::TGetNerkhArzForm(tr::dialog::Messages messages, const RateRequest& request,
                                   QWidget* parent)
    : QDialog(parent), logic_(messages, request) {
    setObjectName(QStringLiteral("GetNerkhArzForm"));
    setWindowTitle(RateDialog::title());
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(12));

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    // Digits, separators and one decimal point, in Latin, Persian or Arabic-Indic digits.
    const QRegularExpression number(QStringLiteral("[0-9\u06F0-\u06F9\u0660-\u0669,\u066C]*"
                                                   "([.\u066B][0-9\u06F0-\u06F9\u0660-\u0669]*)?"));
    int row = 0;
    for (const Field field : kFields) {
        auto* caption = new QLabel(logic_.caption(field), this);
        auto* edit = new QLineEdit(this);
        edit->setObjectName(QLatin1String(fieldObjectName(field)));
        edit->setMaxLength(20);
        edit->setLayoutDirection(Qt::LeftToRight);
        edit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        edit->setValidator(new QRegularExpressionValidator(number, edit));
        edit->setMinimumWidth(170);
        edit->setEnabled(logic_.enabled(field));
        edit->installEventFilter(this);
        caption->setBuddy(edit);
        grid->addWidget(caption, row, 0);
        grid->addWidget(edit, row, 1);
        if (field == Field::MainAmount) {
            auto* name = new QLabel(logic_.mainName(), this);
            name->setObjectName(QStringLiteral("lblArzNam"));
            grid->addWidget(name, row, 2);
        }
        labels_.insert(field, caption);
        edits_.insert(field, edit);
        connect(edit, &QLineEdit::textEdited, this, [this, field](const QString& text) {
            logic_.edit(field, text);
            showValues(field);
        });
        ++row;
    }
    grid->setColumnStretch(1, 1);

    cmdOk_ = new QPushButton(QStringLiteral("تاييد"), this);
    cmdOk_->setObjectName(QStringLiteral("cmdOk"));
    cmdOk_->setDefault(true);
    cmdCancel_ = new QPushButton(QStringLiteral("انصراف"), this);
    cmdCancel_->setObjectName(QStringLiteral("cmdCancel"));
    connect(cmdOk_, &QPushButton::clicked, this, [this] { cmdOkClick(); });
    connect(cmdCancel_, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOk_);
    buttons->addWidget(cmdCancel_);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->addLayout(grid);
    layout->addSpacing(8);
    layout->addLayout(buttons);

    showValues(kNone);
}

void TGetNerkhArzForm::showValues(Field except) {
    for (const Field field : kFields) {
        if (field != except) edits_.value(field)->setText(logic_.text(field));
    }
}

bool TGetNerkhArzForm::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut && !guarding_) {
        // A message box or another window taking focus is not the user leaving the field.
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
            for (const Field field : kFields) {
                QLineEdit* edit = edits_.value(field);
                if (edit != watched) continue;
                guarding_ = true;
                const bool stay = !logic_.leave(field);
                showValues(kNone);
                if (stay) edit->setFocus(Qt::OtherFocusReason);
                guarding_ = false;
                break;
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

void TGetNerkhArzForm::cmdOkClick() {
    result_ = logic_.cmdOkClick();
    showValues(kNone);
    if (result_) accept();
}

std::optional<RateValues> TGetNerkhArzForm::ask() {
    result_.reset();
    if (tr::sdk::ModalRunner::current().exec(*this) != QDialog::Accepted) return std::nullopt;
    return result_;
}

std::optional<RateValues> GetNerkhArzPrompt::askRate(const RateRequest& request) {
    TGetNerkhArzForm form(messages_, request, parent_);
    return form.ask();
}

}  // namespace tr::currency::ui
