#include <gtest/gtest.h>
#include <QComboBox>
#include <QLineEdit>
#include <QTabWidget>

#include <cstdlib>

#include "core/ff_report.h"
#include "qt/page_printer.h"
#include "qt_fixture.h"
#include "screens/frm_print_ff.h"

namespace ketrel {
namespace {

using test::GuiApp;
using test::Screenshot;

// The vehicle frame in the window: a choice from the list refills the list below; typing in
// the make is upper-cased when left but fills no models.
TEST(VehicleFrame, ChoosingAndTypingInTheWindow) {
    GuiApp g;
    g.startPastSplash();
    FrmMain& m = g.app().frmMain();
    g.find<QTabWidget>("frmMain", "SSTab1")->setCurrentIndex(3);
    auto* year = g.find<QComboBox>("frmMain", "cmbYear");
    auto* make = g.find<QComboBox>("frmMain", "cmbMake");
    auto* model = g.find<QComboBox>("frmMain", "cmbModel");
    ASSERT_TRUE(year && make && model);
    EXPECT_EQ(year->count(), 13);
    emit year->activated(7);  // 1999
    QApplication::processEvents();
    EXPECT_EQ(make->count(), 38);
    EXPECT_EQ(make->currentText(), "-SELECT-");
    emit make->activated(make->findText("TOYOTA"));
    QApplication::processEvents();
    EXPECT_EQ(model->count(), 37);
    emit model->activated(model->findText("PRUIS"));
    QApplication::processEvents();
    EXPECT_EQ(g.desktop->windows().windowOf("frmMain")->windowTitle(),
              "Ketrel (OBD II Generic) Version 0.77 - 1999 TOYOTA - PRUIS");
    m.txtPlate.setText("KTR 077");
    m.txtMileage.setText("84120");
    QApplication::processEvents();
    Screenshot(g.desktop->windows().windowOf("frmMain"), "vehicle_frame");

    make->lineEdit()->setText("mercury");
    emit make->lineEdit()->editingFinished();
    QApplication::processEvents();
    EXPECT_EQ(m.cmbMake.text(), "MERCURY");
    EXPECT_EQ(make->currentText(), "MERCURY");
    EXPECT_EQ(m.cmbModel.count(), 37);  // still Toyota's: typing fills nothing
}

// The page as PDF, rendered to a picture for a look: a chosen vehicle, freeze-frame values and
// a stored, a pending and an unknown maker's code.
TEST(VehicleFrame, ReportPageAsPdfAndPicture) {
    GuiApp g;
    App& app = g.app();
    FrmMain& m = app.frmMain();
    m.cmbYear.setText("2004");
    m.cmbMake.setText("HONDA");
    m.cmbModel.setText("CIVIC EX");
    m.cmbEngine.setText(" 4 Cyl");
    m.cmbTransmission.setText("MANUAL");
    m.txtVin.setText("1HGEM22914L012345");
    m.lblFFLoad.setText("31.4");
    m.lblFFRPM.setText("2110");
    m.lblFFCoolant.setText("196");
    m.lstCodes.addItem("P0420");
    m.lstCodes.addItem("P1457");
    m.lstPendingCodes.addItem("P0301");
    FrmPrintFF page(app.loop());
    FillPrintFF(app, page);
    const std::string pdf = (g.dir.path() / "report.pdf").string();
    ASSERT_TRUE(WritePagePdf(FreezeFrameReportPage(page), QString::fromStdString(pdf)));
    EXPECT_GT(std::filesystem::file_size(pdf), 1000u);
    if (std::system("command -v pdftoppm >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "pdftoppm (poppler-utils) is not installed";
    const QString shots = QCoreApplication::applicationDirPath() + "/../screenshots";
    QDir(shots).mkpath(".");
    const std::string cmd = "pdftoppm -png -r 80 -singlefile '" + pdf + "' '" +
                            (shots + "/report_page").toStdString() + "'";
    EXPECT_EQ(std::system(cmd.c_str()), 0);
}

}  // namespace
}  // namespace ketrel
