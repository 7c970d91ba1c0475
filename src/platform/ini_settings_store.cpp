#include "platform/ini_settings_store.h"

#include "platform/text_compare.h"

#include <cctype>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>

namespace ketrel {

namespace {

std::string trim(const std::string& s) {
    std::size_t b = 0, e = s.size();
    while (b < e && std::isspace(static_cast<unsigned char>(s[b])))
        ++b;
    while (e > b && std::isspace(static_cast<unsigned char>(s[e - 1])))
        --e;
    return s.substr(b, e - b);
}

// A value must stay on its line.
std::string oneLine(std::string v) {
    for (char& c : v)
        if (c == '\n' || c == '\r') c = ' ';
    return v;
}

}  // namespace

IniSettingsStore::IniSettingsStore(std::filesystem::path root, Warn warn)
    : root_(std::move(root)), warn_(std::move(warn)) {
    if (!warn_) warn_ = [](const std::string& text) { std::cerr << "ketrel: " << text << '\n'; };
}

std::filesystem::path IniSettingsStore::fileFor(const std::string& app) const {
    return root_ / app / (app + ".ini");
}

IniSettingsStore::File& IniSettingsStore::file(const std::string& app) {
    auto it = files_.find(app);
    if (it != files_.end()) return it->second;
    File& f = files_[app];
    std::ifstream in(fileFor(app), std::ios::binary);
    std::string line;
    Section* current = nullptr;
    while (std::getline(in, line)) {
        line = trim(line);
        if (line.empty() || line[0] == ';' || line[0] == '#') continue;
        if (line.front() == '[' && line.back() == ']') {
            // A section head seen again goes on with the same section, so that the last of
            // a repeated key counts there too.
            std::string name = trim(line.substr(1, line.size() - 2));
            current = nullptr;
            for (Section& s : f.sections)
                if (EqualsNoCase(s.name, name)) current = &s;
            if (!current) {
                f.sections.push_back({name, {}});
                current = &f.sections.back();
            }
            continue;
        }
        auto eq = line.find('=');
        if (eq == std::string::npos || !current) continue;  // not a setting: passed over
        std::string key = trim(line.substr(0, eq));
        if (key.empty()) continue;
        std::string value = trim(line.substr(eq + 1));
        bool found = false;
        for (Entry& e : current->entries) {
            if (EqualsNoCase(e.key, key)) {
                e.value = value;  // the last of repeated keys counts
                found = true;
            }
        }
        if (!found) current->entries.push_back({key, value});
    }
    return f;
}

IniSettingsStore::Entry* IniSettingsStore::find(File& f, const std::string& section,
                                                const std::string& key) {
    for (Section& s : f.sections) {
        if (!EqualsNoCase(s.name, section)) continue;
        for (Entry& e : s.entries)
            if (EqualsNoCase(e.key, key)) return &e;
    }
    return nullptr;
}

std::string IniSettingsStore::get(const std::string& app, const std::string& section,
                                  const std::string& key, const std::string& def) {
    Entry* e = find(file(app), section, key);
    return e ? e->value : def;
}

bool IniSettingsStore::contains(const std::string& app, const std::string& section,
                                const std::string& key) {
    return find(file(app), section, key) != nullptr;
}

void IniSettingsStore::save(const std::string& app, const std::string& section,
                            const std::string& key, const std::string& value) {
    File& f = file(app);
    if (Entry* e = find(f, section, key)) {
        e->value = oneLine(value);
    } else {
        Section* target = nullptr;
        for (Section& s : f.sections)
            if (EqualsNoCase(s.name, section)) target = &s;
        if (!target) {
            f.sections.push_back({section, {}});
            target = &f.sections.back();
        }
        target->entries.push_back({key, oneLine(value)});
    }
    write(app, f);
}

void IniSettingsStore::write(const std::string& app, File& f) {
    std::ostringstream text;
    for (std::size_t i = 0; i < f.sections.size(); ++i) {
        if (i) text << '\n';
        text << '[' << f.sections[i].name << "]\n";
        for (const Entry& e : f.sections[i].entries)
            text << e.key << '=' << e.value << '\n';
    }
    std::filesystem::path path = fileFor(app);
    std::filesystem::path temp = path;
    temp += ".new";
    std::error_code ec;
    std::filesystem::create_directories(path.parent_path(), ec);
    bool ok = !ec;
    if (ok) {
        std::ofstream out(temp, std::ios::binary | std::ios::trunc);
        out << text.str();
        out.close();
        ok = bool(out);
        if (ok) std::filesystem::rename(temp, path, ec);
        if (!ok || ec) {
            ok = false;
            std::filesystem::remove(temp, ec);
        }
    }
    if (!ok && !f.warned) {
        f.warned = true;
        warn_("cannot write the settings file " + path.string() +
              "; settings changed now are kept only until the program ends.");
    }
}

std::filesystem::path DefaultConfigRoot() {
    if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg && *xdg) return xdg;
    if (const char* home = std::getenv("HOME"); home && *home)
        return std::filesystem::path(home) / ".config";
    return std::filesystem::current_path() / ".config";
}

}  // namespace ketrel
