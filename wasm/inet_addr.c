/* inet_addr as other C libraries have it: one to four numbers, decimal, octal or hexadecimal, of which the last fills
 * all the bytes that are left, and white space behind them. */
#include <arpa/inet.h>
#include <errno.h>
#include <stdlib.h>

static int is_digit(char byte) {
    return byte >= '0' && byte <= '9';
}

static int is_space(char byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

in_addr_t inet_addr(const char* text) {
    uint32_t address = 0;
    for (int part = 0; is_digit(*text); ++part) {
        char* end;
        errno = 0;
        const unsigned long long number = strtoull(text, &end, 0);
        const int shift = 24 - 8 * part;
        if (*end == '.' && part < 3 && number <= 0xFF) {
            address |= (uint32_t)number << shift;
            text = end + 1;
            continue;
        }
        const unsigned long long most = 0xFFFFFFFFu >> (8 * part);
        const int is_end = *end == '\0' || is_space(*end);
        return is_end && errno == 0 && number <= most ? htonl(address | (uint32_t)number) : INADDR_NONE;
    }
    return INADDR_NONE;
}
