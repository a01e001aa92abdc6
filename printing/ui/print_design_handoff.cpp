#include "printing/ui/print_design_handoff.h"

#include "common/db/scoped_temp_table.h"
#include "common/dialog/message_dialog.h"
#include "printing/ui/print_design_library.h"

namespace tr::printing::ui {

namespace {

QString hostFolder(const tr::Services& services) {
    return services.global ? services.global->hostFolder : QString();
}

}  // namespace

bool printDesignInstalled(const tr::Services& services) {
    return printDesignAvailable(hostFolder(services));
}

void handOffToPrintDesign(const tr::Services& services, const QString& mode,
                          const PrintDesignLayout& layout,
                          const std::function<PrintTables()>& makeTables, QWidget* parent) {
    const PrintTables tables = makeTables();
    tr::db::ScopedTempTable header(*services.database, tables.header);
    tr::db::ScopedTempTable lines(*services.database, tables.lines);
    const PrintDesignCall call{mode,          layout.key,   layout.selection,
                               tables.header, tables.lines, layout.linkFields};
    callPrintDesign(hostFolder(services), call, services.database, parent);
    header.drop();
    lines.drop();
}

void tellPrintDesignMissing(const tr::Services& services) {
    tr::dialog::Messages(services.dialog)
        .show(QStringLiteral("برنامه طراحي فرم چاپ (PrintDesign) نصب نشده است."),
              QStringLiteral("1WR"));
}

}  // namespace tr::printing::ui
