// A function is called with copies of what its case says, and everything that a caller sees is noted.
#include "call.h"

#include "allocations.h"
#include "capture.h"
#include "function_kinds.h"
#include "k_err.h"
#include "pointer.h"

namespace {

// A message about a base, about memory or about a name that is unknown has no place.
bool needs_place(const std::string& function, Places places, bool has_source) {
    const bool is_about_call = function.starts_with("k_conf_") || function.starts_with("k_cnvrt_get_section_to_");
    return places != Places::kNone && has_source && !is_about_call;
}

void read_messages(const k_err_t* err, const Inputs& inputs, Places places, Outcome& outcome) {
    for (size_t i = 0; i < k_err_count(err); ++i) {
        const char* const pointer = k_err_pointer(err, i);
        outcome.messages.emplace_back(k_err_function(err, i), k_err_message(err, i));
        outcome.pointers.push_back(pointer == nullptr ? "null" : text_of(Tree{json_string(pointer)}.get()));
        outcome.has_counted = outcome.has_counted || k_err_is_counted(err, i) != 0;

        bool resolves = false;
        for (const char* name : {"source", "difference", "candidate"})
            resolves = resolves || (pointer != nullptr && at_pointer(inputs.tree(name), pointer) != nullptr);
        const bool may_lack_it = !needs_place(k_err_function(err, i), places, inputs.tree("source") != nullptr);
        if (!resolves && (pointer != nullptr || !may_lack_it))
            outcome.places_that_are_not.push_back(outcome.pointers.back());
    }
}

void call_and_observe(const json_t* data, k_err_t* err, Outcome& outcome) {
    const char* name = json_string_value(json_object_get(data, "call"));
    const json_t* expected = json_object_get(data, "output");
    Inputs inputs{data};

    const Kind& kind = kind_of(name);
    Returned returned;
    outcome.printed = printed_by([&] { returned = kind.call(inputs, name, err); });
    if (kind.places == Places::kToLocate) k_err_locate(err, 0, inputs.tree("source"));
    read_messages(err, inputs, kind.places, outcome);

    outcome.result = returned.result;
    outcome.output = text_of(returned.output.get());
    outcome.output_fits = equal(expected, returned.output.get());
    if (!outcome.output_fits) outcome.difference = first_difference(expected, returned.output.get());
    outcome.inputs_unchanged = inputs.are_those_of(data);
    inputs.release();
    outcome.output_stands_alone = text_of(returned.output.get()) == outcome.output;
}

}  // namespace

Outcome run_call(const json_t* data, Record record) {
    Outcome outcome;
    const long live_before = live_allocations();
    const Errors err{record == Record::kGiven ? k_err_new() : nullptr};
    call_and_observe(data, err.get(), outcome);
    outcome.leaked = live_allocations() - live_before;
    return outcome;
}
