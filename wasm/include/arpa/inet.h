/* arpa/inet.h of wasi-libc, with the function that it leaves out. */
#ifndef KCNVRT_WASM_ARPA_INET_H
#define KCNVRT_WASM_ARPA_INET_H

#include_next <arpa/inet.h>

#ifdef __cplusplus
extern "C" {
#endif

in_addr_t inet_addr(const char* text);

#ifdef __cplusplus
}
#endif

#endif
