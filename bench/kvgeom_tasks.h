// SPDX-License-Identifier: MIT
#pragma once

#include "task.h"

namespace bench {

// The batch calls.
Task PrepareKvgeom(Work work, const Model& model);
// The same with boxes and points in the order of x.
Task PrepareKvgeomSorted(Work work, const Model& model);
// A call through the shared library for each element.
Task PrepareKvgeomSingle(Work work, const Model& model);
// The arithmetic of such a call, without the call.
Task PrepareKvgeomInlined(Work work, const Model& model);

}  // namespace bench
