#include "asked.h"

#include <algorithm>
#include <cstdint>
#include <map>

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

bool is_name(json_t* value, json_t* result, const Names& place) {
    if (!json_is_string(value) || json_string_length(value) == 0 || place.empty()) return false;
    Names member = place;
    member.back() = json_string_value(value);
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

Replies replies_of(const Texts& texts, const std::vector<Asked>& asked, const Seen& seen) {
    Replies replies{texts};
    for (const Asked& one : asked) {
        json_t* const value = one.value.get();
        Reply reply{Tree{json_incref(value)}, nullptr, ""};
        if (!one.answer.is_silent()) {
            reply.message = one.answer.messages.empty() ? "rejected" : one.answer.messages.front().text;
            for (const std::string& key : seen.keys) {
                const std::string quoted = "\"" + key + "\"";
                const size_t found = reply.message.find(quoted);
                if (found != std::string::npos) reply.message.replace(found, quoted.size(), "\"KEY\"");
            }
        } else if (seen.is_all) {
            reply.result = string("a choice");
        } else if (seen.are_names) {
            if (is_name(value, one.answer.result.get(), seen.place)) reply.result = string("its member");
        } else if (seen.is_in_text) {
            const bool is_there = is_member_of_text(value, at(one.answer.result.get(), seen.place), seen.name);
            if (is_there) reply.result = string("a member of that text");
        } else if (!seen.place.empty()) {
            reply.result.reset(json_incref(at(one.answer.result.get(), seen.place)));
        }
        replies.add(std::move(reply));
    }
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
