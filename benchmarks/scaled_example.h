// scaled_example.h: configurations of any size, grown from the example of one home.
#pragma once

#include "frame/json.h"
#include "outer_lists.h"

namespace kcnvrt::bench {

// The example with every outer list `scale` times as long. A copy of an entry has names of its own, and names the
// copies of the interfaces that the entry names. The same arguments give the same bytes.
Json scaled_example(json_t* example, Layout layout, unsigned scale);

}  // namespace kcnvrt::bench
