#include "asked.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string_view>

#include "numbered_list.h"

namespace describe {

Names telling_place(const std::vector<Asked>& asked, const std::set<Names>& places, json_t* base, const Names& names) {
    Names best;
    size_t most = 0;
    for (const Names& place : places) {
        size_t count = 0;
        for (const Asked& one : asked)
            if (one.answer.is_silent()) {
                json_t* const now = at(one.answer.result.get(), place);
                json_t* const before = at(base, place);
                const bool is_moved = now == nullptr || before == nullptr ? now != before : !json_equal(now, before);
                if (is_moved) count += 100;
            }
        if (count > 0) count += 2 * place.size() + (place.back() == names.back() ? 1 : 0);
        if (count <= most) continue;
        most = count;
        best = place;
    }
    return best;
}

std::string name_in(json_t* value) {
    if (json_is_integer(value)) return std::to_string(json_integer_value(value));
    return json_is_string(value) ? json_string_value(value) : "";
}

bool is_name(json_t* value, json_t* result, const Names& place) {
    if (name_in(value).empty() || place.empty()) return false;
    Names member = place;
    member.back() = name_in(value);
    const Names above{place.begin(), place.end() - 1};
    return json_is_object(at(result, above)) && at(result, member) != nullptr;
}

bool is_member_of_text(json_t* value, json_t* text, const std::string& name) {
    const Tree object{json_loads(json_is_string(text) ? json_string_value(text) : "", 0, nullptr)};
    json_t* const member = json_object_get(object.get(), name.c_str());
    return member != nullptr && json_equal(member, value) != 0;
}

bool is_json_of(json_t* value, json_t* result) {
    const Tree parsed{json_loads(json_is_string(value) ? json_string_value(value) : "", 0, nullptr)};
    return parsed != nullptr && json_equal(parsed.get(), result) != 0;
}

namespace {

void show_name(std::string& message, const std::string& key) {
    const std::string quoted = "\"" + key + "\"";
    const size_t found = message.find(quoted);
    if (found != std::string::npos) message.replace(found, quoted.size(), "\"KEY\"");
}

// The number of the entry, where a message ends with it.
void show_entry(std::string& message, const std::string& name) {
    const size_t end = message.find_last_not_of('\n') + 1;
    if (!is_number(name) || !std::string_view{message}.substr(0, end).ends_with("\" " + name)) return;
    message.replace(end - name.size(), name.size(), "NAME");
}

std::string message_of(const Asked& one, const Seen& seen) {
    std::string message = one.answer.messages.empty() ? "rejected" : one.answer.messages.front().text;
    for (const std::string& key : seen.keys) show_name(message, key);
    show_entry(message, seen.name);
    return message;
}

// Null where it becomes none; what stands in the place of their list is itself.
Tree entries_in(json_t* result, const std::vector<Names>& entries, json_t* value) {
    Names list_place = entries.front();
    while (value != nullptr && list_place.size() + 2 > entries.front().size() && list_place.size() > 1) {
        list_place.pop_back();
        if (json_t* const there = at(result, list_place); there != nullptr && json_equal(there, value) != 0)
            return Tree{json_incref(value)};
    }
    Tree list{json_array()};
    for (const Names& entry : entries)
        if (json_t* const there = at(result, entry)) json_array_append(list.get(), there);
    return json_array_size(list.get()) == 0 ? Tree{} : std::move(list);
}

// Results that are the same are one choice; the one that most values make is the usual one.
std::vector<std::string> choices_in(const std::vector<Asked>& asked) {
    constexpr size_t kMostChoices = 6;
    std::map<std::string, size_t> times;
    std::vector<std::string> results;
    for (const Asked& one : asked) {
        results.push_back(one.answer.is_silent() ? text_of(one.answer.result.get()) : "");
        if (one.answer.is_silent()) ++times[results.back()];
    }
    if (times.empty()) return results;
    const auto by_times = [](const auto& a, const auto& b) { return a.second < b.second; };
    const auto usual = std::max_element(times.begin(), times.end(), by_times);
    for (std::string& result : results)
        result = times.size() > kMostChoices || result == usual->first ? "a choice" : "another choice";
    return results;
}

Tree result_of(const Asked& one, const Seen& seen) {
    json_t* const value = one.value.get();
    json_t* const result = one.answer.result.get();
    if (seen.are_names) return is_name(value, result, seen.place) ? string("its member") : Tree{};
    if (seen.is_in_text) {
        const bool is_there = is_member_of_text(value, at(result, seen.place), seen.name);
        return is_there ? string("a member of that text") : Tree{};
    }
    if (!seen.entries.empty()) return entries_in(result, seen.entries, value);
    return seen.place.empty() ? Tree{} : Tree{json_incref(at(result, seen.place))};
}

}  // namespace

std::vector<Names> entries_beside(const std::vector<Asked>& asked, const std::set<Names>& places, const Names& one) {
    const auto is_beside = [&](const Names& other, size_t step) {
        if (other.size() != one.size() || !is_number(one[step]) || !is_number(other[step])) return false;
        Names same = other;
        same[step] = one[step];
        return same == one;
    };
    // It becomes now more, now fewer of them.
    const auto is_among = [&](const Asked& given, const std::vector<Names>& entries) {
        json_t* const result = given.answer.result.get();
        const auto is_there = [&](const Names& entry) { return at(result, entry) != nullptr; };
        return std::any_of(entries.begin(), entries.end(), is_there) &&
               !std::all_of(entries.begin(), entries.end(), is_there);
    };
    for (size_t step = one.size(); step-- > 0;) {
        std::vector<Names> entries;
        for (const Names& other : places)
            if (is_beside(other, step)) entries.push_back(other);
        const auto by_number = [step](const Names& a, const Names& b) {
            return std::stol(a[step]) < std::stol(b[step]);
        };
        std::sort(entries.begin(), entries.end(), by_number);
        const bool do_differ = std::any_of(asked.begin(), asked.end(), [&](const Asked& given) {
            json_t* const first = at(given.answer.result.get(), entries.empty() ? one : entries.front());
            return given.answer.is_silent() && std::any_of(entries.begin(), entries.end(), [&](const Names& entry) {
                       json_t* const value = at(given.answer.result.get(), entry);
                       return first != nullptr && value != nullptr && json_equal(value, first) == 0;
                   });
        });
        const bool do_vary =
            std::any_of(asked.begin(), asked.end(), [&](const Asked& given) { return is_among(given, entries); });
        if (do_differ && do_vary) return entries;
    }
    return {};
}

std::vector<Reply> replies_to(const std::vector<Asked>& asked, const Seen& seen) {
    std::vector<Reply> replies;
    const std::vector<std::string> choices = seen.is_all ? choices_in(asked) : std::vector<std::string>{};
    for (size_t at = 0; at < asked.size(); ++at) {
        Reply reply{Tree{json_incref(asked[at].value.get())}, nullptr, ""};
        if (!asked[at].answer.is_silent())
            reply.message = message_of(asked[at], seen);
        else
            reply.result = seen.is_all ? string(choices[at]) : result_of(asked[at], seen);
        replies.push_back(std::move(reply));
    }
    return replies;
}

Replies replies_of(const Texts& texts, const std::vector<Asked>& asked, const Seen& seen) {
    Replies replies{texts};
    for (Reply& reply : replies_to(asked, seen)) replies.add(std::move(reply));
    return replies;
}

size_t leaves(json_t* value) {
    size_t count = json_is_object(value) || json_is_array(value) ? 0 : 1;
    const char* name;
    json_t* member;
    json_object_foreach(value, name, member) count += leaves(member);
    for (size_t position = 0; position < json_array_size(value); ++position)
        count += leaves(json_array_get(value, position));
    return count;
}

std::vector<std::string> innermost(const std::vector<std::string>& places) {
    std::vector<std::string> inner;
    for (const std::string& place : places)
        if ((places.size() == 1 || !place.ends_with("/max_instance")) &&
            std::none_of(places.begin(), places.end(),
                         [&](const std::string& one) { return one.starts_with(place + "/"); }))
            inner.push_back(place);
    return inner;
}

std::vector<std::pair<json_int_t, json_int_t>> bounds(const std::vector<Asked>& asked) {
    std::map<json_int_t, bool> taken;
    for (const Asked& one : asked) {
        const json_int_t number = json_integer_value(one.value.get());
        if (json_is_integer(one.value.get()) && number >= INT32_MIN && number <= INT32_MAX)
            taken[number] = one.answer.is_silent();
    }
    std::vector<std::pair<json_int_t, json_int_t>> found;
    const std::pair<const json_int_t, bool>* before = nullptr;
    for (const auto& number : taken) {
        if (before != nullptr && before->second != number.second)
            found.emplace_back(number.second ? number.first : before->first,
                               number.second ? before->first : number.first);
        before = &number;
    }
    return found;
}

bool has_number_codes(const std::vector<Asked>& asked) {
    return bounds(asked).size() > 2;
}

}  // namespace describe
