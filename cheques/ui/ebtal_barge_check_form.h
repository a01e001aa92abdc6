#pragma once
// TEbtalBargeCheckForm, "ابطال برگه چك": the small window that voids a blank cheque leaf or undoes
// a void, in the mode the entry point gives it, over LeafVoiding, which holds every rule. It keeps
// its designed size where it is shown.
#include <QFrame>
#include <functional>

#include "cheques/leaf_voiding.h"
#include "common/session/services.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace tr::cheques {

class TEbtalBargeCheckForm : public QFrame {
    Q_OBJECT
  public:
    explicit TEbtalBargeCheckForm(const tr::Services& services, QWidget* parent = nullptr);

    void setServices(const tr::Services& services);
    // True voids leaves, false undoes voids; the captions follow.
    bool voidMode() const { return logic_.voidMode(); }
    void setVoidMode(bool voidMode);

    LeafVoiding& logic() { return logic_; }
    QLabel* titleLabel() const { return title_; }
    QLineEdit* numberBox() const { return number_; }
    QLineEdit* seriesBox() const { return series_; }
    QPushButton* confirmButton() const { return confirm_; }
    // بانك، شعبه، شماره حساب، then the five account names.
    QList<QLineEdit*> shownBoxes() const { return shown_; }

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    bool guarded(const std::function<bool()>& action);
    // The number or series was left: the book of the leaf typed, once per change.
    void lookUp();
    void takeValues();
    void showBook();

    tr::Services services_;
    LeafVoiding logic_;
    QLabel* title_;
    QLineEdit* number_;
    QLineEdit* series_;
    QList<QLineEdit*> shown_;
    QPushButton* confirm_;
    QPushButton* cancel_;
    QString lookedUp_;  // number and series of the last lookup
    bool started_ = false;
};

}  // namespace tr::cheques
