#pragma once
// The logic of the received-cheque document ("دريافت چک", kind 71): the header, the cheque grid
// over ##<prefix>_Chq and the counterparty grid over ##<prefix>_Taraf with their row checks, the
// counterparty lines kept in step with their cheque, and loading, saving (normal or opening
// cheques) and deleting through sp_N_Asnad_Trans_ChqGet, each in one transaction.
#include <QString>
#include <optional>

#include "common/db/query.h"
#include "common/db/scoped_temp_table.h"
#include "common/dialog/message_dialog.h"
#include "common/session/services.h"

namespace tr::currency {
class CounterCurrencyPrompt;
struct Currency;
}  // namespace tr::currency

namespace tr::cheques {

enum class DocumentMode { New, Edit };

struct ChequeDocumentHeader {
    QString serial;
    QString date;       // issue date, "yyyy/mm/dd"
    QString voucherNo;  // read-only, after a save or load
    QString userName;   // read-only
};

// The account typed in the lower box: written into the counterparty lines of the cheque posted.
struct LowerAccount {
    QString koll, moein, tafsily, tafsily2, projectCod;
    bool empty() const { return koll.trimmed().isEmpty(); }
};

class ReceivedChequeDocument {
  public:
    static const QString kTitle;     // "دريافت چک"
    static const QString kFormKey;   // "N_A_CHQGET_"
    static const QString kKind;      // "71"
    static const QString kMultiInvoiceNote;  // "اين شماره سريال چند فاکتوري است"

    explicit ReceivedChequeDocument(const tr::Services& services);
    ~ReceivedChequeDocument();
    ReceivedChequeDocument(const ReceivedChequeDocument&) = delete;
    ReceivedChequeDocument& operator=(const ReceivedChequeDocument&) = delete;

    const tr::Services& services() const { return services_; }
    DocumentMode mode() const { return mode_; }
    ChequeDocumentHeader& header() { return header_; }
    LowerAccount& lowerAccount() { return lower_; }
    tr::db::Query& cheques() { return cheques_; }
    tr::db::Query& counterparties() { return counterparties_; }
    const QString& prefix() const { return prefix_; }
    QString chequeTable() const { return chequeTable_.name(); }
    QString counterpartyTable() const { return counterpartyTable_.name(); }
    // "ثبت" or "اصلاح", with "(به روزآوري شده است)" after a save.
    QString caption() const;
    // The user's rights prefixes on the form key; a command without its right does nothing.
    const QString& rights() const { return rights_; }
    bool canSave(bool opening = false) const;
    bool canDelete() const;
    bool openingDocument() const { return opening_; }

    // The sales invoice the screen was opened for: the document already tied to it is loaded,
    // or a new one started. Empty: none.
    void setInvoiceNumber(const QString& number);
    const QString& invoiceNumber() const { return invoiceNumber_; }
    // The invoice the loaded serial is tied to, kMultiInvoiceNote for several, or empty.
    const QString& invoiceNote() const { return invoiceNote_; }

    // Leaving the date boxes: a valid date inside the fiscal period, and not a new one for a
    // document whose cheques have moved since. False after the message.
    bool checkDate();
    // The currency of the cheque being edited ("انتخاب ارز"): its code, name and the latest
    // buying rate. False when the user cancels or the currency has no rate.
    bool chooseChequeCurrency();
    bool setChequeCurrency(const tr::currency::Currency& currency);
    // The currencies a counterparty line is settled in, asked of `prompt` over the document's
    // cheques; the line's amount becomes their value in rials.
    bool askCounterpartyCurrencies(tr::currency::CounterCurrencyPrompt& prompt);
    // Whether a row of either grid carries a currency: the save then goes to the _Arzi twin.
    bool currencyDocument() const;

    // A new document: empty grids, the next serial taken and held, the date of the period.
    void newDocument();
    // "انصراف": the saved document again, or a new one when it was never saved.
    void cancelEdits();
    // A new cheque row at the end (payee "حامل"); posting it runs the row checks.
    void appendCheque();
    bool postCheque();
    // The running totals of the two grids ("جمع بدهکار", "جمع بستانکار").
    double debitTotal() const;
    double creditTotal() const;
    // A saved serial of kind 71 into the grids; refused with the message when there is none.
    bool open(const QString& serial);
    // "تاييد" (or "چکاولدوره" when `opening`): the checks in order, then one transaction for the
    // procedure's call and the action log. A refusal leaves the grids as they were.
    bool save(bool opening = false);
    // "حذف": refused while a cheque of the document has moved; then the log row and the delete.
    bool remove();
    // "راس چك": the weighted due date of the cheques, shown as the rules word it.
    std::optional<int> weightedDueDays();
    void showWeightedDueDate();

  private:
    tr::db::Connection& connection() const { return *services_.database->Connection; }
    bool refuse(const QString& message);
    bool checkCheque(tr::db::Query& row);
    bool checkInvoiceAllocation(tr::db::Query& row, const QString& number, const QString& series);
    bool checkCounterparty(tr::db::Query& row);
    // The first cheque of the document moved since it was received (empty: none).
    QString firstMovedCheque() const;
    QString procedure() const;
    void readInvoiceNote();
    void keepCounterpartyInStep(tr::db::Query& row);
    void reload();
    // What the screen shows besides the grids; a write that fails puts it back.
    struct ScreenState {
        ChequeDocumentHeader header;
        LowerAccount lower;
        DocumentMode mode;
        bool opening, saved;
        QString loadedDate, invoiceNote;
    };
    ScreenState screenState() const;
    // After a write that failed: the screen as it was, its grids read again from the work tables
    // the rollback put back.
    void restore(const ScreenState& state);
    void logAction(bool opening, const QString& type, const QString& voucherNo);

    tr::Services services_;
    tr::dialog::Messages messages_;
    QString prefix_;
    tr::db::ScopedTempTable chequeTable_;
    tr::db::ScopedTempTable counterpartyTable_;
    tr::db::Query cheques_;
    tr::db::Query counterparties_;
    ChequeDocumentHeader header_;
    LowerAccount lower_;
    QString historyTable_;
    QString rights_;
    QString invoiceNumber_;
    QString invoiceNote_;
    QString loadedDate_;  // the issue date as saved, for the moved-cheque check
    DocumentMode mode_ = DocumentMode::New;
    bool opening_ = false;  // the loaded document is an opening-cheque one
    bool saved_ = false;
};

}  // namespace tr::cheques
