#include "operations.h"

#include <k_cnvrt.h>
#include <k_conf.h>

#include <algorithm>
#include <iterator>

#include "explain/explain.h"
#include "json/reader.h"
#include "json/writer.h"
#include "layout.h"
#include "losses/loss_request.h"
#include "messages.h"
#include "owned.h"
#include "partial.h"
#include "places.h"
#include "request.h"
#include "source.h"
#include "subject.h"

namespace kcnvrt::text {

namespace {

using enum Takes;
using enum Shape;

constexpr uint32_t kMergePatch = K_TEXT_MERGE_PATCH;
constexpr uint32_t kPartial = K_TEXT_PARTIAL;
constexpr uint32_t kLosses = K_TEXT_TELL_LOSSES | K_TEXT_STRICT;
constexpr uint32_t kOneWay = K_TEXT_DSL_VLAN | K_TEXT_FORCE | kLosses;
constexpr uint32_t kAsked = K_TEXT_DSL_VLAN | K_TEXT_FORCE | K_TEXT_TOWARDS_NEW | K_TEXT_TOWARDS_OLD;
constexpr uint32_t kEitherWay = kAsked | kLosses;
constexpr uint32_t kSectionFlags = K_TEXT_FORCE | K_TEXT_AS_IS;
constexpr uint32_t kExplained = kAsked | K_TEXT_FROM_RESULT;
constexpr uint32_t kNew = K_TEXT_TO_NEW;
constexpr uint32_t kOld = K_TEXT_TO_OLD;

// The trees of a request. A caller whose memory is taken back as a whole spares itself the walk that releasing is.
struct Trees {
    explicit Trees(bool left) : are_left(left) {}
    ~Trees() {
        if (!are_left) return;
        for (Json* tree : {&text, &other, &converted}) static_cast<void>(tree->release());
    }
    Trees(const Trees&) = delete;
    Trees& operator=(const Trees&) = delete;

    Json text;
    Json other;
    Json converted;
    bool are_left;
};

// A request and what was read for it.
struct Question {
    const k_text_request_t& request;
    json_t* text;
    json_t* other;
};

uint8_t conversion_flags(const k_text_request_t& request) {
    return static_cast<uint8_t>(((request.flags & K_TEXT_DSL_VLAN) != 0 ? K_CNVRT_DSL_VLAN : 0) |
                                ((request.flags & K_TEXT_MERGE_PATCH) != 0 ? K_CNVRT_MERGE_PATCH : 0));
}

json_t* to_new(const Question& question, k_err_t* record) {
    return k_cnvrt_to_new(question.text, question.other, conversion_flags(question.request), record);
}

json_t* to_old(const Question& question, k_err_t* record) {
    return k_cnvrt_to_old(question.text, conversion_flags(question.request), record);
}

json_t* section_to_new(const Question& question, k_err_t* record) {
    return k_cnvrt_get_section_to_new(question.request.section, question.text, question.other,
                                      conversion_flags(question.request), record);
}

json_t* section_to_old(const Question& question, k_err_t* record) {
    return k_cnvrt_get_section_to_old(question.request.section, question.text, record);
}

json_t* diff(const Question& question, k_err_t* record) {
    const bool is_merge_patch = (question.request.flags & K_TEXT_MERGE_PATCH) != 0;
    return k_conf_diff_set2(question.text, question.other, 0, is_merge_patch ? K_CONF_MERGE_PATCH : K_CONF_JSON_PATCH,
                            record);
}

json_t* apply(const Question& question, k_err_t* record) {
    return k_conf_apply(question.text, question.other, record);
}

struct Operation {
    uint32_t number;
    Allowed allowed;
    Shape shape;         // of both texts
    uint32_t direction;  // of a conversion, whose messages are about the text; 0 of others, where it is the second text
    json_t* (*answer)(const Question& question, k_err_t* record);
};

// clang-format off
constexpr Operation kOperations[] = {
    //                       flags          with a       without a
    //                       |              second text  second    section  second   shape      way   answer
    {K_TEXT_TO_NEW,         {kOneWay,       kMergePatch, kPartial, kNone,   kMaybe},  kWhole,    kNew, to_new},
    {K_TEXT_TO_OLD,         {kOneWay,       0,           kPartial, kNone,   kNone},   kWhole,    kOld, to_old},
    {K_TEXT_SECTION_TO_NEW, {kSectionFlags, kMergePatch, kPartial, kNeeded, kMaybe},  kSection,  kNew, section_to_new},
    {K_TEXT_SECTION_TO_OLD, {kSectionFlags, 0,           kPartial, kNeeded, kNone},   kSection,  kOld, section_to_old},
    {K_TEXT_DIFF,           {0,             kMergePatch, 0,        kNone,   kNeeded}, kAnyValue, 0,    diff},
    {K_TEXT_APPLY,          {0,             0,           0,        kNone,   kNeeded}, kAnyValue, 0,    apply},
    // Answered by the operation that the text needs.
    {K_TEXT_CONVERT,        {kEitherWay,    0,           kPartial, kNone,   kNone},   kWhole,    0,    nullptr},
    {K_TEXT_CHECK,          {kAsked,        0,           0,        kNone,   kNone},   kWhole,    0,    nullptr},
    {K_TEXT_LOSSES,         {kAsked,        0,           0,        kNone,   kNone},   kWhole,    0,    nullptr},
    {K_TEXT_EXPLAIN,        {kExplained,    0,           0, kNone, kNone, kNeeded},   kWhole,    0,    nullptr},
};
// clang-format on

const Operation* find_operation(uint32_t number) {
    const auto found = std::find_if(std::begin(kOperations), std::end(kOperations),
                                    [number](const Operation& operation) { return operation.number == number; });
    return found == std::end(kOperations) ? nullptr : found;
}

void refuse(const char* why, k_text_result_t& result) {
    result.fail(K_TEXT_WRONG_USAGE, {.function = "usage", .message = why});
}

Layout layout_of(const k_text_request_t& request) {
    if (request.indent == K_TEXT_COMPACT) return {.compact = true};
    return {.compact = false, .indent = static_cast<unsigned>(request.indent)};
}

// Every text in a tree is UTF-8, so that only memory can be missing.
void put_out(const json_t* value, const k_text_request_t& request, k_text_result_t& result) {
    const bool is_written = write(value, layout_of(request), result.output) && result.output.append({"\0", 1});
    if (!is_written) result.run_out_of_memory();
}

// What a conversion in part needs to know.
struct Again {
    const Operation& operation;
    const k_text_request_t& request;
};

json_t* answer_again(const void* context, json_t* tree, k_err_t* record) {
    const Again& again = *static_cast<const Again*>(context);
    return again.operation.answer({again.request, tree, nullptr}, record);
}

// Of a text that is rejected: what can be converted when the rest is taken out, and a note of each such place.
void answer_in_part(const Again& again, const Source& text, const Subject& subject, Json& converted,
                    k_text_result_t& result) {
    Part part;
    convert_part({answer_again, &again}, subject, result.record.get(), result.shows_secrets, result.texts, part);
    converted = std::move(part.converted);
    if (!part.has_memory) return result.run_out_of_memory();
    add_notes(text, subject, part, result);
    const bool has_notes = result.status != K_TEXT_OUT_OF_MEMORY;
    if (has_notes && converted) put_out(converted.get(), again.request, result);
}

// Makes a request that leaves the direction to the text one that names it.
k_text_request_t settled(k_text_request_t request, const json_t* text) {
    if (find_operation(request.operation)->answer != nullptr) return request;
    request.operation = direction_of(request.flags, text);
    if (request.operation == K_TEXT_TO_NEW) request.flags = with_dsl_flag(request.flags, text);
    return request;
}

void answer(Shape shape, const k_text_request_t& given, k_text_result_t& result) {
    const Source text = {K_TEXT_IN_TEXT, {given.text, given.text_length}, shape};
    const Source other = {K_TEXT_IN_OTHER, {given.other, given.other_length}, shape};
    Trees trees(result.tree_memory != nullptr);
    trees.text = read_source(text, result);
    if (given.other != nullptr) trees.other = read_source(other, result);
    if (result.status != K_TEXT_CONVERTED) return;

    const k_text_request_t request = settled(given, trees.text.get());
    const Operation& operation = *find_operation(request.operation);
    result.direction = operation.direction;
    Subject subject = {trees.text.get()};
    if (shape == kWhole)
        refuse_wrong_layout({operation.direction, request.flags, trees.text.get(), trees.other.get()}, result);
    if (shape == kSection)
        subject = take_out_section(request, operation.direction, trees.text.get(), trees.other.get(), result);
    if (result.status != K_TEXT_CONVERTED) {
        find_places(text, result);
        return find_places(other, result);
    }

    if (given.operation == K_TEXT_EXPLAIN) {
        trees.converted = explain({text, trees.text.get(), request}, result);
        if (trees.converted) put_out(trees.converted.get(), request, result);
        return;
    }

    result.record.reset(k_err_new());
    if (!result.record) return result.run_out_of_memory();
    k_err_keep_printed(result.record.get());
    trees.converted.reset(operation.answer({request, subject.tree, trees.other.get()}, result.record.get()));
    // Only roaming prints, and only towards the old layout.
    const char* const printer = operation.number == K_TEXT_TO_OLD ? "/Device/Roaming" : "";
    const bool is_text = operation.direction != 0;
    add_messages(is_text ? text : other, is_text ? subject : Subject{trees.other.get()}, printer, result);
    if (k_err_is_complete(result.record.get()) == 0) return result.run_out_of_memory();
    if (result.status != K_TEXT_CONVERTED) return;
    if (!trees.converted) result.status = K_TEXT_REJECTED;
    if (asks_for_losses(given)) tell_losses({text, trees.text.get(), given.operation, request}, result);
    if (result.status == K_TEXT_CONVERTED && has_output(given.operation))
        put_out(trees.converted.get(), request, result);
    else if (result.status == K_TEXT_REJECTED && (request.flags & K_TEXT_PARTIAL) != 0)
        answer_in_part({operation, request}, text, subject, trees.converted, result);
}

}  // namespace

void run(const k_text_request_t* given, k_text_result_t& result) {
    k_text_request_t request;
    if (const char* why = copy_request(given, request)) return refuse(why, result);
    const Operation* const operation = find_operation(request.operation);
    if (operation == nullptr) return refuse("this version does not know the operation", result);
    if (const char* why = check_request(request, operation->allowed)) return refuse(why, result);
    result.operation = request.operation;
    result.shows_secrets = (request.flags & K_TEXT_SHOW_SECRETS) != 0;
    answer(operation->shape, request, result);
}

}  // namespace kcnvrt::text
