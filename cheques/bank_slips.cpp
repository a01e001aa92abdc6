#include "cheques/bank_slips.h"

#include <QHash>

#include "cheques/cheques_to_bank.h"
#include "common/db/query_helpers.h"
#include "common/db/scoped_temp_table.h"
#include "common/db/sql_literal.h"
#include "common/dialog/message_dialog.h"
#include "common/persian/amount_words.h"
#include "common/persian/persian_date.h"
#include "printing/print_names.h"

namespace tr::cheques {

namespace {

using tr::db::firstColumn;
using tr::db::openQuery;
using tr::db::sqlNumber;

const QString kPrintColumns = QStringLiteral(
    "SarResid Varchar(10), ChqNo NVarchar(50), ShomareHesab NVarchar(20), ShobehNam NVarchar(500), "
    "BankName NVarchar(20), Amount Float, ShobehCod Varchar(20), BankCod Varchar(20), HesabVago NVarchar(100), "
    "Idx NVarchar(20), MyGroup NVarchar(30)");

QString text(const tr::db::Query& q, int row, const char* field) {
    return q.value(row, q.fieldIndex(QString::fromLatin1(field))).toString().trimmed();
}

}  // namespace

const QString BankSlips::kNothingTicked = QStringLiteral("هيچ چكي براي ارسال به بانك ، موجود نمي باشد!");

BankSlips::BankSlips(const tr::Services& services)
    : services_(services),
      print_(QStringLiteral("##") + services.global->sessionText + QStringLiteral("ChqBankPrn")),
      summary_(QStringLiteral("##") + services.global->sessionText + QStringLiteral("ChqBankSum")) {}

BankSlips::~BankSlips() {
    tr::db::dropTempTableQuietly(*services_.database, print_);
    tr::db::dropTempTableQuietly(*services_.database, summary_);
}

QString BankSlips::groupKey(const QString& account, int number, bool byAccount) {
    const QString n = QStringLiteral("%1").arg(number, 4, 10, QLatin1Char('0'));
    return byAccount ? account.left(25) + QLatin1Char('_') + n : n;
}

bool BankSlips::build(ChequesToBank& list, const SlipOptions& options) {
    tr::db::Connection& c = connection();
    rowsPerPage_ = qBound(0, options.rowsPerPage, 30);
    const QString ticked = QStringLiteral(" Where sSelect = ") + c.text(ChequesToBank::kTicked);
    // 1. The ticked rows, by the account they went to and their due dates.
    const tr::db::Query rows = openQuery(
        c, QStringLiteral("Select SarResidDate, Joz, ChqNo, AcountCod, ShobehNam, BankName, ChqValue, ShobehCod, "
                          "BankCod, HesabVago From ") +
               list.workTable() + ticked + QStringLiteral(" Order By HesabVago, SarResidDate, ChqNo"));
    if (rows.IsEmpty()) {
        tr::dialog::Messages(services_.dialog).show(kNothingTicked, QStringLiteral("1WR"));
        return false;
    }
    if (!tr::db::objectExistsInTempdb(c, print_))
        c.execute(QStringLiteral("Create Table ") + print_ + QStringLiteral(" (") + kPrintColumns + QStringLiteral(")"));
    c.execute(QStringLiteral("Delete From ") + print_ + QStringLiteral(" Where IsNull(ChqNo, '') <> ''"));

    // 2. Each account's rows (all rows when not split) cut into slips of rowsPerPage_.
    QString lastAccount;
    int inAccount = 0;
    for (int i = 0; i < rows.RecordCount(); ++i) {
        const QString account = text(rows, i, "HesabVago");
        if (i == 0 || (options.byAccount && account != lastAccount)) inAccount = 0;
        lastAccount = account;
        const int group = rowsPerPage_ > 0 ? inAccount / rowsPerPage_ + 1 : 1;
        ++inAccount;
        const QString series = text(rows, i, "Joz"), number = text(rows, i, "ChqNo");
        c.execute(QStringLiteral("Insert Into ") + print_ +
                  QStringLiteral(" (SarResid, ChqNo, ShomareHesab, ShobehNam, BankName, Amount, ShobehCod, BankCod, "
                                 "HesabVago, Idx, MyGroup) Values (") +
                  QStringList{c.text(text(rows, i, "SarResidDate")),
                              c.text(series.isEmpty() ? number : series + QLatin1Char('_') + number),
                              c.text(text(rows, i, "AcountCod")), c.text(text(rows, i, "ShobehNam")),
                              c.text(text(rows, i, "BankName")), sqlNumber(rows.value(i, 6).toDouble()),
                              c.text(text(rows, i, "ShobehCod")), c.text(text(rows, i, "BankCod")), c.text(account),
                              c.text(account.left(20)), c.text(groupKey(account, group, options.byAccount))}
                      .join(QStringLiteral(", ")) +
                  QStringLiteral(")"));
    }

    // 3. The earlier print's empty lines out; each account's last slip filled up to full size.
    c.execute(QStringLiteral("Delete From ") + print_ + QStringLiteral(" Where IsNull(ChqNo, '') = ''"));
    if (rowsPerPage_ > 0) {
        const tr::db::Query last = openQuery(
            c, QStringLiteral("Select MyGroup, Count(*), Max(HesabVago) From ") + print_ +
                   QStringLiteral(" Group By MyGroup Order By MyGroup"));
        QHash<QString, QPair<QString, int>> lastOfAccount;  // the account's (or the set's) last slip
        QStringList order;
        for (int i = 0; i < last.RecordCount(); ++i) {
            const QString key = options.byAccount ? last.value(i, 2).toString().trimmed() : QString();
            if (!lastOfAccount.contains(key)) order << key;
            lastOfAccount[key] = {last.value(i, 0).toString().trimmed(), last.value(i, 1).toInt()};
        }
        for (const QString& key : order) {
            const auto& [group, filled] = lastOfAccount[key];
            const QString account = firstColumn(c, QStringLiteral("Select Max(HesabVago) From ") + print_ +
                                                       QStringLiteral(" Where MyGroup = ") + c.text(group))
                                        .toString()
                                        .trimmed();
            for (int n = filled; n < rowsPerPage_; ++n) {
                c.execute(QStringLiteral("Insert Into ") + print_ +
                          QStringLiteral(" (SarResid, ChqNo, ShomareHesab, ShobehNam, BankName, Amount, ShobehCod, "
                                         "BankCod, HesabVago, Idx, MyGroup) Values ('', '', '', '', '', 0, '', '', ") +
                          c.text(account) + QStringLiteral(", ") + c.text((account + QStringLiteral("_1")).left(20)) +
                          QStringLiteral(", ") + c.text(group) + QStringLiteral(")"));
            }
        }
    }

    // The summary: the company, today, the voucher and how many ticked cheques share the account
    // and the branch.
    if (tr::db::objectExistsInTempdb(c, summary_)) c.execute(QStringLiteral("Drop Table ") + summary_);
    c.execute(QStringLiteral("Create Table ") + summary_ +
              QStringLiteral(" (HesabVago NVarchar(100), ShobehNam NVarchar(500), Joz Varchar(20), ChqNo Varchar(20), "
                             "CompanyCod Varchar(20), CompanyNam NVarchar(200), sDate Varchar(10), SanadNo Varchar(20), "
                             "countRaj Int)"));
    c.execute(QStringLiteral("Insert Into ") + summary_ +
              QStringLiteral(" (HesabVago, ShobehNam, Joz, ChqNo, CompanyCod, CompanyNam, sDate, SanadNo, countRaj) "
                             "Select W.HesabVago, W.ShobehNam, W.Joz, W.ChqNo, ") +
              c.text(services_.global->sCode.trimmed()) + QStringLiteral(", ") +
              c.text(tr::printing::companyName(services_)) + QStringLiteral(", ") + c.text(tr::persian::today()) +
              QStringLiteral(", Case When IsNull(W.SanadNo, '') = '' Then '-' Else W.SanadNo End, (Select Count(*) "
                             "From ") +
              list.workTable() +
              QStringLiteral(" As W2 Where W2.sSelect = W.sSelect And IsNull(W2.HesabVago, '') + '_' + "
                             "IsNull(W2.ShobehNam, '') = IsNull(W.HesabVago, '') + '_' + IsNull(W.ShobehNam, '')) "
                             "From ") +
              list.workTable() + QStringLiteral(" As W Where W.sSelect = ") + c.text(ChequesToBank::kTicked));
    return true;
}

SlipSet BankSlips::slips() const {
    tr::db::Connection& c = connection();
    SlipSet set;
    set.company = tr::printing::companyName(services_);
    set.date = tr::persian::today();
    if (!tr::db::objectExistsInTempdb(c, print_)) return set;
    // 4. Per slip the count and the sum.
    const tr::db::Query totals = openQuery(
        c, QStringLiteral("Select MyGroup, Sum(Case When IsNull(ChqNo, '') = '' Then 0 Else 1 End), Sum(Amount) "
                          "From ") +
               print_ + QStringLiteral(" Group By MyGroup Order By MyGroup"));
    const tr::db::Query lines = openQuery(
        c, QStringLiteral("Select P.*, Case When IsNull(P.ChqNo, '') = '' Then 1 Else 0 End As Filler From ") + print_ +
               QStringLiteral(" As P Order By P.MyGroup, Filler, P.HesabVago, P.SarResid, P.ChqNo"));
    int at = 0;
    for (int g = 0; g < totals.RecordCount(); ++g) {
        Slip slip;
        slip.group = totals.value(g, 0).toString().trimmed();
        slip.count = totals.value(g, 1).toInt();
        slip.sum = totals.value(g, 2).toDouble();
        slip.sumInWords = tr::persian::amountInWords(slip.sum);
        for (; at < lines.RecordCount() && text(lines, at, "MyGroup") == slip.group; ++at) {
            SlipLine l;
            l.due = text(lines, at, "SarResid");
            l.number = text(lines, at, "ChqNo");
            l.drawerAccount = text(lines, at, "ShomareHesab");
            l.branchName = text(lines, at, "ShobehNam");
            l.bankName = text(lines, at, "BankName");
            l.branchCod = text(lines, at, "ShobehCod");
            l.bankCod = text(lines, at, "BankCod");
            l.amount = lines.value(at, lines.fieldIndex(QStringLiteral("Amount"))).toDouble();
            l.filler = l.number.isEmpty();
            if (slip.account.isEmpty()) slip.account = text(lines, at, "HesabVago");
            slip.lines << l;
        }
        slip.bankName = firstColumn(c, QStringLiteral("Select Max(B.BankNam) From N_BankHesab As H Inner Join N_Bank As "
                                                      "B On (B.BankCod = H.BankCod) Where LTrim(RTrim(H.AcountCod)) = ") +
                                           c.text(slip.account))
                            .toString()
                            .trimmed();
        set.slips << slip;
    }
    return set;
}

}  // namespace tr::cheques
