#pragma once
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/settings_store.h"

namespace ketrel {

// The settings store of the desktop program: one INI file per application name,
// <root>/<app>/<app>.ini, with "[Section]" heads and "Key=Value" lines, keys and values kept
// exactly as written ("KESH Start=1"). Keys are found in any case. Every save rewrites the
// file through a temporary file; a file that can't be written is reported once and the
// values live on in memory until the program ends.
class IniSettingsStore : public SettingsStore {
  public:
    using Warn = std::function<void(const std::string&)>;
    // With no warn function, problems go to standard error.
    explicit IniSettingsStore(std::filesystem::path root, Warn warn = {});

    std::string get(const std::string& app, const std::string& section, const std::string& key,
                    const std::string& def = "") override;
    void save(const std::string& app, const std::string& section, const std::string& key,
              const std::string& value) override;
    bool contains(const std::string& app, const std::string& section,
                  const std::string& key) override;

    std::filesystem::path fileFor(const std::string& app) const;

  private:
    struct Entry {
        std::string key, value;
    };
    struct Section {
        std::string name;
        std::vector<Entry> entries;
    };
    struct File {
        std::vector<Section> sections;
        bool warned = false;
    };
    File& file(const std::string& app);
    Entry* find(File& f, const std::string& section, const std::string& key);
    void write(const std::string& app, File& f);

    std::filesystem::path root_;
    Warn warn_;
    std::map<std::string, File> files_;
};

// Where the user's settings live: $XDG_CONFIG_HOME, else ~/.config.
std::filesystem::path DefaultConfigRoot();

}  // namespace ketrel
