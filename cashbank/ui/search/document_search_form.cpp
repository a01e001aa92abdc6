#include "cashbank/ui/search/document_search_form.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFocusEvent>
#include <QFont>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QRegularExpressionValidator>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

#include "cashbank/documents/cash_bank_screens.h"
#include "cashbank/ui/documents/cash_bank_form.h"
#include "cashbank/ui/search/search_result_print.h"
#include "common/persian/amount_cells.h"
#include "common/ui/total_rows_model.h"
#include "common/ui/title_sorter.h"
#include "host/sdk/persian_font.h"

namespace tr::cashbank {

namespace {

QLabel* caption(const QString& text, QWidget* owner) {
    auto* label = new QLabel(text, owner);
    label->setAlignment(Qt::AlignVCenter | Qt::AlignLeading);
    return label;
}

}  // namespace

// `name` gives the boxes their names: edFromDay, edFromMonth, edFromYear and the like.
DocumentSearchForm::DateEdits DocumentSearchForm::dateEdits(QWidget* owner, const QString& name) {
    return tr::ui::dateBoxes(owner, name);
}

DocumentSearchForm::DocumentSearchForm(const tr::Services& services, SearchFamily family,
                                       QWidget* parent)
    : QWidget(parent), services_(services), search_(std::make_unique<DocumentSearch>(services, family)) {
    const SearchFamilyRow& row = search_->family();
    search_->openDocument = [this](const QString& kind, const QString& serial) {
        return openInWindow(kind, serial);
    };
    setObjectName(row.gridKey + QStringLiteral("Form"));
    setWindowTitle(row.caption);
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(13));

    auto* menuBar = new QMenuBar(this);
    QMenu* menu = menuBar->addMenu(QStringLiteral("جستجو"));
    searchAction_ = menu->addAction(QStringLiteral("نمايش نتيجه جستجو"));
    searchAction_->setShortcut(QKeySequence(Qt::Key_F5));
    searchAction_->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(searchAction_);
    connect(searchAction_, &QAction::triggered, this, &DocumentSearchForm::mnuSearchClick);
    QAction* replace = menu->addAction(QStringLiteral("جايگزيني کلمات در شرح اسناد"));
    connect(replace, &QAction::triggered, this, &DocumentSearchForm::mnuReplaceClick);
    menu->addSeparator();
    printAction_ = menu->addAction(QStringLiteral("چاپ نتيجه جستجو ..."));
    printAction_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    printAction_->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(printAction_);
    connect(printAction_, &QAction::triggered, this, &DocumentSearchForm::printClick);
    pdfAction_ = menu->addAction(QStringLiteral("ذخيره نتيجه در فايل PDF ..."));
    connect(pdfAction_, &QAction::triggered, this, &DocumentSearchForm::savePdfClick);
    csvAction_ = menu->addAction(QStringLiteral("ذخيره نتيجه در فايل CSV ..."));
    connect(csvAction_, &QAction::triggered, this, &DocumentSearchForm::saveCsvClick);
    xlsxAction_ = menu->addAction(QStringLiteral("ذخيره نتيجه در فايل Excel ..."));
    connect(xlsxAction_, &QAction::triggered, this, &DocumentSearchForm::saveXlsxClick);
    askSavePath = [this](const QString& suffix) {
        return QFileDialog::getSaveFileName(
            this, QStringLiteral("ذخيره نتيجه جستجو"), windowTitle() + QLatin1Char('.') + suffix,
            suffix.toUpper() + QStringLiteral(" (*.") + suffix + QLatin1Char(')'));
    };

    auto* title = new QLabel(row.caption, this);
    title->setAlignment(Qt::AlignCenter);
    title->setAutoFillBackground(true);
    title->setForegroundRole(QPalette::HighlightedText);
    title->setBackgroundRole(QPalette::Highlight);
    title->setMinimumHeight(26);

    auto* filters = new QWidget(this);
    auto* grid = new QGridLayout(filters);
    grid->setContentsMargins(6, 4, 6, 4);
    grid->setHorizontalSpacing(6);

    const QString digits = QStringLiteral("\\d{0,9}");
    fromCode = tr::ui::digitsBox(filters, 90, QStringLiteral("\\S{0,20}"));
    toCode = tr::ui::digitsBox(filters, 90, QStringLiteral("\\S{0,20}"));
    fromName = new QLabel(filters);
    toName = new QLabel(filters);
    for (QLabel* name : {fromName, toName}) {
        name->setMinimumWidth(190);
        name->setFrameShape(QFrame::StyledPanel);
    }
    connect(fromCode, &QLineEdit::editingFinished, this,
            [this] { fromName->setText(search_->accountName(fromCode->text())); });
    connect(toCode, &QLineEdit::editingFinished, this,
            [this] { toName->setText(search_->accountName(toCode->text())); });
    grid->addWidget(caption(QStringLiteral("از ") + row.rangeNoun, filters), 0, 0);
    grid->addWidget(fromCode, 0, 1);
    grid->addWidget(fromName, 0, 2, 1, 3);
    grid->addWidget(caption(QStringLiteral("تا ") + row.rangeNoun, filters), 0, 5);
    grid->addWidget(toCode, 0, 6);
    grid->addWidget(toName, 0, 7, 1, 3);

    fromDate = dateEdits(filters, QStringLiteral("From"));
    toDate = dateEdits(filters, QStringLiteral("To"));
    for (const DateEdits* date : {&fromDate, &toDate})
        for (QLineEdit* box : {date->day, date->month, date->year}) box->installEventFilter(this);
    const auto addDate = [&](const QString& text, const DateEdits& date, int column) {
        grid->addWidget(caption(text, filters), 1, column);
        auto* boxes = new QHBoxLayout;
        boxes->setSpacing(2);
        // Day, month, year from the right, as a Persian date is read.
        boxes->addWidget(date.day);
        boxes->addWidget(new QLabel(QStringLiteral("/"), filters));
        boxes->addWidget(date.month);
        boxes->addWidget(new QLabel(QStringLiteral("/"), filters));
        boxes->addWidget(date.year);
        boxes->addStretch();
        grid->addLayout(boxes, 1, column + 1, 1, 4);
    };
    addDate(QStringLiteral("از تاريخ"), fromDate, 0);
    addDate(QStringLiteral("تا تاريخ"), toDate, 5);

    fromSerial = tr::ui::digitsBox(filters, 90, digits);
    toSerial = tr::ui::digitsBox(filters, 90, digits);
    grid->addWidget(caption(QStringLiteral("از سريال"), filters), 2, 0);
    grid->addWidget(fromSerial, 2, 1);
    grid->addWidget(caption(QStringLiteral("تا سريال"), filters), 2, 5);
    grid->addWidget(toSerial, 2, 6);

    const QString amount = QStringLiteral("[\\d,]{0,20}(\\.\\d{0,2})?");
    fromAmount = tr::ui::digitsBox(filters, 130, amount);
    toAmount = tr::ui::digitsBox(filters, 130, amount);
    grid->addWidget(caption(QStringLiteral("از مبلغ"), filters), 3, 0);
    grid->addWidget(fromAmount, 3, 1, 1, 2);
    grid->addWidget(caption(QStringLiteral("تا مبلغ"), filters), 3, 5);
    grid->addWidget(toAmount, 3, 6, 1, 2);

    receipts = new QCheckBox(QStringLiteral("دريافت"), filters);
    payments = new QCheckBox(QStringLiteral("پرداخت "), filters);
    cancellations = new QCheckBox(QStringLiteral("ابطال"), filters);
    auto* kinds = new QHBoxLayout;
    for (QCheckBox* box : {receipts, payments, cancellations}) {
        box->setChecked(true);
        kinds->addWidget(box);
    }
    kinds->addStretch();
    // A box with no kind of this family behind it would only mislead.
    receipts->setEnabled(!row.receiptKinds.isEmpty());
    payments->setEnabled(!row.paymentKinds.isEmpty());
    grid->addLayout(kinds, 4, 1, 1, 9);

    grid->addWidget(caption(QStringLiteral("شرح"), filters), 5, 0);
    grid->addWidget(caption(QStringLiteral("جايگزين"), filters), 6, 0);
    for (int i = 0; i < 3; ++i) {
        words[i] = new QLineEdit(filters);
        replacements[i] = new QLineEdit(filters);
        words[i]->setMinimumWidth(150);
        grid->addWidget(words[i], 5, 1 + i * 3, 1, 2);
        grid->addWidget(replacements[i], 6, 1 + i * 3, 1, 2);
        if (i < 2) {
            joins[i] = new QComboBox(filters);
            joins[i]->addItems({QStringLiteral("و"), QStringLiteral("يا")});
            grid->addWidget(joins[i], 5, 3 + i * 3);
        }
    }
    grid->setColumnStretch(9, 1);

    model_ = tr::ui::searchResultModel(&search_->result(), this);
    grid_ = tr::ui::searchResultGrid(model_, this);
    sorter_ = new tr::ui::TitleSorter(grid_, model_, QStringLiteral("sOrder, "));
    // A row's document opens in its screen, by double-click or Enter, as the pickers choose.
    connect(grid_, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { search_->openRow(index.row()); });
    grid_->installEventFilter(this);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    layout->setMenuBar(menuBar);
    layout->addWidget(title);
    layout->addWidget(filters);
    layout->addWidget(grid_, 1);
}

DocumentSearchForm::~DocumentSearchForm() {
    // The windows hold a reference to services_, which goes before QWidget deletes its children.
    for (const QPointer<TCashBankForm>& window : std::as_const(documentWindows_)) delete window.data();
}

void DocumentSearchForm::setServices(const tr::Services& services) {
    services_ = services;
    search_->setServices(services);
}

void DocumentSearchForm::saveCsvClick() {
    const QString path = askSavePath ? askSavePath(QStringLiteral("csv")) : QString();
    if (!path.isEmpty()) search_->saveCsv(path);
}

void DocumentSearchForm::saveXlsxClick() {
    const QString path = askSavePath ? askSavePath(QStringLiteral("xlsx")) : QString();
    if (!path.isEmpty()) search_->saveXlsx(path);
}

void DocumentSearchForm::savePdfClick() {
    const QString path = askSavePath ? askSavePath(QStringLiteral("pdf")) : QString();
    if (!path.isEmpty()) ui::printSearchResult(services_, *search_, ui::PrintTarget::pdf(path), this);
}

void DocumentSearchForm::printClick() {
    ui::printSearchResult(services_, *search_, ui::PrintTarget::preview(), this);
}

std::optional<bool> DocumentSearchForm::openInWindow(const QString& kind, const QString& serial) {
    const auto& screens = cashBankScreens();
    const auto screen = std::find_if(screens.begin(), screens.end(),
                                     [&](const CashBankScreen& s) { return s.kindCode == kind; });
    if (screen == screens.end()) return std::nullopt;
    QPointer<TCashBankForm>& form = documentWindows_[kind];
    if (!form) {
        form = new TCashBankForm(services_, screen->id, this);
        form->setWindowFlag(Qt::Window);
        form->resize(1100, 700);
    }
    form->show();
    return form->openSerial(serial);
}

void DocumentSearchForm::readFilters() {
    SearchFilters& f = search_->filters();
    f.fromCode = fromCode->text();
    f.toCode = toCode->text();
    f.fromDate = {fromDate.day->text(), fromDate.month->text(), fromDate.year->text()};
    f.toDate = {toDate.day->text(), toDate.month->text(), toDate.year->text()};
    f.fromSerial = serialBox(fromSerial->text());
    f.toSerial = serialBox(toSerial->text());
    f.fromAmount = fromAmount->text();
    f.toAmount = toAmount->text();
    f.receipts = receipts->isChecked();
    f.payments = payments->isChecked();
    f.cancellations = cancellations->isChecked();
    for (int i = 0; i < 3; ++i) {
        f.words[i] = words[i]->text();
        f.replacements[i] = replacements[i]->text();
    }
    for (int i = 0; i < 2; ++i)
        f.joins[i] = joins[i]->currentIndex() == 1 ? WordJoin::Or : WordJoin::And;
}

void DocumentSearchForm::mnuSearchClick() {
    readFilters();
    // A refused amount or date leaves the last result as it was.
    if (search_->mnuSearchClick() || search_->stopped()) resultOpened();
    else
        focusDateFault();
}

void DocumentSearchForm::mnuReplaceClick() {
    readFilters();
    if (search_->mnuReplaceClick()) resultOpened();
    else
        focusDateFault();
}

void DocumentSearchForm::focusDateFault() {
    const DateFault& fault = search_->dateFault();
    if (fault.filter == DateFilter::None) return;
    const DateEdits& date = fault.filter == DateFilter::From ? fromDate : toDate;
    switch (fault.part) {
        case tr::persian::DatePart::Year:
            date.year->setFocus();
            break;
        case tr::persian::DatePart::Month:
            date.month->setFocus();
            break;
        default:
            date.day->setFocus();
            break;
    }
}

bool DocumentSearchForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grid_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && grid_->currentIndex().isValid()) {
            search_->openRow(grid_->currentIndex().row());
            return true;
        }
    }
    if (event->type() != QEvent::FocusOut) return QWidget::eventFilter(watched, event);
    for (const DateEdits* date : {&fromDate, &toDate}) {
        const QList<QObject*> boxes = {date->day, date->month, date->year};
        if (!boxes.contains(watched)) continue;
        // A message box taking focus, or a move within the same date, is not leaving it.
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
            boxes.contains(QApplication::focusWidget()))
            break;
        readFilters();
        if (!search_->datesRead()) focusDateFault();
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void DocumentSearchForm::resultOpened() {
    model_->refresh();
    model_->setAllTitleColours(Qt::black);
    delete sorter_;  // a new result starts unsorted
    sorter_ = new tr::ui::TitleSorter(grid_, model_, QStringLiteral("sOrder, "));
    const QStringList shown = {
        QStringLiteral("CashCod"),   QStringLiteral("CashNam"), QStringLiteral("NDocNam"),
        QStringLiteral("SanadDate"), QStringLiteral("Des"),     QStringLiteral("SValue"),
        QStringLiteral("Serial"),    QStringLiteral("CashNo"),  QStringLiteral("Joz"),
        QStringLiteral("Des1"),      QStringLiteral("Des2"),    QStringLiteral("Des3"),
        QStringLiteral("Des4")};
    const QList<int> widths = {80, 150, 110, 80, 300, 110, 60, 70, 40, 120, 120, 60, 120};
    tr::ui::arrangeResultColumns(
        grid_, model_, [this](const QString& field) { return search_->fieldCaption(field); }, shown,
        [&widths](int visual) { return widths[visual]; });
}

DocumentSearchForm* createSearchForm(SearchFamily family, const tr::Services& services,
                                     QWidget* parent) {
    switch (family) {
        case SearchFamily::Cash:
            return new TCashSearchForm(services, parent);
        case SearchFamily::PettyCash:
            return new TTankhahSearchForm(services, parent);
        case SearchFamily::Deposit:
            return new TVarizSearchForm(services, parent);
        case SearchFamily::Withdrawal:
            return new TBardashtSearchForm(services, parent);
        case SearchFamily::Transfer:
            return new THavalehSearchForm(services, parent);
    }
    return nullptr;
}

}  // namespace tr::cashbank
