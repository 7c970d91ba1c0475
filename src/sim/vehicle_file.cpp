#include "sim/vehicle_file.h"

#include <cctype>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <vector>

namespace ketrel::sim {

namespace {

struct Line {
    int number;
    std::string keyword;
    std::vector<std::string> args;
};

[[noreturn]] void fail(const Line& line, const std::string& what) {
    throw VehicleFileError("line " + std::to_string(line.number) + ": " + what);
}

std::string lower(std::string s) {
    for (char& c : s)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

std::uint8_t hexByteArg(const Line& line, const std::string& text) {
    std::size_t used = 0;
    unsigned long v = 0;
    try {
        v = std::stoul(text, &used, 16);
    } catch (const std::exception&) {
        used = 0;
    }
    if (used != text.size() || text.empty() || text.size() > 2 || v > 0xFF) {
        fail(line, "\"" + text + "\" is not a hex byte");
    }
    return static_cast<std::uint8_t>(v);
}

std::vector<std::uint8_t> hexBytes(const Line& line, std::size_t from) {
    std::vector<std::uint8_t> out;
    for (std::size_t i = from; i < line.args.size(); ++i)
        out.push_back(hexByteArg(line, line.args[i]));
    return out;
}

double number(const Line& line) {
    if (line.args.size() != 1) fail(line, line.keyword + " takes one number");
    try {
        std::size_t used = 0;
        double v = std::stod(line.args[0], &used);
        if (used == line.args[0].size()) return v;
    } catch (const std::exception&) {
    }
    fail(line, "\"" + line.args[0] + "\" is not a number");
}

bool onOff(const Line& line) {
    std::string v = line.args.size() == 1 ? lower(line.args[0]) : "";
    if (v == "on") return true;
    if (v == "off") return false;
    fail(line, line.keyword + " takes on or off");
}

std::vector<std::uint16_t> codes(const Line& line) {
    std::vector<std::uint16_t> out;
    for (const auto& a : line.args) {
        auto code = ParseTroubleCode(a);
        if (!code) fail(line, "\"" + a + "\" is not a trouble code");
        out.push_back(*code);
    }
    return out;
}

Protocol protocolOf(const Line& line) {
    std::string v = line.args.size() == 1 ? lower(line.args[0]) : "";
    if (v == "j1850-vpw") return Protocol::J1850Vpw;
    if (v == "j1850-pwm") return Protocol::J1850Pwm;
    if (v == "iso9141") return Protocol::Iso9141;
    if (v == "iso14230") return Protocol::Iso14230;
    fail(line, "unknown protocol; use J1850-VPW, J1850-PWM, ISO9141 or ISO14230");
}

void vehicleSetting(SimSetup& s, const Line& line) {
    SimVehicle& v = s.vehicle;
    EngineProfile& e = v.engine;
    static const std::map<std::string, double EngineProfile::*> kProfile = {
        {"ambient", &EngineProfile::ambientC},          {"operating", &EngineProfile::operatingC},
        {"warmup", &EngineProfile::warmupSeconds},      {"idle-rpm", &EngineProfile::idleRpm},
        {"idle-time", &EngineProfile::idleSeconds},     {"cruise", &EngineProfile::cruiseKph},
        {"ltft", &EngineProfile::longTermTrim},         {"fuel-level", &EngineProfile::fuelLevel},
        {"displacement", &EngineProfile::displacementL}};
    if (auto it = kProfile.find(line.keyword); it != kProfile.end()) {
        e.*(it->second) = number(line);
    } else if (line.keyword == "protocol") {
        v.protocol = protocolOf(line);
    } else if (line.keyword == "vin") {
        if (line.args.size() != 1 || line.args[0].size() > 17)
            fail(line, "vin takes up to 17 characters");
        v.vin = line.args[0];
    } else if (line.keyword == "keybytes") {
        auto b = hexBytes(line, 0);
        if (b.size() != 2) fail(line, "keybytes takes two hex bytes");
        v.keyBytes = {b[0], b[1]};
    } else if (line.keyword == "firmware") {
        if (line.args.size() != 1) fail(line, "firmware takes one text, such as 1.23");
        s.firmware = line.args[0];
    } else if (line.keyword == "freeze-at") {
        v.freezeAtSeconds = number(line);
    } else if (line.keyword == "ignition") {
        v.responding = onOff(line);
    } else {
        fail(line, "unknown setting \"" + line.keyword + "\"");
    }
}

void ecuSetting(SimEcu& ecu, const Line& line) {
    const std::string& k = line.keyword;
    if (k == "mode1" || k == "mode2") {
        auto& set = k == "mode1" ? ecu.mode1 : ecu.mode2;
        for (std::uint8_t pid : hexBytes(line, 0))
            set.insert(pid);
    } else if (k == "stored") {
        ecu.stored = codes(line);
    } else if (k == "pending") {
        ecu.pending = codes(line);
    } else if (k == "freeze") {
        auto c = codes(line);
        if (c.size() != 1) fail(line, "freeze takes one trouble code");
        ecu.freezeCode = c[0];
    } else if (k == "mil") {
        ecu.mil = onOff(line);
    } else if (k == "fix" || k == "fix-freeze") {
        auto b = hexBytes(line, 0);
        if (b.size() < 2) fail(line, k + " takes a PID and its data bytes");
        auto& map = k == "fix" ? ecu.fixed : ecu.freezeFixed;
        map[b[0]] = std::vector<std::uint8_t>(b.begin() + 1, b.end());
    } else if (k == "monitors") {
        auto b = hexBytes(line, 0);
        if (b.size() != 3) fail(line, "monitors takes three hex bytes");
        ecu.monitors = {b[0], b[1], b[2]};
    } else if (k == "mode6" || k == "mode6-support") {
        if (std::string error = AddMode6Setting(ecu.mode6, k, line.args); !error.empty())
            fail(line, error);
    } else if (k == "obd") {
        auto b = hexBytes(line, 0);
        if (b.size() != 1) fail(line, "obd takes one hex byte");
        ecu.obdStandard = b[0];
    }
}

bool isEcuSetting(const std::string& k) {
    static const char* kEcuKeys[] = {"mode1",  "mil", "mode2",      "stored",   "pending",
                                     "freeze", "fix", "fix-freeze", "monitors", "obd"};
    for (const char* key : kEcuKeys)
        if (k == key) return true;
    return k == "mode6" || k == "mode6-support";
}

}  // namespace

SimSetup ReadVehicleFile(std::istream& in) {
    SimSetup setup;
    setup.vehicle.ecus.clear();
    std::string text;
    int number = 0;
    while (std::getline(in, text)) {
        ++number;
        if (auto hash = text.find('#'); hash != std::string::npos) text.erase(hash);
        std::istringstream words(text);
        Line line{number, {}, {}};
        if (!(words >> line.keyword)) continue;
        line.keyword = lower(line.keyword);
        for (std::string w; words >> w;)
            line.args.push_back(w);
        if (line.keyword == "ecu") {
            if (line.args.empty()) fail(line, "ecu takes an address in hex");
            SimEcu ecu;
            ecu.address = hexByteArg(line, line.args[0]);
            ecu.name = line.args.size() > 1 ? line.args[1] : "module";
            setup.vehicle.ecus.push_back(ecu);
        } else if (std::string error;
                   !setup.vehicle.ecus.empty() && ReadO2TestLine(setup.vehicle.ecus.back().o2Tests,
                                                                 line.keyword, line.args, error)) {
            if (!error.empty()) fail(line, error);
        } else if (isEcuSetting(line.keyword)) {
            if (setup.vehicle.ecus.empty()) fail(line, line.keyword + " comes before any ecu line");
            ecuSetting(setup.vehicle.ecus.back(), line);
        } else {
            vehicleSetting(setup, line);
        }
    }
    return setup;
}

SimSetup LoadVehicleFile(const std::string& path) {
    std::ifstream in(path);
    if (!in) throw VehicleFileError("can't open vehicle file " + path);
    try {
        return ReadVehicleFile(in);
    } catch (const VehicleFileError& e) {
        throw VehicleFileError(path + ", " + e.what());
    }
}

}  // namespace ketrel::sim
