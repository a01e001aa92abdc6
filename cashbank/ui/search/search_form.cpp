#include "cashbank/ui/search/search_form.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "cashbank/ui/search/document_search_form.h"
#include "cheques/ui/search/cheque_search_form.h"
#include "host/sdk/persian_font.h"

namespace tr::cashbank {

TSearchForm::TSearchForm(const tr::Services& services, QWidget* parent)
    : QWidget(parent), services_(services) {
    setObjectName(QStringLiteral("SearchForm"));
    setWindowTitle(QString::fromUtf8(kLauncherCaption));
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(14));

    auto* title = new QLabel(QString::fromUtf8(kLauncherCaption), this);
    title->setAlignment(Qt::AlignCenter);
    title->setAutoFillBackground(true);
    title->setForegroundRole(QPalette::HighlightedText);
    title->setBackgroundRole(QPalette::Highlight);
    title->setMinimumHeight(30);

    auto* panel = new QWidget(this);
    auto* grid = new QGridLayout(panel);
    grid->setSpacing(10);
    int index = 0;
    for (const LauncherButton& b : launcherButtons()) {
        auto* button = new QPushButton(b.caption, panel);
        button->setObjectName(b.name);
        button->setMinimumSize(170, 48);
        if (b.opens) {
            const SearchFamily family = *b.opens;
            connect(button, &QPushButton::clicked, this, [this, family] { openSearch(family); });
        } else if (b.cheques) {
            const auto side = *b.cheques == ChequeSearchSide::Received ? tr::cheques::ChequeSide::Received
                                                                      : tr::cheques::ChequeSide::Issued;
            connect(button, &QPushButton::clicked, this,
                    [this, side] { tr::cheques::openChequeSearch(side, services_, this); });
        } else {
            button->setEnabled(false);
            button->setToolTip(QString::fromUtf8(kNotAvailableTip));
        }
        buttons_.insert(b.name, button);
        grid->addWidget(button, index / 3, index % 3);
        ++index;
    }

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(title);
    layout->addStretch();
    auto* centre = new QHBoxLayout;
    centre->addStretch();
    centre->addWidget(panel);
    centre->addStretch();
    layout->addLayout(centre);
    layout->addStretch(2);
    applyRights();
}

void TSearchForm::setServices(const tr::Services& services) {
    services_ = services;
    for (const auto& form : forms_)
        if (form) form->setServices(services);
    for (auto* form : findChildren<tr::cheques::ChequeSearchForm*>(Qt::FindDirectChildrenOnly))
        form->setServices(services);
    applyRights();
}

QPushButton* TSearchForm::button(const QString& name) const {
    return buttons_.value(name);
}

void TSearchForm::applyRights() {
    const QString rights = services_.global ? services_.global->rights : QString();
    for (const LauncherButton& b : launcherButtons())
        buttons_.value(b.name)->setVisible(buttonVisible(b, rights));
}

DocumentSearchForm* TSearchForm::openSearch(SearchFamily family) {
    QPointer<DocumentSearchForm>& form = forms_[static_cast<int>(family)];
    if (!form) {
        form = createSearchForm(family, services_, this);
        form->setWindowFlag(Qt::Window);
        form->resize(1000, 650);
    }
    form->show();
    form->raise();
    form->activateWindow();
    return form;
}

}  // namespace tr::cashbank
