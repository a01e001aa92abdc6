#include "vouchers/rights.h"

#include <array>
#include <utility>

namespace tr::vouchers {

QString rightsPrefixes(const QString& rights, const QString& formKey) {
    static const std::array<std::pair<const char*, const char*>, 8> markers{{
        {"_ABTAL(Y)", "A_"},
        {"_SABT(Y)", "N_"},
        {"_EDIT(Y)", "E_"},
        {"_DEL(Y)", "D_"},
        {"_FIRSTCHQ(Y)", "F_"},
        {"_FIRST(Y)", "F_"},
        {"_VIEW(Y)", "V_"},
        {"_OKPRINT(Y)", "P_"},
    }};
    QString prefixes;
    for (const auto& [marker, prefix] : markers)
        if (rights.contains(formKey + QLatin1String(marker))) prefixes += QLatin1String(prefix);
    return prefixes;
}

}  // namespace tr::vouchers
