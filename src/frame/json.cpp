#include "frame/json.h"

#include <charconv>
#include <cstdlib>
#include <new>

namespace kcnvrt {

void release(json_t* value) {
    json_decref(value);
}

Json share(json_t* value) {
    return Json{json_incref(value)};
}

std::string_view view_of(json_t* string) {
    return json_is_string(string) ? std::string_view{json_string_value(string), json_string_length(string)}
                                  : std::string_view{};
}

bool is_text(json_t* value, std::string_view text) {
    return json_is_string(value) && view_of(value) == text;
}

void carry(json_t* object, Key key, json_t* value) {
    set(object, key, Json{json_incref(value)});
}

Key name_of(json_t* string) {
    const char* const text = text_of(string);
    return {text, text == nullptr ? 0 : std::strlen(text)};
}

void set_named(json_t* object, json_t* name, Json value) {
    if (json_is_string(name)) set(object, name_of(name), std::move(value));
}

Decimal::Decimal(int64_t number) {
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

SortedMembers::SortedMembers(json_t* object) : members_{reinterpret_cast<Member*>(inline_)} {
    const size_t size = json_object_size(object);
    if (size > kInline) {
        void* memory = size > SIZE_MAX / sizeof(Member) ? nullptr : std::malloc(size * sizeof(Member));
        if (memory == nullptr) {
            failed_ = true;
            return;
        }
        members_ = static_cast<Member*>(memory);
    }
    for (const Member member : members(object)) new (members_ + count_++) Member{member};
    std::qsort(members_, count_, sizeof(Member), in_byte_order);
}

SortedMembers::~SortedMembers() {
    if (members_ != reinterpret_cast<Member*>(inline_)) std::free(members_);
}

}  // namespace kcnvrt
