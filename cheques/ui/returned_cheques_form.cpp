#include "cheques/ui/returned_cheques_form.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

#include "common/db/query_helpers.h"
#include "common/db/scoped_temp_table.h"
#include "common/persian/amount_cells.h"
#include "common/ui/dataset_model.h"
#include "common/ui/grid_report.h"
#include "host/sdk/persian_font.h"
#include "instruments/returned_cheque_table.h"

namespace tr::cheques {

const QString TChqGetReturnedForm::kReportKey = QStringLiteral("CHQGETRETURNED");

TChqGetReturnedForm::TChqGetReturnedForm(const tr::Services& services, const tr::vouchers::LineAccount& account,
                                         QWidget* parent)
    : QWidget(parent), services_(services) {
    setObjectName(QStringLiteral("ChqGetReturnedForm"));
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(12));
    report_.setObjectName(kReportKey);
    tr::db::Connection& c = services_.connection();
    const QString detailName =
        tr::db::firstColumn(c, QStringLiteral("Select NamHesab From Tafsily Where Tafsily = ") +
                                   c.text(account.tafsily.trimmed()))
            .toString()
            .trimmed();
    setWindowTitle(QStringLiteral("چکهاي برگشتي ") + QStringLiteral(" (تفصيلي : '") + detailName +
                   QStringLiteral("')"));

    table_ = tr::db::globalTempTableName(services_.global->sessionText + QStringLiteral("ChqRet"));
    c.execute(QStringLiteral("Exec sp_N_Report_ChqGetReturned ") + c.text(table_) + QStringLiteral(", ") +
              c.text(account.koll) + QStringLiteral(", ") + c.text(account.moein) + QStringLiteral(", ") +
              c.text(account.tafsily) + QStringLiteral(", ") + c.text(account.tafsily2) + QStringLiteral(", ") +
              c.text(account.projectCod));
    rows_.setConnection(&c);
    rows_.setSql(QStringLiteral("Select * From ") + table_ + QStringLiteral(" Order By SanadDate, IDX"));
    rows_.Open();

    model_ = new tr::ui::DatasetModel(&rows_, this);
    model_->setReadOnly(true);
    model_->setFieldFormat(QStringLiteral("ChqValue"), tr::persian::amountCellText);
    const QList<QPair<QString, QString>> titles = {
        {QStringLiteral("ChqNo"), QStringLiteral("شماره چک")},   {QStringLiteral("Joz"), QStringLiteral("سري")},
        {QStringLiteral("ChqValue"), QStringLiteral("مبلغ")},     {QStringLiteral("SarResidDate"), QStringLiteral("سررسيد")},
        {QStringLiteral("SanadDate"), QStringLiteral("تاريخ برگشت")}, {QStringLiteral("BankCod"), QStringLiteral("کد بانک")},
        {QStringLiteral("ShobehCod"), QStringLiteral("کد شعبه")}, {QStringLiteral("AcountCod"), QStringLiteral("شماره حساب")},
        {QStringLiteral("AcountNam"), QStringLiteral("بانک و شعبه")}, {QStringLiteral("ChqGetter"), QStringLiteral("در وجه")},
        {QStringLiteral("HesabDarJaryan"), QStringLiteral("حساب")}, {QStringLiteral("Des"), QStringLiteral("شرح")},
        {QStringLiteral("ArzNam"), QStringLiteral("ارز")},          {QStringLiteral("SanadNo"), QStringLiteral("سند")},
        {QStringLiteral("TafNam"), QStringLiteral("تفصيلي")}};
    for (const auto& [field, title] : titles) model_->setTitle(field, title);

    grid_ = new QTableView(this);
    grid_->setObjectName(QStringLiteral("dbg"));
    grid_->setModel(model_);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->verticalHeader()->hide();
    grid_->setColumnHidden(model_->fieldColumn(QStringLiteral("IDX")), true);
    // A text column is as wide as the text it may hold, within reason; the cheque, its amount
    // and dates come first.
    const int digit = QFontMetrics(font()).horizontalAdvance(QLatin1Char('0'));
    for (const tr::instruments::TextColumn& column : tr::instruments::returnedChequeTextColumns()) {
        const int c = model_->fieldColumn(column.name);
        if (c >= 0) grid_->setColumnWidth(c, std::clamp(column.length * digit / 2 + 16, 45, 200));
    }
    QHeaderView* header = grid_->horizontalHeader();
    int visual = 0;
    for (const auto& [field, title] : titles) {
        const int c = model_->fieldColumn(field);
        if (c >= 0) header->moveSection(header->visualIndex(c), visual++);
    }

    auto* title = new QLabel(windowTitle(), this);
    title->setAlignment(Qt::AlignCenter);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(title);
    layout->addWidget(grid_, 1);
}

TChqGetReturnedForm::~TChqGetReturnedForm() {
    grid_->setModel(nullptr);
    delete model_;
    rows_.Close();
    if (services_.database && services_.database->CommandQuery)
        tr::db::dropTempTableQuietly(*services_.database, table_.mid(2));
}

bool TChqGetReturnedForm::printClick(const QString& pdfFile) {
    return tr::ui::printReport(report_, windowTitle(), tr::ui::gridReportHtml(windowTitle(), *grid_), this, pdfFile,
                               tr::ui::PageTurn::Landscape);
}

TChqGetReturnedForm* showReturnedCheques(const tr::Services& services, const tr::vouchers::LineAccount& account,
                                         QWidget* owner) {
    auto* form = new TChqGetReturnedForm(services, account, owner);
    form->setAttribute(Qt::WA_DeleteOnClose);
    form->setWindowFlag(Qt::Window);
    form->resize(1100, 500);
    form->show();
    return form;
}

}  // namespace tr::cheques
