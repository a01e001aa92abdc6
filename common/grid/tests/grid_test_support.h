#pragma once
// Shared by the grid tests: a company database on the embedded engine with the Grid_State table,
// a connection wrapper that records the statements sent, and an in-memory grid.
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <memory>
#include <vector>

#include "common/grid/grid_state.h"
#include "db/engine/engine.h"
#include "db/engine/sqlite_connection.h"

namespace tr::grid::testing {

class RecordingConnection : public tr::db::Connection {
public:
    explicit RecordingConnection(tr::db::Connection& target) : target_(target) {}
    QStringList statements;

    tr::db::ExecResult execute(const QString& sql) override {
        statements << sql;
        return target_.execute(sql);
    }
    tr::db::SqlDialect dialect() const override { return target_.dialect(); }
    QString databaseName() const override { return target_.databaseName(); }

private:
    tr::db::Connection& target_;
};

class GridStateDatabase {
public:
    GridStateDatabase()
        : engine_(dir_.path()), sqlite_(engine_.open(QStringLiteral("Corvask_1_1403"))), connection(*sqlite_) {
        connection.execute(QStringLiteral(
            "Create Table Grid_State (UserId Varchar(10) Not Null, sVisible Varchar(1) Null, "
            "sProg Varchar(50) Not Null, sItem Varchar(50) Not Null, sForm Varchar(50) Not Null, "
            "sPart Varchar(50) Not Null, sColName Varchar(100) Not Null, iLen Int Null, iRaj Int Null)"));
        connection.statements.clear();
    }
    int rowCount() {
        tr::db::Query count(&connection);
        count.setSql(QStringLiteral("Select Count(*) As N From Grid_State"));
        count.Open();
        return static_cast<int>(count.FieldByName(QStringLiteral("N")).AsInteger());
    }

private:
    QTemporaryDir dir_;
    tr::engine::Engine engine_;
    std::unique_ptr<tr::engine::SqliteConnection> sqlite_;

public:
    RecordingConnection connection;
    tr::db::Query command{&connection};
    tr::db::MyDatabase database{&command, &connection};
};

class FakeGrid : public GridColumns {
public:
    std::vector<GridColumn> columns;
    bool open = true;

    int count() const override { return static_cast<int>(columns.size()); }
    GridColumn column(int position) const override { return columns.at(position); }
    void setColumn(int position, const GridColumn& c) override {
        columns.at(position).visible = c.visible;
        columns.at(position).width = c.width;
    }
    void moveColumn(int from, int to) override {
        const GridColumn moved = columns.at(from);
        columns.erase(columns.begin() + from);
        columns.insert(columns.begin() + to, moved);
    }
    bool datasetOpen() const override { return open; }

    QStringList order() const {
        QStringList names;
        for (const GridColumn& c : columns) names << c.fieldName;
        return names;
    }
};

}  // namespace tr::grid::testing
