// qbgraph.cpp - images, their colour tables, and the pen.
//
// All drawing goes to the current image. What every drawing call needs of it - size, pixels, pen, colour count - is
// copied into the module's variables while it is current, and written back when another image takes its place.

#include "qbgraph.h"

#include "qbgraph_state.h"
#include "qbgrfnt.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

// See qbgraph_state.h for units and ranges. InitGraph sets all of it back.
Image *pCurImg = nullptr;
uint8_t *pCurBuf = nullptr;
int32_t curW = 0;
int32_t curH = 0;
uint32_t curNColors = 0;
uint32_t curMaxColors = 0;
ColorTable *pCurCTab = nullptr;
int32_t curPenX = 0;
int32_t curPenY = 0;
int32_t curPenW = 0;
int32_t curPenH = 0;
uint8_t curPenColor = 0;
uint8_t curThruColor = 0;
int32_t fCurIsThruColor = 0;
int32_t _graphErr = 0;
int32_t fCTabSorted = 0;

uint8_t aRGB[256][3];

static void _setRGB(int32_t index, int32_t red, int32_t green, int32_t blue)
{
    aRGB[index][0] = static_cast<uint8_t>(red);
    aRGB[index][1] = static_cast<uint8_t>(green);
    aRGB[index][2] = static_cast<uint8_t>(blue);
}

// 216 colours of a cube from white down to black, 32 greys, three blends, five blacks.
static void _initPalette()
{
    constexpr int32_t kLevelStep = 0x33; // six levels, 0x00 to 0xFF
    for (int32_t n = 0; n < 216; n++)
    {
        _setRGB(n, (5 - n / 36) * kLevelStep, (5 - n / 6 % 6) * kLevelStep, (5 - n % 6) * kLevelStep);
    }
    for (int32_t k = 0; k < 32; k++)
    {
        const int32_t grey = 247 - 8 * k; // on purpose: the last one is -1, which 8 bits turn into white
        _setRGB(216 + k, grey, grey, grey);
    }
    _setRGB(248, 33, 82, 138);
    _setRGB(249, 132, 0, 90);
    _setRGB(250, 140, 90, 41);
    for (int32_t n = 251; n < 256; n++)
    {
        _setRGB(n, 0, 0, 0);
    }
}

// Leaves no current image. The pen and the count of the one that was are not saved.
static void _forgetImage()
{
    pCurImg = nullptr;
    pCurBuf = nullptr;
    pCurCTab = nullptr;
    curW = 0;
    curH = 0;
    curNColors = 0;
    curMaxColors = 0;
}

void InitGraph()
{
    _initPalette();
    _graphErr = 0;
    fCTabSorted = 0;
    _forgetImage();
    curFontStyle = 0;
    curFontDir = 0;
    curFontAngle = 0;
    InitFonts();
}

static Image *_failNewImage(int32_t error)
{
    _graphErr = error;
    _forgetImage();
    return nullptr;
}

static void _freeImage(Image *image)
{
    std::free(image->pixels);
    std::free(image->colorTable);
    std::free(image->pen);
    std::free(image);
}

// The pixels of an image, or null. They come cleared, so that an image that is never filled is still the same in
// every run; fresh pages of the system cost nothing more for it.
static uint8_t *_newPixels(int64_t width, int64_t height)
{
    constexpr int64_t kMaxSide = INT32_MAX;
    if (std::max(width, height) > kMaxSide || std::min(width, height) < -kMaxSide || width * height < 0)
    {
        return nullptr;
    }
    return static_cast<uint8_t *>(std::calloc(static_cast<size_t>(width * height), 1));
}

static void _resetColorTable(ColorTable *table, uint32_t nColors)
{
    *table = {};
    std::fill_n(table->positions, 256, -1);
    table->capacity = std::min(nColors, 256U);
}

Image *NewImage(const Rectangle *rect, uint32_t nColors)
{
    if (rect == nullptr)
    {
        return _failNewImage(-2);
    }
    const int64_t width = static_cast<int64_t>(rect->right) - rect->left;
    const int64_t height = static_cast<int64_t>(rect->bottom) - rect->top;
    uint8_t *pixels = _newPixels(width, height);
    if (pixels == nullptr)
    {
        return _failNewImage(-1);
    }
    auto *image = static_cast<Image *>(std::malloc(sizeof(Image)));
    if (image == nullptr)
    {
        std::free(pixels);
        return _failNewImage(-1);
    }
    *image = {rect->left, rect->top, _Wrap32(width), _Wrap32(height), nullptr, nullptr, pixels};
    image->colorTable = static_cast<ColorTable *>(std::malloc(sizeof(ColorTable)));
    image->pen = image->colorTable == nullptr ? nullptr : static_cast<Pen *>(std::malloc(sizeof(Pen)));
    if (image->pen == nullptr)
    {
        _freeImage(image);
        return _failNewImage(-1);
    }
    *image->pen = {0, 0, 1, 1, 255};
    _resetColorTable(image->colorTable, nColors);
    SetImage(image);
    return image;
}

void KillImage(Image *image)
{
    if (image == nullptr)
    {
        return;
    }
    if (image == pCurImg)
    {
        _forgetImage();
    }
    _freeImage(image);
}

static void _saveImage()
{
    *pCurImg->pen = {curPenX, curPenY, curPenW, curPenH, curPenColor};
    pCurCTab->count = curNColors;
    pCurCTab->thruColor = curThruColor;
    pCurCTab->fThruColor = fCurIsThruColor;
}

static void _loadImage(Image *image)
{
    pCurImg = image;
    pCurBuf = image->pixels;
    curW = image->width;
    curH = image->height;
    pCurCTab = image->colorTable;
    curNColors = pCurCTab->count;
    curMaxColors = pCurCTab->capacity;
    curThruColor = pCurCTab->thruColor;
    fCurIsThruColor = pCurCTab->fThruColor;
    curPenX = image->pen->x;
    curPenY = image->pen->y;
    curPenW = image->pen->width;
    curPenH = image->pen->height;
    curPenColor = image->pen->colour;
}

int32_t SetImage(Image *image)
{
    if (image == nullptr || image->pixels == nullptr || image->colorTable == nullptr || image->pen == nullptr)
    {
        _graphErr = -2;
        return 0;
    }
    if (pCurImg != nullptr)
    {
        _saveImage();
    }
    _loadImage(image);
    _graphErr = 0;
    return 1;
}

int32_t GetImage(Image **out)
{
    if (pCurImg == nullptr || out == nullptr)
    {
        return 0;
    }
    *out = pCurImg;
    return 1;
}

int32_t GetGraphError()
{
    return _graphErr;
}

void FillImage()
{
    if (_graphErr == 0 && curNColors != 0)
    {
        const int64_t size = static_cast<int64_t>(curW) * curH;
        std::memset(pCurBuf, curPenColor, static_cast<size_t>(size));
    }
}

void MovePenTo(int32_t x, int32_t y)
{
    curPenX = x;
    curPenY = y;
}

void MovePenRel(int32_t dx, int32_t dy)
{
    curPenX = _Wrap32(static_cast<int64_t>(curPenX) + dx);
    curPenY = _Wrap32(static_cast<int64_t>(curPenY) + dy);
}

void GetPenPos(Point *point)
{
    if (point != nullptr)
    {
        *point = {curPenX, curPenY};
    }
}

// Gives the colour a place in the current image's table and returns it, or 0 when the table is full: on purpose, the
// 0 gets no place itself.
static uint8_t _registerColor(int32_t colour)
{
    const auto index = static_cast<uint8_t>(colour);
    for (uint32_t i = 0; i < curNColors; i++)
    {
        if (pCurCTab->used[i] == index)
        {
            return index;
        }
    }
    if (curNColors >= curMaxColors)
    {
        return 0;
    }
    pCurCTab->used[curNColors] = index;
    pCurCTab->positions[index] = static_cast<int32_t>(curNColors);
    curNColors++;
    return index;
}

void SetPenColor(int32_t colour)
{
    if (_graphErr == 0)
    {
        curPenColor = _registerColor(colour);
    }
}

void SetPenSize(int32_t width, int32_t height)
{
    curPenW = std::max(width, 0);
    curPenH = std::max(height, 0);
}

void SetThruColor(int32_t colour)
{
    curThruColor = _registerColor(colour);
    fCurIsThruColor = 1;
}

void SetRectangle(Rectangle *rect, int32_t left, int32_t top, int32_t right, int32_t bottom)
{
    if (rect != nullptr)
    {
        *rect = {left, top, right, bottom};
    }
}

void MoveRectangleRel(Rectangle *rect, int32_t dx, int32_t dy)
{
    if (rect != nullptr)
    {
        rect->left = _Wrap32(static_cast<int64_t>(rect->left) + dx);
        rect->top = _Wrap32(static_cast<int64_t>(rect->top) + dy);
        rect->right = _Wrap32(static_cast<int64_t>(rect->right) + dx);
        rect->bottom = _Wrap32(static_cast<int64_t>(rect->bottom) + dy);
    }
}

void MoveRectangleTo(Rectangle *rect, int32_t x, int32_t y)
{
    if (rect != nullptr)
    {
        const int64_t width = static_cast<int64_t>(rect->right) - rect->left;
        const int64_t height = static_cast<int64_t>(rect->bottom) - rect->top;
        *rect = {x, y, _Wrap32(x + width), _Wrap32(y + height)};
    }
}

void _PaintBlock(int64_t left, int64_t top, int64_t right, int64_t bottom)
{
    const int64_t firstX = std::max<int64_t>(left, 0);
    const int64_t firstY = std::max<int64_t>(top, 0);
    const int64_t width = std::min<int64_t>(right, curW) - firstX;
    const int64_t height = std::min<int64_t>(bottom, curH) - firstY;
    if (width <= 0 || height <= 0 || !_CanPaint())
    {
        return;
    }
    uint8_t *row = pCurBuf + firstY * curW + firstX;
    if (width == curW) // the rows follow each other without a gap
    {
        std::memset(row, curPenColor, static_cast<size_t>(width * height));
        return;
    }
    for (int64_t y = 0; y < height; y++)
    {
        if (width == 1)
        {
            row[y * curW] = curPenColor;
        }
        else
        {
            std::memset(row + y * curW, curPenColor, static_cast<size_t>(width));
        }
    }
}

void DrawPen()
{
    _PaintBlock(curPenX, curPenY, static_cast<int64_t>(curPenX) + curPenW, static_cast<int64_t>(curPenY) + curPenH);
}

Polygon *NewPolygon(int32_t n)
{
    if (n < 0)
    {
        return nullptr;
    }
    auto *polygon = static_cast<Polygon *>(std::malloc(sizeof(Polygon)));
    if (polygon == nullptr)
    {
        return nullptr;
    }
    polygon->count = n;
    polygon->points = static_cast<Point *>(std::malloc(sizeof(Point) * static_cast<size_t>(n)));
    if (polygon->points == nullptr)
    {
        std::free(polygon);
        return nullptr;
    }
    return polygon;
}

void KillPolygon(Polygon *polygon)
{
    if (polygon != nullptr)
    {
        std::free(polygon->points);
        std::free(polygon);
    }
}

void DBPrintImage(const Image *image, FILE *stream)
{
    if (stream == nullptr)
    {
        return;
    }
    if (image == nullptr)
    {
        std::fputs("Error in DBPrintImage: NULL image pointer...\n", stream);
        return;
    }
    if (_graphErr != 0)
    {
        std::fprintf(stream, "Graphic Error #%d\n", _graphErr);
        return;
    }
    // On purpose: the current image is printed, whichever was passed.
    for (int64_t y = 0; y < curH; y++)
    {
        for (int64_t x = 0; x < curW; x++)
        {
            std::fprintf(stream, "%3d", pCurBuf[y * curW + x]);
        }
        std::fputc('\n', stream);
    }
    std::fputc('\n', stream);
}
