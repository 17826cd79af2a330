/*
 * ipsec.h: the IPsec tunnels. Part of k_cnvrt.h, whose conventions hold; both functions are section handlers
 * (k_cnvrt_handler_t) that fill an object.
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
 * "enabled" as it stands and, where the source has it, "tunnels": an array in the old layout, a numbered list in the
 * new one. Of a tunnel the shared key "key" is a password (json_string_set_password, json_string_set_password_old),
 * "nets" and "status" are lists whose entries are attached, and twenty-two settings are attached: "alg", "hash",
 * "peer", "iface", "nat_t", "int_id", "tcpmss", "dhgroup", "alg_ph2", "auth_alg", "my_ident", "pfsgroup", "anonymous",
 * "dpd_delay", "enable_pfs", "dpd_maxfail", "tcpmss_value", "exchange_mode", "enable_routing", "my_ident_value",
 * "sainfo_lifetime", "remote_lifetime". What is attached passes as it is, whatever its type. Other members are dropped.
 *
 * Towards new, entries are numbered by their position. Towards old, a missing number appends {}; "tunnels", "nets" and
 * "status" are bounded.
 *
 * The result is the number of failed fields; a tunnel whose key failed is written without it.
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
