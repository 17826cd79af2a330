// A writer of its own, several times as fast as Jansson's. Values deeper than its levels are Jansson's to write, whose
// parser makes none; so are those that contain themselves, which are deeper than anything.
#include "json/writer.h"

#include <algorithm>
#include <charconv>

#include "json/real.h"
#include "json/skip.h"
#include "json/utf8.h"
#include "json/words.h"

namespace kcnvrt::text {

namespace {

constexpr size_t kLongestInteger = 20;
constexpr size_t kLongestEscape = 6;
constexpr std::string_view kBlanks = "                                ";
constexpr size_t kSlack = kBlanks.size() + kWordSize;  // copying goes beyond the end; and for punctuation

class Writer {
public:
    Writer(Layout layout, Buffer& buffer)
        : indent_{layout.compact ? 0 : layout.indent}, is_compact_{layout.compact}, buffer_{buffer} {}

    bool value(const json_t* value, int level);

    // Values that were too deep are the reason for a failure.
    bool is_too_deep() const { return is_too_deep_; }

    void finish() {
        if (at_ != nullptr) buffer_.advance_to(at_);
    }

private:
    bool object(const json_t* object, int level);
    bool array(const json_t* array, int level);
    bool string(const char* text, size_t length);
    bool special_string(const char* text, const char* end);
    bool integer(json_int_t number);
    bool real(double number);
    bool open(char bracket, int level);
    bool go_on(int level);
    bool close(char bracket, int level);

    bool needs(size_t more) { return static_cast<size_t>(limit_ - at_) >= more || grow(more); }
    bool grow(size_t more);
    bool needs_line(int level) { return needs(indent_ * static_cast<size_t>(level) + kSlack); }
    void break_line(int level);

    template <size_t N>
    bool literal(const char (&word)[N]) {
        if (!needs(N)) return false;
        std::memcpy(at_, word, N - 1);
        at_ += N - 1;
        return true;
    }

    size_t indent_;
    bool is_compact_;
    bool is_too_deep_ = false;
    Buffer& buffer_;
    char* at_ = nullptr;
    const char* limit_ = nullptr;
};

// In the form that json_dumps uses; `place` has kLongestEscape bytes.
char* put_escape(char byte, char* place) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    *place++ = '\\';
    switch (byte) {
        case '"':
        case '\\':
            *place++ = byte;
            return place;
        case '\b':
            *place++ = 'b';
            return place;
        case '\f':
            *place++ = 'f';
            return place;
        case '\n':
            *place++ = 'n';
            return place;
        case '\r':
            *place++ = 'r';
            return place;
        case '\t':
            *place++ = 't';
            return place;
        default:
            std::memcpy(place, "u00", 3);
            place[3] = kDigits[byte >> 4 & 0xF];
            place[4] = kDigits[byte & 0xF];
            return place + 5;
    }
}

// Copies up to the first special byte and moves `at` there. `place` has room for what is left and a word more.
[[gnu::always_inline]] inline char* copy_plain(const char*& at, const char* end, char* place) {
    for (; end - at >= static_cast<ptrdiff_t>(kWordSize); at += kWordSize, place += kWordSize) {
        const Word word = load(at);
        store(word, place);
        if (const Word marks = special_bytes(word); marks != 0) {
            at += first_byte(marks);
            return place + first_byte(marks);
        }
    }
    if (at == end) return place;
    const Word word = load_rest(at, static_cast<size_t>(end - at));
    store(word, place);
    const size_t copied = first_byte(special_bytes(word));
    at += copied;
    return place + copied;
}

bool Writer::grow(size_t more) {
    finish();
    at_ = buffer_.room(more);
    limit_ = buffer_.limit();
    return at_ != nullptr;
}

bool Writer::value(const json_t* value, int level) {
    switch (json_typeof(value)) {
        case JSON_OBJECT:
            return object(value, level + 1);
        case JSON_ARRAY:
            return array(value, level + 1);
        case JSON_STRING:
            return string(json_string_value(value), json_string_length(value));
        case JSON_INTEGER:
            return integer(json_integer_value(value));
        case JSON_REAL:
            return real(json_real_value(value));
        case JSON_TRUE:
            return literal("true");
        case JSON_FALSE:
            return literal("false");
        case JSON_NULL:
            return literal("null");
    }
    return false;
}

// Between brackets and values, where lines are indented.
void Writer::break_line(int level) {
    if (indent_ == 0) return;
    *at_++ = '\n';
    char* const end = at_ + indent_ * static_cast<size_t>(level);
    for (; at_ < end; at_ += kBlanks.size()) std::memcpy(at_, kBlanks.data(), kBlanks.size());
    at_ = end;
}

bool Writer::open(char bracket, int level) {
    is_too_deep_ = level > kMostLevels;
    if (is_too_deep_ || !needs_line(level)) return false;
    *at_++ = bracket;
    break_line(level);
    return true;
}

bool Writer::go_on(int level) {
    if (!needs_line(level)) return false;
    *at_++ = ',';
    if (indent_ == 0 && !is_compact_) *at_++ = ' ';
    break_line(level);
    return true;
}

bool Writer::close(char bracket, int level) {
    if (!needs_line(level)) return false;
    break_line(level - 1);
    *at_++ = bracket;
    return true;
}

bool Writer::object(const json_t* object, int level) {
    json_t* const members = const_cast<json_t*>(object);  // walking changes nothing
    void* member = json_object_iter(members);
    if (member == nullptr) return literal("{}");
    if (!open('{', level)) return false;
    while (true) {
        if (!string(json_object_iter_key(member), json_object_iter_key_len(member))) return false;
        if (is_compact_ ? !literal(":") : !literal(": ")) return false;
        if (!value(json_object_iter_value(member), level)) return false;
        member = json_object_iter_next(members, member);
        if (member == nullptr) return close('}', level);
        if (!go_on(level)) return false;
    }
}

bool Writer::array(const json_t* array, int level) {
    const size_t count = json_array_size(array);
    if (count == 0) return literal("[]");
    if (!open('[', level)) return false;
    for (size_t i = 0; i < count; ++i) {
        if (i != 0 && !go_on(level)) return false;
        if (!value(json_array_get(array, i), level)) return false;
    }
    return close(']', level);
}

bool Writer::string(const char* text, size_t length) {
    const char* const end = text + length;
    if (!needs(length + kSlack)) return false;
    *at_ = '"';
    at_ = copy_plain(text, end, at_ + 1);
    if (text != end && !special_string(text, end)) return false;
    *at_++ = '"';
    return true;
}

// Out of the way of the strings that have nothing special.
[[gnu::noinline]] bool Writer::special_string(const char* text, const char* end) {
    while (text != end) {
        const size_t character = utf8_length(text, end);
        if (character == 0) return false;
        if (character == 1) {
            at_ = put_escape(*text, at_);
        } else {
            std::memcpy(at_, text, character);
            at_ += character;
        }
        text += character;
        if (!needs(static_cast<size_t>(end - text) + kLongestEscape + kSlack)) return false;
        at_ = copy_plain(text, end, at_);
    }
    return true;
}

bool Writer::integer(json_int_t number) {
    if (!needs(kLongestInteger)) return false;
    at_ = std::to_chars(at_, at_ + kLongestInteger, number).ptr;
    return true;
}

bool Writer::real(double number) {
    if (!needs(kLongestReal)) return false;
    at_ = print_real(number, at_);
    return true;
}

int append(const char* bytes, size_t count, void* buffer) {
    return static_cast<Buffer*>(buffer)->append({bytes, count}) ? 0 : -1;
}

bool write_by_jansson(const json_t* value, Layout layout, Buffer& buffer) {
    const size_t flags = layout.compact ? JSON_COMPACT : JSON_INDENT(layout.indent);
    return json_dump_callback(value, append, &buffer, flags | JSON_ENCODE_ANY) == 0;
}

}  // namespace

bool write(const json_t* value, Layout layout, Buffer& buffer) {
    const size_t start = buffer.size();
    Writer writer{layout, buffer};
    bool is_written = writer.value(value, 0);
    writer.finish();
    if (writer.is_too_deep()) {
        buffer.cut(start);
        is_written = write_by_jansson(value, layout, buffer);
    }
    if (!is_written) buffer.cut(start);
    return is_written;
}

}  // namespace kcnvrt::text
