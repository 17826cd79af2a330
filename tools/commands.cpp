#include "commands.h"

#include <k_cnvrt.h>
#include <k_conf.h>

#include <memory>
#include <new>

#include "diagnostics.h"
#include "output.h"

namespace kcnvrt {

namespace {

constexpr int kReadableIndent = 4;

struct RecordRelease {
    void operator()(k_err_t* record) const { k_err_free(record); }
};
using Record = std::unique_ptr<k_err_t, RecordRelease>;

Record new_record() {
    Record record(k_err_new());
    if (!record) throw std::bad_alloc();
    return record;
}

std::size_t dump_flags(const Options& options) {
    if (options.compact) return JSON_COMPACT;
    return JSON_INDENT(static_cast<std::size_t>(options.indent.value_or(kReadableIndent)));
}

uint8_t conversion_flags(const Options& options) {
    return static_cast<uint8_t>((options.dsl_vlan ? K_CNVRT_DSL_VLAN : 0) |
                                (options.merge_patch ? K_CNVRT_MERGE_PATCH : 0));
}

// Prints the messages of `make_result`, under the name of the file at fault, and writes its result.
template <typename MakeResult>
ExitStatus deliver(const Options& options, const std::string& source, MakeResult make_result) {
    const Messages messages(options.errors);
    const Record record = new_record();
    StdoutSetAside aside;
    const Json result(make_result(record.get()));
    messages.print_lines(source, "diagnostic", aside.restore());
    messages.print(source, record.get());
    if (!result) return kRejected;
    write_json(options.output, options.inputs(), result.get(), dump_flags(options));
    return kConverted;
}

void refuse_standard_input_twice(const std::string& one, const std::string& other) {
    if (one == kStandardStream && other == kStandardStream) {
        throw Failure{kWrongUsage, "kcnvrt", "usage", "standard input can be read only once"};
    }
}

using Reader = Json (*)(const std::string& file);

// The configuration that a difference is asked against, null where none is.
Json read_base(const Options& options, Reader read) {
    if (!options.base) return nullptr;
    refuse_standard_input_twice(*options.base, options.file);
    return read(*options.base);
}

void append_names(std::string& list, const char* layout, k_cnvrt_table_t table) {
    const char* name;
    for (std::size_t i = 0; (name = k_cnvrt_section_name(table, i)) != nullptr; ++i) {
        list.append(layout).append("\t").append(name).append("\n");
    }
}

}  // namespace

ExitStatus to_new(const Options& options) {
    const Json base = read_base(options, read_configuration);
    const Json old_root = read_configuration(options.file);
    return deliver(options, options.file, [&](k_err_t* record) {
        return k_cnvrt_to_new(old_root.get(), base.get(), conversion_flags(options), record);
    });
}

ExitStatus to_old(const Options& options) {
    const Json new_root = read_configuration(options.file);
    return deliver(options, options.file,
                   [&](k_err_t* record) { return k_cnvrt_to_old(new_root.get(), conversion_flags(options), record); });
}

ExitStatus section(const Options& options) {
    const char* const name = options.section.c_str();
    const Json base = read_base(options, read_section);
    const Json source = read_section(options.file);
    return deliver(options, options.file, [&](k_err_t* record) {
        if (options.to_old) return k_cnvrt_get_section_to_old(name, source.get(), record);
        return k_cnvrt_get_section_to_new(name, source.get(), base.get(), conversion_flags(options), record);
    });
}

ExitStatus sections(const Options& options) {
    std::string list;
    append_names(list, "old", K_CNVRT_OLD_SECTIONS);
    append_names(list, "new", K_CNVRT_NEW_SECTIONS);
    write_text(options.output, list);
    return kConverted;
}

ExitStatus diff(const Options& options) {
    refuse_standard_input_twice(options.from, options.other);
    const Json base = read_value(options.from);
    const Json candidate = read_value(options.other);
    const unsigned form = options.merge_patch ? K_CONF_MERGE_PATCH : K_CONF_JSON_PATCH;
    return deliver(options, options.other,
                   [&](k_err_t* record) { return k_conf_diff_set2(base.get(), candidate.get(), 0, form, record); });
}

ExitStatus apply(const Options& options) {
    refuse_standard_input_twice(options.from, options.other);
    const Json base = read_value(options.from);
    const Json difference = read_value(options.other);
    return deliver(options, options.other,
                   [&](k_err_t* record) { return k_conf_apply(base.get(), difference.get(), record); });
}

// The check writes its findings to standard output, whence they become messages.
ExitStatus self_check(const Options& options) {
    StdoutSetAside aside;
    const bool sound = k_cnvrt_check_valid_hashes() == 0;
    Messages(options.errors).print_lines("kcnvrt", "k_cnvrt_check_valid_hashes", aside.restore());
    return sound ? kConverted : kRejected;
}

}  // namespace kcnvrt
