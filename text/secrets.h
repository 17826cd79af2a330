// secrets.h: what is not shown unless one asks for it.
#pragma once

#include <cstddef>
#include <string_view>

#include "growing_array.h"

namespace kcnvrt::text {

// Stands where a secret is.
inline constexpr std::string_view kMask = "***";

// Whether a member of that name holds one.
bool is_secret_name(std::string_view name);

// Whether a JSON Pointer leads into such a member.
bool leads_to_secret(std::string_view pointer);

// Bytes of a text.
struct Span {
    size_t start;
    size_t end;
};

// Every value in a text, in order, that is a secret or inside one, whether the text is JSON or only nearly so. In a
// difference, what it puts in place may be one under any path. False when memory ends.
bool find_secrets(std::string_view text, bool is_difference, GrowingArray<Span>& secrets);

}  // namespace kcnvrt::text
