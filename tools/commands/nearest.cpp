#include "commands/nearest.h"

#include <algorithm>
#include <limits>

namespace kcnvrt {

namespace {

constexpr std::size_t kLongestWord = 64;  // which bounds the work; no name comes near it
constexpr std::size_t kLettersForAnError = 3;
constexpr std::size_t kShortestStart = 3;

char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool are_alike(char one, char other) {
    return lower(one) == lower(other);
}

// How many letters have to be put in, left out, changed or swapped with their neighbour to make one word the other,
// whatever their case.
std::size_t errors_between(std::string_view one, std::string_view other) {
    std::vector<std::size_t> before_last;
    std::vector<std::size_t> last;
    std::vector<std::size_t> current(other.size() + 1);
    for (std::size_t j = 0; j <= other.size(); ++j) current[j] = j;
    for (std::size_t i = 1; i <= one.size(); ++i) {
        before_last = std::move(last);
        last = std::move(current);
        current.assign(other.size() + 1, i);
        for (std::size_t j = 1; j <= other.size(); ++j) {
            const std::size_t changed = last[j - 1] + (are_alike(one[i - 1], other[j - 1]) ? 0 : 1);
            current[j] = std::min({last[j] + 1, current[j - 1] + 1, changed});
            const bool are_swapped =
                i > 1 && j > 1 && are_alike(one[i - 1], other[j - 2]) && are_alike(one[i - 2], other[j - 1]);
            if (are_swapped) current[j] = std::min(current[j], before_last[j - 2] + 1);
        }
    }
    return current.back();
}

// A name whose end was left out counts as one error.
std::size_t distance(std::string_view word, std::string_view name) {
    const std::size_t errors = errors_between(word, name);
    const bool is_cut = word.size() >= kShortestStart && errors_between(word, name.substr(0, word.size())) == 0;
    return is_cut ? std::min<std::size_t>(errors, 1) : errors;
}

}  // namespace

std::string nearest(std::string_view word, const std::vector<std::string_view>& names) {
    std::size_t fewest = std::numeric_limits<std::size_t>::max();
    std::string_view found;
    if (word.size() > kLongestWord) return "";
    for (const std::string_view name : names) {
        const std::size_t errors = distance(word, name);
        if (errors >= fewest || errors > std::max(word.size(), name.size()) / kLettersForAnError) continue;
        fewest = errors;
        found = name;
    }
    return std::string(found);
}

std::string suggestion(std::string_view word, const std::vector<std::string_view>& names) {
    const std::string name = nearest(word, names);
    return name.empty() ? "" : ", did you mean \"" + name + "\"?";
}

}  // namespace kcnvrt
