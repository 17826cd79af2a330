// result.h: what a request came to.
#pragma once

#include <k_cnvrt_text.h>
#include <k_err.h>

#include <memory>
#include <string_view>

#include "basis/buffer.h"
#include "basis/tree_memory.h"
#include "growing_array.h"
#include "json/position.h"
#include "secrets.h"

namespace kcnvrt::text {

struct FreeRecord {
    void operator()(k_err_t* record) const { k_err_free(record); }
};
using Record = std::unique_ptr<k_err_t, FreeRecord>;

// Its texts are literals, those of the result's record, or texts that the result keeps.
struct Problem {
    uint32_t which = K_TEXT_IN_REQUEST;
    uint32_t severity = K_TEXT_ERROR;
    Spot spot = {};
    size_t length = 0;
    const char* pointer = nullptr;
    const char* function = "";
    const char* message = "";
};

// Its texts are the result's.
struct Loss {
    uint32_t kind;
    Spot spot;
    size_t length;
    const char* pointer;
    const char* before;
    const char* after;
};

// Texts that live as long as their owner.
class KeptTexts {
public:
    KeptTexts() = default;
    ~KeptTexts();

    // A copy that ends with a NUL; null when memory ends.
    const char* keep(std::string_view text);

private:
    GrowingArray<char*> texts_;
};

// What is secret in a text: found when it is first asked for.
struct Secrets {
    GrowingArray<Span> spans;
    bool are_found = false;
};

}  // namespace kcnvrt::text

struct k_text_result {
    int status = K_TEXT_CONVERTED;
    const kcnvrt::text::TreeMemory* tree_memory = nullptr;  // set: trees are left as they are
    uint32_t operation = 0;
    uint32_t direction = 0;  // K_TEXT_TO_NEW, K_TEXT_TO_OLD, or 0
    bool shows_secrets = false;
    kcnvrt::text::Record record;
    kcnvrt::text::KeptTexts texts;
    kcnvrt::GrowingArray<kcnvrt::text::Problem> problems;
    kcnvrt::GrowingArray<kcnvrt::text::Loss> losses;
    kcnvrt::text::Buffer output;
    kcnvrt::text::Secrets secrets[2];  // of the text and of the other one
    kcnvrt::text::Buffer excerpt;

    // Ends the request without an output. A problem that finds no room makes it one of memory.
    void fail(int why, const kcnvrt::text::Problem& problem);
    void run_out_of_memory();
    void add(const kcnvrt::text::Problem& problem);
};
