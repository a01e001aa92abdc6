#include "cashbank/settlement/document_settlement.h"

namespace tr::cashbank {

DocumentSettlement::DocumentSettlement(CashBankDocument& logic) : logic_(logic) {
    if (!logic_.screen().hasInvoice) return;
    logic_.documentCreated = [this](CashBankDocument& d) {
        settlement_ = std::make_unique<InvoiceSettlement>(d.services(), d.document());
    };
    logic_.documentReleasing = [this](CashBankDocument&) { settlement_.reset(); };
    logic_.settledInvoiceCount = [this](CashBankDocument&, const QString& serial) {
        return settlement_ ? settlement_->settledInvoiceCount(serial) : 0;
    };
    logic_.noteSeveralInvoices = [this](CashBankDocument&) {
        if (settlement_) settlement_->noteMultiInvoice();
    };
    logic_.prepareForInvoice = [this](CashBankDocument&, const QString& invoice) {
        if (!settlement_) return;
        // An empty number (a screen shown for plain documents) clears the one kept before; an
        // invoice is taken by a successful prepare only.
        if (invoice.trimmed().isEmpty())
            settlement_->setInvoiceNumber(QString());
        else
            settlement_->prepareForInvoice(invoice);
    };
}

DocumentSettlement::~DocumentSettlement() {
    if (!logic_.screen().hasInvoice) return;
    logic_.documentCreated = nullptr;
    logic_.documentReleasing = nullptr;
    logic_.prepareForInvoice = nullptr;
    logic_.settledInvoiceCount = nullptr;
    logic_.noteSeveralInvoices = nullptr;
    settlement_.reset();
}

}  // namespace tr::cashbank
