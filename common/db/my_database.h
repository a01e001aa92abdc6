#pragma once
// The host's database pair: the command query for statements that return no rows, and the
// connection to the company database that every screen's datasets use.
#include "common/db/connection.h"
#include "common/db/query.h"

namespace tr::db {

struct MyDatabase {
    Query* CommandQuery = nullptr;
    tr::db::Connection* Connection = nullptr;
};

}  // namespace tr::db
