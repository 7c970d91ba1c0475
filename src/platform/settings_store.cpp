#include "platform/settings_store.h"

namespace ketrel {

namespace {
std::string fullKey(const std::string& app, const std::string& section, const std::string& key) {
    return app + '\x1f' + section + '\x1f' + key;
}
}  // namespace

std::string MemorySettingsStore::get(const std::string& app, const std::string& section,
                                     const std::string& key, const std::string& def) {
    auto it = values_.find(fullKey(app, section, key));
    return it == values_.end() ? def : it->second;
}

void MemorySettingsStore::save(const std::string& app, const std::string& section,
                               const std::string& key, const std::string& value) {
    values_[fullKey(app, section, key)] = value;
    saveLog_.push_back(section + "/" + key + "=" + value);
}

bool MemorySettingsStore::contains(const std::string& app, const std::string& section,
                                   const std::string& key) {
    return values_.count(fullKey(app, section, key)) != 0;
}

}  // namespace ketrel
