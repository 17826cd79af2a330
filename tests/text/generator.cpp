// Texts are put together from pieces that parsers stumble over, and damaged in one place.
#include "generator.h"

#include <charconv>
#include <cstdlib>
#include <iterator>
#include <string_view>

namespace kcnvrt::text {

namespace {

// clang-format off
constexpr std::string_view kNumbers[] = {
    "0", "-0", "1", "-1", "10", "4294967295", "4294967296", "123456789012345678", "999999999999999999",
    "-999999999999999999", "1234567890123456789", "9223372036854775807", "-9223372036854775808", "0.0", "-0.0", "1.0",
    "1.1", "0.1", "1e5", "1E5", "1e+5", "1e-5", "1.5e300", "1e308", "1.7976931348623157e308", "5e-324",
    "2.2250738585072014e-308", "1e-400", "123456789012345678901234567890.5", "0.30000000000000004",
    "9007199254740993.0", "100000000000000000000.0", "1e22", "1e23", "3.0e0",
};
// Numbers that are none, or that nothing holds.
constexpr std::string_view kBadNumbers[] = {
    "9223372036854775808", "-9223372036854775809", "123456789012345678901234567890", "1e400", "-1e400", "01", "-01", "00",
    "-", "+1", "1.", ".5", "1.e5", "1e", "1e+", "1e5.5", "0x10", "NaN", "Infinity", "-Infinity", "1_000", "0e", "1.5.5",
};
constexpr std::string_view kPieces[] = {
    "a", "eth0", "PPP session", "192.168.1.1", "0123456789abcdef0123456789", "\\\"", "\\\\", "\\/", "\\b", "\\f", "\\n", "\\r",
    "\\t", "\\u0001", "\\u001f", "\\u007f", "\\u00e9", "\\u20AC", "\\uFFFF", "\\ud83d\\ude00", "\\uDBFF\\uDFFF", "\x7f",
    "\xC2\x80", "\xC3\xA9", "\xDF\xBF", "\xE0\xA0\x80", "\xE2\x82\xAC", "\xED\x9F\xBF", "\xEE\x80\x80", "\xEF\xBF\xBF",
    "\xF0\x90\x80\x80", "\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF", "{}[],:", "~", "/", "'", "        ",
};
constexpr std::string_view kBadPieces[] = {
    "\\", "\\u", "\\u12", "\\u00g0", "\\x41", "\\'", "\\u0000", "\\ud83d", "\\ude00", "\\ud83d\\u0041", "\\ud83dx", "\\ud83d\\n",
    "\x1f", "\n", "\t", "\x01", "\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC3", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF",
    "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xE2\x82", "\xF0\x9F\x98", "\"",
};
constexpr std::string_view kBlanks[] = {"", "", "", " ", "\n", "\t", "\r\n", "\n    ", "\n                     ", "  \n\t"};
constexpr std::string_view kDebris[] = {
    "{", "}", "[", "]", ",", ":", "\"", "\\", "null", "true", "false", "nul", "True", "-", "0", "1e400", "\xEF\xBB\xBF", "//",
    " ", "\n", "{}", "[]", "\"a\":1,", "\"\":", ",,", "\\u0000", "\xC3\x28", "\x1f", "'a'",
};
// clang-format on

class Generator {
public:
    explicit Generator(uint64_t seed) : state_{seed * 0x9E3779B97F4A7C15 + 0x2545F4914F6CDD1D} {}

    size_t below(size_t bound) { return static_cast<size_t>(next() % bound); }

    template <size_t N>
    std::string_view pick(const std::string_view (&list)[N]) {
        return list[below(N)];
    }

    void blanks() { text_ += is_compact_ ? std::string_view{} : pick(kBlanks); }

    void value(int levels) {
        switch (below(levels == 0 ? 6 : 12)) {
            case 0:
                text_ += below(12) == 0 ? pick(kNumbers) : "0";
                break;
            case 1:
                random_number();
                break;
            case 2:
            case 3:
            case 4:
                string();
                break;
            case 5:
                literal();
                break;
            case 6:
            case 7:
            case 8:
                array(levels);
                break;
            default:
                object(levels);
        }
    }

    void object(int levels) {
        text_ += '{';
        blanks();
        const size_t count = below(7);
        for (size_t i = 0; i < count; ++i) {
            if (i != 0) text_ += ',';
            blanks();
            name(i);
            blanks();
            text_ += ':';
            blanks();
            value(levels - 1);
            blanks();
        }
        text_ += '}';
    }

    void array(int levels) {
        text_ += '[';
        blanks();
        const size_t count = below(6);
        for (size_t i = 0; i < count; ++i) {
            if (i != 0) text_ += ',';
            blanks();
            value(levels - 1);
            blanks();
        }
        text_ += ']';
    }

    std::string whole() {
        is_compact_ = below(3) == 0;
        blanks();
        below(4) == 0 ? array(5) : object(5);
        blanks();
        return text_;
    }

private:
    uint64_t next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return state_ * 0x2545F4914F6CDD1D >> 16;
    }

    void literal() {
        constexpr std::string_view kLiterals[] = {"true", "false", "null"};
        text_ += pick(kLiterals);
    }

    void string() {
        text_ += '"';
        for (size_t i = below(5); i != 0; --i) text_ += pick(kPieces);
        text_ += '"';
    }

    // Seldom the name of another member too, seldom with an escape.
    void name(size_t number) {
        text_ += '"';
        text_ += "m";
        text_ += std::to_string(below(400) == 0 ? 0 : number);
        if (below(300) == 0) text_ += pick(kPieces);
        text_ += '"';
    }

    void random_number() {
        if (below(2) == 0) text_ += '-';
        char digits[24];
        const auto number = next() >> below(48);
        text_.append(digits, std::to_chars(digits, std::end(digits), number).ptr);
        if (below(2) == 0) return;
        text_ += '.';
        text_.append(digits, std::to_chars(digits, std::end(digits), next() >> below(48)).ptr);
        if (below(2) == 0) return;
        text_ += below(2) == 0 ? "e" : "E-";
        text_ += std::to_string(below(290));
    }

    std::string text_;
    uint64_t state_;
    bool is_compact_ = false;
};

void damage(std::string& text, Generator& generator) {
    const size_t at = generator.below(text.size() + 1);
    switch (generator.below(8)) {
        case 0:
            text.insert(at, generator.pick(kDebris));
            break;
        case 1:
            text.insert(at, generator.pick(kBadPieces));
            break;
        case 2:
            text.insert(at, generator.pick(kBadNumbers));
            break;
        case 3:
            text.erase(at, 1 + generator.below(3));
            break;
        case 4:
            text.resize(at);
            break;
        case 5:
            if (at < text.size()) text[at] = static_cast<char>(generator.below(256));
            break;
        case 6:
            text.insert(at, text.substr(generator.below(text.size() + 1), generator.below(20)));
            break;
        default:
            text += generator.pick(kDebris);
    }
}

}  // namespace

std::string text_number(uint64_t number) {
    return Generator{number}.whole();
}

std::string damaged(std::string text, uint64_t number) {
    Generator generator{~number};
    for (size_t i = 1 + generator.below(3); i != 0; --i) damage(text, generator);
    return text;
}

uint64_t sample_step() {
    const char* const sample = std::getenv("KCNVRT_SAMPLE");
    return sample == nullptr ? 1 : std::strtoul(sample, nullptr, 10);
}

}  // namespace kcnvrt::text
