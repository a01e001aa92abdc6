#pragma once
// The company and the people a print names, as the suite's own tables call them.
#include <QString>

#include "common/session/services.h"

namespace tr::printing {

// The company of the session's company year ("" when unknown).
QString companyName(const tr::Services& services);
// A user as people call them: the suite's full name for `login`, else the login itself.
QString userFullName(const tr::Services& services, const QString& login);

}  // namespace tr::printing
