// libtreasury itself: what it shows to the dynamic linker, and the screens this build holds.
#include <QLayout>
#include <QProcess>
#include <QRegularExpression>

#include "entry/tests/entry_fixture.h"

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

}  // namespace
}  // namespace tr::entry::testing
