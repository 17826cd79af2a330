// A table begins where a row's type is named with its array, and ends with the brace at the start of a line.
#include "code_tables.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

namespace {

using std::filesystem::path;

void add_codes(std::vector<Code>& codes, const path& file, const path& root) {
    static const std::regex table{R"(NamedNumber<\d+> (\w+)\[\] = \{([^;]*)\n\};)"};
    static const std::regex row{R"x(\{"([^"]*)",\s*(\w+)\})x"};
    std::ifstream stream{file};
    const std::string text{std::istreambuf_iterator<char>{stream}, {}};
    const path below = std::filesystem::relative(file, root);
    const std::string room = (++below.begin())->string();
    for (std::sregex_iterator at{text.begin(), text.end(), table}, end; at != end; ++at) {
        const std::string rows = (*at)[2];
        for (std::sregex_iterator one{rows.begin(), rows.end(), row}; one != end; ++one)
            codes.push_back({(*one)[1], (*one)[2], (*at)[1].str() + " in " + below.string(), room});
    }
}

}  // namespace

std::vector<Code> codes_of_tables() {
    const path root{KCNVRT_ROOT};
    std::vector<Code> codes;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{root / "src"})
        if (entry.path().extension() == ".cpp") add_codes(codes, entry.path(), root);
    return codes;
}
