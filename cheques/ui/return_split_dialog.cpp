#include "cheques/ui/return_split_dialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "common/persian/amount.h"
#include "host/sdk/persian_font.h"

namespace tr::cheques {

const QString ReturnSplitDialog::kCaption = QStringLiteral("انتخاب طرف حساب جهت برگشت چک");

ReturnSplitDialog::ReturnSplitDialog(ReceivedChequeActions& actions, QWidget* parent)
    : QDialog(parent), actions_(actions) {
    setObjectName(QStringLiteral("ReturnSplitForm"));
    setWindowTitle(kCaption);
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(12));
    const QList<ReturnLine> lines = actions_.returnLines();
    table_ = new QTableWidget(int(lines.size()), 4, this);
    table_->setHorizontalHeaderLabels({QStringLiteral("سرفصل"), QStringLiteral("شرح"), QStringLiteral("بدهكار"),
                                       QStringLiteral("مبلغ برگشت")});
    for (int row = 0; row < lines.size(); ++row) {
        const ReturnLine& line = lines[row];
        QStringList account;
        for (const QString& level : line.account)
            if (!level.isEmpty()) account << level;
        auto fixed = [](const QString& text) {
            auto* item = new QTableWidgetItem(text);
            item->setFlags(item->flags() & ~Qt::ItemIsEditable);
            return item;
        };
        table_->setItem(row, 0, fixed(account.join(QLatin1Char('-'))));
        table_->setItem(row, 1, fixed(line.des));
        table_->setItem(row, 2, fixed(tr::persian::formatAmount(line.credited)));
        // The whole credit by default: the usual return gives each line back what it gave.
        table_->setItem(row, 3, new QTableWidgetItem(tr::persian::formatAmount(line.newValue > 0 ? line.newValue
                                                                                                  : line.credited)));
    }
    table_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(QStringLiteral("تاييد"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QStringLiteral("انصراف"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &ReturnSplitDialog::confirm);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(table_);
    layout->addWidget(buttons);
    resize(560, 260);
}

void ReturnSplitDialog::confirm() {
    QStringList typed;
    for (int row = 0; row < table_->rowCount(); ++row) typed << table_->item(row, 3)->text();
    if (actions_.splitReturnTyped(typed)) accept();
}

}  // namespace tr::cheques
