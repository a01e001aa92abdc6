// The received-cheque window's two pop-up menus: their items in order (screenshots of both left
// for a look by eye), each grid's saved layout under its own key and back in the next window,
// and the items that act on the rows and on the account report.
#include "cheques/ui/chq_get_menus.h"

#include <gtest/gtest.h>

#include "cheques/tests/cheque_typing.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QTableView>

#include "cheques/ui/chq_get_form.h"
#include "common/db/query_helpers.h"
#include "common/ui/dataset_model.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

// clang-format off
const QStringList kChequeItems = {
    "راهنما", "ثبت چک در صورتحساب", "دريافت چك جديد ", "نمايش گردش حساب", "نمايش حساب جزء",
    "جستجو …", "ثبت وضعيت ستونها", "بازگشت به وضعيت اوليه ستونها", "کپي رديف بالا",
    "ارسال به Clipboard ( محيط ديگر ...)", "کپي رديف به حافظه", "بازيابي رديف به حافظه",
    "کپي خانه به حافظه", "بازيابي خانه از حافظه", "بازيابي شرح ثابت …", "حذف رديف",
    "مشخصات گزارش ...", "طراحي فرم چاپ دريافت چک …", "چاپ گزارش …", "راس چك", "چاپ …",
    "مقداردهي وضعيت چكهاي اول دوره"};
// clang-format on

class ChqGetMenusTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        company().execute(QStringLiteral("Delete From Grid_State Where sPart Like 'CHQGET%'"));
        session = std::make_unique<tr::test::TestSession>(
            company(), 1, QStringLiteral("admin"), tr::fullRights({QStringLiteral("N_A_CHQGET_")}));
        // The stand-in AccountReport library sits in <host>/DLLS/Corvask/.
        session->global.hostFolder =
            QDir::cleanPath(QStringLiteral(TR_FAKE_ACCOUNT_REPORT_DIR "/../.."));
        container.resize(1100, 600);
        form = open();
    }
    void TearDown() override {
        form.reset();
        session.reset();
    }
    std::unique_ptr<TChqGetForm> open() {
        auto window = std::make_unique<TChqGetForm>(session->services, &container);
        window->resize(1100, 600);
        container.show();
        window->show();
        return window;
    }
    QMenu* menu(ChqGetGrid grid) { return form->menus()->menu(grid); }
    static QStringList texts(QMenu* menu) {
        QStringList list;
        for (QAction* a : menu->actions())
            if (!a->isSeparator()) list << a->text();
        return list;
    }
    void trigger(ChqGetGrid grid, const QString& text) {
        for (QAction* a : menu(grid)->actions()) {
            if (a->text() == text) return a->trigger();
        }
        ADD_FAILURE() << "no item " << text.toStdString();
    }
    static void focusCell(QTableView* grid, int row, const char* field) {
        auto* model = static_cast<tr::ui::DatasetModel*>(grid->model());
        grid->setCurrentIndex(model->index(row, model->fieldColumn(QString::fromLatin1(field))));
    }
    void typeCheque(const QString& number, double value) {
        ASSERT_TRUE(testing::typeReceivedCheque(form->document().cheques(), {number, value}))
            << session->dialog.last().text.toStdString();
    }
    static qint64 count(const QString& sql) {
        return tr::db::firstColumn(company(), sql).toLongLong();
    }

    QWidget container;
    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<TChqGetForm> form;
};

TEST_F(ChqGetMenusTest, EachGridOpensItsMenuWithTheItemsInOrder) {
    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    for (ChqGetGrid grid : {ChqGetGrid::Cheques, ChqGetGrid::Counterparties}) {
        QTableView* view =
            grid == ChqGetGrid::Cheques ? form->chequeGrid() : form->counterpartyGrid();
        const QPoint at(40, 30);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, view->viewport()->mapToGlobal(at));
        QApplication::sendEvent(view->viewport(), &event);
        ASSERT_TRUE(menu(grid)->isVisible());
        EXPECT_EQ(menu(grid)->layoutDirection(), Qt::RightToLeft);
        const bool cheques = grid == ChqGetGrid::Cheques;
        const QStringList expected =
            cheques ? kChequeItems
                    : kChequeItems + QStringList{"چکهاي برگشتي اين طرف حساب ", "کپي سرفصل"};
        EXPECT_EQ(texts(menu(grid)), expected);
        EXPECT_TRUE(menu(grid)->grab().save(
            QStringLiteral(TR_SCREENS_DIR) +
            (cheques ? QStringLiteral("/chq_get_menu_cheques.png")
                     : QStringLiteral("/chq_get_menu_counterparties.png"))));
        menu(grid)->hide();
    }
}

TEST_F(ChqGetMenusTest, AGridsSavedLayoutIsItsOwnAndOpensWithTheNextWindow) {
    QTableView* lines = form->counterpartyGrid();
    auto* model = static_cast<tr::ui::DatasetModel*>(lines->model());
    lines->setColumnHidden(model->fieldColumn(QStringLiteral("Des")), true);
    trigger(ChqGetGrid::Counterparties, QStringLiteral("ثبت وضعيت ستونها"));
    EXPECT_EQ(session->dialog.last().text, QStringLiteral("وضعيت ستونها ثبت شد."));
    EXPECT_EQ(
        count(QStringLiteral(
            "Select Count(*) From Grid_State Where sPart = 'CHQGETTARAF' And sColName = 'Des' "
            "And sVisible = 'F' And sForm = 'TChqGetForm'")),
        1);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From Grid_State Where sPart = 'CHQGETCHQ'")),
              0);

    form.reset();  // the next window takes over the same work tables
    form = open();
    const auto hidden = [&](QTableView* grid) {
        auto* m = static_cast<tr::ui::DatasetModel*>(grid->model());
        return grid->isColumnHidden(m->fieldColumn(QStringLiteral("Des")));
    };
    EXPECT_TRUE(hidden(form->counterpartyGrid()));
    EXPECT_FALSE(hidden(form->chequeGrid()));
    trigger(ChqGetGrid::Counterparties, QStringLiteral("بازگشت به وضعيت اوليه ستونها"));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From Grid_State Where sPart = 'CHQGETTARAF'")),
              0);
}

TEST_F(ChqGetMenusTest, TheRowItemsActOnTheRowTheUserIsOn) {
    ChequeDocument& doc = form->document();
    doc.header().date = QStringLiteral("1404/02/10");
    doc.lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
    typeCheque(QStringLiteral("7001"), 1000);
    typeCheque(QStringLiteral("7002"), 2000);

    // The account report of the cheque's subsidiary, for the fiscal period.
    focusCell(form->chequeGrid(), 1, "Moein");
    trigger(ChqGetGrid::Cheques, QStringLiteral("نمايش حساب جزء"));
    EXPECT_EQ(container.property("reportFilter").toString(),
              QStringLiteral("M=(K=103),(M=0001);COND=SANADDATE;FR=") +
                  session->global.fiscalStart + QStringLiteral(";TO=") + session->global.fiscalEnd +
                  QLatin1Char(';'));
    EXPECT_EQ(container.property("reportKind").toInt(), 2);

    // The first line's head copied onto the second.
    company().execute(
        QStringLiteral("Update ##") + doc.prefix() +
        QStringLiteral(
            "_Taraf Set Koll = '202', Moein = '0001', NamWhatDoc2 = 'طرف دوم' Where Raj = 0"));
    doc.counterparties().Open();
    focusCell(form->counterpartyGrid(), 0, "Koll");
    trigger(ChqGetGrid::Counterparties, QStringLiteral("کپي سرفصل"));
    doc.counterparties().Last();
    EXPECT_EQ(doc.counterparties().FieldByName(QStringLiteral("Koll")).AsString().trimmed(),
              QStringLiteral("202"));
    EXPECT_EQ(doc.counterparties().FieldByName(QStringLiteral("ChqNo")).AsString().trimmed(),
              QStringLiteral("7002"));

    // The first cheque deleted from its grid, with its line; the totals follow.
    focusCell(form->chequeGrid(), 0, "ChqNo");
    session->dialog.answerYes();
    trigger(ChqGetGrid::Cheques, QStringLiteral("حذف رديف"));
    ASSERT_EQ(doc.cheques().RecordCount(), 1);
    EXPECT_EQ(doc.cheques().FieldByName(QStringLiteral("ChqNo")).AsString(),
              QStringLiteral("7002"));
    EXPECT_EQ(form->counterpartyGrid()->model()->rowCount(), 1);
    EXPECT_TRUE(form->totalsLabel()->text().contains(QStringLiteral("جمع بستانکار 2,000")))
        << form->totalsLabel()->text().toStdString();
}

}  // namespace
}  // namespace tr::cheques
