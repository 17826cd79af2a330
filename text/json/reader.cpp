// A reader of its own for nearly every text that there is, several times as fast as Jansson's parser. It accepts and
// never refuses: a text that it is not sure of, for whatever reason, goes to Jansson's parser, whose answer and error
// count.
//
// It accepts objects and arrays, up to Jansson's depth, of
//   - texts in valid UTF-8 with any escape but \u0000 and half a surrogate pair,
//   - integers of up to 18 digits, which surely fit, and reals that the C++ library reads,
//   - true, false and null;
// and names of members without escapes, none twice in one object. Left to Jansson are a single value at the top, longer
// integers, numbers beyond a double, and every error: which of several comes first, and how it is called, is a subject
// of its own that is worth having only once.
#include "json/reader.h"

#include <bit>

#include "basis/buffer.h"
#include "json/escape.h"
#include "json/parser.h"
#include "json/real.h"
#include "json/skip.h"
#include "json/utf8.h"
#include "json/words.h"

namespace kcnvrt::text {

namespace {

constexpr int kSurelyFit = 18;  // digits in a json_int_t
// Texts from this size on are read into as little memory as there may be, shorter ones as soon as may be.
constexpr size_t kLarge = size_t{128} * 1024;

constexpr bool is_digit(char byte) {
    return byte >= '0' && byte <= '9';
}

// The short texts and the integers that a tree has already. Large configurations repeat many, and each would be a node
// of Jansson's. Nobody changes a leaf in place, so one node may stand in many places. The table borrows; the later one
// of two in one slot stays.
class Leaves {
public:
    static bool takes(size_t length) { return length <= 2 * kWordSize; }

    json_t* string(const char* text, size_t length) {
        const bool is_long = length >= kWordSize;
        const Word first = is_long ? load(text) : length == 0 ? 0 : load_rest(text, length);
        const Word last = is_long ? load(text + length - kWordSize) : 0;
        String& known = strings_[slot(first ^ std::rotl(last, 29), kStrings)];
        if (known.node != nullptr && known.first == first && known.last == last && known.length == length)
            return json_incref(known.node);
        json_t* const node = json_stringn_nocheck(text, length);
        known = {first, last, length, node};
        return node;
    }

    json_t* integer(json_int_t number) {
        Integer& known = integers_[slot(static_cast<Word>(number), kIntegers)];
        if (known.node != nullptr && known.number == number) return json_incref(known.node);
        known = {number, json_integer(number)};
        return known.node;
    }

private:
    static constexpr int kStrings = 7;  // two to that power
    static constexpr int kIntegers = 6;

    struct String {
        Word first;
        Word last;
        size_t length;
        json_t* node;
    };
    struct Integer {
        json_int_t number;
        json_t* node;
    };

    static size_t slot(Word word, int bits) { return static_cast<size_t>(word * 0x9E3779B97F4A7C15 >> (64 - bits)); }

    String strings_[1 << kStrings] = {};
    Integer integers_[1 << kIntegers] = {};
};

// The text ends with the bracket that closes its value. Every walk over anything but a string stops there, and needs no
// other bound.
class Reader {
public:
    // With leaves to share, or null.
    Reader(const char* start, const char* closing, Leaves* leaves) : at_{start}, closing_{closing}, leaves_{leaves} {}

    // The whole value, or null where it is not sure.
    json_t* whole() {
        skip_blanks();
        json_t* const value = *at_ == '{' ? object(1) : *at_ == '[' ? array(1) : nullptr;
        if (value == nullptr || at_ == closing_ + 1) return value;
        json_decref(value);
        return nullptr;
    }

    bool lacks_memory() const { return lacks_memory_; }

private:
    // Notes that a value could not be made.
    json_t* made(json_t* value) {
        if (value == nullptr) lacks_memory_ = true;
        return value;
    }
    bool no_memory() {
        lacks_memory_ = true;
        return false;
    }

    json_t* value(int level);
    json_t* object(int level);
    json_t* array(int level);
    bool members(json_t* object, int level);
    bool elements(json_t* array, int level);
    json_t* string();
    json_t* string_with_escapes(const char* start);
    json_t* number();
    json_t* real(const char* start);
    json_t* literal(const char* word, size_t length, json_t* meaning);

    // Indented lines: a line break and many spaces.
    void skip_blanks() {
        if (*at_ > ' ') return;
        if (*at_ == '\n') ++at_;
        while (closing_ - at_ >= static_cast<ptrdiff_t>(kWordSize)) {
            const Word others = load(at_) ^ repeated(' ');
            if (others != 0) {
                at_ += first_byte(others);
                break;
            }
            at_ += kWordSize;
        }
        while (is_blank(*at_)) ++at_;
    }

    // From inside a string to its closing quote, or the first escape. Null where it is not sure.
    const char* rest_of_string(const char* at) const {
        while (true) {
            at = find_special(at, closing_);
            if (at == closing_) return nullptr;
            if (*at == '"' || *at == '\\') return at;
            const size_t length = static_cast<unsigned char>(*at) < 0x20 ? 0 : utf8_length(at, closing_);
            if (length == 0) return nullptr;
            at += length;
        }
    }

    // Closes a container inside another one, so that something has to follow.
    bool close(int level) {
        ++at_;
        return level == 1 || at_ <= closing_;
    }

    const char* at_;
    const char* closing_;
    Leaves* leaves_;
    Buffer decoded_;
    bool lacks_memory_ = false;
};

json_t* Reader::value(int level) {
    switch (*at_) {
        case '"':
            return string();
        case '{':
            return object(level);
        case '[':
            return array(level);
        case 't':
            return literal("true", 4, json_true());
        case 'f':
            return literal("false", 5, json_false());
        case 'n':
            return literal("null", 4, json_null());
        default:
            return number();
    }
}

json_t* Reader::object(int level) {
    json_t* const object = level <= kMostLevels ? made(json_object()) : nullptr;
    if (object == nullptr || members(object, level)) return object;
    json_decref(object);
    return nullptr;
}

json_t* Reader::array(int level) {
    json_t* const array = level <= kMostLevels ? made(json_array()) : nullptr;
    if (array == nullptr || elements(array, level)) return array;
    json_decref(array);
    return nullptr;
}

bool Reader::members(json_t* object, int level) {
    size_t count = 0;
    ++at_;
    skip_blanks();
    if (*at_ == '}') return close(level);
    while (*at_ == '"') {
        const char* const name = at_ + 1;
        const char* const end = rest_of_string(name);
        if (end == nullptr || *end != '"') return false;
        at_ = end + 1;
        skip_blanks();
        if (*at_ != ':') return false;
        ++at_;
        skip_blanks();
        if (level == kMostLevels) return false;
        json_t* const member = value(level + 1);
        if (member == nullptr) return false;
        if (json_object_setn_new_nocheck(object, name, static_cast<size_t>(end - name), member) != 0)
            return no_memory();
        ++count;
        // What the second of two has replaced may be gone, and the leaves would still know it.
        if (leaves_ != nullptr && json_object_size(object) != count) return false;
        skip_blanks();
        if (*at_ == '}') return json_object_size(object) == count && close(level);
        if (*at_ != ',') return false;
        ++at_;
        skip_blanks();
    }
    return false;
}

bool Reader::elements(json_t* array, int level) {
    ++at_;
    skip_blanks();
    if (*at_ == ']') return close(level);
    while (level != kMostLevels) {
        json_t* const element = value(level + 1);
        if (element == nullptr) return false;
        if (json_array_append_new(array, element) != 0) return no_memory();
        skip_blanks();
        if (*at_ == ']') return close(level);
        if (*at_ != ',') return false;
        ++at_;
        skip_blanks();
    }
    return false;
}

json_t* Reader::string() {
    const char* const start = at_ + 1;
    const char* const end = rest_of_string(start);
    if (end == nullptr) return nullptr;
    if (*end == '\\') return string_with_escapes(start);
    at_ = end + 1;
    const auto length = static_cast<size_t>(end - start);
    const bool is_shared = leaves_ != nullptr && Leaves::takes(length);
    return made(is_shared ? leaves_->string(start, length) : json_stringn_nocheck(start, length));
}

json_t* Reader::string_with_escapes(const char* start) {
    decoded_.cut(0);
    while (true) {
        const char* const end = rest_of_string(start);
        if (end == nullptr) return nullptr;
        if (!decoded_.append({start, static_cast<size_t>(end - start)})) return made(nullptr);
        if (*end == '"') {
            at_ = end + 1;
            return made(json_stringn_nocheck(decoded_.data(), decoded_.size()));
        }
        const Escape escape = read_escape(end, closing_);
        if (escape.length == 0 || escape.code == 0) return nullptr;
        char* const place = decoded_.room(4);
        if (place == nullptr) return made(nullptr);
        decoded_.advance_to(put_utf8(escape.code, place));
        start = end + escape.length;
    }
}

json_t* Reader::number() {
    const char* const start = at_;
    const bool is_negative = *at_ == '-';
    if (is_negative) ++at_;
    const char* const digits = at_;
    json_int_t number = 0;
    for (; is_digit(*at_) && at_ - digits < kSurelyFit; ++at_) number = 10 * number + (*at_ - '0');
    if (at_ == digits || (*digits == '0' && at_ - digits > 1)) return nullptr;
    if (*at_ == '.' || *at_ == 'e' || *at_ == 'E' || is_digit(*at_)) return real(start);
    if (is_negative) number = -number;
    return made(leaves_ != nullptr ? leaves_->integer(number) : json_integer(number));
}

json_t* Reader::real(const char* start) {
    const auto passes_digits = [this] {
        const char* const first = at_;
        while (is_digit(*at_)) ++at_;
        return at_ != first;
    };
    while (is_digit(*at_)) ++at_;
    if (*at_ != '.' && *at_ != 'e' && *at_ != 'E') return nullptr;  // a long integer
    if (*at_ == '.') {
        ++at_;
        if (!passes_digits()) return nullptr;
    }
    if (*at_ == 'e' || *at_ == 'E') {
        ++at_;
        if (*at_ == '+' || *at_ == '-') ++at_;
        if (!passes_digits()) return nullptr;
    }
    double number;
    if (!read_real({start, static_cast<size_t>(at_ - start)}, number)) return nullptr;
    return made(json_real(number));
}

json_t* Reader::literal(const char* word, size_t length, json_t* meaning) {
    if (static_cast<size_t>(closing_ - at_) < length || std::memcmp(at_, word, length) != 0) return nullptr;
    at_ += length;
    return meaning;
}

// The last byte that is not blank, or null.
const char* last_byte(std::string_view text) {
    size_t length = text.size();
    while (length != 0 && is_blank(text[length - 1])) --length;
    return length == 0 ? nullptr : text.data() + length - 1;
}

json_t* read_by(Reader&& reader, bool* lacks_memory) {
    json_t* const value = reader.whole();
    if (lacks_memory != nullptr) *lacks_memory = reader.lacks_memory();
    return value;
}

}  // namespace

json_t* read_if_sure(std::string_view text, bool* lacks_memory) {
    const char* const last = last_byte(text);
    const bool is_closed = last != nullptr && (*last == '}' || *last == ']');
    if (!is_closed) return nullptr;
    if (text.size() < kLarge) return read_by(Reader{text.data(), last, nullptr}, lacks_memory);
    Leaves leaves;
    return read_by(Reader{text.data(), last, &leaves}, lacks_memory);
}

// Where memory ran out the parser is not asked: it would take that for an error of the text, or not survive it.
json_t* read(std::string_view text, ReadOptions options, ReadError& error) {
    bool lacks_memory = false;
    json_t* const value = read_if_sure(text, &lacks_memory);
    if (value != nullptr) return value;
    if (!lacks_memory) return parse(text, options, error);
    error.kind = ReadErrorKind::kOutOfMemory;
    return nullptr;
}

}  // namespace kcnvrt::text
