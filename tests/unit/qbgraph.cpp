// qbgraph.cpp - palette, images, colour table, current image, pen, small records, the debug dump.

#include "alloc_fail.h"
#include "canvas.h"
#include "qbgraph_state.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace
{

const Rectangle kSmall = {3, 4, 8, 6}; // 5 by 2 pixels

std::string colourText(int32_t index)
{
    return std::to_string(aRGB[index][0]) + "," + std::to_string(aRGB[index][1]) + "," + std::to_string(aRGB[index][2]);
}

TEST(Palette, BeginsWithACubeFromWhiteToBlack)
{
    InitGraph();
    const int32_t levels[] = {255, 204, 153, 102, 51, 0};
    int32_t n = 0;
    for (const int32_t red : levels)
    {
        for (const int32_t green : levels)
        {
            for (const int32_t blue : levels)
            {
                EXPECT_EQ(colourText(n++),
                          std::to_string(red) + "," + std::to_string(green) + "," + std::to_string(blue));
            }
        }
    }
    EXPECT_EQ(colourText(5), "255,255,0");
    EXPECT_EQ(colourText(30), "255,0,255");
}

TEST(Palette, HasGreysOfWhichTheLastWrapsToWhite)
{
    InitGraph();
    EXPECT_EQ(colourText(216), "247,247,247");
    EXPECT_EQ(colourText(217), "239,239,239");
    EXPECT_EQ(colourText(245), "15,15,15"); // 247 - 8 * 29
    EXPECT_EQ(colourText(246), "7,7,7");
    EXPECT_EQ(colourText(247), "255,255,255"); // 247 - 8 * 31 is -1
}

TEST(Palette, EndsWithThreeBlendsAndBlacks)
{
    InitGraph();
    EXPECT_EQ(colourText(248), "33,82,138");
    EXPECT_EQ(colourText(249), "132,0,90");
    EXPECT_EQ(colourText(250), "140,90,41");
    for (int32_t n = 251; n < 256; n++)
    {
        EXPECT_EQ(colourText(n), "0,0,0");
    }
}

TEST(Images, AreMadeCurrentWithAFreshPenAndTable)
{
    InitGraph();
    Image *image = NewImage(&kSmall, 300);
    ASSERT_NE(image, nullptr);
    Image *current = nullptr;
    EXPECT_EQ(GetImage(&current), 1);
    EXPECT_EQ(current, image);
    EXPECT_EQ(image->left, 3);
    EXPECT_EQ(image->top, 4);
    EXPECT_EQ(image->width, 5);
    EXPECT_EQ(image->height, 2);
    EXPECT_EQ(image->colorTable->capacity, 256U);
    EXPECT_EQ(image->colorTable->count, 0U);
    EXPECT_EQ(image->colorTable->fThruColor, 0);
    EXPECT_EQ(image->colorTable->thruColor, 0);
    EXPECT_EQ(image->colorTable->background, 0);
    for (int32_t i = 0; i < 256; i++)
    {
        EXPECT_EQ(image->colorTable->used[i], 0);
        EXPECT_EQ(image->colorTable->positions[i], -1);
    }
    EXPECT_EQ(PenText(), "0,0");
    EXPECT_EQ(curPenW, 1);
    EXPECT_EQ(curPenH, 1);
    EXPECT_EQ(curPenColor, 255);
    KillImage(image);
}

TEST(Images, KeepTheirColourCapacityUpTo256)
{
    InitGraph();
    for (const uint32_t n : {0U, 255U, 256U, 257U, UINT32_MAX})
    {
        Image *image = NewImage(&kSmall, n);
        EXPECT_EQ(image->colorTable->capacity, n < 256 ? n : 256U);
        KillImage(image);
    }
}

TEST(Images, FailWithoutARectangle)
{
    Canvas canvas(2, 2);
    Image *current = nullptr;
    EXPECT_EQ(NewImage(nullptr, 4), nullptr);
    EXPECT_EQ(GetGraphError(), -2);
    EXPECT_EQ(GetImage(&current), 0);
}

TEST(Images, FailWhereMemoryRunsOut)
{
    for (int64_t n = 1; n <= 4; n++) // pixels, record, colour table, pen
    {
        Canvas canvas(2, 2);
        Image *current = nullptr;
        FailAllocation(n);
        EXPECT_EQ(NewImage(&kSmall, 4), nullptr);
        EXPECT_TRUE(AllocationFailed());
        FailAllocation(0);
        EXPECT_EQ(GetGraphError(), -1);
        EXPECT_EQ(GetImage(&current), 0);
    }
    Canvas canvas(2, 2);
    FailAllocation(5);
    Image *image = NewImage(&kSmall, 4);
    FailAllocation(0);
    EXPECT_NE(image, nullptr);
    KillImage(image);
}

TEST(Images, FailWhereTheSizeIsNoSize)
{
    InitGraph();
    const Rectangle tooWide = {INT32_MIN, 0, INT32_MAX, 1};
    const Rectangle tooHigh = {0, INT32_MAX, 1, INT32_MIN};
    const Rectangle inverted = {5, 0, 0, 2};
    for (const Rectangle *rect : {&tooWide, &tooHigh, &inverted})
    {
        EXPECT_EQ(NewImage(rect, 4), nullptr);
        EXPECT_EQ(GetGraphError(), -1);
    }
}

TEST(Images, InvertedBothWaysTakeNoDrawing)
{
    InitGraph();
    const Rectangle rect = {3, 3, 0, 1};
    Image *image = NewImage(&rect, 4);
    ASSERT_NE(image, nullptr);
    image->pixels[5] = 77; // of -3 * -2
    SetPenColor(9);
    SetPenSize(9, 9);
    MovePenTo(-4, -4);
    DrawPen();
    Fill(0, 0, 9);
    EXPECT_EQ(image->pixels[5], 77);
    KillImage(image);
}

TEST(Images, SwitchedKeepPenAndColours)
{
    Canvas first(4, 1);
    MovePenTo(7, -8);
    SetPenSize(2, 3);
    SetPenColor(17);
    SetThruColor(18);
    Image *second = NewImage(&kSmall, 2);
    EXPECT_EQ(PenText(), "0,0");
    EXPECT_EQ(first.image()->colorTable->count, 4U); // 0, 255, 17, 18
    EXPECT_EQ(SetImage(first.image()), 1);
    EXPECT_EQ(PenText(), "7,-8");
    EXPECT_EQ(curPenW, 2);
    EXPECT_EQ(curPenH, 3);
    EXPECT_EQ(curPenColor, 17);
    EXPECT_EQ(curThruColor, 18);
    EXPECT_EQ(fCurIsThruColor, 1);
    EXPECT_EQ(curNColors, 4U);
    KillImage(second);
    EXPECT_EQ(SetImage(first.image()), 1); // to itself: saved and loaded
    EXPECT_EQ(PenText(), "7,-8");
}

TEST(Images, SetThatFailsKeepsTheImageAndStopsDrawing)
{
    Canvas canvas(3, 1);
    Image none = *canvas.image();
    none.pixels = nullptr;
    EXPECT_EQ(SetImage(&none), 0);
    none = *canvas.image();
    none.pen = nullptr;
    EXPECT_EQ(SetImage(&none), 0);
    none = *canvas.image();
    none.colorTable = nullptr;
    EXPECT_EQ(SetImage(&none), 0);
    EXPECT_EQ(SetImage(nullptr), 0);
    EXPECT_EQ(GetGraphError(), -2);
    Image *current = nullptr;
    EXPECT_EQ(GetImage(&current), 1);
    EXPECT_EQ(current, canvas.image());
    DrawPen();
    FillImage();
    SetPenColor(9);
    EXPECT_EQ(curPenColor, 255);
    EXPECT_EQ(canvas.text(), "...\n");
    EXPECT_EQ(SetImage(canvas.image()), 1);
    DrawPen();
    EXPECT_EQ(canvas.text(), "#..\n");
}

TEST(Images, KilledLeaveNoCurrentImageOnlyIfTheyWereCurrent)
{
    Canvas canvas(3, 1);
    Image *other = NewImage(&kSmall, 4);
    SetImage(canvas.image());
    KillImage(other);
    KillImage(nullptr);
    Image *current = nullptr;
    EXPECT_EQ(GetImage(&current), 1);
    EXPECT_EQ(GetImage(nullptr), 0);
    other = NewImage(&kSmall, 4);
    KillImage(other);
    EXPECT_EQ(GetImage(&current), 0);
}

TEST(Images, MissingTakeEveryCallWithoutHarm)
{
    InitGraph();
    SetPenColor(9);
    EXPECT_EQ(curPenColor, 0); // no table, so no room in it
    SetThruColor(9);
    SetPenSize(3, 3);
    DrawPen();
    FillImage();
    const Rectangle rect = {0, 0, 9, 9};
    FillRectangle(&rect);
    FillArc(&rect, 0, 90);
    Fill(0, 0, 0);
    DrawText("none");
    EXPECT_EQ(GetGraphError(), 0);
}

TEST(Colours, AreEnteredOnceInOrderOfFirstUse)
{
    InitGraph();
    Image *image = NewImage(&kSmall, 256);
    SetPenColor(40);
    SetPenColor(7 + 256); // only 8 bits count
    SetPenColor(40);
    SetPenColor(-1);
    EXPECT_EQ(curPenColor, 255);
    EXPECT_EQ(curNColors, 3U);
    EXPECT_EQ(image->colorTable->used[0], 40);
    EXPECT_EQ(image->colorTable->used[1], 7);
    EXPECT_EQ(image->colorTable->used[2], 255);
    EXPECT_EQ(image->colorTable->positions[40], 0);
    EXPECT_EQ(image->colorTable->positions[7], 1);
    EXPECT_EQ(image->colorTable->positions[255], 2);
    KillImage(image);
}

TEST(Colours, BeyondTheCapacityBecomeAnUnregisteredZero)
{
    InitGraph();
    Image *image = NewImage(&kSmall, 2);
    SetPenColor(11);
    SetPenColor(12);
    FillImage();
    SetPenColor(13);
    EXPECT_EQ(curPenColor, 0);
    EXPECT_EQ(curNColors, 2U);
    EXPECT_EQ(image->colorTable->positions[0], -1);
    EXPECT_EQ(image->colorTable->positions[13], -1);
    DrawPen();
    EXPECT_EQ(image->pixels[0], 0);
    EXPECT_EQ(image->pixels[1], 12);
    KillImage(image);
}

TEST(Colours, TransparentOneIsEnteredButNotThePens)
{
    Canvas canvas(2, 1, 3);
    SetThruColor(300); // 44
    EXPECT_EQ(curThruColor, 44);
    EXPECT_EQ(fCurIsThruColor, 1);
    EXPECT_EQ(curPenColor, 255);
    EXPECT_EQ(canvas.image()->colorTable->positions[44], 2);
    SetThruColor(45); // the table is full
    EXPECT_EQ(curThruColor, 0);
}

TEST(Colours, TransparentOneIsSetInSpiteOfAnError)
{
    Canvas canvas(2, 1);
    SetImage(nullptr);
    SetThruColor(44);
    EXPECT_EQ(curThruColor, 44);
    EXPECT_EQ(curNColors, 3U);
    SetImage(canvas.image());
}

TEST(Pen, BeforeAnyColourPaintsNothing)
{
    InitGraph();
    Image *image = NewImage(&kSmall, 4);
    for (int32_t i = 0; i < 10; i++)
    {
        image->pixels[i] = 99;
    }
    FillImage();
    DrawPen();
    for (int32_t i = 0; i < 10; i++)
    {
        EXPECT_EQ(image->pixels[i], 99);
    }
    KillImage(image);
}

TEST(Pen, PaintsABlockOfItsSize)
{
    Canvas canvas(5, 4);
    MovePenTo(1, 1);
    SetPenSize(3, 2);
    DrawPen();
    EXPECT_EQ(canvas.text(), ".....\n"
                             ".###.\n"
                             ".###.\n"
                             ".....\n");
    EXPECT_EQ(PenText(), "1,1");
}

TEST(Pen, PartlyOutsidePaintsTheInsidePixels)
{
    Canvas canvas(4, 3);
    SetPenSize(2, 2);
    MovePenTo(-1, -1);
    DrawPen();
    MovePenTo(3, 2);
    DrawPen();
    MovePenTo(4, 0); // just outside
    DrawPen();
    MovePenTo(0, 3);
    DrawPen();
    EXPECT_EQ(canvas.text(), "#...\n"
                             "....\n"
                             "...#\n");
}

TEST(Pen, WithASideOfZeroPaintsNothing)
{
    Canvas canvas(3, 3);
    SetPenSize(0, 5);
    EXPECT_EQ(curPenW, 0);
    EXPECT_EQ(curPenH, 5);
    DrawPen();
    SetPenSize(5, 0);
    DrawPen();
    SetPenSize(-3, -3);
    EXPECT_EQ(curPenW, 0);
    EXPECT_EQ(curPenH, 0);
    DrawPen();
    EXPECT_EQ(canvas.count(255), 0);
}

TEST(Pen, OfAnySizeIsCut)
{
    Canvas canvas(3, 2);
    SetPenSize(INT32_MAX, INT32_MAX);
    MovePenTo(INT32_MIN, 0); // ends one column before the image
    DrawPen();
    EXPECT_EQ(canvas.count(255), 0);
    MovePenTo(1, 1);
    DrawPen();
    EXPECT_EQ(canvas.text(), "...\n"
                             ".##\n");
}

TEST(Pen, MovesAndWrapsPast32Bits)
{
    Canvas canvas(1, 1);
    MovePenTo(INT32_MAX, INT32_MIN);
    MovePenRel(1, -2);
    EXPECT_EQ(curPenX, INT32_MIN);
    EXPECT_EQ(curPenY, INT32_MAX - 1);
    MovePenTo(5, 6);
    MovePenRel(-7, 1);
    EXPECT_EQ(PenText(), "-2,7");
    GetPenPos(nullptr);
}

TEST(Rectangles, AreSetAndMoved)
{
    Rectangle rect = {};
    SetRectangle(&rect, 10, 10, 30, 20);
    MoveRectangleTo(&rect, 0, 5);
    EXPECT_EQ(rect.left, 0);
    EXPECT_EQ(rect.top, 5);
    EXPECT_EQ(rect.right, 20);
    EXPECT_EQ(rect.bottom, 15);
    MoveRectangleRel(&rect, -3, 4);
    EXPECT_EQ(rect.left, -3);
    EXPECT_EQ(rect.top, 9);
    EXPECT_EQ(rect.right, 17);
    EXPECT_EQ(rect.bottom, 19);
    SetRectangle(nullptr, 1, 2, 3, 4);
    MoveRectangleTo(nullptr, 1, 2);
    MoveRectangleRel(nullptr, 1, 2);
}

TEST(Polygons, HaveRoomForTheirPoints)
{
    Polygon *polygon = NewPolygon(3);
    ASSERT_NE(polygon, nullptr);
    EXPECT_EQ(polygon->count, 3);
    polygon->points[2] = {1, 2};
    KillPolygon(polygon);
    KillPolygon(nullptr);
    EXPECT_EQ(NewPolygon(-1), nullptr);
}

TEST(Polygons, FailWhereMemoryRunsOut)
{
    for (int64_t n = 1; n <= 2; n++) // record, points
    {
        FailAllocation(n);
        EXPECT_EQ(NewPolygon(3), nullptr);
        EXPECT_TRUE(AllocationFailed());
        FailAllocation(0);
    }
}

// What DBPrintImage writes.
std::string dump(const Image *image)
{
    char *text = nullptr;
    size_t size = 0;
    FILE *stream = open_memstream(&text, &size);
    DBPrintImage(image, stream);
    std::fclose(stream);
    std::string copy(text, size);
    std::free(text);
    return copy;
}

TEST(Dump, PrintsTheCurrentImageWhicheverIsPassed)
{
    Canvas other(1, 1);
    Canvas canvas(2, 2);
    MovePenTo(1, 0);
    DrawPen();
    EXPECT_EQ(dump(other.image()), "  0255\n  0  0\n\n");
    DBPrintImage(canvas.image(), nullptr);
}

TEST(Dump, PrintsOneLineEndForAnImageWithoutRows)
{
    InitGraph();
    const Rectangle flat = {0, 0, 5, 0};
    Image *image = NewImage(&flat, 4);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(dump(image), "\n");
    KillImage(image);
}

TEST(Dump, ComplainsOfNoImageAndOfErrors)
{
    Canvas canvas(1, 1);
    EXPECT_EQ(dump(nullptr), "Error in DBPrintImage: NULL image pointer...\n");
    SetImage(nullptr);
    EXPECT_EQ(dump(canvas.image()), "Graphic Error #-2\n");
}

} // namespace
