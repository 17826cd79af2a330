// The examples cut into small documents, and the worst that each kind of forged document cost.
#include "hostile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

#include "conversions.h"
#include "examples.h"
#include "sampling.h"

namespace {

// Objects whose members make a part each, in each layout.
constexpr const char* kDivided[] = {"ifaces", "Device", "Device/Ifaces", "Device/Services"};

bool is_divided(const std::string& path) {
    for (const char* divided : kDivided)
        if (path == divided) return true;
    return false;
}

// A value at the end of a path of new objects.
Tree at_path(const std::string& path, json_t* value) {
    const size_t end = path.find('/');
    Tree object{json_object()};
    json_t* member = end == path.npos ? json_deep_copy(value) : at_path(path.substr(end + 1), value).release();
    json_object_set_new(object.get(), path.substr(0, end).c_str(), member);
    return object;
}

void add_parts(std::vector<Part>& parts, Direction direction, json_t* object, const std::string& path) {
    const char* name;
    json_t* value;
    json_object_foreach(object, name, value) {
        const std::string own_path = path.empty() ? name : path + "/" + name;
        if (is_divided(own_path))
            add_parts(parts, direction, value, own_path);
        else
            parts.push_back({own_path, direction, at_path(own_path, value)});
    }
}

Cost of_all;

// A row of the documentation's table.
void print_row(const std::string& kind, const Cost& cost) {
    std::printf("| %s | %zu | %zu | %.1f ms | %.1f KiB |\n", kind.c_str(), cost.documents, cost.rejected,
                cost.seconds * 1000, static_cast<double>(cost.bytes) / 1024);
}

class LastRow : public testing::Environment {
public:
    void TearDown() override { print_row("all", of_all); }
};

[[maybe_unused]] testing::Environment* const kLastRow = testing::AddGlobalTestEnvironment(new LastRow);

}  // namespace

std::vector<Part> parts_of_examples() {
    std::vector<Part> parts;
    add_parts(parts, Direction::kToNew, old_example().get(), "");
    add_parts(parts, Direction::kToOld, new_example().get(), "");
    return parts;
}

void for_each_place(size_t step, const std::function<void(Part& part, const Place& place)>& visit) {
    size_t count = 0;
    for (Part& part : parts_of_examples())
        for (const Place& place : places_in(part.document.get()))
            if (count++ % step == 0) visit(part, place);
}

Conduct convert_with(Part& part, const Place& place, json_t* value, const char* what) {
    const Replacement replacement{place, value};
    return expect_contract(part.direction, part.document.get(), place.path + " as " + what);
}

Conduct Worst::add(const Conduct& conduct) {
    cost_.add({1, conduct.has_result ? 0u : 1u, conduct.seconds, conduct.bytes});
    return conduct;
}

void Cost::add(const Cost& other) {
    documents += other.documents;
    rejected += other.rejected;
    seconds = std::max(seconds, other.seconds);
    bytes = std::max(bytes, other.bytes);
}

Worst::~Worst() {
    print_row(kind_, cost_);
    of_all.add(cost_);
    // A sample of every tenth is rounded down for each of the loops that take it.
    const size_t share = stride(1) == 1 ? expected_.documents : expected_.documents / stride(1) * 9 / 10;
    EXPECT_GE(cost_.documents, share) << kind_;
    EXPECT_LE(cost_.bytes, expected_.kib * 1024) << kind_;
}
