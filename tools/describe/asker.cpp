// A value is put in its place, the document converted, and both results are laid beside each other.
#include "asker.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <set>

#include "asked.h"
#include "changes.h"
#include "numbered_list.h"
#include "reading_order.h"
#include "word_places.h"

namespace describe {

namespace {

constexpr size_t kMostEntries = 3;  // of a list that are asked
constexpr size_t kMostResults = 6;  // that are named one by one
constexpr size_t kMostLeaves = 8;   // that one value may bring

std::string common_container(const std::vector<std::string>& places) {
    Names common = names_of(places.front());
    for (const std::string& place : places) {
        const Names names = names_of(place);
        size_t length = 0;
        while (length < std::min(common.size(), names.size()) && common[length] == names[length]) ++length;
        common.resize(length);
    }
    return pointer_of(common) + "/**";
}

}  // namespace

Answer Asker::answer(const Subject& subject) {
    return convert(subject.side, subject.document, subject.flags);
}

Answer Asker::answer_with(const Subject& subject, const Names& names, json_t* value) {
    const Tree document = with_value(subject.document, names, value);
    return answer({subject.side, subject.flags, document.get()});
}

Answer Asker::answer_without_any(const Subject& subject, const std::string& place) {
    const Tree document{json_deep_copy(subject.document)};
    std::vector<Names> found;
    Names names;
    walk_in_order({}, document.get(), names, [&](const Names& here, json_t*) {
        if (names_.place(subject.side, {document.get()}, here) == place) found.push_back(here);
        return true;
    });
    for (const Names& here : found)
        json_object_del(at(document.get(), {here.begin(), here.end() - 1}), here.back().c_str());
    return answer({subject.side, subject.flags, document.get()});
}

std::string Asker::result_place(const Subject& subject, json_t* result, const Names& names) const {
    return names_.place(other(subject.side), {base_.result.get(), result}, names);
}

// Those that every place is asked with, what stands there, and what is known to be chosen there.
std::vector<Tree> Asker::probes_of(const Subject& subject, const Spot& spot) const {
    std::vector<Tree> probes = probes_of_every_type();
    for (const std::string& sample : texts_.samples()) probes.push_back(string(sample));
    const auto add = [&probes](json_t* value) {
        const auto is_same = [value](const Tree& probe) { return json_equal(probe.get(), value) != 0; };
        if (std::none_of(probes.begin(), probes.end(), is_same)) probes.emplace_back(json_incref(value));
    };
    const Path path = path_to(subject.document, spot.names);
    for (const Row& row : rows_) {
        if (!row.says("values") || !row.is_of(subject.side) || !row.matches(path)) continue;
        size_t position;
        json_t* value;
        json_array_foreach(row["values"], position, value) add(value);
    }
    add(path.back().value);
    return probes;
}

Finding Asker::of_leaf(const Subject& subject, const Spot& spot) {
    Finding finding;
    finding.place = spot.place;
    json_t* const value = at(subject.document, spot.names);
    finding.example.reset(json_incref(value));
    std::vector<Asked> asked;
    std::set<Names> places;
    Seen seen;
    seen.name = spot.names.back();
    seen.keys.insert(seen.name);
    const auto ask = [&](Tree probe) {
        const auto is_same = [&](const Asked& one) { return json_equal(one.value.get(), probe.get()) != 0; };
        if (std::any_of(asked.begin(), asked.end(), is_same)) return;
        Answer given =
            probe == nullptr ? answer_without_any(subject, spot.place) : answer_with(subject, spot.names, probe.get());
        // What is absent everywhere tells what is given instead, and not whether this entry is heard.
        if (given.is_silent() && probe != nullptr)
            for (const Names& place : changes(base_.result.get(), given.result.get())) {
                if (place.empty()) continue;
                if (!places.insert(place).second) continue;
                seen.keys.insert(place.back());
                add_once(finding.results, result_place(subject, given.result.get(), place));
            }
        asked.push_back({std::move(probe), std::move(given)});
    };
    for (Tree& probe : probes_of(subject, spot)) ask(std::move(probe));
    for (const auto& [taken, refused] :
         has_number_codes(asked) ? std::vector<std::pair<json_int_t, json_int_t>>{} : bounds(asked)) {
        json_int_t inside = taken;
        json_int_t outside = refused;
        while (std::abs(inside - outside) > 1) {
            const json_int_t middle = inside + (outside - inside) / 2;
            ask(integer(middle));
            (asked.back().answer.is_silent() ? inside : outside) = middle;
        }
    }
    if (has_number_codes(asked))
        for (json_int_t number = 0; number < 256; ++number) ask(integer(number));
    const bool is_member = json_is_object(at(subject.document, {spot.names.begin(), spot.names.end() - 1}));
    if (is_member && spot.place.back() != '*') ask(nullptr);

    finding.is_dropped = places.empty();
    const auto look = [&] {
        finding.results = innermost(finding.results);
        seen.place = telling_place(asked, places, base_.result.get(), spot.names);
        const Names above{seen.place.begin(), seen.place.empty() ? seen.place.end() : seen.place.end() - 1};
        if (is_json_of(value, at(base_.result.get(), above))) seen.place = above;
        seen.is_in_text = is_member_of_text(value, at(base_.result.get(), seen.place), seen.name);
        seen.are_names =
            is_name(value, base_.result.get(), seen.place) && seen.place.back() == json_string_value(value);
        seen.is_all = false;
        const bool is_large = !seen.place.empty() && std::any_of(asked.begin(), asked.end(), [&](const Asked& one) {
            return one.answer.is_silent() && leaves(at(one.answer.result.get(), seen.place)) > kMostLeaves &&
                   (json_is_string(one.value.get()) || json_is_integer(one.value.get()));
        });
        finding.is_name = seen.are_names;
        finding.is_selector = !seen.are_names && (finding.results.size() > kMostResults || is_large);
        if (finding.is_selector) seen.is_all = true;
    };
    look();
    if (!seen.are_names && !seen.is_all && replies_of(texts_, asked, seen).has_codes()) {
        for (const std::string& literal : texts_.literals()) ask(string(literal));
        look();
    }
    if (finding.results.size() > kMostResults) finding.results = {common_container(finding.results)};
    if (finding.is_name) finding.results = {result_place(subject, base_.result.get(), seen.place)};
    finding.behaviour = replies_of(texts_, asked, seen).behaviour();
    return finding;
}

// Whether any value at all is in the result as it is.
bool Asker::is_carried_whole(const Subject& subject, const Spot& spot, Finding& finding) {
    std::set<Names> first;
    for (const Tree& probe : {string("as it is"), integer(7), Tree{json_null()}}) {
        const Answer given = answer_with(subject, spot.names, probe.get());
        if (!given.is_silent()) return false;
        const std::set<Names> places = changes(base_.result.get(), given.result.get());
        if (places.empty() || (!first.empty() && places != first)) return false;
        for (const Names& place : places) {
            if (json_equal(at(given.result.get(), place), probe.get()) == 0) return false;
            add_once(finding.results, result_place(subject, given.result.get(), place));
        }
        first = places;
    }
    return are_members_carried(subject, spot.names, *first.begin());
}

// Whether what is inside comes with it, and nothing of that is converted.
bool Asker::are_members_carried(const Subject& subject, const Names& names, const Names& result) {
    json_t* const value = at(subject.document, names);
    std::vector<Tree> changed;
    for (const Tree& probe : {string("as it is"), string("7"), integer(7), Tree{json_null()}, Tree{json_true()}})
        for (const std::string& name : members({}, value)) changed.push_back(with_value(value, {name}, probe.get()));
    if (json_is_object(value)) changed.push_back(with_value(value, {"of no name"}, string("as it is").get()));
    for (const Tree& one : changed) {
        const Answer given = answer_with(subject, names, one.get());
        if (!given.is_silent() || json_equal(at(given.result.get(), result), one.get()) == 0) return false;
    }
    const auto is_carried = [&](const std::string& name) {
        Names inside = names;
        Names carried = result;
        inside.push_back(name);
        carried.push_back(name);
        return json_is_string(at(value, {name})) || are_members_carried(subject, inside, carried);
    };
    const auto inner = members({}, value);
    return std::all_of(inner.begin(), inner.end(), is_carried);
}

Finding Asker::of_container(const Subject& subject, const Spot& spot) {
    Finding finding;
    finding.place = spot.place;
    finding.is_whole = is_carried_whole(subject, spot, finding);
    if (finding.is_whole) {
        Replies replies{texts_};
        for (const Tree& probe : probes_of_every_type())
            replies.add({Tree{json_incref(probe.get())}, Tree{json_incref(probe.get())}, ""});
        replies.add({string(""), string(""), ""});
        const Answer without = answer_with(subject, spot.names, nullptr);
        if (spot.place.back() != '*' && !without.is_silent())
            replies.add({nullptr, nullptr, without.messages.empty() ? "rejected" : without.messages.front().text});
        finding.behaviour = replies.behaviour();
        finding.example.reset(json_incref(at(subject.document, spot.names)));
        return finding;
    }
    finding.results.clear();
    finding.container = names_.container(subject.side, spot.place, path_to(subject.document, spot.names));
    std::vector<Asked> asked;
    const bool is_member = json_is_object(at(subject.document, {spot.names.begin(), spot.names.end() - 1}));
    if (is_member && spot.place.back() != '*' && spot.place.back() != ']')
        asked.push_back({nullptr, answer_with(subject, spot.names, nullptr)});
    if (finding.container == "object" || finding.container == "list") {
        const Tree extra = string("as it is");
        Names member = spot.names;
        member.push_back(finding.container == "list" ? "max_instance" : "of no name");
        const Answer given = answer_with(subject, member, extra.get());
        for (const Names& place : changes(base_.result.get(), given.result.get()))
            finding.carries_others |= json_equal(at(given.result.get(), place), extra.get()) != 0;
    }
    finding.behaviour = replies_of(texts_, asked, {spot.names.back(), {}, {spot.names.back()}}).behaviour();
    return finding;
}

namespace {

// Converts the document as it is, and keeps the words of tables and the order in which they read.
ReadingOrder::Order watch(const Subject& subject, Answer& answer, std::map<Names, std::string>& words) {
    ReadingOrder order;
    WordPlaces places{subject.side, subject.document};
    answer = convert(subject.side, subject.document, subject.flags);
    Path path;
    walk(subject.document, path, [&](const Path& here, json_t*) {
        Names names;
        for (const Step& step : here) names.push_back(step.name);
        for (const std::string& word : word_names())
            if (places.has(here, word)) words[names] = word;
    });
    return order.take();
}

}  // namespace

void Asker::find_types(const Subject& subject) {
    base_ = answer(subject);
    Names names;
    walk_in_order({}, subject.document, names, [&](const Names& at_names, json_t* value) {
        if (at_names.back() != "type" || !json_is_string(value)) return json_is_object(value) || json_is_array(value);
        const Names entry{at_names.begin(), at_names.end() - 1};
        const Names container{entry.begin(), entry.end() - 1};
        const std::string place = names_.place(subject.side, {subject.document}, container);
        const Answer given = answer_with(subject, at_names, string("of no type").get());
        const std::set<Names> places = changes(base_.result.get(), given.result.get());
        const bool is_carried = std::all_of(places.begin(), places.end(), [&](const Names& changed) {
            return json_is_string(at(given.result.get(), changed));
        });
        const std::string name = names_.place(subject.side, {subject.document}, entry);
        if (!is_carried && name.ends_with("/*")) names_.tell_by_type(subject.side, place);
        return false;
    });
}

void Asker::ask(const Subject& subject, std::vector<Finding>& findings) {
    std::map<Names, std::string> words;
    const ReadingOrder::Order order = watch(subject, base_, words);
    if (!base_.is_silent()) {
        std::fprintf(stderr, "a document to ask is not converted in silence: %s\n",
                     base_.messages.empty() ? "rejected" : base_.messages.front().text.c_str());
        std::exit(1);
    }
    Names names;
    walk_in_order(order, subject.document, names, [&](const Names& at_names, json_t* value) {
        const Names above{at_names.begin(), at_names.end() - 1};
        if (at_names.back() == "max_instance" && is_numbered_list(at(subject.document, above))) return false;
        const Spot spot{at_names, names_.place(subject.side, {subject.document}, at_names)};
        const bool is_container = json_is_object(value) || json_is_array(value);
        if (whole_.count({subject.side, spot.place}) != 0) return false;
        if (asked_[{subject.side, spot.place}]++ >= kMostEntries) return is_container;
        Finding finding = is_container ? of_container(subject, spot) : of_leaf(subject, spot);
        const bool goes_on = is_container && !finding.is_whole;
        if (finding.is_whole) whole_.insert({subject.side, spot.place});
        finding.word = words[at_names];
        keep(std::move(finding), findings);
        return goes_on;
    });
}

}  // namespace describe
