// listing.h: the lists inside messages, which the compiler puts together from the table that they list.
//
//     constexpr auto kWidths = listing<"", ", ">([](auto add) {
//         for (const BandWidth& band_width : kBandWidths) add(band_width.width);
//     });
//
//     return report.fail("%s != [%s]", text, kWidths.text());  // ... != [20MHz, 40MHz, 80MHz]
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "frame/ways.h"

namespace kcnvrt {

template <size_t Size>
struct Listing {
    char characters[Size];

    constexpr const char* text() const { return characters; }
};

// Each item between two quotes, with the separator between two items. `each(add)` calls `add(item)` for every item; it
// captures nothing, and is called twice: to measure and to write.
template <ways::Text quote, ways::Text separator, class Each>
constexpr auto listing(Each) {
    constexpr auto write = [](auto add_text) {
        bool is_first = true;
        Each{}([&](std::string_view item) {
            if (!is_first) add_text(separator.view());
            is_first = false;
            add_text(quote.view());
            add_text(item);
            add_text(quote.view());
        });
    };
    constexpr size_t kLength = [write] {
        size_t length = 0;
        write([&length](std::string_view text) { length += text.size(); });
        return length;
    }();
    Listing<kLength + 1> list{};
    char* end = list.characters;
    write([&end](std::string_view text) {
        for (const char character : text) *end++ = character;
    });
    return list;
}

// The decimal text of a byte, as the compiler can make it.
class ByteDigits {
public:
    constexpr explicit ByteDigits(uint8_t number) {
        for (const int unit : {100, 10, 1})
            if (number >= unit || unit == 1) digits_[length_++] = static_cast<char>('0' + number / unit % 10);
    }

    constexpr std::string_view view() const { return {digits_, length_}; }

private:
    char digits_[3]{};
    size_t length_ = 0;
};

}  // namespace kcnvrt
