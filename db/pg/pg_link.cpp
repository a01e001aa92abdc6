#include "db/pg/pg_link.h"

#include <libpq-fe.h>

#include <memory>

#include "common/db/database_error.h"
#include "common/db/sql_literal.h"

namespace tr::pg {

using tr::db::DatabaseError;
using tr::db::ExecResult;

namespace {

// Type identifiers of the server's built-in types (pg_type.oid), fixed since long ago.
enum : Oid {
    kBool = 16, kInt8 = 20, kInt2 = 21, kInt4 = 23, kOid = 26,
    kFloat4 = 700, kFloat8 = 701, kNumeric = 1700,
};

struct ResultDeleter {
    void operator()(PGresult* r) const { PQclear(r); }
};
using Result = std::unique_ptr<PGresult, ResultDeleter>;

QVariant value(const PGresult* r, int row, int column) {
    if (PQgetisnull(r, row, column)) return {};
    const char* text = PQgetvalue(r, row, column);
    switch (PQftype(r, column)) {
        case kInt2: case kInt4: case kInt8: case kOid:
            return QVariant(static_cast<qint64>(QByteArray(text).toLongLong()));
        case kFloat4: case kFloat8: case kNumeric:
            return QVariant(QByteArray(text).toDouble());
        case kBool:
            return QVariant(static_cast<qint64>(text[0] == 't' ? 1 : 0));
        default:
            return QVariant(QString::fromUtf8(text, PQgetlength(r, row, column)));
    }
}

// Parameters go as text in the server's notation; their types are the server's to infer.
struct Parameters {
    std::vector<QByteArray> texts;
    std::vector<const char*> values;

    explicit Parameters(const std::vector<QVariant>& list) {
        texts.reserve(list.size());
        for (const QVariant& v : list) {
            if (v.isNull()) {
                texts.emplace_back();
                continue;
            }
            switch (v.typeId()) {
                case QMetaType::Double:
                case QMetaType::Float:
                    texts.push_back(tr::db::sqlNumber(v.toDouble()).toUtf8());
                    break;
                case QMetaType::Bool:
                    texts.push_back(v.toBool() ? "1" : "0");
                    break;
                default:
                    texts.push_back(v.toString().toUtf8());
            }
        }
        for (size_t i = 0; i < list.size(); ++i)
            values.push_back(list[i].isNull() ? nullptr : texts[i].constData());
    }
};

}  // namespace

PgLink::PgLink(const QString& connectionText) {
    connection_ = PQconnectdb(connectionText.toUtf8().constData());
    if (PQstatus(connection_) != CONNECTION_OK) {
        const QString reason = QString::fromUtf8(PQerrorMessage(connection_)).trimmed();
        PQfinish(connection_);
        connection_ = nullptr;
        throw DatabaseError(QStringLiteral("Cannot connect to the database server: ") + reason);
    }
    PQsetClientEncoding(connection_, "UTF8");
    // Notices (a dropped table that was not there, ...) are not the user's business.
    PQsetNoticeProcessor(connection_, [](void*, const char*) {}, nullptr);
}

PgLink::~PgLink() {
    if (connection_) PQfinish(connection_);
}

ExecResult PgLink::run(const QString& sql, const std::vector<QVariant>& parameters,
                       const QString& source) {
    const QByteArray text = sql.toUtf8();
    if (parameters.empty()) return collect(PQexec(connection_, text.constData()), sql, source);
    const Parameters p(parameters);
    return collect(PQexecParams(connection_, text.constData(), int(parameters.size()), nullptr,
                                p.values.data(), nullptr, nullptr, 0),
                   sql, source);
}

ExecResult PgLink::runPrepared(const QString& sql, const std::vector<QVariant>& parameters,
                               const QString& source) {
    auto found = prepared_.constFind(sql);
    if (found == prepared_.constEnd()) {
        const QByteArray name = "tr_" + QByteArray::number(prepared_.size() + 1);
        collect(PQprepare(connection_, name.constData(), sql.toUtf8().constData(), 0, nullptr), sql,
                source);
        found = prepared_.insert(sql, name);
    }
    const Parameters p(parameters);
    return collect(PQexecPrepared(connection_, found->constData(), int(parameters.size()),
                                  p.values.data(), nullptr, nullptr, 0),
                   sql, source);
}

ExecResult PgLink::collect(PGresult* answer, const QString& sql, const QString& source) {
    const Result r(answer);
    const ExecStatusType status = r ? PQresultStatus(r.get()) : PGRES_FATAL_ERROR;
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
        lastState_ = r ? QString::fromLatin1(PQresultErrorField(r.get(), PG_DIAG_SQLSTATE)) : QString();
        const char* message = r ? PQresultErrorField(r.get(), PG_DIAG_MESSAGE_PRIMARY) : nullptr;
        throw DatabaseError(
            QString::fromUtf8(message ? message : PQerrorMessage(connection_)).trimmed(),
            source.isEmpty() ? sql : source);
    }
    lastState_.clear();
    ExecResult out;
    if (status == PGRES_COMMAND_OK) {
        out.rowsAffected = QByteArray(PQcmdTuples(r.get())).toLongLong();
        return out;
    }
    tr::db::ResultSet set;
    const int columns = PQnfields(r.get());
    for (int c = 0; c < columns; ++c) set.columns << QString::fromUtf8(PQfname(r.get(), c));
    const int rows = PQntuples(r.get());
    set.rows.reserve(rows);
    for (int row = 0; row < rows; ++row) {
        tr::db::Row values;
        values.reserve(columns);
        for (int c = 0; c < columns; ++c) values.push_back(value(r.get(), row, c));
        set.rows.push_back(std::move(values));
    }
    out.resultSets.push_back(std::move(set));
    return out;
}

bool PgLink::inTransaction() const {
    const PGTransactionStatusType s = PQtransactionStatus(connection_);
    return s == PQTRANS_INTRANS || s == PQTRANS_INERROR || s == PQTRANS_ACTIVE;
}

int PgLink::serverVersion() const {
    return PQserverVersion(connection_);
}

}  // namespace tr::pg
