#include "layouts.h"

#include <new>

#include "data.h"

namespace kcnvrt {

std::vector<std::string> LayoutLine::places(Layout layout) const {
    std::vector<std::string> places;
    std::size_t index;
    json_t* place;
    json_array_foreach(json_object_get(line_, name_of(layout)), index, place)
        places.emplace_back(json_string_value(place));
    return places;
}

int LayoutLine::number(Layout from) const {
    json_t* const number = json_object_get(line_, from == Layout::kOld ? "to_new" : "to_old");
    return number == nullptr ? -1 : static_cast<int>(json_integer_value(number));
}

json_t* LayoutLine::behaviour(Layout from) const {
    return number(from) < 0 ? nullptr : json_array_get(behaviours_, static_cast<std::size_t>(number(from)));
}

Layouts::Layouts() {
    const std::string_view text = layouts_text();
    root_.reset(json_loadb(text.data(), text.size(), 0, nullptr));
    if (root_ == nullptr) throw std::bad_alloc();  // it is sound: a test compares it
    std::size_t index;
    json_t* line;
    json_array_foreach(json_object_get(root_.get(), "lines"), index, line)
        lines_.emplace_back(line, json_object_get(root_.get(), "behaviours"));
}

std::string Layouts::pattern(const std::string& texts) const {
    std::size_t index;
    json_t* kind;
    json_array_foreach(json_object_get(root_.get(), "texts"), index,
                       kind) if (texts ==
                                 json_string_value(json_object_get(
                                     kind, "name"))) return json_string_value(json_object_get(kind, "pattern"));
    return "";
}

std::vector<LayoutContainer> Layouts::containers(Layout layout) const {
    std::vector<LayoutContainer> containers;
    std::size_t index;
    json_t* row;
    json_array_foreach(json_object_get(root_.get(), "containers"), index, row) {
        const char* const place = json_string_value(json_object_get(row, name_of(layout)));
        if (place == nullptr) continue;
        json_t* const asked = json_object_get(row, "asked");
        json_t* const behaviour = asked == nullptr
                                      ? nullptr
                                      : json_array_get(json_object_get(root_.get(), "behaviours"),
                                                       static_cast<std::size_t>(json_integer_value(asked)));
        containers.push_back({place, json_string_value(json_object_get(row, "is")),
                              json_object_get(row, "carries others") != nullptr,
                              json_object_get(row, "flag") != nullptr, behaviour, json_object_get(row, "entries")});
    }
    return containers;
}

json_t* Layouts::example(Layout layout, bool is_other) const {
    return json_array_get(json_object_get(root_.get(), "examples"),
                          (is_other ? 2u : 0u) + (layout == Layout::kNew ? 1u : 0u));
}

}  // namespace kcnvrt
