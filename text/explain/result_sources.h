// result_sources.h: which members of a document made one place of its result.
#pragma once

#include "trials/leaves.h"
#include "trials/what_passes.h"

namespace kcnvrt::text {

// A member on which the place depends.
struct ResultSource {
    const char* pointer;  // into the document
    const char* without;  // what stands at the place without the member, as a JSON text; null for nothing
    bool is_around;       // without it, more is different than that place
};

class ResultSources {
public:
    // `before` is what `source` is converted to, and has `place`. Neither is modified, and both stay.
    ResultSources(CounterCheck& check, json_t* source, const Outcome& before, std::string_view place)
        : check_{check}, source_{source}, before_{before.tree.get()}, place_{place} {}

    // The innermost members that there are, as long as they are found in a few hundred conversions; then those further
    // out. False when memory ends.
    bool find();

    // In the order of the document, those around behind the others.
    const GrowingArray<ResultSource>& found() const { return found_; }

private:
    // Some of the children that were listed.
    struct Group {
        size_t first;
        size_t last;
    };
    // What a try came to.
    struct Trial {
        bool is_changed = false;
        bool is_around = false;
        const char* value = nullptr;  // that stands at the place, as a JSON text
    };

    bool look_into(const ResultSource& member);
    bool list_children(const char* pointer, Group& children);
    bool list_child(const char* pointer, std::string_view name);
    bool find_needed(const Group& group);
    bool find_needed_together(const Group& one, const Group& other);
    bool add_needed(const char* pointer, const Trial& trial);
    bool narrow(const Group& children, size_t first_needed);
    bool look_at_values(const char* pointer);
    bool find_values(const Leaves& leaves, const Group& group, size_t variant);

    bool try_without(const Group& group, Trial& trial);
    bool try_variant(const Leaves& leaves, const Group& group, size_t variant, Trial& trial);
    bool try_changes(GrowingArray<Change>& changes, Trial& trial);
    bool keep_value(json_t* result, const char*& text);
    bool is_as_before(json_t* result) const;
    bool has_moved(json_t* result, std::string_view list, std::string_view number) const;
    bool is_around(json_t* result) const;
    bool is_tired() const;

    CounterCheck& check_;
    json_t* source_;
    json_t* before_;
    std::string_view place_;
    KeptTexts texts_;
    GrowingArray<const char*> children_;  // of all that was looked into, one group after the other
    GrowingArray<Group> gone_;            // that are away in every try for the time
    GrowingArray<ResultSource> needed_;   // which are looked into in turn
    GrowingArray<ResultSource> found_;
    Json narrowed_source_;
    Json narrowed_before_;
};

}  // namespace kcnvrt::text
