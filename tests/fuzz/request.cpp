// Requests to the text layer, well-formed or not. The bytes: operation, flags (two), indent, width of excerpts,
// section; the second text, or the pointer, up to a NUL; the text.
#include <k_cnvrt_text.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "bytes.h"
#include "json/pointer.h"
#include "json/utf8.h"
#include "properties.h"
#include "secrets.h"

namespace {

struct FreeResult {
    void operator()(k_text_result_t* result) const { k_text_free(result); }
};
using Result = std::unique_ptr<k_text_result_t, FreeResult>;

struct Asked {
    k_text_request_t request;
    std::string text;
    std::string other;
    size_t width;
};

const char* section_of(uint8_t number) {
    const char* const name = k_text_section(number % 2, number / 2);
    return name == nullptr ? "nosuch" : name;
}

// Mostly those that there are.
uint32_t flags_of(Bytes& bytes) {
    const uint8_t low = bytes.next();
    const uint8_t high = bytes.next();
    return static_cast<uint32_t>(low) | static_cast<uint32_t>(high & 15) << 8 |
           static_cast<uint32_t>(high == 255) << 31;
}

Asked request_of(Bytes& bytes) {
    Asked asked = {};
    k_text_request_t& request = asked.request;
    request.size = sizeof request;
    request.operation = static_cast<uint32_t>(bytes.below(16));
    request.flags = flags_of(bytes);
    request.indent = static_cast<int>(bytes.below(40)) - 3;
    asked.width = bytes.below(200);
    const uint8_t section = bytes.next();
    asked.other = bytes.take_until('\0');
    asked.text = bytes.take(SIZE_MAX);
    const bool is_section = request.operation == K_TEXT_SECTION_TO_NEW || request.operation == K_TEXT_SECTION_TO_OLD;
    if (is_section) request.section = section_of(section);
    return asked;
}

// The request borrows the texts, which must not move from now on.
void lend_texts(Asked& asked) {
    k_text_request_t& request = asked.request;
    request.text = asked.text.data();
    request.text_length = asked.text.size();
    if (request.operation == K_TEXT_EXPLAIN) request.pointer = asked.other.c_str();
    if (asked.other.empty() || request.operation == K_TEXT_EXPLAIN) return;
    request.other = asked.other.data();
    request.other_length = asked.other.size();
}

const std::string& text_of(const Asked& asked, uint32_t which) {
    return which == K_TEXT_IN_OTHER ? asked.other : asked.text;
}

// Shown together with the request when it does not hold.
class Checked {
public:
    Checked(const Asked& asked, k_text_result_t* result) : asked_{asked}, result_{result} {}

    void all() {
        const uint32_t operation = asked_.request.operation;
        const int status = k_text_status(result_);
        const char* const output = k_text_output(result_, nullptr);
        const bool is_partial = status == K_TEXT_REJECTED && (asked_.request.flags & K_TEXT_PARTIAL) != 0;
        holds(status >= K_TEXT_CONVERTED && status <= K_TEXT_WRONG_USAGE, "the status is one that is documented");
        const bool is_question = operation == K_TEXT_CHECK || operation == K_TEXT_LOSSES;
        holds((output != nullptr) == (status == K_TEXT_CONVERTED && !is_question) || is_partial,
              "there is an output when there may be");
        holds(status == K_TEXT_CONVERTED || k_text_problem_count(result_) + k_text_loss_count(result_) != 0,
              "what fails has a problem");
        holds(output == nullptr || parsed(output) != nullptr, "the output is JSON");
        for (size_t i = 0; i < k_text_problem_count(result_); ++i) problem(i);
        for (size_t i = 0; i < k_text_loss_count(result_); ++i) loss(i);
    }

private:
    static Tree parsed(const std::string& text) {
        return Tree{json_loadb(text.data(), text.size(), JSON_DECODE_ANY | JSON_ALLOW_NUL, nullptr)};
    }

    void holds(bool is_so, const char* what) const {
        if (is_so) return;
        const Tree shown{json_pack("{s: i, s: i, s: i, s: s%, s: s%}", "operation", asked_.request.operation, "flags",
                                   asked_.request.flags, "width", static_cast<int>(asked_.width), "text",
                                   asked_.text.data(), asked_.text.size(), "other", asked_.other.data(),
                                   asked_.other.size())};
        require(false, what, shown.get());
    }

    void problem(size_t index) {
        k_text_problem_t problem;
        problem.size = sizeof problem;
        holds(k_text_problem(result_, index, &problem) == 0, "there are as many problems as counted");
        holds(problem.severity >= K_TEXT_ERROR && problem.severity <= K_TEXT_NOTE, "a problem has a severity");
        const std::string message = problem.message;
        holds(!message.empty() && message.back() != '\n' && *problem.function != '\0', "a problem has words");
        place(problem);
        excerpt(index, problem);
    }

    // Shown as it stands there, if nothing in it is hidden.
    void loss(size_t index) {
        k_text_loss_t loss;
        loss.size = sizeof loss;
        holds(k_text_loss(result_, index, &loss) == 0, "there are as many losses as counted");
        holds(loss.kind >= K_TEXT_DROPPED && loss.kind <= K_TEXT_RENUMBERED, "a loss has a kind");
        const std::string& text = asked_.text;
        holds(loss.line != 0 && loss.offset + loss.length <= text.size(), "a loss is in the text");
        const Tree root = parsed(text);
        const Tree value = parsed(text.substr(loss.offset, loss.length));
        const json_t* const meant = kcnvrt::text::value_at(root.get(), loss.pointer);
        holds(json_equal(meant, value.get()) == 1, "the pointer leads to what stands at the place");
        const bool has_before = loss.kind != K_TEXT_DEFAULTED;
        const bool has_after = loss.kind != K_TEXT_DROPPED && loss.kind != K_TEXT_CHANGED;
        holds((loss.before != nullptr) == has_before, "what was there is said");
        holds(loss.after != nullptr || !has_after, "what comes back is said");
        for (const char* shown : {loss.before, loss.after})
            holds(shown == nullptr || parsed(shown) != nullptr, "values are JSON");
        const bool shows_secrets = (asked_.request.flags & K_TEXT_SHOW_SECRETS) != 0;
        const bool is_value = has_before && loss.kind != K_TEXT_RENUMBERED;
        if (shows_secrets && is_value)
            holds(json_equal(parsed(loss.before).get(), meant) == 1, "what was there is what stands there");
        for (const char* shown : {loss.before, loss.after})
            if (!shows_secrets && shown != nullptr) no_secret(text, shown);
    }

    void place(const k_text_problem_t& problem) {
        const std::string& text = text_of(asked_, problem.which);
        if (problem.line == 0) return holds(problem.offset + problem.length + problem.column == 0, "no place is none");
        holds(problem.offset + problem.length <= text.size(), "a place is in the text");
        size_t line = 1;
        size_t column = 1;
        for (size_t i = 0; i < problem.offset; ++i) {
            const bool ends_line = text[i] == '\n';
            line += ends_line;
            column = ends_line ? 1 : column + ((text[i] & '\xC0') != '\x80');
        }
        holds(problem.line == line && problem.column == column, "line and column are those of the offset");
        if (problem.pointer == nullptr || k_text_status(result_) == K_TEXT_UNREADABLE) return;
        const Tree root = parsed(text);
        const Tree value = parsed(text.substr(problem.offset, problem.length));
        const json_t* const meant = kcnvrt::text::value_at(root.get(), problem.pointer);
        holds(json_equal(meant, value.get()) == 1, "the pointer leads to what stands at the place");
    }

    void excerpt(size_t index, const k_text_problem_t& problem) {
        const std::string& text = text_of(asked_, problem.which);
        k_text_excerpt_t excerpt;
        excerpt.size = sizeof excerpt;
        const int status = k_text_excerpt(result_, index, text.data(), text.size(), asked_.width, &excerpt);
        holds((status == 0) == (problem.line != 0), "what has a place has a line");
        if (status != 0) return;
        const std::string line = excerpt.line;
        size_t characters = 0;
        for (size_t at = 0; at < line.size(); ++characters) {
            const size_t length = kcnvrt::text::utf8_length(line.data() + at, line.data() + line.size());
            holds(length != 0, "the line is UTF-8");
            holds(static_cast<unsigned char>(line[at]) >= 0x20 && line[at] != 0x7F, "no character moves the cursor");
            at += length;
        }
        holds(characters <= std::max<size_t>(asked_.width, 24), "the line is as wide as asked for");
        holds(excerpt.mark + excerpt.mark_length <= line.size(), "the mark is in the line");
        if ((asked_.request.flags & K_TEXT_SHOW_SECRETS) == 0) no_secret(text, line + "\n" + problem.message);
    }

    // Of a text that is JSON: a text inside a secret that stands nowhere else.
    void no_secret(const std::string& text, const std::string& shown) {
        if (const Tree root = parsed(text)) walk(root.get(), false, text, shown);
    }

    void walk(json_t* value, bool is_secret, const std::string& text, const std::string& shown) {
        if (json_is_string(value) && is_secret && json_string_length(value) >= 6) {
            const std::string secret(json_string_value(value), json_string_length(value));
            const bool is_alone = text.find(secret) == text.rfind(secret);
            holds(!is_alone || shown.find(secret) == std::string::npos, "no secret is shown");
        }
        const char* name;
        json_t* member;
        json_object_foreach(value, name, member)
            walk(member, is_secret || kcnvrt::text::is_secret_name(name), text, shown);
        for (size_t i = 0; i < json_array_size(value); ++i) walk(json_array_get(value, i), is_secret, text, shown);
    }

    const Asked& asked_;
    k_text_result_t* result_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Bytes bytes{{reinterpret_cast<const char*>(data), size}};
    Asked asked = request_of(bytes);
    lend_texts(asked);
    const Result result(k_text_run(&asked.request));
    Checked(asked, result.get()).all();
    return 0;
}
