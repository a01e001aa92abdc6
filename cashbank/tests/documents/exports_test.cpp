// Each of the six cash and bank documents through its export of libtreasury, called the way a
// host calls it: a document saved, reopened on a new form, cancelled, restored and deleted on the
// demo company, with the voucher checked after every step.
#include <gtest/gtest.h>

#include <QLibrary>
#include <QLineEdit>
#include <QTemporaryDir>
#include <memory>
#include <ostream>

#include "cashbank/ui/documents/cash_bank_form.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "db/schema/demo_company.h"
#include "entry/entry_api.h"
#include "host/app/host_session.h"
#include "tests/support/recording_modal_runner.h"

namespace tr::cashbank {
namespace {

namespace demo = tr::schema::demo;
namespace ledger = tr::procedures::testing;
using tr::vouchers::DocumentState;

QString s(const char* utf8) {
    return QString::fromUtf8(utf8);
}

struct ExportCase {
    const char* exportName;
    const char* formPointer;
    ScreenId screen;
    bool invoice;  // the export takes an invoice number after the session objects
};

void PrintTo(const ExportCase& c, std::ostream* os) {
    *os << c.exportName;
}

const ExportCase kExports[] = {
    {"CashGet_Naghd", "_CashGetForm", ScreenId::CashGet, true},
    {"CashPay_Naghd", "_CashPayForm", ScreenId::CashPay, false},
    {"Tankah_Naghd", "_TankhahPayForm", ScreenId::Tankhah, false},
    {"VarizBank_Naghd", "_VarizBankForm", ScreenId::VarizBank, true},
    {"BardashtBank_Naghd", "_BardashtBankForm", ScreenId::BardashtBank, false},
    {"Havaleh_Naghd", "_HavalehForm", ScreenId::Havaleh, false},
};

class ThroughTheExport : public ::testing::TestWithParam<ExportCase> {
  protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        data_ = std::make_unique<tr::host::DataDirectory>(dir_.path());
        session_ = std::make_unique<tr::host::HostSession>(
            *data_, tr::host::User{demo::kAdminUserId, s(demo::kAdminUserName), {}},
            data_->companies().front());
        ASSERT_TRUE(library_.load()) << library_.errorString().toStdString();
        release_ = reinterpret_cast<tr::entry::ReleaseEntry>(library_.resolve("Release_It"));
        published_ = reinterpret_cast<QWidget**>(library_.resolve(GetParam().formPointer));
        entry_ = library_.resolve(GetParam().exportName);
        ASSERT_TRUE(release_ && published_ && entry_);
        // The demo host's container: not the invoice one, so the receipt and the deposit are
        // plain documents here.
        container_.setObjectName(QStringLiteral("pnlScreens"));
        container_.resize(1200, 700);
        container_.show();
    }

    void TearDown() override {
        // Before the container goes, so the forms are freed by the library and not by their
        // parent.
        if (release_) release_();
    }

    // Calls the export and answers the form it published, as the document form it is.
    TCashBankForm* open() {
        tr::host::HostSession& h = *session_;
        int result = 0;
        if (GetParam().invoice) {
            result = reinterpret_cast<tr::entry::InvoiceScreenEntry>(entry_)(
                &container_, &h.global(), &h.myDate(), &h.myDatabase(), &h.showStateForm(),
                &h.tempGridForm(), &h.dlgMsg(), u"");
        } else {
            result = reinterpret_cast<tr::entry::ScreenEntry>(entry_)(
                &container_, &h.global(), &h.myDate(), &h.myDatabase(), &h.showStateForm(),
                &h.tempGridForm(), &h.dlgMsg());
        }
        EXPECT_EQ(result, 1);
        if (!*published_) return nullptr;
        EXPECT_EQ((*published_)->parentWidget(), &container_);
        // Both sides are built from the same sources, so the layout of the class is shared.
        return static_cast<TCashBankForm*>(*published_);
    }

    tr::db::Connection& company() { return *session_->myDatabase().Connection; }
    qint64 count(const QString& sql) {
        return ledger::selectRows(company(), sql).rows.at(0).at(0).toLongLong();
    }
    QString ofThisDocument(const QString& kind, const QString& serial) const {
        return QStringLiteral(" Where WhatDoc = '") + kind + QStringLiteral("' And Serial = ") +
               serial;
    }
    // Voucher lines of the document's lines: of its voucher ('0') or of its cancellation ('1').
    qint64 voucherLines(const QString& kind, const QString& serial, char docToDate) {
        return count(QStringLiteral("Select Count(*) From Asnad Where TypeSys = 'N' And "
                                    "WhatDoc = '") +
                     kind + QStringLiteral("' And DocToDate = '") + QLatin1Char(docToDate) +
                     QStringLiteral("' And Document In (Select Cast(IDX As Varchar(20)) From "
                                    "N_NaghdTrans") +
                     ofThisDocument(kind, serial) + QStringLiteral(")"));
    }

    static QString treasuryCode(const CashBankScreen& screen) {
        switch (screen.kind().treasuryObject) {
            case tr::vouchers::TreasuryObject::CashBox:
                return s(demo::kRialCashBox);
            case tr::vouchers::TreasuryObject::PettyCashHolder:
                return s(demo::kPettyCashHolder);
            case tr::vouchers::TreasuryObject::BankAccount:
                return s(demo::kMelliAccountCod);
        }
        return {};
    }

    static void fillHeader(CashBankDocument& doc, double amount) {
        doc.serialEnter();
        doc.dayLeave(QStringLiteral("5"));
        doc.monthLeave(QStringLiteral("3"));
        doc.setYear(QStringLiteral("1404"));
        doc.setReferenceNumber(QStringLiteral("7001"));
        if (doc.screen().hasJoz) doc.setJoz(QStringLiteral("2"));
        doc.treasuryCodeEntered(treasuryCode(doc.screen()));
        doc.setDescription(QStringLiteral("بابت فروش"));
        if (doc.screen().hasDepositor) doc.setDepositor(QStringLiteral("رضا محمدي"));
        if (doc.screen().hasRemitter)
            doc.setRemitter(QStringLiteral("شرکت آلفا"), s("بانک تجارت"), QStringLiteral("201"),
                            s("شعبه ميرداماد"));
        doc.setAmountText(QString::number(amount, 'f', 0));
    }

    // A counter line on the capital account, opposite the treasury side.
    static bool addLine(CashBankDocument& doc, double amount) {
        doc.appendLine();
        tr::db::Query& grid = doc.grid();
        grid.FieldByName(QStringLiteral("Koll")).SetAsString(s(demo::kCapitalKoll));
        grid.FieldByName(QStringLiteral("Moein")).SetAsString(s(demo::kCapitalMoein));
        grid.FieldByName(QStringLiteral("Des")).SetAsString(QStringLiteral("شرح رديف"));
        grid.FieldByName(tr::vouchers::sideColumn(doc.screen().kind().gridSide()))
            .SetAsFloat(amount);
        return doc.postLine();
    }

    tr::test::RecordingModalRunner runner_;  // nothing may wait for a user
    QTemporaryDir dir_;
    std::unique_ptr<tr::host::DataDirectory> data_;
    std::unique_ptr<tr::host::HostSession> session_;
    QLibrary library_{QStringLiteral(TR_TREASURY_LIBRARY)};
    tr::entry::ReleaseEntry release_ = nullptr;
    QWidget** published_ = nullptr;
    QFunctionPointer entry_ = nullptr;
    QWidget container_;
};

TEST_P(ThroughTheExport, SavesReopensCancelsRestoresAndDeletes) {
    const QStringList yesNo{QStringLiteral("&بله"), QStringLiteral("&خير")};
    TCashBankForm* form = open();
    ASSERT_NE(form, nullptr);
    CashBankDocument& doc = form->logic();
    ASSERT_TRUE(doc.isShown());
    EXPECT_FALSE(doc.invoiceMode());
    const QString kind = doc.screen().kindCode;

    // An unbalanced document is refused with nothing written.
    fillHeader(doc, 5000000);
    ASSERT_TRUE(addLine(doc, 3000000));
    EXPECT_FALSE(doc.cmdOkClick());
    ASSERT_EQ(runner_.shown().size(), 1);
    EXPECT_EQ(runner_.last().text, s("سند تراز نميباشد."));
    EXPECT_EQ(doc.state(), DocumentState::New);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_NaghdTrans Where WhatDoc = '") + kind +
                    QStringLiteral("'")),
              0);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From Asnad Where TypeSys = 'N'")), 0);

    // Balanced, it is posted: the treasury line and two counter lines, one voucher line each.
    ASSERT_TRUE(addLine(doc, 2000000));
    ASSERT_TRUE(doc.cmdOkClick()) << runner_.last().text.toStdString();
    EXPECT_EQ(runner_.shown().size(), 1);
    EXPECT_EQ(doc.state(), DocumentState::Edit);
    const QString serial = doc.header().serial;
    ASSERT_FALSE(serial.isEmpty());
    EXPECT_EQ(
        count(QStringLiteral("Select Count(*) From N_NaghdTrans") + ofThisDocument(kind, serial)),
        3);
    EXPECT_EQ(voucherLines(kind, serial, '0'), 3);
    EXPECT_EQ(count(QStringLiteral("Select Sum(Bed) From Asnad Where TypeSys = 'N'")), 5000000);
    EXPECT_TRUE(ledger::ledgerIsConsistent(company()));

    // Freed and called again, the library builds a new form that reads the document back.
    release_();
    EXPECT_EQ(*published_, nullptr);
    form = open();
    ASSERT_NE(form, nullptr);
    CashBankDocument& reopened = form->logic();
    EXPECT_EQ(reopened.state(), DocumentState::New);
    reopened.setSerial(serial);
    ASSERT_TRUE(reopened.serialLeave()) << runner_.last().text.toStdString();
    EXPECT_EQ(reopened.state(), DocumentState::Edit);
    EXPECT_EQ(reopened.header().amount, 5000000.0);
    EXPECT_EQ(reopened.header().treasuryDisplayCode, treasuryCode(reopened.screen()));
    EXPECT_EQ(reopened.grid().RecordCount(), 2);
    if (reopened.screen().hasDepositor) {
        EXPECT_EQ(reopened.header().des1, QStringLiteral("رضا محمدي"));
    }
    if (reopened.screen().hasRemitter) {
        EXPECT_EQ(reopened.header().des4, s("شعبه ميرداماد"));
    }
    EXPECT_EQ(form->widget<QLineEdit>(QStringLiteral("edSum"))->text(),
              QStringLiteral("5,000,000"));

    runner_.answer(tr::dialog::ResultYes);
    ASSERT_TRUE(reopened.cmdAbtalClick()) << runner_.last().text.toStdString();
    EXPECT_EQ(runner_.last().buttons, yesNo);
    EXPECT_TRUE(reopened.cancelled());
    EXPECT_EQ(voucherLines(kind, serial, '1'), 3);
    EXPECT_TRUE(ledger::ledgerIsConsistent(company()));  // the cancellation nets to zero

    runner_.answer(tr::dialog::ResultYes);
    ASSERT_TRUE(reopened.cmdAbtalClick()) << runner_.last().text.toStdString();
    EXPECT_EQ(runner_.last().buttons, yesNo);
    EXPECT_FALSE(reopened.cancelled());
    EXPECT_EQ(voucherLines(kind, serial, '1'), 0);
    EXPECT_EQ(voucherLines(kind, serial, '0'), 3);
    EXPECT_TRUE(ledger::ledgerIsConsistent(company()));

    QList<qint64> former;
    const auto lines = ledger::selectRows(
        company(), QStringLiteral("Select IDX From N_NaghdTrans") + ofThisDocument(kind, serial));
    for (const auto& row : lines.rows) former << row[0].toLongLong();
    ASSERT_EQ(former.size(), 3);
    runner_.answer(tr::dialog::ResultYes);
    ASSERT_TRUE(reopened.cmdDelClick()) << runner_.last().text.toStdString();
    EXPECT_EQ(runner_.last().buttons, yesNo);
    EXPECT_TRUE(ledger::documentIsGone(company(), kind, serial.toLongLong(), former));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From Asnad Where TypeSys = 'N'")), 0);
    EXPECT_EQ(reopened.state(), DocumentState::New);
    EXPECT_EQ(runner_.pending(), 0);
    EXPECT_EQ(runner_.shown().size(), 4);  // the refusal and the three questions, nothing else

    release_();
    EXPECT_EQ(*published_, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Documents, ThroughTheExport, ::testing::ValuesIn(kExports),
                         [](const auto& info) { return std::string(info.param.exportName); });

}  // namespace
}  // namespace tr::cashbank
