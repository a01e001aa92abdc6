#pragma once
// Test stand-in for the company database holding Grid_State only, shared by the grid tests.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <algorithm>
#include <vector>

#include "common/db/connection.h"

namespace tr::grid::testing {

// A stand-in for the company database holding Grid_State only: it understands the three
// statement shapes the layout routines send and records every statement.
class GridStateTable : public tr::db::Connection {
public:
    QStringList statements;
    std::vector<QStringList> rows;  // UserId, sVisible, sProg, sItem, sForm, sPart, sColName, iLen, iRaj

    tr::db::ExecResult execute(const QString& sql) override {
        statements << sql;
        tr::db::ExecResult result;
        if (sql.startsWith(QLatin1String("Insert Into Grid_State("))) {
            rows.push_back(literals(sql.mid(sql.indexOf(QLatin1String("Values(")))));
            result.rowsAffected = 1;
        } else if (sql.startsWith(QLatin1String("Delete From Grid_State"))) {
            const QStringList key = literals(sql);
            const auto before = rows.size();
            std::erase_if(rows, [&](const QStringList& row) { return matches(row, key); });
            result.rowsAffected = static_cast<qint64>(before - rows.size());
        } else if (sql.startsWith(QLatin1String("Select * From Grid_State"))) {
            const QStringList key = literals(sql);
            tr::db::ResultSet set;
            set.columns = QStringList{"UserId", "sVisible", "sProg", "sItem", "sForm",
                                      "sPart", "sColName", "iLen", "iRaj"};
            std::vector<QStringList> found;
            std::copy_if(rows.begin(), rows.end(), std::back_inserter(found),
                         [&](const QStringList& row) { return matches(row, key); });
            std::stable_sort(found.begin(), found.end(), [](const QStringList& a, const QStringList& b) {
                return a[8].toInt() < b[8].toInt();
            });
            for (const QStringList& row : found) {
                tr::db::Row values;
                for (int i = 0; i < row.size(); ++i) {
                    values.push_back(i >= 7 ? QVariant(row[i].toInt()) : QVariant(row[i]));
                }
                set.rows.push_back(values);
            }
            result.resultSets.push_back(set);
        } else {
            ADD_FAILURE() << "unexpected statement: " << sql.toStdString();
        }
        return result;
    }
    tr::db::SqlDialect dialect() const override { return tr::db::SqlDialect::Embedded; }
    QString databaseName() const override { return QStringLiteral("Corvask_1_1403"); }

private:
    // Quoted literals and bare numbers in order of appearance.
    static QStringList literals(const QString& sql) {
        static const QRegularExpression pattern(QStringLiteral("'((?:[^']|'')*)'|\\b(\\d+)\\b"));
        QStringList values;
        for (const auto& m : pattern.globalMatch(sql)) {
            values << (m.capturedStart(1) >= 0 ? m.captured(1).replace(QLatin1String("''"), QLatin1String("'"))
                                               : m.captured(2));
        }
        return values;
    }
    // key: UserId, sProg, sItem, sForm, sPart
    static bool matches(const QStringList& row, const QStringList& key) {
        return row[0] == key[0] && row[2] == key[1] && row[3] == key[2] && row[4] == key[3] &&
               row[5] == key[4];
    }
};

}  // namespace tr::grid::testing
