// What json.h keeps out of line, and members in the order of their names.
#include "frame/json.h"

#include <charconv>
#include <cstdlib>
#include <new>

#include "shortage.h"

namespace kcnvrt {

json_t* new_object() {
    return noted(json_object());
}

json_t* new_array() {
    return noted(json_array());
}

json_t* new_integer(int64_t number) {
    return noted(json_integer(number));
}

json_t* new_string(const char* text, size_t length) {
    return noted(json_stringn_nocheck(text, length));
}

namespace {

// Jansson's packing says why it makes no string of a text.
bool is_utf8(const char* text) {
    json_error_t error;
    const Json packed{json_pack_ex(&error, 0, "s", text)};
    return packed != nullptr || json_error_code(&error) != json_error_invalid_utf8;
}

}  // namespace

Json checked_string(const char* text) {
    Json made{text == nullptr ? nullptr : json_string(text)};
    if (made == nullptr && text != nullptr && is_utf8(text)) k_err_no_memory();
    return made;
}

Json shallow_copy(json_t* value) {
    if (json_is_object(value)) {
        Json copy = object();
        carry_members(copy.get(), value);
        return copy;
    }
    Json copy{json_copy(value)};
    // Jansson leaves out what it has no memory for.
    if (value != nullptr && (copy == nullptr || size_of(copy.get()) != size_of(value))) k_err_no_memory();
    return copy;
}

void carry_members(json_t* object, json_t* source) {
    if (json_object_update(object, source) != 0 && json_is_object(object) && json_is_object(source)) k_err_no_memory();
}

std::string_view view_of(json_t* string) {
    return json_is_string(string) ? std::string_view{json_string_value(string), json_string_length(string)}
                                  : std::string_view{};
}

bool is_text(json_t* value, std::string_view text) {
    return json_is_string(value) && view_of(value) == text;
}

namespace {

// Nothing is stored in what is no object or array; anything else that is not stored found no memory.
[[gnu::cold, gnu::noinline]] void note_lost(json_t* container, json_type type) {
    if (container != nullptr && json_typeof(container) == type) k_err_no_memory();
}

}  // namespace

void store(json_t* object, const char* name, size_t length, json_t* value) {
    if (value == nullptr) return;
    if (json_object_setn_new_nocheck(object, name, length, value) != 0) [[unlikely]]
        note_lost(object, JSON_OBJECT);
}

void set_checked(json_t* object, const char* name, Json value) {
    const bool has_value = value != nullptr;
    if (json_object_set_new(object, name, value.release()) == 0) return;
    if (has_value && name != nullptr && is_utf8(name)) note_lost(object, JSON_OBJECT);
}

int carry(json_t* object, Key key, json_t* value) {
    if (value == nullptr) return 0;
    if (json_object_setn_new_nocheck(object, key.text(), key.length(), json_incref(value)) != 0) [[unlikely]]
        note_lost(object, JSON_OBJECT);
    return 0;
}

void append(json_t* array, Json value) {
    if (value == nullptr) return;
    if (json_array_append_new(array, value.release()) != 0) [[unlikely]]
        note_lost(array, JSON_ARRAY);
}

Key name_of(json_t* string) {
    const char* const text = text_of(string);
    return {text, text == nullptr ? 0 : std::strlen(text)};
}

void set_named(json_t* object, json_t* name, Json value) {
    if (json_is_string(name)) set(object, name_of(name), std::move(value));
}

Decimal::Decimal(int64_t number) {
    // Most numbers name an entry of a short list.
    if (number >= 0 && number <= 9) {
        text_[0] = static_cast<char>('0' + number);
        text_[1] = '\0';
        length_ = 1;
        return;
    }
    char* end = std::to_chars(text_, text_ + sizeof text_ - 1, number).ptr;
    *end = '\0';
    length_ = static_cast<uint8_t>(end - text_);
}

namespace {

// The order of strcmp: by unsigned bytes. For qsort, which is in libc: std::sort is a kilobyte of code for each type.
int in_byte_order(const void* left, const void* right) {
    return static_cast<const Member*>(left)->name.view().compare(static_cast<const Member*>(right)->name.view());
}

}  // namespace

SortedMembers::SortedMembers(json_t* object) : members_{json_object_size(object)} {
    if (members_.failed()) return;
    for (const Member member : members(object)) members_.add(member);
    std::qsort(members_.begin(), members_.size(), sizeof(Member), in_byte_order);
}

SortedMembers::~SortedMembers() = default;

}  // namespace kcnvrt
