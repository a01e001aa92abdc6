#include "cashbank/ui/documents/screen_wiring.h"

#include "cashbank/search/document_pickers.h"
#include "cashbank/ui/documents/cash_bank_form.h"
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
    logic_.openSettlement = [this](CashBankDocument&) {
        if (InvoiceSettlement* settlement = settlement_.settlement())
            openSettlementDialog(*settlement, form_);
    };
}

ScreenWiring::~ScreenWiring() = default;

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
    // A row of this screen's own kind opens here; the others in a window of their screen.
    auto* form = static_cast<DocumentSearchForm*>(search);
    form->search().openDocument = [this, form](const QString& kind, const QString& serial) -> std::optional<bool> {
        if (kind != logic_.screen().kindCode) return form->openInWindow(kind, serial);
        return static_cast<TCashBankForm*>(form_)->openSerial(serial);
    };
    search->setWindowFlag(Qt::Window);
    search->setAttribute(Qt::WA_DeleteOnClose);
    search->show();
    search_ = search;
}

}  // namespace tr::cashbank::ui
