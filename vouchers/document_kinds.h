#pragma once
// The six cash and bank document kinds the treasury controller serves ('10', '20', '40', '50',
// '60', '90'): title, stored procedure, treasury side and grid column, form key and the header
// and line messages each kind words in its own way.
#include <QString>
#include <vector>

namespace tr::vouchers {

// Which ledger column carries an amount.
enum class Side { Bed, Bes };
// What the header's treasury-side code names: it decides where its name and currency come from.
enum class TreasuryObject { CashBox, PettyCashHolder, BankAccount };

struct TreasuryDocumentKind {
    QString code;       // WhatDoc
    QString title;      // shown in captions and messages, written to the action log
    QString procedure;  // the kind's document procedure; the currency twin adds "_Arzi"
    bool hasCurrencyTwin = true;
    Side treasurySide = Side::Bed;  // the header's ledger line
    TreasuryObject treasuryObject = TreasuryObject::CashBox;
    QString formKey;  // transfer-table prefix and the key of the user's rights
    QString serialMissingMessage;
    QString numberMissingMessage;
    QString lineDescriptionMissingMessage;

    // Counter lines stand opposite the treasury side so that the voucher balances.
    Side gridSide() const { return treasurySide == Side::Bed ? Side::Bes : Side::Bed; }
    QString currencyProcedure() const { return procedure + QStringLiteral("_Arzi"); }
};

QString sideColumn(Side side);

// Counter-party kinds (WhatDoc2) of a counter line. The document's own kind is reserved for its
// treasury line, the one row the searches and pickers list the document by.
inline const QString kCustomerCounterParty = QStringLiteral("01");
// A plain chart-of-accounts line: no customer, cheque or other object behind it.
inline const QString kAccountCounterParty = QStringLiteral("00");

const std::vector<TreasuryDocumentKind>& treasuryDocumentKinds();
// Null for a code that is not one of the six kinds.
const TreasuryDocumentKind* findTreasuryDocumentKind(const QString& code);

// The cheque documents: '71' received ("دريافت چک", the cheque side debited) and '81' issued
// ("پرداخت چك", credited). They have two work tables and no header amount, so N_Global does not
// serve them; their screens take title, procedure and form key from here. Which rate a currency
// line takes by default is tr::currency::defaultRateSide of the screen (buying for '71').
const std::vector<TreasuryDocumentKind>& chequeDocumentKinds();
const TreasuryDocumentKind& receivedChequeKind();
const TreasuryDocumentKind& issuedChequeKind();

}  // namespace tr::vouchers
