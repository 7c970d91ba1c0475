#include <array>

#include "obd/decoder_support.h"
#include "obd/value_decoders.h"

namespace ketrel {
namespace {

using namespace decode;
using Text = std::optional<std::string>;

FrmNewPids& X(App& app) {
    return app.frmNewPids();
}

Text Percent0(const App&, double a) {
    return fix0(a * kPercent);
}

void DistanceMilOn(App& app) {
    OneField(app, X(app).lblDisMilOn, 2,
             [](const App& a, double v) { return DistanceText(a, v, false); });
}

// PID 22 scales by 0.076 kPa per count.
void RelativeFuelRailPressure(App& app) {
    OneField(app, X(app).lblRelFuelPres, 2, [](const App& a, double v) -> Text {
        if (a.Pressure == "kPa") return fix0(v * 0.076);
        if (a.Pressure == "PSI") return fix0(v * 0.076 * kKpaToPsi);
        return std::nullopt;
    });
}

void FuelRailPressure(App& app) {
    OneField(app, X(app).lblRailPres, 2, [](const App& a, double v) -> Text {
        if (a.Pressure == "kPa") return fix0(v * 10);
        if (a.Pressure == "PSI") return fix0(v * 10 * kKpaToPsi);
        return std::nullopt;
    });
}

// Wide-range O2 sensors: A, B the equivalence ratio into `ratio`; C, D the second quantity into
// `second`. Each absent byte writes "N/A" to its own field and ends the decoding.
void WideRange(App& app, Field& ratio, Field& second, double (*secondValue)(double cd)) {
    for (int n : {1, 2}) {
        if (Missing(app, n)) {
            ratio.setText("N/A");
            return;
        }
    }
    for (int n : {3, 4}) {
        if (Missing(app, n)) {
            second.setText("N/A");
            return;
        }
    }
    ratio.setText(fix3(Word(app, 1) * kWideRangeRatio));
    second.setText(fix3(secondValue(Word(app, 3))));
}

template <int Pair>
void WideRangeVolts(App& app) {
    WideRange(app, X(app).lblO2wrvE(Pair), X(app).lblO2wr(Pair),
              [](double cd) { return cd * kWideRangeVolts; });
}

template <int Pair>
void WideRangeCurrent(App& app) {
    WideRange(app, X(app).lblO2wrE(Pair), X(app).lblO2wra(Pair),
              [](double cd) { return cd * kWideRangeAmps - 128; });
}

void CommandedEgr(App& app) {
    OneField(app, X(app).lblComEGR, 1, Percent0);
}
void EgrError(App& app) {
    OneField(app, X(app).lblEgrError, 1,
             [](const App&, double a) -> Text { return fix2((a - 128) * kTrim); });
}
void EvapPurge(App& app) {
    OneField(app, X(app).lblEvapPurge, 1, Percent0);
}
void FuelLevel(App& app) {
    OneField(app, X(app).lblFuelLevel, 1, Percent0);
}
void WarmUps(App& app) {
    OneField(app, X(app).lblWarmUp, 1, [](const App&, double a) -> Text { return plain(a); });
}
void DistanceSinceClear(App& app) {
    OneField(app, X(app).lblDisClear, 2,
             [](const App& a, double v) { return DistanceText(a, v, false); });
}

// PID 32: the two bytes read unsigned; pascal, or inches of water under "PSI".
void VaporPressure(App& app) {
    OneField(app, X(app).lblVaporPres, 2, [](const App& a, double v) -> Text {
        if (a.Pressure == "kPa") return fix2(v * 0.25);
        if (a.Pressure == "PSI") return fix3(v * 0.25 * kPaToInH2O);
        return std::nullopt;
    });
}

void Barometric(App& app) {
    OneField(app, X(app).lblBaro, 1, [](const App& a, double v) -> Text {
        if (a.Pressure == "kPa") return plain(v);
        if (a.Pressure == "PSI") return fix1(v * kKpaToInHg);
        return std::nullopt;
    });
}

Text CatalystText(const App& a, double v) {
    return TemperatureFix0(a, v / 10 - 40);
}
// PIDs 3D and 3E go to the fields captioned B1S2 and B2S1.
void CatalystB1S1(App& app) {
    OneField(app, X(app).LBLCatB1S1, 2, CatalystText);
}
void Catalyst3D(App& app) {
    OneField(app, X(app).lblCatB1S2, 2, CatalystText);
}
void Catalyst3E(App& app) {
    OneField(app, X(app).lblCatB2S1, 2, CatalystText);
}
void CatalystB2S2(App& app) {
    OneField(app, X(app).lblCatB2S2, 2, CatalystText);
}

// PID 41 is consumed without effect.
void MonitorThisDriveCycle(App&) {}

void ModuleVoltage(App& app) {
    OneField(app, X(app).lblVolt, 2, [](const App&, double v) -> Text { return fix2(v / 1000); });
}
void AbsoluteLoad(App& app) {
    OneField(app, X(app).lblAbosLoad, 2, Percent0);
}
void EquivalenceRatio(App& app) {
    OneField(app, X(app).lblEquivRatio, 2,
             [](const App&, double v) -> Text { return fix3(v * kWideRangeRatio); });
}
void RelativeThrottle(App& app) {
    OneField(app, X(app).lblTps, 1, Percent0);
}
void AmbientAir(App& app) {
    OneField(app, X(app).lblAmbientAir, 1,
             [](const App& a, double v) { return TemperatureFix0(a, v - 40); });
}
template <int Pid>
void AbsoluteThrottle(App& app) {
    FrmNewPids& x = X(app);
    Field* fields[] = {&x.lblTpsB, &x.lblTpsC, &x.lblTpsD, &x.lblTpsE, &x.lblTpsF};
    OneField(app, *fields[Pid - 0x47], 1, Percent0);
}
void ThrottleActuator(App& app) {
    OneField(app, X(app).lblActuator, 1, Percent0);
}
void MinutesWithMil(App& app) {
    OneField(app, X(app).lblMinutes, 2, [](const App&, double v) -> Text { return fix0(v); });
}
void TimeSinceClear(App& app) {
    OneField(app, X(app).lblTimeClearDTC, 2, [](const App&, double v) -> Text { return fix0(v); });
}

// Indexed by PID - 0x21, for PIDs 21 to 4E; PID 40 is the support bitmap, not a value.
constexpr std::array<PidDecoder, 0x2E> kExtendedDecoders{
    DistanceMilOn,
    RelativeFuelRailPressure,
    FuelRailPressure,
    WideRangeVolts<1>,
    WideRangeVolts<2>,
    WideRangeVolts<3>,
    WideRangeVolts<4>,
    WideRangeVolts<5>,
    WideRangeVolts<6>,
    WideRangeVolts<7>,
    WideRangeVolts<8>,
    CommandedEgr,
    EgrError,
    EvapPurge,
    FuelLevel,
    WarmUps,
    DistanceSinceClear,
    VaporPressure,
    Barometric,
    WideRangeCurrent<1>,
    WideRangeCurrent<2>,
    WideRangeCurrent<3>,
    WideRangeCurrent<4>,
    WideRangeCurrent<5>,
    WideRangeCurrent<6>,
    WideRangeCurrent<7>,
    WideRangeCurrent<8>,
    CatalystB1S1,
    Catalyst3D,
    Catalyst3E,
    CatalystB2S2,
    nullptr,
    MonitorThisDriveCycle,
    ModuleVoltage,
    AbsoluteLoad,
    EquivalenceRatio,
    RelativeThrottle,
    AmbientAir,
    AbsoluteThrottle<0x47>,
    AbsoluteThrottle<0x48>,
    AbsoluteThrottle<0x49>,
    AbsoluteThrottle<0x4A>,
    AbsoluteThrottle<0x4B>,
    ThrottleActuator,
    MinutesWithMil,
    TimeSinceClear,
};

}  // namespace

PidDecoder ExtendedValueDecoder(int pid) {
    if (pid < 0x21 || pid > 0x4E) return nullptr;
    return kExtendedDecoders[std::size_t(pid - 0x21)];
}

}  // namespace ketrel
