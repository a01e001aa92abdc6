#include "tests/support/recording_pick_list.h"

namespace tr::test {

QStringList RecordingPickList::lastColumn(const QString& field) const {
    QStringList values;
    if (shown_.isEmpty()) return values;
    for (const QVariantMap& row : shown_.last().rows) values << row.value(field).toString();
    return values;
}

std::optional<QVariantMap> RecordingPickList::pick(const QString& title, const QString& sql,
                                                   const QList<tr::dialog::PickColumn>& columns,
                                                   int browseKind) {
    Shown shown{title, sql, columns, browseKind, {}};
    if (connection_) {
        const tr::db::ExecResult result = connection_->execute(sql);
        if (!result.resultSets.empty()) {
            const tr::db::ResultSet& set = result.resultSets.back();
            for (const tr::db::Row& values : set.rows) {
                QVariantMap row;
                for (int i = 0; i < set.columns.size(); ++i) row.insert(set.columns[i], values[i]);
                shown.rows << row;
            }
        }
    }
    shown_ << shown;
    if (answers_.empty()) return std::nullopt;
    const Answer answer = answers_.front();
    answers_.pop_front();
    if (!answer.field.isEmpty()) {
        for (const QVariantMap& row : shown.rows) {
            if (row.value(answer.field).toString().trimmed() == answer.value.trimmed()) return row;
        }
        return std::nullopt;
    }
    if (answer.row < 0 || answer.row >= shown.rows.size()) return std::nullopt;
    return shown.rows.at(answer.row);
}

}  // namespace tr::test
