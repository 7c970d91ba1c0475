#pragma once
#include <map>
#include <string>
#include <tuple>

#include "platform/settings_store.h"

namespace ketrel {

// A store that reads through to another one but keeps every save in memory: a run that must
// see the user's settings without ever changing them (a headless session) puts its own
// values on top and leaves the file as it was.
class OverlaySettingsStore : public SettingsStore {
  public:
    explicit OverlaySettingsStore(SettingsStore& base) : base_(base) {}

    std::string get(const std::string& app, const std::string& section, const std::string& key,
                    const std::string& def = "") override;
    void save(const std::string& app, const std::string& section, const std::string& key,
              const std::string& value) override;
    bool contains(const std::string& app, const std::string& section,
                  const std::string& key) override;

  private:
    using Key = std::tuple<std::string, std::string, std::string>;
    // Keys are found in any case, as the file store finds them.
    static Key makeKey(const std::string& app, const std::string& section, const std::string& key);

    SettingsStore& base_;
    std::map<Key, std::string> values_;
};

}  // namespace ketrel
