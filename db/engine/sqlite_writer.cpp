#include "db/engine/target_writer.h"

#include "db/engine/sql_identifiers.h"

namespace tr::engine {

namespace {

class SqliteWriter final : public TargetWriter {
  public:
    // SQLite's quoted names ignore case as T-SQL's do.
    QString name(const QString& name) const override { return quoteIdent(name); }
    QString rowKey() const override { return QStringLiteral("rowid"); }
    QString parameter(int ordinal) const override { return QStringLiteral("?%1").arg(ordinal); }

    // Text columns carry the TSQL collation; dates are text, as the suite keeps them. Texts and
    // integers keep the name they were declared with.
    QString columnType(const ast::TypeName& t) const override {
        const QString& n = t.name;
        switch (columnKind(t)) {
            case ColumnKind::Text:
                return n + (t.length > 0 ? QStringLiteral("(%1)").arg(t.length) : QString()) +
                       QStringLiteral(" COLLATE TSQL");
            case ColumnKind::LongText:
            case ColumnKind::Date:
                return n + QStringLiteral(" COLLATE TSQL");
            case ColumnKind::Integer:
                return n == QLatin1String("INTEGER") ? QStringLiteral("INT") : n;
            case ColumnKind::Float:
                return QStringLiteral("FLOAT");
            case ColumnKind::Decimal:
                return QStringLiteral("DECIMAL") +
                       (t.length > 0 ? QStringLiteral("(%1,%2)").arg(t.length).arg(qMax(0, t.scale)) : QString());
            case ColumnKind::Binary:
                return QStringLiteral("BLOB");
            case ColumnKind::Guid:
                return QStringLiteral("VARCHAR(36) COLLATE TSQL");
            case ColumnKind::None:
                break;
        }
        return {};
    }

    QString identityColumn() const override { return QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT"); }

    QString trimBlanks(const QString& sql) const override { return QStringLiteral("trim(%1, ' ')").arg(sql); }

    QString spelling(const tr::tsql::BuiltinFunction& f) const override { return QString::fromLatin1(f.sqlite); }

    // SQLite has no exclusive or: a runtime helper gives it.
    QString bitwiseXor(const QString& left, const QString& right) const override {
        return QStringLiteral("tsql_xor(%1, %2)").arg(left, right);
    }

    // The engine registers its own like(), which follows T-SQL and the collation.
    QString like(const QString& value, const QString& pattern, const QString& escape,
                 bool negated) const override {
        QString sql = value + (negated ? QStringLiteral(" NOT LIKE ") : QStringLiteral(" LIKE ")) + pattern;
        if (!escape.isEmpty()) sql += QStringLiteral(" ESCAPE ") + escape;
        return sql;
    }

    QString localTempSchema() const override { return QStringLiteral("temp"); }

    // SQLite names the index's schema, and the table without it.
    QString createIndex(bool unique, const QString& schema, const QString& name, const QString& table,
                        const QString& columns) const override {
        return QStringLiteral("CREATE %1INDEX %2.%3 ON %4 (%5)")
            .arg(unique ? QStringLiteral("UNIQUE ") : QString(), quoteIdent(schema), quoteIdent(name),
                 quoteIdent(table), columns);
    }

    // Views of the connection's own, made when it opens.
    QString catalogView(const QString& lowerName, bool tempdb) const override {
        if (lowerName != QLatin1String("sysobjects") && lowerName != QLatin1String("syscolumns")) return {};
        return QStringLiteral("temp.") +
               quoteIdent((tempdb ? QStringLiteral("tr_tempdb_") : QStringLiteral("tr_")) + lowerName);
    }
};

}  // namespace

const TargetWriter& sqliteWriter() {
    static const SqliteWriter writer;
    return writer;
}

}  // namespace tr::engine
