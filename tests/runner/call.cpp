// A function is called with copies of what its case says, and everything that a caller sees is noted.
#include "call.h"

#include <memory>

#include "allocations.h"
#include "capture.h"
#include "function_kinds.h"
#include "k_err.h"

namespace {

struct FreeRecord {
    void operator()(k_err_t* err) const { k_err_free(err); }
};
using ErrorRecord = std::unique_ptr<k_err_t, FreeRecord>;

void read_messages(const k_err_t* err, Outcome& outcome) {
    for (size_t i = 0; i < k_err_count(err); ++i) {
        outcome.messages.emplace_back(k_err_function(err, i), k_err_message(err, i));
    }
}

void call_and_observe(const json_t* data, k_err_t* err, Outcome& outcome) {
    const char* name = json_string_value(json_object_get(data, "call"));
    const json_t* expected = json_object_get(data, "output");
    Inputs inputs{data};

    StdoutCapture capture;
    const Returned returned = kind_of(name).call(inputs, name, err);
    outcome.printed = capture.finish();

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
    const ErrorRecord err{record == Record::kGiven ? k_err_new() : nullptr};
    call_and_observe(data, err.get(), outcome);
    read_messages(err.get(), outcome);
    outcome.leaked = live_allocations() - live_before;
    return outcome;
}
