#pragma once
// The pop-up menus of the received-cheque window's two grids, in the order the users know, over
// the shared grid commands and the document's row commands; each grid's saved column layout is
// put back whenever the grid is read anew. Items of screens built elsewhere are hooks.
#include <QObject>
#include <functional>
#include <memory>

#include "common/grid/grid_state.h"
#include "vouchers/account_checks.h"

class QMenu;
class QTableView;
class QTextDocument;

namespace tr::vouchers {
class GridCommands;
}

namespace tr::cheques {

class TChqGetForm;

// What the form wires in; an empty hook leaves its item doing nothing.
struct ChqGetMenuHooks {
    std::function<void()> help;              // "راهنما"
    std::function<void()> assignToInvoices;  // "ثبت چک در صورتحساب"
    std::function<void()> search;            // "جستجو …"
    std::function<void()> designPrint;       // "طراحي فرم چاپ دريافت چک …"
    std::function<void()> printDocument;     // "چاپ …"
    std::function<void()> printPaper;        // a payment's "چاپ پرداخت چک …"
    std::function<void()> designLeaves;      // "طراحي فرم چاپ چك ..."
    std::function<void()> printLeaves;       // "چاپ چك ..."
    std::function<void()> openingStates;     // "مقداردهي وضعيت چكهاي اول دوره"
    // "چکهاي برگشتي اين طرف حساب ": the current counterparty line's account.
    std::function<void(const tr::vouchers::LineAccount& account)> returnedCheques;
};

enum class ChqGetGrid { Cheques, Counterparties };

class ChqGetMenus : public QObject {
    Q_OBJECT
  public:
    // The grids' saved layouts: sPart "CHQGETCHQ" and "CHQGETTARAF".
    // A payment's grids: "CHQPAYCHQ" and "CHQPAYTARAF" under its own form.
    static tr::grid::GridKey gridKey(ChqGetGrid grid, bool payment = false);

    // Builds both menus on the form's grids; `refresh` shows the form's values after an item ran.
    ChqGetMenus(TChqGetForm& form, std::function<void()> refresh);
    ~ChqGetMenus() override;

    ChqGetMenuHooks hooks;

    QMenu* menu(ChqGetGrid grid) const;

  private:
    struct Grid;
    void build(Grid& grid);
    void run(Grid& grid, int command);
    void restoreLayout(Grid& grid);
    QString currentField(const Grid& grid) const;
    void showAccountReport(Grid& grid, int kind);
    void printGrid(Grid& grid);

    TChqGetForm& form_;
    std::function<void()> refresh_;
    std::unique_ptr<Grid> cheques_;
    std::unique_ptr<Grid> counterparties_;
};

}  // namespace tr::cheques
