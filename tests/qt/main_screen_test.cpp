#include <gtest/gtest.h>

#include <unistd.h>

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QMouseEvent>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QToolBar>
#include <QToolTip>

#include "link/port_map.h"
#include "qt_fixture.h"
#include "sim_process.h"

namespace ketrel {
namespace {

using test::GuiApp;

QMainWindow* mainWindow(GuiApp& g) {
    return qobject_cast<QMainWindow*>(g.desktop->windows().windowOf("frmMain"));
}

// Sends a left click (press and release) to the middle of a widget.
void clickOn(QWidget* w) {
    QPointF at = QRectF(w->rect()).center();
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent e(type, at, w->mapToGlobal(at), Qt::LeftButton,
                      type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                      Qt::NoModifier);
        QApplication::sendEvent(w, &e);
    }
}

// The pointer comes to rest over a cell of a table.
void hover(QTableWidget* t, int row, int col) {
    QPoint at = t->visualItemRect(t->item(row, col)).center();
    QMouseEvent move(QEvent::MouseMove, at, t->viewport()->mapToGlobal(at), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(t->viewport(), &move);
    QHelpEvent tip(QEvent::ToolTip, at, t->viewport()->mapToGlobal(at));
    QApplication::sendEvent(t->viewport(), &tip);
}

bool filled(const std::string& text) {
    return !text.empty() && text != "N/A";
}

// What a failed wait reports: whether the session is still up and the messages shown.
std::string Said(GuiApp& g) {
    std::string out = g.app().Connected ? "connected" : "not connected";
    for (const MessageBox& b : g.dialogs.shown())
        out += "; " + b.title + ": " + b.text;
    return out;
}

// The program set up for a converter on port 1, the simulator's terminal, started past its
// splash screen; the connecting log is not written.
void StartOnSimulatedPort(GuiApp& g, const char* hardware, const std::string& link) {
    g.settings.save(kAppName, kSection, "OBDIIHardware", hardware);
    g.settings.save(kAppName, kSection, "ConnectPort", "1");
    g.settings.save(kAppName, kSection, "Log File", "False");
    SavePortDevicePath(g.settings, 1, link);
    g.startPastSplash();
}

// The program on a real pseudo-terminal with the simulated car: connect, live data, codes,
// the freeze frame and the alert, as a user would get them.
TEST(MainScreenWithSimulator, ConnectsShowsLiveDataCodesAndTheAlert) {
    // The driving car of the data folder, with a freeze frame of every PID from 02 to 11: a
    // PID the car lacks costs the sweep an idle sync of a second.
    test::TempDir dir;
    const std::string mode2 = "mode2      02 03 04 05 06 07 0B 0C 0D 0E 0F 11";
    auto car = test::EditedCopy(std::string(KETREL_DATA_DIR) + "/sim/idle_then_drive.vehicle",
                                mode2, "mode2      02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11",
                                dir.path() / "car.vehicle");
    ASSERT_EQ(test::ReadFile(car).find(mode2), std::string::npos);
    test::SimProcess sim("/tmp/ketrel-gui-car-" + std::to_string(::getpid()), car.string());
    ASSERT_TRUE(sim.ready());
    GuiApp g;
    g.settings.save(kAppName, kSection, "MilAlert", "True");
    StartOnSimulatedPort(g, kDorvane, sim.link());
    QMainWindow* w = mainWindow(g);
    FrmMain& m = g.app().frmMain();

    // Connect through the toolbar; the command returns once the connecting screen has gone.
    w->findChild<QToolBar*>("Toolbar1")->findChild<QAction*>("tbConnect")->trigger();
    ASSERT_TRUE(g.app().Connected)
        << (g.dialogs.shown().empty() ? std::string("no message") : g.dialogs.shown()[0].text);
    EXPECT_TRUE(test::WaitFor(
        [&] {
            return filled(m.lblRPM.text()) && filled(m.lblSpeed.text()) && filled(m.lblMil.text());
        },
        30000))
        << Said(g);
    auto* rpm = g.find<QLabel>("frmMain", "lblRPM");
    EXPECT_EQ(rpm->text().toStdString(), m.lblRPM.text());
    EXPECT_TRUE(m.cmdRequestTC.enabled());
    EXPECT_EQ(w->statusBar()->findChild<QLabel*>("Panel1")->text(),
              "CONNECTION STATUS:  CONNECTED");
    test::Screenshot(w, "main_connected");

    // Codes, pending codes and the freeze frame, asked for on the codes tab.
    g.find<QTabWidget>("frmMain", "SSTab1")->setCurrentIndex(2);
    // The freeze frame's sweep goes before any code request, so the codes are asked first.
    g.find<QPushButton>("frmMain", "cmdRequestTC")->click();
    g.find<QPushButton>("frmMain", "cmdRequestPending")->click();
    EXPECT_TRUE(test::WaitFor(
        [&] { return !m.gridTroubleCode.text(3, 1).empty() && !m.gridPending.text(1, 1).empty(); },
        20000))
        << Said(g);
    g.find<QPushButton>("frmMain", "cmdRequestFF")->click();
    // The first sweep of the freeze frame passes positions 0 to 2 on idle syncs: some 4 s.
    EXPECT_TRUE(test::WaitFor(
        [&] {
            return !m.gridTroubleCode.text(1, 1).empty() && !g.app().RequestFFData &&
                   filled(m.lblFFRPM.text()) && filled(m.lblFFMAF.text());
        },
        30000))
        << Said(g);
    auto* codes = g.find<QTableWidget>("frmMain", "gridTroubleCode");
    ASSERT_NE(codes, nullptr);
    EXPECT_EQ(codes->columnCount(), 4);
    EXPECT_TRUE(codes->isColumnHidden(0));
    EXPECT_EQ(codes->item(1, 2)->text(), "FF");
    EXPECT_EQ(codes->item(2, 2)->text(), "TC");
    EXPECT_FALSE(codes->item(2, 3)->text().isEmpty());  // the description
    auto* pending = g.find<QTableWidget>("frmMain", "gridPending");
    EXPECT_EQ(pending->item(1, 1)->text(), "P0171");

    // The pointer over a description shows it in full as the tool tip.
    hover(codes, 2, 3);
    EXPECT_EQ(m.gridTroubleCode.toolTip(), m.gridTroubleCode.text(2, 3));
    EXPECT_EQ(QToolTip::text(), codes->item(2, 3)->text());
    QToolTip::hideText();
    test::Screenshot(w, "main_codes");

    // New codes raised the alert: on top, at its place, beside the main window.
    QWidget* alert = g.desktop->windows().windowOf("frmAlertMIL");
    ASSERT_NE(alert, nullptr);
    EXPECT_TRUE(alert->isVisible());
    EXPECT_EQ(alert->pos(), QPoint(100, 100));
    EXPECT_EQ(alert->size(), QSize(390, 300));
    EXPECT_TRUE(alert->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(alert->windowTitle(), "CODE(S) ALERT");
    EXPECT_FALSE(alert->isModal());
    EXPECT_FALSE(alert->findChild<QLabel*>("lblCodeSection(0)")->text().isEmpty());
    test::Screenshot(alert, "alert");

    // Disconnect closes the alert and wipes the codes.
    w->findChild<QToolBar*>("Toolbar1")->findChild<QAction*>("tbDisconnect")->trigger();
    EXPECT_FALSE(g.app().Connected);
    EXPECT_FALSE(g.app().frmAlertMIL().loaded());
    EXPECT_EQ(m.gridTroubleCode.text(2, 1), "");
}

// The count-byte converter on a PWM car: the connect walks its probes, the scan fills the data
// tab and the VIN comes in its five frames.
TEST(MainScreenWithSimulator, ScansACarThroughTheCountByteConverter) {
    test::SimProcess sim("/tmp/ketrel-gui-br3-" + std::to_string(::getpid()),
                         std::string(KETREL_DATA_DIR) + "/sim/pwm.vehicle", "br3");
    ASSERT_TRUE(sim.ready());
    GuiApp g;
    g.settings.save(kAppName, kSection, "BR3SetDelay", "True");
    StartOnSimulatedPort(g, kBr3, sim.link());
    QMainWindow* w = mainWindow(g);
    FrmMain& m = g.app().frmMain();

    w->findChild<QToolBar*>("Toolbar1")->findChild<QAction*>("tbConnect")->trigger();
    ASSERT_TRUE(g.app().Connected)
        << (g.dialogs.shown().empty() ? std::string("no message") : g.dialogs.shown()[0].text);
    EXPECT_EQ(g.app().ProtocolCode, "02");
    EXPECT_TRUE(test::WaitFor(
        [&] { return filled(m.lblRPM.text()) && filled(m.lblCoolant.text()); }, 30000))
        << Said(g);
    g.find<QTabWidget>("frmMain", "SSTab1")->setCurrentIndex(3);
    g.find<QPushButton>("frmMain", "cmdRequestInfo")->click();
    EXPECT_TRUE(test::WaitFor([&] { return m.txtVin.text().size() == 17; }, 20000))
        << m.txtVin.text();
    EXPECT_EQ(m.lblWhatProtocol.text(), "2");
    EXPECT_EQ(w->statusBar()->findChild<QLabel*>("Panel1")->text(),
              "CONNECTION STATUS:  CONNECTED");
    test::Screenshot(w, "main_br3_vehicle");
    g.find<QTabWidget>("frmMain", "SSTab1")->setCurrentIndex(0);
    test::Screenshot(w, "main_br3_connected");
    w->findChild<QToolBar*>("Toolbar1")->findChild<QAction*>("tbDisconnect")->trigger();
    EXPECT_FALSE(g.app().Connected);
}

TEST(MainScreenView, FunctionKeysTriggerTheirVehicleEntries) {
    struct Case {
        Qt::Key key;
        const char* entry;
        bool App::*flag;
    };
    const Case cases[] = {
        {Qt::Key_F2, "mnuVehicleClear", &App::RequestClearCodes},
        {Qt::Key_F3, "mnuVehicleRequestFF", &App::RequestFFCode},
        {Qt::Key_F4, "mnuVehicleRequestTC", &App::RequestTroubleCodes},
        {Qt::Key_F5, "mnuVehicleRequestPending", &App::RequestPendingCodes},
    };
    GuiApp g;
    g.startPastSplash();
    QMainWindow* w = mainWindow(g);
    w->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(w));
    for (const Case& c : cases) {
        for (bool enabled : {false, true}) {
            g.app().*c.flag = false;
            g.app().frmMain().findControl(c.entry)->setEnabled(enabled);
            QTest::keyClick(w, c.key);
            EXPECT_EQ(g.app().*c.flag, enabled) << c.entry << " enabled " << enabled;
        }
    }
}

TEST(MainScreenView, ClickingAnIndicatorUnderPidsOverrideTurnsThePidOff) {
    GuiApp g;
    g.startPastSplash();
    App& app = g.app();
    app.Connected = true;
    app.Mode1Supported[0x0C] = app.PidWanted[0x0C] = true;
    app.frmMain().lblRPM.setText("760");
    auto* indicator = g.find<QLabel>("frmMain", "Image1(12)");
    ASSERT_NE(indicator, nullptr);
    clickOn(indicator);
    EXPECT_TRUE(app.Mode1Supported[0x0C]);  // PIDS Override is not checked
    app.frmMain().mnuEditPidsOver.click();
    clickOn(indicator);
    EXPECT_FALSE(app.Mode1Supported[0x0C]);
    EXPECT_EQ(app.frmMain().Image1[12].picture(), kImgRed);
    EXPECT_EQ(g.find<QLabel>("frmMain", "lblRPM")->text(), "N/A");
}

TEST(MainScreenView, TheTabsFillTheWindowBetweenTheBarsAndTheValuesStayCentred) {
    GuiApp g;
    g.startPastSplash();
    QMainWindow* w = mainWindow(g);
    auto* tabs = g.find<QTabWidget>("frmMain", "SSTab1");
    QWidget* values = g.find<QWidget>("frmMain", "Frame14");
    for (QSize size : {QSize(1060, 760), QSize(1400, 980), QSize(1100, 820)}) {
        w->resize(size);
        QApplication::processEvents();
        QRect area(tabs->mapTo(w, QPoint(0, 0)), tabs->size());
        int barBottom = w->findChild<QToolBar*>("Toolbar1")->geometry().bottom();
        int statusTop = w->statusBar()->geometry().top();
        EXPECT_GT(area.top(), barBottom) << size.width();
        EXPECT_LT(area.bottom(), statusTop) << size.width();
        EXPECT_LE(statusTop - area.bottom(), 12) << size.width();
        EXPECT_GE(area.width(), w->width() - 16) << size.width();
        QWidget* page = tabs->currentWidget();
        QPoint centre = values->mapTo(page, values->rect().center());
        EXPECT_NEAR(centre.x(), page->width() / 2, 3) << size.width();
    }
}

}  // namespace
}  // namespace ketrel
