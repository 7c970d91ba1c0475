#include "sweeps/mode6_rows.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include "obd/bit_operations.h"
#include "screens/frm_mode6.h"
#include "state/app.h"

namespace ketrel {
namespace {

constexpr std::array<std::pair<const char*, int>, 9> kColumns{{{"TEST ID", 900},
                                                               {"COMP ID", 900},
                                                               {"DESCRIPTION", 4300},
                                                               {"RESULT(RAW)", 1450},
                                                               {"LIMIT(RAW)", 1450},
                                                               {"RESULT(UNITS)", 1450},
                                                               {"LIMIT(UNITS)", 1450},
                                                               {"LIMIT TYPE", 1450},
                                                               {"PASS/FAIL", 1450}}};

}  // namespace

void Mode6Status(FrmMode6& f, int panel, const std::string& text) {
    std::string upper = text;
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return char(std::toupper(c)); });
    (panel == 1 ? f.Panel1 : f.Panel2).setText(upper);
}

void Mode6GridHeaders(FrmMode6& f) {
    Grid& g = f.MSFlexGrid1;
    g.setCols(int(kColumns.size()));
    for (int c = 0; c < int(kColumns.size()); ++c) {
        g.setColWidth(c, kColumns[std::size_t(c)].second);
        g.setText(0, c, kColumns[std::size_t(c)].first);
    }
}

void Mode6NoteSupport(App& app, FrmMode6& f, Mode6Vars& vars, const Mode6SupportBytes& bytes) {
    for (std::size_t b = 0; b < 4; ++b) {
        app.ByteValue[b + 1] = bytes.values[b];
        app.ByteBits[b + 1] = bytes.bits[b];
    }
    for (const std::string& bits : bytes.bits) {
        for (char bit : bits) {
            const int id = app.Mode6PIDIndex;
            const bool on = bit == '1';
            if (id >= 1 && id <= int(vars.Supported.size()))
                vars.Supported[std::size_t(id - 1)] = on;
            f.List1.addItem("PID " + std::to_string(id) + (on ? "  SUPPORTED" : "  NOT SUPPORTED"));
            if (on) vars.SupportedCount++;
            app.Mode6PIDIndex++;
        }
    }
}

void Mode6TakeFrame(Mode6Vars& vars, const Mode6Frame& frame) {
    vars.ControlByte = frame.controlByte;
    vars.Component = frame.component;
    vars.Result = frame.result;
    if (frame.limit) vars.Limit = *frame.limit;
}

void Mode6AddResultRow(FrmMode6& f, Mode6Vars& vars) {
    const Mode6Verdict verdict = Mode6LimitRule(vars.ControlByte, vars.Result, vars.Limit);
    const int id = vars.TestID;
    if (id < 1 || id > int(vars.Supported.size()) || !vars.Supported[std::size_t(id - 1)]) return;
    const int row = ++vars.Row;
    Grid& g = f.MSFlexGrid1;
    if (row >= g.rows()) return;
    g.setText(row, 0, ByteToHexText(id));
    g.setText(row, 1, vars.Component);
    g.setText(row, 2, "*");
    if (vars.Result) g.setText(row, 3, std::to_string(*vars.Result));
    if (!vars.Limit.empty()) g.setText(row, 4, vars.Limit);
    g.setText(row, 5, "*");
    g.setText(row, 6, "*");
    g.setText(row, 7, verdict.limitType);
    g.setText(row, 8, verdict.passFail);
}

}  // namespace ketrel
