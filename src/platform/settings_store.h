#pragma once
#include <map>
#include <string>
#include <vector>

namespace ketrel {

// A persistent key-value store with GetSetting/SaveSetting semantics: application name,
// section, key; every value is text.
class SettingsStore {
  public:
    virtual ~SettingsStore() = default;
    // The stored text, or `def` when the key is missing.
    virtual std::string get(const std::string& app, const std::string& section,
                            const std::string& key, const std::string& def = "") = 0;
    virtual void save(const std::string& app, const std::string& section, const std::string& key,
                      const std::string& value) = 0;
    virtual bool contains(const std::string& app, const std::string& section,
                          const std::string& key) = 0;
};

// An in-memory store for tests and for runs that must not touch the user's settings.
class MemorySettingsStore : public SettingsStore {
  public:
    std::string get(const std::string& app, const std::string& section, const std::string& key,
                    const std::string& def = "") override;
    void save(const std::string& app, const std::string& section, const std::string& key,
              const std::string& value) override;
    bool contains(const std::string& app, const std::string& section,
                  const std::string& key) override;
    // Every save in order, as "section/key=value".
    const std::vector<std::string>& saveLog() const { return saveLog_; }
    void clearSaveLog() { saveLog_.clear(); }

  private:
    std::map<std::string, std::string> values_;
    std::vector<std::string> saveLog_;
};

}  // namespace ketrel
