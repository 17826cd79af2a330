/*
 * k_err.h: the error record, a list of messages in the order in which they were reported.
 *
 * 1. The caller owns a record from k_err_new to k_err_free; functions that report only borrow it.
 * 2. A null record is allowed everywhere: it records nothing, counts 0 and has no messages.
 * 3. A record belongs to one thread at a time. Distinct records are independent.
 * 4. Texts handed out by a record live until it is cleared or freed.
 */
#ifndef K_ERR_H
#define K_ERR_H

#include <stdarg.h>
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

#if defined(__GNUC__)
#define K_ERR_PRINTF(format_at, arguments_at) __attribute__((format(printf, format_at, arguments_at)))
#else
#define K_ERR_PRINTF(format_at, arguments_at)
#endif

typedef struct k_err k_err_t;

/* A new empty record, or null when memory runs out. Release it with k_err_free. */
k_err_t *k_err_new(void);

/* Releases the record and every text it handed out. */
void k_err_free(k_err_t *err);

/* Forgets every message; the record can be used again. */
void k_err_clear(k_err_t *err);

/*
 * Records one message under the name of the function that reports it. `line` is informational.
 * The message is printf-formatted; there is no limit on its length or on the number of messages.
 * Both texts are copied. A null function counts as "".
 * When memory runs out, or there is no format, the message is dropped and the record keeps what it has.
 * Always returns 0; callers ignore it.
 */
int k_err_set(k_err_t *err, const char *function, int line, const char *format, ...) K_ERR_PRINTF(4, 5);

/* k_err_set for a caller that has its arguments as a va_list. */
int k_err_vset(k_err_t *err, const char *function, int line, const char *format, va_list arguments) K_ERR_PRINTF(4, 0);

/* How many messages the record holds. */
size_t k_err_count(const k_err_t *err);

/* Of message `index`, counted from 0: the reporting function, the line, the text.
 * Beyond the last message: null, 0, null. */
const char *k_err_function(const k_err_t *err, size_t index);
int k_err_line(const k_err_t *err, size_t index);
const char *k_err_message(const k_err_t *err, size_t index);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
