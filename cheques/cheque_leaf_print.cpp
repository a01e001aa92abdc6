#include "cheques/cheque_leaf_print.h"

#include "instruments/cheque_issue_rule.h"

#include <optional>

#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "common/db/sql_literal.h"
#include "common/persian/amount_words.h"
#include "vouchers/treasury_log.h"

namespace tr::cheques {

namespace {

using tr::db::Connection;
using tr::db::sqlNumber;

QString bookFormCode(Connection& c, qint64 accountId, const QString& number,
                     const QString& series) {
    // The book is found as the issue rule finds it.
    for (const tr::instruments::ChequeBook& book : tr::instruments::booksHoldingLeaf(c, number, series))
        if (book.accountId == accountId) return book.formCode;
    return {};
}

double offset(Connection& c, const QString& key) {
    bool ok = false;
    const double value = tr::vouchers::treasuryOption(c, key).toDouble(&ok);
    return ok ? value : 0;
}

}  // namespace

std::vector<ChequeLeaf> chequeLeaves(Connection& c, const ChequeDocumentPrint& payment) {
    std::vector<ChequeLeaf> leaves;
    for (const ChequePrintCheque& cheque : payment.cheques) {
        if (!cheque.ownLeaf()) continue;
        ChequeLeaf leaf;
        leaf.raj = cheque.raj;
        leaf.number = cheque.number;
        leaf.series = cheque.series;
        leaf.dueDate = cheque.dueDate;
        leaf.amount = cheque.amount;
        leaf.amountInWords = tr::persian::amountInWords(cheque.amount);
        leaf.payee = cheque.payee;
        leaf.payableToOrder = cheque.payableToOrder;
        leaf.bankAccountId = cheque.bankAccountId;
        leaf.formCode = bookFormCode(c, cheque.bankAccountId, cheque.number, cheque.series);
        leaves.push_back(leaf);
    }
    return leaves;
}

ChequeLeafOffsets storedLeafOffsets(Connection& c) {
    return {offset(c, QStringLiteral("CHQ_LEAF_DX")), offset(c, QStringLiteral("CHQ_LEAF_DY"))};
}

tr::printing::PrintTables createChequeLeafPrintTables(const tr::Services& services,
                                                      const ChequeDocumentPrint& payment,
                                                      const std::vector<ChequeLeaf>& leaves) {
    Connection& c = services.connection();
    const tr::printing::PrintTables t = createChequeHeaderPrintTables(
        services, payment,
        QStringLiteral("SerialNo Varchar(10), Raj Int, ChqNo Varchar(20), Joz Varchar(10), "
                       "SarResidDate Varchar(10), ChqValue Float, AmountWords NVarchar(400), "
                       "ChqGetter NVarchar(200), Havaleh Int, AcountID Int, FormCode Varchar(10)"));
    for (const ChequeLeaf& leaf : leaves) {
        tr::printing::insertPrintRow(
            services, t.lines,
            {c.text(payment.serial), sqlNumber(leaf.raj), c.text(leaf.number), c.text(leaf.series),
             c.text(leaf.dueDate), sqlNumber(leaf.amount), c.text(leaf.amountInWords),
             c.text(leaf.payee), sqlNumber(leaf.payableToOrder ? 1 : 0),
             sqlNumber(leaf.bankAccountId), c.text(leaf.formCode)});
    }
    return t;
}

}  // namespace tr::cheques
