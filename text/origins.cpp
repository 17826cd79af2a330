#include "origins.h"

#include <cstdio>

#include "json/pointer.h"

namespace kcnvrt::text {

namespace {

// Arrays are known by their addresses.
struct Key {
    char text[2 * sizeof(void*) + 8];

    explicit Key(const json_t* array) { std::snprintf(text, sizeof text, "%p", static_cast<const void*>(array)); }
};

}  // namespace

bool Origins::take_out(json_t* array, size_t index) {
    json_t* const list = list_of(array);
    return list != nullptr && json_array_remove(list, index) == 0 && json_array_remove(array, index) == 0;
}

bool Origins::append_first_pointer(json_t* root, std::string_view pointer, Buffer& original) const {
    json_t* value = root;
    while (!pointer.empty()) {
        const std::string_view token = take_token(pointer);
        if (!original.append("/") || !append_origin(value, token, original)) return false;
        value = child_of(value, token);
    }
    return true;
}

json_t* Origins::list_of(const json_t* array) {
    const Key key(array);
    json_t* const known = json_object_get(lists_.get(), key.text);
    if (known != nullptr) return known;
    Json list(json_array());
    for (size_t i = 0; i < json_array_size(array); ++i)
        if (json_array_append_new(list.get(), json_integer(static_cast<json_int_t>(i))) != 0) return nullptr;
    return json_object_set_new(lists_.get(), key.text, list.release()) == 0 ? json_object_get(lists_.get(), key.text)
                                                                            : nullptr;
}

bool Origins::append_origin(const json_t* value, std::string_view token, Buffer& original) const {
    const json_t* const list = json_is_array(value) ? json_object_get(lists_.get(), Key(value).text) : nullptr;
    if (list == nullptr) return original.append(token);
    char digits[24];
    const json_int_t first = json_integer_value(json_array_get(list, index_of(token)));
    const int length = std::snprintf(digits, sizeof digits, "%" JSON_INTEGER_FORMAT, first);
    return original.append({digits, static_cast<size_t>(length)});
}

}  // namespace kcnvrt::text
