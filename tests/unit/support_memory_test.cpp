// Every allocation fails once, alone and with all that follow: nothing crashes, nothing leaks, no half result is given.
//
// The linker's --wrap leads malloc, calloc, realloc, strdup and free here.
#include <cstdlib>
#include <functional>

#include "k_str.h"
#include "support_json.h"

extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* old, size_t size);
char* __real_strdup(const char* text);
void __real_free(void* memory);
void* __wrap_malloc(size_t size);
void* __wrap_calloc(size_t count, size_t size);
void* __wrap_realloc(void* old, size_t size);
char* __wrap_strdup(const char* text);
void __wrap_free(void* memory);
}

namespace {

using namespace support_test;

// The allocations of one run: how many succeed, whether those after the first failure do, and what is still held.
struct Budget {
    long before_failure = -1;  // below 0 when none is to fail
    bool only_once = false;
    bool has_failed = false;
    long held = 0;

    bool grants() {
        if (before_failure < 0 || before_failure-- > 0) return true;
        before_failure = only_once ? -1 : 0;
        has_failed = true;
        return false;
    }
    void* count(void* memory) {
        if (memory != nullptr) ++held;
        return memory;
    }
};

Budget budget;

}  // namespace

void* __wrap_malloc(size_t size) {
    return budget.grants() ? budget.count(__real_malloc(size)) : nullptr;
}
void* __wrap_calloc(size_t count, size_t size) {
    return budget.grants() ? budget.count(__real_calloc(count, size)) : nullptr;
}
void* __wrap_realloc(void* old, size_t size) {
    if (!budget.grants()) return nullptr;
    void* memory = __real_realloc(old, size);
    return old == nullptr ? budget.count(memory) : memory;
}
char* __wrap_strdup(const char* text) {
    return budget.grants() ? static_cast<char*>(budget.count(__real_strdup(text))) : nullptr;
}
void __wrap_free(void* memory) {
    if (memory != nullptr) --budget.held;
    __real_free(memory);
}

namespace {

class Memory : public testing::Test {
protected:
    void SetUp() override {
        json_get_alloc_funcs(&malloc_, &free_);
        json_set_alloc_funcs(__wrap_malloc, __wrap_free);
    }
    void TearDown() override { json_set_alloc_funcs(malloc_, free_); }

    // Runs `work` until it gets by without a failure. It is told whether one has happened, once its results are there.
    static void fail_each(const std::function<void(const bool& has_failed)>& work) {
        for (const bool only_once : {true, false}) {
            long runs = 0;
            for (bool failed = true; failed; ++runs) {
                budget = {runs, only_once, false, 0};
                work(budget.has_failed);
                failed = budget.has_failed;
                const long held = budget.held;
                budget = {};
                ASSERT_EQ(held, 0) << "held after failure " << runs;
            }
            EXPECT_GT(runs, 1) << "no allocation was made to fail";
        }
    }

private:
    json_malloc_t malloc_ = nullptr;
    json_free_t free_ = nullptr;
};

TEST_F(Memory, OfARecordThatDropsMessages) {
    fail_each([](const bool& has_failed) {
        k_err_t* err = k_err_new();
        for (int i = 0; i < 40; ++i) k_err_set(err, "f", i, "message %d", i);
        const size_t count = k_err_count(err);
        EXPECT_EQ(count == 40, !has_failed);
        for (size_t i = 0; i < count; ++i) {
            EXPECT_EQ(k_err_message(err, i), "message " + std::to_string(k_err_line(err, i)));
        }
        EXPECT_EQ(k_err_is_complete(err) != 0, !has_failed);
        k_err_free(err);
    });
}

// Before a failure every message has its place; after one some have none, and the record knows why.
TEST_F(Memory, OfPlaces) {
    Json root{json_array()};
    for (int i = 0; i < 40; ++i) json_array_append_new(root.get(), json_pack("{s:{s:i}}", "a", "b", i));
    fail_each([&root](const bool& has_failed) {
        k_err_t* err = k_err_new();
        for (size_t i = 0; i < 40; ++i) {
            k_err_set(err, "f", static_cast<int>(i), "text");
            k_err_place(err, json_object_get(json_array_get(root.get(), i), "a"), "b", 1);
        }
        k_err_locate(err, 0, root.get());
        size_t placed = 0;
        for (size_t i = 0; i < k_err_count(err); ++i) {
            const char* pointer = k_err_pointer(err, i);
            if (pointer == nullptr) continue;
            ++placed;
            EXPECT_EQ(pointer, "/" + std::to_string(k_err_line(err, i)) + "/a/b");
        }
        EXPECT_EQ(placed == 40, !has_failed);
        EXPECT_EQ(k_err_is_complete(err) != 0, !has_failed);
        k_err_free(err);
    });
}

TEST_F(Memory, OfLinesThatAreKept) {
    fail_each([](const bool& has_failed) {
        k_err_t* err = k_err_new();
        k_err_keep_printed(err);
        if (err != nullptr)
            for (int i = 0; i < 20; ++i) k_err_print(err, "a line");
        EXPECT_EQ(k_err_printed_count(err) == 20, !has_failed);
        EXPECT_EQ(k_err_is_complete(err) != 0, !has_failed);
        k_err_free(err);
    });
}

TEST_F(Memory, OfStrings) {
    fail_each([](const bool& has_failed) {
        k_string_t* string = string_init_chars("one");
        const int added = string_add(string, ", and a text that is longer than any string is when it starts");
        if (string != nullptr && added != 0) {
            EXPECT_STREQ(string->text, "one");
        }
        const int taken = string_add_string_new(string, string_init_chars("two"));
        EXPECT_LE(taken, 0);
        if (!has_failed) {
            EXPECT_STREQ(string->text, "one, and a text that is longer than any string is when it startstwo");
        }
        string_free(string);
    });
}

TEST_F(Memory, OfBase64) {
    for (const auto convert : {k_str_base64_encode, k_str_base64_decode}) {
        fail_each([&](const bool& has_failed) {
            char* out = nullptr;
            EXPECT_EQ(convert("YWRtaW4=", &out) < 0, has_failed);
            EXPECT_EQ(out == nullptr, has_failed);
            __wrap_free(out);
        });
    }
}

constexpr char kBase[] = R"({"a":{"b":[1,{"c":[1,2,3],"d/~":null},[4]],"e":"x"},"f":[{"g":1}],"h":{"i":{}}})";
constexpr char kCandidate[] = R"({"a":{"b":[1,{"c":[0,1,2,3],"d/~":5},[4],6],"j":"y"},"f":[],"h":{"i":{"k":{}}}})";

// The sources are made, and the result is looked at, without failures.
void fail_each_allocation_of(const Json& one, const Json& other, json_t* (*work)(json_t*, json_t*, k_err_t*),
                             const std::string& expected,
                             const std::function<void(std::function<void(const bool&)>)>& run) {
    const std::string one_text = dump(one);
    const std::string other_text = dump(other);
    run([&](const bool& has_failed) {
        Errors err{k_err_new()};
        Json result{work(one.get(), other.get(), err.get())};
        const bool failed = has_failed;
        EXPECT_TRUE(result != nullptr || k_err_is_complete(err.get()) == 0);
        const Budget at_the_end = budget;
        budget.before_failure = -1;
        EXPECT_TRUE(failed || result != nullptr);
        EXPECT_EQ(result == nullptr ? expected : dump(result), expected);
        EXPECT_TRUE(result == nullptr || k_err_count(err.get()) == 0);
        for (size_t i = 0; i < k_err_count(err.get()); ++i) {
            const std::string message = k_err_message(err.get(), i);
            EXPECT_TRUE(message.find("ut of memory") != std::string::npos) << message;
        }
        budget.before_failure = at_the_end.before_failure;
    });
    EXPECT_EQ(dump(one), one_text);
    EXPECT_EQ(dump(other), other_text);
}

json_t* patch(json_t* base, json_t* candidate, k_err_t* err) {
    return k_conf_diff_set2(base, candidate, 0, K_CONF_JSON_PATCH, err);
}
json_t* merge(json_t* base, json_t* candidate, k_err_t* err) {
    return k_conf_diff_set2(base, candidate, 0, K_CONF_MERGE_PATCH, err);
}

TEST_F(Memory, OfDifferences) {
    const Json base = parse(kBase);
    const Json candidate = parse(kCandidate);
    const Json list = parse("[1]");
    for (const auto work : {patch, merge}) {
        fail_each_allocation_of(base, candidate, work, dump(Json{work(base.get(), candidate.get(), nullptr)}),
                                fail_each);
        fail_each_allocation_of(list, candidate, work, dump(Json{work(list.get(), candidate.get(), nullptr)}),
                                fail_each);
        fail_each_allocation_of(base, base, work, work == patch ? "[]" : "{}", fail_each);
    }
}

TEST_F(Memory, OfApplication) {
    const Json base = parse(kBase);
    const Json candidate = parse(kCandidate);
    for (const auto work : {patch, merge}) {
        const Json difference{work(base.get(), candidate.get(), nullptr)};
        fail_each_allocation_of(base, difference, k_conf_apply, dump(candidate), fail_each);
    }
    const Json operations =
        parse(R"([{"op":"copy","from":"/a","path":"/a/x"},{"op":"move","from":"/f/0","path":"/h/i/m"},
        {"op":"test","path":"/h/i/m/g","value":1},{"op":"add","path":"/a/x/b/1/c/-","value":{}},
        {"op":"remove","path":"/a/b"},{"op":"replace","path":"/a/x/b/2/0","value":[7]},
        {"op":"copy","from":"","path":"/h/root"},{"op":"remove","path":"/h/root/a"}])");
    const std::string result = R"({"a":{"e":"x","x":{"b":[1,{"c":[1,2,3,{}],"d/~":null},[[7]]],"e":"x"}},"f":[],)"
                               R"("h":{"i":{"m":{"g":1}},"root":{"f":[],"h":{"i":{"m":{"g":1}}}}}})";
    fail_each_allocation_of(base, operations, k_conf_apply, result, fail_each);
}

// An array that outgrows the room it has, and a document that becomes another.
TEST_F(Memory, OfApplicationToTheWholeDocument) {
    const Json base = parse("[1,2,3,4,5,6,7,8]");
    const Json operations = parse(R"([{"op":"add","path":"/0","value":0},{"op":"copy","from":"","path":"/-"},
        {"op":"add","path":"","value":{"all":[1]}},{"op":"add","path":"/all/-","value":2}])");
    fail_each_allocation_of(base, operations, k_conf_apply, R"({"all":[1,2]})", fail_each);
}

}  // namespace
