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

// One widget of each kind shows its field as the screen loaded it, and each page is pictured.
TEST(SettingsWindow, WidgetsShowTheirFieldsOnEveryPage) {
    SettingsGui g;
    FrmSettings& s = g.app().frmSettings();
    QWidget* win = g.desktop->windows().windowOf("frmSettings");
    ASSERT_NE(win, nullptr);
    EXPECT_TRUE(win->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(g.w<QRadioButton>("optFarenheit")->isChecked(), s.optFarenheit.value());
    EXPECT_EQ(g.w<QPushButton>("cmdApplyUnits")->isEnabled(), s.cmdApplyUnits.enabled());
    EXPECT_EQ(g.w<QComboBox>("cmbTimedOut")->currentText().toStdString(), s.cmbTimedOut.text());
    EXPECT_EQ(g.w<QSlider>("sldBR3Speed")->value(), s.sldBR3Speed.value());
    EXPECT_EQ(g.w<QListWidget>("lstDisplaySettings")->count(), s.lstDisplaySettings.count());
    EXPECT_EQ(g.w<QLabel>("lblFileSize")->text().toStdString(), s.lblFileSize.text());
    // A port number going to a device shows the adapter behind it, as the system tells it.
    g.settings.save(kAppName, "Ports", "1", "/dev/ttyS0");
    s.cmbPort.setText("1");
    QApplication::processEvents();
    EXPECT_EQ(g.w<QLabel>("lblAdapter")->text().toStdString(), s.lblAdapter.text());
    EXPECT_TRUE(g.w<QLabel>("lblAdapter")->text().startsWith("Adapter: "));
    const char* pages[] = {"units", "device", "display", "log", "sequence"};
    for (int i = 0; i < 5; ++i) {
        g.w<QTabWidget>("SSTab1")->setCurrentIndex(i);
        QApplication::processEvents();
        test::Screenshot(win, std::string("settings_") + pages[i]);
    }
}

TEST(SettingsWindow, ClicksGoToTheScreenAndTheWidgetsFollowWhatItDoes) {
    SettingsGui g;
    FrmSettings& s = g.app().frmSettings();
    g.w<QRadioButton>("optCelcius")->click();
    EXPECT_TRUE(s.optCelcius.value());
    EXPECT_FALSE(g.w<QRadioButton>("optFarenheit")->isChecked());
    ASSERT_TRUE(g.w<QPushButton>("cmdApplyUnits")->isEnabled());
    g.w<QPushButton>("cmdApplyUnits")->click();
    EXPECT_EQ(g.settings.get(kAppName, kSection, "Temp"), "C");
    g.w<QSlider>("sldBR3Speed")->setValue(150);
    EXPECT_EQ(s.sldBR3Speed.value(), 150);
    g.w<QComboBox>("cmbPort")->activated(3);
    EXPECT_EQ(s.cmbPort.text(), "3");
    g.w<QCheckBox>("chkSetDelay")->click();
    EXPECT_TRUE(s.chkSetDelay.value());
    EXPECT_FALSE(g.w<QSlider>("sldBR3Speed")->isEnabled());
    g.w<QPushButton>("cmdClose(0)")->click();
    EXPECT_FALSE(s.loaded());
    EXPECT_EQ(g.desktop->windows().windowOf("frmSettings"), nullptr);
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
