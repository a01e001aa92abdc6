#pragma once
// The deposit slips of the ticked cheques: the print table (one group per slip, the last group
// of each account filled up with empty lines), the summary table, and per slip what the layouts
// print (count, sum, the sum in words, the bank and account it goes to).
#include <QList>
#include <QString>

#include "common/session/services.h"

namespace tr::cheques {

class ChequesToBank;

struct SlipOptions {
    bool byAccount = true;  // "به تفكيك بانك"; false: "بدون تفكيك"
    int rowsPerPage = 5;    // "تعداد رديف در هر صفحه", 0..30; 0: one slip per account, no filler
};

struct SlipLine {
    QString due, number, drawerAccount, branchName, bankName, branchCod, bankCod;
    double amount = 0;
    bool filler = false;
};

struct Slip {
    QString group;        // MyGroup
    QString account;      // HesabVago: our account number (HesabNumber)
    QString bankName;     // BnkName: the bank of that account
    QList<SlipLine> lines;
    int count = 0;        // RCount: the cheques on the slip, fillers not counted
    double sum = 0;
    QString sumInWords;   // ends in "ريال"
};

struct SlipSet {
    QString company;   // Company
    QString date;      // CurrDate
    QList<Slip> slips;
};

class BankSlips {
  public:
    static const QString kNothingTicked;  // "هيچ چكي براي ارسال به بانك ، موجود نمي باشد!"

    explicit BankSlips(const tr::Services& services);
    ~BankSlips();
    BankSlips(const BankSlips&) = delete;
    BankSlips& operator=(const BankSlips&) = delete;

    // Builds both tables from the list's ticked rows; false (and "1WR") when none is ticked.
    bool build(ChequesToBank& list, const SlipOptions& options);
    // What the layouts print, from the print table as build left it.
    SlipSet slips() const;
    const QString& printTable() const { return print_; }
    const QString& summaryTable() const { return summary_; }
    // MyGroup of a slip: the account and the slip's number within it, or the number alone when
    // the accounts share the slips.
    static QString groupKey(const QString& account, int number, bool byAccount);

  private:
    tr::db::Connection& connection() const { return *services_.database->Connection; }

    tr::Services services_;
    QString print_, summary_;
    int rowsPerPage_ = 5;
};

}  // namespace tr::cheques
