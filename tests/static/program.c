/* Parses, converts and prints. CONVERT(source, err) is the one function of the library that it needs, or nothing. */
#include <k_cnvrt.h>

#ifndef CONVERT
#define CONVERT(source, err) json_incref(source)
#endif

#define SECTION(handler, source, err) converted(handler, source, err)

static inline json_t* converted(k_cnvrt_handler_t handler, json_t* source, k_err_t* err) {
    json_t* result = json_object();
    if (handler(source, result, err) == 0) return result;
    json_decref(result);
    return NULL;
}

int main(int argc, char** argv) {
    k_err_t* const err = NULL;
    json_t* const source = argc < 2 ? NULL : json_load_file(argv[1], 0, NULL);
    json_t* const result = CONVERT(source, err);
    const int failed = result == NULL || json_dumpf(result, stdout, JSON_COMPACT) != 0;
    (void)err;
    json_decref(source);
    json_decref(result);
    return failed;
}
