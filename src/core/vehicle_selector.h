#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace ketrel {

class App;
class ComboBox;

// The shown text of a vehicle list before anything is chosen.
inline constexpr const char* kSelect = "-SELECT-";

// The makes offered for a model year given as text ("1999"); empty for any other text.
std::vector<std::string> MakesForYear(std::string_view year);
// The models offered for a make, exactly as spelled in the list; empty for a make without models.
std::vector<std::string> ModelsForMake(std::string_view make);

// Fills cmbYear, cmbEngine, cmbTransmission and cmbAC and shows "-SELECT-" in each.
void FillFixedLists(App& app);
// Refills cmbMake with the makes of the year's group (nothing for an unknown year).
void FillMakes(App& app, const std::string& year);
// Refills cmbModel from the make in cmbMake; the year in cmbYear is read but does not count.
void FillModels(App& app);

// A year, make or model picked from its list: refills the lists below it and sets the title.
void VehicleYearChosen(App& app);
void VehicleMakeChosen(App& app);
void VehicleModelChosen(App& app);
// The user leaves cmbYear, cmbMake or cmbModel (or txtVin) after typing: upper case, "-SELECT-"
// emptied, the title rebuilt. Typed text never refills a list.
void LeaveVehicleField(App& app);
// Sets a combo's text as typing does: the text only, no list is refilled.
void TypeVehicleText(ComboBox& combo, const std::string& text);

// Fills the fixed lists and installs the handlers of the vehicle frame.
void InstallVehicleSelector(App& app);

}  // namespace ketrel
