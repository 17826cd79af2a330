// data.h: the description of both layouts that the tool carries.
#pragma once

#include <string_view>

namespace kcnvrt {

std::string_view layouts_text();

}  // namespace kcnvrt
