#pragma once
// The rights prefixes of a screen: one prefix per action the user's rights text grants on the
// screen's key, in a fixed order ("A_" cancel, "N_" record, "E_" edit, "D_" delete, "F_" opening
// balances, "V_" view, "P_" print). A screen enables a command only when its prefix is present.
#include <QString>

namespace tr::vouchers {

QString rightsPrefixes(const QString& rights, const QString& formKey);
inline bool hasRight(const QString& prefixes, const QString& prefix) {
    return prefixes.contains(prefix);
}

}  // namespace tr::vouchers
