#include "bench/generator.h"

#include <QElapsedTimer>
#include <QStringList>
#include <array>
#include <optional>
#include <random>

#include "common/db/transaction.h"
#include "db/engine/engine.h"
#include "db/engine/sqlite_connection.h"
#include "db/procedures/procedures.h"
#include "db/schema/demo_company.h"
#include "vouchers/document_kinds.h"
#include "vouchers/transfer_table.h"

namespace tr::bench {

namespace {

using tr::vouchers::DocumentAction;
using tr::vouchers::ProcedureArguments;
using tr::vouchers::TreasuryDocumentKind;

// A counter line's account, one of the demo chart's, with every level its subsidiary requires.
struct Account {
    const char *koll, *moein, *tafsily, *tafsily2, *project;
};
// Where the money of a receipt comes from (customers, sales, capital, other debtors) and where
// a payment's goes (suppliers, salaries, other debtors).
constexpr std::array<Account, 4> kSources = {{{"104", "0001", "30003", "50002", "P0002"},
                                              {"401", "0001", "", "", "P0001"},
                                              {"301", "0001", "", "", ""},
                                              {"104", "0002", "40001", "", ""}}};
constexpr std::array<Account, 4> kUses = {{{"202", "0001", "30001", "", ""},
                                           {"501", "0001", "60001", "50001", ""},
                                           {"202", "0001", "40001", "", ""},
                                           {"104", "0002", "40002", "", ""}}};
constexpr std::array<const char*, 4> kSourceTexts = {
    "دريافت از مشتري بابت فاکتور", "فروش نقدي فروشگاه", "افزايش سرمايه", "تسويه علي الحساب"};
constexpr std::array<const char*, 4> kUseTexts = {"پرداخت به تامين کننده", "پرداخت حقوق ماهانه",
                                                  "پرداخت علي الحساب", "هزينه هاي جاري"};

// Shares of the kinds in a year's book, in per mille.
struct KindShare {
    const char* code;
    int perMille;
};
constexpr std::array<KindShare, 6> kKindShares = {
    {{"10", 300}, {"20", 250}, {"40", 100}, {"50", 150}, {"60", 80}, {"90", 120}}};

constexpr int kDaysInYear = 365;  // 1404: six months of 31 days, five of 30, Esfand of 29

QString dateOfDay(int day) {
    int month = 1;
    for (;;) {
        const int length = month <= 6 ? 31 : 30;
        if (day < length || month == 12) break;
        day -= length;
        ++month;
    }
    return QStringLiteral("1404/%1/%2")
        .arg(month, 2, 10, QLatin1Char('0'))
        .arg(day + 1, 2, 10, QLatin1Char('0'));
}

bool isReceipt(const TreasuryDocumentKind& kind) {
    return kind.treasurySide == tr::vouchers::Side::Bed;
}

class BookWriter {
  public:
    BookWriter(tr::db::Connection& c, const BookOptions& options)
        : c_(c), options_(options), random_(options.seed) {
        table_ = QStringLiteral("##GEN_BOOK_%1").arg(options.seed);
        c_.execute(QStringLiteral("If Exists (Select * From Tempdb..SysObjects Where [Name] "
                                  "Like ") +
                   c_.text(table_) + QStringLiteral(") Exec('Drop Table ") + table_ +
                   QStringLiteral("')"));
        c_.execute(tr::vouchers::createTransferTableStatement(table_));
        for (const KindShare& share : kKindShares) {
            const QString code = QString::fromLatin1(share.code);
            const auto r = c_.execute(
                QStringLiteral("Select IsNull(Max(Serial), 0) From N_NaghdTrans Where WhatDoc=") +
                c_.text(code));
            serials_[code] = r.resultSets.front().rows.front().front().toLongLong();
        }
    }
    ~BookWriter() {
        try {
            c_.execute(QStringLiteral("Drop Table ") + table_);
        } catch (...) {
        }
    }

    BookReport run() {
        BookReport report;
        QElapsedTimer clock;
        clock.start();
        const qint64 total = options_.documents;
        const int batch = std::max(1, options_.documentsPerTransaction);
        std::optional<tr::db::Transaction> transaction;
        for (qint64 i = 0; i < total; ++i) {
            if (i % batch == 0) transaction.emplace(c_);
            writeDocument(int(i * kDaysInYear / std::max<qint64>(total, 1)), report);
            if ((i + 1) % batch == 0 || i + 1 == total) {
                transaction->commit();
                transaction.reset();
                // Statistics follow the book as it grows: a plan chosen for an empty book scans
                // whole tables once it is large. A check that finds nothing stale costs little.
                c_.execute(QStringLiteral("Exec sp_updatestats"));
                if (options_.progress) options_.progress(i + 1, total);
            }
        }
        report.seconds = clock.nsecsElapsed() / 1e9;
        return report;
    }

  private:
    int uniform(int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random_);
    }
    bool chance(double share) { return std::uniform_real_distribution<double>()(random_) < share; }

    const TreasuryDocumentKind& pickKind() {
        int roll = uniform(0, 999);
        for (const KindShare& share : kKindShares) {
            if (roll < share.perMille)
                return *tr::vouchers::findTreasuryDocumentKind(QString::fromLatin1(share.code));
            roll -= share.perMille;
        }
        return *tr::vouchers::findTreasuryDocumentKind(QStringLiteral("10"));
    }

    // The cash box, petty-cash holder or bank account of the treasury side.
    QString treasuryCode(const TreasuryDocumentKind& kind, bool currency) {
        using tr::vouchers::TreasuryObject;
        switch (kind.treasuryObject) {
            case TreasuryObject::CashBox:
                return currency ? QString::fromUtf8(tr::schema::demo::kForeignCashBox)
                                : QString::number(uniform(1, 2));
            case TreasuryObject::PettyCashHolder:
                return QString::number(uniform(1001, 1002));
            case TreasuryObject::BankAccount:
                return currency ? QString::number(tr::schema::demo::kForeignAccountId)
                                : QString::number(uniform(1, 3));
        }
        return {};
    }

    void writeDocument(int day, BookReport& report) {
        const TreasuryDocumentKind& kind = pickKind();
        const bool currency = kind.hasCurrencyTwin && chance(options_.currencyShare);
        const bool receipt = isReceipt(kind);
        const qint64 serial = ++serials_[kind.code];
        const int lines = uniform(1, 3);
        // The dollar's rate drifts over the year around the demo company's buying rate.
        const double rate = tr::schema::demo::kUsdBuy + day * 500.0;

        QStringList rows;
        for (int raj = 1; raj <= lines; ++raj) {
            const int pick = uniform(0, 3);
            const Account& a = receipt ? kSources[pick] : kUses[pick];
            const double amount = currency ? uniform(10, 5000) : uniform(10, 50000) * 10000.0;
            const QString text = QString::fromUtf8(receipt ? kSourceTexts[pick] : kUseTexts[pick]) +
                                 QStringLiteral(" شماره ") + QString::number(serial);
            const QString amountText = tr::db::sqlNumber(amount);
            rows << QStringLiteral("(") + tr::db::sqlNumber(raj) + QStringLiteral(", ") +
                        c_.text(QLatin1String(a.koll)) + QStringLiteral(", ") +
                        c_.text(QLatin1String(a.moein)) + QStringLiteral(", ") +
                        c_.text(QLatin1String(a.tafsily)) + QStringLiteral(", ") +
                        c_.text(QLatin1String(a.tafsily2)) + QStringLiteral(", ") +
                        c_.text(QLatin1String(a.project)) + QStringLiteral(", ") + c_.text(text) +
                        QStringLiteral(", ") + (receipt ? QStringLiteral("0") : amountText) +
                        QStringLiteral(", ") + (receipt ? amountText : QStringLiteral("0")) +
                        QStringLiteral(", ") +
                        (currency ? c_.text(QString::fromUtf8(tr::schema::demo::kUsd))
                                  : QStringLiteral("Null")) +
                        QStringLiteral(")");
        }
        c_.execute(QStringLiteral("Delete From ") + table_);
        c_.execute(QStringLiteral("Insert Into ") + table_ +
                   QStringLiteral(" (Raj, Koll, Moein, Tafsily, Tafsily2, ProjectCod, Des, Bed, "
                                  "Bes, ArzCod) Values ") +
                   rows.join(QStringLiteral(", ")));

        ProcedureArguments args;
        args.table = table_;
        args.serial = QString::number(serial);
        args.treasuryCode = treasuryCode(kind, currency);
        args.referenceNumber = QString::number(uniform(100000, 999999));
        args.date = dateOfDay(day);
        args.description = QString::fromUtf8(receipt ? "دريافت وجه" : "پرداخت وجه") +
                           QStringLiteral(" - ") + kind.title;
        args.userName = QString::fromUtf8(tr::schema::demo::kAdminUserName);
        args.formState = QStringLiteral("NEW");
        args.computerName = QStringLiteral("GENERATOR");
        const QString usd = QString::fromUtf8(tr::schema::demo::kUsd);
        c_.execute(
            tr::vouchers::procedureCall(c_, kind, DocumentAction::Save, args, currency, rate, usd));
        if (chance(options_.cancelledShare)) {
            args.date = dateOfDay(std::min(kDaysInYear - 1, day + uniform(0, 10)));
            c_.execute(tr::vouchers::procedureCall(c_, kind, DocumentAction::Cancel, args, currency,
                                                   rate, usd));
            ++report.cancelled;
        }
        ++report.documents;
        report.lines += lines;
        if (currency) ++report.currency;
        ++report.perKind[kind.code];
    }

    tr::db::Connection& c_;
    const BookOptions& options_;
    std::mt19937 random_;
    QString table_;
    std::map<QString, qint64> serials_;
};

}  // namespace

BookReport generateBook(tr::db::Connection& company, const BookOptions& options) {
    BookReport report;
    {
        BookWriter writer(company, options);
        report = writer.run();
    }
    report.cheques = generateCheques(company, options.cheques);
    return report;
}

QString dateOfYearDay(int day) { return dateOfDay(day); }

std::unique_ptr<tr::engine::Engine> openDemoEngine(const QString& dataDirectory) {
    auto engine = std::make_unique<tr::engine::Engine>(dataDirectory);
    for (const auto& p : tr::procedures::allProcedures())
        engine->procedures().addProcedure(p.name, p.body);
    for (const auto& f : tr::procedures::allFunctions())
        engine->procedures().addFunction(f.name, f.body);
    if (!engine->databaseExists(QString::fromUtf8(tr::schema::demo::kCurrentDatabase))) {
        auto suite = engine->open(QStringLiteral("CORVASK_Sdc"));
        tr::engine::Engine& e = *engine;
        tr::schema::loadDemoCompany(
            *suite, [&e](const QString& name) -> std::unique_ptr<tr::db::Connection> {
                return e.open(name);
            });
    }
    return engine;
}

std::unique_ptr<tr::engine::SqliteConnection> openDemoCompany(tr::engine::Engine& engine) {
    return engine.open(QString::fromUtf8(tr::schema::demo::kCurrentDatabase));
}

qint64 documentCount(tr::db::Connection& company) {
    const auto r = company.execute(
        QStringLiteral("Select Count(*) From N_NaghdTrans Where Raj = 1 And WhatDoc In ('10', "
                       "'20', '40', '50', '60', '90')"));
    return r.resultSets.front().rows.front().front().toLongLong();
}

}  // namespace tr::bench
