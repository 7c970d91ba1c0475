#include "qt/sim_port_factory.h"

// The simulator's headers come before any Qt header: Qt's keyword macros (emit) would clash.
#include "sim/br3_converter.h"
#include "sim/dorvane_converter.h"
#include "sim/kline_ecu.h"
#include "sim/sim_serial_port.h"
#include "sim/vehicle_file.h"

#include "link/converters.h"
#include "link/port_map.h"
#include "qt/qt_serial_port.h"
#include "state/app.h"

namespace ketrel {

namespace {

// The number the simulated port of a car is plugged into on its own virtual wire.
constexpr int kCarPlug = 1;

bool IsKline(sim::Protocol p) {
    return p == sim::Protocol::Iso9141 || p == sim::Protocol::Iso14230;
}

}  // namespace

bool IsSimPortPath(const std::string& path) {
    return path.rfind(kSimPortPrefix, 0) == 0;
}

// One simulated car per "sim:" path, kept while the program runs: the converters hold their
// state from the connecting port to the scanning port, as a real one powered from the car does.
struct SimCars {
    struct Car {
        std::string word;  // the converter it was made for
        sim::SimSetup setup;
        std::unique_ptr<sim::SimDevice> device;
        std::unique_ptr<sim::SimWire> wire;
        sim::SimSerialPortFactory ports;
    };

    SimCars(EventLoop& l, SettingsStore& s, SerialDeviceLister& d)
        : loop(l), settings(s), devices(d) {}

    // The car behind `path` with the converter OBDIIHardware names now; made on first use, and
    // made again for another converter while no port is open on it.
    Car& car(const std::string& path) {
        const ConverterDriver* driver =
            FindConverter(settings.get(kAppName, kSection, "OBDIIHardware"));
        std::string word = driver ? driver->word : "DORVANE";
        std::unique_ptr<Car>& slot = cars[path];
        if (slot && (slot->word == word || slot->wire->inUse())) return *slot;
        auto made = std::make_unique<Car>();
        made->word = word;
        std::string file = path.substr(std::string(kSimPortPrefix).size());
        try {
            made->setup = file.empty() ? sim::SimSetup{} : sim::LoadVehicleFile(file);
            if (file.empty()) made->setup.vehicle = sim::SimVehicle::Default();
        } catch (const std::exception& e) {
            throw SerialError(kErrInvalidPort, e.what());
        }
        sim::SimVehicle& vehicle = made->setup.vehicle;
        if (word == "BR3") {
            made->device = std::make_unique<sim::Br3Converter>(vehicle);
        } else if (word == "KESH" || word == "TACTRIX") {
            // The built-in car is a J1850 one; on a K-line cable it talks ISO 9141 instead.
            if (!IsKline(vehicle.protocol)) vehicle.protocol = sim::Protocol::Iso9141;
            made->device = std::make_unique<sim::KlineEcu>(vehicle);
        } else {
            made->device = std::make_unique<sim::DorvaneConverter>(vehicle, made->setup.firmware);
        }
        made->wire = std::make_unique<sim::SimWire>(loop.scheduler(), *made->device);
        made->ports.plug(kCarPlug, *made->wire);
        slot = std::move(made);
        return *slot;
    }

    EventLoop& loop;
    SettingsStore& settings;
    SerialDeviceLister& devices;
    std::map<std::string, std::unique_ptr<Car>> cars;
};

namespace {

// A port that is a serial device or a simulated car, decided when it opens; while closed it
// keeps what the program set, so that either kind starts with the same settings.
class SwitchingSerialPort : public SerialPort {
  public:
    SwitchingSerialPort(std::shared_ptr<SimCars> cars, std::string name)
        : cars_(std::move(cars)), name_(std::move(name)) {
        inner_ = makeSerial();
        inner_->setOnComm([this] { fireOnComm(); });
    }

    void setCommPort(int number) override {
        number_ = number;
        if (!sim_) inner_->setCommPort(number);
    }
    int commPort() const override { return number_; }
    void setSettings(const std::string& settings) override {
        settings_ = settings;
        inner_->setSettings(settings);
    }
    std::string settings() const override { return inner_->settings(); }
    bool portOpen() const override { return inner_->portOpen(); }
    void setPortOpen(bool open) override {
        if (open && !inner_->portOpen()) choose();
        inner_->setPortOpen(open);
    }
    void setRThreshold(int count) override {
        threshold_ = count;
        inner_->setRThreshold(count);
    }
    int rThreshold() const override { return inner_->rThreshold(); }
    void setInputLen(int count) override {
        inputLen_ = count;
        inner_->setInputLen(count);
    }
    void clearInput() override { inner_->clearInput(); }
    int inBufferCount() const override { return inner_->inBufferCount(); }
    std::string input() override { return inner_->input(); }
    void output(std::string_view bytes) override { inner_->output(bytes); }
    void setBreak(bool on) override { inner_->setBreak(on); }
    bool setBaud(int rate) override { return inner_->setBaud(rate); }
    int commEvent() const override { return inner_->commEvent(); }

  private:
    std::unique_ptr<SerialPort> makeSerial() {
        return std::make_unique<QtSerialPort>(cars_->settings, cars_->devices, name_);
    }
    // Puts the right kind of port behind this one for the path the number leads to now.
    void choose() {
        std::string path = PortDevicePath(cars_->settings, cars_->devices, number_);
        bool sim = IsSimPortPath(path);
        if (!sim && !sim_) return;
        std::unique_ptr<SerialPort> next;
        if (sim) {
            next = cars_->car(path).ports.create(name_);
            next->setCommPort(kCarPlug);
        } else {
            next = makeSerial();
            next->setCommPort(number_);
        }
        next->setSettings(settings_);
        next->setRThreshold(threshold_);
        next->setInputLen(inputLen_);
        next->setOnComm([this] { fireOnComm(); });
        inner_ = std::move(next);
        sim_ = sim;
    }

    std::shared_ptr<SimCars> cars_;
    std::string name_;
    std::unique_ptr<SerialPort> inner_;
    bool sim_ = false;
    int number_ = 1;
    std::string settings_ = "9600,n,8,1";
    int threshold_ = 0, inputLen_ = 0;
};

}  // namespace

SimPortFactory::SimPortFactory(EventLoop& loop, SettingsStore& settings,
                               SerialDeviceLister& devices)
    : devices_(devices), cars_(std::make_shared<SimCars>(loop, settings, devices)) {}

SimPortFactory::~SimPortFactory() = default;

std::unique_ptr<SerialPort> SimPortFactory::create(const std::string& objectName) {
    return std::make_unique<SwitchingSerialPort>(cars_, objectName);
}

}  // namespace ketrel
