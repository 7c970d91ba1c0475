#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolBar>

#include "qt/pictures.h"
#include "qt_fixture.h"

namespace ketrel {
namespace {

using test::GuiApp;

QAction* actionNamed(QWidget* w, const QString& text) {
    for (QAction* a : w->findChildren<QAction*>())
        if (a->text() == text) return a;
    return nullptr;
}

TEST(MainWindow, OpensInItsStartStateWithEveryMenuTabAndPanel) {
    GuiApp g;
    g.startPastSplash();
    auto* w = qobject_cast<QMainWindow*>(g.desktop->windows().windowOf("frmMain"));
    ASSERT_NE(w, nullptr);
    EXPECT_TRUE(w->isVisible());
    EXPECT_TRUE(w->isEnabled());
    EXPECT_EQ(w->windowTitle(), "Ketrel (OBD II Generic) Version 0.77 - ");

    QStringList menus;
    for (QAction* a : w->menuBar()->actions())
        menus << a->text();
    EXPECT_EQ(menus, (QStringList{"&File", "Vehi&cle", "&Edit", "&View", "&Option", "&Help"}));
    int leaves = 0;
    for (Control* c : g.app().frmMain().controls()) {
        if (c->kind() != ControlKind::Menu) continue;
        auto* item = static_cast<MenuItem*>(c);
        if (!item->children().empty()) continue;
        ++leaves;
        EXPECT_NE(actionNamed(w, QString::fromStdString(item->caption())), nullptr) << item->name();
    }
    EXPECT_GT(leaves, 50);

    auto* tabs = g.find<QTabWidget>("frmMain", "SSTab1");
    ASSERT_NE(tabs, nullptr);
    ASSERT_EQ(tabs->count(), 5);
    EXPECT_EQ(tabs->tabText(2), "- CODES/FREEZE FRAME");
    EXPECT_EQ(tabs->currentIndex(), 0);

    auto* bar = w->findChild<QToolBar*>("Toolbar1");
    ASSERT_NE(bar, nullptr);
    QAction* connect = bar->findChild<QAction*>("tbConnect");
    QAction* disconnect = bar->findChild<QAction*>("tbDisconnect");
    ASSERT_TRUE(connect && disconnect);
    EXPECT_TRUE(connect->isEnabled());
    EXPECT_FALSE(disconnect->isEnabled());
    EXPECT_FALSE(bar->findChild<QAction*>("tbCustom Display")->isEnabled());
    EXPECT_FALSE(bar->findChild<QAction*>("tbController")->isEnabled());
    EXPECT_EQ(connect->toolTip(), "Connect To OBD II ");
    EXPECT_EQ(bar->findChild<QAction*>("tbGuage")->menu()->actions().at(0)->text(),
              "Multi Guages...");

    auto* panel4 = w->statusBar()->findChild<QLabel*>("Panel4");
    ASSERT_NE(panel4, nullptr);
    EXPECT_TRUE(panel4->text().startsWith("Display Setting:  "));
    EXPECT_FALSE(w->statusBar()->findChild<QLabel*>("Panel2")->pixmap().isNull());

    EXPECT_TRUE(g.find<QWidget>("frmMain", "Frame14")->isVisible());
    EXPECT_FALSE(g.find<QWidget>("frmMain", "GridData")->isVisible());
    EXPECT_TRUE(g.find<QWidget>("frmMain", "LogData")->isHidden());
    EXPECT_EQ(g.find<QLabel>("frmMain", "Label1(0)"), nullptr);  // captions are not named

    for (int tab = 0; tab < 5; ++tab) {
        g.app().frmMain().SSTab1.setTab(tab);
        QApplication::processEvents();
        test::Screenshot(w, "main_tab" + std::to_string(tab));
    }
}

TEST(MainWindow, WidgetsFollowTheirFields) {
    GuiApp g;
    g.startPastSplash();
    FrmMain& m = g.app().frmMain();
    struct Case {
        const char* what;
        std::function<void()> change;
        std::function<bool()> shown;
    };
    auto label = [&](const char* name) { return g.find<QLabel>("frmMain", name); };
    auto table = [&](const char* name) { return g.find<QTableWidget>("frmMain", name); };
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
         [&] { return g.find<QPushButton>("frmMain", "cmdRequestTC")->isEnabled(); }},
        {"vin", [&] { m.txtVin.setText("1FTRX18W1XKA12345"); },
         [&] { return g.find<QLineEdit>("frmMain", "txtVin")->text() == "1FTRX18W1XKA12345"; }},
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
         [&] {
             return table("GridData")->isVisible() &&
                    !g.find<QWidget>("frmMain", "Frame14")->isVisible();
         }},
        {"combo",
         [&] {
             m.cmbYear.addItem("1999");
             m.cmbYear.addItem("2000");
             m.cmbYear.setText("2000");
         },
         [&] { return g.find<QComboBox>("frmMain", "cmbYear")->currentText() == "2000"; }},
        {"panel", [&] { m.panel(3).setText("COM 3"); },
         [&] { return label("Panel3")->text() == "COM 3"; }},
        {"menu check", [&] { m.mnuEditPidsOver.setChecked(true); },
         [&] {
             QAction* a = actionNamed(g.desktop->windows().windowOf("frmMain"), "PIDS Override");
             return a->isCheckable() && a->isChecked();
         }},
        {"menu enabled", [&] { m.mnuVehicleDisconnect.setEnabled(true); },
         [&] {
             return actionNamed(g.desktop->windows().windowOf("frmMain"), "Disconnect")
                 ->isEnabled();
         }},
        {"debug shown", [&] { m.LogData.setVisible(true); },
         [&] { return !g.find<QWidget>("frmMain", "LogData")->isHidden(); }},
        {"title", [&] { m.setCaption("Ketrel (OBD II Generic) Version 0.77 - ISO 9141"); },
         [&] {
             return g.desktop->windows().windowOf("frmMain")->windowTitle().endsWith("ISO 9141");
         }},
    };
    for (const Case& c : cases) {
        EXPECT_FALSE(c.shown()) << c.what << " before";
        c.change();
        EXPECT_TRUE(c.shown()) << c.what;
    }
}

TEST(MainWindow, WidgetsCallTheirControls) {
    GuiApp g;
    g.startPastSplash();
    FrmMain& m = g.app().frmMain();
    QWidget* w = g.desktop->windows().windowOf("frmMain");
    int requests = 0;
    m.cmdRequestTC.setEnabled(true);  // as a session would leave it
    m.cmdRequestTC.onClick = [&] { ++requests; };
    g.find<QPushButton>("frmMain", "cmdRequestTC")->click();
    EXPECT_EQ(requests, 1);

    g.find<QTabWidget>("frmMain", "SSTab1")->setCurrentIndex(3);
    EXPECT_EQ(m.SSTab1.tab(), 3);

    auto* year = g.find<QComboBox>("frmMain", "cmbYear");
    year->activated(4);  // "-SELECT-", then 2005 down
    EXPECT_EQ(m.cmbYear.text(), "2002");

    auto* vin = g.find<QLineEdit>("frmMain", "txtVin");
    vin->setText("VIEWTRACE");
    vin->textEdited("VIEWTRACE");
    EXPECT_EQ(m.txtVin.text(), "VIEWTRACE");

    actionNamed(w, "Status Bar")->trigger();
    EXPECT_FALSE(m.mnuOptionStatusBar.checked());
    QApplication::processEvents();
    EXPECT_FALSE(qobject_cast<QMainWindow*>(w)->statusBar()->isVisible());
    EXPECT_FALSE(actionNamed(w, "Status Bar")->isChecked());
    actionNamed(w, "Toolbar")->trigger();
    EXPECT_FALSE(w->findChild<QToolBar*>("Toolbar1")->isVisible());

    int connects = 0;
    m.tbConnect.onClick = [&] { ++connects; };
    w->findChild<QAction*>("tbConnect")->trigger();
    EXPECT_EQ(connects, 1);
}

TEST(MainWindow, ClosingTheWindowAsksTheScreenWhichMayRefuse) {
    GuiApp g;
    g.startPastSplash();
    QWidget* w = g.desktop->windows().windowOf("frmMain");
    g.app().Connected = true;
    w->close();
    QApplication::processEvents();
    EXPECT_TRUE(g.app().frmMain().loaded());
    EXPECT_TRUE(w->isVisible());
    EXPECT_TRUE(g.app().AppClosing);
    g.app().Connected = false;
    QPointer<QWidget> alive(w);
    w->close();
    EXPECT_FALSE(g.app().frmMain().loaded());
    EXPECT_TRUE(test::WaitFor([&] { return alive.isNull(); }));
    EXPECT_EQ(g.desktop->windows().windowOf("frmMain"), nullptr);
}

TEST(Splash, ShowsTopmostThenHandsOverOnItsTimer) {
    GuiApp g;
    g.desktop->start();
    QWidget* splash = g.desktop->windows().windowOf("frmSplash");
    ASSERT_NE(splash, nullptr);
    EXPECT_EQ(splash->geometry(), QRect(100, 100, 493, 295));
    EXPECT_TRUE(splash->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_FALSE(g.desktop->windows().windowOf("frmMain")->isEnabled());
    test::Screenshot(splash, "splash");
    QPointer<QWidget> alive(splash);
    EXPECT_TRUE(test::WaitFor([&] { return alive.isNull(); }, 5000));
    EXPECT_TRUE(g.desktop->windows().windowOf("frmMain")->isEnabled());
}

}  // namespace
}  // namespace ketrel
