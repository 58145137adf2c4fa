#pragma once
// The per-user settings store on QSettings: one INI file per user,
// application "Tessuma", one group per section.

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "forms/Ports.h"

class QSettings;

class QtSettingsStore : public ISettingsStore {
public:
    QtSettingsStore();
    // A store in a given file (tests, or a portable copy of the game).
    explicit QtSettingsStore(const std::string& iniPath);
    ~QtSettingsStore() override;

    std::string Get(const std::string& app, const std::string& section, const std::string& key) override;
    void Save(const std::string& app, const std::string& section, const std::string& key,
              const std::string& value) override;
    bool Has(const std::string& app, const std::string& section, const std::string& key) override;

    // Where the store lives, for the player's guide and for tests.
    std::string FileName() const;

private:
    std::unique_ptr<QSettings> settings_;
    // The settings of this session only, when the file can't be used.
    std::optional<std::map<std::string, std::string>> memory_;
};
