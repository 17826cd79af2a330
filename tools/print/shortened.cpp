#include "print/shortened.h"

#include "print/terminal.h"

namespace kcnvrt {

namespace {

constexpr std::string_view kEllipsis = "...";

bool continues_character(char byte) {
    return (byte & '\xC0') == '\x80';
}

// The longest beginning that fits.
std::string_view beginning(std::string_view text, std::size_t columns) {
    std::size_t end = 0;
    for (std::size_t next = 0; next < text.size(); end = next) {
        while (++next < text.size() && continues_character(text[next])) {
        }
        const std::size_t width = columns_of(text.substr(end, next - end));
        if (width > columns) break;
        columns -= width;
    }
    return text.substr(0, end);
}

std::string_view ending(std::string_view text, std::size_t columns) {
    std::size_t start = text.size();
    for (std::size_t next = start; next > 0; start = next) {
        while (--next > 0 && continues_character(text[next])) {
        }
        const std::size_t width = columns_of(text.substr(next, start - next));
        if (width > columns) break;
        columns -= width;
    }
    return text.substr(start);
}

}  // namespace

std::string shortened(std::string_view text, std::size_t columns) {
    // A column takes a byte at least: what is far longer is not looked at as a whole.
    constexpr std::size_t kLongestCharacter = 4;
    if (text.size() <= columns * kLongestCharacter && columns_of(text) <= columns) return std::string(text);
    const std::size_t room = columns - kEllipsis.size();
    const std::size_t behind = room / 3;
    return std::string(beginning(text, room - behind)).append(kEllipsis).append(ending(text, behind));
}

}  // namespace kcnvrt
