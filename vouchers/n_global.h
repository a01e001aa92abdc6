#pragma once
// N_Global: the controller of one cash or bank document screen, configured by its kind. It keeps
// the header values and the transfer table the grid edits, and opens, saves, cancels, un-cancels
// and deletes the document through the kind's procedure. Refusals are messages ("1ER") that leave
// the grid, the transfer table and the database as they were. QtCore only; never blocks itself.
#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "common/db/query.h"
#include "common/dialog/message_dialog.h"
#include "common/session/services.h"
#include "vouchers/account_checks.h"
#include "vouchers/document_kinds.h"
#include "vouchers/transfer_table.h"

namespace tr::vouchers {

enum class DocumentState { New, Edit };
// The header box a refusal asks the screen to focus. Date is the date as a whole (its day box);
// Month and Year name the box of an invalid date that is at fault.
// Des1 to Des4 are the depositor or the remitter's boxes of the bank screens.
enum class HeaderField {
    None,
    Serial,
    Date,
    Month,
    Year,
    ReferenceNumber,
    TreasuryCode,
    Description,
    Amount,
    Joz,
    Des1,
    Des2,
    Des3,
    Des4
};

// The header values a screen gives the controller (and gets back when a document is opened).
struct DocumentHeader {
    QString serial;
    QString day, month, year;
    QString voucherNo;        // SanadNo, read-only on the screen
    QString referenceNumber;  // AtfCh
    QString joz;              // part number of the bank documents' reference
    QString treasuryCode;     // cash box, petty-cash holder or bank account (N_BankHesab.AcountID)
    QString treasuryDisplayCode;  // what the code box shows (the bank's AcountCod)
    QString treasuryName;
    QString description;
    double amount = 0;  // in the document's currency when it has one
    double rate = 0;    // conversion rate to rials, currency documents only
    QString currency;   // empty: rials
    QString des1, des2, des3, des4;
    QString userName;  // who saved the document

    // year/month/day from the three boxes, day and month padded to two digits.
    QString date() const;
    void setDate(const QString& yearMonthDay);
};

class N_Global {
  public:
    // Creates the transfer table and opens the grid on it, in state NEW.
    N_Global(const tr::Services& services, const TreasuryDocumentKind& kind);
    // Releases the user's holds of the kind and drops the screen's temporary tables.
    ~N_Global();
    N_Global(const N_Global&) = delete;
    N_Global& operator=(const N_Global&) = delete;

    const TreasuryDocumentKind& kind() const { return kind_; }
    const QString& transferTable() const { return transferTable_; }
    const QString& historyTable() const { return historyTable_; }
    tr::db::Query& grid() { return grid_; }
    DocumentHeader& header() { return header_; }
    const DocumentHeader& header() const { return header_; }
    DocumentState state() const { return state_; }
    bool cancelled() const { return cancelled_; }
    // The opened document is held by another user (this user's hold was not taken).
    bool heldByAnotherUser() const { return heldByAnother_; }
    HeaderField focus() const { return focus_; }
    // The user's rights prefixes on the kind's form key ("A_N_E_D_...").
    const QString& rights() const { return rights_; }
    bool currencyDocument() const;

    // "ثبت " or "اصلاح ".
    QString stateCaption() const;
    // kCancelledMark, "(به روزآوري شده است)" or empty.
    const QString& captionSuffix() const { return captionSuffix_; }
    // How a cancelled document is marked: after the caption, above the lines and on the print.
    static inline const QString kCancelledMark = QStringLiteral("(ابطال شده است)");
    QString caption() const { return stateCaption() + kind_.title + captionSuffix_; }

    // Length of the screen's description box; the serial appended on saving stays inside it.
    int descriptionMaxLength = 200;

    // The chart-of-accounts check of a grid line; false refuses the line (it shows its message).
    // Starts as the chart's whole-line check; a screen may replace it.
    std::function<bool(tr::db::Query& line)> accountCheck;
    // The account cell the last refused line asks the screen to focus.
    AccountLevel lineFocus() const { return lineFocus_; }
    // Saving step 10: links of a receipt or deposit to sales invoices.
    std::function<void(N_Global&)> writeInvoiceLinks;
    // After a delete: undo the document's invoice settlement.
    std::function<void(N_Global&)> undoInvoiceSettlement;

    // Opening a document: `readOnOpen` runs inside the open's transaction, after the header is
    // read, for what the screen reads alongside it; `opened` runs once the open has committed.
    std::function<void(N_Global&)> readOnOpen;
    std::function<void(N_Global&)> opened;

    // A new document: empty grid, header cleared except the date, state NEW. `fill` (the lines a
    // new document starts with) runs in the same transaction; a failure leaves the screen and the
    // transfer table on the document shown before.
    void newDocument(const std::function<void()>& fill = {});
    // Entering the serial box in state NEW: takes and holds the next serial, writes it to the
    // header.
    QString fillNextSerial();
    bool documentExists(const QString& serial) const;
    // Loads the saved document `serial` (false when there is none), state EDIT. The user's holds,
    // the transfer table, the header read-back and `alsoRead` are one transaction: a failure
    // leaves the database and the screen on the document shown before.
    bool openDocument(const QString& serial, const std::function<void()>& alsoRead = {});
    // Fills name, display code and currency of the header's treasury-side code.
    void describeTreasurySide();

    // Leaving the header for the grid: serial and reference number are required.
    bool checkHeader();
    // Before a grid line is posted (the grid's BeforePost).
    bool checkLine(tr::db::Query& line);

    bool save();            // the confirm command
    // After a save refused as unbalanced: the header's amount and the lines' sum.
    struct Imbalance {
        double header = 0;
        double lines = 0;
    };
    const std::optional<Imbalance>& imbalance() const { return imbalance_; }
    bool cancelDocument();  // ABTAL, dated by the header's date boxes
    bool undoCancel();      // RET_EBTAL
    bool deleteDocument();  // DELETE

    // Whether the header or the lines differ from what was last opened, saved or started (the
    // serial a new document is handed, the voucher number and the user are not the user's work).
    bool modified() const;
    // What the screen now shows becomes the unmodified state.
    void markUnmodified();

    // Total of the grid's amount column.
    double gridSum() const;

    // Shared routines.
    static bool isCancelled(tr::db::Connection& connection, const QString& kind,
                            const QString& serial);
    static double sum(tr::db::Connection& connection, const QString& field, const QString& table,
                      const QString& condition = QString());

    // What the book holds of the opened document when this screen last read or wrote it: its
    // rows in the action log and whether it is cancelled. Another screen's save, delete, cancel
    // or undo changes it.
    struct BookVersion {
        qint64 actions = 0;
        bool cancelled = false;
        bool operator==(const BookVersion&) const = default;
    };
    // `knownUncancelled`: the caller has just saved the document, which a cancelled one refuses.
    BookVersion readBookVersion(bool knownUncancelled = false) const;
    // The refusal when another screen or user changed the document since this one opened it.
    static QString changedInBookMessage(const QString& user, const QString& when);

  private:
    // What the screen shows; an action that fails with a database error puts it back, while its
    // transaction puts the database back.
    struct Snapshot {
        DocumentHeader header;
        tr::db::Query grid;
        DocumentState state;
        bool cancelled;
        bool heldByAnother;
        QString captionSuffix;
    };
    class FailureRestore;

    tr::db::Connection& connection() const { return services_.connection(); }
    tr::db::MyDatabase& database() const { return *services_.database; }
    QString userNumber() const;
    bool refuse(const QString& text, HeaderField field = HeaderField::None);
    void reopenGrid();
    void clearTransferTable();
    ProcedureArguments arguments(const QString& formState = QString()) const;
    QString call(DocumentAction action, const ProcedureArguments& arguments) const;
    void loadIntoTransferTable(const QString& serial);
    bool readHeader(const QString& serial);
    void readTreasuryLine(const QString& serial);
    void appendSerialToDescription();
    void copyVoucherAside(bool bySerial);
    void logAction(const QString& type);
    // Cancel or undo-cancel, then whether the document is now cancelled; nothing when another
    // screen changed the document first (the refusal is shown).
    std::optional<bool> runAndRecheckCancelled(DocumentAction action);
    QString voucherDate() const;
    // The lines as one text, whatever their order on screen.
    QString linesText() const;
    // Inside the action's transaction: false, after the message naming who changed it and when,
    // when the opened document is no longer what this screen read.
    bool unchangedInBook();

    tr::Services services_;
    const TreasuryDocumentKind& kind_;
    tr::dialog::Messages messages_;
    QString transferTable_;
    QString historyTable_;
    tr::db::Query grid_;
    DocumentHeader header_;
    DocumentState state_ = DocumentState::New;
    bool cancelled_ = false;
    bool heldByAnother_ = false;
    HeaderField focus_ = HeaderField::None;
    std::optional<Imbalance> imbalance_;
    QString rights_;
    QString captionSuffix_;
    BookVersion bookVersion_;
    DocumentHeader unmodifiedHeader_;
    QString unmodifiedLines_;
    QVariant deletedRaj_;
    AccountLevel lineFocus_ = AccountLevel::None;
};

}  // namespace tr::vouchers
