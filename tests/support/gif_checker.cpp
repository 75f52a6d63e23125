// gif_checker.cpp - a decoder written for finding fault, not for speed: strings are kept whole.

#include "gif_checker.h"

#include <algorithm>
#include <cstddef>

// A broken rule ends the walk from any depth.
struct BrokenRule
{
    std::string text;
};

static void _Require(bool fHolds, const char *rule)
{
    if (!fHolds)
    {
        throw BrokenRule{rule};
    }
}

// The file from front to back.
class ByteWalk
{
public:
    explicit ByteWalk(const std::vector<uint8_t> &bytes) : _bytes(bytes)
    {
    }

    int32_t Byte()
    {
        _Require(_next < _bytes.size(), "the file ends early");
        return _bytes[_next++];
    }

    int32_t Word()
    {
        const int32_t low = Byte();
        return low | (Byte() << 8);
    }

    bool AtEnd() const
    {
        return _next == _bytes.size();
    }

private:
    const std::vector<uint8_t> &_bytes;
    size_t _next = 0;
};

// The code stream, low bit first.
class BitWalk
{
public:
    explicit BitWalk(const std::vector<uint8_t> &bytes) : _bytes(bytes)
    {
    }

    int32_t Code(int32_t width)
    {
        int32_t code = 0;
        for (int32_t i = 0; i < width; ++i)
        {
            code |= _Bit() << i;
        }
        return code;
    }

    void RequireEnd()
    {
        _Require(_bytes.size() * 8 - _next < 8, "bytes follow the end code");
        while (_next < _bytes.size() * 8)
        {
            _Require(_Bit() == 0, "a padding bit is set");
        }
    }

private:
    int32_t _Bit()
    {
        _Require(_next < _bytes.size() * 8, "the code stream ends without an end code");
        const int32_t bit = (_bytes[_next / 8] >> (_next % 8)) & 1;
        ++_next;
        return bit;
    }

    const std::vector<uint8_t> &_bytes;
    size_t _next = 0;
};

// The strings that the codes stand for. The reader learns a string one code later than the writer.
class StringTable
{
public:
    StringTable(int32_t codeSize, size_t nColors) : _clear(1 << codeSize)
    {
        for (size_t i = 0; i < nColors; ++i)
        {
            _strings[i].assign(1, static_cast<uint8_t>(i));
        }
        Clear();
    }

    void Clear()
    {
        _next = _clear + 2;
        _last = -1;
    }

    // How many codes the writer has in use before it writes the next code.
    int32_t WriterEntries() const
    {
        return _last < 0 ? _next : std::min(_next + 1, 4096);
    }

    // The codes in use for the reader, and for the writer once it has written its last pixel.
    int32_t Entries() const
    {
        return _next;
    }

    const std::vector<uint8_t> &Take(int32_t code)
    {
        _Require(_last >= 0 || code < _clear, "the code after a clear code is not a colour");
        const bool fGrows = _last >= 0 && _next < 4096;
        _Require(code < _next || (code == _next && fGrows), "a code is used before it is known");
        if (fGrows)
        {
            const uint8_t first = (code == _next ? _strings[_last] : _strings[code]).at(0);
            _strings[_next] = _strings[_last];
            _strings[_next++].push_back(first);
        }
        _Require(!_strings[code].empty(), "a colour outside the palette");
        _last = code;
        return _strings[code];
    }

private:
    std::vector<uint8_t> _strings[4096];
    int32_t _clear;
    int32_t _next = 0;
    int32_t _last = -1;
};

static std::vector<uint8_t> _ReadPackets(ByteWalk *file, GifWalk *walk)
{
    std::vector<uint8_t> stream;
    for (int32_t size = file->Byte(); size != 0; size = file->Byte())
    {
        _Require(walk->packets.empty() || walk->packets.back() == 255, "a packet before the last is not full");
        walk->packets.push_back(size);
        for (int32_t i = 0; i < size; ++i)
        {
            stream.push_back(static_cast<uint8_t>(file->Byte()));
        }
    }
    return stream;
}

// Bits of the code that is written while so many codes are in use; the writer widens after the code that follows the
// one by which a number came into use that needs one bit more.
static int32_t _Width(int32_t writerEntries, int32_t codeSize)
{
    int32_t width = codeSize + 1;
    while (width < 12 && writerEntries - 1 > (1 << width) - 1)
    {
        ++width;
    }
    return width;
}

static std::vector<uint8_t> _DecodePixels(const std::vector<uint8_t> &stream, GifWalk *walk)
{
    const int32_t clear = 1 << walk->codeSize;
    StringTable strings(walk->codeSize, walk->picture.palette.size());
    BitWalk bits(stream);
    std::vector<uint8_t> pixels;
    const size_t nPixels = static_cast<size_t>(walk->picture.width) * static_cast<size_t>(walk->picture.height);
    _Require(bits.Code(walk->codeSize + 1) == clear, "the first code is not a clear code");
    walk->nClears = 1;
    int32_t lastWidth = walk->codeSize + 1;
    while (true)
    {
        const int32_t width = _Width(strings.WriterEntries(), walk->codeSize);
        walk->maxWidth = std::max(walk->maxWidth, width);
        const int32_t code = bits.Code(width);
        if (code == clear + 1)
        {
            walk->entriesAtEnd = strings.Entries();
            walk->fWidthGrowsAtEnd = width > lastWidth;
            break;
        }
        lastWidth = width;
        if (code == clear)
        {
            _Require(strings.Entries() == 4096, "a clear code before the table is full");
            strings.Clear();
            ++walk->nClears;
            walk->pixelsAtLastClear = static_cast<int32_t>(pixels.size());
            continue;
        }
        const std::vector<uint8_t> &string = strings.Take(code);
        ++walk->nCodes;
        pixels.insert(pixels.end(), string.begin(), string.end());
        _Require(pixels.size() <= nPixels, "too many pixels");
    }
    bits.RequireEnd();
    _Require(pixels.size() == nPixels, "too few pixels");
    return pixels;
}

static std::vector<uint8_t> _OrderRows(const std::vector<uint8_t> &pixels, const GifPicture &picture)
{
    static const int32_t aFirst[4] = {0, 4, 2, 1};
    static const int32_t aStep[4] = {8, 8, 4, 2};
    std::vector<uint8_t> ordered(pixels.size());
    auto from = pixels.begin();
    for (int32_t pass = 0; pass < 4; ++pass)
    {
        for (int32_t row = aFirst[pass]; row < picture.height; row += aStep[pass])
        {
            std::copy(from, from + picture.width, ordered.begin() + static_cast<std::ptrdiff_t>(row) * picture.width);
            from += picture.width;
        }
    }
    return ordered;
}

static int32_t _WalkScreen(ByteWalk *file, GifWalk *walk)
{
    for (const char c : std::string("GIF89a"))
    {
        _Require(file->Byte() == c, "the signature is not GIF89a");
    }
    walk->picture.width = file->Word();
    walk->picture.height = file->Word();
    const int32_t packed = file->Byte();
    _Require((packed & 0x80) != 0, "no global colour table");
    _Require((packed & 8) == 0, "the colour table says that it is sorted");
    _Require(((packed >> 4) & 7) == (packed & 7), "colour resolution and table size differ");
    const int32_t bpp = (packed & 7) + 1;
    walk->background = file->Byte();
    _Require(walk->background < (1 << bpp), "the background is outside the palette");
    _Require(file->Byte() == 0, "the pixels are not square");
    for (int32_t i = 0; i < 1 << bpp; ++i)
    {
        std::array<uint8_t, 3> colour;
        for (uint8_t &part : colour)
        {
            part = static_cast<uint8_t>(file->Byte());
        }
        walk->picture.palette.push_back(colour);
    }
    return bpp;
}

static void _WalkControl(ByteWalk *file, GifWalk *walk)
{
    _Require(file->Byte() == 0xF9, "an extension that is not a graphic control");
    _Require(file->Byte() == 4, "the graphic control has not 4 bytes");
    _Require(file->Byte() == 1, "the graphic control says more than that a colour is transparent");
    _Require(file->Word() == 0, "a delay");
    walk->picture.transparent = file->Byte();
    const int32_t nColors = static_cast<int32_t>(walk->picture.palette.size());
    _Require(walk->picture.transparent < nColors, "the transparent colour is outside the palette");
    _Require(file->Byte() == 0, "the graphic control does not end");
}

static void _WalkDescriptor(ByteWalk *file, GifWalk *walk)
{
    _Require(file->Word() == 0 && file->Word() == 0, "the image is not in the corner");
    _Require(file->Word() == walk->picture.width && file->Word() == walk->picture.height, "two sizes");
    const int32_t packed = file->Byte();
    _Require((packed & ~0x40) == 0, "the image descriptor says more than that rows are interlaced");
    walk->picture.interlaced = packed != 0;
    _Require(!walk->picture.interlaced || walk->picture.height >= 5, "a low image is interlaced");
}

static void _WalkFile(ByteWalk *file, GifWalk *walk)
{
    const int32_t bpp = _WalkScreen(file, walk);
    int32_t block = file->Byte();
    if (block == 0x21)
    {
        _WalkControl(file, walk);
        block = file->Byte();
    }
    _Require(block == 0x2C, "no image after the colours");
    _WalkDescriptor(file, walk);
    walk->codeSize = file->Byte();
    _Require(walk->codeSize == std::max(2, bpp), "the code size does not fit the palette");
    const std::vector<uint8_t> stream = _ReadPackets(file, walk);
    if (walk->picture.width > 0 && walk->picture.height > 0)
    {
        walk->picture.pixels = _DecodePixels(stream, walk);
    }
    _Require(!walk->picture.pixels.empty() || stream.empty(), "codes for no pixels");
    if (walk->picture.interlaced)
    {
        walk->picture.pixels = _OrderRows(walk->picture.pixels, walk->picture);
    }
    _Require(file->Byte() == 0x3B, "no trailer");
    _Require(file->AtEnd(), "bytes follow the trailer");
}

GifWalk CheckGif(const std::vector<uint8_t> &bytes)
{
    GifWalk walk = {};
    walk.picture.transparent = -1;
    ByteWalk file(bytes);
    try
    {
        _WalkFile(&file, &walk);
    }
    catch (const BrokenRule &rule)
    {
        walk.wrong = rule.text;
    }
    return walk;
}
