// Cuts the input into blocks of whole lines.
#pragma once

#include <exception>
#include <mutex>
#include <string>
#include <vector>

#include "wake.h"

namespace kcnvrt {

// A record above this size is converted while no other one is, so that not every thread needs memory for one.
inline constexpr std::size_t kLargeRecord = std::size_t{1024} * 1024;

struct Block {
    enum class Kind {
        kLines,  // each of them whole; the last one of a file may have no line break
        kStart,  // of a line that is longer than a record may be
        kMiddle,
        kEnd,  // with its line break, where it has one
    };

    std::size_t number = 0;  // from 0, in the order of the input
    Kind kind = Kind::kLines;
    const std::string* file = nullptr;
    std::size_t line = 1;    // of the first byte, in the file
    std::size_t offset = 0;  // of the first byte, in the file
    std::string bytes;
    std::unique_lock<std::mutex> large;  // held by the one large block that there is
    std::exception_ptr failure;          // why there is no more; there are no bytes then
};

struct Sizes {
    std::size_t block = std::size_t{256} * 1024;          // to be read at a time, at most kLargeRecord
    std::size_t longest = std::size_t{64} * 1024 * 1024;  // that a record may be
};

class Splitter {
public:
    // `output` is the descriptor whose reader may go away, -1 where there is none.
    Splitter(const std::vector<std::string>& files, Sizes sizes, Wake& wake, int output);
    ~Splitter();
    Splitter(const Splitter&) = delete;
    Splitter& operator=(const Splitter&) = delete;

    // The next block; may be called by any thread. False at the end of the input, and when the run is over.
    bool next(Block& block);

private:
    bool find_block(Block& block);
    bool open_next();
    void close_file();
    bool fill(Block& block);
    bool is_full(const Block& block, std::size_t end) const;
    void lock_if_large(Block& block);
    bool read_more(std::string& bytes);
    void cut(Block& block, std::size_t end);

    const std::vector<std::string>& files_;
    const Sizes sizes_;
    Wake& wake_;
    const int output_;
    std::mutex reading_;
    std::mutex large_;
    std::size_t file_ = 0;  // the next one
    int descriptor_ = -1;
    bool waits_ = false;      // reading may have to wait for somebody
    bool is_inside_ = false;  // of a line that is too long
    bool is_over_ = false;
    std::size_t number_ = 0;
    std::size_t line_ = 1;
    std::size_t offset_ = 0;
    std::string rest_;  // what was read behind the last block
};

}  // namespace kcnvrt
