// qos.h: the pieces of quality of service, each with both directions in one file.
#pragma once

#include "frame/field.h"

namespace kcnvrt {

// "QosVersion".
inline constexpr json_int_t kLegacyGeneration = 1;
inline constexpr json_int_t kCurrentGeneration = 2;

// The current generation, shaped alike in both layouts.
int current_generation_to_new(json_t* old_qos, json_t* new_qos, k_err_t* err);
int current_generation_to_old(json_t* new_qos, json_t* old_qos, k_err_t* err);

// The legacy generation: "links" against "Queue", and "filters" against "Classification" and "Policer".
int links_to_new(json_t* old_qos, json_t* new_qos, k_err_t* err);
int links_to_old(json_t* new_qos, json_t* old_qos, k_err_t* err);
int filters_to_new(json_t* old_qos, json_t* new_qos, k_err_t* err);
int filters_to_old(json_t* new_qos, json_t* old_qos, k_err_t* err);

// The old layout's scheduler of every link and filter, whatever the new one names.
inline constexpr char kScheduler[] = "htb";

// What a filter selects by. The ports are destination ports whatever the direction of the traffic.
int protocol_to_new(json_t* filter, json_t* new_class, const Report& report);
int protocol_to_old(json_t* new_class, json_t* filter, const Report& report);
int ports_to_new(json_t* filter, json_t* new_class, const Report& report);
void ports_to_old(json_t* new_class, json_t* filter);
int addresses_to_new(json_t* filter, bool is_upstream, json_t* new_class, const Report& report);
void addresses_to_old(json_t* new_class, json_t* filter);

namespace ways {

// A DSCP mark, by its name and by its number.
int mark_to_new(json_t* new_class, Key key, json_t* value, const Report& report);
int mark_to_old(json_t* filter, Key key, json_t* value, const Report& report);

// An IPv4 mask of the current generation: corrected in a copy, so one that is not corrected stays as it is.
int mask_to_new(json_t* new_class, Key key, json_t* value, const Report& report);
int mask_to_old(json_t* old_class, Key key, json_t* value, const Report& report);

}  // namespace ways

inline constexpr Word<ways::mark_to_new, ways::mark_to_old> mark;
inline constexpr Word<ways::mask_to_new, ways::mask_to_old> mask;

}  // namespace kcnvrt
