// golden.cpp - golden GIFs: decoded by giflib, so that a difference is told in pixels and colours.

#include "golden.h"

#include "gif_reader.h"
#include "qbgraph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace fs = std::filesystem;

using Colour = std::array<uint8_t, 3>;

static std::string _bytesOf(const fs::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// The colour at (x, y); outside the picture, and where it is transparent, white.
static Colour _colourAt(const GifPicture &picture, int32_t x, int32_t y)
{
    const Colour white = {255, 255, 255};
    if (x >= picture.width || y >= picture.height)
    {
        return white;
    }
    const uint8_t pixel =
        picture.pixels[static_cast<size_t>(y) * static_cast<size_t>(picture.width) + static_cast<size_t>(x)];
    return pixel == picture.transparent ? white : picture.palette[pixel];
}

static uint8_t _paletteIndexOf(const Colour &colour)
{
    const auto *entry = std::find_if(std::begin(aRGB), std::end(aRGB),
                                     [&colour](const uint8_t(&rgb)[3])
                                     { return std::equal(std::begin(rgb), std::end(rgb), colour.begin()); });
    return static_cast<uint8_t>(entry == std::end(aRGB) ? 0 : entry - std::begin(aRGB));
}

static void _writeImage(Image *image, const fs::path &path)
{
    FILE *out = std::fopen(path.c_str(), "wb");
    ASSERT_NE(out, nullptr) << path;
    ImgToGif(image, 0, out);
    EXPECT_EQ(std::fclose(out), 0);
    EXPECT_EQ(GetGraphError(), 0) << path;
}

// Three panes side by side: kept, got, and black where they differ.
static void _writeDifference(const GifPicture &kept, const GifPicture &got, const fs::path &path)
{
    const int32_t w = std::max(kept.width, got.width);
    const int32_t h = std::max(kept.height, got.height);
    const Rectangle rect = {0, 0, 3 * w + 2, h};
    InitGraph();
    Image *image = NewImage(&rect, 256);
    ASSERT_NE(image, nullptr);
    SetPenColor(0);
    FillImage();
    for (int32_t y = 0; y < h; y++)
    {
        for (int32_t x = 0; x < w; x++)
        {
            const Colour before = _colourAt(kept, x, y);
            const Colour after = _colourAt(got, x, y);
            const int32_t colours[3] = {_paletteIndexOf(before), _paletteIndexOf(after), before == after ? 0 : 215};
            for (int32_t pane = 0; pane < 3; pane++)
            {
                SetPenColor(colours[pane]);
                MovePenTo(x + pane * (w + 1), y);
                DrawPen();
            }
        }
    }
    _writeImage(image, path);
    KillImage(image);
}

// Says how many pixels differ and where the first one is.
static std::string _describe(const GifPicture &kept, const GifPicture &got)
{
    int64_t count = 0;
    std::string first;
    for (int32_t y = 0; y < std::max(kept.height, got.height); y++)
    {
        for (int32_t x = 0; x < std::max(kept.width, got.width); x++)
        {
            if (_colourAt(kept, x, y) != _colourAt(got, x, y) && count++ == 0)
            {
                first = ", the first at x " + std::to_string(x) + ", y " + std::to_string(y);
            }
        }
    }
    return std::to_string(count) + " pixels differ" + first + "; sizes " + std::to_string(kept.width) + "x" +
           std::to_string(kept.height) + " and " + std::to_string(got.width) + "x" + std::to_string(got.height) +
           (count == 0 ? "; the pictures are the same, their bytes are not" : "");
}

void ExpectGolden(const std::string &name, const std::string &path)
{
    const fs::path kept = fs::path(SOURCE_DIR) / "tests/golden" / (name + ".gif");
    if (std::getenv("QB_REGENERATE") != nullptr)
    {
        fs::create_directories(kept.parent_path());
        fs::copy_file(path, kept, fs::copy_options::overwrite_existing);
        return;
    }
    if (fs::exists(kept) && _bytesOf(kept) == _bytesOf(path))
    {
        return;
    }
    const fs::path folder = fs::path(BUILD_DIR) / "golden";
    const fs::path got = folder / (name + ".got.gif");
    const fs::path difference = folder / (name + ".diff.gif");
    fs::create_directories(got.parent_path());
    fs::copy_file(path, got, fs::copy_options::overwrite_existing);
    GifPicture before = {};
    GifPicture after = {};
    ASSERT_EQ(ReadGif(kept, &before), "") << name << " has no kept picture that can be read; the new one is " << got;
    ASSERT_EQ(ReadGif(got, &after), "") << got;
    _writeDifference(before, after, difference);
    ADD_FAILURE() << name << ": " << _describe(before, after) << "\n  look at " << difference;
}

void ExpectGoldenImage(const std::string &name, Image *image)
{
    std::string file = name;
    std::replace(file.begin(), file.end(), '/', '-');
    const fs::path path = fs::path(BUILD_DIR) / (file + "." + std::to_string(getpid()) + ".gif");
    _writeImage(image, path);
    ExpectGolden(name, path);
    fs::remove(path);
}
