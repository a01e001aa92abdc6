#include "cheques/ui/chq_action1_form.h"

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
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>
#include <functional>

#include "common/db/database_error.h"
#include "common/dialog/message_dialog.h"
#include "common/ui/dataset_model.h"
#include "common/ui/grid_report.h"
#include "common/ui/settings_libraries.h"
#include "cheques/ui/return_split_dialog.h"
#include "host/sdk/modal_runner.h"
#include "host/sdk/persian_font.h"

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
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const override {
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
    void setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex&) const override { commit_(editor); }

  private:
    MakeEditor make_;
    Commit commit_;
};

}  // namespace

const QString TChqAction1Form::kCaption = QStringLiteral("عمليات چك");

TChqAction1Form::TChqAction1Form(const tr::Services& services, QWidget* parent)
    : QWidget(parent), services_(services), received_(std::make_unique<ReceivedChequeActions>(services)) {
    setObjectName(QStringLiteral("ChqAction1Form"));
    setWindowTitle(kCaption);
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(12));

    tabs_ = new QTabWidget(this);
    auto* receivedTab = new QWidget(tabs_);
    tabs_->addTab(receivedTab, QStringLiteral("چكهاي دريافتي"));
    auto* issuedTab = new QLabel(QStringLiteral("چكهاي پرداختي در اين نسخه ثبت نمي شوند."), tabs_);
    issuedTab->setAlignment(Qt::AlignCenter);
    tabs_->addTab(issuedTab, QStringLiteral("چكهاي پرداختي"));

    number_ = new QLineEdit(receivedTab);
    number_->setObjectName(QStringLiteral("EChqNo"));
    fromDate_ = new QLineEdit(receivedTab);
    fromDate_->setObjectName(QStringLiteral("EFromDate"));
    fromDate_->setInputMask(QStringLiteral("0000/00/00;_"));
    toDate_ = new QLineEdit(receivedTab);
    toDate_->setObjectName(QStringLiteral("EToDate"));
    toDate_->setInputMask(QStringLiteral("0000/00/00;_"));
    state_ = new QComboBox(receivedTab);
    state_->setObjectName(QStringLiteral("CLastAction"));
    show_ = new QPushButton(QStringLiteral("نمايش"), receivedTab);
    apply_ = new QPushButton(QStringLiteral("تاييد"), receivedTab);
    connect(show_, &QPushButton::clicked, this, &TChqAction1Form::showList);
    connect(apply_, &QPushButton::clicked, this, &TChqAction1Form::applyList);

    auto* filters = new QHBoxLayout;
    filters->addWidget(new QLabel(QStringLiteral("شماره چك"), receivedTab));
    filters->addWidget(number_);
    filters->addWidget(new QLabel(QStringLiteral("از تاريخ"), receivedTab));
    filters->addWidget(fromDate_);
    filters->addWidget(new QLabel(QStringLiteral("تا تاريخ"), receivedTab));
    filters->addWidget(toDate_);
    filters->addWidget(new QLabel(QStringLiteral("انتخاب آخرين عمل"), receivedTab));
    filters->addWidget(state_, 1);
    filters->addWidget(show_);

    model_ = new tr::ui::DatasetModel(&received_->rows(), this);
    model_->setErrorHandler([this](const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
    });
    grid_ = new QTableView(receivedTab);
    grid_->setObjectName(QStringLiteral("dbgGet"));
    grid_->setModel(model_);
    grid_->setLayoutDirection(Qt::RightToLeft);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked);
    grid_->verticalHeader()->setDefaultSectionSize(24);
    grid_->installEventFilter(this);
    connect(grid_, &QTableView::clicked, this, [this](const QModelIndex& index) { model_->setCurrentRow(index.row()); });

    auto* actionDelegate = new LogicDelegate(
        [this](QWidget* parent) {
            auto* combo = new QComboBox(parent);
            combo->addItems(received_->dropDownNames());
            return combo;
        },
        [this](QWidget* editor) {
            const QString name = static_cast<QComboBox*>(editor)->currentText();
            if (guarded([&] { return received_->chooseAction(name); })) askReturnSplit();
        },
        this);
    auto* dateDelegate = new LogicDelegate(
        [](QWidget* parent) {
            auto* line = new QLineEdit(parent);
            line->setInputMask(QStringLiteral("0000/00/00;_"));
            return line;
        },
        [this](QWidget* editor) {
            const QString date = static_cast<QLineEdit*>(editor)->text();
            guarded([&] { return received_->setActionDate(date); });
        },
        this);
    auto* bankDelegate = new LogicDelegate(
        [this](QWidget* parent) {
            auto* combo = new QComboBox(parent);
            for (const auto& [id, name] : received_->bankAccounts()) combo->addItem(name, id);
            return combo;
        },
        [this](QWidget* editor) {
            const qint64 id = static_cast<QComboBox*>(editor)->currentData().toLongLong();
            guarded([&] {
                received_->setBankAccount(id);
                return true;
            });
        },
        this);
    connect(model_, &QAbstractItemModel::modelReset, this, [this, actionDelegate, dateDelegate, bankDelegate] {
        const auto columns = ReceivedChequeActions::gridColumns();
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
            const bool edited = field.compare(QLatin1String("WhatDocNam"), Qt::CaseInsensitive) == 0 ||
                                field.compare(QLatin1String("ActionDate"), Qt::CaseInsensitive) == 0 ||
                                field.compare(QLatin1String("AcountID"), Qt::CaseInsensitive) == 0;
            model_->setFieldReadOnly(field, !edited);
        }
        // Shown in the grid's order, editable where the logic takes the edit.
        for (int i = 0; i < columns.size(); ++i) {
            const int c = model_->fieldColumn(columns[i].first);
            if (c < 0) continue;
            grid_->horizontalHeader()->moveSection(grid_->horizontalHeader()->visualIndex(c), i);
        }
        grid_->setItemDelegateForColumn(model_->fieldColumn(QStringLiteral("WhatDocNam")), actionDelegate);
        grid_->setItemDelegateForColumn(model_->fieldColumn(QStringLiteral("ActionDate")), dateDelegate);
        grid_->setItemDelegateForColumn(model_->fieldColumn(QStringLiteral("AcountID")), bankDelegate);
    });

    // The grid's menu: the cheque's history.
    auto* history = new QAction(QStringLiteral("گردش چک ..."), grid_);
    connect(history, &QAction::triggered, this, [this] {
        const QModelIndex at = grid_->currentIndex();
        if (at.isValid()) model_->setCurrentRow(at.row());
        guarded([this] {
            received_->showHistory();
            return true;
        });
    });
    grid_->addAction(history);
    auto* properties = new QAction(QStringLiteral("مشخصات گزارش [عمليات چکها]"), grid_);
    connect(properties, &QAction::triggered, this, [this] {
        tr::ui::openReportSettings(services_.global->hostFolder, &report_, QStringLiteral("مشخصات گزارش [عمليات چکها]"));
    });
    grid_->addAction(properties);
    auto* print = new QAction(QStringLiteral("چاپ ..."), grid_);
    print->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    connect(print, &QAction::triggered, this, [this] { printList(); });
    grid_->addAction(print);
    grid_->setContextMenuPolicy(Qt::ActionsContextMenu);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(apply_);

    auto* receivedLayout = new QVBoxLayout(receivedTab);
    receivedLayout->addLayout(filters);
    receivedLayout->addWidget(grid_, 1);
    receivedLayout->addLayout(buttons);

    auto* caption = new QLabel(kCaption, this);
    caption->setAlignment(Qt::AlignCenter);
    caption->setAutoFillBackground(true);
    caption->setForegroundRole(QPalette::HighlightedText);
    caption->setBackgroundRole(QPalette::Highlight);
    caption->setMinimumHeight(26);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(caption);
    layout->addWidget(tabs_, 1);

    state_->addItem(QString(), QString());
    try {
        for (const auto& [kind, name] : received_->stateNames()) state_->addItem(name, kind);
    } catch (const tr::db::DatabaseError&) {
        // A book without the kinds' names: the filter offers all states only.
    }
}

TChqAction1Form::~TChqAction1Form() = default;

void TChqAction1Form::setServices(const tr::Services& services) {
    services_ = services;
    received_->setServices(services);
}

bool TChqAction1Form::guarded(const std::function<bool()>& action) {
    try {
        return action();
    } catch (const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
        return false;
    }
}

void TChqAction1Form::showList() {
    ReceivedFilters& f = received_->filters();
    f.chequeNumber = number_->text().trimmed();
    auto date = [](const QLineEdit* box) {
        const QString text = box->text().trimmed();
        return text == QLatin1String("//") ? QString() : text;
    };
    f.fromDate = date(fromDate_);
    f.toDate = date(toDate_);
    f.state = state_->currentData().toString();
    guarded([this] {
        // The bank account column shows the account as the list offers it, not its number.
        QHash<qint64, QString> accounts;
        for (const auto& [id, name] : received_->bankAccounts()) accounts.insert(id, name);
        model_->setFieldFormat(QStringLiteral("AcountID"), [accounts](const QVariant& value) {
            return value.isNull() ? QString() : accounts.value(value.toLongLong(), value.toString());
        });
        received_->fill();
        return true;
    });
    if (model_->rowCount() > 0) grid_->setCurrentIndex(model_->index(0, model_->fieldColumn(QStringLiteral("WhatDocNam"))));
}

void TChqAction1Form::applyList() {
    const int row = model_->currentRow();
    if (guarded([this] { return received_->apply(); }) && row >= 0 && row < model_->rowCount())
        grid_->setCurrentIndex(model_->index(row, model_->fieldColumn(QStringLiteral("WhatDocNam"))));
}

void TChqAction1Form::askReturnSplit() {
    if (!received_->returnNeedsSplit()) return;
    ReturnSplitDialog dialog(*received_, this);
    guarded([&] {
        tr::sdk::ModalRunner::current().exec(dialog);
        return true;
    });
}

QString TChqAction1Form::reportTitle() const {
    return QStringLiteral("گزارش عمليات چکها دوره مالي [") + services_.global->sYear.trimmed() + QLatin1Char(']');
}

bool TChqAction1Form::printList(const QString& pdfFile) {
    return tr::ui::printReport(report_, reportTitle(), tr::ui::gridReportHtml(reportTitle(), *grid_), this, pdfFile,
                               tr::ui::PageTurn::Landscape);
}

QString TChqAction1Form::currentField() const {
    const QModelIndex index = grid_->currentIndex();
    return index.isValid() ? model_->fieldName(index.column()) : QString();
}

bool TChqAction1Form::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grid_ && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Space && currentField().compare(QLatin1String("WhatDocNam"), Qt::CaseInsensitive) == 0) {
            const QModelIndex at = grid_->currentIndex();
            model_->setCurrentRow(at.row());
            if (guarded([this] {
                    received_->spaceOnAction();
                    return true;
                }))
                askReturnSplit();
            grid_->setCurrentIndex(model_->index(at.row(), at.column()));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace tr::cheques
