#include <gtest/gtest.h>

#include <fstream>
#include <functional>

#include "core/settings_screen.h"
#include "core_fixture.h"

namespace ketrel {
namespace {

using test::StartedApp;
using Stored = std::map<std::string, std::string>;

// An application past its splash with the settings screen opened.
struct SettingsOpen : StartedApp {
    explicit SettingsOpen(const Stored& stored = {}, SerialPortFactory* ports = nullptr)
        : StartedApp(stored, ports) {
        start();
        loop.runFor(1500);
        app->frmSettings().unload();
        app->frmSettings().show();
        settings.clearSaveLog();
        dialogs.clear();
    }
    FrmSettings& s() { return app->frmSettings(); }
};

TEST(SettingsScreen, LoadMirrorsTheVariablesWithoutSwitchingOnApply) {
    SettingsOpen t(Stored{{"KESH Start", "2"},
                          {"BR3 Start", "5"},
                          {"BR3Delay", "225"},
                          {"BR3SetDelay", "True"},
                          {"ConnectPort", "3"},
                          {"OBDIIHardware", kKesh},
                          {"TimeOut", "21000"},
                          {"MilAlert", "True"},
                          {"SaveInfo", "False"},
                          {"Log File", "False"}});
    FrmSettings& s = t.s();
    EXPECT_TRUE(s.KWP2.value());
    EXPECT_TRUE(s.BR5.value());
    EXPECT_EQ(s.sldBR3Speed.value(), 225);
    EXPECT_EQ(s.lblRecommend[0].text(), "Recommended ISO 9141");
    EXPECT_FALSE(s.sldBR3Speed.enabled());
    EXPECT_FALSE(s.lblBR3Delay.enabled());
    EXPECT_EQ(s.cmbPort.text(), "3");
    EXPECT_EQ(s.cmbInterface.text(), kKesh);
    EXPECT_EQ(s.cmbTimedOut.text(), "21");
    EXPECT_TRUE(s.optMilOn.value());
    EXPECT_TRUE(s.optNO.value());
    EXPECT_TRUE(s.optDisplayOff.value());
    EXPECT_TRUE(s.cmdAutoDetect.enabled());
    for (Field* apply : {&s.cmdApplyUnits, &s.cmdApplyDevice, &s.cmdApplyOther, &s.cmdApplyKWP})
        EXPECT_FALSE(apply->enabled()) << apply->name();
    EXPECT_TRUE(t.settings.saveLog().empty());
}

TEST(SettingsScreen, EachChangeSwitchesOnTheApplyOfItsOwnPage) {
    struct Case {
        const char* what;
        std::function<void(FrmSettings&)> change;
        Field FrmSettings::*apply;
    } cases[] = {
        {"celcius", [](FrmSettings& s) { s.optCelcius.click(); }, &FrmSettings::cmdApplyUnits},
        {"kph", [](FrmSettings& s) { s.optKilometers.click(); }, &FrmSettings::cmdApplyUnits},
        {"kpa", [](FrmSettings& s) { s.optKPA.click(); }, &FrmSettings::cmdApplyUnits},
        {"port", [](FrmSettings& s) { s.cmbPort.setText("4"); }, &FrmSettings::cmdApplyDevice},
        {"iface", [](FrmSettings& s) { s.cmbInterface.setText(kBr3); },
         &FrmSettings::cmdApplyDevice},
        {"timeout", [](FrmSettings& s) { s.cmbTimedOut.setText("12"); },
         &FrmSettings::cmdApplyDevice},
        {"slider", [](FrmSettings& s) { s.sldBR3Speed.setValue(150); },
         &FrmSettings::cmdApplyDevice},
        {"auto", [](FrmSettings& s) { s.chkSetDelay.click(); }, &FrmSettings::cmdApplyDevice},
        {"display", [](FrmSettings& s) { s.optDisplayOn.click(); }, &FrmSettings::cmdApplyOther},
        {"mil", [](FrmSettings& s) { s.optMilOff.click(); }, &FrmSettings::cmdApplyOther},
        {"info", [](FrmSettings& s) { s.optYES.click(); }, &FrmSettings::cmdApplyOther},
        {"kwp", [](FrmSettings& s) { s.KWP3.click(); }, &FrmSettings::cmdApplyKWP},
        {"br", [](FrmSettings& s) { s.BR2.click(); }, &FrmSettings::cmdApplyKWP},
    };
    Field FrmSettings::*applies[] = {&FrmSettings::cmdApplyUnits, &FrmSettings::cmdApplyDevice,
                                     &FrmSettings::cmdApplyOther, &FrmSettings::cmdApplyKWP};
    for (const Case& c : cases) {
        SettingsOpen t;
        c.change(t.s());
        for (auto apply : applies)
            EXPECT_EQ((t.s().*apply).enabled(), apply == c.apply) << c.what;
        EXPECT_TRUE(t.settings.saveLog().empty()) << c.what;
    }
}

TEST(SettingsScreen, RecommendedDelayTextsFollowTheSlider) {
    struct Case {
        int ms;
        const char* text;
    } cases[] = {
        {144, ""}, {145, "Recommended VPW/PWM"},  {155, "Recommended VPW/PWM"},  {156, ""},
        {219, ""}, {220, "Recommended ISO 9141"}, {230, "Recommended ISO 9141"}, {231, ""}};
    SettingsOpen t;
    for (const Case& c : cases) {
        t.s().sldBR3Speed.setValue(c.ms);
        EXPECT_EQ(t.s().lblRecommend[0].text(), c.text) << c.ms;
        EXPECT_EQ(t.s().lblBR3Delay.text(), std::to_string(c.ms));
    }
}

TEST(SettingsScreen, ApplyDeviceAsksOnlyWhenAChosenPortOrInterfaceChanged) {
    struct Case {
        const char* port;   // nullptr: left as loaded ("-SELECT-")
        const char* iface;  // nullptr: left as loaded
        MsgAnswer answer;
        bool asked, applied;
        const char* savedPort;
    } cases[] = {
        {"3", kDorvane, MsgAnswer::Yes, true, true, "3"},
        {"3", kDorvane, MsgAnswer::No, true, false, ""},
        {nullptr, kDorvane, MsgAnswer::No, false, true, "-SELECT-"},
        {"5", nullptr, MsgAnswer::No, false, true, "5"},
        {nullptr, nullptr, MsgAnswer::No, false, true, "-SELECT-"},
    };
    for (const Case& c : cases) {
        SettingsOpen t;
        FrmSettings& s = t.s();
        if (c.port) s.cmbPort.setText(c.port);
        if (c.iface) s.cmbInterface.setText(c.iface);
        s.cmbTimedOut.setText("15");
        s.sldBR3Speed.setValue(150);
        t.dialogs.answerNext(c.answer);
        s.cmdApplyDevice.click();
        ASSERT_EQ(t.dialogs.shown().size(), c.asked ? 1u : 0u);
        if (c.asked) {
            EXPECT_EQ(t.dialogs.shown()[0].text, "Do You Really Want To Apply These Settings?");
        }
        if (!c.applied) {
            EXPECT_TRUE(t.settings.saveLog().empty());
            EXPECT_EQ(t->TimeOut, 10000);
            continue;
        }
        std::string iface = c.iface ? c.iface : "-SELECT-";
        EXPECT_EQ(t.settings.saveLog(),
                  (std::vector<std::string>{"Settings/OBDIIHardware=" + iface,
                                            std::string("Settings/ConnectPort=") + c.savedPort,
                                            "Settings/TimeOut=15000", "Settings/BR3Delay=150",
                                            "Settings/BR3SetDelay=False"}));
        EXPECT_EQ(t->TimeOut, 15000);
        EXPECT_EQ(t->frmMain().TimeOutConnect.interval(), 15000);
        EXPECT_EQ(t->frmMain().BR3Delay.interval(), 150);
        EXPECT_EQ(t->frmMain().KeshDelay.interval(), 150);
        EXPECT_EQ(t->BR3Delay, "150");
        EXPECT_EQ(t->ConnectPort, c.savedPort);
        EXPECT_FALSE(s.cmdApplyDevice.enabled());
    }
}

TEST(SettingsScreen, DefaultButtonsAskThenSaveAtOnceAndShowTheDefaults) {
    struct Case {
        Field FrmSettings::*button;
        MsgAnswer answer;
        std::vector<std::string> saves;
    } cases[] = {
        {&FrmSettings::cmdDefault,
         MsgAnswer::Yes,
         {"Settings/Temp=F", "Settings/Speed=MPH", "Settings/Pressure=PSI"}},
        {&FrmSettings::cmdDefault, MsgAnswer::No, {}},
        {&FrmSettings::cmdDefault1,
         MsgAnswer::Yes,
         {"Settings/SaveInfo=True", "Settings/MilAlert=True", "Settings/DisplaySet=True"}},
        {&FrmSettings::cmdDefault2,
         MsgAnswer::Yes,
         {"Settings/KESH Start=1", "Settings/BR3 Start=1"}},
        {&FrmSettings::cmdDefault2, MsgAnswer::No, {}},
    };
    for (const Case& c : cases) {
        SettingsOpen t(Stored{{"Temp", "C"},
                              {"Speed", "KPH"},
                              {"Pressure", "kPa"},
                              {"KESH Start", "3"},
                              {"BR3 Start", "4"}});
        FrmSettings& s = t.s();
        t.dialogs.answerNext(c.answer);
        (s.*c.button).click();
        ASSERT_EQ(t.dialogs.shown().size(), 1u);
        EXPECT_EQ(t.dialogs.shown()[0].text, "Are You Sure You Want To Load Default Settings");
        EXPECT_EQ(t.dialogs.shown()[0].title, "Confirm");
        EXPECT_EQ(t.settings.saveLog(), c.saves);
        bool yes = c.answer == MsgAnswer::Yes;
        if (c.button == &FrmSettings::cmdDefault) {
            EXPECT_EQ(s.optFarenheit.value(), yes);
            EXPECT_EQ(t->Temp, yes ? "F" : "C");
        }
        if (c.button == &FrmSettings::cmdDefault1) {
            EXPECT_TRUE(s.optDisplayOn.value() && s.optMilOn.value() && s.optYES.value());
            EXPECT_TRUE(t->DisplaySet && t->AlertOnMIL && t->SaveInfo);
        }
        if (c.button == &FrmSettings::cmdDefault2) {
            EXPECT_EQ(s.KWP1.value(), yes);
            EXPECT_EQ(t->BR3Start, yes ? 1 : 4);
        }
        for (Field* apply : {&s.cmdApplyUnits, &s.cmdApplyOther, &s.cmdApplyKWP})
            EXPECT_FALSE(apply->enabled());
    }
}

TEST(SettingsScreen, ApplyButtonsSaveTheirKeysInOrder) {
    SettingsOpen t(Stored{{"KESH Start", "7"}});
    FrmSettings& s = t.s();
    EXPECT_TRUE(s.KWP1.value());
    EXPECT_EQ(t.settings.get(kAppName, kSection, "KESH Start"), "7");
    s.optCelcius.click();
    s.optKilometers.click();
    s.optKPA.click();
    s.cmdApplyUnits.click();
    s.optDisplayOn.click();
    s.optMilOn.click();
    s.optNO.click();
    s.cmdApplyOther.click();
    s.KWP3.click();
    s.BR2.click();
    s.cmdApplyKWP.click();
    // The connecting-log switch saves at once; the second-frame switch is never saved.
    s.chConLog.click();
    s.ck2ndConnect.click();
    EXPECT_TRUE(t->SecondFrameConnect);
    s.ck2ndConnect.click();
    EXPECT_FALSE(t->SecondFrameConnect);
    EXPECT_EQ(t.settings.saveLog(),
              (std::vector<std::string>{
                  "Settings/Temp=C", "Settings/Speed=KPH", "Settings/Pressure=kPa",
                  "Settings/SaveInfo=False", "Settings/MilAlert=True", "Settings/DisplaySet=True",
                  "Settings/KESH Start=3", "Settings/BR3 Start=2", "Settings/Log File=False"}));
    EXPECT_FALSE(t->ConnectLogEnabled);
    for (Field* apply : {&s.cmdApplyUnits, &s.cmdApplyDevice, &s.cmdApplyOther, &s.cmdApplyKWP})
        EXPECT_FALSE(apply->enabled());
    EXPECT_EQ(t->Temp, "C");
    EXPECT_EQ(t->KeshStart, 3);
    EXPECT_EQ(t->BR3Start, 2);
    EXPECT_TRUE(t->DisplaySet);
    EXPECT_FALSE(t->SaveInfo);
}

TEST(SettingsScreen, ConnectingLogPageShowsViewsAndClearsTheLog) {
    SettingsOpen t;
    FrmSettings& s = t.s();
    auto log = t.dir.path() / "Log" / "ConnLog.dat";
    EXPECT_EQ(s.lblFileSize.text(), "0.0 KB");
    s.Command1.click();
    ASSERT_EQ(t.dialogs.shown().size(), 1u);
    EXPECT_EQ(t.dialogs.shown()[0].text, "There Is No Log To View");
    EXPECT_EQ(t.dialogs.shown()[0].title, "Connecting Log");
    EXPECT_TRUE(t.launcher.opened.empty());

    std::filesystem::create_directories(log.parent_path());
    std::ofstream(log) << std::string(2560, 'x');
    s.SSTab1.setTab(3);
    EXPECT_EQ(s.lblFileSize.text(), "2.5 KB");
    s.Command1.click();
    EXPECT_EQ(t.launcher.opened, std::vector<std::string>{log.string()});

    t.dialogs.clear();
    t.dialogs.answerNext(MsgAnswer::No);
    s.Command2.click();
    EXPECT_TRUE(std::filesystem::exists(log));
    t.dialogs.answerNext(MsgAnswer::Yes);
    s.Command2.click();
    ASSERT_EQ(t.dialogs.shown().size(), 2u);
    EXPECT_EQ(t.dialogs.shown()[1].text, "Are You Sure You Want To Clear The Logs?");
    EXPECT_EQ(t.dialogs.shown()[1].title, "Confirmation");
    EXPECT_FALSE(std::filesystem::exists(log));
    EXPECT_EQ(s.lblFileSize.text(), "0.0 KB");
}

TEST(SettingsScreen, DisplayLinesNameTheColourDepthInWords) {
    struct Case {
        DisplayMode mode;
        const char* text;
    } cases[] = {
        {{640, 480, 4, 60}, "640 x 480, 16 Color,  60 Hz"},
        {{800, 600, 8, 75}, "800 x 600, 256 Color,  75 Hz"},
        {{1024, 768, 16, 60}, "1024 x 768, High Color,  60 Hz"},
        {{1920, 1080, 24, 144}, "1920 x 1080, True Color, 144 Hz"},
        {{1280, 1024, 32, 60}, "1280 x 1024, True Color,  60 Hz"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(DisplayModeText(c.mode), c.text);
    EXPECT_EQ(FileSizeText(0), "0.0 KB");
    EXPECT_EQ(FileSizeText(1024 * 1024 + 51), "1024.0 KB");
}

TEST(SettingsScreen, DisplayChangeAsksAndTellsWhatHappened) {
    struct Case {
        int selected;
        MsgAnswer answer;
        bool allow;
        std::vector<std::string> texts;
        int panelOpened;
        bool saved;
    } cases[] = {
        {-1, MsgAnswer::Yes, true, {"No items selected !"}, 0, false},
        {0, MsgAnswer::No, true, {"question"}, 0, false},
        {0,
         MsgAnswer::Yes,
         false,
         {"question", "Display settings could not be changed!"},
         1,
         false},
        {0, MsgAnswer::Yes, true, {"question"}, 0, true},
    };
    const std::string question =
        "Ketrel is best viewed using 1024 X 768 High Color Or Greater.\nProceed in change "
        "settings?";
    for (const Case& c : cases) {
        SettingsOpen t;
        t.display.allowChange = c.allow;
        FrmSettings& s = t.s();
        ASSERT_EQ(s.lstDisplaySettings.count(), 1);
        s.lstDisplaySettings.setListIndex(c.selected);
        t.dialogs.answerNext(c.answer);
        s.cmdChangeDisplaySettings.click();
        std::vector<std::string> texts;
        for (auto& box : t.dialogs.shown())
            texts.push_back(box.text == question ? "question" : box.text);
        EXPECT_EQ(texts, c.texts);
        EXPECT_EQ(t.launcher.displaySettingsOpened, c.panelOpened);
        EXPECT_EQ(t.savesOf("AppDisplay").size(), c.saved ? 1u : 0u);
        if (c.saved) {
            EXPECT_EQ(t.savesOf("AppDisplay")[0], "1280 x 1024, True Color,  60 Hz");
            EXPECT_EQ(t->frmMain().panel(4).text(),
                      "Display Setting:  1280 X 1024, TRUE COLOR,  60 HZ");
        }
    }
}

TEST(SettingsScreen, CloseUnloadsAndAReopenStartsFromTheStoredValues) {
    SettingsOpen t;
    FrmSettings& s = t.s();
    s.optCelcius.click();
    s.cmdClose0.click();
    EXPECT_FALSE(s.loaded());
    s.show();
    EXPECT_TRUE(s.optFarenheit.value());
    EXPECT_FALSE(s.cmdApplyUnits.enabled());
    EXPECT_EQ(s.cmbPort.count(), 17);
}

// Ports whose adapters are all FTDI ones with the latency timer at its default.
struct FtdiPorts : NullSerialPortFactory, SerialAdapterInspector {
    SerialAdapterInspector* adapterInspector() override { return this; }
    SerialAdapterInfo inspect(const std::string& path) override {
        return {path, "ftdi_sio", true, true, 16};
    }
    LowLatencyResult requestLowLatency(const std::string&) override { return {}; }
    BreakSupport probeBreak(const std::string&) override { return BreakSupport::Works; }
};

TEST(SettingsScreen, ThePortPageShowsTheDeviceOfTheNumberAndStoresATypedOne) {
    FtdiPorts ports;
    SettingsOpen t({}, &ports);
    t.settings.save(kAppName, "Ports", "3", "/tmp/ketrel-car");
    FrmSettings& s = t.s();
    s.cmbPort.setText("3");
    EXPECT_EQ(s.lblDevicePath.text(), "/tmp/ketrel-car");
    EXPECT_EQ(s.lblAdapter.text(), "Adapter: ftdi_sio (FTDI), latency timer 16 ms");
    s.cmbPort.setText("2");
    EXPECT_EQ(s.lblDevicePath.text(), "(no device)");
    EXPECT_EQ(s.lblAdapter.text(), "");
    s.txtDevicePath.setText("/dev/pts/7");
    t.dialogs.answerNext(MsgAnswer::Yes);
    s.cmdApplyDevice.click();
    EXPECT_EQ(t.settings.get(kAppName, "Ports", "2"), "/dev/pts/7");
    EXPECT_EQ(s.lblDevicePath.text(), "/dev/pts/7");
    EXPECT_EQ(s.txtDevicePath.text(), "");
}

}  // namespace
}  // namespace ketrel
