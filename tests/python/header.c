/* Prints what k_cnvrt_text.h says of structures: a line of STRUCTURE MEMBER OFFSET SIZE each. */
#include <k_cnvrt_text.h>
#include <stdio.h>

#define MEMBER(structure, member) \
    printf("%s %s %zu %zu\n", #structure, #member, offsetof(structure, member), sizeof(((structure*)0)->member))

int main(void) {
    MEMBER(k_text_request_t, size);
    MEMBER(k_text_request_t, operation);
    MEMBER(k_text_request_t, flags);
    MEMBER(k_text_request_t, indent);
    MEMBER(k_text_request_t, section);
    MEMBER(k_text_request_t, pointer);
    MEMBER(k_text_request_t, text);
    MEMBER(k_text_request_t, other);
    MEMBER(k_text_request_t, text_length);
    MEMBER(k_text_request_t, other_length);
    printf("k_text_request_t sizeof 0 %zu\n", sizeof(k_text_request_t));

    MEMBER(k_text_problem_t, size);
    MEMBER(k_text_problem_t, which);
    MEMBER(k_text_problem_t, offset);
    MEMBER(k_text_problem_t, length);
    MEMBER(k_text_problem_t, line);
    MEMBER(k_text_problem_t, column);
    MEMBER(k_text_problem_t, pointer);
    MEMBER(k_text_problem_t, severity);
    MEMBER(k_text_problem_t, function);
    MEMBER(k_text_problem_t, message);
    printf("k_text_problem_t sizeof 0 %zu\n", sizeof(k_text_problem_t));

    MEMBER(k_text_loss_t, size);
    MEMBER(k_text_loss_t, kind);
    MEMBER(k_text_loss_t, offset);
    MEMBER(k_text_loss_t, length);
    MEMBER(k_text_loss_t, line);
    MEMBER(k_text_loss_t, column);
    MEMBER(k_text_loss_t, pointer);
    MEMBER(k_text_loss_t, before);
    MEMBER(k_text_loss_t, after);
    printf("k_text_loss_t sizeof 0 %zu\n", sizeof(k_text_loss_t));
    return 0;
}
