#include "vouchers/fix_des_screen.h"

#include "common/db/query_helpers.h"
#include "common/db/sql_literal.h"
#include "common/text/single_line_text.h"
#include "common/text/tsql_collation.h"
#include "vouchers/account_lookup.h"

namespace tr::vouchers {

using tr::db::Query;

namespace {

const QString kDescriptionField = QStringLiteral("FixDes");
const QString kErrorCode = QStringLiteral("1ER");

// The row's six values in grid order, codes trimmed.
QStringList rowValues(Query& row) {
    QStringList values;
    for (const QString& field : FixDesScreen::gridFields()) {
        values << row.FieldByName(field).AsString().trimmed();
    }
    return values;
}

bool sameValues(const QStringList& a, const QStringList& b) {
    if (a.size() != b.size()) return false;
    for (int i = 0; i < a.size(); ++i) {
        if (tr::text::tsqlCompare(a[i], b[i]) != 0) return false;
    }
    return true;
}

}  // namespace

const QString FixDesScreen::kCaption = QStringLiteral("ثبت شرح ثابت اسناد");
const QString FixDesScreen::kFormKey = QStringLiteral("N_A_FIXDES_");

FixDesScreen::FixDesScreen(const tr::Services& services) : services_(services) {
    grid_.BeforePost = [this](Query& row) { return beforePost(row); };
    grid_.AfterScroll = [this](Query& q) { rememberCurrentRow(q); };
    grid_.AfterPost = [this](Query& q) { rememberCurrentRow(q); };
}

FixDesScreen::~FixDesScreen() {
    grid_.BeforePost = nullptr;
    grid_.AfterScroll = nullptr;
    grid_.AfterPost = nullptr;
}

void FixDesScreen::setServices(const tr::Services& services) {
    services_ = services;
}

QStringList FixDesScreen::gridFields() {
    return {kDescriptionField,         QStringLiteral("Koll"),     QStringLiteral("Moein"),
            QStringLiteral("Tafsily"), QStringLiteral("Tafsily2"), QStringLiteral("ProjectCod")};
}

QString FixDesScreen::gridTitle(const QString& field) {
    if (field.compare(kDescriptionField, Qt::CaseInsensitive) == 0) return QStringLiteral("شرح");
    switch (accountLevelOfField(field)) {
        case AccountLevel::Koll:
            return QStringLiteral("کل");
        case AccountLevel::Moein:
            return QStringLiteral("معين");
        case AccountLevel::Tafsily:
            return QStringLiteral("تفصيلي");
        case AccountLevel::Tafsily2:
            return QStringLiteral("تفصيلي 2");
        case AccountLevel::Project:
            return QStringLiteral("ProjectCod");
        case AccountLevel::None:
            break;
    }
    return field;
}

void FixDesScreen::show() {
    grid_.setConnection(services_.database->Connection);
    grid_.setSql(QStringLiteral("Select ") + gridFields().join(QStringLiteral(", ")) +
                 QStringLiteral(" From FixDes"));
    grid_.Open();
}

void FixDesScreen::rememberCurrentRow(Query& query) {
    browsedValues_ =
        query.IsEmpty() || query.state() != Query::State::Browse ? QStringList() : rowValues(query);
}

bool FixDesScreen::isDuplicate(const LineAccount& line, const QString& description) {
    tr::db::Connection& c = services_.connection();
    const QStringList values{description,  line.koll,     line.moein,
                             line.tafsily, line.tafsily2, line.projectCod};
    // An edited row whose values came back to what was stored is the stored row itself.
    if (grid_.state() == Query::State::Edit && sameValues(values, browsedValues_)) return false;
    const QVariant count = tr::db::firstColumn(
        c, QStringLiteral("Select Count(*) As N From FixDes Where Koll = ") + c.text(line.koll) +
               QStringLiteral(" And Moein = ") + c.text(line.moein) +
               QStringLiteral(" And Tafsily = ") + c.text(line.tafsily) +
               QStringLiteral(" And Tafsily2 = ") + c.text(line.tafsily2) +
               QStringLiteral(" And ProjectCod = ") + c.text(line.projectCod) +
               QStringLiteral(" And FixDes = ") + c.text(description));
    return count.toLongLong() > 0;
}

bool FixDesScreen::beforePost(Query& row) {
    const tr::dialog::Messages messages(services_.dialog);
    refusedField_.clear();
    // A pasted description is one line, cut to its column (FixDes.FixDes, 200).
    const tr::text::LineField column{QStringLiteral("شرح"), 200, true};
    tr::db::Field typed = row.FieldByName(kDescriptionField);
    const QString description = tr::text::cleanLine(column, typed.AsString());
    if (!typed.IsNull() && description != typed.AsString()) typed.SetAsString(description);
    if (const QString refusal = tr::text::lineRefusal(column, description); !refusal.isEmpty()) {
        refusedField_ = kDescriptionField;
        messages.show(refusal, kErrorCode);
        return false;
    }
    if (description.trimmed().isEmpty()) {
        refusedField_ = kDescriptionField;
        messages.show(QStringLiteral("شرح خالي مي باشد"), kErrorCode);
        return false;
    }
    const LineAccount line = LineAccount::fromRow(row);
    if (isDuplicate(line, description)) {
        refusedField_ = kDescriptionField;
        messages.show(QStringLiteral("شرح تکراري مي باشد"), kErrorCode);
        return false;
    }
    const AccountCheck check = validateLineAccount(services_, line, LookupStyle::FixedDescriptions);
    if (!check.accepted()) {
        refusedField_ = accountField(check.failedLevel);
        return false;
    }
    // Stored codes are trimmed and never Null: a level without code is found by ''.
    for (AccountLevel level : {AccountLevel::Koll, AccountLevel::Moein, AccountLevel::Tafsily,
                               AccountLevel::Tafsily2, AccountLevel::Project}) {
        tr::db::Field field = row.FieldByName(accountField(level));
        if (field.IsNull() || field.AsString() != line.code(level))
            field.SetValue(line.code(level));
    }
    return true;
}

void FixDesScreen::appendRow() {
    if (grid_.Active()) grid_.Append();
}

bool FixDesScreen::deleteRow() {
    if (!grid_.Active() || (grid_.IsEmpty() && grid_.state() != Query::State::Insert)) return false;
    if (!tr::dialog::Messages(services_.dialog).ask(QStringLiteral("آيا حذف شود؟"))) return false;
    grid_.Delete();
    return true;
}

bool FixDesScreen::pickAccount(const QString& field) {
    const AccountLevel level = accountLevelOfField(field);
    if (level == AccountLevel::None || !grid_.Active()) return false;
    return AccountLookup(services_).pickInto(level, grid_);
}

bool FixDesScreen::showTurnover(const QString& field, QWidget* parent) {
    if (!grid_.Active() || (grid_.IsEmpty() && grid_.state() != Query::State::Insert)) return false;
    const QString filter = turnoverFilter(LineAccount::fromRow(grid_), accountLevelOfField(field));
    return showAccountReport(services_, parent, filter, AccountReportKind::Turnover);
}

QString FixDesScreen::reportTitle() const {
    return QStringLiteral("گزارش شرح ثابت اسناد دوره مالي[") + services_.global->sYear.trimmed() +
           QStringLiteral("]");
}

QString FixDesScreen::reportPropertiesCaption() {
    return QStringLiteral("مشخصات گزارش [شرح ثابت اسناد]");
}

QString FixDesScreen::reportHtml() {
    QString html = QStringLiteral("<html dir=\"rtl\"><body dir=\"rtl\"><h3 align=\"center\">") +
                   reportTitle().toHtmlEscaped() +
                   QStringLiteral(
                       "</h3><table dir=\"rtl\" width=\"100%\" border=\"1\" "
                       "cellspacing=\"0\" cellpadding=\"3\"><tr>");
    for (const QString& field : gridFields()) {
        html += QStringLiteral("<th>") + gridTitle(field).toHtmlEscaped() + QStringLiteral("</th>");
    }
    html += QStringLiteral("</tr>");
    if (grid_.Active()) {
        for (int r = 0; r < grid_.RecordCount(); ++r) {
            html += QStringLiteral("<tr>");
            for (const QString& field : gridFields()) {
                html += QStringLiteral("<td>") +
                        grid_.value(r, grid_.fieldIndex(field)).toString().toHtmlEscaped() +
                        QStringLiteral("</td>");
            }
            html += QStringLiteral("</tr>");
        }
    }
    return html + QStringLiteral("</table></body></html>");
}

}  // namespace tr::vouchers
