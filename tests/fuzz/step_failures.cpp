// Every step's failures, added up beside the document.
#include "step_failures.h"

#include "k_cnvrt.h"

namespace {

bool is_counting = false;
int failures = 0;
int depth = 0;  // sections run sections of their own

// Runs a step, and counts what it returns unless it is a step within another.
template <class Step, class Count>
int counted(Step step, Count count) {
    ++depth;
    const int result = step();
    --depth;
    if (is_counting && depth == 0) failures += count(result);
    return result;
}

int as_it_is(int result) {
    return result;
}
int at_most_one(int result) {
    return result != 0;
}

}  // namespace

StepFailures::StepFailures() {
    is_counting = true;
    failures = 0;
}

StepFailures::~StepFailures() {
    is_counting = false;
}

int StepFailures::count() const {
    return failures;
}

extern "C" {

#define HANDLER(name)                                                     \
    int __real_##name(json_t* source, json_t* destination, k_err_t* err); \
    int __wrap_##name(json_t* source, json_t* destination, k_err_t* err); \
    int __wrap_##name(json_t* source, json_t* destination, k_err_t* err)

int __real_json_section_parser(json_t* source, const char* name, json_t* destination, k_err_t* err, int is_array,
                               k_cnvrt_handler_t handler);
int __wrap_json_section_parser(json_t* source, const char* name, json_t* destination, k_err_t* err, int is_array,
                               k_cnvrt_handler_t handler);

int __wrap_json_section_parser(json_t* source, const char* name, json_t* destination, k_err_t* err, int is_array,
                               k_cnvrt_handler_t handler) {
    return counted([&] { return __real_json_section_parser(source, name, destination, err, is_array, handler); },
                   as_it_is);
}

HANDLER(k_cnvrt_get_qos_from_new) {
    return counted([&] { return __real_k_cnvrt_get_qos_from_new(source, destination, err); }, at_most_one);
}

// The users are tried as an array first and then as an object; only the last attempt counts.
HANDLER(k_cnvrt_get_users_from_new) {
    return counted([&] { return __real_k_cnvrt_get_users_from_new(source, destination, err); },
                   json_is_array(destination) ? [](int) { return 0; } : at_most_one);
}

HANDLER(k_cnvrt_get_users_from_old) {
    return counted([&] { return __real_k_cnvrt_get_users_from_old(source, destination, err); }, as_it_is);
}

HANDLER(k_cnvrt_get_sysusers_from_old) {
    return counted([&] { return __real_k_cnvrt_get_sysusers_from_old(source, destination, err); }, as_it_is);
}
}
