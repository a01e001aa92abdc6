// Every statement that parses translates to SQLite text or is refused with the engine's error,
// against a fixed catalogue of the module's kind of tables.
#include "common/db/database_error.h"
#include "db/engine/parser.h"
#include "db/engine/translator.h"
#include "fuzz/fuzz_input.h"

namespace {

using tr::engine::ColumnInfo;
using tr::engine::SqlType;

class FixedCatalog : public tr::engine::Catalog {
public:
    QString schemaForDatabase(const QString& database, int position) override {
        if (database.isEmpty() || database.compare(QLatin1String("Corvask_1_1404"), Qt::CaseInsensitive) == 0)
            return QStringLiteral("main");
        if (database.compare(QLatin1String("tempdb"), Qt::CaseInsensitive) == 0) return QStringLiteral("tempdb");
        throw tr::db::DatabaseError(QStringLiteral("Database '%1' does not exist.").arg(database), {}, position);
    }
    std::vector<ColumnInfo> columns(const QString&, const QString& table) override {
        const ColumnInfo key{QStringLiteral("IDX"), QStringLiteral("INTEGER"), SqlType::Integer, true};
        auto text = [](const char* name, int length) {
            return ColumnInfo{QString::fromLatin1(name), QStringLiteral("VARCHAR(%1) COLLATE TSQL").arg(length),
                              SqlType::Text};
        };
        auto real = [](const char* name) { return ColumnInfo{QString::fromLatin1(name), QStringLiteral("FLOAT"), SqlType::Real}; };
        if (table.compare(QLatin1String("Asnad"), Qt::CaseInsensitive) == 0)
            return {key, text("Document", 20), text("SanadNo", 20), text("Koll", 3), text("Moein", 4),
                    text("Des", 200), real("Bed"), real("Bes")};
        if (table.compare(QLatin1String("N_NaghdTrans"), Qt::CaseInsensitive) == 0)
            return {key, text("WhatDoc", 10), text("Serial", 20),
                    ColumnInfo{QStringLiteral("Raj"), QStringLiteral("INT"), SqlType::Integer}, text("Des", 200),
                    real("Bed"), real("Bes")};
        if (table.compare(QLatin1String("##x"), Qt::CaseInsensitive) == 0)
            return {text("Koll", 3), ColumnInfo{QStringLiteral("IDX"), QStringLiteral("INTEGER"), SqlType::Integer}};
        return {};
    }
};

void translate(const std::vector<tr::engine::ast::Statement*>& statements, FixedCatalog& catalog, const QString& sql) {
    for (const tr::engine::ast::Statement* s : statements) {
        try {
            const tr::engine::Step step = tr::engine::translateStatement(*s, catalog, sql);
            translate(step.thenBody, catalog, sql);
            translate(step.elseBody, catalog, sql);
        } catch (const tr::db::DatabaseError&) {
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString sql = fuzzText(data, size);
    std::vector<tr::engine::ast::StatementPtr> batch;
    try {
        batch = tr::engine::parseBatch(sql);
    } catch (const tr::db::DatabaseError&) {
        return 0;
    }
    FixedCatalog catalog;
    std::vector<tr::engine::ast::Statement*> statements;
    for (const auto& s : batch) statements.push_back(s.get());
    translate(statements, catalog, sql);
    return 0;
}
