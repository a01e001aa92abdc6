#pragma once
// The buttons of the search launcher ("جستجوي اسناد نقدينگي"): caption, the rights marker that
// shows it, and the search it opens. Note searches are not built yet: their buttons show but stay
// disabled.
#include <QString>
#include <optional>
#include <vector>

#include "cashbank/search/search_families.h"

namespace tr::cashbank {

// The cheque searches live with the cheques; the launcher only names the side.
enum class ChequeSearchSide { Received, Issued };

struct LauncherButton {
    QString name;  // object name of the button
    QString caption;
    QString marker;                     // empty: shown to every user
    std::optional<SearchFamily> opens;  // empty: a cheque search or nothing to open yet
    std::optional<ChequeSearchSide> cheques = std::nullopt;
};

inline constexpr const char* kLauncherCaption = "جستجوي اسناد نقدينگي";
inline constexpr const char* kNotAvailableTip = "اين جستجو هنوز در دسترس نيست.";

// In the order the launcher lays them out.
const std::vector<LauncherButton>& launcherButtons();
bool buttonVisible(const LauncherButton& button, const QString& rights);

}  // namespace tr::cashbank
