// Several cashiers saving receipts at once on one company database, each in a process of its own
// and through the document controller, while clerks read the ledger: no serial or voucher number
// is handed out twice, no receipt is written over another's and no reader sees half a save. On the
// server, where writers run side by side, a desk's full day: eight cashiers and four readers.
#include <QSet>

#include "db/procedures/tests/ledger_invariants.h"
#include "vouchers/tests/cashier_processes.h"
#include "vouchers/tests/voucher_fixture.h"

namespace tr::vouchers {
namespace {

using testing::CashierReport;
using testing::VoucherTest;

class MultiUserTest : public VoucherTest {};

TEST_F(MultiUserTest, CashiersSavingAtOnceKeepEveryReceiptWhole) {
    const bool server = tr::test::testingOnServer();
    const int kCashiers = server ? 8 : 4;
    const int kReceipts = server ? 300 : 200;
    const int kReaders = server ? 4 : 1;
    const QString books = tr::test::booksAddress(this->books());
    std::vector<std::unique_ptr<QProcess>> cashiers, readers;
    for (int i = 0; i < kCashiers; ++i)
        cashiers.push_back(testing::startCashier(books, 11 + i, QString::number(kReceipts)));
    for (int i = 0; i < kReaders; ++i) readers.push_back(testing::startCashier(books, 41 + i, QStringLiteral("search")));

    std::vector<CashierReport> reports(kCashiers);
    for (int i = 0; i < kCashiers; ++i) {
        ASSERT_TRUE(cashiers[i]->waitForFinished(600000));
        ASSERT_EQ(cashiers[i]->exitCode(), 0) << cashiers[i]->readAllStandardError().toStdString();
        reports[i].read(cashiers[i]->readAllStandardOutput());
    }

    for (auto& reader : readers) {
        reader->kill();
        reader->waitForFinished(30000);
        const QString said = QString::fromUtf8(reader->readAllStandardOutput());
        EXPECT_FALSE(said.contains(QLatin1String("ERROR"))) << said.toStdString();
        EXPECT_TRUE(said.contains(QLatin1String("SEARCHED 1\n"))) << "a reader never finished a search";
    }

    int duplicates = 0;
    QSet<QString> serials, vouchers;
    for (int i = 0; i < kCashiers; ++i) {
        EXPECT_TRUE(reports[i].errors.isEmpty())
            << "cashier " << i << ": " << reports[i].errors.join(QLatin1Char('\n')).toStdString();
        EXPECT_EQ(int(reports[i].saved.size()), kReceipts) << "cashier " << i;
        duplicates += reports[i].duplicates;
        for (const auto& s : reports[i].saved) {
            EXPECT_FALSE(serials.contains(s.serial)) << "serial " << s.serial.toStdString();
            EXPECT_FALSE(vouchers.contains(s.voucher)) << "voucher " << s.voucher.toStdString();
            serials.insert(s.serial);
            vouchers.insert(s.voucher);
        }
    }
    // Serials are held from the moment they are taken, so not even a retry should be needed.
    EXPECT_EQ(duplicates, 0);

    // Each receipt a cashier saved is in the ledger with its own lines, nobody else's.
    const auto stored = testing::storedReceipts(company());
    EXPECT_EQ(stored.size(), size_t(kCashiers * kReceipts));
    for (int i = 0; i < kCashiers; ++i) {
        const int user = 11 + i;
        for (const auto& s : reports[i].saved) {
            const auto it = stored.find(s.serial);
            ASSERT_NE(it, stored.end()) << "receipt " << s.serial.toStdString() << " is missing";
            const testing::StoredReceipt& r = it->second;
            ASSERT_TRUE(testing::receiptIsWhole(s.serial, r));
            EXPECT_EQ(QString::number(r.lines.front().voucher), s.voucher);
            EXPECT_DOUBLE_EQ(r.total(), s.total);
            for (int k = 1; k <= 3; ++k) {
                EXPECT_EQ(r.lines[k].des, QStringLiteral("u%1 d%2 l%3").arg(user).arg(s.n).arg(k));
                EXPECT_DOUBLE_EQ(r.lines[k].bes, user * 1000000.0 + s.n * 10.0 + k);
            }
        }
    }
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
    EXPECT_EQ(value(QStringLiteral("Select Count(*) From ASNADACTIONS Where ActType='I'")).toInt(),
              kCashiers * kReceipts);
    // Each cashier's screen went away and took its holds with it.
    EXPECT_EQ(rows(QStringLiteral("Select * From Reserveid")), 0);
}

}  // namespace
}  // namespace tr::vouchers
