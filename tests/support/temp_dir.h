// temp_dir.h - a directory of a test's own, and whole files in one call.
#pragma once

#include <string>
#include <vector>

// A new empty directory, removed with all that is in it.
class TempDir
{
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir &) = delete;
    TempDir &operator=(const TempDir &) = delete;

    const std::string &path() const
    {
        return path_;
    }

private:
    std::string path_; // ends with "/"
};

// Writes a file, making the directories above it.
void WriteFile(const std::string &path, const std::string &bytes);

// Returns a file's bytes; empty when there is no such file.
std::string ReadFile(const std::string &path);

bool FileExists(const std::string &path);

// Returns the names in a directory, sorted.
std::vector<std::string> ListDir(const std::string &path);
