#include "obd/monitor_status.h"

#include <array>
#include <string>

#include "obd/number_text.h"
#include "obd/pid_catalogue.h"
#include "obd/value_fields.h"
#include "state/app.h"

namespace ketrel {
namespace {

// One row of msMonitorGrid: the byte and bit that say the monitor is supported, and the byte
// and bit that say it is not yet complete. Bytes: 2 = B, 3 = C, 4 = D.
struct Monitor {
    int row;
    const char* name;
    int supportByte, supportBit, readyByte, readyBit;
};

// In the order they are tested: B bits 0, 1, 2, then C bits 0 to 7. Row 4 stays blank: it
// divides the continuous monitors from the others.
constexpr std::array<Monitor, 11> kMonitors{{
    {2, "MISFIRE", 2, 0, 2, 4},
    {1, "FUEL", 2, 1, 2, 5},
    {3, "COMPONENT", 2, 2, 2, 6},
    {7, "CATALYST CONVERTER", 3, 0, 4, 0},
    {11, "HEATED CATALYST CONVERTER", 3, 1, 4, 1},
    {8, "FUEL EVAPORATIVE", 3, 2, 4, 2},
    {9, "AIR INJECTION", 3, 3, 4, 3},
    {12, "A/C REFRIGERANT", 3, 4, 4, 4},
    {6, "O2 SENSOR", 3, 5, 4, 5},
    {5, "O2 SENSOR HEATER", 3, 6, 4, 6},
    {10, "EGR", 3, 7, 4, 7},
}};

int ByteOrZero(const App& app, int n) {
    return app.ByteValue[std::size_t(n)].value_or(0);
}

void SetAll(const std::vector<Field*>& fields) {
    for (Field* f : fields)
        f->setText("N/A");
}

}  // namespace

void DecodeMonitorStatus(App& app) {
    FrmMain& m = app.frmMain();
    int a = ByteOrZero(app, 1);
    // The count shows only while the lamp bit is set.
    m.lblNumberCodes.setText(a > 128 ? plain(a - 128) : "0");
    const std::string& lampBits = app.ByteBits[1];
    if (!lampBits.empty() && lampBits[0] == '1') {
        m.lblMil.setText("ON");
        m.imgMIL.setPicture(kImgConnected);
    } else if (!lampBits.empty() && lampBits[0] == '0') {
        m.lblMil.setText("OFF");
        m.imgMIL.setPicture(kImgNotConnected);
    }
    int ready = 0, supported = 0;
    for (const Monitor& mon : kMonitors) {
        bool isSupported = (ByteOrZero(app, mon.supportByte) >> mon.supportBit & 1) != 0;
        bool notDone = (ByteOrZero(app, mon.readyByte) >> mon.readyBit & 1) != 0;
        if (isSupported) {
            m.msMonitorGrid.setText(mon.row, 2, "YES");
            ++supported;
            if (!notDone) {
                m.msMonitorGrid.setText(mon.row, 1, "READY");
                ++ready;
            } else {
                m.msMonitorGrid.setText(mon.row, 1, "NOT DONE");
            }
        } else {
            m.msMonitorGrid.setText(mon.row, 1, "N/A");
            m.msMonitorGrid.setText(mon.row, 2, "NO");
        }
    }
    m.msGridReady.setText(1, 0, std::to_string(ready));
    m.msGridReady.setText(1, 1, std::to_string(supported - ready));
    m.msGridReady.setText(1, 2, std::to_string(supported));
    m.msGridReady.setText(1, 3, std::to_string(11 - supported));
}

void ResetMonitorGrids(App& app) {
    FrmMain& m = app.frmMain();
    Grid& g = m.msMonitorGrid;
    g.clear();
    g.setRows(13);
    g.setCols(3);
    g.setColWidth(0, 6520);
    g.setColWidth(1, 3000);
    g.setText(0, 0, "MONITORS");
    g.setText(0, 1, "STATUS");
    g.setText(0, 2, "SUPPORTED");
    for (const Monitor& mon : kMonitors) {
        g.setText(mon.row, 0, mon.name);
        g.setText(mon.row, 1, "N/A");
        g.setText(mon.row, 2, "N/A");
    }

    Grid& r = m.msGridReady;
    r.clear();
    r.setRows(2);
    r.setCols(4);
    r.setColWidth(0, 2100);
    r.setColWidth(2, 2600);
    const char* headers[] = {"READY", "NOT DONE", "SUPPORTED", "UNSUPPORTED"};
    for (int c = 0; c < 4; ++c) {
        r.setText(0, c, headers[c]);
        r.setText(1, c, "N/A");
    }
}

void ClearMainData(App& app) {
    SetAll(MainDataFields(app));
    ResetMonitorGrids(app);
    ClearFreezeData(app);
}

void ClearDisplay(App& app) {
    FrmMain& m = app.frmMain();
    ResetSupportGrids(app);
    m.imgMIL.setPicture(kImgNotConnected);
    ClearMainData(app);
    SetAll({&m.lblOBDDesign, &m.lblWhatProtocol, &m.lblECMAddress, &m.lblECMAddress2,
            &m.lblKeyword1, &m.lblKeyword2});
}

void ClearExtendedData(App& app) {
    SetAll(app.frmNewPids().valueFields());
}

void ClearFreezeData(App& app) {
    SetAll(FreezeFrameFields(app));
}

}  // namespace ketrel
