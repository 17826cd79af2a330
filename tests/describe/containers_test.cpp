// Every container of text/layouts.json is taken at its word: what it is, whether it carries members that are not known,
// and which names its entries have.
#include <gtest/gtest.h>

#include <algorithm>

#include "described.h"

using namespace describe;

namespace {

// Whether a text that is put under that name of a container arrives.
bool is_carried(const Example& document, Names names, const char* member) {
    names.emplace_back(member);
    const Tree source = with_value(document.root, names, Tree{json_string("as it is")}.get());
    const Answer answer = convert(document.side, source.get(), document.flags);
    return answer.result != nullptr && text_of(answer.result.get()).find("as it is") != std::string::npos;
}

// What is said when an entry has that name.
std::string said_of_entry(const Example& document, Names names, const std::string& name) {
    names.push_back(name);
    const Tree entry{json_object()};
    const Answer answer = convert(document.side, with_value(document.root, names, entry.get()).get(), document.flags);
    return answer.messages.empty() ? "" : answer.messages.front().text;
}

// What is said in vain of a container.
std::string defects_of_container(json_t* row, const Example& document, const Names& names) {
    const std::string is = json_string_value(json_object_get(row, "is"));
    json_t* const value = at(document.root, names);
    if (is == "array" ? !json_is_array(value) : !json_is_object(value)) return "it is none";
    const bool carries = json_object_get(row, "carries others") != nullptr;
    if ((is == "object" || is == "list") &&
        is_carried(document, names, is == "list" ? "max_instance" : "of no name") != carries)
        return carries ? "a member does not arrive" : "a member arrives";
    json_t* const entries = json_object_get(row, "entries");
    json_t* const says = json_object_get(entries, "says");
    const auto most = json_integer_value(json_object_get(entries, "to"));
    if (most != 0 && (!is_listed(said_of_entry(document, names, std::to_string(most + 1)), says) ||
                      is_listed(said_of_entry(document, names, std::to_string(most)), says)))
        return "it ends elsewhere";
    const char* const of_names = json_string_value(json_object_get(entries, "names"));
    const bool is_for_numbers = of_names != nullptr && std::string{of_names} == "numbers";
    if (is_for_numbers && !is_listed(said_of_entry(document, names, "of no number"), says))
        return "a name is not reported";
    return "";
}

TEST(Containers, AreWhatTheConversionSaysOfThem) {
    const Tree layouts = load_layouts();
    size_t places = 0;
    size_t index;
    json_t* row;
    json_array_foreach(json_object_get(layouts.get(), "containers"), index, row) {
        std::vector<std::string> tried;
        for (const Example& document : documents_of(layouts.get())) {
            json_t* const place = json_object_get(row, name_of(document.side));
            if (place == nullptr || std::count(tried.begin(), tried.end(), "") != 0) continue;
            std::vector<Names> found = matches(document.root, json_string_value(place));
            found.resize(std::min<size_t>(found.size(), 4));
            for (const Names& names : found) tried.push_back(defects_of_container(row, document, names));
        }
        ++places;
        EXPECT_NE(std::count(tried.begin(), tried.end(), ""), 0)
            << text_of(row) << (tried.empty() ? " is in no example" : ": " + tried.front());
    }
    EXPECT_GT(places, 400u);
}

}  // namespace
