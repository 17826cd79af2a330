#include "trials/what_passes.h"

namespace kcnvrt::text {

namespace {

struct Again {
    CounterCheck& check;
    const Way& way;
};

json_t* convert_again(const void* context, json_t* tree, k_err_t* record) {
    const Again& again = *static_cast<const Again*>(context);
    return again.check.convert(again.way, tree, record);
}

}  // namespace

bool convert_rest(CounterCheck& check, const Way& way, json_t* tree, const k_err_t* record, KeptTexts& texts,
                  Part& part) {
    const Again again = {check, way};
    constexpr bool kShowsSecrets = true;  // nobody is shown these messages
    convert_part({convert_again, &again}, {tree}, record, kShowsSecrets, texts, part);
    return part.has_memory;
}

bool convert_what_passes(CounterCheck& check, const Way& way, json_t* source, Outcome& outcome) {
    if (!check.convert(way, source, outcome)) return false;
    if (outcome.tree) return true;
    const Json rest = deep_copy(source);
    KeptTexts texts;
    Part part;
    if (!rest || !convert_rest(check, way, rest.get(), outcome.record.get(), texts, part)) return false;
    outcome.tree = std::move(part.converted);
    return true;
}

}  // namespace kcnvrt::text
