#include "cashbank/documents/cash_bank_document.h"

#include <vector>

#include "common/db/query_helpers.h"
#include "common/persian/amount_cells.h"
#include "common/persian/amount_words.h"
#include "common/persian/persian_date.h"
#include "common/text/single_line_text.h"
#include "currency/rates.h"
#include "vouchers/account_lookup.h"
#include "vouchers/fixed_descriptions.h"
#include "vouchers/grid_commands.h"
#include "vouchers/rights.h"

namespace tr::cashbank {

using tr::db::Query;
using tr::vouchers::AccountLevel;
using tr::vouchers::DocumentState;
using tr::vouchers::HeaderField;
using tr::vouchers::LineAccount;

namespace {

const QString kError = QStringLiteral("1ER");
// The grid's amount columns; the line's currency columns are amounts too.
const QStringList kAmountFields = {QStringLiteral("Bed"),          QStringLiteral("Bes"),
                                   QStringLiteral("ArzCount"),     QStringLiteral("ArzCount2"),
                                   QStringLiteral("ArzUnitPrice"), QStringLiteral("ArzRate"),
                                   QStringLiteral("ArzTotalPrice")};
constexpr int kTreasuryListKind = 4;

using tr::db::openQuery;
// The header's one-line boxes and the columns their text goes to. Descriptions and names are cut
// to their column as the boxes cut what is typed; numbers and codes are refused, since a cut one
// would name another document or branch.
using tr::text::LineField;
const LineField kSerialText{captions::kSerial, CashBankDocument::kSerialLength, true};
const LineField kJozText{QStringLiteral("جزء"), 10, false};                     // N_NaghdTrans.Joz
const LineField kDescriptionText{captions::kDescription, 200, true};            // Asnad.Des
const LineField kDepositorText{captions::kDepositor, 200, true};                // Des1
const LineField kRemitterText{captions::kRemitter, 200, true};                  // Des1
const LineField kRemitterBankText{captions::kRemitterBank, 200, true};          // Des2
const LineField kRemitterBranchText{captions::kRemitterBranch, 20, false};      // Des3, as its box
const LineField kRemitterBranchNameText{captions::kRemitterBranch, 200, true};  // Des4
constexpr int kReferenceWidth = 20;                                             // Asnad.AtfCh


}  // namespace

CashBankDocument::CashBankDocument(const tr::Services& services, ScreenId id)
    : services_(services), screen_(cashBankScreen(id)), messages_(services.dialog) {}

CashBankDocument::~CashBankDocument() {
    if (doc_ && documentReleasing) documentReleasing(*this);
}

void CashBankDocument::setServices(const tr::Services& services) {
    services_ = services;
    messages_.setDialog(services.dialog);
}

void CashBankDocument::notify() {
    if (changed) changed();
}

// ---- Showing ------------------------------------------------------------------------------------

void CashBankDocument::show(const QString& containerName) {
    if (!doc_ || boundDatabase_ != services_.database) {
        if (doc_ && documentReleasing) documentReleasing(*this);
        commands_.reset();
        doc_.reset();
        doc_ = std::make_unique<tr::vouchers::N_Global>(services_, screen_.kind());
        commands_ = std::make_unique<tr::vouchers::GridCommands>(services_, doc_->grid(),
                                                                 screen_.gridKey());
        commands_->appendRow = [this] { appendLine(); };
        commands_->changed = [this] { notify(); };
        boundDatabase_ = services_.database;
        bind();
        if (documentCreated) documentCreated(*this);
        doc_->header().setDate(tr::persian::defaultDocumentDate(services_.global->fiscalStart,
                                                                services_.global->fiscalEnd));
        doc_->header().userName = services_.global->userName;
        doc_->markUnmodified();
    }
    const bool invoiceMode = screen_.hasInvoice && containerName == kInvoiceContainer;
    // Docked anywhere else the screen serves plain documents: its settlement forgets the invoice
    // it was last opened for, or an ordinary save would stay tied to it. The screen turns to
    // invoice mode only once the invoice's document is on it.
    if (screen_.hasInvoice && prepareForInvoice)
        prepareForInvoice(*this, invoiceMode ? invoiceNumber_ : QString());
    invoiceMode_ = invoiceMode;
    notify();
}

void CashBankDocument::bind() {
    Query& grid = doc_->grid();
    const Query::Guard check = grid.BeforePost;
    grid.BeforePost = [this, check](Query& line) {
        refusedLineField_.clear();
        // A typed amount that does not read stays in its cell for the user to correct.
        const QString refusal =
            tr::persian::readAmountCells(line, kAmountFields, {}, &refusedLineField_);
        if (!refusal.isEmpty()) {
            messages_.show(refusal, kError);
            return false;
        }
        if (!checkLineText(line)) return false;
        if (check && !check(line)) return false;
        fillLineDefaults(line);
        return true;
    };
    grid.AfterPost = [this](Query&) { notify(); };
    // Whatever opens a document (the serial box, the spin, the list, an invoice's receipt), the
    // currency name is read in the open's transaction and taken with it.
    doc_->readOnOpen = [this](tr::vouchers::N_Global&) { openingCurrencyName_ = currencyNameOf(); };
    doc_->opened = [this](tr::vouchers::N_Global&) {
        openedSerial_ = header().serial.trimmed();
        currencyName_ = openingCurrencyName_;
        amountTyped_.clear();
        rateTyped_.clear();
    };
    const Query::Hook afterDelete = grid.AfterDelete;
    grid.AfterDelete = [this, afterDelete](Query& query) {
        if (afterDelete) afterDelete(query);
        notify();
    };
}

bool CashBankDocument::checkLineText(Query& line) {
    tr::db::Field des = line.FieldByName(QStringLiteral("Des"));
    if (des.IsNull()) return true;
    const QString clean = tr::text::cleanLine(kDescriptionText, des.AsString());
    if (clean != des.AsString()) des.SetAsString(clean);
    const QString refusal = tr::text::lineRefusal(kDescriptionText, clean);
    if (refusal.isEmpty()) return true;
    refusedLineField_ = QStringLiteral("Des");
    messages_.show(refusal, kError);
    return false;
}

bool CashBankDocument::checkHeaderText() {
    const tr::vouchers::DocumentHeader& h = header();
    const LineField reference{screen_.numberLabel, kReferenceWidth, false};
    struct Box {
        const LineField* field;
        const QString* text;
        HeaderField focus;
    };
    std::vector<Box> boxes = {{&kSerialText, &h.serial, HeaderField::Serial},
                              {&reference, &h.referenceNumber, HeaderField::ReferenceNumber},
                              {&kDescriptionText, &h.description, HeaderField::Description}};
    if (screen_.hasJoz) boxes.push_back({&kJozText, &h.joz, HeaderField::Joz});
    if (screen_.hasDepositor) boxes.push_back({&kDepositorText, &h.des1, HeaderField::Des1});
    if (screen_.hasRemitter) {
        boxes.push_back({&kRemitterText, &h.des1, HeaderField::Des1});
        boxes.push_back({&kRemitterBankText, &h.des2, HeaderField::Des2});
        boxes.push_back({&kRemitterBranchText, &h.des3, HeaderField::Des3});
        boxes.push_back({&kRemitterBranchNameText, &h.des4, HeaderField::Des4});
    }
    for (const Box& box : boxes) {
        const QString refusal = tr::text::lineRefusal(*box.field, *box.text);
        if (refusal.isEmpty()) continue;
        textFocus_ = box.focus;
        messages_.show(refusal, kError);
        return false;
    }
    return true;
}

QString CashBankDocument::lineFocusField() const {
    if (!refusedLineField_.isEmpty()) return refusedLineField_;
    const AccountLevel level = doc_->lineFocus();
    return level == AccountLevel::None ? QString() : tr::vouchers::accountField(level);
}

bool CashBankDocument::canSave() const {
    return tr::vouchers::hasRight(doc_->rights(), state() == DocumentState::New
                                                      ? QStringLiteral("N_")
                                                      : QStringLiteral("E_"));
}

bool CashBankDocument::canDelete() const {
    return state() == DocumentState::Edit &&
           tr::vouchers::hasRight(doc_->rights(), QStringLiteral("D_"));
}

bool CashBankDocument::canCancel() const {
    return state() == DocumentState::Edit &&
           tr::vouchers::hasRight(doc_->rights(), QStringLiteral("A_"));
}

bool CashBankDocument::canPrint() const {
    return tr::vouchers::hasRight(doc_->rights(), QStringLiteral("P_"));
}

QString CashBankDocument::cancelCaption() const {
    return cancelled() ? captions::kUndoCancel : captions::kCancel;
}

// ---- Header -------------------------------------------------------------------------------------

void CashBankDocument::serialEnter() {
    // A free serial the user typed himself stays; an empty box of a new document, or one whose
    // serial was saved meanwhile (a refused duplicate), gets the next one.
    if (state() != DocumentState::New) return;
    const QString typed = header().serial.trimmed();
    if (!typed.isEmpty() && !doc_->documentExists(typed)) return;
    doc_->fillNextSerial();
    notify();
}

void CashBankDocument::setSerial(const QString& text) {
    doc_->header().serial = tr::text::cleanLine(kSerialText, text);
}

bool CashBankDocument::serialLeave() {
    const QString serial = header().serial.trimmed();
    if (serial.isEmpty() || (state() == DocumentState::Edit && serial == openedSerial_))
        return false;
    if (!doc_->documentExists(serial)) return false;
    return openSerial(serial);
}

bool CashBankDocument::openSerial(const QString& serialText) {
    const QString serial = serialText.trimmed();
    int invoices = 0;
    const auto countInvoices = [&] {
        if (settledInvoiceCount) invoices = settledInvoiceCount(*this, serial);
    };
    if (!doc_->openDocument(serial, countInvoices)) return false;
    notify();
    if (invoices > 1 && noteSeveralInvoices) noteSeveralInvoices(*this);
    return true;
}

bool CashBankDocument::stepSerial(bool forward) {
    tr::db::Connection& c = services_.connection();
    const QString current = header().serial.trimmed();
    QString sql = QStringLiteral("Select ") +
                  (forward ? QStringLiteral("Min(Serial)") : QStringLiteral("Max(Serial)")) +
                  QStringLiteral(" As Serial From N_NaghdTrans Where WhatDoc = ") +
                  c.text(screen_.kindCode);
    if (!current.isEmpty())
        sql += QStringLiteral(" And Serial ") +
               (forward ? QStringLiteral("> ") : QStringLiteral("< ")) +
               tr::db::sqlNumber(current.toLongLong());
    const Query next = openQuery(c, sql);
    if (next.IsEmpty() || next.value(0, 0).isNull()) return false;
    return openSerial(next.value(0, 0).toString());
}

bool CashBankDocument::spinNext() {
    return stepSerial(true);
}

bool CashBankDocument::spinPrevious() {
    return stepSerial(false);
}

bool CashBankDocument::listButtonClick() {
    if (!pickDocument) return false;
    const std::optional<QString> serial = pickDocument(*this);
    return serial && openSerial(*serial);
}

QString CashBankDocument::dayTyped(const QString& text) {
    return doc_->header().day = tr::persian::clampDayText(tr::persian::latinDigits(text));
}

QString CashBankDocument::dayLeave(const QString& text) {
    return doc_->header().day = tr::persian::padDayText(tr::persian::latinDigits(text));
}

QString CashBankDocument::monthTyped(const QString& text) {
    return doc_->header().month = tr::persian::clampMonthText(tr::persian::latinDigits(text));
}

QString CashBankDocument::monthLeave(const QString& text) {
    return doc_->header().month = tr::persian::padMonthText(tr::persian::latinDigits(text));
}

void CashBankDocument::setYear(const QString& text) {
    doc_->header().year = tr::persian::latinDigits(text).trimmed();
}

void CashBankDocument::setReferenceNumber(const QString& text) {
    doc_->header().referenceNumber = tr::text::joinLines(text);
}

void CashBankDocument::setJoz(const QString& text) {
    doc_->header().joz = tr::text::cleanLine(kJozText, text);
}

void CashBankDocument::setDepositor(const QString& text) {
    doc_->header().des1 = tr::text::cleanLine(kDepositorText, text);
}

void CashBankDocument::setRemitter(const QString& name, const QString& bank,
                                   const QString& branchCode, const QString& branchName) {
    tr::vouchers::DocumentHeader& h = doc_->header();
    h.des1 = tr::text::cleanLine(kRemitterText, name);
    h.des2 = tr::text::cleanLine(kRemitterBankText, bank);
    h.des3 = tr::text::cleanLine(kRemitterBranchText, branchCode);
    h.des4 = tr::text::cleanLine(kRemitterBranchNameText, branchName);
}

QStringList CashBankDocument::bankNames() const {
    const Query banks = openQuery(services_.connection(),
                                  QStringLiteral("Select BankNam From N_Bank Order By BankCod"));
    QStringList names;
    for (int row = 0; row < banks.RecordCount(); ++row) names << banks.value(row, 0).toString();
    return names;
}

void CashBankDocument::treasuryCodeEntered(const QString& typed) {
    const QString code = typed.trimmed();
    tr::vouchers::DocumentHeader& h = doc_->header();
    if (code == h.treasuryDisplayCode.trimmed() && !h.treasuryName.isEmpty()) return;
    QString stored = code;
    if (screen_.kind().treasuryObject == tr::vouchers::TreasuryObject::BankAccount &&
        !code.isEmpty()) {
        // The user types the account's number; the document keeps the account's identity.
        tr::db::Connection& c = services_.connection();
        const Query account = openQuery(
            c, QStringLiteral("Select Cast(AcountID As Varchar(20)) As Code From N_BankHesab "
                              "Where AcountCod = ") +
                   c.text(code));
        if (!account.IsEmpty()) stored = account.value(0, 0).toString();
    }
    h.treasuryCode = stored;
    doc_->describeTreasurySide();
    if (h.treasuryName.isEmpty()) h.treasuryDisplayCode = code;
    applyCurrencyDefaults();
    notify();
}

bool CashBankDocument::pickTreasury() {
    if (!services_.pickList) return false;
    const TreasuryList& list = screen_.treasuryList;
    const std::optional<QVariantMap> row =
        services_.pickList->pick(list.title, list.sql,
                                 {{QStringLiteral("Display"), list.codeCaption, 110},
                                  {QStringLiteral("Nam"), list.nameCaption, 220}},
                                 kTreasuryListKind);
    if (!row) return false;
    doc_->header().treasuryCode = row->value(QStringLiteral("Code")).toString().trimmed();
    doc_->describeTreasurySide();
    applyCurrencyDefaults();
    notify();
    return true;
}

QString CashBankDocument::currencyNameOf() const {
    if (!doc_->currencyDocument()) return {};
    tr::db::Connection& c = services_.connection();
    return tr::db::firstColumn(c, QStringLiteral("Select ArzNam From N_Arz Where LTrim(ArzCod) = "
                                                 "LTrim(") +
                                      c.text(header().currency) + QStringLiteral(")"))
        .toString();
}

void CashBankDocument::applyCurrencyName() {
    currencyName_ = currencyNameOf();
}

void CashBankDocument::applyCurrencyDefaults() {
    applyCurrencyName();
    if (!doc_->currencyDocument()) {
        doc_->header().rate = 0;
        return;
    }
    // Without a quotation the rate stays what the user enters.
    if (!screen_.rateScreen) return;
    const std::optional<tr::currency::CurrentRate> rate =
        tr::currency::currentRate(services_.connection(), header().currency);
    if (rate)
        doc_->header().rate =
            tr::currency::rateOf(*rate, tr::currency::defaultRateSide(*screen_.rateScreen));
}

void CashBankDocument::setDescription(const QString& text) {
    doc_->header().description = tr::text::cleanLine(kDescriptionText, text);
}

// A text that does not read is kept as typed, and the value it replaces stays, until the user
// corrects it; leaving the box or saving tells him why it was refused.
void CashBankDocument::setAmountText(const QString& text) {
    const QString typed = text.left(kAmountLength);
    const tr::persian::AmountReading reading = tr::persian::readAmount(typed);
    amountTyped_ = reading.ok() ? QString() : typed;
    if (reading.ok()) doc_->header().amount = reading.value;
}

void CashBankDocument::setRateText(const QString& text) {
    if (!rateEnabled()) return;
    const QString typed = text.left(kRateLength);
    const tr::persian::AmountReading reading = tr::persian::readAmount(typed);
    rateTyped_ = reading.ok() ? QString() : typed;
    if (reading.ok()) doc_->header().rate = reading.value;
}

QString CashBankDocument::amountText() const {
    return amountTyped_.isEmpty() ? tr::persian::amountEditText(header().amount) : amountTyped_;
}

QString CashBankDocument::rateText() const {
    if (!rateEnabled()) return {};
    return rateTyped_.isEmpty() ? tr::persian::amountEditText(header().rate) : rateTyped_;
}

bool CashBankDocument::amountLeave() {
    for (const QString* typed : {&amountTyped_, &rateTyped_}) {
        if (typed->isEmpty()) continue;
        messages_.show(tr::persian::amountRefusal(tr::persian::readAmount(*typed), *typed), kError);
        return false;
    }
    return true;
}

QString CashBankDocument::amountInWords() const {
    return tr::persian::amountInWords(header().amount);
}

bool CashBankDocument::checkDate(bool withPeriod) {
    const tr::vouchers::DocumentHeader& h = header();
    switch (tr::persian::invalidDatePart(h.year, h.month, h.day)) {
        case tr::persian::DatePart::None:
            break;
        case tr::persian::DatePart::Day:
            dateFocus_ = HeaderField::Date;
            break;
        case tr::persian::DatePart::Month:
            dateFocus_ = HeaderField::Month;
            break;
        case tr::persian::DatePart::Year:
            dateFocus_ = HeaderField::Year;
            break;
    }
    if (dateFocus_ != HeaderField::None) {
        messages_.show(tr::persian::invalidDateMessage(h.date()), kError);
        return false;
    }
    if (!withPeriod) return true;
    const tr::Global& g = *services_.global;
    const tr::persian::PeriodCheck check =
        tr::persian::checkInPeriod(h.date(), g.fiscalStart, g.fiscalEnd);
    if (check == tr::persian::PeriodCheck::Inside) return true;
    dateFocus_ = HeaderField::Date;
    messages_.show(tr::persian::periodMessage(check, g.fiscalStart, g.fiscalEnd), kError);
    return false;
}

bool CashBankDocument::dateLeave() {
    dateFocus_ = HeaderField::None;
    return checkDate(false);
}

HeaderField CashBankDocument::focus() const {
    if (dateFocus_ != HeaderField::None) return dateFocus_;
    return textFocus_ != HeaderField::None ? textFocus_ : doc_->focus();
}

bool CashBankDocument::headerLeave() {
    dateFocus_ = HeaderField::None;
    textFocus_ = HeaderField::None;
    return doc_->checkHeader() && checkHeaderText() && checkDate();
}

// ---- Grid ---------------------------------------------------------------------------------------

void CashBankDocument::appendLine() {
    Query& grid = doc_->grid();
    if (grid.state() == Query::State::Edit || grid.state() == Query::State::Insert) {
        if (!postLine()) return;
    }
    grid.Append();
    fillCurrency(grid);
    notify();
}

void CashBankDocument::fillCurrency(Query& line) {
    if (!doc_->currencyDocument()) return;
    if (!line.FieldByName(QStringLiteral("ArzCod")).AsString().trimmed().isEmpty()) return;
    line.FieldByName(QStringLiteral("ArzCod")).SetAsString(header().currency);
    line.FieldByName(QStringLiteral("ArzNam")).SetAsString(currencyName_);
    line.FieldByName(QStringLiteral("ArzUnitPrice")).SetAsFloat(1);
    line.FieldByName(QStringLiteral("ArzRate")).SetAsFloat(header().rate);
}

void CashBankDocument::fillLineDefaults(Query& line) {
    fillCurrency(line);
    // The document's own kind marks its treasury line only: a counter line without a
    // counter-party object (or as older versions wrote it) is a plain account line.
    tr::db::Field kind = line.FieldByName(QStringLiteral("WhatDoc2"));
    const QString counterKind = kind.AsString().trimmed();
    if (counterKind.isEmpty() || counterKind == screen_.kindCode)
        kind.SetAsString(tr::vouchers::kAccountCounterParty);
    // Only an account line is named after its account; a customer line keeps its customer.
    const QList<CounterPartyLine> levels =
        kind.AsString().trimmed() == tr::vouchers::kAccountCounterParty
            ? accountLines(LineAccount::fromRow(line))
            : QList<CounterPartyLine>{};
    if (!levels.isEmpty()) {
        line.FieldByName(QStringLiteral("NamWhatDoc2")).SetAsString(levels.last().name);
        line.FieldByName(QStringLiteral("CodWhatDoc2")).SetAsString(levels.last().code);
    }
    const double rate = line.FieldByName(QStringLiteral("ArzRate")).AsFloat();
    if (!line.FieldByName(QStringLiteral("ArzCod")).AsString().trimmed().isEmpty() && rate > 0) {
        const double amount =
            line.FieldByName(tr::vouchers::sideColumn(screen_.kind().gridSide())).AsFloat();
        line.FieldByName(QStringLiteral("ArzTotalPrice"))
            .SetAsFloat(tr::persian::roundAmount(amount * rate));
    }
}

bool CashBankDocument::postLine() {
    Query& grid = doc_->grid();
    if (grid.state() == Query::State::Edit || grid.state() == Query::State::Insert) grid.Post();
    return grid.state() == Query::State::Browse;
}

bool CashBankDocument::editCurrentRow() {
    return commands_->editCurrentRow();
}

bool CashBankDocument::pickCell(const QString& field) {
    const AccountLevel level = tr::vouchers::accountLevelOfField(field);
    bool picked = false;
    if (level != AccountLevel::None) {
        if (!editCurrentRow()) return false;
        picked = tr::vouchers::AccountLookup(services_).pickInto(level, doc_->grid());
        if (picked) accountCellChanged();
    } else if (field.compare(QStringLiteral("ManabehCod"), Qt::CaseInsensitive) == 0) {
        if (!editCurrentRow()) return false;
        picked =
            tr::vouchers::AccountLookup(services_).pickFundsInto(doc_->grid(), screen_.fundsType);
    }
    if (picked) notify();
    return picked;
}

void CashBankDocument::cellEdited(const QString& field) {
    if (tr::vouchers::accountLevelOfField(field) != AccountLevel::None) accountCellChanged();
    notify();
}

void CashBankDocument::accountCellChanged() {
    Query& grid = doc_->grid();
    if (grid.state() != Query::State::Edit && grid.state() != Query::State::Insert) return;
    // The user's own description is never replaced.
    if (grid.FieldByName(QStringLiteral("Des")).AsString().trimmed().isEmpty())
        tr::vouchers::fillFixedDescription(services_.connection(), grid);
}

double CashBankDocument::sum() const {
    return doc_->gridSum();
}

QString CashBankDocument::sumText() const {
    return tr::persian::formatAmount(sum());
}

QString CashBankDocument::fundsName() {
    Query& grid = doc_->grid();
    if (!grid.Active() || (grid.IsEmpty() && grid.state() != Query::State::Insert)) return {};
    const QString code = grid.FieldByName(QStringLiteral("ManabehCod")).AsString().trimmed();
    if (code.isEmpty()) return {};
    tr::db::Connection& c = services_.connection();
    const Query name = openQuery(
        c, QStringLiteral("Select ManabehNam From N_Manabeh Where ManabehCod = ") + c.text(code));
    return name.IsEmpty() ? QString() : name.value(0, 0).toString();
}

QString CashBankDocument::counterPartyName() {
    Query& grid = doc_->grid();
    if (!grid.Active() || (grid.IsEmpty() && grid.state() != Query::State::Insert)) return {};
    return grid.FieldByName(QStringLiteral("NamWhatDoc2")).AsString();
}

QList<CounterPartyLine> CashBankDocument::counterParty() {
    Query& grid = doc_->grid();
    if (!grid.Active() || (grid.IsEmpty() && grid.state() != Query::State::Insert)) return {};
    return accountLines(LineAccount::fromRow(grid));
}

QList<CounterPartyLine> CashBankDocument::accountLines(const LineAccount& line) const {
    tr::db::Connection& c = services_.connection();
    const auto name = [&c](const QString& sql) {
        const Query q = openQuery(c, sql);
        return q.IsEmpty() ? QString() : q.value(0, 0).toString();
    };
    const tr::Global& g = *services_.global;
    QList<CounterPartyLine> lines;
    if (line.koll.isEmpty()) return lines;
    lines << CounterPartyLine{
        QStringLiteral("کل"), line.koll,
        name(QStringLiteral("Select NamHesab From Koll Where Koll = ") + c.text(line.koll))};
    if (line.moein.isEmpty()) return lines;
    lines << CounterPartyLine{
        QStringLiteral("معين"), line.moein,
        name(QStringLiteral("Select NamHesab From Moein Where Koll = ") + c.text(line.koll) +
             QStringLiteral(" And Moein = ") + c.text(line.moein))};
    if (!line.tafsily.isEmpty())
        lines << CounterPartyLine{
            QStringLiteral("تفصيلي"), line.tafsily,
            name(QStringLiteral("Select NamHesab From Tafsily Where Tafsily = ") +
                 c.text(line.tafsily))};
    if (!line.tafsily2.isEmpty())
        lines << CounterPartyLine{
            g.tafsily2LevelName.isEmpty() ? QStringLiteral("تفصيلي2") : g.tafsily2LevelName,
            line.tafsily2,
            name(QStringLiteral("Select NamHesab From Tafsily2 Where Tafsily2 = ") +
                 c.text(line.tafsily2))};
    if (!line.projectCod.isEmpty())
        lines << CounterPartyLine{
            g.projectLevelName.isEmpty() ? QStringLiteral("ProjectCod") : g.projectLevelName,
            line.projectCod,
            name(QStringLiteral("Select ProjectNam From M_Project Where ProjectCod = ") +
                 c.text(line.projectCod))};
    return lines;
}

// ---- Grid menu ----------------------------------------------------------------------------------

QString CashBankDocument::helpText() {
    return QStringLiteral(
        "سريال: با ورود به خانه سريال، شماره بعدي پيشنهاد مي شود؛ سريال ثبت شده را وارد کنيد تا "
        "سند باز شود.\n"
        "رديف ها: Insert رديف جديد، F3 يا دوبار کليک روي خانه هاي حساب و منابع فهرست آنها را باز "
        "مي کند.\n"
        "جمع رديف ها بايد با مبلغ سند برابر باشد.");
}

void CashBankDocument::helpClick() {
    messages_.note(helpText());
}

void CashBankDocument::newDocumentClick() {
    doc_->newDocument();
    openedSerial_.clear();
    currencyName_.clear();
    amountTyped_.clear();
    rateTyped_.clear();
    dateFocus_ = HeaderField::None;
    notify();
}

void CashBankDocument::searchClick() {
    if (openSearch) openSearch(*this);
}

bool CashBankDocument::saveColumns(const tr::grid::GridColumns& grid) {
    return commands_->saveColumns(grid);
}

void CashBankDocument::resetColumns() {
    commands_->resetColumns();
}

bool CashBankDocument::restoreColumns(tr::grid::GridColumns& grid) {
    return commands_->restoreColumns(grid);
}

int CashBankDocument::currentRowIndex() {
    return commands_->currentRowIndex();
}

bool CashBankDocument::copyRowAbove() {
    return commands_->copyRowAbove();
}

QString CashBankDocument::clipboardText() {
    QList<tr::vouchers::ClipboardColumn> columns;
    for (const GridColumn& column : screen_.gridColumns(services_.global->projectLevelName))
        columns << tr::vouchers::ClipboardColumn{column.field, column.title};
    return commands_->clipboardText(columns);
}

void CashBankDocument::rememberRow() {
    commands_->rememberRow();
}

bool CashBankDocument::restoreRow() {
    return commands_->restoreRow();
}

void CashBankDocument::rememberCell(const QString& field) {
    commands_->rememberCell(field);
}

bool CashBankDocument::restoreCell(const QString& field) {
    return commands_->restoreCell(field);
}

bool CashBankDocument::pickFixedDescriptionForLine() {
    return commands_->pickFixedDescription();
}

bool CashBankDocument::pickFixedDescriptionForDescription() {
    const LineAccount account =
        currentRowIndex() < 0 ? LineAccount{} : LineAccount::fromRow(doc_->grid());
    const std::optional<QString> text = tr::vouchers::pickFixedDescription(services_, account);
    if (!text) return false;
    setDescription(*text);
    notify();
    return true;
}

bool CashBankDocument::deleteLine() {
    return commands_->deleteRow();
}

void CashBankDocument::settlementClick() {
    if (openSettlement) openSettlement(*this);
}

void CashBankDocument::importClick() {
    if (importLines) importLines(*this);
}

void CashBankDocument::designPrintClick() {
    if (designPrint) designPrint(*this);
}

void CashBankDocument::printClick() {
    if (printDocument && canPrint()) printDocument(*this, printLayout);
}

void CashBankDocument::printVoucherClick() {
    if (printVoucher && canPrint()) printVoucher(*this);
}

QString CashBankDocument::reportPropertiesCaption() const {
    return QStringLiteral("مشخصات گزارش [") + screen_.printItemName + QStringLiteral("]");
}

// ---- Buttons ------------------------------------------------------------------------------------

const QString CashBankDocument::kUnsavedQuestion =
    QStringLiteral("تغييرات اين سند ثبت نشده است. ثبت شود؟");
const QString CashBankDocument::kDiscardWarning =
    QStringLiteral("تغييرات ثبت نشده از بين خواهد رفت.");

bool CashBankDocument::hasUnsavedChanges() const {
    if (!doc_) return false;
    return doc_->modified() || !amountTyped_.isEmpty() || !rateTyped_.isEmpty();
}

bool CashBankDocument::confirmLeave() {
    if (!hasUnsavedChanges()) return true;
    // Yes saves (a refused save keeps the screen open); No asks once more, since the message
    // box has no third button: OK discards, Cancel or closing the box stays.
    if (messages_.ask(kUnsavedQuestion)) return canSave() && cmdOkClick();
    if (messages_.show(kDiscardWarning, QStringLiteral("2WR")) != tr::dialog::ResultOk)
        return false;
    newDocumentClick();
    return true;
}

bool CashBankDocument::cmdOkClick() {
    statusText_.clear();
    dateFocus_ = HeaderField::None;
    textFocus_ = HeaderField::None;
    if (!canSave() || !amountLeave()) return false;
    // The header is checked again: the buttons are reachable without passing through the grid.
    if (!doc_->checkHeader() || !checkHeaderText() || !checkDate()) return false;
    // Nothing after a successful save may reach the database: its error would reach the host
    // as a failed save of a saved document. A save keeps the currency, so keeps its name.
    const bool edit = state() == DocumentState::Edit;
    const bool saved = doc_->save();
    if (const auto& off = doc_->imbalance()) {
        // Beside the refusal's own text: the two sums the user has to make agree.
        using tr::persian::formatAmount;
        statusText_ = QStringLiteral("مبلغ سند %1 - جمع رديفها %2 - اختلاف %3")
                          .arg(formatAmount(off->header), formatAmount(off->lines),
                               formatAmount(off->header - off->lines));
    }
    if (saved) {
        openedSerial_ = header().serial.trimmed();
        statusText_ = (edit ? QStringLiteral("سريال %1 اصلاح شد - سند حسابداري %2")
                            : QStringLiteral("سريال %1 ثبت شد - سند حسابداري %2"))
                          .arg(openedSerial_, header().voucherNo.trimmed());
    }
    notify();
    return saved;
}

bool CashBankDocument::cmdOkPrintClick() {
    if (!cmdOkClick()) return false;
    if (printDocument) printDocument(*this, printLayout);
    return true;
}

bool CashBankDocument::cmdDelClick() {
    statusText_.clear();
    if (!canDelete()) return false;
    const QString serial = header().serial.trimmed();
    const bool deleted = doc_->deleteDocument();
    if (deleted) {
        statusText_ = QStringLiteral("سريال %1 حذف شد").arg(serial);
        openedSerial_.clear();
        currencyName_.clear();
    }
    notify();
    return deleted;
}

bool CashBankDocument::cmdAbtalClick() {
    statusText_.clear();
    dateFocus_ = HeaderField::None;
    if (!canCancel()) return false;
    // Both actions pass the date boxes to the procedure; the cancellation is dated by them.
    if (!checkDate(false)) return false;
    const bool undo = cancelled();
    const bool done = undo ? doc_->undoCancel() : doc_->cancelDocument();
    if (done)
        statusText_ = (undo ? QStringLiteral("سريال %1 از ابطال برگشت") : QStringLiteral("سريال %1 ابطال شد"))
                          .arg(header().serial.trimmed());
    notify();
    return done;
}

}  // namespace tr::cashbank
