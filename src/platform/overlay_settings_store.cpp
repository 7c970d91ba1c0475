#include "platform/overlay_settings_store.h"

#include <cctype>

namespace ketrel {

namespace {

std::string lower(std::string s) {
    for (char& c : s)
        c = char(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

}  // namespace

OverlaySettingsStore::Key OverlaySettingsStore::makeKey(const std::string& app,
                                                        const std::string& section,
                                                        const std::string& key) {
    return {lower(app), lower(section), lower(key)};
}

std::string OverlaySettingsStore::get(const std::string& app, const std::string& section,
                                      const std::string& key, const std::string& def) {
    auto it = values_.find(makeKey(app, section, key));
    if (it != values_.end()) return it->second;
    return base_.get(app, section, key, def);
}

void OverlaySettingsStore::save(const std::string& app, const std::string& section,
                                const std::string& key, const std::string& value) {
    values_[makeKey(app, section, key)] = value;
}

bool OverlaySettingsStore::contains(const std::string& app, const std::string& section,
                                    const std::string& key) {
    return values_.count(makeKey(app, section, key)) > 0 || base_.contains(app, section, key);
}

}  // namespace ketrel
