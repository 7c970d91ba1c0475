#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>

#include "qt_fixture.h"

namespace ketrel {
namespace {

using test::GuiApp;

struct SettingsGui : GuiApp {
    SettingsGui() {
        startPastSplash();
        app().frmSettings().unload();
        app().frmSettings().show();
        QApplication::processEvents();
        settings.clearSaveLog();
    }
    template <class W = QWidget>
    W* w(const char* name) {
        W* found = find<W>("frmSettings", name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
};

TEST(SettingsWindow, OpensWithItsPagesAndApplyOff) {
    SettingsGui g;
    QWidget* win = g.desktop->windows().windowOf("frmSettings");
    ASSERT_NE(win, nullptr);
    EXPECT_EQ(win->windowTitle(), "SETTINGS");
    EXPECT_TRUE(win->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(win->pos(), QPoint(100, 100));
    auto* tabs = g.w<QTabWidget>("SSTab1");
    ASSERT_EQ(tabs->count(), 5);
    EXPECT_EQ(tabs->tabText(1), "&Port/Device");
    // One widget of each kind shows its field as the screen loaded it.
    EXPECT_TRUE(g.w<QRadioButton>("optFarenheit")->isChecked());
    EXPECT_FALSE(g.w<QPushButton>("cmdApplyUnits")->isEnabled());
    EXPECT_EQ(g.w<QComboBox>("cmbTimedOut")->currentText(), "10");
    EXPECT_EQ(g.w<QSlider>("sldBR3Speed")->value(), 180);
    EXPECT_EQ(g.w<QListWidget>("lstDisplaySettings")->count(), 1);
    EXPECT_EQ(g.w<QLabel>("lblFileSize")->text(), "0.0 KB");
    // A port number going to a device shows the adapter behind it, as the system tells it.
    g.settings.save(kAppName, "Ports", "1", "/dev/ttyS0");
    g.app().frmSettings().cmbPort.setText("1");
    QApplication::processEvents();
    EXPECT_EQ(g.w<QLabel>("lblAdapter")->text().toStdString(),
              g.app().frmSettings().lblAdapter.text());
    EXPECT_TRUE(g.w<QLabel>("lblAdapter")->text().startsWith("Adapter: "));
    const char* pages[] = {"units", "device", "display", "log", "sequence"};
    for (int i = 0; i < 5; ++i) {
        tabs->setCurrentIndex(i);
        QApplication::processEvents();
        test::Screenshot(win, std::string("settings_") + pages[i]);
    }
}

TEST(SettingsWindow, ClicksGoToTheScreenAndApplySaves) {
    SettingsGui g;
    g.w<QRadioButton>("optCelcius")->click();
    EXPECT_TRUE(g.app().frmSettings().optCelcius.value());
    EXPECT_FALSE(g.w<QRadioButton>("optFarenheit")->isChecked());
    ASSERT_TRUE(g.w<QPushButton>("cmdApplyUnits")->isEnabled());
    g.w<QPushButton>("cmdApplyUnits")->click();
    EXPECT_EQ(g.app().Temp, "C");
    EXPECT_EQ(g.settings.get(kAppName, kSection, "Temp"), "C");
    EXPECT_FALSE(g.w<QPushButton>("cmdApplyUnits")->isEnabled());

    g.w<QSlider>("sldBR3Speed")->setValue(150);
    EXPECT_EQ(g.app().frmSettings().sldBR3Speed.value(), 150);
    EXPECT_EQ(g.w<QLabel>("lblRecommend(0)")->text(), "Recommended VPW/PWM");
    EXPECT_TRUE(g.w<QPushButton>("cmdApplyDevice")->isEnabled());

    g.w<QComboBox>("cmbPort")->activated(3);
    EXPECT_EQ(g.app().frmSettings().cmbPort.text(), "3");

    g.w<QCheckBox>("chkSetDelay")->click();
    EXPECT_TRUE(g.app().frmSettings().chkSetDelay.value());
    EXPECT_FALSE(g.w<QSlider>("sldBR3Speed")->isEnabled());

    g.w<QCheckBox>("chConLog")->click();
    EXPECT_EQ(g.settings.get(kAppName, kSection, "Log File"), "False");

    g.w<QPushButton>("cmdClose(0)")->click();
    EXPECT_FALSE(g.app().frmSettings().loaded());
    QPointer<QWidget> win(g.desktop->windows().windowOf("frmSettings"));
    EXPECT_EQ(win, nullptr);
}

TEST(SettingsWindow, TheMenuEntryOpensItModallyAndTheWindowCloseButtonEndsIt) {
    GuiApp g;
    g.startPastSplash();
    g.app().frmSettings().unload();
    bool wasModal = false;
    QTimer::singleShot(50, [&] {
        QWidget* win = g.desktop->windows().windowOf("frmSettings");
        wasModal = win && win->isVisible() && win->windowModality() == Qt::ApplicationModal;
        if (win) win->close();
    });
    g.app().frmMain().mnuOptionSettings.click();  // returns when the screen has gone
    EXPECT_TRUE(wasModal);
    EXPECT_FALSE(g.app().frmSettings().loaded());
}

}  // namespace
}  // namespace ketrel
