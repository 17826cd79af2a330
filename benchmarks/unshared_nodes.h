// unshared_nodes.h: the values of a result that a conversion had to make, and what making them costs at least.
#pragma once

#include <cstddef>
#include <vector>

#include "frame/json.h"

namespace kcnvrt::bench {

struct UnsharedNodes {
    size_t nodes = 0;
    size_t allocations = 0;  // by Jansson, for these values alone
};

// The values of `result` that `source` does not have itself.
UnsharedNodes unshared_nodes(json_t* result, json_t* source);

// Makes the same result again with nothing but its own values made anew: the least that a conversion costs.
class Remaker {
public:
    Remaker(json_t* result, json_t* source);
    Json operator()() const;

private:
    json_t* result_;
    std::vector<bool> is_unshared_;  // of each value in the order of the walk, which ends at shared ones
};

}  // namespace kcnvrt::bench
