#include "trials/traces.h"

#include <charconv>
#include <cstdio>

namespace kcnvrt::text {

namespace {

constexpr std::string_view kMark = "trace-";

// A document with traces is mostly rejected, for values that have no sense where they are. One rejection shows only so
// many of them as it has messages.
constexpr int kMostRounds = 8;

class Traces {
public:
    Traces(CounterCheck& check, json_t* source, const Outcome& before, Leaves& leaves)
        : check_{check}, source_{source}, before_{before}, leaves_{leaves} {}

    // One conversion, with traces in the place of texts or of everything. False when memory ends.
    bool look(bool is_for_all) {
        const ForAWhile for_a_while(check_.memory());
        const Json made(json_array());
        GrowingArray<Change> changes;
        Outcome after;
        if (!made || !choose(is_for_all, made.get(), changes)) return false;
        const Json copy = changed_copy(source_, changes);
        if (!copy || !check_.convert(copy.get(), after)) return false;
        has_news_ = false;
        is_rejected_ = after.tree == nullptr;
        is_harmless_ = is_same(before_, after);
        look_through(after.tree.get());
        look_through(after.record.get());
        // A pointer is made when it is asked for.
        return k_err_is_complete(after.record.get()) != 0;
    }

    // Whether there is an unused leaf, a text or anything else, that has not been looked for.
    bool has_some_for(bool is_for_all) const {
        for (size_t i = 0; i < leaves_.size(); ++i)
            if (!leaves_[i].is_used && json_is_string(leaves_[i].value) != is_for_all) return true;
        return false;
    }

    bool is_harmless() const { return is_harmless_; }
    bool goes_on() const { return has_news_ && is_rejected_; }

private:
    bool choose(bool is_for_all, json_t* made, GrowingArray<Change>& changes) const {
        for (size_t i = 0; i < leaves_.size(); ++i) {
            const Leaf& leaf = leaves_[i];
            if (leaf.is_used || (!is_for_all && !json_is_string(leaf.value))) continue;
            Json trace = trace_of(leaf.value, i);
            if (!trace || !changes.add({leaf.pointer, trace.get()})) return false;
            if (json_array_append_new(made, trace.release()) != 0) return false;
        }
        return true;
    }

    void look_through(const json_t* value) {
        if (json_is_string(value)) look_through({json_string_value(value), json_string_length(value)});
        const char* name;
        size_t length;
        json_t* child;
        json_object_keylen_foreach(const_cast<json_t*>(value), name, length, child) {
            look_through({name, length});
            look_through(child);
        }
        size_t index;
        json_array_foreach(value, index, child) look_through(child);
    }

    void look_through(const k_err_t* record) {
        for (size_t i = 0; i < k_err_count(record); ++i) {
            look_through(std::string_view(k_err_message(record, i)));
            const char* const pointer = k_err_pointer(record, i);
            if (pointer != nullptr && leaves_.mark_at(pointer)) has_news_ = true;
        }
        for (size_t i = 0; i < k_err_printed_count(record); ++i)
            look_through(std::string_view(k_err_printed(record, i)));
    }

    void look_through(std::string_view text) {
        for (size_t at; (at = text.find(kMark)) != std::string_view::npos;) {
            text.remove_prefix(at + kMark.size());
            size_t number = 0;
            const auto [stopped, error] = std::from_chars(text.data(), text.data() + text.size(), number);
            const bool is_whole = error == std::errc{} && stopped != text.data() + text.size() && *stopped == '.';
            if (is_whole && number < leaves_.size() && leaves_.mark(number)) has_news_ = true;
        }
    }

    CounterCheck& check_;
    json_t* source_;
    const Outcome& before_;
    Leaves& leaves_;
    bool has_news_ = false;
    bool is_rejected_ = false;
    bool is_harmless_ = false;
};

}  // namespace

Json trace_of(const json_t* leaf, size_t number) {
    char text[40];
    std::snprintf(text, sizeof text, "trace-%zu.", number);
    Json trace(json_string(text));
    if (json_is_array(leaf)) return Json(json_pack("[o]", trace.release()));
    if (json_is_object(leaf)) return Json(json_pack("{s: o}", text, trace.release()));
    return trace;
}

bool mark_by_traces(CounterCheck& check, json_t* source, const Outcome& before, Leaves& leaves, bool& is_harmless) {
    Traces traces(check, source, before, leaves);
    // Texts first: without its numbers and switches a document may have nothing where the texts are.
    for (const bool is_for_all : {false, true}) {
        if (!traces.has_some_for(is_for_all)) continue;
        for (int round = 0; round < kMostRounds; ++round) {
            if (!traces.look(is_for_all)) return false;
            if (!traces.goes_on()) break;
        }
    }
    is_harmless = traces.is_harmless();
    return true;
}

}  // namespace kcnvrt::text
