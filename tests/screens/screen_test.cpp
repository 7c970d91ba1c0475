#include <gtest/gtest.h>

#include "platform/virtual_event_loop.h"
#include "screens/frm_main.h"
#include "screens/frm_settings.h"

namespace ketrel {
namespace {

TEST(Field, ChangeHandlerRunsOnlyWhenTheTextChanges) {
    VirtualEventLoop loop;
    FrmMain main(loop);
    int changes = 0, notes = 0;
    main.lblCoolant.onChange = [&] { ++changes; };
    main.lblCoolant.observe([&] { ++notes; });
    main.lblCoolant.setText("190");
    main.lblCoolant.setText("190");
    main.lblCoolant.setText("N/A");
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(notes, 2);
}

TEST(Screen, UnloadMayBeRefusedElseReturnsControlsToTheirDesignAndRunsHandlers) {
    VirtualEventLoop loop;
    FrmMain main(loop);
    std::string seen;
    main.onLoad = [&] { seen += "L"; };
    main.onUnload = [&] { seen += "U"; };
    main.show();
    main.lblRPM.setText("800");
    main.cmdRequestTC.setEnabled(false);
    main.GridData.setText(1, 1, "x");
    main.TimeOutConnect.start();
    bool refuse = true;  // a query-unload handler may refuse
    main.onQueryUnload = [&](bool& cancel) { cancel = refuse; };
    EXPECT_FALSE(main.unload());
    EXPECT_TRUE(main.loaded() && main.visible());
    EXPECT_EQ(main.lblRPM.text(), "800");
    refuse = false;
    EXPECT_TRUE(main.unload());
    EXPECT_EQ(seen, "LU");
    EXPECT_EQ(main.lblRPM.text(), "");
    EXPECT_TRUE(main.cmdRequestTC.enabled());
    EXPECT_EQ(main.cmdRequestTC.text(), "[F4] TROUBLE CODES");
    EXPECT_EQ(main.GridData.text(1, 1), "");
    EXPECT_FALSE(main.TimeOutConnect.enabled());
    EXPECT_FALSE(main.loaded());
}

TEST(Screen, ModalShowWaitsWhileTimersRunUntilTheScreenGoesAway) {
    VirtualEventLoop loop;
    FrmSettings settings(loop);
    Timer closer(loop.scheduler(), 250);
    int ticks = 0;
    closer.setHandler([&] {
        if (++ticks == 3) settings.unload();
    });
    closer.start();
    settings.showModal();
    EXPECT_EQ(ticks, 3);
    EXPECT_EQ(loop.nowMs(), 750);
    EXPECT_FALSE(settings.loaded());
}

TEST(Toggle, OptionsOfAGroupClearEachOtherAndReportClicks) {
    VirtualEventLoop loop;
    FrmSettings s(loop);
    int clicks = 0;
    s.BR2.onClick = [&] { ++clicks; };
    s.BR1.setValue(true);
    s.BR2.setValue(true);
    EXPECT_FALSE(s.BR1.value());
    EXPECT_TRUE(s.BR2.value());
    s.BR2.setValue(true);  // setting True again still reports
    EXPECT_EQ(clicks, 2);
    s.chConLog.click();
    EXPECT_TRUE(s.chConLog.value());
}

TEST(MenuItem, ClickNeedsTheItemAndItsParentsEnabled) {
    VirtualEventLoop loop;
    FrmMain main(loop);
    int clicks = 0;
    main.mnuViewRPM.onClick = [&] { ++clicks; };
    main.mnuViewRPM.click();
    main.mnuViewRealTime.setEnabled(false);
    main.mnuViewRPM.click();
    main.mnuViewRealTime.setEnabled(true);
    main.mnuViewRPM.setEnabled(false);
    main.mnuViewRPM.click();
    EXPECT_EQ(clicks, 1);
}

TEST(FrmMain, ToolbarButtonsAndPanelsByNumberAndKey) {
    VirtualEventLoop loop;
    FrmMain main(loop);
    EXPECT_EQ(main.button(2).key(), "Connect");
    EXPECT_EQ(main.button(3).toolTip(), "Disconnect From OBD II");
    EXPECT_EQ(main.button(12).key(), "Custom Display");
    EXPECT_EQ(main.buttonByKey("Mode5")->index(), 15);
    EXPECT_EQ(main.buttonByKey("nothing"), nullptr);
    EXPECT_EQ(main.panel(9).index(), 9);
    EXPECT_EQ(main.findControl("lblCoolant"), &main.lblCoolant);
    main.Image1[33].setPicture(kImgGreen);
    EXPECT_EQ(main.findControl("Image1(33)"), &main.Image1[33]);
}

}  // namespace
}  // namespace ketrel
