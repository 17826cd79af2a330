// An owning reference to a JSON value.
#pragma once

#include <jansson.h>

#include <memory>

namespace kcnvrt {

struct JsonRelease {
    void operator()(json_t* value) const { json_decref(value); }
};

using Json = std::unique_ptr<json_t, JsonRelease>;

}  // namespace kcnvrt
