#include "vouchers/transfer_table.h"

#include <QStringList>

#include "common/db/query_helpers.h"

namespace tr::vouchers {

QString transferTableName(const QString& formKey, const QString& sessionText) {
    return tr::db::globalTempTableName(formKey + sessionText);
}

QString historyTableName(const QString& transferTable) {
    return transferTable + QStringLiteral("History");
}

QString createTransferTableStatement(const QString& name) {
    return QStringLiteral("Create Table ") + name +
           QStringLiteral(
               " (Raj Int, Koll Varchar(3), Moein Varchar(4), Tafsily Varchar(5), "
               "Tafsily2 Varchar(5), ProjectCod Varchar(10), Des NVarchar(200), Bed Float, "
               "Bes Float, WhatDoc2 Varchar(10), NamWhatDoc2 NVarchar(100), "
               "CodWhatDoc2 Varchar(50), ManabehCod Varchar(5), ArzCod Varchar(10), "
               "ArzNam NVarchar(50), ArzRate Float, ArzUnitPrice Float, ArzTotalPrice Float, "
               "ArzCount2 Float, ArzNam2 NVarchar(50), Joz Varchar(10), Des1 NVarchar(200), "
               "Des2 NVarchar(200), Des3 NVarchar(200), Des4 NVarchar(200), IDX Int)");
}

QString openTransferTableStatement(const QString& name) {
    return QStringLiteral("Select * From ") + name + QStringLiteral(" Order By Raj");
}

QString dropHistoryTableStatement(const tr::db::Connection& c, const QString& name) {
    return QStringLiteral("If Exists (Select * From Tempdb..SysObjects Where [Name] Like ") +
           c.text(name) + QStringLiteral(")Exec(") + c.text(QStringLiteral("Drop Table ") + name) +
           QStringLiteral(")");
}

void createTransferTable(tr::db::MyDatabase& db, const QString& name) {
    tr::db::execute(db, createTransferTableStatement(name));
}

void dropTransferTable(tr::db::MyDatabase& db, const QString& name) {
    tr::db::dropTempTable(db, name.startsWith(QLatin1String("##")) ? name.mid(2) : name);
}

QString actionWord(DocumentAction action) {
    switch (action) {
        case DocumentAction::Load:
            return QStringLiteral("DB->TRANS");
        case DocumentAction::Save:
            return QStringLiteral("TRANS->DB");
        case DocumentAction::Cancel:
            return QStringLiteral("ABTAL");
        case DocumentAction::UndoCancel:
            return QStringLiteral("RET_EBTAL");
        case DocumentAction::Delete:
            return QStringLiteral("DELETE");
    }
    return {};
}

QString procedureCall(const tr::db::Connection& c, const TreasuryDocumentKind& kind,
                      DocumentAction action, const ProcedureArguments& a, bool currencyDocument,
                      double rate, const QString& currency) {
    QStringList values{a.table, a.serial};
    switch (action) {
        case DocumentAction::Load:
        case DocumentAction::Delete:
            for (int i = 0; i < 7; ++i) values << QString();
            break;
        case DocumentAction::Save:
            values << a.treasuryCode << a.referenceNumber << a.date << a.description << a.userName
                   << a.formState << a.computerName;
            break;
        case DocumentAction::Cancel:
        case DocumentAction::UndoCancel:
            values << a.treasuryCode << QString() << QString() << a.date << QString() << a.userName
                   << a.computerName;
            break;
    }
    QStringList arguments;
    const bool twin = currencyDocument && kind.hasCurrencyTwin;
    if (twin) {
        // Loading does not know the rate yet; the twin takes 0 and ''.
        const bool load = action == DocumentAction::Load;
        arguments << tr::db::sqlNumber(load ? 0.0 : rate) << c.text(load ? QString() : currency);
    }
    arguments << c.text(actionWord(action));
    for (const QString& value : values) arguments << c.text(value);
    return QStringLiteral("Exec ") + (twin ? kind.currencyProcedure() : kind.procedure) +
           QStringLiteral(" ") + arguments.join(QStringLiteral(", "));
}

}  // namespace tr::vouchers
