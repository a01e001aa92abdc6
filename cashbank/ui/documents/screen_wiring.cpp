#include "cashbank/ui/documents/screen_wiring.h"

#include "cashbank/search/document_pickers.h"
#include "cashbank/settlement/invoice_settlement.h"
#include "cashbank/ui/printing/document_printing.h"
#include "cashbank/ui/search/document_search_form.h"
#include "cashbank/ui/settlement/cash_in_factor_dialog.h"

namespace tr::cashbank::ui {

namespace {

QString serialOf(CashBankDocument& d) { return d.document().header().serial.trimmed(); }

}  // namespace

ScreenWiring::ScreenWiring(CashBankDocument& logic, QWidget* form) : logic_(logic), form_(form) {
    logic_.pickDocument = [](CashBankDocument& d) {
        return tr::cashbank::pickDocument(d.services(), d.screen().kindCode);
    };
    logic_.printDocument = [this](CashBankDocument& d, tr::cashbank::PrintLayout layout) {
        printDocument(d.services(), d.screen().kindCode, serialOf(d), layout, PrintTarget::preview(),
                      form_);
    };
    logic_.printVoucher = [this](CashBankDocument& d) {
        tr::cashbank::ui::printVoucher(d.services(), d.screen().kindCode, serialOf(d), PrintTarget::preview(), form_);
    };
    logic_.designPrint = [this](CashBankDocument& d) {
        designDocumentPrint(d.services(), d.screen().kindCode, serialOf(d), form_);
    };
    logic_.openSearch = [this](CashBankDocument&) { openSearch(); };
    if (!logic_.screen().hasInvoice) return;
    // Settlement binds to the screen's N_Global, which the logic makes on its first show.
    logic_.documentCreated = [this](CashBankDocument& d) {
        settlement_ = std::make_unique<InvoiceSettlement>(d.services(), d.document());
    };
    logic_.documentReleasing = [this](CashBankDocument&) { settlement_.reset(); };
    logic_.prepareForInvoice = [this](CashBankDocument&, const QString& invoice) {
        if (!settlement_) return;
        settlement_->setInvoiceNumber(invoice);
        if (!invoice.trimmed().isEmpty()) settlement_->prepareForInvoice(invoice);
    };
    logic_.openSettlement = [this](CashBankDocument&) {
        if (settlement_) openSettlementDialog(*settlement_, form_);
    };
}

ScreenWiring::~ScreenWiring() {
    logic_.documentCreated = nullptr;
    logic_.documentReleasing = nullptr;
    settlement_.reset();
}

void ScreenWiring::openSearch() {
    if (search_) {
        search_->raise();
        search_->activateWindow();
        return;
    }
    const tr::Services& services = logic_.services();
    const QString kind = logic_.screen().kindCode;
    QWidget* search = nullptr;
    if (kind == QLatin1String("40")) search = new TTankhahSearchForm(services, form_);
    else if (kind == QLatin1String("50")) search = new TVarizSearchForm(services, form_);
    else if (kind == QLatin1String("90")) search = new TBardashtSearchForm(services, form_);
    else if (kind == QLatin1String("60")) search = new THavalehSearchForm(services, form_);
    else search = new TCashSearchForm(services, form_);
    search->setWindowFlag(Qt::Window);
    search->setAttribute(Qt::WA_DeleteOnClose);
    search->show();
    search_ = search;
}

}  // namespace tr::cashbank::ui
