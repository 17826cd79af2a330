/*
 * fields.h: one field across, and objects with instance numbers as names. Part of k_cnvrt.h, whose conventions hold.
 *
 * The field helpers share a contract. `key` names the field, in `destination` and in messages; it is stored as it is
 * and must be UTF-8. `value` is the source field. Success returns 0 and the converted value is stored under the key,
 * replacing any member there; an absent value and a null key store nothing and return 0. A value that does not fit is
 * reported under `function` and `line`, nothing is stored, and the result is 1. Text that is not UTF-8 after its
 * conversion is not stored, without a report.
 */
#ifndef K_CNVRT_FIELDS_H
#define K_CNVRT_FIELDS_H

#include <jansson.h>
#include <stdint.h>

#include "k_err.h"

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/* Towards new. */

/* An integer is carried; a string of digits up to 4294967295 becomes an integer, read as a signed 32-bit number
 * ("4294967295" is -1); "" stores nothing and is no failure.
 * Otherwise: Invalid field "KEY", is not digit (a string), or Invalid field "KEY", is not string (anything else) */
int json_integer_set_safe(json_t *destination, const char *key, json_t *value, const char *function, int line,
                          k_err_t *err);

/* true and false are carried; "1", "true" and 1 become true, "0", "false" and 0 false.
 * Otherwise: Invalid field "KEY", "TEXT"!=["0","1","true","false"], Invalid field "KEY", number != 0 or 1, or
 * Invalid field "KEY", is not string or int or bool! */
int json_boolean_set_safe(json_t *destination, const char *key, json_t *value, const char *function, int line,
                          k_err_t *err);

/* A string is carried, null becomes "". Otherwise: Invalid field "KEY", is not null or string */
int json_string_set_safe(json_t *destination, const char *key, json_t *value, const char *function, int line,
                         k_err_t *err);

/* "" becomes `default_text`, null counting as "" (one that is not UTF-8 is not stored); any other string is carried.
 * Otherwise: Invalid field "", is not string (the message has always come without the key) */
int json_string_set_def(json_t *destination, const char *key, json_t *value, const char *default_text,
                        const char *function, int line, k_err_t *err);

/* Plain text becomes base64, null becomes "". Otherwise: Invalid field "KEY", is not string, or
 * Invalid field "KEY", error convert password to base64 (memory ran out) */
int json_string_set_password(json_t *destination, const char *key, json_t *value, const char *function, int line,
                             k_err_t *err);

/* Towards old. */

/* An integer becomes its decimal text, cut to seven characters. Otherwise: Invalid field "KEY", is not integer */
int json_integer_old_set_safe(json_t *destination, const char *key, json_t *value, const char *function, int line,
                              k_err_t *err);

/* true becomes "1", false "0". Otherwise: Invalid field "KEY", json_type is TYPE */
int json_boolean_old_set_safe(json_t *destination, const char *key, json_t *value, const char *function, int line,
                              k_err_t *err);

/* "" becomes null; any other string is carried. Otherwise: Invalid field "KEY", is not string */
int json_string_old_set_safe(json_t *destination, const char *key, json_t *value, const char *function, int line,
                             k_err_t *err);

/* Base64 becomes plain text, null becomes "". Otherwise: Invalid field "KEY", is not string, or
 * Invalid field "KEY", error convert password to plain text (k_str_base64_decode failed) */
int json_string_set_password_old(json_t *destination, const char *key, json_t *value, const char *function, int line,
                                 k_err_t *err);

/* Objects whose members are named by instance numbers. */

/* The highest number among the member names, each read as atoi reads it, at most INT_MAX; -1 for anything but an object
 * and when there is no number of 1 or more. */
int getMaxKey(json_t *object);

/* The number of members minus one, never below 0: the entries of an object with one bookkeeping member. */
int getNumberOfEntries(json_t *object);

/* The member names in ascending strcmp order ("10" before "2") as a new array of new texts, for freeArrayOfString.
 * `count`, which may be null, is set to their number: 0 with a null result where there are none, -1 with a null result
 * when memory ran out. */
char **getSortedKeys(json_t *object, int *count);

/* Releases `count` texts and the array; a null array does nothing. */
void freeArrayOfString(char **array, int count);

/* Sets "max_instance" of a numbered list; does nothing to anything but an object. */
void json_set_max_instance(json_t *object, uint32_t count);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
