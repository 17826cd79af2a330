// What somebody may have meant who wrote a name that there is not.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kcnvrt {

// ", did you mean "NAME"?" with the name that is most like the word; empty where none is.
std::string suggestion(std::string_view word, const std::vector<std::string_view>& names);

}  // namespace kcnvrt
