// gif_decoders.cpp - random images written as GIF files, and read back by every decoder at hand.
//
// Each file is compared with the literal coder's to the byte and walked strictly, and giflib, ImageMagick, ffmpeg and
// Pillow must find the same pixels, palette and transparent colour in it. The other programs start slowly and read a
// folder of files at a time. QB_GIF_IMAGES says how many images there are, 3000 unless it is set.

#include "gif_checker.h"
#include "gif_images.h"
#include "gif_literal.h"
#include "gif_reader.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

using Bytes = std::vector<uint8_t>;

// One image and what is to be found in its file.
struct GifCase
{
    GifImage gif;
    int32_t fInterlaced;
    GifPicture wanted;
    Bytes file;
    std::string name; // for messages
};

static GifPicture _Wanted(GifImage *gif, int32_t transparent, int32_t fInterlaced)
{
    const Image &image = *gif->image();
    GifPicture wanted = {image.width, image.height, gif->positions(), {}, transparent, false};
    wanted.interlaced = fInterlaced != 0 && image.height >= 5;
    size_t nEntries = 2;
    while (nEntries < image.colorTable->count)
    {
        nEntries *= 2;
    }
    for (size_t k = 0; k < nEntries; ++k)
    {
        const uint8_t *rgb = aRGB[k < image.colorTable->count ? image.colorTable->used[k] : 0];
        wanted.palette.push_back({rgb[0], rgb[1], rgb[2]});
    }
    return wanted;
}

static uint32_t _RandomColors(std::mt19937 *random)
{
    const uint32_t most = 2u << ((*random)() % 8); // as many images of each bit depth
    return 1 + static_cast<uint32_t>((*random)() % most);
}

static GifCase _RandomCase(std::mt19937 *random, int32_t width, int32_t height)
{
    const uint32_t nColors = _RandomColors(random);
    const uint32_t kind = static_cast<uint32_t>((*random)() % static_cast<uint32_t>(GifPixels::kCount));
    GifImage gif = RandomGifImage(random, static_cast<GifPixels>(kind), width, height, nColors);
    int32_t transparent = -1;
    if ((*random)() % 3 == 0)
    {
        transparent = static_cast<int32_t>((*random)() % nColors);
        gif.SetThru(static_cast<uint8_t>(transparent));
    }
    const int32_t fInterlaced = static_cast<int32_t>((*random)() % 2);
    GifPicture wanted = _Wanted(&gif, transparent, fInterlaced);
    Bytes file = GifBytes(gif.image(), fInterlaced);
    const std::string name = std::to_string(width) + "x" + std::to_string(height) + ", " + std::to_string(nColors) +
                             " colours, kind " + std::to_string(kind);
    return {std::move(gif), fInterlaced, std::move(wanted), std::move(file), name};
}

static void _ExpectPicture(const GifPicture &got, const GifCase &wanted, const char *reader)
{
    EXPECT_EQ(got.width, wanted.wanted.width) << reader << ": " << wanted.name;
    EXPECT_EQ(got.height, wanted.wanted.height) << reader << ": " << wanted.name;
    EXPECT_EQ(FirstDifference(got.pixels, wanted.wanted.pixels), "") << reader << ": " << wanted.name;
    EXPECT_EQ(got.palette, wanted.wanted.palette) << reader << ": " << wanted.name;
    EXPECT_EQ(got.transparent, wanted.wanted.transparent) << reader << ": " << wanted.name;
    EXPECT_EQ(got.interlaced, wanted.wanted.interlaced) << reader << ": " << wanted.name;
}

static void _CheckInProcess(GifCase *one)
{
    const Bytes literal = LiteralGif(*one->gif.image(), one->fInterlaced);
    EXPECT_EQ(FirstDifference(one->file, literal), "") << one->name;
    const GifWalk walk = CheckGif(one->file);
    EXPECT_EQ(walk.wrong, "") << one->name;
    _ExpectPicture(walk.picture, *one, "walk");
    GifPicture picture;
    EXPECT_EQ(DecodeGif(one->file, &picture), "") << one->name;
    _ExpectPicture(picture, *one, "giflib");
}

// What another program printed, from front to back.
class Output
{
public:
    explicit Output(const std::filesystem::path &path)
    {
        std::ifstream file(path, std::ios::binary);
        _bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }

    // The next count bytes; zeros when there are not so many.
    Bytes Take(size_t count)
    {
        Bytes part(count);
        const size_t got = std::min(count, _bytes.size() - _next);
        std::copy_n(_bytes.begin() + static_cast<int64_t>(_next), got, part.begin());
        _next += got;
        _fEnough = _fEnough && got == count;
        return part;
    }

    std::string TakeUntil(const std::string &mark)
    {
        const auto from = _bytes.begin() + static_cast<int64_t>(_next);
        const auto at = std::search(from, _bytes.end(), mark.begin(), mark.end());
        _fEnough = _fEnough && at != _bytes.end();
        _next = at == _bytes.end() ? _bytes.size() : static_cast<size_t>(at - _bytes.begin()) + mark.size();
        return std::string(from, at);
    }

    void ExpectRead() const
    {
        EXPECT_TRUE(_fEnough && _next == _bytes.size());
    }

private:
    Bytes _bytes;
    size_t _next = 0;
    bool _fEnough = true;
};

static std::vector<std::array<uint8_t, 3>> _Palette(const Bytes &bytes)
{
    std::vector<std::array<uint8_t, 3>> palette(bytes.size() / 3);
    std::memcpy(palette.data(), bytes.data(), palette.size() * 3);
    return palette;
}

// The files of a batch, 0000.gif and so on, in a folder that ends with the batch.
class Folder
{
public:
    explicit Folder(const std::vector<GifCase> &cases)
    {
        std::string path = (std::filesystem::temp_directory_path() / "gif_decoders_XXXXXX").string();
        EXPECT_NE(mkdtemp(path.data()), nullptr);
        _path = path;
        for (size_t i = 0; i < cases.size(); ++i)
        {
            const std::string number = std::to_string(10000 + i).substr(1);
            std::ofstream file(_path / (number + ".gif"), std::ios::binary);
            std::copy(cases[i].file.begin(), cases[i].file.end(), std::ostreambuf_iterator<char>(file));
        }
    }

    ~Folder()
    {
        std::filesystem::remove_all(_path);
    }

    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;

    // Runs a command in the folder and reads the file "out" that it makes.
    Output Run(const std::string &command) const
    {
        EXPECT_EQ(std::system(("cd '" + _path.string() + "' && " + command).c_str()), 0) << command;
        return Output(_path / "out");
    }

private:
    std::filesystem::path _path;
};

static int32_t _HeaderNumber(const std::string &header, const std::string &key)
{
    const size_t at = header.find(key + "=");
    return at == std::string::npos
               ? -1
               : static_cast<int32_t>(std::strtol(header.c_str() + at + key.size() + 1, nullptr, 10));
}

// ImageMagick keeps palette and positions in its own format: a header as text, the palette, and for each pixel its
// position and, with a transparent colour, how opaque it is.
static void _CheckImageMagick(const Folder &folder, const std::vector<GifCase> &cases)
{
    Output out = folder.Run("/usr/bin/convert *.gif -compress none miff:out");
    for (const GifCase &one : cases)
    {
        const std::string header = out.TakeUntil("\f\n:\x1a");
        GifPicture got = one.wanted;
        got.width = _HeaderNumber(header, "columns");
        got.height = _HeaderNumber(header, "rows");
        const bool fMatte = header.find("matte=True") != std::string::npos;
        EXPECT_EQ(fMatte, one.wanted.transparent >= 0) << one.name;
        ASSERT_EQ(header.find("class=DirectClass"), std::string::npos) << one.name;
        got.palette = _Palette(out.Take(3 * static_cast<size_t>(_HeaderNumber(header, "colors"))));
        for (uint8_t &pixel : got.pixels)
        {
            const Bytes entry = out.Take(fMatte ? 2 : 1);
            pixel = entry[0];
            const bool fClear = fMatte && entry[1] == 0;
            ASSERT_EQ(fClear, pixel == one.wanted.transparent) << one.name;
        }
        _ExpectPicture(got, one, "ImageMagick");
    }
    out.ExpectRead();
}

// ffmpeg gives blue, green, red and how opaque the pixel is; what is not opaque has no colour.
static void _CheckFfmpeg(const Folder &folder, const std::vector<GifCase> &cases)
{
    Output out = folder.Run("ffmpeg -nostdin -y -v error -f image2 -c:v gif -i %04d.gif -vsync passthrough -f rawvideo "
                            "-pix_fmt bgra out");
    for (const GifCase &one : cases)
    {
        Bytes wanted;
        for (const uint8_t pixel : one.wanted.pixels)
        {
            const std::array<uint8_t, 3> &rgb = one.wanted.palette[pixel];
            const bool fClear = pixel == one.wanted.transparent;
            wanted.insert(wanted.end(), {rgb[2], rgb[1], rgb[0], static_cast<uint8_t>(fClear ? 0 : 255)});
        }
        Bytes got = out.Take(wanted.size());
        for (size_t i = 0; i < got.size(); i += 4)
        {
            if (got[i + 3] == 0)
            {
                std::copy_n(wanted.begin() + static_cast<int64_t>(i), 3, got.begin() + static_cast<int64_t>(i));
            }
        }
        EXPECT_EQ(FirstDifference(got, wanted), "") << "ffmpeg: " << one.name;
    }
    out.ExpectRead();
}

static void _CheckPillow(const Folder &folder, const std::vector<GifCase> &cases)
{
    Output out = folder.Run("/usr/bin/python3 " SOURCE_DIR "/tests/support/read_gifs.py *.gif > out");
    for (const GifCase &one : cases)
    {
        GifPicture got = one.wanted;
        int32_t aHeader[4];
        std::memcpy(aHeader, out.Take(sizeof aHeader).data(), sizeof aHeader);
        got.width = aHeader[0];
        got.height = aHeader[1];
        got.transparent = aHeader[2];
        got.palette = _Palette(out.Take(3 * static_cast<size_t>(aHeader[3])));
        got.pixels = out.Take(got.pixels.size());
        _ExpectPicture(got, one, "Pillow");
    }
    out.ExpectRead();
}

// 1 to 300 pixels, small ones more often; the first batches have the extremes.
static int32_t _RandomSide(std::mt19937 *random, int32_t batch, int32_t bit)
{
    if (batch < 4)
    {
        return (batch & bit) != 0 ? 300 : 1;
    }
    const uint32_t most = 1 + static_cast<uint32_t>((*random)() % 300);
    return 1 + static_cast<int32_t>((*random)() % most);
}

TEST(GifDecoders, EveryDecoderFindsTheImageThatWasWritten)
{
    const char *text = std::getenv("QB_GIF_IMAGES");
    const int64_t nImages = text != nullptr ? std::strtol(text, nullptr, 10) : 3000;
    ASSERT_GT(nImages, 0);
    const int32_t batchSize = 50;
    InitGraph();
    for (int32_t batch = 0; batch < (nImages + batchSize - 1) / batchSize; ++batch)
    {
        std::mt19937 random(static_cast<uint32_t>(batch) + 1);
        const int32_t width = _RandomSide(&random, batch, 1);
        const int32_t height = _RandomSide(&random, batch, 2);
        std::vector<GifCase> cases;
        for (int32_t i = 0; i < batchSize; ++i)
        {
            cases.push_back(_RandomCase(&random, width, height));
            _CheckInProcess(&cases.back());
        }
        const Folder folder(cases);
        _CheckImageMagick(folder, cases);
        _CheckFfmpeg(folder, cases);
        _CheckPillow(folder, cases);
        ASSERT_FALSE(HasFailure()) << "batch " << batch;
    }
}
