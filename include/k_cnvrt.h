/*
 * k_cnvrt.h: converts a gateway's configuration between its two JSON layouts.
 *
 * The old layout is one flat object of sections whose values are mostly strings. The new layout is an object with
 * "Device", an object of sections with typed values and numbered lists, and "Links".
 *
 * Conventions of every function:
 *
 * 1. A json_t argument named `source`, `value`, `base`, ... is borrowed and never modified. A `destination` is borrowed
 *    and filled. A returned json_t belongs to the caller, who releases it with json_decref.
 * 2. A value that stays the same is carried: by reference and not copied, so that the result may share values with the
 *    source at any depth. Either may be released first. Editing a shared value in place changes both, so that who edits
 *    the result or the source makes a json_deep_copy of it first.
 * 3. A null json_t is an absent value. A member of a value that is not an object is absent, and a value that is not an
 *    array has no elements. Absent is never an error unless a function says so, and for a null source a section handler
 *    writes nothing and returns 0 unless it says otherwise.
 * 4. Every problem is one message in the error record (k_err.h), under the name of the function that found it unless
 *    another one is given. The record may be null. An int result is the number of failed fields, 0 for success;
 *    conversion goes on after a failed field, which is left out. A field for which a field helper (fields.h) is named
 *    has its limits and its messages, which name the member that would have been stored; they are not listed again.
 *    In message texts KEY, NAME, TEXT, N (a number) and TYPE (Jansson's number of a type) stand for what is put in, and
 *    \n is a line feed.
 * 5. Numbered lists are objects with the members "1", "2", ... and "max_instance". A list for whose missing numbers a
 *    conversion would write something is bounded: one with a number above K_CNVRT_MAX_INSTANCE (by getMaxKey) is taken
 *    as empty, reported as "Instance number N is above 65535", and counts 1. Each function says which are bounded.
 * 6. There is no global state but one count of failed allocations (7). Calls on distinct trees may run in parallel,
 *    with a record of their own each. Where a message belongs in the source, k_err_pointer says: at once after the four
 *    functions that convert a whole configuration or one section, and after k_err_locate for who calls a handler.
 * 7. Memory that runs out is not reported, except where a message below says so: what could not be stored is missing.
 *    Nothing leaks and nothing crashes. k_err_is_complete is 0 then: ask it before a result is stored for good.
 * 8. A carried value passes whatever its type: nothing about it is checked.
 * 9. Members that a section does not know are dropped. Those that it knows, with their names in both layouts, what
 *    becomes of their values, their defaults and messages, are on its page in docs/mapping, which the tool shows as
 *    well: `kcnvrt mapping SECTION`. Here is what a page does not tell.
 * 10. "Towards new" and "towards old" are the two directions. What is said before either holds for both.
 */
#ifndef K_CNVRT_H
#define K_CNVRT_H

#include <jansson.h>
#include <stdint.h>

#include "k_conf.h"
#include "k_err.h"

#include "k_cnvrt/device.h"
#include "k_cnvrt/fields.h"
#include "k_cnvrt/ifaces.h"
#include "k_cnvrt/qos.h"
#include "k_cnvrt/services.h"
#include "k_cnvrt/users.h"
#include "k_cnvrt/version.h"
#include "k_cnvrt/voip.h"
#include "k_cnvrt/wifi.h"

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/* Flags of a conversion. */
#define K_CNVRT_DSL_VLAN ((uint8_t)1)          /* the device ties its VLANs to DSL services: "groups", not "vlan" */
#define K_CNVRT_MERGE_PATCH K_CONF_MERGE_PATCH /* a difference is a JSON Merge Patch instead of a JSON Patch */

/* The highest number in a bounded list. */
#define K_CNVRT_MAX_INSTANCE 65535

/* Converts a section: reads `source`, fills `destination` (an object or, where the handler says so, an array, made by
 * the caller), and returns the number of failed fields. */
typedef int (*k_cnvrt_handler_t)(json_t *source, json_t *destination, k_err_t *err);

/*
 * A whole configuration, towards new. "Ifaces", "Services", "Routing", "Customization" and "Users" are always there.
 * "QoS" is made of "queuemanagement" or "qos"; of both, the latter is kept.
 *
 * Every section is attempted, so that the record holds every message. Without `base` the result is the new
 * configuration, or null when the sections' results add up to anything but 0. What a handler reports without counting
 * it, as it says (of a static route, of DNS or IPsec), does not make it null; k_err_is_counted tells these apart.
 * With `base` the result is what has to change in `base` to make it the converted configuration, whatever failed on the
 * way: look at the record. Its form follows K_CNVRT_MERGE_PATCH; a merge patch takes a member that the conversion made
 * null out of `base` instead. It is null where k_conf_diff_set2 is.
 * Messages: those of the handlers and of k_conf_diff_set2.
 */
json_t *k_cnvrt_to_new(json_t *old_root, json_t *base, uint8_t flags, k_err_t *err);

/*
 * A whole configuration, towards old. K_CNVRT_DSL_VLAN is the only flag looked at. A section that is absent is absent
 * from the result, but for the users, whose "passwd" is then [].
 *
 * Every section is attempted, and the result is null where it is without a base above.
 * Where "Device" has "Roaming", one line is printed on standard output, mostly an empty one; a record can keep it
 * instead (k_err_keep_printed).
 * Messages: those of the handlers, and
 *     Users json is not object or array! (the users, tried as an array and then as an object, failed as both)
 */
json_t *k_cnvrt_to_old(json_t *new_root, uint8_t flags, k_err_t *err);

/*
 * One section of the new configuration, by its new name, from the corresponding old section: an object, what the
 * handler of the section makes of `old_section` as its source; with `base` the difference to it, whatever failed on the
 * way, as k_cnvrt_to_new gives it. K_CNVRT_MERGE_PATCH is the only flag looked at.
 *
 * Null when the section is null, the name is unknown (exact spelling; k_cnvrt_section_name has them; a null name is "")
 * or, without a base, the handler's result is not 0.
 * Messages: those of the handler and of k_conf_diff_set2, and
 *     In object is null!
 *     Section "NAME" in new config not found
 */
json_t *k_cnvrt_get_section_to_new(const char *section_name, json_t *old_section, json_t *base, uint8_t flags,
                                   k_err_t *err);

/*
 * One section of the old configuration, by its old name, from the corresponding new section: an object or an array, as
 * the old section is. Null as above; the users are tried as an array and then as an object.
 * Messages: those of the handler, and
 *     In object NAME is null!
 *     Section "NAME" in old config not found
 *     JSON is not array or object! (the users, after their own messages)
 */
json_t *k_cnvrt_get_section_to_old(const char *section_name, json_t *new_section, k_err_t *err);

/* Which of the two section tables: the names of old sections, or of new ones. */
typedef enum { K_CNVRT_OLD_SECTIONS, K_CNVRT_NEW_SECTIONS } k_cnvrt_table_t;

/* The name at `index`, counted from 0, of a section table, in its order; null beyond the end. It is the library's own
 * and never released. */
const char *k_cnvrt_section_name(k_cnvrt_table_t table, size_t index);

/* The version of the library that runs, as "1.2.3"; K_CNVRT_VERSION is that of the headers. It is the library's own and
 * never released. */
const char *k_cnvrt_version(void);

/* 0 when the hashes of both section tables are right and unique; otherwise -1 and one line on standard output. */
int k_cnvrt_check_valid_hashes(void);

/* A handler for sections that are the same in both layouts: carries every member of `source`. Always 0. */
int json_section_copy(json_t *source, json_t *destination, k_err_t *err);

/*
 * Runs a handler and stores what it filled under `name` in `destination`, also when it failed: a new array when
 * `is_array` is not 0, else a new object. The name "-" stores nothing: the handler writes into `destination` itself.
 * Any other name is stored as it is and must be UTF-8. A null source or name does nothing and returns 0. Returns the
 * handler's result.
 */
int json_section_parser(json_t *source, const char *name, json_t *destination, k_err_t *err, int is_array,
                        k_cnvrt_handler_t handler);

/*
 * The same for services: a new array when `kind` is 1, else a new object, stored under `name`. "-" is an ordinary name.
 * Under a name that is null or not UTF-8 the handler runs and nothing is stored.
 */
int json_services_parser(json_t *source, const char *name, json_t *destination, k_cnvrt_handler_t handler, int kind,
                         k_err_t *err);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
