// Cutting streams into blocks, at every boundary.
#include "stream/splitter.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <random>
#include <string_view>

namespace kcnvrt {

namespace {

// A file in memory that has a name.
class NamedText {
public:
    explicit NamedText(std::string_view text) : file_(memfd_create("stream", 0)) {
        EXPECT_EQ(static_cast<ssize_t>(text.size()), write(file_, text.data(), text.size()));
    }
    ~NamedText() { close(file_); }
    NamedText(const NamedText&) = delete;
    NamedText& operator=(const NamedText&) = delete;

    std::string name() const { return "/proc/self/fd/" + std::to_string(file_); }

private:
    int file_;
};

// What a block ought to be, put together from blocks as they come.
class Seen {
public:
    void add(const Block& block, const std::string& file, Sizes sizes) {
        ASSERT_FALSE(block.failure);
        ASSERT_EQ(blocks_++, block.number);
        ASSERT_EQ(file, *block.file);
        ASSERT_EQ(text_.size(), block.offset);
        ASSERT_EQ(1U + static_cast<std::size_t>(std::count(text_.begin(), text_.end(), '\n')), block.line);
        const bool goes_on = block.kind == Block::Kind::kMiddle || block.kind == Block::Kind::kEnd;
        ASSERT_EQ(is_inside_, goes_on);
        is_inside_ = block.kind == Block::Kind::kStart || block.kind == Block::Kind::kMiddle;
        if (is_inside_) {
            ASSERT_EQ(std::string::npos, block.bytes.find('\n'));
        }
        if (block.kind == Block::Kind::kStart) {
            ASSERT_GT(block.bytes.size(), sizes.longest + 1);
        }
        // A piece ends with the line; of whole lines only the last in the file may have no line break.
        if (block.kind == Block::Kind::kEnd) {
            ASSERT_LE(std::count(block.bytes.begin(), block.bytes.end(), '\n'), 1);
        }
        ASSERT_TRUE(is_inside_ || is_last_ == false);
        is_last_ = !is_inside_ && !block.bytes.ends_with('\n');
        text_ += block.bytes;
    }

    const std::string& text() const { return text_; }
    bool is_inside() const { return is_inside_; }

private:
    std::string text_;
    std::size_t blocks_ = 0;
    bool is_inside_ = false;
    bool is_last_ = false;
};

void check(const std::string& text, Sizes sizes) {
    const NamedText file(text);
    const std::vector<std::string> files = {file.name()};
    Wake wake;
    Splitter splitter(files, sizes, wake, -1);
    Seen seen;
    Block block;
    while (splitter.next(block)) ASSERT_NO_FATAL_FAILURE(seen.add(block, files[0], sizes));
    ASSERT_EQ(text, seen.text());
    ASSERT_FALSE(seen.is_inside());
}

std::string random_text(std::mt19937& chance, std::size_t size) {
    constexpr std::string_view kBytes("\n\n\r{}x\"\0", 8);
    const std::size_t kinds = 1 + chance() % kBytes.size();
    const bool is_sparse = chance() % 2 == 0;
    std::string text;
    while (text.size() < size) text += is_sparse && chance() % 16 != 0 ? 'y' : kBytes[chance() % kinds];
    return text;
}

}  // namespace

TEST(Splitter, BlocksAreWholeLinesWhateverTheirSize) {
    std::mt19937 chance(1);
    for (int round = 0; round < 300; ++round) {
        const std::string text = random_text(chance, chance() % 200);
        for (const std::size_t block : {1U, 2U, 3U, 7U, 16U, 100U, 1000U})
            for (const std::size_t longest : {1U, 2U, 10U, 64U, 1000U})
                ASSERT_NO_FATAL_FAILURE(check(text, {block, longest})) << block << " " << longest << " " << text;
    }
}

TEST(Splitter, EveryBoundaryOfOneText) {
    const std::string text = "{\"a\":1}\r\n\n{\"b\":22}\n \n{\"ccc\":[1,2,3]}\n{}";
    for (std::size_t block = 1; block <= text.size() + 1; ++block)
        for (std::size_t longest = 1; longest <= text.size(); ++longest)
            ASSERT_NO_FATAL_FAILURE(check(text, {block, longest})) << block << " " << longest;
}

TEST(Splitter, FilesFollowOneAnother) {
    const NamedText first("a\nb");
    const NamedText empty("");
    const NamedText second("c\n");
    const std::vector<std::string> files = {first.name(), empty.name(), second.name()};
    Wake wake;
    Splitter splitter(files, {1000, 1000}, wake, -1);
    Block block;
    ASSERT_TRUE(splitter.next(block));
    EXPECT_EQ("a\nb", block.bytes);
    ASSERT_TRUE(splitter.next(block));
    EXPECT_EQ("c\n", block.bytes);
    EXPECT_EQ(files[2], *block.file);
    EXPECT_EQ(0U, block.offset);
    EXPECT_FALSE(splitter.next(block));
    EXPECT_FALSE(splitter.next(block));
}

TEST(Splitter, AFileThatCannotBeReadIsTheLastBlock) {
    const NamedText first("a\n");
    const std::vector<std::string> files = {first.name(), "/nowhere", first.name()};
    Wake wake;
    Splitter splitter(files, {}, wake, -1);
    Block block;
    ASSERT_TRUE(splitter.next(block));
    EXPECT_FALSE(block.failure);
    ASSERT_TRUE(splitter.next(block));
    EXPECT_TRUE(block.failure);
    EXPECT_EQ("", block.bytes);
    EXPECT_FALSE(splitter.next(block));
}

TEST(Splitter, ThereIsOneLargeBlockAtATime) {
    const std::string line = std::string(3 * kLargeRecord, 'x') + "\n";
    const NamedText file(line + line);
    const std::vector<std::string> files = {file.name()};
    Wake wake;
    Splitter splitter(files, {}, wake, -1);
    Block block;
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(splitter.next(block));
        EXPECT_EQ(line, block.bytes);
        EXPECT_TRUE(block.large.owns_lock());
        block = Block();
    }
    EXPECT_FALSE(splitter.next(block));
}

}  // namespace kcnvrt
