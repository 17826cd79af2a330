// json.h: an owning reference to a JSON value, and how deep one may be.
#pragma once

#include <jansson.h>

#include <memory>

namespace kcnvrt::text {

struct ReleaseJson {
    void operator()(json_t* value) const { json_decref(value); }
};

using Json = std::unique_ptr<json_t, ReleaseJson>;

// How many objects and arrays Jansson's parser accepts inside one another.
inline constexpr int kMostLevels = 2048;

}  // namespace kcnvrt::text
