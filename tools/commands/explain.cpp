// What becomes of a member, and what a place of the result is made of, for people and for programs.
#include <jansson.h>
#include <unistd.h>

#include <memory>
#include <new>
#include <vector>

#include "commands/answer.h"
#include "commands/arguments.h"
#include "commands/commands.h"
#include "disk/output.h"
#include "json/position.h"
#include "json/writer.h"
#include "print/printable.h"
#include "print/shortened.h"

namespace kcnvrt {

namespace {

constexpr std::size_t kMostPlaces = 20;   // that are shown to a person; --json has them all
constexpr std::size_t kMostColumns = 67;  // of a value
constexpr const char* kBold = "\x1b[1m";
constexpr const char* kPlain = "\x1b[m";

struct Release {
    void operator()(json_t* value) const { json_decref(value); }
};
using Tree = std::unique_ptr<json_t, Release>;

std::string text_of(const json_t* object, const char* name) {
    return json_string_value(json_object_get(object, name));
}

std::string shown(const json_t* value) {
    if (json_is_null(value)) return "nothing";
    text::Buffer json;
    if (!text::write(value, {.compact = false, .indent = 0}, json)) throw std::bad_alloc();
    std::string printable;
    append_printable(printable, shortened(json.view(), kMostColumns));
    return printable;
}

std::string name_of(const std::string& pointer) {
    std::string name;
    append_printable(name, pointer);
    return pointer.empty() ? "(the whole)" : name;
}

std::string counted(std::size_t count, const char* one, const char* many) {
    return count == 1 ? one : std::to_string(count) + many;
}

// Where the members stand in their text, as messages say it: "FILE:LINE:COLUMN: "; only the file where one is nowhere.
std::vector<std::string> places_of(const std::vector<std::string>& pointers, const Source& source) {
    std::vector<text::Sought> sought;
    for (const std::string& pointer : pointers) sought.push_back({pointer, {}, 0});
    if (!text::find_values(source.text.view(), sought.data(), sought.size())) throw std::bad_alloc();
    std::vector<std::string> places;
    for (const text::Sought& each : sought) {
        std::string place;
        append_printable(place, source.file);
        if (each.spot.line != 0)
            place.append(":")
                .append(std::to_string(each.spot.line))
                .append(":")
                .append(std::to_string(each.spot.column));
        places.push_back(place + ": ");
    }
    return places;
}

class Page {
public:
    Page(const Answer& answer, bool has_colors) : answer_{answer}, has_colors_{has_colors} {}

    std::string of_member(const json_t* told) {
        const std::string pointer = text_of(told, "pointer");
        const json_t* const effects = json_object_get(told, "effects");
        page_ = places_of({pointer}, answer_.text)[0];
        append_bold(name_of(pointer));
        append_fate(text_of(told, "answer"), json_array_size(effects));
        for (std::size_t i = 0; i < json_array_size(effects) && i < kMostPlaces; ++i)
            append_effect(json_array_get(effects, i));
        append_rest(json_array_size(effects));
        return page_;
    }

    std::string of_result(const json_t* told) {
        const std::string pointer = text_of(told, "pointer");
        const json_t* const sources = json_object_get(told, "sources");
        const std::size_t count = json_array_size(sources);
        append_bold(name_of(pointer));
        page_ += " is " + shown(json_object_get(told, "value"));
        page_ += count == 0 ? ", whatever the configuration says.\n"
                            : ", made of " + counted(count, "one member.\n", " members.\n");
        append_sources(sources, json_object_get(told, "value"));
        append_rest(count);
        return page_;
    }

private:
    void append_bold(const std::string& words) {
        page_.append(has_colors_ ? kBold : "").append(words).append(has_colors_ ? kPlain : "");
    }

    const char* layout() const {
        return k_text_direction(answer_.result.get()) == K_TEXT_TO_NEW ? "the new layout" : "the old layout";
    }

    void append_fate(const std::string& fate, std::size_t effects) {
        page_ += " is " + fate;
        if (fate == "lost") {
            page_ += std::string(": nothing in ") + layout() + " depends on it.\n";
        } else if (fate == "regenerated") {
            page_ += std::string(": nothing in ") + layout() + " depends on it, and the way back makes it anew.\n";
        } else if (effects == 0) {
            page_ += std::string(": it is read, but what it says changes nothing in ") + layout() + ".\n";
        } else {
            page_ += ": " + counted(effects, "one place", " places") + " in " + layout() +
                     (effects == 1 ? " depends on it.\n" : " depend on it.\n");
        }
    }

    void append_effect(const json_t* effect) {
        const json_t* const with = json_object_get(effect, "with");
        const json_t* const without = json_object_get(effect, "without");
        page_ += "\n  " + name_of(text_of(effect, "pointer")) + "\n       with: " + shown(with) + "\n    without: ";
        page_ += json_equal(with, without) == 1 ? "the same, which is the default\n" : shown(without) + "\n";
    }

    void append_sources(const json_t* sources, const json_t* value) {
        std::vector<std::string> pointers;
        for (std::size_t i = 0; i < json_array_size(sources) && i < kMostPlaces; ++i)
            pointers.push_back(text_of(json_array_get(sources, i), "pointer"));
        const std::vector<std::string> places = places_of(pointers, answer_.text);
        for (std::size_t i = 0; i < pointers.size(); ++i) {
            const json_t* const source = json_array_get(sources, i);
            page_ += "\n  " + places[i] + name_of(pointers[i]);
            page_ += "\n       says: " + shown(json_object_get(source, "value"));
            const json_t* const without = json_object_get(source, "without");
            const bool is_same = json_equal(without, value) == 1;
            page_ += "\n    without: " + (is_same ? "the same" : shown(without)) + "\n";
        }
    }

    void append_rest(std::size_t count) {
        if (count <= kMostPlaces) return;
        page_ += "\n  ... and " + std::to_string(count - kMostPlaces) + " more, which --json has\n";
    }

    const Answer& answer_;
    bool has_colors_;
    std::string page_;
};

std::string page_of(const Answer& answer, const Options& options) {
    const std::string_view output = output_of(answer.result.get());
    if (options.json) return std::string(output) + "\n";
    const Tree told(json_loadb(output.data(), output.size(), JSON_ALLOW_NUL, nullptr));
    if (told == nullptr) throw std::bad_alloc();
    Page page(answer, options.output == kStandardStream && has_colors(STDOUT_FILENO, options.color));
    return options.from_result ? page.of_result(told.get()) : page.of_member(told.get());
}

}  // namespace

ExitStatus explain(const Options& options) {
    const Command* const command = find_command("explain");
    if (!options.pointer && !options.from_result) fail_by_usage("POINTER is missing", command);
    if (options.pointer && options.from_result) fail_by_usage("--from-result excludes POINTER", command);
    const std::string& pointer = options.pointer ? *options.pointer : *options.from_result;
    Options compact = options;
    compact.compact = true;
    uint32_t flags = towards(options);
    if (options.from_result) flags |= K_TEXT_FROM_RESULT;
    const Answer answer = ask({K_TEXT_EXPLAIN, nullptr, &options.file, nullptr, flags, pointer.c_str()}, compact);
    Messages(options.errors, options.color).print(answer.result.get(), answer.text, answer.other);
    const ExitStatus status = exit_status_of(answer.result.get());
    if (status == kConverted) {
        Output output(options.output, options.inputs);
        output.put(page_of(answer, options));
        output.finish();
    }
    return status;
}

}  // namespace kcnvrt
