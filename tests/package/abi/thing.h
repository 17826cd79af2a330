// A library as small as one can be that has what ours have: its two releases brought three functions and one.
#include <stddef.h>

typedef struct {
    unsigned size;
    int number;
    const char* words;
} k_text_thing_t;

typedef struct {
    int first;
    long second;
} k_pair_t;

typedef struct k_hidden k_hidden_t;

int k_number(const k_text_thing_t* thing);
long k_sum(const k_pair_t* pair, int more);
k_hidden_t* k_hide(void);
int k_later(int number);
