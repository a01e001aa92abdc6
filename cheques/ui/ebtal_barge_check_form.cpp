#include "cheques/ui/ebtal_barge_check_form.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "common/db/database_error.h"
#include "common/dialog/message_dialog.h"
#include "host/sdk/persian_font.h"

namespace tr::cheques {

namespace {

QLineEdit* box(QWidget* parent, const QString& name) {
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    // Against the reading edge whatever the digits make of the text's direction.
    edit->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    return edit;
}

}  // namespace

TEbtalBargeCheckForm::TEbtalBargeCheckForm(const tr::Services& services, QWidget* parent)
    : QFrame(parent), services_(services), logic_(services) {
    setObjectName(QStringLiteral("EbtalBargeCheckForm"));
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(12));
    // Shown over the screens of its container, not docked among them.
    setFrameStyle(QFrame::Panel | QFrame::Raised);
    setLineWidth(2);
    setAutoFillBackground(true);

    title_ = new QLabel(this);
    title_->setObjectName(QStringLiteral("lblTitle"));
    // The title's leading blanks indent it from the reading edge.
    title_->setAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    title_->setAutoFillBackground(true);
    title_->setForegroundRole(QPalette::HighlightedText);
    title_->setBackgroundRole(QPalette::Highlight);
    title_->setMinimumHeight(28);

    series_ = box(this, QStringLiteral("txtJoz"));
    number_ = box(this, QStringLiteral("txtChqNo"));
    // Digits only, from either keyboard; the logic reads Persian digits as Latin ones.
    number_->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9\u06F0-\u06F9\u0660-\u0669]*")), number_));
    for (QLineEdit* typed : {series_, number_}) connect(typed, &QLineEdit::editingFinished, this, [this] { lookUp(); });
    // The series first: leaving the number then finds the book with both.
    setTabOrder(series_, number_);

    const char* names[] = {"txtBankNam", "txtShobehNam", "txtAcountCod", "txtKollNam", "txtMoeinNam",
                           "txtTafsilyNam", "txtTafsily2Nam", "txtProjectNam"};
    for (const char* name : names) {
        QLineEdit* shown = box(this, QString::fromLatin1(name));
        shown->setReadOnly(true);
        shown->setFocusPolicy(Qt::NoFocus);
        // Read from the book, not typed: drawn on the window's colour.
        QPalette palette = shown->palette();
        palette.setColor(QPalette::Base, palette.color(QPalette::Window));
        shown->setPalette(palette);
        shown_ << shown;
    }

    auto* fields = new QGridLayout;
    fields->setHorizontalSpacing(8);
    fields->addWidget(new QLabel(QStringLiteral("سري"), this), 0, 0);
    fields->addWidget(series_, 0, 1);
    fields->addWidget(new QLabel(QStringLiteral("شماره چك "), this), 0, 2);
    fields->addWidget(number_, 0, 3);
    const QString captions[] = {QStringLiteral("بانك"), QStringLiteral("شعبه"), QStringLiteral("شماره حساب"),
                                QStringLiteral("كل"),   QStringLiteral("معين"), QStringLiteral("تفصيلي"),
                                QStringLiteral("مركز هزينه"), QStringLiteral("پروژه")};
    for (int i = 0; i < shown_.size(); ++i) {
        fields->addWidget(new QLabel(captions[i], this), i + 1, 0);
        fields->addWidget(shown_[i], i + 1, 1, 1, 3);
    }
    fields->setColumnStretch(1, 1);
    fields->setColumnStretch(3, 2);

    confirm_ = new QPushButton(this);
    confirm_->setObjectName(QStringLiteral("cmdOk"));
    cancel_ = new QPushButton(QStringLiteral("انصراف"), this);
    cancel_->setObjectName(QStringLiteral("cmdCancel"));
    connect(confirm_, &QPushButton::clicked, this, [this] {
        takeValues();
        guarded([this] { return logic_.confirm(); });
        lookedUp_ = logic_.number() + QLatin1Char('\n') + logic_.series();
        showBook();
    });
    connect(cancel_, &QPushButton::clicked, this, &QWidget::hide);
    for (QPushButton* button : {confirm_, cancel_}) button->setMinimumWidth(120);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(confirm_);
    buttons->addWidget(cancel_);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 8);
    layout->addWidget(title_);
    layout->addLayout(fields);
    layout->addStretch(1);
    layout->addLayout(buttons);

    setVoidMode(true);
    resize(470, 360);
}

void TEbtalBargeCheckForm::setServices(const tr::Services& services) {
    services_ = services;
    logic_.setServices(services);
}

void TEbtalBargeCheckForm::setVoidMode(bool voidMode) {
    logic_.setVoidMode(voidMode);
    title_->setText(logic_.title());
    setWindowTitle(logic_.title().trimmed());
    confirm_->setText(logic_.confirmCaption());
}

void TEbtalBargeCheckForm::showEvent(QShowEvent* event) {
    QFrame::showEvent(event);
    // Over the middle of the container, which a docked screen fills.
    if (QWidget* area = parentWidget(); area && !isWindow())
        move(qMax(0, (area->width() - width()) / 2), qMax(0, (area->height() - height()) / 3));
    if (started_) return;
    started_ = true;
    guarded([this] {
        // The widest leaf the book can keep.
        if (const int width = logic_.numberWidth(); width > 0) number_->setMaxLength(width);
        if (const int width = logic_.seriesWidth(); width > 0) series_->setMaxLength(width);
        return true;
    });
    series_->setFocus();
}

bool TEbtalBargeCheckForm::guarded(const std::function<bool()>& action) {
    try {
        return action();
    } catch (const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
        return false;
    }
}

void TEbtalBargeCheckForm::takeValues() {
    logic_.setNumber(number_->text());
    logic_.setSeries(series_->text());
}

void TEbtalBargeCheckForm::lookUp() {
    takeValues();
    // Leaving a box again, or the message box taking the focus, asks nothing twice.
    const QString typed = logic_.number() + QLatin1Char('\n') + logic_.series();
    if (typed == lookedUp_) return;
    lookedUp_ = typed;
    guarded([this] { return logic_.findBook(); });
    showBook();
}

void TEbtalBargeCheckForm::showBook() {
    const std::optional<LeafBook>& book = logic_.book();
    QStringList values;
    if (book) values << book->bank << book->branch << book->accountNumber << book->accountNames;
    for (int i = 0; i < shown_.size(); ++i) {
        shown_[i]->setText(values.value(i));
        shown_[i]->setCursorPosition(0);
    }
}

}  // namespace tr::cheques
