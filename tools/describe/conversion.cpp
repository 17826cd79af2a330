// What is printed by contract goes into the record.
#include "conversion.h"

#include "k_cnvrt.h"

namespace describe {

Answer convert(Side from, json_t* document, uint8_t flags) {
    k_err_t* const err = k_err_new();
    k_err_keep_printed(err);
    Answer answer;
    answer.result.reset(from == Side::kOld ? k_cnvrt_to_new(document, nullptr, flags, err)
                                           : k_cnvrt_to_old(document, flags, err));
    for (size_t at = 0; at < k_err_count(err); ++at) {
        const char* const pointer = k_err_pointer(err, at);
        answer.messages.push_back({pointer == nullptr ? "" : pointer, k_err_message(err, at)});
    }
    k_err_free(err);
    return answer;
}

}  // namespace describe
