// A whole configuration to the old layout. The bytes: the flags, a JSON text, NUL, growth.
#include "growth.h"
#include "k_cnvrt.h"
#include "properties.h"
#include "step_failures.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Bytes bytes{{reinterpret_cast<const char*>(data), size}};
    const uint8_t flags = bytes.next();
    Tree source = read_tree(bytes.take_until('\0'));
    grow(source.get(), bytes, [flags](json_t* root) { Tree{k_cnvrt_to_old(root, flags, nullptr)}; });

    const auto to_old = [flags](json_t* root, k_err_t* err) {
        const StepFailures failures;
        Tree result{k_cnvrt_to_old(root, flags, err)};
        return Returned{std::move(result), failures.count()};
    };
    check(to_old, std::move(source), OnFailure::kNothing);
    return 0;
}
