// zol_abi_dump exports|layouts|levels|slots|exceptions: prints the lines of one golden as they are
// now. scripts/accept-goldens.sh stores them.

#include <algorithm>
#include <exception>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "Goldens.h"

namespace {

using Lines = std::vector<std::string>;

const std::map<std::string, Lines (*)()> lists = {{"exports", surface::currentExports},
                                                  {"layouts", surface::currentLayouts},
                                                  {"levels", surface::currentLevels},
                                                  {"slots", surface::currentSlots},
                                                  {"exceptions", surface::currentExceptions}};

} // namespace

int main(int argc, char** argv) {
    const auto list = argc == 2 ? lists.find(argv[1]) : lists.end();
    if (list == lists.end()) {
        std::cerr << "usage: zol_abi_dump exports|layouts|levels|slots|exceptions\n";
        return 2;
    }
    try {
        Lines lines = list->second();
        std::sort(lines.begin(), lines.end());
        for (const std::string& line : lines) {
            std::cout << line << '\n';
        }
    } catch (const std::exception& error) {
        std::cerr << "zol_abi_dump: " << error.what() << '\n';
        return 1;
    }
    return std::cout.flush() ? 0 : 1;
}
