/*
 * voip.h: the voice service. Part of k_cnvrt.h, whose conventions hold. The members are in docs/mapping/voip.md.
 *
 * Both layouts hold "VoiceService": numbered services with "Capabilities" and "VoiceProfile", profiles with "Line",
 * each with its "max_instance". They differ in this, and in nothing else of what is listed in either:
 *
 *                                                  old layout               new layout
 *   "Capabilities"."SIP"."Extensions"/"Transports" "UDP,TLS"                {"1": "UDP", "2": "TLS", "max_instance": 2}
 *   a line's "SIP"."AuthPassword" and
 *   "CallingFeatures"."X_KAVRO_CallOffHookPassword" plain text              base64
 *   the counters of a profile's "Tone"             as found; on the way     left out
 *                                                  back only those of
 *                                                  "Event" and "Description"
 *   a profile's "Enable"                           may be ""                "" became "Enabled"
 *   a service's "VoiceProfileNumberOfEntries"      counted                  left out
 *
 * Of services, profiles, lines and a line's "SIP" only known members are kept; what else is inside is carried as a
 * whole.
 */
#ifndef K_CNVRT_VOIP_H
#define K_CNVRT_VOIP_H

#include <jansson.h>

#include "k_err.h"

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/*
 * "Voip" (towards new) and "voip" (towards old): a section handler (k_cnvrt_handler_t). Any source but a null one
 * writes "VoiceService", also when it has no services. Services keep their numbers, whatever is missing between them;
 * profiles and lines keep their names.
 *
 * Towards new, a profile or a line is a member that is an object. Towards old, every member of "Line" is a line,
 * without settings where it is no object. "VoiceProfileNumberOfEntries" and the counters of a tone are the number of
 * members minus one, as getNumberOfEntries counts.
 *
 * Messages, each one failure, come under
 *   convert_line              those of json_string_set_password and json_string_set_password_old; the off-hook password
 *                             then stays as it was, a line's "AuthPassword" is left out
 *   convert_voice_profile     those of json_string_set_def for "Enable" (towards new)
 *   multiinstanse_to_string   Error field "KEY", is not object ("Extensions" or "Transports", towards old, which then
 *                             stays as it was)
 */
int k_cnvrt_get_voip_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_voip_from_new(json_t *source, json_t *destination, k_err_t *err);

/*
 * A numbered list of texts as one text, stored under `key` in `destination` and replacing any member there: the texts
 * of the entries in the order of their numbers, with a comma after each but the last. Entries that are no strings and
 * missing numbers leave no empty place; without any text the result is "". Any number up to 2147483647 will do, and
 * "max_instance" is not looked at. 0 on success, and when the list or the key is null, which stores nothing. Otherwise
 * nothing is stored and the result is 1. The key must be UTF-8. Callers link against this spelling of the name.
 * Messages:
 *     Error field "KEY", is not object
 */
int multiinstanse_to_string(json_t *destination, const char *key, json_t *list, k_err_t *err);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
