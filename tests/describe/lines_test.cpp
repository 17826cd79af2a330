// Every line of text/layouts.json is taken at its word: a value that it speaks of is put in its place in an example,
// the document is converted, and the result, or the message, is the one that the line says.
#include <gtest/gtest.h>

#include <functional>
#include <regex>
#include <set>
#include <sstream>

#include "conversion.h"
#include "described.h"
#include "k_cnvrt.h"
#include "k_str.h"
#include "names.h"
#include "pattern.h"

using namespace describe;

namespace {

// The values that stand at the line's places of the other layout.
std::vector<json_t*> results_at(json_t* result, json_t* places) {
    std::vector<json_t*> values;
    size_t index;
    json_t* place;
    json_array_foreach(places, index, place) {
        std::string there = json_string_value(place);
        for (const Names& names : matches(result, there)) values.push_back(at(result, names));
        if (!there.ends_with("/*")) continue;
        // What becomes entries may stand in the place of their list.
        there.resize(there.size() - 2);
        for (const Names& names : matches(result, there)) values.push_back(at(result, names));
    }
    return values;
}

// Of an array each entry may stand at a place of its own.
bool has(const std::vector<json_t*>& values, json_t* wanted) {
    const auto is_wanted = [wanted](json_t* value) { return json_equal(value, wanted) != 0; };
    if (std::any_of(values.begin(), values.end(), is_wanted)) return true;
    size_t index;
    json_t* entry;
    json_array_foreach(wanted, index, entry) if (!has(values, entry)) return false;
    return json_array_size(wanted) > 0;
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
        if (texts.find("leading zeros") != std::string::npos) return Tree{json_string("1")};
        if (texts.find("digits") != std::string::npos || texts.starts_with("a number")) return Tree{json_string("41")};
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

long long in_32_bits(long long number) {
    const long long low = number & 0xFFFFFFFF;
    return low > 0x7FFFFFFF ? low - 0x100000000 : low;
}

using Check = std::function<bool(json_t* value, const std::vector<json_t*>& results)>;

// What the words of "gives" mean, said a second time.
Check check_of(json_t* gives) {
    const auto text = [](const char* wanted) {
        return [wanted = std::string{wanted}](json_t*, const std::vector<json_t*>& results) {
            return has(results, Tree{json_string(wanted.c_str())}.get());
        };
    };
    if (json_object_get(gives, "member") != nullptr) return nullptr;  // checked by changing that one
    if (json_is_object(gives))
        return [gives](json_t*, const std::vector<json_t*>& results) {
            return has(results, json_object_get(gives, "value"));
        };
    const std::string word = gives == nullptr ? "itself" : json_string_value(gives);
    if (word == "itself") return [](json_t* value, const auto& results) { return has(results, value); };
    if (word == "nothing" || word == "something else")
        return [](json_t* value, const auto& results) { return !has(results, value) || json_is_boolean(value); };
    if (word == "its number" || word == "its number in 32 bits")
        return [is_cut = word != "its number"](json_t* value, const auto& results) {
            const long long number = std::atoll(json_string_value(value));
            return *json_string_value(value) == '\0' ||
                   has(results, Tree{json_integer(is_cut ? in_32_bits(number) : number)}.get());
        };
    if (word == "its low 32 bits")
        return [](json_t* value, const auto& results) {
            return has(results, Tree{json_integer(in_32_bits(json_integer_value(value)))}.get());
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
    if (word.starts_with("its plain text")) return text("abc");
    if (word.starts_with("its pieces between")) return text("sample");
    if (word == "itself as the one entry")
        return [](json_t* value, const auto& results) { return has(results, value); };
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
    std::string defects_at(json_t* line, const Example& document, const Names& names, json_t* behaviour);
    struct Saying;
    void expect_exceptions(const Saying& saying);
    void expect_absent(const Saying& saying);
    void expect_type(const Saying& saying, const std::string& type);
    void expect_result(const Saying& saying, json_t* value, const Check& check);
    void expect_message(const Saying& saying, json_t* value);
    void expect_member(const Saying& saying, json_t* value, const std::string& name);
    void expect_other_choice(const Saying& saying, json_t* value);
    void expect_others(const Saying& saying, const std::string& type);
    std::vector<std::string> results_of(const Saying& saying, json_t* document);
    bool is_said_to_be_taken(const Saying& saying, json_t* value) const;
    Tree refused_sample(const Saying& saying, const std::string& type) const;
    bool is_of_kind(const char* text, const char* name) const;

    std::string defects;  // of the place that is looked at
    Tree layouts = load_layouts();
    std::vector<Example> documents = documents_of(layouts.get());
    size_t lines = 0;
    size_t places = 0;
    size_t conversions = 0;
};

std::string described(const Names& names, json_t* value) {
    return pointer_of(names) + " as " + text_of(value) + ": ";
}

// What is said of the values of one type, of a place in a document.
struct Lines::Saying {
    json_t* line;
    const Example& document;
    const Names& names;
    json_t* said;
    Check check;  // null where a choice is made, which has lines of its own
    std::string what = text_of(said) + "\n";

    json_t* takes() const { return json_object_get(said, "takes"); }
    json_t* values() const { return json_object_get(takes(), "values"); }
    json_t* messages() const { return json_object_get(said, "says"); }
    bool is_some() const { return json_object_get(takes(), "some") != nullptr; }
    bool has_one_place() const { return json_array_size(json_object_get(line, name_of(other(document.side)))) == 1; }

    bool has_exceptions() const { return json_object_get(said, "but") != nullptr; }
    bool is_vague() const {
        json_t* const gives = json_object_get(said, "gives");
        const std::string word = json_is_string(gives) ? json_string_value(gives) : "";
        return word == "nothing" || word == "something else";
    }
    // Leading zeros do not count where that is said.
    static Tree without_zeros(json_t* value) {
        std::string text = json_is_string(value) ? json_string_value(value) : "";
        while (text.size() > 1 && text.front() == '0') text.erase(0, 1);
        return json_is_string(value) ? Tree{json_string(text.c_str())} : Tree{json_incref(value)};
    }
    bool is_excepted(json_t* value) const {
        const char* const texts = json_string_value(json_object_get(takes(), "texts"));
        const bool has_zeros = texts != nullptr && std::string{texts}.find("leading zeros") != std::string::npos;
        const Tree plain = has_zeros ? without_zeros(value) : Tree{json_incref(value)};
        size_t number;
        json_t* pair;
        json_array_foreach(json_object_get(said, "but"), number,
                           pair) if (json_equal(json_array_get(pair, 0), plain.get()) != 0) return true;
        return false;
    }
    bool is_listed_value(json_t* value) const {
        size_t number;
        json_t* one;
        json_array_foreach(values(), number, one) if (json_equal(one, value) != 0) return true;
        return false;
    }
};

void Lines::expect_result(const Saying& saying, json_t* value, const Check& check) {
    const Example& document = saying.document;
    const Tree source = with_value(document.root, saying.names, value);
    const Answer answer = convert(document.side, source.get(), document.flags);
    ++conversions;
    const std::string what = saying.what + described(saying.names, value);
    if (!answer.is_silent()) {
        defects += what + (answer.messages.empty() ? "rejected" : answer.messages.front().text) + "\n";
        return;
    }
    json_t* const places_there = json_object_get(saying.line, name_of(other(document.side)));
    const auto results = results_at(answer.result.get(), places_there);
    if (!check(value, results))
        defects +=
            what + (results.empty() ? "nothing" : text_of(results.front())) + " in " + text_of(places_there) + "\n";
}

void Lines::expect_message(const Saying& saying, json_t* value) {
    const Tree source = with_value(saying.document.root, saying.names, value);
    const Answer answer = convert(saying.document.side, source.get(), saying.document.flags);
    ++conversions;
    const bool is_said = std::any_of(answer.messages.begin(), answer.messages.end(), [&](const Message& message) {
        return is_listed(message.text, saying.messages());
    });
    if (!is_said)
        defects += saying.what + described(saying.names, value) +
                   (answer.messages.empty() ? "no message" : answer.messages.front().text) + "\n";
}

std::vector<std::string> Lines::results_of(const Saying& saying, json_t* document) {
    const Answer answer = convert(saying.document.side, document, saying.document.flags);
    ++conversions;
    std::vector<std::string> texts;
    for (json_t* result :
         results_at(answer.result.get(), json_object_get(saying.line, name_of(other(saying.document.side)))))
        texts.push_back(text_of(result));
    return texts;
}

// The leaves that may be meant by a name, or by a place.
std::vector<Names> members_called(json_t* document, const Names& spot, const std::string& name) {
    if (name.starts_with("/")) return matches(document, name);
    std::vector<Names> found;
    for (size_t depth = spot.size(); depth-- > 0;) {
        Names member{spot.begin(), spot.begin() + static_cast<std::ptrdiff_t>(depth)};
        member.push_back(name);
        if (at(document, member) != nullptr) found.push_back(member);
    }
    return found;
}

// The result changes with what another member has.
void Lines::expect_member(const Saying& saying, json_t* value, const std::string& name) {
    const Tree source = with_value(saying.document.root, saying.names, value);
    const auto results = results_of(saying, source.get());
    for (const Names& member : members_called(source.get(), saying.names, name)) {
        json_t* const there = at(source.get(), member);
        const Tree changed{json_is_integer(there)   ? json_integer(json_integer_value(there) + 1)
                           : json_is_boolean(there) ? json_boolean(!json_is_true(there))
                                                    : json_string("77")};
        if (results_of(saying, with_value(source.get(), member, changed.get()).get()) != results) return;
    }
    defects += saying.what + described(saying.names, value) + "does not depend on " + name + "\n";
}

// The whole result is another one than of any value.
void Lines::expect_other_choice(const Saying& saying, json_t* value) {
    const auto chosen = [&](json_t* one) {
        const Tree source = with_value(saying.document.root, saying.names, one);
        ++conversions;
        return text_of(convert(saying.document.side, source.get(), saying.document.flags).result.get());
    };
    const Tree usual{json_is_string(value) ? json_string("no such choice") : json_null()};
    if (saying.takes() == nullptr && chosen(value) == chosen(usual.get()))
        defects += saying.what + described(saying.names, value) + "is no choice\n";
}

void Lines::expect_exceptions(const Saying& saying) {
    size_t number;
    json_t* pair;
    json_array_foreach(json_object_get(saying.said, "but"), number, pair) {
        json_t* const result = json_array_get(pair, 1);
        if (saying.values() != nullptr && !saying.is_listed_value(json_array_get(pair, 0)))
            defects += saying.what + text_of(pair) + " is of no value that is taken\n";
        const std::string word = json_string_length(result) == 0 ? "" : json_string_value(result);
        if (word == "its member") continue;
        if (word == "another choice") {
            expect_other_choice(saying, json_array_get(pair, 0));
            continue;
        }
        if (json_array_size(pair) == 3) {
            expect_member(saying, json_array_get(pair, 0), json_string_value(json_array_get(pair, 2)));
            continue;
        }
        expect_result(saying, json_array_get(pair, 0), [&](json_t* value, const std::vector<json_t*>& results) {
            return result == nullptr ? !saying.has_one_place() || !has(results, value) : has(results, result);
        });
    }
}

void Lines::expect_absent(const Saying& saying) {
    json_t* const member = json_object_get(json_object_get(saying.said, "gives"), "member");
    if (saying.messages() != nullptr)
        expect_message(saying, nullptr);
    else if (member != nullptr)
        expect_member(saying, nullptr, json_string_value(member));
    else if (saying.check != nullptr)
        expect_result(saying, nullptr, saying.check);
}

// A text or a number that is not taken where others are; null where none is known.
Tree Lines::refused_sample(const Saying& saying, const std::string& type) const {
    if (type == "integer" && saying.values() != nullptr) return Tree{json_integer(-77777)};
    if (type != "string" || saying.is_some() || saying.messages() == nullptr) return nullptr;
    const char* const kind = json_string_value(json_object_get(saying.takes(), "texts"));
    for (const char* text : {"", "no such text", "-", "-1"}) {
        Tree sample{json_string(text)};
        const bool is_taken = kind != nullptr ? is_of_kind(text, kind) : saying.is_listed_value(sample.get());
        if (!is_taken) return sample;
    }
    return nullptr;
}

bool Lines::is_of_kind(const char* text, const char* name) const {
    size_t number;
    json_t* kind;
    json_array_foreach(json_object_get(layouts.get(), "texts"), number, kind) {
        if (std::string{json_string_value(json_object_get(kind, "name"))} != name) continue;
        return std::regex_match(text, std::regex{json_string_value(json_object_get(kind, "pattern"))});
    }
    return false;
}

bool Lines::is_said_to_be_taken(const Saying& saying, json_t* value) const {
    if (saying.values() != nullptr) return saying.is_listed_value(value);
    if (json_is_string(value))
        return is_of_kind(json_string_value(value), json_string_value(json_object_get(saying.takes(), "texts")));
    json_t* const from = json_object_get(saying.takes(), "from");
    json_t* const to = json_object_get(saying.takes(), "to");
    const bool is_cut = json_object_get(saying.takes(), "of") != nullptr;
    const long long number = is_cut ? in_32_bits(json_integer_value(value)) : json_integer_value(value);
    return (from == nullptr || number >= json_integer_value(from)) &&
           (to == nullptr || number <= json_integer_value(to));
}

// Values that nobody asked when the line was found: those of which it says so are taken, with the result that it says,
// and of others is said what it says.
void Lines::expect_others(const Saying& saying, const std::string& type) {
    std::vector<Tree> others;
    if (type == "string")
        for (const char* text : {"0000", "0003", "00001", "05", "2147483649", "3000000001", "no such text at all"})
            others.emplace_back(json_string(text));
    if (type == "integer")
        for (const json_int_t number : {2147483649LL, 4294967297LL, 6442450943LL, -2147483650LL})
            others.emplace_back(json_integer(number));
    if (saying.takes() == nullptr || saying.is_some()) return;
    for (const Tree& other : others) {
        json_t* const gives = json_object_get(saying.said, "gives");
        // What is base64, but of no text, is for another test.
        if (json_is_string(gives) && std::string{json_string_value(gives)}.starts_with("its plain text")) return;
        if (!is_said_to_be_taken(saying, other.get()))
            expect_message(saying, other.get());
        else if (saying.check != nullptr && !saying.is_excepted(other.get()) && !saying.is_vague())
            expect_result(saying, other.get(), saying.check);
    }
}

void Lines::expect_type(const Saying& saying, const std::string& type) {
    if (type == "absent") return expect_absent(saying);
    if (saying.values() != nullptr && json_array_size(saying.values()) == 0)
        return expect_message(saying, sample(type, nullptr).get());
    if (const Tree refused = refused_sample(saying, type); refused != nullptr && saying.takes() != nullptr)
        expect_message(saying, refused.get());
    expect_others(saying, type);
    if (json_t* const member = json_object_get(json_object_get(saying.said, "gives"), "member"))
        return expect_member(saying, sample(type, saying.takes()).get(), json_string_value(member));
    if (saying.check == nullptr) return;
    // What goes from one place may stand at another of the line.
    if (saying.has_exceptions() && saying.is_vague()) return;
    const Tree any = sample(type, saying.takes());
    if (saying.values() == nullptr && !saying.is_some() && !saying.is_excepted(any.get()))
        expect_result(saying, any.get(), saying.check);
    // What stands there is taken, of whatever form it is.
    json_t* const own = at(saying.document.root, saying.names);
    if (saying.is_some() && type == "string" && json_is_string(own) && !saying.is_excepted(own))
        expect_result(saying, own, saying.check);
}

// What the line says in vain of that place.
std::string Lines::defects_at(json_t* line, const Example& document, const Names& names, json_t* behaviour) {
    defects.clear();
    const bool chooses = std::string{json_string_value(json_object_get(line, "kind"))} == "chooses";
    size_t index;
    json_t* said;
    json_array_foreach(behaviour, index, said) {
        const Saying saying{line, document, names, said, chooses ? nullptr : check_of(json_object_get(said, "gives"))};
        expect_exceptions(saying);
        size_t number;
        json_t* one;
        json_array_foreach(json_object_get(said, "of"), number, one) expect_type(saying, json_string_value(one));
        json_array_foreach(saying.values(), number, one) if (saying.check != nullptr && !saying.is_excepted(one))
            expect_result(saying, one, saying.check);
        for (const auto& [bound, step] : {std::pair{"from", -1}, std::pair{"to", 1}})
            if (json_t* const end = json_object_get(saying.takes(), bound)) {
                expect_message(saying, Tree{json_integer(json_integer_value(end) + step)}.get());
                if (saying.check != nullptr && !saying.is_excepted(end)) expect_result(saying, end, saying.check);
            }
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
        for (const Example& document : documents) {
            if (document.side != side || is_true || (has_flag && document.flags == 0)) continue;
            const Example asked{side, static_cast<uint8_t>(has_flag ? K_CNVRT_DSL_VLAN : 0), document.root};
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

TEST_F(Lines, SayOfEachTypeOnceWhatBecomesOfIt) {
    size_t index;
    json_t* behaviour;
    json_array_foreach(json_object_get(layouts.get(), "behaviours"), index, behaviour) {
        std::multiset<std::string> types;
        size_t number;
        json_t* said;
        json_array_foreach(behaviour, number, said) {
            size_t at;
            json_t* type;
            json_array_foreach(json_object_get(said, "of"), at, type) types.insert(json_string_value(type));
        }
        types.erase("absent");
        const std::multiset<std::string> all{"array", "boolean", "integer", "null", "object", "real", "string"};
        EXPECT_TRUE(types == all || types.empty()) << text_of(behaviour);
    }
}

// What only a question has brought up is no place of a layout.
TEST_F(Lines, NameNoPlacesThatAreOfQuestions) {
    const std::regex of_question{"(.*[/|])?(-?[0-9]+|member|a)([/|].*)?"};
    size_t index;
    json_t* line;
    json_array_foreach(json_object_get(layouts.get(), "lines"), index, line) {
        for (const char* layout : {"old", "new"}) {
            size_t number;
            json_t* place;
            json_array_foreach(json_object_get(line, layout), number, place)
                    EXPECT_FALSE(std::regex_match(json_string_value(place), of_question))
                << json_string_value(place);
        }
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

}  // namespace
