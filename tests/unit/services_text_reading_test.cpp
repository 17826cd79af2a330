// Reading a text that holds JSON, where each allocation of the parser fails in turn.
#include "services/text_reading.h"

#include <cstdlib>

#include "frame_memory.h"
#include "frame_tree.h"

using namespace kcnvrt;

namespace {

void* jansson_malloc(size_t size) {
    return malloc(size);
}

class TextReading : public testing::Test {
protected:
    TextReading() { json_set_alloc_funcs(jansson_malloc, free); }
    ~TextReading() override { json_set_alloc_funcs(malloc, free); }

    // With no failure, with each alone, and with each and all that follow.
    static void expect_whole_or_noted(const char* read) {
        const Json given{json_string(read)};
        const std::string whole = text(read_text(given.get()));
        long incomplete = 0;
        for (size_t allocation = 0; allocation < 60; ++allocation) {
            for (const bool is_alone : {true, false}) {
                const Messages messages;
                Json value;
                if (is_alone) {
                    const OneFailure failure{allocation};
                    value = read_text(given.get());
                } else {
                    const OutOfMemory failure{allocation};
                    value = read_text(given.get());
                }
                if (k_err_is_complete(messages) == 0)
                    ++incomplete;
                else
                    EXPECT_EQ(text(value), whole) << read << ", allocation " << allocation;
            }
        }
        EXPECT_GT(incomplete, 10) << read;
    }
};

TEST_F(TextReading, GivesObjectsAndArrays) {
    const Messages messages;
    EXPECT_EQ(text(read_text(tree("'{}'").get())), "{}");
    EXPECT_EQ(text(read_text(Json{json_string("[1, {\"a\": \"b\\nc\"}]")}.get())), "[1,{'a':'b\\nc'}]");
    EXPECT_EQ(text(read_text(Json{json_string("{\"a\": 1, \"a\": \"x\"}")}.get())), "{'a':'x'}");
    EXPECT_EQ(text(read_text(Json{json_string("[123456789012345678]")}.get())), "[123456789012345678]");
    EXPECT_EQ(k_err_is_complete(messages), 1);
}

TEST_F(TextReading, GivesNothingForAnythingElse) {
    const Messages messages;
    for (const char* value : {"''", "'x'", "'1'", "'{'", "'[1 2]'", "1", "null", "{}", "[]"})
        EXPECT_EQ(read_text(tree(value).get()), nullptr) << value;
    EXPECT_EQ(read_text(nullptr), nullptr);
    EXPECT_EQ(k_err_is_complete(messages), 1);
}

// Two of the failures leave a character out of the second text. (The parser itself does not survive every failure
// inside an escape or a number.)
TEST_F(TextReading, NotesWhatMemoryRanOutFor) {
    expect_whole_or_noted(R"({"IPAddress":"192.168.1.20","MACAddress":"00:00:5e:00:53:20","Interface":"br0"})");
    expect_whole_or_noted(R"({"IPAddress":"192.168.1.20","MACAddress":"00:00:5e:00:53:20 and much more text"})");
}

}  // namespace
