#include "cheques/ui/chq_first_state_form.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

#include "common/db/database_error.h"
#include "common/dialog/message_dialog.h"
#include "common/ui/dataset_model.h"
#include "common/ui/grid_report.h"
#include "common/ui/settings_libraries.h"
#include "host/sdk/persian_font.h"

namespace tr::cheques {

namespace {

// Locked rows are drawn greyed, every cell of them.
class LockedRows : public QStyledItemDelegate {
  public:
    LockedRows(std::function<bool(int)> locked, QObject* parent)
        : QStyledItemDelegate(parent), locked_(std::move(locked)) {}

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (!locked_(index.row())) return;
        option->backgroundBrush = QColor(0xE4, 0xE4, 0xE4);
        option->palette.setColor(QPalette::Text, QColor(0x80, 0x80, 0x80));
        option->font.setItalic(true);
    }

  private:
    std::function<bool(int)> locked_;
};

// The state cell: the row's states in a drop-down, the choice handed to the logic.
class StateCell : public LockedRows {
  public:
    StateCell(OpeningChequeStates& logic, std::function<bool(const std::function<bool()>&)> guarded,
              std::function<bool(int)> locked, QObject* parent)
        : LockedRows(std::move(locked), parent), logic_(logic), guarded_(std::move(guarded)) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        onRow(index);
        if (!guarded_([&] { return logic_.beginChange(); })) return nullptr;
        auto* combo = new QComboBox(parent);
        for (const auto& [kind, name] : logic_.choices()) combo->addItem(name, kind);
        // A state picked from the list is taken at once.
        auto* self = const_cast<StateCell*>(this);
        QObject::connect(combo, &QComboBox::activated, self, [self, combo] {
            emit self->commitData(combo);
            emit self->closeEditor(combo);
        });
        return combo;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        auto* combo = static_cast<QComboBox*>(editor);
        combo->setCurrentIndex(std::max(0, combo->findText(index.data().toString().trimmed())));
    }
    void setModelData(QWidget* editor, QAbstractItemModel*,
                      const QModelIndex& index) const override {
        onRow(index);
        const QString kind = static_cast<QComboBox*>(editor)->currentData().toString();
        guarded_([&] { return logic_.chooseState(kind); });
    }

  private:
    // The logic acts on the dataset's current row: the row being edited.
    static void onRow(const QModelIndex& index) {
        if (auto* model =
                qobject_cast<tr::ui::DatasetModel*>(const_cast<QAbstractItemModel*>(index.model())))
            model->setCurrentRow(index.row());
    }

    OpeningChequeStates& logic_;
    std::function<bool(const std::function<bool()>&)> guarded_;
};

}  // namespace

TChqFirstStateForm::TChqFirstStateForm(const tr::Services& services, tr::instruments::Side side,
                                       QWidget* parent)
    : QWidget(parent),
      services_(services),
      logic_(std::make_unique<OpeningChequeStates>(services, side)) {
    setObjectName(QStringLiteral("ChqFirstStateForm"));
    setWindowTitle(OpeningChequeStates::kScreenName);
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(12));
    report_.setObjectName(OpeningChequeStates::kReportKey);

    caption_ = new QLabel(OpeningChequeStates::kCaption + QStringLiteral(" (") +
                              logic_->sideName() + QLatin1Char(')'),
                          this);
    caption_->setObjectName(QStringLiteral("lblCaption"));
    caption_->setAlignment(Qt::AlignCenter);
    QFont bold = caption_->font();
    bold.setBold(true);
    caption_->setFont(bold);

    model_ = new tr::ui::DatasetModel(&logic_->rows(), this);
    model_->setErrorHandler([this](const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
    });
    grid_ = new QTableView(this);
    grid_->setObjectName(QStringLiteral("dbg"));
    grid_->setModel(model_);
    grid_->setLayoutDirection(Qt::RightToLeft);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked);
    grid_->verticalHeader()->setDefaultSectionSize(24);
    grid_->verticalHeader()->hide();
    grid_->installEventFilter(this);
    const auto locked = [this](int row) { return logic_->lockedAt(row); };
    grid_->setItemDelegate(new LockedRows(locked, this));
    connect(grid_, &QTableView::clicked, this,
            [this](const QModelIndex& index) { model_->setCurrentRow(index.row()); });
    connect(model_, &QAbstractItemModel::modelReset, this, &TChqFirstStateForm::arrangeColumns);

    ok_ = new QPushButton(QStringLiteral("تاييد"), this);
    ok_->setObjectName(QStringLiteral("cmdOk"));
    cancel_ = new QPushButton(QStringLiteral("انصراف"), this);
    cancel_->setObjectName(QStringLiteral("cmdCancel"));
    connect(ok_, &QPushButton::clicked, this, &TChqFirstStateForm::cmdOkClick);
    connect(cancel_, &QPushButton::clicked, this, &QWidget::close);

    // The grid's menu: the report's settings and the report.
    auto* properties = new QAction(OpeningChequeStates::kReportProperties, grid_);
    connect(properties, &QAction::triggered, this, [this] {
        tr::ui::openReportSettings(services_.global->hostFolder, &report_,
                                   OpeningChequeStates::kReportProperties);
    });
    grid_->addAction(properties);
    auto* print = new QAction(QStringLiteral("چاپ ..."), grid_);
    print->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    connect(print, &QAction::triggered, this, [this] { printClick(); });
    grid_->addAction(print);
    grid_->setContextMenuPolicy(Qt::ActionsContextMenu);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok_);
    buttons->addWidget(cancel_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(caption_);
    layout->addWidget(grid_, 1);
    layout->addLayout(buttons);
}

TChqFirstStateForm::~TChqFirstStateForm() {
    grid_->setModel(nullptr);
    delete model_;
    model_ = nullptr;
}

bool TChqFirstStateForm::guarded(const std::function<bool()>& action) {
    try {
        return action();
    } catch (const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
        return false;
    }
}

void TChqFirstStateForm::showList() {
    guarded([this] {
        logic_->fill();
        model_->refresh();
        arrangeColumns();
        return true;
    });
}

void TChqFirstStateForm::cmdOkClick() {
    const QModelIndex at = grid_->currentIndex();
    guarded([this] { return logic_->cmdOkClick(); });
    model_->refresh();
    arrangeColumns();
    if (at.isValid() && at.row() < model_->rowCount())
        grid_->setCurrentIndex(model_->index(at.row(), at.column()));
}

bool TChqFirstStateForm::printClick(const QString& pdfFile) {
    return tr::ui::printReport(report_, OpeningChequeStates::kReportTitle,
                               tr::ui::gridReportHtml(OpeningChequeStates::kReportTitle, *grid_),
                               this, pdfFile);
}

void TChqFirstStateForm::arrangeColumns() {
    const auto columns = OpeningChequeStates::columns();
    QHeaderView* header = grid_->horizontalHeader();
    for (int c = 0; c < model_->columnCount(); ++c) {
        const QString field = model_->fieldName(c);
        bool shown = false;
        for (const auto& [name, title] : columns) {
            if (name.compare(field, Qt::CaseInsensitive) != 0) continue;
            model_->setTitle(field, title);
            shown = true;
        }
        grid_->setColumnHidden(c, !shown);
        // Only the state is edited, and only through the logic.
        model_->setFieldReadOnly(
            field, field.compare(QLatin1String("WhatDocNam"), Qt::CaseInsensitive) != 0);
    }
    int visual = 0;
    for (const auto& [name, title] : columns) {
        const int c = model_->fieldColumn(name);
        if (c < 0) continue;
        header->moveSection(header->visualIndex(c), visual++);
        grid_->setColumnWidth(c, name == QLatin1String("WhatDocNam") ? 220 : 100);
    }
    const int state = model_->fieldColumn(QStringLiteral("WhatDocNam"));
    if (state >= 0 && !grid_->itemDelegateForColumn(state)) {
        grid_->setItemDelegateForColumn(
            state, new StateCell(
                       *logic_, [this](const std::function<bool()>& a) { return guarded(a); },
                       [this](int row) { return logic_->lockedAt(row); }, this));
    }
}

bool TChqFirstStateForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grid_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const QModelIndex at = grid_->currentIndex();
        if (at.isValid() && (key->key() == Qt::Key_Space || key->key() == Qt::Key_Delete)) {
            model_->setCurrentRow(at.row());
            guarded([&] {
                if (key->key() == Qt::Key_Space) {
                    logic_->spaceOnState();
                    return true;
                }
                return logic_->clearState();
            });
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

TChqFirstStateForm* showOpeningChequeStates(const tr::Services& services,
                                            tr::instruments::Side side, QWidget* owner) {
    auto* form = new TChqFirstStateForm(services, side, owner);
    form->setAttribute(Qt::WA_DeleteOnClose);
    form->setWindowFlag(Qt::Window);
    form->resize(700, 480);
    form->showList();
    form->show();
    return form;
}

}  // namespace tr::cheques
