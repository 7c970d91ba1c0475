#pragma once
#include <vector>

namespace ketrel {

class App;
class Field;

// The live values of the main screen's data tab, in the order the clearing routine writes them.
std::vector<Field*> MainDataFields(App& app);

// The sixteen freeze-frame values of the main screen, in the order a clear reply wipes them.
std::vector<Field*> FreezeFrameFields(App& app);

}  // namespace ketrel
