#include "vouchers/n_global.h"

#include "vouchers/treasury_log.h"

#include <cmath>
#include <exception>

#include "common/clock.h"
#include "common/db/database_error.h"
#include "common/db/query_helpers.h"
#include "common/db/transaction.h"
#include "common/persian/persian_date.h"
#include "common/text/single_line_text.h"
#include "vouchers/rights.h"
#include "vouchers/document_session.h"
#include "vouchers/serials.h"

namespace tr::vouchers {

namespace {

const QString kError = QStringLiteral("1ER");

QString twoDigits(const QString& text) {
    const QString t = text.trimmed();
    return t.size() == 1 ? QStringLiteral("0") + t : t;
}

using tr::db::openQuery;

bool sameAmount(double a, double b) {
    return std::fabs(a - b) < 0.005;
}

}  // namespace

// Takes the screen's snapshot; when an exception leaves the scope, the snapshot is put back.
// A refusal (a plain return) keeps what the action did, as the user saw it.
class N_Global::FailureRestore {
  public:
    explicit FailureRestore(N_Global& screen)
        : screen_(screen),
          snapshot_{screen.header_,    screen.grid_,           screen.state_,
                    screen.cancelled_, screen.heldByAnother_, screen.captionSuffix_},
          exceptions_(std::uncaught_exceptions()) {}
    ~FailureRestore() {
        if (std::uncaught_exceptions() > exceptions_) restore();
    }
    FailureRestore(const FailureRestore&) = delete;
    FailureRestore& operator=(const FailureRestore&) = delete;

    // The grid as it now stands is what a failure goes back to.
    void keepGrid() { snapshot_.grid = screen_.grid_; }
    void restore() {
        screen_.header_ = snapshot_.header;
        screen_.grid_ = snapshot_.grid;
        screen_.state_ = snapshot_.state;
        screen_.cancelled_ = snapshot_.cancelled;
        screen_.heldByAnother_ = snapshot_.heldByAnother;
        screen_.captionSuffix_ = snapshot_.captionSuffix;
        if (screen_.grid_.DataChanged) screen_.grid_.DataChanged(screen_.grid_);
    }

  private:
    N_Global& screen_;
    Snapshot snapshot_;
    int exceptions_;
};

QString DocumentHeader::date() const {
    return year.trimmed() + QLatin1Char('/') + twoDigits(month) + QLatin1Char('/') + twoDigits(day);
}

void DocumentHeader::setDate(const QString& yearMonthDay) {
    const QStringList parts = yearMonthDay.trimmed().split(QLatin1Char('/'));
    year = parts.value(0);
    month = parts.value(1);
    day = parts.value(2);
}

N_Global::N_Global(const tr::Services& services, const TreasuryDocumentKind& kind)
    : services_(services),
      kind_(kind),
      messages_(services.dialog),
      transferTable_(freeWorkTableName(*services.database->Connection, kind.formKey,
                                           services.global->sessionText)),
      historyTable_(historyTableName(transferTable_)),
      grid_(services.database->Connection),
      rights_(rightsPrefixes(services.global->rights, kind.formKey)) {
    createTransferTable(database(), transferTable_);
    accountCheck = [this](tr::db::Query& line) {
        const AccountCheck check = validateLineAccount(services_, LineAccount::fromRow(line));
        lineFocus_ = check.failedLevel;
        return check.accepted();
    };
    grid_.BeforePost = [this](tr::db::Query& line) { return checkLine(line); };
    grid_.BeforeDelete = [this](tr::db::Query& line) {
        deletedRaj_ = line.FieldByName(QStringLiteral("Raj")).Value();
        return true;
    };
    grid_.AfterDelete = [this](tr::db::Query&) {
        // Lines stay numbered from 1 in grid order, as the procedures expect.
        if (deletedRaj_.isValid() && !deletedRaj_.isNull()) {
            tr::db::renumberRows(database(), transferTable_, deletedRaj_.toInt(),
                                 QStringLiteral("DELETE"));
            reopenGrid();
        }
    };
    reopenGrid();
    markUnmodified();
}

QString N_Global::linesText() const {
    QStringList lines;
    const int columns = grid_.fieldNames().size();
    for (int row = 0; row < grid_.RecordCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < columns; ++column)
            cells << grid_.value(row, column).toString();
        lines << cells.join(QChar(0x1F));
    }
    lines.sort();
    return lines.join(QChar(0x1E));
}

bool N_Global::modified() const {
    if (grid_.state() == tr::db::Query::State::Edit ||
        grid_.state() == tr::db::Query::State::Insert)
        return true;
    const DocumentHeader& a = header_;
    const DocumentHeader& b = unmodifiedHeader_;
    const bool sameHeader =
        a.date() == b.date() && a.referenceNumber == b.referenceNumber && a.joz == b.joz &&
        a.treasuryCode.trimmed() == b.treasuryCode.trimmed() && a.description == b.description &&
        a.amount == b.amount && a.rate == b.rate && a.des1 == b.des1 && a.des2 == b.des2 &&
        a.des3 == b.des3 && a.des4 == b.des4;
    return !sameHeader || linesText() != unmodifiedLines_;
}

void N_Global::markUnmodified() {
    unmodifiedHeader_ = header_;
    unmodifiedLines_ = linesText();
}

N_Global::~N_Global() {
    // Nothing may escape a destructor; a lost connection leaves only temporary rows behind.
    try {
        releaseScreenHolds(database(), kind_.code, userNumber());
    } catch (...) {
    }
    try {
        tr::db::execute(database(), dropHistoryTableStatement(connection(), historyTable_));
        dropTransferTable(database(), transferTable_);
    } catch (...) {
    }
}

bool N_Global::currencyDocument() const {
    return kind_.hasCurrencyTwin && !header_.currency.trimmed().isEmpty();
}

QString N_Global::stateCaption() const {
    return documentStateCaption(state_ == DocumentState::New);
}

QString N_Global::userNumber() const {
    return QString::number(services_.global->userNumber);
}

bool N_Global::refuse(const QString& text, HeaderField field) {
    focus_ = field;
    messages_.show(text, kError);
    return false;
}

void N_Global::reopenGrid() {
    grid_.Close();
    grid_.setSql(openTransferTableStatement(transferTable_));
    grid_.Open();
}

void N_Global::clearTransferTable() {
    if (grid_.state() == tr::db::Query::State::Edit ||
        grid_.state() == tr::db::Query::State::Insert)
        grid_.Cancel();
    tr::db::execute(database(), QStringLiteral("Delete From ") + transferTable_);
}

ProcedureArguments N_Global::arguments(const QString& formState) const {
    ProcedureArguments a;
    a.table = transferTable_;
    a.serial = header_.serial.trimmed();
    a.treasuryCode = header_.treasuryCode.trimmed();
    a.referenceNumber = header_.referenceNumber.trimmed();
    a.date = header_.date();
    a.description = header_.description;
    a.userName = services_.global->userName;
    a.formState = formState;
    a.computerName = services_.global->computerName;
    return a;
}

QString N_Global::call(DocumentAction action, const ProcedureArguments& a) const {
    return procedureCall(connection(), kind_, action, a, currencyDocument(), header_.rate,
                         header_.currency.trimmed());
}

void N_Global::newDocument(const std::function<void()>& fill) {
    FailureRestore restore(*this);
    // Only the transfer table changes: nothing here is worth a flush of the disk.
    tr::db::Transaction transaction(connection());
    clearTransferTable();
    reopenGrid();
    const QString day = header_.day, month = header_.month, year = header_.year;
    header_ = DocumentHeader{};
    header_.day = day;
    header_.month = month;
    header_.year = year;
    header_.userName = services_.global->userName;
    state_ = DocumentState::New;
    cancelled_ = false;
    heldByAnother_ = false;
    captionSuffix_.clear();
    focus_ = HeaderField::None;
    if (fill) fill();
    transaction.commit(tr::db::Transaction::Durability::Delayed);
    markUnmodified();
}

QString N_Global::fillNextSerial() {
    if (state_ != DocumentState::New) return header_.serial;
    header_.serial = takeNewSerial(database(), kind_.code, userNumber());
    return header_.serial;
}

bool N_Global::documentExists(const QString& serial) const {
    return !openQuery(connection(),
                      QStringLiteral("Select Top 1 IDX From N_NaghdTrans Where WhatDoc=") +
                          connection().text(kind_.code) + QStringLiteral(" And LTrim(Serial)=") +
                          connection().text(serial.trimmed()))
                .IsEmpty();
}

void N_Global::readTreasuryLine(const QString& serial) {
    tr::db::Connection& c = connection();
    tr::db::Query line = openQuery(
        c, QStringLiteral("Select N.CodWhatDoc, N.Joz, N.Des1, N.Des2, N.Des3, N.Des4 From "
                          "N_NaghdTrans As N Where N.WhatDoc=") +
               c.text(kind_.code) + QStringLiteral(" And LTrim(N.Serial) = ") + c.text(serial) +
               QStringLiteral(" And N.Raj=1"));
    if (line.IsEmpty()) return;
    header_.treasuryCode = line.FieldByName(QStringLiteral("CodWhatDoc")).AsString().trimmed();
    header_.joz = line.FieldByName(QStringLiteral("Joz")).AsString();
    header_.des1 = line.FieldByName(QStringLiteral("Des1")).AsString();
    header_.des2 = line.FieldByName(QStringLiteral("Des2")).AsString();
    header_.des3 = line.FieldByName(QStringLiteral("Des3")).AsString();
    header_.des4 = line.FieldByName(QStringLiteral("Des4")).AsString();
    describeTreasurySide();
    if (kind_.treasuryObject == TreasuryObject::CashBox) {
        // The cash box as the receipt and payment screens have always read it.
        tr::db::Query cash = openQuery(
            c, QStringLiteral("Select N.CodWhatDoc As CashCod, NC.CashNam From N_NaghdTrans As N "
                              "Inner Join N_Cash As NC On (N.CodWhatDoc = NC.CashCod) Where "
                              "N.WhatDoc=") +
                   c.text(kind_.code) + QStringLiteral(" And LTrim(N.Serial) = ") + c.text(serial) +
                   QStringLiteral(" And N.Raj=1"));
        if (!cash.IsEmpty()) {
            header_.treasuryCode = cash.FieldByName(QStringLiteral("CashCod")).AsString().trimmed();
            header_.treasuryName = cash.FieldByName(QStringLiteral("CashNam")).AsString();
        }
    }
}

void N_Global::describeTreasurySide() {
    tr::db::Connection& c = connection();
    const QString code = header_.treasuryCode.trimmed();
    header_.treasuryDisplayCode = code;
    header_.treasuryName.clear();
    header_.currency.clear();
    if (code.isEmpty()) return;
    switch (kind_.treasuryObject) {
        case TreasuryObject::CashBox: {
            tr::db::Query q =
                openQuery(c, QStringLiteral("Select CashNam, ArzCod From N_Cash Where CashCod = ") +
                                 c.text(code));
            if (q.IsEmpty()) return;
            header_.treasuryName = q.FieldByName(QStringLiteral("CashNam")).AsString();
            header_.currency = q.FieldByName(QStringLiteral("ArzCod")).AsString().trimmed();
            return;
        }
        case TreasuryObject::PettyCashHolder: {
            tr::db::Query q = openQuery(
                c,
                QStringLiteral("Select [Name]+' '+Family As PersonNam From Person Where Code = ") +
                    c.text(code));
            if (!q.IsEmpty())
                header_.treasuryName = q.FieldByName(QStringLiteral("PersonNam")).AsString();
            return;
        }
        case TreasuryObject::BankAccount: {
            tr::db::Query q = openQuery(
                c, QStringLiteral(
                       "Select BH.AcountCod, B.BankNam+'-'+S.ShobehNam As BankNam, BH.ArzCod "
                       "From N_BankHesab As BH Left Join N_Bank As B On (B.BankCod = "
                       "BH.BankCod) Left Join N_Shoab As S On (S.BankCod = BH.BankCod And "
                       "S.ShobehCod = BH.ShobehCod) Where Cast(BH.AcountID As "
                       "Varchar(20)) = ") +
                       c.text(code));
            if (q.IsEmpty()) return;
            header_.treasuryDisplayCode = q.FieldByName(QStringLiteral("AcountCod")).AsString();
            header_.treasuryName = q.FieldByName(QStringLiteral("BankNam")).AsString();
            header_.currency = q.FieldByName(QStringLiteral("ArzCod")).AsString().trimmed();
            return;
        }
    }
}

void N_Global::loadIntoTransferTable(const QString& serial) {
    clearTransferTable();
    ProcedureArguments a;
    a.table = transferTable_;
    a.serial = serial;
    tr::db::execute(database(), call(DocumentAction::Load, a));
    reopenGrid();
}

bool N_Global::readHeader(const QString& serial) {
    tr::db::Connection& c = connection();
    const QString side = sideColumn(kind_.treasurySide);
    const bool currency = currencyDocument();
    const QString amount =
        currency ? QStringLiteral("AT.ArzCount As ") + side + QStringLiteral(", AT.Nerkh")
                 : QStringLiteral("A.") + side;
    const QString currencyJoin =
        currency ? QStringLiteral(" Inner Join N_ArzTrans As AT On (AT.IDX = N.IDX)") : QString();
    tr::db::Query q = openQuery(
        c, QStringLiteral("Select A.AtfCh, A.SanadNo, A.SanadDate, A.Des, ") + amount +
               QStringLiteral(", A.User_Name From Asnad As A Inner Join N_NaghdTrans As N On "
                              "(Cast(N.IDX As Varchar(20))=LTrim(A.Document) And "
                              "A.DocToDate='0')") +
               currencyJoin + QStringLiteral(" Where A.TypeSys='N' And A.WhatDoc=") +
               c.text(kind_.code) + QStringLiteral(" And A.") + side +
               QStringLiteral(">0 And LTrim(N.Serial)=") + c.text(serial));
    if (q.IsEmpty()) return false;
    header_.referenceNumber = q.FieldByName(QStringLiteral("AtfCh")).AsString();
    header_.voucherNo = q.FieldByName(QStringLiteral("SanadNo")).AsString();
    header_.setDate(q.FieldByName(QStringLiteral("SanadDate")).AsString());
    header_.description = q.FieldByName(QStringLiteral("Des")).AsString();
    header_.amount = q.FieldByName(side).AsFloat();
    if (currency) header_.rate = q.FieldByName(QStringLiteral("Nerkh")).AsFloat();
    header_.userName = q.FieldByName(QStringLiteral("User_Name")).AsString();
    return true;
}

bool N_Global::openDocument(const QString& serialText, const std::function<void()>& alsoRead) {
    const QString serial = serialText.trimmed();
    if (!documentExists(serial)) return false;
    // The holds, the transfer table and the header switch together or not at all: a failure
    // half-way would leave the new document's hold with the old one's lines, or the reverse.
    // The header is written as it is read; a failure puts the shown one back.
    FailureRestore restore(*this);
    tr::db::Transaction transaction(connection());
    DocumentHeader fresh;
    fresh.serial = serial;
    header_ = fresh;
    // The treasury side first: its currency decides which of the kind's procedures loads it.
    readTreasuryLine(serial);
    const bool held = holdOpenedDocument(database(), kind_.code, serial, userNumber());
    loadIntoTransferTable(serial);
    readHeader(serial);
    const bool cancelled = isCancelled(connection(), kind_.code, serial);
    if (readOnOpen) readOnOpen(*this);
    if (alsoRead) alsoRead();
    const BookVersion version = readBookVersion();
    // Holds and the transfer table are worth nothing after a crash: no flush of the disk.
    transaction.commit(tr::db::Transaction::Durability::Delayed);
    heldByAnother_ = !held;
    state_ = DocumentState::Edit;
    cancelled_ = cancelled;
    bookVersion_ = version;
    captionSuffix_ = cancelled_ ? kCancelledMark : QString();
    focus_ = HeaderField::None;
    if (opened) opened(*this);
    markUnmodified();
    return true;
}

N_Global::BookVersion N_Global::readBookVersion(bool knownUncancelled) const {
    tr::db::Connection& c = connection();
    const tr::db::Query log = openQuery(
        c, QStringLiteral("Select Count(*) From ASNADACTIONS Where TypeSys='N' And TypeDoc=") +
               c.text(kind_.title) + QStringLiteral(" And REC=") +
               tr::db::sqlNumber(header_.serial.trimmed().toLongLong()));
    return {log.IsEmpty() ? 0 : log.value(0, 0).toLongLong(),
            !knownUncancelled && isCancelled(c, kind_.code, header_.serial)};
}

QString N_Global::changedInBookMessage(const QString& user, const QString& when) {
    return QStringLiteral("اين سند پس از باز شدن توسط ") + user + QStringLiteral(" در ") + when +
           QStringLiteral(" تغيير كرده است.\nبراي ديدن آخرين وضعيت، سند را دوباره باز كنيد.");
}

bool N_Global::unchangedInBook() {
    if (state_ != DocumentState::Edit) return true;
    const BookVersion now = readBookVersion();
    if (now == bookVersion_) return true;
    tr::db::Connection& c = connection();
    const QString serial = header_.serial.trimmed();
    QString user, when;
    if (now.actions != bookVersion_.actions) {
        // The latest of the document's log rows; the times are H:MM:SS, so they are compared as
        // times rather than as texts.
        const tr::db::Query log =
            openQuery(c, QStringLiteral("Select ActUser, ActDate, ActTime From ASNADACTIONS Where "
                                        "TypeSys='N' And TypeDoc=") +
                             c.text(kind_.title) + QStringLiteral(" And REC=") +
                             tr::db::sqlNumber(serial.toLongLong()));
        QString latest;
        for (int row = 0; row < log.RecordCount(); ++row) {
            const QString date = log.value(row, 1).toString().trimmed();
            const QString time = log.value(row, 2).toString().trimmed();
            const QString key = date + QLatin1Char(' ') + time.rightJustified(8, QLatin1Char('0'));
            if (key < latest) continue;
            latest = key;
            user = log.value(row, 0).toString().trimmed();
            when = date + QLatin1Char(' ') + time;
        }
    } else {
        // A cancellation or its undo leaves no log row: the cancellation voucher names its user
        // and date; an undone one is gone, and with it who undid it.
        const tr::db::Query line = openQuery(
            c, QStringLiteral("Select Top 1 User_Name, SanadDate From Asnad Where TypeSys='N' And "
                              "DocToDate='1' And WhatDoc2=") +
                   c.text(kind_.code) +
                   QStringLiteral(" And LTrim(Document) In (Select Cast(IDX As Varchar(20)) From "
                                  "N_NaghdTrans Where WhatDoc=") +
                   c.text(kind_.code) + QStringLiteral(" And LTrim(Serial)=") + c.text(serial) +
                   QStringLiteral(")"));
        if (!line.IsEmpty()) {
            user = line.value(0, 0).toString().trimmed();
            when = line.value(0, 1).toString().trimmed();
        }
    }
    if (user.isEmpty()) user = QStringLiteral("كاربر ديگري");
    if (when.isEmpty()) when = QStringLiteral("زمان نامعلوم");
    return refuse(changedInBookMessage(user, when));
}

bool N_Global::checkHeader() {
    if (header_.serial.trimmed().isEmpty())
        return refuse(kind_.serialMissingMessage, HeaderField::Serial);
    if (header_.referenceNumber.trimmed().isEmpty())
        return refuse(kind_.numberMissingMessage, HeaderField::ReferenceNumber);
    return true;
}

bool N_Global::checkLine(tr::db::Query& line) {
    lineFocus_ = AccountLevel::None;
    if (accountCheck && !accountCheck(line)) return false;
    if (line.FieldByName(QStringLiteral("Des")).AsString().trimmed().isEmpty())
        return refuse(kind_.lineDescriptionMissingMessage);
    const QString amountColumn = sideColumn(kind_.gridSide());
    tr::db::Field amount = line.FieldByName(amountColumn);
    if (amount.IsNull() || amount.AsFloat() <= 0)
        return refuse(QStringLiteral("مبلغ وارد نشده است."));
    // A line stands on one side only; a new line goes to the end of the document.
    tr::db::Field other = line.FieldByName(sideColumn(kind_.treasurySide));
    if (other.IsNull()) other.SetAsFloat(0);
    tr::db::Field raj = line.FieldByName(QStringLiteral("Raj"));
    if (raj.IsNull()) {
        qint64 last = 0;
        const int rajColumn = line.fieldIndex(QStringLiteral("Raj"));
        for (int row = 0; row < line.RecordCount(); ++row)
            last = std::max(last, line.value(row, rajColumn).toLongLong());
        raj.SetAsInteger(last + 1);
    }
    return true;
}

double N_Global::gridSum() const {
    return sum(connection(), sideColumn(kind_.gridSide()), transferTable_);
}

double N_Global::sum(tr::db::Connection& connection, const QString& field, const QString& table,
                     const QString& condition) {
    QString sql =
        QStringLiteral("Select Sum(") + field + QStringLiteral(") As SumField From ") + table;
    if (!condition.trimmed().isEmpty()) sql += QStringLiteral(" Where ") + condition;
    const tr::db::Query q = openQuery(connection, sql);
    return q.IsEmpty() ? 0.0 : q.value(0, 0).toDouble();
}

bool N_Global::isCancelled(tr::db::Connection& c, const QString& kind, const QString& serial) {
    const tr::db::Query q = openQuery(
        c,
        QStringLiteral("Select Count(*) As iCount From Asnad Where TypeSys='N' And DocToDate='1' "
                       "And WhatDoc2=") +
            c.text(kind) +
            QStringLiteral(" And LTrim(Document) In (Select Cast(IDX As Varchar(20)) From "
                           "N_NaghdTrans Where WhatDoc=") +
            c.text(kind) + QStringLiteral(" And LTrim(Serial)=") + c.text(serial.trimmed()) +
            QStringLiteral(")"));
    return !q.IsEmpty() && q.value(0, 0).toLongLong() > 0;
}

void N_Global::appendSerialToDescription() {
    const tr::db::Query options =
        openQuery(connection(), QStringLiteral("Select Naghd From Options"));
    if (options.IsEmpty()) return;
    if (optionValue(options.value(0, 0).toString(), QStringLiteral("USE_SERIAL"))
            .compare(QLatin1String("YES"), Qt::CaseInsensitive) != 0)
        return;
    const QString serial = header_.serial.trimmed();
    const QString mark = QStringLiteral("( ") + serial + QStringLiteral(" )");
    if (header_.description.contains(mark)) return;
    // Counted in characters, so the cut never leaves half of an emoji behind.
    if (tr::text::characterCount(header_.description) + mark.size() > descriptionMaxLength)
        header_.description = tr::text::leftCharacters(
            header_.description, std::max(0, descriptionMaxLength - int(serial.size()) - 5));
    header_.description += mark;
}

void N_Global::copyVoucherAside(bool bySerial) {
    if (bySerial)
        copyDocumentVoucherAside(database(), historyTable_, kind_.code, header_.serial);
    else
        copyVoucherAsideByNumber(database(), historyTable_, header_.voucherNo);
}

void N_Global::logAction(const QString& type) {
    logTreasuryAction(database(), *services_.global,
                      {header_.voucherNo, kind_.title, kind_.code, header_.serial}, type);
}

bool N_Global::save() {
    focus_ = HeaderField::None;
    imbalance_.reset();
    const bool isNew = state_ == DocumentState::New;
    FailureRestore restore(*this);
    // 1. The serial in the description, once.
    appendSerialToDescription();
    // 2. A new document may not take a saved serial.
    tr::db::Connection& c = connection();
    if (isNew && !serialIsFree(c, messages_, kind_.code, kind_.title, header_.serial.trimmed())) {
        focus_ = HeaderField::Serial;
        return false;
    }
    // 3. The line being edited is posted first (its own checks may refuse it); it stays posted
    // whatever becomes of the save, as the grid then shows it.
    if (grid_.state() == tr::db::Query::State::Edit ||
        grid_.state() == tr::db::Query::State::Insert) {
        grid_.Post();
        if (grid_.state() != tr::db::Query::State::Browse) return false;
        restore.keepGrid();
    }
    // 4, 5. Header.
    if (header_.description.trimmed().isEmpty())
        return refuse(QStringLiteral("شرح وارد نشده است."), HeaderField::Description);
    if (!(header_.amount > 0))
        return refuse(QStringLiteral("مبلغ وارد نشده است."), HeaderField::Amount);
    // 6. Balance: the counter lines add up to the header amount.
    const QString column = sideColumn(kind_.gridSide());
    const tr::db::Query balance =
        openQuery(c, QStringLiteral("Select Sum(") + column + QStringLiteral(") As ") + column +
                         QStringLiteral(" From ") + transferTable_);
    const double lines = balance.IsEmpty() ? 0.0 : balance.value(0, 0).toDouble();
    if (!sameAmount(lines, header_.amount)) {
        imbalance_ = Imbalance{header_.amount, lines};
        return refuse(QStringLiteral("سند تراز نميباشد."));
    }
    // The header values that travel on the lines.
    const QString travelling =
        QStringLiteral("Update ") + transferTable_ + QStringLiteral(" Set Joz=") +
        c.text(header_.joz) + QStringLiteral(", Des1=") + c.text(header_.des1) +
        QStringLiteral(", Des2=") + c.text(header_.des2) + QStringLiteral(", Des3=") +
        c.text(header_.des3) + QStringLiteral(", Des4=") + c.text(header_.des4);
    const QString serial = header_.serial.trimmed();
    // 7 to 11 are all or nothing, the screen's temporary tables included: a failure leaves the
    // database, the transfer table and the screen as they were, so the user saves again.
    BookVersion saved;
    try {
        // Another screen's change since this one opened the document is not overwritten.
        const bool written = commitDocumentWrite(
            c, {.proceed = [&] { return unchangedInBook(); },
                // 7. The voucher as it stands before this save.
                .copyAside = [&] { copyVoucherAside(isNew); },
                // 8. The save itself.
                .call =
                    [&] {
                        tr::db::execute(database(), travelling);
                        tr::db::execute(database(),
                                        call(DocumentAction::Save,
                                             arguments(isNew ? QStringLiteral("NEW")
                                                             : QStringLiteral("EDIT"))));
                    },
                // 9, 10. The action log and the invoice links commit with the document or not
                // at all.
                .log =
                    [&] {
                        readHeader(serial);
                        logAction(isNew ? QStringLiteral("I") : QStringLiteral("E"));
                    },
                .invoiceLinks = [&] { if (writeInvoiceLinks) writeInvoiceLinks(*this); },
                // 11. The saved document as the ledger now has it: the procedure has left it in
                // the transfer table.
                .readBack =
                    [&] {
                        reopenGrid();
                        saved = readBookVersion(true);
                    },
                // The procedure numbers the voucher last, in the writers' turn.
                .callTakesTurn = true});
        if (!written) return false;
    } catch (const tr::db::DatabaseError& error) {
        // Another user saved this serial since the duplicate check.
        if (isNew && error.message().contains(serialTakenMessage(kind_.title))) {
            restore.restore();
            return refuse(serialTakenMessage(kind_.title), HeaderField::Serial);
        }
        throw;
    }
    state_ = DocumentState::Edit;
    cancelled_ = false;
    bookVersion_ = saved;
    captionSuffix_ = kUpdatedMark;
    markUnmodified();
    return true;
}

QString N_Global::voucherDate() const {
    const tr::db::Query q =
        openQuery(connection(), QStringLiteral("Select Top 1 SanadDate From Asnad Where SanadNo=") +
                                    connection().text(header_.voucherNo.trimmed()));
    return q.IsEmpty() ? QString() : q.value(0, 0).toString();
}

std::optional<bool> N_Global::runAndRecheckCancelled(DocumentAction action) {
    // The procedure and the check that the screen's caption follows answer together.
    tr::db::Transaction transaction(connection());
    if (!unchangedInBook()) return std::nullopt;
    tr::db::execute(database(), call(action, arguments()));
    const BookVersion now = readBookVersion();
    transaction.commit();
    bookVersion_ = now;
    // The date boxes held the cancellation's date: no work of the user's is left in them.
    markUnmodified();
    return now.cancelled;
}

bool N_Global::cancelDocument() {
    focus_ = HeaderField::None;
    if (state_ != DocumentState::Edit || cancelled_) return false;
    const QString cancelDate = header_.date();
    const QString voucher = voucherDate();
    if (cancelDate < voucher)
        return refuse(QStringLiteral("تاريخ ابطال بايد بزرگتر يا مساوي تاريخ ") + voucher +
                          QStringLiteral(" باشد"),
                      HeaderField::Date);
    if (!messages_.ask(kind_.title + QStringLiteral(" ابطال شود؟"))) return false;
    const std::optional<bool> cancelled = runAndRecheckCancelled(DocumentAction::Cancel);
    if (!cancelled) return false;
    cancelled_ = *cancelled;
    if (cancelled_) captionSuffix_ = kCancelledMark;
    return cancelled_;
}

bool N_Global::undoCancel() {
    focus_ = HeaderField::None;
    if (state_ != DocumentState::Edit || !cancelled_) return false;
    if (!messages_.ask(QStringLiteral("آيا مي خواهيد سند ابطالي حذف شود ؟"))) return false;
    const std::optional<bool> cancelled = runAndRecheckCancelled(DocumentAction::UndoCancel);
    if (!cancelled) return false;
    cancelled_ = *cancelled;
    if (!cancelled_) captionSuffix_.clear();
    return !cancelled_;
}

bool N_Global::deleteDocument() {
    focus_ = HeaderField::None;
    if (state_ != DocumentState::Edit) return false;
    tr::db::Connection& c = connection();
    const QString serial = header_.serial.trimmed();
    const tr::db::Query links =
        openQuery(c, QStringLiteral("select * from R_ForoshRelatedNaghd where whatdoc = ") +
                         tr::db::sqlNumber(kind_.code.toLongLong()) +
                         QStringLiteral(" and Serial = ") + tr::db::sqlNumber(serial.toLongLong()) +
                         QStringLiteral(" and IDX in (select distinct IDX from ") + transferTable_ +
                         QStringLiteral(")"));
    if (!links.IsEmpty())
        messages_.show(
            QStringLiteral("با حذف اين سريال،  ارتباط آن با صورتحساب هاي فروش قطع خواهد شد."),
            kError);
    if (!messages_.ask(kind_.title + QStringLiteral(" حذف شود؟"))) return false;
    // The delete, its log, the invoices it paid, its hold and the screen's turn to a new
    // document are one: a failure leaves the document in the database and on the screen.
    FailureRestore restore(*this);
    return commitDocumentWrite(
        c, {.proceed = [&] { return unchangedInBook(); },
            .copyAside = [&] { copyVoucherAside(false); },
            .call = [&] { tr::db::execute(database(), call(DocumentAction::Delete, arguments())); },
            .log = [&] { logAction(QStringLiteral("D")); },
            .invoiceLinks = [&] { if (undoInvoiceSettlement) undoInvoiceSettlement(*this); },
            .readBack =
                [&] {
                    releaseHold(database(), kTreasuryProgram, kind_.code, QString(), serial,
                                userNumber());
                    newDocument();
                },
            .logBeforeCall = true});
}

}  // namespace tr::vouchers
