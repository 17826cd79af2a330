/*
 * ipsec.h: the IPsec tunnels. Part of k_cnvrt.h, whose conventions hold; both functions are section handlers
 * (k_cnvrt_handler_t) that fill an object. The members are in docs/mapping/ipsec.md.
 */
#ifndef K_CNVRT_IPSEC_H
#define K_CNVRT_IPSEC_H

#include <jansson.h>

#include "k_err.h"

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/*
 * "tunnels", where the source has it, is an array in the old layout and a numbered list in the new one. Of a tunnel the
 * shared key "key" is a password (json_string_set_password, json_string_set_password_old), and "nets" and "status" are
 * lists likewise, whose entries are carried. A tunnel whose key failed is written without it.
 *
 * Towards new, entries are numbered by their position. Towards old, a missing number appends {}; "tunnels", "nets" and
 * "status" are bounded.
 */
int parse_old_ipsec(json_t *source, json_t *destination, k_err_t *err);
int parse_new_ipsec(json_t *source, json_t *destination, k_err_t *err);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
