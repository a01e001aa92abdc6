#pragma once
// Serials of treasury documents, numbered per kind, and the holds (ReserveId rows) by which a
// user's open document is kept from being handed out again. Taking a new serial and holding it
// happen in one write transaction, so two users never receive the same serial.
#include <QString>

#include "common/db/my_database.h"
#include "common/dialog/message_dialog.h"

namespace tr::vouchers {

// The program letter of this module in ReserveId.
inline const QString kTreasuryProgram = QStringLiteral("N");

// The next free serial of `kind`: past the highest saved serial and past the highest hold.
QString nextSerial(tr::db::Connection& connection, const QString& kind);

// False, after showing title + " با اين شماره ثبت شده است." ("1ER"), when `serial` is taken.
bool serialIsFree(tr::db::Connection& connection, const tr::dialog::Messages& messages,
                  const QString& kind, const QString& title, const QString& serial);
// The refusal text of serialIsFree; a procedure refusing a taken serial raises the same text.
QString serialTakenMessage(const QString& title);

// The four hold statements (program, kind, ResId1, ResId2, user number as text).
bool heldByAnotherUser(tr::db::Connection& connection, const QString& program, const QString& kind,
                       const QString& resId1, const QString& resId2, const QString& user);
void hold(tr::db::MyDatabase& db, const QString& program, const QString& kind,
          const QString& resId1, const QString& resId2, const QString& user);
void releaseAllHolds(tr::db::MyDatabase& db, const QString& program, const QString& kind,
                     const QString& user);
void releaseHold(tr::db::MyDatabase& db, const QString& program, const QString& kind,
                 const QString& resId1, const QString& resId2, const QString& user);

// The turn a change of a kind's holds takes: on a server it waits only for changes of the same
// kind's holds, not for saves (whose own check refuses a serial taken meanwhile).
tr::db::WriteTurn holdsTurn(const QString& kind);

// Each of the three below is one write transaction, committed without waiting for the disk.
// Opening a saved document: drops the user's other holds of the kind and holds `serial` unless
// another user holds it. Answers whether this user now holds it.
bool holdOpenedDocument(tr::db::MyDatabase& db, const QString& kind, const QString& serial,
                        const QString& user);
// A new document: in one transaction, drops the user's holds of the kind, takes the next serial
// and holds it. Answers the serial.
QString takeNewSerial(tr::db::MyDatabase& db, const QString& kind, const QString& user);
// A screen going away: every hold of the user for the kind, including the engine's N_reserveid.
void releaseScreenHolds(tr::db::MyDatabase& db, const QString& kind, const QString& user);

}  // namespace tr::vouchers
