#include "db/pg/pg_link.h"

#include <libpq-fe.h>
#include <poll.h>

#include <cerrno>

#include <QElapsedTimer>

#include <memory>

#include "common/db/database_error.h"
#include "common/db/sql_literal.h"

namespace tr::pg {

using tr::db::DatabaseError;
using tr::db::ExecResult;

namespace {

// Type identifiers of the server's built-in types (pg_type.oid), fixed since long ago.
enum : Oid {
    kBool = 16, kInt8 = 20, kInt2 = 21, kInt4 = 23, kText = 25, kOid = 26,
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

constexpr int kMaxPrepared = 2000;

// A statement is prepared once for each kinds of its values: the same text may take a whole number
// in one run and a fraction in the next.
QString preparedKey(const QString& sql, const std::vector<Oid>& types) {
    QString key = sql;
    key += QChar(0);
    for (Oid t : types) key += t == 0 ? QLatin1Char('u') : t == kInt8 ? QLatin1Char('i') : QLatin1Char('f');
    return key;
}

// The ordinals of the $n marks of a statement, outside its quoted texts and names.
QList<int> parameterMarks(const QString& sql) {
    QList<int> marks;
    QChar quote;
    for (qsizetype i = 0; i < sql.size(); ++i) {
        const QChar c = sql[i];
        if (!quote.isNull()) {
            if (c == quote) quote = QChar();
            continue;
        }
        if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            quote = c;
        } else if (c == QLatin1Char('$')) {
            int n = 0;
            qsizetype j = i + 1;
            for (; j < sql.size() && sql[j].isDigit(); ++j) n = n * 10 + sql[j].digitValue();
            if (n > 0) marks << n;
            i = j - 1;
        }
    }
    return marks;
}

// Parameters go as text in the server's notation. Numbers are typed (whole numbers as bigint,
// others as double precision), so that arithmetic on two of them is arithmetic; texts are left
// for the server to infer from where they stand, as a literal in the text would be.
struct Parameters {
    std::vector<QByteArray> texts;
    std::vector<const char*> values;
    std::vector<Oid> types;

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
        for (size_t i = 0; i < list.size(); ++i) {
            values.push_back(list[i].isNull() ? nullptr : texts[i].constData());
            switch (list[i].typeId()) {
                case QMetaType::Int: case QMetaType::LongLong: case QMetaType::UInt: case QMetaType::ULongLong:
                    types.push_back(kInt8);
                    break;
                case QMetaType::Double: case QMetaType::Float:
                    types.push_back(kFloat8);
                    break;
                default:
                    types.push_back(0);
            }
        }
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
    return collect(PQexecParams(connection_, text.constData(), int(parameters.size()), p.types.data(),
                                p.values.data(), nullptr, nullptr, 0),
                   sql, source);
}

ExecResult PgLink::runPrepared(const QString& sql, const std::vector<QVariant>& parameters,
                               const QString& source) {
    const Parameters p(parameters);
    const QString key = preparedKey(sql, p.types);
    if (!prepared_.contains(key)) prepare(sql, parameters, source);
    const auto found = prepared_.constFind(key);
    return collect(PQexecPrepared(connection_, found->constData(), int(parameters.size()),
                                  p.values.data(), nullptr, nullptr, 0),
                   sql, source);
}

ExecResult PgLink::runWaiting(const QString& sql, const std::function<bool(int)>& waiting,
                              const QString& source) {
    if (!PQsendQuery(connection_, sql.toUtf8().constData())) return collect(nullptr, sql, source);
    QElapsedTimer clock;
    clock.start();
    bool cancelled = false;
    pollfd socket{PQsocket(connection_), POLLIN, 0};
    while (PQisBusy(connection_)) {
        if (::poll(&socket, 1, 100) < 0 && errno != EINTR) break;
        if (!PQconsumeInput(connection_)) break;  // the connection is gone: PQgetResult says why
        if (!PQisBusy(connection_) || cancelled) continue;
        if (!waiting(int(clock.elapsed()))) {
            cancelled = true;
            char reason[256];
            if (PGcancel* cancel = PQgetCancel(connection_)) {
                PQcancel(cancel, reason, sizeof reason);
                PQfreeCancel(cancel);
            }
        }
    }
    // Several statements answer one result each; the last one, or the failure that ended them.
    auto failed = [](PGresult* r) {
        return PQresultStatus(r) != PGRES_COMMAND_OK && PQresultStatus(r) != PGRES_TUPLES_OK;
    };
    PGresult* kept = nullptr;
    while (PGresult* r = PQgetResult(connection_)) {
        if (kept && failed(kept)) {
            PQclear(r);
            continue;
        }
        if (kept) PQclear(kept);
        kept = r;
    }
    return collect(kept, sql, source);
}

bool PgLink::isPrepared(const QString& sql, const std::vector<QVariant>& parameters) const {
    return prepared_.contains(preparedKey(sql, Parameters(parameters).types));
}

void PgLink::prepare(const QString& sql, const std::vector<QVariant>& parameters, const QString& source) {
    Parameters p(parameters);
    const QString key = preparedKey(sql, p.types);
    // A text value the statement never reads would leave its type for the server to guess, which
    // it refuses: it is declared text.
    const QList<int> used = parameterMarks(sql);
    for (size_t i = 0; i < p.types.size(); ++i)
        if (p.types[i] == 0 && !used.contains(int(i) + 1)) p.types[i] = kText;
    if (prepared_.size() >= kMaxPrepared) {
        collect(PQexec(connection_, "DEALLOCATE ALL"), QStringLiteral("DEALLOCATE ALL"), source);
        prepared_.clear();
    }
    const QByteArray name = "tr_" + QByteArray::number(++preparedNames_);
    collect(PQprepare(connection_, name.constData(), sql.toUtf8().constData(), int(p.types.size()),
                      p.types.data()),
            sql, source);
    prepared_.insert(key, name);
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
