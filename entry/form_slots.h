#pragma once
// Every form pointer the library owns, in the order Release_It destroys them. A slot's name is
// the published variable's name without its underscore (`_FixDesForm`).
#include <cstddef>

namespace tr::entry {

enum class FormSlot : std::size_t {
    FixDesForm,
    CashGetForm,
    CashPayForm,
    TankhahPayForm,
    BardashtBankForm,
    VarizBankForm,
    HavalehForm,
    ChqPayForm,
    ChqGetForm,
    ChqMojavezForm,
    ChqMojavezTaedForm,
    ChqAction1Form,
    SoftehPayForm,
    SoftehGetForm,
    SoftehActionForm,
    ChqToBankForm,
    SearchForm,
    TasirArzForm,
    EbtalBargeCheckForm,
    ChqGetSlctFrm,
    Count
};

}  // namespace tr::entry
