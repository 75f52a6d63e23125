// settings_table.h - settings tables out of name and value pairs.
#pragma once

#include "qbgrhash.h"

#include <map>
#include <string>

using Values = std::map<std::string, std::string>;

// A settings table with the given values, which it owns.
class SettingsTable
{
public:
    explicit SettingsTable(const Values &values);
    ~SettingsTable();
    SettingsTable(const SettingsTable &) = delete;
    SettingsTable &operator=(const SettingsTable &) = delete;

    operator HTab *() const
    {
        return table_;
    }

private:
    HTab *table_;
};

// The values as the text of a form or a settings file, encoded where they must be.
std::string EncodeSettings(const Values &values);
