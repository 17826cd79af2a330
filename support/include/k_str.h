/*
 * k_str.h: hashing, base64, strict numbers, and a string that grows.
 *
 * 1. Texts are NUL-terminated and borrowed for the length of the call.
 * 2. A function that fails has no side effect: outputs stay as they were. Only string_add_string_new still releases
 *    what it was given.
 * 3. Every function is safe to call from several threads on distinct data.
 */
#ifndef K_STR_H
#define K_STR_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/* The 32-bit djb2 hash: h = 5381, then h = h * 33 + byte (unsigned) modulo 2^32 for each byte. Null counts as "". */
uint32_t k_str_get_hash(const char *text);

/*
 * Base64 with the standard alphabet and padding (RFC 4648), without white space; "" is "" both ways.
 * On success 0 and *out is a new text that the caller releases with free; on failure (memory, a null argument) a
 * negative value. Decoding also fails on another length than a multiple of 4, on a character outside the alphabet, on
 * padding anywhere but at the end, and on a decoded NUL byte, which no text can hold. Spare bits of the last digit are
 * ignored: "QR==" decodes as "QQ==" does.
 */
int k_str_base64_encode(const char *text, char **out);
int k_str_base64_decode(const char *text, char **out);

/*
 * The whole text as an unsigned number: one or more ASCII digits of `base` (2 to 36) and nothing else, no sign,
 * no blank, at most 4294967295 whatever the width of unsigned long; letters of either case are digits above 9.
 * 0 on success, non-zero otherwise, also for null arguments.
 */
int k_str_strict_strtoul(const char *text, int base, unsigned long *value);

/* A string that grows. Its first member is the NUL-terminated text, never null in a live string. */
typedef struct k_string {
    char *text;
    uint32_t length;
    uint32_t capacity;
} k_string_t;

/* A new empty string, or null when memory runs out. The argument is always 0. Release it with string_free. */
k_string_t *string_init(int reserved);

/* A new string holding a copy of `text` (null counts as ""), or null when memory runs out. */
k_string_t *string_init_chars(const char *text);

/* Appends `text`. 0 on success, -1 when memory runs out or the length would pass 4294967294 (the string is unchanged).
 * With a null argument it does nothing and returns 0. */
int string_add(k_string_t *string, const char *text);

/* Appends the text of `other` and releases `other`, also when it fails or `string` is null. Returns as string_add.
 * Where both are the same string, its text is doubled and it is not released. */
int string_add_string_new(k_string_t *string, k_string_t *other);

/* Releases the string and its text; null is allowed. */
void string_free(k_string_t *string);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
