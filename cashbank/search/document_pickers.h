#pragma once
// The document pickers of the cash and bank forms: the saved documents of one kind (one row per
// treasury-side line) are copied into a ## table, listed through the host's pick list ordered by
// date and serial, and the chosen row's serial is answered.
#include <QList>
#include <QString>
#include <optional>

#include "common/dialog/host_windows.h"
#include "common/session/services.h"

namespace tr::cashbank {

struct DocumentPicker {
    QString kind;  // WhatDoc: '10', '20', '40', '50', '60' or '90'
    QString title;
    QString columns;    // the select list
    QString fromWhere;  // joins and rows
    QList<tr::dialog::PickColumn> captions;
};

// Null for a kind without a picker.
const DocumentPicker* documentPicker(const QString& kind);
// "Select <columns> Into <table> From ... Where ..." for the picker's kind.
QString copyStatement(const DocumentPicker& picker, const QString& table);

// Lists the documents of `kind` and answers the chosen serial (trimmed), or nothing when the user
// cancels or the kind has no picker. The ## table is dropped before returning.
std::optional<QString> pickDocument(const tr::Services& services, const QString& kind);

}  // namespace tr::cashbank
