/* Conversions that talk: their diagnostics go to standard output, as some of the library's do by contract, and their
 * messages have line breaks and quotes in them. They stand before the library's when the program is linked. */
#include <k_cnvrt.h>
#include <stdio.h>

/* A tree without an end. It stays reachable, so that nobody takes it for a leak. */
static json_t* looping(void) {
    static json_t* object;
    if (object == NULL) {
        object = json_pack("{s:{}}", "inner");
        json_object_set(json_object_get(object, "inner"), "outer", object);
    }
    return json_incref(object);
}

/* The document itself; null where it has the member "rejected", the flags where it has the member "flags", and what
 * cannot be written where it has the member "looping". */
json_t* k_cnvrt_to_new(json_t* old_root, json_t* base, uint8_t flags, k_err_t* err) {
    if (json_object_get(old_root, "flags")) return json_pack("{s:i}", "flags", flags);
    if (json_object_get(old_root, "looping")) return looping();
    k_err_print(err, "first diagnostic");
    k_err_print(err, "");
    k_err_print(err, "second diagnostic");
    k_err_set(err, "parse_one", __LINE__, "Error allocated memory!\n");
    k_err_set(err, "parse_two", __LINE__, "Invalid \"field\",\nis\t\x1b[31mnot\\ string\r\n");
    return json_object_get(old_root, "rejected") && !base ? NULL : json_incref(old_root);
}

/* What it was called with. */
json_t* k_cnvrt_to_old(json_t* new_root, uint8_t flags, k_err_t* err) {
    (void)new_root;
    (void)err;
    return json_pack("{s:i}", "flags", flags);
}

json_t* k_cnvrt_get_section_to_new(const char* section_name, json_t* old_section, json_t* base, uint8_t flags,
                                   k_err_t* err) {
    (void)err;
    return json_pack("{s:s, s:O, s:O, s:i}", "name", section_name, "old", old_section, "base", base, "flags", flags);
}

int k_cnvrt_check_valid_hashes(void) {
    puts("old_config_handler_table, name \"vlan\" is duplicate!");
    return -1;
}
