// container.h: what a section is. In the new layout it is always an object.
#pragma once

#include <cstdint>

namespace kcnvrt {

enum class Container : uint8_t {
    kObject,
    kArray,
    kEither,  // an array if the handler accepts one, else an object
};

}  // namespace kcnvrt
