#include <gtest/gtest.h>
#include <QComboBox>
#include <QLineEdit>
#include <QTabWidget>

#include "qt_fixture.h"

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

}  // namespace
}  // namespace ketrel
