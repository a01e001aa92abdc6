#pragma once
// Cheques for the generated book: received-cheque documents (kind 71) and cheque payments (81) of
// several cheques each, written through the documents' procedures from their work tables as the
// document screens fill them, some received cheques passed on in payments; then random walks of
// the cheques over the cheque state table, dated in order over fiscal year 1404 and posted in
// batches through the actions screen's apply procedures, some actions undone. Deterministic for a
// seed and a starting book.
#include <QString>
#include <functional>
#include <map>
#include <vector>

#include "common/db/connection.h"

namespace tr::bench {

struct ChequeOptions {
    qint64 cheques = 0;        // received cheques and our own leaves together
    double receivedShare = 0.62;
    double spentShare = 0.2;   // of the received cheques that are not guarantees: passed on
    double guaranteeShare = 0.05;
    int minPerDocument = 2, maxPerDocument = 8;
    int documentsPerTransaction = 40;
    int actionsPerBatch = 200;  // rows of one apply call, one transaction each
    unsigned seed = 1404;
    // Called now and then with the days of the year done.
    std::function<void(int day, int days, qint64 cheques, qint64 actions)> progress;
};

// Where a generated cheque ended: its state and the account its amount stands on there.
struct GeneratedCheque {
    QString number, series, state;
    bool received = true;  // received (passed on or not), or our own leaf
    double value = 0;
    QString koll, moein, tafsily;
};

struct ChequeReport {
    qint64 received = 0, own = 0, spent = 0;
    qint64 receipts = 0, payments = 0;  // documents
    qint64 actions = 0, undone = 0;     // undone: undo rows among the actions
    qint64 batches = 0;
    std::map<QString, qint64> perKind;  // actions by the kind they recorded ("U" for undo)
    std::vector<GeneratedCheque> final;  // every cheque written, in the order written
    double seconds = 0;
    qint64 cheques() const { return received + own; }
    // Cheques and actions written per second.
    double rate() const { return seconds > 0 ? (cheques() + actions) / seconds : 0; }
};

// Adds `options.cheques` cheques and their actions to the company database behind `company`,
// whose engine must have the procedures registered. Cheque numbers and serials continue past
// those already in the book.
ChequeReport generateCheques(tr::db::Connection& company, const ChequeOptions& options);

// Distinct cheques (number and series) with a state row.
qint64 chequeCount(tr::db::Connection& company);

}  // namespace tr::bench
