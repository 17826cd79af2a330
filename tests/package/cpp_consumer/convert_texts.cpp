// A C++ program that uses an installed copy for texts.
#include <k_cnvrt_text.h>

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>

struct Free {
    void operator()(k_text_result_t* result) const { k_text_free(result); }
};

int main(int, char** argv) {
    k_text_request_t request = k_text_request_t();
    request.size = sizeof request;
    request.operation = K_TEXT_TO_NEW;
    request.indent = K_TEXT_COMPACT;
    request.text = argv[1];
    request.text_length = std::strlen(argv[1]);
    const std::unique_ptr<k_text_result_t, Free> result(k_text_run(&request));
    const char* const output = k_text_output(result.get(), nullptr);
    if (output == nullptr) return EXIT_FAILURE;
    std::cout << output << '\n';
    return EXIT_SUCCESS;
}
