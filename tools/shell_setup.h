#pragma once
// What the shell needs besides the engine: the procedures a company database answers to, the
// database a data directory opens by default, and the demo company.
#include <QString>

namespace tr::engine {
class Engine;
}

namespace tr::tools {

void registerProcedures(tr::engine::Engine& engine);
// The company database of the data directory (the newest registered one), else "CORVASK_Sdc".
QString defaultDatabase(tr::engine::Engine& engine);
// Creates the demo company in `dataDirectory`; answers a one-line summary.
QString createDemo(const QString& dataDirectory);

}  // namespace tr::tools
