#include "place_pattern.h"

#include <algorithm>
#include <unordered_set>

#include "layouts/layouts.h"
#include "layouts/places.h"

namespace kcnvrt {

namespace {

using Patterns = std::unordered_set<std::string>;

// The pattern, and those of what it is in.
void add(const std::string& pattern, Patterns& patterns) {
    for (std::size_t end = pattern.size(); end != 0; end = pattern.rfind('/', end - 1))
        patterns.insert(pattern.substr(0, end));
}

// All that is described of both layouts.
Patterns known_patterns() {
    const Layouts layouts;
    Patterns patterns;
    for (const Layout layout : {Layout::kOld, Layout::kNew}) {
        for (const LayoutLine& line : layouts.lines())
            for (const std::string& pattern : plain_places(line.places(layout))) add(pattern, patterns);
        for (const LayoutContainer& container : layouts.containers(layout))
            for (const std::string& pattern : plain_places({container.place})) add(pattern, patterns);
    }
    return patterns;
}

bool is_number(std::string_view token) {
    return !token.empty() && std::ranges::all_of(token, [](char byte) { return byte >= '0' && byte <= '9'; });
}

}  // namespace

// In what is carried whole, and in members that nobody knows, numbers are positions, too.
std::string place_pattern(std::string_view pointer) {
    static const Patterns known = known_patterns();
    std::string pattern;
    while (!pointer.empty()) {
        pointer.remove_prefix(1);
        const std::string_view token = pointer.substr(0, pointer.find('/'));
        const std::string any = pattern + "/*";
        pattern.append("/").append(token);
        if (!known.contains(pattern) && (known.contains(any) || is_number(token))) pattern = any;
        pointer.remove_prefix(token.size());
    }
    return pattern;
}

}  // namespace kcnvrt
