// qbgraph.h - raster graphics on indexed-colour images: pen, lines, ovals, arcs, polygons, fills, text, and GIF output.
//
// One image is current, and all drawing goes to it: NewImage and SetImage make an image current. A pixel is one byte, a
// place in the fixed palette aRGB; a colour argument is such a place, of which the low 8 bits count. Every image also
// keeps a table of the colours that were set on it, and as long as that table is empty nothing is painted.
//
// Everything is drawn with the pen, a block of width by height pixels whose top left corner is the pen's position. What
// lies outside the image is cut off and costs no time, however far it goes. Positions are 32 bits: where a sum passes
// their range, a shape is drawn in the unbounded plane and the pen keeps the low 32 bits of where it comes to rest.
//
// Errors are kept, see GetGraphError: while there is one, every drawing call does nothing, pen moves aside. Without a
// current image the drawing calls paint nothing.
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

// The pen of an image while the image is not the current one. SetImage writes and reads it.
struct Pen
{
    int32_t x; // pixels; may be off the image
    int32_t y;
    int32_t width;  // pixels, 0: draws nothing
    int32_t height; // pixels, 0: draws nothing
    uint8_t colour; // palette index
};

// The palette colours that an image uses, in the order of their first use. SetPenColor and SetThruColor add to it;
// while the image is current, count, thruColor and fThruColor are kept elsewhere and written back by SetImage.
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

// The vertices of a closed shape. NewPolygon makes one, callers fill it in.
struct Polygon
{
    int32_t count;
    Point *points; // owned by NewPolygon's record; callers may also point it at points of their own
};

// A line to step along, one point after the other. InitPath sets all of it; the path calls move it.
struct Path
{
    int32_t x; // the current point
    int32_t y;
    int32_t major;     // the larger of |dx| and |dy|
    int32_t minor;     // the smaller
    int32_t error;     // decision term
    int32_t sx;        // sign of dx
    int32_t sy;        // sign of dy
    int32_t remaining; // steps left along the major axis
    int32_t swapped;   // 1: y is the major axis
};

// The fixed palette: red, green and blue of each of the 256 colours. InitGraph fills it. 0 .. 215 are a cube of six
// levels from white down to black, 216 .. 246 greys from light to dark, 247 is white again, 248 .. 250 are (33, 82,
// 138), (132, 0, 90) and (140, 90, 41), and 251 .. 255 are black.
extern uint8_t aRGB[256][3];

// ---- Images, colours, pen: qbgraph.cpp

// Starts the library: fills the palette, clears the error, leaves no current image, sets text to plain and horizontal
// and calls InitFonts. To be called once, before anything else; images made earlier stay their owners' to kill.
void InitGraph();

// Makes an image and makes it current. The pen is at (0, 0), 1 by 1, in colour 255, which is not yet in the table.
//   rect      width and height in pixels, and the left and top that the record keeps; drawing never uses those two
//   nColors   how many colours it may use; more than 256 count as 256
// Returns the image, which the caller gives to KillImage; its pixels mean nothing before FillImage. Returns null, with
// no current image, for a null rectangle (error -2) and where memory runs out or a side does not fit in 31 bits (-1).
// The image that was current keeps the pen and the count that it was last set aside with.
Image *NewImage(const Rectangle *rect, uint32_t nColors);

// Takes an image back with all it owns. Nothing for null. If it is the current one, there is none afterwards.
void KillImage(Image *image);

// Makes an image current, sets the one that was aside with its pen and colours, and clears the error.
// Returns 1; or 0 with error -2 for null or an image without pixels, colour table or pen. The current image then stays.
int32_t SetImage(Image *image);

// Gives the current image. Returns 1, or 0 without one or for a null out, which is then left as it was.
int32_t GetImage(Image **out);

// Returns the error: 0 none, -1 an allocation failed, -2 a bad argument, -3 writing a GIF failed. It stays until
// InitGraph, a successful NewImage or a successful SetImage.
int32_t GetGraphError();

// Sets every pixel to the pen's colour.
void FillImage();

// Puts the pen somewhere, on the image or not.
void MovePenTo(int32_t x, int32_t y);

// Moves the pen; a position past 32 bits wraps.
void MovePenRel(int32_t dx, int32_t dy);

// Gives the pen's position. Nothing for a null point.
void GetPenPos(Point *point);

// Sets the pen's colour and enters it into the image's colour table. A new colour for which the table has no room
// becomes colour 0, which is on purpose not entered itself. Nothing while an error is set.
void SetPenColor(int32_t colour);

// Sets the pen's size in pixels. Values below 1 become 0, and a pen with a side of 0 draws nothing.
void SetPenSize(int32_t width, int32_t height);

// Makes a colour the image's transparent one, entering it as SetPenColor does, also while an error is set.
void SetThruColor(int32_t colour);

// Sets a rectangle's fields. Nothing for null, here and in the two calls below; sums past 32 bits wrap.
void SetRectangle(Rectangle *rect, int32_t left, int32_t top, int32_t right, int32_t bottom);

// Moves a rectangle by a distance.
void MoveRectangleRel(Rectangle *rect, int32_t dx, int32_t dy);

// Moves a rectangle's top left corner to a position; width and height stay.
void MoveRectangleTo(Rectangle *rect, int32_t x, int32_t y);

// Paints one block of the pen's size at the pen's position.
void DrawPen();

// Makes a polygon record with room for n points, whose contents mean nothing yet.
// Returns it, to be given to KillPolygon; or null where n is negative or memory runs out. Sets no error.
Polygon *NewPolygon(int32_t n);

// Takes a polygon record and its points back. Nothing for null.
void KillPolygon(Polygon *polygon);

// Prints the current image, on purpose whichever was passed: three places a pixel, a line a row, and an empty line.
//   image     null prints a complaint instead; while an error is set, its number is printed instead
//   stream    null prints nothing
void DBPrintImage(const Image *image, FILE *stream);

// ---- Lines and rectangles: qbgraph_lines.cpp

// Draws from the pen towards (x, y).
// A level line to the right paints its start and not (x, y), and leaves the pen on the last pixel painted; one to the
// left paints (x, y) and not its start, and leaves the pen on (x, y). Upright lines do the same, down like right and up
// like left. Any other line paints its start and not (x, y), and leaves the pen on (x, y); at the same distance from
// two pixels it takes the one further along the shorter axis. A line to the pen's own position draws nothing.
void DrawLineTo(int32_t x, int32_t y);

// Draws from the pen towards the pen's position plus (dx, dy), as DrawLineTo does.
void DrawLineRel(int32_t dx, int32_t dy);

// Draws a rectangle's outline, inside right and bottom with a pen of 1 by 1; a wider one goes beyond to the right and
// below. Leaves the pen on the top left corner.
//   rect      its corners may be given in any order; nothing for null, or for width or height 0
// Nothing while the image has no colour; the pen then stays where it was, here and in FillRectangle.
void DrawRectangle(const Rectangle *rect);

// Fills a rectangle. Leaves the pen at its left, on purpose in the row below it.
//   rect      as for DrawRectangle
void FillRectangle(const Rectangle *rect);

// ---- Ovals, arcs, offsets on a circle: qbgraph_arcs.cpp
//
// Angles are whole degrees, counter-clockwise from the positive x axis: 90 is straight up. The five drawing calls leave
// the pen on the rectangle's top left corner, and do nothing for a null rectangle or one of width or height 0. Corners
// may be given in any order. An oval whose half-axes are both 0 draws nothing.

// Draws the ellipse inscribed in a rectangle. One of width or height 1 is a run as DrawLineRel draws it, from (left,
// top), where the pen is put back.
void DrawOval(const Rectangle *rect);

// Fills the ellipse inscribed in a rectangle; width or height 1 as in DrawOval.
void FillOval(const Rectangle *rect);

// Draws a part of the ellipse inscribed in a rectangle.
//   rect      nothing for width or height 1
//   start     degrees, any number; -90 is 270, and 360 stays apart from 0
//   sweep     degrees from start to the end, which is brought to 0 .. 360 likewise; a negative sweep goes back
// An end below the start means the part through 0.
void DrawArc(const Rectangle *rect, int32_t start, int32_t sweep);

// Fills a slice with a radius to every point of the arc. A pen of 1 by 1 may leave single pixels out, as the radii do.
//   rect, start, sweep    as for DrawArc
// Where the half-axes add up to more than 65536 pixels, only as many radii are drawn as it takes to cover what can be
// seen, so that pixels left out may differ there.
void FillArc(const Rectangle *rect, int32_t start, int32_t sweep);

// Draws a slice's outline: the arc and the two radii.
//   rect, start, sweep    as for DrawArc; nothing for an ellipse with a half-axis of 0
// A radius is drawn where a point of the ellipse is at its very angle. Where none is, it is drawn to the drawn point
// nearest to that angle, so that the outline is closed; so it is, a little smaller, for a slice that goes almost all
// the way round and begins and ends in the same eighth.
void FrameArc(const Rectangle *rect, int32_t start, int32_t sweep);

// The x offset of a point on a circle.
//   angle     degrees, any number
//   r         radius, pixels
// Returns r times the cosine, in pixels, half away from zero; the cosine is a whole number of 128ths.
int32_t CosX(int32_t angle, int32_t r);

// The offset upwards of a point on a circle, as CosX: y of the point is the centre's y minus this.
int32_t SinY(int32_t angle, int32_t r);

// ---- Polygons, paths, flood fill: qbgraph_polygons.cpp

// Draws a polygon's outline, with lines from vertex to vertex and back to the first.
//   polygon   nothing for null or without points
//   dx, dy    added to every vertex; sums past 32 bits wrap
// The pen ends where DrawLineTo the first vertex leaves it.
void DrawPolygon(const Polygon *polygon, int32_t dx, int32_t dy);

// Fills a polygon, inside by the odd rule, and draws its outline over that.
//   polygon   nothing for null, fewer than three points, or with all points in one row
//   dx, dy    as for DrawPolygon
// Nothing where memory runs out; that sets no error. A pen higher than 1048576 fills as if it were that high.
void FillPolygon(const Polygon *polygon, int32_t dx, int32_t dy);

// Sets a path up at (0, 0) along a direction.
//   dx, dy    the direction; past 2^30 either way its decision term wraps, and the path strays
// Returns 1, or 0 for a null path.
int32_t InitPath(Path *path, int32_t dx, int32_t dy);

// Puts a path somewhere, with the direction and the steps left that it has.
void SetPathOrigin(Path *path, int32_t x, int32_t y);

// Gives a path's current point, and moves it forward.
//   n         steps along the major axis, none for a negative number
//   point     not null
// The number of steps left drops by one, on purpose whatever n is; after 0 it begins anew.
void GetPathNextPoint(Path *path, int32_t n, Point *point);

// Gives a path's current point, and moves it back as GetPathNextPoint moves it forward. The number of steps left grows
// by one, and is 1 after the whole length.
void GetPathPrevPoint(Path *path, int32_t n, Point *point);

// Paints with the pen's colour every pixel that is reached from a position, up, down, left and right, through pixels
// that are of neither the boundary's nor the pen's colour. Single pixels, whatever the pen's size; the pen stays where
// it was.
//   x, y      nothing outside the image or on a pixel of the boundary's colour
//   boundary  a colour; nothing for one that is not in the image's colour table
// At most 500 runs wait to be filled at a time; a picture that needs more stays incomplete. Width and height count as
// signed 16-bit numbers here.
void Fill(int32_t x, int32_t y, int32_t boundary);

// ---- Text: qbgraph_text.cpp
//
// Texts are zero-terminated, one byte a character; "\n" begins a line, and characters that the font lacks are skipped.
// Bold text is drawn with a pen of 2 by 2, other text with 1 by 1; the caller's pen size is given back. Drawing texts
// takes the current font and size, see qbgrfnt.h.

// Sets the style of texts.
//   style     1 bold, 2 italic, 4 underlined, added up; the low 16 bits are kept, other bits are ignored
void SetFontStyle(int32_t style);

// Sets the direction of texts.
//   orientation    0 horizontal, 1 stacked, one character a line, 2 upwards, 4 at 45 degrees; the low 16 bits count,
//                  and any other number is horizontal
void SetFontOrientation(int32_t orientation);

// Sets the direction of texts to any angle.
//   angle     degrees, any number: 0 is horizontal, 90 upwards
void SetFontAngle(int32_t angle);

// Draws a text from the pen, which is the left end of the first line's base line, and leaves the pen at the end of the
// last line's base line. Stacked text leaves it at the top left corner of the first character instead.
//   text      nothing for null
void DrawText(const char *text);

// Draws a text of one character.
//   ch        its code, of which the low 8 bits count
void DrawChar(int32_t ch);

// Flows a text into a rectangle, horizontally whatever the direction, beginning a new line where a character would not
// fit, and stops where a line would not. Leaves the pen on the rectangle's top left corner. On purpose, the pen moves
// down past each glyph, so that each begins below the one before.
//   text, rect    nothing for null
void DrawTextInRect(const char *text, const Rectangle *rect);

// Measures what DrawText would cover.
//   text      nothing for null
//   dim       filled with width and height, in pixels; swapped for text upwards, but not turned for other angles;
//             nothing for null
// Measures while an error is set, too.
void GetTextDim(const char *text, Point *dim);

// Measures one character: width and height, both 0 for one that the font lacks. Bold adds a pixel to each.
//   ch        its code, of which the low 8 bits count
//   dim       nothing for null
void GetCharDim(int32_t ch, Point *dim);

// ---- GIF output: qbgraph_gif.cpp

// Writes an image as a whole GIF file, with the colours that it uses and its transparent colour.
//   image     made the current image; its origin is at 0 while it is written
//   fInterlaced 1: rows in four passes, unless there are fewer than 5; 0: from top to bottom
//   out       open for binary writing, not owned; flushed when all is written
// The graphics error is 0 afterwards, or -3 when a byte could not be written or a pixel's colour is missing in the
// colour table; the file then breaks off. Nothing, and no error, for a null image or stream, for a stream that is in
// error already, and without memory for the coder's tables. After the latter, or when only the last byte could not be
// written, the origin stays at 0, on purpose; else it is restored. An image that SetImage refuses (error -2) is not
// written. Sides beyond 65535 pixels are more than the file can say.
void ImgToGif(Image *image, int32_t fInterlaced, FILE *out);
