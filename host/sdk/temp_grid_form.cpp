#include "host/sdk/temp_grid_form.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

#include "common/db/query.h"
#include "common/persian/amount_cells.h"
#include "host/sdk/modal_runner.h"
#include "host/sdk/persian_font.h"

namespace tr::sdk {

TTempGridForm::TTempGridForm(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("TempGridForm"));
    setLayoutDirection(Qt::RightToLeft);
    setFont(persianFont(12));
    resize(520, 360);

    title_ = new QLabel(this);
    title_->setObjectName(QStringLiteral("lbl_Title"));
    title_->setAutoFillBackground(true);
    title_->setBackgroundRole(QPalette::Highlight);
    title_->setForegroundRole(QPalette::HighlightedText);
    title_->setMargin(4);
    title_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);

    grid_ = new QTableWidget(this);
    grid_->setObjectName(QStringLiteral("dbg"));
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->setAlternatingRowColors(true);
    grid_->verticalHeader()->setDefaultSectionSize(22);
    grid_->verticalHeader()->hide();
    grid_->horizontalHeader()->setStretchLastSection(true);
    grid_->installEventFilter(this);
    connect(grid_, &QTableWidget::cellDoubleClicked, this, [this] { chooseCurrent(); });

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(title_);
    layout->addWidget(grid_, 1);
}

void TTempGridForm::setTitle(const QString& title) {
    setWindowTitle(title);
    title_->setText(title);
}

QString TTempGridForm::title() const {
    return windowTitle();
}

void TTempGridForm::load() {
    rows_ = {};
    if (connection_ && !sql_.isEmpty()) {
        tr::db::Query query(connection_);
        query.setSql(sql_);
        query.Open();
        rows_.columns = query.fieldNames();
        for (int r = 0; r < query.RecordCount(); ++r) {
            tr::db::Row row;
            for (int c = 0; c < rows_.columns.size(); ++c) row.push_back(query.value(r, c));
            rows_.rows.push_back(std::move(row));
        }
    }

    QList<Column> shown = columns_;
    if (shown.isEmpty())
        for (const QString& field : rows_.columns) shown.append(Column{field, field, 0});

    grid_->clear();
    grid_->setColumnCount(int(shown.size()));
    grid_->setRowCount(rowCount());
    QStringList captions;
    for (const Column& column : shown) captions << column.caption;
    grid_->setHorizontalHeaderLabels(captions);
    for (int c = 0; c < shown.size(); ++c) {
        if (shown[c].width > 0) grid_->setColumnWidth(c, shown[c].width);
        const int source = rows_.columnIndex(shown[c].field);
        if (source < 0) continue;
        for (int r = 0; r < rowCount(); ++r) {
            auto* item = new QTableWidgetItem;
            const QVariant& value = rows_.rows[r][source];
            item->setData(Qt::DisplayRole, tr::persian::cellDisplay(value));
            if (value.typeId() == QMetaType::Double) item->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
            grid_->setItem(r, c, item);
        }
    }
    if (rowCount() > 0) grid_->setCurrentCell(0, 0);
}

std::optional<QVariantMap> TTempGridForm::choose() {
    load();
    grid_->setFocus();
    if (ModalRunner::current().exec(*this) != QDialog::Accepted) return std::nullopt;
    const int row = currentRow();
    if (row < 0 || row >= rowCount()) return std::nullopt;
    return rowValues(row);
}

void TTempGridForm::setCurrentRow(int row) {
    grid_->setCurrentCell(row, qMax(0, grid_->currentColumn()));
}

int TTempGridForm::currentRow() const {
    return grid_->currentRow();
}

QVariantMap TTempGridForm::rowValues(int row) const {
    QVariantMap values;
    if (row < 0 || row >= rowCount()) return values;
    for (int c = 0; c < rows_.columns.size(); ++c)
        values.insert(rows_.columns[c], rows_.rows[row][c]);
    return values;
}

void TTempGridForm::chooseCurrent() {
    if (currentRow() >= 0) accept();
}

bool TTempGridForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grid_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            chooseCurrent();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

std::optional<QVariantMap> TTempGridForm::pick(const QString& title, const QString& sql,
                                               const QList<tr::dialog::PickColumn>& columns,
                                               int browseKind) {
    setTitle(title);
    setSql(sql);
    QList<Column> own;
    for (const tr::dialog::PickColumn& c : columns) own.append({c.field, c.caption, c.width});
    setColumns(own);
    setBrowseKind(browseKind);
    return choose();
}

}  // namespace tr::sdk
