#include "core/csv_export.h"

#include <algorithm>

#include "link/converters.h"
#include "link/log_frames.h"
#include "obd/value_fields.h"
#include "screens/data_tab_layout.h"
#include "state/app.h"

namespace ketrel {

namespace {

// Tabs and line ends written as \t, \n, \r, backslash as \\, so one field stays on one line.
std::string Escape(const std::string& text) {
    std::string out;
    for (char c : text) {
        switch (c) {
            case '\\':
                out += "\\\\";
                break;
            case '\t':
                out += "\\t";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            default:
                out += c;
        }
    }
    return out;
}

}  // namespace

void AppendCsvCell(std::string& row, const std::string& text) {
    bool quote = text.find_first_of(",\"\r\n") != std::string::npos ||
                 (!text.empty() && (text.front() == ' ' || text.back() == ' '));
    if (!quote) {
        row += text;
        return;
    }
    row += '"';
    for (char c : text) {
        if (c == '"') row += '"';
        row += c;
    }
    row += '"';
}

std::vector<CsvColumn> ValueColumns(App& app) {
    std::vector<CsvColumn> cols;
    FrmMain& m = app.frmMain();
    for (const DataTabRow& row : kDataTabRows)
        cols.emplace_back(row.label, static_cast<const Field*>(m.findControl(row.label)));
    cols.emplace_back("lblOBDDesign", &m.lblOBDDesign);
    for (Field* f : FreezeFrameFields(app))
        cols.emplace_back(f->name(), f);
    for (Field* f : app.frmNewPids().valueFields())
        cols.emplace_back("frmNewPids." + f->name(), f);
    return cols;
}

void WriteCsvHeader(const std::vector<CsvColumn>& columns, std::ostream& out) {
    std::string row = "frame";
    for (const CsvColumn& c : columns) {
        row += ',';
        AppendCsvCell(row, c.first);
    }
    row += '\n';
    out << row;
}

void WriteCsvRow(const std::string& frame, const std::vector<CsvColumn>& columns, std::string& row,
                 std::ostream& out) {
    row.clear();
    AppendCsvCell(row, frame);
    for (const CsvColumn& c : columns) {
        row += ',';
        AppendCsvCell(row, c.second->text());
    }
    row += '\n';
    out.write(row.data(), std::streamsize(row.size()));
}

void WriteFinalFields(App& app, std::ostream& out) {
    std::vector<std::pair<std::string, std::string>> lines;
    for (Screen* screen :
         {static_cast<Screen*>(&app.frmMain()), static_cast<Screen*>(&app.frmNewPids())}) {
        std::string prefix = screen == &app.frmMain() ? "" : screen->name() + ".";
        for (const Control* c : screen->controls()) {
            std::string name = prefix + c->fullName();
            if (c->kind() == ControlKind::Field) {
                lines.emplace_back(name, static_cast<const Field*>(c)->text());
            } else if (c->kind() == ControlKind::ListBox) {
                std::string items;
                for (const std::string& item : static_cast<const ListBox*>(c)->items())
                    items += (items.empty() ? "" : ",") + item;
                lines.emplace_back(name, items);
            } else if (c->kind() == ControlKind::Grid) {
                auto* g = static_cast<const Grid*>(c);
                for (int r = 0; r < g->rows(); ++r) {
                    for (int col = 0; col < g->cols(); ++col) {
                        lines.emplace_back(
                            name + "[" + std::to_string(r) + "," + std::to_string(col) + "]",
                            g->text(r, col));
                    }
                }
            }
        }
    }
    std::sort(lines.begin(), lines.end());
    for (auto& [name, text] : lines)
        out << Escape(name) << '\t' << Escape(text) << '\n';
}

int ReplayLogToCsv(const CsvReplayOptions& options, std::istream& in, const std::string& inputName,
                   std::ostream& out, std::ostream& err) {
    const std::string& prefix = options.messagePrefix;
    if (!ReplayRoutine(options.type)) {
        err << prefix << "logs of type " << options.type
            << " are not available yet in this build\n";
        return kCsvUnavailable;
    }
    HeadlessReplay session(err, prefix, options.type, options.units);
    App& app = session.app();
    std::vector<CsvColumn> columns = ValueColumns(app);
    std::string row;
    bool headerWritten = false;
    long lines = 0;
    bool readError = false;
    const long frames = session.playLog(
        in, inputName,
        [&](const std::string& frame) {
            if (options.final) return;
            if (!headerWritten) WriteCsvHeader(columns, out);
            headerWritten = true;
            WriteCsvRow(frame, columns, row, out);
        },
        lines, readError);
    if (readError) {
        err << prefix << inputName << ": read error after line " << lines << '\n';
        return kCsvFailed;
    }
    if (frames == 0) {
        err << prefix << inputName << ": no frame could be read"
            << (lines == 0 ? " (the log is empty)" : "") << '\n';
        return kCsvFailed;
    }
    if (options.final) WriteFinalFields(app, out);
    out.flush();
    if (!out) {
        err << prefix << "could not write the output\n";
        return kCsvFailed;
    }
    return kCsvOk;
}

}  // namespace ketrel
