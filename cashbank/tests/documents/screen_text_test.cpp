// Text pasted into the document screens' one-line boxes: line breaks become spaces, other control
// characters and over-long numbers are refused in the screen's words before anything is written,
// and cuts never split a character.
#include <functional>

#include "cashbank/tests/documents/documents_fixture.h"

namespace tr::cashbank {
namespace {

using testing::DocumentsTest;
using testing::s;
using tr::vouchers::HeaderField;
namespace demo = tr::schema::demo;

const QString kEmoji = QString::fromUtf8("\xF0\x9F\x98\x80");  // one character, two UTF-16 units

TEST_F(DocumentsTest, PastedLineBreaksAreSavedAsSpaces) {
    auto deposit = open(ScreenId::VarizBank);
    fillHeader(*deposit, 1000);
    deposit->setDescription(QStringLiteral("خط اول\r\nخط دوم\nخط سوم") + QChar(0x2028) +
                            QStringLiteral("چهارم"));
    deposit->setReferenceNumber(QStringLiteral("70\r01"));
    deposit->setDepositor(QStringLiteral("رضا\nمحمدي"));
    deposit->appendLine();
    tr::db::Query& grid = deposit->grid();
    grid.FieldByName(QStringLiteral("Koll")).SetAsString(s(demo::kCapitalKoll));
    grid.FieldByName(QStringLiteral("Moein")).SetAsString(s(demo::kCapitalMoein));
    grid.FieldByName(QStringLiteral("Des")).SetAsString(QStringLiteral("رديف\r\nيک"));
    grid.FieldByName(QStringLiteral("Bes")).SetAsFloat(1000);
    ASSERT_TRUE(deposit->postLine()) << admin->dialog.last().text.toStdString();
    ASSERT_TRUE(deposit->cmdOkClick()) << admin->dialog.last().text.toStdString();
    EXPECT_TRUE(ledgerIsConsistent());

    EXPECT_EQ(
        value(QStringLiteral("Select Des From Asnad Where TypeSys = 'N' And Raj = 1")).toString(),
        QStringLiteral("خط اول خط دوم خط سوم چهارم( 1 )"));
    EXPECT_EQ(
        value(QStringLiteral("Select Des From Asnad Where TypeSys = 'N' And Raj = 2")).toString(),
        QStringLiteral("رديف يک"));
    EXPECT_EQ(value(QStringLiteral("Select AtfCh From Asnad Where Raj = 1")).toString(),
              QStringLiteral("70 01"));
    EXPECT_EQ(value(QStringLiteral("Select Des1 From N_NaghdTrans Where Raj = 1")).toString(),
              QStringLiteral("رضا محمدي"));
}

struct Refusal {
    const char* name;
    ScreenId screen;
    std::function<void(CashBankDocument&)> type;
    const char* message;
    HeaderField focus;
};

class HeaderTextRefusals : public DocumentsTest, public ::testing::WithParamInterface<Refusal> {};

TEST_P(HeaderTextRefusals, RefuseTheSaveInTheScreensWordsAndChangeNothing) {
    const Refusal& r = GetParam();
    auto screen = open(r.screen);
    fillHeader(*screen, 1000);
    ASSERT_TRUE(addLine(*screen, 1000));
    r.type(*screen);
    admin->dialog.clearShown();
    EXPECT_FALSE(screen->cmdOkClick());
    ASSERT_EQ(admin->dialog.shown().size(), 1);
    EXPECT_EQ(admin->dialog.last().text, s(r.message));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(screen->focus(), r.focus);
    EXPECT_FALSE(screen->headerLeave());
    EXPECT_EQ(rows(QStringLiteral("Select * From N_NaghdTrans")), 0);
    EXPECT_EQ(screen->grid().RecordCount(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Boxes, HeaderTextRefusals,
    ::testing::Values(
        Refusal{"ControlCharacterInTheNumber", ScreenId::CashGet,
                [](CashBankDocument& d) {
                    d.setReferenceNumber(
                        QStringLiteral("70\x0B"
                                       "01"));
                },
                "شماره داراي حرف غير مجاز است.", HeaderField::ReferenceNumber},
        Refusal{"TabInTheDescription", ScreenId::CashPay,
                [](CashBankDocument& d) { d.setDescription(QStringLiteral("بابت\tحقوق")); },
                "شرح داراي حرف غير مجاز است.", HeaderField::Description},
        Refusal{"NumberLongerThanItsColumn", ScreenId::VarizBank,
                [](CashBankDocument& d) { d.setReferenceNumber(QString(21, QLatin1Char('7'))); },
                "شماره واريز بيش از 20 حرف است.", HeaderField::ReferenceNumber},
        Refusal{"PartLongerThanItsColumn", ScreenId::BardashtBank,
                [](CashBankDocument& d) { d.setJoz(QStringLiteral("12345678901")); },
                "جزء بيش از 10 حرف است.", HeaderField::Joz},
        Refusal{"BrokenCharacterInTheRemitter", ScreenId::Havaleh,
                [](CashBankDocument& d) {
                    d.setRemitter(QStringLiteral("شرکت") + QChar(0xD83D), s("بانک ملت"),
                                  QStringLiteral("12"), s("مرکزي"));
                },
                "حواله كننده داراي حرف غير مجاز است.", HeaderField::Des1}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(DocumentsTest, ALineDescriptionWithAControlCharacterStaysInEdit) {
    auto receipt = open(ScreenId::CashGet);
    fillHeader(*receipt, 1000);
    receipt->appendLine();
    tr::db::Query& grid = receipt->grid();
    grid.FieldByName(QStringLiteral("Koll")).SetAsString(s(demo::kCapitalKoll));
    grid.FieldByName(QStringLiteral("Moein")).SetAsString(s(demo::kCapitalMoein));
    grid.FieldByName(QStringLiteral("Des")).SetAsString(QStringLiteral("رديف") + QChar(0x0007));
    grid.FieldByName(QStringLiteral("Bes")).SetAsFloat(1000);
    EXPECT_FALSE(receipt->postLine());
    EXPECT_EQ(admin->dialog.last().text, s("شرح داراي حرف غير مجاز است."));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(receipt->lineFocusField(), QStringLiteral("Des"));
    grid.FieldByName(QStringLiteral("Des")).SetAsString(QStringLiteral("رديف"));
    EXPECT_TRUE(receipt->postLine());
    EXPECT_TRUE(receipt->cmdOkClick());
}

TEST_F(DocumentsTest, LongDescriptionsAreCutByCharactersAroundTheAppendedSerial) {
    auto receipt = open(ScreenId::CashGet);
    fillHeader(*receipt, 1000);
    ASSERT_TRUE(addLine(*receipt, 1000, QString(199, QLatin1Char('b')) + kEmoji + kEmoji));
    // The serial "( 1 )" needs room: the text is cut to 194 characters, the 194th an emoji.
    receipt->setDescription(QString(193, QLatin1Char('a')) + kEmoji +
                            QString(20, QLatin1Char('a')));
    ASSERT_TRUE(receipt->cmdOkClick()) << admin->dialog.last().text.toStdString();
    EXPECT_EQ(
        value(QStringLiteral("Select Des From Asnad Where TypeSys = 'N' And Raj = 1")).toString(),
        QString(193, QLatin1Char('a')) + kEmoji + QStringLiteral("( 1 )"));
    // The line's description was cut to its 200 characters, the last emoji whole.
    EXPECT_EQ(
        value(QStringLiteral("Select Des From Asnad Where TypeSys = 'N' And Raj = 2")).toString(),
        QString(199, QLatin1Char('b')) + kEmoji);
}

}  // namespace
}  // namespace tr::cashbank
