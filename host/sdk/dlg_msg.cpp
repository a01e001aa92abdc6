#include "host/sdk/dlg_msg.h"

#include <QApplication>
#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTextBlock>
#include <QTextLayout>
#include <QToolButton>

#include "host/sdk/modal_runner.h"
#include "host/sdk/persian_font.h"

namespace tr::sdk {

using tr::dialog::Button;
using tr::dialog::Icon;

namespace {

constexpr int kWidth = 298;
constexpr int kHeight = 135;
constexpr int kCaptionHeight = 22;
constexpr int kBottomHeight = 36;
constexpr int kMemoTop = 4;
constexpr int kMemoMargin = 2;

// Paints its pixmap as is: the info panel is disabled for short messages, and a disabled label
// would grey the icon out.
class IconImage : public QWidget {
  public:
    IconImage(const QPixmap& pixmap, QWidget* parent) : QWidget(parent), pixmap_(pixmap) {}

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        const QSize s = pixmap_.deviceIndependentSize().toSize();
        p.drawPixmap((width() - s.width()) / 2, (height() - s.height()) / 2, pixmap_);
    }

  private:
    QPixmap pixmap_;
};

QPixmap stopPixmap(int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal s = size;
    const qreal a = s / (2.0 + 1.41421356);  // an octagon's side
    const qreal b = a / 1.41421356;
    const QPointF corners[] = {{b, 0},     {b + a, 0}, {s, b},     {s, b + a},
                               {b + a, s}, {b, s},     {0, b + a}, {0, b}};
    p.setPen(QPen(Qt::white, 1.5));
    p.setBrush(QColor(200, 30, 30));
    p.drawPolygon(corners, 8);
    p.fillRect(QRectF(size * 0.22, size * 0.42, size * 0.56, size * 0.16), Qt::white);
    return pixmap;
}

}  // namespace

TDlgMsg::TDlgMsg(QWidget* parent) : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint) {
    setObjectName(QStringLiteral("DlgMsg"));
    setLayoutDirection(Qt::RightToLeft);
    setFont(persianFont());
    resize(kWidth, kHeight);

    captionPanel_ = new QLabel(this);
    captionPanel_->setObjectName(QStringLiteral("Caption_Panel"));
    captionPanel_->setAutoFillBackground(true);
    captionPanel_->setBackgroundRole(QPalette::Highlight);
    captionPanel_->setForegroundRole(QPalette::HighlightedText);
    captionPanel_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    captionPanel_->installEventFilter(this);

    closeButton_ = new QToolButton(captionPanel_);
    closeButton_->setObjectName(QStringLiteral("sb_Closed"));
    closeButton_->setAutoRaise(true);
    closeButton_->setToolTip(QStringLiteral("بستن فرم"));
    closeButton_->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    closeButton_->setFocusPolicy(Qt::NoFocus);
    connect(closeButton_, &QToolButton::clicked, this, [this] { done(closeResult_); });

    infoPanel_ = new QWidget(this);
    infoPanel_->setObjectName(QStringLiteral("InfoPanel"));

    memo_ = new QPlainTextEdit(infoPanel_);
    memo_->setObjectName(QStringLiteral("Memo1"));
    memo_->setReadOnly(true);
    memo_->setFrameShape(QFrame::NoFrame);
    memo_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    memo_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    memo_->document()->setDocumentMargin(kMemoMargin);
    QPalette memoPalette = memo_->palette();
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        memoPalette.setColor(group, QPalette::Base, memoPalette.color(QPalette::Button));
        memoPalette.setColor(group, QPalette::Text, Qt::black);
    }
    memo_->setPalette(memoPalette);
    memo_->setGeometry(5, kMemoTop, 217, 69);

    iconPanel_ = new QWidget(infoPanel_);
    iconPanel_->setObjectName(QStringLiteral("IconPanel"));
    iconPanel_->setGeometry(226, kMemoTop, 66, 69);
    const QStyle* s = style();
    const int side = 32;
    const std::array<QPixmap, 5> pixmaps = {
        s->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(side),
        s->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side),
        s->standardIcon(QStyle::SP_MessageBoxQuestion).pixmap(side),
        s->standardIcon(QStyle::SP_MessageBoxCritical).pixmap(side), stopPixmap(side)};
    const char* iconNames[] = {"I_Info", "I_Warning", "I_Question", "I_Error", "I_Stop"};
    for (int i = 0; i < 5; ++i) {
        icons_[i] = new IconImage(pixmaps[i], iconPanel_);
        icons_[i]->setObjectName(QLatin1String(iconNames[i]));
        icons_[i]->setGeometry(0, 0, iconPanel_->width(), iconPanel_->height());
        icons_[i]->hide();
    }

    bottomPanel_ = new QWidget(this);
    bottomPanel_->setObjectName(QStringLiteral("BottomPanel"));
    struct ButtonLayout {
        const char* name;
        const char* caption;
        int result;
        int left;
    };
    // Pairs stand with the confirming button on the right, as the text reads.
    const ButtonLayout buttons[] = {{"BBtnOK2", "&تاييد", tr::dialog::ResultOk, 152},
                          {"BBtnCancel", "&انصراف", tr::dialog::ResultCancel, 71},
                          {"BBtnOK1", "&تاييد", tr::dialog::ResultOk, 111},
                          {"BBtnYes", "&بله", tr::dialog::ResultYes, 152},
                          {"BBtnNo", "&خير", tr::dialog::ResultNo, 71}};
    for (int i = 0; i < 5; ++i) {
        auto* b = new QPushButton(QString::fromUtf8(buttons[i].caption), bottomPanel_);
        b->setObjectName(QLatin1String(buttons[i].name));
        b->setGeometry(buttons[i].left, 6, 75, 25);
        b->hide();
        const int result = buttons[i].result;
        connect(b, &QPushButton::clicked, this, [this, result] { done(result); });
        buttons_[i] = b;
    }
    buttons_[int(Button::OK1)]->setDefault(true);

    placePanels();
}

TDlgMsg::~TDlgMsg() = default;

QPushButton* TDlgMsg::button(Button which) const {
    return buttons_[static_cast<int>(which)];
}

QWidget* TDlgMsg::icon(Icon which) const {
    return icons_[static_cast<int>(which)];
}

QSize TDlgMsg::screenSize() const {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry().size() : QSize(1024, 768);
}

QSize TDlgMsg::dialogSize() const {
    return size();
}

void TDlgMsg::setDialogPosition(int left, int top) {
    move(left, top);
}

void TDlgMsg::setDialogHeight(int height) {
    resize(width(), height);
}

void TDlgMsg::setCaptionText(const QString& text) {
    captionPanel_->setText(text);
}

void TDlgMsg::setButtonVisible(Button which, bool visible) {
    button(which)->setVisible(visible);
}

void TDlgMsg::setOk1Caption(const QString& caption) {
    button(Button::OK1)->setText(caption);
}

void TDlgMsg::setIconVisible(Icon which, bool visible) {
    icon(which)->setVisible(visible);
}

void TDlgMsg::setMemoHorizontal(int left, int width) {
    memo_->setGeometry(left, memo_->y(), width, memo_->height());
}

void TDlgMsg::setMemoHeight(int height) {
    memo_->resize(memo_->width(), height);
}

void TDlgMsg::setMemoText(const QString& text) {
    memo_->clear();
    memo_->setPlainText(text);
}

int TDlgMsg::memoLineCount() const {
    // Laid out here rather than read from the memo, which lays out lazily and only once shown.
    const QString text = memo_->toPlainText();
    if (text.isEmpty()) return 0;
    int width = memo_->width() - 2 * kMemoMargin - 1;  // the memo keeps a pixel for the cursor
    if (memo_->verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOn)
        width -= memo_->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, memo_);
    int lines = 0;
    for (const QString& paragraph : text.split(QLatin1Char('\n'))) {
        QTextLayout layout(paragraph, memo_->font());
        QTextOption option(Qt::AlignRight);
        option.setTextDirection(Qt::RightToLeft);
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(option);
        layout.beginLayout();
        int count = 0;
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            ++count;
        }
        layout.endLayout();
        lines += qMax(1, count);
    }
    return lines;
}

void TDlgMsg::setMemoVerticalScrollBar(bool on) {
    memo_->setVerticalScrollBarPolicy(on ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    memo_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void TDlgMsg::setInfoPanelEnabled(bool enabled) {
    infoPanel_->setEnabled(enabled);
}

int TDlgMsg::showModal() {
    // A question asks before something that cannot be taken back (a cancellation, a deletion, a
    // replacement): Enter answers "خير", the answer that changes nothing.
    // Otherwise Enter confirms the message.
    QPushButton* answer = nullptr;
    for (Button b : {Button::No, Button::OK1, Button::OK2})
        if (!answer && !button(b)->isHidden()) answer = button(b);
    for (QPushButton* b : buttons_) b->setDefault(b == answer);
    if (answer) answer->setFocus();
    return ModalRunner::current().exec(*this);
}

void TDlgMsg::reject() {
    done(closeResult_);
}

void TDlgMsg::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    placePanels();
}

void TDlgMsg::placePanels() {
    captionPanel_->setGeometry(0, 0, width(), kCaptionHeight);
    closeButton_->setGeometry(2, 2, kCaptionHeight - 4, kCaptionHeight - 4);
    bottomPanel_->setGeometry(0, height() - kBottomHeight, width(), kBottomHeight);
    infoPanel_->setGeometry(0, kCaptionHeight, width(), height() - kCaptionHeight - kBottomHeight);
}

bool TDlgMsg::eventFilter(QObject* watched, QEvent* event) {
    if (watched == captionPanel_) {
        if (event->type() == QEvent::MouseButtonPress) {
            auto* e = static_cast<QMouseEvent*>(event);
            if (e->button() == Qt::LeftButton) {
                dragOffset_ = e->globalPosition().toPoint() - frameGeometry().topLeft();
                return true;
            }
        } else if (event->type() == QEvent::MouseMove) {
            auto* e = static_cast<QMouseEvent*>(event);
            if (e->buttons() & Qt::LeftButton) {
                move(e->globalPosition().toPoint() - dragOffset_);
                return true;
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace tr::sdk
