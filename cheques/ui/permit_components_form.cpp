#include "cheques/ui/permit_components_form.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include "common/db/database_error.h"
#include "common/dialog/message_dialog.h"
#include "common/persian/amount.h"
#include "common/ui/dataset_model.h"
#include "host/sdk/persian_font.h"

namespace tr::cheques {

const QString PermitComponentsForm::kCaption = QStringLiteral("مقداردهي عوامل مجوز");

PermitComponentsForm::PermitComponentsForm(const tr::Services& services, PermitDocument& permit, QWidget* parent)
    : QDialog(parent), services_(services), components_(permit) {
    setObjectName(QStringLiteral("PermitComponentsForm"));
    setWindowTitle(kCaption);
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(12));
    guarded([this] {
        components_.open();
        return true;
    });
    model_ = new tr::ui::DatasetModel(&components_.rows(), this);
    model_->setErrorHandler([this](const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
    });
    const QList<QPair<QString, QString>> columns = {{QStringLiteral("PMojavezNam"), QStringLiteral("عوامل مجوز پرداخت چك")},
                                                    {QStringLiteral("Sign"), QStringLiteral("علامت")},
                                                    {QStringLiteral("Nerkh"), QStringLiteral("نرخ")},
                                                    {QStringLiteral("FactValue"), QStringLiteral("مبلغ")}};
    model_->setFieldReadOnly(QStringLiteral("PMojavezNam"));
    model_->setFieldReadOnly(QStringLiteral("Sign"));  // Space turns it
    model_->setFieldFormat(QStringLiteral("FactValue"), [](const QVariant& v) {
        return v.isNull() ? QString() : tr::persian::formatAmount(v.toDouble());
    });
    grid_ = new QTableView(this);
    grid_->setObjectName(QStringLiteral("dbgFact"));
    grid_->setModel(model_);
    grid_->setLayoutDirection(Qt::RightToLeft);
    grid_->verticalHeader()->setDefaultSectionSize(24);
    grid_->installEventFilter(this);
    const auto arrange = [this, columns] {
        for (int c = 0; c < model_->columnCount(); ++c) grid_->setColumnHidden(c, true);
        for (int i = 0; i < columns.size(); ++i) {
            const int c = model_->fieldColumn(columns[i].first);
            model_->setTitle(columns[i].first, columns[i].second);
            grid_->setColumnHidden(c, false);
            grid_->setColumnWidth(c, i == 0 ? 220 : i == 3 ? 140 : 70);
            grid_->horizontalHeader()->moveSection(grid_->horizontalHeader()->visualIndex(c), i);
        }
        showTotals();
    };
    connect(model_, &QAbstractItemModel::modelReset, this, arrange);
    connect(model_, &QAbstractItemModel::dataChanged, this, [this] {
        model_->refresh();
        showTotals();
    }, Qt::QueuedConnection);
    arrange();

    totals_ = totals_ ? totals_ : new QLabel(this);
    totals_->setObjectName(QStringLiteral("lblSum"));
    auto* ok = new QPushButton(QStringLiteral("تاييد"), this);
    auto* cancel = new QPushButton(QStringLiteral("انصراف"), this);
    connect(ok, &QPushButton::clicked, this, [this] { confirm(); });
    connect(cancel, &QPushButton::clicked, this, [this] { discard(); });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(totals_, 1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(grid_, 1);
    layout->addLayout(buttons);
    resize(620, 300);
    showTotals();
}

bool PermitComponentsForm::guarded(const std::function<bool()>& action) {
    try {
        return action();
    } catch (const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
        return false;
    }
}

void PermitComponentsForm::showTotals() {
    if (!totals_) totals_ = new QLabel(this);
    double cheques = 0, components = 0;
    guarded([&] {
        cheques = components_.chequeTotal();
        components = components_.componentTotal();
        return true;
    });
    totals_->setText(QStringLiteral("جمع عوامل ") + tr::persian::formatAmount(components) + QStringLiteral("     مبلغ چك ") +
                     tr::persian::formatAmount(cheques));
}

void PermitComponentsForm::confirm() {
    if (guarded([this] { return components_.apply(); })) accept();
}

void PermitComponentsForm::discard() {
    guarded([this] {
        components_.discard();
        return true;
    });
    reject();
}

bool PermitComponentsForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grid_ && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Space && model_->fieldName(grid_->currentIndex().column()) == QLatin1String("Sign")) {
            guarded([&] {
                model_->setCurrentRow(grid_->currentIndex().row());
                return components_.toggleSign();
            });
            model_->refresh();
            showTotals();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace tr::cheques
