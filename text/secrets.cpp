#include "secrets.h"

#include <algorithm>
#include <iterator>

#include "json/skip.h"

namespace kcnvrt::text {

namespace {

// The list: a name that contains one of these, in letters of either case, is that of a secret. Every field that is a
// password in a table has such a name, which a test makes sure of.
constexpr std::string_view kFragments[] = {"pass", "key", "psk", "secret", "pin", "loid"};

char lower(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

bool contains(std::string_view name, std::string_view fragment) {
    const auto is_same = [](char a, char b) { return lower(a) == b; };
    return std::search(name.begin(), name.end(), fragment.begin(), fragment.end(), is_same) != name.end();
}

constexpr std::string_view kPunctuation = "{}[],:";

// Walks from one punctuation mark to the next. What stands between two is a name when a colon follows, else a value; in
// a text that is not quite JSON it may be anything.
class Walk {
public:
    Walk(std::string_view text, bool is_difference, GrowingArray<Span>& secrets)
        : text_{text}, is_difference_{is_difference}, secrets_{secrets} {}

    bool run() {
        while ((at_ = skip_blanks(text_, at_)) < text_.size()) {
            const size_t start = at_;
            if (kPunctuation.find(text_[at_]) != std::string_view::npos) {
                if (!pass(text_[at_++])) return false;
            } else {
                at_ = end_of_word(start);
                if (!word({start, at_})) return false;
            }
        }
        return true;
    }

private:
    // A quote, also a single one, reaches to the next of its kind, but not over the end of the line: no JSON string
    // does, and one whose end is missing must not turn names into values.
    size_t end_of_word(size_t start) const {
        const char quote = text_[start];
        if (quote != '"' && quote != '\'') return std::min(text_.find_first_of(" \t\r\n\"{}[],:", start), text_.size());
        for (size_t at = start + 1; at < text_.size(); ++at) {
            if (text_[at] == quote) return at + 1;
            if (text_[at] == '\n') return at;
            if (text_[at] == '\\' && at + 1 < text_.size() && text_[at + 1] != '\n') ++at;
        }
        return text_.size();
    }

    bool pass(char mark) {
        if (mark == '{' || mark == '[') {
            if (!levels_.add(is_secret_)) return false;
        } else if (mark == '}' || mark == ']') {
            if (!levels_.is_empty()) levels_.cut(levels_.size() - 1);
            is_secret_ = is_inside_secret();
        } else if (mark == ',') {
            is_secret_ = is_inside_secret();
        }
        return true;
    }

    bool word(Span word) {
        const size_t next = skip_blanks(text_, word.end);
        if (next < text_.size() && text_[next] == ':') {
            is_secret_ = is_inside_secret() || names_secret({text_.data() + word.start, word.end - word.start});
            return true;
        }
        return !is_secret_ || secrets_.add(word);
    }

    bool is_inside_secret() const { return !levels_.is_empty() && levels_.last(); }

    // A name with escapes could be any.
    bool names_secret(std::string_view name) const {
        const bool is_put_in_place = is_difference_ && name == "\"value\"";
        return is_put_in_place || name.find('\\') != std::string_view::npos || is_secret_name(name);
    }

    std::string_view text_;
    bool is_difference_;
    GrowingArray<Span>& secrets_;
    GrowingArray<bool> levels_;
    size_t at_ = 0;
    bool is_secret_ = false;
};

}  // namespace

bool is_secret_name(std::string_view name) {
    return std::any_of(std::begin(kFragments), std::end(kFragments),
                       [name](std::string_view fragment) { return contains(name, fragment); });
}

// No fragment has a slash, so that none is found across two names.
bool leads_to_secret(std::string_view pointer) {
    return is_secret_name(pointer);
}

bool find_secrets(std::string_view text, bool is_difference, GrowingArray<Span>& secrets) {
    return Walk{text, is_difference, secrets}.run();
}

}  // namespace kcnvrt::text
