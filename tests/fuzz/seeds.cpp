// Makes what the targets start from out of the cases: `fuzz_seeds CASES EXAMPLES SEEDS WORDS`.
// SEEDS gets a folder for each target, WORDS is a header with every text and name in the cases.
#include <jansson.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "runner/case.h"
#include "text/generator.h"

namespace {

constexpr size_t kLongestWord = 64;
constexpr size_t kLargestSeed = 64 * 1024;
constexpr uint64_t kTexts = 300;

std::filesystem::path seeds;

std::string text_or_empty(const json_t* tree) {
    return tree == nullptr ? "" : text_of(tree);
}

void add_seed(const char* target, const std::string& bytes) {
    static size_t count = 0;
    if (bytes.size() <= kLargestSeed)
        std::ofstream{seeds / target / std::to_string(++count), std::ios::binary} << bytes;
}

std::string member(const json_t* data, const char* name) {
    const json_t* value = json_object_get(data, name);
    return json_is_string(value) ? json_string_value(value) : text_or_empty(value);
}

char flags_of(const json_t* data) {
    return static_cast<char>(json_integer_value(json_object_get(data, "flags")));
}

// Operation, flags, more flags, indent, width and section.
void add_request(char operation, char section, const std::string& other, const std::string& text) {
    for (const char flags : {'\0', '\x08'})
        add_seed("request", std::string{operation, flags, '\0', '\5', 'P', section} + other + '\0' + text);
}

// Alone, in a record and as a text in one; block size, two bytes of a record's length, and options come first.
void add_stream(char direction, const std::string& text) {
    const auto add = [direction](char options, const std::string& record) {
        add_seed("stream", std::string{'\7', '\x0f', '\xff', static_cast<char>(direction | options)} + record + "\r\n" +
                               record.substr(1) + "\n" + record);
    };
    const Tree string{json_string(text.c_str())};
    const Tree holder{json_pack("{s: i, s: O}", "serial", 7, "config", string.get())};
    add('\0', text);
    add('\x58', R"({"serial": "a", "config": )" + text + "}");
    add('\x7c', text_of(holder.get()));
}

void add_difference(const std::string& base, const std::string& candidate) {
    add_seed("difference", base + '\0' + candidate);
    for (const char operation : {'\5', '\6'}) add_request(operation, 0, candidate, base);
}

// A document is also what the tool reads, and the base of a difference.
void add_document(const json_t* data, const char* target, const char* command) {
    const std::string source = member(data, "source");
    add_seed(target, flags_of(data) + source);
    add_difference(source, member(data, "output"));
    add_seed("tool", std::string{command} + "\n\n" + source);
    for (const char operation : {command == std::string("to-new") ? '\1' : '\2', '\7'})
        add_request(operation, 0, "", source);
    if (void* const first = json_object_iter(json_object_get(data, "source")))
        add_request('\12', 0, std::string("/") + json_object_iter_key(first), source);
}

void add_section(const json_t* data, const char* layout) {
    const std::string name = member(data, "name");
    const std::string source = member(data, "source");
    add_seed("section", std::string{layout} + " " + name + "\n" + flags_of(data) + source);
    add_difference(source, member(data, "output"));
    add_seed("tool", "section\n" + name + "\n--to-" + layout + "\n\n" + source);
}

void add_case(const json_t* data) {
    const std::string call = member(data, "call");
    if (call == "k_cnvrt_to_old") return add_document(data, "document_to_old", "to-old");
    if (call == "k_cnvrt_to_new") return add_document(data, "document_to_new", "to-new");
    if (call == "k_cnvrt_get_section_to_old") return add_section(data, "old");
    if (call == "k_cnvrt_get_section_to_new") return add_section(data, "new");
    if (call == "k_conf_diff_set2") return add_difference(member(data, "base"), member(data, "candidate"));
    if (call == "k_conf_apply") return add_difference(member(data, "base"), member(data, "difference"));
    const bool is_array = json_is_array(json_object_get(data, "destination"));
    if (call.find("_from_") != std::string::npos || call.starts_with("parse_") || call.starts_with("k_cnvrt_parse_"))
        add_seed("section", (is_array ? "[] " : "{} ") + call + "\n" + '\0' + member(data, "source"));
    // Converters that take a whole configuration of the old layout, or of the new.
    if (call == "k_cnvrt_get_ifaces_from_old" || call == "k_cnvrt_get_services_from_old" ||
        call == "k_cnvrt_get_routing_from_old" || call == "k_cnvrt_get_deviceinfo_from_old" ||
        call == "k_cnvrt_get_customs_from_old")
        add_document(data, "document_to_new", "to-new");
    if (call == "k_cnvrt_get_ifaces_from_new") add_document(data, "document_to_old", "to-old");
}

// Of every layout and with every option, by number; each whole and damaged.
void add_texts() {
    for (uint64_t number = 0; number < kTexts; ++number) {
        const std::string text = kcnvrt::text::text_number(number);
        add_seed("text", static_cast<char>(number % 256) + text);
        add_seed("text", static_cast<char>(number % 256) + kcnvrt::text::damaged(text, number));
        add_request('\1', 0, "", kcnvrt::text::damaged(text, number));
    }
}

void add_words(const json_t* tree, std::set<std::string>& words) {
    const auto add = [&words](std::string word) {
        if (word.size() <= kLongestWord && word.find('\0') == std::string::npos) words.insert(std::move(word));
    };
    if (json_is_string(tree)) add({json_string_value(tree), json_string_length(tree)});
    const char* name;
    json_t* value;
    json_object_foreach(const_cast<json_t*>(tree), name, value) {
        add(name);
        add_words(value, words);
    }
    for (size_t i = 0; i < json_array_size(tree); ++i) add_words(json_array_get(tree, i), words);
}

void write_words(const std::set<std::string>& words, const std::filesystem::path& file) {
    std::ofstream header{file};
    header << "#include <string_view>\n\ninline constexpr std::string_view kWords[] = {\n";
    for (const std::string& word : words) {
        header << "    \"";
        for (const char character : word) {
            constexpr const char* kOctal = "01234567";
            const auto byte = static_cast<unsigned char>(character);
            header << '\\' << kOctal[byte >> 6] << kOctal[byte >> 3 & 7] << kOctal[byte & 7];
        }
        header << "\",\n";
    }
    header << "};\n";
}

void add_configuration(const json_t* root, bool is_old) {
    const std::string text = text_of(root);
    add_seed(is_old ? "document_to_new" : "document_to_old", '\0' + text);
    add_request(is_old ? '\1' : '\2', 0, "", text);
    add_seed("tool", (is_old ? "to-new\n\n" : "to-old\n\n") + text);
    add_stream(is_old ? '\1' : '\2', text);
}

// A configuration as a whole, and each of its sections as one of its own.
void add_example(const std::filesystem::path& file) {
    const Tree root{json_load_file(file.c_str(), 0, nullptr)};
    const bool is_old = file.string().ends_with(".old.json");
    add_configuration(root.get(), is_old);

    const char* name;
    json_t* section;
    json_object_foreach(is_old ? root.get() : json_object_get(root.get(), "Device"), name, section) {
        const Tree alone{is_old ? json_pack("{s: O}", name, section)
                                : json_pack("{s: {s: O}}", "Device", name, section)};
        add_configuration(alone.get(), is_old);
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 5) return 2;
    seeds = argv[3];
    for (const char* target :
         {"document_to_new", "document_to_old", "section", "difference", "tool", "stream", "text", "request"})
        std::filesystem::create_directories(seeds / target);

    std::set<std::string> words;
    for (const auto& file : case_files(argv[1])) {
        for (const Case& each : load_cases(file)) {
            add_case(each.data.get());
            add_words(json_object_get(each.data.get(), "source"), words);
            add_words(json_object_get(each.data.get(), "output"), words);
        }
    }
    for (const auto& file : case_files(argv[2])) add_example(file);
    add_texts();
    write_words(words, argv[4]);
    return 0;
}
