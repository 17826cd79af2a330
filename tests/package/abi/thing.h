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

#define K_FAST ((unsigned)1)
#define K_BEST (K_FAST | 2u)
#define K_WORD "thing"
#define K_TWICE(what) ((what) + (what))
enum {
    K_ONE = 1, /* as many as there are */
    K_TWO
};

typedef struct k_hidden k_hidden_t;

int k_number(const k_text_thing_t* thing);
long k_sum(const k_pair_t* pair, int more);
k_hidden_t* k_hide(void);
int k_later(int number);
