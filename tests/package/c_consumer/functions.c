/* Every exported function, called from C: the section handlers from a list, the others by hand. The lists are made from
 * the headers, one line a function: handler(NAME) or function(NAME). */
#include "functions.h"

#include <k_addr.h>
#include <k_cnvrt.h>
#include <k_cnvrt_text.h>
#include <k_conf.h>
#include <k_err.h>
#include <k_str.h>
#include <k_tr.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define expect(condition) ((condition) ? (void)0 : unexpected(#condition, __LINE__))

typedef void (*any_function_t)(void);

static const k_cnvrt_handler_t handlers[] = {
#define handler(name) name,
#define function(name)
#include "functions.inc"
#undef handler
#undef function
};

static const any_function_t functions[] = {
#define handler(name)
#define function(name) (any_function_t) name,
#include "functions.inc"
#undef handler
#undef function
};

enum { HANDLERS = sizeof handlers / sizeof *handlers, FUNCTIONS = sizeof functions / sizeof *functions };

static void unexpected(const char* condition, int line) {
    fprintf(stderr, "functions.c:%d: %s does not hold\n", line, condition);
    exit(EXIT_FAILURE);
}

static void report(k_err_t* err, const char* format, ...) {
    va_list arguments;

    va_start(arguments, format);
    k_err_vset(err, "report", 2, format, arguments);
    va_end(arguments);
}

static void call_error_record(k_err_t* err) {
    k_err_set(err, "call", 1, "%d", 7);
    report(err, "%s", "x");
    expect(k_err_count(err) == 2);
    expect(strcmp(k_err_function(err, 1), "report") == 0);
    expect(k_err_line(err, 1) == 2);
    expect(strcmp(k_err_message(err, 0), "7") == 0);
    k_err_leave_out(err, 1);
    expect(k_err_is_counted(err, 0) && !k_err_is_counted(err, 1));
    k_err_clear(err);
    expect(k_err_count(err) == 0);
}

static void call_places(k_err_t* err) {
    json_t* root = json_pack("{s:{s:n}}", "a", "b/c");

    k_err_set(err, "call", 1, "wrong");
    k_err_place(err, json_object_get(root, "a"), "b/c", 3);
    k_err_set(err, "call", 2, "wrong, too");
    k_err_place_from(err, 1, root, NULL, 0);
    expect(!k_err_pointer(err, 0));
    k_err_locate(err, 0, root);
    json_decref(root);
    expect(strcmp(k_err_pointer(err, 0), "/a/b~1c") == 0 && strcmp(k_err_pointer(err, 1), "") == 0);
    k_err_clear(err);
}

static void call_memory_and_output(void) {
    k_err_t* err = k_err_new();

    expect(k_err_is_complete(err));
    k_err_keep_printed(err);
    k_err_print(err, "line");
    expect(k_err_printed_count(err) == 1 && strcmp(k_err_printed(err, 0), "line") == 0);
    k_err_no_memory();
    expect(!k_err_is_complete(err));
    k_err_free(err);
}

static void call_strings(void) {
    char *coded = NULL, *plain = NULL;
    unsigned long number = 0;
    k_string_t* string = string_init(0);

    expect(k_str_get_hash("a") == 177670);
    expect(k_str_base64_encode("abc", &coded) == 0 && strcmp(coded, "YWJj") == 0);
    expect(k_str_base64_decode(coded, &plain) == 0 && strcmp(plain, "abc") == 0);
    expect(k_str_strict_strtoul("12", 10, &number) == 0 && number == 12);
    expect(string_add(string, "ab") == 0);
    expect(string_add_string_new(string, string_init_chars("cd")) == 0);
    expect(strcmp(string->text, "abcd") == 0);
    string_free(string);
    free(plain);
    free(coded);
}

static void call_addresses(void) {
    char mask[16];

    expect(k_addr_v4_is_correct("10.0.0.1"));
    expect(k_addr_is_ippfx_correct(10, "fd00::/8"));
    expect(k_addr_v4_mask_to_prefix("255.255.0.0") == 16);
    expect(k_addr_v4_prefix_to_mask(16, mask, sizeof mask) == 0 && strcmp(mask, "255.255.0.0") == 0);
    expect(k_tr_str_is_instance("12") && !k_tr_str_is_instance("0"));
}

static void call_differences(k_err_t* err) {
    json_t* base = json_pack("{s:i}", "a", 1);
    json_t* candidate = json_pack("{s:i}", "a", 2);
    json_t* difference = k_conf_diff_set2(base, candidate, 0, K_CONF_JSON_PATCH, err);
    json_t* applied = k_conf_apply(base, difference, err);

    expect(json_equal(applied, candidate));
    expect(json_integer_value(k_conf_find_branch(base, "a", 0)) == 1);
    json_decref(applied);
    json_decref(difference);
    json_decref(candidate);
    json_decref(base);
}

typedef int (*field_helper_t)(json_t*, const char*, json_t*, const char*, int, k_err_t*);

static void call_field_helper(field_helper_t helper, json_t* destination, json_t* value, k_err_t* err) {
    expect(helper(destination, "field", value, __func__, __LINE__, err) == 0);
    expect(json_object_get(destination, "field"));
    json_object_clear(destination);
    json_decref(value);
}

static void call_field_helpers(k_err_t* err) {
    json_t* destination = json_object();
    json_t* empty = json_string("");

    call_field_helper(json_integer_old_set_safe, destination, json_integer(1), err);
    call_field_helper(json_boolean_old_set_safe, destination, json_true(), err);
    call_field_helper(json_string_old_set_safe, destination, json_string("x"), err);
    call_field_helper(json_string_set_password_old, destination, json_string("eA=="), err);
    call_field_helper(json_string_set_safe, destination, json_null(), err);
    call_field_helper(json_integer_set_safe, destination, json_string("1"), err);
    call_field_helper(json_boolean_set_safe, destination, json_string("0"), err);
    call_field_helper(json_string_set_password, destination, json_string("x"), err);
    expect(json_string_set_def(destination, "field", empty, "default", __func__, __LINE__, err) == 0);
    expect(strcmp(json_string_value(json_object_get(destination, "field")), "default") == 0);
    json_decref(empty);
    json_decref(destination);
}

static void call_instance_utilities(void) {
    json_t* list = json_pack("{s:{}, s:{}}", "1", "2");
    int count = 0;
    char** keys = getSortedKeys(list, &count);

    expect(count == 2 && strcmp(keys[1], "2") == 0);
    freeArrayOfString(keys, count);
    expect(getMaxKey(list) == 2);
    json_set_max_instance(list, 2);
    expect(getNumberOfEntries(list) == 2);
    json_decref(list);
}

static void call_list_to_string(k_err_t* err) {
    json_t* list = json_pack("{s:s, s:s}", "1", "UDP", "2", "TLS");
    json_t* destination = json_object();

    expect(multiinstanse_to_string(destination, "names", list, err) == 0);
    expect(strcmp(json_string_value(json_object_get(destination, "names")), "UDP,TLS") == 0);
    expect(multiinstanse_to_string(destination, NULL, list, err) == 0);
    expect(multiinstanse_to_string(destination, NULL, json_true(), err) == 0);
    expect(json_object_size(destination) == 1);
    json_decref(destination);
    json_decref(list);
}

static void call_entry_points(k_err_t* err) {
    json_t* source = json_pack("{s:i}", "ppp0", 10);
    json_t* empty = json_object();
    json_t* destination = json_object();
    json_t* new_section = k_cnvrt_get_section_to_new("wan_pvid", source, NULL, 0, err);
    json_t* old_section = k_cnvrt_get_section_to_old("wan_pvid", new_section, err);
    json_t* new_root = k_cnvrt_to_new(empty, NULL, 0, err);
    json_t* old_root = k_cnvrt_to_old(empty, K_CNVRT_DSL_VLAN, err);
    char version[32];

    expect(json_equal(old_section, source));
    expect(json_is_object(new_root) && json_is_object(old_root));
    expect(json_section_parser(source, "copy", destination, err, 0, json_section_copy) == 0);
    expect(json_services_parser(source, "service", destination, json_section_copy, 0, err) == 0);
    expect(json_object_size(destination) == 2);
    expect(k_cnvrt_section_name(K_CNVRT_OLD_SECTIONS, 0) && !k_cnvrt_section_name(K_CNVRT_NEW_SECTIONS, 1000));
    expect(k_cnvrt_check_valid_hashes() == 0);
    snprintf(version, sizeof version, "%d.%d.%d", K_CNVRT_VERSION_MAJOR, K_CNVRT_VERSION_MINOR, K_CNVRT_VERSION_PATCH);
    expect(strcmp(k_cnvrt_version(), version) == 0 && strcmp(K_CNVRT_VERSION, version) == 0);
    json_decref(old_root);
    json_decref(new_root);
    json_decref(old_section);
    json_decref(new_section);
    json_decref(destination);
    json_decref(empty);
    json_decref(source);
}

static void call_texts(void) {
    static const char text[] = "{\"ppp0\": 10}";
    k_text_request_t request = {.size = sizeof request, .operation = K_TEXT_SECTION_TO_NEW, .indent = K_TEXT_COMPACT};
    k_text_problem_t problem = {.size = sizeof problem};
    k_text_excerpt_t excerpt = {.size = sizeof excerpt};
    k_text_loss_t loss = {.size = sizeof loss};
    k_text_result_t* result;
    size_t length = 0;

    request.section = "wan_pvid";
    request.text = text;
    request.text_length = sizeof text - 1;
    result = k_text_run(&request);
    expect(k_text_status(result) == K_TEXT_CONVERTED && k_text_direction(result) == K_TEXT_TO_NEW);
    expect(strcmp(k_text_output(result, &length), "{\"1\":{\"name\":\"ppp0\",\"pvid\":10},\"max_instance\":1}") == 0);
    expect(length == strlen(k_text_output(result, NULL)));
    expect(k_text_problem_count(result) == 0 && k_text_problem(result, 0, &problem) == -1);
    expect(k_text_excerpt(result, 0, text, sizeof text - 1, 80, &excerpt) == -1);
    k_text_free(result);
    request.operation = K_TEXT_LOSSES;
    request.flags = K_TEXT_TOWARDS_NEW;
    request.section = NULL;
    result = k_text_run(&request);
    expect(k_text_loss_count(result) == 2 && k_text_loss(result, 1, &loss) == 0 && loss.kind == K_TEXT_DROPPED);
    k_text_free(result);
    expect(k_text_section(K_TEXT_OLD_SECTIONS, 0) && !k_text_section(K_TEXT_NEW_SECTIONS, 1000));
    expect(k_text_find(text, sizeof text - 1, "", &length, &length) == 1 && length == sizeof text - 1);
    expect(strlen(k_text_version()) != 0);
}

/* An absent section is never an error. */
static void call_handlers(k_err_t* err) {
    for (int i = 0; i < HANDLERS; ++i) {
        json_t* destination = json_object();

        handlers[i](NULL, destination, err);
        json_decref(destination);
    }
}

int call_every_function(void) {
    k_err_t* err = k_err_new();

    call_error_record(err);
    call_places(err);
    call_memory_and_output();
    call_strings();
    call_addresses();
    call_differences(err);
    call_field_helpers(err);
    call_instance_utilities();
    call_list_to_string(err);
    call_entry_points(err);
    call_texts();
    call_handlers(err);
    k_err_free(err);
    for (int i = 0; i < FUNCTIONS; ++i) expect(functions[i]);
    return HANDLERS + FUNCTIONS;
}
