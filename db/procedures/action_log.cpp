#include "db/procedures/action_log.h"

#include <QRegularExpression>

#include "common/db/database_error.h"

namespace tr::procedures {

namespace {

enum Position {
    kVoucherNo,
    kTypeSys,
    kTitle,
    kDate,
    kUser,
    kActType,
    kTime,
    kComputer,
    kWhatDoc,
    kUnused1,
    kUnused2,
    kSerial,
    kArgumentCount
};

}  // namespace

tr::db::ExecResult logDocumentAction(tr::db::Connection& connection, const Args& args) {
    if (args.size() != kArgumentCount) {
        throw tr::db::DatabaseError(QStringLiteral("sp_Asnad_Actions expects %1 arguments, got %2")
                                        .arg(kArgumentCount)
                                        .arg(args.size()));
    }
    const auto arg = [&](int i) { return args[i].toString().trimmed(); };
    const QString actType = arg(kActType).toUpper();
    if (actType != QLatin1String("I") && actType != QLatin1String("E") &&
        actType != QLatin1String("D")) {
        throw tr::db::DatabaseError(
            QStringLiteral("sp_Asnad_Actions: action '%1' is not I, E or D").arg(arg(kActType)));
    }
    // REC is numeric: it keeps the document's serial, so a log row leads back to its document
    // (the kind is known from TypeDoc); a serial that is not a number is logged without it.
    static const QRegularExpression digits(QStringLiteral("^[0-9]{1,9}$"));
    const QString serial = arg(kSerial);
    const QString rec = digits.match(serial).hasMatch() ? tr::db::sqlNumber(serial.toLongLong())
                                                        : QStringLiteral("Null");
    const QString c = QStringLiteral(", ");
    return connection.execute(
        QStringLiteral("Insert Into ASNADACTIONS (TypeSys, TypeDoc, ActDate, ActUser, ActType, "
                       "DocNo, ActTime, REC, ComputerName) Values (") +
        connection.text(arg(kTypeSys)) + c + connection.text(arg(kTitle)) + c +
        connection.text(arg(kDate)) + c + connection.text(arg(kUser)) + c +
        connection.text(actType) + c + connection.text(arg(kVoucherNo)) + c +
        connection.text(arg(kTime)) + c + rec + c + connection.text(arg(kComputer)) +
        QStringLiteral(")"));
}

}  // namespace tr::procedures
