#include "sweeps/mode6_definitions.h"

#include <cstdio>
#include <cstdlib>

#include "data/mode6_definitions.h"
#include "screens/frm_mode6.h"
#include "state/app.h"

namespace ketrel {
namespace {

using data::Mode6DefinitionRow;
using data::Mode6Form;
using data::Mode6Pick;

constexpr double kLowFactor = 0.00195, kHighFactor = 0.0078;

double Number(const std::string& text) {
    return text.empty() ? 0.0 : std::strtod(text.c_str(), nullptr);
}

const Mode6DefinitionRow* Find(const std::string& testId, int group, const std::string& component) {
    for (const Mode6DefinitionRow& d : data::kMode6Definitions) {
        if (testId != d.testId) continue;
        switch (d.pick) {
            case Mode6Pick::Any:
                return &d;
            case Mode6Pick::Group:
                if (group >= d.from && group <= d.to) return &d;
                break;
            case Mode6Pick::Component:
                if (component == d.component) return &d;
                break;
        }
    }
    return nullptr;
}

double ResultInUnits(const Mode6DefinitionRow& d, double v) {
    switch (d.form) {
        case Mode6Form::Plain:
            return v * d.resultFactor;
        case Mode6Form::Offset:
            return (v - 32768) * d.resultFactor;
        case Mode6Form::Signed65535:
        case Mode6Form::VaporRise:
            return v > 32767 ? (v - 65535) * d.resultFactor : v * d.resultFactor;
        case Mode6Form::Signed65536:
            return v > 32767 ? (v - 65536) * kHighFactor : v * kLowFactor;
    }
    return 0;
}

// The limit's branches are chosen on its text, which sorts "4000" after "32767".
double LimitInUnits(const Mode6DefinitionRow& d, const std::string& text) {
    const double l = Number(text);
    const bool high = text > std::string("32767");
    switch (d.form) {
        case Mode6Form::Plain:
            return l * d.limitFactor;
        case Mode6Form::Offset:
            return (l - 32768) * d.limitFactor;
        case Mode6Form::Signed65535:
            return high ? (l - 65535) * d.limitFactor : l * d.limitFactor;
        case Mode6Form::Signed65536:
            return high ? (l - 65536) * kHighFactor : l * kLowFactor;
        case Mode6Form::VaporRise:
            return high ? (32767 - l) * kLowFactor : l - 65535;
    }
    return 0;
}

// The number in the row's format with the unit after it, or as it stands without a format.
std::string Shown(const Mode6DefinitionRow& d, double value) {
    char text[64];
    if (*d.format == '\0') {
        std::snprintf(text, sizeof text, "%.15g", value);
        return text;
    }
    const int decimals = int(std::string(d.format).size()) - 2;
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text + std::string(d.unit);
}

}  // namespace

Mode6Described DescribeMode6Row(const std::string& testId, int group, const std::string& component,
                                const std::string& result, const std::string& limit) {
    const Mode6DefinitionRow* d = Find(testId, group, component);
    if (!d) return {data::kMode6NoDefinition, data::kMode6NoUnits, data::kMode6NoUnits};
    return {d->description, Shown(*d, ResultInUnits(*d, Number(result))),
            Shown(*d, LimitInUnits(*d, limit))};
}

void Mode6ApplyDefinitions(App& app) {
    auto* screen = dynamic_cast<FrmMode6*>(app.screenByName("frmMode6"));
    if (!screen) return;
    Grid& g = screen->MSFlexGrid1;
    int Mode6GroupIndex = 0;  // the row's place among consecutive rows of its test id
    for (int r = 1; r < g.rows(); ++r) {
        const std::string& id = g.text(r, 0);
        const std::string& component = g.text(r, 1);
        const std::string& result = g.text(r, 3);
        const std::string& limit = g.text(r, 4);
        if (id.empty() && component.empty() && result.empty() && limit.empty()) return;
        Mode6GroupIndex = id == g.text(r - 1, 0) ? Mode6GroupIndex + 1 : 1;
        const Mode6Described d = DescribeMode6Row(id, Mode6GroupIndex, component, result, limit);
        g.setText(r, 2, d.description);
        g.setText(r, 5, d.resultUnits);
        g.setText(r, 6, d.limitUnits);
    }
}

}  // namespace ketrel
