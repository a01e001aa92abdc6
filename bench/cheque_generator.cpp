#include "bench/cheque_generator.h"

#include <QElapsedTimer>
#include <QStringList>
#include <array>
#include <optional>
#include <random>
#include <vector>

#include "bench/generator.h"
#include "common/db/transaction.h"
#include "instruments/cheque_actions.h"
#include "instruments/cheque_work_tables.h"

namespace tr::bench {

namespace {

using tr::instruments::chequeActions;
using tr::instruments::InstrumentFacts;
using tr::instruments::Side;
using Account = std::array<QString, 5>;  // Koll, Moein, Tafsily, Tafsily2, ProjectCod

constexpr int kDays = 365;
const char* const kUser = "admin";

// Customers the cheques come from, suppliers they pay: accounts of the demo chart with every
// level their subsidiaries require.
const std::array<Account, 2>& customers() {
    static const std::array<Account, 2> a = {{{"104", "0002", "40001", "", ""}, {"104", "0002", "40002", "", ""}}};
    return a;
}
const std::array<Account, 2>& suppliers() {
    static const std::array<Account, 2> a = {{{"202", "0001", "30001", "", ""}, {"202", "0001", "40001", "", ""}}};
    return a;
}
// Drawee banks and branches of the received cheques, as the demo book lists them.
constexpr std::array<std::array<const char*, 2>, 4> kBranches = {
    {{"01", "101"}, {"01", "102"}, {"02", "201"}, {"03", "301"}}};
constexpr std::array<const char*, 4> kReceivedSeries = {"S1", "S2", "S3", "S4"};
constexpr std::array<const char*, 4> kPayees = {"حامل", "شرکت نمونه", "فروشگاه مرکزي", "آقاي رضايي"};

// How often a walk takes each action offered in a state, by the kind it records ("U": undo). A
// kind the state does not offer is never taken; what a state offers comes from the state table.
struct Weight {
    const char* state;
    const char* kind;
    int weight;
};
constexpr Weight kWeights[] = {
    // Received side: most cheques go to collection and are collected; many come back from
    // collection and go again, some are protested, fall short or are returned to the customer,
    // and about one action in five is undone and taken again.
    {"71", "72", 92}, {"71", "78", 6},  {"71", "", 2},
    {"72", "73", 40}, {"72", "77", 22}, {"72", "79", 8},  {"72", "76", 6}, {"72", "U", 24},
    {"76", "73", 45}, {"76", "79", 15}, {"76", "77", 15}, {"76", "U", 25},
    {"77", "72", 75}, {"77", "78", 10}, {"77", "U", 15},
    {"79", "72", 50}, {"79", "78", 30}, {"79", "U", 20},
    {"88", "72", 70}, {"88", "78", 10}, {"88", "U", 20},
    {"73", "U", 36},  {"73", "", 64},   {"78", "U", 28},  {"78", "", 72},
    // Issued side: our leaves are cashed mostly; a cheque passed on sometimes comes back.
    {"81", "82", 55}, {"81", "85", 15}, {"81", "86", 15}, {"81", "87", 7}, {"81", "", 8},
    {"81S", "88", 25}, {"81S", "", 75},  // "81S": a received cheque passed on
    {"85", "82", 50}, {"85", "87", 25}, {"85", "U", 25},
    {"86", "82", 50}, {"86", "85", 20}, {"86", "87", 10}, {"86", "U", 20},
    {"82", "U", 36},  {"82", "", 64},   {"87", "U", 28},  {"87", "", 72},
};

int weightOf(const QString& state, const QString& kind) {
    for (const Weight& w : kWeights)
        if (state == QLatin1String(w.state) && kind == QLatin1String(w.kind)) return w.weight;
    return 0;
}

struct Step {
    QString state;
    int day = 0;
    Account standing;      // where the cheque's amount stands in this state
    qint64 bankAccount = 0;  // the bank account a collection went to
};

struct Cheque {
    QString number, series;
    double value = 0;
    int due = 0;
    bool received = true, guarantee = false, spent = false;
    qint64 account = 0;  // our leaf's bank account
    int party = 0;       // the customer it came from, or the supplier it paid
    QString bank, branch;
    std::vector<Step> history;
    int version = 0;  // a plan made for an earlier version is stale
    const Step& now() const { return history.back(); }
};

// What a cheque does next and when.
struct Plan {
    int cheque = 0;
    int version = 0;
    bool spend = false;  // passed on in a payment instead of an action
    QString name, kind;  // the action's name; kind empty for undo
};

class ChequeWriter {
  public:
    ChequeWriter(tr::db::Connection& c, const ChequeOptions& options)
        : c_(c), options_(options), random_(options.seed) {
        receiptPrefix_ = QStringLiteral("GEN71_%1").arg(options.seed);
        paymentPrefix_ = QStringLiteral("GEN81_%1").arg(options.seed);
        receivedList_ = QStringLiteral("##TTGEN_%1").arg(options.seed);
        issuedList_ = QStringLiteral("##TTPayGEN_%1").arg(options.seed);
        receivedSplit_ = QStringLiteral("##TTTGEN_%1").arg(options.seed);
        issuedSplit_ = QStringLiteral("##TTPayTGEN_%1").arg(options.seed);
        using namespace tr::instruments;
        tables_ = {{QStringLiteral("##") + receiptPrefix_ + QStringLiteral("_Chq"), chequeWorkTableColumns()},
                   {QStringLiteral("##") + receiptPrefix_ + QStringLiteral("_Taraf"), counterpartyWorkTableColumns()},
                   {QStringLiteral("##") + paymentPrefix_ + QStringLiteral("Bed"), paymentChequeWorkTableColumns()},
                   {QStringLiteral("##") + paymentPrefix_ + QStringLiteral("_Taraf"), counterpartyWorkTableColumns()},
                   {receivedList_, chequeActionWorkTableColumns()},
                   {issuedList_, issuedChequeActionWorkTableColumns()},
                   {receivedSplit_, returnSplitWorkTableColumns()},
                   {issuedSplit_, returnSplitWorkTableColumns()}};
        for (const auto& [table, columns] : tables_) {
            drop(table);
            c_.execute(QStringLiteral("Create Table ") + table + QStringLiteral(" (") + columns + QStringLiteral(")"));
        }
        readAccounts();
        receiptSerial_ = scalar("Select IsNull(Max(Serial), 0) From N_NaghdTrans Where WhatDoc = '71'");
        paymentSerial_ = scalar("Select IsNull(Max(Serial), 0) From N_NaghdTrans Where WhatDoc = '81'");
        // Numbers continue past the book's cheques, one counter for every series.
        nextNumber_ = 100000 + chequeCount(c_);
    }
    ~ChequeWriter() {
        for (const auto& [table, columns] : tables_) {
            try {
                drop(table);
            } catch (...) {
            }
        }
    }

    ChequeReport run() {
        QElapsedTimer clock;
        clock.start();
        const qint64 total = options_.cheques;
        const qint64 receivedTotal = qint64(total * options_.receivedShare + 0.5);
        for (int day = 0; day < kDays; ++day) {
            // The day's share of each kind of cheque: the year's documents spread evenly.
            const qint64 received = receivedTotal * (day + 1) / kDays - receivedTotal * day / kDays;
            const qint64 own = (total - receivedTotal) * (day + 1) / kDays - (total - receivedTotal) * day / kDays;
            writeReceipts(day, received);
            writePayments(day, own);
            applyActions(day);
            // Statistics follow the book as it grows; a check that finds nothing stale costs little.
            c_.execute(QStringLiteral("Exec sp_updatestats"));
            if (options_.progress) options_.progress(day + 1, kDays, report_.cheques(), report_.actions);
        }
        report_.seconds = clock.nsecsElapsed() / 1e9;
        report_.final.reserve(cheques_.size());
        for (const Cheque& ch : cheques_) {
            const Step& now = ch.now();
            report_.final.push_back(
                {ch.number, ch.series, now.state, ch.received, ch.value, now.standing[0], now.standing[1], now.standing[2]});
        }
        return report_;
    }

  private:
    void drop(const QString& table) {
        c_.execute(QStringLiteral("If Exists (Select * From Tempdb..SysObjects Where [Name] Like ") + c_.text(table) +
                   QStringLiteral(") Exec('Drop Table ") + table + QStringLiteral("')"));
    }
    qint64 scalar(const char* sql) {
        return c_.execute(QString::fromUtf8(sql)).resultSets.front().rows.front().front().toLongLong();
    }
    Account accountOf(const QString& sql) {
        const auto r = c_.execute(sql);
        Account a;
        if (r.resultSets.empty() || r.resultSets.front().rows.empty()) return a;
        for (int k = 0; k < 5; ++k) a[k] = r.resultSets.front().rows.front()[k].toString().trimmed();
        return a;
    }
    // The book's accounts the actions move cheques between, read once.
    void readAccounts() {
        const QString levels = QStringLiteral("Koll, Moein, Tafsily, Tafsily2, ProjectCod");
        for (const char* kind : {"71", "79", "85"})
            held_[QString::fromLatin1(kind)] = accountOf(QStringLiteral("Select ") + levels +
                                                         QStringLiteral(" From N_AsnadDaryaftani Where WhatDoc = ") +
                                                         c_.text(QString::fromLatin1(kind)));
        for (qint64 id = 1; id <= 3; ++id) {
            const QString where = QStringLiteral(" From N_BankHesab Where AcountID = ") + tr::db::sqlNumber(id);
            for (const char* set : {"H", "J", "A"}) {
                const QString p = QString::fromLatin1(set);
                bankSets_[{id, p}] = accountOf(QStringLiteral("Select %1Koll, %1Moein, %1Tafsily, %1Tafsily2, %1ProjectCod")
                                                   .arg(p) +
                                               where);
            }
            ownBank_[id] = c_.execute(QStringLiteral("Select BankCod") + where)
                               .resultSets.front()
                               .rows.front()[0]
                               .toString()
                               .trimmed();
            // Our leaves come from one large cheque book per account, registered once.
            ownSeries_[id] = QStringLiteral("G%1").arg(id);
            const auto book = c_.execute(QStringLiteral("Select Count(*) From N_Cheque Where Joz = ") +
                                         c_.text(ownSeries_[id]));
            if (book.resultSets.front().rows.front().front().toLongLong() == 0) {
                c_.execute(QStringLiteral("Insert Into N_Cheque (AcountID, Joz, FirstNum, LastNum, FormCode) Values (") +
                           tr::db::sqlNumber(id) + QStringLiteral(", ") + c_.text(ownSeries_[id]) +
                           QStringLiteral(", '100000', '999999', '1')"));
            }
        }
    }

    int uniform(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
    bool chance(double share) { return std::uniform_real_distribution<double>()(random_) < share; }
    QString date(int day) const { return dateOfYearDay(day); }
    QString newNumber() { return QString::number(nextNumber_++); }

    // ---- documents ------------------------------------------------------------------------

    void writeReceipts(int day, qint64 count) {
        std::optional<tr::db::Transaction> transaction;
        int documents = 0;
        while (count > 0) {
            const int size = int(std::min<qint64>(count, uniform(options_.minPerDocument, options_.maxPerDocument)));
            count -= size;
            if (!transaction) transaction.emplace(c_);
            writeReceipt(day, size);
            if (++documents % options_.documentsPerTransaction == 0) {
                transaction->commit();
                transaction.reset();
            }
        }
        if (transaction) transaction->commit();
    }

    // One received-cheque document: its cheques and the customer line of each in the work
    // tables, as the document screen leaves them, and the kind's procedure.
    void writeReceipt(int day, int size) {
        const QString chq = QStringLiteral("##") + receiptPrefix_ + QStringLiteral("_Chq");
        const QString taraf = QStringLiteral("##") + receiptPrefix_ + QStringLiteral("_Taraf");
        QStringList chequeRows, partyRows;
        const int party = uniform(0, int(customers().size()) - 1);
        const Account& customer = customers()[party];
        const Account& inHand = held_[QStringLiteral("71")];
        for (int i = 0; i < size; ++i) {
            Cheque ch;
            ch.number = newNumber();
            ch.series = QString::fromLatin1(kReceivedSeries[uniform(0, 3)]);
            ch.value = uniform(10, 20000) * 10000.0;
            ch.due = std::min(kDays - 1, day + uniform(5, 60));
            ch.guarantee = chance(options_.guaranteeShare);
            ch.party = party;
            const auto& branch = kBranches[uniform(0, 3)];
            ch.bank = QString::fromLatin1(branch[0]);
            ch.branch = QString::fromLatin1(branch[1]);
            ch.history.push_back({QStringLiteral("71"), day, inHand, 0});
            const QString payee = QString::fromUtf8(kPayees[uniform(0, 3)]);
            chequeRows << QStringLiteral("(") + tr::db::sqlNumber(i) + QStringLiteral(", ") + c_.text(inHand[0]) +
                              QStringLiteral(", ") + c_.text(inHand[1]) + QStringLiteral(", ") + c_.text(ch.series) +
                              QStringLiteral(", ") + c_.text(ch.number) + QStringLiteral(", ") +
                              tr::db::sqlNumber(ch.value) + QStringLiteral(", ") + c_.text(date(ch.due)) +
                              QStringLiteral(", ") + c_.text(ch.guarantee ? QStringLiteral("ض") : QString()) +
                              QStringLiteral(", ") + c_.text(ch.bank) + QStringLiteral(", ") + c_.text(ch.branch) +
                              QStringLiteral(", ") + c_.text(QString::number(uniform(1000000, 9999999))) +
                              QStringLiteral(", ") + c_.text(payee) + QStringLiteral(", ") +
                              c_.text(QStringLiteral("بابت فروش کالا")) + QStringLiteral(")");
            partyRows << QStringLiteral("(") + tr::db::sqlNumber(i) + QStringLiteral(", '01', ") + c_.text(customer[0]) +
                             QStringLiteral(", ") + c_.text(customer[1]) + QStringLiteral(", ") + c_.text(customer[2]) +
                             QStringLiteral(", ") + c_.text(ch.series) + QStringLiteral(", ") + c_.text(ch.number) +
                             QStringLiteral(", ") + tr::db::sqlNumber(ch.value) + QStringLiteral(", ") +
                             c_.text(QStringLiteral("دريافت چک از مشتري")) + QStringLiteral(")");
            const int id = int(cheques_.size());
            cheques_.push_back(std::move(ch));
            ++report_.received;
            Cheque& added = cheques_.back();
            if (!added.guarantee && chance(options_.spentShare)) {
                planSpend(id, day + uniform(1, 30));
            } else {
                planNext(id, day);
            }
        }
        save(chq, QStringLiteral("Raj, Koll, Moein, Joz, ChqNo, ChqValue, SarResidDate, Tazmin, BankCod, ShobehCod, "
                                 "AcountCod, ChqGetter, Des"),
             chequeRows, taraf, partyRows);
        call(QStringLiteral("sp_N_Asnad_Trans_ChqGet"), receiptPrefix_, ++receiptSerial_, day);
        ++report_.receipts;
    }

    // A document's two work tables filled anew, as its screen leaves them for the save.
    void save(const QString& chequeTable, const QString& chequeColumns, const QStringList& chequeRows,
              const QString& partyTable, const QStringList& partyRows) {
        c_.execute(QStringLiteral("Delete From ") + chequeTable);
        c_.execute(QStringLiteral("Delete From ") + partyTable);
        c_.execute(QStringLiteral("Insert Into ") + chequeTable + QStringLiteral(" (") + chequeColumns +
                   QStringLiteral(") Values ") + chequeRows.join(QStringLiteral(", ")));
        c_.execute(QStringLiteral("Insert Into ") + partyTable +
                   QStringLiteral(" (Raj, WhatDoc2, Koll, Moein, Tafsily, Joz, ChqNo, ChqValue, Des) Values ") +
                   partyRows.join(QStringLiteral(", ")));
    }

    void call(const QString& procedure, const QString& prefix, qint64 serial, int day) {
        c_.execute(QStringLiteral("Exec ") + procedure + QStringLiteral(" 'TRANS->DB', ") + c_.text(prefix) +
                   QStringLiteral(", ") + c_.text(QString::number(serial)) + QStringLiteral(", ") + c_.text(date(day)) +
                   QStringLiteral(", ") + c_.text(QString::fromLatin1(kUser)) + QStringLiteral(", 'NEW'"));
    }

    void writePayments(int day, qint64 own) {
        // The cheques passed on today, those still where they were when the plan was made.
        std::vector<int> spending;
        for (const Plan& p : spendPlans_[day])
            if (cheques_[p.cheque].version == p.version) spending.push_back(p.cheque);
        spendPlans_[day].clear();
        std::optional<tr::db::Transaction> transaction;
        int documents = 0;
        size_t spentTaken = 0;
        while (own > 0 || spentTaken < spending.size()) {
            const int size = uniform(options_.minPerDocument, options_.maxPerDocument);
            // About as many cheques passed on in a payment as the day has beside its own leaves.
            const double spentPart = double(spending.size() - spentTaken) /
                                     double(std::max<qint64>(1, own + qint64(spending.size() - spentTaken)));
            std::vector<int> spent;
            int leaves = 0;
            for (int i = 0; i < size; ++i) {
                if (spentTaken < spending.size() && (own == 0 || chance(spentPart)))
                    spent.push_back(spending[spentTaken++]);
                else if (own > 0) {
                    ++leaves;
                    --own;
                }
            }
            if (spent.empty() && leaves == 0) break;
            if (!transaction) transaction.emplace(c_);
            writePayment(day, leaves, spent);
            if (++documents % options_.documentsPerTransaction == 0) {
                transaction->commit();
                transaction.reset();
            }
        }
        if (transaction) transaction->commit();
    }

    // One cheque payment to a supplier: `leaves` new leaves of one of our bank accounts and the
    // received cheques `spent` passed on.
    void writePayment(int day, int leaves, const std::vector<int>& spent) {
        const QString bed = QStringLiteral("##") + paymentPrefix_ + QStringLiteral("Bed");
        const QString taraf = QStringLiteral("##") + paymentPrefix_ + QStringLiteral("_Taraf");
        const int party = uniform(0, int(suppliers().size()) - 1);
        const Account& supplier = suppliers()[party];
        const qint64 account = uniform(1, 3);
        QStringList chequeRows, partyRows;
        int raj = 0;
        const auto rows = [&](const Cheque& ch, bool ownLeaf) {
            chequeRows << QStringLiteral("(") + tr::db::sqlNumber(raj) + QStringLiteral(", ") +
                              c_.text(ownLeaf ? QStringLiteral("صدور چك") : QStringLiteral("خرج چك")) +
                              QStringLiteral(", ") + tr::db::sqlNumber(ownLeaf ? ch.account : 0) + QStringLiteral(", ") +
                              c_.text(ch.series) + QStringLiteral(", ") + c_.text(ch.number) + QStringLiteral(", ") +
                              tr::db::sqlNumber(ch.value) + QStringLiteral(", ") + c_.text(date(ch.due)) +
                              QStringLiteral(", ") + c_.text(ch.guarantee ? QStringLiteral("ض") : QString()) +
                              QStringLiteral(", ") + c_.text(QStringLiteral("شرکت تامين")) + QStringLiteral(", ") +
                              c_.text(QStringLiteral("خريد کالا")) + QStringLiteral(")");
            partyRows << QStringLiteral("(") + tr::db::sqlNumber(raj) + QStringLiteral(", '01', ") + c_.text(supplier[0]) +
                             QStringLiteral(", ") + c_.text(supplier[1]) + QStringLiteral(", ") + c_.text(supplier[2]) +
                             QStringLiteral(", ") + c_.text(ch.series) + QStringLiteral(", ") + c_.text(ch.number) +
                             QStringLiteral(", ") + tr::db::sqlNumber(ch.value) + QStringLiteral(", ") +
                             c_.text(QStringLiteral("بابت خريد کالا")) + QStringLiteral(")");
            ++raj;
        };
        for (int i = 0; i < leaves; ++i) {
            Cheque ch;
            ch.received = false;
            ch.account = account;
            ch.number = newNumber();
            ch.series = ownSeries_[account];
            ch.value = uniform(10, 20000) * 10000.0;
            ch.due = std::min(kDays - 1, day + uniform(0, 45));
            ch.guarantee = chance(options_.guaranteeShare);
            ch.party = party;
            ch.bank = ownBank_[account];
            ch.history.push_back({QStringLiteral("81"), day, bankSets_[{account, QStringLiteral("A")}], 0});
            rows(ch, true);
            const int id = int(cheques_.size());
            cheques_.push_back(std::move(ch));
            ++report_.own;
            planNext(id, day);
        }
        for (int id : spent) {
            Cheque& ch = cheques_[id];
            ch.spent = true;
            ch.party = party;
            ch.history.push_back({QStringLiteral("81"), day, supplier, 0});
            ++ch.version;
            rows(ch, false);
            ++report_.spent;
            planNext(id, day);
        }
        save(bed, QStringLiteral("Raj, ChqStateNam, AcountID, Joz, ChqNo, ChqValue, SarResidDate, Tazmin, ChqGetter, Des"),
             chequeRows, taraf, partyRows);
        call(QStringLiteral("sp_N_Asnad_Trans_ChqPay"), paymentPrefix_, ++paymentSerial_, day);
        ++report_.payments;
    }

    // ---- the walks ------------------------------------------------------------------------

    // The side the cheque's actions are taken on now, and the facts the state table reads.
    InstrumentFacts factsOf(const Cheque& ch) const {
        InstrumentFacts f;
        f.own = !ch.received;
        f.paidOut = ch.spent;
        f.guarantee = ch.guarantee;
        f.side = !ch.received || (ch.spent && ch.now().state == QLatin1String("81")) ? Side::Issued : Side::Received;
        return f;
    }

    void planSpend(int id, int day) {
        if (day >= kDays) return;
        spendPlans_[day].push_back({id, cheques_[id].version, true, {}, {}});
    }

    // The cheque's next action, drawn from what its state offers by the walk's weights, a few
    // days after its latest action (a collection or a withdrawal not before the due date).
    void planNext(int id, int today) {
        Cheque& ch = cheques_[id];
        const InstrumentFacts facts = factsOf(ch);
        // A received cheque passed on has weights of its own while it stands spent.
        const QString state = ch.now().state + (ch.received && ch.now().state == QLatin1String("81")
                                                    ? QStringLiteral("S")
                                                    : QString());
        QStringList names;
        QList<int> weights;
        int sum = weightOf(state, QString());  // taking no further action
        for (const QString& name : chequeActions().menu(ch.now().state, facts)) {
            const QString kind = chequeActions().isUndo(name)
                                     ? QStringLiteral("U")
                                     : chequeActions().kindOf(name, facts.side).value_or(QString());
            // Undo where the state is a document's (a receipt, a payment) is not offered.
            if (kind == QLatin1String("U") && ch.history.size() < 2) continue;
            const int w = weightOf(state, kind);
            if (w <= 0) continue;
            names << name;
            weights << w;
            sum += w;
        }
        if (sum <= 0 || names.isEmpty()) return;
        int roll = uniform(0, sum - 1);
        int pick = -1;
        for (int i = 0; i < names.size(); ++i) {
            if (roll < weights[i]) {
                pick = i;
                break;
            }
            roll -= weights[i];
        }
        if (pick < 0) return;  // stays where it is
        Plan p{id, ch.version, false, names[pick], {}};
        if (!chequeActions().isUndo(p.name)) p.kind = chequeActions().kindOf(p.name, facts.side).value_or(QString());
        int day = today + uniform(1, 8);
        if (p.kind == QLatin1String("73") || p.kind == QLatin1String("82")) day = std::max(day, ch.due);
        if (day >= kDays) return;
        actionPlans_[day].push_back(p);
    }

    // Where an action of `kind` hands the cheque, as the actions screen fills the Va-accounts.
    Account handedTo(const Cheque& ch, const QString& kind, qint64& bankAccount) {
        const Step& now = ch.now();
        bankAccount = now.bankAccount;
        if (kind == QLatin1String("72")) {
            bankAccount = uniform(1, 3);
            return bankSets_[{bankAccount, QStringLiteral("H")}];
        }
        if (kind == QLatin1String("73")) return bankSets_[{now.bankAccount, QStringLiteral("J")}];
        if (kind == QLatin1String("77") || kind == QLatin1String("88")) return held_[QStringLiteral("71")];
        if (kind == QLatin1String("79")) return held_[QStringLiteral("79")];
        if (kind == QLatin1String("85")) return held_[QStringLiteral("85")];
        if (kind == QLatin1String("78")) return customers()[ch.party];
        if (kind == QLatin1String("87")) return suppliers()[ch.party];
        if (kind == QLatin1String("82")) return bankSets_[{ch.account, QStringLiteral("J")}];
        return now.standing;  // 76, 86: no money moves
    }

    struct Row {
        int cheque;
        QString name, kind;
        Account to;
        qint64 bankAccount = 0;
    };

    void applyActions(int day) {
        std::vector<Row> received, issued;
        for (const Plan& p : actionPlans_[day]) {
            Cheque& ch = cheques_[p.cheque];
            if (ch.version != p.version) continue;
            Row r{p.cheque, p.name, p.kind, {}, 0};
            if (!p.kind.isEmpty()) r.to = handedTo(ch, p.kind, r.bankAccount);
            (factsOf(ch).side == Side::Received ? received : issued).push_back(std::move(r));
        }
        actionPlans_[day].clear();
        const int batch = std::max(1, options_.actionsPerBatch);
        for (size_t i = 0; i < received.size(); i += batch)
            applyBatch(day, Side::Received, received, i, std::min(received.size(), i + batch));
        for (size_t i = 0; i < issued.size(); i += batch)
            applyBatch(day, Side::Issued, issued, i, std::min(issued.size(), i + batch));
    }

    // One "تاييد" of the actions screen: the chosen rows in the tab's work table, filled as the
    // screen fills them, one call of the tab's procedure in one transaction.
    void applyBatch(int day, Side side, const std::vector<Row>& rows, size_t from, size_t to) {
        const bool receivedTab = side == Side::Received;
        const QString table = receivedTab ? receivedList_ : issuedList_;
        const QString split = receivedTab ? receivedSplit_ : issuedSplit_;
        const QString standing = receivedTab ? QStringLiteral("V") : QString();
        QStringList values;
        for (size_t i = from; i < to; ++i) {
            const Row& r = rows[i];
            const Cheque& ch = cheques_[r.cheque];
            const Step& now = ch.now();
            QStringList v{tr::db::sqlNumber(qint64(i + 1)),
                          QStringLiteral("'N'"),
                          ch.received ? c_.text(ch.bank) : c_.text(ownBank_[ch.account]),
                          r.kind == QLatin1String("72") ? tr::db::sqlNumber(r.bankAccount)
                          : !ch.received               ? tr::db::sqlNumber(ch.account)
                                                       : QStringLiteral("Null"),
                          !ch.received ? tr::db::sqlNumber(ch.account) : QStringLiteral("Null"),
                          c_.text(ch.series),
                          c_.text(ch.number),
                          tr::db::sqlNumber(ch.value),
                          c_.text(date(ch.due)),
                          c_.text(date(day)),
                          c_.text(date(now.day)),
                          c_.text(r.name),
                          c_.text(now.state),
                          c_.text(ch.guarantee ? QStringLiteral("ض") : QString()),
                          c_.text(QString::number(i + 1).rightJustified(12, QLatin1Char('0'))),
                          c_.text(QStringLiteral("بابت خريد کالا"))};
            for (const QString& level : now.standing) v << c_.text(level);
            for (const QString& level : r.to) v << c_.text(level);
            values << QStringLiteral("(") + v.join(QStringLiteral(", ")) + QStringLiteral(")");
        }
        const QString accounts = [&] {
            QStringList out;
            for (const char* prefix : {"standing", "Va"})
                for (const char* level : {"Koll", "Moein", "Tafsily", "Tafsily2", "ProjectCod"})
                    out << (QLatin1String(prefix) == QLatin1String("Va") ? QStringLiteral("Va") : standing) +
                               QLatin1String(level);
            return out.join(QStringLiteral(", "));
        }();
        tr::db::Transaction transaction(c_);
        c_.execute(QStringLiteral("Delete From ") + table);
        c_.execute(QStringLiteral("Insert Into ") + table +
                   QStringLiteral(" (IDX, IsFirst, BankCod, AcountID, OldAcountID, Joz, ChqNo, ChqValue, SarResidDate, "
                                  "ActionDate, LastActionDate, WhatDocNam, LastWhatDoc, Tazmin, sOrder, Des, ") +
                   accounts + QStringLiteral(") Values ") + values.join(QStringLiteral(", ")));
        c_.execute(QStringLiteral("Exec ") +
                   (receivedTab ? QStringLiteral("sp_N_Asnad_ChqGetAction_Apply ")
                                : QStringLiteral("sp_N_Asnad_ChqPayAction_Apply ")) +
                   c_.text(table) + QStringLiteral(", ") + c_.text(QString::fromLatin1(kUser)) + QStringLiteral(", ") +
                   c_.text(date(0)) + QStringLiteral(", ") + c_.text(date(kDays - 1)) + QStringLiteral(", ") +
                   c_.text(split));
        transaction.commit();
        ++report_.batches;
        // The book has the actions: the walks move on.
        for (size_t i = from; i < to; ++i) {
            const Row& r = rows[i];
            Cheque& ch = cheques_[r.cheque];
            ++ch.version;
            ++report_.actions;
            if (r.kind.isEmpty()) {
                ch.history.pop_back();
                ++report_.undone;
                ++report_.perKind[QStringLiteral("U")];
            } else {
                ch.history.push_back({r.kind, day, r.to, r.bankAccount});
                ++report_.perKind[r.kind];
            }
            // Back in hand, a cheque may be passed on again instead of collected.
            const QString& state = ch.now().state;
            if (ch.received && !ch.guarantee && !r.kind.isEmpty() &&
                (state == QLatin1String("77") || state == QLatin1String("88")) && chance(options_.spentShare))
                planSpend(r.cheque, day + uniform(1, 20));
            else
                planNext(r.cheque, day);
        }
    }

    tr::db::Connection& c_;
    const ChequeOptions& options_;
    std::mt19937 random_;
    std::vector<std::pair<QString, QString>> tables_;
    QString receiptPrefix_, paymentPrefix_, receivedList_, issuedList_, receivedSplit_, issuedSplit_;
    std::map<QString, Account> held_;
    std::map<std::pair<qint64, QString>, Account> bankSets_;
    std::map<qint64, QString> ownBank_, ownSeries_;
    qint64 receiptSerial_ = 0, paymentSerial_ = 0, nextNumber_ = 100000;
    std::vector<Cheque> cheques_;
    std::vector<std::vector<Plan>> spendPlans_{std::vector<std::vector<Plan>>(kDays)};
    std::vector<std::vector<Plan>> actionPlans_{std::vector<std::vector<Plan>>(kDays)};
    ChequeReport report_;
};

}  // namespace

ChequeReport generateCheques(tr::db::Connection& company, const ChequeOptions& options) {
    if (options.cheques <= 0) return {};
    ChequeWriter writer(company, options);
    return writer.run();
}

qint64 chequeCount(tr::db::Connection& company) {
    const auto r = company.execute(
        QStringLiteral("Select Count(*) From N_ChqLastTrans As L Where L.WhatDoc In ('71', '81') And L.IDX = (Select "
                       "Min(M.IDX) From N_ChqLastTrans As M Where M.ChqNo = L.ChqNo And IsNull(M.Joz, '') = "
                       "IsNull(L.Joz, ''))"));
    return r.resultSets.front().rows.front().front().toLongLong();
}

}  // namespace tr::bench
