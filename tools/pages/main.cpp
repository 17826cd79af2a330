// pages FOLDER COMPLETION: writes the tool's manual pages and completions into the folder. COMPLETION is the file
// completion.bash.

#include <fstream>
#include <iostream>
#include <sstream>

#include "pages.h"

namespace {

using namespace kcnvrt;

bool write(const std::string& file, const std::string& text) {
    std::ofstream out(file);
    out << text;
    out.close();
    if (!out) std::cerr << file << " cannot be written\n";
    return static_cast<bool>(out);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    std::ostringstream walk;
    walk << std::ifstream(argv[2]).rdbuf();
    const std::string folder = std::string(argv[1]) + "/";
    bool is_written = write(folder + "kcnvrt.1", pages::manual_of_tool());
    for (const Command& command : all_commands())
        is_written &= write(folder + "kcnvrt-" + command.name + ".1", pages::manual_of(command));
    is_written &= write(folder + "kcnvrt.bash", pages::bash_completion() + walk.str());
    is_written &= write(folder + "_kcnvrt", pages::zsh_completion());
    is_written &= write(folder + "kcnvrt.fish", pages::fish_completion());
    return is_written ? 0 : 1;
}
