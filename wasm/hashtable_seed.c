/* The seed of Jansson's hash tables. There is no clock and no device to take one from, so it is given from outside,
 * before anything else is called. This stands in for the file of the same name in Jansson. */
#include <jansson.h>
#include <stdint.h>

volatile uint32_t hashtable_seed = 0;

/* To the tables 0 means that there is no seed yet. */
void json_object_seed(size_t seed) {
    if (hashtable_seed == 0) hashtable_seed = seed == 0 ? 1 : (uint32_t)seed;
}
