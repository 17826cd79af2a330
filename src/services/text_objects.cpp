// Objects that the old layout keeps as JSON texts, parsed and printed.
#include "services/text_objects.h"

#include "frame/list.h"
#include "frame/number.h"

namespace kcnvrt {

namespace {

// Null when the value is not the text of an object or array.
Json parsed(json_t* value) {
    const char* const text = text_of(value);
    return Json{text == nullptr ? nullptr : json_loads(text, 0, nullptr)};
}

// Whoever uses Jansson may give it functions for memory other than malloc and free. A text that it made is therefore
// released by the function that Jansson itself uses.
struct ReleaseText {
    void operator()(char* text) const {
        json_free_t release = nullptr;
        json_get_alloc_funcs(nullptr, &release);
        release(text);
    }
};

Json compact_text(json_t* value) {
    const std::unique_ptr<char, ReleaseText> text{json_dumps(value, JSON_COMPACT)};
    return text == nullptr ? nullptr : string(text.get());
}

using Refusal = int (*)(Key name, const Report& report);

int refuse_route(Key, const Report& report) {
    return report.fail("Invalid invalid instance of object \"route_17_33\"");
}

int refuse_arp_entry(Key name, const Report& report) {
    return report.fail("Invalid invalid instance of object \"arp\" %s\n", name.text());
}

int objects_of_texts(json_t* destination, Key key, json_t* texts, Refusal refuse, const Report& report) {
    if (texts == nullptr) return 0;
    int failures = 0;
    Json objects = object();
    for (const auto [name, text] : members(texts)) {
        uint32_t number = 0;
        if (!read_strictly(name.view(), number)) continue;
        Json value = parsed(text);
        if (value == nullptr)
            failures += refuse(name, report);
        else
            set(objects.get(), name, std::move(value));
    }
    carry_max_instance(objects.get(), texts);
    set(destination, key, std::move(objects));
    return failures;
}

}  // namespace

namespace ways {

int routes_to_new(json_t* destination, Key key, json_t* value, const Report& report) {
    return objects_of_texts(destination, key, value, refuse_route, report);
}

int arp_to_new(json_t* destination, Key key, json_t* value, const Report& report) {
    return objects_of_texts(destination, key, value, refuse_arp_entry, report);
}

int texts_of_objects(json_t* destination, Key key, json_t* value, const Report&) {
    if (value == nullptr) return 0;
    Json texts = object();
    for (const auto [name, instance] : members(value))
        if (json_is_object(instance)) set(texts.get(), name, compact_text(instance));
    carry_max_instance(texts.get(), value);
    set(destination, key, std::move(texts));
    return 0;
}

}  // namespace ways

}  // namespace kcnvrt
