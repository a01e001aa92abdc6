#include "cashbank/search/document_search.h"

#include <QSaveFile>

#include "common/db/query_helpers.h"
#include "common/db/scoped_temp_table.h"
#include "common/db/sql_literal.h"
#include "common/text/csv.h"
#include "common/text/xlsx.h"
#include "common/text/single_line_text.h"
#include "common/persian/amount.h"

namespace tr::cashbank {

const QString DocumentSearch::kReplaceQuestion =
    QStringLiteral("کلمات شرح در تمام رديفهاي اسناد يافت شده با کلمات جايگزين عوض شوند؟");
const QString DocumentSearch::kNoReplacementMessage = QStringLiteral("کلمه جايگزين وارد نشده است.");
const QString DocumentSearch::kNoDocumentMessage =
    QStringLiteral("اين رديف سندي ندارد که از اينجا باز شود.");

namespace {

QString kindAlternative(const QStringList& kinds, tr::db::Connection& c) {
    QStringList quoted;
    for (const QString& k : kinds) quoted << c.text(k);
    const QString kind =
        quoted.size() == 1 ? QStringLiteral("(A.WhatDoc = ") + quoted.front() + QStringLiteral(")")
                           : QStringLiteral("(A.WhatDoc In (") + quoted.join(QStringLiteral(", ")) +
                                 QStringLiteral("))");
    return QStringLiteral("(") + kind + QStringLiteral(" And (A.DocToDate = '0'))");
}

}  // namespace

DocumentSearch::DocumentSearch(const tr::Services& services, SearchFamily family)
    : services_(services), family_(searchFamily(family)) {
    table_.setServices(services);
}

DocumentSearch::~DocumentSearch() { result_.Close(); }

QString DocumentSearch::kindsGroup() const {
    QStringList alternatives;
    if (filters_.receipts && !family_.receiptKinds.isEmpty())
        alternatives << kindAlternative(family_.receiptKinds, connection());
    if (filters_.payments && !family_.paymentKinds.isEmpty())
        alternatives << kindAlternative(family_.paymentKinds, connection());
    if (filters_.cancellations) alternatives << QStringLiteral("(A.DocToDate = '1')");
    if (alternatives.isEmpty()) return QStringLiteral("And (0 = 1) ");
    return QStringLiteral("And (") + alternatives.join(QStringLiteral(" Or ")) +
           QStringLiteral(") ");
}

QString DocumentSearch::wordsCondition() const {
    return tr::search::wordsCondition(connection(), QStringLiteral("A.Des"), filters_.words,
                                      filters_.joins);
}

QString DocumentSearch::condition() const {
    QString c;
    const QString from = filters_.fromDate.text(), to = filters_.toDate.text();
    if (!from.isEmpty())
        c += QStringLiteral("And (A.SanadDate >= ") + text(from) + QStringLiteral(") ");
    if (!to.isEmpty())
        c += QStringLiteral("And (A.SanadDate <= ") + text(to) + QStringLiteral(") ");
    const QString fromCode = filters_.fromCode.trimmed(), toCode = filters_.toCode.trimmed();
    if (!fromCode.isEmpty())
        c += QStringLiteral("And (NT.CodWhatDoc >= ") + text(fromCode) + QStringLiteral(") ");
    if (!toCode.isEmpty())
        c += QStringLiteral("And (NT.CodWhatDoc <= ") + text(toCode) + QStringLiteral(") ");
    if (filters_.fromSerial)
        c += QStringLiteral("And (NT.Serial >= ") + tr::db::sqlNumber(*filters_.fromSerial) +
             QStringLiteral(") ");
    if (filters_.toSerial)
        c += QStringLiteral("And (NT.Serial <= ") + tr::db::sqlNumber(*filters_.toSerial) +
             QStringLiteral(") ");
    const tr::persian::AmountReading fromAmount = tr::persian::readAmount(filters_.fromAmount);
    const tr::persian::AmountReading toAmount = tr::persian::readAmount(filters_.toAmount);
    if (fromAmount.ok() && !fromAmount.empty)
        c += QStringLiteral("And ((A.Bes + A.Bed) >= ") + tr::db::sqlNumber(fromAmount.value) +
             QStringLiteral(") ");
    if (toAmount.ok() && !toAmount.empty)
        c += QStringLiteral("And ((A.Bes + A.Bed) <= ") + tr::db::sqlNumber(toAmount.value) +
             QStringLiteral(") ");
    c += wordsCondition();
    c += kindsGroup();
    return c;
}

QString DocumentSearch::selectStatement() const {
    QString select = QStringLiteral("Select ") + family_.accountColumns +
                     QStringLiteral(
                         ", NA.NDocNam, NT.Serial, NT.Joz, A.Atfch, A.SanadDate, A.Des, "
                         "(A.Bes + A.Bed) As SValue, A.WhatDoc, A.DocToDate, ") +
                     family_.signRule;
    if (family_.remitterColumns) select += QStringLiteral(", NT.Des1, NT.Des2, NT.Des3, NT.Des4");
    return select +
           QStringLiteral(
               " From N_NaghdTrans As NT Inner Join Asnad As A On (Cast(NT.Idx As "
               "Varchar(50)) = LTrim(A.Document))") +
           family_.accountJoin +
           QStringLiteral(
               " Inner Join N_AsnadNaghd As NA On (NT.WhatDoc = NA.WhatDoc) Where "
               "(A.WhatDoc In ") +
           family_.kindList + QStringLiteral(") And (NT.WhatDoc = NT.WhatDoc2)") +
           family_.extraWhere + QStringLiteral(" ") + condition() +
           QStringLiteral("Order By SanadDate, Serial");
}

QStringList DocumentSearch::resultFields() const {
    QStringList fields = {"CashCod",   "CashNam",   "NDocNam", "Serial", "Joz",
                          "CashNo",    "SanadDate", "Des",     "SValue", "WhatDoc",
                          "DocToDate", "Sign",      "sOrder",  "IDX"};
    if (family_.remitterColumns)
        fields << "Des1"
               << "Des2"
               << "Des3"
               << "Des4";
    return fields;
}

QString DocumentSearch::fieldCaption(const QString& field) const {
    if (field == QLatin1String("CashCod")) return family_.codeCaption;
    if (field == QLatin1String("CashNam")) return family_.nameCaption;
    if (field == QLatin1String("NDocNam")) return QStringLiteral("نوع مدرك");
    if (field == QLatin1String("SanadDate")) return QStringLiteral("تاريخ");
    if (field == QLatin1String("Des")) return QStringLiteral("شرح");
    if (field == QLatin1String("SValue")) return QStringLiteral("مبلغ");
    if (field == QLatin1String("Serial")) return QStringLiteral("سريال");
    if (field == QLatin1String("CashNo")) return QStringLiteral("شماره");
    if (field == QLatin1String("Joz")) return QStringLiteral("جزء");
    if (field == QLatin1String("Des1")) return QStringLiteral("حواله");
    if (field == QLatin1String("Des2")) return QStringLiteral("بانك حواله كننده");
    if (field == QLatin1String("Des3")) return QStringLiteral("كد شعبه");
    if (field == QLatin1String("Des4")) return QStringLiteral("نام شعبه");
    return {};
}

void DocumentSearch::run(const QString& statement) {
    tr::db::execute(*services_.database, statement);
}

void DocumentSearch::prepareTable() {
    QString columns = QStringLiteral(
        "CashCod Varchar(50) Null, CashNam NVarchar(200) Null, NDocNam NVarchar(100) Null, "
        "Serial Int Null, Joz Varchar(10) Null, CashNo Varchar(20) Null, SanadDate Varchar(10) "
        "Null, Des NVarchar(250) Null, SValue Float Null, WhatDoc Varchar(2) Null, DocToDate "
        "Varchar(10) Null, Sign Int Null, sOrder Varchar(1) Not Null Default '', IDX Int "
        "Identity(1,1)");
    if (family_.remitterColumns)
        columns += QStringLiteral(
            ", Des1 NVarchar(200) Null, Des2 NVarchar(200) Null, Des3 "
            "NVarchar(200) Null, Des4 NVarchar(200) Null");
    table_.begin(columns);
}

bool DocumentSearch::shouldStop() { return table_.shouldStop(); }

void DocumentSearch::finishStopped() {
    stopped_ = true;
    table_.finishStopped(result_);
}

bool DocumentSearch::checkWords() {
    // The words go into Like patterns and Replace, whose result lands in Asnad.Des.
    const tr::text::LineField words{QStringLiteral("شرح"), 200, false};
    for (int i = 0; i < 3; ++i) {
        for (QString* box : {&filters_.words[i], &filters_.replacements[i]}) {
            *box = tr::text::joinLines(*box);
            const QString refusal = tr::text::lineRefusal(words, *box);
            if (refusal.isEmpty()) continue;
            tr::dialog::Messages(services_.dialog).show(refusal, QStringLiteral("1ER"));
            return false;
        }
    }
    return true;
}

bool DocumentSearch::amountsRead() const {
    for (const QString* typed : {&filters_.fromAmount, &filters_.toAmount}) {
        const tr::persian::AmountReading reading = tr::persian::readAmount(*typed);
        if (reading.ok()) continue;
        tr::dialog::Messages(services_.dialog)
            .show(tr::persian::amountRefusal(reading, *typed), QStringLiteral("1ER"));
        return false;
    }
    return true;
}

bool DocumentSearch::datesRead() {
    dateFault_ = {};
    for (const auto& [filter, date] : {std::pair{DateFilter::From, &filters_.fromDate},
                                       std::pair{DateFilter::To, &filters_.toDate}}) {
        // A date not wholly typed is no filter at all.
        if (date->empty()) continue;
        const tr::persian::DatePart part =
            tr::persian::invalidDatePart(date->year, date->month, date->day);
        if (part == tr::persian::DatePart::None) continue;
        dateFault_ = {filter, part};
        tr::dialog::Messages(services_.dialog)
            .show(tr::persian::invalidDateMessage(date->text()), QStringLiteral("1ER"));
        return false;
    }
    return true;
}

bool DocumentSearch::mnuSearchClick() {
    if (!datesRead() || !amountsRead()) return false;
    stopped_ = false;
    if (!checkWords()) return false;
    result_.Close();
    table_.setServices(services_);
    prepareTable();
    if (shouldStop()) return finishStopped(), false;

    QString insert = QStringLiteral("Insert Into ") + table_.name() +
                     QStringLiteral(
                         " (CashCod, CashNam, NDocNam, Serial, Joz, CashNo, SanadDate, "
                         "Des, SValue, WhatDoc, DocToDate, Sign");
    if (family_.remitterColumns) insert += QStringLiteral(", Des1, Des2, Des3, Des4");
    run(insert + QStringLiteral(") ") + selectStatement());
    if (shouldStop()) return finishStopped(), false;

    if (table_.any(QStringLiteral("Sign <> 0"))) {
        run(QStringLiteral("Insert Into ") + table_.name() +
            QStringLiteral(
                " (CashNam, NDocNam, Des, SValue, Sign, sOrder) Select CashNam, NDocNam, ") +
            text(QStringLiteral("جمع ")) + QStringLiteral(" + NDocNam + ") +
            text(QStringLiteral(" : ")) +
            QStringLiteral(" + CashNam, Sum(SValue * Sign), 0, 'X' From ") + table_.name() +
            QStringLiteral(" Where Sign <> 0 Group By CashNam, NDocNam Order By CashNam, NDocNam"));
        if (shouldStop()) return finishStopped(), false;
        run(QStringLiteral("Insert Into ") + table_.name() +
            QStringLiteral(" (Des, SValue, Sign, sOrder) Select ") + text(kGrandTotal) +
            QStringLiteral(", Sum(SValue * Sign), 0, 'Y' From ") + table_.name() +
            QStringLiteral(" Where Sign <> 0"));
        if (shouldStop()) return finishStopped(), false;
    }
    table_.finish(result_);
    return true;
}

bool DocumentSearch::mnuReplaceClick() {
    if (!checkWords() || !datesRead()) return false;
    if (!amountsRead()) return false;
    tr::dialog::Messages messages(services_.dialog);
    QList<int> pairs;
    for (int i = 0; i < 3; ++i)
        if (!filters_.words[i].trimmed().isEmpty() && !filters_.replacements[i].isEmpty())
            pairs << i;
    if (pairs.isEmpty()) {
        messages.show(kNoReplacementMessage, QStringLiteral("1ER"));
        return false;
    }
    if (!messages.ask(kReplaceQuestion)) return false;
    // The vouchers found: the search's own join, so the code, serial and family restrictions
    // select exactly the documents the grid lists.
    const QString found =
        QStringLiteral(
            "Select A.SanadNo From Asnad As A Inner Join N_NaghdTrans As NT On "
            "(Cast(NT.Idx As Varchar(50)) = LTrim(A.Document)) Where (A.WhatDoc In ") +
        family_.kindList + QStringLiteral(") And (NT.WhatDoc = NT.WhatDoc2)") + family_.extraWhere +
        QStringLiteral(" ") + condition();
    for (int i : pairs) {
        run(QStringLiteral("Update Asnad Set Des = Replace(Des, ") +
            text(filters_.words[i].trimmed()) + QStringLiteral(",") +
            text(filters_.replacements[i]) +
            QStringLiteral(") Where (Des Is Not Null) And SanadNo In (") + found +
            QStringLiteral(")"));
    }
    mnuSearchClick();
    return true;
}

QString DocumentSearch::accountName(const QString& code) const {
    if (code.trimmed().isEmpty()) return {};
    const auto r = connection().execute(family_.nameLookup + text(code.trimmed()));
    if (r.resultSets.empty() || r.resultSets.front().rows.empty()) return {};
    return r.resultSets.front().rows.front().at(0).toString();
}

std::optional<DocumentSearch::ListedDocument> DocumentSearch::documentAt(int row) {
    if (!result_.Active() || row < 0 || row >= result_.RecordCount()) return std::nullopt;
    const auto field = [&](const char* name) {
        const int column = result_.fieldIndex(QString::fromLatin1(name));
        return column < 0 ? QString() : result_.value(row, column).toString().trimmed();
    };
    if (isTotalRow(field("sOrder")) || field("Serial").isEmpty()) return std::nullopt;
    return ListedDocument{field("WhatDoc"), field("Serial")};
}

bool DocumentSearch::openRow(int row) {
    const std::optional<ListedDocument> listed = documentAt(row);
    if (!listed) return false;
    const std::optional<bool> opened =
        openDocument ? openDocument(listed->kind, listed->serial) : std::nullopt;
    if (!opened) tr::dialog::Messages(services_.dialog).show(kNoDocumentMessage, QStringLiteral("1IR"));
    return opened.value_or(false);
}

DocumentSearch::ShownResult DocumentSearch::shownResult() {
    ShownResult shown;
    QList<int> columns;
    for (const QString& field : resultFields()) {
        const QString title = fieldCaption(field);
        const int column = result_.fieldIndex(field);
        if (title.isEmpty() || column < 0) continue;
        columns << column;
        shown.titles << title;
    }
    const int order = result_.fieldIndex(QStringLiteral("sOrder"));
    for (int row = 0; result_.Active() && row < result_.RecordCount(); ++row) {
        QVariantList values;
        for (const int column : columns) values << result_.value(row, column);
        shown.rows << values;
        shown.totals << (order >= 0 && isTotalRow(result_.value(row, order).toString()));
    }
    return shown;
}

bool DocumentSearch::saveCsv(const QString& path) {
    const ShownResult shown = shownResult();
    QList<QStringList> rows;
    for (const QVariantList& values : shown.rows) {
        QStringList texts;
        for (const QVariant& v : values) {
            texts << (v.isNull() ? QString()
                      : v.typeId() == QMetaType::Double ? tr::db::sqlNumber(v.toDouble())
                                                         : v.toString().trimmed());
        }
        rows << texts;
    }
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(tr::text::csvFile(shown.titles, rows)) >= 0 && file.commit())
        return true;
    refuseFile(path, file.errorString());
    return false;
}

bool DocumentSearch::saveXlsx(const QString& path) {
    const ShownResult shown = shownResult();
    const QString fault =
        tr::text::writeXlsx(path, family_.caption, shown.titles, shown.rows, shown.totals);
    if (fault.isEmpty()) return true;
    refuseFile(path, fault);
    return false;
}

void DocumentSearch::refuseFile(const QString& path, const QString& reason) const {
    tr::dialog::Messages(services_.dialog)
        .show(QStringLiteral("فايل %1 ذخيره نشد: %2").arg(path, reason), QStringLiteral("1ER"));
}

}  // namespace tr::cashbank
