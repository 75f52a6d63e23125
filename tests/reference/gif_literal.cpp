// gif_literal.cpp - everything in the order in which the rules are told: all rows first, then all pixels, then all
// codes as single bits, then bytes, then packets.

#include "gif_literal.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>

// The strings learned: 5003 slots of which a key of -1 is empty.
struct LiteralTable
{
    int64_t keys[5003];
    int32_t codes[5003];
};

static int32_t _BitsForColors(uint32_t nColors)
{
    return nColors < 3     ? 1
           : nColors < 5   ? 2
           : nColors < 9   ? 3
           : nColors < 17  ? 4
           : nColors < 33  ? 5
           : nColors < 65  ? 6
           : nColors < 129 ? 7
                           : 8;
}

static std::vector<int32_t> _RowOrder(int32_t height, bool fInterlaced)
{
    std::vector<int32_t> rows;
    const std::array<std::array<int32_t, 2>, 4> passes = {{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};
    for (const auto &[first, step] : passes)
    {
        for (int32_t row = first; fInterlaced && row < height; row += step)
        {
            rows.push_back(row);
        }
    }
    for (int32_t row = 0; !fInterlaced && row < height; ++row)
    {
        rows.push_back(row);
    }
    return rows;
}

static std::vector<int32_t> _Pixels(const Image &image, bool fInterlaced)
{
    std::vector<int32_t> pixels;
    for (const int32_t row : _RowOrder(image.height, fInterlaced))
    {
        for (int32_t x = 0; x < image.width; ++x)
        {
            const uint8_t colour = image.pixels[static_cast<int64_t>(row) * image.width + x];
            pixels.push_back(image.colorTable->positions[colour] & 0xFF);
        }
    }
    return pixels;
}

// The coder; bits holds one bit an entry.
class LiteralCoder
{
public:
    std::vector<bool> bits;
    GifCounts counts = {0, 0, 0};

    // Returns false when a pixel was too large and the codes broke off.
    bool Code(const std::vector<int32_t> &pixels, int32_t maxVal, int32_t initBits)
    {
        _initBits = initBits;
        _width = initBits;
        _clear = 1 << (initBits - 1);
        _next = _clear + 2;
        if (pixels.empty())
        {
            return true;
        }
        bool fBad = pixels[0] > maxVal;
        int32_t prefix = pixels[0];
        _Empty();
        _Emit(_clear);
        for (size_t i = 1; i < pixels.size() && !fBad; ++i)
        {
            fBad = pixels[i] > maxVal;
            prefix = _Extend(prefix, pixels[i]);
        }
        if (!fBad)
        {
            _Emit(prefix);
            _Emit(_clear + 1);
        }
        return !fBad;
    }

private:
    void _Empty()
    {
        std::fill(std::begin(_table.keys), std::end(_table.keys), -1);
        std::fill(std::begin(_table.codes), std::end(_table.codes), 0);
    }

    void _Emit(int32_t code)
    {
        for (int32_t bit = 0; bit < _width; ++bit)
        {
            bits.push_back((code >> bit) & 1);
        }
        if (_fClear)
        {
            _width = _initBits;
            _fClear = false;
        }
        else if (_next > (_width == 12 ? 4096 : (1 << _width) - 1))
        {
            ++_width;
        }
    }

    // The string prefix + pixel: either it is known, or prefix is written and a new string begins.
    int32_t _Extend(int32_t prefix, int32_t pixel)
    {
        const int64_t key = pixel * 4096 + prefix;
        int32_t slot = (pixel * 16) ^ prefix;
        if (_table.keys[slot] == key)
        {
            return _table.codes[slot];
        }
        if (_table.keys[slot] >= 0)
        {
            const int32_t displacement = slot == 0 ? 1 : 5003 - slot;
            do
            {
                ++counts.nProbes;
                slot = slot - displacement < 0 ? slot - displacement + 5003 : slot - displacement;
                if (_table.keys[slot] == key)
                {
                    return _table.codes[slot];
                }
            } while (_table.keys[slot] > 0);
        }
        _Emit(prefix);
        _Learn(slot, key);
        return pixel;
    }

    void _Learn(int32_t slot, int64_t key)
    {
        if (_next < 4096)
        {
            counts.nZeroKeyLost += _table.keys[slot] == 0;
            _table.codes[slot] = _next++;
            _table.keys[slot] = key;
            return;
        }
        ++counts.nResets;
        _Empty();
        _next = _clear + 2;
        _fClear = true;
        _Emit(_clear);
    }

    LiteralTable _table;
    int32_t _initBits = 0;
    int32_t _width = 0;
    int32_t _clear = 0;
    int32_t _next = 0;
    bool _fClear = false;
};

static void _AddWord(std::vector<uint8_t> *file, int32_t value)
{
    file->push_back(static_cast<uint8_t>(value & 0xFF));
    file->push_back(static_cast<uint8_t>((value >> 8) & 0xFF));
}

static void _AddColors(std::vector<uint8_t> *file, const ColorTable &table, int32_t bpp)
{
    for (uint32_t k = 0; k < (1u << bpp); ++k)
    {
        const uint8_t *rgb = aRGB[k < table.count ? table.used[k] : 0];
        file->insert(file->end(), rgb, rgb + 3);
    }
}

// Packets of 255 bytes; what is left over makes one more, unless the codes broke off.
static void _AddPackets(std::vector<uint8_t> *file, const std::vector<bool> &bits, bool fWhole)
{
    std::vector<uint8_t> bytes((bits.size() + (fWhole ? 7 : 0)) / 8);
    for (size_t i = 0; i < bytes.size() * 8 && i < bits.size(); ++i)
    {
        bytes[i / 8] = static_cast<uint8_t>(bytes[i / 8] | (bits[i] << (i % 8)));
    }
    for (size_t start = 0; start < bytes.size(); start += 255)
    {
        const size_t size = bytes.size() - start < 255 ? bytes.size() - start : 255;
        if (size < 255 && !fWhole)
        {
            return;
        }
        file->push_back(static_cast<uint8_t>(size));
        for (size_t i = 0; i < size; ++i)
        {
            file->push_back(bytes[start + i]);
        }
    }
}

static void _AddHeader(std::vector<uint8_t> *file, const Image &image, int32_t bpp, bool fInterlaced)
{
    for (const char c : std::string("GIF89a"))
    {
        file->push_back(static_cast<uint8_t>(c));
    }
    const ColorTable &table = *image.colorTable;
    _AddWord(file, image.width);
    _AddWord(file, image.height);
    file->push_back(static_cast<uint8_t>(0x80 | (bpp - 1) * 16 | (bpp - 1)));
    file->push_back(table.background);
    file->push_back(0);
    _AddColors(file, table, bpp);
    if (table.fThruColor == 1)
    {
        const uint8_t thru = static_cast<uint8_t>(table.positions[table.thruColor]);
        file->insert(file->end(), {0x21, 0xF9, 4, 1, 0, 0, thru, 0});
    }
    file->insert(file->end(), {0x2C, 0, 0, 0, 0});
    _AddWord(file, image.width);
    _AddWord(file, image.height);
    file->push_back(fInterlaced ? 0x40 : 0);
}

std::vector<uint8_t> LiteralGif(const Image &image, int32_t fInterlaced, GifCounts *counts)
{
    const int32_t bpp = _BitsForColors(image.colorTable->count);
    const bool fPasses = fInterlaced != 0 && image.height >= 5;
    const int32_t codeSize = bpp < 2 ? 2 : bpp;
    std::vector<uint8_t> file;
    _AddHeader(&file, image, bpp, fPasses);
    file.push_back(static_cast<uint8_t>(codeSize));
    LiteralCoder coder;
    const bool fWhole = coder.Code(_Pixels(image, fPasses), (1 << bpp) - 1, codeSize + 1);
    _AddPackets(&file, coder.bits, fWhole);
    if (fWhole)
    {
        file.push_back(0);
        file.push_back(0x3B);
    }
    if (counts != nullptr)
    {
        *counts = coder.counts;
    }
    return file;
}
