// What the writer writes, and what it hands over or refuses.
#include "json/writer.h"

#include <gtest/gtest.h>

#include <string>

#include "tree.h"

namespace kcnvrt::text {

namespace {

constexpr Layout kCompact = {.compact = true};

std::string written(const json_t* value, Layout layout) {
    Buffer buffer;
    return write(value, layout, buffer) ? std::string{buffer.view()} : "refused";
}

Json arrays(int levels) {
    Json tree{json_array()};
    for (int i = 1; i < levels; ++i) tree.reset(json_pack("[o]", tree.release()));
    return tree;
}

Json text(std::string_view bytes) {
    return Json{json_stringn_nocheck(bytes.data(), bytes.size())};
}

struct Row {
    std::string_view bytes;
    std::string_view text;
};

class Writes : public testing::TestWithParam<Row> {};

TEST_P(Writes, String) {
    const Json value = text(GetParam().bytes);
    EXPECT_EQ(GetParam().text, written(value.get(), kCompact));
    EXPECT_EQ(GetParam().text, dumped(value.get(), JSON_COMPACT));
}

using namespace std::string_view_literals;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Writer, Writes, testing::Values(
    Row{"", R"("")"}, Row{"a", R"("a")"}, Row{"1234567", R"("1234567")"}, Row{"12345678", R"("12345678")"},
    Row{"123456789", R"("123456789")"}, Row{"\"\\/\b\f\n\r\t", R"("\"\\/\b\f\n\r\t")"},
    Row{"\x01\x1f\x7f", "\"\\u0001\\u001F\x7f\""}, Row{"a\0b"sv, R"("a\u0000b")"},
    Row{"1234567\"", R"("1234567\"")"}, Row{"12345678\"", R"("12345678\"")"},
    Row{"\u00e9\u20ac\U0001f600", "\"\u00e9\u20ac\U0001f600\""}, Row{"123456\u20ac", "\"123456\u20ac\""},
    Row{"\xC0\x80", "refused"}, Row{"\xED\xA0\x80", "refused"}, Row{"123456\xE2\x82", "refused"},
    Row{"\xF4\x90\x80\x80", "refused"}, Row{"\xFF", "refused"}));
// clang-format on

}  // namespace

TEST(Writer, EveryIndentIsThatOfJansson) {
    const Json tree{
        json_loads(R"({"a": [1, {"b": [], "c": {}}, [true, null, false]], "": {"d": -5}, "e": "x"})", 0, nullptr)};
    for (unsigned indent = 0; indent <= 31; ++indent)
        EXPECT_EQ(dumped(tree.get(), JSON_INDENT(indent)), written(tree.get(), {.indent = indent}));
    EXPECT_EQ(dumped(tree.get(), JSON_COMPACT), written(tree.get(), kCompact));
}

TEST(Writer, AnyValueStandsAtTheTop) {
    for (const char* const value :
         {"0", "-9223372036854775808", "9223372036854775807", "true", "false", "null", "[]", "{}"}) {
        const Json tree{json_loads(value, JSON_DECODE_ANY, nullptr)};
        EXPECT_EQ(value, written(tree.get(), {}));
    }
}

TEST(Writer, DeeperValuesAreWrittenByJansson) {
    for (const int levels : {2047, 2048, 2049, 2050, 4000}) {
        const Json tree = arrays(levels);
        EXPECT_EQ(dumped(tree.get(), JSON_COMPACT), written(tree.get(), kCompact)) << levels;
        EXPECT_EQ(dumped(tree.get(), JSON_INDENT(1)), written(tree.get(), {.indent = 1})) << levels;
    }
}

TEST(Writer, AValueInsideItselfIsRefused) {
    const Json outer{json_array()};
    json_t* const inner = json_object();
    json_array_append_new(outer.get(), inner);
    json_object_set(inner, "outer", outer.get());
    EXPECT_EQ("refused", written(outer.get(), kCompact));
    json_object_clear(inner);
}

TEST(Writer, ANameThatIsNoUtf8IsRefused) {
    const Json tree{json_object()};
    json_object_set_new_nocheck(tree.get(), "a\xFF", json_null());
    EXPECT_EQ("refused", written(tree.get(), {}));
}

TEST(Writer, ARefusalLeavesTheBufferAsItWas) {
    Buffer buffer;
    ASSERT_TRUE(buffer.append("before"));
    const Json tree{json_pack("[s, o]", std::string(10000, 'x').c_str(), text("\xFF").release())};
    EXPECT_FALSE(write(tree.get(), {}, buffer));
    EXPECT_EQ("before", buffer.view());
    EXPECT_TRUE(write(arrays(3000).get(), kCompact, buffer));
    EXPECT_EQ(6U + 6000, buffer.size());
}

}  // namespace kcnvrt::text
