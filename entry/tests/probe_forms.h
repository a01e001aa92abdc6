#pragma once
// Stand-in screens for the entry tests: they read the module's Services when asked (as real forms
// do), keep an invoice number or a void mode, and expose what they hold as Qt properties.
#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>

#include "common/session/services.h"

namespace tr::entry::probe {

class ProbeForm : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString sessionUser READ sessionUser)
  public:
    ProbeForm(const tr::Services& services, QWidget* parent)
        : QWidget(parent), services_(services) {
        resize(320, 200);
        (new QVBoxLayout(this))->addWidget(new QLabel(QStringLiteral("probe"), this));
    }
    QString sessionUser() const {
        return services_.global ? services_.global->userName : QString();
    }
    // Opens the helper window the way a screen opens a selection form on demand.
    Q_INVOKABLE void openSelection();

  private:
    const tr::Services& services_;
};

class ProbeInvoiceForm : public ProbeForm {
    Q_OBJECT
    Q_PROPERTY(QString invoiceNumber READ invoiceNumber)
  public:
    using ProbeForm::ProbeForm;
    void setInvoiceNumber(const QString& number) { invoiceNumber_ = number; }
    QString invoiceNumber() const { return invoiceNumber_; }

  private:
    QString invoiceNumber_;
};

class ProbeVoidModeForm : public ProbeForm {
    Q_OBJECT
    Q_PROPERTY(bool voidMode READ voidMode)
  public:
    using ProbeForm::ProbeForm;
    bool voidMode() const { return voidMode_; }
    void setVoidMode(bool mode) {
        voidMode_ = mode;
        setWindowTitle(mode ? QStringLiteral("       ابطال برگه چك")
                            : QStringLiteral("       برگشت ابطال برگه چك"));
    }

  private:
    bool voidMode_ = true;
};

class ProbeSelectionForm : public QWidget {
    Q_OBJECT
  public:
    using QWidget::QWidget;
};

extern ProbeSelectionForm* selectionForm;

}  // namespace tr::entry::probe
