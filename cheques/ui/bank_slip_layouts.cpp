#include "cheques/ui/bank_slip_layouts.h"

#include <QFontMetricsF>
#include <QPageSize>
#include <QPaintDevice>
#include <QPainter>
#include <QTextOption>
#include <vector>

#include "common/persian/amount.h"
#include "host/sdk/persian_font.h"

namespace tr::cheques::ui {

namespace {

enum class Value { Row, Number, Due, Bank, Branch, BankBranch, DrawerAccount, Amount };

struct Column {
    Value value;
    double x, width;  // mm from the page's left edge
    const char* caption;
};

// Where a slip's values go, in millimetres from the page's top left corner.
struct Layout {
    const char* title;      // the slip's heading (the bank's, on its printed slip)
    QRectF bank, account, date, company, count, sum, words;
    double tableTop;        // the column captions' row; lines start below it
    double tableBottom;     // the lines end here; the total row follows
    std::vector<Column> columns;
    bool ownCaptions;       // the default slip prints its captions and lines itself
};

constexpr double kWidth = 210, kHeight = 148;
constexpr double kCaptionRow = 7;
constexpr double kMaxRow = 8, kMinRow = 4.5;
const Qt::Alignment kRight = Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter;

const Layout& layoutOf(SlipForm form) {
    static const Layout layouts[] = {
        {"فهرست چکهاي واگذاري به بانک",
         {140, 16, 60, 7}, {75, 16, 60, 7}, {10, 16, 60, 7}, {75, 23, 125, 7}, {10, 23, 60, 7},
         {10, 0, 35, 7}, {10, 0, 190, 7},
         31, 114,
         {{Value::Row, 190, 10, "رديف"},
          {Value::Number, 160, 30, "شماره چک"},
          {Value::Due, 137, 23, "سررسيد"},
          {Value::Bank, 107, 30, "بانک"},
          {Value::Branch, 77, 30, "شعبه"},
          {Value::DrawerAccount, 45, 32, "شماره حساب"},
          {Value::Amount, 10, 35, "مبلغ (ريال)"}},
         true},
        {"بانک تجارت - برگ واريز چک",
         {150, 20, 50, 7}, {80, 20, 62, 7}, {10, 20, 55, 7}, {80, 28, 120, 7}, {10, 28, 55, 7},
         {128, 0, 36, 7}, {10, 0, 190, 7},
         37, 114,
         {{Value::Row, 192, 8, "رديف"},
          {Value::Number, 164, 28, "شماره چک"},
          {Value::Amount, 128, 36, "مبلغ"},
          {Value::Due, 106, 22, "تاريخ"},
          {Value::BankBranch, 48, 58, "بانک و شعبه"},
          {Value::DrawerAccount, 10, 38, "شماره حساب"}},
         false},
        {"بانک صادرات ايران - فرم واگذاري چک",
         {10, 18, 60, 7}, {75, 18, 60, 7}, {150, 18, 50, 7}, {10, 26, 125, 7}, {150, 26, 50, 7},
         {150, 0, 41, 7}, {10, 0, 190, 7},
         35, 114,
         {{Value::Row, 191, 9, "رديف"},
          {Value::Amount, 150, 41, "مبلغ به ريال"},
          {Value::Number, 120, 30, "شماره چک"},
          {Value::DrawerAccount, 86, 34, "شماره حساب"},
          {Value::Bank, 58, 28, "بانک"},
          {Value::Branch, 30, 28, "شعبه"},
          {Value::Due, 10, 20, "سررسيد"}},
         false},
    };
    return layouts[static_cast<int>(form)];
}

// The caption a header box carries on the slip, written to its right.
const char* headerCaption(int which) {
    static const char* captions[] = {"بانک :", "شماره حساب :", "تاريخ :", "واگذار کننده :", "تعداد چک :"};
    return captions[which];
}

double rowHeight(const Layout& l, int lines) {
    const double room = l.tableBottom - l.tableTop - kCaptionRow;
    return lines <= 0 ? kMaxRow : qBound(kMinRow, room / lines, kMaxRow);
}

QString lineValue(const SlipLine& line, int number, Value v) {
    if (line.filler) return {};
    switch (v) {
        case Value::Row: return QString::number(number);
        case Value::Number: return line.number;
        case Value::Due: return line.due;
        case Value::Bank: return line.bankName;
        case Value::Branch: return line.branchName;
        case Value::BankBranch:
            return line.branchName.isEmpty() ? line.bankName : line.bankName + QStringLiteral(" - ") + line.branchName;
        case Value::DrawerAccount: return line.drawerAccount;
        case Value::Amount: return tr::persian::printAmount(line.amount);
    }
    return {};
}

class Pen {
  public:
    Pen(QPainter& p) : p_(p), mm_(p.device()->logicalDpiX() / 25.4) {}
    QRectF box(const QRectF& r, double dx = 0, double dy = 0) const {
        return {(r.left() + dx) * mm_, (r.top() + dy) * mm_, r.width() * mm_, r.height() * mm_};
    }
    // Text set smaller, down to seven tenths, before it is cut at the box's edge.
    void text(const QRectF& r, const QString& s, double points, Qt::Alignment align = kRight, bool bold = false,
              double dx = 0, double dy = 0) {
        if (s.isEmpty()) return;
        const QRectF b = box(r, dx, dy);
        QFont font = tr::sdk::persianFont();
        font.setPointSizeF(points);
        font.setBold(bold);
        while (QFontMetricsF(font, p_.device()).horizontalAdvance(s) > b.width() &&
               font.pointSizeF() - 0.25 >= points * 0.7)
            font.setPointSizeF(font.pointSizeF() - 0.25);
        p_.setFont(font);
        QTextOption option(align);
        option.setTextDirection(Qt::RightToLeft);
        option.setWrapMode(QTextOption::NoWrap);
        p_.drawText(b, tr::persian::persianDigits(s), option);
    }
    void rect(const QRectF& r, double dx = 0, double dy = 0) { p_.drawRect(box(r, dx, dy)); }
    void line(double x1, double y1, double x2, double y2, double dx = 0, double dy = 0) {
        p_.drawLine(QPointF((x1 + dx) * mm_, (y1 + dy) * mm_), QPointF((x2 + dx) * mm_, (y2 + dy) * mm_));
    }
    void fill(const QRectF& r, const QColor& c, double dx = 0, double dy = 0) { p_.fillRect(box(r, dx, dy), c); }
    double mm() const { return mm_; }

  private:
    QPainter& p_;
    double mm_;
};

// The slip's printed form: heading, captions, the table's lines and the signature places. The
// default slip always has it; a bank's slip has it on paper, so it is drawn only as the template.
void drawForm(QPainter& painter, Pen& pen, const Layout& l, int lines, double rowH, bool shaded, double dx,
              double dy) {
    painter.setPen(QPen(Qt::black, 0.25 * pen.mm()));
    const QColor band = shaded ? QColor(222, 232, 244) : QColor(Qt::transparent);
    if (shaded) {
        painter.setPen(QPen(QColor(40, 70, 120), 0.6 * pen.mm()));
        pen.rect({4, 4, kWidth - 8, kHeight - 8}, dx, dy);
        pen.fill({5, 5, kWidth - 10, 9}, band, dx, dy);
        painter.setPen(QPen(Qt::black, 0.25 * pen.mm()));
    }
    pen.text({10, 6, kWidth - 20, 8}, QString::fromUtf8(l.title), 13, Qt::AlignCenter, true, dx, dy);
    const QRectF boxes[] = {l.bank, l.account, l.date, l.company, l.count};
    for (int i = 0; i < 5; ++i) {
        const QString caption = QString::fromUtf8(headerCaption(i));
        pen.text({boxes[i].left(), boxes[i].top(), boxes[i].width(), boxes[i].height()}, caption, 9, kRight, true,
                 dx, dy);
    }
    const double top = l.tableTop, first = top + kCaptionRow, end = first + rowH * lines;
    const double left = l.columns.back().x, right = l.columns.front().x + l.columns.front().width;
    if (shaded) pen.fill({left, top, right - left, kCaptionRow}, band, dx, dy);
    pen.rect({left, top, right - left, end + kCaptionRow - top}, dx, dy);
    for (const Column& c : l.columns) {
        pen.line(c.x, top, c.x, end, dx, dy);
        pen.text({c.x, top, c.width, kCaptionRow}, QString::fromUtf8(c.caption), 9, Qt::AlignCenter, true, dx, dy);
    }
    for (int i = 0; i <= lines; ++i) pen.line(left, first + i * rowH, right, first + i * rowH, dx, dy);
    pen.text({l.sum.right() - 12, end, 12, kCaptionRow}, QStringLiteral("جمع :"), 9, kRight, true, dx, dy);
    pen.text({l.words.left(), end + kCaptionRow + 1, l.words.width(), 7}, QStringLiteral("به حروف :"), 9, kRight,
             true, dx, dy);
    pen.text({120, kHeight - 16, 80, 7}, QStringLiteral("امضاي واگذار کننده"), 9, Qt::AlignCenter, false, dx, dy);
    pen.text({10, kHeight - 16, 80, 7}, QStringLiteral("مهر و امضاي بانک"), 9, Qt::AlignCenter, false, dx, dy);
}

}  // namespace

QPageLayout bankSlipPage() {
    return QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Landscape, QMarginsF(0, 0, 0, 0),
                       QPageLayout::Millimeter);
}

QStringList slipFormNames() {
    return {QStringLiteral("پيش فرض"), QStringLiteral("تجارت"), QStringLiteral("صادرات")};
}

int slipLinesPerPage(SlipForm form, int lines) {
    const Layout& l = layoutOf(form);
    const int fit = static_cast<int>((l.tableBottom - l.tableTop - kCaptionRow) / rowHeight(l, lines) + 1e-6);
    return qMax(1, qMin(lines, fit));
}

void paintBankSlip(QPainter& painter, const SlipSet& set, const Slip& slip, int first, int count,
                   const SlipPrintOptions& options) {
    const Layout& l = layoutOf(options.form);
    Pen pen(painter);
    painter.save();
    const double rowH = rowHeight(l, count);
    // The default slip is all print and moves whole; on a bank's slip the paper stays and only
    // what is printed on it moves, so the template shows how the values sit on the paper.
    const double dx = options.horizontal, dy = options.vertical;
    if (l.ownCaptions) drawForm(painter, pen, l, count, rowH, options.withTemplate, dx, dy);
    else if (options.withTemplate) drawForm(painter, pen, l, count, rowH, true, 0, 0);
    painter.setPen(Qt::black);
    // Header values stand left of their captions (captions take the box's right part).
    auto header = [&](const QRectF& box, const QString& value, double captionWidth) {
        pen.text({box.left(), box.top(), box.width() - captionWidth, box.height()}, value, 10, kRight, false, dx, dy);
    };
    header(l.bank, slip.bankName, 12);
    header(l.account, slip.account, 22);
    header(l.date, set.date, 12);
    header(l.company, set.company, 24);
    header(l.count, QString::number(slip.count), 18);
    const double firstTop = l.tableTop + kCaptionRow;
    for (int i = 0; i < count && first + i < slip.lines.size(); ++i) {
        const SlipLine& line = slip.lines[first + i];
        for (const Column& c : l.columns) {
            pen.text({c.x + 1, firstTop + i * rowH, c.width - 2, rowH}, lineValue(line, first + i + 1, c.value),
                     rowH < 6 ? 8 : 9.5, Qt::AlignCenter, false, dx, dy);
        }
    }
    // The total and the words close the slip's last page.
    if (first + count >= slip.lines.size()) {
        const double end = firstTop + rowH * count;
        pen.text({l.sum.left(), end, l.sum.width() - 12, kCaptionRow}, tr::persian::printAmount(slip.sum), 10,
                 Qt::AlignCenter, true, dx, dy);
        pen.text({l.words.left(), end + kCaptionRow + 1, l.words.width() - 16, 7}, slip.sumInWords, 9.5, kRight,
                 false, dx, dy);
    }
    painter.restore();
}

}  // namespace tr::cheques::ui
