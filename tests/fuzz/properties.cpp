// Conversions are repeated, and compared with one another and with what they left of their sources.
#include "properties.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "runner/allocations.h"
#include "runner/pointer.h"
#include "start.h"

namespace {

struct Observed {
    Returned returned;
    std::string picture;
    std::string messages;
};

std::string messages_of(const k_err_t* err) {
    std::string messages;
    for (size_t i = 0; i < k_err_count(err); ++i) {
        const char* const pointer = k_err_pointer(err, i);
        messages += std::string{pointer == nullptr ? "nowhere" : pointer} + ": " + k_err_function(err, i) + ": " +
                    k_err_message(err, i) + (k_err_is_counted(err, i) != 0 ? "\n" : ", not counted\n");
    }
    return messages;
}

// Every message has a place in the source, where there is a source.
void check_places(const k_err_t* err, const json_t* source) {
    for (size_t i = 0; i < k_err_count(err); ++i) {
        const char* const pointer = k_err_pointer(err, i);
        require(source == nullptr || (pointer != nullptr && at_pointer(source, pointer) != nullptr),
                "every pointer resolves", source);
    }
}

Observed observe(const Call& call, json_t* source, Errors err) {
    Observed observed{call(source, err.get()), {}, {}};
    // A section handler leaves it to its caller.
    k_err_locate(err.get(), 0, source);
    check_places(err.get(), source);
    require(err == nullptr || k_err_is_complete(err.get()) != 0, "no allocation failed", source);
    observed.picture = picture_of(observed.returned.tree.get());
    observed.messages = messages_of(err.get());
    return observed;
}

void check_agreement(const Observed& observed, OnFailure on_failure, const json_t* source) {
    const bool failed = observed.returned.failures != 0;
    if (on_failure == OnFailure::kNothing)
        require((observed.returned.tree == nullptr) == failed, "null exactly when fields failed", source);
    require(!failed || !observed.messages.empty() || on_failure == OnFailure::kTheRestInSilence,
            "a failure has a message", source);
}

// As JSON, and be read again. A conversion may add levels to a source that has as many as can be read.
bool can_be_written(json_t* result) {
    return result == nullptr || levels_of(result) > kMostLevels || survives_json(result);
}

void check_calls(const Call& call, Tree source, OnFailure on_failure) {
    const std::string before = picture_of(source.get());
    const Observed first = observe(call, source.get(), Errors{k_err_new()});
    require(picture_of(source.get()) == before, "the source stays as it is", source.get());
    check_agreement(first, on_failure, source.get());

    const Observed second = observe(call, source.get(), Errors{k_err_new()});
    require(second.picture == first.picture, "a second call has the same result", source.get());
    require(second.messages == first.messages, "a second call has the same messages", source.get());
    const Observed unrecorded = observe(call, source.get(), nullptr);
    require(unrecorded.picture == first.picture, "a null record changes nothing", source.get());
    require(unrecorded.returned.failures == first.returned.failures, "a null record counts the same", source.get());

    json_t* const result = first.returned.tree.get();
    require(can_be_written(result) || !survives_json(source.get()), "the result of a JSON text can be written as one",
            source.get());
    source.reset();
    require(picture_of(result) == first.picture, "the result stands alone", result);
}

}  // namespace

void check(const Call& call, Tree source, OnFailure on_failure) {
    Tree copy{json_deep_copy(source.get())};
    const long before = live_allocations();
    check_calls(call, Tree{json_deep_copy(copy.get())}, on_failure);
    require(live_allocations() == before, "nothing leaks", copy.get());
}

void require(bool is_so, const char* what, const json_t* source) {
    if (is_so) return;
    std::fprintf(console, "\nThis does not hold: %s. The source:\n", what);
    if (json_dumpf(source, console, JSON_ENCODE_ANY | JSON_INDENT(2)) != 0)
        std::fprintf(console, "%s", picture_of(source).c_str());
    std::fprintf(console, "\n");
    std::fflush(console);
    std::abort();
}
