#include "cheques/ui/cheque_action_tab.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHash>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

#include "common/db/database_error.h"
#include "common/dialog/message_dialog.h"
#include "common/ui/dataset_model.h"
#include "common/ui/grid_report.h"
#include "common/ui/settings_libraries.h"
#include "common/ui/date_boxes.h"

namespace tr::cheques {

namespace {

// A cell edited through the screen's logic: the editor the field needs, and the value handed to
// a handler that checks it (a refused value never reaches the row).
class LogicDelegate : public QStyledItemDelegate {
  public:
    using MakeEditor = std::function<QWidget*(QWidget* parent)>;
    using Commit = std::function<void(QWidget* editor)>;
    LogicDelegate(MakeEditor make, Commit commit, QObject* parent)
        : QStyledItemDelegate(parent), make_(std::move(make)), commit_(std::move(commit)) {}
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex&) const override {
        return make_(parent);
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        if (auto* combo = qobject_cast<QComboBox*>(editor)) {
            const int at = combo->findText(index.data().toString().trimmed());
            combo->setCurrentIndex(at < 0 ? 0 : at);
        } else if (auto* line = qobject_cast<QLineEdit*>(editor)) {
            line->setText(index.data().toString().trimmed());
        }
    }
    void setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex&) const override {
        commit_(editor);
    }

  private:
    MakeEditor make_;
    Commit commit_;
};

bool isField(const QString& field, const char* name) {
    return field.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
}

}  // namespace

ChequeActionTab::ChequeActionTab(ChequeActionList& logic, const tr::Services& services,
                                 ActionTabOptions options, QWidget* parent)
    : QWidget(parent), logic_(logic), services_(services), options_(std::move(options)) {
    number_ = new QLineEdit(this);
    number_->setObjectName(QStringLiteral("EChqNo"));
    fromDate_ = tr::ui::maskedDateBox(this, QStringLiteral("EFromDate"));
    toDate_ = tr::ui::maskedDateBox(this, QStringLiteral("EToDate"));
    state_ = new QComboBox(this);
    state_->setObjectName(QStringLiteral("CLastAction"));
    show_ = new QPushButton(QStringLiteral("نمايش"), this);
    apply_ = new QPushButton(QStringLiteral("تاييد"), this);
    connect(show_, &QPushButton::clicked, this, &ChequeActionTab::showList);
    connect(apply_, &QPushButton::clicked, this, &ChequeActionTab::applyList);

    auto* filters = new QHBoxLayout;
    filters->addWidget(new QLabel(QStringLiteral("شماره چك"), this));
    filters->addWidget(number_);
    filters->addWidget(new QLabel(QStringLiteral("از تاريخ"), this));
    filters->addWidget(fromDate_);
    filters->addWidget(new QLabel(QStringLiteral("تا تاريخ"), this));
    filters->addWidget(toDate_);
    if (options_.filtersBankAccount) {
        bank_ = new QComboBox(this);
        bank_->setObjectName(QStringLiteral("CBankHesab"));
        filters->addWidget(new QLabel(QStringLiteral("حساب بانکي"), this));
        filters->addWidget(bank_, 1);
    }
    filters->addWidget(new QLabel(QStringLiteral("انتخاب آخرين عمل"), this));
    filters->addWidget(state_, 1);
    filters->addWidget(show_);

    model_ = new tr::ui::DatasetModel(&logic_.rows(), this);
    model_->setErrorHandler([this](const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
    });
    grid_ = new QTableView(this);
    grid_->setObjectName(options_.gridName);
    grid_->setModel(model_);
    grid_->setLayoutDirection(Qt::RightToLeft);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked);
    grid_->verticalHeader()->setDefaultSectionSize(24);
    grid_->installEventFilter(this);
    connect(grid_, &QTableView::clicked, this,
            [this](const QModelIndex& index) { model_->setCurrentRow(index.row()); });
    actionEditor_ = new LogicDelegate(
        [this](QWidget* parent) {
            auto* combo = new QComboBox(parent);
            combo->addItems(logic_.dropDownNames());
            return combo;
        },
        [this](QWidget* editor) {
            const QString name = static_cast<QComboBox*>(editor)->currentText();
            if (guarded([&] { return logic_.chooseAction(name); }) && options_.afterAction)
                options_.afterAction();
        },
        this);
    dateEditor_ = new LogicDelegate(
        [](QWidget* parent) { return tr::ui::maskedDateBox(parent); },
        [this](QWidget* editor) {
            const QString typed = static_cast<QLineEdit*>(editor)->text();
            guarded([&] { return logic_.setActionDate(typed); });
        },
        this);
    if (options_.chooseBankAccount) {
        bankEditor_ = new LogicDelegate(
            [this](QWidget* parent) {
                auto* combo = new QComboBox(parent);
                for (const auto& [id, name] : logic_.bankAccounts()) combo->addItem(name, id);
                return combo;
            },
            [this](QWidget* editor) {
                const qint64 id = static_cast<QComboBox*>(editor)->currentData().toLongLong();
                guarded([&] {
                    options_.chooseBankAccount(id);
                    return true;
                });
            },
            this);
    }
    connect(model_, &QAbstractItemModel::modelReset, this, &ChequeActionTab::arrangeColumns);

    // The grid's menu: the cheque's history, the report's settings and the report.
    auto* history = new QAction(QStringLiteral("گردش چک ..."), grid_);
    connect(history, &QAction::triggered, this, [this] {
        const QModelIndex at = grid_->currentIndex();
        if (at.isValid()) model_->setCurrentRow(at.row());
        guarded([this] {
            logic_.showHistory();
            return true;
        });
    });
    grid_->addAction(history);
    auto* properties = new QAction(QStringLiteral("مشخصات گزارش [عمليات چکها]"), grid_);
    connect(properties, &QAction::triggered, this, [this] {
        tr::ui::openReportSettings(services_.global->hostFolder, &report_,
                                   QStringLiteral("مشخصات گزارش [عمليات چکها]"));
    });
    grid_->addAction(properties);
    auto* print = new QAction(options_.reportItem, grid_);
    print->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    connect(print, &QAction::triggered, this, [this] { printList(); });
    grid_->addAction(print);
    grid_->setContextMenuPolicy(Qt::ActionsContextMenu);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(apply_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(filters);
    layout->addWidget(grid_, 1);
    layout->addLayout(buttons);

    state_->addItem(QString(), QString());
    try {
        for (const auto& [kind, name] : logic_.stateNames()) state_->addItem(name, kind);
        if (bank_) {
            bank_->addItem(QString(), 0);
            for (const auto& [id, name] : logic_.bankAccounts()) bank_->addItem(name, id);
        }
    } catch (const tr::db::DatabaseError&) {
        // A book without the kinds' names or bank accounts: the filters offer all.
    }
}

void ChequeActionTab::arrangeColumns() {
    const auto columns = logic_.columns();
    for (int c = 0; c < model_->columnCount(); ++c) {
        const QString field = model_->fieldName(c);
        bool shown = false;
        for (const auto& [name, caption] : columns) {
            if (name.compare(field, Qt::CaseInsensitive) != 0) continue;
            model_->setTitle(field, caption);
            shown = true;
        }
        grid_->setColumnHidden(c, !shown);
        grid_->setItemDelegateForColumn(c, nullptr);
        // Only the cells the logic edits open an editor, and their values go through its checks.
        const bool edited = isField(field, "WhatDocNam") || isField(field, "ActionDate") ||
                            (bankEditor_ && isField(field, "AcountID"));
        model_->setFieldReadOnly(field, !edited);
    }
    // Shown in the grid's order.
    for (int i = 0; i < columns.size(); ++i) {
        const int c = model_->fieldColumn(columns[i].first);
        if (c < 0) continue;
        grid_->horizontalHeader()->moveSection(grid_->horizontalHeader()->visualIndex(c), i);
    }
    grid_->setItemDelegateForColumn(model_->fieldColumn(QStringLiteral("WhatDocNam")),
                                    actionEditor_);
    grid_->setItemDelegateForColumn(model_->fieldColumn(QStringLiteral("ActionDate")), dateEditor_);
    if (bankEditor_)
        grid_->setItemDelegateForColumn(model_->fieldColumn(QStringLiteral("AcountID")),
                                        bankEditor_);
}

bool ChequeActionTab::guarded(const std::function<bool()>& action) {
    try {
        return action();
    } catch (const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
        return false;
    }
}

void ChequeActionTab::showList() {
    ActionFilters& f = logic_.filters();
    f.chequeNumber = number_->text().trimmed();
    auto date = [](const QLineEdit* box) {
        const QString text = box->text().trimmed();
        return text == QLatin1String("//") ? QString() : text;
    };
    f.fromDate = date(fromDate_);
    f.toDate = date(toDate_);
    f.state = state_->currentData().toString();
    f.bankAccount = bank_ ? bank_->currentData().toLongLong() : 0;
    guarded([this] {
        // A bank account column shows the account as the lists offer it, not its number.
        QHash<qint64, QString> accounts;
        for (const auto& [id, name] : logic_.bankAccounts()) accounts.insert(id, name);
        model_->setFieldFormat(QStringLiteral("AcountID"), [accounts](const QVariant& value) {
            return value.isNull() ? QString()
                                  : accounts.value(value.toLongLong(), value.toString());
        });
        logic_.fill();
        return true;
    });
    if (model_->rowCount() > 0)
        grid_->setCurrentIndex(model_->index(0, model_->fieldColumn(QStringLiteral("WhatDocNam"))));
}

void ChequeActionTab::applyList() {
    const int row = model_->currentRow();
    if (guarded([this] { return logic_.apply(); }) && row >= 0 && row < model_->rowCount())
        grid_->setCurrentIndex(
            model_->index(row, model_->fieldColumn(QStringLiteral("WhatDocNam"))));
}

QString ChequeActionTab::reportTitle() const {
    return QStringLiteral("گزارش عمليات چکها دوره مالي [") + services_.global->sYear.trimmed() +
           QLatin1Char(']');
}

bool ChequeActionTab::printList(const QString& pdfFile) {
    return tr::ui::printReport(report_, reportTitle(),
                               tr::ui::gridReportHtml(reportTitle(), *grid_), this, pdfFile,
                               tr::ui::PageTurn::Landscape);
}

QString ChequeActionTab::currentField() const {
    const QModelIndex index = grid_->currentIndex();
    return index.isValid() ? model_->fieldName(index.column()) : QString();
}

bool ChequeActionTab::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grid_ && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Space && isField(currentField(), "WhatDocNam")) {
            const QModelIndex at = grid_->currentIndex();
            model_->setCurrentRow(at.row());
            if (guarded([this] {
                    logic_.spaceOnAction();
                    return true;
                }) &&
                options_.afterAction)
                options_.afterAction();
            grid_->setCurrentIndex(model_->index(at.row(), at.column()));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace tr::cheques
