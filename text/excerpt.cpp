#include "excerpt.h"

#include <algorithm>

#include "json/utf8.h"

namespace kcnvrt::text {

namespace {

constexpr std::string_view kEllipsis = "...";
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// A character as it is shown, and how many bytes of the text it stands for. A secret is one of several characters.
struct Shown {
    std::string_view as;
    size_t bytes;
    size_t width;
};

// Directions of writing, and breaks that are no line feeds.
bool moves_text(std::string_view character) {
    if (character.size() == 2) return character[0] == '\xC2' && static_cast<unsigned char>(character[1]) < 0xA0;
    if (character.size() != 3 || character[0] != '\xE2') return false;
    const auto last = static_cast<unsigned char>(character[2]);
    return (character[1] == '\x80' && ((last >= 0xA8 && last <= 0xAE) || last == 0x8E || last == 0x8F)) ||
           (character[1] == '\x81' && last >= 0xA6 && last <= 0xA9);
}

class Line {
public:
    // A line may be as long as the text: it is looked at only as far as `reach` bytes on both sides.
    Line(const View& view, size_t offset, size_t reach) : view_{view} {
        const std::string_view text = view.text;
        const size_t nearest = offset - std::min(offset, reach);
        const size_t before = std::string_view(text.data() + nearest, offset - nearest).rfind('\n');
        starts_ = before != std::string_view::npos || nearest == 0;
        start_ = before != std::string_view::npos ? nearest + before + 1 : boundary_behind(nearest, offset);
        const size_t farthest = std::min(text.size() - offset, reach);
        end_ = offset + std::min(std::string_view(text.data() + offset, farthest).find('\n'), farthest);
        if (end_ > offset && text[end_ - 1] == '\r') --end_;
        if (!starts_) return;
        while (start_ < offset && (text[start_] == ' ' || text[start_] == '\t')) ++start_;
    }

    size_t start() const { return start_; }
    size_t end() const { return end_; }
    // Whether nothing stands before the start but what it is indented by.
    bool starts() const { return starts_; }

    // The secret that a byte is in, or null.
    const Span* secret_at(size_t offset) const {
        if (view_.secrets == nullptr) return nullptr;
        const Span* const next = std::upper_bound(view_.secrets->begin(), view_.secrets->end(), offset,
                                                  [](size_t at, const Span& each) { return at < each.start; });
        return next != view_.secrets->begin() && offset < (next - 1)->end ? next - 1 : nullptr;
    }

    // What starts at `at`, which is before the end of the line and not inside a secret.
    Shown shown_at(size_t at) const {
        if (const Span* secret = secret_at(at)) return {kMask, std::min(secret->end, end_) - at, kMask.size()};
        const char* const start = view_.text.data() + at;
        const size_t length = utf8_length(start, view_.text.data() + end_);
        if (length == 0) return {kReplacement, 1, 1};
        const auto byte = static_cast<unsigned char>(*start);
        if (byte == '\t') return {" ", 1, 1};
        if (byte < 0x20 || byte == 0x7F || moves_text({start, length})) return {kReplacement, length, 1};
        return {{start, length}, length, 1};
    }

    // The start of what ends at `at`, which is behind the start of the line.
    size_t start_before(size_t at) const {
        if (const Span* secret = secret_at(at - 1)) return std::max(secret->start, start_);
        size_t start = at - 1;
        while (start > start_ && at - start < 4 && (view_.text[start] & '\xC0') == '\x80') --start;
        const size_t length = utf8_length(view_.text.data() + start, view_.text.data() + end_);
        return length == at - start ? start : at - 1;
    }

    // How many characters there are from `at` to the end, at most `most`.
    size_t width_behind(size_t at, size_t most) const {
        size_t width = 0;
        while (at < end_ && width < most) {
            const Shown shown = shown_at(at);
            at += shown.bytes;
            width += shown.width;
        }
        return std::min(width, most);
    }

    // As far before `at` as `width` characters reach; less where the line starts.
    size_t go_back(size_t at, size_t width) const {
        while (at > start_) {
            const size_t start = start_before(at);
            const size_t step = shown_at(start).width;
            if (step > width) break;
            width -= step;
            at = start;
        }
        return at;
    }

    // Appends the line from `at` on, as many characters as there is room for, and notes where `value` stands.
    bool append(size_t at, size_t width, Span value, Buffer& line, Mark& mark) const {
        while (at < end_) {
            const Shown shown = shown_at(at);
            const bool is_cut = shown.width + (at + shown.bytes < end_ ? kEllipsis.size() : 0) > width &&
                                width_behind(at, width + 1) > width;
            if (is_cut) return line.append(kEllipsis);
            if (at == value.start) mark.offset = line.size();
            if (!line.append(shown.as)) return false;
            if (at >= value.start && at < value.end) mark.length = line.size() - mark.offset;
            at += shown.bytes;
            width -= shown.width;
        }
        if (value.start >= end_) mark.offset = line.size();
        return true;
    }

private:
    size_t boundary_behind(size_t at, size_t offset) const {
        while (at < offset && (view_.text[at] & '\xC0') == '\x80') ++at;
        const Span* const secret = secret_at(at);
        return secret == nullptr ? at : std::min(secret->end, offset);
    }

    View view_;
    size_t start_ = 0;
    size_t end_ = 0;
    bool starts_ = true;
};

}  // namespace

bool show_line(const View& view, Span value, size_t width, Buffer& line, Mark& mark) {
    constexpr size_t kLeastWidth = 24;
    width = std::max(width, kLeastWidth);
    value.start = std::min(value.start, view.text.size());
    const Line source(view, value.start, 8 * width);
    if (const Span* secret = source.secret_at(value.start)) value.start = std::max(secret->start, source.start());
    // A third of the room at least is for what stands before the value, which is its name.
    const size_t behind = std::min(source.width_behind(value.start, width), width - width / 3);
    size_t start = source.go_back(value.start, width - behind);
    if (start != source.start() || !source.starts()) {
        start = source.go_back(value.start, width - behind - kEllipsis.size());
        if (!line.append(kEllipsis)) return false;
        width -= kEllipsis.size();
    }
    mark = {line.size(), 0};
    return source.append(start, width, value, line, mark);
}

}  // namespace kcnvrt::text
