#include <gtest/gtest.h>

#include <QTimer>
#include <QWidget>

#include "link/port_map.h"
#include "qt_fixture.h"
#include "state/app.h"

namespace ketrel {
namespace {

using test::GuiApp;
using test::Screenshot;
using test::WaitFor;

// A KESH cable on the simulated ISO 9141 car, in real time: the connecting screen counts the
// line's 4 s of idle down, the wake-up runs on the real clock, and the main screen fills.
TEST(KlineSession, TheConnectingScreenCountsDownThenTheScanShowsValues) {
    GuiApp g;
    g.settings.save(kAppName, kSection, "OBDIIHardware", kKesh);
    g.settings.save(kAppName, kSection, "ConnectPort", "1");
    SavePortDevicePath(g.settings, 1, "sim:" KETREL_DATA_DIR "/sim/iso9141.vehicle");
    g.startPastSplash();
    App& app = g.app();
    // The connect runs inside the click, pumping events; the countdown is caught as it shows.
    Field& status = app.frmConnecting().lblControlStatus[1];
    bool sawCountdown = false;
    const int watch = status.observe([&] {
        if (sawCountdown || status.text() != "Initializing In Progress...3") return;
        QWidget* connecting = g.desktop->windows().windowOf("frmConnecting");
        ASSERT_NE(connecting, nullptr);
        sawCountdown = connecting->isVisible();
        // Taken on the next turn of the connect's pump, once the view has drawn the text.
        QTimer::singleShot(0, connecting,
                           [connecting] { Screenshot(connecting, "kline_connecting_countdown"); });
    });
    app.frmMain().mnuVehicleConnect.onClick();
    status.unobserve(watch);
    EXPECT_TRUE(sawCountdown);

    ASSERT_TRUE(WaitFor([&] { return app.Connected && !app.frmConnecting().visible(); }, 40000));
    EXPECT_EQ(app.frmMain().lblWhatProtocol.text(), "3");
    EXPECT_EQ(app.frmMain().lblKeyword1.text(), "08");
    ASSERT_TRUE(WaitFor(
        [&] {
            const std::string rpm = app.frmMain().lblRPM.text();
            return !rpm.empty() && rpm != "N/A";
        },
        20000));
    Screenshot(g.desktop->windows().windowOf("frmMain"), "kline_session_main");
    app.frmMain().mnuVehicleDisconnect.onClick();
}

}  // namespace
}  // namespace ketrel
