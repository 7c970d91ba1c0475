#include "export.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <functional>
#include <utility>

#include "core/ff_report.h"
#include "core/headless_replay.h"
#include "export_session.h"
#include "link/converters.h"
#include "link/log_frames.h"
#include "link/port_number.h"
#include "platform/text_convert.h"
#include "recording/log_file.h"
#include "screens/frm_print_ff.h"

namespace ketrel::exporter {
namespace {

constexpr std::array<const char*, 5> kTypes{"DORVANE", "BR3", "BR3ISO", "KESHISO-9141",
                                            "TACTRIXISO-9141"};

// Splits "F,MPH,PSI" into the three unit settings.
std::string ParseUnits(const std::string& text, ExportOptions& options) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (;;) {
        std::size_t comma = text.find(',', start);
        parts.push_back(text.substr(start, comma - start));
        if (comma == std::string::npos) break;
        start = comma + 1;
    }
    if (parts.size() != 3)
        return "--units wants three values TEMP,SPEED,PRESSURE, such as F,MPH,PSI; got \"" + text +
               "\"";
    if (parts[0] != "F" && parts[0] != "C")
        return "temperature unit must be F or C, not \"" + parts[0] + "\"";
    if (parts[1] != "MPH" && parts[1] != "KPH")
        return "speed unit must be MPH or KPH, not \"" + parts[1] + "\"";
    if (parts[2] != "PSI" && parts[2] != "kPa")
        return "pressure unit must be PSI or kPa, not \"" + parts[2] + "\"";
    options.temp = parts[0];
    options.speed = parts[1];
    options.pressure = parts[2];
    return {};
}

}  // namespace

std::string ExportUsage() {
    return "Usage: ketrel-export [options] [LOG]\n"
           "       ketrel-export --saved NAME [--final] [--units T,S,P]\n"
           "       ketrel-export --report FILE.pdf [--type WORD | --saved NAME] [LOG]\n"
           "       ketrel-export --list\n"
           "       ketrel-export --connect [--hardware NAME] [--port N|PATH] [--seconds S]\n"
           "                     [--units T,S,P] [--record NAME]\n"
           "Decodes a recorded log as the log player does and writes the values as CSV:\n"
           "a header line \"frame,<field>,...\" and one row per frame with the text of every\n"
           "value field after that frame. Reads LOG, or the standard input when LOG is\n"
           "missing or \"-\".\n"
           "\n"
           "Options:\n"
           "  --type WORD      interface type of the log: DORVANE (default), BR3, BR3ISO,\n"
           "                   KESHISO-9141, TACTRIXISO-9141\n"
           "  --units T,S,P    unit settings: F|C, MPH|KPH, PSI|kPa (default F,MPH,PSI; with\n"
           "                   --connect, the ones in the settings)\n"
           "  --final          instead of CSV, every field after the last frame as\n"
           "                   name<TAB>text, sorted by name; list boxes as name<TAB>a,b;\n"
           "                   grid cells as grid[row,col]<TAB>text\n"
           "  --report FILE    instead of CSV, the printed freeze-frame page after the last\n"
           "                   frame, as a PDF file: vehicle data (from the catalogue row\n"
           "                   with --saved), freeze-frame values and trouble codes\n"
           "  --help           this text\n"
           "\n"
           "Saved logs, as the program's catalogue of logs lists them:\n"
           "  --saved NAME     exports the saved log NAME, Log/NAME.log in the program's\n"
           "                   folder, with the interface type of its catalogue row\n"
           "  --list           prints the catalogue, one log a line, tab-separated: name,\n"
           "                   type, date, frames, year, make, model, VIN, plate, mileage\n"
           "                   The program's folder is the one the desktop program uses: the\n"
           "                   tool's own folder when it is writable, else\n"
           "                   $XDG_DATA_HOME/Ketrel (~/.local/share/Ketrel)\n"
           "\n"
           "Live session, without a window:\n"
           "  --connect        connects to the converter as the program does and writes the\n"
           "                   same CSV, one row per frame the scan decodes, until the time\n"
           "                   is up, the link is lost or the run is interrupted (Ctrl-C,\n"
           "                   SIGTERM). Status lines and message boxes go to the standard\n"
           "                   error; a question is answered with Cancel, or its first button.\n"
           "                   Settings are read from $XDG_CONFIG_HOME/Ketrel/Ketrel.ini\n"
           "                   (~/.config when unset) and never written.\n"
           "  --hardware NAME  the converter: its full name or first word, DORVANE, BR3,\n"
           "                   KESH or TACTRIX; default: the settings' one\n"
           "  --port N|PATH    the port number, or the device's path such as /dev/ttyUSB0;\n"
           "                   sim: or sim:FILE for an in-process simulated car (a vehicle\n"
           "                   file, or the built-in car); default: the settings' one\n"
           "  --seconds S      scan for S seconds (decimals allowed); default: until\n"
           "                   interrupted\n"
           "  --record NAME    also records the session as the log controller does, into\n"
           "                   Log/NAME.log beside the program, and lists it in the log\n"
           "                   catalogue (System/LogRecords.db) with its date, frame count\n"
           "                   and interface type; a log of that name already there is an\n"
           "                   error\n"
           "\n"
           "Exit status:\n"
           "  0  done: the log exported, or the live run ended by its time or an interrupt\n"
           "  1  the log held no frame or could not be read or written, a saved log is\n"
           "     not in the catalogue or the catalogue can't be read; or the live link\n"
           "     could not be made, or was lost\n"
           "  2  bad command line, or a log type or converter that is not available yet\n";
}

namespace {

// The options of a live session; false when `a` is none of them. An error goes to `error`.
bool TakeLiveOption(const std::string& a, const std::function<bool(std::string&)>& takeValue,
                    ExportOptions& options, std::string& error) {
    auto is = [&](const std::string& name) { return a == name || a.rfind(name + "=", 0) == 0; };
    std::string value;
    if (a == "--connect") {
        options.connect = true;
    } else if (is("--hardware")) {
        if (!takeValue(value)) {
            error = "--hardware wants a converter's name";
        } else if (options.hardware = ConverterByWord(value); options.hardware.empty()) {
            error = "unknown converter \"" + value + "\"; known: \"" + kDorvane + "\", \"" + kBr3 +
                    "\", \"" + kKesh + "\", \"" + kTactrix + "\"";
        }
    } else if (is("--port")) {
        if (!takeValue(value) || value.empty()) {
            error = "--port wants a port number or a device path";
        } else if (value.find('/') == std::string::npos && value.rfind("sim:", 0) != 0) {
            try {
                PortNumber(value);
            } catch (const SerialError&) {
                error = "--port \"" + value + "\" is neither a port number nor a device path";
            }
        }
        options.port = value;
    } else if (is("--record")) {
        if (!takeValue(value) || !IsSafeLogName(value))
            error = "--record wants a log name without \"/\", \"\\\" or \"..\"";
        options.record = value;
    } else if (is("--seconds")) {
        char* end = nullptr;
        double s = takeValue(value) ? std::strtod(value.c_str(), &end) : 0;
        if (value.empty() || end != value.c_str() + value.size() || !(s > 0) || s > 1e7) {
            error = "--seconds wants a number of seconds above 0, not \"" + value + "\"";
        }
        options.seconds = s;
    } else {
        return false;
    }
    return true;
}

// Options that only one of the two modes takes.
std::string CheckModes(const ExportOptions& o, bool typeGiven) {
    if (o.list &&
        (o.connect || !o.saved.empty() || !o.input.empty() || typeGiven || o.final || o.unitsGiven))
        return "--list takes no other option or log";
    if (!o.saved.empty()) {
        if (o.connect) return "--saved and --connect exclude each other";
        if (!o.input.empty())
            return "--saved reads its log from the catalogue; \"" + o.input + "\" is left over";
        if (typeGiven) return "--saved takes the log's type from its catalogue row, not --type";
    }
    if (!o.report.empty() && (o.connect || o.list || o.final))
        return "--report is for logs; it takes neither --connect, --list nor --final";
    if (o.connect) {
        if (!o.input.empty()) return "--connect reads no log; \"" + o.input + "\" is left over";
        if (typeGiven) return "--type is for logs; --connect takes --hardware";
        if (o.final) return "--final is for logs, not for --connect";
        return {};
    }
    if (!o.hardware.empty() || !o.port.empty() || o.seconds > 0 || !o.record.empty())
        return "--hardware, --port, --seconds and --record need --connect";
    return {};
}

}  // namespace

std::string ParseExportArgs(const std::vector<std::string>& args, ExportOptions& options) {
    bool inputSeen = false, typeGiven = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        // The value of "--name VALUE" or "--name=VALUE"; false when it is missing.
        auto takeValue = [&](std::string& value) {
            std::size_t eq = a.find('=');
            if (a.rfind("--", 0) == 0 && eq != std::string::npos) {
                value = a.substr(eq + 1);
                return true;
            }
            if (i + 1 >= args.size()) return false;
            value = args[++i];
            return true;
        };
        auto is = [&](const std::string& name) { return a == name || a.rfind(name + "=", 0) == 0; };
        std::string value, error;
        if (a == "--help" || a == "-h") {
            options.help = true;
        } else if (a == "--final") {
            options.final = true;
        } else if (is("--type")) {
            if (!takeValue(value)) return "--type wants an interface type";
            if (std::find(kTypes.begin(), kTypes.end(), value) == kTypes.end())
                return "unknown interface type \"" + value +
                       "\"; known: DORVANE, BR3, BR3ISO, KESHISO-9141, TACTRIXISO-9141";
            options.type = value;
            typeGiven = true;
        } else if (is("--units")) {
            if (!takeValue(value)) return "--units wants TEMP,SPEED,PRESSURE";
            error = ParseUnits(value, options);
            if (!error.empty()) return error;
            options.unitsGiven = true;
        } else if (is("--saved")) {
            if (!takeValue(value) || value.empty()) return "--saved wants the name of a saved log";
            options.saved = value;
        } else if (is("--report")) {
            if (!takeValue(value) || value.empty()) return "--report wants a PDF file name";
            options.report = value;
        } else if (a == "--list") {
            options.list = true;
        } else if (TakeLiveOption(a, takeValue, options, error)) {
            if (!error.empty()) return error;
        } else if (a.size() > 1 && a[0] == '-') {
            return "unknown option \"" + a + "\" (see --help)";
        } else {
            if (inputSeen) return "only one log may be given";
            inputSeen = true;
            options.input = a;
        }
    }
    return options.help ? std::string() : CheckModes(options, typeGiven);
}

int RunExport(const ExportOptions& options, std::istream& in, const std::string& inputName,
              std::ostream& out, std::ostream& err) {
    CsvReplayOptions replay;
    replay.type = options.type;
    replay.units = {options.temp, options.speed, options.pressure};
    replay.final = options.final;
    replay.messagePrefix = "ketrel-export: ";
    return ReplayLogToCsv(replay, in, inputName, out, err);
}

int RunReport(const ExportOptions& options, std::istream& in, const std::string& inputName,
              std::ostream& err) {
    const std::string prefix = "ketrel-export: ";
    if (!ReplayRoutine(options.type)) {
        err << prefix << "logs of type " << options.type
            << " are not available yet in this build\n";
        return kExitUsage;
    }
    HeadlessReplay session(err, prefix, options.type,
                           {options.temp, options.speed, options.pressure});
    App& app = session.app();
    long lines = 0;
    bool readError = false;
    const long frames = session.playLog(in, inputName, {}, lines, readError);
    if (frames == 0) {
        err << prefix << inputName << ": no frame could be read\n";
        return kExitFailed;
    }
    FrmMain& m = app.frmMain();
    Field* const vehicle[] = {nullptr, nullptr, nullptr, &m.txtVin, &m.txtPlate, &m.txtMileage};
    ComboBox* const lists[] = {&m.cmbYear, &m.cmbMake, &m.cmbModel};
    for (std::size_t i = 0; i < options.vehicle.size() && i < std::size(vehicle); ++i) {
        // The catalogue writes "N/A" for what was not given; the page says so itself.
        const std::string& v = options.vehicle[i] == "N/A" ? std::string() : options.vehicle[i];
        if (i < std::size(lists))
            lists[i]->setText(v);
        else
            vehicle[i]->setText(v);
    }
    FrmPrintFF page(app.loop());
    FillPrintFF(app, page);
    if (!options.writeReport || !options.writeReport(FreezeFrameReportPage(page), options.report)) {
        err << prefix << "could not write the page to \"" << options.report << "\"\n";
        return kExitFailed;
    }
    return kExitOk;
}

}  // namespace ketrel::exporter
