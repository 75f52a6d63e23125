// gif_images.h - images made for the GIF encoder's tests, without drawing calls.
#pragma once

#include "qbgraph.h"

#include <memory>
#include <random>
#include <string>
#include <vector>

// An image given by the positions of its pixels in its own colour table. Position k is palette colour
// (73 k + 41) mod 256, so that positions and palette numbers are never mixed up unseen.
class GifImage
{
public:
    // positions holds width * height positions below nColors, row by row.
    GifImage(int32_t width, int32_t height, uint32_t nColors, std::vector<uint8_t> positions);

    Image *image()
    {
        return &_records->image;
    }

    const std::vector<uint8_t> &positions() const
    {
        return _positions;
    }

    // Makes the colour at a position the transparent one.
    void SetThru(uint8_t position);

    // The palette colour at a position.
    static uint8_t PaletteColor(uint32_t position)
    {
        return static_cast<uint8_t>(73 * position + 41);
    }

private:
    // Stays where it is when the GifImage is moved, because the image points to the rest. Ends as no current image.
    struct Records
    {
        Image image;
        Pen pen;
        ColorTable table;
        ~Records();
    };

    std::vector<uint8_t> _positions;
    std::vector<uint8_t> _pixels;
    std::unique_ptr<Records> _records;
};

// The kinds of pixels that RandomGifImage makes.
enum class GifPixels
{
    kFlat,      // one colour
    kNoise,     // every pixel by itself
    kStripes,   // periodic rows, columns or diagonals
    kChart,     // boxes, lines and specks on a background
    kRuns,      // runs of random length
    kDither,    // a slope in two dimensions, dithered
    kZeroPairs, // position 0 kept apart first and doubled often later; the first pair takes slot 0 of the hash table
    kCount
};

GifImage RandomGifImage(std::mt19937 *random, GifPixels pixels, int32_t width, int32_t height, uint32_t nColors);

// What ImgToGif writes into memory.
std::vector<uint8_t> GifBytes(Image *image, int32_t fInterlaced);

// Where two files differ first, in words; empty: nowhere.
std::string FirstDifference(const std::vector<uint8_t> &got, const std::vector<uint8_t> &wanted);
