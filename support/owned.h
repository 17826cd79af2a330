// owned.h: what is given back when its scope ends. A plain pointer is borrowed, always.
#pragma once

#include <jansson.h>

#include <cstdlib>
#include <memory>

namespace kcnvrt {

// Functions of their own where Jansson's are inline: that is dozens of bytes at each of a thousand places.
[[gnu::noinline]] inline void release(json_t* value) {
    json_decref(value);
}

struct Release {
    void operator()(json_t* value) const { release(value); }
};

// One reference to a JSON value; release() hands it over.
using Json = std::unique_ptr<json_t, Release>;

[[gnu::noinline]] inline Json share(json_t* value) {
    return Json{json_incref(value)};
}

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

// What the C library allocated.
template <class Value>
using Allocated = std::unique_ptr<Value, Free>;

}  // namespace kcnvrt
