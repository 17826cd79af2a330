// What is printed by contract goes into the record, and is told as the tool tells it.
#include "conversion.h"

#include "k_cnvrt.h"

namespace describe {

namespace {

// What prints is the conversion of this section: a line for each, which is empty where it has nothing to say.
constexpr const char* kPrinter = "/Device/Roaming";

void add_printed(const k_err_t* err, std::vector<Message>& messages) {
    for (size_t at = 0; at < k_err_printed_count(err); ++at)
        if (std::string line = k_err_printed(err, at); !line.empty()) messages.push_back({kPrinter, std::move(line)});
}

}  // namespace

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
    add_printed(err, answer.messages);
    k_err_free(err);
    return answer;
}

}  // namespace describe
