#include "shown_value.h"

#include "json/writer.h"
#include "secrets.h"

namespace kcnvrt::text {

namespace {

Json mask() {
    return Json(json_stringn(kMask.data(), kMask.size()));
}

}  // namespace

Json masked_copy(const json_t* value, bool is_secret) {
    if (!json_is_object(value) && !json_is_array(value))
        return is_secret ? mask() : Json(json_incref(const_cast<json_t*>(value)));
    Json copy(json_is_object(value) ? json_object() : json_array());
    const char* name;
    size_t length;
    json_t* child;
    json_object_keylen_foreach(const_cast<json_t*>(value), name, length, child) {
        Json shown = masked_copy(child, is_secret || is_secret_name({name, length}));
        if (!shown || json_object_setn_new_nocheck(copy.get(), name, length, shown.release()) != 0) return nullptr;
    }
    size_t index;
    json_array_foreach(value, index, child) {
        Json shown = masked_copy(child, is_secret);
        if (!shown || json_array_append_new(copy.get(), shown.release()) != 0) return nullptr;
    }
    return copy;
}

const char* shown_value(const json_t* value, std::string_view pointer, bool shows_secrets, KeptTexts& texts) {
    constexpr Layout kOneLine = {.compact = false, .indent = 0};
    Json copy;
    if (!shows_secrets) {
        copy = masked_copy(value, leads_to_secret(pointer));
        if (!copy) return nullptr;
        value = copy.get();
    }
    Buffer text;
    return write(value, kOneLine, text) ? texts.keep(text.view()) : nullptr;
}

}  // namespace kcnvrt::text
