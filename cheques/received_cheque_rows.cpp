#include "cheques/received_cheque_rows.h"

#include <QVariantList>
#include <algorithm>
#include <functional>

#include "common/db/query_helpers.h"
#include "vouchers/grid_commands.h"

namespace tr::cheques {

using tr::db::Query;

const QString kLinkedChequeDeleteQuestion =
    QStringLiteral("با حذف چک  ارتباط آن با صورتحساب هاي فروش قطع خواهد شد.آيا حذف شود؟");

namespace {

// What "کپي سرفصل" carries down: the accounts and the counterparty they name.
const QStringList kAccountHead = {QStringLiteral("Koll"),        QStringLiteral("Moein"),
                                  QStringLiteral("Tafsily"),     QStringLiteral("Tafsily2"),
                                  QStringLiteral("ProjectCod"),  QStringLiteral("WhatDoc2"),
                                  QStringLiteral("CodWhatDoc2"), QStringLiteral("NamWhatDoc2")};

QString trimmed(const QVariant& v) {
    return v.isNull() ? QString() : v.toString().trimmed();
}

QString literal(const tr::db::Connection& c, const QVariant& v) {
    if (v.isNull()) return QStringLiteral("Null");
    switch (v.typeId()) {
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::UInt:
        case QMetaType::ULongLong:
            return tr::db::sqlNumber(v.toLongLong());
        case QMetaType::Double:
        case QMetaType::Float:
            return tr::db::sqlNumber(v.toDouble());
        default:
            return c.text(v.toString());
    }
}

// The lines written anew in the grid's order, Raj 0,1,2,..., without those `keep` refuses and
// with `change` applied to the others' values. A work table row has no key that a statement could
// name it by (two lines may hold the same values), so the table is rewritten whole, as one batch:
// all of it or none.
void rewriteCounterparties(ChequeDocument& document,
                           const std::function<bool(int row)>& keep,
                           const std::function<void(int row, QVariantList& values)>& change = {}) {
    Query& lines = document.counterparties();
    tr::db::Connection& c = document.services().connection();
    const QString table = lines.updateTable();
    const int current = lines.IsEmpty() ? 0 : lines.RecNo() - 1;
    const QStringList& fields = lines.fieldNames();
    const int raj = lines.fieldIndex(QStringLiteral("Raj"));
    QStringList columns;
    for (const QString& field : fields) columns << QLatin1Char('[') + field + QLatin1Char(']');
    QStringList batch{QStringLiteral("Delete From ") + table};
    int next = 0;
    for (int row = 0; row < lines.RecordCount(); ++row) {
        if (keep && !keep(row)) continue;
        QVariantList values;
        for (int column = 0; column < fields.size(); ++column) values << lines.value(row, column);
        if (change) change(row, values);
        values[raj] = next++;
        QStringList literals;
        for (const QVariant& v : values) literals << literal(c, v);
        batch << QStringLiteral("Insert Into ") + table + QStringLiteral(" (") +
                     columns.join(QStringLiteral(", ")) + QStringLiteral(") Values (") +
                     literals.join(QStringLiteral(", ")) + QLatin1Char(')');
    }
    c.execute(batch.join(QStringLiteral(";\n")));
    lines.Open();
    if (!lines.IsEmpty()) lines.MoveTo(std::min(current, lines.RecordCount() - 1));
}

}  // namespace

bool chequeAssignedToInvoices(ChequeDocument& document, const QString& number,
                              const QString& series) {
    bool numeric = false;
    const qint64 serial = document.header().serial.trimmed().toLongLong(&numeric);
    if (!numeric || !document.side().invoices) return false;
    tr::db::Connection& c = document.services().connection();
    return tr::db::firstColumn(
               c,
               QStringLiteral(
                   "Select Count(*) From R_ForoshRelatedNaghd Where WhatDoc = '71' And Serial = ") +
                   tr::db::sqlNumber(serial) + QStringLiteral(" And LTrim(RTrim(AtfCh)) = ") +
                   c.text(number) + QStringLiteral(" And LTrim(RTrim(IsNull(DocToDate, ''))) = ") +
                   c.text(series))
               .toLongLong() > 0;
}

bool deleteChequeRow(ChequeDocument& document) {
    Query& cheques = document.cheques();
    const tr::dialog::Messages messages(document.services().dialog);
    if (!cheques.Active()) return false;
    // A new row never posted has no counterparty lines and no links.
    if (cheques.state() == Query::State::Insert) {
        if (!messages.ask(tr::vouchers::GridCommands::kDeleteQuestion)) return false;
        cheques.Cancel();
        return true;
    }
    if (cheques.IsEmpty()) return false;
    // The cheque is the stored row, not what is being typed over it: the edit is put aside while
    // the user answers, and given back on "No".
    QVariantList typed;
    if (cheques.state() == Query::State::Edit) {
        for (const QString& field : cheques.fieldNames())
            typed << cheques.FieldByName(field).Value();
        cheques.Cancel();
    }
    const QString number = cheques.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed();
    const QString series = cheques.FieldByName(QStringLiteral("Joz")).AsString().trimmed();
    const QString question = chequeAssignedToInvoices(document, number, series)
                                 ? kLinkedChequeDeleteQuestion
                                 : tr::vouchers::GridCommands::kDeleteQuestion;
    if (!messages.ask(question)) {
        if (!typed.isEmpty()) {
            cheques.Edit();
            for (int i = 0; i < typed.size(); ++i)
                cheques.FieldByName(cheques.fieldNames().at(i)).SetValue(typed.at(i));
        }
        return false;
    }
    cheques.Delete();
    Query& lines = document.counterparties();
    if (lines.state() != Query::State::Browse) lines.Cancel();
    const int numberColumn = lines.fieldIndex(QStringLiteral("ChqNo"));
    const int seriesColumn = lines.fieldIndex(QStringLiteral("Joz"));
    rewriteCounterparties(document, [&](int row) {
        return trimmed(lines.value(row, numberColumn)) != number ||
               trimmed(lines.value(row, seriesColumn)) != series;
    });
    return true;
}

bool deleteCounterpartyRow(ChequeDocument& document) {
    Query& lines = document.counterparties();
    tr::vouchers::GridCommands commands(document.services(), lines, {});
    if (!commands.deleteRow()) return false;
    renumberCounterparties(document);
    return true;
}

bool copyAccountHeadDown(ChequeDocument& document) {
    Query& lines = document.counterparties();
    if (!lines.Active() || lines.IsEmpty()) return false;
    // The head copied is the one the line's own checks accepted.
    if (lines.state() != Query::State::Browse) {
        lines.Post();
        if (lines.state() != Query::State::Browse) return false;
    }
    const int from = lines.RecNo() - 1;
    if (from >= lines.RecordCount() - 1) return false;
    QList<int> columns;
    QVariantList head;
    for (const QString& field : kAccountHead) {
        const int column = lines.fieldIndex(field);
        if (column < 0) continue;
        columns << column;
        head << lines.value(from, column);
    }
    rewriteCounterparties(document, {}, [&](int row, QVariantList& values) {
        if (row <= from) return;
        for (int i = 0; i < columns.size(); ++i) values[columns[i]] = head[i];
    });
    return true;
}

void renumberCounterparties(ChequeDocument& document) {
    rewriteCounterparties(document, {});
}

}  // namespace tr::cheques
