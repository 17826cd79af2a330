/* Stands in for libk_cnvrt_text, with a text that says what happens: "meet" waits for the other call of two, "nothing"
 * has no result, "no memory" has one that says so. */
#define _POSIX_C_SOURCE 200809L
#include <errno.h>
#include <k_cnvrt_text.h>
#include <pthread.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

/* The functions are here to be found by name. */
#pragma GCC visibility push(default)

struct k_text_result {
    int status;
};

static pthread_mutex_t lock = PTHREAD_MUTEX_INITIALIZER;
static pthread_cond_t has_come = PTHREAD_COND_INITIALIZER;
static int waiting = 0;

enum { kPatience = 60 /* seconds */ };

/* Whether another call came while this one was running. */
static int meet(void) {
    struct timespec end;
    clock_gettime(CLOCK_REALTIME, &end);
    end.tv_sec += kPatience;
    pthread_mutex_lock(&lock);
    ++waiting;
    pthread_cond_broadcast(&has_come);
    int error = 0;
    while (waiting < 2 && error != ETIMEDOUT) error = pthread_cond_timedwait(&has_come, &lock, &end);
    const int has_met = waiting >= 2;
    pthread_mutex_unlock(&lock);
    return has_met;
}

static int is(const k_text_request_t* request, const char* word) {
    return request->text_length == strlen(word) && memcmp(request->text, word, request->text_length) == 0;
}

k_text_result_t* k_text_run(const k_text_request_t* request) {
    if (is(request, "nothing") || (is(request, "meet") && !meet())) return NULL;
    k_text_result_t* result = malloc(sizeof *result);
    if (result != NULL) result->status = is(request, "no memory") ? K_TEXT_OUT_OF_MEMORY : K_TEXT_CONVERTED;
    return result;
}

int k_text_status(const k_text_result_t* result) {
    return result->status;
}

uint32_t k_text_direction(const k_text_result_t* result) {
    (void)result;
    return 0;
}

const char* k_text_output(const k_text_result_t* result, size_t* length) {
    (void)result;
    *length = 2;
    return "{}";
}

size_t k_text_problem_count(const k_text_result_t* result) {
    (void)result;
    return 0;
}

int k_text_problem(const k_text_result_t* result, size_t index, k_text_problem_t* problem) {
    (void)result, (void)index, (void)problem;
    return -1;
}

size_t k_text_loss_count(const k_text_result_t* result) {
    (void)result;
    return 0;
}

int k_text_loss(const k_text_result_t* result, size_t index, k_text_loss_t* loss) {
    (void)result, (void)index, (void)loss;
    return -1;
}

void k_text_free(k_text_result_t* result) {
    free(result);
}

int k_text_find(const char* text, size_t length, const char* pointer, size_t* offset, size_t* value_length) {
    (void)text, (void)length, (void)pointer;
    *offset = *value_length = 0;
    return -1;
}

const char* k_text_section(uint32_t list, size_t index) {
    (void)list, (void)index;
    return NULL;
}

const char* k_text_version(void) {
    return "0.0.0";
}
