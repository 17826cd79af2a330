/* A C11 program that uses an installed copy: converts a document, says the version, or calls every function. */
#include <k_cnvrt.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "functions.h"

static int convert(const char* text) {
    k_err_t* err = k_err_new();
    json_t* old_root = json_loads(text, JSON_REJECT_DUPLICATES, NULL);
    json_t* new_root = k_cnvrt_to_new(old_root, NULL, 0, err);
    char* printed = new_root ? json_dumps(new_root, JSON_COMPACT) : NULL;

    for (size_t i = 0; i < k_err_count(err); ++i)
        fprintf(stderr, "%s: %s\n", k_err_function(err, i), k_err_message(err, i));
    if (printed) puts(printed);

    free(printed);
    json_decref(new_root);
    json_decref(old_root);
    k_err_free(err);
    return printed ? EXIT_SUCCESS : EXIT_FAILURE;
}

int main(int argc, char** argv) {
    if (argc == 3 && strcmp(argv[1], "convert") == 0) return convert(argv[2]);
    if (argc == 2 && strcmp(argv[1], "version") == 0) return puts(k_cnvrt_version()) < 0;
    printf("%d\n", call_every_function());
    return EXIT_SUCCESS;
}
