#include "lists.h"

#include <algorithm>

#include "mapping.h"
#include "sentences.h"

namespace kcnvrt {

namespace {

using enum Layout;

// What is reported of numbers that are too high, or of names that are no numbers.
std::string reported(json_t* entries) {
    json_t* const says = json_object_get(entries, "says");
    if (says == nullptr) return "";
    const bool is_bound = json_object_get(entries, "to") != nullptr;
    return std::string(is_bound ? "; higher ones" : "; others") +
           " are reported: " + json_string_value(json_array_get(says, 0));
}

std::string numbers(json_t* entries) {
    json_t* const from = json_object_get(entries, "from");
    json_t* const to = json_object_get(entries, "to");
    return "numbered from " + (from == nullptr ? "1" : shown(from)) + (to == nullptr ? "" : " to " + shown(to));
}

bool is_any_name(json_t* entries) {
    json_t* const names = json_object_get(entries, "names");
    return names != nullptr && std::string_view(json_string_value(names)) == "any";
}

template <class IsWanted>
std::vector<ListRow> rows_of(const Layouts& layouts, IsWanted is_wanted) {
    std::vector<ListRow> rows;
    for (const Layout layout : {kOld, kNew}) {
        const std::size_t first = rows.size();
        for (const LayoutContainer& container : layouts.containers(layout)) {
            const std::string entries = entries_in_words(container);
            if (entries.empty() || !is_wanted(container, layout)) continue;
            const auto same = [&](const ListRow& row) { return row.entries == entries; };
            auto row = std::find_if(rows.begin() + static_cast<std::ptrdiff_t>(first), rows.end(), same);
            if (row == rows.end()) row = rows.insert(rows.end(), {{}, entries});
            row->places.push_back(container.place);
        }
    }
    return rows;
}

}  // namespace

std::string entries_in_words(const LayoutContainer& container) {
    if (container.is == "names") return "under names of their own";
    if (container.is != "list") return "";
    json_t* const entries = container.entries;
    const bool is_anew = json_object_get(entries, "numbered") != nullptr;
    if (is_any_name(entries)) return std::string("under any name") + (is_anew ? ", which is not kept" : "");
    return numbers(entries) + (is_anew ? "; the numbers are not kept" : "") + reported(entries);
}

std::vector<ListRow> lists_of_page(const Layouts& layouts, const std::string& page) {
    return rows_of(layouts, [&](const LayoutContainer& container, Layout layout) {
        return page_of_place(layouts, container.place, layout) == page;
    });
}

std::vector<ListRow> lists_at(const Layouts& layouts, const Steps& names) {
    return rows_of(layouts, [&](const LayoutContainer& container, Layout) {
        return match(names, container.place) == Match::kExact;
    });
}

}  // namespace kcnvrt
