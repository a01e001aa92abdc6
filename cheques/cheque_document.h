#pragma once
// The logic of a cheque document, received ("دريافت چک", kind 71) or paid ("پرداخت چك", 81): the
// header, the cheque grid and the counterparty grid over ##<prefix>_Taraf with their row checks,
// the counterparty lines kept in step with their cheque, and loading, saving (normal or opening
// cheques) and deleting through the kind's procedure, each in one transaction. A side's own
// rules come from its subclass (received_cheque_document.h, cheque_payment_document.h, and
// permit_document.h, a payment written up for approval that keeps its documents elsewhere).
#include <QString>
#include <optional>

#include "common/db/query.h"
#include "common/db/scoped_temp_table.h"
#include "common/dialog/message_dialog.h"
#include "common/session/services.h"
#include "currency/rates.h"
#include "vouchers/document_kinds.h"

namespace tr::currency {
class CounterCurrencyPrompt;
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

// What tells the two sides apart besides their row rules.
struct ChequeDocumentSide {
    const tr::vouchers::TreasuryDocumentKind& kind;  // title, procedure, form key
    QString chequeSuffix;                             // ##<prefix><suffix> holds the cheques
    QString chequeColumns;                            // its columns
    tr::currency::Screen currencyScreen;              // default rate side, account currency set
    QString logTitle;                                 // the action log's title
    QString openingTitle;                             // ASNADACTIONS title of an opening save
    QString notThere;                                 // a serial the book lacks
    QString dueWord;                                  // "راس چك": "دريافتي" / "پرداختي"
    bool invoices = false;                            // cheques may pay sales invoices
    bool payment = false;                             // the paying side's wording and checks
    bool ledger = true;                               // posts a voucher (a permit does not)
};

class ChequeDocument {
  public:
    static const QString kMultiInvoiceNote;  // "اين شماره سريال چند فاکتوري است"

    ChequeDocument(const tr::Services& services, const ChequeDocumentSide& side);
    virtual ~ChequeDocument();
    ChequeDocument(const ChequeDocument&) = delete;
    ChequeDocument& operator=(const ChequeDocument&) = delete;

    const ChequeDocumentSide& side() const { return side_; }

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
    // A saved serial of the kind into the grids; refused with the message when there is none.
    bool open(const QString& serial);
    // "تاييد" (or "چکاولدوره" when `opening`): the checks in order, then one transaction for the
    // procedure's call and the action log. A refusal leaves the grids as they were.
    bool save(bool opening = false);
    // "حذف": refused while a cheque of the document has moved; then the log row and the delete.
    bool remove();
    // "راس چك": the weighted due date of the cheques, shown as the rules word it.
    std::optional<int> weightedDueDays();
    void showWeightedDueDate();

  protected:
    // The side's checks of the cheque row being posted (its BeforePost), in the side's order.
    virtual bool checkCheque(tr::db::Query& row) = 0;
    // The row's amount cells read from their typed text; false (and said) when one is no amount.
    bool readAmounts(tr::db::Query& row);
    // The side's checks before the save's own, and its writes inside the save's or the delete's
    // transaction (after the call).
    virtual bool checkBeforeSave(bool /*opening*/) { return true; }
    virtual void alsoOnSave(bool /*opening*/) {}
    virtual void alsoOnDelete() {}
    // What a new cheque row starts with besides the payee "حامل".
    virtual void startCheque(tr::db::Query& /*row*/) {}
    // Where the side keeps its documents. The cheque documents keep theirs in the treasury book
    // under their kind and hold their serials while open; another side overrides these.
    virtual bool savedSerial(qint64 serial);
    virtual QString newSerial();
    virtual void holdSerial(const QString& serial);
    // After the load's call: the header as the book has it.
    virtual void readSavedHeader();
    // A new document was started (after the grids were emptied and the header set), or a saved
    // one opened.
    virtual void started() {}
    virtual void opened() {}
    // Inside the save's transaction, before the procedure's call: e.g. the serial a new document
    // is saved under, when the side takes it only then.
    virtual void beforeCall(bool /*isNew*/) {}
    // The delete's refusals before its confirmation (shown; false to stop) and its mode.
    virtual bool checkBeforeDelete();
    virtual QString deleteMode() const;
    // The refusal shown to a user without the right to save (empty: the button is simply off).
    virtual QString noSaveRightMessage(bool opening) const;
    // What the side shows besides the base's header, kept before a write and put back when the
    // write fails.
    virtual QString sideState() const { return {}; }
    virtual void restoreSideState(const QString& /*state*/) {}
    // Pieces of a row check.
    void valueCurrencyCheque(tr::db::Query& row);
    bool twiceInDocument(tr::db::Query& row, const QString& number, const QString& series) const;
    // The row's number and the payee "حامل" when left empty.
    void completeCheque(tr::db::Query& row);
    tr::db::Connection& connection() const { return *services_.database->Connection; }
    bool refuse(const QString& message);
    const QString& kindSql() const { return kindSql_; }

    const ChequeDocumentSide& side_;
    QString kindSql_;  // the kind as SQL text

  private:
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
        QString loadedDate, invoiceNote, side;
    };
    ScreenState screenState() const;
    // After a write that failed: the screen as it was, its grids read again from the work tables
    // the rollback put back.
    void restore(const ScreenState& state);
    void logAction(bool opening, const QString& type, const QString& voucherNo);

    tr::Services services_;

  protected:
    tr::dialog::Messages messages_;

  private:
    QString prefix_;
    tr::db::ScopedTempTable chequeTable_;
    tr::db::ScopedTempTable counterpartyTable_;
    tr::db::Query cheques_;
    tr::db::Query counterparties_;

  protected:
    ChequeDocumentHeader header_;
    LowerAccount lower_;
    DocumentMode mode_ = DocumentMode::New;

  private:
    QString historyTable_;
    QString rights_;
    QString invoiceNumber_;
    QString invoiceNote_;
    QString loadedDate_;  // the issue date as saved, for the moved-cheque check
    bool opening_ = false;  // the loaded document is an opening-cheque one
    bool saved_ = false;
};

}  // namespace tr::cheques
