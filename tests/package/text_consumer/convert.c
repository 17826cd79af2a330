/* A C11 program that uses an installed copy and knows nothing but texts: converts one, or prints the version. */
#include <k_cnvrt_text.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static void print_problems(const k_text_result_t* result) {
    k_text_problem_t problem = {.size = sizeof problem};

    for (size_t i = 0; k_text_problem(result, i, &problem) == 0; ++i)
        fprintf(stderr, "%zu:%zu: %s [%s]\n", problem.line, problem.column, problem.message, problem.function);
}

int main(int argc, char** argv) {
    k_text_request_t request = {.size = sizeof request, .operation = K_TEXT_TO_NEW, .indent = K_TEXT_COMPACT};
    k_text_result_t* result;
    int status;

    if (argc < 2) return puts(k_text_version()) < 0;
    request.text = argv[1];
    request.text_length = strlen(argv[1]);
    result = k_text_run(&request);
    status = k_text_status(result);
    print_problems(result);
    if (status == K_TEXT_CONVERTED) puts(k_text_output(result, NULL));
    k_text_free(result);
    return status == K_TEXT_CONVERTED ? EXIT_SUCCESS : EXIT_FAILURE;
}
