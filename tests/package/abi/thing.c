#include "thing.h"

struct k_hidden {
    int what;
};

int k_number(const k_text_thing_t* thing) {
    return thing->number;
}

long k_sum(const k_pair_t* pair, int more) {
    return pair->second + more;
}

k_hidden_t* k_hide(void) {
    static k_hidden_t hidden = {1};
    return &hidden;
}

int k_later(int number) {
    return number;
}
