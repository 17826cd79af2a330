/*
 * k_err.h: the error record, a list of messages in the order in which they were reported.
 *
 * 1. The caller owns a record from k_err_new to k_err_free; functions that report only borrow it.
 * 2. A null record is allowed everywhere: it records nothing, counts 0 and has no messages.
 * 3. A record belongs to one thread at a time. Distinct records are independent, but for k_err_is_complete.
 * 4. Texts handed out by a record live until it is cleared or freed.
 * 5. Where a message belongs is a JSON Pointer (RFC 6901) into the source: the functions that convert a whole
 *    configuration or one section by its name, and those that compare or apply, leave it ready in the record. Who calls
 *    a section handler by itself calls k_err_locate afterwards, while the source is still there.
 */
#ifndef K_ERR_H
#define K_ERR_H

#include <jansson.h>
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

/* Forgets every message, and what was printed; the record can be used again. */
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

/*
 * Where message `index` belongs in the source as the caller gave it: a JSON Pointer, "" for the whole source. It names
 * the member that is wrong or, where something is missing or several members are meant, the innermost object or list
 * that has it. Of a text that holds JSON it names the member that has the text. A name with a NUL, which no text can
 * hold, is left out with all that is inside it.
 * Null for a message about no source (a section name that is unknown, a source that is absent), for one that nobody has
 * located, beyond the last message, and when memory runs out. The text is made when it is first asked for.
 */
const char *k_err_pointer(const k_err_t *err, size_t index);

/* 1 when message `index` is among the failures that the conversion, or the handler, added up; 0 when it was reported
 * and left out of the count, so that no result was withheld for it. 0 beyond the last message. */
int k_err_is_counted(const k_err_t *err, size_t index);

/*
 * 0 when an allocation of these libraries failed since the record was made or cleared: something may be missing from a
 * result, and it must not be stored. It is 0 as well when an allocation failed in another thread meanwhile, and for a
 * null record. Otherwise 1.
 */
int k_err_is_complete(const k_err_t *err);

/* From now on the record keeps, line by line, what functions would print to standard output on its behalf; nothing is
 * printed then. Clearing the record does not change that. */
void k_err_keep_printed(k_err_t *err);

/* How many lines were kept, and line `index`, counted from 0, without its line feed; null beyond the last one. */
size_t k_err_printed_count(const k_err_t *err);
const char *k_err_printed(const k_err_t *err, size_t index);

/*
 * Finds the places of the messages from `first` on in `root`, the source of the call that reported them, in one walk
 * and only when there are any. Before it, or with another root, k_err_pointer gives null. `first` is k_err_count before
 * that call. Messages that have been located stay so. With a null root they all have no place, and never get one.
 * An object that `root` has in several places is taken for one of them.
 */
void k_err_locate(k_err_t *err, size_t first, json_t *root);

/*
 * For who reports: the place of every message that has none yet is the member `name` of `object` (an element, when it
 * is an array and `name` its index), or `object` itself when `name` is null or it has no such member. The name has
 * `length` bytes and is copied. The object is borrowed until k_err_locate. A value that is no object and no array has
 * no members: nothing is done, and who reports further out places the messages.
 */
void k_err_place(k_err_t *err, const json_t *object, const char *name, size_t length);

/* The same for every message from `first` on, whether it has a place or not: for a source that was made from another
 * one, as the text of a member, and is gone before messages are located. */
void k_err_place_from(k_err_t *err, size_t first, const json_t *object, const char *name, size_t length);

/* For who discards a result: the messages from `first` on were reported and do not count. */
void k_err_leave_out(k_err_t *err, size_t first);

/* For who allocates: an allocation failed. Every record that is in use is incomplete from now on. */
void k_err_no_memory(void);

/* For who prints a line: to standard output, or into a record that keeps it. The line comes without its line feed; a
 * null one is nothing. */
void k_err_print(k_err_t *err, const char *line);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
