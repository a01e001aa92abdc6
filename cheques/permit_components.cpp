#include "cheques/permit_components.h"

#include "common/db/query_helpers.h"
#include "common/dialog/message_dialog.h"
#include "common/persian/amount.h"
#include "common/persian/amount_cells.h"

namespace tr::cheques {

namespace {

using tr::db::firstColumn;
using tr::db::Query;

}  // namespace

PermitComponents::PermitComponents(PermitDocument& permit)
    : permit_(permit), rows_(permit.services().database->Connection) {
    rows_.setSql(QStringLiteral("Select * From ") + permit_.componentTable() + QStringLiteral(" Order By PMojavezCod"));
    // The rate and the amount as typed are read as amounts; a sign is "+" or "-", anything else
    // typed adds.
    rows_.BeforePost = [this](Query& row) {
        const QString refusal =
            tr::persian::readAmountCells(row, {QStringLiteral("Nerkh"), QStringLiteral("FactValue")});
        if (!refusal.isEmpty()) {
            tr::dialog::Messages(permit_.services().dialog).show(refusal, tr::persian::kAmountMessageKind);
            return false;
        }
        if (row.FieldByName(QStringLiteral("Sign")).AsString().trimmed() != QLatin1String("-"))
            row.FieldByName(QStringLiteral("Sign")).SetValue(QStringLiteral("+"));
        return true;
    };
    rows_.AfterPost = [this](Query&) { computeRates(); };
}

void PermitComponents::open() {
    tr::db::Connection& c = *permit_.services().database->Connection;
    c.execute(QStringLiteral("Insert Into ") + permit_.componentTable() +
              QStringLiteral(" (PMojavezCod, PMojavezNam, Sign, Nerkh, FactValue) Select K.PMojavezCod, K.PMojavezNam, '+', "
                             "0, 0 From N_Mojavez As K Where Not Exists (Select * From ") +
              permit_.componentTable() + QStringLiteral(" As F Where F.PMojavezCod = K.PMojavezCod)"));
    computeRates();
    opened_.clear();
    for (int r = 0; r < rows_.RecordCount(); ++r) {
        QVariantList row;
        for (const char* f : {"PMojavezCod", "PMojavezNam", "Sign", "Nerkh", "FactValue"})
            row << rows_.value(r, rows_.fieldIndex(QString::fromLatin1(f)));
        opened_ << row;
    }
}

void PermitComponents::discard() {
    if (rows_.state() != Query::State::Browse) rows_.Cancel();
    tr::db::Connection& c = *permit_.services().database->Connection;
    c.execute(QStringLiteral("Delete From ") + permit_.componentTable());
    for (const QVariantList& row : opened_) {
        c.execute(QStringLiteral("Insert Into ") + permit_.componentTable() +
                  QStringLiteral(" (PMojavezCod, PMojavezNam, Sign, Nerkh, FactValue) Values (") +
                  c.text(row[0].toString()) + QStringLiteral(", ") + c.text(row[1].toString()) + QStringLiteral(", ") +
                  c.text(row[2].toString()) + QStringLiteral(", ") + tr::db::sqlNumber(row[3].toDouble()) +
                  QStringLiteral(", ") + tr::db::sqlNumber(row[4].toDouble()) + QLatin1Char(')'));
    }
    rows_.Open();
}

void PermitComponents::computeRates() {
    tr::db::Connection& c = *permit_.services().database->Connection;
    const QString table = permit_.componentTable();
    const double gross = firstColumn(c, QStringLiteral("Select IsNull(Sum(FactValue), 0) From ") + table +
                                            QStringLiteral(" Where IsNull(Sign, '+') <> '-' And IsNull(Nerkh, 0) = 0"))
                             .toDouble();
    const tr::db::Query rated = tr::db::openQuery(
        c, QStringLiteral("Select PMojavezCod, Nerkh From ") + table + QStringLiteral(" Where IsNull(Nerkh, 0) <> 0"));
    for (int i = 0; i < rated.RecordCount(); ++i) {
        const double amount = tr::persian::roundAmount(gross * rated.value(i, 1).toDouble() / 100.0);
        c.execute(QStringLiteral("Update ") + table + QStringLiteral(" Set FactValue = ") + tr::db::sqlNumber(amount) +
                  QStringLiteral(" Where PMojavezCod = ") + c.text(rated.value(i, 0).toString().trimmed()));
    }
    const int at = rows_.Active() ? rows_.RecNo() - 1 : 0;
    rows_.Open();
    if (at > 0 && at < rows_.RecordCount()) rows_.MoveTo(at);
}

bool PermitComponents::toggleSign() {
    if (rows_.IsEmpty()) return false;
    if (rows_.state() == Query::State::Browse) rows_.Edit();
    const bool subtracts = rows_.FieldByName(QStringLiteral("Sign")).AsString().trimmed() == QLatin1String("-");
    rows_.FieldByName(QStringLiteral("Sign")).SetValue(subtracts ? QStringLiteral("+") : QStringLiteral("-"));
    rows_.Post();
    return rows_.state() == Query::State::Browse;
}

double PermitComponents::chequeTotal() const {
    return firstColumn(*permit_.services().database->Connection,
                       QStringLiteral("Select IsNull(Sum(ChqValue), 0) From ") + permit_.chequeTable())
        .toDouble();
}

double PermitComponents::componentTotal() const {
    return firstColumn(*permit_.services().database->Connection,
                       QStringLiteral("Select IsNull(Sum(Case When Sign = '-' Then -FactValue Else FactValue End), 0) From ") +
                           permit_.componentTable())
        .toDouble();
}

bool PermitComponents::apply() {
    if (rows_.state() != Query::State::Browse) {
        rows_.Post();
        if (rows_.state() != Query::State::Browse) return false;
    }
    computeRates();
    permit_.spreadComponents();
    permit_.cheques().Open();
    return true;
}

}  // namespace tr::cheques
