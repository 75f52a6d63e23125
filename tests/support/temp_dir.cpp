// temp_dir.cpp - files and directories by way of the standard library.

#include "temp_dir.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

TempDir::TempDir()
{
    std::string name = (std::filesystem::temp_directory_path() / "qbXXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
    {
        std::abort();
    }
    path_ = name + "/";
}

TempDir::~TempDir()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void WriteFile(const std::string &path, const std::string &bytes)
{
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string ReadFile(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool FileExists(const std::string &path)
{
    return std::filesystem::exists(path);
}

std::vector<std::string> ListDir(const std::string &path)
{
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(path))
    {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}
