#pragma once
// The treasury screens the host offers, by subsystem, with their Persian titles and the export
// that opens each; the void-leaf export appears twice, once per mode.
#include <QList>
#include <QString>

namespace tr::host {

enum class EntryKind { Plain, Invoice, VoidMode };

struct ScreenInfo {
    QString exportName;
    QString title;
    QString group;
    EntryKind kind = EntryKind::Plain;
    int voidMode = 0;  // only for EntryKind::VoidMode
};

const QList<ScreenInfo>& screenCatalogue();
// The screen with this title, compared as the books compare text (either yeh and kaf, blanks
// around ignored); null when there is none.
const ScreenInfo* findScreen(const QString& title);
// The subsystem groups in the order the tree and the menu show them.
QStringList screenGroups();

}  // namespace tr::host
