// The receipt through libtreasury, called the way a host calls it.
#include <gtest/gtest.h>

#include <QLibrary>
#include <QLineEdit>
#include <QTemporaryDir>

#include "entry/entry_api.h"
#include "host/app/host_session.h"
#include "tests/support/recording_modal_runner.h"

namespace tr::cashbank {
namespace {

TEST(TreasuryLibrary, ASecondReceiptCallKeepsOneFormWithTheSecondInvoiceNumber) {
    tr::test::RecordingModalRunner runner;  // nothing may wait for a user
    QTemporaryDir dir;
    tr::host::DataDirectory data(dir.path());
    tr::host::HostSession session(data, {1, QStringLiteral("admin"), {}}, data.companies().front());
    QLibrary library(QStringLiteral(TR_TREASURY_LIBRARY));
    ASSERT_TRUE(library.load()) << library.errorString().toStdString();
    auto entry = reinterpret_cast<tr::entry::InvoiceScreenEntry>(library.resolve("CashGet_Naghd"));
    auto release = reinterpret_cast<tr::entry::ReleaseEntry>(library.resolve("Release_It"));
    auto** published = reinterpret_cast<QWidget**>(library.resolve("_CashGetForm"));
    ASSERT_TRUE(entry && release && published);

    QWidget container;
    container.setObjectName(QStringLiteral("pnlContent"));  // settles invoices
    container.resize(1200, 700);
    container.show();
    const auto call = [&](const char16_t* invoice) {
        return entry(&container, &session.global(), &session.myDate(), &session.myDatabase(),
                     &session.showStateForm(), &session.tempGridForm(), &session.dlgMsg(), invoice);
    };
    EXPECT_EQ(call(u"1001"), 1);
    QWidget* first = *published;
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(call(u"1002"), 1);
    EXPECT_EQ(*published, first);
    EXPECT_EQ(container.findChildren<QWidget*>(QStringLiteral("CashGetForm")).size(), 1);
    EXPECT_EQ(first->property("invoiceNumber").toString(), QStringLiteral("1002"));
    EXPECT_EQ(first->findChild<QLineEdit*>(QStringLiteral("edFactorNo"))->text(),
              QStringLiteral("1002"));
    release();
    EXPECT_EQ(*published, nullptr);
}

}  // namespace
}  // namespace tr::cashbank
