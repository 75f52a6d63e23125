// qbgraph.h - raster graphics on indexed-colour images: pen, lines, ovals, arcs, polygons, fills, text, and GIF output.
#pragma once

#include <cstdint>
#include <cstdio>

// A rectangle in pixels; y grows downwards.
struct Rectangle
{
    int32_t left;
    int32_t top;
    int32_t right;  // exclusive
    int32_t bottom; // exclusive
};

// A pixel position, or the width (x) and height (y) of something measured.
struct Point
{
    int32_t x;
    int32_t y;
};

// The pen of an image while the image is not the current one.
struct Pen
{
    int32_t x;
    int32_t y;
    int32_t width;  // pixels, 0: draws nothing
    int32_t height; // pixels, 0: draws nothing
    uint8_t colour; // palette index
};

// The palette colours that an image uses, in the order of their first use.
struct ColorTable
{
    uint8_t used[256];      // palette indices, positions 0 to count - 1
    int32_t positions[256]; // by palette index: its position in used, or -1
    uint8_t thruColor;      // palette index of the transparent colour
    uint8_t background;     // background colour of the GIF's logical screen
    uint32_t count;
    uint32_t capacity;  // at most 256
    int32_t fThruColor; // 1 once a transparent colour was set
};

// An image of one byte (a palette index) a pixel. Made by NewImage, taken back by KillImage.
struct Image
{
    int32_t left;
    int32_t top;
    int32_t width;
    int32_t height;
    Pen *pen;               // owned
    ColorTable *colorTable; // owned
    uint8_t *pixels;        // owned: height rows of width bytes, top row first
};

struct Polygon
{
    int32_t count;
    Point *points; // owned by NewPolygon's record; callers may also point it at points of their own
};

// A Bresenham stepper along a direction vector.
struct Path
{
    int32_t x;
    int32_t y;
    int32_t major;     // the larger of |dx| and |dy|
    int32_t minor;     // the smaller
    int32_t error;     // decision term
    int32_t sx;        // sign of dx
    int32_t sy;        // sign of dy
    int32_t remaining; // steps left along the major axis
    int32_t swapped;   // 1: y is the major axis
};

// The fixed palette: red, green and blue of each of the 256 colours. InitGraph fills it.
extern uint8_t aRGB[256][3];

// Images, colours, pen: qbgraph.cpp

void InitGraph();
Image *NewImage(const Rectangle *rect, uint32_t nColors);
void KillImage(Image *image);
int32_t SetImage(Image *image);
int32_t GetImage(Image **out);
int32_t GetGraphError();
void FillImage();
void MovePenTo(int32_t x, int32_t y);
void MovePenRel(int32_t dx, int32_t dy);
void GetPenPos(Point *point);
void SetPenColor(int32_t colour);
void SetPenSize(int32_t width, int32_t height);
void SetThruColor(int32_t colour);
void SetRectangle(Rectangle *rect, int32_t left, int32_t top, int32_t right, int32_t bottom);
void MoveRectangleRel(Rectangle *rect, int32_t dx, int32_t dy);
void MoveRectangleTo(Rectangle *rect, int32_t x, int32_t y);
void DrawPen();
Polygon *NewPolygon(int32_t n);
void KillPolygon(Polygon *polygon);
void DBPrintImage(const Image *image, FILE *stream);

// Lines and rectangles: qbgraph_lines.cpp

void DrawLineTo(int32_t x, int32_t y);
void DrawLineRel(int32_t dx, int32_t dy);
void DrawRectangle(const Rectangle *rect);
void FillRectangle(const Rectangle *rect);

// Ovals, arcs, offsets on a circle: qbgraph_arcs.cpp

void DrawOval(const Rectangle *rect);
void FillOval(const Rectangle *rect);
void DrawArc(const Rectangle *rect, int32_t start, int32_t sweep);
void FillArc(const Rectangle *rect, int32_t start, int32_t sweep);
void FrameArc(const Rectangle *rect, int32_t start, int32_t sweep);
int32_t CosX(int32_t angle, int32_t r);
int32_t SinY(int32_t angle, int32_t r);

// Polygons, paths, flood fill: qbgraph_polygons.cpp

void DrawPolygon(const Polygon *polygon, int32_t dx, int32_t dy);
void FillPolygon(const Polygon *polygon, int32_t dx, int32_t dy);
int32_t InitPath(Path *path, int32_t dx, int32_t dy);
void SetPathOrigin(Path *path, int32_t x, int32_t y);
void GetPathNextPoint(Path *path, int32_t n, Point *point);
void GetPathPrevPoint(Path *path, int32_t n, Point *point);
void Fill(int32_t x, int32_t y, int32_t boundary);

// Text: qbgraph_text.cpp

void SetFontStyle(int32_t style);
void SetFontOrientation(int32_t orientation);
void SetFontAngle(int32_t angle);
void DrawText(const char *text);
void DrawChar(int32_t ch);
void DrawTextInRect(const char *text, const Rectangle *rect);
void GetTextDim(const char *text, Point *dim);
void GetCharDim(int32_t ch, Point *dim);

// GIF output: qbgraph_gif.cpp

void ImgToGif(Image *image, int32_t fInterlaced, FILE *out);
