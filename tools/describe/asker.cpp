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

}  // namespace

Answer Asker::answer(const Subject& subject) {
    return convert(subject.side, subject.document, subject.flags);
}

Answer Asker::answer_with(const Subject& subject, const Names& names, json_t* value) {
    const Tree document = with_value(subject.document, names, value);
    return answer({subject.side, subject.flags, document.get()});
}

Tree Asker::without_any(const Subject& subject, const std::string& place) const {
    Tree document{json_deep_copy(subject.document)};
    std::vector<Names> found;
    Names names;
    walk_in_order({}, document.get(), names, [&](const Names& here, json_t*) {
        if (names_.place(subject.side, {document.get()}, here) == place) found.push_back(here);
        return true;
    });
    for (const Names& here : found)
        json_object_del(at(document.get(), {here.begin(), here.end() - 1}), here.back().c_str());
    return document;
}

std::string Asker::result_place(const Subject& subject, json_t* result, const Names& names) const {
    return names_.place(other(subject.side), {base_.result.get(), result}, names);
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
        for (const Names& place : changes(base_.result.get(), given.result.get())) {
            json_t* const result = at(given.result.get(), place);
            finding.carries_others |=
                json_equal(result, extra.get()) != 0 || is_member_of_text(extra.get(), result, member.back());
        }
    }
    if (finding.container == "list") finding.entries = entries_of(subject, spot.names);
    Seen seen;
    seen.keys.insert(spot.names.back());
    finding.behaviour = replies_of(texts_, asked, seen).behaviour();
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
        if (asked_[{subject.side, spot.place}]++ >= kMostEntries) {
            if (!is_container) add_results(of_further_leaf(subject, spot), findings);
            return is_container;
        }
        std::vector<Finding> found;
        if (is_container)
            found.push_back(of_container(subject, spot));
        else
            found = of_leaf(subject, spot);
        const bool is_whole = found.front().is_whole;
        if (is_whole) whole_.insert({subject.side, spot.place});
        for (Finding& finding : found) {
            finding.word = words[at_names];
            keep(std::move(finding), findings);
        }
        return is_container && !is_whole;
    });
}

}  // namespace describe
