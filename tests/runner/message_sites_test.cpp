// Every place in the sources that reports a message has a case in which the message occurs with its place.
//
// A site is a call that reports, with its format. A case shows it when it lists "pointers", stands in the folder of the
// site's room, and one of its messages is what the format makes. Where a room has several sites of one format, it has
// to show as many different messages; of a message that is always the same, as many cases.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "case.h"

namespace {

// What no case can bring: an allocation has to fail, or a document to be nested deeper than a parser goes.
constexpr const char* kBeyondCases[] = {
    "Error allocated memory!\n", "strdup error:\n", "realloc error:\n",
    "Error json_pack!\n",        "Out of memory",   "The %s is nested more than %zu levels deep",
};

// Messages about no source, whose place is none.
constexpr const char* kAboutNoSource[] = {"In object ", "Section ", "There is no "};

struct Site {
    std::string file;  // below the root
    long line;
    std::string format;
};

std::string contents(const std::filesystem::path& file) {
    std::ifstream stream{file};
    return {std::istreambuf_iterator<char>{stream}, {}};
}

// The call that begins at its opening parenthesis, cut at the commas that part its arguments.
std::vector<std::string> arguments_of(const std::string& text, size_t open) {
    std::vector<std::string> arguments{""};
    int depth = 0;
    bool is_quoted = false;
    for (size_t at = open + 1; at < text.size(); ++at) {
        const char character = text[at];
        if (is_quoted && character == '\\') {
            arguments.back() += text.substr(at++, 2);
            continue;
        }
        if (character == '"') is_quoted = !is_quoted;
        if (!is_quoted && character == ')' && depth-- == 0) break;
        if (!is_quoted && character == '(') ++depth;
        if (!is_quoted && character == ',' && depth == 0)
            arguments.emplace_back();
        else
            arguments.back() += character;
    }
    return arguments;
}

// The literals of an argument put together; what stands between them, a macro of inttypes.h, ends a conversion with
// "d".
std::string format_of(const std::string& argument) {
    std::string format;
    bool is_quoted = false;
    for (size_t at = 0; at < argument.size(); ++at) {
        if (argument[at] == '"') {
            is_quoted = !is_quoted;
            if (!is_quoted && argument.find("PRI", at) == argument.find_first_not_of(" \n", at + 1) &&
                argument.find("PRI", at) != std::string::npos)
                format += 'd';
        } else if (is_quoted && argument[at] == '\\') {
            format += argument[++at] == 'n' ? '\n' : argument[at];
        } else if (is_quoted) {
            format += argument[at];
        }
    }
    return format;
}

// The calls that report, and which of their arguments is the format.
const std::map<std::string, size_t> kReporting = {
    {"fail", 0}, {"note", 0}, {"fail_at", 2}, {"say", 1}, {"k_err_set", 3}};

void add_sites(std::vector<Site>& sites, const std::filesystem::path& root, const std::filesystem::path& file) {
    const std::string text = contents(file);
    const std::regex call{R"(\b(fail|note|fail_at|say|k_err_set)\()"};
    for (std::sregex_iterator at{text.begin(), text.end(), call}, end; at != end; ++at) {
        const auto open = static_cast<size_t>(at->position() + at->length() - 1);
        const std::vector<std::string> arguments = arguments_of(text, open);
        const size_t index = kReporting.at((*at)[1]);
        const std::string format = index < arguments.size() ? format_of(arguments[index]) : "";
        // A declaration has no text.
        if (format.empty()) continue;
        const auto line = 1 + std::count(text.begin(), text.begin() + at->position(), '\n');
        sites.push_back({std::filesystem::relative(file, root).string(), line, format});
    }
}

std::vector<Site> sites_of(const std::filesystem::path& root) {
    std::vector<Site> sites;
    for (const char* folder : {"src", "support"})
        for (const auto& entry : std::filesystem::recursive_directory_iterator{root / folder})
            if (entry.path().extension() == ".cpp") add_sites(sites, root, entry.path());
    return sites;
}

// What the format may make.
std::regex pattern_of(const std::string& format) {
    static const std::regex special{R"([.^$|()\[\]{}*+?\\])"};
    static const std::regex conversion{"%[0-9l]*z?[a-z]"};
    return std::regex{std::regex_replace(std::regex_replace(format, special, R"(\$&)"), conversion, "[^]*")};
}

// "wifi" of "src/wifi/radio.cpp"; what many rooms use stands for itself, in whatever folder its cases are.
std::string room_of(const Site& site) {
    const std::filesystem::path file{site.file};
    const std::string room = std::next(file.begin())->string();
    const bool is_of_all = *file.begin() == "support" || room == "frame" || room == "document";
    return is_of_all ? "" : room;
}

bool is_shown(std::string_view message, const json_t* pointer) {
    const auto begins = [message](const char* start) { return message.starts_with(start); };
    return json_is_string(pointer) || std::ranges::any_of(kAboutNoSource, begins);
}

struct Shown {
    std::string function;
    std::string message;
    std::string sentence;  // of the case

    auto operator<=>(const Shown&) const = default;
};

using Messages = std::set<Shown>;

// Those that cases show with their places, by the folder of the cases and by "" for all folders.
std::map<std::string, Messages> shown_messages() {
    std::map<std::string, Messages> shown;
    for (const auto& file : case_files(KCNVRT_CASES)) {
        const std::string folder = std::filesystem::path{file}.parent_path().filename().string();
        for (const Case& loaded : load_cases(file)) {
            const json_t* messages = json_object_get(loaded.data.get(), "messages");
            const json_t* pointers = json_object_get(loaded.data.get(), "pointers");
            for (size_t i = 0; i < json_array_size(pointers); ++i) {
                const json_t* message = json_array_get(messages, i);
                if (!is_shown(json_string_value(json_array_get(message, 1)), json_array_get(pointers, i))) continue;
                for (const std::string& of : {folder, std::string{}})
                    shown[of].insert({json_string_value(json_array_get(message, 0)),
                                      json_string_value(json_array_get(message, 1)), loaded.sentence});
            }
        }
    }
    return shown;
}

long count_of(const Messages& messages, const std::string& format) {
    const std::regex pattern = pattern_of(format);
    const bool is_constant = format.find('%') == std::string::npos;
    std::set<std::string> different;
    for (const Shown& shown : messages)
        if (std::regex_match(shown.message, pattern))
            different.insert(is_constant ? shown.sentence : shown.function + "\n" + shown.message);
    return static_cast<long>(different.size());
}

TEST(MessageSites, OccurInCasesWithTheirPlaces) {
    std::map<std::pair<std::string, std::string>, std::vector<Site>> alike;
    size_t count = 0;
    for (const Site& site : sites_of(KCNVRT_ROOT)) {
        if (std::ranges::find(kBeyondCases, site.format) != std::end(kBeyondCases)) continue;
        alike[{room_of(site), site.format}].push_back(site);
        ++count;
    }
    std::map<std::string, Messages> shown = shown_messages();
    for (const auto& [key, sites] : alike) {
        const auto& [room, format] = key;
        if (count_of(shown[room], format) >= static_cast<long>(sites.size())) continue;
        for (const Site& site : sites)
            ADD_FAILURE_AT((std::string{KCNVRT_ROOT "/"} + site.file).c_str(), static_cast<int>(site.line))
                << "No case" << (room.empty() ? "" : " of " + room) << " shows this message with its place: " << format;
    }
    std::printf("%zu sites\n", count);
    EXPECT_GT(count, 90u);
}

}  // namespace
