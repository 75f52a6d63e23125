// qbgraph_text.cpp - text settings, the glyph stampers, running and flowing text, measuring.
//
// Most tests use Small8 at its own size: ascent 7, descent 1, leading 2, so lines are 10 apart; a space is 3 wide, "A",
// "B" and "C" are 5. Underlined spaces make the pen's way visible without any glyph.

#include "canvas.h"
#include "qbgraph_state.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

// Three columns, two rows: "##." and "#.#"; the other bits of the bytes belong to no glyph.
const uint8_t kGlyph[] = {0xDF, 0xBF};

std::string dimText(const char *text)
{
    Point dim = {-1, -1};
    GetTextDim(text, &dim);
    return std::to_string(dim.x) + "," + std::to_string(dim.y);
}

std::string charDimText(int32_t ch)
{
    Point dim = {-1, -1};
    GetCharDim(ch, &dim);
    return std::to_string(dim.x) + "," + std::to_string(dim.y);
}

// Draws a text from (x, y) and says where the pen is afterwards.
std::string penAfter(const char *text, int32_t x, int32_t y)
{
    MovePenTo(x, y);
    DrawText(text);
    return PenText();
}

TEST(TextSettings, KeepTheLow16BitsOfTheStyle)
{
    InitGraph();
    SetFontStyle(0x10005);
    EXPECT_EQ(curFontStyle, 5);
    SetFontStyle(0xFFFF);
    EXPECT_EQ(curFontStyle, -1);
    InitGraph();
    EXPECT_EQ(curFontStyle, 0);
}

TEST(TextSettings, BringAnglesIntoOneTurn)
{
    InitGraph();
    SetFontAngle(-270);
    EXPECT_EQ(curFontDir, 2);
    SetFontAngle(720);
    EXPECT_EQ(curFontDir, 0);
    SetFontAngle(450);
    EXPECT_EQ(curFontDir, 2);
    EXPECT_EQ(curFontAngle, 0); // still
    SetFontAngle(-1);
    EXPECT_EQ(curFontDir, 8);
    EXPECT_EQ(curFontAngle, 359);
    SetFontAngle(INT32_MIN); // 232 modulo 360
    EXPECT_EQ(curFontAngle, 232);
}

TEST(TextSettings, KnowFourOrientations)
{
    InitGraph();
    SetFontOrientation(4);
    EXPECT_EQ(curFontDir, 8);
    EXPECT_EQ(curFontAngle, 45);
    SetFontOrientation(3);
    EXPECT_EQ(curFontDir, 0);
    SetFontOrientation(2);
    EXPECT_EQ(curFontDir, 2);
    SetFontOrientation(65536 + 1);
    EXPECT_EQ(curFontDir, 1);
    SetFontOrientation(8);
    EXPECT_EQ(curFontDir, 0);
    EXPECT_EQ(curFontAngle, 45); // untouched
}

TEST(Angles, HaveSineAndCosineIn128ths)
{
    const struct
    {
        int32_t angle, cosine, sine;
    } angles[] = {{0, 128, 0},     {30, 111, 64},  {60, 64, 111},   {90, 0, 128},  {120, -64, 111}, {180, -128, 0},
                  {225, -90, -90}, {270, 0, -128}, {300, 64, -111}, {360, 128, 0}, {-60, 64, -111}, {785, 54, 116}};
    for (const auto &a : angles)
    {
        EXPECT_EQ(_Cos128(a.angle), a.cosine) << a.angle;
        EXPECT_EQ(_Sin128(a.angle), a.sine) << a.angle;
    }
}

TEST(Stampers, DrawAGlyphDownFromThePen)
{
    Canvas canvas(5, 4);
    MovePenTo(1, 1);
    _DrawChar(kGlyph, 3, 2);
    EXPECT_EQ(canvas.text(), ".....\n"
                             ".##..\n"
                             ".#.#.\n"
                             ".....\n");
    EXPECT_EQ(PenText(), "1,3");
}

TEST(Stampers, ReadANewByteEveryEightColumns)
{
    const uint8_t wide[] = {0x80, 0x40, 0x01, 0x80};
    Canvas canvas(30, 4); // wide enough for whole words
    _DrawChar(wide, 10, 2);
    EXPECT_EQ(canvas.text().substr(0, 12), "#........#..");
    EXPECT_EQ(canvas.text().substr(31, 12), ".......##...");
    EXPECT_EQ(canvas.count(255), 4);
}

TEST(Stampers, DrawTheSameWhereverTheGlyphLies)
{
    for (const int32_t pen : {1, 2, 3})
    {
        for (int32_t x = -6; x <= 42; x++)
        {
            for (int32_t y = -6; y <= 8; y++)
            {
                Canvas canvas(40, 6);
                SetPenSize(pen, pen);
                MovePenTo(x, y);
                _DrawChar(kGlyph, 3, 2);
                Canvas bits(40, 6);
                SetPenSize(pen, pen);
                for (const Point &bit : {Point{0, 0}, Point{1, 0}, Point{0, 1}, Point{2, 1}})
                {
                    MovePenTo(x + bit.x, y + bit.y);
                    DrawPen();
                }
                ASSERT_EQ(canvas.text(), bits.text()) << x << "," << y << " pen " << pen;
            }
        }
    }
}

TEST(Stampers, DrawBoldWithAPenOfTwo)
{
    Canvas canvas(30, 4);
    SetPenSize(2, 2);
    MovePenTo(1, 0);
    _DrawChar(kGlyph, 3, 2);
    EXPECT_EQ(canvas.text().substr(0, 7), ".###...");
    EXPECT_EQ(canvas.text().substr(31, 7), ".####..");
    EXPECT_EQ(canvas.text().substr(62, 7), ".####..");
    EXPECT_EQ(canvas.count(255), 11);
}

TEST(Stampers, TurnAGlyphBy90Degrees)
{
    Canvas canvas(5, 6);
    MovePenTo(1, 4);
    _DrawCharRotated90(kGlyph, 3, 2); // columns go up from row 3, rows to the right
    EXPECT_EQ(canvas.text(), ".....\n"
                             "..#..\n"
                             ".#...\n"
                             ".##..\n"
                             ".....\n"
                             ".....\n");
    Canvas turned(5, 6);
    MovePenTo(1, 4);
    _DrawCharRotated(kGlyph, 3, 2, 90);
    EXPECT_EQ(turned.text(), canvas.text());
}

TEST(Stampers, TurnLargeGlyphsBy90Degrees)
{
    uint8_t bits[40]; // 20 rows of 11 columns
    for (int32_t i = 0; i < 40; i++)
    {
        bits[i] = static_cast<uint8_t>(i * 89 + 7);
    }
    for (const int32_t x : {2, 30, 75}) // the last one hangs over
    {
        Canvas canvas(80, 20);
        MovePenTo(x, 15);
        _DrawCharRotated90(bits, 11, 20);
        Canvas single(80, 20);
        for (int32_t row = 0; row < 20; row++)
        {
            for (int32_t column = 0; column < 11; column++)
            {
                if ((bits[row * 2 + column / 8] >> (7 - column % 8) & 1) != 0)
                {
                    MovePenTo(x + row, 14 - column);
                    DrawPen();
                }
            }
        }
        EXPECT_EQ(canvas.text(), single.text());
    }
}

TEST(Stampers, TurnAGlyphByAnyAngle)
{
    Canvas canvas(7, 6);
    MovePenTo(5, 5);
    _DrawCharRotated(kGlyph, 3, 2, 180); // from row 4: to the left, rows upwards
    EXPECT_EQ(canvas.text(), ".......\n"
                             ".......\n"
                             ".......\n"
                             "...#.#.\n"
                             "....##.\n"
                             ".......\n");
    Canvas slanted(7, 7);
    MovePenTo(2, 4);
    _DrawCharRotated(kGlyph, 3, 2, 45); // 90 128ths both ways: 1 and 1 for one step, 2 for three, 1 up for -1
    EXPECT_EQ(slanted.text(), ".......\n"
                              ".......\n"
                              ".......\n"
                              "...##..\n"
                              "..#....\n"
                              "...#...\n"
                              ".......\n");
}

TEST(Stampers, MoveTheStartUpFrom46To225Degrees)
{
    for (const int32_t angle : {45, 46, 225, 226})
    {
        Canvas canvas(9, 9);
        const uint8_t dot[] = {0x80};
        MovePenTo(4, 4);
        _DrawCharRotated(dot, 1, 1, angle);
        EXPECT_EQ(canvas.at(4, angle >= 46 && angle <= 225 ? 3 : 4), 255) << angle;
        EXPECT_EQ(canvas.count(255), 1);
    }
}

TEST(Stampers, LeanItalicRowsAlongAPath)
{
    Canvas canvas(30, 4);
    Path path;
    InitPath(&path, -1, 2); // error 0: (3,1), then (2,2)
    SetPathOrigin(&path, 3, 1);
    _DrawCharItalic(kGlyph, 3, 2, &path);
    EXPECT_EQ(canvas.text().substr(31, 6), "...##.");
    EXPECT_EQ(canvas.text().substr(62, 6), "..#.#.");
    EXPECT_EQ(canvas.count(255), 4);
}

TEST(Stampers, LeanTurnedItalicColumnsAlongAPath)
{
    Canvas canvas(4, 6);
    Path path;
    InitPath(&path, 2, 1); // error 0: (1,4), then (2,5)
    SetPathOrigin(&path, 1, 4);
    _DrawCharRotate90Italic(kGlyph, 3, 2, &path);
    EXPECT_EQ(canvas.text(), "....\n"
                             "....\n"
                             "....\n"
                             ".##.\n"
                             ".#..\n"
                             "..#.\n");
}

TEST(Stampers, ShiftItalicRowsAtAnyAngleTwice)
{
    Canvas canvas(5, 4);
    Path path;
    InitPath(&path, 0, 1);
    SetPathOrigin(&path, 1, 1);
    _DrawCharRotateItalic(kGlyph, 3, 2, 0, &path); // row 1 is at 2 by the path and one lower by the turn
    EXPECT_EQ(canvas.text(), ".....\n"
                             ".##..\n"
                             ".....\n"
                             ".#.#.\n");
}

TEST(Text, OfNoCharactersLeavesThePen)
{
    Canvas canvas(20, 20);
    SetFontStyle(7);
    for (const int32_t angle : {0, 90, 33})
    {
        SetFontAngle(angle);
        EXPECT_EQ(penAfter("", 5, 9), "5,9");
    }
    EXPECT_EQ(canvas.count(255), 0);
}

TEST(Text, MovesThePenAlongItsBaseLine)
{
    Canvas canvas(50, 50);
    EXPECT_EQ(penAfter("AB C", 3, 20), "21,20"); // 5 + 5 + 3 + 5
    SetFontAngle(90);
    EXPECT_EQ(penAfter("AB C", 3, 20), "3,2");
    SetFontAngle(180);
    EXPECT_EQ(penAfter("AB C", 30, 20), "12,20");
    SetFontAngle(0);
    SetFontStyle(1);
    EXPECT_EQ(penAfter("AB C", 3, 20), "29,20"); // 2 more for each
}

TEST(Text, RoundsEachStepAtAnAngle)
{
    Canvas canvas(50, 50);
    SetFontAngle(30); // cosine 111, sine 64: a width of 5 is 4 (555 + 64 over 128) and 3 (2.5, away from zero)
    // The way to the glyph top and back is 7: 4 (3.5, away from zero) and 6 (6.07).
    EXPECT_EQ(penAfter("AB", 10, 40), "18,34");
}

TEST(Text, EndedByANewlineLeavesThePenOnTheNextLine)
{
    Canvas canvas(30, 40);
    EXPECT_EQ(penAfter("AB\n", 3, 10), "3,20");
    EXPECT_EQ(penAfter("AB\n\nA", 3, 10), "8,30");
    SetFontAngle(90);
    EXPECT_EQ(penAfter("AB\n", 3, 30), "13,30");
    SetFontAngle(0);
    SetFontStyle(1);
    EXPECT_EQ(penAfter("A\n", 3, 10), "3,21");
}

TEST(Text, SkipsCharactersThatTheFontLacks)
{
    Canvas canvas(30, 20);
    EXPECT_EQ(penAfter("\x15\xFF\x01", 3, 10), "3,10");
    EXPECT_EQ(canvas.count(255), 0);
    EXPECT_EQ(penAfter("A\x15", 3, 10), "8,10");
}

TEST(Text, StandsOnThePen)
{
    Canvas canvas(30, 20);
    MovePenTo(4, 11);
    DrawText("A");
    Canvas stamped(30, 20);
    FontChar glyph;
    ASSERT_EQ(GetFontChar('A', 1, &glyph), 1);
    MovePenTo(4, 4); // 7 above the base line
    _DrawChar(glyph.bits, glyph.imageWidth, glyph.size);
    EXPECT_EQ(canvas.text(), stamped.text());
    EXPECT_GT(canvas.count(255), 5);
}

TEST(Text, OfOneCharacterIsThatCharacter)
{
    Canvas canvas(30, 20);
    MovePenTo(4, 11);
    DrawText("A");
    Canvas single(30, 20);
    MovePenTo(4, 11);
    DrawChar('A' + 256);
    EXPECT_EQ(single.text(), canvas.text());
    EXPECT_EQ(PenText(), "9,11");
    DrawChar(0);
    EXPECT_EQ(PenText(), "9,11");
}

// What one character looks like drawn from (20, 20) by DrawText, and by a stamper called as stamp does.
template <typename Stamp>
void expectStamped(int32_t angle, int32_t style, Stamp stamp)
{
    Canvas canvas(40, 40);
    SetFontAngle(angle);
    SetFontStyle(style);
    MovePenTo(20, 20);
    DrawText("R");
    Canvas stamped(40, 40);
    FontChar glyph;
    ASSERT_EQ(GetFontChar('R', 1, &glyph), 1);
    stamp(glyph);
    EXPECT_EQ(canvas.text(), stamped.text()) << angle << " " << style;
    EXPECT_GT(stamped.count(255), 5);
}

TEST(Text, IsStampedByDirection)
{
    expectStamped(90, 0,
                  [](const FontChar &glyph)
                  {
                      MovePenTo(13, 20); // the top is 7 to the left
                      _DrawCharRotated90(glyph.bits, glyph.imageWidth, glyph.size);
                  });
    expectStamped(180, 0,
                  [](const FontChar &glyph)
                  {
                      MovePenTo(20, 27);
                      _DrawCharRotated(glyph.bits, glyph.imageWidth, glyph.size, 180);
                  });
    expectStamped(180, 1,
                  [](const FontChar &glyph)
                  {
                      SetPenSize(2, 2);
                      MovePenTo(20, 28); // bold is a row higher
                      _DrawCharRotated(glyph.bits, glyph.imageWidth, glyph.size, 180);
                  });
}

TEST(Text, ItalicLeansBy60Degrees)
{
    // The shear is 7 / 2 - 1 = 2. The stem goes by 20 pixels at 60 degrees from the base line: 10 and 17.
    expectStamped(0, 2,
                  [](const FontChar &glyph)
                  {
                      Path path;
                      InitPath(&path, -10, 17);
                      SetPathOrigin(&path, 22, 13);
                      _DrawCharItalic(glyph.bits, glyph.imageWidth, glyph.size, &path);
                  });
    expectStamped(90, 2, // 150 degrees: cosine -111, sine 64; the shear goes up
                  [](const FontChar &glyph)
                  {
                      Path path;
                      InitPath(&path, 17, 10);
                      SetPathOrigin(&path, 13, 18);
                      _DrawCharRotate90Italic(glyph.bits, glyph.imageWidth, glyph.size, &path);
                  });
    expectStamped(180, 2, // 240 degrees: -64 and -111; the shear goes left
                  [](const FontChar &glyph)
                  {
                      Path path;
                      InitPath(&path, 10, -17);
                      SetPathOrigin(&path, 18, 27);
                      _DrawCharRotateItalic(glyph.bits, glyph.imageWidth, glyph.size, 180, &path);
                  });
}

TEST(Text, IsUnderlinedBelowItsBaseLine)
{
    Canvas canvas(12, 4);
    SetFontStyle(4);
    EXPECT_EQ(penAfter("  ", 2, 1), "8,1"); // two spaces
    EXPECT_EQ(canvas.text(), "............\n"
                             "............\n"
                             "..######....\n"
                             "............\n");
}

TEST(Text, IsUnderlinedLineByLineWhereItAdvances)
{
    Canvas canvas(8, 24);
    SetFontStyle(4);
    EXPECT_EQ(penAfter(" \n\n ", 1, 0), "4,20");
    EXPECT_EQ(canvas.count(255), 6);
    EXPECT_EQ(canvas.at(1, 1), 255);
    EXPECT_EQ(canvas.at(3, 1), 255);
    EXPECT_EQ(canvas.at(1, 21), 255);
    EXPECT_EQ(canvas.at(3, 21), 255);
}

TEST(Text, BoldHasABoldUnderline)
{
    Canvas canvas(9, 5);
    SetFontStyle(5);
    SetPenSize(4, 3);
    EXPECT_EQ(penAfter(" ", 1, 1), "6,1"); // 3 + 2
    EXPECT_EQ(canvas.text(), ".........\n"
                             ".........\n"
                             ".######..\n"
                             ".######..\n"
                             ".........\n");
    EXPECT_EQ(curPenW, 4); // given back
    EXPECT_EQ(curPenH, 3);
}

TEST(Text, UpwardsIsUnderlinedToTheRight)
{
    Canvas canvas(4, 8);
    SetFontStyle(4);
    SetFontOrientation(2);
    EXPECT_EQ(penAfter("  ", 1, 7), "1,1");
    EXPECT_EQ(canvas.text(), "....\n"
                             "..#.\n" // a line upwards leaves its start out
                             "..#.\n"
                             "..#.\n"
                             "..#.\n"
                             "..#.\n"
                             "..#.\n"
                             "....\n");
}

TEST(Text, StackedHasOneCharacterALine)
{
    Canvas canvas(12, 60);
    SetFontOrientation(1);
    SetFontStyle(4);
    // Measured 3 by 20. The first space's top is row 3: 10 - 7 - 1 + 1. The pen goes to row 3 + 7 = 10 for it, and
    // below it to 18. The second one does not fit beside it: underlined in row 19, on to 29, below 29 + 1 > 23: the
    // end.
    EXPECT_EQ(penAfter("  ", 2, 10), "2,3");
    EXPECT_EQ(canvas.count(255), 3);
    EXPECT_EQ(canvas.at(2, 19), 255);
    EXPECT_EQ(canvas.at(4, 19), 255);
}

TEST(Text, WhileAnErrorIsSetOrMissingDoesNothing)
{
    Canvas canvas(20, 20);
    const Rectangle rect = {0, 0, 20, 20};
    MovePenTo(3, 3);
    DrawText(nullptr);
    DrawTextInRect(nullptr, &rect);
    DrawTextInRect("A", nullptr);
    SetImage(nullptr);
    DrawText("A");
    DrawChar('A');
    DrawTextInRect("A", &rect);
    EXPECT_EQ(PenText(), "3,3");
    EXPECT_EQ(canvas.count(255), 0);
}

TEST(Text, WithoutAColourMovesThePenOnly)
{
    InitGraph();
    const Rectangle rect = {0, 0, 20, 20};
    Image *image = NewImage(&rect, 4);
    EXPECT_EQ(penAfter("AB", 3, 15), "13,15");
    DrawTextInRect("AB", &rect);
    EXPECT_EQ(PenText(), "0,0");
    for (int32_t i = 0; i < 400; i++)
    {
        EXPECT_EQ(image->pixels[i], 0);
    }
    KillImage(image);
}

TEST(Text, OfAMegabyteEnds)
{
    Canvas canvas(20, 20);
    const std::string text(1 << 20, 'A');
    for (const int32_t angle : {0, 90, 33})
    {
        SetFontAngle(angle);
        SetFontStyle(7);
        MovePenTo(2, 12);
        DrawText(text.c_str());
    }
    EXPECT_EQ(dimText(text.c_str()), "7340032,9"); // (5 + 2) * 2^20
}

TEST(FlowingText, IsUnderlinedBelowItsGlyphs)
{
    Canvas canvas(12, 30);
    SetFontStyle(4);
    const Rectangle rect = {1, 0, 12, 100};
    DrawTextInRect("  ", &rect);
    // The pen starts in row 7 and goes down 8 with each glyph, to 23.
    EXPECT_EQ(canvas.count(255), 6);
    EXPECT_EQ(canvas.at(1, 24), 255);
    EXPECT_EQ(canvas.at(6, 24), 255);
    EXPECT_EQ(PenText(), "1,0");
}

TEST(FlowingText, BreaksALineWhereACharacterDoesNotFit)
{
    Canvas canvas(8, 40);
    SetFontStyle(4);
    const Rectangle rect = {0, 0, 5, 100};
    DrawTextInRect("  ", &rect);
    // 7 + 8 = 15, underlined in 16, on by 10 to 26; the next space ends in 34 and is underlined in 35.
    EXPECT_EQ(canvas.count(255), 6);
    EXPECT_EQ(canvas.at(0, 16), 255);
    EXPECT_EQ(canvas.at(2, 16), 255);
    EXPECT_EQ(canvas.at(0, 35), 255);
    EXPECT_EQ(canvas.at(2, 35), 255);
}

TEST(FlowingText, EndsWhereALineHasNoRoom)
{
    for (const int32_t bottom : {26, 27})
    {
        Canvas canvas(8, 40);
        SetFontStyle(4);
        const Rectangle rect = {0, 0, 5, bottom};
        DrawTextInRect(" \n ", &rect); // the second line would be in 26, and its descent is 1
        EXPECT_EQ(canvas.count(255), bottom == 26 ? 3 : 6);
        EXPECT_EQ(PenText(), "0,0");
    }
}

TEST(FlowingText, EndsAtACharacterWiderThanTheRectangle)
{
    Canvas canvas(12, 40);
    SetFontStyle(4);
    const Rectangle rect = {0, 0, 4, 100};
    DrawTextInRect(" A ", &rect); // the space fits, "A" not even at the left edge
    EXPECT_EQ(canvas.count(255), 3);
}

TEST(FlowingText, DrawsItsGlyphsUprightAndLeaning)
{
    for (const int32_t style : {0, 1, 2, 3})
    {
        Canvas canvas(40, 40);
        SetFontStyle(style);
        SetFontOrientation(2); // has no say here
        const Rectangle rect = {5, 3, 40, 40};
        DrawTextInRect("\x15R", &rect);
        Canvas stamped(40, 40);
        FontChar glyph;
        ASSERT_EQ(GetFontChar('R', 1, &glyph), 1);
        const int32_t pen = (style & 1) != 0 ? 2 : 1;
        SetPenSize(pen, pen);
        MovePenTo(5, 3 + 7 + pen - 1);
        if ((style & 2) != 0)
        {
            Path path;
            InitPath(&path, -2, 8); // the shear, and the size
            SetPathOrigin(&path, 5 + 2, 3 + 7 + pen - 1);
            _DrawCharItalic(glyph.bits, glyph.imageWidth, glyph.size, &path);
        }
        else
        {
            _DrawChar(glyph.bits, glyph.imageWidth, glyph.size);
        }
        EXPECT_EQ(canvas.text(), stamped.text()) << style;
        EXPECT_GT(canvas.count(255), 5);
    }
}

TEST(FlowingText, OffTheImageStillBreaksItsLines)
{
    Canvas canvas(8, 8);
    const Rectangle rect = {-100, -100, -90, 100};
    MovePenTo(3, 3);
    DrawTextInRect("ABC\nABC", &rect);
    EXPECT_EQ(canvas.count(255), 0);
    EXPECT_EQ(PenText(), "-100,-100");
}

TEST(Measuring, GivesTheWidestLineAndAllHeights)
{
    InitGraph();
    EXPECT_EQ(dimText(""), "0,8"); // 7 + 1
    EXPECT_EQ(dimText("A"), "5,8");
    EXPECT_EQ(dimText("A\nAB"), "10,18");
    EXPECT_EQ(dimText("AB\nA\n"), "10,28");
    EXPECT_EQ(dimText("A\x15"), "5,8"); // a character that the font lacks
}

TEST(Measuring, CountsBold)
{
    InitGraph();
    SetFontStyle(1);
    EXPECT_EQ(dimText("A\nAB"), "14,20"); // 2 a character; 9 and 11
}

TEST(Measuring, FollowsTheDirection)
{
    InitGraph();
    SetFontOrientation(2);
    EXPECT_EQ(dimText("A\nAB"), "18,10");
    SetFontAngle(33);
    EXPECT_EQ(dimText("A\nAB"), "10,18");
    SetFontOrientation(1);
    EXPECT_EQ(dimText("A B"), "5,30"); // one character a line, and every byte is one
    EXPECT_EQ(dimText("A\n"), "5,20");
}

TEST(Measuring, GivesOneCharactersSize)
{
    InitGraph();
    EXPECT_EQ(charDimText('A'), "5,8");
    EXPECT_EQ(charDimText('A' + 256), "5,8");
    EXPECT_EQ(charDimText(21), "0,0"); // the font begins at 22
    SetFontStyle(1);
    EXPECT_EQ(charDimText('A'), "6,9");
}

TEST(Measuring, OfNothingOrIntoNothingDoesNothing)
{
    InitGraph();
    Point dim = {7, 9};
    GetTextDim(nullptr, &dim);
    EXPECT_EQ(dim.x, 7);
    EXPECT_EQ(dim.y, 9);
    GetTextDim("A", nullptr);
    GetCharDim('A', nullptr);
}

TEST(Measuring, GoesOnWhileAnErrorIsSet)
{
    Canvas canvas(3, 3);
    SetPenSize(6, 7);
    SetImage(nullptr);
    EXPECT_EQ(dimText("A"), "5,8");
    EXPECT_EQ(curPenW, 6);
    EXPECT_EQ(curPenH, 7);
}

} // namespace
