// What a terminal is, and what it can show.
#pragma once

#include <cstddef>
#include <string_view>

namespace kcnvrt {

enum class ColorChoice { kAuto, kAlways, kNever };

bool stderr_is_terminal();

// By the user's choice; without one, where there is a terminal that knows colours and nobody set NO_COLOR.
bool has_colors(int descriptor, ColorChoice choice);
bool stderr_has_colors(ColorChoice choice);

// How many characters fit in a line.
std::size_t terminal_columns();

// How many columns a UTF-8 text takes: wide characters take two, combining ones none.
std::size_t columns_of(std::string_view text);

}  // namespace kcnvrt
