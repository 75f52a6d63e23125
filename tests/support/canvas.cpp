// canvas.cpp - the pixels are read from the image record, not through any drawing call.

#include "canvas.h"

#include <algorithm>
#include <cstdlib>

Canvas::Canvas(int32_t width, int32_t height, uint32_t nColors)
{
    InitGraph();
    const Rectangle rect = {0, 0, width, height};
    _image = NewImage(&rect, nColors);
    if (_image == nullptr)
    {
        std::abort();
    }
    SetPenColor(0);
    FillImage();
    SetPenColor(255);
    SetImage(_image); // writes pen and colours into the records, in case another canvas takes over
}

Canvas::~Canvas()
{
    KillImage(_image);
}

static char _letter(const Image &image, uint8_t colour)
{
    static const char letters[] = "0123456789abcdefghijklmnopqrstuvwxyz";
    if (colour == 0)
    {
        return '.';
    }
    if (colour == 255)
    {
        return '#';
    }
    const int32_t position = image.colorTable->positions[colour];
    return position >= 0 && position < 36 ? letters[position] : '?';
}

std::string Canvas::text() const
{
    std::string rows;
    for (int32_t y = 0; y < _image->height; y++)
    {
        for (int32_t x = 0; x < _image->width; x++)
        {
            rows.push_back(_letter(*_image, at(x, y)));
        }
        rows.push_back('\n');
    }
    return rows;
}

void Canvas::paint(const std::string &picture)
{
    int32_t x = 0;
    int32_t y = 0;
    for (const char c : picture)
    {
        if (c == '\n')
        {
            x = 0;
            y++;
            continue;
        }
        if (x >= _image->width || y >= _image->height)
        {
            std::abort();
        }
        _image->pixels[y * _image->width + x] = c == '#' ? 255 : 0;
        x++;
    }
}

uint8_t Canvas::at(int32_t x, int32_t y) const
{
    return _image->pixels[y * _image->width + x];
}

int64_t Canvas::count(uint8_t colour) const
{
    const int64_t size = static_cast<int64_t>(_image->width) * _image->height;
    return std::count(_image->pixels, _image->pixels + size, colour);
}

Image *Canvas::image() const
{
    return _image;
}

std::string PenText()
{
    Point pen = {0, 0};
    GetPenPos(&pen);
    return std::to_string(pen.x) + "," + std::to_string(pen.y);
}
