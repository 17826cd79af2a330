// bytes.h: decisions, read from the fuzzer's bytes one after the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

class Bytes {
public:
    explicit Bytes(std::string_view rest) : rest_{rest} {}

    bool are_used_up() const { return rest_.empty(); }

    // 0 once they are used up.
    uint8_t next() {
        if (rest_.empty()) return 0;
        const auto byte = static_cast<uint8_t>(rest_.front());
        rest_.remove_prefix(1);
        return byte;
    }
    uint16_t next_pair() {
        const unsigned high = next();
        return static_cast<uint16_t>(high << 8 | next());
    }
    // Below `bound`, which is at most 65,536 and not 0.
    size_t below(size_t bound) { return (bound <= 256 ? next() : next_pair()) % bound; }

    // As many bytes as are left, at most `length`.
    std::string_view take(size_t length) {
        const std::string_view taken = rest_.substr(0, length);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    // Everything before the first `end`, which is passed over too; all that is left where there is none.
    std::string_view take_until(char end) {
        const std::string_view taken = rest_.substr(0, rest_.find(end));
        rest_.remove_prefix(taken.size() < rest_.size() ? taken.size() + 1 : taken.size());
        return taken;
    }

private:
    std::string_view rest_;
};
