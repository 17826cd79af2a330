/*
 * k_tr.h: keys of TR-069 instance objects.
 */
#ifndef K_TR_H
#define K_TR_H

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/* 1 when `key` is an instance number: ASCII digits of which the first is not 0; else 0, also for null. */
int k_tr_str_is_instance(const char *key);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
