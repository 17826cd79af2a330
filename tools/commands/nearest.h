// What somebody may have meant who wrote a name that there is not.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kcnvrt {

// The name that is most like the word; empty where none is.
std::string nearest(std::string_view word, const std::vector<std::string_view>& names);
// ", did you mean "NAME"?" with that name; empty where none is.
std::string suggestion(std::string_view word, const std::vector<std::string_view>& names);

}  // namespace kcnvrt
