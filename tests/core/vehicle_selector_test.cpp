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

// Every model year 1994 to 2005 has its makes in alphabetical order, with "MURCURY" standing
// where "MERCURY" would; a year's own additions and drops show; anything else offers nothing.
TEST(VehicleSelector, MakesOfEveryYear) {
    for (int year = 1994; year <= 2005; ++year) {
        std::vector<std::string> makes = MakesForYear(std::to_string(year));
        EXPECT_GE(makes.size(), 37u) << year;
        std::replace(makes.begin(), makes.end(), std::string("MURCURY"), std::string("MERCURY"));
        EXPECT_TRUE(std::is_sorted(makes.begin(), makes.end())) << year;
    }
    struct Row {
        const char* year;
        std::vector<std::string> without, with;
    } rows[] = {{"2005", {"DAEWOO", "PLYMOUTH"}, {"HUMMER", "MINI"}},
                {"2002", {"HUMMER"}, {"DAEWOO", "MINI"}},
                {"1997", {"HUMMER", "MINI"}, {"EAGLE", "GENERAL MOTORS", "GEO", "PLYMOUTH"}},
                {"1994", {"HUMMER", "MERCURY", "MINI"}, {"ALFA ROMEO", "MURCURY"}}};
    for (const Row& r : rows) {
        const std::vector<std::string> makes = MakesForYear(r.year);
        for (const std::string& m : r.without)
            EXPECT_FALSE(has(makes, m)) << r.year << " " << m;
        for (const std::string& m : r.with)
            EXPECT_TRUE(has(makes, m)) << r.year << " " << m;
    }
    for (const char* other : {"-SELECT-", "", "1993", "2006", "ACURA", "#"})
        EXPECT_TRUE(MakesForYear(other).empty()) << other;
}

// Every make any year offers has its models but a few; spelled and out-of-order entries stay
// as they are, and a make is looked up exactly.
TEST(VehicleSelector, ModelsOfEveryMake) {
    const std::set<std::string> without = {"ALFA ROMEO", "DAEWOO", "GENERAL MOTORS",
                                           "HUMMER",     "MINI",   "MURCURY"};
    for (int year = 1994; year <= 2005; ++year)
        for (const std::string& make : MakesForYear(std::to_string(year)))
            EXPECT_EQ(ModelsForMake(make).empty(), without.count(make) > 0) << make;
    const std::vector<std::string> hyundai = ModelsForMake("HYUNDAI");
    EXPECT_EQ(hyundai[6] + "," + hyundai[7], "MATRIX,GETZ");
    EXPECT_EQ(ModelsForMake("CHRYSLER").back(), "TOWN & COUNTRY");
    EXPECT_TRUE(has(ModelsForMake("TOYOTA"), "PRUIS"));
    for (const char* unknown : {"ford", ""})
        EXPECT_TRUE(ModelsForMake(unknown).empty()) << unknown;
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
