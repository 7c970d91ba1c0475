#pragma once
#include <memory>
#include <vector>

#include "platform/serial_port.h"
#include "screens/screen.h"

namespace ketrel {

// Picture names the fields show; the views map them to images.
inline constexpr const char* kImgGreen = "imgGreen";
inline constexpr const char* kImgRed = "imgRed";
inline constexpr const char* kImgYellow = "imgYellow";
inline constexpr const char* kImgConnected = "imgConnected";
inline constexpr const char* kImgNotConnected = "imgNotConnected";

// The main window: the named fields that the decoders write and the user acts on, its menus,
// toolbar, status bar, timers and the three ports of the scanning phase.
class FrmMain : public Screen {
  public:
    explicit FrmMain(EventLoop& loop);

    // Tabs
    Tabs SSTab1{this,
                "SSTab1",
                {"- DATA PARAMETER", "- MONITOR STATUS", "- CODES/FREEZE FRAME",
                 "- VEHICLE INFORMATION", "- SUPPORTED PIDS"}};
    Tabs SSTab2{this,
                "SSTab2",
                {"MODE 1 - PID (01 - 20)", "MODE 1 - PID (21 -40)", "MODE 1 - PID (41 -60)",
                 "MODE 2 - PID (01 - 20)"}};

    // Tab 0: live values (label style) and the grid style
    Field Frame14{this, "Frame14"};
    Field lblCoolant{this, "lblCoolant"}, lblIntakeAir{this, "lblIntakeAir"};
    Field lblO2b1s1{this, "lblO2b1s1"}, lblO2b1s2{this, "lblO2b1s2"}, lblO2b1s3{this, "lblO2b1s3"},
        lblO2b1s4{this, "lblO2b1s4"};
    Field lblO2b2s1{this, "lblO2b2s1"}, lblO2b2s2{this, "lblO2b2s2"}, lblO2b2s3{this, "lblO2b2s3"},
        lblO2b2s4{this, "lblO2b2s4"};
    Field lblLTB1{this, "lblLTB1"}, lblSTB1{this, "lblSTB1"}, lblLTB2{this, "lblLTB2"},
        lblSTB2{this, "lblSTB2"};
    Field lblTps{this, "lblTps"}, lblSpeed{this, "lblSpeed"}, lblTiming{this, "lblTiming"},
        lblMAF{this, "lblMAF"};
    Field lblLoad{this, "lblLoad"}, lblMAP{this, "lblMAP"}, lblRPM{this, "lblRPM"};
    Field lblFuelSys1{this, "lblFuelSys1"}, lblFuelSys2{this, "lblFuelSys2"},
        lblFuelPres{this, "lblFuelPres"};
    Field lblMil{this, "lblMil"}, lblNumberCodes{this, "lblNumberCodes"};
    Field lblSTO2B1S1{this, "lblSTO2B1S1"}, lblSTO2B1S2{this, "lblSTO2B1S2"},
        lblSTO2B1S3{this, "lblSTO2B1S3"}, LBLSTO2B1S4{this, "LBLSTO2B1S4"};
    Field LBLSTO2B2S1{this, "LBLSTO2B2S1"}, LBLSTO2B2S2{this, "LBLSTO2B2S2"},
        LBLSTO2B2S3{this, "LBLSTO2B2S3"}, LBLSTO2B2S4{this, "LBLSTO2B2S4"};
    Field lblPTO{this, "lblPTO"}, lblAirCommand{this, "lblAirCommand"},
        lblTimeStart{this, "lblTimeStart"};
    Grid GridData{this, "GridData", 20, 7};
    Field frCheckEngine{this, "frCheckEngine"};
    Field imgMIL{this, "imgMIL"};
    // Captions beside the values, PID indicators, unit captions
    ControlArray<Field> Label1{this, "Label1"};
    ControlArray<Field> Image1{this, "Image1"};
    ControlArray<Field> lblTemp{this, "lblTemp"};
    Field Label10{this, "Label10"};
    ControlArray<Field> label4{this, "label4"};
    ControlArray<Field> lblPSI{this, "lblPSI"};
    ControlArray<Field> lblMPH{this, "lblMPH"};

    // Tab 1: monitors
    Field Frame3{this, "Frame3"};
    Grid msMonitorGrid{this, "msMonitorGrid", 13, 3};
    Grid msGridReady{this, "msGridReady", 2, 4};

    // Tab 2: codes and freeze frame
    Field Frame10{this, "Frame10"};
    Grid gridTroubleCode{this, "gridTroubleCode", 10, 4};
    Grid gridPending{this, "gridPending", 10, 3};
    Field lblFFFuelSys1{this, "lblFFFuelSys1"}, lblFFFuelSys2{this, "lblFFFuelSys2"},
        lblFFLoad{this, "lblFFLoad"}, lblFFCoolant{this, "lblFFCoolant"};
    Field lblFFSTFTB1{this, "lblFFSTFTB1"}, lblFFLTFTB1{this, "lblFFLTFTB1"},
        lblFFSTFTB2{this, "lblFFSTFTB2"}, lblFFLTFTB2{this, "lblFFLTFTB2"};
    Field lblFFFuelPres{this, "lblFFFuelPres"}, lblFFMAP{this, "lblFFMAP"},
        lblFFRPM{this, "lblFFRPM"}, lblFFSpeed{this, "lblFFSpeed"};
    Field lblFFTiming{this, "lblFFTiming"}, lblFFIntakeAir{this, "lblFFIntakeAir"},
        lblFFMAF{this, "lblFFMAF"}, lblFFTPS{this, "lblFFTPS"};
    ControlArray<Field> Label2{this, "Label2"};  // captions of the freeze-frame values
    Field cmdClearCodes{this, "cmdClearCodes"}, cmdRequestFF{this, "cmdRequestFF"},
        cmdRequestTC{this, "cmdRequestTC"}, cmdRequestPending{this, "cmdRequestPending"};
    Field cmdPrintFFData{this, "cmdPrintFFData"};
    Field lblCodesNote{this, "lblCodesNote"};

    // Tab 3: vehicle information
    Field Frame4{this, "Frame4"};
    ComboBox cmbYear{this, "cmbYear"}, cmbMake{this, "cmbMake"}, cmbModel{this, "cmbModel"},
        cmbEngine{this, "cmbEngine"}, cmbTransmission{this, "cmbTransmission"},
        cmbAC{this, "cmbAC"};
    Field txtPlate{this, "txtPlate"}, txtVin{this, "txtVin"}, txtMileage{this, "txtMileage"};
    Field cmdRequestInfo{this, "cmdRequestInfo"}, cmdClearVehicle{this, "cmdClearVehicle"};
    Field lblWhatProtocol{this, "lblWhatProtocol"}, lblECMAddress{this, "lblECMAddress"},
        lblECMAddress2{this, "lblECMAddress2"}, lblKeyword1{this, "lblKeyword1"},
        lblKeyword2{this, "lblKeyword2"}, lblOBDDesign{this, "lblOBDDesign"};
    ControlArray<Field> Label32{this, "Label32"};

    // Tab 4: supported PIDs
    Field Frame12{this, "Frame12"};
    Grid msM1Grid{this, "msM1Grid", 17, 6}, msM3Grid{this, "msM3Grid", 17, 6},
        msM4Grid{this, "msM4Grid", 17, 6}, msM2Grid{this, "msM2Grid", 17, 6};

    // Debug fields, hidden until asked for
    ListBox LogData{this, "LogData"};
    Field Text2{this, "Text2"}, txtInputDORVANE{this, "txtInputDORVANE"},
        txtInputBR3{this, "txtInputBR3"}, txtKesh{this, "txtKesh"};
    ListBox lstRecordData{this, "lstRecordData"};
    Field Command1{this, "Command1"}, Command4{this, "Command4"};
    ListBox lstPendingCodes{this, "lstPendingCodes"}, lstCodes{this, "lstCodes"},
        lstFreezeCodes{this, "lstFreezeCodes"};

    // Menus
    MenuItem mnuFile{this, "mnuFile", "&File"};
    MenuItem mnuFileOpen{this, "mnuFileOpen", "&Open Recorded Log...", &mnuFile};
    MenuItem mnuFilePrintFF{this, "mnuFilePrintFF", "Print Freeze Frame", &mnuFile};
    MenuItem mnuFileExit{this, "mnuFileExit", "E&xit", &mnuFile};
    MenuItem mnuVehicle{this, "mnuVehicle", "Vehi&cle"};
    MenuItem mnuVehicleConnect{this, "mnuVehicleConnect", "Connect", &mnuVehicle};
    MenuItem mnuVehicleDisconnect{this, "mnuVehicleDisconnect", "Disconnect", &mnuVehicle};
    MenuItem mnuVehicleClear{this, "mnuVehicleClear", "Clear Code", &mnuVehicle, "F2"};
    MenuItem mnuVehicleRequestFF{this, "mnuVehicleRequestFF", "Request Freeze Frame", &mnuVehicle,
                                 "F3"};
    MenuItem mnuVehicleRequestTC{this, "mnuVehicleRequestTC", "Request Trouble Code", &mnuVehicle,
                                 "F4"};
    MenuItem mnuVehicleRequestPending{this, "mnuVehicleRequestPending", "Request Pending Code",
                                      &mnuVehicle, "F5"};
    MenuItem mnuVehicleClearInfo{this, "mnuVehicleClearInfo", "Clear Vehicle Information",
                                 &mnuVehicle};
    MenuItem mnuVehicleInfo{this, "mnuVehicleInfo", "Reqest Vehicle Information", &mnuVehicle};
    MenuItem mnuEdit{this, "mnuEdit", "&Edit"};
    MenuItem mnuEditPlay{this, "mnuEditPlay", "Play", &mnuEdit};
    MenuItem mnuEditStop{this, "mnuEditStop", "Stop", &mnuEdit};
    MenuItem mnuEditRecord{this, "mnuEditRecord", "Record", &mnuEdit};
    MenuItem mnuEditPidsOver{this, "mnuEditPidsOver", "PIDS Override", &mnuEdit};
    MenuItem mnuView{this, "mnuView", "&View"};
    MenuItem mnuViewStyle{this, "mnuViewStyle", "Data Style...", &mnuView};
    MenuItem mnuViewDefault{this, "mnuViewDefault", "Default", &mnuViewStyle};
    MenuItem mnuViewStyleGrid{this, "mnuViewStyleGrid", "Grid Style", &mnuViewStyle};
    MenuItem mnuViewRedScanner{this, "mnuViewRedScanner", "Red Scanner", &mnuViewStyle};
    MenuItem mnuViewRealTime{this, "mnuViewRealTime", "Large Display Data...", &mnuView};
    MenuItem mnuViewO2B1S1{this, "mnuViewO2B1S1", "O2 SENSOR B1S1...", &mnuViewRealTime};
    MenuItem mnuViewO2B1S2{this, "mnuViewO2B1S2", "O2 SENSOR B1S2...", &mnuViewRealTime};
    MenuItem mnuViewO2B1S3{this, "mnuViewO2B1S3", "O2 SENSOR B1S3...", &mnuViewRealTime};
    MenuItem mnuViewO2B1S4{this, "mnuViewO2B1S4", "O2 SENSOR B1S4...", &mnuViewRealTime};
    MenuItem mnuViewO2B2S1{this, "mnuViewO2B2S1", "O2 SENSOR B2S1...", &mnuViewRealTime};
    MenuItem mnuViewO2B2S2{this, "mnuViewO2B2S2", "O2 SENSOR B2S2...", &mnuViewRealTime};
    MenuItem mnuViewO2B2S3{this, "mnuViewO2B2S3", "O2 SENSOR B2S3...", &mnuViewRealTime};
    MenuItem mnuViewO2B2S4{this, "mnuViewO2B2S4", "O2 SENSOR B2S4...", &mnuViewRealTime};
    MenuItem mnuViewIntakeAir{this, "mnuViewIntakeAir", "Intake Air Temperature...",
                              &mnuViewRealTime};
    MenuItem mnuViewCoolant{this, "mnuViewCoolant", "Coolant Temperature...", &mnuViewRealTime};
    MenuItem mnuViewTPS{this, "mnuViewTPS", "Throttle Position Sensor...", &mnuViewRealTime};
    MenuItem mnuViewMAF{this, "mnuViewMAF", "Mass Air Flow...", &mnuViewRealTime};
    MenuItem mnuViewMAP{this, "mnuViewMAP", "Manifold Absolute Pressure...", &mnuViewRealTime};
    MenuItem mnuViewRPM{this, "mnuViewRPM", "Engine RPM...", &mnuViewRealTime};
    MenuItem mnuViewSpeed{this, "mnuViewSpeed", "Vehicle Speed...", &mnuViewRealTime};
    MenuItem mnuViewFuelPressure{this, "mnuViewFuelPressure", "Fuel Pressure...", &mnuViewRealTime};
    MenuItem mnuViewVariousGuage{this, "mnuViewVariousGuage", "Gauges...", &mnuView};
    MenuItem mnuViewGuage{this, "mnuViewGuage", "RPM Gauge...", &mnuViewVariousGuage};
    MenuItem mnuViewMultiGuage{this, "mnuViewMultiGuage", "Multi Gauges...", &mnuViewVariousGuage};
    MenuItem mnuViewScope{this, "mnuViewScope", "Scope...", &mnuView};
    MenuItem mnuViewMode5{this, "mnuViewMode5", "Mode 5 Oxygen Sensor Tests...", &mnuView};
    MenuItem mnuViewMode6{this, "mnuViewMode6", "Mode 6 On-Board Tests...", &mnuView};
    MenuItem mnuOptionData{this, "mnuOptionData", "Extended Data Parameter...", &mnuView};
    MenuItem mnuViewMPG{this, "mnuViewMPG", "Monitor Fuel Consumption...", &mnuView};
    MenuItem mnuViewResetMPG{this, "mnuViewResetMPG", "Reset Fuel Consumption", &mnuView};
    MenuItem mnuViewCodes{this, "mnuViewCodes", "Trouble Codes Definitions...", &mnuView};
    MenuItem mnuViewTerms{this, "mnuViewTerms", "OBD II vs OBD I Terms...", &mnuView};
    MenuItem mnuOptionStatusBar{this, "mnuOptionStatusBar", "Status Bar", &mnuView};
    MenuItem mnuOptionToolbar{this, "mnuOptionToolbar", "Toolbar", &mnuView};
    MenuItem mnuOption{this, "mnuOption", "&Option"};
    MenuItem mnuOptionSettings{this, "mnuOptionSettings", "Settings...", &mnuOption};
    MenuItem mnuOptionList{this, "mnuOptionList", "Custom Display List...", &mnuOption};
    MenuItem mnuHelp{this, "mnuHelp", "&Help"};
    MenuItem mnuHelpHelp{this, "mnuHelpHelp", "&Help Topics...", &mnuHelp};
    MenuItem mnuHelpRequirement{this, "mnuHelpRequirement", "&Requirement...", &mnuHelp};
    MenuItem mnuHelpHistory{this, "mnuHelpHistory", "Ketrel History...", &mnuHelp};
    MenuItem mnuAboutHardware{this, "mnuAboutHardware", "About Hardware Interface...", &mnuHelp};
    MenuItem mnuHelpAbout{this, "mnuHelpAbout", "About Ketrel...", &mnuHelp};

    // Toolbar, by number; button(n) and buttonByKey(k) find them.
    ToolButton tb1{this, 1, "", "", "", true};
    ToolButton tbConnect{this, 2, "Connect", "Connect", "Connect To OBD II "};
    ToolButton tbDisconnect{this, 3, "Disconnect", "Disconnect", "Disconnect From OBD II"};
    ToolButton tb4{this, 4, "", "", "", true};
    ToolButton tbController{this, 5, "Controller", "Controller", "Controller "};
    ToolButton tb6{this, 6, "", "", "", true};
    ToolButton tbScope{this, 7, "Scope", "Scope", "Scope"};
    ToolButton tb8{this, 8, "", "", "", true};
    ToolButton tbDTC{this, 9, "DTC", "DTC", "Diagnostic Trouble Codes"};
    ToolButton tbGuage{this, 10, "Guage", "Guage", "RPM Guage"};
    ToolButton tb11{this, 11, "", "", "", true};
    ToolButton tbCustom{this, 12, "Custom Display", "Custom", "Custom Data List"};
    ToolButton tb13{this, 13, "", "", "", true};
    ToolButton tbMode6{this, 14, "Mode6", "Mode 6", "SAE J1979 MODE 6"};
    ToolButton tbMode5{this, 15, "Mode5", "Mode 5", "SAE J1979 MODE 5"};
    MenuItem tbMultiGuage{this, "MultiGuage", "Multi Guages..."};
    ToolButton& button(int number);
    ToolButton* buttonByKey(const std::string& key);
    Field Toolbar1{this, "Toolbar1"};  // the bar itself: visible or not

    // Status bar: panel 1 status, 2 picture, 3 com port, 4 display setting, 9 baud rate
    StatusPanel Panel1{this, "StatusBar1.Panels", 1}, Panel2{this, "StatusBar1.Panels", 2},
        Panel3{this, "StatusBar1.Panels", 3}, Panel4{this, "StatusBar1.Panels", 4},
        Panel5{this, "StatusBar1.Panels", 5}, Panel6{this, "StatusBar1.Panels", 6},
        Panel7{this, "StatusBar1.Panels", 7}, Panel8{this, "StatusBar1.Panels", 8},
        Panel9{this, "StatusBar1.Panels", 9};
    StatusPanel& panel(int number);
    Field StatusBar1{this, "StatusBar1"};  // the bar itself: visible or not

    // Timers
    Timer& SplashScreen;
    Timer& TimeOutConnect;
    Timer& BR3Delay;
    Timer& KeshDelay;
    Timer& ClearCodeTimer;
    Timer& RequestTimer;

    // The ports of the scanning phase (made by the application object).
    std::unique_ptr<SerialPort> MSComm, BR3MSComm, KeshMSComm;
};

// The PID indicators Image1 of the main screen. Most PIDs have the indicator of their own number;
// PID 01 has items 0 and 1, PID 03 items 3 and 33, and PIDs 20 to 27 a second item 14 places on
// (34 to 41), beside their values on the data tab.
inline constexpr int kLastIndicator = 41;
// The PID that indicator Image1(item) stands for.
int IndicatorPid(int item);
// Every indicator of a PID, its first one first.
std::vector<int> IndicatorItems(int pid);

}  // namespace ketrel
