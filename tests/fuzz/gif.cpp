// gif.cpp - writes any image as a GIF file and reads it back.
//
// The input: a byte of flags (1 interlaced, 2 a transparent colour, 4 each further pair of bytes is a run and a pixel,
// 8 the last pixel may have no place in the colour table), the width, the number of colours less one, the transparent
// colour, and the pixels.

#include "gif_checker.h"
#include "gif_images.h"
#include "gif_literal.h"
#include "gif_reader.h"

#include <algorithm>
#include <cstdlib>

using Bytes = std::vector<uint8_t>;

static void _Require(bool fHolds)
{
    if (!fHolds)
    {
        std::abort();
    }
}

static Bytes _Pixels(const uint8_t *data, size_t size, bool fRuns, uint32_t nColors)
{
    Bytes pixels;
    for (size_t i = 0; i < size; ++i)
    {
        size_t count = 1;
        if (fRuns && i + 1 < size)
        {
            count = std::min(size_t{data[i]} * data[i] / 16 + 1, 100000 - std::min<size_t>(pixels.size(), 100000));
            ++i;
        }
        pixels.insert(pixels.end(), count, static_cast<uint8_t>(data[i] % nColors));
    }
    return pixels;
}

static void _RequireRead(const GifPicture &picture, const GifImage &gif, int32_t transparent)
{
    _Require(picture.pixels == gif.positions());
    _Require(picture.transparent == transparent);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 5)
    {
        return 0;
    }
    InitGraph();
    const uint32_t nColors = data[2] + 1u;
    Bytes pixels = _Pixels(data + 4, std::min<size_t>(size - 4, 4096), (data[0] & 4) != 0, nColors);
    const int32_t width = static_cast<int32_t>(std::min<size_t>(data[1] + 1u, pixels.size()));
    const int32_t height = std::min(static_cast<int32_t>(pixels.size()) / width, 65535); // what the file can say
    pixels.resize(static_cast<size_t>(width) * static_cast<size_t>(height));
    GifImage gif(width, height, nColors, std::move(pixels));
    const int32_t transparent = (data[0] & 2) != 0 ? data[3] % static_cast<int32_t>(nColors) : -1;
    if (transparent >= 0)
    {
        gif.SetThru(static_cast<uint8_t>(transparent));
    }
    const bool fBad = (data[0] & 8) != 0 && nColors < 129;
    if (fBad)
    {
        gif.image()->pixels[gif.positions().size() - 1] = GifImage::PaletteColor(nColors);
    }
    const int32_t fInterlaced = data[0] & 1;
    const Bytes file = GifBytes(gif.image(), fInterlaced);
    _Require(file == LiteralGif(*gif.image(), fInterlaced));
    _Require(GetGraphError() == (fBad ? -3 : 0));
    if (!fBad)
    {
        const GifWalk walk = CheckGif(file);
        _Require(walk.wrong.empty());
        _RequireRead(walk.picture, gif, transparent);
        GifPicture picture;
        _Require(DecodeGif(file, &picture).empty());
        _RequireRead(picture, gif, transparent);
    }
    return 0;
}
