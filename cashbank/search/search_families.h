#pragma once
// The five document searches as data: caption, kinds searched, how the treasury-side account is
// joined and named, the sign rule, the kinds behind each kind box and the extra columns/rows.
#include <QString>
#include <QStringList>

namespace tr::cashbank {

enum class SearchFamily { Cash, PettyCash, Deposit, Withdrawal, Transfer };

struct SearchFamilyRow {
    SearchFamily family;
    QString caption;
    QString gridKey;               // sForm of the saved grid layout
    QString kindList;              // "('10', '11', '20', '21')"
    QString accountColumns;        // the select's first two columns: code, then name
    QString accountJoin;           // the joins that name the treasury-side account
    QString signRule;              // "Sign = Case ... End"
    QString extraWhere;            // fixed restriction of the family ("" for none)
    QStringList receiptKinds;      // behind the "دريافت" box, document lines only
    QStringList paymentKinds;      // behind the "پرداخت " box
    bool remitterColumns = false;  // Des1..Des4 of the transfer
    QString codeCaption;           // the result's first two columns
    QString nameCaption;
    QString rangeNoun;  // "از " / "تا " + this beside the code-range boxes
    // Names the treasury-side account of a code typed in a range box.
    QString nameLookup;  // "Select <name> From ... Where <code> = " + the code
};

const SearchFamilyRow& searchFamily(SearchFamily family);

}  // namespace tr::cashbank
