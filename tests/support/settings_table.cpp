// settings_table.cpp - filling a settings table without a form.

#include "settings_table.h"

#include "qbgrutil.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>

SettingsTable::SettingsTable(const Values &values) : table_(NewHTab(29))
{
    table_->releaseValue = [](char *value)
    {
        free(value);
    };
    for (const auto &[name, value] : values)
    {
        HInstall(name.c_str(), table_)->value = StrDup(value.c_str());
    }
}

SettingsTable::~SettingsTable()
{
    KillHTab(table_);
}

static std::string encode(const std::string &value)
{
    std::string text;
    for (const char c : value)
    {
        char code[4];
        std::snprintf(code, sizeof code, "%%%02x", static_cast<unsigned>(static_cast<unsigned char>(c)));
        text += std::isalnum(static_cast<unsigned char>(c)) != 0 ? std::string(1, c) : code;
    }
    return text;
}

std::string EncodeSettings(const Values &values)
{
    std::string text;
    for (const auto &[name, value] : values)
    {
        text += (text.empty() ? "" : "&") + name + "=" + encode(value);
    }
    return text;
}
