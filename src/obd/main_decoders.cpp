#include <array>

#include "obd/decoder_support.h"
#include "obd/value_decoders.h"

namespace ketrel {
namespace {

using namespace decode;

// PID 03: the first bit set among bits 0 to 4 names the state of one fuel system.
std::string FuelSystemWord(const std::string& bits) {
    static constexpr std::array<const char*, 5> kWords{"OPEN", "CLOSE", "OPEN (D)", "OPEN (F)",
                                                       "CLOSE (F)"};
    // Character 8 is bit 0, character 4 is bit 4.
    for (std::size_t bit = 0; bit < kWords.size(); ++bit) {
        std::size_t pos = 7 - bit;
        if (pos < bits.size() && bits[pos] == '1') return kWords[bit];
    }
    return "N/A";
}

void FuelSystemStatus(App& app) {
    FrmMain& m = app.frmMain();
    Field *one = nullptr, *two = nullptr;
    if (app.RxMode == "01") {
        one = &m.lblFuelSys1;
        two = &m.lblFuelSys2;
    } else if (app.RxMode == "02") {
        one = &m.lblFFFuelSys1;
        two = &m.lblFFFuelSys2;
    } else {
        return;
    }
    one->setText(FuelSystemWord(app.ByteBits[1]));
    two->setText(FuelSystemWord(app.ByteBits[2]));
    if (app.ByteBits[1].empty()) one->setText("N/A");
    if (app.ByteBits[2].empty()) two->setText("N/A");
}

void CalculatedLoad(App& app) {
    FrmMain& m = app.frmMain();
    LiveOrFreeze(
        app, m.lblLoad, m.lblFFLoad, 1,
        [](const App&, double a) -> std::optional<std::string> { return fix2(a * 100 / 255); });
}

void Coolant(App& app) {
    FrmMain& m = app.frmMain();
    LiveOrFreeze(app, m.lblCoolant, m.lblFFCoolant, 1,
                 [](const App& a, double v) { return TemperatureText(a, v - 40); });
}

// PIDs 06 to 09. Live: an absent A writes "N/A" and then the value of A = 0 over it. Freeze
// frame: the test is on B, and A is decoded whenever B is there.
void FuelTrim(App& app, Field& live, Field& freeze) {
    if (FreezeFrame(app)) {
        if (Missing(app, 2)) {
            freeze.setText("N/A");
            return;
        }
        freeze.setText(fix2((Byte(app, 1) - 128) * kTrim));
        return;
    }
    if (Missing(app, 1) && app.RxMode == "01") live.setText("N/A");
    live.setText(fix2((Byte(app, 1) - 128) * kTrim));
}

void ShortTermTrimBank1(App& app) {
    FuelTrim(app, app.frmMain().lblSTB1, app.frmMain().lblFFSTFTB1);
}
void LongTermTrimBank1(App& app) {
    FuelTrim(app, app.frmMain().lblLTB1, app.frmMain().lblFFLTFTB1);
}
void ShortTermTrimBank2(App& app) {
    FuelTrim(app, app.frmMain().lblSTB2, app.frmMain().lblFFSTFTB2);
}
void LongTermTrimBank2(App& app) {
    FuelTrim(app, app.frmMain().lblLTB2, app.frmMain().lblFFLTFTB2);
}

void FuelPressure(App& app) {
    FrmMain& m = app.frmMain();
    LiveOrFreeze(app, m.lblFuelPres, m.lblFFFuelPres, 1,
                 [](const App& a, double v) -> std::optional<std::string> {
                     if (a.Pressure == "kPa") return plain(v * 3);
                     if (a.Pressure == "PSI") return fix0(v * 3 * kKpaToPsi);
                     return std::nullopt;
                 });
}

void ManifoldPressure(App& app) {
    FrmMain& m = app.frmMain();
    LiveOrFreeze(app, m.lblMAP, m.lblFFMAP, 1,
                 [](const App& a, double v) -> std::optional<std::string> {
                     if (a.Pressure == "kPa") return plain(v);
                     if (a.Pressure == "PSI") return fix1(v * kKpaToInHg);
                     return std::nullopt;
                 });
}

void EngineSpeed(App& app) {
    FrmMain& m = app.frmMain();
    LiveOrFreeze(app, m.lblRPM, m.lblFFRPM, 2,
                 [](const App&, double v) -> std::optional<std::string> { return fix0(v * 0.25); });
}

void VehicleSpeed(App& app) {
    FrmMain& m = app.frmMain();
    LiveOrFreeze(app, m.lblSpeed, m.lblFFSpeed, 1,
                 [](const App& a, double v) { return DistanceText(a, v, true); });
}

void SparkAdvance(App& app) {
    FrmMain& m = app.frmMain();
    LiveOrFreeze(
        app, m.lblTiming, m.lblFFTiming, 1,
        [](const App&, double v) -> std::optional<std::string> { return fix1(v * 0.5 - 64); });
}

// The freeze-frame value stays in Celsius whatever the unit setting.
void IntakeAir(App& app) {
    FrmMain& m = app.frmMain();
    LiveOrFreeze(app, m.lblIntakeAir, m.lblFFIntakeAir, 1,
                 [](const App& a, double v) -> std::optional<std::string> {
                     if (FreezeFrame(a)) return plain(v - 40);
                     return TemperatureText(a, v - 40);
                 });
}

void MassAirFlow(App& app) {
    FrmMain& m = app.frmMain();
    LiveOrFreeze(app, m.lblMAF, m.lblFFMAF, 2,
                 [](const App&, double v) -> std::optional<std::string> { return fix2(v * 0.01); });
    if (!FreezeFrame(app) && app.AfterLiveMAF) app.AfterLiveMAF();
}

void ThrottlePosition(App& app) {
    FrmMain& m = app.frmMain();
    LiveOrFreeze(
        app, m.lblTps, m.lblFFTPS, 1,
        [](const App&, double v) -> std::optional<std::string> { return fix1(v * kPercent); });
}

// PID 12 shows the position of the bit set, "1" to "3"; nothing set leaves the field alone.
// There is one field only, so a freeze-frame reply writes it too.
void SecondaryAirStatus(App& app) {
    Field& field = app.frmMain().lblAirCommand;
    const std::string& bits = app.ByteBits[1];
    if (bits.empty() && app.RxMode == "01") {
        field.setText("N/A");
        return;
    }
    if (bits.size() >= 8 && bits[7] == '1') {
        field.setText("1");
    } else if (bits.size() >= 7 && bits[6] == '1') {
        field.setText("2");
    } else if (bits.size() >= 6 && bits[5] == '1') {
        field.setText("3");
    }
}

void StoreLocation(const std::string& bits, std::array<bool, 8>& location) {
    for (std::size_t i = 0; i < location.size(); ++i)
        location[i] = i < bits.size() && bits[i] == '1';
}
void O2SensorLocation(App& app) {
    StoreLocation(app.ByteBits[1], app.O2Location);
}
void O2SensorLocationAlt(App& app) {
    StoreLocation(app.ByteBits[1], app.O2LocationAlt);
}

// PIDs 14 to 1B: A the sensor voltage, B the short-term trim against that sensor.
void O2Sensor(App& app, Field& volts, Field& trim) {
    if (Missing(app, 1))
        volts.setText("N/A");
    else
        volts.setText(fix3(Byte(app, 1) * kO2Volts));
    if (Missing(app, 2))
        trim.setText("N/A");
    else
        trim.setText(fix2((Byte(app, 2) - 128) * kTrim));
}

template <int Pid>
void O2SensorSlot(App& app) {
    FrmMain& m = app.frmMain();
    static_assert(Pid >= 0x14 && Pid <= 0x1B);
    Field* volts[] = {&m.lblO2b1s1, &m.lblO2b1s2, &m.lblO2b1s3, &m.lblO2b1s4,
                      &m.lblO2b2s1, &m.lblO2b2s2, &m.lblO2b2s3, &m.lblO2b2s4};
    Field* trims[] = {&m.lblSTO2B1S1, &m.lblSTO2B1S2, &m.lblSTO2B1S3, &m.LBLSTO2B1S4,
                      &m.LBLSTO2B2S1, &m.LBLSTO2B2S2, &m.LBLSTO2B2S3, &m.LBLSTO2B2S4};
    O2Sensor(app, *volts[Pid - 0x14], *trims[Pid - 0x14]);
}

// PID 1C: known designs are 1 to 13; anything else leaves the field alone.
void ObdDesign(App& app) {
    Field& field = app.frmMain().lblOBDDesign;
    if (Missing(app, 1)) {
        field.setText("N/A");
        return;
    }
    double a = Byte(app, 1);
    if (a >= 1 && a <= 13) field.setText(plain(a));
}

// PID 1E: bit 0 set is "YES", a zero byte "NO"; other values leave the field alone.
void AuxiliaryInput(App& app) {
    Field& field = app.frmMain().lblPTO;
    if (Missing(app, 1)) {
        field.setText("N/A");
        return;
    }
    int a = *app.ByteValue[1];
    if ((a & 1) != 0)
        field.setText("YES");
    else if (a == 0)
        field.setText("NO");
}

void TimeSinceStart(App& app) {
    OneField(app, app.frmMain().lblTimeStart, 2,
             [](const App&, double v) -> std::optional<std::string> { return plain(v); });
}

// Indexed by PID - 3, for PIDs 03 to 1F.
constexpr std::array<PidDecoder, 0x1D> kMainDecoders{
    FuelSystemStatus,   CalculatedLoad,     Coolant,
    ShortTermTrimBank1, LongTermTrimBank1,  ShortTermTrimBank2,
    LongTermTrimBank2,  FuelPressure,       ManifoldPressure,
    EngineSpeed,        VehicleSpeed,       SparkAdvance,
    IntakeAir,          MassAirFlow,        ThrottlePosition,
    SecondaryAirStatus, O2SensorLocation,   O2SensorSlot<0x14>,
    O2SensorSlot<0x15>, O2SensorSlot<0x16>, O2SensorSlot<0x17>,
    O2SensorSlot<0x18>, O2SensorSlot<0x19>, O2SensorSlot<0x1A>,
    O2SensorSlot<0x1B>, ObdDesign,          O2SensorLocationAlt,
    AuxiliaryInput,     TimeSinceStart,
};

}  // namespace

PidDecoder MainValueDecoder(int pid) {
    if (pid < 0x03 || pid > 0x1F) return nullptr;
    return kMainDecoders[std::size_t(pid - 0x03)];
}

}  // namespace ketrel
