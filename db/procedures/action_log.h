#pragma once
// sp_Asnad_Actions '<voucher no>','N','<title>','<date>','<user>','<I|E|D>','<time>','<computer>',
// '<WhatDoc>','','','<serial>': appends one row to ASNADACTIONS; any other action letter is
// refused.
#include "db/procedures/procedures.h"

namespace tr::procedures {

tr::db::ExecResult logDocumentAction(tr::db::Connection& connection, const Args& args);

}  // namespace tr::procedures
