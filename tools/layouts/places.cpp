#include "places.h"

#include <algorithm>

namespace kcnvrt {

namespace {

std::vector<std::string> pieces(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find(separator, at), text.size());
        pieces.emplace_back(text.substr(at, end - at));
        at = end + 1;
    }
    return pieces;
}

bool is_type(std::string_view step) {
    return step.size() > 2 && step.front() == '[';
}

bool fits(const std::string& name, const std::string& step) {
    if (step == "*" || (is_type(step) && name == "*") || name == step) return true;
    if (is_type(step)) return true;
    const auto names = pieces(step, '|');
    return std::find(names.begin(), names.end(), name) != names.end();
}

void add_once(std::vector<std::string>& list, const std::string& text) {
    if (std::find(list.begin(), list.end(), text) == list.end()) list.push_back(text);
}

}  // namespace

Steps steps_of(std::string_view place) {
    if (place.empty()) return {};
    place.remove_prefix(1);
    return pieces(place, '/');
}

std::string place_of(const Steps& steps) {
    std::string place;
    for (const std::string& step : steps) place += "/" + step;
    return place;
}

bool read_pointer(std::string_view pointer, Steps& names) {
    if (!pointer.empty() && pointer.front() != '/') return false;
    for (std::string& name : names = steps_of(pointer)) {
        std::string plain;
        for (std::size_t at = 0; at < name.size(); ++at) {
            if (name[at] == '~' && (at + 1 == name.size() || (name[at + 1] != '0' && name[at + 1] != '1')))
                return false;
            plain += name[at] != '~' ? name[at] : name[++at] == '0' ? '~' : '/';
        }
        name = plain;
    }
    return true;
}

std::vector<std::string> each_name(const std::string& place) {
    std::vector<std::string> places{""};
    for (const std::string& step : steps_of(place)) {
        std::vector<std::string> longer;
        for (const std::string& before : places)
            for (const std::string& name : is_type(step) ? std::vector<std::string>{step} : pieces(step, '|'))
                longer.push_back(before + "/" + name);
        places = std::move(longer);
    }
    return places;
}

std::vector<std::string> plain_places(const std::vector<std::string>& places) {
    std::vector<std::string> plain;
    for (const std::string& place : places)
        for (const std::string& one : each_name(place)) {
            Steps steps = steps_of(one);
            for (std::string& step : steps)
                if (is_type(step)) step = "*";
            add_once(plain, place_of(steps));
        }
    return plain;
}

std::vector<std::string> types_of(const std::string& step) {
    if (!is_type(step)) return {};
    return pieces(std::string_view(step).substr(1, step.size() - 2), '|');
}

Match match(const Steps& names, const std::string& place) {
    const Steps steps = steps_of(place);
    const bool is_whole = !steps.empty() && steps.back() == "**";
    const std::size_t length = steps.size() - (is_whole ? 1 : 0);
    for (std::size_t at = 0; at < std::min(names.size(), length); ++at)
        if (!fits(names[at], steps[at])) return Match::kNone;
    if (names.size() == length || (is_whole && names.size() == length + 1 && names.back() == "**"))
        return Match::kExact;
    if (names.size() < length) return Match::kAbove;
    return is_whole ? Match::kBelow : Match::kNone;
}

std::vector<std::string> sections_of(const std::string& place) {
    Steps steps = steps_of(place);
    std::size_t at = 0;
    if (at < steps.size() && steps[at] == "Device") ++at;
    if (at + 1 < steps.size() && steps[at] == "Services") ++at;
    return at < steps.size() ? pieces(steps[at], '|') : std::vector<std::string>{};
}

}  // namespace kcnvrt
