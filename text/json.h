// json.h: an owning reference to a JSON value.
#pragma once

#include <jansson.h>

#include <memory>

namespace kcnvrt::text {

struct ReleaseJson {
    void operator()(json_t* value) const { json_decref(value); }
};

using Json = std::unique_ptr<json_t, ReleaseJson>;

}  // namespace kcnvrt::text
