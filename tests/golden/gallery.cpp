// gallery.cpp - the pictures, settings and page of docs/gallery and the README's picture are what the program draws.

#include "temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;

static const fs::path _docs = fs::path(SOURCE_DIR) / "docs";

// What the gallery consists of, relative to docs/, in alphabetical order.
static std::vector<std::string> _filesOf(const fs::path &docs)
{
    std::vector<std::string> files = {"gallery.md", "population-bars.png"};
    for (const fs::directory_entry &entry : fs::directory_iterator(docs / "gallery"))
    {
        const std::string ending = entry.path().extension();
        if (ending == ".png" || ending == ".set")
        {
            files.push_back("gallery/" + entry.path().filename().string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

// Pictures may be packed in another way by another version of the tool that made them; only their pixels count.
static bool _isSame(const fs::path &kept, const fs::path &drawn)
{
    if (ReadFile(kept) == ReadFile(drawn))
    {
        return true;
    }
    const std::string compare = "compare -metric AE '" + kept.string() + "' '" + drawn.string() + "' null: 2>/dev/null";
    return kept.extension() == ".png" && std::system(compare.c_str()) == 0;
}

TEST(Gallery, ShowsWhatTheProgramDraws)
{
    const fs::path drawn = fs::path(BUILD_DIR) / "golden/gallery";
    fs::remove_all(drawn);
    const std::string command =
        "python3 " SOURCE_DIR "/docs/gallery/gallery.py '" QBCHART_PATH "' '" + drawn.string() + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    ASSERT_EQ(_filesOf(_docs), _filesOf(drawn)) << "run docs/gallery/regenerate.sh";
    for (const std::string &file : _filesOf(_docs))
    {
        EXPECT_TRUE(_isSame(_docs / file, drawn / file))
            << file << " is out of date: compare it with " << drawn / file << ", then run docs/gallery/regenerate.sh";
    }
}
