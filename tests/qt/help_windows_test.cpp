#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTableWidget>
#include <QTextBrowser>
#include <QToolBar>

#include "core/help_about.h"
#include "qt/icons.h"
#include "qt_fixture.h"
#include "screens/frm_help.h"

namespace ketrel {
namespace {

// True when the picture has drawn (not transparent) pixels.
bool drawn(const QIcon& icon, int size, qreal ratio) {
    QImage img = icon.pixmap(QSize(size, size), ratio).toImage();
    if (img.isNull() || img.width() < int(size * ratio)) return false;
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x)
            if (qAlpha(img.pixel(x, y)) > 0) return true;
    return false;
}

TEST(HelpWindows, HelpPagesFollowLinksAndTheListThenAboutScreens) {
    test::GuiApp g;
    std::filesystem::copy(KETREL_HELP_DIR, g.dir.path() / "Help",
                          std::filesystem::copy_options::recursive |
                              std::filesystem::copy_options::overwrite_existing);
    g.startPastSplash();
    App& app = g.app();
    app.frmMain().mnuHelpHelp.click();
    QApplication::processEvents();
    FrmHelp& help = *HelpScreen(app);
    auto* page = g.find<QTextBrowser>("frmHelp", "txtPage");
    auto* list = g.find<QListWidget>("frmHelp", "lstTopics");
    ASSERT_TRUE(page && list);
    EXPECT_EQ(list->count(), help.lstTopics.count());
    EXPECT_TRUE(page->toPlainText().startsWith("Contents"));
    emit page->anchorClicked(QUrl("02_main_screen.html"));
    QApplication::processEvents();
    EXPECT_EQ(list->currentRow(), help.CurrentTopic);
    EXPECT_TRUE(page->toPlainText().startsWith("The main screen"));
    list->setCurrentRow(2);
    QApplication::processEvents();
    EXPECT_EQ(help.CurrentTopic, 2);
    EXPECT_TRUE(page->toPlainText().startsWith("Connecting to a car"));
    test::Screenshot(g.desktop->windows().windowOf("frmHelp"), "help");

    app.frmMain().mnuHelpAbout.click();
    QApplication::processEvents();
    EXPECT_EQ(g.find<QLabel>("frmAbout", "lblVersion")->text().toStdString(),
              AboutScreen(app)->lblVersion.text());
    test::Screenshot(g.desktop->windows().windowOf("frmAbout"), "about");

    app.OBDIIHardware = kDorvane;
    app.ConverterVersion = "1.4C";
    app.frmMain().mnuAboutHardware.setEnabled(true);
    app.frmMain().mnuAboutHardware.click();
    QApplication::processEvents();
    auto* table = g.find<QTableWidget>("frmAboutHardware", "gridHardware");
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->item(2, 4)->text().toStdString(),
              AboutHardwareScreen(app)->gridHardware.text(2, 4));
    test::Screenshot(g.desktop->windows().windowOf("frmAboutHardware"), "about_hardware");
}

TEST(HelpWindows, ToolbarAndMenusCarrySharpPictures) {
    test::GuiApp g;
    g.startPastSplash();
    auto* w = static_cast<QMainWindow*>(g.desktop->windows().windowOf("frmMain"));
    for (QAction* a : w->findChild<QToolBar*>("Toolbar1")->actions()) {
        if (a->isSeparator()) continue;
        // Drawn from the vector source at twice the pixels on a high-density screen.
        EXPECT_TRUE(drawn(a->icon(), 24, 2.0)) << a->objectName().toStdString();
    }
    for (const char* entry : {"mnuFileOpen", "mnuHelpHelp", "mnuAboutHardware", "mnuEditRecord"})
        EXPECT_TRUE(drawn(IconFor(entry), 16, 1.0)) << entry;
    EXPECT_TRUE(drawn(AppIcon(), 64, 1.0));
    test::Screenshot(w, "main_with_icons");
    for (QAction* top : w->menuBar()->actions()) {
        if (top->text() != "&Help") continue;
        top->menu()->adjustSize();
        test::Screenshot(top->menu(), "help_menu");
    }
}

}  // namespace
}  // namespace ketrel
