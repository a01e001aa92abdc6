#pragma once
// The cheques' state-action table: which actions each state offers (by the cheque's facts), the
// kind each action name records on each side, and undo ("حذف عمليات قبلي"). The screens and the
// apply procedures read it; docs/decisions/cheque-state-actions.md gives the reading of the
// cases the rules leave open.
#include "instruments/state_actions.h"

namespace tr::instruments {

const StateActions& chequeActions();

}  // namespace tr::instruments
