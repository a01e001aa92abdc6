#pragma once
// TSearchForm, "جستجوي اسناد نقدينگي" (export Search_Naghd): one button per search, shown by the
// user's N_A_SEARCH_ rights; each opens its search form once, as a window of its own.
#include <QHash>
#include <QPointer>
#include <QWidget>

#include "cashbank/search/search_launcher.h"
#include "common/session/services.h"

class QPushButton;

namespace tr::cashbank {

class DocumentSearchForm;

class TSearchForm : public QWidget {
    Q_OBJECT
  public:
    explicit TSearchForm(const tr::Services& services, QWidget* parent = nullptr);

    // The entry point passes the latest session values on every call; rights may have changed.
    void setServices(const tr::Services& services);
    QPushButton* button(const QString& name) const;
    // Opens (creating once) the form of a family and answers it.
    DocumentSearchForm* openSearch(SearchFamily family);

  private:
    void applyRights();

    tr::Services services_;
    QHash<QString, QPushButton*> buttons_;
    QHash<int, QPointer<DocumentSearchForm>> forms_;
};

}  // namespace tr::cashbank
