// qbgraph_gif.cpp - writes an image as a GIF file.
//
// The file, in order: header, logical screen, global colour table, graphic control extension (only with a transparent
// colour), image descriptor, code size, packets of codes, an empty packet, trailer. Numbers of two bytes have the low
// byte first.
//
// The codes are LZW of 3 to 12 bits. What they say was settled by a coder that kept its strings in a hash table of 5003
// slots, under the key pixel << 12 | prefix code: home slot pixel << 4 ^ prefix, and from slot i on in steps of 5003 -
// i downwards (1 from slot 0) until the key or a free slot is met. Files are to stay the same to the byte, but that
// table is too slow, so strings are found in other ways here:
//
// - Up to 5 bits a pixel, each code has a row of the codes that follow it, one for each pixel value, and the strings
//   that differ only in how often they repeat their last pixel form a chain, in which a run of pixels is one step.
// - Above that, a larger hash table, whose places hold lists of codes.
//
// Both are exact, and the old table was too, but for one thing. While it probed, key 0 (pixel 0 after code 0) counted
// as free, and so could be overwritten. Not in its home, slot 0, because no probe that starts elsewhere comes there
// before it has been everywhere. But when a string with the same home (pixel k after code 16 k) was learned first, key
// 0 lies where others probe. From then on until the next clear code the keys are entered in such a table as well, and
// when key 0 is hit, its string is forgotten. Nothing else is ever lost: a slot once taken by another key stays taken,
// so that every probe finds its way again.
//
// Sections: state, writing, packets and codes, lost strings, strings by rows and chains, strings by hash, rows, coder,
// blocks of the file.

#include "qbgraph_gif_state.h"
#include "qbgraph_state.h"

#include <bit>
#include <cstdlib>
#include <cstring>

// State

static const int32_t _maxBits = 12;     // widest code
static const int32_t _codeLimit = 4096; // codes of that width
static const int32_t _hSize = 5003;     // slots; a prime, of which 4096 codes fill 82%
static const int32_t _packetSize = 255; // the most that a packet's count byte can say
static const int32_t _maxRowBits = 5;   // rows of codes up to here: 256 KB; a bit more would leave the cache
static const int32_t _hashBits = 15;    // 64 KB, of which 4096 codes fill an eighth: hardly a place is shared

// What is being written and where the coder is. ImgToGif, _InitImageVars and _InitCoder set all of it for each image,
// but for the bit accumulator, which _Compress leaves at 0.
static FILE *_pOut;           // not owned
static int32_t _fInterlaced;  // 1: rows in four passes
static int32_t _pass;         // interlace pass, 0 to 3
static int32_t _curY;         // row at _pBuf
static const uint8_t *_pBuf;  // the row of pixels that is next
static int32_t _maxVal;       // largest position that the code size has room for
static uint8_t _aValues[256]; // by palette index: the position in the written colour table
static uint8_t _aPacket[258]; // count byte, 255 code bytes that wait for being written, room for the rest of a code
static int32_t _packetCount;  // code bytes in it, below 255 between codes
static int32_t _bits;         // bits a pixel, at least 2
static int32_t _CLEARCode;    // 1 << _bits
static int32_t _EOICode;      // the one after
static int32_t _nextEntry;    // next free code
static int32_t _nBits;        // current code width
static int32_t _maxCode;      // largest code before the width grows
uint32_t _curCode = 0;
int32_t _curBits = 0;
int32_t *_pHTab = nullptr;
uint16_t *_pCodeTab = nullptr;
static int32_t _aKeys[_codeLimit]; // by code: pixel << 12 | prefix

// The watch for the string that can be lost. _StartTable sets all of it.
static struct _ZeroKeyWatch
{
    bool fSlot0Taken; // a key whose home is slot 0 has been learned
    bool fOn;         // key 0 lies where it can be overwritten: _pHTab holds all keys
    int32_t zeroCode; // the code of key 0, while it has one
} _watch;

// A code as a string that ends in a run of one pixel value.
struct _CodeNode
{
    uint16_t chain;  // the first code of its chain, whose run is 1 pixel long
    uint16_t length; // pixels of the run at the end
};

// The codes that differ in the length of that run, 1 to length.
struct _CodeChain
{
    uint16_t start; // in the pool, where the code for length 1 stands; of no meaning while length is 1
    uint16_t length;
};

// A chain's room in the pool is 4 at first and is doubled by moving, which is below 4 entries a code, gaps included.
static const int32_t _poolSize = 4 * _codeLimit;

// The strings by rows and chains. _StartTable sets nodes and chains of the pixel values; rows are 0 from _nextEntry on,
// and all rows between images.
static uint16_t _aRows[_codeLimit << _maxRowBits]; // by code << _bits | pixel: the code of the two; 0: none
static _CodeNode _aNodes[_codeLimit];
static _CodeChain _aChains[_codeLimit]; // by first code
static uint16_t _aPool[_poolSize];
static int32_t _poolCount;
static int32_t _lastVal; // the pixel coded last

// The strings by hash: the code learned last of those that share a place, 0: none; _pCodeTab leads to the one before.
// All is 0 between images.
static uint16_t _aFirst[1 << _hashBits];

// Writing: each returns 1, or 0 with the error set.

static int32_t _WriteBytes(const void *bytes, size_t count)
{
    if (fwrite(bytes, 1, count, _pOut) != count || ferror(_pOut))
    {
        _graphErr = -3;
        return 0;
    }
    return 1;
}

static int32_t _WriteGifByte(int32_t value)
{
    if (putc(value, _pOut) == EOF)
    {
        _graphErr = -3;
        return 0;
    }
    return 1;
}

static int32_t _WriteGifWord(int32_t value)
{
    return _WriteGifByte(value & 0xFF) && _WriteGifByte((value >> 8) & 0xFF);
}

static int32_t _FlushOutput()
{
    if (fflush(_pOut) != 0)
    {
        _graphErr = -3;
        return 0;
    }
    return 1;
}

// Packets and codes

static void _InitPacket()
{
    _packetCount = 0;
}

// Writes the pending packet. A code may have brought one byte more than fits; it begins the next packet.
static void _OutputPacket()
{
    if (_packetCount == 0)
    {
        return;
    }
    const int32_t size = _packetCount < _packetSize ? _packetCount : _packetSize;
    _aPacket[0] = static_cast<uint8_t>(size);
    _WriteBytes(_aPacket, static_cast<size_t>(size) + 1);
    _packetCount -= size;
    _aPacket[1] = _aPacket[1 + size];
}

static void _SetWidth(int32_t bits)
{
    _nBits = bits;
    _maxCode = bits == _maxBits ? _codeLimit : (1 << bits) - 1;
}

// At most 7 bits wait and 12 come: 2 whole bytes. Both are stored and those that are whole are counted. The width
// changes after the code, so that a reader, which learns a string one code later, changes at the same one.
static inline void _OutputCode(int32_t code)
{
    _curCode |= static_cast<uint32_t>(code) << _curBits;
    _curBits += _nBits;
    _aPacket[1 + _packetCount] = static_cast<uint8_t>(_curCode);
    _aPacket[2 + _packetCount] = static_cast<uint8_t>(_curCode >> 8);
    _packetCount += _curBits >> 3;
    _curCode >>= _curBits & ~7;
    _curBits &= 7;
    if (_packetCount >= _packetSize)
    {
        _OutputPacket();
    }
    if (_nextEntry > _maxCode)
    {
        _SetWidth(_nBits + 1);
    }
}

static void _OutputEnd()
{
    _OutputCode(_EOICode);
    if (_curBits > 0)
    {
        _aPacket[1 + _packetCount++] = static_cast<uint8_t>(_curCode);
    }
    _OutputPacket();
}

// Lost strings

static void _ClearHTab()
{
    memset(_pHTab, 0xFF, _hSize * sizeof *_pHTab);
}

// Enters a key; true: in the place of key 0.
static bool _StoreKey(int32_t key)
{
    int32_t slot = (key >> _maxBits << 4) ^ (key & (_codeLimit - 1));
    const int32_t step = slot == 0 ? 1 : _hSize - slot;
    if (_pHTab[slot] >= 0) // key 0 is passed over in a string's home, though not later
    {
        do
        {
            slot -= step;
            slot += slot < 0 ? _hSize : 0;
        } while (_pHTab[slot] > 0);
    }
    const bool fLost = _pHTab[slot] == 0;
    _pHTab[slot] = key;
    return fLost;
}

// Makes pixel 0 after code 0 an unknown string.
static void _ForgetZeroKey()
{
    _aKeys[_watch.zeroCode] = -1;
    _aRows[0] = 0;
    _aChains[0].length = 1;
}

// Keeps the watch when a key has got its code: at every key once the watch is on, before at those of slot 0.
static void _WatchZeroKey(int32_t key, int32_t code)
{
    if (_watch.fOn && _StoreKey(key))
    {
        _ForgetZeroKey();
    }
    if (key == 0)
    {
        _watch.zeroCode = code;
    }
    if (!_watch.fOn && _watch.fSlot0Taken && key == 0)
    {
        _watch.fOn = true;
        _ClearHTab();
        for (int32_t known = _CLEARCode + 2; known <= code; ++known)
        {
            _StoreKey(_aKeys[known]);
        }
    }
    _watch.fSlot0Taken = true;
}

static void _ForgetStrings()
{
    if (_bits <= _maxRowBits)
    {
        memset(_aRows, 0, (static_cast<size_t>(_nextEntry) << _bits) * sizeof *_aRows);
        return;
    }
    memset(_aFirst, 0, sizeof _aFirst);
}

static void _StartTable()
{
    _nextEntry = _CLEARCode + 2;
    _watch = {false, false, 0};
    _poolCount = 0;
    for (int32_t value = 0; _bits <= _maxRowBits && value < _CLEARCode; ++value)
    {
        _aNodes[value] = {static_cast<uint16_t>(value), 1};
        _aChains[value] = {0, 1};
    }
}

static void _ResetParams()
{
    _OutputCode(_CLEARCode);
    _ForgetStrings();
    _StartTable();
    _SetWidth(_bits + 1);
}

// Writes prefix, and gives prefix + pixel a code, which it returns; 0: there was none left, and all codes are free
// again. The caller stores the string and then calls _Learned.
static inline int32_t _OutputAndLearn(int32_t prefix, int32_t pixel)
{
    _OutputCode(prefix);
    if (_nextEntry == _codeLimit)
    {
        _ResetParams();
        return 0;
    }
    const int32_t code = _nextEntry++;
    _aKeys[code] = pixel << _maxBits | prefix;
    return code;
}

static inline void _Learned(int32_t prefix, int32_t pixel, int32_t code)
{
    if (_watch.fOn || prefix == pixel << 4)
    {
        _WatchZeroKey(pixel << _maxBits | prefix, code);
    }
}

// A pixel that has no place in the colour table is no part of any string: what came before it is written, with the
// clear code if that is due, and the coder stops.
static void _StopAtBadPixel(int32_t prefix)
{
    _graphErr = -3;
    _OutputCode(prefix);
    if (_nextEntry == _codeLimit)
    {
        _OutputCode(_CLEARCode);
    }
}

// Strings by rows and chains

// Learns prefix + pixel, where pixel is not what prefix ends in.
static void _LearnChain(int32_t prefix, int32_t pixel)
{
    const int32_t code = _OutputAndLearn(prefix, pixel);
    if (code != 0)
    {
        _aRows[prefix << _bits | pixel] = static_cast<uint16_t>(code);
        _aNodes[code] = {static_cast<uint16_t>(code), 1};
        _aChains[code] = {0, 1};
        _Learned(prefix, pixel, code);
    }
}

// Makes room for one more code in a chain.
static void _GrowChain(_CodeChain *chain, uint16_t firstCode)
{
    if (chain->length == 1)
    {
        _aPool[_poolCount] = firstCode;
        chain->start = static_cast<uint16_t>(_poolCount);
        _poolCount += 4;
    }
    else if (chain->length >= 4 && (chain->length & (chain->length - 1)) == 0)
    {
        memcpy(_aPool + _poolCount, _aPool + chain->start, chain->length * sizeof *_aPool);
        chain->start = static_cast<uint16_t>(_poolCount);
        _poolCount += 2 * chain->length;
    }
}

// Learns the string that is one longer than the longest of a chain, prefix.
static void _LengthenChain(uint16_t firstCode, int32_t prefix, int32_t pixel)
{
    const int32_t code = _OutputAndLearn(prefix, pixel);
    if (code == 0)
    {
        return;
    }
    _aRows[prefix << _bits | pixel] = static_cast<uint16_t>(code);
    _CodeChain *chain = &_aChains[firstCode];
    _GrowChain(chain, firstCode);
    _aPool[chain->start + chain->length] = static_cast<uint16_t>(code);
    _aNodes[code] = {firstCode, ++chain->length};
    _Learned(prefix, pixel, code);
}

// Codes count more of the pixels that prefix ends in; returns the new prefix.
static int32_t _CodeRun(int32_t prefix, int32_t pixel, int64_t count)
{
    while (count > 0 && _graphErr == 0)
    {
        const _CodeNode node = _aNodes[prefix];
        const _CodeChain chain = _aChains[node.chain];
        const int32_t known = chain.length - node.length;
        if (count <= known)
        {
            return _aPool[chain.start + node.length + count - 1];
        }
        count -= known + 1;
        _LengthenChain(node.chain, known > 0 ? _aPool[chain.start + chain.length - 1] : prefix, pixel);
        prefix = pixel;
    }
    return prefix;
}

// How many equal bytes there are at the front of 8 that are not all equal; differ: their bits that are not.
static int32_t _EqualBytes(uint64_t differ)
{
    return (std::endian::native == std::endian::little ? std::countr_zero(differ) : std::countl_zero(differ)) / 8;
}

// The first byte after from that is another value, or the end.
static const uint8_t *_RunEnd(const uint8_t *from, const uint8_t *end)
{
    const uint8_t value = *from++;
    if (from == end || *from != value)
    {
        return from;
    }
    const uint64_t all = value * 0x0101010101010101u;
    uint64_t aWord[4];
    for (; end - from >= 32; from += 32)
    {
        memcpy(aWord, from, 32);
        if (((aWord[0] ^ all) | (aWord[1] ^ all) | (aWord[2] ^ all) | (aWord[3] ^ all)) != 0)
        {
            break;
        }
    }
    for (; end - from >= 8; from += 8)
    {
        memcpy(aWord, from, 8);
        if (aWord[0] != all)
        {
            return from + _EqualBytes(aWord[0] ^ all);
        }
    }
    while (from < end && *from == value)
    {
        ++from;
    }
    return from;
}

static int32_t _CodeRuns(const uint8_t *from, const uint8_t *end, int32_t prefix)
{
    while (from < end && _graphErr == 0)
    {
        const int32_t pixel = _aValues[*from];
        const uint8_t *next = _RunEnd(from, end);
        int64_t count = next - from;
        from = next;
        if (pixel > _maxVal)
        {
            _StopAtBadPixel(prefix);
            break;
        }
        if (pixel != _lastVal) // else a run goes on from the row before
        {
            _lastVal = pixel;
            const int32_t code = _aRows[prefix << _bits | pixel];
            if (code == 0)
            {
                _LearnChain(prefix, pixel);
            }
            prefix = code != 0 ? code : pixel;
            --count;
        }
        prefix = _CodeRun(prefix, pixel, count);
    }
    return prefix;
}

// Strings by hash

// The place of a key: the golden ratio spreads neighbours.
static uint32_t _HashPlace(int32_t key)
{
    return (static_cast<uint32_t>(key) * 2654435769u) >> (32 - _hashBits);
}

static int32_t _CodePixels(const uint8_t *from, const uint8_t *end, int32_t prefix)
{
    for (; from < end && _graphErr == 0; ++from)
    {
        const int32_t pixel = _aValues[*from];
        if (pixel > _maxVal)
        {
            _StopAtBadPixel(prefix);
            break;
        }
        const int32_t key = pixel << _maxBits | prefix;
        uint16_t *pFirst = &_aFirst[_HashPlace(key)];
        int32_t code = *pFirst;
        while (code != 0 && _aKeys[code] != key)
        {
            code = _pCodeTab[code];
        }
        if (code != 0)
        {
            prefix = code;
            continue;
        }
        code = _OutputAndLearn(prefix, pixel);
        if (code != 0)
        {
            _pCodeTab[code] = *pFirst;
            *pFirst = static_cast<uint16_t>(code);
            _Learned(prefix, pixel, code);
        }
        prefix = pixel;
    }
    return prefix;
}

// Rows

static void _StartRow(int32_t row)
{
    _curY = row;
    _pBuf = pCurBuf + static_cast<int64_t>(row) * curW;
}

// To the next row of an interlaced image: 0, 8, 16 ..; 4, 12 ..; 2, 6, 10 ..; 1, 3, 5 .. Returns 0 after the last.
static int32_t _NextInterlacedRow()
{
    static const int32_t aStep[4] = {8, 8, 4, 2};
    static const int32_t aFirstRow[4] = {0, 4, 2, 1};

    if (curH - _curY > aStep[_pass])
    {
        _StartRow(_curY + aStep[_pass]);
        return 1;
    }
    if (_pass == 3)
    {
        return 0;
    }
    ++_pass;
    _StartRow(aFirstRow[_pass]);
    return 1;
}

// Coder

static void _InitCoder(int32_t initBits)
{
    _bits = initBits - 1;
    _SetWidth(initBits);
    _CLEARCode = 1 << _bits;
    _EOICode = _CLEARCode + 1;
    _StartTable();
    _InitPacket();
    for (int32_t color = 0; color < 256; ++color)
    {
        _aValues[color] = static_cast<uint8_t>(pCurCTab->positions[color]);
    }
}

// All pixels after the first, which is the first prefix. The rows of an image that is not interlaced are one long row.
static int32_t _CodeRows(int32_t prefix)
{
    const int64_t length = _fInterlaced ? curW : static_cast<int64_t>(curW) * curH;
    const uint8_t *from = _pBuf + 1;
    do
    {
        const uint8_t *end = _pBuf + length;
        prefix = _bits <= _maxRowBits ? _CodeRuns(from, end, prefix) : _CodePixels(from, end, prefix);
        if (_graphErr != 0 || !_fInterlaced || !_NextInterlacedRow())
        {
            return prefix;
        }
        from = _pBuf;
    } while (true);
}

static void _Compress(int32_t initBits)
{
    _InitCoder(initBits);
    if (curW <= 0 || curH <= 0)
    {
        return;
    }
    const int32_t first = _aValues[*_pBuf];
    if (first > _maxVal)
    {
        _graphErr = -3;
        return;
    }
    _lastVal = first;
    _OutputCode(_CLEARCode);
    const int32_t prefix = _CodeRows(first);
    if (_graphErr == 0)
    {
        _OutputCode(prefix);
        _OutputEnd();
        _FlushOutput();
    }
    _ForgetStrings();
    _curCode = 0;
    _curBits = 0;
}

void _ExitCompress()
{
    free(_pHTab);
    free(_pCodeTab);
    _pHTab = nullptr;
    _pCodeTab = nullptr;
}

static int32_t _InitCompress()
{
    _ExitCompress();
    _pHTab = static_cast<int32_t *>(malloc(_hSize * sizeof *_pHTab));
    _pCodeTab = _pHTab == nullptr ? nullptr : static_cast<uint16_t *>(malloc(_hSize * sizeof *_pCodeTab));
    if (_pCodeTab == nullptr)
    {
        _ExitCompress();
        return 0;
    }
    return 1;
}

// The blocks of the file: each returns 1, or 0 with the error set.

static int32_t _WriteGifHeader(int32_t version)
{
    return _WriteBytes(version == 0 ? "GIF87a" : "GIF89a", 6);
}

static int32_t _WriteGifLScreen(int32_t bpp)
{
    const int32_t packed = 0x80 | (((bpp - 1) & 7) << 4) | ((fCTabSorted & 1) << 3) | ((bpp - 1) & 7);
    const int32_t aspect = 0;
    return _WriteGifWord(curW) && _WriteGifWord(curH) && _WriteGifByte(packed) && _WriteGifByte(pCurCTab->background) &&
           _WriteGifByte(aspect);
}

static int32_t _WriteGifCTab(const uint8_t rgb[][3], const uint8_t *order, uint32_t nColors, int32_t bpp)
{
    uint8_t table[256][3];
    const uint32_t nEntries = 1u << bpp;
    for (uint32_t k = 0; k < nEntries; ++k)
    {
        memcpy(table[k], rgb[k < nColors ? order[k] : 0], 3);
    }
    return _WriteBytes(table, nEntries * sizeof *table);
}

static int32_t _WriteGifGraphControlExt()
{
    const uint8_t thruPosition = static_cast<uint8_t>(pCurCTab->positions[curThruColor]);
    const int32_t disposal = 0;
    const int32_t userInput = 0;
    const int32_t packed = ((disposal & 7) << 2) | ((userInput & 1) << 1) | (fCurIsThruColor & 1);
    const int32_t delay = 0;
    return _WriteGifByte(0x21) && _WriteGifByte(0xF9) && _WriteGifByte(4) && _WriteGifByte(packed) &&
           _WriteGifWord(delay) && _WriteGifByte(thruPosition) && _WriteGifByte(0);
}

static int32_t _WriteGifImgDescriptor(const Image *image)
{
    return _WriteGifByte(0x2C) && _WriteGifWord(image->left) && _WriteGifWord(image->top) && _WriteGifWord(curW) &&
           _WriteGifWord(curH) && _WriteGifByte((_fInterlaced & 1) << 6);
}

static int32_t _WriteGifImgData(int32_t bpp)
{
    const int32_t codeSize = bpp < 2 ? 2 : bpp;
    if (!_WriteGifByte(codeSize))
    {
        return 0;
    }
    _Compress(codeSize + 1);
    return _graphErr == 0 && _WriteGifByte(0);
}

// Flushed, because a full disk shows only then, and the caller looks at the error before it closes the stream.
static int32_t _WriteGifTrailer()
{
    return _WriteGifByte(0x3B) && _FlushOutput();
}

int32_t _GetBPP(uint32_t nColors)
{
    int32_t bpp = 1;
    while (bpp < 8 && nColors > (1u << bpp))
    {
        ++bpp;
    }
    return bpp;
}

static void _InitImageVars(Image *image, int32_t bpp)
{
    SetImage(image);
    if (curH < 5)
    {
        _fInterlaced = 0;
    }
    _pass = 0;
    _StartRow(0);
    _maxVal = (1 << bpp) - 1;
}

static int32_t _WriteGifBlocks(const Image *image, int32_t bpp)
{
    return _WriteGifHeader(1) && _WriteGifLScreen(bpp) && _WriteGifCTab(aRGB, pCurCTab->used, curNColors, bpp) &&
           (fCurIsThruColor != 1 || _WriteGifGraphControlExt()) && _WriteGifImgDescriptor(image) &&
           _WriteGifImgData(bpp);
}

void ImgToGif(Image *image, int32_t fInterlaced, FILE *out)
{
    if (image == nullptr || out == nullptr || ferror(out))
    {
        return;
    }
    const int32_t left = image->left;
    const int32_t top = image->top;
    if (!SetImage(image))
    {
        return;
    }
    _pOut = out;
    image->left = 0;
    image->top = 0;
    const int32_t bpp = _GetBPP(curNColors);
    if (!_InitCompress())
    {
        return;
    }
    _fInterlaced = fInterlaced != 0;
    _InitImageVars(image, bpp);
    // On purpose: only after a failed trailer the origin stays at 0 and the tables stay allocated.
    if (_WriteGifBlocks(image, bpp) && !_WriteGifTrailer())
    {
        return;
    }
    image->left = left;
    image->top = top;
    _ExitCompress();
}
