#include "core/main_screen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>

#include "core/core_fixture.h"
#include "core/session.h"

namespace ketrel {
namespace {

using test::StartedApp;

// A screen of later work, standing in so that the entries that need it can be tried.
class StandIn : public Screen {
  public:
    StandIn(EventLoop& loop, const std::string& name) : Screen(loop, name, name) {}
};

// The application with its logic, a vehicle in session and PIDS Override as a test sets it.
struct Session : StartedApp {
    Session() {
        app->Connected = true;
        m().mnuEditPidsOver.setChecked(true);
    }
    FrmMain& m() { return app->frmMain(); }
    void supported(std::initializer_list<int> pids) {
        for (int pid : pids)
            app->Mode1Supported[std::size_t(pid)] = app->PidWanted[std::size_t(pid)] = true;
    }
};

// Most indicators stand for the PID of their number; a few pairs share one PID.
TEST(MainScreen, EveryIndicatorStandsForItsPidAndFindsItsPartner) {
    const std::pair<int, std::vector<int>> shared[] = {
        {1, {0, 1}}, {3, {3, 33}}, {20, {20, 34}}, {27, {27, 41}}, {12, {12}}};
    for (const auto& [pid, items] : shared) {
        EXPECT_EQ(IndicatorItems(pid), items) << pid;
        for (int item : items)
            EXPECT_EQ(IndicatorPid(item), pid) << item;
    }
    for (int item = 0; item <= 41; ++item) {
        std::vector<int> partners = IndicatorItems(IndicatorPid(item));
        EXPECT_NE(std::find(partners.begin(), partners.end(), item), partners.end()) << item;
    }
}

TEST(MainScreen, AnIndicatorClickTurnsItsPidOffOrForcesItOn) {
    struct Case {
        const char* what;
        bool override, connected, supportedBefore;
        int item;
        const char* field;  // a value field of the PID
        bool supportedAfter;
        const char* fieldAfter;
        const char* picture;  // of every indicator of the PID
    };
    const Case cases[] = {
        {"override off", false, true, true, 12, "lblRPM", true, "750", kImgGreen},
        {"no session", true, false, true, 12, "lblRPM", true, "750", kImgGreen},
        {"supported, off", true, true, true, 12, "lblRPM", false, "N/A", kImgRed},
        {"O2 by its second", true, true, true, 34, "lblO2b1s1", false, "N/A", kImgRed},
        {"O2 by its first", true, true, true, 20, "lblO2b1s1", false, "N/A", kImgRed},
        {"fuel system by 33", true, true, true, 33, "lblFuelSys1", false, "N/A", kImgRed},
        {"forced on", true, true, false, 33, "lblFuelSys1", true, "750", kImgGreen},
        {"status off is yellow", true, true, true, 0, "lblMil", false, "N/A", kImgYellow},
        {"status by lamp", true, true, true, 1, "lblNumberCodes", false, "N/A", kImgYellow},
        {"status forced on", true, true, false, 1, "lblMil", true, "750", kImgGreen},
    };
    for (const Case& c : cases) {
        Session s;
        FrmMain& m = s.m();
        const int pid = IndicatorPid(c.item);
        m.mnuEditPidsOver.setChecked(c.override);
        s.app->Connected = c.connected;
        if (c.supportedBefore) s.supported({pid});
        auto& field = static_cast<Field&>(*m.findControl(c.field));
        field.setText("750");
        m.lblTiming.setText("12.5");  // a value of another PID
        for (int i : IndicatorItems(pid))
            m.Image1[i].setPicture(kImgGreen);
        const std::int64_t before = s.loop.nowMs();

        m.Image1[c.item].click();

        EXPECT_EQ(s.app->Mode1Supported[std::size_t(pid)], c.supportedAfter) << c.what;
        EXPECT_EQ(s.app->PidWanted[std::size_t(pid)], c.supportedAfter) << c.what;
        EXPECT_EQ(field.text(), c.fieldAfter) << c.what;
        for (int i : IndicatorItems(pid))
            EXPECT_EQ(m.Image1[i].picture(), c.picture) << c.what << " item " << i;
        const bool acted = c.override && c.connected;
        // An acting click clears every live value and waits 0.2 s for a reply in flight.
        EXPECT_EQ(m.lblTiming.text(), acted && c.supportedBefore ? "N/A" : "12.5") << c.what;
        EXPECT_EQ(s.loop.nowMs() - before >= 200, acted) << c.what;
        EXPECT_LT(s.loop.nowMs() - before, 300) << c.what;
    }
}

TEST(MainScreen, TheWaitAfterAnIndicatorClickLetsEventsRun) {
    Session s;
    int ran = 0;
    s.loop.scheduler().postAt(s.loop.virtualClock().nowMicros() + 100'000, [&] { ++ran; });
    s.m().Image1[12].click();
    EXPECT_EQ(ran, 1);
}

TEST(MainScreen, DebugDataShowsOrHidesAllDebugFieldsAsTheOppositeOfTheLog) {
    StartedApp t;
    FrmMain& m = t->frmMain();
    std::vector<Control*> debug{
        &m.LogData,       &m.Text2,    &m.txtInputDORVANE, &m.txtInputBR3, &m.txtKesh,
        &m.lstRecordData, &m.Command4, &m.lstPendingCodes, &m.lstCodes,    &m.lstFreezeCodes};
    struct Step {
        std::function<void()> before;
        bool shown;
    };
    const Step steps[] = {
        {[] {}, true},
        {[] {}, false},
        {[&] { m.Text2.setVisible(true); }, true},  // only the log decides
        {[&] { m.Text2.setVisible(false); }, false},
        {[&] { m.LogData.setVisible(true); }, false},
    };
    int n = 0;
    for (const Step& s : steps) {
        s.before();
        m.Command1.click();
        for (Control* c : debug)
            EXPECT_EQ(c->visible(), s.shown) << "step " << n << " " << c->name();
        ++n;
    }
    m.lblRPM.setText("750");
    m.lblWhatProtocol.setText("2");
    m.Command4.click();
    EXPECT_EQ(m.lblRPM.text(), "N/A");
    EXPECT_EQ(m.lblWhatProtocol.text(), "N/A");
}

TEST(MainScreen, HiddenWordsInTheVinFieldAreActedOnThenCleared) {
    struct Case {
        const char* vin;
        bool debugButton, pidList, probes;
    };
    const Case cases[] = {
        {"VIEWTRACE", true, false, false},   {"VIEWPIDLIST", false, true, false},
        {"VIEWPROBES", false, false, true},  {"viewtrace", false, false, false},
        {"VIEWTRACE ", false, false, false}, {"1FTRX18W1XKA12345", false, false, false},
    };
    for (const Case& c : cases) {
        StartedApp t;
        FrmMain& m = t->frmMain();
        m.txtVin.setText(c.vin);
        m.txtPlate.setText("KTR 077");
        m.cmdClearVehicle.click();
        EXPECT_EQ(m.Command1.visible(), c.debugButton) << c.vin;
        EXPECT_EQ(t->Mode6ListVisible, c.pidList) << c.vin;
        EXPECT_EQ(t->DetectPanelEnabled, c.probes) << c.vin;
        EXPECT_EQ(m.txtVin.text(), "") << c.vin;
        EXPECT_EQ(m.txtPlate.text(), "") << c.vin;
    }
}

TEST(MainScreen, HelpTextsOpenInTheViewerOrSayWhatIsMissing) {
    struct Case {
        const char* entry;
        const char* file;
        bool present;
    };
    std::vector<Case> cases;
    for (bool present : {true, false}) {
        cases.push_back({"mnuHelpHistory", "KetrelHistory.txt", present});
        cases.push_back({"mnuHelpRequirement", "Requirement.txt", present});
    }
    for (const Case& c : cases) {
        StartedApp t;
        const auto path = t.dir.path() / "System" / c.file;
        std::filesystem::create_directories(path.parent_path());
        if (c.present) std::ofstream(path) << "text\n";
        static_cast<MenuItem*>(t->frmMain().findControl(c.entry))->click();
        if (c.present) {
            EXPECT_EQ(t.launcher.opened, std::vector<std::string>{path.string()}) << c.entry;
            EXPECT_TRUE(t.dialogs.shown().empty()) << c.entry;
        } else {
            EXPECT_TRUE(t.launcher.opened.empty()) << c.entry;
            ASSERT_EQ(t.dialogs.shown().size(), 1u) << c.entry;
            EXPECT_EQ(t.dialogs.shown()[0].title, "Error");
            EXPECT_NE(t.dialogs.shown()[0].text.find(c.file), std::string::npos);
        }
    }
}

TEST(MainScreen, ModeTestScreensOpenOnlyForTheirConvertersAndProtocols) {
    struct Case {
        const char* hardware;
        const char* protocol;
        bool opens;
    };
    const Case cases[] = {
        {kDorvane, "03", false}, {kBr3, "01", true},  {kBr3, "04", true},     {kBr3, "05", false},
        {kKesh, "02", false},    {kKesh, "03", true}, {kTactrix, "04", true}, {"", "03", false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ModeTestsAvailable(c.hardware, c.protocol), c.opens)
            << c.hardware << " " << c.protocol;
        StartedApp t;
        t->addScreen(std::make_unique<StandIn>(t.loop, "frmMode5"));
        t->addScreen(std::make_unique<StandIn>(t.loop, "frmMode6"));
        t->OBDIIHardware = c.hardware;
        t->ProtocolCode = c.protocol;
        t->frmMain().mnuViewMode6.onClick();
        t->frmMain().tbMode5.setEnabled(true);
        t->frmMain().tbMode5.click();
        EXPECT_EQ(t->screenByName("frmMode6")->visible(), c.opens) << c.hardware << c.protocol;
        EXPECT_EQ(t->screenByName("frmMode5")->visible(), c.opens) << c.hardware << c.protocol;
    }
}

TEST(MainScreen, EntriesWithRulesOfTheirOwn) {
    struct Case {
        const char* what;
        std::function<void(App&)> act;
        std::function<bool(App&)> done;
    };
    const Case cases[] = {
        {"extended data with the text converter does nothing",
         [](App& a) {
             a.OBDIIHardware = kDorvane;
             a.frmMain().mnuOptionData.click();
         },
         [](App& a) { return !a.frmNewPids().loaded(); }},
        {"extended data with another converter opens",
         [](App& a) {
             a.OBDIIHardware = kBr3;
             a.frmMain().mnuOptionData.click();
         },
         [](App& a) { return a.frmNewPids().visible(); }},
        {"PIDS Override checks itself", [](App& a) { a.frmMain().mnuEditPidsOver.click(); },
         [](App& a) { return a.frmMain().mnuEditPidsOver.checked(); }},
        {"and unchecks itself",
         [](App& a) {
             a.frmMain().mnuEditPidsOver.click();
             a.frmMain().mnuEditPidsOver.click();
         },
         [](App& a) { return !a.frmMain().mnuEditPidsOver.checked(); }},
    };
    for (const Case& c : cases) {
        StartedApp t;
        c.act(*t);
        EXPECT_TRUE(c.done(*t)) << c.what;
    }
}

TEST(MainScreen, ToolbarButtonsDoWhatTheirEntriesDo) {
    test::TestApp t;
    for (const char* s : {"frmRecorder", "frmTroubleCode", "frmGuage", "frmMultGuage", "frmMode6",
                          "frmMode5", "frmCustomData"})
        t->addScreen(std::make_unique<StandIn>(t.loop, s));
    InstallApplication(*t);
    FrmMain& m = t->frmMain();
    struct Case {
        const char* key;
        MenuItem& entry;
    };
    const Case cases[] = {{"Controller", m.mnuEditRecord}, {"DTC", m.mnuViewCodes},
                          {"Guage", m.mnuViewGuage},       {"Mode6", m.mnuViewMode6},
                          {"Mode5", m.mnuViewMode5},       {"Custom Display", m.mnuOptionList}};
    for (const Case& c : cases) {
        ToolButton* b = m.buttonByKey(c.key);
        ASSERT_NE(b, nullptr) << c.key;
        std::string ran;
        c.entry.onClick = [&ran, &c] { ran = c.entry.name(); };
        b->setEnabled(true);
        b->click();
        EXPECT_EQ(ran, c.entry.name()) << c.key;
    }
    std::string multi;  // a menu of its own on the toolbar
    m.mnuViewMultiGuage.onClick = [&] { multi = "ran"; };
    m.tbMultiGuage.setEnabled(true);
    m.tbMultiGuage.click();
    EXPECT_EQ(multi, "ran");
}

// The entries that need a screen of later work and the screen each needs.
struct Needed {
    const char* control;
    const char* screen;
};
const Needed kNeeded[] = {
    {"mnuFilePrintFF", "frmPrintFF"},     {"mnuEditRecord", "frmRecorder"},
    {"mnuViewScope", "frmScope"},         {"mnuViewCodes", "frmTroubleCode"},
    {"mnuViewTerms", "frmTerms"},         {"mnuOptionList", "frmCustomData"},
    {"mnuViewCoolant", "frmRealDisplay"}, {"mnuHelpAbout", "frmAbout"},
};

// Without their screens (only the main screen's logic installed) the entries stay off whoever
// turns them on; with them they follow the session and show their screen.
TEST(MainScreen, EntriesNeedTheirScreens) {
    test::TestApp bare;
    InstallMainScreen(*bare);
    FrmMain& b = bare->frmMain();
    for (const Needed& n : kNeeded) {
        Control& c = *b.findControl(n.control);
        EXPECT_EQ(ScreenNeededBy(*bare, c), n.screen);
        c.setEnabled(true);
        EXPECT_FALSE(c.enabled()) << n.control;
    }
    for (int key = 1; key <= 15; ++key) {
        ToolButton& button = b.button(key);
        const std::string screen = ScreenNeededBy(*bare, button);
        if (screen.empty() || bare->screenByName(screen)) continue;
        button.setEnabled(true);
        EXPECT_FALSE(button.enabled()) << button.key();
    }
    EXPECT_EQ(ScreenNeededBy(*bare, b.mnuHelpHistory), "");

    test::TestApp t;
    for (const Needed& n : kNeeded)
        if (!t->screenByName(n.screen)) t->addScreen(std::make_unique<StandIn>(t.loop, n.screen));
    InstallApplication(*t);
    FrmMain& m = t->frmMain();
    for (const char* name : {"mnuFileOpen", "mnuViewScope", "mnuViewCodes", "mnuHelpAbout"})
        EXPECT_TRUE(m.findControl(name)->enabled()) << name;
    m.mnuEditRecord.setEnabled(true);
    EXPECT_TRUE(m.mnuEditRecord.enabled());
    for (MenuItem* entry : {&m.mnuViewScope, &m.mnuViewCodes, &m.mnuViewTerms, &m.mnuHelpAbout}) {
        entry->click();
        EXPECT_TRUE(t->screenByName(ScreenNeededBy(*t, *entry))->visible()) << entry->name();
    }
}

}  // namespace
}  // namespace ketrel
