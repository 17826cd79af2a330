// The text layer on many threads at once.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "ask.h"

namespace {

TEST(TextConversion, RunsOnManyThreadsAtOnce) {
    k_text_request_t request = request_for(K_TEXT_SECTION_TO_NEW, R"({"wan2": 20, "wan1": 10})");
    request.section = "wan_pvid";
    std::vector<std::thread> threads;
    std::vector<std::string> outputs(4);
    for (std::string& output : outputs)
        threads.emplace_back([&output, request] {
            for (int i = 0; i < 200; ++i) output = output_of(ask(request));
        });
    for (std::thread& thread : threads) thread.join();
    for (const std::string& output : outputs)
        EXPECT_EQ(output, R"({"1":{"name":"wan1","pvid":10},"2":{"name":"wan2","pvid":20},"max_instance":2})");
}

}  // namespace
