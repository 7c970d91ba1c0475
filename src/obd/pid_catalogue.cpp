#include "obd/pid_catalogue.h"

#include <array>
#include <string>

#include "data/pid_catalogue_rows.h"
#include "obd/bit_operations.h"
#include "state/app.h"

namespace ketrel {
namespace {

// The view menu items that a supported PID switches on.
struct PidMenu {
    int pid;
    MenuItem FrmMain::*item;
};
constexpr std::array<PidMenu, 16> kPidMenus{{
    {5, &FrmMain::mnuViewCoolant},
    {10, &FrmMain::mnuViewFuelPressure},
    {11, &FrmMain::mnuViewMAP},
    {12, &FrmMain::mnuViewRPM},
    {13, &FrmMain::mnuViewSpeed},
    {15, &FrmMain::mnuViewIntakeAir},
    {16, &FrmMain::mnuViewMAF},
    {17, &FrmMain::mnuViewTPS},
    {20, &FrmMain::mnuViewO2B1S1},
    {21, &FrmMain::mnuViewO2B1S2},
    {22, &FrmMain::mnuViewO2B1S3},
    {23, &FrmMain::mnuViewO2B1S4},
    {24, &FrmMain::mnuViewO2B2S1},
    {25, &FrmMain::mnuViewO2B2S2},
    {26, &FrmMain::mnuViewO2B2S3},
    {27, &FrmMain::mnuViewO2B2S4},
}};

// Bit i (1 to 32) of the bitmap: character p of ByteBits(n), or 0 when the byte is absent.
char BitmapFlag(const App& app, int i) {
    const std::string& bits = app.ByteBits[std::size_t((i - 1) / 8 + 1)];
    std::size_t p = std::size_t((i - 1) % 8);
    return p < bits.size() ? bits[p] : 0;
}

// One support cell: row i for the first sixteen PIDs of the grid in column 2, the next
// sixteen in column 5.
void WriteSupportCell(Grid& grid, int i, char flag) {
    int row = i <= 16 ? i : i - 16;
    int col = i <= 16 ? 2 : 5;
    if (flag == '1') {
        grid.setText(row, col, "YES");
        grid.setCellBackColor(row, col, kLightGreen);
    } else {
        grid.setText(row, col, flag == '0' ? "NO" : "N/A");
    }
}

// PIDs first + 1 to first + 32 of Mode 01 from the bitmap: arrays, grid and the extended
// count. Used by the PID 20 and PID 40 replies.
void DecodeExtendedBitmap(App& app, int first, Grid& grid) {
    if (app.RxMode != "01") return;
    for (int pid = first + 1; pid <= first + 32; ++pid) {
        app.Mode1Supported[std::size_t(pid)] = false;
        app.PidWanted[std::size_t(pid)] = false;
    }
    for (int i = 1; i <= 32; ++i) {
        char flag = BitmapFlag(app, i);
        bool on = flag == '1';
        app.PidWanted[std::size_t(first + i)] = on;
        app.Mode1Supported[std::size_t(first + i)] = on;
        WriteSupportCell(grid, i, flag);
        if (on) ++app.ExtendedPIDCount;
    }
}

void ApplyO2Texts(App& app, bool fourBank) {
    FrmMain& m = app.frmMain();
    MenuItem* menus[] = {&m.mnuViewO2B1S1, &m.mnuViewO2B1S2, &m.mnuViewO2B1S3, &m.mnuViewO2B1S4,
                         &m.mnuViewO2B2S1, &m.mnuViewO2B2S2, &m.mnuViewO2B2S3, &m.mnuViewO2B2S4};
    for (std::size_t s = 0; s < data::kO2Slots.size(); ++s) {
        const data::O2Slot& slot = data::kO2Slots[s];
        const data::O2SlotTexts& t = fourBank ? slot.fourBank : slot.twoBank;
        int row = int(s) + 4;  // PIDs 14 to 1B and 24 to 2B sit in rows 4 to 11
        m.Label1[slot.labelItem].setText(t.label);
        m.Label1[slot.trimItem].setText(t.trim);
        m.msM1Grid.setText(row, 4, t.mode1);
        m.msM2Grid.setText(row, 4, t.mode1);
        m.msM3Grid.setText(row, 1, t.wide);
        menus[s]->setCaption(t.menu);
    }
}

}  // namespace

void ResetSupportGrid(App& app, Grid& grid) {
    FrmMain& m = app.frmMain();
    int base = 0;
    const std::array<const char*, 32>* rows = &data::kPidRows01To20;
    if (&grid == &m.msM3Grid) {
        base = 0x20;
        rows = &data::kPidRows21To40;
    } else if (&grid == &m.msM4Grid) {
        base = 0x40;
        rows = &data::kPidRows41To60;
    }
    static constexpr int kWidths[] = {750, 4300, 1500, 750, 4000, 1500};
    grid.clear();
    grid.setRows(17);
    grid.setCols(6);
    for (int c = 0; c < 6; ++c) {
        grid.setColWidth(c, kWidths[c]);
        grid.setColAlign(c, c == 1 || c == 4 ? Align::Left : Align::Center);
    }
    for (int block = 0; block < 2; ++block) {
        grid.setText(0, block * 3, "PID");
        grid.setText(0, block * 3 + 1, "DESCRIPTION");
        grid.setText(0, block * 3 + 2, "SUPPORTED");
        for (int r = 1; r <= 16; ++r) {
            int i = block * 16 + r;
            grid.setText(r, block * 3, ByteToHexText(base + i));
            grid.setText(r, block * 3 + 1, (*rows)[std::size_t(i - 1)]);
            grid.setText(r, block * 3 + 2, "N/A");
        }
    }
}

void ResetSupportGrids(App& app) {
    FrmMain& m = app.frmMain();
    for (Grid* g : {&m.msM1Grid, &m.msM2Grid, &m.msM3Grid, &m.msM4Grid})
        ResetSupportGrid(app, *g);
}

void DecodeSupportPID00(App& app) {
    FrmMain& m = app.frmMain();
    bool mode1 = app.RxMode == "01", mode2 = app.RxMode == "02";
    for (int i = 1; i <= 32; ++i) {
        char flag = BitmapFlag(app, i);
        bool on = flag == '1';
        if (mode1) {
            app.PidWanted[std::size_t(i)] = on;
            app.Mode1Supported[std::size_t(i)] = on;
            WriteSupportCell(m.msM1Grid, i, flag);
            if (on) ++app.SupportedCount;
        } else if (mode2) {
            app.Mode2Supported[std::size_t(i)] = on;
            WriteSupportCell(m.msM2Grid, i, flag);
            if (on) ++app.FFSupportedCount;
        }
    }
    if (mode2) app.FFPidsKnown = true;
    // Menus are only switched on here; a new connection switches them off.
    for (const PidMenu& pm : kPidMenus) {
        if (app.Mode1Supported[std::size_t(pm.pid)]) (m.*pm.item).setEnabled(true);
    }
    // Fuel economy needs long term trim bank 1, vehicle speed and mass air flow.
    if (app.Mode1Supported[7] && app.Mode1Supported[13] && app.Mode1Supported[16]) {
        m.mnuViewMPG.setEnabled(true);
        m.mnuViewResetMPG.setEnabled(true);
    }
    SetO2Layout(app);
    if (app.GridStyle) CopyO2LabelsToGrid(app);
}

void DecodeSupportPID20(App& app) {
    DecodeExtendedBitmap(app, 0x20, app.frmMain().msM3Grid);
}

void DecodeSupportPID40(App& app) {
    DecodeExtendedBitmap(app, 0x40, app.frmMain().msM4Grid);
}

void SetO2Layout(App& app) {
    ApplyO2Texts(app, false);
    if (app.Mode1Supported[0x1D]) ApplyO2Texts(app, true);
}

void CopyO2LabelsToGrid(App& app) {
    FrmMain& m = app.frmMain();
    // The trim captions land on rows 9 to 16 after the sensor captions, over rows 9 and 10.
    for (std::size_t s = 0; s < data::kO2Slots.size(); ++s)
        m.GridData.setText(int(s) + 3, 0, m.Label1[data::kO2Slots[s].labelItem].text());
    for (std::size_t s = 0; s < data::kO2Slots.size(); ++s)
        m.GridData.setText(int(s) + 9, 0, m.Label1[data::kO2Slots[s].trimItem].text());
}

}  // namespace ketrel
