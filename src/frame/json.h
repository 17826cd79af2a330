// json.h: Jansson with ownership in the types, keys of known length, and ranges to walk a tree.
//
// A plain json_t* is borrowed, always, and may be null: absent. An owned value is a Json.
// A wrong-typed container is an empty one: a member of a non-object is absent, a non-array has no elements.
#pragma once

#include <jansson.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include "members.h"
#include "owned.h"
#include "small_array.h"

namespace kcnvrt {

// A member name with its length, which saves Jansson a walk over the text. Borrowed: a literal or a text that outlives
// it.
class Key {
public:
    template <size_t N>
    constexpr Key(const char (&literal)[N]) : text_{literal}, length_{N - 1} {}
    constexpr Key(const char* text, size_t length) : text_{text}, length_{length} {}
    constexpr explicit Key(std::string_view text) : text_{text.data()}, length_{text.size()} {}

    // NUL-terminated, as every name in this library is.
    constexpr const char* text() const { return text_; }
    constexpr size_t length() const { return length_; }
    constexpr std::string_view view() const { return {text_, length_}; }
    constexpr bool operator==(Key other) const { return view() == other.view(); }

private:
    const char* text_;
    size_t length_;
};

// A member name that a table keeps by its characters: without a pointer it needs no relocation.
class Name {
public:
    template <size_t N>
    constexpr Name(const char (&literal)[N]) : length_{N - 1} {
        static_assert(N <= sizeof text_);
        for (size_t i = 0; i < N; ++i) text_[i] = literal[i];
    }

    constexpr operator Key() const { return {text_, length_}; }
    constexpr const char* text() const { return text_; }
    constexpr std::string_view view() const { return {text_, length_}; }
    constexpr bool is_empty() const { return length_ == 0; }
    constexpr bool operator==(const Name& other) const { return view() == other.view(); }

private:
    char text_[19]{};
    uint8_t length_;
};

// The decimal text of a number, where a name or a value needs one.
class Decimal {
public:
    explicit Decimal(int64_t number);
    Key key() const { return {text_, length_}; }
    operator Key() const { return key(); }
    const char* text() const { return text_; }
    std::string_view view() const { return {text_, length_}; }

private:
    char text_[21];
    uint8_t length_;
};

// Making values. A null Json means that memory ran out, which is noted (k_err_is_complete); storing it does nothing.

json_t* new_object();
json_t* new_array();
json_t* new_integer(int64_t number);
json_t* new_string(const char* text, size_t length);

inline Json object() {
    return Json{new_object()};
}
inline Json array() {
    return Json{new_array()};
}
inline Json null() {
    return Json{json_null()};
}
inline Json integer(int64_t number) {
    return Json{new_integer(number)};
}
inline Json boolean(bool value) {
    return Json{json_boolean(value)};
}

// A string of text that is known to be UTF-8: a literal, or text that came out of a tree.
inline Json string(std::string_view text) {
    return Json{new_string(text.data(), text.size())};
}
inline Json string(Key text) {
    return string(text.view());
}
inline Json string(const char* literal) {
    return string(std::string_view{literal});
}

// A string of text that may be anything, made by the library itself or given by its caller: null when it is absent or
// not UTF-8.
Json checked_string(const char* text);

// A new object or array with the same members (shared).
Json shallow_copy(json_t* value);

// Sets every member of `source` in `object`, shared; nothing where either is no object.
void carry_members(json_t* object, json_t* source);

// Reading.

inline json_t* get(json_t* object, Key key) {
    return json_object_getn(object, key.text(), key.length());
}
inline bool has(json_t* object, Key key) {
    return get(object, key) != nullptr;
}

// The text of a string, or null when the value is absent or of another type.
inline const char* text_of(json_t* value) {
    return json_string_value(value);
}
inline const char* text_of(json_t* object, Key key) {
    return text_of(get(object, key));
}

// The same with its length, which may be empty for either reason.
std::string_view view_of(json_t* string);

// A string as the name of a member, up to its first NUL: a name with a NUL could be written, but no parser of Jansson's
// would read it back. An absent name for anything but a string.
Key name_of(json_t* string);

bool is_text(json_t* value, std::string_view text);

inline size_t size_of(json_t* container) {
    return json_is_object(container) ? json_object_size(container) : json_array_size(container);
}
inline bool is_empty(json_t* container) {
    return size_of(container) == 0;
}

// Storing. An absent or failed value is not stored.

// Takes the reference. The name is there.
void store(json_t* object, const char* name, size_t length, json_t* value);

inline void set(json_t* object, Key key, Json value) {
    store(object, key.text(), key.length(), value.release());
}
// Under a name that a caller gave: one that is null or not UTF-8 names nothing.
void set_checked(json_t* object, const char* name, Json value);
// The same value under a new name: a reference is added, nothing is copied.
// Returns 0, the count of failed fields, so that a way can end with it.
int carry(json_t* object, Key key, json_t* value);
// Under the name that a string value holds; any other value names nothing.
void set_named(json_t* object, json_t* name, Json value);

void append(json_t* array, Json value);
inline void append_shared(json_t* array, json_t* value) {
    append(array, share(value));
}

// Ranges.

using Members = MembersOf<Key>;
using Member = Members::Member;

inline Members members(json_t* object) {
    return Members{object};
}

// The elements of an array, counted from 1 as the new layout counts; none of anything else.
struct Element {
    size_t number;
    json_t* value;
};

class Elements {
public:
    explicit Elements(json_t* array) : array_{array}, size_{json_array_size(array)} {}

    class Iterator {
    public:
        Iterator(json_t* array, size_t at) : array_{array}, at_{at} {}
        Element operator*() const { return {at_ + 1, json_array_get(array_, at_)}; }
        Iterator& operator++() {
            ++at_;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return at_ != other.at_; }

    private:
        json_t* array_;
        size_t at_;
    };

    Iterator begin() const { return {array_, 0}; }
    Iterator end() const { return {array_, size_}; }

private:
    json_t* array_;
    size_t size_;
};

inline Elements elements(json_t* array) {
    return Elements{array};
}

// The members of an object in ascending byte order of their names. Pointers are sorted, names are not copied.
class SortedMembers {
public:
    explicit SortedMembers(json_t* object);
    ~SortedMembers();

    const Member* begin() const { return members_.begin(); }
    const Member* end() const { return members_.end(); }
    size_t count() const { return members_.size(); }
    // Memory ran out: the range is empty although the object may not be.
    bool failed() const { return members_.failed(); }

private:
    SmallArray<Member> members_;
};

}  // namespace kcnvrt
