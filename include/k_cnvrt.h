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
 * 2. Values that both layouts share are carried by reference: the result may share sub-trees with the source, and either
 *    may be released first. Editing a shared sub-tree in place changes both; json_deep_copy the result before doing so.
 * 3. A null json_t is an absent value. A member of a value that is not an object is absent, and a value that is not an
 *    array has no elements. Absent is never an error unless a function says so.
 * 4. Every problem is one message in the error record (k_err.h), under the name of the function that found it. The
 *    record may be null. An int result is the number of failed fields, 0 for success; conversion goes on after a failed
 *    field, which is left out.
 * 5. Numbered lists are objects with the members "1", "2", ... and "max_instance". A conversion that would write
 *    something for each missing number refuses a list with a number above K_CNVRT_MAX_INSTANCE.
 * 6. There is no global state. Calls on distinct trees may run in parallel, with a record of their own each.
 * 7. Memory that runs out is not reported: what could not be stored is missing. Nothing leaks and nothing crashes.
 */
#ifndef K_CNVRT_H
#define K_CNVRT_H

#include <jansson.h>
#include <stdint.h>

#include "k_err.h"

#include "k_cnvrt/device.h"
#include "k_cnvrt/fields.h"
#include "k_cnvrt/ifaces.h"
#include "k_cnvrt/qos.h"
#include "k_cnvrt/services.h"
#include "k_cnvrt/users.h"
#include "k_cnvrt/voip.h"
#include "k_cnvrt/wifi.h"

#ifdef __cplusplus
extern "C" {
#endif

#pragma GCC visibility push(default)

/* Flags of a conversion. */
#define K_CNVRT_DSL_VLAN ((uint8_t)1)    /* the device ties its VLANs to DSL services: "groups" instead of "vlan" */
#define K_CNVRT_MERGE_PATCH ((uint8_t)2) /* a difference is a JSON Merge Patch instead of a JSON Patch (k_conf.h) */

/* The highest instance number in a list whose missing numbers each get a placeholder. */
#define K_CNVRT_MAX_INSTANCE 65535

/* Converts a section: reads `source`, fills `destination` (an object or an array made by the caller), and returns the
 * number of failed fields. */
typedef int (*k_cnvrt_handler_t)(json_t *source, json_t *destination, k_err_t *err);

/*
 * A whole configuration, from the new layout to the old. K_CNVRT_DSL_VLAN is the only flag looked at.
 * Every section is attempted, so that the record holds every message; the result is null when any field failed.
 */
json_t *k_cnvrt_to_old(json_t *new_root, uint8_t flags, k_err_t *err);

/*
 * A whole configuration, from the old layout to the new. Without `base` the new configuration, or null when any field
 * failed. With `base`, what has to change in `base` to make it the converted configuration (k_conf_diff_set2; its form
 * follows K_CNVRT_MERGE_PATCH), whatever failed on the way: look at the record.
 */
json_t *k_cnvrt_to_new(json_t *old_root, json_t *base, uint8_t flags, k_err_t *err);

/*
 * One section of the old configuration, by its old name, from the corresponding new section. Null when the section is
 * null, the name is unknown (exact spelling; kcnvrt sections lists them) or a field failed.
 * The result is an object or an array, as the old section is.
 */
json_t *k_cnvrt_get_section_to_old(const char *section_name, json_t *new_section, k_err_t *err);

/*
 * One section of the new configuration, by its new name, from the corresponding old section. Null as above; with `base`
 * the difference to it, whatever failed on the way, as k_cnvrt_to_new does. K_CNVRT_MERGE_PATCH is the only flag looked
 * at.
 */
json_t *k_cnvrt_get_section_to_new(const char *section_name, json_t *old_section, json_t *base, uint8_t flags,
                                   k_err_t *err);

/* Which of the two section tables: the names of old sections, or of new ones. */
typedef enum { K_CNVRT_OLD_SECTIONS, K_CNVRT_NEW_SECTIONS } k_cnvrt_table_t;

/* The name at `index`, counted from 0, of a section table, in its order; null beyond the end. */
const char *k_cnvrt_section_name(k_cnvrt_table_t table, size_t index);

/* 0 when the hashes of both section tables are right and unique; otherwise -1 and one line on standard output. */
int k_cnvrt_check_valid_hashes(void);

/* A handler for sections that are the same in both layouts: sets every member of `source` in `destination`, shared.
 * Always 0. */
int json_section_copy(json_t *source, json_t *destination, k_err_t *err);

/*
 * Runs a handler and stores what it filled under `name` in `destination`, also when it failed: a new array when
 * `is_array` is not 0, else a new object. The name "-" stores nothing: the handler writes into `destination` itself.
 * A null source or name does nothing. Returns the handler's result.
 */
int json_section_parser(json_t *source, const char *name, json_t *destination, k_err_t *err, int is_array,
                        k_cnvrt_handler_t handler);

/*
 * The same for services: a new array when `kind` is 1, else a new object, stored under `name`. "-" is an ordinary name,
 * and a name that is not UTF-8 is not stored.
 */
int json_services_parser(json_t *source, const char *name, json_t *destination, k_cnvrt_handler_t handler, int kind,
                         k_err_t *err);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

#endif
