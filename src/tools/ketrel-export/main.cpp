#include <fstream>
#include <iostream>

#include "export.h"

// ketrel-export: the command line around RunExport.
int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    using namespace ketrel::exporter;
    ExportOptions options;
    std::string error = ParseExportArgs(std::vector<std::string>(argv + 1, argv + argc), options);
    if (!error.empty()) {
        std::cerr << "ketrel-export: " << error << '\n';
        return 2;
    }
    if (options.help) {
        std::cout << ExportUsage();
        return 0;
    }
    if (options.input.empty() || options.input == "-")
        return RunExport(options, std::cin, "standard input", std::cout, std::cerr);
    std::ifstream file(options.input, std::ios::binary);
    if (!file) {
        std::cerr << "ketrel-export: cannot open \"" << options.input << "\"\n";
        return 1;
    }
    return RunExport(options, file, options.input, std::cout, std::cerr);
}
