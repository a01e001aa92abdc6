#include "vouchers/ui/fix_des_form.h"

#include <QAbstractTextDocumentLayout>
#include <QCloseEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QTableView>
#include <QTextOption>
#include <QVBoxLayout>

#include "common/ui/dataset_model.h"
#include "common/ui/settings_libraries.h"
#include "common/ui/title_sorter.h"
#include "common/ui/grid_report.h"
#include "host/sdk/modal_runner.h"
#include "host/sdk/persian_font.h"

namespace tr::vouchers {

TFixDesForm::TFixDesForm(const tr::Services& services, QWidget* parent)
    : QWidget(parent), screen_(std::make_unique<FixDesScreen>(services)) {
    setObjectName(QStringLiteral("FixDesForm"));
    setWindowTitle(FixDesScreen::kCaption);
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(13));

    caption_ = new QLabel(FixDesScreen::kCaption, this);
    caption_->setAlignment(Qt::AlignCenter);
    caption_->setAutoFillBackground(true);
    caption_->setForegroundRole(QPalette::HighlightedText);
    caption_->setBackgroundRole(QPalette::Highlight);
    caption_->setMinimumHeight(26);

    model_ = new tr::ui::DatasetModel(&screen_->grid(), this);
    model_->setAutoPost(false);  // a row is checked as a whole when the user leaves it
    for (const QString& field : FixDesScreen::gridFields()) {
        model_->setTitle(field, FixDesScreen::gridTitle(field));
    }

    grid_ = new QTableView(this);
    grid_->setObjectName(QStringLiteral("dbg"));
    grid_->setModel(model_);
    grid_->setLayoutDirection(Qt::RightToLeft);
    grid_->setSelectionBehavior(QAbstractItemView::SelectItems);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::EditKeyPressed |
                           QAbstractItemView::SelectedClicked);
    grid_->verticalHeader()->setDefaultSectionSize(24);
    grid_->horizontalHeader()->setMinimumSectionSize(40);
    grid_->installEventFilter(this);
    sorter_ = new tr::ui::TitleSorter(grid_, model_);
    connect(grid_, &QTableView::doubleClicked, this, [this](const QModelIndex&) { pickAccount(); });
    connect(model_, &QAbstractItemModel::modelReset, this, [this] {
        if (grid_->selectionModel() && model_->currentRow() >= 0 &&
            !grid_->currentIndex().isValid()) {
            grid_->setCurrentIndex(model_->index(model_->currentRow(), 0));
        }
    });
    connect(grid_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (current.isValid()) currentRowChanged(current.row());
            });

    menu_ = new QMenu(this);
    QAction* turnover = menu_->addAction(QStringLiteral("نمايش گردش حساب/سند ..."));
    connect(turnover, &QAction::triggered, this, &TFixDesForm::showTurnover);
    QAction* remove = menu_->addAction(QStringLiteral("حذف رديف"));
    remove->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Delete));
    connect(remove, &QAction::triggered, this, [this] { screen_->deleteRow(); });
    menu_->addSeparator();
    QAction* properties = menu_->addAction(QStringLiteral("مشخصات گزارش ..."));
    connect(properties, &QAction::triggered, this, &TFixDesForm::openReportProperties);
    QAction* print = menu_->addAction(QStringLiteral("چاپ ..."));
    print->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    connect(print, &QAction::triggered, this, [this] { printReport(); });
    grid_->addActions(menu_->actions());
    grid_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(grid_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { menu_->popup(grid_->viewport()->mapToGlobal(at)); });

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    layout->addWidget(caption_);
    layout->addWidget(grid_);
}

TFixDesForm::~TFixDesForm() {
    tr::ui::DatasetModel::releaseQueries(this);
}

void TFixDesForm::setServices(const tr::Services& services) {
    screen_->setServices(services);
}

void TFixDesForm::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (screen_->grid().Active()) return;
    screen_->show();
    const QList<int> widths{320, 50, 60, 70, 70, 100};
    for (int c = 0; c < model_->columnCount() && c < widths.size(); ++c) {
        grid_->setColumnWidth(c, widths[c]);
    }
    // The description takes whatever width the docked form has beyond the codes.
    grid_->horizontalHeader()->setSectionResizeMode(model_->fieldColumn(QStringLiteral("FixDes")),
                                                    QHeaderView::Stretch);
    if (model_->rowCount() > 0) grid_->setCurrentIndex(model_->index(0, 0));
}

void TFixDesForm::closeEvent(QCloseEvent* event) {
    event->ignore();
    hide();
}

QString TFixDesForm::currentField() const {
    const QModelIndex index = grid_->currentIndex();
    return index.isValid() ? model_->fieldName(index.column()) : QString();
}

void TFixDesForm::currentRowChanged(int row) {
    model_->setCurrentRow(row);
    if (model_->currentRow() != row) focusRefusedCell();
}

void TFixDesForm::focusRefusedCell() {
    const int column = model_->fieldColumn(screen_->refusedField());
    const int row = model_->currentRow();
    if (row < 0) return;
    const QSignalBlocker block(grid_->selectionModel());
    grid_->setCurrentIndex(model_->index(row, column < 0 ? 0 : column));
    grid_->viewport()->update();
}

void TFixDesForm::postOrAppend() {
    tr::db::Query& query = screen_->grid();
    if (!query.Active()) return;
    if (query.state() == tr::db::Query::State::Browse) {
        screen_->appendRow();
    } else {
        query.Post();
        if (query.state() != tr::db::Query::State::Browse) {
            focusRefusedCell();
            return;
        }
    }
    const int column = std::max(0, grid_->currentIndex().column());
    grid_->setCurrentIndex(model_->index(model_->currentRow(), column));
}

bool TFixDesForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grid_ && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        const bool lastRow = grid_->currentIndex().row() >= model_->rowCount() - 1;
        if (key->key() == Qt::Key_F3) {
            pickAccount();
            return true;
        }
        if (key->key() == Qt::Key_Insert && key->modifiers() == Qt::NoModifier) {
            screen_->appendRow();
            grid_->setCurrentIndex(model_->index(model_->currentRow(), 0));
            return true;
        }
        if (key->key() == Qt::Key_Down && lastRow) {
            postOrAppend();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void TFixDesForm::pickAccount() {
    const QString field = currentField();
    if (accountLevelOfField(field) == AccountLevel::None) return;
    screen_->pickAccount(field);
}

void TFixDesForm::showTurnover() {
    screen_->showTurnover(currentField(), parentWidget());
}

void TFixDesForm::printReport(const QString& pdfFile) {
    tr::ui::printReport(report_, screen_->reportTitle(), screen_->reportHtml(), this, pdfFile);
}

void TFixDesForm::openReportProperties() {
    tr::ui::openReportSettings(screen_->services().global->hostFolder, &report_,
                               FixDesScreen::reportPropertiesCaption());
}

}  // namespace tr::vouchers
