/* Writes a document as a stream of equal records: bench_lines FILE RECORDS */
#include <jansson.h>
#include <stdio.h>
#include <stdlib.h>

int main(int argc, char** argv) {
    json_error_t error;
    json_t* root = argc == 3 ? json_load_file(argv[1], 0, &error) : NULL;
    char* text = root == NULL ? NULL : json_dumps(root, JSON_COMPACT);
    if (text == NULL) return EXIT_FAILURE;
    for (long i = strtol(argv[2], NULL, 10); i > 0; --i) puts(text);
    free(text);
    json_decref(root);
    return fflush(stdout);
}
