#include "core/vehicle_selector.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <sstream>

#include "core_fixture.h"

namespace ketrel {
namespace {

using test::StartedApp;

bool has(const std::vector<std::string>& v, const std::string& s) {
    return std::find(v.begin(), v.end(), s) != v.end();
}

// Every year: its count, what it adds to or drops from the 2003-2005 list, alphabetical order
// with "MURCURY" standing where "MERCURY" would.
TEST(VehicleSelector, MakesOfEveryYear) {
    struct Row {
        int year;
        std::size_t count;
        std::vector<std::string> without, with;
    };
    const std::vector<std::string> none = {"HUMMER", "MINI"}, early = {"HUMMER", "MERCURY", "MINI"};
    const Row rows[] = {{2005, 37, {}, none},
                        {2004, 37, {}, none},
                        {2003, 37, {}, none},
                        {2002, 37, {"HUMMER"}, {"DAEWOO", "MINI"}},
                        {2001, 37, none, {"DAEWOO", "PLYMOUTH"}},
                        {2000, 37, none, {"DAEWOO", "PLYMOUTH"}},
                        {1999, 38, none, {"DAEWOO", "GENERAL MOTORS", "PLYMOUTH"}},
                        {1998, 37, none, {"EAGLE", "PLYMOUTH"}},
                        {1997, 39, none, {"EAGLE", "GENERAL MOTORS", "GEO", "PLYMOUTH"}},
                        {1996, 38, none, {"EAGLE", "GEO", "PLYMOUTH"}},
                        {1995, 39, early, {"ALFA ROMEO", "EAGLE", "GEO", "MURCURY"}},
                        {1994, 39, early, {"ALFA ROMEO", "EAGLE", "GEO", "MURCURY"}}};
    for (const Row& r : rows) {
        std::vector<std::string> makes = MakesForYear(std::to_string(r.year));
        EXPECT_EQ(makes.size(), r.count) << r.year;
        for (const std::string& m : r.without)
            EXPECT_FALSE(has(makes, m)) << r.year << " " << m;
        for (const std::string& m : r.with)
            EXPECT_TRUE(has(makes, m)) << r.year << " " << m;
        std::replace(makes.begin(), makes.end(), std::string("MURCURY"), std::string("MERCURY"));
        EXPECT_TRUE(std::is_sorted(makes.begin(), makes.end())) << r.year;
    }
    for (const char* other : {"-SELECT-", "", "1993", "2006", "ACURA", "#"})
        EXPECT_TRUE(MakesForYear(other).empty()) << other;
}

// Each make's count and last model; spelled and out-of-order entries stay as they are.
TEST(VehicleSelector, ModelsOfEveryMake) {
    std::istringstream rows(
        "ACURA 13 VIGOR LS;AUDI 10 S6;BMW 17 M3;BUICK 21 TERRAZA;CADILLAC 14 XLR;"
        "CHEVROLET 47 VENTURE;CHRYSLER 13 TOWN & COUNTRY;DODGE 34 VIPER RT/10;EAGLE 10 VISION TSI;"
        "FORD 41 WINDSTAR LX;GEO 6 TRACKER LSI;GMC 28 YUKON;HONDA 25 S2000;HYUNDAI 14 SONATA GLS;"
        "INFINITI 9 QX56;ISUZU 9 TROOPER S;JAGUAR 5 XJS;JEEP 10 WRANGLER SE;KIA 12 SPORTAGE EX;"
        "LAND_ROVER 6 RANGE ROVER SE;LEXUS 12 SC 430;LINCOLN 7 TOWN CAR SIGNATURE;MAZDA 24 RX-7;"
        "MERCEDES-BENZ 14 SL600;MERCURY 12 VILLAGER NAUTICA;MITSUBISHI 22 PICKUP MIGHTY MAX;"
        "NISSAN 27 SENTRA XE;OLDSMOBILE 18 SILHOUETTE;PLYMOUTH 9 VOYAGER SE;PONTIAC 20 VIBE;"
        "PORSCHE 4 968;SAAB 8 9-5;SATURN 11 VUE;SUBARU 18 VERONA;SUZUKI 7 SWIFT;TOYOTA 37 TUNDRA;"
        "VOLKSWAGEN 13 TOUAREG;VOLVO 7 960");
    for (std::string row; std::getline(rows, row, ';');) {
        std::istringstream in(row);
        std::string make, last;
        std::size_t count = 0;
        in >> make >> count >> std::ws;
        std::getline(in, last);
        std::replace(make.begin(), make.end(), '_', ' ');
        const std::vector<std::string> models = ModelsForMake(make);
        ASSERT_EQ(models.size(), count) << make;
        EXPECT_EQ(models.back(), last) << make;
    }
    const std::vector<std::string> hyundai = ModelsForMake("HYUNDAI");
    EXPECT_EQ(hyundai[6] + "," + hyundai[7], "MATRIX,GETZ");
    EXPECT_EQ(ModelsForMake("SUBARU")[16] + "," + ModelsForMake("SUBARU")[17], "XL-7,VERONA");
    EXPECT_TRUE(has(ModelsForMake("TOYOTA"), "PRUIS"));
    for (const char* empty :
         {"ALFA ROMEO", "DAEWOO", "GENERAL MOTORS", "HUMMER", "MINI", "MURCURY", "ford", ""})
        EXPECT_TRUE(ModelsForMake(empty).empty()) << empty;
}

// Picking down the frame: lists refill, "-SELECT-" shows and the title follows the choice.
TEST(VehicleSelector, ChoosingFillsTheListsBelowAndTheTitle) {
    StartedApp t;
    FrmMain& m = t->frmMain();
    const std::string base = "Ketrel (OBD II Generic) Version 0.77 - ";
    EXPECT_EQ(m.cmbYear.count(), 13);
    EXPECT_EQ(m.cmbEngine.items().at(3), " 8 Cyl");
    m.cmbYear.setListIndex(10);  // 1996
    EXPECT_EQ(m.cmbMake.count(), 38);
    EXPECT_EQ(m.cmbMake.text(), "-SELECT-");
    EXPECT_EQ(m.caption(), base + "1996");
    m.cmbMake.setText("MERCURY");
    EXPECT_EQ(m.cmbModel.count(), 12);
    EXPECT_EQ(m.cmbModel.text(), "-SELECT-");
    m.cmbModel.setText("SABLE LS");
    EXPECT_EQ(m.caption(), base + "1996 MERCURY - SABLE LS");
    m.cmbYear.setText("1995");
    m.cmbMake.setText("MURCURY");
    EXPECT_EQ(m.cmbModel.count(), 0);
    // "-SELECT-" from the list: nothing to offer, the title stays.
    m.cmbYear.setText("-SELECT-");
    EXPECT_EQ(m.cmbMake.count(), 0);
    EXPECT_EQ(m.caption(), base + "1995 MURCURY");
}

// Typed text is upper-cased and "-SELECT-" emptied on leaving, but no list fills from it; then
// CLEAR empties the frame and REQUEST VIN empties the VIN store.
TEST(VehicleSelector, TypingClearingAndRequestingTheVin) {
    StartedApp t;
    FrmMain& m = t->frmMain();
    m.cmbYear.setText("2001");
    TypeVehicleText(m.cmbMake, "ford");
    m.txtVin.setText("1ftrx18w1xka12345");
    m.cmbMake.onLeave();
    EXPECT_EQ(m.cmbMake.text() + " " + m.txtVin.text(), "FORD 1FTRX18W1XKA12345");
    EXPECT_EQ(m.cmbModel.count(), 0);
    EXPECT_EQ(m.caption(), "Ketrel (OBD II Generic) Version 0.77 - 2001 FORD - ");
    m.cmbMake.setText("DODGE");
    TypeVehicleText(m.cmbYear, "-SELECT-");
    m.cmbYear.onLeave();
    EXPECT_EQ(m.cmbYear.text() + "|" + m.cmbModel.text(), "|");
    EXPECT_EQ(m.cmbModel.count(), 34);

    m.cmbEngine.setText(" 4 Cyl");
    m.cmdClearVehicle.click();
    EXPECT_EQ(m.cmbYear.text(), "-SELECT-");
    EXPECT_EQ(m.cmbMake.count() + m.cmbModel.count() + m.cmbEngine.count(), 0);
    EXPECT_EQ(m.cmbEngine.text(), "-SELECT-");
    t->VinText = "1GCEK";
    m.cmdRequestInfo.setEnabled(true);
    m.cmdRequestInfo.click();
    EXPECT_TRUE(t->RequestInfo);
    EXPECT_EQ(t->VinText, "");
}

}  // namespace
}  // namespace ketrel
