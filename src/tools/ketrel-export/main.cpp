#include <fstream>
#include <iostream>

#include "export.h"
#include "platform/app_folder.h"
#include "saved_logs.h"
#ifdef KETREL_LIVE
#include "live_session.h"
#include "report_pdf.h"
#endif

// ketrel-export: the command line around RunExport, the catalogue of saved logs (--saved,
// --list) and a live session (--connect).
int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    using namespace ketrel::exporter;
    ExportOptions options;
    std::string error = ParseExportArgs(std::vector<std::string>(argv + 1, argv + argc), options);
    if (!error.empty()) {
        std::cerr << "ketrel-export: " << error << '\n';
        return kExitUsage;
    }
    if (options.help) {
        std::cout << ExportUsage();
        return kExitOk;
    }
    if (!options.report.empty()) {
#ifdef KETREL_LIVE
        options.writeReport = [&argc, argv](const ketrel::PrintPage& page,
                                            const std::string& path) {
            return WriteReportPdf(argc, argv, page, path);
        };
#else
        std::cerr << "ketrel-export: this build has no printing (it was made without Qt)\n";
        return kExitUsage;
#endif
    }
    if (options.list) return RunList(ketrel::ResolveAppFolder(ProgramDir()), std::cout, std::cerr);
    if (!options.saved.empty())
        return RunSaved(options, ketrel::ResolveAppFolder(ProgramDir()), std::cout, std::cerr);
    if (options.connect) {
#ifdef KETREL_LIVE
        return RunLive(argc, argv, options);
#else
        std::cerr << "ketrel-export: this build has no live sessions (it was made without Qt)\n";
        return kExitUsage;
#endif
    }
    if (!options.report.empty()) {
        if (options.input.empty() || options.input == "-")
            return RunReport(options, std::cin, "standard input", std::cerr);
        std::ifstream log(options.input, std::ios::binary);
        if (!log) {
            std::cerr << "ketrel-export: cannot open \"" << options.input << "\"\n";
            return kExitFailed;
        }
        return RunReport(options, log, options.input, std::cerr);
    }
    if (options.input.empty() || options.input == "-")
        return RunExport(options, std::cin, "standard input", std::cout, std::cerr);
    std::ifstream file(options.input, std::ios::binary);
    if (!file) {
        std::cerr << "ketrel-export: cannot open \"" << options.input << "\"\n";
        return kExitFailed;
    }
    return RunExport(options, file, options.input, std::cout, std::cerr);
}
