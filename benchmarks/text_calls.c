/* What a call of the text layer costs in this machine's code: bench_text_calls OPERATION FILE SECONDS
 * Calls it for so many seconds of CPU time, at least three times, and prints milliseconds of CPU time a call. The first
 * call counts for nothing. */
#include <k_cnvrt_text.h>
#include <stdio.h>
#include <stdlib.h>
#include <time.h>

static char* contents(const char* path, size_t* length) {
    enum { kMost = 1 << 26 };
    FILE* file = fopen(path, "rb");
    char* text = malloc(kMost);
    if (file == NULL || text == NULL) exit(EXIT_FAILURE);
    *length = fread(text, 1, kMost, file);
    fclose(file);
    return text;
}

static void call(const k_text_request_t* request) {
    k_text_result_t* result = k_text_run(request);
    if (k_text_status(result) != K_TEXT_CONVERTED) exit(EXIT_FAILURE);
    k_text_free(result);
}

static double seconds(void) {
    return (double)clock() / CLOCKS_PER_SEC;
}

int main(int argc, char** argv) {
    if (argc != 4) return EXIT_FAILURE;
    k_text_request_t request = {.size = sizeof request, .operation = (uint32_t)atoi(argv[1]), .indent = 4};
    request.text = contents(argv[2], &request.text_length);
    const double enough = atof(argv[3]);

    call(&request);
    const double start = seconds();
    long count = 0;
    while (count < 3 || seconds() - start < enough) {
        call(&request);
        ++count;
    }
    printf("%.6f\n", (seconds() - start) / (double)count * 1e3);
    free((char*)request.text);
    return 0;
}
