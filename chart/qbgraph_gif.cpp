// qbgraph_gif.cpp - writes an image as a GIF file.
//
// The file, in order: header, logical screen, global colour table, graphic control extension (only with a transparent
// colour), image descriptor, code size, the packets of codes, an empty packet, trailer. Numbers of two bytes have the
// low byte first.
//
// The coder is LZW with codes of 3 to 12 bits. A key is pixel << 12 | prefix code, and lies in a hash table of 5003
// slots. While probing, key 0 (pixel 0 after code 0) counts as free, so that it can be overwritten; readers do not
// mind, and the files stay what they have always been.

#include "qbgraph_gif_state.h"
#include "qbgraph_state.h"

#include <cstdlib>
#include <cstring>

// What the encoder remembers during one image. _InitImageVars and _Compress set all of it; _curCode and _curBits
// are at 0 whenever no image is being written.
static FILE *_pOut;           // not owned
static int32_t _fInterlaced;  // 1: rows in four passes
static int32_t _curX;         // column of the pixel last delivered, -1 before the first
static int32_t _curY;         // its row
static uint8_t _curVal;       // its value, a position in the written colour table
static int32_t _pass;         // interlace pass, 0 to 3
static int64_t _skip7Lines;   // 7 image widths
static int64_t _skip3Lines;   // 3 image widths
static const uint8_t *_pBuf;  // the next pixel
static int32_t _maxVal;       // largest pixel value the code size has room for
static uint8_t _aPacket[256]; // code bytes that wait for their packet to be full
static int32_t _packetCount;  // bytes in it, below 255 between calls
static int32_t _initBits;     // first code width
static int32_t _CLEARCode;
static int32_t _EOICode;
static int32_t _nextEntry = 0; // next free code
static int32_t _nBits;         // current code width
static int32_t _maxCode;       // largest code before the width grows
static int32_t _fClear = 0;    // 1: the width falls back after the code that is being written
uint32_t _curCode = 0;
int32_t _curBits = 0;
int32_t *_pHTab = nullptr;
uint16_t *_pCodeTab = nullptr;

static const int32_t _maxBits = 12;     // widest code
static const int32_t _codeLimit = 4096; // codes of that width
static const int32_t _hSize = 5003;     // slots; a prime, of which 4096 codes fill 82%
static const int32_t _packetSize = 255; // the most that a packet's count byte can say

// Keep the low n bits, n = 0 to 16.
static const uint32_t _aMasks[17] = {0x0000, 0x0001, 0x0003, 0x0007, 0x000F, 0x001F, 0x003F, 0x007F, 0x00FF,
                                     0x01FF, 0x03FF, 0x07FF, 0x0FFF, 0x1FFF, 0x3FFF, 0x7FFF, 0xFFFF};

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

// Packets

static void _InitPacket()
{
    _packetCount = 0;
}

static void _OutputPacket()
{
    if (_packetCount == 0)
    {
        return;
    }
    if (_WriteGifByte(_packetCount))
    {
        _WriteBytes(_aPacket, static_cast<size_t>(_packetCount));
    }
    _packetCount = 0;
}

static void _OutputChar(uint8_t value)
{
    _aPacket[_packetCount++] = value;
    if (_packetCount == _packetSize)
    {
        _OutputPacket();
    }
}

// Codes

static void _SetWidth(int32_t bits)
{
    _nBits = bits;
    _maxCode = bits == _maxBits ? _codeLimit : (1 << bits) - 1;
}

// The width changes after the code, so that a reader, which learns a string one code later, changes at the same one.
static void _OutputCode(int32_t code)
{
    _curCode &= _aMasks[_curBits];
    _curCode |= static_cast<uint32_t>(code) << _curBits;
    _curBits += _nBits;
    while (_curBits >= 8)
    {
        _OutputChar(static_cast<uint8_t>(_curCode & 0xFF));
        _curCode >>= 8;
        _curBits -= 8;
    }
    if (_fClear)
    {
        _SetWidth(_initBits);
        _fClear = 0;
    }
    else if (_nextEntry > _maxCode)
    {
        _SetWidth(_nBits + 1);
    }
    if (code == _EOICode)
    {
        if (_curBits > 0)
        {
            _OutputChar(static_cast<uint8_t>(_curCode & 0xFF));
        }
        _curCode = 0;
        _curBits = 0;
        _OutputPacket();
    }
}

// Pixels

static void _StartPass(int32_t pass, int32_t row)
{
    _pass = pass;
    _curY = row;
    _pBuf = pCurBuf + static_cast<int64_t>(row) * curW;
}

// From the end of a row of an interlaced image to the next one: rows 0, 8, 16 ..; 4, 12 ..; 2, 6, 10 ..; 1, 3, 5 ..
static int32_t _NextInterlacedRow()
{
    static const int32_t aStep[4] = {8, 8, 4, 2};
    static const int32_t aFirstRow[5] = {0, 4, 2, 1, 0};
    const int64_t aSkip[4] = {_skip7Lines, _skip7Lines, _skip3Lines, curW};

    if (curH - _curY > aStep[_pass])
    {
        _curY += aStep[_pass];
        _pBuf += aSkip[_pass];
        return 1;
    }
    if (_pass == 3)
    {
        return 0;
    }
    _StartPass(_pass + 1, aFirstRow[_pass + 1]);
    return 1;
}

static int32_t _NextRow()
{
    _curX = 0;
    return _fInterlaced ? _NextInterlacedRow() : ++_curY < curH;
}

// Puts the next pixel into _curVal; 0: there is none.
static int32_t _IsNextByte()
{
    if (++_curX >= curW && !_NextRow())
    {
        return 0;
    }
    _curVal = static_cast<uint8_t>(pCurCTab->positions[*_pBuf++]);
    if (_curVal > _maxVal)
    {
        _graphErr = -3;
    }
    return 1;
}

// The coder

static void _ClearHTab()
{
    memset(_pHTab, 0xFF, _hSize * sizeof *_pHTab);
    memset(_pCodeTab, 0, _hSize * sizeof *_pCodeTab);
}

static void _ResetParams()
{
    _ClearHTab();
    _nextEntry = _CLEARCode + 2;
    _fClear = 1;
    _OutputCode(_CLEARCode);
}

static void _InitCoder(int32_t initBits)
{
    _initBits = initBits;
    _fClear = 0;
    _SetWidth(initBits);
    _CLEARCode = 1 << (initBits - 1);
    _EOICode = _CLEARCode + 1;
    _nextEntry = _CLEARCode + 2;
    _InitPacket();
}

// The slot of a key, or the one where it belongs. An occupied slot is never left for its being key 0, but a probe
// stops there: on purpose, see the top of the file.
static int32_t _FindSlot(int32_t key, int32_t slot)
{
    if (_pHTab[slot] == key || _pHTab[slot] < 0)
    {
        return slot;
    }
    const int32_t step = slot == 0 ? 1 : _hSize - slot;
    do
    {
        slot -= step;
        if (slot < 0)
        {
            slot += _hSize;
        }
    } while (_pHTab[slot] != key && _pHTab[slot] > 0);
    return slot;
}

static void _Compress(int32_t initBits)
{
    _InitCoder(initBits);
    if (curW <= 0 || curH <= 0 || !_IsNextByte())
    {
        return;
    }
    int32_t prefix = _curVal;
    _ClearHTab();
    _OutputCode(_CLEARCode);
    while (_graphErr == 0 && _IsNextByte())
    {
        const int32_t key = (_curVal << _maxBits) + prefix;
        const int32_t slot = _FindSlot(key, (_curVal << 4) ^ prefix);
        if (_pHTab[slot] == key)
        {
            prefix = _pCodeTab[slot];
            continue;
        }
        _OutputCode(prefix);
        prefix = _curVal;
        if (_nextEntry < _codeLimit)
        {
            _pCodeTab[slot] = static_cast<uint16_t>(_nextEntry++);
            _pHTab[slot] = key;
        }
        else
        {
            _ResetParams();
        }
    }
    if (_graphErr != 0)
    {
        _curCode = 0;
        _curBits = 0;
        return;
    }
    _OutputCode(prefix);
    _OutputCode(_EOICode);
    _FlushOutput();
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
    return _WriteBytes(table, nEntries * 3);
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
    _skip3Lines = 3 * static_cast<int64_t>(curW);
    _skip7Lines = 7 * static_cast<int64_t>(curW);
    if (curH < 5)
    {
        _fInterlaced = 0;
    }
    _curX = -1;
    _curVal = 0;
    _StartPass(0, 0);
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
