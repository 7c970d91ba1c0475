#pragma once
#include <filesystem>
#include <string>

namespace ketrel {

class App;

// What a fuel-economy figure is worked out from: the texts of the speed, air flow and long
// term trim fields, the speed unit, and whether the vehicle has a second bank (PID 09).
struct MpgInputs {
    std::string speed, maf, ltb1, ltb2;
    bool mph = true;
    bool secondBank = true;
};

// The instantaneous figure as shown: "-" while the vehicle stands or no air flows, else the
// distance per fuel volume with one decimal (miles per US gallon, or km per litre).
std::string InstantMpg(const MpgInputs& in);

// The sample table and its empty template, under the application folder.
std::filesystem::path MpgStorePath(const std::filesystem::path& appPath);
std::filesystem::path MpgTemplatePath(const std::filesystem::path& appPath);

// Runs after each live air-flow reply: the instantaneous figure and its sample.
void MpgAfterMAF(App& app);
// Takes the average over every sample in the table into lblMPGAve.
void MpgAverage(App& app);
// "Reset Fuel Consumption": the sample table made anew from its template.
void ResetMpg(App& app);

// Sets the handlers of frmMPG, the air-flow hook and the reset entry of the main screen.
void InstallFuelEconomy(App& app);

}  // namespace ketrel
