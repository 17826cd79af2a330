#include "json/position.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

#include "basis/buffer.h"
#include "basis/sort.h"
#include "json/skip.h"
#include "owned.h"

namespace kcnvrt::text {

namespace {

constexpr Spot kStart{0, 1, 1};

void advance(Spot& spot, std::string_view text, size_t offset) {
    for (; spot.offset < offset; ++spot.offset) {
        const auto byte = static_cast<unsigned char>(text[spot.offset]);
        if (byte == '\n') {
            ++spot.line;
            spot.column = 1;
        } else if ((byte & 0xC0) != 0x80) {
            ++spot.column;
        }
    }
}

// Pointers are sorted token by token, so that those below one value stand together, first those that are the value's
// own. A slash ends a token, so it comes before every byte.
int rank(char byte) {
    return byte == '/' ? -1 : static_cast<unsigned char>(byte);
}

bool is_before(const Sought* left, const Sought* right) {
    const std::string_view a = left->pointer;
    const std::string_view b = right->pointer;
    const size_t shorter = std::min(a.size(), b.size());
    for (size_t i = 0; i < shorter; ++i)
        if (a[i] != b[i]) return rank(a[i]) < rank(b[i]);
    return a.size() < b.size();
}

// The token that starts behind the slash at `slash`.
std::string_view token_at(std::string_view pointer, size_t slash) {
    const std::string_view rest{pointer.data() + slash + 1, pointer.size() - slash - 1};
    return {rest.data(), std::min(rest.find('/'), rest.size())};
}

// Part of the sorted pointers, all of which begin with the same `common` bytes.
struct Group {
    Sought** first;
    Sought** last;
    size_t common;

    bool is_empty() const { return first == last; }

    // Splits off those that name the value itself.
    Group take_own() {
        const size_t length = common;
        Sought** const end =
            std::partition_point(first, last, [length](const Sought* each) { return each->pointer.size() == length; });
        const Group own{first, end, common};
        first = end;
        return own;
    }

    Group below(std::string_view token) const {
        const size_t slash = common;
        Sought** const begin = std::partition_point(
            first, last, [=](const Sought* each) { return token_at(each->pointer, slash) < token; });
        Sought** const end = std::partition_point(
            begin, last, [=](const Sought* each) { return token_at(each->pointer, slash) == token; });
        return {begin, end, common + 1 + token.size()};
    }
};

class Walk {
public:
    explicit Walk(std::string_view text) : text_{text} {}

    // Reads one value; false where the text ends or is no JSON.
    bool value(Group group, int levels) {
        at_ = skip_blanks(text_, at_);
        if (at_ == text_.size()) return false;
        const size_t start = at_;
        const Group own = group.take_own();
        if (!own.is_empty()) advance(spot_, text_, start);
        const Spot spot = spot_;
        if (!inside(group, levels)) return false;
        for (Sought** each = own.first; each != own.last; ++each) {
            (*each)->spot = spot;
            (*each)->length = at_ - start;
        }
        return true;
    }

    bool has_memory() const { return has_memory_; }

private:
    bool inside(Group group, int levels) {
        if (group.is_empty() || levels == kMostLevels) return pass_over();
        if (text_[at_] == '{') return members(group, levels + 1);
        if (text_[at_] == '[') return elements(group, levels + 1);
        return pass_over();
    }

    bool pass_over() {
        const size_t start = at_;
        at_ = skip_value(text_, at_);
        return at_ != start;
    }

    bool members(Group group, int levels) {
        ++at_;
        if (passes('}')) return true;
        do {
            at_ = skip_blanks(text_, at_);
            const size_t start = at_;
            if (at_ == text_.size() || text_[at_] != '"') return false;
            at_ = skip_string(text_, at_);
            if (at_ - start < 2) return false;
            const Group below = group.below(token_of({text_.data() + start + 1, at_ - start - 2}));
            if (!has_memory_ || !passes(':') || !value(below, levels)) return false;
        } while (passes(','));
        return passes('}');
    }

    bool elements(Group group, int levels) {
        ++at_;
        if (passes(']')) return true;
        size_t index = 0;
        do {
            char digits[24];
            const char* const end = std::to_chars(digits, digits + sizeof digits, index++).ptr;
            if (!value(group.below({digits, static_cast<size_t>(end - digits)}), levels)) return false;
        } while (passes(','));
        return passes(']');
    }

    bool passes(char byte) {
        at_ = skip_blanks(text_, at_);
        if (at_ == text_.size() || text_[at_] != byte) return false;
        ++at_;
        return true;
    }

    // A member's name, which stands between quotes, as a pointer writes it.
    std::string_view token_of(std::string_view name) {
        constexpr std::string_view kWrittenInAnotherWay = "\\~/";
        if (name.find_first_of(kWrittenInAnotherWay) == std::string_view::npos) return name;
        token_.cut(0);
        has_memory_ = append_token(name, token_);
        return token_.view();
    }

    std::string_view text_;
    size_t at_ = 0;
    Spot spot_ = kStart;
    Buffer token_;
    bool has_memory_ = true;
};

bool is_pointer(std::string_view text) {
    return text.empty() || text.front() == '/';
}

}  // namespace

Spot spot_at(std::string_view text, size_t offset) {
    Spot spot = kStart;
    advance(spot, text, std::min(offset, text.size()));
    return spot;
}

bool find_values(std::string_view text, Sought* sought, size_t count) {
    const Allocated<Sought*> sorted{static_cast<Sought**>(std::calloc(count + 1, sizeof(Sought*)))};
    if (sorted == nullptr) return false;
    Sought** end = sorted.get();
    for (size_t i = 0; i < count; ++i) {
        sought[i].spot = {};
        sought[i].length = 0;
        if (is_pointer(sought[i].pointer)) *end++ = &sought[i];
    }
    sort(sorted.get(), end, is_before);
    Walk walk{text};
    walk.value({sorted.get(), end, 0}, 0);
    if (walk.has_memory()) return true;
    for (size_t i = 0; i < count; ++i) sought[i].spot = {};
    return false;
}

}  // namespace kcnvrt::text
