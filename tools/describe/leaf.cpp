// What becomes of a place that holds no container: each question may bring up more of them.
#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>

#include "asked.h"
#include "asker.h"
#include "changes.h"
#include "numbered_list.h"
#include "reading_order.h"

namespace describe {

namespace {

constexpr size_t kMostResults = 6;  // that are named one by one
constexpr size_t kMostLeaves = 8;   // that one value may bring
constexpr size_t kMostAskedResults = 8;
constexpr json_int_t kMostCodes = 256;

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

namespace {

// What stands beside a place, in what it is in and further out, or under its own name elsewhere.
class Neighbours {
public:
    Neighbours(json_t* document, const Names& spot) : spot_{spot} {
        Names names;
        look(document, names);
    }

    const std::vector<Names>& all() const { return all_; }

private:
    void look(json_t* value, Names& names) {
        const bool is_leaf = !json_is_object(value) && !json_is_array(value);
        if (is_leaf && names != spot_ && (is_beside(names) || names.back() == spot_.back())) all_.push_back(names);
        for (const std::string& name : members({}, value)) {
            names.push_back(name);
            look(at(value, {name}), names);
            names.pop_back();
        }
    }

    bool is_beside(const Names& names) const {
        return names.size() <= spot_.size() && std::equal(names.begin(), names.end() - 1, spot_.begin());
    }

    const Names& spot_;
    std::vector<Names> all_;
};

// Another value of its kind.
Tree changed(json_t* value) {
    if (json_is_boolean(value)) return Tree{json_boolean(!json_is_true(value))};
    if (json_is_integer(value)) return integer(json_integer_value(value) + 1);
    const std::string text = json_is_string(value) ? json_string_value(value) : "";
    constexpr size_t kMostDigits = 18;
    return string(is_number(text) && text.size() <= kMostDigits ? std::to_string(std::stoll(text) + 1) : text + "x");
}

std::string plain_text(json_t* value) {
    return json_is_string(value) ? json_string_value(value) : text_of(value);
}

// For what has names there is no order of its own.
bool by_text(const Reply& one, const Reply& other) {
    const auto text = [](const Reply& reply) { return reply.value == nullptr ? "" : text_of(reply.value.get()); };
    return text(one) < text(other);
}

bool is_scalar(json_t* value) {
    return json_is_string(value) || json_is_integer(value) || json_is_boolean(value);
}

}  // namespace

class Asker::Leaf {
public:
    Leaf(Asker& asker, const Subject& subject, const Spot& spot) : asker_{asker}, subject_{subject}, spot_{spot} {
        finding_.place = spot.place;
        finding_.example.reset(json_incref(value()));
        seen_.name = spot.names.back();
        seen_.keys.insert(seen_.name);
    }

    std::vector<Finding> find() {
        for (Tree& probe : asker_.probes_of(subject_, spot_)) ask(std::move(probe));
        if (has_number_codes(asked_))
            ask_codes();
        else
            ask_bounds();
        if (can_be_absent()) ask(nullptr);
        finding_.is_dropped = places_.empty();
        look();
        if (has_text_codes()) {
            // A name of a member may be the name that is looked for.
            const auto& words = seen_.are_names ? asker_.texts_.words() : asker_.texts_.literals();
            for (const std::string& word : words) ask(string(word));
            look();
        }
        return told();
    }

    Finding find_results() {
        for (Tree& probe : few_probes()) ask(std::move(probe));
        finding_.results = innermost(finding_.results);
        return std::move(finding_);
    }

private:
    // One or two of which are taken in most places, and are not what stands there.
    static std::vector<Tree> few_probes() {
        std::vector<Tree> probes;
        probes.push_back(string("7"));
        probes.push_back(integer(7));
        probes.push_back(string("as it is"));
        return probes;
    }

    json_t* value() const { return at(subject_.document, spot_.names); }

    bool can_be_absent() const {
        const bool is_member = json_is_object(at(subject_.document, {spot_.names.begin(), spot_.names.end() - 1}));
        return is_member && spot_.place.back() != '*';
    }

    bool has_text_codes() const {
        if (seen_.are_names) return !are_all_names();
        return seen_.is_all || replies_of(asker_.texts_, asked_, seen_).has_codes();
    }

    // Whether any text becomes the name, and not only some.
    bool are_all_names() const {
        return std::all_of(asked_.begin(), asked_.end(), [&](const Asked& one) {
            const bool is_text = json_string_length(one.value.get()) != 0;
            return !is_text || !one.answer.is_silent() ||
                   is_name(one.value.get(), one.answer.result.get(), seen_.place);
        });
    }

    // The document that it is put in; null takes it out of every entry.
    Tree document_with(json_t* probe) const {
        return probe == nullptr ? asker_.without_any(subject_, spot_.place)
                                : with_value(subject_.document, spot_.names, probe);
    }

    Answer answer_in(json_t* document) const { return asker_.answer({subject_.side, subject_.flags, document}); }

    void ask(Tree probe) {
        const auto is_same = [&](const Asked& one) { return json_equal(one.value.get(), probe.get()) != 0; };
        if (std::any_of(asked_.begin(), asked_.end(), is_same)) return;
        Answer given = answer_in(document_with(probe.get()).get());
        // What is absent everywhere tells what is given instead, and not whether this entry is heard.
        if (given.is_silent() && probe != nullptr) note_places(probe.get(), given.result.get());
        asked_.push_back({std::move(probe), std::move(given)});
    }

    void note_places(json_t* probe, json_t* result) {
        for (Names place : changes(asker_.base_.result.get(), result)) {
            if (place.empty()) continue;
            const Names above{place.begin(), place.end() - 1};
            // What the probe itself has in it is no place of the layout.
            json_t* const container = at(result, above);
            const bool is_probe =
                json_is_object(container) && (json_equal(container, probe) != 0 || is_json_of(probe, container));
            if (is_probe) place = above;
            if (place.empty() || places_.count(place) != 0) continue;
            places_[place] = asker_.result_place(subject_, result, place);
            seen_.keys.insert(place.back());
            add_once(finding_.results, places_[place]);
        }
    }

    void ask_codes() {
        for (json_int_t number = 0; number < kMostCodes; ++number) ask(integer(number));
    }

    // Where a range ends to the number.
    void ask_bounds() {
        for (auto [inside, outside] : bounds(asked_))
            while (std::abs(inside - outside) > 1) {
                const json_int_t middle = inside + (outside - inside) / 2;
                ask(integer(middle));
                (asked_.back().answer.is_silent() ? inside : outside) = middle;
            }
    }

    std::set<Names> places_called(const std::string& name) const {
        std::set<Names> called;
        for (const auto& [place, its_name] : places_)
            if (name.empty() || its_name == name) called.insert(place);
        return called;
    }

    // Which place of the result tells of the values, and how.
    void look() {
        json_t* const base = asker_.base_.result.get();
        finding_.results = innermost(finding_.results);
        seen_.place = telling_place(asked_, places_called(""), base, spot_.names);
        const Names above{seen_.place.begin(), seen_.place.empty() ? seen_.place.end() : seen_.place.end() - 1};
        if (is_json_of(value(), at(base, above))) seen_.place = above;
        seen_.is_in_text = is_member_of_text(value(), at(base, seen_.place), seen_.name);
        seen_.are_names = is_name(value(), base, seen_.place) && seen_.place.back() == name_in(value());
        finding_.is_name = seen_.are_names;
        finding_.is_selector = !seen_.are_names && (finding_.results.size() > kMostResults || brings_much());
        seen_.is_all = finding_.is_selector;
    }

    // Whether one of the values brings more to the result than a value.
    bool brings_much() const {
        return !seen_.place.empty() && std::any_of(asked_.begin(), asked_.end(), [&](const Asked& one) {
            return one.answer.is_silent() && leaves(at(one.answer.result.get(), seen_.place)) > kMostLeaves &&
                   (json_is_string(one.value.get()) || json_is_integer(one.value.get()));
        });
    }

    std::vector<Finding> told() {
        if (finding_.results.size() > kMostResults) finding_.results = {common_container(finding_.results)};
        if (finding_.is_name)
            finding_.results = {asker_.result_place(subject_, asker_.base_.result.get(), seen_.place)};
        const std::vector<std::string> results = std::move(finding_.results);
        std::vector<Finding> findings;
        add(findings, seen_, {});
        const bool is_one = finding_.is_name || finding_.is_selector || seen_.is_in_text || results.size() < 2;
        for (const std::string& result : results) add(findings, is_one ? seen_ : seen_at(result), result);
        if (findings.size() > 1 && findings.front().results.empty()) findings.erase(findings.begin());
        return findings;
    }

    // How the values are told at one of the places; at the one that tells most of them where it tells none.
    Seen seen_at(const std::string& result) const {
        Seen seen = seen_;
        const Names place = telling_place(asked_, places_called(result), asker_.base_.result.get(), spot_.names);
        const bool has_values = std::none_of(asked_.begin(), asked_.end(), [&](const Asked& one) {
            json_t* const given = one.answer.is_silent() ? at(one.answer.result.get(), place) : nullptr;
            return (json_is_object(given) || json_is_array(given)) && is_scalar(one.value.get());
        });
        if (!place.empty() && has_values && !is_count(place)) seen.place = place;
        return seen;
    }

    // Whether it always is how many members something beside it has: then it says nothing of the value.
    bool is_count(const Names& place) const {
        const Names above{place.begin(), place.end() - 1};
        const auto beside = members({}, at(asker_.base_.result.get(), above));
        return std::any_of(beside.begin(), beside.end(), [&](const std::string& name) {
            return std::all_of(asked_.begin(), asked_.end(), [&](const Asked& one) {
                json_t* const container = at(one.answer.result.get(), above);
                json_t* const count = at(one.answer.result.get(), place);
                return !one.answer.is_silent() ||
                       (json_is_integer(count) &&
                        json_integer_value(count) == static_cast<json_int_t>(json_object_size(at(container, {name}))));
            });
        });
    }

    void add(std::vector<Finding>& findings, Seen seen, const std::string& result) {
        if (!seen.is_all && !seen.are_names && !seen.is_in_text && !seen.place.empty())
            seen.entries = entries_beside(asked_, places_called(""), seen.place);
        Replies replies{asker_.texts_};
        std::vector<Reply> given = replies_to(asked_, seen);
        if (seen.are_names) std::stable_sort(given.begin(), given.end(), by_text);
        if (!seen.is_all && !seen.are_names && !seen.is_in_text && seen.entries.empty()) tell_members(seen, given);
        for (Reply& reply : given) replies.add(std::move(reply));
        Tree behaviour = replies.behaviour();
        for (Finding& known : findings)
            if (json_equal(known.behaviour.get(), behaviour.get()) != 0) {
                if (!result.empty()) add_once(known.results, result);
                return;
            }
        Finding finding;
        finding.place = finding_.place;
        finding.is_name = finding_.is_name;
        finding.is_selector = finding_.is_selector;
        finding.is_dropped = finding_.is_dropped;
        finding.example.reset(json_incref(finding_.example.get()));
        finding.behaviour = std::move(behaviour);
        if (!result.empty()) finding.results.push_back(result);
        findings.push_back(std::move(finding));
    }

    // Where a result is what another member gives, that is said, and not what the example has there.
    void tell_members(const Seen& seen, std::vector<Reply>& replies) {
        std::map<std::string, std::vector<Reply*>> by_result;
        for (Reply& reply : replies)
            if (is_scalar(reply.result.get()) && !is_own(reply))
                by_result[text_of(reply.result.get())].push_back(&reply);
        // What becomes itself may do so by chance.
        for (Reply& reply : replies)
            if (is_scalar(reply.result.get()) && is_own(reply))
                if (const auto same = by_result.find(text_of(reply.result.get()));
                    same != by_result.end() && !giver_of(seen, reply).empty())
                    same->second.push_back(&reply);
        std::vector<std::vector<Reply*>> results;
        for (auto& [text, those] : by_result) results.push_back(std::move(those));
        std::stable_sort(results.begin(), results.end(),
                         [](const auto& a, const auto& b) { return a.size() > b.size(); });
        if (results.size() > kMostAskedResults) results.resize(kMostAskedResults);
        for (const auto& those : results) {
            const std::string name = giver_of(seen, *those.front());
            for (Reply* reply : those)
                if (!name.empty()) reply->result = what_member_gives(name);
        }
    }

    static bool is_own(const Reply& reply) {
        return reply.value != nullptr && plain_text(reply.value.get()) == plain_text(reply.result.get());
    }

    // "" where none gives it.
    std::string giver_of(const Seen& seen, const Reply& reply) const {
        const Tree document = document_with(reply.value.get());
        const Neighbours neighbours{document.get(), spot_.names};
        for (const Names& other : neighbours.all()) {
            json_t* const there = at(document.get(), other);
            if (plain_text(there) != plain_text(reply.result.get())) continue;
            const Answer given = answer_in(with_value(document.get(), other, changed(there).get()).get());
            json_t* const result = at(given.result.get(), seen.place);
            if (given.is_silent() && result != nullptr && json_equal(result, reply.result.get()) == 0)
                return other.back() == spot_.names.back() ? asker_.names_.place(subject_.side, {document.get()}, other)
                                                          : other.back();
        }
        return "";
    }

    Asker& asker_;
    const Subject& subject_;
    const Spot& spot_;
    Finding finding_;
    std::vector<Asked> asked_;
    std::map<Names, std::string> places_;  // of the result that change with the value, and what they are called
    Seen seen_;
};

std::vector<Finding> Asker::of_leaf(const Subject& subject, const Spot& spot) {
    return Leaf{*this, subject, spot}.find();
}

Finding Asker::of_further_leaf(const Subject& subject, const Spot& spot) {
    return Leaf{*this, subject, spot}.find_results();
}

}  // namespace describe
