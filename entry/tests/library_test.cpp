// libtreasury itself: what it shows to the dynamic linker, and the screens this build holds.
#include <QAbstractItemModel>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLayout>
#include <QPointer>
#include <QProcess>
#include <QRegularExpression>
#include <QStackedLayout>
#include <QTableView>
#include <QTest>

#include "entry/tests/entry_fixture.h"
#include "host/sdk/modal_runner.h"

namespace tr::entry::testing {
namespace {

// Every export the library may have: the table's screens with their form pointers, the session.
QStringList allowedSymbols() {
    QStringList names = {"Release_It",     "_Global",       "_MyDate", "_MyDatabase",
                         "_ShowStateForm", "_TempGridForm", "_DlgMsg"};
    const QList<QPair<QString, QString>> screens = {
        {"FixDes_Naghd", "FixDesForm"},
        {"CashGet_Naghd", "CashGetForm"},
        {"CashPay_Naghd", "CashPayForm"},
        {"Tankah_Naghd", "TankhahPayForm"},
        {"BardashtBank_Naghd", "BardashtBankForm"},
        {"VarizBank_Naghd", "VarizBankForm"},
        {"Havaleh_Naghd", "HavalehForm"},
        {"ChqPay_Naghd", "ChqPayForm"},
        {"ChqGet_Naghd", "ChqGetForm"},
        {"ChqMojavez_Naghd", "ChqMojavezForm"},
        {"ChqMojavezTaed_Naghd", "ChqMojavezTaedForm"},
        {"Chq_Action_Naghd", "ChqAction1Form"},
        {"ChqToBank_Naghd", "ChqToBankForm"},
        {"Search_Naghd", "SearchForm"},
        {"SoftehPay_Naghd", "SoftehPayForm"},
        {"SoftehGet_Naghd", "SoftehGetForm"},
        {"Softeh_Action_Naghd", "SoftehActionForm"},
        {"TasirArz_Naghd", "TasirArzForm"},
        {"EbtalBargeCheck_Naghd", "EbtalBargeCheckForm"}};
    for (const auto& [entry, form] : screens) names << entry << "_" + form;
    return names;
}

class Library : public EntryTest {
  protected:
    EntryLibrary& lib() override { return treasuryLibrary(); }
};

TEST_F(Library, ShowsOnlyItsExportsToTheDynamicLinker) {
    QProcess nm;
    nm.start(QStringLiteral("nm"), {"-D", "--defined-only", "-C", TR_TREASURY_LIBRARY});
    ASSERT_TRUE(nm.waitForFinished(30000)) << "nm is needed (binutils)";
    const QStringList lines = QString::fromUtf8(nm.readAllStandardOutput()).split('\n');
    const QStringList allowed = allowedSymbols();
    QStringList found;
    for (const QString& line : lines) {
        const QString name = line.section(' ', 2);
        if (name.isEmpty()) continue;
        // The database exception is visible on purpose, so the host can catch it by type.
        if (name.contains(QStringLiteral("tr::db::DatabaseError"))) continue;
        EXPECT_TRUE(allowed.contains(name)) << "unexpected export: " << line.toStdString();
        found << name;
    }
    EXPECT_TRUE(found.contains("Release_It"));
    EXPECT_TRUE(found.contains("_Global"));
    EXPECT_EQ(lib().has("FixDes_Naghd"), found.contains("_FixDesForm"));
}

TEST_F(Library, ExportsEveryScreenOfItsTableWithItsFormPointer) {
    // The rows of entry/exports.cpp: none may drop out of the library unnoticed.
    for (const char* name :
         {"FixDes_Naghd", "CashGet_Naghd", "CashPay_Naghd", "Tankah_Naghd", "BardashtBank_Naghd",
          "VarizBank_Naghd", "Havaleh_Naghd", "Search_Naghd", "_FixDesForm", "_CashGetForm",
          "_CashPayForm", "_TankhahPayForm", "_BardashtBankForm", "_VarizBankForm", "_HavalehForm",
          "_SearchForm", "EbtalBargeCheck_Naghd", "_EbtalBargeCheckForm", "ChqPay_Naghd", "_ChqPayForm",
          "ChqGet_Naghd", "_ChqGetForm", "ChqToBank_Naghd", "_ChqToBankForm", "ChqMojavez_Naghd", "_ChqMojavezForm",
          "ChqMojavezTaed_Naghd", "_ChqMojavezTaedForm", "Release_It"})
        EXPECT_TRUE(lib().has(name)) << name;
}

TEST_F(Library, ReleaseBeforeAnyScreenOrTwiceDoesNothing) {
    lib().release();
    lib().release();
    EXPECT_EQ(lib().published("_FixDesForm"), nullptr);
}

TEST_F(Library, FixedDescriptionsOpenOnceDockedWithTheLatestSession) {
    if (!lib().has("FixDes_Naghd")) GTEST_SKIP() << "this build has no fixed-description screen";
    auto host = container();
    EXPECT_EQ(lib().open("FixDes_Naghd", host.get(), admin()), 1);
    QWidget* form = lib().published("_FixDesForm");
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(lib().open("FixDes_Naghd", host.get(), sara()), 1);

    EXPECT_EQ(lib().published("_FixDesForm"), form);
    EXPECT_EQ(lib().published<tr::Global>("_Global"), &sara().global());
    EXPECT_EQ(form->parentWidget(), host.get());
    host->layout()->activate();
    EXPECT_EQ(form->geometry(), host->rect());
    EXPECT_TRUE(form->windowState() & Qt::WindowMaximized);
    EXPECT_TRUE(form->isVisible());

    lib().release();
    EXPECT_EQ(lib().published("_FixDesForm"), nullptr);
    EXPECT_TRUE(host->findChildren<QWidget*>(Qt::FindDirectChildrenOnly).isEmpty());
}

TEST_F(Library, ThePermitScreensOpenDockedAndGoWithRelease) {
    auto host = container();
    for (const auto& [entry, form] : {std::pair{"ChqMojavez_Naghd", "_ChqMojavezForm"},
                                      std::pair{"ChqMojavezTaed_Naghd", "_ChqMojavezTaedForm"}}) {
        ASSERT_TRUE(lib().has(entry)) << entry;
        EXPECT_EQ(lib().open(entry, host.get(), admin()), 1);
        QWidget* shown = lib().published(form);
        ASSERT_NE(shown, nullptr) << form;
        EXPECT_EQ(shown->parentWidget(), host.get());
        EXPECT_TRUE(shown->isVisible());
    }
    lib().release();
    EXPECT_EQ(lib().published("_ChqMojavezForm"), nullptr);
    EXPECT_EQ(lib().published("_ChqMojavezTaedForm"), nullptr);
}

// Answers every modal window of the library as cancelled, noting its object name.
class CancellingRunner : public tr::sdk::ModalRunner {
  public:
    CancellingRunner() : previous_(install(this)) {}
    ~CancellingRunner() override { install(previous_); }
    int exec(QDialog& dialog) override {
        shown << dialog.objectName();
        return QDialog::Rejected;
    }
    QStringList shown;

  private:
    ModalRunner* previous_;
};

int columnTitled(const QTableView& grid, const QString& title) {
    for (int c = 0; c < grid.model()->columnCount(); ++c)
        if (grid.model()->headerData(c, Qt::Horizontal).toString() == title) return c;
    return -1;
}

TEST_F(Library, EveryChequeScreenOpensDockedAndReleaseFreesThemAllInTheirOrder) {
    auto host = container();
    CancellingRunner runner;
    // The received cheques, plain and then for a sales invoice.
    ASSERT_EQ(lib().openInvoice("ChqGet_Naghd", host.get(), admin(), u""), 1);
    QWidget* received = lib().published("_ChqGetForm");
    ASSERT_NE(received, nullptr);
    auto* invoice = received->findChild<QLabel*>(QStringLiteral("txtSanadNoForosh"));
    ASSERT_NE(invoice, nullptr);
    EXPECT_FALSE(invoice->isVisible());
    ASSERT_EQ(lib().openInvoice("ChqGet_Naghd", host.get(), admin(), u"1002"), 1);
    EXPECT_EQ(lib().published("_ChqGetForm"), received);
    EXPECT_TRUE(invoice->isVisible());
    EXPECT_TRUE(invoice->text().endsWith(QStringLiteral("1002")));

    for (const char* entry : {"ChqPay_Naghd", "Chq_Action_Naghd", "ChqToBank_Naghd", "ChqMojavez_Naghd",
                              "ChqMojavezTaed_Naghd"})
        EXPECT_EQ(lib().open(entry, host.get(), admin()), 1) << entry;
    lib().openVoidMode("EbtalBargeCheck_Naghd", host.get(), admin(), 1);
    EXPECT_EQ(lib().published("_EbtalBargeCheckForm")->windowTitle(), QStringLiteral("ابطال برگه چك"));
    lib().openVoidMode("EbtalBargeCheck_Naghd", host.get(), admin(), 0);
    EXPECT_EQ(lib().published("_EbtalBargeCheckForm")->windowTitle(), QStringLiteral("برگشت ابطال برگه چك"));

    // The payment window's F2 on a cheque passed on makes the selection window, kept by the
    // library.
    QWidget* payment = lib().published("_ChqPayForm");
    ASSERT_NE(payment, nullptr);
    auto* grid = payment->findChild<QTableView*>(QStringLiteral("dbgChq"));
    ASSERT_NE(grid, nullptr);
    if (auto* stack = qobject_cast<QStackedLayout*>(host->layout())) stack->setCurrentWidget(payment);
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Insert);
    grid->setCurrentIndex(grid->model()->index(grid->currentIndex().row(), columnTitled(*grid, QStringLiteral("وضعيت"))));
    QTest::keyClick(grid, Qt::Key_Space);
    grid->setCurrentIndex(grid->model()->index(grid->currentIndex().row(), columnTitled(*grid, QStringLiteral("شماره چك"))));
    QTest::keyClick(grid, Qt::Key_F2);
    EXPECT_TRUE(runner.shown.contains(QStringLiteral("ChqGetSlctFrm"))) << runner.shown.join(',').toStdString();
    QPointer<QWidget> selection;
    for (QWidget* top : QApplication::topLevelWidgets())
        if (top->objectName() == QLatin1String("ChqGetSlctFrm")) selection = top;
    ASSERT_TRUE(selection);

    QStringList destroyed;
    const QList<QPair<const char*, QString>> forms = {
        {"_ChqGetForm", "ChqGet"},           {"_ChqPayForm", "ChqPay"},       {"_ChqMojavezForm", "ChqMojavez"},
        {"_ChqMojavezTaedForm", "ChqMojavezTaed"}, {"_ChqAction1Form", "ChqAction"}, {"_ChqToBankForm", "ChqToBank"},
        {"_EbtalBargeCheckForm", "EbtalBargeCheck"}};
    for (const auto& [symbol, name] : forms) {
        QWidget* widget = lib().published(symbol);
        ASSERT_NE(widget, nullptr) << symbol;
        EXPECT_EQ(widget->parentWidget(), host.get()) << symbol;
        QObject::connect(widget, &QObject::destroyed, [&destroyed, name = name] { destroyed << name; });
    }
    QObject::connect(selection.data(), &QObject::destroyed, [&destroyed] { destroyed << QStringLiteral("ChqGetSlct"); });
    lib().release();
    // The forms' slots in their order: payment, receipt, permit, approval, actions, to bank, voiding,
    // then the selection window.
    EXPECT_EQ(destroyed, (QStringList{"ChqPay", "ChqGet", "ChqMojavez", "ChqMojavezTaed", "ChqAction", "ChqToBank",
                                      "EbtalBargeCheck", "ChqGetSlct"}));
    EXPECT_FALSE(selection);
    for (const auto& [symbol, name] : forms) EXPECT_EQ(lib().published(symbol), nullptr) << symbol;
}

}  // namespace
}  // namespace tr::entry::testing
