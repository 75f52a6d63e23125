// gif_images.cpp - images made for the GIF encoder's tests.

#include "gif_images.h"

#include "qbgraph_state.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

GifImage::GifImage(int32_t width, int32_t height, uint32_t nColors, std::vector<uint8_t> positions)
    : _positions(std::move(positions)), _pixels(_positions), _records(std::make_unique<Records>())
{
    ColorTable *table = &_records->table;
    std::fill(std::begin(table->positions), std::end(table->positions), -1);
    for (uint32_t k = 0; k < nColors; ++k)
    {
        table->used[k] = PaletteColor(k);
        table->positions[table->used[k]] = static_cast<int32_t>(k);
    }
    table->count = nColors;
    table->capacity = nColors;
    for (uint8_t &pixel : _pixels)
    {
        pixel = PaletteColor(pixel);
    }
    _pixels.reserve(1); // an image of no pixels has pixel memory all the same
    _records->pen = {0, 0, 1, 1, 255};
    _records->image = {0, 0, width, height, &_records->pen, table, _pixels.data()};
}

GifImage::Records::~Records()
{
    if (pCurImg == &image)
    {
        pCurImg = nullptr;
    }
}

void GifImage::SetThru(uint8_t position)
{
    _records->table.thruColor = PaletteColor(position);
    _records->table.fThruColor = 1;
}

// The pixels while they are made.
class Painter
{
public:
    std::vector<uint8_t> pixels;

    Painter(std::mt19937 *random, int32_t width, int32_t height, uint32_t nColors)
        : pixels(static_cast<size_t>(width) * static_cast<size_t>(height)), _random(random), _width(width),
          _height(height), _nColors(nColors)
    {
    }

    void Paint(GifPixels kind)
    {
        switch (kind)
        {
        case GifPixels::kFlat:
            std::fill(pixels.begin(), pixels.end(), _Color());
            break;
        case GifPixels::kNoise:
            _Noise();
            break;
        case GifPixels::kStripes:
            _Stripes();
            break;
        case GifPixels::kChart:
            _Chart();
            break;
        case GifPixels::kRuns:
            _Runs();
            break;
        case GifPixels::kDither:
            _Dither();
            break;
        default:
            _ZeroPairs();
        }
    }

private:
    uint32_t _Below(uint32_t n)
    {
        return static_cast<uint32_t>((*_random)() % n);
    }

    uint8_t _Color()
    {
        return static_cast<uint8_t>(_Below(_nColors));
    }

    void _Noise()
    {
        for (uint8_t &pixel : pixels)
        {
            pixel = _Color();
        }
    }

    void _Stripes()
    {
        const uint32_t right = _Below(3);
        const uint32_t down = _Below(3);
        const uint32_t width = 1 + _Below(20);
        for (size_t i = 0; i < pixels.size(); ++i)
        {
            const size_t x = i % static_cast<size_t>(_width);
            const size_t y = i / static_cast<size_t>(_width);
            pixels[i] = static_cast<uint8_t>((x * right + y * down) / width % _nColors);
        }
    }

    void _Box(uint32_t left, uint32_t top, uint32_t width, uint32_t height)
    {
        const uint8_t color = _Color();
        const uint32_t right = std::min(left + width, static_cast<uint32_t>(_width));
        const uint32_t bottom = std::min(top + height, static_cast<uint32_t>(_height));
        for (uint32_t y = top; y < bottom; ++y)
        {
            for (uint32_t x = left; x < right; ++x)
            {
                pixels[y * static_cast<uint32_t>(_width) + x] = color;
            }
        }
    }

    void _Chart()
    {
        const uint32_t width = static_cast<uint32_t>(_width);
        const uint32_t height = static_cast<uint32_t>(_height);
        std::fill(pixels.begin(), pixels.end(), uint8_t{0});
        for (uint32_t i = _Below(12); i > 0; --i)
        {
            _Box(_Below(width), _Below(height), 1 + _Below(width), 1 + _Below(height));
        }
        for (uint32_t i = _Below(20); i > 0; --i)
        {
            const bool fAcross = _Below(2) != 0;
            _Box(_Below(width), _Below(height), fAcross ? width : 1, fAcross ? 1 : height);
        }
        for (uint32_t i = _Below(60); i > 0; --i)
        {
            _Box(_Below(width), _Below(height), 1 + _Below(2), 1 + _Below(3));
        }
    }

    void _Runs()
    {
        const uint32_t longest = 1 + _Below(300);
        for (size_t i = 0; i < pixels.size();)
        {
            const size_t end = std::min(pixels.size(), i + 1 + _Below(longest));
            std::fill(pixels.begin() + static_cast<int64_t>(i), pixels.begin() + static_cast<int64_t>(end), _Color());
            i = end;
        }
    }

    void _Dither()
    {
        for (size_t i = 0; i < pixels.size(); ++i)
        {
            const size_t x = i % static_cast<size_t>(_width);
            const size_t y = i / static_cast<size_t>(_width);
            const size_t level = (x * (_nColors - 1) * 8 / static_cast<size_t>(_width) + _Below(8) + y % 3) / 8;
            pixels[i] = static_cast<uint8_t>(std::min<size_t>(level, _nColors - 1));
        }
    }

    // Codes 16, 32, .. before colours 1, 2, .. share slot 0 of the hash table with code 0 before colour 0.
    void _ZeroPairs()
    {
        const size_t apart = _Below(2000);
        for (size_t i = 0; i < pixels.size(); ++i)
        {
            const bool fAfterZero = i > 0 && pixels[i - 1] == 0;
            pixels[i] = i >= apart && _Below(3) == 0 ? uint8_t{0} : _Color();
            if (i < apart && fAfterZero && pixels[i] == 0)
            {
                pixels[i] = static_cast<uint8_t>(_nColors - 1);
            }
            if (i > 0 && i < apart && pixels[i - 1] == 16)
            {
                pixels[i] = 1;
            }
        }
    }

    std::mt19937 *_random;
    int32_t _width;
    int32_t _height;
    uint32_t _nColors;
};

GifImage RandomGifImage(std::mt19937 *random, GifPixels pixels, int32_t width, int32_t height, uint32_t nColors)
{
    Painter painter(random, width, height, nColors);
    painter.Paint(pixels);
    return GifImage(width, height, nColors, std::move(painter.pixels));
}

std::vector<uint8_t> GifBytes(Image *image, int32_t fInterlaced)
{
    char *text = nullptr;
    size_t size = 0;
    FILE *out = open_memstream(&text, &size);
    if (out == nullptr)
    {
        std::abort();
    }
    ImgToGif(image, fInterlaced, out);
    std::fclose(out);
    std::vector<uint8_t> bytes(text, text + size);
    std::free(text);
    return bytes;
}

std::string FirstDifference(const std::vector<uint8_t> &got, const std::vector<uint8_t> &wanted)
{
    const auto [at, other] = std::mismatch(got.begin(), got.end(), wanted.begin(), wanted.end());
    if (at == got.end() && other == wanted.end())
    {
        return "";
    }
    return "byte " + std::to_string(at - got.begin()) + " of " + std::to_string(got.size()) + ", wanted " +
           std::to_string(wanted.size()) + " bytes";
}
