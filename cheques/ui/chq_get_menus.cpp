#include "cheques/ui/chq_get_menus.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QMenu>
#include <QTableView>
#include <QTextDocument>

#include "cheques/received_cheque_rows.h"
#include "cheques/ui/chq_get_form.h"
#include "common/db/database_error.h"
#include "common/ui/dataset_model.h"
#include "common/ui/grid_report.h"
#include "common/ui/settings_libraries.h"
#include "common/ui/table_view_columns.h"
#include "vouchers/account_report.h"
#include "vouchers/grid_commands.h"

namespace tr::cheques {

namespace {

enum Command {
    Help,
    AssignToInvoices,
    NewDocument,
    AccountTurnover,
    AccountDetail,
    Search,
    SaveColumns,
    ResetColumns,
    CopyRowAbove,
    Clipboard,
    RememberRow,
    RestoreRow,
    RememberCell,
    RestoreCell,
    FixedDescription,
    DeleteRow,
    ReportProperties,
    DesignPrint,
    PrintReport,
    WeightedDueDate,
    PrintDocument,
    ReturnedCheques,
    CopyAccountHead,
    PrintPayment,
    DesignLeaves,
    PrintLeaves,
    OpeningStates,
};

struct Item {
    Command command;
    const char* text;
    QKeyCombination key{};
};

QKeyCombination ctrl(Qt::Key key) {
    return QKeyCombination(Qt::ControlModifier, key);
}

// Both grids' items in their order; the counterparty grid adds its two at the end. A payment
// names its own document and adds its printed form and its cheque leaves.
QList<Item> items(ChqGetGrid grid, bool payment) {
    QList<Item> list = {
        {Help, "راهنما", QKeyCombination(Qt::Key_F1)},
        {AssignToInvoices, "ثبت چک در صورتحساب"},
        {NewDocument, payment ? "پرداخت چك جديد " : "دريافت چك جديد ", ctrl(Qt::Key_N)},
        {AccountTurnover, "نمايش گردش حساب"},
        {AccountDetail, "نمايش حساب جزء"},
        {Search, "جستجو …", ctrl(Qt::Key_F)},
        {SaveColumns, "ثبت وضعيت ستونها", ctrl(Qt::Key_G)},
        {ResetColumns, "بازگشت به وضعيت اوليه ستونها", QKeyCombination(Qt::AltModifier, Qt::Key_G)},
        {CopyRowAbove, "کپي رديف بالا", QKeyCombination(Qt::Key_F8)},
        {Clipboard, "ارسال به Clipboard ( محيط ديگر ...)"},
        {RememberRow, "کپي رديف به حافظه", ctrl(Qt::Key_Insert)},
        {RestoreRow, "بازيابي رديف به حافظه", QKeyCombination(Qt::ShiftModifier, Qt::Key_Insert)},
        {RememberCell, "کپي خانه به حافظه", ctrl(Qt::Key_C)},
        {RestoreCell, "بازيابي خانه از حافظه", ctrl(Qt::Key_V)},
        {FixedDescription, "بازيابي شرح ثابت …", ctrl(Qt::Key_F8)},
        {DeleteRow, "حذف رديف", ctrl(Qt::Key_Delete)},
        {ReportProperties, "مشخصات گزارش ..."},
        {DesignPrint, payment ? "طراحي فرم چاپ پرداخت چک …" : "طراحي فرم چاپ دريافت چک …"},
        {PrintReport, "چاپ گزارش …"},
        {WeightedDueDate, "راس چك"},
        {PrintDocument, "چاپ …", ctrl(Qt::Key_P)},
    };
    if (payment)
        list << Item{PrintPayment, "چاپ پرداخت چک …"} << Item{DesignLeaves, "طراحي فرم چاپ چك ..."}
             << Item{PrintLeaves, "چاپ چك ..."};
    list << Item{OpeningStates, "مقداردهي وضعيت چكهاي اول دوره"};
    if (grid == ChqGetGrid::Counterparties)
        list << Item{ReturnedCheques, "چکهاي برگشتي اين طرف حساب "}
             << Item{CopyAccountHead, "کپي سرفصل"};
    return list;
}


}  // namespace

struct ChqGetMenus::Grid {
    ChqGetGrid which;
    QTableView* view;
    tr::ui::DatasetModel* model;
    QString caption;  // the grid's title, for its printed report
    tr::vouchers::GridCommands commands;
    QMenu* menu = nullptr;
    QTextDocument* report = nullptr;  // keeps the user's report properties between prints
};

tr::grid::GridKey ChqGetMenus::gridKey(ChqGetGrid grid, bool payment) {
    const QString part = payment ? QStringLiteral("CHQPAY") : QStringLiteral("CHQGET");
    return {QStringLiteral("N"),
            payment ? tr::vouchers::issuedChequeKind().formKey : tr::vouchers::receivedChequeKind().formKey,
            payment ? QStringLiteral("TChqPayForm") : QStringLiteral("TChqGetForm"),
            part + (grid == ChqGetGrid::Cheques ? QStringLiteral("CHQ") : QStringLiteral("TARAF"))};
}

ChqGetMenus::ChqGetMenus(TChqGetForm& form, std::function<void()> refresh)
    : QObject(&form), form_(form), refresh_(std::move(refresh)) {
    ChequeDocument& document = form.document();
    const bool payment = document.side().payment;
    const tr::Services& services = document.services();
    // A cheque is its number and series: a copied or pasted cheque row keeps its own number, so
    // it is another cheque rather than a duplicate refused when the user leaves it.
    cheques_.reset(new Grid{
        ChqGetGrid::Cheques, form.chequeGrid(),
        static_cast<tr::ui::DatasetModel*>(form.chequeGrid()->model()), QStringLiteral("چكها"),
        tr::vouchers::GridCommands(services, document.cheques(), gridKey(ChqGetGrid::Cheques, payment),
                                   {QStringLiteral("Raj"), QStringLiteral("IDX"),
                                    QStringLiteral("IsChange"), QStringLiteral("ChqNo")})});
    cheques_->commands.appendRow = [&document] { document.appendCheque(); };
    // A counterparty line copied keeps its cheque: the cheque is split over both lines.
    counterparties_.reset(
        new Grid{ChqGetGrid::Counterparties, form.counterpartyGrid(),
                 static_cast<tr::ui::DatasetModel*>(form.counterpartyGrid()->model()),
                 QStringLiteral("طرف حساب/بابت"),
                 tr::vouchers::GridCommands(services, document.counterparties(),
                                            gridKey(ChqGetGrid::Counterparties, payment))});
    build(*cheques_);
    build(*counterparties_);
}

ChqGetMenus::~ChqGetMenus() = default;

QMenu* ChqGetMenus::menu(ChqGetGrid grid) const {
    return (grid == ChqGetGrid::Cheques ? cheques_ : counterparties_)->menu;
}

void ChqGetMenus::build(Grid& grid) {
    grid.menu = new QMenu(grid.view);
    grid.menu->setLayoutDirection(Qt::RightToLeft);
    grid.report = new QTextDocument(this);
    grid.report->setObjectName(form_.document().side().kind.title);
    for (const Item& item : items(grid.which, form_.document().side().payment)) {
        if (item.command == ReportProperties) grid.menu->addSeparator();
        QAction* action = grid.menu->addAction(QString::fromUtf8(item.text));
        if (item.key.key() != Qt::Key(0)) {
            action->setShortcut(QKeySequence(item.key));
            action->setShortcutContext(Qt::WidgetShortcut);
            grid.view->addAction(action);
        }
        const int command = item.command;
        connect(action, &QAction::triggered, this, [this, &grid, command] { run(grid, command); });
    }
    grid.view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(grid.view, &QWidget::customContextMenuRequested, this, [&grid](const QPoint& at) {
        grid.menu->popup(grid.view->viewport()->mapToGlobal(at));
    });
    // The form lays the grid out as designed on every reset; the user's layout goes over it.
    connect(grid.model, &QAbstractItemModel::modelReset, this,
            [this, &grid] { restoreLayout(grid); });
}

void ChqGetMenus::restoreLayout(Grid& grid) {
    if (!grid.model->datasetOpen()) return;
    tr::ui::TableViewColumns columns(grid.view);
    try {
        grid.commands.restoreColumns(columns);
    } catch (const tr::db::DatabaseError& e) {
        tr::dialog::Messages(form_.document().services().dialog)
            .show(e.message(), QStringLiteral("1ER"));
    }
}

QString ChqGetMenus::currentField(const Grid& grid) const {
    const QModelIndex current = grid.view->currentIndex();
    return current.isValid() ? grid.model->fieldName(current.column()) : QString();
}

void ChqGetMenus::showAccountReport(Grid& grid, int kind) {
    tr::db::Query& row = grid.commands.grid();
    if (grid.commands.currentRowIndex() < 0) return;
    const tr::Global& global = *form_.document().services().global;
    const QString account =
        tr::vouchers::turnoverFilter(tr::vouchers::LineAccount::fromRow(row),
                                     tr::vouchers::accountLevelOfField(currentField(grid)));
    tr::vouchers::showAccountReport(
        form_.document().services(), form_.parentWidget(),
        tr::vouchers::accountReportFilter(
            account, tr::vouchers::periodCondition(global.fiscalStart, global.fiscalEnd)),
        static_cast<tr::vouchers::AccountReportKind>(kind));
}

void ChqGetMenus::printGrid(Grid& grid) {
    const QString title = form_.document().side().kind.title + QStringLiteral(" - ") + grid.caption +
                          QStringLiteral(" [سريال ") + form_.document().header().serial.trimmed() +
                          QLatin1Char(']');
    tr::ui::printReport(*grid.report, title, tr::ui::gridReportHtml(title, *grid.view), &form_);
}

void ChqGetMenus::run(Grid& grid, int command) {
    ChequeDocument& document = form_.document();
    const tr::Services& services = document.services();
    const auto call = [](const std::function<void()>& hook) {
        if (hook) hook();
    };
    try {
        // The counterparty lines follow the row the user is on only here; the form moves the
        // cheque query itself, and a cheque it could not leave is the one to act on.
        const QModelIndex current = grid.view->currentIndex();
        if (grid.which == ChqGetGrid::Counterparties && current.isValid())
            grid.model->setCurrentRow(current.row());
        tr::vouchers::GridCommands& commands = grid.commands;
        switch (static_cast<Command>(command)) {
            case Help:
                call(hooks.help);
                break;
            case AssignToInvoices:
                call(hooks.assignToInvoices);
                break;
            case NewDocument:
                document.newDocument();
                break;
            case AccountTurnover:
                showAccountReport(grid,
                                  static_cast<int>(tr::vouchers::AccountReportKind::Turnover));
                break;
            case AccountDetail:
                showAccountReport(grid, static_cast<int>(tr::vouchers::AccountReportKind::Detail));
                break;
            case Search:
                call(hooks.search);
                break;
            case SaveColumns:
                commands.saveColumns(tr::ui::TableViewColumns(grid.view));
                break;
            case ResetColumns:
                commands.resetColumns();
                break;
            case CopyRowAbove:
                commands.copyRowAbove();
                break;
            case Clipboard: {
                QList<tr::vouchers::ClipboardColumn> columns;
                const QHeaderView* header = grid.view->horizontalHeader();
                for (int visual = 0; visual < header->count(); ++visual) {
                    const int logical = header->logicalIndex(visual);
                    if (grid.view->isColumnHidden(logical)) continue;
                    columns << tr::vouchers::ClipboardColumn{
                        grid.model->fieldName(logical),
                        grid.model->headerData(logical, Qt::Horizontal).toString()};
                }
                QApplication::clipboard()->setText(commands.clipboardText(columns));
                break;
            }
            case RememberRow:
                commands.rememberRow();
                break;
            case RestoreRow:
                commands.restoreRow();
                break;
            case RememberCell:
                commands.rememberCell(currentField(grid));
                break;
            case RestoreCell:
                commands.restoreCell(currentField(grid));
                break;
            case FixedDescription:
                commands.pickFixedDescription(QStringLiteral("Des"));
                break;
            case DeleteRow:
                if (grid.which == ChqGetGrid::Cheques)
                    deleteChequeRow(document);
                else
                    deleteCounterpartyRow(document);
                break;
            case ReportProperties:
                tr::ui::openReportSettings(
                    services.global->hostFolder, grid.report,
                    QStringLiteral("مشخصات گزارش [") + document.side().kind.title + QLatin1Char(']'));
                break;
            case DesignPrint:
                call(hooks.designPrint);
                break;
            case PrintReport:
                printGrid(grid);
                break;
            case WeightedDueDate:
                document.showWeightedDueDate();
                break;
            case PrintDocument:
                call(hooks.printDocument);
                break;
            case PrintPayment:
                call(hooks.printPaper);
                break;
            case DesignLeaves:
                call(hooks.designLeaves);
                break;
            case PrintLeaves:
                call(hooks.printLeaves);
                break;
            case OpeningStates:
                call(hooks.openingStates);
                break;
            case ReturnedCheques:
                if (hooks.returnedCheques && commands.currentRowIndex() >= 0)
                    hooks.returnedCheques(tr::vouchers::LineAccount::fromRow(commands.grid()));
                break;
            case CopyAccountHead:
                copyAccountHeadDown(document);
                break;
        }
    } catch (const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services.dialog).show(e.message(), QStringLiteral("1ER"));
    }
    if (refresh_) refresh_();
}

}  // namespace tr::cheques
