// Files of cases are read, and the line of each case is found for messages about it.
#include "case.h"

#include <ftw.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <string_view>
#include <utility>

#include "case_defects.h"

namespace {

std::string contents(const std::string& file) {
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

// "ifaces_ppp_service" of ".../ifaces/ppp_service.json"
std::string suite_of(const std::string& file) {
    const size_t name = file.rfind('/');
    const size_t folder = name == std::string::npos || name == 0 ? std::string::npos : file.rfind('/', name - 1);
    return as_name(file.substr(folder + 1, file.rfind('.') - folder - 1));
}

Case broken_file(const std::string& file, int line, const std::string& defect) {
    Case broken;
    broken.file = file;
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

Case case_of(const std::string& file, const std::string& text, const json_t* data) {
    Case loaded;
    loaded.file = file;
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

// What a walk has found; it takes nothing along. The library of files of C++ is not in every C++ library.
std::vector<std::string> files_found;

int add_case_file(const char* path, const struct stat*, int kind, struct FTW* place) {
    const std::string_view file{path};
    if (kind == FTW_F && (place->level == 0 || file.ends_with(".json"))) files_found.emplace_back(file);
    return 0;
}

}  // namespace

std::vector<Case> load_cases(const std::string& file) {
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

std::vector<std::string> case_files(const std::string& path) {
    constexpr int kOpenFolders = 16;
    files_found.clear();
    nftw(path.c_str(), add_case_file, kOpenFolders, 0);
    std::sort(files_found.begin(), files_found.end());
    return std::exchange(files_found, {});
}
