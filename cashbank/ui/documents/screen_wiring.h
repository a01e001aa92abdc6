#pragma once
// Connects a cash or bank screen's logic to the parts it calls through hooks: the document
// picker, printing, the searches and, for the receipt and the deposit, invoice settlement, whose
// helper lives exactly as long as the screen's N_Global.
#include <QPointer>
#include <QWidget>
#include <memory>

#include "cashbank/documents/cash_bank_document.h"
#include "cashbank/settlement/document_settlement.h"

namespace tr::cashbank {
namespace ui {

class ScreenWiring {
public:
    ScreenWiring(CashBankDocument& logic, QWidget* form);
    ~ScreenWiring();
    ScreenWiring(const ScreenWiring&) = delete;
    ScreenWiring& operator=(const ScreenWiring&) = delete;

    InvoiceSettlement* settlement() { return settlement_.settlement(); }

private:
    void openSearch();

    CashBankDocument& logic_;
    QWidget* form_;
    DocumentSettlement settlement_{logic_};
    QPointer<QWidget> search_;
};

}  // namespace ui
}  // namespace tr::cashbank
