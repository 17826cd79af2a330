/* What any program that reads and writes a JSON document with Jansson costs: parse_and_dump FILE */
#include <jansson.h>
#include <stdlib.h>

int main(int argc, char** argv) {
    json_error_t error;
    json_t* root = argc == 2 ? json_load_file(argv[1], 0, &error) : NULL;
    if (root == NULL || json_dumpf(root, stdout, JSON_INDENT(4)) != 0) return EXIT_FAILURE;
    json_decref(root);
    return EXIT_SUCCESS;
}
