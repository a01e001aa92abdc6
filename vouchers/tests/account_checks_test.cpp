// The whole-line account rules on the demo chart: which level refuses, with which message, and
// the allowance sources of the lower levels.
#include "vouchers/account_checks.h"

#include <gtest/gtest.h>

#include "vouchers/tests/account_test_session.h"

namespace tr::vouchers {
namespace {

using testing::SessionTest;

struct Case {
    const char* name;
    LineAccount line;
    AccountLevel level;   // None: accepted
    const char* message;  // empty when accepted
};

std::ostream& operator<<(std::ostream& out, const Case& c) {
    return out << c.name;
}

LineAccount line(const char* k, const char* m = "", const char* t = "", const char* t2 = "",
                 const char* p = "") {
    return {QString::fromUtf8(k), QString::fromUtf8(m), QString::fromUtf8(t), QString::fromUtf8(t2),
            QString::fromUtf8(p)};
}

const Case kCases[] = {
    // Levels above the subsidiary.
    {"EmptyKoll", line(""), AccountLevel::Koll, "سرفصل حساب کل خالي مي باشد"},
    {"UnknownKoll", line("777", "0001"), AccountLevel::Koll, "كد حساب كل موجود نمي باشد."},
    {"BlankIsActiveIsInactive", line("998", "0001"), AccountLevel::Koll,
     "كد حساب کل غيرفعال مي باشد."},
    {"InactiveKoll", line("999", "0001"), AccountLevel::Koll, "كد حساب کل غيرفعال مي باشد."},
    {"UnknownMoein", line("101", "0009", "10001"), AccountLevel::Moein,
     "كد حساب معين موجود نمي باشد."},
    {"EmptyMoein", line("101", ""), AccountLevel::Moein, "كد حساب معين موجود نمي باشد."},
    {"InactiveMoein", line("501", "0009"), AccountLevel::Moein, "كد حساب معين غيرفعال مي باشد."},
    // Detail level.
    {"SubsidiaryWithoutDetailAcceptsNoDetail", line("103", "0001"), AccountLevel::None, ""},
    {"DetailRequired", line("101", "0001"), AccountLevel::Tafsily, "کد حساب تفصيلي خالي مي باشد."},
    {"DetailByGroup", line("101", "0001", "10002"), AccountLevel::None, ""},
    {"DetailOutsideGroup", line("101", "0001", "30001"), AccountLevel::Tafsily,
     "كد حساب تفصيلي موجود نمي باشد."},
    {"UnknownDetail", line("101", "0001", "10999"), AccountLevel::Tafsily,
     "كد حساب تفصيلي موجود نمي باشد."},
    {"DetailByCodeOnly", line("101", "0002", "11001"), AccountLevel::None, ""},
    {"DetailNotInCodeList", line("501", "0001", "60003", "50001"), AccountLevel::Tafsily,
     "كد حساب تفصيلي موجود نمي باشد."},
    {"GroupAcceptsCodeMissingFromCodeList", line("202", "0001", "30003"), AccountLevel::None, ""},
    {"CodeListAcceptsCodeOutsideGroup", line("202", "0001", "40001"), AccountLevel::None, ""},
    {"InactiveDetail", line("104", "0001", "30009"), AccountLevel::Tafsily,
     "كد حساب تفصيلي غيرفعال مي باشد."},
    // Second detail: the detail account's own lists win over the subsidiary's.
    {"SecondDetailRequired", line("104", "0001", "30003"), AccountLevel::Tafsily2,
     "کد حساب تفصيلي دو خالي مي باشد."},
    {"SecondDetailBySubsidiaryGroup", line("104", "0001", "30003", "50001", "P0001"),
     AccountLevel::None, ""},
    {"SecondDetailOutsideSubsidiaryGroup", line("104", "0001", "30003", "51001"),
     AccountLevel::Tafsily2, "كد حساب تفصيلي دو موجود نمي باشد."},
    {"DetailOwnGroupAcceptsSecondDetail", line("104", "0001", "30001", "51001", "P0001"),
     AccountLevel::None, ""},
    {"DetailOwnGroupIgnoresSubsidiaryGroup", line("104", "0001", "30001", "50001", "P0001"),
     AccountLevel::Tafsily2, "كد حساب تفصيلي دو موجود نمي باشد."},
    {"InactiveSecondDetail", line("104", "0001", "30003", "50009"), AccountLevel::Tafsily2,
     "كد حساب تفصيلي دو غيرفعال مي باشد."},
    // Project: second detail's lists, else the detail's, else the subsidiary's.
    {"ProjectRequired", line("104", "0001", "30003", "50001"), AccountLevel::Project,
     "کد پروژه خالي مي باشد."},
    {"ProjectNotInSubsidiaryList", line("104", "0001", "30003", "50001", "P0009"),
     AccountLevel::Project, "كد پروژه موجود نمي باشد."},
    {"DetailOwnProjectListWins", line("104", "0001", "30002", "50001", "P0001"),
     AccountLevel::Project, "كد پروژه موجود نمي باشد."},
    {"DetailOwnProjectList", line("104", "0001", "30002", "50001", "P0002"), AccountLevel::None,
     ""},
    {"ProjectOnlySubsidiary", line("401", "0001", "", "", "P0001"), AccountLevel::None, ""},
    {"InactiveProject", line("401", "0001", "", "", "P0009"), AccountLevel::Project,
     "كد پروژه غيرفعال مي باشد."},
};

class AccountRules : public SessionTest, public ::testing::WithParamInterface<Case> {};

TEST_P(AccountRules, RefuseAtTheirLevelWithTheirMessage) {
    const Case& c = GetParam();
    const AccountCheck check = validateLineAccount(services, c.line);
    EXPECT_EQ(check.failedLevel, c.level);
    if (c.level == AccountLevel::None) {
        EXPECT_TRUE(dialog.shown().isEmpty()) << messages().join(u'|').toStdString();
        return;
    }
    ASSERT_EQ(dialog.shown().size(), 1);
    EXPECT_EQ(dialog.last().text, QString::fromUtf8(c.message));
    EXPECT_EQ(dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(check.message, QString::fromUtf8(c.message));
}

INSTANTIATE_TEST_SUITE_P(DemoChart, AccountRules, ::testing::ValuesIn(kCases),
                         [](const auto& info) { return std::string(info.param.name); });

class AccountChecksTest : public SessionTest {};

TEST_F(AccountChecksTest, LevelNamesComeFromTheSession) {
    global.tafsily2LevelName = QStringLiteral("منطقه");
    global.projectLevelName = QStringLiteral("مرکز هزينه");
    EXPECT_EQ(checkLineAccount(company(), global, line("104", "0001", "30003")).message,
              QStringLiteral("کد حساب منطقه خالي مي باشد."));
    EXPECT_EQ(checkLineAccount(company(), global, line("401", "0001", "", "", "P0009")).message,
              QStringLiteral("كد مرکز هزينه غيرفعال مي باشد."));
}

TEST_F(AccountChecksTest, GroupLengthComesFromTheSession) {
    // A three-character prefix "100" of 10002 does not occur in the group list "10".
    global.tafsilyGroupLength = 3;
    EXPECT_EQ(checkLineAccount(company(), global, line("101", "0001", "10002")).failedLevel,
              AccountLevel::Tafsily);
}

TEST_F(AccountChecksTest, QuotesInCodesStayInsideTheirLiterals) {
    const AccountCheck check = checkLineAccount(company(), global, line("1'0", "0001"));
    EXPECT_EQ(check.failedLevel, AccountLevel::Koll);
}

// The fixed-descriptions screen restricts the second detail and the project by group only.
TEST_F(AccountChecksTest, FixedDescriptionsStyleIgnoresCodeListsBelowTheDetail) {
    const LineAccount outsideList = line("104", "0001", "30003", "50001", "P0009");
    EXPECT_EQ(checkLineAccount(company(), global, outsideList, LookupStyle::Document).message,
              QStringLiteral("كد پروژه موجود نمي باشد."));
    EXPECT_EQ(
        checkLineAccount(company(), global, outsideList, LookupStyle::FixedDescriptions).message,
        QStringLiteral("كد پروژه غيرفعال مي باشد."));
    // Groups still apply: 51001 is outside the subsidiary's second-detail group "50".
    EXPECT_EQ(checkLineAccount(company(), global, line("104", "0001", "30003", "51001"),
                               LookupStyle::FixedDescriptions)
                  .failedLevel,
              AccountLevel::Tafsily2);
}

}  // namespace
}  // namespace tr::vouchers
