#include "cheques/ui/chq_pay_form.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

#include "cheques/ui/chq_get_menus.h"
#include "cheques/ui/search/cheque_search_form.h"
#include "cheques/ui/chq_get_slct_form.h"
#include "common/persian/amount.h"
#include "common/ui/dataset_model.h"
#include "cheques/ui/cheque_leaf_printing.h"
#include "cheques/ui/cheque_payment_printing.h"

namespace tr::cheques {

namespace {

const QList<QPair<QString, QString>>& paymentColumns() {
    static const QList<QPair<QString, QString>> columns = {
        {QStringLiteral("ChqStateNam"), QStringLiteral("وضعيت")},   {QStringLiteral("AcountCod"), QStringLiteral("شماره حساب")},
        {QStringLiteral("AcountNam"), QStringLiteral("بانك")},      {QStringLiteral("ChqNo"), QStringLiteral("شماره چك")},
        {QStringLiteral("Joz"), QStringLiteral("سري")},             {QStringLiteral("ChqValue"), QStringLiteral("مبلغ")},
        {QStringLiteral("SarResidDate"), QStringLiteral("سررسيد")}, {QStringLiteral("ChqGetter"), QStringLiteral("در وجه")},
        {QStringLiteral("Des"), QStringLiteral("شرح")},             {QStringLiteral("Koll"), QStringLiteral("كل")},
        {QStringLiteral("Moein"), QStringLiteral("معين")},          {QStringLiteral("Tafsily"), QStringLiteral("تفصيلي")},
        {QStringLiteral("Havaleh"), QStringLiteral("بحوالهکرد")},   {QStringLiteral("Tazmin"), QStringLiteral("تضميني")},
        {QStringLiteral("MojavezValue"), QStringLiteral("مبلغ مجوز")}, {QStringLiteral("FactValue"), QStringLiteral("مبلغ عوامل")},
        {QStringLiteral("ArzNam"), QStringLiteral("ارز")},
        {QStringLiteral("ArzCount"), QStringLiteral("مقدار ارز")},  {QStringLiteral("Nerkh"), QStringLiteral("نرخ")}};
    return columns;
}

}  // namespace

TChqPayForm::TChqPayForm(const tr::Services& services, QWidget* parent)
    : TChqPayForm(services, std::make_unique<ChequePaymentDocument>(services), paymentColumns(), parent) {
    setObjectName(QStringLiteral("ChqPayForm"));
}

TChqPayForm::TChqPayForm(const tr::Services& services, std::unique_ptr<ChequePaymentDocument> doc,
                         QList<QPair<QString, QString>> chequeColumns, QWidget* parent)
    : TChqGetForm(services, std::move(doc), std::move(chequeColumns), parent) {
    permit_ = new QLineEdit(this);
    permit_->setObjectName(QStringLiteral("txtMojavez"));
    permit_->setMaximumWidth(80);
    balance_ = new QLabel(this);
    balance_->setObjectName(QStringLiteral("txtRemBank"));
    balance_->setMinimumWidth(140);
    balance_->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    permitLabel_ = new QLabel(QStringLiteral("مجوز پرداخت"), this);
    headerRow()->insertWidget(headerRow()->count() - 1, permitLabel_);
    headerRow()->insertWidget(headerRow()->count() - 1, permit_);
    headerRow()->insertWidget(headerRow()->count() - 1, new QLabel(QStringLiteral("مانده حساب بانكي"), this));
    headerRow()->insertWidget(headerRow()->count() - 1, balance_);
    // Leaving the permit's box: the permit checked and its rows taken.
    connect(permit_, &QLineEdit::editingFinished, this, [this] {
        if (permit_->text().trimmed() == payment().permitSerial()) return;
        if (!guarded([this] { return payment().setPermit(permit_->text()); })) permit_->setText(payment().permitSerial());
        chequeModel()->refresh();
        showValues();
    });
    // "تاييد و برداشت": the save, then the withdrawal of our own cheques due on its date.
    withdraw_ = new QPushButton(QStringLiteral("تاييد و برداشت"), this);
    withdraw_->setObjectName(QStringLiteral("cmdOkBardasht"));
    buttonRow()->insertWidget(buttonRow()->indexOf(saveButton()), withdraw_);
    connect(withdraw_, &QPushButton::clicked, this, [this] {
        if (saveDocument()) guarded([this] { return payment().withdrawDue(); });
        showValues();
    });
    chequeModel()->setFieldReadOnly(QStringLiteral("ChqStateNam"));
    chequeModel()->setFieldReadOnly(QStringLiteral("AcountNam"));
    for (const QString& field : {QStringLiteral("MojavezValue"), QStringLiteral("FactValue")}) {
        chequeModel()->setFieldReadOnly(field);
        chequeModel()->setFieldFormat(field, [](const QVariant& v) {
            return v.isNull() ? QString() : tr::persian::formatAmount(v.toDouble());
        });
    }
    // Ctrl+P prints the voucher, as on the receipt; "چاپ پرداخت چک …" the document itself.
    menus()->hooks.printDocument = [this] {
        if (document().mode() != DocumentMode::Edit) return;
        guarded([this] {
            return ui::printChequePaymentVoucher(this->services(), document().header().serial,
                                                 ui::PrintTarget::preview(), this);
        });
    };
    menus()->hooks.printPaper = [this] { printDocument(); };
    menus()->hooks.search = [this] { openChequeSearch(ChequeSide::Issued, this->services(), this); };
    menus()->hooks.designPrint = [this] {
        guarded([this] { return ui::designChequePaymentPrint(this->services(), document().header().serial, this); });
    };
    // Our own leaves on the bank's cheque leaves, moved by the company's printer offsets.
    menus()->hooks.printLeaves = [this] {
        if (document().mode() != DocumentMode::Edit) return;
        guarded([this] {
            return ui::printChequeLeaves(this->services(), document().header().serial,
                                         ui::PrintTarget::preview(), this,
                                         storedLeafOffsets(this->services().connection()));
        });
    };
    menus()->hooks.designLeaves = [this] {
        guarded([this] { return ui::designChequeLeaves(this->services(), document().header().serial, this); });
    };
}

bool TChqPayForm::chequeKey(QTableView* grid, QKeyEvent* key) {
    if (grid != chequeGrid() || key->modifiers() != Qt::NoModifier) return false;
    const QString field = chequeModel()->fieldName(grid->currentIndex().column());
    bool taken = false;
    if (key->key() == Qt::Key_Space && field == QLatin1String("ChqStateNam")) {
        taken = guarded([this] { return payment().toggleChequeState(); }) || true;
    } else if ((key->key() == Qt::Key_F2 || key->key() == Qt::Key_F3) &&
               (field == QLatin1String("AcountCod") || field == QLatin1String("AcountNam"))) {
        guarded([this] { return payment().chooseBankAccount(); });
        taken = true;
    } else if ((key->key() == Qt::Key_F2 || key->key() == Qt::Key_F3) &&
               (field == QLatin1String("ChqNo") || field == QLatin1String("Joz")) &&
               chequeModel()->data(chequeModel()->index(grid->currentIndex().row(),
                                                        chequeModel()->fieldColumn(QStringLiteral("ChqStateNam"))))
                   .toString()
                   .contains(QStringLiteral("خرج"))) {
        pickSpentCheques();
        taken = true;
    }
    if (taken) {
        chequeModel()->refresh();
        chequeRowShown();
        showValues();
    }
    return taken;
}

void TChqPayForm::pickSpentCheques() {
    if (!chqGetSlctFrm) chqGetSlctFrm = new TChqGetSlctFrm(services(), nullptr);
    // The cheques already on the payment are not offered again.
    QStringList onThePayment;
    tr::db::Query& rows = document().cheques();
    const int number = rows.fieldIndex(QStringLiteral("ChqNo"));
    const int series = rows.fieldIndex(QStringLiteral("Joz"));
    for (int i = 0; i < rows.RecordCount(); ++i)
        onThePayment << rows.value(i, number).toString().trimmed() + QLatin1Char('_') + rows.value(i, series).toString().trimmed();
    std::optional<QList<QPair<QString, QString>>> chosen;
    guarded([&] {
        chosen = chqGetSlctFrm->ask(onThePayment);
        return true;
    });
    if (!chosen) return;
    // The first goes into the row being typed when it has no number yet; the others follow it.
    for (const auto& [chequeNumber, chequeSeries] : *chosen) {
        const bool emptyRow = rows.state() != tr::db::Query::State::Browse &&
                              rows.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed().isEmpty();
        if (!emptyRow && !guarded([this] { return document().postCheque(); })) break;
        if (!guarded([&] { return payment().spendCheque(chequeNumber, chequeSeries); })) break;
    }
    chequeModel()->refresh();
    showValues();
}

void TChqPayForm::showPaymentValues() {
    if (!permit_->hasFocus()) permit_->setText(payment().permitSerial());
}

void TChqPayForm::chequeRowShown() {
    std::optional<double> balance;
    guarded([&] {
        balance = payment().bankBalance();
        return true;
    });
    balance_->setText(balance ? tr::persian::formatAmount(*balance) : QString());
}

void TChqPayForm::printDocument() {
    if (document().mode() != DocumentMode::Edit) return;
    const QString serial = document().header().serial;
    guarded([&] {
        const ui::PrintLayout layout = newLayoutChosen() ? ui::PrintLayout::New : ui::PrintLayout::Old;
        return ui::printChequePaymentDocument(services(), serial, layout, ui::PrintTarget::preview(), this);
    });
}

}  // namespace tr::cheques
