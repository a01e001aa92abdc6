#include "vouchers/serials.h"

#include <type_traits>

#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "common/db/transaction.h"

namespace tr::vouchers {

using tr::db::firstColumn;

QString nextSerial(tr::db::Connection& connection, const QString& kind) {
    const qint64 saved =
        firstColumn(connection,
                    QStringLiteral("Select IsNull(Max(Serial), 0) + 1 As Serial From N_NaghdTrans "
                                   "Where WhatDoc=") +
                        connection.text(kind))
            .toLongLong();
    const qint64 held =
        firstColumn(connection,
                    QStringLiteral(" Select cast(IsNull(Max(resid2),0) as integer) As MaxRes From "
                                   "Reserveid  Where ProgNam='N' And Ltrim(Rtrim(WhatDoc)) = ") +
                        connection.text(kind))
            .toLongLong();
    // Equality moves past too: the held serial is on someone's screen.
    const qint64 next = (held > 0 && held >= saved) ? held + 1 : saved;
    return QString::number(next);
}

QString serialTakenMessage(const QString& title) {
    return title + QStringLiteral(" با اين شماره ثبت شده است.");
}

bool serialIsFree(tr::db::Connection& connection, const tr::dialog::Messages& messages,
                  const QString& kind, const QString& title, const QString& serial) {
    const qint64 count =
        firstColumn(connection,
                    QStringLiteral("Select Count(*) As iCount From N_NaghdTrans Where Serial=") +
                        connection.text(serial) + QStringLiteral(" And WhatDoc=") +
                        connection.text(kind))
            .toLongLong();
    if (count > 0) {
        messages.show(serialTakenMessage(title), QStringLiteral("1ER"));
        return false;
    }
    return true;
}

bool heldByAnotherUser(tr::db::Connection& c, const QString& program, const QString& kind,
                       const QString& resId1, const QString& resId2, const QString& user) {
    const tr::db::Query query = tr::db::openQuery(
        c, QStringLiteral(" Select UserId, Count(*) As iCount From ReserveId Where ") +
               QStringLiteral(" LTrim(RTrim(ProgNam))=") + c.text(program) + QStringLiteral(" ") +
               QStringLiteral(" And LTrim(RTrim(WhatDoc))=") + c.text(kind) + QStringLiteral(" ") +
               QStringLiteral(" And LTrim(RTrim(ResId1))=") + c.text(resId1) + QStringLiteral(" ") +
               QStringLiteral(" And LTrim(RTrim(ResId2))=") + c.text(resId2) + QStringLiteral(" ") +
               QStringLiteral(" And LTrim(RTrim(UserId)) != ") + c.text(user) +
               QStringLiteral(" ") + QStringLiteral(" Group By UserId ") +
               QStringLiteral(" Order By UserId "));
    return !query.IsEmpty();
}

void hold(tr::db::MyDatabase& db, const QString& program, const QString& kind,
          const QString& resId1, const QString& resId2, const QString& user) {
    tr::db::Connection& c = *db.Connection;
    tr::db::execute(
        db, QStringLiteral("Insert Into ReserveId(UserId, ProgNam, WhatDoc, ResId1, ResId2) ") +
                QStringLiteral("Select ") + c.text(user) + QStringLiteral(", ") + c.text(program) +
                QStringLiteral(", ") + c.text(kind) + QStringLiteral(", ") + c.text(resId1) +
                QStringLiteral(", ") + c.text(resId2));
}

void releaseAllHolds(tr::db::MyDatabase& db, const QString& program, const QString& kind,
                     const QString& user) {
    tr::db::Connection& c = *db.Connection;
    tr::db::execute(db, QStringLiteral("Delete From ReserveId Where ProgNam=") + c.text(program) +
                            QStringLiteral(" ") + QStringLiteral(" And LTrim(WhatDoc)=") +
                            c.text(kind) + QStringLiteral(" ") +
                            QStringLiteral(" And LTrim(UserId)=") + c.text(user) +
                            QStringLiteral(" "));
}

void releaseHold(tr::db::MyDatabase& db, const QString& program, const QString& kind,
                 const QString& resId1, const QString& resId2, const QString& user) {
    tr::db::Connection& c = *db.Connection;
    tr::db::execute(
        db, QStringLiteral("Delete From ReserveId Where ") + QStringLiteral("LTrim(ProgNam)=") +
                c.text(program) + QStringLiteral(" ") + QStringLiteral(" And LTrim(WhatDoc)=") +
                c.text(kind) + QStringLiteral(" ") + QStringLiteral(" And LTrim(ResId1)=") +
                c.text(resId1) + QStringLiteral(" ") + QStringLiteral(" And LTrim(ResId2)=") +
                c.text(resId2) + QStringLiteral(" ") +
                QStringLiteral(" And Ltrim(Rtrim(UserId)) = ") + c.text(user));
}

namespace {

// Hold changes run as one write transaction, so no other user sees or takes a serial between
// the check and the hold. A hold is worth nothing after a crash (the screen that held it is
// gone too), so its commit waits for the next flushed commit instead of flushing the disk.
template <typename Work>
auto inHoldTransaction(tr::db::MyDatabase& db, const tr::db::WriteTurn& turn, Work&& work) {
    tr::db::Transaction transaction(*db.Connection, turn);
    if constexpr (std::is_void_v<decltype(work())>) {
        work();
        transaction.commit(tr::db::Transaction::Durability::Delayed);
    } else {
        auto answer = work();
        transaction.commit(tr::db::Transaction::Durability::Delayed);
        return answer;
    }
}

}  // namespace

tr::db::WriteTurn holdsTurn(const QString& kind) {
    return tr::db::WriteTurn::of(QStringLiteral("holds ") + kind.trimmed());
}

bool holdOpenedDocument(tr::db::MyDatabase& db, const QString& kind, const QString& serial,
                        const QString& user) {
    return inHoldTransaction(db, holdsTurn(kind), [&] {
        releaseAllHolds(db, kTreasuryProgram, kind, user);
        if (heldByAnotherUser(*db.Connection, kTreasuryProgram, kind, QString(), serial, user))
            return false;
        hold(db, kTreasuryProgram, kind, QString(), serial, user);
        return true;
    });
}

QString takeNewSerial(tr::db::MyDatabase& db, const QString& kind, const QString& user) {
    // The write lock is taken at "Begin Tran", before the maxima are read: another user's
    // take waits until this hold is committed and then skips past it.
    return inHoldTransaction(db, holdsTurn(kind), [&] {
        releaseAllHolds(db, kTreasuryProgram, kind, user);
        const QString serial = nextSerial(*db.Connection, kind);
        hold(db, kTreasuryProgram, kind, QString(), serial, user);
        return serial;
    });
}

void releaseScreenHolds(tr::db::MyDatabase& db, const QString& kind, const QString& user) {
    tr::db::Connection& c = *db.Connection;
    // Only the user's own holds go: nobody waits for that.
    inHoldTransaction(db, tr::db::WriteTurn::ownRows(), [&] {
        releaseAllHolds(db, kTreasuryProgram, kind, user);
        tr::db::execute(db, QStringLiteral(" Delete From N_reserveid Where Whatdoc=") +
                                c.text(kind) + QStringLiteral(" And Userid=") + c.text(user));
    });
}

}  // namespace tr::vouchers
