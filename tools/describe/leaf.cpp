// What becomes of a place that holds no container: each question may bring up more of them.
#include <algorithm>
#include <cstdlib>
#include <set>

#include "asked.h"
#include "asker.h"
#include "changes.h"

namespace describe {

namespace {

constexpr size_t kMostResults = 6;  // that are named one by one
constexpr size_t kMostLeaves = 8;   // that one value may bring
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

class Asker::Leaf {
public:
    Leaf(Asker& asker, const Subject& subject, const Spot& spot) : asker_{asker}, subject_{subject}, spot_{spot} {
        finding_.place = spot.place;
        finding_.example.reset(json_incref(value()));
        seen_.name = spot.names.back();
        seen_.keys.insert(seen_.name);
    }

    Finding find() {
        for (Tree& probe : asker_.probes_of(subject_, spot_)) ask(std::move(probe));
        if (has_number_codes(asked_))
            ask_codes();
        else
            ask_bounds();
        if (can_be_absent()) ask(nullptr);
        finding_.is_dropped = places_.empty();
        look();
        if (has_text_codes()) {
            for (const std::string& literal : asker_.texts_.literals()) ask(string(literal));
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
        return !seen_.are_names && !seen_.is_all && replies_of(asker_.texts_, asked_, seen_).has_codes();
    }

    void ask(Tree probe) {
        const auto is_same = [&](const Asked& one) { return json_equal(one.value.get(), probe.get()) != 0; };
        if (std::any_of(asked_.begin(), asked_.end(), is_same)) return;
        Answer given = probe == nullptr ? asker_.answer_without_any(subject_, spot_.place)
                                        : asker_.answer_with(subject_, spot_.names, probe.get());
        // What is absent everywhere tells what is given instead, and not whether this entry is heard.
        if (given.is_silent() && probe != nullptr) note_places(given.result.get());
        asked_.push_back({std::move(probe), std::move(given)});
    }

    void note_places(json_t* result) {
        for (const Names& place : changes(asker_.base_.result.get(), result)) {
            if (place.empty() || !places_.insert(place).second) continue;
            seen_.keys.insert(place.back());
            add_once(finding_.results, asker_.result_place(subject_, result, place));
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

    // Which place of the result tells of the values, and how.
    void look() {
        json_t* const base = asker_.base_.result.get();
        finding_.results = innermost(finding_.results);
        seen_.place = telling_place(asked_, places_, base, spot_.names);
        const Names above{seen_.place.begin(), seen_.place.empty() ? seen_.place.end() : seen_.place.end() - 1};
        if (is_json_of(value(), at(base, above))) seen_.place = above;
        seen_.is_in_text = is_member_of_text(value(), at(base, seen_.place), seen_.name);
        seen_.are_names = is_name(value(), base, seen_.place) && seen_.place.back() == json_string_value(value());
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

    Finding told() {
        if (finding_.results.size() > kMostResults) finding_.results = {common_container(finding_.results)};
        if (finding_.is_name)
            finding_.results = {asker_.result_place(subject_, asker_.base_.result.get(), seen_.place)};
        finding_.behaviour = replies_of(asker_.texts_, asked_, seen_).behaviour();
        return std::move(finding_);
    }

    Asker& asker_;
    const Subject& subject_;
    const Spot& spot_;
    Finding finding_;
    std::vector<Asked> asked_;
    std::set<Names> places_;  // of the result that change with the value
    Seen seen_;
};

Finding Asker::of_leaf(const Subject& subject, const Spot& spot) {
    return Leaf{*this, subject, spot}.find();
}

Finding Asker::of_further_leaf(const Subject& subject, const Spot& spot) {
    return Leaf{*this, subject, spot}.find_results();
}

}  // namespace describe
