#include "screens/frm_main.h"

#include "screens/data_tab_layout.h"

namespace ketrel {

FrmMain::FrmMain(EventLoop& loop)
    : Screen(loop, "frmMain", "Ketrel (OBD II Generic) Version 0.77 - "),
      SplashScreen(makeTimer(1500)),
      TimeOutConnect(makeTimer(10000)),
      BR3Delay(makeTimer(125)),
      KeshDelay(makeTimer(125)),
      ClearCodeTimer(makeTimer(2000)),
      RequestTimer(makeTimer(5000)) {
    cmdClearCodes.setText("[F2] CLEAR CODES");
    cmdRequestFF.setText("[F3]  FREEZE FRAME");
    cmdRequestTC.setText("[F4] TROUBLE CODES");
    cmdRequestPending.setText("[F5] PENDING CODES");
    cmdRequestInfo.setText("REQUEST VIN");
    cmdClearVehicle.setText("CLEAR");
    cmdPrintFFData.setText("PRINT");
    Command1.setText("Debug Data");
    Command4.setText("Clear");
    frCheckEngine.setText("CHECK ENGINE LIGHT");
    lblCodesNote.setText(
        "DATA HERE WILL BE CLEARED WHEN FOCUS IS LOST.  REQUEST AGAIN IF THERE ARE STORED "
        "CODES/DATA.");
    for (const DataTabRow& row : kDataTabRows)
        Label1[row.captionItem].setText(row.caption);
    mnuViewDefault.setChecked(true);
    mnuOptionStatusBar.setChecked(true);
    mnuOptionToolbar.setChecked(true);
    Panel2.setPicture(kImgNotConnected);
    imgMIL.setPicture(kImgNotConnected);
    // Design captions: the value captions of tab 0, the freeze-frame captions of tab 2 and the
    // unit captions, which the unit settings rewrite.
    for (const DataTabRow& row : kDataTabRows)
        Label1[row.captionItem].setText(row.caption);
    const char* ffCaptions[] = {"FUEL SYSTEM 1",
                                "FUEL SYSTEM 2",
                                "CALCULATED LOAD",
                                "COOLANT TEMP",
                                "SHORT TERM FUEL TRIM B1",
                                "LONG TERM FUEL TRIM B1",
                                "SHORT TERM FUEL TRIM B2",
                                "LONG TERM FUEL TRIM B2",
                                "FUEL PRESSURE",
                                "MANIFOLD PRESSURE",
                                "ENGINE RPM",
                                "VEHICLE SPEED",
                                "SPARK ADVANCE",
                                "INTAKE AIR TEMP",
                                "MASS AIR FLOW",
                                "THROTTLE POSITION"};
    for (int i = 0; i < int(std::size(ffCaptions)); ++i)
        Label2[i].setText(ffCaptions[i]);
    for (int i = 0; i < 4; ++i)
        lblTemp[i].setText("Deg {F}");
    Label10.setText("In/Hg");
    label4[2].setText("In/Hg");
    label4[3].setText("P.S.I");
    lblPSI[0].setText("P.S.I.");
    lblMPH[0].setText("MPH");
    lblMPH[1].setText("MPH");
    const char* ecuCaptions[] = {"ECU ADDRESS:", "2ND ECU ADDRESS:", "KEYWORD 1:", "KEYWORD 2:"};
    for (int i = 0; i < 4; ++i)
        Label32[17 + i].setText(ecuCaptions[i]);
    GridData.setVisible(false);
    // A code grid shows the text of the cell under the pointer as its tool tip, so that a long
    // description can be read in full.
    for (Grid* grid : {&gridTroubleCode, &gridPending}) {
        grid->onMouseMove = [grid](int row, int col) { grid->setToolTip(grid->text(row, col)); };
    }
    for (Control* c : std::initializer_list<Control*>{
             &LogData, &Text2, &txtInputDORVANE, &txtInputBR3, &txtKesh, &lstRecordData, &Command1,
             &Command4, &lstPendingCodes, &lstCodes, &lstFreezeCodes}) {
        c->setVisible(false);
    }
    markDesign();
}

ToolButton& FrmMain::button(int number) {
    ToolButton* all[] = {&tb1,  &tbConnect, &tbDisconnect, &tb4,     &tbController,
                         &tb6,  &tbScope,   &tb8,          &tbDTC,   &tbGuage,
                         &tb11, &tbCustom,  &tb13,         &tbMode6, &tbMode5};
    return *all[(number >= 1 && number <= 15) ? number - 1 : 0];
}

ToolButton* FrmMain::buttonByKey(const std::string& key) {
    for (int n = 1; n <= 15; ++n) {
        if (!key.empty() && button(n).key() == key) return &button(n);
    }
    return nullptr;
}

StatusPanel& FrmMain::panel(int number) {
    StatusPanel* all[] = {&Panel1, &Panel2, &Panel3, &Panel4, &Panel5,
                          &Panel6, &Panel7, &Panel8, &Panel9};
    return *all[(number >= 1 && number <= 9) ? number - 1 : 0];
}

namespace {
constexpr int kIndicatorDistance = 14;
}  // namespace

int IndicatorPid(int item) {
    if (item == 0 || item == 1) return 1;
    if (item == 3 || item == 33) return 3;
    if (item >= 20 + kIndicatorDistance && item <= 27 + kIndicatorDistance)
        return item - kIndicatorDistance;
    return item;
}

std::vector<int> IndicatorItems(int pid) {
    if (pid == 1) return {0, 1};
    if (pid == 3) return {3, 33};
    if (pid >= 20 && pid <= 27) return {pid, pid + kIndicatorDistance};
    return {pid};
}

}  // namespace ketrel
