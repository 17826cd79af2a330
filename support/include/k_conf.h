/*
 * k_conf.h: finding a branch in a configuration, and the difference between two configurations.
 *
 * 1. Every json_t argument is borrowed and never modified. A returned difference or document belongs to the caller,
 *    who releases it with json_decref; values that stay as they are may be shared with the arguments.
 * 2. A json_t returned by k_conf_find_branch is borrowed from the root.
 * 3. The error record may be null (k_err.h). A message about a candidate, or about a difference that is applied, has
 *    its place in it: "/3" is the fourth operation. Messages about a base, or about memory, have none.
 * 4. Differences walk documents recursively. A document with more than K_CONF_MAX_LEVELS arrays and objects inside one
 *    another, which is more than Jansson's parser accepts, is refused.
 */
#ifndef K_CONF_H
#define K_CONF_H

#include <jansson.h>
#include <stdint.h>

#include "k_err.h"

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

#define K_CONF_MAX_LEVELS 2048

/* The forms of a difference: the values of k_conf_diff_set2's flag. */
#define K_CONF_JSON_PATCH ((uint8_t)0)  /* RFC 6902: an array of operations, exact for every JSON value */
#define K_CONF_MERGE_PATCH ((uint8_t)2) /* RFC 7396: an object; cannot express a member that is null, see below */

/*
 * The value at the end of a dotted path of member names, or null when there is none. A path that names a branch ends
 * with a dot ("ipv4.Routes."), one that names a leaf does not ("users.services.web.autologin"); both find the same
 * value. An empty path is the root, and a dot with nothing before it ends an empty name. Null for null arguments.
 * The third argument is always 0.
 */
json_t *k_conf_find_branch(json_t *root, const char *path, int reserved);

/*
 * What has to change in `base` to make it equal to `candidate`. The third argument is always 0; of `flag` only the bit
 * K_CONF_MERGE_PATCH is looked at.
 *
 * Without it: a JSON Patch, [] when nothing changed. An unchanged member costs no operation, a changed leaf one
 * "replace", an element put into an array or taken out of it one "add" or "remove". Paths are JSON Pointers (RFC 6901).
 * It is exact for every JSON value, 1 and 1.0 being two values. The order of an object's members is no part of its
 * value. Where the paths together would be longer than 64 MiB, one operation replaces the whole document.
 *
 * With it: a JSON Merge Patch, {} when nothing changed; an array is replaced as a whole. In this form null means
 * removal, so that a member of `candidate` that is null cannot be told from an absent one: applying the difference
 * leaves such a member out (a null that `base` has as well stays). Nothing is lost inside arrays. `candidate` has to be
 * an object.
 *
 * Null, with a message, when an argument is null or nested too deep, when a merge patch cannot express the candidate,
 * or when memory runs out. The cost is linear in both documents.
 * Messages, NAME being "base" or "candidate":
 *     There is no NAME
 *     The NAME is nested more than 2048 levels deep
 *     The candidate is not an object, which a merge patch cannot express
 *     Out of memory
 */
json_t *k_conf_diff_set2(json_t *base, json_t *candidate, int reserved, unsigned flag, k_err_t *err);

/*
 * A new document: `base` with a difference of either form applied: an array is a JSON Patch, an object a Merge Patch,
 * in which a null removes the member and is never stored (but inside arrays).
 * Null, with a message, when an argument is null or nested too deep, when the difference is neither an array nor an
 * object, when memory runs out, or when an operation of a JSON Patch
 *
 * - is none of "add", "remove", "replace", "move", "copy" and "test", or lacks what it needs;
 * - does not fit the base: a path that leads nowhere, a "test" that fails (numbers are compared by value, so that 1.0
 *   is 1), a value moved into itself, the whole document removed;
 * - would nest the document too deep, or is the one with which "copy" and "move" have carried more than about a million
 *   values (2^20; a long text counts as several).
 *
 * Messages, NAME being "base" or "difference":
 *     There is no NAME
 *     The NAME is nested more than N levels deep (N is 2048, of a JSON Patch with its own two levels 2050)
 *     The difference is neither an array nor an object
 *     Out of memory
 *     Operation N at "TEXT": why (counted from 1; TEXT is its path, "" for none)
 */
json_t *k_conf_apply(json_t *base, json_t *difference, k_err_t *err);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
