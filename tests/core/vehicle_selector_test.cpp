#include "core/vehicle_selector.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <set>

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

// The models of every make any year offers, with a few last entries; spelled and out-of-order
// entries stay as they are.
TEST(VehicleSelector, ModelsOfEveryMake) {
    std::set<std::string> makes;
    for (int year = 1994; year <= 2005; ++year)
        for (const std::string& make : MakesForYear(std::to_string(year)))
            makes.insert(make);
    std::size_t withModels = 0, models = 0;
    for (const std::string& make : makes) {
        withModels += !ModelsForMake(make).empty();
        models += ModelsForMake(make).size();
    }
    EXPECT_EQ(withModels, 38u);
    EXPECT_EQ(models, 614u);
    for (auto [make, last] : {std::pair{"CHEVROLET", "VENTURE"},
                              {"CHRYSLER", "TOWN & COUNTRY"},
                              {"DODGE", "VIPER RT/10"},
                              {"LAND ROVER", "RANGE ROVER SE"},
                              {"PORSCHE", "968"},
                              {"VOLVO", "960"}})
        EXPECT_EQ(ModelsForMake(make).back(), last) << make;
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
