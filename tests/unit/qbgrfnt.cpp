// qbgrfnt.cpp - the strike fonts: the built-in tables, selection, sizes, and every glyph at every size against a slow
// scaler of the test's own.

#include "qbgrfnt.h"
#include "qbgrfnt_state.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

static const FontRec *const kFonts[] = {&_small8_rec, &_geneva10_rec, &_helvetica10_rec};

class Fonts : public testing::Test
{
protected:
    void SetUp() override
    {
        InitFonts();
    }
};

static int32_t GlyphWidth(const FontRec &font, int32_t code)
{
    return font.pLoc[code - font.minVal + 1] - font.pLoc[code - font.minVal];
}

static int32_t WidestGlyph(const FontRec &font)
{
    int32_t widest = 0;
    for (int32_t code = font.minVal; code <= font.maxVal; code++)
    {
        widest = std::max(widest, GlyphWidth(font, code));
    }
    return widest;
}

static std::vector<int32_t> EmptyCodes(const FontRec &font)
{
    std::vector<int32_t> codes;
    for (int32_t code = font.minVal; code <= font.maxVal; code++)
    {
        if (GlyphWidth(font, code) == 0)
        {
            codes.push_back(code);
        }
    }
    return codes;
}

// Whether a strike has ink in a row and column.
static bool Ink(const FontRec &font, int32_t row, int32_t column)
{
    const int32_t rowBytes = (font.w + 7) / 8;
    return (font.pBuf[row * rowBytes + column / 8] >> (7 - column % 8) & 1) != 0;
}

// A fetched bitmap as text, only its own columns.
static std::string Picture(const FontChar &glyph)
{
    std::string text;
    for (int32_t row = 0; row < glyph.size; row++)
    {
        for (int32_t column = 0; column < glyph.imageWidth; column++)
        {
            const bool fInk = (glyph.bits[row * glyph.rowBytes + column / 8] >> (7 - column % 8) & 1) != 0;
            text += fInk ? '#' : '.';
        }
        text += '\n';
    }
    return text;
}

static FontChar Fetch(int32_t code)
{
    FontChar glyph = {};
    EXPECT_EQ(GetFontChar(code, 1, &glyph), 1) << "code " << code;
    return glyph;
}

// A strike of a test's own. Its bytes are on the heap and not one more than needed, so that a sanitizer sees a read
// beyond them. Code 0 holds the columns before the glyph, code 1 the glyph, code 2 those behind it.
class TestFont
{
public:
    TestFont(int32_t rows, int32_t before, int32_t width, int32_t behind)
        : strike(new uint8_t[Size(rows, before + width + behind)]()), locations{0, static_cast<uint16_t>(before),
                                                                                static_cast<uint16_t>(before + width),
                                                                                static_cast<uint16_t>(before + width +
                                                                                                      behind)}
    {
        font.minVal = 0;
        font.maxVal = 2;
        font.ascent = static_cast<int16_t>(rows);
        font.h = static_cast<int16_t>(rows);
        font.w = static_cast<int16_t>(before + width + behind);
        font.pBuf = strike.get();
        font.pLoc = locations;
        font.pName = "Test";
    }

    void SetInk(int32_t row, int32_t column)
    {
        const int32_t byte = row * ((font.w + 7) / 8) + column / 8;
        strike[static_cast<size_t>(byte)] |= static_cast<uint8_t>(0x80 >> column % 8);
    }

    void FillWithInk()
    {
        memset(strike.get(), 0xFF, Size(font.h, font.w));
    }

    // Ink as in a text of '.' and '#' rows, from the glyph's first column on.
    void Draw(const std::vector<std::string> &rows)
    {
        for (size_t row = 0; row < rows.size(); row++)
        {
            for (size_t column = 0; column < rows[row].size(); column++)
            {
                if (rows[row][column] == '#')
                {
                    SetInk(static_cast<int32_t>(row), locations[1] + static_cast<int32_t>(column));
                }
            }
        }
    }

    FontRec font = {};

private:
    static size_t Size(int32_t rows, int32_t width)
    {
        const int32_t nBytes = rows * ((width + 7) / 8);
        return static_cast<size_t>(nBytes);
    }

    std::unique_ptr<uint8_t[]> strike;

public:
    uint16_t locations[4];
};

// The built-in tables

static void ExpectRecord(const FontRec &font, const FontRec &expected)
{
    EXPECT_STREQ(font.pName, expected.pName);
    EXPECT_EQ(font.minVal, expected.minVal);
    EXPECT_EQ(font.maxVal, expected.maxVal);
    EXPECT_EQ(font.ascent, expected.ascent);
    EXPECT_EQ(font.descent, expected.descent);
    EXPECT_EQ(font.h, expected.h);
    EXPECT_EQ(font.w, expected.w);
    EXPECT_EQ(font.pBuf, expected.pBuf);
    EXPECT_EQ(font.pLoc, expected.pLoc);
    EXPECT_EQ(font.pOffWid, nullptr);
}

TEST_F(Fonts, TheListHoldsTheThreeFontsInOrder)
{
    EXPECT_EQ(_font.nFonts, 3);
    ExpectRecord(*_font.aFontList[0], {22, 198, 7, 1, 8, 945, _small8_bf, _small8_lc, nullptr, "Small8"});
    ExpectRecord(*_font.aFontList[1], {9, 217, 10, 2, 12, 1154, _geneva10_bf, _geneva10_lc, nullptr, "Geneva12"});
    ExpectRecord(*_font.aFontList[2],
                 {32, 126, 9, 2, 11, 507, _helvetica10_bf, _helvetica10_lc, nullptr, "Helvetica10"});
}

// The sizes of the tables stand only where they are made.
static void ExpectTableSizes(const std::string &file, const std::string &name, int locations, int strikeBytes)
{
    std::ifstream in(std::string(BUILD_DIR "/fonts/") + file);
    const std::string text = {std::istreambuf_iterator<char>(in), {}};
    EXPECT_NE(text.find("uint16_t " + name + "_lc[" + std::to_string(locations) + "] = "), std::string::npos);
    EXPECT_NE(text.find("uint8_t " + name + "_bf[" + std::to_string(strikeBytes) + "] = "), std::string::npos);
}

TEST_F(Fonts, TheTablesHaveNoByteTooManyOrTooFew)
{
    ExpectTableSizes("small8.cpp", "_small8", 178, 952);          // 119 bytes * 8 rows
    ExpectTableSizes("geneva12.cpp", "_geneva10", 210, 1740);     // 145 bytes * 12 rows
    ExpectTableSizes("helvetica10.cpp", "_helvetica10", 96, 704); // 64 bytes * 11 rows
}

TEST_F(Fonts, LocationsRiseFromZeroToTheStrikeWidth)
{
    for (const FontRec *font : kFonts)
    {
        const int32_t nCodes = font->maxVal - font->minVal + 1;
        EXPECT_EQ(font->pLoc[0], 0);
        EXPECT_EQ(font->pLoc[nCodes], font->w);
        EXPECT_TRUE(std::is_sorted(font->pLoc, font->pLoc + nCodes + 1)) << font->pName;
    }
}

TEST_F(Fonts, GlyphWidthsAreThoseTheLayoutReliesOn)
{
    EXPECT_EQ(GlyphWidth(_small8_rec, ' '), 3);
    EXPECT_EQ(GlyphWidth(_geneva10_rec, ' '), 3);
    EXPECT_EQ(GlyphWidth(_helvetica10_rec, ' '), 4);
    for (int32_t code = 'A'; code <= 'C'; code++)
    {
        EXPECT_EQ(GlyphWidth(_small8_rec, code), 5);
        EXPECT_EQ(GlyphWidth(_helvetica10_rec, code), 7);
    }
    EXPECT_EQ(WidestGlyph(_small8_rec), 16);
    EXPECT_EQ(WidestGlyph(_geneva10_rec), 12);
    EXPECT_EQ(WidestGlyph(_helvetica10_rec), 10);
}

TEST_F(Fonts, OnlyTheControlCodesOfGeneva12AreEmpty)
{
    std::vector<int32_t> controls;
    for (int32_t code = 9; code <= 31; code++)
    {
        controls.push_back(code);
    }
    EXPECT_EQ(EmptyCodes(_geneva10_rec), controls);
    EXPECT_EQ(EmptyCodes(_helvetica10_rec), std::vector<int32_t>());
    EXPECT_EQ(EmptyCodes(_small8_rec), std::vector<int32_t>());
}

TEST_F(Fonts, NoGlyphBothBeginsAndEndsOnAByteBoundary)
{
    for (const FontRec *font : kFonts)
    {
        for (int32_t i = 0; i <= font->maxVal - font->minVal; i++)
        {
            const int32_t start = font->pLoc[i];
            const int32_t end = font->pLoc[i + 1];
            EXPECT_FALSE(start != end && start % 8 == 0 && end % 8 == 0)
                << font->pName << " code " << font->minVal + i << " columns " << start << " to " << end;
        }
    }
}

TEST_F(Fonts, FiguresAreEquallyWide)
{
    for (const FontRec *font : kFonts)
    {
        for (int32_t code = '1'; code <= '9'; code++)
        {
            EXPECT_EQ(GlyphWidth(*font, code), GlyphWidth(*font, '0')) << font->pName << " " << char(code);
        }
    }
}

TEST_F(Fonts, NoTwoPrintableAsciiGlyphsLookTheSame)
{
    for (int32_t index = 0; index < 3; index++)
    {
        SetFont(index);
        for (int32_t code = '!'; code <= '~'; code++)
        {
            const std::string picture = Picture(Fetch(code));
            for (int32_t other = '!'; other < code; other++)
            {
                EXPECT_NE(picture, Picture(Fetch(other)))
                    << kFonts[index]->pName << " " << char(other) << " " << char(code);
            }
        }
    }
}

TEST_F(Fonts, LettersAndFiguresEndWithABlankColumn)
{
    for (const FontRec *font : kFonts)
    {
        for (int32_t code = '0'; code <= 'z'; code++)
        {
            const int32_t last = font->pLoc[code - font->minVal + 1] - 1;
            for (int32_t row = 0; isalnum(code) && row < font->h; row++)
            {
                EXPECT_FALSE(Ink(*font, row, last)) << font->pName << " " << char(code) << " row " << row;
            }
        }
    }
}

// Selection

TEST_F(Fonts, Small8IsCurrentAtFirst)
{
    SetFont(2);
    InitFonts();
    EXPECT_EQ(GetFont(), 0);
    EXPECT_EQ(_font.curMinVal, 22);
    EXPECT_EQ(_font.curMaxVal, 198);
    EXPECT_EQ(_font.curAscent, 7);
    EXPECT_EQ(_font.curDescent, 1);
    EXPECT_EQ(_font.curH, 8);
    EXPECT_EQ(_font.curW, 945);
    EXPECT_EQ(_font.pCurBuf, _small8_bf);
    EXPECT_EQ(_font.pCurLoc, _small8_lc);
    EXPECT_EQ(_font.pCurOffWid, nullptr);
    EXPECT_EQ(_font.curRowByte, 119); // (945 + 7) / 8
    EXPECT_EQ(_font.curLeading, 2);   // 8 / 4
    EXPECT_EQ(_font.curSize, 8);
    EXPECT_EQ(_font.curScaling, 128);
}

TEST_F(Fonts, EachFontHasItsOwnRowBytesLeadingAndSize)
{
    SetFont(1);
    EXPECT_EQ(_font.curRowByte, 145); // (1154 + 7) / 8
    EXPECT_EQ(_font.curLeading, 3);   // 12 / 4
    EXPECT_EQ(_font.curSize, 12);
    SetFont(2);
    EXPECT_EQ(_font.curRowByte, 64); // (507 + 7) / 8
    EXPECT_EQ(_font.curLeading, 2);  // 11 / 4
    EXPECT_EQ(_font.curSize, 11);
}

TEST_F(Fonts, AnIndexOutsideTheListChangesNothing)
{
    SetFont(1);
    for (const int32_t index : {3, 31, 32, 65536, INT32_MAX, -1, INT32_MIN})
    {
        SetFont(index);
        EXPECT_EQ(GetFont(), 1);
        EXPECT_EQ(_font.pCurBuf, _geneva10_bf);
    }
}

TEST_F(Fonts, AnotherFontResetsTheSize)
{
    SetFontSize(20);
    SetFont(1);
    EXPECT_EQ(_font.curSize, 12);
    EXPECT_EQ(_font.curScaling, 128);
}

TEST_F(Fonts, TheCurrentFontSetAgainKeepsItsSize)
{
    SetFontSize(20);
    SetFont(0);
    EXPECT_EQ(_font.curSize, 20);
    EXPECT_EQ(_font.curScaling, 320); // 20 * 128 / 8
}

TEST_F(Fonts, AFontIsFoundByItsName)
{
    EXPECT_EQ(GetFontByName("Small8"), 0);
    EXPECT_EQ(GetFontByName("Geneva12"), 1);
    EXPECT_EQ(GetFontByName("Helvetica10"), 2);
    EXPECT_EQ(GetFont(), 0);
}

TEST_F(Fonts, AnUnknownNameGivesTheCurrentFont)
{
    SetFont(1);
    for (const char *name : {"small8", "Small", "Small88", "", "off", "Helvetica10 "})
    {
        EXPECT_EQ(GetFontByName(name), 1) << name;
    }
    EXPECT_EQ(GetFontByName(nullptr), 1);
}

TEST_F(Fonts, AnIncompleteRecordIsNotMadeCurrent)
{
    const TestFont test(4, 0, 3, 0);
    FontRec noStrike = test.font;
    noStrike.pBuf = nullptr;
    FontRec noLocations = test.font;
    noLocations.pLoc = nullptr;
    for (const FontRec *font : std::initializer_list<const FontRec *>{nullptr, &noStrike, &noLocations})
    {
        _SetFontPtr(font);
        EXPECT_EQ(_font.pCurBuf, _small8_bf);
        EXPECT_EQ(_font.curH, 8);
    }
}

// Sizes

TEST_F(Fonts, SizesAreClampedTo6And127)
{
    const int32_t sizes[][2] = {{INT16_MIN, 6}, {-1, 6},    {0, 6},     {3, 6},     {5, 6},           {6, 6},
                                {7, 7},         {126, 126}, {127, 127}, {128, 127}, {INT16_MAX, 127}, {500, 127}};
    for (const auto &[asked, got] : sizes)
    {
        SetFontSize(asked);
        EXPECT_EQ(_font.curSize, got) << asked;
        EXPECT_EQ(_font.curScaling, got * 16) << asked; // 128 / 8 rows
    }
}

TEST_F(Fonts, OnlyTheLow16BitsOfASizeCount)
{
    SetFontSize(65536 + 10);
    EXPECT_EQ(_font.curSize, 10);
    SetFontSize(0xFFFF); // -1
    EXPECT_EQ(_font.curSize, 6);
}

TEST_F(Fonts, TheScaleIsCutOffToWhole128ths)
{
    SetFontSize(12);
    EXPECT_EQ(_font.curScaling, 192); // 12 * 128 / 8
    SetFont(2);
    SetFontSize(14);
    EXPECT_EQ(_font.curScaling, 162); // 1792 / 11 = 162.9
    SetFont(1);
    SetFontSize(8);
    EXPECT_EQ(_font.curScaling, 85); // 1024 / 12 = 85.3
}

TEST_F(Fonts, TheScalingMapRoundsHalfUp)
{
    SetFontSize(12);
    EXPECT_EQ(aScMap[0], 0);
    EXPECT_EQ(aScMap[1], 2); // 1.5
    EXPECT_EQ(aScMap[2], 3);
    EXPECT_EQ(aScMap[3], 5); // 4.5
    EXPECT_EQ(aScMap[8], 12);
    EXPECT_EQ(aScMap[128], 192);
}

TEST_F(Fonts, TheFontsOwnSizeLeavesTheMapAsItWas)
{
    SetFontSize(12);
    SetFontSize(8);
    EXPECT_EQ(_font.curScaling, 128);
    EXPECT_EQ(_font.curSize, 8);
    EXPECT_EQ(aScMap[128], 192);
}

TEST_F(Fonts, TheScaleIsTakenAgainstTheStrikeHeight)
{
    TestFont test(8, 0, 3, 0);
    test.font.ascent = 5;
    test.font.descent = 2;
    _SetFontPtr(&test.font);
    EXPECT_EQ(_font.curSize, 7);
    SetFontSize(7); // the current size: nothing happens
    EXPECT_EQ(_font.curScaling, 128);
    SetFontSize(8);
    EXPECT_EQ(_font.curScaling, 128);
    SetFontSize(7);
    EXPECT_EQ(_font.curScaling, 112); // 7 * 128 / 8
}

TEST_F(Fonts, AFontWithoutRowsStaysAtOneToOne)
{
    TestFont test(1, 0, 3, 0);
    test.font.h = 0;
    _SetFontPtr(&test.font);
    SetFontSize(20);
    EXPECT_EQ(_font.curScaling, 128);
    EXPECT_EQ(_font.curSize, 20);
}

static void ExpectInfo(int32_t ascent, int32_t descent, int32_t leading, int32_t size)
{
    FontInfo info = {};
    GetFontInfo(&info);
    EXPECT_EQ(info.ascent, ascent);
    EXPECT_EQ(info.descent, descent);
    EXPECT_EQ(info.leading, leading);
    EXPECT_EQ(info.size, size);
}

TEST_F(Fonts, LineMetricsFollowTheSize)
{
    ExpectInfo(7, 1, 2, 8);
    SetFontSize(12);
    ExpectInfo(11, 1, 3, 12); // 7 * 1.5 = 10.5, 2 * 1.5 = 3
    SetFont(1);
    ExpectInfo(10, 2, 3, 12);
    SetFont(2);
    SetFontSize(127);             // 127 * 128 / 11 = 1477
    ExpectInfo(104, 23, 23, 127); // 9 * 1477 / 128 = 103.9, 2 * 1477 / 128 = 23.1
}

TEST_F(Fonts, DescentIsSizeMinusAscentAndNotTheScaledDescent)
{
    SetFont(1);
    SetFontSize(9);
    ExpectInfo(8, 1, 2, 9); // 10 * 96 / 128 = 7.5; the descent scaled would be 2 * 96 / 128 = 1.5, that is 2
}

TEST_F(Fonts, NoInfoRecordIsNoMatter)
{
    GetFontInfo(nullptr);
    ExpectInfo(7, 1, 2, 8);
}

// Codes

static bool HasGlyph(int32_t code)
{
    FontChar glyph;
    FontChar before;
    memset(&glyph, 0x5A, sizeof glyph);
    memset(&before, 0x5A, sizeof before);
    for (const int32_t wantBits : {0, 1})
    {
        if (GetFontChar(code, wantBits, &glyph))
        {
            return true;
        }
        EXPECT_EQ(memcmp(&glyph, &before, sizeof glyph), 0) << "code " << code;
    }
    return false;
}

TEST_F(Fonts, CodesOutsideTheRangeHaveNoGlyph)
{
    for (int32_t index = 0; index < 3; index++)
    {
        SetFont(index);
        for (int32_t code = 0; code < 256; code++)
        {
            EXPECT_EQ(HasGlyph(code), code >= kFonts[index]->minVal && code <= kFonts[index]->maxVal) << code;
        }
    }
}

TEST_F(Fonts, OnlyTheLowByteOfACodeCounts)
{
    const std::string comma = Picture(Fetch(44));
    EXPECT_EQ(Picture(Fetch(300)), comma);  // 256 + 44
    EXPECT_EQ(Picture(Fetch(-212)), comma); // 44 - 256
    EXPECT_EQ(Picture(Fetch(INT32_MIN + 44)), comma);
    EXPECT_FALSE(HasGlyph(256 + 21));
    EXPECT_FALSE(HasGlyph(-1)); // 255
    EXPECT_FALSE(HasGlyph(INT32_MAX));
}

TEST_F(Fonts, AnEmptyGlyphSucceeds)
{
    SetFont(1);
    for (const int32_t size : {12, 6, 127})
    {
        SetFontSize(size);
        const FontChar glyph = Fetch(9);
        EXPECT_EQ(glyph.width, 0);
        EXPECT_EQ(glyph.imageWidth, 0);
        EXPECT_EQ(glyph.rowBytes, 0);
        EXPECT_EQ(glyph.offset, 0);
        EXPECT_EQ(glyph.size, size);
    }
}

// Metrics of a glyph

static void ExpectGlyph(const FontChar &glyph, const FontChar &expected)
{
    EXPECT_EQ(glyph.ascent, expected.ascent);
    EXPECT_EQ(glyph.descent, expected.descent);
    EXPECT_EQ(glyph.leading, expected.leading);
    EXPECT_EQ(glyph.width, expected.width);
    EXPECT_EQ(glyph.imageWidth, expected.imageWidth);
    EXPECT_EQ(glyph.size, expected.size);
    EXPECT_EQ(glyph.offset, expected.offset);
    EXPECT_EQ(glyph.rowBytes, expected.rowBytes);
}

TEST_F(Fonts, AGlyphCarriesTheMetricsOfItsSize)
{
    ExpectGlyph(Fetch('A'), {7, 1, 2, 5, 5, 8, 0, 1, nullptr});
    SetFontSize(12);
    // At 3/2: 7 -> 10.5, 2 -> 3, 5 -> 7.5; 8 columns are one byte.
    ExpectGlyph(Fetch('A'), {11, 1, 3, 8, 8, 12, 0, 1, nullptr});
    SetFontSize(127);
    // At 127/8: 7 -> 111.1, 2 -> 31.75, 5 -> 79.4; 79 columns are ten bytes.
    ExpectGlyph(Fetch('A'), {111, 16, 32, 79, 79, 127, 0, 10, nullptr});
}

TEST_F(Fonts, MetricsAloneAreThoseFetchedWithTheBitmap)
{
    SetFont(2);
    for (const int32_t size : {11, 9, 40})
    {
        SetFontSize(size);
        const FontChar whole = Fetch('m');
        FontChar metrics = {};
        EXPECT_EQ(GetFontChar('m', 0, &metrics), 1);
        metrics.rowBytes = whole.rowBytes;
        ExpectGlyph(metrics, whole);
    }
}

// Code 0: offset 0x144 kept in 8 bits, width 0x25. Code 1: missing. Code 2: both 0.
static const uint16_t kOffWid[3] = {0x0A25, 0xFFFF, 0x0000};

TEST_F(Fonts, AnOffsetAndWidthTableIsDecodedWithAShiftBy3)
{
    TestFont test(8, 3, 4, 6);
    test.font.pOffWid = kOffWid;
    _SetFontPtr(&test.font);
    EXPECT_EQ(_font.pCurOffWid, kOffWid);
    ExpectGlyph(Fetch(0), {8, 0, 2, 0x25, 3, 8, 0x44, 1, nullptr});
    EXPECT_FALSE(HasGlyph(1));
    ExpectGlyph(Fetch(2), {8, 0, 2, 0, 6, 8, 0, 1, nullptr});
}

TEST_F(Fonts, OffsetAndWidthAreScaled)
{
    TestFont test(8, 3, 4, 6);
    test.font.pOffWid = kOffWid;
    _SetFontPtr(&test.font);
    SetFontSize(12);
    // At 3/2: 0x44 = 68 -> 102, 0x25 = 37 -> 55.5, 3 -> 4.5
    ExpectGlyph(Fetch(0), {12, 0, 3, 56, 5, 12, 102, 1, nullptr});
    EXPECT_FALSE(HasGlyph(1));
}

TEST_F(Fonts, WithoutATableTheWidthIsKeptIn8Bits)
{
    const TestFont test(6, 0, 300, 0);
    _SetFontPtr(&test.font);
    ExpectGlyph(Fetch(1), {6, 0, 1, 44, 300, 6, 0, 38, nullptr}); // 300 - 256, (300 + 7) / 8
}

TEST_F(Fonts, LookingUpAGlyphLeavesRowBytesAndBitsAlone)
{
    const uint8_t byte = 0;
    CharSettings settings = {0, 0, 0, 0, 77, &byte};
    EXPECT_EQ(_GetCharSettings('A', &settings), 1);
    EXPECT_EQ(settings.locStart, _small8_lc['A' - 22]);
    EXPECT_EQ(settings.locEnd, _small8_lc['A' - 21]);
    EXPECT_EQ(settings.rowBytes, 77);
    EXPECT_EQ(settings.bits, &byte);
}

// Cutting

// The glyph's columns as they must come out: the last eight are lost where both ends lie on a byte boundary.
static std::string ExpectedCut(const FontRec &font, int32_t start, int32_t end)
{
    const int32_t lost = start % 8 == 0 && end % 8 == 0 ? 8 : 0;
    std::string text;
    for (int32_t row = 0; row < font.h; row++)
    {
        for (int32_t column = start; column < end; column++)
        {
            text += column < end - lost && Ink(font, row, column) ? '#' : '.';
        }
        text += '\n';
    }
    return text;
}

TEST_F(Fonts, GlyphsAreCutAtEveryBitOffsetAndWidth)
{
    for (int32_t before = 0; before < 16; before++)
    {
        for (int32_t width = 1; width <= 40; width++)
        {
            for (const int32_t behind : {0, 1, 9})
            {
                TestFont test(3, before, width, behind);
                for (int32_t i = 0; i < 3 * test.font.w; i++)
                {
                    if (i * i % 7 < 3) // no period of 8
                    {
                        test.SetInk(i / test.font.w, i % test.font.w);
                    }
                }
                _SetFontPtr(&test.font);
                EXPECT_EQ(Picture(Fetch(1)), ExpectedCut(test.font, before, before + width))
                    << "columns " << before << " to " << before + width << " of " << test.font.w;
            }
        }
    }
}

TEST_F(Fonts, AGlyphBetweenTwoByteBoundariesLosesItsLastEightColumns)
{
    TestFont test(1, 8, 16, 8);
    test.FillWithInk();
    _SetFontPtr(&test.font);
    EXPECT_EQ(Picture(Fetch(1)), "########........\n");
}

TEST_F(Fonts, EveryBuiltInGlyphIsCutWhole)
{
    for (int32_t index = 0; index < 3; index++)
    {
        SetFont(index);
        const FontRec &font = *kFonts[index];
        for (int32_t code = font.minVal; code <= font.maxVal; code++)
        {
            const uint16_t *location = font.pLoc + code - font.minVal;
            EXPECT_EQ(Picture(Fetch(code)), ExpectedCut(font, location[0], location[1])) << font.pName << " " << code;
        }
    }
}

// Scaling

TEST_F(Fonts, AGlyphGrowsByRepeatingRowsAndColumns)
{
    TestFont test(4, 1, 3, 2);
    test.Draw({"#..", //
               ".#.", //
               "..#", //
               "###"});
    _SetFontPtr(&test.font);
    SetFontSize(6); // 3/2: boundaries 0, 2, 3, 5, 6
    EXPECT_EQ(Picture(Fetch(1)), "##...\n"
                                 "##...\n"
                                 "..#..\n"
                                 "...##\n"
                                 "...##\n"
                                 "#####\n");
}

TEST_F(Fonts, AGlyphShrinksByDroppingRowsAndColumns)
{
    TestFont test(8, 1, 4, 2);
    test.Draw({"#...", // kept
               ".#..", // kept
               "####", // dropped
               "..#.", // kept
               "...#", // kept
               "#..#", // kept
               "####", // dropped
               ".##."});
    _SetFontPtr(&test.font);
    SetFontSize(6); // 3/4: boundaries 0, 1, 2, 2, 3, 4, 5, 5, 6
    EXPECT_EQ(Picture(Fetch(1)), "#..\n"
                                 ".#.\n"
                                 "...\n"
                                 "..#\n"
                                 "#.#\n"
                                 ".#.\n");
}

// A glyph scaled the slow way: each pixel of the strike to its own rows and columns.
static std::vector<uint8_t> ScaledReference(const FontRec &font, int32_t code, int32_t size)
{
    const int32_t scaling = size * 128 / font.h;
    const auto boundary = [scaling](int32_t i)
    {
        return (i * scaling + 64) / 128;
    };
    const int32_t start = font.pLoc[code - font.minVal];
    const int32_t width = GlyphWidth(font, code);
    const int32_t rowBytes = (boundary(width) + 7) / 8;
    std::vector<uint8_t> bits;
    for (int32_t row = 0; row < font.h; row++)
    {
        std::vector<uint8_t> line(static_cast<size_t>(rowBytes));
        for (int32_t column = 0; column < width; column++)
        {
            for (int32_t x = boundary(column); Ink(font, row, start + column) && x < boundary(column + 1); x++)
            {
                line[static_cast<size_t>(x / 8)] |= static_cast<uint8_t>(0x80 >> x % 8);
            }
        }
        for (int32_t y = boundary(row); y < boundary(row + 1); y++)
        {
            bits.insert(bits.end(), line.begin(), line.end());
        }
    }
    return bits;
}

static void CompareAllGlyphs(const FontRec &font, int32_t size)
{
    for (int32_t code = font.minVal; code <= font.maxVal; code++)
    {
        const std::vector<uint8_t> expected = ScaledReference(font, code, size);
        const FontChar glyph = Fetch(code);
        ASSERT_EQ(static_cast<size_t>(glyph.rowBytes * glyph.size), expected.size())
            << font.pName << " size " << size << " code " << code;
        ASSERT_TRUE(std::equal(expected.begin(), expected.end(), glyph.bits))
            << font.pName << " size " << size << " code " << code;
    }
}

TEST_F(Fonts, EveryGlyphAtEverySizeIsThatOfTheSlowScaler)
{
    for (int32_t index = 0; index < 3; index++)
    {
        SetFont(index);
        for (int32_t size = 6; size <= 127; size++)
        {
            SetFontSize(size);
            if (_font.curScaling != 128)
            {
                CompareAllGlyphs(*kFonts[index], size);
            }
        }
    }
}

// Limits of the buffers

TEST_F(Fonts, TheWidestGlyphOfTheLowestStrikeFitsAtSize127)
{
    TestFont test(1, 1, 128, 0);
    test.FillWithInk();
    _SetFontPtr(&test.font);
    SetFontSize(127);
    const FontChar glyph = Fetch(1);
    EXPECT_EQ(glyph.imageWidth, 16256); // 128 * 127
    EXPECT_EQ(glyph.rowBytes, 2032);
    constexpr int64_t kBytes = 258064; // 127 rows of 2032
    EXPECT_EQ(std::count(glyph.bits, glyph.bits + kBytes, 0xFF), kBytes);
}

TEST_F(Fonts, TheLargestGlyphIsCutAndScaled)
{
    TestFont test(128, 1, 128, 0);
    test.FillWithInk();
    _SetFontPtr(&test.font);
    EXPECT_EQ(Fetch(1).rowBytes, 16);
    for (const int32_t size : {6, 64, 127})
    {
        SetFontSize(size);
        const std::string picture = Picture(Fetch(1));
        EXPECT_EQ(std::count(picture.begin(), picture.end(), '#'), size * size); // 128 * size / 128 both ways
    }
}

TEST_F(Fonts, AGlyphTooWideForTheScalingMapIsThereAtOneToOneOnly)
{
    const TestFont test(10, 1, 129, 0);
    _SetFontPtr(&test.font);
    EXPECT_TRUE(HasGlyph(1));
    SetFontSize(11);
    FontChar glyph = {};
    EXPECT_EQ(GetFontChar(1, 1, &glyph), 0);
    EXPECT_TRUE(HasGlyph(0));
}

TEST_F(Fonts, AGlyphTooHighForTheScalingMapIsThereAtOneToOneOnly)
{
    const TestFont test(129, 1, 8, 0);
    _SetFontPtr(&test.font);
    FontChar glyph = {};
    EXPECT_EQ(GetFontChar(1, 1, &glyph), 1);
    SetFontSize(127);
    EXPECT_EQ(GetFontChar(1, 1, &glyph), 0);
}

TEST_F(Fonts, AGlyphTooLargeForTheBufferIsMissing)
{
    const TestFont test(128, 1, 129, 0); // 17 bytes * 128 rows are more than 2048
    _SetFontPtr(&test.font);
    FontChar glyph = {};
    EXPECT_EQ(GetFontChar(1, 1, &glyph), 0);
}

TEST_F(Fonts, AGlyphWhoseReaderWouldRunOutOfTheBufferIsMissing)
{
    TestFont test(1, 1, 8, 0);
    test.font.ascent = 2048; // as many rows as the buffer has bytes
    _SetFontPtr(&test.font);
    FontChar glyph = {};
    EXPECT_EQ(GetFontChar(1, 1, &glyph), 1);
    test.font.ascent = 2049;
    _SetFontPtr(&test.font);
    EXPECT_EQ(GetFontChar(1, 1, &glyph), 0);
}

TEST_F(Fonts, AGlyphOutsideTheStrikeIsMissing)
{
    TestFont test(4, 8, 8, 0);
    test.locations[2] = 17; // one column beyond the strike
    _SetFontPtr(&test.font);
    FontChar glyph = {};
    EXPECT_EQ(GetFontChar(1, 1, &glyph), 0);
    test.locations[2] = 7; // ends before it begins
    EXPECT_EQ(GetFontChar(1, 1, &glyph), 0);
}
