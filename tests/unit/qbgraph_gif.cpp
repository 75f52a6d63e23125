// qbgraph_gif.cpp - the GIF file byte by byte, the code stream at its turning points, and writing that fails.

#include "qbgraph_gif_state.h"

#include "alloc_fail.h"
#include "gif_checker.h"
#include "gif_images.h"
#include "gif_literal.h"
#include "gif_reader.h"
#include "qbgraph_state.h"

#include <csignal>
#include <gtest/gtest.h>
#include <unistd.h>

using Bytes = std::vector<uint8_t>;

class Gif : public testing::Test
{
protected:
    void SetUp() override
    {
        InitGraph();
    }

    void TearDown() override
    {
        _ExitCompress();
    }
};

// A one-row image of these positions.
static GifImage _Row(uint32_t nColors, const Bytes &positions)
{
    return GifImage(static_cast<int32_t>(positions.size()), 1, nColors, positions);
}

static Bytes _Part(const Bytes &bytes, size_t start, size_t count)
{
    EXPECT_LE(start + count, bytes.size());
    const auto first = bytes.begin() + static_cast<int64_t>(start);
    return Bytes(first, first + static_cast<int64_t>(count));
}

// The file is what the literal coder writes, breaks no rule, and both readers find the image in it.
static GifWalk _ExpectRight(GifImage *gif, int32_t fInterlaced)
{
    const Bytes bytes = GifBytes(gif->image(), fInterlaced);
    EXPECT_EQ(GetGraphError(), 0);
    EXPECT_EQ(FirstDifference(bytes, LiteralGif(*gif->image(), fInterlaced)), "");
    GifWalk walk = CheckGif(bytes);
    EXPECT_EQ(walk.wrong, "");
    EXPECT_EQ(walk.picture.pixels, gif->positions());
    GifPicture picture;
    EXPECT_EQ(DecodeGif(bytes, &picture), "");
    EXPECT_EQ(picture.pixels, gif->positions());
    EXPECT_EQ(picture.palette, walk.picture.palette);
    EXPECT_EQ(picture.transparent, walk.picture.transparent);
    EXPECT_EQ(picture.interlaced, walk.picture.interlaced);
    return walk;
}

// The file

TEST_F(Gif, BitsAPixelAreAsFewAsTheColorsAllow)
{
    const uint32_t aLast[] = {2, 4, 8, 16, 32, 64, 128};
    EXPECT_EQ(_GetBPP(0), 1);
    EXPECT_EQ(_GetBPP(1), 1);
    for (int32_t i = 0; i < 7; ++i)
    {
        EXPECT_EQ(_GetBPP(aLast[i] - 1), aLast[i] == 2 ? 1 : aLast[i] - 1 > aLast[i] / 2 ? i + 1 : i);
        EXPECT_EQ(_GetBPP(aLast[i]), i + 1);
        EXPECT_EQ(_GetBPP(aLast[i] + 1), i + 2);
    }
    EXPECT_EQ(_GetBPP(255), 8);
    EXPECT_EQ(_GetBPP(256), 8);
}

TEST_F(Gif, OnePixelIsAWholeFile)
{
    // Palette 41 is 1 * 36 + 0 * 6 + 5: red L[4], green L[5], blue L[0]; 114 is 3 * 36 + 1 * 6 + 0: L[2], L[4], L[5].
    // Codes of 3 bits, low bit first: clear 4, colour 1, end 5 = 001 100 101, which is 0x0C | 1 << 6 and then 1.
    GifImage gif = _Row(2, {1});
    EXPECT_EQ(GifBytes(gif.image(), 0), (Bytes{'G',  'I',  'F',  '8',  '9',  'a',  1, 0, 1, 0, 0x80, 0, 0, // screen
                                               0xCC, 0xFF, 0,    0x66, 0xCC, 0xFF,                         // colours
                                               0x2C, 0,    0,    0,    0,    1,    0, 1, 0, 0,             // image
                                               2,    2,    0x4C, 0x01, 0,    0x3B})); // codes, trailer
}

TEST_F(Gif, UnusedEntriesRepeatTheFirstColorOfThePalette)
{
    GifImage gif = _Row(200, {199});
    const Bytes bytes = GifBytes(gif.image(), 0);
    EXPECT_EQ(bytes[10], 0xF7); // 8 bits: 7 << 4 | 7
    const uint8_t *last = aRGB[GifImage::PaletteColor(199)];
    EXPECT_EQ(_Part(bytes, 13 + 3 * 199, 3), Bytes(last, last + 3));
    EXPECT_EQ(_Part(bytes, 13 + 600, 168), Bytes(168, 0xFF)); // 56 times white, palette 0
    EXPECT_EQ(bytes[13 + 3 * 256], 0x2C);
}

TEST_F(Gif, NoColorsMakeTwoWhiteEntries)
{
    GifImage gif(0, 3, 0, {});
    const Bytes bytes = GifBytes(gif.image(), 0);
    EXPECT_EQ(bytes[10], 0x80);
    EXPECT_EQ(_Part(bytes, 13, 6), Bytes(6, 0xFF));
    EXPECT_EQ(_Part(bytes, 19, bytes.size() - 19), (Bytes{0x2C, 0, 0, 0, 0, 0, 0, 3, 0, 0, 2, 0, 0x3B}));
}

TEST_F(Gif, SizesHaveTheLowByteFirst)
{
    GifImage gif(259, 2, 2, Bytes(518));
    const Bytes bytes = GifBytes(gif.image(), 0);
    EXPECT_EQ(_Part(bytes, 6, 4), (Bytes{3, 1, 2, 0})); // 259 = 1 * 256 + 3
    EXPECT_EQ(_Part(bytes, 24, 4), (Bytes{3, 1, 2, 0}));
}

TEST_F(Gif, TheTransparentColorComesBeforeTheImage)
{
    GifImage gif = _Row(4, {0, 1, 2, 3});
    gif.SetThru(2);
    const Bytes bytes = GifBytes(gif.image(), 0);
    EXPECT_EQ(_Part(bytes, 13 + 12, 9), (Bytes{0x21, 0xF9, 4, 1, 0, 0, 2, 0, 0x2C}));
    _ExpectRight(&gif, 0);
}

TEST_F(Gif, WithoutTransparentColorTheImageFollowsTheColors)
{
    GifImage gif = _Row(4, {0, 1, 2, 3});
    gif.image()->colorTable->fThruColor = 2; // only 1 says that there is one
    const Bytes bytes = GifBytes(gif.image(), 0);
    EXPECT_EQ(bytes[4], '9');
    EXPECT_EQ(bytes[13 + 12], 0x2C);
}

TEST_F(Gif, ATransparentColorThatIsNotInTheTableIsEntry255)
{
    GifImage gif = _Row(4, {0, 1, 2, 3});
    gif.SetThru(4);
    EXPECT_EQ(GifBytes(gif.image(), 0)[13 + 12 + 6], 255);
}

TEST_F(Gif, TheBackgroundIsWrittenAsItStands)
{
    GifImage gif = _Row(4, {0, 1, 2, 3});
    gif.image()->colorTable->background = 3;
    EXPECT_EQ(GifBytes(gif.image(), 0)[11], 3);
}

TEST_F(Gif, TheImageLiesInTheCornerAndKeepsItsOrigin)
{
    GifImage gif = _Row(2, {1});
    gif.image()->left = -3;
    gif.image()->top = 500;
    const Bytes bytes = GifBytes(gif.image(), 0);
    EXPECT_EQ(_Part(bytes, 20, 4), Bytes(4, 0));
    EXPECT_EQ(gif.image()->left, -3);
    EXPECT_EQ(gif.image()->top, 500);
    EXPECT_EQ(pCurImg, gif.image());
}

TEST_F(Gif, AnImageOfEveryColorCountIsReadBack)
{
    std::mt19937 random(1);
    for (uint32_t nColors = 1; nColors <= 256; ++nColors)
    {
        GifImage gif = RandomGifImage(&random, GifPixels::kNoise, 9, 7, nColors);
        const GifWalk walk = _ExpectRight(&gif, nColors % 2 == 0);
        EXPECT_EQ(walk.picture.palette.size(), size_t{1} << _GetBPP(nColors));
        EXPECT_EQ(walk.codeSize, std::max(2, _GetBPP(nColors)));
    }
}

// Rows

TEST_F(Gif, InterlacedRowsComeInFourPasses)
{
    GifImage gif(1, 10, 10, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    Bytes bytes = GifBytes(gif.image(), 1);
    const size_t descriptor = 13 + 3 * 16;
    EXPECT_EQ(bytes[descriptor + 9], 0x40);
    bytes[descriptor + 9] = 0; // now the reader leaves the rows as they lie in the file
    GifPicture picture;
    ASSERT_EQ(DecodeGif(bytes, &picture), "");
    EXPECT_EQ(picture.pixels, (Bytes{0, 8, 4, 2, 6, 1, 3, 5, 7, 9}));
}

TEST_F(Gif, ImagesBelowFiveRowsAreNotInterlaced)
{
    for (int32_t height = 1; height <= 40; ++height)
    {
        Bytes positions;
        for (int32_t i = 0; i < 3 * height; ++i)
        {
            positions.push_back(static_cast<uint8_t>(i * i % 11));
        }
        GifImage gif(3, height, 11, positions);
        const GifWalk walk = _ExpectRight(&gif, 1);
        EXPECT_EQ(walk.picture.interlaced, height >= 5) << height;
    }
}

TEST_F(Gif, ImagesWithoutPixelsHaveNoCodes)
{
    for (const auto &[width, height] : {std::pair{0, 0}, {0, 9}, {9, 0}})
    {
        GifImage gif(width, height, 2, {});
        for (const int32_t fInterlaced : {0, 1})
        {
            const Bytes bytes = GifBytes(gif.image(), fInterlaced);
            EXPECT_EQ(GetGraphError(), 0);
            EXPECT_EQ(_Part(bytes, 29, 3), (Bytes{2, 0, 0x3B})) << width << "x" << height;
            EXPECT_EQ(bytes.size(), 32u);
        }
    }
}

// The code stream

static Bytes _Noise(uint32_t nColors, int32_t count, uint32_t seed = 1)
{
    std::mt19937 random(seed);
    return RandomGifImage(&random, GifPixels::kNoise, count, 1, nColors).positions();
}

static GifWalk _WalkRow(uint32_t nColors, const Bytes &positions, size_t count)
{
    GifImage gif = _Row(nColors, _Part(positions, 0, count));
    return CheckGif(LiteralGif(*gif.image(), 0));
}

// The first count of these positions, and up to two fewer and two more.
static void _ExpectRightAround(uint32_t nColors, const Bytes &positions, size_t count)
{
    for (size_t n = count > 2 ? count - 2 : 1; n <= count + 2; ++n)
    {
        GifImage gif = _Row(nColors, _Part(positions, 0, n));
        _ExpectRight(&gif, 0);
    }
}

// The smallest count for which fEnough says yes; it goes on saying yes for every larger one.
template <class Enough>
static size_t _Smallest(size_t low, size_t high, Enough fEnough)
{
    while (low < high)
    {
        const size_t middle = (low + high) / 2;
        const bool fHere = fEnough(middle);
        (fHere ? high : low) = fHere ? middle : middle + 1;
    }
    return low;
}

TEST_F(Gif, TheWidthMayGrowWithTheEndCode)
{
    for (const uint32_t nColors : {2u, 4u, 8u, 16u, 32u, 64u, 128u, 256u})
    {
        const Bytes positions = _Noise(nColors, 600);
        size_t count = 1;
        while (count < 590 && !_WalkRow(nColors, positions, count).fWidthGrowsAtEnd)
        {
            ++count;
        }
        ASSERT_LT(count, 590u) << nColors;
        _ExpectRightAround(nColors, positions, count);
    }
}

static size_t _CodeBytes(const GifWalk &walk)
{
    size_t sum = 0;
    for (const int32_t packet : walk.packets)
    {
        sum += static_cast<size_t>(packet);
    }
    return sum;
}

// Tests images whose codes take so many bytes; false when there is none, because the number of codes alone decides how
// many bits they take, and some sums are stepped over.
static bool _ExpectRightAtCodeBytes(uint32_t nColors, size_t wanted)
{
    const Bytes positions = _Noise(nColors, 6000);
    const size_t count =
        _Smallest(1, 5990, [&](size_t n) { return _CodeBytes(_WalkRow(nColors, positions, n)) >= wanted; });
    if (_CodeBytes(_WalkRow(nColors, positions, count)) != wanted)
    {
        return false;
    }
    _ExpectRightAround(nColors, positions, count);
    return true;
}

TEST_F(Gif, TheLastPacketMayHaveAnySize)
{
    // Up to one packet and after one: 256 and 511 leave a packet of one byte, 255 and 510 leave none.
    for (const size_t bytes : {253u, 254u, 255u, 256u, 508u, 509u, 510u, 511u})
    {
        int32_t nFound = 0;
        for (const uint32_t nColors : {4u, 8u, 16u, 32u, 64u, 128u, 256u})
        {
            nFound += _ExpectRightAtCodeBytes(nColors, bytes);
        }
        EXPECT_GE(nFound, 2) << bytes;
    }
}

// How many of the positions it takes until 4096 codes are in use.
static size_t _PixelsUntilFull(uint32_t nColors, const Bytes &positions)
{
    return _Smallest(1, positions.size() - 100,
                     [&](size_t n)
                     {
                         const GifWalk walk = _WalkRow(nColors, positions, n);
                         return walk.entriesAtEnd == 4096 || walk.nClears > 1;
                     });
}

TEST_F(Gif, TheTableMayFillWithTheLastPixelAndEmptyWithTheNext)
{
    for (const uint32_t nColors : {2u, 5u, 16u, 32u, 33u, 128u, 256u})
    {
        const Bytes positions = _Noise(nColors, 60000);
        const size_t full = _PixelsUntilFull(nColors, positions);
        bool fReset = false;
        for (size_t n = full - 2; !fReset; ++n)
        {
            ASSERT_LE(n, positions.size());
            GifImage gif = _Row(nColors, _Part(positions, 0, n));
            const GifWalk walk = _ExpectRight(&gif, 0);
            EXPECT_EQ(walk.entriesAtEnd == 4096, n >= full && walk.nClears == 1) << n;
            fReset = walk.nClears == 2;
            EXPECT_TRUE(!fReset || walk.pixelsAtLastClear == static_cast<int32_t>(n) - 1); // one pixel, then the end
        }
    }
}

TEST_F(Gif, ALongRunFillsTheTableAndStartsItAnew)
{
    // 2 colours: codes 6 to 4095 are strings of 2 to 4091 pixels, learned after codes for 1 to 4090 pixels; the code
    // for 4091 finds the table full: 1 + 2 + .. + 4091 pixels. Bits: the clear code, then 3 codes of 3, 8 of 4, 16 of 5
    // .. 1024 of 11 and 2048 of 12, and the end code of 12 = 45064 = 5633 bytes in 23 packets. Around them are 31 bytes
    // and the trailer. One pixel more brings a clear code of 12 bits, and 3 bits each for the pixel and the end code: 6
    // bits more.
    const int32_t count = 4091 * 4092 / 2;
    GifImage gif(count + 1, 1, 2, Bytes(static_cast<size_t>(count) + 1));
    const Bytes bytes = GifBytes(gif.image(), 0);
    EXPECT_EQ(FirstDifference(bytes, LiteralGif(*gif.image(), 0)), "");
    EXPECT_EQ(bytes.size(), 31 + 23 + 5634 + 1u);
    Image narrow = *gif.image();
    narrow.width = count;
    const Bytes narrowBytes = GifBytes(&narrow, 0);
    EXPECT_EQ(FirstDifference(narrowBytes, LiteralGif(narrow, 0)), "");
    EXPECT_EQ(narrowBytes.size(), 31 + 23 + 5633 + 1u);
}

TEST_F(Gif, TheStringOfTwoFirstColorsMayBeLost)
{
    // Colour 16 before colour 1 takes slot 0, where colour 0 twice belongs; what then lies in the next slots of a
    // probe takes the place of colour 0 twice.
    std::mt19937 random(5);
    int64_t nLost = 0;
    for (const uint32_t nColors : {17u, 32u, 33u, 64u, 129u, 256u})
    {
        for (int32_t i = 0; i < 30; ++i)
        {
            GifImage gif = RandomGifImage(&random, GifPixels::kZeroPairs, 97, 101, nColors);
            GifCounts counts;
            const Bytes wanted = LiteralGif(*gif.image(), 0, &counts);
            EXPECT_EQ(FirstDifference(GifBytes(gif.image(), 0), wanted), "");
            nLost += counts.nZeroKeyLost;
        }
    }
    EXPECT_GT(nLost, 30);
}

TEST_F(Gif, TheLastCodeBeforeTheLastColorIsANewString)
{
    // Key 255 << 12 | 4095 has all bits set. Code 4095 is 7 7 and comes at once, before 255: nothing else is learned
    // that late, since the next new string empties the table.
    Bytes noise = _Noise(256, 9000);
    std::replace(noise.begin(), noise.end(), uint8_t{7}, uint8_t{8});
    const size_t full = _PixelsUntilFull(256, noise);
    bool fMet = false;
    for (size_t n = full - 10; n < full + 10; ++n)
    {
        Bytes positions = _Part(noise, 0, n);
        positions.insert(positions.end(), {7, 7, 7, 255});
        GifImage gif = _Row(256, positions);
        const GifWalk walk = _ExpectRight(&gif, 0);
        fMet = fMet || walk.pixelsAtLastClear == static_cast<int32_t>(n) + 3; // 255 stands alone after the clear code
    }
    EXPECT_TRUE(fMet);
}

TEST_F(Gif, CrowdedSlotsAreProbedLikeInTheLiteralCoder)
{
    // The best of some hundred images of few colours, of which each pair is new: many keys, few homes.
    GifCounts most = {0, 0, 0};
    for (uint32_t seed = 0; seed < 100; ++seed)
    {
        std::mt19937 random(seed);
        GifImage gif = RandomGifImage(&random, GifPixels::kNoise, 100, 100, 2 + seed % 31);
        GifCounts counts;
        const Bytes wanted = LiteralGif(*gif.image(), 0, &counts);
        EXPECT_EQ(FirstDifference(GifBytes(gif.image(), 0), wanted), "") << seed;
        most = counts.nProbes > most.nProbes ? counts : most;
    }
    EXPECT_GT(most.nProbes, 10000); // more than one a pixel
}

// Failures

TEST_F(Gif, WithoutImageOrStreamNothingHappens)
{
    GifImage gif = _Row(2, {1});
    ImgToGif(gif.image(), 0, nullptr);
    EXPECT_TRUE(GifBytes(nullptr, 0).empty());
    EXPECT_EQ(GetGraphError(), 0);
    EXPECT_EQ(pCurImg, nullptr);
}

TEST_F(Gif, AnImageWithoutPixelsMemoryWritesNothing)
{
    GifImage gif = _Row(2, {1});
    Image broken = *gif.image();
    broken.pixels = nullptr;
    broken.left = 4;
    EXPECT_TRUE(GifBytes(&broken, 0).empty());
    EXPECT_EQ(GetGraphError(), -2);
    EXPECT_EQ(broken.left, 4);
}

TEST_F(Gif, AStreamInErrorGetsNothingAndSetsNoError)
{
    GifImage gif = _Row(2, {1});
    FILE *readOnly = fopen("/dev/null", "rb");
    ASSERT_NE(readOnly, nullptr);
    setvbuf(readOnly, nullptr, _IONBF, 0);
    fputc('x', readOnly);
    ASSERT_TRUE(ferror(readOnly));
    ImgToGif(gif.image(), 0, readOnly);
    fclose(readOnly);
    EXPECT_EQ(GetGraphError(), 0);
    EXPECT_EQ(pCurImg, nullptr);
}

TEST_F(Gif, WithoutMemoryForTheTablesNothingIsWritten)
{
    for (const int64_t nth : {1, 2})
    {
        GifImage gif = _Row(2, {1});
        gif.image()->left = 5;
        gif.image()->top = 6;
        FILE *out = tmpfile();
        ASSERT_NE(out, nullptr);
        FailAllocation(nth);
        ImgToGif(gif.image(), 0, out);
        EXPECT_TRUE(AllocationFailed());
        FailAllocation(0);
        EXPECT_EQ(ftell(out), 0);
        fclose(out);
        EXPECT_EQ(GetGraphError(), 0);
        EXPECT_EQ(gif.image()->left, 0); // on purpose
        EXPECT_EQ(gif.image()->top, 0);
        EXPECT_EQ(_pHTab, nullptr);
        EXPECT_EQ(_pCodeTab, nullptr);
        _ExpectRight(&gif, 0);
    }
}

TEST_F(Gif, APixelWithoutAPlaceBreaksTheImageOff)
{
    // The bad pixel at every place of an image of more than one packet.
    const Bytes positions = _Noise(100, 700);
    for (size_t at = 0; at < positions.size(); ++at)
    {
        GifImage gif = _Row(100, positions);
        gif.image()->pixels[at] = GifImage::PaletteColor(100); // position -1, read as 255, and 7 bits end at 127
        gif.image()->left = 7;
        const Bytes bytes = GifBytes(gif.image(), 0);
        EXPECT_EQ(GetGraphError(), -3);
        EXPECT_EQ(FirstDifference(bytes, LiteralGif(*gif.image(), 0)), "") << at;
        EXPECT_EQ(gif.image()->left, 7);
        EXPECT_EQ(_curBits, 0);
        EXPECT_EQ(_pHTab, nullptr);
    }
    GifImage next = _Row(100, positions);
    _ExpectRight(&next, 0);
}

TEST_F(Gif, ABadPixelAtAFullTableStillBringsTheClearCode)
{
    const Bytes positions = _Noise(5, 40000);
    const size_t full = _PixelsUntilFull(5, positions);
    for (size_t at = full - 30; at < full + 30; ++at)
    {
        GifImage gif = _Row(5, positions);
        gif.image()->pixels[at] = GifImage::PaletteColor(5);
        EXPECT_EQ(FirstDifference(GifBytes(gif.image(), 0), LiteralGif(*gif.image(), 0)), "") << at;
        EXPECT_EQ(GetGraphError(), -3);
    }
}

TEST_F(Gif, With256EntriesAPixelWithoutAPlaceIsTheLast)
{
    GifImage gif = _Row(129, {3});
    gif.image()->pixels[0] = GifImage::PaletteColor(200);
    const GifWalk walk = CheckGif(GifBytes(gif.image(), 0));
    EXPECT_EQ(walk.wrong, "");
    EXPECT_EQ(walk.picture.pixels, Bytes{255});
}

// A stream that takes so many bytes and fails from then on.
class FailingStream
{
public:
    Bytes taken;
    int32_t nRefused = 0; // writes of which nothing was taken

    FailingStream(size_t limit, int mode) : _limit(limit)
    {
        _stream = fopencookie(this, "wb", {nullptr, _Write, nullptr, nullptr});
        setvbuf(_stream, nullptr, mode, 64);
    }

    ~FailingStream()
    {
        fclose(_stream);
    }

    FailingStream(const FailingStream &) = delete;
    FailingStream &operator=(const FailingStream &) = delete;

    FILE *stream()
    {
        return _stream;
    }

private:
    static ssize_t _Write(void *cookie, const char *data, size_t size)
    {
        FailingStream *self = static_cast<FailingStream *>(cookie);
        const size_t count = std::min(size, self->_limit - self->taken.size());
        self->taken.insert(self->taken.end(), data, data + count);
        self->nRefused += count == 0;
        return static_cast<ssize_t>(count); // 0: failed
    }

    size_t _limit;
    FILE *_stream;
};

TEST_F(Gif, AFailureAtAnyByteStopsTheFileAndNothingElse)
{
    const Bytes positions = _Noise(100, 500);
    for (const int mode : {_IONBF, _IOFBF})
    {
        GifImage gif = _Row(100, positions);
        gif.SetThru(1);
        const Bytes whole = GifBytes(gif.image(), 0);
        ASSERT_GT(whole.size(), 13 + 3 * 128 + 18 + 256 + 3u); // two packets
        for (size_t limit = 0; limit < whole.size(); ++limit)
        {
            FailingStream failing(limit, mode);
            ImgToGif(gif.image(), 0, failing.stream());
            EXPECT_EQ(GetGraphError(), -3) << limit;
            EXPECT_EQ(failing.taken, _Part(whole, 0, failing.taken.size())) << limit;
            EXPECT_EQ(_curBits, 0);
            EXPECT_TRUE(mode == _IOFBF || failing.taken.size() == limit);
            EXPECT_EQ(FirstDifference(GifBytes(gif.image(), 0), whole), "") << "after " << limit;
        }
        FailingStream enough(whole.size(), mode);
        ImgToGif(gif.image(), 0, enough.stream());
        EXPECT_EQ(GetGraphError(), 0);
        EXPECT_EQ(enough.taken, whole);
    }
}

TEST_F(Gif, AFailureInsideALongRunEndsItThere)
{
    GifImage gif(2000, 1000, 2, Bytes(2000000)); // some 2000 codes, 10 packets
    FailingStream failing(13 + 6 + 11, _IONBF);  // all before the first packet
    ImgToGif(gif.image(), 0, failing.stream());
    EXPECT_EQ(GetGraphError(), -3);
    EXPECT_EQ(failing.nRefused, 1);
}

TEST_F(Gif, OnlyAFailedTrailerKeepsTheOriginAt0AndTheTables)
{
    GifImage gif = _Row(3, {0, 1, 2});
    const size_t size = GifBytes(gif.image(), 0).size();
    for (const size_t limit : {size - 2, size - 1})
    {
        gif.image()->left = 8;
        gif.image()->top = 9;
        FailingStream failing(limit, _IONBF);
        ImgToGif(gif.image(), 0, failing.stream());
        const bool fTrailer = limit == size - 1;
        EXPECT_EQ(GetGraphError(), -3);
        EXPECT_EQ(gif.image()->left, fTrailer ? 0 : 8);
        EXPECT_EQ(gif.image()->top, fTrailer ? 0 : 9);
        EXPECT_EQ(_pHTab != nullptr, fTrailer);
        EXPECT_EQ(_pCodeTab != nullptr, fTrailer);
    }
    _ExpectRight(&gif, 0);
    EXPECT_EQ(_pHTab, nullptr);
}

TEST_F(Gif, AFullDiskSetsTheError)
{
    for (const int32_t count : {1, 20000})
    {
        GifImage gif = _Row(256, _Noise(256, count));
        FILE *full = fopen("/dev/full", "wb");
        ASSERT_NE(full, nullptr);
        ImgToGif(gif.image(), 0, full);
        fclose(full);
        EXPECT_EQ(GetGraphError(), -3) << count;
    }
}

TEST_F(Gif, AClosedPipeSetsTheError)
{
    const auto old = std::signal(SIGPIPE, SIG_IGN);
    int aEnd[2];
    ASSERT_EQ(pipe(aEnd), 0);
    close(aEnd[0]);
    FILE *out = fdopen(aEnd[1], "wb");
    GifImage gif = _Row(256, _Noise(256, 20000));
    ImgToGif(gif.image(), 0, out);
    fclose(out);
    std::signal(SIGPIPE, old);
    EXPECT_EQ(GetGraphError(), -3);
    _ExpectRight(&gif, 0);
}
