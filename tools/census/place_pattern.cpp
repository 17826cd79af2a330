#include "place_pattern.h"

#include <algorithm>
#include <set>

#include "layouts/layouts.h"
#include "layouts/places.h"

namespace kcnvrt {

namespace {

using Patterns = std::set<std::string>;

// What has members whose names are a device's own.
Patterns named_entries() {
    const Layouts layouts;
    Patterns patterns;
    for (const Layout layout : {Layout::kOld, Layout::kNew})
        for (const LayoutContainer& container : layouts.containers(layout))
            if (container.is == "names")
                for (std::string& pattern : plain_places({container.place})) patterns.insert(std::move(pattern));
    return patterns;
}

bool is_number(std::string_view token) {
    return !token.empty() && std::ranges::all_of(token, [](char byte) { return byte >= '0' && byte <= '9'; });
}

}  // namespace

std::string place_pattern(std::string_view pointer) {
    static const Patterns named = named_entries();
    std::string pattern;
    while (!pointer.empty()) {
        pointer.remove_prefix(1);
        const std::string_view token = pointer.substr(0, pointer.find('/'));
        const bool is_any = is_number(token) || named.contains(pattern);
        pattern.append("/").append(is_any ? "*" : token);
        pointer.remove_prefix(token.size());
    }
    return pattern;
}

}  // namespace kcnvrt
