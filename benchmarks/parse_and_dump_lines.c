/* What any filter that reads and writes lines of JSON with Jansson costs: parse_and_dump_lines FILE */
#define _POSIX_C_SOURCE 200809L
#include <jansson.h>
#include <stdio.h>
#include <stdlib.h>

int main(int argc, char** argv) {
    FILE* file = argc == 2 ? fopen(argv[1], "r") : NULL;
    if (file == NULL) return EXIT_FAILURE;
    char* line = NULL;
    size_t capacity = 0;
    ssize_t length;
    while ((length = getline(&line, &capacity, file)) > 0) {
        json_error_t error;
        json_t* root = json_loadb(line, (size_t)length, 0, &error);
        char* text = json_dumps(root, JSON_COMPACT);
        if (text == NULL || puts(text) < 0) return EXIT_FAILURE;
        free(text);
        json_decref(root);
    }
    free(line);
    return fclose(file);
}
