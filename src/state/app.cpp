#include "state/app.h"

namespace ketrel {

App::App(Platform p) : platform(p) {
    frmMain_ = std::make_unique<FrmMain>(p.loop);
    frmSettings_ = std::make_unique<FrmSettings>(p.loop);
    frmConnecting_ = std::make_unique<FrmConnecting>(p.loop);
    frmSplash_ = std::make_unique<FrmSplash>(p.loop);
    frmNewPids_ = std::make_unique<FrmNewPids>(p.loop);
    frmAlertMIL_ = std::make_unique<FrmAlertMIL>(p.loop);
    frmMain_->MSComm = p.ports.create("MSComm");
    frmMain_->BR3MSComm = p.ports.create("BR3MSComm");
    frmMain_->KeshMSComm = p.ports.create("KeshMSComm");
    frmConnecting_->ConnectingMscomm = p.ports.create("ConnectingMscomm");
    frmConnecting_->BR3Connecting = p.ports.create("BR3Connecting");
    // Designed settings of the ports: 19200 baud, port 1, MSComm with a threshold of 1.
    for (SerialPort* port :
         {frmMain_->MSComm.get(), frmMain_->BR3MSComm.get(), frmMain_->KeshMSComm.get(),
          frmConnecting_->ConnectingMscomm.get(), frmConnecting_->BR3Connecting.get()}) {
        port->setCommPort(1);
        port->setSettings("19200,n,8,1");
    }
    frmMain_->MSComm->setRThreshold(1);
    frmConnecting_->ConnectingMscomm->setRThreshold(1);
}

App::~App() = default;

std::string App::GetSetting(const std::string& key, const std::string& def) {
    return platform.settings.get(kAppName, kSection, key, def);
}

void App::SaveSetting(const std::string& key, const std::string& value) {
    platform.settings.save(kAppName, kSection, key, value);
}

std::array<Screen*, 6> App::fixedScreens() const {
    return {frmMain_.get(),   frmSettings_.get(), frmConnecting_.get(),
            frmSplash_.get(), frmNewPids_.get(),  frmAlertMIL_.get()};
}

// Called on every replayed frame and timer tick, so it looks without building a list.
Screen* App::screenByName(const std::string& name) {
    for (Screen* s : fixedScreens())
        if (s->name() == name) return s;
    for (auto& s : extraScreens_)
        if (s->name() == name) return s.get();
    return nullptr;
}

std::vector<Screen*> App::screens() {
    const auto fixed = fixedScreens();
    std::vector<Screen*> all(fixed.begin(), fixed.end());
    for (auto& s : extraScreens_)
        all.push_back(s.get());
    return all;
}

void App::addScreen(std::unique_ptr<Screen> screen) {
    extraScreens_.push_back(std::move(screen));
}

cTimeIt& App::TimerObject() {
    if (!timerObject_) timerObject_ = std::make_unique<cTimeIt>(loop().clock(), dialogs());
    return *timerObject_;
}

}  // namespace ketrel
