// The entry mechanism through the probe library: the real export names over stand-in forms.
#include <QApplication>
#include <QFile>
#include <QLayout>
#include <QPointer>
#include <QStackedLayout>
#include <QTemporaryDir>

#include "entry/tests/entry_fixture.h"

namespace tr::entry::testing {
namespace {

class ScreenEntry : public EntryTest {
  protected:
    EntryLibrary& lib() override { return probeLibrary(); }
    QWidget* form(const char* name) { return lib().published(name); }
};

TEST_F(ScreenEntry, CreatesTheFormOnceAndDocksItMaximizedIntoTheContainer) {
    auto host = container();
    EXPECT_EQ(lib().open("FixDes_Naghd", host.get(), admin()), 1);
    QPointer<QWidget> first = form("_FixDesForm");
    ASSERT_TRUE(first);
    EXPECT_EQ(lib().open("FixDes_Naghd", host.get(), admin()), 1);

    EXPECT_EQ(form("_FixDesForm"), first.data());
    EXPECT_EQ(first->parentWidget(), host.get());
    ASSERT_TRUE(host->layout());
    EXPECT_EQ(host->layout()->count(), 1);
    host->layout()->activate();
    EXPECT_EQ(first->geometry(), host->rect());
    EXPECT_TRUE(first->windowState() & Qt::WindowMaximized);
    EXPECT_TRUE(first->isVisible());
}

TEST_F(ScreenEntry, EverySessionObjectAndEveryFormFollowTheLatestCall) {
    auto host = container();
    lib().open("FixDes_Naghd", host.get(), admin());
    QWidget* fixDes = form("_FixDesForm");
    EXPECT_EQ(fixDes->property("sessionUser").toString(), QStringLiteral("admin"));

    lib().open("CashPay_Naghd", host.get(), sara());
    EXPECT_EQ(lib().published<tr::Global>("_Global"), &sara().global());
    EXPECT_EQ(lib().published<tr::sdk::MyDate>("_MyDate"), &sara().myDate());
    EXPECT_EQ(lib().published<tr::db::MyDatabase>("_MyDatabase"), &sara().myDatabase());
    EXPECT_EQ(lib().published<tr::sdk::TShowStateForm>("_ShowStateForm"), &sara().showStateForm());
    EXPECT_EQ(lib().published<tr::sdk::TTempGridForm>("_TempGridForm"), &sara().tempGridForm());
    EXPECT_EQ(lib().published<tr::sdk::TDlgMsg>("_DlgMsg"), &sara().dlgMsg());
    // The form created under the first login reads the second one.
    EXPECT_EQ(fixDes->property("sessionUser").toString(), QStringLiteral("sara"));

    // Nothing is checked: null objects are stored as given.
    auto entry = reinterpret_cast<tr::entry::ScreenEntry>(lib().library().resolve("CashPay_Naghd"));
    EXPECT_EQ(entry(host.get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(lib().published("_Global"), nullptr);
    EXPECT_EQ(lib().published("_DlgMsg"), nullptr);
    EXPECT_EQ(fixDes->property("sessionUser").toString(), QString());
}

TEST_F(ScreenEntry, TheInvoiceNumberOfTheLatestCallWinsOnTheOneForm) {
    auto host = container(QStringLiteral("pnlContent"));
    lib().openInvoice("CashGet_Naghd", host.get(), admin(), u"1001");
    QWidget* receipt = form("_CashGetForm");
    lib().openInvoice("CashGet_Naghd", host.get(), admin(), u"1002");

    EXPECT_EQ(form("_CashGetForm"), receipt);
    EXPECT_EQ(receipt->property("invoiceNumber").toString(), QStringLiteral("1002"));
    lib().openInvoice("CashGet_Naghd", host.get(), admin(), u"شماره ۱۰۰۳");
    EXPECT_EQ(receipt->property("invoiceNumber").toString(), QStringLiteral("شماره ۱۰۰۳"));
    lib().openInvoice("CashGet_Naghd", host.get(), admin(), nullptr);
    EXPECT_EQ(receipt->property("invoiceNumber").toString(), QString());
}

TEST_F(ScreenEntry, TheVoidFormIsRebuiltOnlyWhenTheModeChanges) {
    auto host = container();
    lib().openVoidMode("EbtalBargeCheck_Naghd", host.get(), admin(), 1);
    QPointer<QWidget> voiding = form("_EbtalBargeCheckForm");
    ASSERT_TRUE(voiding);
    lib().openVoidMode("EbtalBargeCheck_Naghd", host.get(), admin(), 1);
    EXPECT_EQ(form("_EbtalBargeCheckForm"), voiding.data());
    EXPECT_TRUE(voiding->property("voidMode").toBool());

    lib().openVoidMode("EbtalBargeCheck_Naghd", host.get(), admin(), 0);
    EXPECT_FALSE(voiding);
    QPointer<QWidget> undoing = form("_EbtalBargeCheckForm");
    ASSERT_TRUE(undoing);
    EXPECT_FALSE(undoing->property("voidMode").toBool());
    EXPECT_EQ(undoing->windowTitle(), QStringLiteral("       برگشت ابطال برگه چك"));

    // Only the low byte is the mode: 0x100 still means "undo".
    lib().openVoidMode("EbtalBargeCheck_Naghd", host.get(), admin(), 0x100);
    EXPECT_EQ(form("_EbtalBargeCheckForm"), undoing.data());

    // Parent and show only: designed size, not docked, not maximized.
    EXPECT_EQ(undoing->parentWidget(), host.get());
    EXPECT_TRUE(undoing->isVisible());
    EXPECT_EQ(undoing->size(), QSize(320, 200));
    EXPECT_FALSE(undoing->windowState() & Qt::WindowMaximized);
    EXPECT_TRUE(!host->layout() || host->layout()->indexOf(undoing) < 0);
}

TEST_F(ScreenEntry, ReleaseDestroysEveryFormInTheFixedOrderAndThenNothing) {
    auto host = container();
    lib().release();  // before any screen: nothing to do
    lib().openVoidMode("EbtalBargeCheck_Naghd", host.get(), admin(), 1);
    lib().open("CashPay_Naghd", host.get(), admin());
    lib().openInvoice("CashGet_Naghd", host.get(), admin(), u"1001");
    lib().open("FixDes_Naghd", host.get(), admin());
    QMetaObject::invokeMethod(form("_FixDesForm"), "openSelection");

    QStringList destroyed;
    const QList<QPair<QWidget*, QString>> forms = {
        {form("_EbtalBargeCheckForm"), "EbtalBargeCheck"},
        {form("_CashPayForm"), "CashPay"},
        {form("_CashGetForm"), "CashGet"},
        {form("_FixDesForm"), "FixDes"}};
    for (const auto& [widget, name] : forms)
        QObject::connect(widget, &QObject::destroyed, [&destroyed, name] { destroyed << name; });
    // The selection window is a window of its own, not a child of the container.
    int selectionGone = 0;
    for (QWidget* top : QApplication::topLevelWidgets())
        if (QByteArray(top->metaObject()->className()).endsWith("ProbeSelectionForm"))
            QObject::connect(top, &QObject::destroyed, [&] {
                destroyed << "Selection";
                ++selectionGone;
            });

    lib().release();
    EXPECT_EQ(destroyed,
              (QStringList{"FixDes", "CashGet", "CashPay", "EbtalBargeCheck", "Selection"}));
    EXPECT_EQ(selectionGone, 1);
    for (const char* name : {"_FixDesForm", "_CashGetForm", "_CashPayForm", "_EbtalBargeCheckForm"})
        EXPECT_EQ(form(name), nullptr) << name;

    lib().release();
    EXPECT_EQ(destroyed.size(), 5);
    // The session pointers are never cleared.
    EXPECT_EQ(lib().published<tr::Global>("_Global"), &admin().global());
}

TEST_F(ScreenEntry, AFormDestroyedWithItsContainerIsCreatedAgainOnTheNextCall) {
    auto host = container();
    lib().open("FixDes_Naghd", host.get(), admin());
    QPointer<QWidget> first = form("_FixDesForm");
    host.reset();
    EXPECT_FALSE(first);
    EXPECT_EQ(form("_FixDesForm"), nullptr);
    lib().release();

    auto next = container();
    lib().open("FixDes_Naghd", next.get(), admin());
    ASSERT_NE(form("_FixDesForm"), nullptr);
    EXPECT_EQ(form("_FixDesForm")->parentWidget(), next.get());
}

TEST_F(ScreenEntry, TheLastScreenOpenedInAContainerCoversTheOthersAndMovesWithItsContainer) {
    auto first = container();
    auto second = container(QStringLiteral("pnlOther"));
    lib().open("FixDes_Naghd", first.get(), admin());
    lib().open("CashPay_Naghd", first.get(), admin());
    QWidget* fixDes = form("_FixDesForm");
    QWidget* cashPay = form("_CashPayForm");
    EXPECT_TRUE(cashPay->isVisible());
    EXPECT_FALSE(fixDes->isVisible());

    lib().open("FixDes_Naghd", first.get(), admin());
    EXPECT_TRUE(fixDes->isVisible());
    EXPECT_FALSE(cashPay->isVisible());

    lib().open("FixDes_Naghd", second.get(), admin());
    EXPECT_EQ(fixDes->parentWidget(), second.get());
    EXPECT_LT(first->layout()->indexOf(fixDes), 0);
    EXPECT_EQ(second->layout()->indexOf(fixDes), 0);
}

TEST_F(ScreenEntry, UnloadingTheLibraryReleasesItsForms) {
    // A copy of its own, so this load is the only handle on it and unload really unmaps it.
    QTemporaryDir dir;
    const QString copy = dir.filePath(QStringLiteral("libtr_entry_copy.so"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(TR_PROBE_LIBRARY), copy));
    auto host = container();
    QPointer<QWidget> opened;
    {
        EntryLibrary own(copy);
        own.open("FixDes_Naghd", host.get(), admin());
        opened = own.published("_FixDesForm");
        ASSERT_TRUE(opened);
        ASSERT_TRUE(own.library().unload());
    }
    EXPECT_FALSE(opened);
    EXPECT_EQ(host->findChildren<QWidget*>(Qt::FindDirectChildrenOnly).size(), 0);
}

}  // namespace
}  // namespace tr::entry::testing
