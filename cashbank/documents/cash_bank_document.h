#pragma once
// CashBankDocument: the headless logic of one cash or bank document screen, configured by its row
// of the screens table. It holds the header as values and the grid over the transfer table, has
// one method per thing the user does, reports through the message adapter and never blocks.
#include <QList>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <memory>
#include <optional>

#include "cashbank/documents/cash_bank_screens.h"
#include "common/grid/grid_state.h"
#include "common/session/services.h"
#include "printing/print_layout.h"
#include "vouchers/n_global.h"

namespace tr::vouchers {
class GridCommands;
}

namespace tr::cashbank {

using tr::printing::PrintLayout;

// One line of the counter-party panel: an account level of the current grid line.
struct CounterPartyLine {
    QString level;
    QString code;
    QString name;
};

class CashBankDocument {
  public:
    static constexpr int kSerialLength = 6;
    static constexpr int kAmountLength = 12;
    static constexpr int kRateLength = 12;
    // The container whose screens settle sales invoices.
    static inline const QString kInvoiceContainer = QStringLiteral("pnlContent");

    CashBankDocument(const tr::Services& services, ScreenId id);
    ~CashBankDocument();
    CashBankDocument(const CashBankDocument&) = delete;
    CashBankDocument& operator=(const CashBankDocument&) = delete;

    const CashBankScreen& screen() const { return screen_; }
    // The latest session values; a new database connection takes effect at the next show().
    void setServices(const tr::Services& services);
    const tr::Services& services() const { return services_; }

    // ---- Hooks that the printing, search and settlement parts wire in --------------------------
    // The list button and the spin's targets chosen elsewhere: a serial to open, or nothing.
    std::function<std::optional<QString>(CashBankDocument&)> pickDocument;
    // The receipt-style print of the saved document, in the layout chosen beside "تاييد و چاپ".
    std::function<void(CashBankDocument&, PrintLayout)> printDocument;
    std::function<void(CashBankDocument&)> printVoucher;
    std::function<void(CashBankDocument&)> designPrint;
    std::function<void(CashBankDocument&)> openSearch;
    std::function<void(CashBankDocument&)> openSettlement;
    // Invoice mode: what the screen shows for the invoice handed in by the host.
    std::function<void(CashBankDocument&, const QString& invoiceNumber)> prepareForInvoice;
    std::function<void(CashBankDocument&)> importLines;  // the petty cash's spreadsheet import
    // Opening a saved document: how many sales invoices it settles (read in the open's
    // transaction), and the note shown afterwards when there are several.
    std::function<int(CashBankDocument&, const QString& serial)> settledInvoiceCount;
    std::function<void(CashBankDocument&)> noteSeveralInvoices;
    // Anything the form shows may have changed.
    std::function<void()> changed;
    // The screen's N_Global was made (on the first show, or again for another database), and is
    // about to go: helpers bound to it (invoice settlement) follow its life.
    std::function<void(CashBankDocument&)> documentCreated;
    std::function<void(CashBankDocument&)> documentReleasing;

    // ---- Showing ------------------------------------------------------------------------------
    // Every time the form is shown: the transfer table on the session's connection (made at the
    // first show), rights, and invoice mode when the form sits in the invoice container.
    void show(const QString& containerName = {});
    bool isShown() const { return doc_ != nullptr; }
    void setInvoiceNumber(const QString& number) { invoiceNumber_ = number.trimmed(); }
    const QString& invoiceNumber() const { return invoiceNumber_; }
    bool invoiceMode() const { return invoiceMode_; }
    // What the read-only invoice box shows: the number only while settling an invoice.
    QString invoiceText() const { return invoiceMode_ ? invoiceNumber_ : QString(); }

    tr::vouchers::N_Global& document() { return *doc_; }
    const tr::vouchers::N_Global& document() const { return *doc_; }
    tr::db::Query& grid() { return doc_->grid(); }
    const tr::vouchers::DocumentHeader& header() const { return doc_->header(); }
    tr::vouchers::DocumentState state() const { return doc_->state(); }
    bool cancelled() const { return doc_->cancelled(); }
    QString caption() const { return doc_->caption(); }
    // The header box a refusal asks the form to focus.
    tr::vouchers::HeaderField focus() const;
    // The grid cell a refused line asks the form to focus ("" for the description, amount...).
    QString lineFocusField() const;

    // Header edits, grid edits or a typed amount not yet saved since the document was opened,
    // saved or started.
    bool hasUnsavedChanges() const;
    // Before the screen closes (or the host with it): true when nothing is unsaved or the user
    // saved or discarded it (discarding starts a new document); false keeps the screen open.
    bool confirmLeave();
    static const QString kUnsavedQuestion;
    static const QString kDiscardWarning;

    bool canSave() const;
    bool canDelete() const;
    bool canCancel() const;
    bool canPrint() const;
    QString cancelCaption() const;

    // ---- Header -------------------------------------------------------------------------------
    void serialEnter();
    void setSerial(const QString& text);
    // Opens the document of the serial when one is saved under it; whether it opened one.
    bool serialLeave();
    bool spinNext();
    bool spinPrevious();
    bool listButtonClick();
    // Opens a saved document of this kind (the search's way in); false when there is none.
    bool openSerial(const QString& serial);

    static bool isDateCharacter(QChar c) { return c.isDigit(); }
    // Typing clamps, leaving pads; both answer what the box now shows.
    QString dayTyped(const QString& text);
    QString dayLeave(const QString& text);
    QString monthTyped(const QString& text);
    QString monthLeave(const QString& text);
    void setYear(const QString& text);
    // Leaving any of the three date boxes: an impossible date (1404/07/31) is refused there, and
    // focus() names the box at fault.
    bool dateLeave();

    void setReferenceNumber(const QString& text);
    void setJoz(const QString& text);
    void setDepositor(const QString& text);
    void setRemitter(const QString& name, const QString& bank, const QString& branchCode,
                     const QString& branchName);
    // The remitter's bank drop-down.
    QStringList bankNames() const;

    // The code typed into the treasury-side box (cash box, holder, bank account number).
    void treasuryCodeEntered(const QString& typed);
    // Double-click or key on the box: its list.
    bool pickTreasury();
    // "نرخ تبديل به ريال" takes input only for a document in a foreign currency.
    bool rateEnabled() const { return doc_->currencyDocument(); }
    // The currency name a new line of a foreign-currency document carries.
    const QString& currencyName() const { return currencyName_; }

    void setDescription(const QString& text);
    void setAmountText(const QString& text);
    void setRateText(const QString& text);
    // The boxes' texts: the value, or the text as typed while it does not read as an amount.
    QString amountText() const;
    QString rateText() const;
    QString amountInWords() const;
    // Leaving the amount or rate box; false (with the reason shown) while its text is refused.
    bool amountLeave();

    // Leaving the header for the grid: serial, number and date; false keeps the user there.
    bool headerLeave();

    // ---- Grid ---------------------------------------------------------------------------------
    // A new line at the end; in a currency document it carries the document's currency and rate.
    void appendLine();
    // Posts the line being edited; false (with the message shown) keeps it in edit.
    bool postLine();
    // The list of an account or funds cell; whether the line took a code.
    bool pickCell(const QString& field);
    // A cell the user typed into; an account cell brings its fixed description, when the line
    // has none yet.
    void cellEdited(const QString& field);
    void accountCellChanged();
    double sum() const;
    QString sumText() const;
    // The name of the current line's source (or use) of funds.
    QString fundsName();
    QString counterPartyName();
    QList<CounterPartyLine> counterParty();

    // ---- Grid menu ----------------------------------------------------------------------------
    void helpClick();
    void newDocumentClick();
    void searchClick();
    bool saveColumns(const tr::grid::GridColumns& grid);
    void resetColumns();
    bool restoreColumns(tr::grid::GridColumns& grid);
    bool copyRowAbove();
    // The grid as tab-separated lines under its titles, for the clipboard.
    QString clipboardText();
    void rememberRow();
    bool restoreRow();
    void rememberCell(const QString& field);
    bool restoreCell(const QString& field);
    bool pickFixedDescriptionForLine();
    bool pickFixedDescriptionForDescription();
    bool deleteLine();
    void settlementClick();
    void importClick();
    void designPrintClick();
    void printClick();
    void printVoucherClick();
    QString reportPropertiesCaption() const;

    // ---- Buttons ------------------------------------------------------------------------------
    PrintLayout printLayout = PrintLayout::New;
    bool cmdOkClick();
    bool cmdOkPrintClick();
    bool cmdDelClick();
    // "ابطال", or "برگشت از ابطال" on a cancelled document.
    bool cmdAbtalClick();

    static QString helpText();
    // What the last save, cancel, undo or delete did, for the screen's status line (without a
    // dialog); it stays while the user goes on to the next document, and a refused action of
    // those four empties it.
    const QString& statusText() const { return statusText_; }

  private:
    void bind();
    void notify();
    bool stepSerial(bool forward);
    // The calendar's rule, then (withPeriod) the fiscal period; false after the message.
    bool checkDate(bool withPeriod = true);
    QString currencyNameOf() const;
    void applyCurrencyName();
    void applyCurrencyDefaults();
    void fillCurrency(tr::db::Query& line);
    void fillLineDefaults(tr::db::Query& line);
    // One-line text rule on the header boxes and the line description; false after the message.
    bool checkHeaderText();
    bool checkLineText(tr::db::Query& line);
    QList<CounterPartyLine> accountLines(const tr::vouchers::LineAccount& line) const;
    int currentRowIndex();
    bool editCurrentRow();

    tr::Services services_;
    const CashBankScreen& screen_;
    tr::dialog::Messages messages_;
    std::unique_ptr<tr::vouchers::N_Global> doc_;
    tr::db::MyDatabase* boundDatabase_ = nullptr;
    QString openedSerial_;
    QString statusText_;
    tr::vouchers::HeaderField dateFocus_ = tr::vouchers::HeaderField::None;
    tr::vouchers::HeaderField textFocus_ = tr::vouchers::HeaderField::None;
    QString refusedLineField_;  // the cell a refused line returns to
    QString invoiceNumber_;
    bool invoiceMode_ = false;
    QString currencyName_;
    QString openingCurrencyName_;  // read by an open, taken when it commits
    QString amountTyped_;  // refused texts of the amount and rate boxes, empty when they read
    QString rateTyped_;
    std::unique_ptr<tr::vouchers::GridCommands> commands_;  // over doc_'s grid, made with it
};

}  // namespace tr::cashbank
