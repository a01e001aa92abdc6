#include "cheques/ui/bank_slip_printing.h"

#include <QFile>
#include <QFileInfo>
#include <QPaintEngine>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>

#include "common/db/query_helpers.h"
#include "host/sdk/modal_runner.h"
#include "printing/print_layout.h"
#include "printing/ui/outline_painting.h"
#include "printing/ui/print_design_handoff.h"
#include "printing/ui/print_design_library.h"

namespace tr::cheques::ui {

namespace {

const QString kTitle = QStringLiteral("چاپ ارسال به بانك");

// A slip longer than a page continues on the next with the same heading.
void paintSlips(QPainter& painter, QPrinter& printer, const SlipSet& set, const SlipPrintOptions& options) {
    bool firstPage = true;
    for (const Slip& slip : set.slips) {
        const int perPage = slipLinesPerPage(options.form, static_cast<int>(slip.lines.size()));
        for (int first = 0; first < slip.lines.size() || first == 0; first += perPage) {
            if (!firstPage) printer.newPage();
            firstPage = false;
            const int count = qMin(perPage, static_cast<int>(slip.lines.size()) - first);
            paintBankSlip(painter, set, slip, first, qMax(0, count), options);
            if (slip.lines.isEmpty()) break;
        }
    }
}

void prepare(QPrinter& printer) {
    printer.setDocName(kTitle);
    printer.setFullPage(true);
    printer.setPageLayout(bankSlipPage());
}

}  // namespace

bool printBankSlips(const SlipSet& set, const SlipPrintOptions& options,
                    const tr::printing::ui::PrintTarget& target, QWidget* parent) {
    if (set.slips.isEmpty()) return false;
    QPrinter printer(QPrinter::HighResolution);
    prepare(printer);
    if (target.isPdf()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(target.pdfPath);
        QFile::remove(target.pdfPath);
        {
            QPainter painter(&printer);
            if (!painter.isActive()) return false;
            paintSlips(painter, printer, set, options);
        }
        return QFileInfo(target.pdfPath).size() > 0;
    }
    QPrintPreviewDialog preview(&printer, parent);
    preview.setWindowTitle(kTitle);
    preview.setObjectName(QStringLiteral("BankSlipPreview"));
    preview.setLayoutDirection(Qt::RightToLeft);
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview, [&](QPrinter* to) {
        // The preview records pages as pictures, which replay right-to-left text out of order.
        if (to->paintEngine() && to->paintEngine()->type() == QPaintEngine::Picture) {
            tr::printing::ui::paintWithOutlines(*to, [&](QPainter& p) { paintSlips(p, *to, set, options); });
            return;
        }
        QPainter painter(to);
        if (painter.isActive()) paintSlips(painter, *to, set, options);
    });
    tr::sdk::ModalRunner::current().exec(preview);
    return true;
}

bool handBankSlipsToPrintDesign(const tr::Services& services, const BankSlips& slips, const QString& mode,
                                QWidget* parent) {
    if (!tr::printing::ui::printDesignInstalled(services)) {
        tr::printing::ui::tellPrintDesignMissing(services);
        return false;
    }
    const tr::printing::ui::PrintDesignLayout layout{
        kBankSlipLayoutKey, tr::printing::printLayoutSelection(services.connection(), QStringLiteral("72")),
        QStringLiteral("HesabVago")};
    tr::printing::ui::handOffToPrintDesign(
        services, mode, layout,
        [&] {
            tr::db::Connection& c = services.connection();
            const tr::printing::PrintTables tables = tr::printing::makePrintTables(
                services,
                QStringLiteral("HesabVago NVarchar(100), ShobehNam NVarchar(500), Joz Varchar(20), ChqNo Varchar(20), "
                               "CompanyCod Varchar(20), CompanyNam NVarchar(200), sDate Varchar(10), "
                               "SanadNo Varchar(20), countRaj Int"),
                QStringLiteral("SarResid Varchar(10), ChqNo NVarchar(50), ShomareHesab NVarchar(20), "
                               "ShobehNam NVarchar(500), BankName NVarchar(20), Amount Float, ShobehCod Varchar(20), "
                               "BankCod Varchar(20), HesabVago NVarchar(100), Idx NVarchar(20), MyGroup NVarchar(30)"));
            if (tr::db::objectExistsInTempdb(c, slips.summaryTable()))
                c.execute(QStringLiteral("Insert Into ") + tables.header + QStringLiteral(" Select * From ") +
                          slips.summaryTable());
            if (tr::db::objectExistsInTempdb(c, slips.printTable()))
                c.execute(QStringLiteral("Insert Into ") + tables.lines + QStringLiteral(" Select * From ") +
                          slips.printTable());
            return tables;
        },
        parent);
    return true;
}

}  // namespace tr::cheques::ui
