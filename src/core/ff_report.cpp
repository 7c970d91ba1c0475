#include "core/ff_report.h"

#include <memory>

#include "codes/trouble_codes_library.h"
#include "screens/frm_print_ff.h"
#include "state/app.h"

namespace ketrel {

namespace {

// The page: a body 540 points wide with a 36-point margin, which fits Letter and A4 alike.
constexpr double kLeft = 36, kTop = 36, kBodyWidth = 540;
constexpr double kLogoWidth = 240, kRow = 16, kValueColumn = 230;

// A vehicle field: "N/A" when nothing was chosen or typed.
std::string chosen(const std::string& text, bool selectCounts = true) {
    return text.empty() || (selectCounts && text == "-SELECT-") ? "N/A" : text;
}

std::vector<std::string> itemsOf(const ListBox& list) {
    return list.items();
}

// A caption and the field it names, in print order.
struct Line {
    const char* caption;
    const Field& field;
};

}  // namespace

std::string FaultCodesText(const std::vector<std::string>& stored,
                           const std::vector<std::string>& pending,
                           const std::vector<std::string>& freeze,
                           const std::function<std::string(const std::string&)>& describe) {
    std::string out;
    const struct {
        const std::vector<std::string>& codes;
        const char* mark;
    } lists[] = {{stored, " (TC)"}, {pending, " (Pending)"}, {freeze, " (FF)"}};
    for (const auto& list : lists) {
        for (const std::string& code : list.codes) {
            out += code + " - ";
            if (code.rfind("P0", 0) != 0) continue;
            out += describe(code) + list.mark + "\r\n";
        }
    }
    return out;
}

void FillPrintFF(App& app, FrmPrintFF& p) {
    FrmMain& m = app.frmMain();
    p.lblYear.setText(chosen(m.cmbYear.text()));
    p.lblMake.setText(chosen(m.cmbMake.text()));
    p.lblModel.setText(chosen(m.cmbModel.text()));
    p.lblAC.setText(chosen(m.cmbAC.text()));
    p.lblCylinder.setText(chosen(m.cmbEngine.text()));
    p.lblTransmission.setText(chosen(m.cmbTransmission.text()));
    p.lblMileage.setText(chosen(m.txtMileage.text()));
    p.lblVin.setText(chosen(m.txtVin.text(), false));

    p.lblLoad.setText(m.lblFFLoad.text());
    p.lblSpark.setText(m.lblFFTiming.text());
    p.lblLTFTB1.setText(m.lblFFLTFTB1.text());
    p.lblLTFTB2.setText(m.lblFFLTFTB2.text());
    // Both short-term trims of the page read bank 1's value into the bank 1 field; the bank 2
    // field is never written and prints blank.
    p.lblSTFTB1.setText(m.lblFFSTFTB1.text());
    p.lblSTFTB1.setText(m.lblFFSTFTB1.text());
    p.lblCoolant.setText(m.lblFFCoolant.text());
    p.lblIntake.setText(m.lblFFIntakeAir.text());
    p.lblRPM.setText(m.lblFFRPM.text());
    p.lblSpeed.setText(m.lblFFSpeed.text());
    p.lblMAF.setText(m.lblFFMAF.text());
    p.lblMAP.setText(m.lblFFMAP.text());
    p.lblFS1.setText(m.lblFFFuelSys1.text());
    p.lblFS2.setText(m.lblFFFuelSys2.text());
    p.lblFPressure.setText(m.lblFFFuelPres.text());
    p.lblTps.setText(m.lblFFTPS.text());

    p.txtFaultCodes.setText(FaultCodesText(itemsOf(m.lstCodes), itemsOf(m.lstPendingCodes),
                                           itemsOf(m.lstFreezeCodes),
                                           [&app](const std::string& code) {
                                               LookupGeneric(app, code);
                                               return app.CodeDescription;
                                           }));
}

PrintPage FreezeFrameReportPage(const FrmPrintFF& p) {
    PrintPage page;
    page.title = p.lblLogo.text();
    auto add = [&page](std::string name, std::string text, double x, double y, double width,
                       double size, bool bold, bool center = false) {
        page.items.push_back({std::move(name), std::move(text), x, y, width, size, bold, center});
    };
    // The logo centred on the body: its left edge is half of what the body leaves beside it.
    add(p.lblLogo.name(), p.lblLogo.text(), kLeft + (kBodyWidth - kLogoWidth) / 2, kTop, kLogoWidth,
        18, true, true);
    double y = kTop + 40;
    const Line vehicle[] = {{"YEAR:", p.lblYear},         {"MAKE:", p.lblMake},
                            {"MODEL:", p.lblModel},       {"", p.lblAC},
                            {"CYLINDER:", p.lblCylinder}, {"TRANSMISSION:", p.lblTransmission},
                            {"MILEAGE:", p.lblMileage},   {"VIN:", p.lblVin}};
    const Line frozen[] = {{"CALCULATED LOAD:", p.lblLoad},
                           {"SPARK ADVANCE:", p.lblSpark},
                           {"LONG TERM FUEL TRIM B1:", p.lblLTFTB1},
                           {"LONG TERM FUEL TRIM B2:", p.lblLTFTB2},
                           {"SHORT TERM FUEL TRIM B1:", p.lblSTFTB1},
                           {"SHORT TERM FUEL TRIM B2:", p.lblSTFTB2},
                           {"COOLANT TEMPERATURE:", p.lblCoolant},
                           {"INTAKE TEMPERATURE:", p.lblIntake},
                           {"", p.lblRPM},
                           {"VEHICLE SPEED:", p.lblSpeed},
                           {"AIRFLOW (MAF):", p.lblMAF},
                           {"MAP:", p.lblMAP},
                           {"FUEL SYSTEM 1:", p.lblFS1},
                           {"FUEL SYSTEM 2:", p.lblFS2},
                           {"FUEL PRESSURE:", p.lblFPressure},
                           {"THROTTLE POSITION:", p.lblTps}};
    auto block = [&](const Line* lines, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i, y += kRow) {
            const Line& l = lines[i];
            add(l.field.name() + ".caption", l.caption, kLeft, y, kValueColumn - 12, 10, true);
            add(l.field.name(), l.field.text(), kLeft + kValueColumn, y, kBodyWidth - kValueColumn,
                10, false);
        }
        y += kRow;
    };
    block(vehicle, std::size(vehicle));
    block(frozen, std::size(frozen));
    add(p.lblFFCodes.name() + ".caption", "CODE:", kLeft, y, kValueColumn - 12, 10, true);
    add(p.lblFFCodes.name(), p.lblFFCodes.text(), kLeft + kValueColumn, y,
        kBodyWidth - kValueColumn, 10, false);
    y += kRow;
    add(p.txtFaultCodes.name(), p.txtFaultCodes.text(), kLeft, y, kBodyWidth, 10, false);
    return page;
}

void PrintFreezeFrame(App& app) {
    auto* page = dynamic_cast<FrmPrintFF*>(app.screenByName("frmPrintFF"));
    if (!page) return;
    page->unload();
    page->load();
    FillPrintFF(app, *page);
    // From here on errors are passed over: a page that can't print is simply not printed.
    try {
        if (app.printer) app.printer->printPage(FreezeFrameReportPage(*page));
    } catch (...) {
    }
    page->unload();
}

void InstallFreezeFrameReport(App& app) {
    if (!app.screenByName("frmPrintFF")) app.addScreen(std::make_unique<FrmPrintFF>(app.loop()));
    FrmMain& m = app.frmMain();
    m.cmdPrintFFData.onClick = [&app] { PrintFreezeFrame(app); };
    m.mnuFilePrintFF.onClick = [&app] { PrintFreezeFrame(app); };
}

}  // namespace ketrel
