#include "cheques/cheque_action_list.h"

#include <QRegularExpression>

#include "common/db/database_error.h"
#include "common/db/query_helpers.h"
#include "common/db/transaction.h"
#include "common/persian/persian_date.h"
#include "instruments/cheque_actions.h"
#include "instruments/cheque_work_tables.h"

namespace tr::cheques {

namespace {

using tr::db::firstColumn;
using tr::db::openQuery;
using tr::instruments::chequeActions;

bool wellFormedDate(const QString& date) {
    static const QRegularExpression shape(QStringLiteral("^\\d{4}/\\d{2}/\\d{2}$"));
    return shape.match(date).hasMatch();
}

}  // namespace

const QStringList& accountLevels() {
    static const QStringList levels = {QStringLiteral("Koll"), QStringLiteral("Moein"),
                                       QStringLiteral("Tafsily"), QStringLiteral("Tafsily2"),
                                       QStringLiteral("ProjectCod")};
    return levels;
}

QString accountColumns(const QString& prefix) {
    QStringList out;
    for (const QString& level : accountLevels()) out << prefix + level;
    return out.join(QStringLiteral(", "));
}

const QString ChequeActionList::kWaitText = QStringLiteral("لطفا صبر کنيد");

ChequeActionList::ChequeActionList(const tr::Services& services, const ActionListSide& side)
    : side_(side),
      services_(services),
      messages_(services.dialog),
      table_(*services.database, side.tableStem + services.global->sessionText),
      split_(*services.database,
             side.tableStem + QStringLiteral("T") + services.global->sessionText),
      rows_(services.database->Connection) {}

ChequeActionList::~ChequeActionList() = default;

void ChequeActionList::setServices(const tr::Services& services) {
    services_ = services;
    messages_.setDialog(services.dialog);
}

QString ChequeActionList::field(const char* name) const {
    const int column = rows_.fieldIndex(QString::fromLatin1(name));
    return column < 0 || rows_.IsEmpty()
               ? QString()
               : rows_.value(rows_.RecNo() - 1, column).toString().trimmed();
}

void ChequeActionList::setField(const char* name, const QVariant& value) {
    if (rows_.state() == tr::db::Query::State::Browse) rows_.Edit();
    rows_.FieldByName(QString::fromLatin1(name)).SetValue(value);
}

bool ChequeActionList::refuse(const QString& message) {
    messages_.show(message, QStringLiteral("1ER"));
    return false;
}

QString ChequeActionList::chosenKind() const {
    return chequeActions().kindOf(field("WhatDocNam"), side_.side).value_or(QString());
}

void ChequeActionList::fill() {
    tr::db::Connection& c = connection();
    for (const auto& [table, columns] :
         {std::pair{table_.name(), side_.columns},
          std::pair{split_.name(), tr::instruments::returnSplitWorkTableColumns()}}) {
        if (tr::db::objectExistsInTempdb(c, table))
            c.execute(QStringLiteral("Drop Table ") + table);
        c.execute(QStringLiteral("Create Table ") + table + QStringLiteral(" (") + columns +
                  QStringLiteral(")"));
    }
    listCheques();
    fillStanding();
    rows_.setSql(QStringLiteral("Select * From ") + table_.name() +
                 QStringLiteral(" Order By sOrder"));
    rows_.Open();
}

QString ChequeActionList::standingSets(const QString& from) const {
    QStringList out;
    for (const QString& level : accountLevels())
        out << QStringLiteral("R.") + side_.standing + level + QStringLiteral(" = ") +
                   (from.isEmpty() ? QStringLiteral("''")
                                   : QStringLiteral("IsNull(LTrim(RTrim(%1.%2)), '')").arg(from, level));
    return out.join(QStringLiteral(", "));
}

QStringList ChequeActionList::accountsWhere(const QString& sql) const {
    const tr::db::Query q = openQuery(connection(), sql);
    if (q.IsEmpty()) return {};
    QStringList out;
    for (int k = 0; k < accountLevels().size(); ++k) out << q.value(0, k).toString().trimmed();
    return out;
}

void ChequeActionList::setAccounts(const QString& prefix, const QStringList& accounts) {
    for (int k = 0; k < accountLevels().size(); ++k) {
        const QByteArray column = (prefix + accountLevels()[k]).toLatin1();
        setField(column.constData(), accounts.value(k));
    }
}

QStringList ChequeActionList::standingAccounts() const {
    QStringList out;
    for (const QString& level : accountLevels())
        out << field((side_.standing + level).toLatin1().constData());
    return out;
}

QStringList ChequeActionList::dropDownNames() const {
    return QStringList{QString()} + chequeActions().names(side_.side);
}

QStringList ChequeActionList::menu() const {
    if (rows_.IsEmpty()) return {};
    return chequeActions().menu(field("LastWhatDoc"), facts());
}

void ChequeActionList::spaceOnAction() {
    if (rows_.IsEmpty()) return;
    chooseAction(chequeActions().step(field("LastWhatDoc"), facts(), field("WhatDocNam")));
}

bool ChequeActionList::chooseAction(const QString& name) {
    if (rows_.IsEmpty()) return false;
    if (!name.isEmpty() && !chequeActions().allows(field("LastWhatDoc"), facts(), name)) {
        setField("WhatDocNam", QString());
        rows_.Post();
        return refuse(QStringLiteral("عمليات ") + name + QStringLiteral(" براي چك در وضعيت ") +
                      field("LastWhatDocNam") + QStringLiteral(" مجاز نيست."));
    }
    setField("WhatDocNam", name);
    // No action, no date: the row goes back to how the list showed it.
    if (name.isEmpty()) setField("ActionDate", QString());
    if (!name.isEmpty()) fillAccounts(chequeActions().kindOf(name, side_.side).value_or(QString()));
    if (!name.isEmpty() && field("ActionDate").isEmpty())
        setField("ActionDate", tr::persian::defaultDocumentDate(services_.global->fiscalStart,
                                                                services_.global->fiscalEnd));
    rows_.Post();
    return true;
}

bool ChequeActionList::setActionDate(const QString& typed) {
    if (rows_.IsEmpty()) return false;
    const QString date = tr::persian::latinDigits(typed.trimmed());
    if (!wellFormedDate(date)) return refuse(QStringLiteral("تاريخ وارد شده اشکال دارد"));
    if (date < services_.global->fiscalStart || date > services_.global->fiscalEnd)
        return refuse(QStringLiteral("تاريخ بايد در بازه سال مالي باشد !"));
    const QString last = field("LastActionDate");
    if (date < last) {
        return refuse(QStringLiteral("تاريخ عمليات ") + date + QStringLiteral(" نبايد كوچکتر از ") +
                      last + QStringLiteral(" باشد"));
    }
    const QString own = dateRefusal(chosenKind(), date);
    if (!own.isEmpty()) return refuse(own);
    setField("ActionDate", date);
    rows_.Post();
    return true;
}

QList<QPair<qint64, QString>> ChequeActionList::bankAccounts() const {
    const tr::db::Query q = openQuery(
        connection(), QStringLiteral("Select H.AcountID, IsNull(B.BankNam, '') + ' - ' + "
                                     "H.AcountCod From N_BankHesab As H Left Join N_Bank As B On "
                                     "(B.BankCod = H.BankCod) Order By H.AcountID"));
    QList<QPair<qint64, QString>> out;
    for (int i = 0; i < q.RecordCount(); ++i)
        out.append({q.value(i, 0).toLongLong(), q.value(i, 1).toString().trimmed()});
    return out;
}

QList<QPair<QString, QString>> ChequeActionList::stateNames() const {
    const tr::db::Query q =
        openQuery(connection(), QStringLiteral("Select WhatDoc, NDocNam From N_AsnadNaghd Where "
                                               "WhatDoc Like ") +
                                    connection().text(side_.statesLike) +
                                    QStringLiteral(" Order By WhatDoc"));
    QList<QPair<QString, QString>> out;
    for (int i = 0; i < q.RecordCount(); ++i)
        out.append({q.value(i, 0).toString().trimmed(), q.value(i, 1).toString().trimmed()});
    return out;
}

QList<QStringList> ChequeActionList::history(const QString& number, const QString& series) const {
    tr::db::Connection& c = connection();
    const QString cheque = QStringLiteral(" L.ChqNo = ") + c.text(number.trimmed()) +
                           QStringLiteral(" And IsNull(L.Joz, '') = ") + c.text(series.trimmed());
    const tr::db::Query q = openQuery(
        c, QStringLiteral(
               "Select L.WhatDoc, K.NDocNam, L.SanadDate, (Select Max(A.SanadNo) From Asnad As A "
               "Where A.TypeSys = 'N' And A.WhatDoc = L.WhatDoc And A.AtfCh = L.ChqNo And "
               "A.Document = L.CodWhatDoc) From N_ChqLastTrans As L Left Join N_AsnadNaghd As K On "
               "(K.WhatDoc = L.WhatDoc) Where") +
               cheque + QStringLiteral(" Order By L.IDX"));
    QStringList kinds;
    for (int i = 0; i < q.RecordCount(); ++i) kinds << q.value(i, 0).toString().trimmed();
    const bool spentAndBack = kinds.contains(QStringLiteral("71")) &&
                              kinds.contains(QStringLiteral("81")) &&
                              kinds.contains(QStringLiteral("88"));
    QList<QStringList> out;
    for (int i = 0; i < q.RecordCount(); ++i) {
        const QString name = spentAndBack && kinds[i] == QLatin1String("88")
                                 ? QStringLiteral("برگشت از خرج چك")
                                 : q.value(i, 1).toString().trimmed();
        const QVariant voucher = q.value(i, 3);
        out.append({name, q.value(i, 2).toString().trimmed(),
                    voucher.isNull() ? QString() : voucher.toString()});
    }
    return out;
}

void ChequeActionList::showHistory() {
    if (rows_.IsEmpty() || !services_.pickList) return;
    const QString number = field("ChqNo");
    const QList<QStringList> rows = history(number, field("Joz"));
    tr::db::Connection& c = connection();
    tr::db::ScopedTempTable list(*services_.database,
                                 QStringLiteral("##ChqHist") + services_.global->sessionText);
    if (tr::db::objectExistsInTempdb(c, list.name()))
        c.execute(QStringLiteral("Drop Table ") + list.name());
    c.execute(QStringLiteral("Create Table ") + list.name() +
              QStringLiteral(
                  " (Raj Int, ActName NVarchar(100), ActDate Varchar(10), SanadNo Varchar(20))"));
    int raj = 0;
    for (const QStringList& r : rows) {
        c.execute(QStringLiteral("Insert Into ") + list.name() + QStringLiteral(" Values (") +
                  tr::db::sqlNumber(++raj) + QStringLiteral(", ") + c.text(r[0]) +
                  QStringLiteral(", ") + c.text(r[1]) + QStringLiteral(", ") + c.text(r[2]) +
                  QStringLiteral(")"));
    }
    services_.pickList->pick(
        QStringLiteral("گردش چک ") + number,
        QStringLiteral("Select * From ") + list.name() + QStringLiteral(" Order By Raj"),
        {{QStringLiteral("ActName"), QStringLiteral("عمليات"), 180},
         {QStringLiteral("ActDate"), QStringLiteral("تاريخ"), 90},
         {QStringLiteral("SanadNo"), QStringLiteral("شماره سند"), 80}},
        0);
    list.drop();
}

bool ChequeActionList::apply() {
    tr::db::Connection& c = connection();
    const tr::db::Query chosen = openQuery(
        c, QStringLiteral("Select ChqNo, Joz, WhatDocNam, ActionDate, SarResidDate From ") +
               table_.name() +
               QStringLiteral(" Where LTrim(RTrim(IsNull(WhatDocNam, ''))) <> '' Order By sOrder"));
    if (chosen.IsEmpty()) return false;
    // 1. The tab's due-date rules.
    for (int i = 0; i < chosen.RecordCount(); ++i) {
        const QString kind = chequeActions()
                                 .kindOf(chosen.value(i, 2).toString().trimmed(), side_.side)
                                 .value_or(QString());
        const QString refusal = applyRefusal(kind, chosen.value(i, 0).toString().trimmed(),
                                             chosen.value(i, 3).toString().trimmed(),
                                             chosen.value(i, 4).toString().trimmed());
        if (!refusal.isEmpty()) return refuse(refusal);
    }
    // 2. The tab's question.
    QStringList alsoRun;
    if (!confirmApply(chosen, alsoRun)) return false;
    // 3. One call for the whole list, with what the question agreed to, in one transaction.
    if (services_.progress) services_.progress->showState(kWaitText);
    try {
        tr::db::Transaction transaction(c);
        for (const QString& sql : alsoRun) c.execute(sql);
        c.execute(
            QStringLiteral("Exec ") + side_.procedure + QLatin1Char(' ') + c.text(table_.name()) +
            QStringLiteral(", ") + c.text(services_.global->userName) + QStringLiteral(", ") +
            c.text(services_.global->fiscalStart) + QStringLiteral(", ") +
            c.text(services_.global->fiscalEnd) + QStringLiteral(", ") + c.text(split_.name()));
        transaction.commit();
    } catch (const tr::db::DatabaseError& e) {
        if (services_.progress) services_.progress->closeState();
        return refuse(e.message());
    }
    if (services_.progress) services_.progress->closeState();
    // 4. The list as the book now has it.
    fill();
    return true;
}

}  // namespace tr::cheques
