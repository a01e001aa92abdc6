#include "printing/print_names.h"

#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "printing/print_values.h"

namespace tr::printing {

using tr::db::openQuery;

QString companyName(const tr::Services& services) {
    const tr::Global& g = *services.global;
    if (g.sCode.trimmed().isEmpty()) return {};
    tr::db::Connection& c = services.connection();
    tr::db::Query q =
        openQuery(c, QStringLiteral("Select CompanyNam From CORVASK_Sdc..SDC_Company Where "
                                    "LTrim(RTrim(sCode)) = ") +
                         c.text(g.sCode.trimmed()) + QStringLiteral(" And LTrim(RTrim(sYear)) = ") +
                         c.text(g.sYear.trimmed()));
    return q.IsEmpty() ? QString() : textField(q, "CompanyNam");
}

QString userFullName(const tr::Services& services, const QString& login) {
    const QString name = login.trimmed();
    if (name.isEmpty()) return {};
    tr::db::Connection& c = services.connection();
    tr::db::Query q =
        openQuery(c, QStringLiteral("Select FullName From CORVASK_Sdc..SDC_User Where "
                                    "LTrim(RTrim(UserName)) = ") +
                         c.text(name));
    const QString full = q.IsEmpty() ? QString() : textField(q, "FullName");
    return full.isEmpty() ? name : full;
}

}  // namespace tr::printing
