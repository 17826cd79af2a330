/* Conversions that talk: their diagnostics go to standard output, as some of the library's do by contract, and their
 * messages have line breaks and quotes in them. They stand before the library's when the program is linked. */
#include <k_cnvrt.h>
#include <stdio.h>

/* The document itself, or null where it has the member "rejected". */
json_t *k_cnvrt_to_new(json_t *old_root, json_t *base, uint8_t flags, k_err_t *err) {
    (void)flags;
    printf("first diagnostic\n\n");
    puts("second diagnostic");
    k_err_set(err, "parse_one", __LINE__, "Error allocated memory!\n");
    k_err_set(err, "parse_two", __LINE__, "Invalid \"field\",\nis\t\x1b[31mnot\\ string\r\n");
    return json_object_get(old_root, "rejected") && !base ? NULL : json_incref(old_root);
}

int k_cnvrt_check_valid_hashes(void) {
    puts("old_config_handler_table, name \"vlan\" is duplicate!");
    return -1;
}
