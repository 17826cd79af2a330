// Objects that the old layout keeps as JSON texts, parsed and printed.
#include "services/text_objects.h"

#include "frame/list.h"
#include "frame/number.h"
#include "growing_array.h"
#include "services/text_reading.h"

namespace kcnvrt {

namespace {

// A text as Jansson writes it, piece by piece. Jansson does not stop where a piece of a name found no memory.
class CompactText {
public:
    explicit CompactText(json_t* value) {
        if (json_dump_callback(value, add, this, JSON_COMPACT) != 0) k_err_no_memory();
    }

    // Null when memory ran out: half a text would be a wrong one.
    Json value() const { return is_whole_ ? string(std::string_view{text_.data(), text_.size()}) : nullptr; }

private:
    static int add(const char* piece, size_t size, void* self) {
        auto* const text = static_cast<CompactText*>(self);
        text->is_whole_ = text->is_whole_ && text->text_.add_all(piece, size);
        return text->is_whole_ ? 0 : -1;
    }

    GrowingArray<char> text_;
    bool is_whole_ = true;
};

using Refusal = int (*)(json_t* texts, Key name, const Report& report);

int refuse_route(json_t* texts, Key name, const Report& report) {
    return report.fail_at(texts, name, "Invalid invalid instance of object \"route_17_33\"");
}

int refuse_arp_entry(json_t* texts, Key name, const Report& report) {
    return report.fail_at(texts, name, "Invalid invalid instance of object \"arp\" %s\n", name.text());
}

int objects_of_texts(json_t* destination, Key key, json_t* texts, Refusal refuse, const Report& report) {
    if (texts == nullptr) return 0;
    int failures = 0;
    Json objects = object();
    for (const auto [name, text] : members(texts)) {
        uint32_t number = 0;
        if (!read_strictly(name.view(), number)) continue;
        Json value = read_text(text);
        if (value == nullptr)
            failures += refuse(texts, name, report);
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
        if (json_is_object(instance)) set(texts.get(), name, CompactText{instance}.value());
    carry_max_instance(texts.get(), value);
    set(destination, key, std::move(texts));
    return 0;
}

}  // namespace ways

}  // namespace kcnvrt
