#include "cashbank/ui/documents/cash_bank_form.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTableWidget>
#include <QTextDocument>
#include <QToolButton>
#include <QVBoxLayout>

#include "common/db/database_error.h"
#include "common/persian/amount_cells.h"
#include "common/ui/dataset_model.h"
#include "common/ui/settings_libraries.h"
#include "common/ui/table_view_columns.h"
#include "common/ui/title_sorter.h"
#include "host/sdk/persian_font.h"

namespace tr::cashbank {

using tr::vouchers::HeaderField;

namespace {

void setTextKeepingCursor(QLineEdit* edit, const QString& text) {
    if (!edit || edit->text() == text) return;
    edit->setText(text);
    // A name the program shows reads from its start (a long one would show only its end), and
    // shows whole when pointed at.
    if (edit->isReadOnly()) {
        edit->setCursorPosition(0);
        edit->setToolTip(text);
    }
}

}  // namespace

TCashBankForm::TCashBankForm(const tr::Services& services, ScreenId id, QWidget* parent)
    : QWidget(parent), logic_(services, id) {
    const CashBankScreen& screen = logic_.screen();
    setObjectName(screen.formClass.mid(1));
    setWindowTitle(screen.caption);
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(13));

    caption_ = new QLabel(screen.caption, this);
    caption_->setObjectName(QStringLiteral("lblCaption"));
    caption_->setAlignment(Qt::AlignCenter);
    caption_->setAutoFillBackground(true);
    caption_->setForegroundRole(QPalette::HighlightedText);
    caption_->setBackgroundRole(QPalette::Highlight);
    caption_->setMinimumHeight(28);
    QFont captionFont = font();
    captionFont.setBold(true);
    caption_->setFont(captionFont);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(caption_);
    layout->addWidget(buildHeader());
    layout->addWidget(buildLineEditor());
    // A cancelled document says so above its lines, in the words its print uses.
    cancelledMark_ = new QLabel(tr::vouchers::N_Global::kCancelledMark, this);
    cancelledMark_->setObjectName(QStringLiteral("lblCancelled"));
    cancelledMark_->setStyleSheet(QStringLiteral("color:#b00020; font-weight:bold;"));
    cancelledMark_->hide();
    layout->addWidget(cancelledMark_);
    buildGrid();
    layout->addWidget(grid_, 1);
    // An empty grid says how a line is added.
    emptyGridHint_ = new QLabel(QStringLiteral("براي افزودن رديف، در جدول كليد Insert را بزنيد"), grid_->viewport());
    emptyGridHint_->setObjectName(QStringLiteral("lblEmptyGrid"));
    emptyGridHint_->setAttribute(Qt::WA_TransparentForMouseEvents);
    emptyGridHint_->setEnabled(false);
    (new QVBoxLayout(grid_->viewport()))->addWidget(emptyGridHint_, 0, Qt::AlignCenter);
    layout->addWidget(buildBottom());
    status_ = new QLabel(this);
    status_->setObjectName(QStringLiteral("lblStatus"));
    status_->setFrameShape(QFrame::StyledPanel);
    layout->addWidget(status_);
    buildMenu();

    logic_.changed = [this] { showValues(); };
}

TCashBankForm::~TCashBankForm() {
    tr::ui::DatasetModel::releaseQueries(this);
    logic_.changed = nullptr;
}

void TCashBankForm::setServices(const tr::Services& services) {
    logic_.setServices(services);
}

void TCashBankForm::setInvoiceNumber(const QString& number) {
    logic_.setInvoiceNumber(number);
    if (logic_.isShown()) showValues();
}

// ---- Building -----------------------------------------------------------------------------------

QLineEdit* TCashBankForm::edit(const QString& name, int maxLength, int width, bool readOnly) {
    auto* e = new QLineEdit(this);
    e->setObjectName(name);
    if (maxLength > 0) e->setMaxLength(maxLength);
    e->setFixedWidth(width);
    e->setReadOnly(readOnly);
    if (readOnly) {
        e->setFocusPolicy(Qt::ClickFocus);
        e->setBackgroundRole(QPalette::Window);
        QPalette p = e->palette();
        p.setColor(QPalette::Base, p.color(QPalette::Window));
        e->setPalette(p);
    }
    e->installEventFilter(this);
    return e;
}

QLabel* TCashBankForm::label(const QString& text) {
    auto* l = new QLabel(text, this);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return l;
}

QWidget* TCashBankForm::buildHeader() {
    const CashBankScreen& screen = logic_.screen();
    auto* box = new QGroupBox(this);
    box->setObjectName(QStringLiteral("pnlHeader"));
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(8, 6, 8, 6);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(6);

    // Row 0: serial, date, voucher, number.
    serial_ = edit(QStringLiteral("edSerial"), CashBankDocument::kSerialLength, 70);
    spinUp_ = new QToolButton(this);
    spinUp_->setObjectName(QStringLiteral("spnSerialNext"));
    spinUp_->setArrowType(Qt::UpArrow);
    spinUp_->setFixedSize(22, 13);
    spinDown_ = new QToolButton(this);
    spinDown_->setObjectName(QStringLiteral("spnSerialPrior"));
    spinDown_->setArrowType(Qt::DownArrow);
    spinDown_->setFixedSize(22, 13);
    auto* spin = new QVBoxLayout;
    spin->setSpacing(0);
    spin->addWidget(spinUp_);
    spin->addWidget(spinDown_);
    list_ = new QToolButton(this);
    list_->setObjectName(QStringLiteral("btnSerialList"));
    list_->setText(QStringLiteral("..."));
    list_->setToolTip(screen.serialHint);
    list_->setFixedSize(26, 26);
    auto* serialBox = new QHBoxLayout;
    serialBox->setSpacing(2);
    serialBox->addWidget(serial_);
    serialBox->addLayout(spin);
    serialBox->addWidget(list_);
    serialBox->addStretch();

    day_ = edit(QStringLiteral("edDay"), 2, 34);
    month_ = edit(QStringLiteral("edMonth"), 2, 34);
    year_ = edit(QStringLiteral("edYear"), 4, 52);
    for (QLineEdit* e : {day_, month_, year_}) e->setAlignment(Qt::AlignCenter);
    // Day, month and year read right to left, as the date is spoken.
    auto* dateBox = new QHBoxLayout;
    dateBox->setSpacing(2);
    dateBox->addWidget(day_);
    dateBox->addWidget(label(QStringLiteral("/")));
    dateBox->addWidget(month_);
    dateBox->addWidget(label(QStringLiteral("/")));
    dateBox->addWidget(year_);
    dateBox->addStretch();

    voucher_ = edit(QStringLiteral("edSanadNo"), 0, 80, true);
    number_ = edit(QStringLiteral("edAtfCh"), 20, 110);
    auto* numberBox = new QHBoxLayout;
    numberBox->setSpacing(2);
    numberBox->addWidget(number_);
    if (screen.hasJoz) {
        joz_ = edit(QStringLiteral("edJoz"), 10, 50);
        joz_->setToolTip(QStringLiteral("Joz"));
        numberBox->addWidget(label(QStringLiteral("/")));
        numberBox->addWidget(joz_);
    }
    numberBox->addStretch();

    grid->addWidget(label(captions::kSerial), 0, 0);
    grid->addLayout(serialBox, 0, 1);
    grid->addWidget(label(captions::kDate), 0, 2);
    grid->addLayout(dateBox, 0, 3);
    grid->addWidget(label(captions::kVoucher), 0, 4);
    grid->addWidget(voucher_, 0, 5);
    grid->addWidget(label(screen.numberLabel), 0, 6);
    grid->addLayout(numberBox, 0, 7);

    // Row 1: treasury side, user, invoice.
    treasuryCode_ = edit(QStringLiteral("txtCashCod"), 20, 100);
    treasuryCode_->setToolTip(screen.treasuryList.title);
    treasuryName_ = edit(QStringLiteral("txtCashNam"), 0, 260, true);
    auto* treasuryBox = new QHBoxLayout;
    treasuryBox->setSpacing(2);
    treasuryBox->addWidget(treasuryCode_);
    treasuryBox->addWidget(treasuryName_);
    treasuryBox->addStretch();
    user_ = edit(QStringLiteral("edUser"), 0, 110, true);
    grid->addWidget(label(screen.treasuryLabel), 1, 0);
    grid->addLayout(treasuryBox, 1, 1, 1, 3);
    grid->addWidget(label(captions::kUser), 1, 4);
    grid->addWidget(user_, 1, 5);
    if (screen.hasInvoice) {
        invoice_ = edit(QStringLiteral("edFactorNo"), 0, 110, true);
        grid->addWidget(label(captions::kInvoice), 1, 6);
        grid->addWidget(invoice_, 1, 7, Qt::AlignLeading);
    }

    // Row 2: the depositor, or the remitter of a transfer.
    if (screen.hasDepositor) {
        depositor_ = edit(QStringLiteral("edVarizKonandeh"), 200, 260);
        grid->addWidget(label(captions::kDepositor), 2, 0);
        grid->addWidget(depositor_, 2, 1, 1, 3, Qt::AlignLeading);
    }
    if (screen.hasRemitter) {
        remitter_ = edit(QStringLiteral("edHavalehKonandeh"), 200, 200);
        remitterBank_ = new QComboBox(this);
        remitterBank_->setObjectName(QStringLiteral("cmbHavalehBank"));
        remitterBank_->setEditable(true);
        remitterBank_->setFixedWidth(150);
        remitterBranchCode_ = edit(QStringLiteral("edHavalehShobehCod"), 20, 60);
        remitterBranchName_ = edit(QStringLiteral("edHavalehShobehNam"), 200, 140);
        auto* branch = new QHBoxLayout;
        branch->setSpacing(2);
        branch->addWidget(remitterBranchCode_);
        branch->addWidget(remitterBranchName_);
        branch->addStretch();
        auto* bank = new QHBoxLayout;
        bank->setSpacing(6);
        bank->addWidget(remitter_);
        bank->addWidget(label(captions::kRemitterBank));
        bank->addWidget(remitterBank_);
        bank->addStretch();
        grid->addWidget(label(captions::kRemitter), 2, 0);
        grid->addLayout(bank, 2, 1, 1, 3);
        grid->addWidget(label(captions::kRemitterBranch), 2, 4);
        grid->addLayout(branch, 2, 5, 1, 3);
        connect(remitterBank_, &QComboBox::currentTextChanged, this, [this] {
            if (showing_) return;
            logic_.setRemitter(remitter_->text(), remitterBank_->currentText(),
                               remitterBranchCode_->text(), remitterBranchName_->text());
        });
    }
    grid->setColumnStretch(8, 1);

    connect(spinUp_, &QToolButton::clicked, this,
            [this] { guarded([this] { return logic_.spinNext(); }); });
    connect(spinDown_, &QToolButton::clicked, this,
            [this] { guarded([this] { return logic_.spinPrevious(); }); });
    connect(list_, &QToolButton::clicked, this,
            [this] { guarded([this] { return logic_.listButtonClick(); }); });
    connect(serial_, &QLineEdit::textEdited, this,
            [this](const QString& t) { logic_.setSerial(t); });
    connect(day_, &QLineEdit::textEdited, this,
            [this](const QString& t) { setTextKeepingCursor(day_, logic_.dayTyped(t)); });
    connect(month_, &QLineEdit::textEdited, this,
            [this](const QString& t) { setTextKeepingCursor(month_, logic_.monthTyped(t)); });
    connect(year_, &QLineEdit::textEdited, this, [this](const QString& t) { logic_.setYear(t); });
    connect(number_, &QLineEdit::textEdited, this,
            [this](const QString& t) { logic_.setReferenceNumber(t); });
    if (joz_)
        connect(joz_, &QLineEdit::textEdited, this, [this](const QString& t) { logic_.setJoz(t); });
    if (depositor_)
        connect(depositor_, &QLineEdit::textEdited, this,
                [this](const QString& t) { logic_.setDepositor(t); });
    for (QLineEdit* e : {remitter_, remitterBranchCode_, remitterBranchName_}) {
        if (!e) continue;
        connect(e, &QLineEdit::textEdited, this, [this] {
            logic_.setRemitter(remitter_->text(), remitterBank_->currentText(),
                               remitterBranchCode_->text(), remitterBranchName_->text());
        });
    }
    return box;
}

QWidget* TCashBankForm::buildLineEditor() {
    auto* box = new QGroupBox(this);
    box->setObjectName(QStringLiteral("pnlLine"));
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(8, 6, 8, 6);
    row->setSpacing(6);
    description_ = edit(QStringLiteral("txtDes"), 200, 320);
    description_->setMinimumWidth(200);
    description_->setMaximumWidth(QWIDGETSIZE_MAX);
    description_->setContextMenuPolicy(Qt::CustomContextMenu);
    amount_ = edit(QStringLiteral("txtValue"), CashBankDocument::kAmountLength, 120);
    amount_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    amount_->setLayoutDirection(Qt::LeftToRight);
    words_ = new QLabel(this);
    words_->setObjectName(QStringLiteral("lblValueWords"));
    words_->setMinimumWidth(240);
    words_->setStyleSheet(QStringLiteral("color: #1f4e9c;"));
    rateLabel_ = label(captions::kRate);
    rate_ = edit(QStringLiteral("txtNerkh"), CashBankDocument::kRateLength, 100);
    rate_->setLayoutDirection(Qt::LeftToRight);
    row->addWidget(label(captions::kDescription));
    row->addWidget(description_, 3);
    row->addWidget(label(captions::kAmount));
    row->addWidget(amount_);
    row->addWidget(words_, 2);
    row->addWidget(rateLabel_);
    row->addWidget(rate_);

    descriptionMenu_ = new QMenu(this);
    QAction* fixed = descriptionMenu_->addAction(captions::kFixedDescription);
    fixed->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_F8));
    fixed->setShortcutContext(Qt::WidgetShortcut);
    description_->addAction(fixed);
    connect(fixed, &QAction::triggered, this,
            [this] { guarded([this] { return logic_.pickFixedDescriptionForDescription(); }); });
    connect(description_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { descriptionMenu_->popup(description_->mapToGlobal(at)); });
    connect(description_, &QLineEdit::textEdited, this,
            [this](const QString& t) { logic_.setDescription(t); });
    connect(amount_, &QLineEdit::textEdited, this, [this](const QString& t) {
        logic_.setAmountText(t);
        words_->setText(logic_.amountInWords());
    });
    connect(rate_, &QLineEdit::textEdited, this,
            [this](const QString& t) { logic_.setRateText(t); });
    return box;
}

void TCashBankForm::buildGrid() {
    const CashBankScreen& screen = logic_.screen();
    grid_ = new QTableView(this);
    grid_->setObjectName(QStringLiteral("dbg"));
    grid_->setLayoutDirection(Qt::RightToLeft);
    grid_->setSelectionBehavior(QAbstractItemView::SelectItems);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::EditKeyPressed |
                           QAbstractItemView::SelectedClicked);
    grid_->verticalHeader()->setDefaultSectionSize(24);
    grid_->verticalHeader()->setFixedWidth(28);
    grid_->horizontalHeader()->setMinimumSectionSize(36);
    grid_->setAlternatingRowColors(true);
    grid_->installEventFilter(this);

    model_ = new tr::ui::DatasetModel(nullptr, this);
    model_->setAutoPost(false);  // a line is checked as a whole when the user leaves it
    for (const GridColumn& column : screen.gridColumns()) {
        model_->setTitle(column.field, column.title);
        if (column.readOnly) model_->setFieldReadOnly(column.field);
    }
    for (const char* field : {"Bed", "Bes", "ArzTotalPrice", "ArzCount2"})
        model_->setFieldFormat(QString::fromLatin1(field), tr::persian::amountCellText);
    model_->setErrorHandler([this](const tr::db::DatabaseError& error) {
        tr::dialog::Messages(logic_.services().dialog).show(error.message(), QStringLiteral("1ER"));
    });
    grid_->setModel(model_);
    sorter_ = new tr::ui::TitleSorter(grid_, model_);
    connect(model_, &QAbstractItemModel::modelReset, this, &TCashBankForm::applyColumns);
    connect(grid_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (current.isValid()) currentRowChanged(current.row());
            });
    connect(model_, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& index) {
        const QString field = model_->fieldName(index.column());
        guarded([this, field] {
            logic_.cellEdited(field);
            return true;
        });
    });
    connect(grid_, &QTableView::doubleClicked, this, [this](const QModelIndex&) {
        const QString field = currentField();
        guarded([this, field] { return logic_.pickCell(field); });
    });
}

QWidget* TCashBankForm::buildBottom() {
    const CashBankScreen& screen = logic_.screen();
    auto* box = new QWidget(this);
    box->setObjectName(QStringLiteral("pnlBottom"));
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);

    auto* totals = new QGridLayout;
    totals->setHorizontalSpacing(6);
    sum_ = edit(QStringLiteral("edSum"), 0, 140, true);
    sum_->setLayoutDirection(Qt::LeftToRight);
    funds_ = edit(QStringLiteral("edManabehNam"), 0, 180, true);
    totals->addWidget(label(captions::kSum), 0, 0);
    totals->addWidget(sum_, 0, 1);
    totals->addWidget(label(screen.fundsTitle), 1, 0);
    totals->addWidget(funds_, 1, 1);
    if (screen.showsCounterPartyName) {
        counterPartyName_ = edit(QStringLiteral("edNamWhatDoc2"), 0, 180, true);
        totals->addWidget(label(captions::kCounterParty), 2, 0);
        totals->addWidget(counterPartyName_, 2, 1);
    }
    row->addLayout(totals);

    auto* panel = new QGroupBox(captions::kCounterPartyPanel, this);
    panel->setObjectName(QStringLiteral("grpTarafHesab"));
    auto* panelLayout = new QVBoxLayout(panel);
    panelLayout->setContentsMargins(4, 2, 4, 4);
    counterParty_ = new QTableWidget(0, 3, panel);
    counterParty_->setObjectName(QStringLiteral("grdTarafHesab"));
    counterParty_->horizontalHeader()->hide();
    counterParty_->verticalHeader()->hide();
    counterParty_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    counterParty_->setFocusPolicy(Qt::NoFocus);
    counterParty_->verticalHeader()->setDefaultSectionSize(18);
    counterParty_->setColumnWidth(0, 70);
    counterParty_->setColumnWidth(1, 60);
    counterParty_->horizontalHeader()->setStretchLastSection(true);
    counterParty_->setFixedHeight(96);
    counterParty_->setMinimumWidth(340);
    panelLayout->addWidget(counterParty_);
    row->addWidget(panel, 1);

    auto* buttons = new QGridLayout;
    buttons->setSpacing(4);
    const auto button = [this](const QString& name, const QString& text) {
        auto* b = new QPushButton(text, this);
        b->setObjectName(name);
        b->setMinimumWidth(96);
        return b;
    };
    ok_ = button(QStringLiteral("cmdOk"), captions::kOk);
    // The same key confirms on every document screen, from any box.
    ok_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    ok_->setToolTip(QStringLiteral("Ctrl+S"));
    okPrint_ = button(QStringLiteral("cmdOkPrint"), captions::kOkPrint);
    newLayout_ = new QRadioButton(captions::kNewLayout, this);
    newLayout_->setObjectName(QStringLiteral("rbNew"));
    newLayout_->setChecked(true);
    oldLayout_ = new QRadioButton(captions::kOldLayout, this);
    oldLayout_->setObjectName(QStringLiteral("rbOld"));
    auto* layouts = new QHBoxLayout;
    layouts->addWidget(newLayout_);
    layouts->addWidget(oldLayout_);
    delete_ = button(QStringLiteral("cmdDel"), captions::kDelete);
    cancel_ = button(QStringLiteral("cmdAbtal"), captions::kCancel);
    exit_ = button(QStringLiteral("cmdExit"), captions::kExit);
    buttons->addWidget(ok_, 0, 0);
    buttons->addWidget(okPrint_, 0, 1);
    buttons->addLayout(layouts, 1, 1);
    buttons->addWidget(delete_, 0, 2);
    buttons->addWidget(cancel_, 1, 2);
    buttons->addWidget(exit_, 0, 3);
    row->addLayout(buttons);

    connect(ok_, &QPushButton::clicked, this, [this] {
        if (!guarded([this] { return logic_.cmdOkClick(); })) focusRefusal();
    });
    connect(okPrint_, &QPushButton::clicked, this, [this] {
        if (!guarded([this] { return logic_.cmdOkPrintClick(); })) focusRefusal();
    });
    connect(newLayout_, &QRadioButton::toggled, this,
            [this](bool on) { logic_.printLayout = on ? PrintLayout::New : PrintLayout::Old; });
    connect(delete_, &QPushButton::clicked, this,
            [this] { guarded([this] { return logic_.cmdDelClick(); }); });
    connect(cancel_, &QPushButton::clicked, this, [this] {
        if (!guarded([this] { return logic_.cmdAbtalClick(); })) focusRefusal();
    });
    connect(exit_, &QPushButton::clicked, this, &QWidget::close);
    return box;
}

void TCashBankForm::buildMenu() {
    menu_ = new QMenu(this);
    for (const MenuItem& item : logic_.screen().menu) {
        if (item.command == MenuCommand::ReportProperties ||
            item.command == MenuCommand::DesignPrint)
            menu_->addSeparator();
        QAction* action = menu_->addAction(item.text);
        if (item.hasKey()) action->setShortcut(QKeySequence(item.key));
        // Whole-screen commands work from any box; the others belong to the grid.
        const bool screenWide =
            item.command == MenuCommand::Help || item.command == MenuCommand::NewDocument ||
            item.command == MenuCommand::Search || item.command == MenuCommand::PrintVoucher;
        action->setShortcutContext(screenWide ? Qt::WidgetWithChildrenShortcut
                                              : Qt::WidgetShortcut);
        (screenWide ? static_cast<QWidget*>(this) : grid_)->addAction(action);
        const MenuCommand command = item.command;
        connect(action, &QAction::triggered, this, [this, command] { runMenu(command); });
        actions_.insert(command, action);
    }
    grid_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(grid_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { menu_->popup(grid_->viewport()->mapToGlobal(at)); });
}

void TCashBankForm::runMenu(MenuCommand command) {
    const QString field = currentField();
    tr::ui::TableViewColumns columns(grid_);
    guarded([&]() -> bool {
        switch (command) {
            case MenuCommand::Help:
                logic_.helpClick();
                break;
            case MenuCommand::Settlement:
                logic_.settlementClick();
                break;
            case MenuCommand::NewDocument:
                logic_.newDocumentClick();
                serial_->setFocus();
                break;
            case MenuCommand::Search:
                logic_.searchClick();
                break;
            case MenuCommand::SaveColumns:
                logic_.saveColumns(columns);
                break;
            case MenuCommand::RestoreColumns:
                logic_.resetColumns();
                break;
            case MenuCommand::CopyRowAbove:
                logic_.copyRowAbove();
                break;
            case MenuCommand::ClipboardExport:
                QApplication::clipboard()->setText(logic_.clipboardText());
                break;
            case MenuCommand::RememberRow:
                logic_.rememberRow();
                break;
            case MenuCommand::RestoreRow:
                logic_.restoreRow();
                break;
            case MenuCommand::RememberCell:
                logic_.rememberCell(field);
                break;
            case MenuCommand::RestoreCell:
                logic_.restoreCell(field);
                break;
            case MenuCommand::FixedDescription:
                logic_.pickFixedDescriptionForLine();
                break;
            case MenuCommand::DeleteLine:
                logic_.deleteLine();
                break;
            case MenuCommand::ExcelImport:
                logic_.importClick();
                break;
            case MenuCommand::ReportProperties: {
                QTextDocument report;
                report.setObjectName(logic_.screen().printItemName);
                tr::ui::openReportSettings(logic_.services().global->hostFolder, &report,
                                           logic_.reportPropertiesCaption());
                break;
            }
            case MenuCommand::DesignPrint:
                logic_.designPrintClick();
                break;
            case MenuCommand::PrintDocument:
                logic_.printClick();
                break;
            case MenuCommand::PrintVoucher:
                logic_.printVoucherClick();
                break;
        }
        return true;
    });
}

// ---- Showing ------------------------------------------------------------------------------------

void TCashBankForm::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    const QString container = parentWidget() ? parentWidget()->objectName() : QString();
    guarded([&] {
        logic_.show(container);
        if (model_->query() != &logic_.grid()) {
            model_->setQuery(&logic_.grid());
            applyColumns();
        }
        return true;
    });
    showValues();
}

// The designed order, right to left; the transfer table's other columns stay hidden. Reopening
// the transfer table resets the view's sections, so this runs again after every reset.
void TCashBankForm::applyColumns() {
    if (!model_->query()) return;
    QHeaderView* header = grid_->horizontalHeader();
    for (int c = 0; c < model_->columnCount(); ++c) grid_->setColumnHidden(c, true);
    int position = 0;
    const QList<GridColumn> columns =
        logic_.screen().gridColumns(logic_.services().global->projectLevelName);
    for (const GridColumn& column : columns) {
        const int c = model_->fieldColumn(column.field);
        if (c < 0) continue;
        model_->setTitle(column.field, column.title);
        grid_->setColumnHidden(c, false);
        grid_->setColumnWidth(c, column.width);
        header->moveSection(header->visualIndex(c), position++);
    }
    const int description = model_->fieldColumn(QStringLiteral("Des"));
    if (description >= 0) header->setSectionResizeMode(description, QHeaderView::Stretch);
    // The user's saved layout over the designed one.
    tr::ui::TableViewColumns layout(grid_);
    guarded([&] { return logic_.restoreColumns(layout); });
}

void TCashBankForm::closeEvent(QCloseEvent* event) {
    // Closing hides the form, which stays for the next call of its entry point.
    event->ignore();
    if (confirmLeave()) hide();
}

bool TCashBankForm::confirmLeave() {
    if (!logic_.isShown()) return true;
    const bool leave = guarded([this] { return logic_.confirmLeave(); });
    showValues();
    if (!leave) focusRefusal();
    return leave;
}

bool TCashBankForm::openSerial(const QString& serial) {
    window()->raise();
    window()->activateWindow();
    if (!confirmLeave()) return false;
    const bool opened = guarded([&] { return logic_.openSerial(serial); });
    showValues();
    return opened;
}

void TCashBankForm::showValues() {
    if (!logic_.isShown()) return;
    showing_ = true;
    const tr::vouchers::DocumentHeader& h = logic_.header();
    caption_->setText(logic_.caption());
    status_->setText(logic_.statusText());
    cancelledMark_->setVisible(logic_.cancelled());
    emptyGridHint_->setVisible(logic_.grid().RecordCount() == 0 &&
                               logic_.grid().state() == tr::db::Query::State::Browse);
    setTextKeepingCursor(serial_, h.serial);
    setTextKeepingCursor(day_, h.day);
    setTextKeepingCursor(month_, h.month);
    setTextKeepingCursor(year_, h.year);
    setTextKeepingCursor(voucher_, h.voucherNo);
    setTextKeepingCursor(number_, h.referenceNumber);
    setTextKeepingCursor(joz_, h.joz);
    if (!treasuryCode_->hasFocus()) setTextKeepingCursor(treasuryCode_, h.treasuryDisplayCode);
    setTextKeepingCursor(treasuryName_, h.treasuryName);
    setTextKeepingCursor(user_, h.userName);
    setTextKeepingCursor(invoice_, logic_.invoiceText());
    setTextKeepingCursor(depositor_, h.des1);
    if (remitter_) {
        setTextKeepingCursor(remitter_, h.des1);
        if (remitterBank_->count() == 0) remitterBank_->addItems(logic_.bankNames());
        remitterBank_->setCurrentText(h.des2);
        setTextKeepingCursor(remitterBranchCode_, h.des3);
        setTextKeepingCursor(remitterBranchName_, h.des4);
    }
    setTextKeepingCursor(description_, h.description);
    if (!amount_->hasFocus()) setTextKeepingCursor(amount_, logic_.amountText());
    words_->setText(logic_.amountInWords());
    rate_->setEnabled(logic_.rateEnabled());
    rateLabel_->setEnabled(logic_.rateEnabled());
    if (!rate_->hasFocus()) setTextKeepingCursor(rate_, logic_.rateText());
    sum_->setText(logic_.sumText());
    funds_->setText(logic_.fundsName());
    setTextKeepingCursor(counterPartyName_, logic_.counterPartyName());
    const QList<CounterPartyLine> lines = logic_.counterParty();
    counterParty_->setRowCount(lines.size());
    for (int r = 0; r < lines.size(); ++r) {
        counterParty_->setItem(r, 0, new QTableWidgetItem(lines[r].level));
        counterParty_->setItem(r, 1, new QTableWidgetItem(lines[r].code));
        counterParty_->setItem(r, 2, new QTableWidgetItem(lines[r].name));
    }
    ok_->setEnabled(logic_.canSave());
    okPrint_->setEnabled(logic_.canSave());
    delete_->setEnabled(logic_.canDelete());
    cancel_->setEnabled(logic_.canCancel());
    cancel_->setText(logic_.cancelCaption());
    for (MenuCommand print : {MenuCommand::PrintDocument, MenuCommand::PrintVoucher})
        if (QAction* a = actions_.value(print)) a->setEnabled(logic_.canPrint());
    showing_ = false;
}

// ---- Focus and keys -----------------------------------------------------------------------------

QWidget* TCashBankForm::headerBox(HeaderField field) const {
    const std::pair<HeaderField, QWidget*> boxes[] = {
        {HeaderField::Serial, serial_},
        {HeaderField::Date, day_},
        {HeaderField::Month, month_},
        {HeaderField::Year, year_},
        {HeaderField::ReferenceNumber, number_},
        {HeaderField::TreasuryCode, treasuryCode_},
        {HeaderField::Description, description_},
        {HeaderField::Amount, amount_},
        {HeaderField::Joz, joz_},
        {HeaderField::Des1, depositor_ ? depositor_ : remitter_},
        {HeaderField::Des2, remitterBank_},
        {HeaderField::Des3, remitterBranchCode_},
        {HeaderField::Des4, remitterBranchName_},
    };
    for (const auto& [f, box] : boxes)
        if (f == field) return box;
    return nullptr;
}

void TCashBankForm::focusRefusal() {
    if (logic_.focus() == HeaderField::None) {
        if (logic_.grid().state() != tr::db::Query::State::Browse) focusRefusedCell();
    } else if (QWidget* box = headerBox(logic_.focus())) {
        box->setFocus();
    }
}

void TCashBankForm::focusRefusedCell() {
    const int row = model_->currentRow();
    if (row < 0) return;
    const int column = model_->fieldColumn(logic_.lineFocusField());
    const QSignalBlocker block(grid_->selectionModel());
    grid_->setFocus();
    grid_->setCurrentIndex(
        model_->index(row, column < 0 ? model_->fieldColumn(QStringLiteral("Koll")) : column));
}

QString TCashBankForm::currentField() const {
    const QModelIndex index = grid_->currentIndex();
    return index.isValid() ? model_->fieldName(index.column()) : QString();
}

void TCashBankForm::currentRowChanged(int row) {
    guarded([&] {
        model_->setCurrentRow(row);
        return true;
    });
    if (model_->currentRow() != row) focusRefusedCell();
    showValues();
}

void TCashBankForm::postOrAppend() {
    const int column = std::max(0, grid_->currentIndex().column());
    const bool ok = guarded([this] {
        if (logic_.grid().state() == tr::db::Query::State::Browse) {
            logic_.appendLine();
            return true;
        }
        return logic_.postLine();
    });
    if (!ok) {
        focusRefusedCell();
        return;
    }
    grid_->setCurrentIndex(model_->index(model_->currentRow(), column));
}

bool TCashBankForm::guarded(const std::function<bool()>& action) {
    try {
        return action();
    } catch (const tr::db::DatabaseError& error) {
        tr::dialog::Messages(logic_.services().dialog).show(error.message(), QStringLiteral("1ER"));
        showValues();
        return false;
    }
}

bool TCashBankForm::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (watched == serial_ && type == QEvent::FocusIn) {
        guarded([this] {
            logic_.serialEnter();
            return true;
        });
    } else if (watched == serial_ && type == QEvent::FocusOut) {
        guarded([this] { return logic_.serialLeave(); });
    } else if ((watched == day_ || watched == month_ || watched == year_) &&
               type == QEvent::FocusOut) {
        if (watched == day_) setTextKeepingCursor(day_, logic_.dayLeave(day_->text()));
        if (watched == month_) setTextKeepingCursor(month_, logic_.monthLeave(month_->text()));
        // A message box taking focus, or a move between the date's own boxes, is not the user
        // leaving the date.
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        QWidget* next = QApplication::focusWidget();
        const bool withinDate = next == day_ || next == month_ || next == year_;
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
            !withinDate && !logic_.dateLeave())
            focusRefusal();
    } else if (watched == treasuryCode_ && type == QEvent::FocusOut) {
        guarded([this] {
            logic_.treasuryCodeEntered(treasuryCode_->text());
            return true;
        });
    } else if ((watched == amount_ || watched == rate_) && type == QEvent::FocusOut) {
        // A message box taking focus is not the user leaving the box.
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
            !logic_.amountLeave())
            static_cast<QWidget*>(watched)->setFocus(Qt::OtherFocusReason);
    } else if (watched == treasuryCode_ && type == QEvent::MouseButtonDblClick) {
        guarded([this] { return logic_.pickTreasury(); });
        return true;
    } else if (watched == grid_ && type == QEvent::FocusIn) {
        // The header must be complete before lines are entered.
        if (!guarded([this] { return logic_.headerLeave(); })) {
            focusRefusal();
            return true;
        }
    }

    if (type != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    if ((watched == day_ || watched == month_ || watched == year_) && !key->text().isEmpty() &&
        key->text().at(0).isPrint() && !CashBankDocument::isDateCharacter(key->text().at(0)))
        return true;
    if (watched == serial_ && (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)) {
        // As leaving the box does: the serial typed is opened when it is saved.
        guarded([this] { return logic_.serialLeave(); });
        return true;
    }
    if (watched == serial_ && key->key() == Qt::Key_Up) {
        spinUp_->click();
        return true;
    }
    if (watched == serial_ && key->key() == Qt::Key_Down) {
        spinDown_->click();
        return true;
    }
    if (watched == treasuryCode_ && (key->key() == Qt::Key_F3 || key->key() == Qt::Key_F2)) {
        guarded([this] { return logic_.pickTreasury(); });
        return true;
    }
    if (watched == grid_) {
        const bool lastRow = grid_->currentIndex().row() >= model_->rowCount() - 1;
        if (key->key() == Qt::Key_F3 || key->key() == Qt::Key_F2) {
            const QString field = currentField();
            guarded([this, field] { return logic_.pickCell(field); });
            return true;
        }
        if (key->key() == Qt::Key_Insert && key->modifiers() == Qt::NoModifier) {
            guarded([this] {
                logic_.appendLine();
                return true;
            });
            grid_->setCurrentIndex(model_->index(model_->currentRow(), 1));
            return true;
        }
        if (key->key() == Qt::Key_Down && lastRow) {
            postOrAppend();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace tr::cashbank
