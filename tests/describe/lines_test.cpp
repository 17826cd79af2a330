// Every line of text/layouts.json is taken at its word: a value that it speaks of is put in its place in an example,
// the document is converted, and the result, or the message, is the one that the line says.
#include <gtest/gtest.h>

#include <functional>
#include <regex>
#include <sstream>

#include "conversion.h"
#include "k_cnvrt.h"
#include "k_str.h"
#include "names.h"
#include "pattern.h"

using namespace describe;

namespace {

Tree load() {
    json_error_t error;
    Tree tree{json_load_file(KCNVRT_LAYOUTS, 0, &error)};
    EXPECT_NE(tree, nullptr) << error.text;
    return tree;
}

struct Document {
    Side side;
    uint8_t flags;
    json_t* root;
};

// In the order in which they are written.
std::vector<Document> documents_of(json_t* layouts) {
    json_t* const examples = json_object_get(layouts, "examples");
    return {{Side::kOld, 0, json_array_get(examples, 0)},
            {Side::kNew, 0, json_array_get(examples, 1)},
            {Side::kOld, K_CNVRT_DSL_VLAN, json_array_get(examples, 2)},
            {Side::kNew, K_CNVRT_DSL_VLAN, json_array_get(examples, 3)}};
}

Names names_of(const Path& path) {
    Names names;
    for (const Step& step : path) names.push_back(step.name);
    return names;
}

std::vector<Names> matches(json_t* root, const std::string& place) {
    const Pattern pattern{place.substr(1)};
    std::vector<Names> found;
    Path path;
    walk(root, path, [&](const Path& here, json_t*) {
        const bool is_entry = !here.empty() && here.back().name != "max_instance";
        if (is_entry && pattern.matches(here)) found.push_back(names_of(here));
    });
    return found;
}

// The values that stand at the line's places of the other layout.
std::vector<json_t*> results_at(json_t* result, json_t* places) {
    std::vector<json_t*> values;
    size_t index;
    json_t* place;
    json_array_foreach(places, index, place) for (const Names& names : matches(result, json_string_value(place)))
        values.push_back(at(result, names));
    return values;
}

bool has(const std::vector<json_t*>& values, json_t* wanted) {
    return std::any_of(values.begin(), values.end(),
                       [wanted](json_t* value) { return json_equal(value, wanted) != 0; });
}

// A message of the list, with anything for what it leaves open.
bool is_listed(const std::string& message, json_t* list) {
    size_t index;
    json_t* entry;
    json_array_foreach(list, index, entry) {
        std::string text = std::regex_replace(json_string_value(entry), std::regex{R"([.*+?^${}()|[\]\\])"}, "\\$&");
        text = std::regex_replace(text, std::regex{"KEY|TEXT|TYPE|\\bN\\b"}, "[^]*");
        if (std::regex_match(message, std::regex{text})) return true;
    }
    return false;
}

// A value of each type that no rule makes an exception of.
Tree sample(const std::string& type, json_t* takes) {
    const std::string texts = json_string_length(json_object_get(takes, "texts")) == 0
                                  ? ""
                                  : json_string_value(json_object_get(takes, "texts"));
    if (type == "string") {
        if (texts.find("base64") != std::string::npos) return Tree{json_string("YWJj")};
        if (texts.find("IPv4") != std::string::npos) return Tree{json_string("192.0.2.99")};
        if (texts.find("hardware") != std::string::npos) return Tree{json_string("02:00:5e:00:53:77")};
        if (texts.find("digits") != std::string::npos) return Tree{json_string("41")};
        return Tree{json_string(texts.find("true") == std::string::npos ? "sample" : "1")};
    }
    if (type == "integer") {
        json_t* const to = json_object_get(takes, "to");
        return Tree{to == nullptr ? json_integer(41) : json_incref(to)};
    }
    if (type == "real") return Tree{json_real(2.5)};
    if (type == "boolean") return Tree{json_true()};
    if (type == "array") return Tree{json_pack("[s]", "sample")};
    if (type == "object") return Tree{json_pack("{s:s}", "sample", "sample")};
    return Tree{json_null()};
}

using Check = std::function<bool(json_t* value, const std::vector<json_t*>& results)>;

// What the words of "gives" mean, said a second time.
Check check_of(json_t* gives) {
    const auto text = [](const char* wanted) {
        return [wanted = std::string{wanted}](json_t*, const std::vector<json_t*>& results) {
            return has(results, Tree{json_string(wanted.c_str())}.get());
        };
    };
    if (json_is_object(gives))
        return [gives](json_t*, const std::vector<json_t*>& results) {
            return has(results, json_object_get(gives, "value"));
        };
    const std::string word = gives == nullptr ? "itself" : json_string_value(gives);
    if (word == "itself") return [](json_t* value, const auto& results) { return has(results, value); };
    if (word == "nothing" || word == "something else")
        return [](json_t* value, const auto& results) { return !has(results, value) || json_is_boolean(value); };
    if (word == "its number")
        return [](json_t* value, const auto& results) {
            return has(results, Tree{json_integer(std::atoi(json_string_value(value)))}.get());
        };
    if (word == "its digits" || word == "the first seven of its digits")
        return [](json_t* value, const auto& results) {
            return has(results, Tree{json_string(std::to_string(json_integer_value(value)).c_str())}.get());
        };
    if (word == "true or false")
        return [](json_t* value, const auto& results) {
            const bool is_true = json_is_string(value) ? std::string{json_string_value(value)} == "1" ||
                                                             std::string{json_string_value(value)} == "true"
                                                       : json_integer_value(value) == 1;
            return has(results, Tree{json_boolean(is_true)}.get());
        };
    if (word == "\"1\" or \"0\"") return text("1");
    if (word == "its base64") return text("c2FtcGxl");
    if (word == "its plain text") return text("abc");
    if (word == "itself, ended by |") return text("sample|");
    if (word == "itself as the only entry")
        return [](json_t* value, const auto& results) {
            const Tree list{json_pack("{s:{s:O}, s:i}", "1", "name", value, "max_instance", 1)};
            return has(results, list.get()) || has(results, value);
        };
    return nullptr;  // checked by its exceptions alone
}

class Lines : public testing::Test {
protected:
    void TearDown() override { std::printf("%zu lines, %zu places, %zu conversions\n", lines, places, conversions); }

    void take(json_t* line, Side side, json_t* behaviour);
    std::string defects_at(json_t* line, const Document& document, const Names& names, json_t* behaviour);
    void expect_result(const std::string& what, json_t* line, const Document& document, const Names& names,
                       json_t* value, const Check& check);
    void expect_message(const std::string& what, const Document& document, const Names& names, json_t* value,
                        json_t* messages);

    std::string defects;  // of the place that is looked at
    Tree layouts = load();
    std::vector<Document> documents = documents_of(layouts.get());
    size_t lines = 0;
    size_t places = 0;
    size_t conversions = 0;
};

std::string described(const Names& names, json_t* value) {
    return pointer_of(names) + " as " + text_of(value) + ": ";
}

void Lines::expect_result(const std::string& what, json_t* line, const Document& document, const Names& names,
                          json_t* value, const Check& check) {
    const Tree source = with_value(document.root, names, value);
    const Answer answer = convert(document.side, source.get(), document.flags);
    ++conversions;
    if (!answer.is_silent()) {
        defects += what + described(names, value) +
                   (answer.messages.empty() ? "rejected" : answer.messages.front().text) + "\n";
        return;
    }
    const auto results = results_at(answer.result.get(), json_object_get(line, name_of(other(document.side))));
    if (!check(value, results))
        defects += what + described(names, value) + (results.empty() ? "nothing" : text_of(results.front())) + " in " +
                   text_of(json_object_get(line, name_of(other(document.side)))) + "\n";
}

void Lines::expect_message(const std::string& what, const Document& document, const Names& names, json_t* value,
                           json_t* messages) {
    const Tree source = with_value(document.root, names, value);
    const Answer answer = convert(document.side, source.get(), document.flags);
    ++conversions;
    const bool is_said = std::any_of(answer.messages.begin(), answer.messages.end(),
                                     [&](const Message& message) { return is_listed(message.text, messages); });
    if (!is_said)
        defects += what + described(names, value) +
                   (answer.messages.empty() ? "no message" : answer.messages.front().text) + "\n";
}

// What the line says in vain of that place.
std::string Lines::defects_at(json_t* line, const Document& document, const Names& names, json_t* behaviour) {
    defects.clear();
    const bool chooses = std::string{json_string_value(json_object_get(line, "kind"))} == "chooses";
    size_t index;
    json_t* said;
    json_array_foreach(behaviour, index, said) {
        const std::string what = text_of(said) + "\n";
        json_t* const takes = json_object_get(said, "takes");
        json_t* const values = json_object_get(takes, "values");
        const Check check = chooses ? nullptr : check_of(json_object_get(said, "gives"));
        size_t number;
        json_t* pair;
        json_array_foreach(json_object_get(said, "but"), number, pair) {
            json_t* const result = json_array_get(pair, 1);
            const bool has_one_place = json_array_size(json_object_get(line, name_of(other(document.side)))) == 1;
            const Check is_result = [&](json_t* value, const std::vector<json_t*>& results) {
                return result == nullptr ? !has_one_place || !has(results, value) : has(results, result);
            };
            if (json_string_length(result) == 0 || std::string{json_string_value(result)} != "its member")
                expect_result(what, line, document, names, json_array_get(pair, 0), is_result);
        }
        json_t* type;
        json_array_foreach(json_object_get(said, "of"), number, type) {
            const std::string name = json_string_value(type);
            if (name == "absent") {
                if (json_object_get(said, "says") != nullptr)
                    expect_message(what, document, names, nullptr, json_object_get(said, "says"));
                else if (check != nullptr)
                    expect_result(what, line, document, names, nullptr, check);
            } else if (values != nullptr && json_array_size(values) == 0) {
                expect_message(what, document, names, sample(name, nullptr).get(), json_object_get(said, "says"));
            } else if (values == nullptr && json_object_get(takes, "some") == nullptr && check != nullptr &&
                       json_object_get(said, "but") == nullptr) {
                expect_result(what, line, document, names, sample(name, takes).get(), check);
            }
        }
        json_t* value;
        json_array_foreach(values, number, value) if (json_object_get(said, "but") == nullptr && check != nullptr)
            expect_result(what, line, document, names, value, check);
        for (const auto& [bound, step] : {std::pair{"from", -1}, std::pair{"to", 1}})
            if (json_t* const end = json_object_get(takes, bound))
                expect_message(what, document, names, Tree{json_integer(json_integer_value(end) + step)}.get(),
                               json_object_get(said, "says"));
    }
    return defects;
}

// In the first entries of each example that has the place: of one of them it is true. In others what is said of a place
// may be overruled, as where the last entry of a list decides for all.
void Lines::take(json_t* line, Side side, json_t* behaviour) {
    constexpr size_t kMost = 4;
    const bool has_flag = json_object_get(line, "flag") != nullptr;
    size_t index;
    json_t* place;
    json_array_foreach(json_object_get(line, name_of(side)), index, place) {
        std::vector<std::string> tried;
        bool is_true = false;
        for (const Document& document : documents) {
            if (document.side != side || is_true || (has_flag && document.flags == 0)) continue;
            const Document asked{side, static_cast<uint8_t>(has_flag ? K_CNVRT_DSL_VLAN : 0), document.root};
            std::string there = json_string_value(place);
            if (there.ends_with("/**")) there.resize(there.size() - 3);
            std::vector<Names> found = matches(document.root, there);
            found.resize(std::min(found.size(), kMost));
            for (const Names& names : found)
                if (!is_true) {
                    tried.push_back(defects_at(line, asked, names, behaviour));
                    is_true = tried.back().empty();
                }
        }
        ++places;
        if (!is_true)
            ADD_FAILURE() << json_string_value(place) << " " << (tried.empty() ? "is in no example" : tried.front());
    }
}

TEST_F(Lines, AreWhatTheConversionDoes) {
    json_t* const behaviours = json_object_get(layouts.get(), "behaviours");
    size_t index;
    json_t* line;
    json_array_foreach(json_object_get(layouts.get(), "lines"), index, line) {
        ++lines;
        for (const auto& [name, side] : {std::pair{"to_new", Side::kOld}, std::pair{"to_old", Side::kNew}})
            if (json_t* const number = json_object_get(line, name))
                take(line, side, json_array_get(behaviours, static_cast<size_t>(json_integer_value(number))));
    }
    EXPECT_GT(places, 1000u);
}

// Whether a text that is put under that name of a container arrives.
bool is_carried(const Document& document, Names names, const char* member) {
    names.emplace_back(member);
    const Tree source = with_value(document.root, names, Tree{json_string("as it is")}.get());
    const Answer answer = convert(document.side, source.get(), document.flags);
    return answer.result != nullptr && text_of(answer.result.get()).find("as it is") != std::string::npos;
}

// What is said when an entry has that name.
std::string said_of_entry(const Document& document, Names names, const std::string& name) {
    names.push_back(name);
    const Tree entry{json_object()};
    const Answer answer = convert(document.side, with_value(document.root, names, entry.get()).get(), document.flags);
    return answer.messages.empty() ? "" : answer.messages.front().text;
}

// What is said in vain of a container.
std::string defects_of_container(json_t* row, const Document& document, const Names& names) {
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

TEST_F(Lines, SayOfContainersWhatTheConversionDoes) {
    size_t index;
    json_t* row;
    json_array_foreach(json_object_get(layouts.get(), "containers"), index, row) {
        std::vector<std::string> tried;
        for (const Document& document : documents) {
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

// Names and types that stand in one step, one by one.
std::vector<std::string> each_place(const std::string& place) {
    std::vector<std::string> places{""};
    for (const std::string& step : describe::names_of(place)) {
        const bool is_type = step.front() == '[';
        std::stringstream names{is_type ? step.substr(1, step.size() - 2) : step};
        std::vector<std::string> longer;
        for (std::string name; std::getline(names, name, '|');)
            for (const std::string& before : places)
                longer.push_back(before + "/" + (is_type ? "[" + name + "]" : name));
        places = std::move(longer);
    }
    return places;
}

// What is described is in the examples that are shipped: of places that share a line, at least one.
TEST(Examples, AreComplete) {
    const Tree layouts = load();
    std::vector<std::pair<Side, Tree>> shipped;
    for (const auto& [name, side] :
         {std::pair{"home-gateway.old.json", Side::kOld}, std::pair{"home-gateway.new.json", Side::kNew},
          std::pair{"dsl-gateway.old.json", Side::kOld}, std::pair{"dsl-gateway.new.json", Side::kNew}})
        shipped.emplace_back(side, json_load_file((std::string{KCNVRT_EXAMPLES "/"} + name).c_str(), 0, nullptr));
    const auto is_shipped = [&](Side side, std::string place) {
        if (place.ends_with("/**")) place.resize(place.size() - 3);
        return std::any_of(shipped.begin(), shipped.end(), [&](const auto& example) {
            return example.first == side && !matches(example.second.get(), place).empty();
        });
    };
    size_t index;
    json_t* line;
    json_array_foreach(json_object_get(layouts.get(), "lines"), index, line) {
        for (const auto& [direction, side] : {std::pair{"to_new", Side::kOld}, std::pair{"to_old", Side::kNew}}) {
            json_t* const places = json_object_get(line, name_of(side));
            if (json_object_get(line, direction) == nullptr) continue;
            bool is_there = false;
            size_t number;
            json_t* place;
            json_array_foreach(places, number,
                               place) for (const std::string& one : each_place(json_string_value(place))) is_there =
                is_there || is_shipped(side, one);
            EXPECT_TRUE(is_there) << text_of(places);
        }
    }
}

}  // namespace
