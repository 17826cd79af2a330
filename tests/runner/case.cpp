// Files of cases are read, and the line of each case is found for messages about it.
#include "case.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>

#include "case_defects.h"

namespace {

std::string contents(const std::filesystem::path& file) {
    std::ifstream stream{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{stream}, {}};
}

// The words of a text in a form that GoogleTest's filters take.
std::string as_name(const std::string& text) {
    std::string name;
    for (const char character : text) {
        const bool is_word = (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
                             (character >= 'A' && character <= 'Z');
        if (is_word)
            name += character;
        else if (!name.empty() && name.back() != '_')
            name += '_';
    }
    while (!name.empty() && name.back() == '_') name.pop_back();
    return name;
}

std::string suite_of(const std::filesystem::path& file) {
    return as_name(file.parent_path().filename().string() + "_" + file.stem().string());
}

Case broken_file(const std::filesystem::path& file, int line, const std::string& defect) {
    Case broken;
    broken.file = file.string();
    broken.line = line;
    broken.suite = suite_of(file);
    broken.test = "is_a_file_of_cases";
    broken.defects.push_back(defect);
    return broken;
}

// The line on which the sentence stands, so that a failure points into the file.
int line_of(const std::string& text, const json_t* sentence) {
    const size_t at = text.find(text_of(sentence));
    if (at == std::string::npos) return 1;
    return 1 + static_cast<int>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}

Case case_of(const std::filesystem::path& file, const std::string& text, const json_t* data) {
    Case loaded;
    loaded.file = file.string();
    loaded.suite = suite_of(file);
    loaded.data = Tree{json_deep_copy(data)};
    const json_t* sentence = json_object_get(data, "case");
    loaded.line = line_of(text, sentence);
    if (json_is_string(sentence)) loaded.sentence = json_string_value(sentence);
    loaded.test = as_name(loaded.sentence);
    loaded.defects = defects_of(data);
    return loaded;
}

// Two sentences of a file may become the same name; the same sentence twice is a defect.
void tell_apart(std::vector<Case>& cases) {
    std::map<std::string, int> names;
    std::map<std::string, int> sentences;
    for (Case& each : cases) {
        const int earlier = names[each.test]++;
        if (earlier > 0) each.test += "_" + std::to_string(earlier + 1);
        if (sentences[each.sentence]++ > 0) each.defects.push_back("another case of this file has the same sentence");
    }
}

}  // namespace

std::vector<Case> load_cases(const std::filesystem::path& file) {
    const std::string text = contents(file);
    json_error_t error;
    const Tree root{json_loadb(text.data(), text.size(), JSON_REJECT_DUPLICATES | JSON_ALLOW_NUL, &error)};

    std::vector<Case> cases;
    if (root == nullptr) {
        cases.push_back(broken_file(file, error.line, error.text));
    } else if (json_array_size(root.get()) == 0) {
        cases.push_back(broken_file(file, 1, "not an array of cases, or an empty one"));
    }
    for (size_t i = 0; i < json_array_size(root.get()); ++i) {
        cases.push_back(case_of(file, text, json_array_get(root.get(), i)));
    }
    tell_apart(cases);
    return cases;
}

std::vector<std::filesystem::path> case_files(const std::filesystem::path& path) {
    if (!std::filesystem::is_directory(path)) return {path};
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{path}) {
        if (entry.path().extension() == ".json") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}
