/* What the environment wants done to calls, and the record of them. */
#include "rules.h"

#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "unsynced.h"

enum { MOST_RULES = 32, LONGEST_WORD = 128, LONGEST_LINE = 1024, HIGH_DESCRIPTOR = 600, HIGHEST_NUMBER = 200 };

typedef enum { FAIL, SHORTEN, SIGNAL, CUT_POWER } action_t;

typedef struct {
    char kind[LONGEST_WORD];
    char path[LONGEST_WORD];
    unsigned first; /* the number of the call, counted from 1 */
    unsigned last;
    action_t action;
    int number; /* of the error or signal */
    unsigned seen;
} rule_t;

static rule_t rules[MOST_RULES];
static size_t rule_count;
static int record = -1;

static void refuse_rule(const char* rule) {
    fprintf(stderr, "shim: no rule: %s\n", rule);
    abort();
}

/* The number whose name is `word`, 0 where there is none. */
static int number_of(const char* word, const char* (*name_of)(int)) {
    for (int number = 1; number < HIGHEST_NUMBER; ++number) {
        const char* name = name_of(number);
        if (name != NULL && strcmp(name, word) == 0) return number;
    }
    return 0;
}

static bool read_action(rule_t* rule, const char* word) {
    if (strcmp(word, "short") == 0) {
        rule->action = SHORTEN;
    } else if (strcmp(word, "power-cut") == 0) {
        rule->action = CUT_POWER;
    } else if ((rule->number = number_of(word, strerrorname_np)) != 0) {
        rule->action = FAIL;
    } else if ((rule->number = number_of(word, sigabbrev_np)) != 0) {
        rule->action = SIGNAL;
    } else {
        return false;
    }
    return true;
}

/* The part of `text` behind its last `mark`, which it then ends before; null where there is no mark. */
static char* split(char* text, char mark) {
    char* const at = strrchr(text, mark);
    if (at == NULL) return NULL;
    *at = '\0';
    return at + 1;
}

static bool read_numbers(rule_t* rule, char* numbers) {
    char* end;
    rule->first = (unsigned)strtoul(numbers, &end, 10);
    rule->last = *end == '+' ? ~0U : rule->first;
    return rule->first > 0 && (*end == '\0' || strcmp(end, "+") == 0);
}

static void add_rule(char* text) {
    char whole[LONGEST_WORD];
    snprintf(whole, sizeof whole, "%s", text);
    if (rule_count == MOST_RULES) refuse_rule(whole);
    rule_t* const rule = &rules[rule_count++];
    const char* const action = split(text, '=');
    char* const numbers = split(text, ':');
    const char* const path = split(text, '@');
    rule->first = 1;
    rule->last = ~0U;
    if (action == NULL || !read_action(rule, action)) refuse_rule(whole);
    if (numbers != NULL && !read_numbers(rule, numbers)) refuse_rule(whole);
    snprintf(rule->path, sizeof rule->path, "%s", path == NULL ? "" : path);
    snprintf(rule->kind, sizeof rule->kind, "%s", text);
    if (rule->action == CUT_POWER) unsynced_watch();
}

static void add_rules(const char* text) {
    static char copy[LONGEST_LINE];
    if (strlen(text) >= sizeof copy) refuse_rule(text);
    strcpy(copy, text);
    for (char* rule = strtok(copy, " "); rule != NULL; rule = strtok(NULL, " ")) add_rule(rule);
}

static void open_record(const char* file) {
    const long low = syscall(SYS_openat, AT_FDCWD, file, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    record =
        (int)syscall(SYS_fcntl, low, F_DUPFD_CLOEXEC, HIGH_DESCRIPTOR); /* where it takes no number from the program */
    syscall(SYS_close, low);
    if (record < 0) abort();
}

__attribute__((constructor)) static void start(void) {
    const char* const wanted = getenv("SHIM");
    const char* const file = getenv("SHIM_RECORD");
    if (file != NULL) open_record(file);
    if (wanted != NULL) add_rules(wanted);
}

static bool is_of_kind(const char* wanted, const char* kind) {
    if (strcmp(wanted, kind) == 0) return true;
    return strcmp(wanted, "any") == 0 && strcmp(kind, "alloc") != 0 && strcmp(kind, "mmap") != 0;
}

static bool fits(rule_t* rule, const char* kind, const char* path, const char* other) {
    if (!is_of_kind(rule->kind, kind)) return false;
    if (strstr(path, rule->path) == NULL && strstr(other, rule->path) == NULL) return false;
    const unsigned number = __atomic_add_fetch(&rule->seen, 1, __ATOMIC_RELAXED);
    return number >= rule->first && number <= rule->last;
}

bool shim_refuses(const char* kind, const char* path, const char* other, size_t* size) {
    bool refused = false;
    for (rule_t* rule = rules; rule < rules + rule_count; ++rule) {
        if (!fits(rule, kind, path, other)) continue;
        switch (rule->action) {
            case FAIL:
                errno = rule->number;
                refused = true;
                break;
            case SHORTEN:
                if (size != NULL && *size > 1) *size = 1;
                break;
            case SIGNAL:
                shim_record(0, "signal %s", sigabbrev_np(rule->number));
                raise(rule->number);
                break;
            case CUT_POWER:
                shim_record(0, "power-cut");
                unsynced_lose();
                raise(SIGKILL);
        }
    }
    return refused;
}

long shim_record(long result, const char* format, ...) {
    char line[LONGEST_LINE];
    va_list arguments;
    const int error = errno;
    if (record < 0) return result;
    va_start(arguments, format);
    const int length = vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    const size_t used = (size_t)length < sizeof line ? (size_t)length : sizeof line - 1;
    if (result == -1) {
        snprintf(line + used, sizeof line - used, " = %s\n", strerrorname_np(error));
    } else {
        snprintf(line + used, sizeof line - used, " = %ld\n", result);
    }
    syscall(SYS_write, record, line, strlen(line));
    errno = error;
    return result;
}
