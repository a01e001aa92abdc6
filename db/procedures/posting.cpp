#include "db/procedures/posting.h"

#include <QRegularExpression>

#include "common/db/database_error.h"
#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "common/db/sql_literal.h"
#include "common/persian/amount.h"

namespace tr::procedures {

using tr::db::Connection;
using tr::db::DatabaseError;
using tr::db::sqlNumber;

void refuse(const QString& message) {
    throw DatabaseError(message);
}

QString literal(const Connection& c, const QVariant& value) {
    if (value.isNull() || !value.isValid()) return QStringLiteral("Null");
    switch (value.typeId()) {
        case QMetaType::Double:
        case QMetaType::Float:
            return sqlNumber(value.toDouble());
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::UInt:
        case QMetaType::ULongLong:
            return sqlNumber(value.toLongLong());
        default:
            return c.text(value.toString());
    }
}

QString trimmedText(const QVariant& value) {
    return value.isNull() ? QString() : value.toString().trimmed();
}

double round2(double value) {
    return tr::persian::roundAmount(value, 2);
}

QVariant Record::operator[](const char* column) const {
    const int i = set->fieldIndex(QString::fromLatin1(column));
    if (i < 0) throw DatabaseError(QStringLiteral("column %1 missing").arg(QLatin1String(column)));
    return set->value(row, i);
}

qint64 validSerial(const QString& text, const QString& title) {
    static const QRegularExpression digits(QStringLiteral("^[0-9]{1,9}$"));
    if (!digits.match(text).hasMatch()) refuse(QStringLiteral("سريال ") + title + QStringLiteral(" معتبر نيست."));
    return text.toLongLong();
}

QString validDate(const QString& text) {
    static const QRegularExpression shape(QStringLiteral("^[0-9]{4}/[0-9]{2}/[0-9]{2}$"));
    if (!shape.match(text).hasMatch()) refuse(QStringLiteral("تاريخ سند معتبر نيست."));
    return text;
}

QString validWorkTable(const QString& name, const QString& what) {
    static const QRegularExpression shape(QStringLiteral("^##[A-Za-z0-9_]+$"));
    if (!shape.match(name).hasMatch()) {
        throw DatabaseError(
            QStringLiteral("'%1' is not the name of %2 (## followed by letters, digits and _)")
                .arg(name, what));
    }
    return name;
}

qint64 newVoucherNumber(Connection& c) {
    return tr::db::firstColumn(c, QStringLiteral("Select dbo.sp_M_Asnad_GetMaxSanadNo() As SanadNo"))
        .toLongLong();
}

void numberVoucher(Connection& c, const QList<qint64>& lineRecs) {
    QStringList recs;
    for (const qint64 rec : lineRecs) recs << sqlNumber(rec);
    c.execute(QStringLiteral("Update Asnad Set SanadNo = ") + sqlNumber(newVoucherNumber(c)) +
              QStringLiteral(" Where Rec In (") + recs.join(QStringLiteral(", ")) +
              QStringLiteral(")"));
}

qint64 insertTreasuryRow(Connection& c, const TreasuryRow& r) {
    const QString sep = QStringLiteral(", ");
    return c
        .execute(QStringLiteral("Insert Into N_NaghdTrans (WhatDoc, Serial, Raj, CodWhatDoc, WhatDoc2, "
                                "CodWhatDoc2, NamWhatDoc2, Joz, ManabehCod, SanadDate, Des1, Des2, "
                                "Des3, Des4, Des5, Des6) Values (") +
                 c.text(r.whatDoc) + sep + sqlNumber(r.serial) + sep + sqlNumber(r.raj) + sep +
                 c.text(r.codWhatDoc) + sep + c.text(r.whatDoc2) + sep + c.text(r.codWhatDoc2) +
                 sep + literal(c, r.namWhatDoc2) + sep + literal(c, r.joz) + sep +
                 literal(c, r.manabehCod) + sep + c.text(r.date) + sep + literal(c, r.des1) + sep +
                 literal(c, r.des2) + sep + literal(c, r.des3) + sep + literal(c, r.des4) + sep +
                 literal(c, r.des5) + sep + literal(c, r.des6) + QStringLiteral(")"))
        .lastIdentity;
}

qint64 insertVoucherLine(Connection& c, const VoucherLine& l) {
    const QString sep = QStringLiteral(", ");
    return c.execute(QStringLiteral("Insert Into Asnad (TypeSys, WhatDoc, WhatDoc2, DocToDate, Document, "
                             "SanadNo, SanadDate, Raj, Koll, Moein, Tafsily, Tafsily2, ProjectCod, "
                             "Des, Bed, Bes, AtfCh, AtfDate, User_Name) Values ('N', ") +
              c.text(l.whatDoc) + sep + c.text(l.whatDoc2) + sep + c.text(l.docToDate) + sep +
              c.text(QString::number(l.document)) + sep + sqlNumber(l.voucherNo) + sep +
              c.text(l.date) + sep + sqlNumber(l.raj) + sep + c.text(l.koll) + sep +
              c.text(l.moein) + sep + c.text(l.tafsily) + sep + c.text(l.tafsily2) + sep +
              c.text(l.projectCod) + sep + c.text(l.des) + sep +
              sqlNumber(l.side == LedgerSide::Bed ? l.rials : 0.0) + sep +
              sqlNumber(l.side == LedgerSide::Bes ? l.rials : 0.0) + sep + c.text(l.atfCh) + sep +
              literal(c, l.atfDate) + sep + c.text(l.user) + QStringLiteral(")"))
        .lastIdentity;
}

void insertCurrencyRow(Connection& c, const CurrencyRow& r) {
    const QString sep = QStringLiteral(", ");
    c.execute(QStringLiteral("Insert Into N_ArzTrans (IDX, WhatDoc, Serial, Raj, ArzCod, ArzNam, "
                             "ArzCount, Nerkh, ArzCount2, ArzNam2, ArzCod2, Nerkh2, ArzUnitPrice, "
                             "ArzTotalPrice) Values (") +
              sqlNumber(r.idx) + sep + c.text(r.whatDoc) + sep + sqlNumber(r.serial) + sep +
              sqlNumber(r.raj) + sep + c.text(r.code) + sep + c.text(r.name) + sep +
              sqlNumber(r.count) + sep + sqlNumber(r.rate) + sep + literal(c, r.count2) + sep +
              literal(c, r.name2) + sep + literal(c, r.code2) + sep + literal(c, r.rate2) + sep +
              sqlNumber(r.unitPrice) + sep + sqlNumber(r.rials) + QStringLiteral(")"));
}

}  // namespace tr::procedures
