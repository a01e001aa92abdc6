#pragma once
// The host's pick-list and progress windows as the core logic sees them: the host SDK's
// TTempGridForm and TShowStateForm implement these, and tests answer them without a display.
#include <QList>
#include <QString>
#include <QVariantMap>
#include <optional>

namespace tr::dialog {

struct PickColumn {
    QString field;    // a column of the statement's result
    QString caption;  // the list's column title
    int width = 0;    // pixels; 0 for the default
};

class PickList {
public:
    virtual ~PickList() = default;
    // Shows the rows of `sql` (usually over a ## table) and answers the chosen row's fields by
    // name, or nothing when the user cancels.
    virtual std::optional<QVariantMap> pick(const QString& title, const QString& sql,
                                            const QList<PickColumn>& columns, int browseKind) = 0;
};

class ProgressWindow {
public:
    virtual ~ProgressWindow() = default;
    virtual void showState(const QString& text) = 0;
    virtual void setStateText(const QString& text) = 0;
    // Long work polls this between steps; the window's stop button sets it.
    virtual bool stopRequested() = 0;
    virtual void closeState() = 0;
};

}  // namespace tr::dialog
