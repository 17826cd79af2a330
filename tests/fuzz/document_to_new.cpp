// A whole configuration to the new layout, alone and as the difference to another one. The bytes: the flags, a JSON
// text, NUL, growth.
#include "growth.h"
#include "k_cnvrt.h"
#include "k_conf.h"
#include "properties.h"
#include "step_failures.h"

namespace {

// The conversion of an empty configuration, to be the base of differences.
const Tree& plain_base() {
    static const Tree base = [] {
        const Tree empty{json_object()};
        return Tree{k_cnvrt_to_new(empty.get(), nullptr, 0, nullptr)};
    }();
    return base;
}

// With a base, the conversion gives what the base lacks.
void check_difference(json_t* source, uint8_t flags) {
    const Tree converted{k_cnvrt_to_new(source, nullptr, flags, nullptr)};
    if (converted == nullptr || levels_of(converted.get()) > K_CONF_MAX_LEVELS) return;
    const Tree difference{
        k_cnvrt_to_new(source, plain_base().get(), static_cast<uint8_t>(flags & ~K_CNVRT_MERGE_PATCH), nullptr)};
    const Tree applied{k_conf_apply(plain_base().get(), difference.get(), nullptr)};
    require(json_equal(applied.get(), converted.get()) != 0, "the base with its difference is the conversion", source);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Bytes bytes{{reinterpret_cast<const char*>(data), size}};
    const uint8_t flags = bytes.next();
    Tree source = read_tree(bytes.take_until('\0'));
    grow(source.get(), bytes, [flags](json_t* root) { Tree{k_cnvrt_to_new(root, nullptr, flags, nullptr)}; });
    check_difference(source.get(), flags);

    const auto to_new = [flags](json_t* root, k_err_t* err) {
        const StepFailures failures;
        Tree result{k_cnvrt_to_new(root, nullptr, flags, err)};
        return Returned{std::move(result), failures.count()};
    };
    check(to_new, std::move(source), OnFailure::kNothing);
    return 0;
}
