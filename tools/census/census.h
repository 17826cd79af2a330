// What happens to a fleet: for each place and kind of trouble how many devices have it.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace kcnvrt {

// One device has it at one place.
struct Finding {
    std::string kind;   // "error", "warning", or how something is lost
    std::string place;  // a pattern; "" is the whole configuration
    std::string id;     // of the device, as JSON
};

// A row of the report.
struct Trouble {
    std::string kind;
    std::string place;
    std::size_t devices;
    std::string example;  // the id of the first device
};

class Census {
public:
    // Each device has a finding once.
    void add(const Finding& finding);

    // Those that most devices have first.
    std::vector<Trouble> troubles() const;

private:
    struct Count {
        std::size_t devices = 0;
        std::string example;
    };

    std::map<std::pair<std::string, std::string>, Count> counts_;
};

}  // namespace kcnvrt
