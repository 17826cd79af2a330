#include "print/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <cwchar>

namespace kcnvrt {

namespace {

constexpr std::size_t kUsualColumns = 80;

// The width of characters is the C library's to know, in a locale that has them all.
bool knows_characters() {
    static const bool knows = std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr;
    return knows;
}

std::size_t columns_from_environment() {
    const char* const columns = std::getenv("COLUMNS");
    const unsigned long number = columns == nullptr ? 0 : std::strtoul(columns, nullptr, 10);
    return number == 0 ? kUsualColumns : number;
}

bool is_ascii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

}  // namespace

bool stderr_is_terminal() {
    static const bool is_terminal = isatty(STDERR_FILENO) == 1;
    return is_terminal;
}

bool has_colors(int descriptor, ColorChoice choice) {
    if (choice != ColorChoice::kAuto) return choice == ColorChoice::kAlways;
    const char* const refused = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    const bool is_refused = refused != nullptr && *refused != '\0';
    return isatty(descriptor) == 1 && !is_refused && terminal != nullptr && std::strcmp(terminal, "dumb") != 0;
}

bool stderr_has_colors(ColorChoice choice) {
    return has_colors(STDERR_FILENO, choice);
}

std::size_t terminal_columns() {
    winsize size;
    const bool is_known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0;
    return is_known ? size.ws_col : columns_from_environment();
}

std::size_t columns_of(std::string_view text) {
    if (is_ascii(text) || !knows_characters()) return text.size();
    std::size_t columns = 0;
    std::mbstate_t state = {};
    while (!text.empty()) {
        wchar_t character;
        const std::size_t length = std::mbrtowc(&character, text.data(), text.size(), &state);
        const bool is_character = length != 0 && length <= text.size();
        const int width = is_character ? wcwidth(character) : 1;
        columns += width < 0 ? 1 : static_cast<std::size_t>(width);
        text.remove_prefix(is_character ? length : 1);
        if (!is_character) state = {};
    }
    return columns;
}

}  // namespace kcnvrt
