// A configuration that goes to the other layout and back comes back as it was, less the losses that losses.json declares.
//
// Each section of the examples is a test in each direction: generated documents of that section are converted there and
// back as whole documents, without a message, and compared member by member with what the losses leave of them.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <ostream>

#include "effort.h"
#include "generator.h"
#include "k_cnvrt.h"
#include "losses.h"
#include "silence.h"
#include "table_visits.h"

namespace {

const std::vector<Row>& values() {
    static const std::vector<Row> rows = load_rows(KCNVRT_LAWS "/values.json");
    return rows;
}

const std::vector<Row>& losses() {
    static const std::vector<Row> rows = load_rows(KCNVRT_LAWS "/losses.json");
    return rows;
}

Tree load(const std::string& path) {
    json_error_t error;
    Tree tree{json_load_file(path.c_str(), JSON_REJECT_DUPLICATES, &error)};
    if (tree == nullptr) std::fprintf(stderr, "%s:%d: %s\n", path.c_str(), error.line, error.text);
    return tree;
}

// A section of an example at its place in a document.
struct Section {
    std::string name;
    Side side;
    std::shared_ptr<json_t> example;
};

// Members of the old root that make one section of the new layout together.
const std::vector<std::vector<std::string>> kOldGroups = {
    {"max_table_id", "pppoe_pass_through", "usbmodem_autoconnect", "phys_ifaces", "ppp_inf", "lan", "ifaces"},
    {"passwd", "sysusers"},
    {"users", "sysusers"},
    {"dns", "dns6"},
    {"add_sets", "lang", "tr069"},
};

std::vector<std::string> group_of(const std::string& name, json_t* document) {
    for (const auto& group : kOldGroups)
        for (const std::string& member : group)
            if (member == name && (name != "sysusers" || json_object_get(document, group[0].c_str()) != nullptr))
                return group;
    return {name};
}

void PrintTo(const Section& section, std::ostream* out) {
    *out << section.name;
}

Section section_of(std::string name, Side side, Tree example) {
    return {std::move(name), side, {example.release(), json_decref}};
}

void add_old_sections(std::vector<Section>& sections, json_t* document, const std::string& suffix) {
    const char* name;
    json_t* value;
    json_object_foreach(document, name, value) {
        const auto group = group_of(name, document);
        Tree part{json_object()};
        bool is_first = true;
        for (const std::string& member : group) {
            json_t* there = json_object_get(document, member.c_str());
            if (there == nullptr) continue;
            is_first = is_first && (json_object_size(part.get()) > 0 || member == name);
            json_object_set_new(part.get(), member.c_str(), json_deep_copy(there));
        }
        if (is_first) sections.push_back(section_of(name + suffix, Side::kOld, std::move(part)));
    }
}

void add_new_sections(std::vector<Section>& sections, json_t* document, const std::string& suffix) {
    const char* name;
    json_t* value;
    json_t* services = json_object_get(json_object_get(document, "Device"), "Services");
    json_object_foreach(services, name, value) sections.push_back(
        section_of(std::string{"Services_"} + name + suffix, Side::kNew,
                   Tree{json_pack("{s:{s:{s:o}}}", "Device", "Services", name, json_deep_copy(value))}));
    json_object_foreach(json_object_get(document, "Device"), name, value) {
        if (value == services) continue;
        sections.push_back(
            section_of(name + suffix, Side::kNew, Tree{json_pack("{s:{s:o}}", "Device", name, json_deep_copy(value))}));
    }
    json_object_foreach(document, name, value) {
        if (std::string{name} == "Device") continue;
        sections.push_back(section_of(name + suffix, Side::kNew,
                                      Tree{json_pack("{s:o, s:{}}", name, json_deep_copy(value), "Device")}));
    }
}

// What that example has in another form than the first: quality of service, and the users.
Tree other_generation(Tree document) {
    const auto keep = [](json_t* object, const std::vector<std::string>& names) {
        Tree kept{json_object()};
        for (const std::string& name : names)
            if (json_t* value = json_object_get(object, name.c_str())) json_object_set(kept.get(), name.c_str(), value);
        return kept;
    };
    Tree device = keep(json_object_get(document.get(), "Device"), {"QoS", "Users"});
    if (json_object_size(device.get()) == 0) return keep(document.get(), {"qos", "passwd"});
    return Tree{json_pack("{s:o}", "Device", device.release())};
}

std::vector<Section> sections() {
    std::vector<Section> sections;
    add_old_sections(sections, load(KCNVRT_EXAMPLES "/home-gateway.old.json").get(), "");
    add_old_sections(sections, other_generation(load(KCNVRT_EXAMPLES "/dsl-gateway.old.json")).get(),
                     "_of_other_generation");
    add_new_sections(sections, load(KCNVRT_EXAMPLES "/home-gateway.new.json").get(), "");
    add_new_sections(sections, other_generation(load(KCNVRT_EXAMPLES "/dsl-gateway.new.json")).get(),
                     "_of_other_generation");
    return sections;
}

struct Converted {
    Tree document;
    std::string messages;
};

template <class Convert>
Converted converted(Convert convert) {
    const Silence silence;
    k_err_t* err = k_err_new();
    Converted result{Tree{convert(err)}, ""};
    for (size_t i = 0; i < k_err_count(err); ++i)
        result.messages += std::string{k_err_function(err, i)} + ": " + k_err_message(err, i) + "\n";
    k_err_free(err);
    return result;
}

Converted converted_from(Side side, json_t* document, uint8_t flags) {
    return converted([=](k_err_t* err) {
        return side == Side::kOld ? k_cnvrt_to_new(document, nullptr, flags, err)
                                  : k_cnvrt_to_old(document, flags, err);
    });
}

// What is wrong with the way of one document there and back; "" when nothing is.
std::string defect_of(Side side, json_t* document, uint8_t flags, const Losses& losses) {
    const Converted there = converted_from(side, document, flags);
    if (there.document == nullptr || !there.messages.empty()) return "there: " + there.messages;
    const Side other = side == Side::kOld ? Side::kNew : Side::kOld;
    const Converted back = converted_from(other, there.document.get(), flags);
    if (back.document == nullptr || !back.messages.empty()) return "back: " + back.messages;
    const Tree expected = losses.apply_to(document);
    return first_difference(expected.get(), back.document.get());
}

// An old document needs users to come back: a new one without "version" is rejected.
void complete(Side side, json_t* document) {
    const bool has_users =
        json_object_get(document, "passwd") != nullptr || json_object_get(document, "users") != nullptr;
    if (side == Side::kOld && !has_users) json_object_set_new(document, "passwd", json_array());
}

class Laws : public testing::TestWithParam<Section> {};

// A sanitized build makes too few documents for that.
bool are_all_visited() {
    return repetitions(200) == 200;
}

struct Totals {
    size_t documents = 0;
    size_t fields = 0;
    size_t branches = 0;
};
Totals totals;

TEST_P(Laws, ComeBackButForTheDeclaredLosses) {
    const Section& section = GetParam();
    Generator generator{section.side, values(), 1};
    const Losses declared{section.side, losses(), section.example.get()};
    const size_t documents = repetitions(is_thorough() ? 5000 : 200);
    for (size_t i = 0; i < documents; ++i) {
        const Tree document = generator.like(section.example.get());
        complete(section.side, document.get());
        ASSERT_EQ("", defect_of(section.side, document.get(), 0, declared)) << text_of(document.get());
    }
    if (are_all_visited()) {
        for (const std::string& field : generator.unvisited()) ADD_FAILURE() << "never visited: " << field;
    }
    totals.documents += documents;
    totals.fields += generator.visits().fields();
    totals.branches += generator.visits().branches();
}

INSTANTIATE_TEST_SUITE_P(Section, Laws, testing::ValuesIn(sections()), [](const auto& tested) {
    std::string name = tested.param.name + (tested.param.side == Side::kOld ? "_from_old" : "_from_new");
    for (char& character : name)
        if (std::isalnum(static_cast<unsigned char>(character)) == 0) character = '_';
    return name;
});

std::string with_bars_escaped(const std::string& text) {
    std::string escaped;
    for (const char character : text) escaped += character == '|' ? "\\|" : std::string{character};
    return escaped;
}

std::string readable(const json_t* value) {
    const std::unique_ptr<char, void (*)(void*)> text{json_dumps(value, JSON_ENCODE_ANY), std::free};
    return text.get();
}

std::string joined(json_t* list, std::string (*text)(const json_t* element)) {
    std::string all;
    for (size_t i = 0; i < json_array_size(list); ++i) all += (i == 0 ? "" : ", ") + text(json_array_get(list, i));
    return with_bars_escaped(all);
}

// A loss as a line of the table in the documentation.
std::string line_of(const Row& row) {
    const auto in_code = [](const json_t* place) { return "`" + std::string{json_string_value(place)} + "`"; };
    const std::string when = row.says("when") ? " (when " + joined(row["when"], readable) + ")" : "";
    const std::string value = row.says("value") ? ": " + with_bars_escaped(readable(row["value"])) : "";
    return std::string{"| "} + json_string_value(row["layout"]) + " | " + joined(row["places"], in_code) + " | " +
           json_string_value(row["loss"]) + when + value + " | " + json_string_value(row["reason"]) + " |";
}

std::vector<std::string> documented_losses() {
    std::ifstream file{KCNVRT_DOCS "/trust.md"};
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        if (line.starts_with("| old | ") || line.starts_with("| new | ")) lines.push_back(line);
    return lines;
}

TEST(Losses, StandInTheDocumentationInTheirOrder) {
    const std::vector<std::string> lines = documented_losses();
    ASSERT_EQ(losses().size(), lines.size());
    for (size_t i = 0; i < lines.size(); ++i) EXPECT_EQ(line_of(losses()[i]), lines[i]);
}

struct Whole {
    const char* name;
    Side side;
    uint8_t flags;
};

// The examples as they stand, where sections meet.
TEST(WholeExamples, ComeBackButForTheDeclaredLosses) {
    constexpr Whole kExamples[] = {
        {"/home-gateway.old.json", Side::kOld, 0},
        {"/home-gateway.new.json", Side::kNew, 0},
        {"/dsl-gateway.old.json", Side::kOld, K_CNVRT_DSL_VLAN},
        {"/dsl-gateway.new.json", Side::kNew, K_CNVRT_DSL_VLAN},
    };
    for (const Whole& example : kExamples) {
        const Tree document = load(std::string{KCNVRT_EXAMPLES} + example.name);
        const Losses declared{example.side, losses(), document.get()};
        EXPECT_EQ("", defect_of(example.side, document.get(), example.flags, declared)) << example.name;
    }
}

// Runs after the tests above, whose conversions it counts.
class Totality : public testing::Environment {
public:
    void TearDown() override {
        const TableVisits tables = table_visits();
        std::printf("%zu documents with %zu fields and %zu branches; %zu tables with %zu fields\n", totals.documents,
                    totals.fields, totals.branches, tables.tables, tables.fields);
        if (totals.documents == 0 || !are_all_visited()) return;
        for (const Row& row : losses())
            if (row.seen == 0) ADD_FAILURE() << "no loss: " << json_string_value(row["loss"]) << ' ' << row.text;
        for (const std::string& field : tables.unvisited) ADD_FAILURE() << "never run with a value: " << field;
    }
};

[[maybe_unused]] testing::Environment* const kTotality = testing::AddGlobalTestEnvironment(new Totality);

}  // namespace
