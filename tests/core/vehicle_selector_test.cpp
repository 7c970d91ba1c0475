#include "core/vehicle_selector.h"

#include <gtest/gtest.h>
#include <algorithm>

#include "core_fixture.h"

namespace ketrel {
namespace {

using test::StartedApp;

bool has(const std::vector<std::string>& v, const std::string& s) {
    return std::find(v.begin(), v.end(), s) != v.end();
}

// Every year of the list: its count, the makes it adds to or drops from the 2003-2005 list,
// alphabetical order, and "MURCURY" standing where "MERCURY" would.
TEST(VehicleSelector, MakesOfEveryYear) {
    struct Row {
        int year;
        std::size_t count;
        std::vector<std::string> without, with;
    };
    const std::vector<std::string> pre2003 = {"HUMMER", "MINI"};
    const Row rows[] = {
        {2005, 37, {}, {"HUMMER", "MINI", "MERCURY", "LAND ROVER", "MERCEDES-BENZ"}},
        {2004, 37, {}, {"HUMMER", "MINI"}},
        {2003, 37, {}, {"HUMMER", "MINI"}},
        {2002, 37, {"HUMMER"}, {"DAEWOO", "MINI"}},
        {2001, 37, pre2003, {"DAEWOO", "PLYMOUTH"}},
        {2000, 37, pre2003, {"DAEWOO", "PLYMOUTH"}},
        {1999, 38, pre2003, {"DAEWOO", "GENERAL MOTORS", "PLYMOUTH"}},
        {1998, 37, pre2003, {"EAGLE", "PLYMOUTH"}},
        {1997, 39, pre2003, {"EAGLE", "GENERAL MOTORS", "GEO", "PLYMOUTH"}},
        {1996, 38, pre2003, {"EAGLE", "GEO", "PLYMOUTH"}},
        {1995, 39, {"HUMMER", "MERCURY", "MINI"}, {"ALFA ROMEO", "EAGLE", "GEO", "MURCURY"}},
        {1994, 39, {"HUMMER", "MERCURY", "MINI"}, {"ALFA ROMEO", "EAGLE", "GEO", "MURCURY"}},
    };
    for (const Row& r : rows) {
        const std::vector<std::string> makes = MakesForYear(std::to_string(r.year));
        EXPECT_EQ(makes.size(), r.count) << r.year;
        for (const std::string& m : r.without)
            EXPECT_FALSE(has(makes, m)) << r.year << " " << m;
        for (const std::string& m : r.with)
            EXPECT_TRUE(has(makes, m)) << r.year << " " << m;
        std::vector<std::string> keyed = makes;
        for (std::string& m : keyed)
            if (m == "MURCURY") m = "MERCURY";
        EXPECT_TRUE(std::is_sorted(keyed.begin(), keyed.end())) << r.year;
        EXPECT_EQ(makes.front(), "ACURA") << r.year;
        EXPECT_EQ(makes.back(), "VOLVO") << r.year;
    }
    for (const char* other : {"-SELECT-", "", "1993", "2006", "ACURA", "#"})
        EXPECT_TRUE(MakesForYear(other).empty()) << other;
}

// Each make's list: count, first and last entries; the rows that are out of order stay so.
TEST(VehicleSelector, ModelsOfEveryMake) {
    struct Row {
        const char* make;
        std::size_t count;
        const char *first, *last;
    };
    const Row rows[] = {
        {"ACURA", 13, "2.5TL", "VIGOR LS"},
        {"AUDI", 10, "164 LS", "S6"},
        {"BMW", 17, "318I", "M3"},
        {"BUICK", 21, "CENTURY CUSTOM", "TERRAZA"},
        {"CADILLAC", 14, "CTS", "XLR"},
        {"CHEVROLET", 47, "ASTRO", "VENTURE"},
        {"CHRYSLER", 13, "300", "TOWN & COUNTRY"},
        {"DODGE", 34, "AVENGER", "VIPER RT/10"},
        {"EAGLE", 10, "SUMMIT DL", "VISION TSI"},
        {"FORD", 41, "AEROSTAR", "WINDSTAR LX"},
        {"GEO", 6, "METRO", "TRACKER LSI"},
        {"GMC", 28, "CAB & CHASSIS C2500", "YUKON"},
        {"HONDA", 25, "ACCORD DX", "S2000"},
        {"HYUNDAI", 14, "ACCENT", "SONATA GLS"},
        {"INFINITI", 9, "FX", "QX56"},
        {"ISUZU", 9, "ASCENDER", "TROOPER S"},
        {"JAGUAR", 5, "XJ12", "XJS"},
        {"JEEP", 10, "CHEROKEE COUNTRY", "WRANGLER SE"},
        {"KIA", 12, "AMANTI", "SPORTAGE EX"},
        {"LAND ROVER", 6, "DEFENDER 90", "RANGE ROVER SE"},
        {"LEXUS", 12, "ES 300", "SC 430"},
        {"LINCOLN", 7, "AVIATOR", "TOWN CAR SIGNATURE"},
        {"MAZDA", 24, "626 DX", "RX-7"},
        {"MERCEDES-BENZ", 14, "C220", "SL600"},
        {"MERCURY", 12, "COUGAR XR7", "VILLAGER NAUTICA"},
        {"MITSUBISHI", 22, "3000GT", "PICKUP MIGHTY MAX"},
        {"NISSAN", 27, "200SX", "SENTRA XE"},
        {"OLDSMOBILE", 18, "ACHIEVA S", "SILHOUETTE"},
        {"PLYMOUTH", 9, "ACCLAIM", "VOYAGER SE"},
        {"PONTIAC", 20, "AZTEK", "VIBE"},
        {"PORSCHE", 4, "911 CARRERA", "968"},
        {"SAAB", 8, "900 S", "9-5"},
        {"SATURN", 11, "ION", "VUE"},
        {"SUBARU", 18, "AERIO", "VERONA"},
        {"SUZUKI", 7, "ESTEEM GL", "SWIFT"},
        {"TOYOTA", 37, "4RUNNER SR5", "TUNDRA"},
        {"VOLKSWAGEN", 13, "CABRIO", "TOUAREG"},
        {"VOLVO", 7, "850", "960"},
    };
    for (const Row& r : rows) {
        const std::vector<std::string> models = ModelsForMake(r.make);
        ASSERT_EQ(models.size(), r.count) << r.make;
        EXPECT_EQ(models.front(), r.first) << r.make;
        EXPECT_EQ(models.back(), r.last) << r.make;
    }
    const std::vector<std::string> hyundai = ModelsForMake("HYUNDAI");
    EXPECT_EQ(hyundai[6], "MATRIX");
    EXPECT_EQ(hyundai[7], "GETZ");
    EXPECT_TRUE(has(ModelsForMake("TOYOTA"), "PRUIS"));
    EXPECT_TRUE(has(ModelsForMake("CADILLAC"), "DEVILLE CONCOURS"));
    for (const char* none :
         {"ALFA ROMEO", "DAEWOO", "GENERAL MOTORS", "HUMMER", "MINI", "MURCURY", "ford", ""})
        EXPECT_TRUE(ModelsForMake(none).empty()) << none;
}

// Picking down the frame: lists refill, "-SELECT-" shows and the title follows the choice.
TEST(VehicleSelector, ChoosingFillsTheListsBelowAndTheTitle) {
    StartedApp t;
    FrmMain& m = t->frmMain();
    const std::string base = "Ketrel (OBD II Generic) Version 0.77 - ";
    EXPECT_EQ(m.cmbYear.count(), 13);
    EXPECT_EQ(m.cmbYear.text(), "-SELECT-");
    EXPECT_EQ(m.cmbEngine.items().at(3), " 8 Cyl");
    EXPECT_EQ(m.cmbTransmission.text(), "-SELECT-");

    m.cmbYear.setListIndex(10);  // 1996
    EXPECT_EQ(m.cmbMake.count(), 38);
    EXPECT_EQ(m.cmbMake.text(), "-SELECT-");
    EXPECT_EQ(m.caption(), base + "1996");
    m.cmbMake.setText("MERCURY");
    EXPECT_EQ(m.cmbModel.count(), 12);
    EXPECT_EQ(m.cmbModel.text(), "-SELECT-");
    EXPECT_EQ(m.caption(), base + "1996 MERCURY");
    m.cmbModel.setText("SABLE LS");
    EXPECT_EQ(m.caption(), base + "1996 MERCURY - SABLE LS");

    m.cmbYear.setText("1995");
    EXPECT_EQ(m.cmbModel.count(), 0);
    m.cmbMake.setText("MURCURY");
    EXPECT_EQ(m.cmbModel.count(), 0);

    // "-SELECT-" from the list: nothing to offer, the title stays.
    m.cmbYear.setText("-SELECT-");
    EXPECT_EQ(m.cmbMake.count(), 0);
    EXPECT_EQ(m.cmbMake.text(), "-SELECT-");
    EXPECT_EQ(m.caption(), base + "1995 MURCURY");
}

// Typed text: upper case and "-SELECT-" emptied on leaving, but no list is filled from it.
TEST(VehicleSelector, LeavingAfterTyping) {
    StartedApp t;
    FrmMain& m = t->frmMain();
    m.cmbYear.setText("2001");
    TypeVehicleText(m.cmbMake, "ford");
    m.txtVin.setText("1ftrx18w1xka12345");
    LeaveVehicleField(*t);
    EXPECT_EQ(m.cmbMake.text(), "FORD");
    EXPECT_EQ(m.cmbModel.count(), 0);
    EXPECT_EQ(m.txtVin.text(), "1FTRX18W1XKA12345");
    // The model showed nothing (not "-SELECT-"), so the title is rebuilt from the three.
    EXPECT_EQ(m.caption(), "Ketrel (OBD II Generic) Version 0.77 - 2001 FORD - ");

    m.cmbMake.setText("DODGE");
    TypeVehicleText(m.cmbYear, "-SELECT-");
    LeaveVehicleField(*t);
    EXPECT_EQ(m.cmbYear.text(), "");
    EXPECT_EQ(m.cmbModel.text(), "");
    EXPECT_EQ(m.cmbModel.count(), 34);
}

TEST(VehicleSelector, ClearAndRequestVin) {
    StartedApp t;
    FrmMain& m = t->frmMain();
    m.cmbYear.setText("2004");
    m.cmbMake.setText("KIA");
    m.cmbModel.setText("RIO");
    m.cmbEngine.setText(" 4 Cyl");
    m.cmdClearVehicle.click();
    EXPECT_EQ(m.cmbYear.text(), "-SELECT-");
    EXPECT_EQ(m.cmbMake.count() + m.cmbModel.count(), 0);
    EXPECT_EQ(m.cmbEngine.text(), "-SELECT-");
    EXPECT_EQ(m.cmbEngine.count(), 0);  // emptied before "-SELECT-" is shown
    EXPECT_EQ(m.caption(), "Ketrel (OBD II Generic) Version 0.77 - ");

    t->VinText = "1GCEK";
    m.cmdRequestInfo.setEnabled(true);
    m.cmdRequestInfo.click();
    EXPECT_TRUE(t->RequestInfo);
    EXPECT_EQ(t->VinText, "");
}

}  // namespace
}  // namespace ketrel
