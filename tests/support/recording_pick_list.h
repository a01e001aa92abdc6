#pragma once
// A pick list without a window: it runs the statement it is given (so a test sees the rows the
// user would have seen, before the caller drops its ## table), records the call and answers a
// scripted row, or nothing (the user cancelled) when no answer is queued.
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <deque>
#include <optional>

#include "common/db/connection.h"
#include "common/dialog/host_windows.h"

namespace tr::test {

class RecordingPickList : public tr::dialog::PickList {
  public:
    struct Shown {
        QString title;
        QString sql;
        QList<tr::dialog::PickColumn> columns;
        int browseKind = 0;
        QList<QVariantMap> rows;  // every field of every row, by name
    };

    explicit RecordingPickList(tr::db::Connection* connection = nullptr)
        : connection_(connection) {}
    void setConnection(tr::db::Connection* connection) { connection_ = connection; }

    // The next pick chooses this row (0-based); a row past the end answers nothing.
    void chooseRow(int row) { answers_.push_back({row, {}, {}}); }
    // The next pick chooses the first row whose `field` equals `value` (both trimmed).
    void chooseWhere(const QString& field, const QString& value) {
        answers_.push_back({-1, field, value});
    }
    void cancel() { answers_.push_back({-1, {}, {}}); }

    const QList<Shown>& shown() const { return shown_; }
    const Shown& last() const { return shown_.last(); }
    // One field over the rows of the last list shown.
    QStringList lastColumn(const QString& field) const;

    std::optional<QVariantMap> pick(const QString& title, const QString& sql,
                                    const QList<tr::dialog::PickColumn>& columns,
                                    int browseKind) override;

  private:
    struct Answer {
        int row;
        QString field, value;
    };
    tr::db::Connection* connection_;
    std::deque<Answer> answers_;
    QList<Shown> shown_;
};

}  // namespace tr::test
