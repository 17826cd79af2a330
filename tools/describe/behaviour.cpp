// A rule is tried on all values of a type: the one with the fewest exceptions is what they do.
#include "behaviour.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iterator>
#include <optional>
#include <sstream>

#include "k_str.h"

namespace describe {

namespace {

constexpr const char* kOfMember = "\1what a member gives";  // no document has that name
constexpr size_t kMostCodes = 40;
constexpr size_t kSamples = 6;  // of what can be said in no other way
const char* const kTypes[] = {"object", "array", "string", "integer", "real", "boolean", "boolean", "null"};

bool same(json_t* one, json_t* other) {
    return one == nullptr || other == nullptr ? one == other : json_equal(one, other) != 0;
}

using Texted = int (*)(const char*, char**);
Tree coded(json_t* value, Texted code) {
    char* text = nullptr;
    if (!json_is_string(value) || code(json_string_value(value), &text) < 0) return nullptr;
    Tree result{json_string(text)};
    std::free(text);
    return result;
}

Tree number_of(json_t* value) {
    char* end = nullptr;
    const char* const text = json_string_value(value);
    if (text == nullptr || *text == '\0') return nullptr;
    const long long number = std::strtoll(text, &end, 10);
    return *end == '\0' ? integer(number) : nullptr;
}

Tree low_32_bits_of(json_t* value) {
    if (!json_is_integer(value)) return nullptr;
    return integer(static_cast<int32_t>(static_cast<uint32_t>(json_integer_value(value))));
}

Tree digits_of(json_t* value, size_t longest) {
    if (!json_is_integer(value)) return nullptr;
    return string(std::to_string(json_integer_value(value)).substr(0, longest));
}

Tree switch_of(json_t* value) {
    if (json_is_integer(value)) return Tree{json_boolean(json_integer_value(value) != 0)};
    const char* const text = json_string_value(value);
    if (text == nullptr) return nullptr;
    return Tree{json_boolean(std::strcmp(text, "1") == 0 || std::strcmp(text, "true") == 0)};
}

// Those that are empty are none.
Tree pieces_of(json_t* value, char mark) {
    if (!json_is_string(value)) return nullptr;
    std::istringstream text{json_string_value(value)};
    Tree list{json_array()};
    for (std::string piece; std::getline(text, piece, mark);)
        if (!piece.empty()) json_array_append_new(list.get(), string(piece).release());
    return json_array_size(list.get()) == 0 ? Tree{} : std::move(list);
}

struct Rule {
    const char* name;
    std::function<Tree(json_t*)> apply;  // null: nothing is written
};

const std::vector<Rule>& rules() {
    static const std::vector<Rule> all = {
        {"itself", [](json_t* value) { return Tree{json_incref(value)}; }},
        {"nothing", [](json_t*) { return Tree{}; }},
        {"its number", number_of},
        {"its number in 32 bits", [](json_t* value) { return low_32_bits_of(number_of(value).get()); }},
        {"its low 32 bits", low_32_bits_of},
        {"its digits", [](json_t* value) { return digits_of(value, std::string::npos); }},
        {"the first seven of its digits", [](json_t* value) { return digits_of(value, 7); }},
        {"true or false", switch_of},
        {"\"1\" or \"0\"",
         [](json_t* value) { return json_is_boolean(value) ? string(json_is_true(value) ? "1" : "0") : Tree{}; }},
        {"itself, ended by |",
         [](json_t* value) {
             return json_is_string(value) ? string(std::string{json_string_value(value)} + "|") : Tree{};
         }},
        {"its JSON",
         [](json_t* value) {
             return Tree{json_loads(json_is_string(value) ? json_string_value(value) : "", 0, nullptr)};
         }},
        {"a member of that text", [](json_t*) { return string("a member of that text"); }},
        {"its pieces between |, as entries", [](json_t* value) { return pieces_of(value, '|'); }},
        {"its pieces between commas, as entries", [](json_t* value) { return pieces_of(value, ','); }},
        {"itself as the one entry", [](json_t* value) { return Tree{json_pack("[O]", value)}; }},
        {"a choice", [](json_t*) { return string("a choice"); }},
        {"another choice", [](json_t*) { return string("another choice"); }},
        {"its member", [](json_t*) { return string("its member"); }},
        {"its base64", [](json_t* value) { return coded(value, k_str_base64_encode); }},
        {"its plain text", [](json_t* value) { return coded(value, k_str_base64_decode); }},
        {"its plain text, or itself where that is none",
         [](json_t* value) {
             Tree plain = coded(value, k_str_base64_decode);
             return plain == nullptr ? Tree{json_incref(value)} : std::move(plain);
         }},
        {"itself as the only entry",
         [](json_t* value) { return Tree{json_pack("{s:{s:O}, s:i}", "1", "name", value, "max_instance", 1)}; }},
    };
    return all;
}

using Chosen = std::vector<const Reply*>;

// The name in what what_member_gives() makes; null for any other result.
json_t* member_in(json_t* result) {
    return json_object_get(result, kOfMember);
}

Tree given(json_t* result) {
    if (json_t* const member = member_in(result)) return Tree{json_pack("{s:O}", "member", member)};
    return Tree{json_pack("{s:O}", "value", result)};
}

struct Said {
    Tree gives;
    Chosen but;
};

// One result of one value is no rule for others.
bool gives_again(const Chosen& taken, const Reply& reply) {
    return std::count_if(taken.begin(), taken.end(),
                         [&](const Reply* other) { return same(other->result.get(), reply.result.get()); }) > 1;
}

Said what_they_give(const Chosen& taken) {
    Said best;
    bool is_found = false;
    const auto consider = [&](Tree name, const std::function<Tree(json_t*)>& apply) {
        Chosen but;
        for (const Reply* reply : taken)
            if (!same(apply(reply->value.get()).get(), reply->result.get())) but.push_back(reply);
        if (is_found ? but.size() >= best.but.size() : but.size() > taken.size() / 2) return;
        is_found = true;
        best = {std::move(name), std::move(but)};
    };
    for (const Rule& rule : rules()) consider(string(rule.name), rule.apply);
    const bool are_all_asked = json_is_boolean(taken.front()->value.get());
    for (const Reply* reply : taken)
        if (reply->result != nullptr && (taken.size() > 1 || !is_found) && (!is_found || !best.but.empty()) &&
            (are_all_asked || taken.size() == 1 || gives_again(taken, *reply)))
            consider(given(reply->result.get()), [reply](json_t*) { return Tree{json_incref(reply->result.get())}; });
    if (!is_found || best.but.size() > kMostCodes) best = {string("something else"), is_found ? best.but : taken};
    return best;
}

// What another member gives is said by its name, which stands third.
Tree pairs(const Chosen& replies) {
    Tree list{json_array()};
    for (const Reply* reply : replies) {
        Tree pair{json_pack("[O]", reply->value.get())};
        if (json_t* const member = member_in(reply->result.get()))
            json_array_extend(pair.get(), Tree{json_pack("[n, O]", member)}.get());
        else if (reply->result != nullptr)
            json_array_append(pair.get(), reply->result.get());
        json_array_append_new(list.get(), pair.release());
    }
    return list;
}

Tree values_of(const Chosen& replies) {
    Tree list{json_array()};
    for (const Reply* reply : replies) json_array_append(list.get(), reply->value.get());
    return list;
}

const TextKind* kind_of(const Texts& texts, const Chosen& taken, const Chosen& refused) {
    const auto matches = [](const Reply* reply, const TextKind& kind) {
        return std::regex_match(json_string_value(reply->value.get()), kind.expression);
    };
    for (const TextKind& kind : texts.kinds()) {
        const auto is_one = [&](const Reply* reply) { return matches(reply, kind); };
        if (std::all_of(taken.begin(), taken.end(), is_one) && std::none_of(refused.begin(), refused.end(), is_one))
            return &kind;
    }
    return nullptr;
}

bool is_of_32_bits(json_int_t number) {
    return number >= INT32_MIN && number <= INT32_MAX;
}

json_int_t number(const Reply* reply) {
    return json_integer_value(reply->value.get());
}

// Integers that are taken without a gap have a least and a greatest one. Greater ones than 32 bits hold are cut.
Tree range_of(const Chosen& taken, const Chosen& refused) {
    const auto of_32_bits = [](const Chosen& replies) {
        Chosen chosen;
        for (const Reply* reply : replies)
            if (is_of_32_bits(number(reply))) chosen.push_back(reply);
        return chosen;
    };
    const auto by_number = [](const Reply* a, const Reply* b) { return number(a) < number(b); };
    const Chosen inside = of_32_bits(taken);
    if (inside.empty()) return nullptr;
    const json_int_t least = number(*std::min_element(inside.begin(), inside.end(), by_number));
    const json_int_t greatest = number(*std::max_element(inside.begin(), inside.end(), by_number));
    bool is_below = false;
    bool is_above = false;
    for (const Reply* reply : of_32_bits(refused)) {
        if (number(reply) > least && number(reply) < greatest) return nullptr;
        is_below = is_below || number(reply) < least;
        is_above = is_above || number(reply) > greatest;
    }
    const auto is_inside = [&](json_int_t number) {
        return (!is_below || number >= least) && (!is_above || number <= greatest);
    };
    const auto is_far = [](const Reply* reply) { return !is_of_32_bits(number(reply)); };
    const auto is_far_inside = [&](const Reply* reply) { return is_far(reply) && is_inside(number(reply)); };
    const auto is_far_outside = [&](const Reply* reply) { return is_far(reply) && !is_inside(number(reply)); };
    Tree range{json_object()};
    if (is_below) json_object_set_new(range.get(), "from", json_integer(least));
    if (is_above) json_object_set_new(range.get(), "to", json_integer(greatest));
    if (std::any_of(taken.begin(), taken.end(), is_far_outside) ||
        std::any_of(refused.begin(), refused.end(), is_far_inside))
        json_object_set_new(range.get(), "of", json_string("its low 32 bits"));
    return range;
}

Tree what_they_take(const Texts& texts, const char* type, const Chosen& taken, const Chosen& refused) {
    if (std::strcmp(type, "string") == 0)
        if (const TextKind* kind = kind_of(texts, taken, refused))
            return Tree{json_pack("{s:s}", "texts", kind->name.c_str())};
    if (std::strcmp(type, "integer") == 0)
        if (Tree range = range_of(taken, refused)) return range;
    // Where texts of some form are taken, there are more than those that were asked.
    const bool is_open = std::any_of(taken.begin(), taken.end(), [](const Reply* reply) {
        const std::string text = json_is_string(reply->value.get()) ? json_string_value(reply->value.get()) : "";
        return text == "65536" || text.find_first_of(".:{") != std::string::npos;
    });
    if (taken.size() <= kMostCodes && !is_open) return Tree{json_pack("{s:o}", "values", values_of(taken).release())};
    return Tree{json_pack("{s:b}", "some", 1)};
}

void replace_all(std::string& text, const std::string& what, const std::string& with) {
    for (size_t found = text.find(what); !what.empty() && found != std::string::npos;
         found = text.find(what, found + with.size()))
        text.replace(found, what.size(), with);
}

std::string shown(json_t* value) {
    return json_is_integer(value) ? std::to_string(json_integer_value(value)) : json_string_value(value);
}

// How a message may show it: as it is, a text as the number that it is read as, and a negative number without a sign.
std::vector<std::string> forms_of(json_t* value) {
    std::vector<std::string> forms{shown(value)};
    if (const Tree read = number_of(value)) forms.push_back(shown(read.get()));
    if (json_is_integer(value)) forms.push_back(std::to_string(static_cast<uint64_t>(json_integer_value(value))));
    return forms;
}

// Where a message ends with the type of its value, as Jansson numbers it or calls it.
std::string type_at_end(const Reply* reply) {
    constexpr const char* kNames[] = {"object", "array", "string", "integer", "real", "true", "false", "null"};
    const int type = json_typeof(reply->value.get());
    std::string number = std::to_string(type);
    if (reply->message.ends_with(" " + number)) return number;
    return reply->message.ends_with(std::string(", got ") + kNames[type]) ? kNames[type] : "";
}

// Each message once, whatever value it shows: what stands for a long one is found out first, and then put to the test
// with the others.
Tree messages_of(const Chosen& refused) {
    constexpr size_t kLong = 5;
    std::vector<std::string> general;
    const auto add = [&](const std::string& message) {
        if (std::find(general.begin(), general.end(), message) == general.end()) general.push_back(message);
    };
    const auto is_shown = [](const Reply* reply) {
        return json_is_string(reply->value.get()) || json_is_integer(reply->value.get());
    };
    // What is said of different values alike shows none of them, though one may stand in it.
    const auto is_constant = [&](const Reply* reply) {
        return std::any_of(refused.begin(), refused.end(), [&](const Reply* other) {
            return other->message == reply->message && !same(other->value.get(), reply->value.get());
        });
    };
    const auto shows_type = [](const Reply* reply) { return !type_at_end(reply).empty(); };
    if (!refused.empty() && std::all_of(refused.begin(), refused.end(), shows_type)) {
        std::string message = refused.front()->message;
        const size_t length = type_at_end(refused.front()).size();
        message.replace(message.size() - length, length, "TYPE");
        return Tree{json_pack("[s]", message.c_str())};
    }
    for (const Reply* reply : refused) {
        if (!is_shown(reply) || shown(reply->value.get()).size() < kLong) continue;
        std::string message = reply->message;
        if (!is_constant(reply))
            for (const std::string& form : forms_of(reply->value.get()))
                replace_all(message, form, json_is_string(reply->value.get()) ? "TEXT" : "N");
        add(message);
    }
    for (const Reply* reply : refused) {
        const auto says = [&](std::string message, const std::string& value) {
            replace_all(message, json_is_string(reply->value.get()) ? "TEXT" : "N", value);
            return message == reply->message;
        };
        const auto says_it = [&](const std::string& message) {
            if (!is_shown(reply)) return message == reply->message;
            const auto forms = forms_of(reply->value.get());
            return std::any_of(forms.begin(), forms.end(),
                               [&](const std::string& form) { return says(message, form); });
        };
        if (std::none_of(general.begin(), general.end(), says_it)) add(reply->message);
    }
    Tree list{json_array()};
    for (const std::string& message : general) json_array_append_new(list.get(), json_string(message.c_str()));
    return list;
}

struct OfType {
    Chosen taken;
    Chosen refused;
};

OfType of_type(const std::vector<Reply>& replies, const char* type) {
    OfType found;
    for (const Reply& reply : replies) {
        if (reply.value == nullptr || std::strcmp(kTypes[json_typeof(reply.value.get())], type) != 0) continue;
        (reply.message.empty() ? found.taken : found.refused).push_back(&reply);
    }
    return found;
}

// Where leading zeros do not count, a text with some has nothing of its own to say.
Chosen without_leading_zeros(const Chosen& taken) {
    Chosen plain;
    std::copy_if(taken.begin(), taken.end(), std::back_inserter(plain), [](const Reply* reply) {
        const std::string text = json_string_value(reply->value.get());
        return text.size() < 2 || text.front() != '0';
    });
    return plain;
}

Tree said_of(const Texts& texts, const char* type, const OfType& replies) {
    Tree said{json_object()};
    if (!replies.taken.empty()) {
        if (!replies.refused.empty())
            json_object_set_new(said.get(), "takes",
                                what_they_take(texts, type, replies.taken, replies.refused).release());
        const char* const kind = json_string_value(json_object_get(json_object_get(said.get(), "takes"), "texts"));
        const bool has_zeros = kind != nullptr && std::strstr(kind, "leading zeros") != nullptr;
        Said what = what_they_give(has_zeros ? without_leading_zeros(replies.taken) : replies.taken);
        const bool has_values = json_object_get(json_object_get(said.get(), "takes"), "values") != nullptr;
        const bool is_something = what.gives != nullptr && same(what.gives.get(), string("something else").get());
        if (is_something && !has_values) what.but.resize(std::min(what.but.size(), kSamples));
        const bool is_itself = what.gives != nullptr && same(what.gives.get(), string("itself").get());
        if (what.gives != nullptr && !is_itself) json_object_set_new(said.get(), "gives", what.gives.release());
        if (!what.but.empty()) json_object_set_new(said.get(), "but", pairs(what.but).release());
    } else {
        json_object_set_new(said.get(), "takes", json_object());
        json_object_set_new(json_object_get(said.get(), "takes"), "values", json_array());
    }
    if (!replies.refused.empty()) json_object_set_new(said.get(), "says", messages_of(replies.refused).release());
    return said;
}

// Types of which the same is said stand together.
void add_said(json_t* list, const char* type, json_t* said) {
    size_t at;
    json_t* entry;
    json_array_foreach(list, at, entry) {
        Tree rest{json_copy(entry)};
        json_object_del(rest.get(), "of");
        if (json_equal(rest.get(), said) == 0) continue;
        json_array_append_new(json_object_get(entry, "of"), json_string(type));
        return;
    }
    Tree entry_with{json_pack("{s:[s]}", "of", type)};
    json_object_update(entry_with.get(), said);
    json_array_append_new(list, entry_with.release());
}

}  // namespace

Tree what_member_gives(const std::string& name) {
    return Tree{json_pack("{s:s}", kOfMember, name.c_str())};
}

bool Replies::has_codes() const {
    const OfType texts = of_type(replies_, "string");
    if (texts.taken.empty()) return false;
    const bool is_one_kind = texts.refused.empty() || kind_of(texts_, texts.taken, texts.refused) != nullptr;
    return !is_one_kind || (texts.refused.empty() && what_they_give(texts.taken).but.size() > 1);
}

Tree Replies::behaviour() const {
    Tree list{json_array()};
    for (const char* type : {"string", "integer", "real", "boolean", "null", "array", "object"}) {
        const OfType replies = of_type(replies_, type);
        if (!replies.taken.empty() || !replies.refused.empty())
            add_said(list.get(), type, said_of(texts_, type, replies).get());
    }
    for (const Reply& reply : replies_) {
        if (reply.value != nullptr || (reply.message.empty() && reply.result == nullptr)) continue;
        Tree said{json_pack("{s:[s]}", "of", "absent")};
        if (!reply.message.empty()) json_object_set_new(said.get(), "says", json_pack("[s]", reply.message.c_str()));
        if (reply.result != nullptr) json_object_set_new(said.get(), "gives", given(reply.result.get()).release());
        json_array_append(list.get(), said.get());
    }
    return list;
}

}  // namespace describe
