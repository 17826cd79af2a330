#include "splitter.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "disk/input.h"
#include "failure.h"

namespace kcnvrt {

namespace {

constexpr std::size_t kNowhere = std::string::npos;

[[noreturn]] void fail_to_read(const std::string& file) {
    throw Failure{kUnusableFile, file, "read", std::strerror(errno)};
}

bool is_regular(int descriptor) {
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

Splitter::Splitter(const std::vector<std::string>& files, Sizes sizes, Wake& wake, int output)
    : files_(files), sizes_(sizes), wake_(wake), output_(output) {}

Splitter::~Splitter() {
    close_file();
}

bool Splitter::next(Block& block) {
    const std::lock_guard<std::mutex> lock(reading_);
    if (is_over_) return false;
    block.bytes.clear();
    try {
        is_over_ = !find_block(block);
        if (is_over_) return false;
    } catch (...) {
        is_over_ = true;
        block.bytes.clear();
        block.failure = std::current_exception();
    }
    block.number = number_++;
    return true;
}

bool Splitter::find_block(Block& block) {
    do {
        if (descriptor_ < 0 && !open_next()) return false;
        block.file = &files_[file_ - 1];
        block.line = line_;
        block.offset = offset_;
    } while (!fill(block));
    return true;
}

bool Splitter::open_next() {
    if (file_ == files_.size()) return false;
    const std::string& file = files_[file_++];
    descriptor_ = file == kStandardStream ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor_ < 0) fail_to_read(file);
    waits_ = !is_regular(descriptor_);
    line_ = 1;
    offset_ = 0;
    return true;
}

void Splitter::close_file() {
    if (descriptor_ > STDIN_FILENO) close(descriptor_);
    descriptor_ = -1;
}

// False where the file ends and nothing is left.
bool Splitter::fill(Block& block) {
    block.bytes.swap(rest_);
    rest_.clear();
    const bool was_inside = is_inside_;
    std::size_t line_break = is_inside_ ? block.bytes.find('\n') : block.bytes.rfind('\n');
    std::size_t searched = block.bytes.size();
    bool is_read = true;
    while (!is_full(block, line_break) && (is_read = read_more(block.bytes))) {
        const std::string_view more = std::string_view(block.bytes).substr(searched);
        const std::size_t found = is_inside_ ? more.find('\n') : more.rfind('\n');
        if (found != kNowhere) line_break = searched + found;
        searched = block.bytes.size();
        if (line_break == kNowhere) lock_if_large(block);
    }
    lock_if_large(block);
    is_inside_ = is_read && line_break == kNowhere;
    block.kind = was_inside ? (is_inside_ ? Block::Kind::kMiddle : Block::Kind::kEnd)
                            : (is_inside_ ? Block::Kind::kStart : Block::Kind::kLines);
    cut(block, line_break == kNowhere || !is_read ? block.bytes.size() : line_break + 1);
    if (!is_read) close_file();
    return !block.bytes.empty() || block.kind == Block::Kind::kEnd;
}

// Blocks are smaller than that, unless they are one record.
void Splitter::lock_if_large(Block& block) {
    if (block.bytes.size() > kLargeRecord && !block.large.owns_lock())
        block.large = std::unique_lock<std::mutex>(large_);
}

// Of a line that is too long each piece goes on at once. What is there is not held back while the input stalls.
bool Splitter::is_full(const Block& block, std::size_t line_break) const {
    const std::size_t size = block.bytes.size();
    if (is_inside_) return size > 0;
    if (line_break == kNowhere) return size > std::max(sizes_.longest + 1, sizes_.block);
    return size >= sizes_.block || (waits_ && !has_input(descriptor_));
}

// False at the end of the file.
bool Splitter::read_more(std::string& bytes) {
    const std::size_t before = bytes.size();
    const std::size_t room = before < sizes_.block ? sizes_.block - before : sizes_.block;
    bytes.resize(before + room);
    ssize_t got;
    do {
        if (waits_ && !wake_.wait_for(descriptor_, output_)) throw ClosedPipe{};
        got = read(descriptor_, bytes.data() + before, room);
    } while (got < 0 && errno == EINTR);
    bytes.resize(before + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    if (got < 0) fail_to_read(files_[file_ - 1]);
    return got > 0;
}

void Splitter::cut(Block& block, std::size_t end) {
    rest_.assign(block.bytes, end, kNowhere);
    block.bytes.resize(end);
    line_ += static_cast<std::size_t>(std::count(block.bytes.begin(), block.bytes.end(), '\n'));
    offset_ += end;
}

}  // namespace kcnvrt
