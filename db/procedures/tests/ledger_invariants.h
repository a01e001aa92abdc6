#pragma once
// Checks that hold after every treasury posting, for any test that posts: vouchers balance, each
// document line has one voucher line, cancellations net to zero, and a deleted document is gone.
#include <gtest/gtest.h>

#include <QList>
#include <QStringList>
#include <cmath>

#include "common/db/connection.h"

namespace tr::procedures::testing {

inline constexpr double kAmountTolerance = 0.005;
inline constexpr const char* kCashBankKindList = "('10', '20', '40', '50', '60', '90')";

inline tr::db::ResultSet selectRows(tr::db::Connection& c, const QString& sql) {
    auto r = c.execute(sql);
    return r.resultSets.empty() ? tr::db::ResultSet{} : r.resultSets.front();
}

// Per voucher number and per voucher of the document (DocToDate '0') or of its cancellation ('1'):
// debits equal credits and every line has exactly one positive side.
inline ::testing::AssertionResult vouchersBalance(tr::db::Connection& c) {
    const auto sums = selectRows(
        c, QStringLiteral("Select SanadNo, DocToDate, Sum(Bed), Sum(Bes) From Asnad Where "
                          "TypeSys = 'N' And WhatDoc In ") +
               QString::fromLatin1(kCashBankKindList) +
               QStringLiteral(" And DocToDate In ('0', '1') Group By SanadNo, DocToDate"));
    for (const auto& row : sums.rows) {
        if (std::fabs(row[2].toDouble() - row[3].toDouble()) > kAmountTolerance) {
            return ::testing::AssertionFailure()
                   << "voucher " << row[0].toLongLong() << " (DocToDate "
                   << row[1].toString().toStdString() << ") debits " << row[2].toDouble()
                   << " credits " << row[3].toDouble();
        }
    }
    const auto oneSided = selectRows(
        c, QStringLiteral("Select REC, Bed, Bes From Asnad Where TypeSys = 'N' And Not ((Bed > 0 "
                          "And Bes = 0) Or (Bes > 0 And Bed = 0))"));
    if (!oneSided.rows.empty()) {
        return ::testing::AssertionFailure()
               << "voucher line REC " << oneSided.rows[0][0].toLongLong() << " has Bed "
               << oneSided.rows[0][1].toDouble() << " and Bes " << oneSided.rows[0][2].toDouble();
    }
    return ::testing::AssertionSuccess();
}

// Each line of a cash or bank document has one line in its voucher, and no voucher line of these
// kinds points at a line that is not there.
inline ::testing::AssertionResult documentsAndVouchersMatch(tr::db::Connection& c) {
    const QString kinds = QString::fromLatin1(kCashBankKindList);
    const auto unmatched = selectRows(
        c, QStringLiteral("Select N.WhatDoc, N.Serial, N.Raj, Count(A.REC) From N_NaghdTrans As N "
                          "Left Join Asnad As A On (A.TypeSys = 'N' And A.WhatDoc = N.WhatDoc And "
                          "A.DocToDate = '0' And A.Document = Cast(N.IDX As Varchar(20))) Where "
                          "N.WhatDoc In ") +
               kinds +
               QStringLiteral(" Group By N.WhatDoc, N.Serial, N.Raj Having Count(A.REC) <> 1"));
    if (!unmatched.rows.empty()) {
        const auto& r = unmatched.rows.front();
        return ::testing::AssertionFailure()
               << "document " << r[0].toString().toStdString() << "/" << r[1].toLongLong()
               << " line " << r[2].toLongLong() << " has " << r[3].toLongLong() << " voucher lines";
    }
    const auto orphans = selectRows(
        // Joined on the document line's key, so that each voucher line finds its line directly.
        c, QStringLiteral("Select A.REC, A.WhatDoc, A.Document From Asnad As A Left Join "
                          "N_NaghdTrans As N On (N.IDX = Cast(A.Document As Int) And "
                          "N.WhatDoc = A.WhatDoc) Where A.TypeSys = 'N' And A.WhatDoc In ") +
               kinds + QStringLiteral(" And N.IDX Is Null"));
    if (!orphans.rows.empty()) {
        const auto& r = orphans.rows.front();
        return ::testing::AssertionFailure()
               << "voucher line REC " << r[0].toLongLong() << " (kind "
               << r[1].toString().toStdString() << ") points at missing document line "
               << r[2].toString().toStdString();
    }
    return ::testing::AssertionSuccess();
}

// A cancelled document's voucher and cancellation voucher together leave every account unchanged.
inline ::testing::AssertionResult cancellationsNetToZero(tr::db::Connection& c) {
    const QString join = QStringLiteral(
        " From N_NaghdTrans As N Inner Join Asnad As A On (A.TypeSys = 'N' And A.WhatDoc = "
        "N.WhatDoc And A.Document = Cast(N.IDX As Varchar(20))) ");
    // On a cheque's lines DocToDate is the cheque's series: only the cash and bank kinds cancel.
    const auto cancelled = selectRows(c, QStringLiteral("Select Distinct N.WhatDoc, N.Serial") + join +
                                             QStringLiteral("Where A.DocToDate = '1' And N.WhatDoc In ") +
                                             QString::fromLatin1(kCashBankKindList));
    for (const auto& doc : cancelled.rows) {
        const QString where = QStringLiteral("Where N.WhatDoc = ") + c.text(doc[0].toString()) +
                              QStringLiteral(" And N.Serial = ") +
                              tr::db::sqlNumber(doc[1].toLongLong());
        const auto counts = selectRows(
            c, QStringLiteral("Select Sum(Case When A.DocToDate = '0' Then 1 Else 0 End), "
                              "Sum(Case When A.DocToDate = '1' Then 1 Else 0 End)") +
                   join + where);
        if (counts.rows[0][0].toLongLong() != counts.rows[0][1].toLongLong()) {
            return ::testing::AssertionFailure()
                   << "document " << doc[0].toString().toStdString() << "/" << doc[1].toLongLong()
                   << " has " << counts.rows[0][0].toLongLong() << " voucher lines but "
                   << counts.rows[0][1].toLongLong() << " cancellation lines";
        }
        const auto nets = selectRows(
            c, QStringLiteral("Select A.Koll, A.Moein, A.Tafsily, A.Tafsily2, A.ProjectCod, "
                              "Sum(A.Bed) - Sum(A.Bes)") +
                   join + where +
                   QStringLiteral(" And A.DocToDate In ('0', '1') Group By A.Koll, A.Moein, "
                                  "A.Tafsily, A.Tafsily2, A.ProjectCod"));
        for (const auto& net : nets.rows) {
            if (std::fabs(net[5].toDouble()) > kAmountTolerance) {
                return ::testing::AssertionFailure()
                       << "document " << doc[0].toString().toStdString() << "/"
                       << doc[1].toLongLong() << " leaves " << net[5].toDouble() << " on account "
                       << net[0].toString().toStdString() << "-" << net[1].toString().toStdString()
                       << "-" << net[2].toString().toStdString();
            }
        }
    }
    return ::testing::AssertionSuccess();
}

// Every voucher of a cheque kind balances, grouped by voucher number alone (DocToDate holds the
// series there), and every cheque line has one positive side (checked with all lines above).
inline ::testing::AssertionResult chequeVouchersBalance(tr::db::Connection& c) {
    const auto sums = selectRows(
        c, QStringLiteral("Select SanadNo, Sum(Bed), Sum(Bes) From Asnad Where TypeSys = 'N' And "
                          "(WhatDoc Like '7%' Or WhatDoc Like '8%') Group By SanadNo"));
    for (const auto& row : sums.rows) {
        if (std::fabs(row[1].toDouble() - row[2].toDouble()) > kAmountTolerance) {
            return ::testing::AssertionFailure() << "cheque voucher " << row[0].toLongLong() << " debits "
                                                 << row[1].toDouble() << " credits " << row[2].toDouble();
        }
    }
    return ::testing::AssertionSuccess();
}

// Each cheque's state row of a received-cheque document points at that document's row of the
// cheque (CodWhatDoc holds the row's IDX), and each cheque row of the document has one.
inline ::testing::AssertionResult chequeStatesFollowDocuments(tr::db::Connection& c) {
    const auto orphans = selectRows(
        c, QStringLiteral("Select L.ChqNo, L.Serial From N_ChqLastTrans As L Left Join N_NaghdTrans As N On "
                          "(Cast(N.IDX As Varchar(20)) = L.CodWhatDoc And N.WhatDoc = '71' And N.Serial = "
                          "L.Serial And N.CodWhatDoc = L.ChqNo) Where L.WhatDoc = '71' And N.IDX Is Null"));
    if (!orphans.rows.empty()) {
        return ::testing::AssertionFailure() << "state row of cheque " << orphans.rows[0][0].toString().toStdString()
                                             << " (serial " << orphans.rows[0][1].toLongLong()
                                             << ") points at no cheque row";
    }
    return ::testing::AssertionSuccess();
}

// Each action the actions screen posted is whole, on either side: its state row names a treasury
// row of its kind for the same cheque, each such treasury row has its state row, and its voucher
// has a debit and a credit line, none for the kinds that move no money (76, 86). Documents' own
// rows (71, 81) and voided leaves (83) are not actions of the screen.
inline ::testing::AssertionResult chequeActionsAreWhole(tr::db::Connection& c) {
    const QString kinds = QStringLiteral("('72', '73', '76', '77', '78', '79', '82', '85', '86', '87', '88')");
    const auto orphans = selectRows(
        c, QStringLiteral("Select L.ChqNo, L.WhatDoc From N_ChqLastTrans As L Left Join N_NaghdTrans As N On "
                          "(Cast(N.IDX As Varchar(20)) = L.CodWhatDoc And N.WhatDoc = L.WhatDoc And N.CodWhatDoc = "
                          "L.ChqNo) Where L.WhatDoc In ") +
               kinds +
               QStringLiteral(" And N.IDX Is Null And Not Exists (Select * From N_ChqFirst As F Where F.ChqOrTaraf = 1 "
                              "And F.ChqNo = L.ChqNo And IsNull(F.Joz, '') = IsNull(L.Joz, '') And F.Serial = L.Serial "
                              "And F.LastWhatDoc = L.WhatDoc And LTrim(RTrim(IsNull(L.CodWhatDoc, ''))) = '')"));
    // (An opening cheque's state row names no treasury row: its state was set on the opening
    // states screen.)
    if (!orphans.rows.empty()) {
        return ::testing::AssertionFailure() << "action " << orphans.rows[0][1].toString().toStdString() << " of cheque "
                                             << orphans.rows[0][0].toString().toStdString() << " has no treasury row";
    }
    const auto stateless = selectRows(
        c, QStringLiteral("Select N.IDX, N.WhatDoc From N_NaghdTrans As N Left Join N_ChqLastTrans As L On "
                          "(L.CodWhatDoc = Cast(N.IDX As Varchar(20)) And L.WhatDoc = N.WhatDoc) Where N.WhatDoc In ") +
               kinds + QStringLiteral(" And L.IDX Is Null"));
    if (!stateless.rows.empty()) {
        return ::testing::AssertionFailure() << "treasury row " << stateless.rows[0][0].toLongLong() << " (kind "
                                             << stateless.rows[0][1].toString().toStdString() << ") has no state row";
    }
    const auto vouchers = selectRows(
        c, QStringLiteral("Select N.IDX, N.WhatDoc, Sum(Case When A.Bed > 0 Then 1 Else 0 End), Sum(Case When A.Bes > "
                          "0 Then 1 Else 0 End) From N_NaghdTrans As N Left Join Asnad As A On (A.TypeSys = 'N' And "
                          "A.WhatDoc = N.WhatDoc And A.Document = Cast(N.IDX As Varchar(20))) Where N.WhatDoc In ") +
               kinds + QStringLiteral(" Group By N.IDX, N.WhatDoc"));
    for (const auto& row : vouchers.rows) {
        const bool moves = row[1].toString() != QLatin1String("76") && row[1].toString() != QLatin1String("86");
        const qint64 debits = row[2].toLongLong(), credits = row[3].toLongLong();
        if (moves ? (debits == 0 || credits == 0) : (debits + credits != 0)) {
            return ::testing::AssertionFailure() << "action " << row[1].toString().toStdString() << " (treasury row "
                                                 << row[0].toLongLong() << ") has " << debits << " debit and "
                                                 << credits << " credit lines";
        }
    }
    return ::testing::AssertionSuccess();
}

inline ::testing::AssertionResult ledgerIsConsistent(tr::db::Connection& c) {
    if (auto r = vouchersBalance(c); !r) return r;
    if (auto r = chequeVouchersBalance(c); !r) return r;
    if (auto r = chequeStatesFollowDocuments(c); !r) return r;
    if (auto r = documentsAndVouchersMatch(c); !r) return r;
    return cancellationsNetToZero(c);
}

// The ledger's checks and the actions screen's: for tests that post cheque actions.
inline ::testing::AssertionResult chequeLedgerIsConsistent(tr::db::Connection& c) {
    if (auto r = ledgerIsConsistent(c); !r) return r;
    return chequeActionsAreWhole(c);
}

// After 'DELETE': no row of the document (kind and serial) in N_NaghdTrans or N_ArzTrans, and no
// voucher line, of either voucher, of the lines it had (`formerLines`: their IDX).
inline ::testing::AssertionResult documentIsGone(tr::db::Connection& c, const QString& whatDoc,
                                                 qint64 serial, const QList<qint64>& formerLines) {
    const QString where = QStringLiteral(" Where WhatDoc = ") + c.text(whatDoc) +
                          QStringLiteral(" And Serial = ") + tr::db::sqlNumber(serial);
    for (const char* table : {"N_NaghdTrans", "N_ArzTrans"}) {
        const auto n =
            selectRows(c, QStringLiteral("Select Count(*) From ") + QLatin1String(table) + where);
        if (n.rows[0][0].toLongLong() != 0) {
            return ::testing::AssertionFailure()
                   << n.rows[0][0].toLongLong() << " rows left in " << table;
        }
    }
    QStringList ids;
    for (qint64 idx : formerLines) ids << c.text(QString::number(idx));
    if (!ids.isEmpty()) {
        const auto n = selectRows(
            c, QStringLiteral("Select Count(*) From Asnad Where TypeSys = 'N' And WhatDoc = ") +
                   c.text(whatDoc) + QStringLiteral(" And Document In (") + ids.join(',') +
                   QStringLiteral(")"));
        if (n.rows[0][0].toLongLong() != 0) {
            return ::testing::AssertionFailure()
                   << n.rows[0][0].toLongLong() << " voucher lines left in Asnad";
        }
    }
    return ::testing::AssertionSuccess();
}

}  // namespace tr::procedures::testing
