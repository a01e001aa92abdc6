#pragma once
// TDlgMsg, the host's message box: a borderless right-to-left 298 x 135 window with a caption
// panel, a read-only memo beside five icons and five buttons. tr::dialog::showMessage configures
// and shows it; closing it without a button (close button, Escape) answers the close result.
#include <QDialog>
#include <QPoint>
#include <array>

#include "common/dialog/message_dialog.h"
#include "host/sdk/sdk_export.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QToolButton;

namespace tr::sdk {

class TR_SDK_EXPORT TDlgMsg : public QDialog, public tr::dialog::MessageDialog {
    Q_OBJECT
  public:
    explicit TDlgMsg(QWidget* parent = nullptr);
    ~TDlgMsg() override;

    // Shown when a message comes without a caption; the host fills it.
    QString DefaultCaption;

    QPushButton* button(tr::dialog::Button which) const;
    QWidget* icon(tr::dialog::Icon which) const;
    QPlainTextEdit* memo() const { return memo_; }
    QWidget* infoPanel() const { return infoPanel_; }
    QLabel* captionPanel() const { return captionPanel_; }
    QToolButton* closeButton() const { return closeButton_; }
    int closeResult() const { return closeResult_; }

    // tr::dialog::MessageDialog
    QSize screenSize() const override;
    QSize dialogSize() const override;
    void setDialogPosition(int left, int top) override;
    void setDialogHeight(int height) override;
    QString defaultCaption() const override { return DefaultCaption; }
    void setCaptionText(const QString& text) override;
    void setButtonVisible(tr::dialog::Button which, bool visible) override;
    void setOk1Caption(const QString& caption) override;
    void setIconVisible(tr::dialog::Icon which, bool visible) override;
    void setCloseResult(int result) override { closeResult_ = result; }
    void setMemoHorizontal(int left, int width) override;
    void setMemoHeight(int height) override;
    void setMemoText(const QString& text) override;
    int memoLineCount() const override;
    void setMemoVerticalScrollBar(bool on) override;
    void setInfoPanelEnabled(bool enabled) override;
    int showModal() override;

  public slots:
    void reject() override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void placePanels();

    QLabel* captionPanel_;
    QToolButton* closeButton_;
    QWidget* infoPanel_;
    QPlainTextEdit* memo_;
    QWidget* iconPanel_;
    std::array<QWidget*, 5> icons_{};
    QWidget* bottomPanel_;
    std::array<QPushButton*, 5> buttons_{};
    int closeResult_ = tr::dialog::ResultOk;
    QPoint dragOffset_;
};

}  // namespace tr::sdk
