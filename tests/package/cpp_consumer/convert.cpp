// A C++ program that uses an installed copy.
#include <k_cnvrt.h>

#include <cstdlib>
#include <iostream>
#include <memory>

struct Release {
    void operator()(json_t* value) const { json_decref(value); }
    void operator()(k_err_t* err) const { k_err_free(err); }
};
using Json = std::unique_ptr<json_t, Release>;

int main(int, char** argv) {
    const std::unique_ptr<k_err_t, Release> err(k_err_new());
    const Json old_root(json_loads(argv[1], JSON_REJECT_DUPLICATES, nullptr));
    const Json new_root(k_cnvrt_to_new(old_root.get(), nullptr, 0, err.get()));
    if (!new_root) return EXIT_FAILURE;

    const std::unique_ptr<char, decltype(&std::free)> text(json_dumps(new_root.get(), JSON_COMPACT), std::free);
    std::cout << text.get() << '\n';
    return EXIT_SUCCESS;
}
