#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QToolBar>
#include <QToolTip>
#include <fstream>

#include "link/dorvane_receive.h"
#include "link/log_frames.h"
#include "qt/pictures.h"
#include "qt_fixture.h"

namespace ketrel {
namespace {

QAction* actionNamed(QWidget* w, const QString& text) {
    for (QAction* a : w->findChildren<QAction*>())
        if (a->text() == text) return a;
    return nullptr;
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

// The program past its splash screen, and its main window.
struct MainGui : test::GuiApp {
    MainGui() { startPastSplash(); }
    FrmMain& m() { return app().frmMain(); }
    QMainWindow* window() {
        return qobject_cast<QMainWindow*>(desktop->windows().windowOf("frmMain"));
    }
    template <class W = QWidget>
    W* w(const char* name) {
        return find<W>("frmMain", name);
    }
};

TEST(MainWindow, EveryMenuEntryAndToolbarButtonHasItsAction) {
    MainGui g;
    QMainWindow* w = g.window();
    int leaves = 0;
    for (Control* c : g.m().controls()) {
        if (c->kind() != ControlKind::Menu) continue;
        auto* item = static_cast<MenuItem*>(c);
        if (!item->children().empty()) continue;
        ++leaves;
        EXPECT_NE(actionNamed(w, QString::fromStdString(item->caption())), nullptr) << item->name();
    }
    EXPECT_GT(leaves, 50);
    auto* bar = w->findChild<QToolBar*>("Toolbar1");
    for (int n = 1; n <= 15; ++n) {
        ToolButton& b = g.m().button(n);
        if (b.separator()) continue;
        auto* a = bar->findChild<QAction*>(QString::fromStdString("tb" + b.key()));
        ASSERT_NE(a, nullptr) << b.key();
        EXPECT_EQ(a->isEnabled(), b.enabled()) << b.key();
    }
    // The gauge button drops down the entry of the five dials.
    QMenu* drop = bar->findChild<QAction*>("tbGuage")->menu();
    ASSERT_NE(drop, nullptr);
    EXPECT_EQ(drop->actions().at(0)->text().toStdString(), g.m().tbMultiGuage.caption());
    for (int tab = 0; tab < 5; ++tab) {
        g.m().SSTab1.setTab(tab);
        QApplication::processEvents();
        test::Screenshot(w, "main_tab" + std::to_string(tab));
    }
}

TEST(MainWindow, WidgetsFollowTheirFields) {
    MainGui g;
    FrmMain& m = g.m();
    struct Case {
        const char* what;
        std::function<void()> change;
        std::function<bool()> shown;
    };
    auto label = [&](const char* name) { return g.w<QLabel>(name); };
    auto table = [&](const char* name) { return g.w<QTableWidget>(name); };
    Case cases[] = {
        {"text", [&] { m.lblRPM.setText("2450"); },
         [&] { return label("lblRPM")->text() == "2450"; }},
        {"inactive", [&] { m.lblCoolant.setEnabled(false); },
         [&] { return !label("lblCoolant")->isEnabled(); }},
        {"picture", [&] { m.Image1[12].setPicture(kImgGreen); },
         [&] {
             return label("Image1(12)")->pixmap().toImage() == PictureFor(kImgGreen, 12).toImage();
         }},
        {"button", [&] { m.cmdRequestTC.setEnabled(true); },
         [&] { return g.w<QPushButton>("cmdRequestTC")->isEnabled(); }},
        {"vin", [&] { m.txtVin.setText("1FTRX18W1XKA12345"); },
         [&] { return g.w<QLineEdit>("txtVin")->text() == "1FTRX18W1XKA12345"; }},
        {"grid cell", [&] { m.gridTroubleCode.setText(1, 0, "P0301"); },
         [&] { return table("gridTroubleCode")->item(1, 0)->text() == "P0301"; }},
        {"grid colour", [&] { m.msM1Grid.setCellBackColor(2, 1, kLightGreen); },
         [&] { return table("msM1Grid")->item(2, 1)->background().color() == QColor(0xC0FFC0); }},
        {"grid width", [&] { m.gridPending.setColWidth(1, 3000); },
         [&] { return table("gridPending")->columnWidth(1) == 200; }},
        {"grid style",
         [&] {
             m.GridData.setVisible(true);
             m.Frame14.setVisible(false);
         },
         [&] { return table("GridData")->isVisible() && !g.w("Frame14")->isVisible(); }},
        {"combo",
         [&] {
             m.cmbYear.addItem("1999");
             m.cmbYear.addItem("2000");
             m.cmbYear.setText("2000");
         },
         [&] { return g.w<QComboBox>("cmbYear")->currentText() == "2000"; }},
        {"panel", [&] { m.panel(3).setText("COM 3"); },
         [&] { return label("Panel3")->text() == "COM 3"; }},
        {"panel picture", [&] { m.panel(2).setPicture(kImgConnected); },
         [&] {
             return label("Panel2")->pixmap().toImage() == PictureFor(kImgConnected, 14).toImage();
         }},
        {"menu check", [&] { m.mnuEditPidsOver.setChecked(true); },
         [&] {
             QAction* a = actionNamed(g.window(), "PIDS Override");
             return a->isCheckable() && a->isChecked();
         }},
        {"menu enabled", [&] { m.mnuVehicleDisconnect.setEnabled(true); },
         [&] { return actionNamed(g.window(), "Disconnect")->isEnabled(); }},
        {"debug shown", [&] { m.LogData.setVisible(true); },
         [&] { return !g.w("LogData")->isHidden(); }},
        {"status bar", [&] { m.StatusBar1.setVisible(false); },
         [&] { return !g.window()->statusBar()->isVisible(); }},
        {"title", [&] { m.setCaption("Ketrel (OBD II Generic) Version 0.77 - ISO 9141"); },
         [&] { return g.window()->windowTitle().endsWith("ISO 9141"); }},
    };
    for (const Case& c : cases) {
        EXPECT_FALSE(c.shown()) << c.what << " before";
        c.change();
        QApplication::processEvents();
        EXPECT_TRUE(c.shown()) << c.what;
    }
}

TEST(MainWindow, WidgetsCallTheirControls) {
    MainGui g;
    FrmMain& m = g.m();
    QMainWindow* w = g.window();
    int requests = 0, connects = 0, indicator = 0;
    m.cmdRequestTC.setEnabled(true);  // as a session would leave it
    m.cmdRequestTC.onClick = [&] { ++requests; };
    g.w<QPushButton>("cmdRequestTC")->click();
    EXPECT_EQ(requests, 1);
    m.tbConnect.onClick = [&] { ++connects; };
    w->findChild<QAction*>("tbConnect")->trigger();
    EXPECT_EQ(connects, 1);
    m.Image1[12].onClick = [&] { ++indicator; };
    clickOn(g.w("Image1(12)"));
    EXPECT_EQ(indicator, 1);

    g.w<QTabWidget>("SSTab1")->setCurrentIndex(3);
    EXPECT_EQ(m.SSTab1.tab(), 3);
    auto* vin = g.w<QLineEdit>("txtVin");
    vin->setText("VIEWTRACE");
    vin->textEdited("VIEWTRACE");
    EXPECT_EQ(m.txtVin.text(), "VIEWTRACE");
    actionNamed(w, "Status Bar")->trigger();
    EXPECT_FALSE(m.mnuOptionStatusBar.checked());

    // The function keys trigger their vehicle entries, only while those are enabled.
    struct Key {
        Qt::Key key;
        MenuItem& entry;
        bool App::*flag;
    } keys[] = {{Qt::Key_F2, m.mnuVehicleClear, &App::RequestClearCodes},
                {Qt::Key_F3, m.mnuVehicleRequestFF, &App::RequestFFCode},
                {Qt::Key_F4, m.mnuVehicleRequestTC, &App::RequestTroubleCodes},
                {Qt::Key_F5, m.mnuVehicleRequestPending, &App::RequestPendingCodes}};
    w->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(w));
    for (const Key& k : keys) {
        for (bool enabled : {false, true}) {
            g.app().*k.flag = false;
            k.entry.setEnabled(enabled);
            QTest::keyClick(w, k.key);
            EXPECT_EQ(g.app().*k.flag, enabled) << k.entry.name() << " enabled " << enabled;
        }
    }
}

// The vehicle frame: a choice from a list goes to its field and the list below follows what
// the logic put in it; typed text goes in when the make is left.
TEST(MainWindow, TheVehicleFramePassesChoicesAndTyping) {
    MainGui g;
    FrmMain& m = g.m();
    g.w<QTabWidget>("SSTab1")->setCurrentIndex(3);
    auto* year = g.w<QComboBox>("cmbYear");
    auto* make = g.w<QComboBox>("cmbMake");
    auto* model = g.w<QComboBox>("cmbModel");
    ASSERT_TRUE(year && make && model);
    emit year->activated(7);
    EXPECT_EQ(m.cmbYear.text(), year->itemText(7).toStdString());
    EXPECT_EQ(make->count(), m.cmbMake.count());
    emit make->activated(make->findText("TOYOTA"));
    EXPECT_EQ(model->count(), m.cmbModel.count());
    emit model->activated(model->findText("PRUIS"));
    EXPECT_EQ(m.cmbModel.text(), "PRUIS");
    EXPECT_EQ(g.window()->windowTitle().toStdString(), m.caption());
    m.txtMileage.setText("84120");
    QApplication::processEvents();
    test::Screenshot(g.window(), "vehicle_frame");

    make->lineEdit()->setText("mercury");
    emit make->lineEdit()->editingFinished();
    EXPECT_EQ(m.cmbMake.text(), "MERCURY");
    EXPECT_EQ(make->currentText(), "MERCURY");
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

// The frames of a recorded session through the receive path, as playback does: the data tab in
// both styles, then codes with the alert they raise.
TEST(MainWindow, ARecordedSessionShowsItsValuesCodesAndAlert) {
    MainGui g;
    App& app = g.app();
    FrmMain& m = g.m();
    QMainWindow* w = g.window();
    auto receive = [&](const std::string& frame) {
        SetDorvaneFrame(app, frame);
        DORVANERECEIVE(app);
    };
    std::ifstream in(KETREL_SESSION_LOG);
    ASSERT_TRUE(in) << KETREL_SESSION_LOG;
    LogFrameReader reader(in);
    app.PlayingLog = true;
    for (LogFrame f; reader.next(f);)
        receive(f.text);
    ASSERT_EQ(m.lblRPM.text(), "1726");
    QApplication::processEvents();
    EXPECT_EQ(g.w<QLabel>("lblRPM")->text().toStdString(), m.lblRPM.text());
    test::Screenshot(w, "data_tab_labels");
    m.mnuViewStyleGrid.click();
    QApplication::processEvents();
    auto* grid = g.w<QTableWidget>("GridData");
    ASSERT_TRUE(grid && grid->isVisible());
    EXPECT_EQ(grid->item(3, 5)->text().toStdString(), m.GridData.text(3, 5));
    test::Screenshot(w, "data_tab_grid");
    m.mnuViewDefault.click();

    app.AlertOnMIL = true;
    m.SSTab1.setTab(2);
    receive("V486B10430171030004200");
    QApplication::processEvents();
    auto* codes = g.w<QTableWidget>("gridTroubleCode");
    ASSERT_FALSE(m.gridTroubleCode.text(2, 3).empty());
    EXPECT_EQ(codes->item(2, 3)->text().toStdString(), m.gridTroubleCode.text(2, 3));
    // The pointer over a description shows it in full as the tool tip.
    hover(codes, 2, 3);
    EXPECT_EQ(QToolTip::text().toStdString(), m.gridTroubleCode.text(2, 3));
    QToolTip::hideText();
    test::Screenshot(w, "main_codes");
    // The alert stands on top, where its screen placed it, beside the main window.
    QWidget* alert = g.desktop->windows().windowOf("frmAlertMIL");
    ASSERT_TRUE(alert && alert->isVisible());
    EXPECT_EQ(alert->pos(), QPoint(100, 100));
    EXPECT_TRUE(alert->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_FALSE(alert->isModal());
    EXPECT_EQ(alert->findChild<QLabel*>("lblCodeSection(0)")->text().toStdString(),
              app.frmAlertMIL().lblCodeSection[0].text());
    test::Screenshot(alert, "alert");
}

TEST(MainWindow, TheTabsFillTheWindowBetweenTheBarsAndTheValuesStayCentred) {
    MainGui g;
    QMainWindow* w = g.window();
    auto* tabs = g.w<QTabWidget>("SSTab1");
    QWidget* values = g.w("Frame14");
    for (QSize size : {QSize(1060, 760), QSize(1400, 980)}) {
        w->resize(size);
        QApplication::processEvents();
        QRect area(tabs->mapTo(w, QPoint(0, 0)), tabs->size());
        int statusTop = w->statusBar()->geometry().top();
        EXPECT_GT(area.top(), w->findChild<QToolBar*>("Toolbar1")->geometry().bottom());
        EXPECT_LT(area.bottom(), statusTop);
        EXPECT_LE(statusTop - area.bottom(), 12);
        EXPECT_GE(area.width(), w->width() - 16);
        QWidget* page = tabs->currentWidget();
        EXPECT_NEAR(values->mapTo(page, values->rect().center()).x(), page->width() / 2, 3);
    }
}

TEST(MainWindow, ClosingTheWindowAsksTheScreenWhichMayRefuse) {
    MainGui g;
    QWidget* w = g.window();
    g.app().Connected = true;
    w->close();
    QApplication::processEvents();
    EXPECT_TRUE(g.m().loaded());
    EXPECT_TRUE(w->isVisible());
    g.app().Connected = false;
    QPointer<QWidget> alive(w);
    w->close();
    EXPECT_FALSE(g.m().loaded());
    EXPECT_TRUE(test::WaitFor([&] { return alive.isNull(); }));
}

// The splash stands on top of a main window held off; the hand-over its timer makes (run here
// at once) takes the splash away and lets the main window be used.
TEST(Splash, ShowsTopmostOverTheMainWindowUntilTheHandOver) {
    test::GuiApp g;
    g.desktop->start();
    QWidget* splash = g.desktop->windows().windowOf("frmSplash");
    ASSERT_NE(splash, nullptr);
    EXPECT_EQ(splash->geometry(), QRect(100, 100, 493, 295));
    EXPECT_TRUE(splash->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_FALSE(g.desktop->windows().windowOf("frmMain")->isEnabled());
    test::Screenshot(splash, "splash");
    g.app().frmMain().SplashScreen.stop();
    g.app().frmSplash().unload();
    g.app().frmMain().setEnabled(true);
    EXPECT_EQ(g.desktop->windows().windowOf("frmSplash"), nullptr);
    EXPECT_TRUE(g.desktop->windows().windowOf("frmMain")->isEnabled());
}

}  // namespace
}  // namespace ketrel
