// Hashing, base64, strict numbers, and texts that grow.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "k_str.h"

namespace {

TEST(Hash, IsDjb2) {
    EXPECT_EQ(k_str_get_hash(""), 5381u);
    EXPECT_EQ(k_str_get_hash(nullptr), 5381u);
    EXPECT_EQ(k_str_get_hash("a"), 5381u * 33 + 'a');
    EXPECT_EQ(k_str_get_hash("ifaces"), 70866320u);
    EXPECT_EQ(k_str_get_hash("Ifaces"), 3113501040u);
    EXPECT_EQ(k_str_get_hash("Users"), 239202135u);
}

TEST(Hash, TakesBytesAsUnsigned) {
    EXPECT_EQ(k_str_get_hash("\xff"), 5381u * 33 + 255);
}

struct Encoding {
    std::string plain;
    std::string encoded;
};

const Encoding kEncodings[] = {
    {"", ""},
    {"f", "Zg=="},
    {"fo", "Zm8="},
    {"foo", "Zm9v"},
    {"foob", "Zm9vYg=="},
    {"fooba", "Zm9vYmE="},
    {"foobar", "Zm9vYmFy"},
    {"admin", "YWRtaW4="},
    {"\xff\xff\xff", "////"},
    {"\xfb\xef\xbe", "++++"},
    {"\xd0\xbf\xd0\xb0\xd1\x80\xd0\xbe\xd0\xbb\xd1\x8c", "0L/QsNGA0L7Qu9GM"},
    {std::string(3000, 'M'),
     [] {
         std::string text;
         for (int i = 0; i < 1000; ++i) text += "TU1N";
         return text;
     }()},
};

// The result of a conversion that has to succeed; the pointer's own text.
std::string taken(int result, char* out) {
    EXPECT_EQ(result, 0);
    if (out == nullptr) return "(null)";
    std::string text = out;
    free(out);
    return text;
}

TEST(Base64, Encodes) {
    for (const Encoding& row : kEncodings) {
        char* out = nullptr;
        const int result = k_str_base64_encode(row.plain.c_str(), &out);
        EXPECT_EQ(taken(result, out), row.encoded);
    }
}

TEST(Base64, Decodes) {
    for (const Encoding& row : kEncodings) {
        char* out = nullptr;
        const int result = k_str_base64_decode(row.encoded.c_str(), &out);
        EXPECT_EQ(taken(result, out), row.plain);
    }
}

TEST(Base64, DecodesWhatItEncodesForEveryByteAtEveryPlace) {
    for (int byte = 1; byte < 256; ++byte) {
        for (size_t before = 0; before < 3; ++before) {
            const std::string plain = std::string(before, 'a') + static_cast<char>(byte);
            char* encoded = nullptr;
            char* decoded = nullptr;
            ASSERT_EQ(k_str_base64_encode(plain.c_str(), &encoded), 0);
            const int result = k_str_base64_decode(encoded, &decoded);
            EXPECT_EQ(taken(result, decoded), plain);
            free(encoded);
        }
    }
}

TEST(Base64, RefusesWhatNoEncoderWrites) {
    const char* const rows[] = {
        "Z",        "Zg",       "Zg=",      "Zm8",      "Zm9vY",                 // incomplete
        "Zg== ",    " Zg==",    "Zg==\n",   "Zm9v\r\n", "Zm 9",                  // white space
        "Zm9-",     "Zm9_",     "Zm9.",     "Zm9\xff",  "Zm%v",                  // outside the alphabet
        "====",     "Z===",     "=m9v",     "Z=9v",     "Zm=v",                  // padding in the wrong place
        "Zg==Zg==", "Zm8=Zm8=", "Zm9v====", "Zg=g",     "Zg==Zm9v",              // padding before the end
        "ZmE=ZmE=", "AA==",     "AGE=",     "YQBi",     "YWIA",     "YWJjAA==",  // a NUL byte inside
    };
    for (const char* text : rows) {
        char* out = nullptr;
        EXPECT_LT(k_str_base64_decode(text, &out), 0) << text;
        EXPECT_EQ(out, nullptr) << text;
    }
}

TEST(Base64, IgnoresSpareBitsOfTheLastDigit) {
    const struct {
        const char* encoded;
        const char* plain;
    } rows[] = {{"Zh==", "f"}, {"Zv==", "f"}, {"Zm9=", "fo"}, {"Zm+=", "fo"}};
    for (const auto& row : rows) {
        char* out = nullptr;
        const int result = k_str_base64_decode(row.encoded, &out);
        EXPECT_EQ(taken(result, out), row.plain) << row.encoded;
    }
}

TEST(Base64, RefusesNullArguments) {
    char* out = nullptr;
    EXPECT_LT(k_str_base64_encode(nullptr, &out), 0);
    EXPECT_LT(k_str_base64_decode(nullptr, &out), 0);
    EXPECT_LT(k_str_base64_encode("a", nullptr), 0);
    EXPECT_LT(k_str_base64_decode("YQ==", nullptr), 0);
    EXPECT_EQ(out, nullptr);
}

struct Number {
    const char* text;
    int base;
    unsigned long value;
};

TEST(StrictNumber, ReadsDigits) {
    const Number rows[] = {
        {"0", 10, 0},
        {"00", 10, 0},
        {"007", 10, 7},
        {"42", 10, 42},
        {"4294967295", 10, 4294967295ul},
        {"00000000000000000000000000000004294967295", 10, 4294967295ul},
        {"ff", 16, 255},
        {"FF", 16, 255},
        {"ffffffff", 16, 4294967295ul},
        {"101", 2, 5},
        {"777", 8, 511},
        {"zZ", 36, 35 * 36 + 35},
    };
    for (const Number& row : rows) {
        unsigned long value = 99;
        EXPECT_EQ(k_str_strict_strtoul(row.text, row.base, &value), 0) << row.text;
        EXPECT_EQ(value, row.value) << row.text;
    }
}

TEST(StrictNumber, RefusesEverythingElse) {
    const Number rows[] = {
        {"", 10, 0},
        {" 1", 10, 0},
        {"1 ", 10, 0},
        {"\t1", 10, 0},
        {"1\n", 10, 0},
        {"+1", 10, 0},
        {"-1", 10, 0},
        {"-0", 10, 0},
        {"1a", 10, 0},
        {"a", 10, 0},
        {"0x10", 16, 0},
        {"0x10", 10, 0},
        {"4294967296", 10, 0},
        {"1.0", 10, 0},
        {"18446744073709551616", 10, 0},
        {"18446744073709551617", 10, 0},
        {"100000000", 16, 0},
        {"2", 2, 0},
        {"8", 8, 0},
        {"g", 16, 0},
        {"1", 0, 0},
        {"1", 1, 0},
        {"1", 37, 0},
        {"1", -10, 0},
        {"\xd9\xa1", 10, 0},
        {"1,0", 10, 0},
        {"1/", 10, 0},
        {"1:", 10, 0},
        {"1@", 36, 0},
        {"1[", 36, 0},
        {"1`", 36, 0},
        {"1{", 36, 0},
        {nullptr, 10, 0},
    };
    for (const Number& row : rows) {
        unsigned long value = 99;
        EXPECT_NE(k_str_strict_strtoul(row.text, row.base, &value), 0) << (row.text ? row.text : "null");
        EXPECT_EQ(value, 99ul) << "a failure must leave the output alone";
    }
    EXPECT_NE(k_str_strict_strtoul("1", 10, nullptr), 0);
}

TEST(StringBuilder, StartsEmptyWithItsTextFirst) {
    k_string_t* string = string_init(0);
    ASSERT_NE(string, nullptr);
    EXPECT_EQ(static_cast<void*>(&string->text), static_cast<void*>(string));
    EXPECT_STREQ(string->text, "");
    EXPECT_EQ(string->length, 0u);
    string_free(string);
}

TEST(StringBuilder, GrowsAsTextIsAdded) {
    k_string_t* string = string_init_chars("ab");
    std::string expected = "ab";
    for (int i = 0; i < 1000; ++i) {
        const std::string piece(static_cast<size_t>(i % 7), static_cast<char>('a' + i % 26));
        EXPECT_EQ(string_add(string, piece.c_str()), 0);
        expected += piece;
        ASSERT_EQ(string->text, expected);
        ASSERT_EQ(string->length, expected.size());
        ASSERT_LT(string->length, string->capacity);
    }
    string_free(string);
}

TEST(StringBuilder, FillsItsCapacityToTheLastByte) {
    for (size_t length = 30; length < 35; ++length) {
        const std::string text(length, 'x');
        k_string_t* string = string_init_chars(text.c_str());
        EXPECT_EQ(string->text, text);
        EXPECT_EQ(string_add(string, "y"), 0);
        EXPECT_EQ(string->text, text + "y");
        string_free(string);
    }
}

TEST(StringBuilder, TakesOverAnotherString) {
    k_string_t* string = string_init_chars("one, ");
    EXPECT_EQ(string_add_string_new(string, string_init_chars("two")), 0);
    EXPECT_EQ(string_add_string_new(string, string_init(0)), 0);
    EXPECT_STREQ(string->text, "one, two");
    string_free(string);
}

TEST(StringBuilder, CanBeAddedToItself) {
    k_string_t* string = string_init_chars("abcdefghijklmnopqrst");
    EXPECT_EQ(string_add(string, string->text), 0);
    EXPECT_STREQ(string->text, "abcdefghijklmnopqrstabcdefghijklmnopqrst");
    EXPECT_EQ(string_add(string, string->text + 38), 0);
    EXPECT_EQ(string_add_string_new(string, string), 0);
    EXPECT_STREQ(string->text, "abcdefghijklmnopqrstabcdefghijklmnopqrststabcdefghijklmnopqrstabcdefghijklmnopqrstst");
    string_free(string);
}

TEST(StringBuilder, ToleratesNull) {
    k_string_t* string = string_init_chars(nullptr);
    ASSERT_NE(string, nullptr);
    EXPECT_STREQ(string->text, "");
    EXPECT_EQ(string_add(string, nullptr), 0);
    EXPECT_EQ(string_add(nullptr, "text"), 0);
    EXPECT_EQ(string_add_string_new(string, nullptr), 0);
    EXPECT_EQ(string_add_string_new(nullptr, string_init_chars("released")), 0);
    EXPECT_EQ(string_add_string_new(nullptr, nullptr), 0);
    EXPECT_STREQ(string->text, "");
    string_free(string);
    string_free(nullptr);
}

// No text of four billion bytes is needed to see that the length is checked before anything is touched.
TEST(StringBuilder, RefusesToPassItsLargestLength) {
    char text[] = "";
    k_string_t string = {text, UINT32_MAX - 2, UINT32_MAX};
    EXPECT_EQ(string_add(&string, "too long"), -1);
    EXPECT_EQ(string.text, text);
    EXPECT_EQ(string.length, UINT32_MAX - 2);
}

}  // namespace
