// Writes text/layouts.json: what becomes of every place of both layouts, found out by asking the conversion.
//     describe EXAMPLES VALUES TEXTS SOURCES
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "asker.h"
#include "complete.h"
#include "k_cnvrt.h"
#include "lines.h"
#include "parts.h"

using namespace describe;

namespace {

Tree load(const std::string& file) {
    json_error_t error;
    Tree tree{json_load_file(file.c_str(), JSON_REJECT_DUPLICATES, &error)};
    if (tree == nullptr) {
        std::fprintf(stderr, "%s:%d: %s\n", file.c_str(), error.line, error.text);
        std::exit(1);
    }
    return tree;
}

constexpr const char* kFlag = "dsl-vlan";

struct Layouts {
    std::vector<Finding> old_findings;
    std::vector<Finding> new_findings;
};

// Each different behaviour has a number.
class Behaviours {
public:
    size_t number_of(json_t* behaviour) {
        for (size_t number = 0; number < all_.size(); ++number)
            if (json_equal(all_[number], behaviour) != 0) return number;
        all_.push_back(behaviour);
        return all_.size() - 1;
    }
    const std::vector<json_t*>& all() const { return all_; }

private:
    std::vector<json_t*> all_;
};

Tree texts(const std::vector<std::string>& list) {
    Tree array{json_array()};
    for (const std::string& text : list) json_array_append_new(array.get(), string(text).release());
    return array;
}

Tree as_json(const Line& line, const char* flag, Behaviours& behaviours) {
    Tree row{json_pack("{s:o, s:o, s:s}", "old", texts(compressed(line.old_places)).release(), "new",
                       texts(compressed(line.new_places)).release(), "kind", line.kind.c_str())};
    const auto set = [&](const char* name, json_t* behaviour) {
        if (behaviour != nullptr)
            json_object_set_new(row.get(), name,
                                json_integer(static_cast<json_int_t>(behaviours.number_of(behaviour))));
    };
    set("to_new", line.to_new);
    set("to_old", line.to_old);
    if (flag != nullptr) json_object_set_new(row.get(), "flag", json_string(flag));
    return row;
}

void print_list(const char* name, const std::vector<Tree>& rows, const char* end) {
    std::printf("\"%s\": [", name);
    const char* separator = "\n";
    for (const Tree& row : rows) {
        std::printf("%s%s", separator, text_of(row.get()).c_str());
        separator = ",\n";
    }
    std::printf("\n]%s\n", end);
}

void add_containers(std::vector<Tree>& rows, const Layouts& layouts, const char* flag, Behaviours& behaviours) {
    const auto add = [&](const char* layout, const std::vector<Finding>& findings) {
        for (const Finding& finding : findings) {
            if (finding.container.empty()) continue;
            Tree row{json_pack("{s:s, s:s}", layout, finding.place.c_str(), "is", finding.container.c_str())};
            if (finding.carries_others) json_object_set_new(row.get(), "carries others", json_true());
            if (finding.entries != nullptr) json_object_set(row.get(), "entries", finding.entries.get());
            if (flag != nullptr) json_object_set_new(row.get(), "flag", json_string(flag));
            if (json_array_size(finding.behaviour.get()) > 0)
                json_object_set_new(
                    row.get(), "asked",
                    json_integer(static_cast<json_int_t>(behaviours.number_of(finding.behaviour.get()))));
            rows.push_back(std::move(row));
        }
    };
    add("old", layouts.old_findings);
    add("new", layouts.new_findings);
}

// What the findings of another run add to those of the first.
std::vector<Finding> beyond(std::vector<Finding> findings, const std::vector<Finding>& first) {
    const auto is_known_for = [](const Finding& finding, const Finding& known) {
        const auto is_known = [&](const std::string& place) {
            return std::find(known.results.begin(), known.results.end(), place) != known.results.end();
        };
        return !known.container.empty() || finding.is_dropped || known.is_selector ||
               std::all_of(finding.results.begin(), finding.results.end(), is_known);
    };
    std::erase_if(findings, [&](const Finding& finding) {
        return std::any_of(first.begin(), first.end(), [&](const Finding& known) {
            return known.place == finding.place && is_known_for(finding, known);
        });
    });
    return findings;
}

// The VLANs that are tied to DSL services, with what they are tied to; and a document without them.
Tree dsl_vlans(Side side, json_t* document) {
    if (side == Side::kNew)
        return Tree{json_pack("{s:{s:O, s:O}}", "Device", "Ifaces", at(document, {"Device", "Ifaces"}), "Vlan",
                              at(document, {"Device", "Vlan"}))};
    return Tree{json_pack("{s:O, s:O, s:O}", "ifaces", json_object_get(document, "ifaces"), "groups",
                          json_object_get(document, "groups"), "group_index",
                          json_object_get(document, "group_index"))};
}

Tree without_dsl_vlans(Side side, json_t* document) {
    Tree rest{json_deep_copy(document)};
    json_object_del(side == Side::kOld ? rest.get() : json_object_get(rest.get(), "Device"),
                    side == Side::kOld ? "groups" : "Vlan");
    json_object_del(rest.get(), "group_index");
    return rest;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 5) return 2;
    const std::string folder = argv[1];
    const std::vector<Row> rows = load_rows(argv[2]);
    Texts known_texts{argv[3], argv[4]};
    PlaceNames names{rows};
    Asker asker{known_texts, rows, names};

    struct Document {
        const char* name;
        Side side;
        uint8_t flags;
        Tree tree;
    };
    Document documents[] = {
        {"home-gateway.old.json", Side::kOld, 0, nullptr},
        {"home-gateway.new.json", Side::kNew, 0, nullptr},
        {"dsl-gateway.old.json", Side::kOld, K_CNVRT_DSL_VLAN, nullptr},
        {"dsl-gateway.new.json", Side::kNew, K_CNVRT_DSL_VLAN, nullptr},
    };
    for (Document& document : documents) {
        document.tree = load(folder + "/" + document.name);
        known_texts.leave_out_members(document.tree.get());
        asker.find_types({document.side, document.flags, document.tree.get()});
    }
    for (Document& document : documents) {
        if (document.flags == 0) add_services(document.side, document.tree.get(), names);
        leave_out_repetitions(document.side, document.flags, document.tree.get(), names);
    }

    Layouts layouts;
    Layouts with_flag;
    for (Document& document : documents) {
        auto& findings = document.side == Side::kOld ? layouts.old_findings : layouts.new_findings;
        const Tree rest = document.flags == 0 ? Tree{json_incref(document.tree.get())}
                                              : without_dsl_vlans(document.side, document.tree.get());
        for (const Section& part : parts_of(document.side, rest.get()))
            asker.ask({document.side, 0, part.example.get()}, findings);
    }
    for (Document& document : documents) {
        if (document.flags == 0) continue;
        Asker asker_with_flag{known_texts, rows, names};
        auto& findings = document.side == Side::kOld ? with_flag.old_findings : with_flag.new_findings;
        const Tree vlans = dsl_vlans(document.side, document.tree.get());
        asker_with_flag.ask({document.side, document.flags, vlans.get()}, findings);
        findings =
            beyond(std::move(findings), document.side == Side::kOld ? layouts.old_findings : layouts.new_findings);
    }

    Behaviours behaviours;
    std::vector<Tree> lines;
    for (const Line& line : lines_of(layouts.old_findings, layouts.new_findings))
        lines.push_back(as_json(line, nullptr, behaviours));
    for (const Line& line : lines_of(with_flag.old_findings, with_flag.new_findings))
        lines.push_back(as_json(line, kFlag, behaviours));
    std::vector<Tree> held;
    add_containers(held, layouts, nullptr, behaviours);
    add_containers(held, with_flag, kFlag, behaviours);
    std::vector<Tree> numbered;
    for (json_t* behaviour : behaviours.all()) numbered.emplace_back(json_incref(behaviour));
    std::vector<Tree> examples;
    for (Document& document : documents) examples.push_back(std::move(document.tree));
    std::printf("{\n");
    std::vector<Tree> kinds;
    for (const TextKind& kind : known_texts.kinds())
        kinds.emplace_back(json_pack("{s:s, s:s}", "name", kind.name.c_str(), "pattern", kind.pattern.c_str()));
    print_list("texts", kinds, ",");
    print_list("behaviours", numbered, ",");
    print_list("lines", lines, ",");
    print_list("containers", held, ",");
    print_list("examples", examples, "");
    std::printf("}\n");
    return 0;
}
