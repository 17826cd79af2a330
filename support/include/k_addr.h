/*
 * k_addr.h: IPv4 and IPv6 addresses, prefixes and masks as texts. Pure functions; a null text is never correct.
 */
#ifndef K_ADDR_H
#define K_ADDR_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/* 1 when `text` is a dotted IPv4 address as inet_pton reads it, else 0. */
int k_addr_v4_is_correct(const char *text);

/* 1 when `text` is an address, "/" and a length of 1 to 3 digits within the family's bits, else 0.
 * `family` is AF_INET6 (10 on Linux) or AF_INET. */
int k_addr_is_ippfx_correct(int family, const char *text);

/* The prefix length, 0 to 32, of a dotted contiguous netmask ("255.255.255.0" is 24); negative for anything else. */
int k_addr_v4_mask_to_prefix(const char *text);

/* Writes the dotted netmask of a prefix length 0 to 32. 0 on success; non-zero, and nothing written, when the length
 * is out of range, the buffer is null or `size` is too small (16 always suffices). */
int k_addr_v4_prefix_to_mask(int prefix, char *buffer, size_t size);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
