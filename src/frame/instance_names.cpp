// The exported utilities for objects whose members are named by instance numbers.
#include <cstdlib>
#include <cstring>

#include "frame/json.h"
#include "frame/list.h"
#include "k_cnvrt.h"
#include "shortage.h"

using namespace kcnvrt;

static_assert(kMaxPlaceholderNumber == K_CNVRT_MAX_INSTANCE, "the bound that callers are told");

int getMaxKey(json_t* object) {
    return max_number(object);
}

int getNumberOfEntries(json_t* object) {
    const size_t members = json_object_size(object);
    return members == 0 ? 0 : static_cast<int>(members - 1);
}

char** getSortedKeys(json_t* object, int* count) {
    int ignored;
    int& names = count == nullptr ? ignored : *count;
    names = 0;
    const SortedMembers sorted{object};
    if (sorted.count() == 0) {
        if (sorted.failed()) names = -1;
        return nullptr;
    }
    char** array = static_cast<char**>(noted(std::calloc(sorted.count(), sizeof(char*))));
    for (const Member& member : sorted) {
        char* name = array == nullptr ? nullptr : noted(strdup(member.name.text()));
        if (name == nullptr) {
            freeArrayOfString(array, names);
            names = -1;
            return nullptr;
        }
        array[names++] = name;
    }
    return array;
}

void freeArrayOfString(char** array, int count) {
    if (array == nullptr) return;
    for (int i = 0; i < count; ++i) std::free(array[i]);
    std::free(array);
}

void json_set_max_instance(json_t* object, uint32_t count) {
    set_max_instance(object, count);
}
