#include "cheques/ui/search/cheque_search_form.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QRegularExpressionValidator>
#include <QTableView>
#include <QVBoxLayout>

#include "common/db/query_helpers.h"
#include "common/persian/amount_cells.h"
#include "common/ui/grid_report.h"
#include "common/ui/title_sorter.h"
#include "common/ui/total_rows_model.h"
#include "host/sdk/persian_font.h"

namespace tr::cheques {

namespace {

QWidget* dateRow(QWidget* owner, const ChequeSearchForm::DateEdits& d) {
    auto* row = new QWidget(owner);
    auto* h = new QHBoxLayout(row);
    h->setContentsMargins(0, 0, 0, 0);
    h->setSpacing(1);
    // Right to left: day, month, year as the date is read.
    for (QLineEdit* e : {d.day, d.month, d.year}) h->addWidget(e);
    h->addStretch();
    return row;
}

}  // namespace

ChequeSearchForm::ChequeSearchForm(const tr::Services& services, ChequeSide side, QWidget* parent)
    : QWidget(parent), services_(services), search_(std::make_unique<ChequeSearch>(services, side)) {
    setObjectName(side == ChequeSide::Received ? QStringLiteral("ChqGetSearchForm")
                                               : QStringLiteral("ChqPaySearchForm"));
    setWindowTitle(ChequeSearch::caption(side));
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(12));
    report_.setObjectName(reportKey());

    auto* menuBar = new QMenuBar(this);
    QAction* run = menuBar->addAction(QStringLiteral("نمايش نتيجه جستجو"));
    run->setShortcut(Qt::Key_F5);
    connect(run, &QAction::triggered, this, [this] { searchClick(); });
    QAction* replace = menuBar->addAction(QStringLiteral("جايگزين"));
    connect(replace, &QAction::triggered, this, [this] { replaceClick(); });
    QAction* print = menuBar->addAction(QStringLiteral("چاپ"));
    print->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    connect(print, &QAction::triggered, this, [this] { printClick(); });
    for (QAction* a : {run, print}) addAction(a);

    auto* filters = new QWidget(this);
    auto* g = new QGridLayout(filters);
    g->setContentsMargins(4, 4, 4, 4);
    g->setHorizontalSpacing(6);
    // The filter boxes are as wide as the columns they are compared with.
    const int seriesWidth = columnWidth(QStringLiteral("N_ChqLastTrans"), QStringLiteral("Joz"), 10);
    const int numberWidth = columnWidth(QStringLiteral("N_ChqLastTrans"), QStringLiteral("ChqNo"), 20);
    const int accountWidth = columnWidth(QStringLiteral("N_BankHesab"), QStringLiteral("BankCod"), 10) +
                             columnWidth(QStringLiteral("N_BankHesab"), QStringLiteral("ShobehCod"), 20) +
                             columnWidth(QStringLiteral("N_BankHesab"), QStringLiteral("AcountCod"), 20);
    const auto textBox = [&](int length) {
        auto* e = new QLineEdit(filters);
        e->setMaxLength(length);
        e->setFixedWidth(std::min(220, 30 + 8 * length));
        return e;
    };
    fromSeries = textBox(seriesWidth);
    toSeries = textBox(seriesWidth);
    fromNumber = textBox(numberWidth);
    toNumber = textBox(numberWidth);
    fromAccount = textBox(accountWidth);
    toAccount = textBox(accountWidth);
    const auto dates = [&] {
        return tr::ui::dateBoxes(filters, {}, 30, 46);
    };
    fromDate = dates();
    toDate = dates();
    fromDue = dates();
    toDue = dates();
    fromAmount = new QLineEdit(filters);
    toAmount = new QLineEdit(filters);
    const auto label = [&](const QString& text) { return new QLabel(text, filters); };
    int row = 0;
    const auto pair = [&](const QString& from, QWidget* a, const QString& to, QWidget* b) {
        g->addWidget(label(from), row, 0);
        g->addWidget(a, row, 1);
        g->addWidget(label(to), row, 2);
        g->addWidget(b, row, 3);
        ++row;
    };
    pair(QStringLiteral("از سري"), fromSeries, QStringLiteral("تا سري"), toSeries);
    pair(QStringLiteral("از شماره چک"), fromNumber, QStringLiteral("تا شماره چک"), toNumber);
    pair(QStringLiteral("از بانک/شعبه/حساب"), fromAccount, QStringLiteral("تا بانک/شعبه/حساب"), toAccount);
    pair(QStringLiteral("از تاريخ"), dateRow(filters, fromDate), QStringLiteral("تا تاريخ"), dateRow(filters, toDate));
    pair(QStringLiteral("از سررسيد"), dateRow(filters, fromDue), QStringLiteral("تا سررسيد"), dateRow(filters, toDue));
    pair(QStringLiteral("از مبلغ"), fromAmount, QStringLiteral("تا مبلغ"), toAmount);
    auto* wordsRow = new QHBoxLayout;
    auto* replaceRow = new QHBoxLayout;
    for (int i = 0; i < 3; ++i) {
        words[i] = new QLineEdit(filters);
        replacements[i] = new QLineEdit(filters);
        wordsRow->addWidget(words[i]);
        replaceRow->addWidget(replacements[i]);
        if (i < 2) {
            joins[i] = new QComboBox(filters);
            joins[i]->addItems({QStringLiteral("And"), QStringLiteral("Or")});
            wordsRow->addWidget(joins[i]);
            replaceRow->addSpacing(joins[i]->sizeHint().width());
        }
    }
    g->addWidget(label(QStringLiteral("شرح")), row, 0);
    g->addLayout(wordsRow, row++, 1, 1, 3);
    g->addWidget(label(QStringLiteral("جايگزين")), row, 0);
    g->addLayout(replaceRow, row++, 1, 1, 3);

    auto* states = new QGridLayout;
    int n = 0;
    for (const ChequeStateBox& box : ChequeSearch::stateBoxes(side)) {
        auto* check = new QCheckBox(box.caption, filters);
        check->setChecked(true);
        stateBoxes << check;
        states->addWidget(check, n / 2, n % 2);
        ++n;
    }
    openingBox = new QCheckBox(QStringLiteral("اول دوره"), filters);
    openingBox->setChecked(true);
    states->addWidget(openingBox, n / 2, n % 2);
    g->addLayout(states, 0, 4, row, 1);
    g->setColumnStretch(5, 1);

    model_ = tr::ui::searchResultModel(&search_->result(), this);
    grid_ = tr::ui::searchResultGrid(model_, this);

    auto* title = new QLabel(ChequeSearch::caption(side), this);
    title->setAlignment(Qt::AlignCenter);
    title->setAutoFillBackground(true);
    title->setForegroundRole(QPalette::HighlightedText);
    title->setBackgroundRole(QPalette::Highlight);
    title->setMinimumHeight(26);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    layout->setMenuBar(menuBar);
    layout->addWidget(title);
    layout->addWidget(filters);
    layout->addWidget(grid_, 1);
}

ChequeSearchForm::~ChequeSearchForm() {
    // The model reads the search's result: it goes first.
    delete sorter_.data();
    grid_->setModel(nullptr);
    delete model_;
}

void ChequeSearchForm::setServices(const tr::Services& services) {
    services_ = services;
    search_->setServices(services);
}

int ChequeSearchForm::columnWidth(const QString& table, const QString& column, int fallback) const {
    if (!services_.database) return fallback;
    const QVariant width = tr::db::firstColumn(
        services_.connection(), QStringLiteral("Select Col_Length(") + services_.connection().text(table) +
                                    QStringLiteral(", ") + services_.connection().text(column) +
                                    QStringLiteral(")"));
    return width.isNull() || width.toInt() <= 0 ? fallback : width.toInt();
}

void ChequeSearchForm::readFilters() {
    ChequeSearchFilters& f = search_->filters();
    f.fromSeries = fromSeries->text();
    f.toSeries = toSeries->text();
    f.fromNumber = fromNumber->text();
    f.toNumber = toNumber->text();
    f.fromAccount = fromAccount->text();
    f.toAccount = toAccount->text();
    const auto date = [](const DateEdits& d) {
        return tr::search::DateBoxes{d.day->text(), d.month->text(), d.year->text()};
    };
    f.fromDate = date(fromDate);
    f.toDate = date(toDate);
    f.fromDue = date(fromDue);
    f.toDue = date(toDue);
    f.fromAmount = fromAmount->text();
    f.toAmount = toAmount->text();
    for (int i = 0; i < 3; ++i) {
        f.words[i] = words[i]->text();
        f.replacements[i] = replacements[i]->text();
    }
    for (int i = 0; i < 2; ++i)
        f.joins[i] = joins[i]->currentIndex() == 1 ? tr::search::WordJoin::Or : tr::search::WordJoin::And;
    for (int i = 0; i < stateBoxes.size(); ++i) f.states[i] = stateBoxes[i]->isChecked();
    f.opening = openingBox->isChecked();
}

bool ChequeSearchForm::searchClick() {
    readFilters();
    const bool done = search_->mnuSearchClick();
    resultOpened();
    return done;
}

bool ChequeSearchForm::replaceClick() {
    readFilters();
    const bool done = search_->mnuReplaceClick();
    resultOpened();
    return done;
}

bool ChequeSearchForm::printClick(const QString& pdfFile) {
    const QString title = windowTitle();
    return tr::ui::printReport(report_, title, tr::ui::gridReportHtml(title, *grid_), this, pdfFile,
                               tr::ui::PageTurn::Landscape);
}

void ChequeSearchForm::resultOpened() {
    model_->refresh();
    model_->setAllTitleColours(Qt::black);
    delete sorter_.data();  // a new result starts unsorted
    sorter_ = new tr::ui::TitleSorter(grid_, model_, QStringLiteral("sOrder, "));
    const QStringList shown = search_->shownFields();
    tr::ui::arrangeResultColumns(
        grid_, model_, [this](const QString& field) { return search_->fieldCaption(field); }, shown,
        [&shown](int visual) { return shown[visual] == QLatin1String("Des") ? 260 : 95; });
}

ChequeSearchForm* openChequeSearch(ChequeSide side, const tr::Services& services, QWidget* owner) {
    const QString name = side == ChequeSide::Received ? QStringLiteral("ChqGetSearchForm")
                                                      : QStringLiteral("ChqPaySearchForm");
    auto* form = owner ? owner->findChild<ChequeSearchForm*>(name, Qt::FindDirectChildrenOnly) : nullptr;
    if (!form) {
        form = side == ChequeSide::Received ? static_cast<ChequeSearchForm*>(new TChqGetSearchForm(services, owner))
                                            : new TChqPaySearchForm(services, owner);
        form->setWindowFlag(Qt::Window);
        form->resize(1100, 700);
    } else {
        form->setServices(services);
    }
    form->show();
    form->raise();
    form->activateWindow();
    return form;
}

}  // namespace tr::cheques
