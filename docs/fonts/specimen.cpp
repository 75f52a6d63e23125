// specimen.cpp - draws the specimen sheet of one font.
//
//     specimen FONT OUT.gif
//
// Everything on it is drawn with the raster library and written by the GIF encoder, so that the sheets show exactly
// what charts show. regenerate.sh runs it for every font. A sheet is drawn twice: once on a scrap of an image, to learn
// how high it gets, and once for good.

#include "qbgraph.h"
#include "qbgrfnt.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string>

constexpr int32_t kWhite = 0; // palette indices
constexpr int32_t kBlack = 255;
constexpr int32_t kGrey = 231;
constexpr int32_t kLightGrey = 219;

constexpr int32_t kWidth = 780; // pixels
constexpr int32_t kMargin = 20;
constexpr int32_t kColumns = 16; // of the grid, so that a row is a hexadecimal ten
constexpr int32_t kCellWidth = (kWidth - 2 * kMargin) / kColumns;

constexpr int32_t kBold = 1;
constexpr int32_t kItalic = 2;
constexpr int32_t kUnderline = 4;

// What a font's sheet shows beside its glyphs.
struct Sample
{
    const char *name;
    const char *use;
    std::initializer_list<int32_t> sizes; // pixels: the font's own and the common ones
    std::initializer_list<const char *> pangrams;
};

static const Sample kSamples[] = {
    {"Small8",
     "a compact face for labels",
     {6, 7, 8, 10, 12},
     {"Sphinx of black quartz, judge my vow. The five boxing wizards jump quickly.",
      "Portez ce vieux whisky au juge blond qui fume, là où l'été naît déjà. Ça va, maître?",
      "Falsches Üben von Xylophonmusik quält jeden größeren Zwerg. Öl, Äpfel, süß!",
      "Fabio me exige, sin tapujos, que añada cerveza al whisky. ¿Dónde está? ¡Aquí!"}},
    {"Geneva12",
     "a humanist sans for titles",
     {9, 10, 12, 14, 18},
     {"Sphinx of black quartz, judge my vow. The five boxing wizards jump quickly.",
      "Dès Noël, où un zéphyr haï me vêt de glaçons, je dîne d'exquis rôtis de bœuf au kir, à l'aÿ d'âge mûr.",
      "Falsches Üben von Xylophonmusik quält jeden größeren Zwerg. Öl, Äpfel, süß!",
      "Fabio me exige, sin tapujos, que añada cerveza al whisky. ¿Dónde está? ¡Aquí!"}},
    {"Helvetica10",
     "a neutral sans for legends; ASCII only",
     {9, 11, 12, 14},
     {"Sphinx of black quartz, judge my vow. The five boxing wizards jump quickly.",
      "Portez ce vieux whisky au juge blond qui fume.", "Franz jagt im komplett verwahrlosten Taxi quer durch Bayern.",
      "Fabio me exige, sin tapujos, que ponga cerveza helada al whisky."}},
};

// The letters of this file's texts beyond ASCII, in the fonts' character set, Mac OS Roman.
static const struct
{
    const char *utf8;
    int code;
} kLetters[] = {
    {"Ä", 128}, {"Ç", 130}, {"Ö", 133}, {"Ü", 134}, {"á", 135}, {"à", 136}, {"â", 137},
    {"ä", 138}, {"ç", 141}, {"é", 142}, {"è", 143}, {"ê", 144}, {"ë", 145}, {"í", 146},
    {"î", 148}, {"ï", 149}, {"ñ", 150}, {"ó", 151}, {"ô", 153}, {"ö", 154}, {"ù", 157},
    {"û", 158}, {"ü", 159}, {"ß", 167}, {"¿", 192}, {"¡", 193}, {"œ", 207}, {"ÿ", 216},
};

static std::string InFontCodes(std::string text)
{
    for (const auto &[utf8, code] : kLetters)
    {
        for (size_t at = text.find(utf8); at != std::string::npos; at = text.find(utf8))
        {
            text.replace(at, strlen(utf8), 1, static_cast<char>(code));
        }
    }
    return text;
}

// A sheet while it is drawn.
class Sheet
{
public:
    explicit Sheet(const Sample &which) : sample(which), font(GetFontByName(which.name))
    {
    }

    // Draws everything on the current image; returns the height.
    int32_t Draw()
    {
        SetPenColor(kWhite);
        FillImage();
        y = kMargin;
        Title();
        Grid();
        Pangrams();
        Figures();
        Sizes();
        Styles();
        Directions();
        return y;
    }

private:
    void Use(int32_t index, int32_t size, int32_t style, int32_t colour) const
    {
        SetFont(index);
        SetFontSize(size);
        SetFontStyle(style);
        SetPenColor(colour);
    }

    int32_t OwnSize() const
    {
        const int32_t sizes[] = {8, 12, 11};
        return sizes[font];
    }

    // One line with its top at y; moves y below it.
    void Line(const std::string &text, int32_t x, int32_t size, int32_t style)
    {
        Use(font, size, style, kBlack);
        FontInfo info;
        GetFontInfo(&info);
        MovePenTo(x, y + info.ascent);
        DrawText(InFontCodes(text).c_str());
        y += info.size + info.leading + 2;
    }

    void Small(const std::string &text, int32_t x, int32_t baseLine) const
    {
        Use(0, 8, 0, kGrey);
        MovePenTo(x, baseLine);
        DrawText(text.c_str());
    }

    void Heading(const std::string &text)
    {
        y += 14;
        SetPenColor(kLightGrey);
        MovePenTo(kMargin, y);
        DrawLineTo(kWidth - kMargin, y);
        Small(text, kMargin, y + 12);
        y += 20;
    }

    void Title()
    {
        Line(sample.name, kMargin, 3 * OwnSize(), 0);
        Line(sample.use, kMargin, OwnSize(), 0);
    }

    // A cell for each code: the glyph at twice its size, below it the code, a line where it stands and ends.
    void Grid()
    {
        Heading("All codes, at twice the size; the marks show base line and width");
        y += 6;
        const int32_t rowHeight = 2 * OwnSize() + 24;
        int32_t first = 256;
        for (int32_t code = 0; code < 256; code++)
        {
            Use(font, 2 * OwnSize(), 0, kBlack);
            FontChar glyph;
            if (!GetFontChar(code, 0, &glyph) || glyph.width == 0)
            {
                continue;
            }
            first = std::min(first, code - code % kColumns);
            Cell(code, glyph, kMargin + code % kColumns * kCellWidth,
                 y + (code - first) / kColumns * rowHeight + glyph.ascent);
            last = code;
        }
        y += ((last - first) / kColumns + 1) * rowHeight;
    }

    void Cell(int32_t code, const FontChar &glyph, int32_t x, int32_t baseLine) const
    {
        SetPenColor(kLightGrey);
        MovePenTo(x - 5, baseLine - 1);
        DrawLineTo(x - 2, baseLine - 1);
        MovePenTo(x + glyph.width, baseLine - 1);
        DrawLineTo(x + glyph.width + 3, baseLine - 1);
        SetPenColor(kBlack);
        MovePenTo(x, baseLine);
        DrawChar(code);
        Small(std::to_string(code), x, baseLine + 2 * OwnSize() / 4 + 9);
    }

    void Pangrams()
    {
        Heading("English, French, German, Spanish");
        for (const char *text : sample.pangrams)
        {
            Line(text, kMargin, OwnSize(), 0);
        }
    }

    void Figures()
    {
        Heading("Figures, set flush right, and letters that must not be mistaken");
        const int32_t top = y;
        for (const char *text : {"1,234.56", "-987.10", "60,345.78", "111.11"})
        {
            Use(font, OwnSize(), 0, kBlack);
            Point dim = {0, 0};
            GetTextDim(text, &dim);
            Line(text, kMargin + 80 - dim.x, OwnSize(), 0);
        }
        const int32_t bottom = y;
        y = top;
        for (const char *text : {"0O 1lI| 5S 8B 2Z rn m cl d vv w", "(12%) [3/4] {a+b=c} <x> $9 #7 &c. it's \"so\"?!"})
        {
            Line(text, kMargin + 130, OwnSize(), 0);
            y = std::max(y, top + (bottom - top) / 2);
        }
        y = bottom;
    }

    void Sizes()
    {
        Heading("Sizes");
        for (const int32_t size : sample.sizes)
        {
            const int32_t top = y;
            Small(std::to_string(size), kMargin, top + size - size / 6);
            Line("Hamburgefonstiv 1,358 Export Quarterly (67%)", kMargin + 25, size, 0);
            const int32_t next = y;
            y = top;
            Line("AEFHPRBS 2345689 aegst mnhu", kMargin + 420, size, 0);
            y = std::max(y, next);
        }
    }

    void Styles()
    {
        Heading("Plain, bold, italic, underlined, and all of them");
        const int32_t x[] = {kMargin, kMargin + 145, kMargin + 310, kMargin + 450, kMargin + 590};
        const int32_t styles[] = {0, kBold, kItalic, kUnderline, kBold | kItalic | kUnderline};
        for (const int32_t size : {OwnSize(), *(sample.sizes.end() - 1)})
        {
            const int32_t top = y;
            for (size_t i = 0; i < 5; i++)
            {
                y = top;
                Line("Sales by region", x[i], size, styles[i]);
            }
            y += 2;
        }
    }

    void Turned(int32_t x, int32_t angle, int32_t style)
    {
        Use(font, OwnSize(), style, kBlack);
        SetFontAngle(angle);
        MovePenTo(x, y + 110);
        DrawText("Growth in 2024");
        SetFontAngle(0);
    }

    void Directions()
    {
        Heading("Turned by 90 degrees: plain, bold, italic, underlined; by 30, 45 and 60 degrees");
        const int32_t styles[] = {0, kBold, kItalic, kUnderline};
        for (int32_t i = 0; i < 4; i++)
        {
            Turned(kMargin + 20 + i * 40, 90, styles[i]);
        }
        for (int32_t i = 0; i < 3; i++)
        {
            Turned(kMargin + 220 + i * 140, 30 + i * 15, 0);
        }
        y += 110 + kMargin;
    }

    const Sample &sample;
    int32_t font;
    int32_t y = 0;    // pixels: where the next thing begins
    int32_t last = 0; // the last code with a glyph
};

// Draws the sheet on a new image of a height, which stays current.
static Image *DrawSheet(const Sample &sample, int32_t height, int32_t *used)
{
    const Rectangle rect = {0, 0, kWidth, height};
    Image *image = NewImage(&rect, 256);
    SetImage(image);
    *used = Sheet(sample).Draw();
    return image;
}

static int WriteSheet(const Sample &sample, const char *fileName)
{
    InitGraph();
    int32_t height = 0;
    Image *scrap = DrawSheet(sample, 1, &height);
    Image *image = DrawSheet(sample, height, &height);
    FILE *out = fopen(fileName, "wb");
    if (out)
    {
        ImgToGif(image, 0, out);
    }
    const bool fWritten = out && fclose(out) == 0 && GetGraphError() == 0;
    KillImage(scrap);
    KillImage(image);
    if (!fWritten)
    {
        fprintf(stderr, "%s: cannot be written\n", fileName);
    }
    return fWritten ? 0 : 1;
}

int main(int argc, char **argv)
{
    for (const Sample &sample : kSamples)
    {
        if (argc == 3 && strcmp(argv[1], sample.name) == 0)
        {
            return WriteSheet(sample, argv[2]);
        }
    }
    fputs("usage: specimen FONT OUT.gif\n", stderr);
    return 1;
}
