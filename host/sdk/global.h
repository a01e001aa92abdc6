#pragma once
// The session record the host passes to the library (defined with the core code, which reads
// it too), and a ready demo session for the demo host and tests.
#include "common/session/global.h"
#include "host/sdk/sdk_export.h"

namespace tr::sdk {

using tr::Global;
using tr::fullRights;
using tr::rightMarkers;

// User 1 in the demo company "1", fiscal year 1404, with every right on the given form keys.
TR_SDK_EXPORT Global demoGlobal(const QStringList& formKeys = {});

}  // namespace tr::sdk
