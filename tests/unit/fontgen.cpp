// fontgen.cpp - the build tool that turns a drawn font into tables: what it writes, and every drawing it refuses.

#include "child_run.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <unistd.h>

// A directory of its own with one font file and the tables left by an earlier run.
class Fontgen : public testing::Test
{
protected:
    void SetUp() override
    {
        directory = testing::TempDir() + "fontgen_XXXXXX";
        ASSERT_NE(mkdtemp(directory.data()), nullptr);
        in = directory + "/font.fnt";
        out = directory + "/font.cpp";
        Write(out, "old tables");
    }

    void TearDown() override
    {
        std::filesystem::remove_all(directory);
    }

    static void Write(const std::string &name, const std::string &text)
    {
        std::ofstream(name, std::ios::binary) << text;
    }

    static std::string Read(const std::string &name)
    {
        std::ifstream file(name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static ChildResult Run(const std::string &inName, const std::string &outName)
    {
        return RunInChild(
            [&]
            {
                execl(FONTGEN_PATH, "fontgen", inName.c_str(), outName.c_str(), nullptr);
                _exit(99);
            });
    }

    // The tables made of a font file.
    std::string Generate(const std::string &text)
    {
        Write(in, text);
        const ChildResult result = Run(in, out);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        return Read(out);
    }

    // The file is refused with this line and message, and the earlier tables are gone.
    void ExpectRefused(const std::string &text, const std::string &lineAndMessage)
    {
        Write(in, text);
        Write(out, "old tables");
        const ChildResult result = Run(in, out);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, in + ":" + lineAndMessage + "\n");
        EXPECT_FALSE(std::filesystem::exists(out));
    }

    std::string directory;
    std::string in;
    std::string out;
};

// Glyphs are three rows high and begin in line 5.
static const std::string kHeader = "font Tiny\n"
                                   "codes 65 67\n"
                                   "ascent 2\n"
                                   "descent 1\n";

// What it writes

TEST_F(Fontgen, WritesLocationsStrikeAndRecord)
{
    // A is 3 wide, B has no entry, C is 7 wide: 10 columns, two bytes a row.
    //   #.# ####### -> 10111111 11...... = 191 192
    //   .#. #.....# -> 01010000 01...... =  80  64
    //   ... .....## -> 00000000 11...... =   0 192
    EXPECT_EQ(Generate(kHeader + "glyph 65 A\n#.#\n.#.\n...\nglyph 67\n#######\n#.....#\n.....##\n"),
              "// The font Tiny. Made by fontgen at every build; the drawing is in its .fnt file.\n"
              "#include \"qbgrfnt.h\"\n"
              "\n"
              "extern const uint16_t _tiny_lc[4];\n"
              "const uint16_t _tiny_lc[4] = {\n"
              "    0, 3, 3, 10,\n"
              "};\n"
              "\n"
              "extern const uint8_t _tiny_bf[6];\n"
              "const uint8_t _tiny_bf[6] = {\n"
              "    191, 192, 80, 64, 0, 192,\n"
              "};\n"
              "\n"
              "extern const FontRec _tiny_rec;\n"
              "const FontRec _tiny_rec = {65, 67, 2, 1, 3, 10, _tiny_bf, _tiny_lc, nullptr, \"Tiny\"};\n");
}

TEST_F(Fontgen, TakesGlyphsInAnyOrder)
{
    const std::string glyphA = "glyph 65\n#\n#\n#\n";
    const std::string glyphB = "glyph 66\n..\n..\n..\n";
    EXPECT_EQ(Generate(kHeader + glyphB + glyphA), Generate(kHeader + glyphA + glyphB));
}

TEST_F(Fontgen, SkipsCommentsBlankLinesAndBlanksAtLineEnds)
{
    const std::string plain = Generate(kHeader + "glyph 65\n#\n.\n#\n");
    EXPECT_EQ(Generate("// a face\n\n" + kHeader + "  // its letters\nglyph 65 A with a tail\r\n#  \n\n// bar\n.\t\n#"),
              plain);
}

TEST_F(Fontgen, KeepsTenInTheTableNamesOfGeneva12)
{
    const std::string tables = Generate("font Geneva12\ncodes 9 9\nascent 1\ndescent 0\nglyph 9\n#\n");
    EXPECT_NE(tables.find("_geneva10_lc[2]"), std::string::npos);
    EXPECT_NE(tables.find("_geneva10_bf[1]"), std::string::npos);
    EXPECT_NE(tables.find("nullptr, \"Geneva12\"}"), std::string::npos);
}

TEST_F(Fontgen, TakesTheWidestAndHighestGlyph)
{
    std::string text = "font Big\ncodes 0 0\nascent 128\ndescent 0\nglyph 0\n";
    for (int row = 0; row < 128; row++)
    {
        text += std::string(128, '#') + "\n";
    }
    EXPECT_NE(Generate(text).find("{0, 0, 128, 0, 128, 128, _big_bf"), std::string::npos);
}

// A font of one row with this many columns: 255 glyphs of 128 columns, and the rest in the glyph of code 255.
static std::string FontOfWidth(int width)
{
    std::string text = "font Wide\ncodes 0 255\nascent 1\ndescent 0\n";
    for (int code = 0; code < 255; code++)
    {
        text += "glyph " + std::to_string(code) + "\n" + std::string(128, '#') + "\n";
    }
    return text + "glyph 255\n" + std::string(static_cast<size_t>(width - 255 * 128), '#') + "\n";
}

TEST_F(Fontgen, TakesAStrikeOf32767Columns)
{
    EXPECT_NE(Generate(FontOfWidth(32767)).find("{0, 255, 1, 0, 1, 32767, _wide_bf"), std::string::npos);
}

// Rows

TEST_F(Fontgen, RefusesAStrikeOf32768Columns)
{
    // Two lines for each of 255 glyphs behind the four of the header: the last begins in line 4 + 510 + 1.
    ExpectRefused(FontOfWidth(32768), "515: the glyphs up to code 255 are together wider than 32767 pixels");
}

TEST_F(Fontgen, RefusesATotalWidthBeyond65535)
{
    ExpectRefused("font Wide\ncodes 0 0\nascent 1\ndescent 0\nglyph 0\n" + std::string(65536, '#') + "\n",
                  "6: a glyph is at most 128 columns wide");
}

TEST_F(Fontgen, RefusesAGlyphOf129Columns)
{
    ExpectRefused(kHeader + "glyph 65\n" + std::string(129, '.') + "\n", "6: a glyph is at most 128 columns wide");
}

TEST_F(Fontgen, RefusesAShorterRow)
{
    ExpectRefused(kHeader + "glyph 65\n###\n##\n###\n", "7: a row of 2 columns in a glyph of 3");
}

TEST_F(Fontgen, RefusesALongerRow)
{
    ExpectRefused(kHeader + "glyph 65\n###\n####\n###\n", "7: a row of 4 columns in a glyph of 3");
}

TEST_F(Fontgen, RefusesAnotherCharacterInARow)
{
    ExpectRefused(kHeader + "glyph 65\n#.#\n#x#\n###\n", "7: a row holds only '.' and '#'");
}

TEST_F(Fontgen, RefusesAnotherCharacterThatBeginsARow)
{
    ExpectRefused(kHeader + "glyph 65\n#.#\nO.#\n###\n", "7: a row holds only '.' and '#'");
}

TEST_F(Fontgen, RefusesABlankInARow)
{
    ExpectRefused(kHeader + "glyph 65\n#.#\n# #\n###\n", "7: a row holds only '.' and '#'");
}

TEST_F(Fontgen, RefusesABlankBeforeARow)
{
    ExpectRefused(kHeader + "glyph 65\n#.#\n ##\n###\n", "7: a row holds only '.' and '#'");
}

TEST_F(Fontgen, RefusesANulByteInARow)
{
    ExpectRefused(kHeader + "glyph 65\n#.#\n#" + std::string(1, '\0') + "#\n###\n", "7: a row holds only '.' and '#'");
}

TEST_F(Fontgen, RefusesAMissingRowBeforeTheNextGlyph)
{
    ExpectRefused(kHeader + "glyph 65\n#\n#\nglyph 66\n#\n#\n#\n", "5: glyph 65 has 2 rows, not 3");
}

TEST_F(Fontgen, RefusesAMissingRowInTheLastGlyph)
{
    ExpectRefused(kHeader + "glyph 65\n#\n#\n#\nglyph 67\n#\n#\n", "9: glyph 67 has 2 rows, not 3");
}

TEST_F(Fontgen, RefusesAGlyphWithoutRows)
{
    ExpectRefused(kHeader + "glyph 65\n", "5: glyph 65 has 0 rows, not 3");
}

TEST_F(Fontgen, RefusesAnExtraRow)
{
    ExpectRefused(kHeader + "glyph 65\n#\n#\n#\n.\nglyph 66\n", "9: glyph 65 has more than 3 rows");
}

TEST_F(Fontgen, RefusesARowBeforeTheFirstGlyph)
{
    ExpectRefused(kHeader + "#.#\n", "5: a row before the first glyph");
}

// Codes

TEST_F(Fontgen, RefusesACodeBelowTheFirst)
{
    ExpectRefused(kHeader + "glyph 64\n", "5: code 64 is outside 65 to 67");
}

TEST_F(Fontgen, RefusesACodeAboveTheLast)
{
    ExpectRefused(kHeader + "glyph 68\n", "5: code 68 is outside 65 to 67");
}

TEST_F(Fontgen, RefusesACodeBeyondAByte)
{
    ExpectRefused(kHeader + "glyph 256\n", "5: \"256\" is not a number from 0 to 255");
}

TEST_F(Fontgen, RefusesANegativeCode)
{
    ExpectRefused(kHeader + "glyph -1\n", "5: \"-1\" is not a number from 0 to 255");
}

TEST_F(Fontgen, RefusesMinusZero)
{
    ExpectRefused(kHeader + "glyph -0\n", "5: \"-0\" is not a number from 0 to 255");
}

TEST_F(Fontgen, RefusesACodeThatIsNoNumber)
{
    ExpectRefused(kHeader + "glyph A\n", "5: \"A\" is not a number from 0 to 255");
}

TEST_F(Fontgen, RefusesACodeWithMoreBehindTheDigits)
{
    ExpectRefused(kHeader + "glyph 65A\n", "5: \"65A\" is not a number from 0 to 255");
}

TEST_F(Fontgen, RefusesACodeBeyondAnyInteger)
{
    ExpectRefused(kHeader + "glyph 99999999999999999999\n",
                  "5: \"99999999999999999999\" is not a number from 0 to 255");
}

TEST_F(Fontgen, RefusesAGlyphWithoutACode)
{
    ExpectRefused(kHeader + "glyph\n", "5: \"\" is not a number from 0 to 255");
}

TEST_F(Fontgen, RefusesACodeTwice)
{
    ExpectRefused(kHeader + "glyph 65\n#\n#\n#\nglyph 65\n#\n#\n#\n", "9: code 65 is drawn already in line 5");
}

TEST_F(Fontgen, RefusesAFontWithoutAGlyph)
{
    ExpectRefused(kHeader, "4: a font without a glyph");
}

// Header

TEST_F(Fontgen, RefusesAnEmptyFile)
{
    ExpectRefused("", "1: no \"font\" line before the first glyph");
}

TEST_F(Fontgen, RefusesAMissingName)
{
    ExpectRefused("codes 1 2\nascent 1\ndescent 0\nglyph 1\n", "4: no \"font\" line before the first glyph");
}

TEST_F(Fontgen, RefusesMissingCodes)
{
    ExpectRefused("font Tiny\nascent 1\ndescent 0\nglyph 1\n", "4: no \"codes\" line before the first glyph");
}

TEST_F(Fontgen, RefusesAMissingAscent)
{
    ExpectRefused("font Tiny\ncodes 1 2\ndescent 0\nglyph 1\n", "4: no \"ascent\" line before the first glyph");
}

TEST_F(Fontgen, RefusesAMissingDescent)
{
    ExpectRefused("font Tiny\ncodes 1 2\nascent 1\nglyph 1\n", "4: no \"descent\" line before the first glyph");
}

TEST_F(Fontgen, RefusesAHeaderLineBehindTheFirstGlyph)
{
    ExpectRefused("font Tiny\ncodes 1 2\nascent 1\nglyph 1\n#\ndescent 0\n",
                  "4: no \"descent\" line before the first glyph");
}

TEST_F(Fontgen, RefusesEachHeaderLineTwice)
{
    ExpectRefused(kHeader + "font Other\n", "5: a second \"font\" line");
    ExpectRefused(kHeader + "codes 65 67\n", "5: a second \"codes\" line");
    ExpectRefused(kHeader + "ascent 2\n", "5: a second \"ascent\" line");
    ExpectRefused(kHeader + "descent 1\n", "5: a second \"descent\" line");
}

TEST_F(Fontgen, RefusesMissingAndExtraHeaderValues)
{
    ExpectRefused("font\n", "1: \"font\" takes 1 value");
    ExpectRefused("font Two Words\n", "1: \"font\" takes 1 value");
    ExpectRefused("codes 65\n", "1: \"codes\" takes 2 values");
    ExpectRefused("codes 65 66 67\n", "1: \"codes\" takes 2 values");
    ExpectRefused("ascent\n", "1: \"ascent\" takes 1 value");
    ExpectRefused("descent 1 2\n", "1: \"descent\" takes 1 value");
}

TEST_F(Fontgen, RefusesANameThatGivesNoIdentifier)
{
    const std::string rule = "1: a font's name is a letter and then letters and digits, not ";
    ExpectRefused("font 8Small\n", rule + "\"8Small\"");
    ExpectRefused("font Small-8\n", rule + "\"Small-8\"");
    ExpectRefused("font Sm\"ll\n", rule + "\"Sm\"ll\"");
}

TEST_F(Fontgen, RefusesBadCodes)
{
    ExpectRefused("codes -1 5\n", "1: \"-1\" is not a number from 0 to 255");
    ExpectRefused("codes 1 256\n", "1: \"256\" is not a number from 0 to 255");
    ExpectRefused("codes 1 x\n", "1: \"x\" is not a number from 0 to 255");
    ExpectRefused("codes 6 5\n", "1: the first code is above the last");
}

TEST_F(Fontgen, RefusesBadHeights)
{
    ExpectRefused("ascent -1\n", "1: \"-1\" is not a number from 0 to 128");
    ExpectRefused("ascent 129\n", "1: \"129\" is not a number from 0 to 128");
    ExpectRefused("descent 1.5\n", "1: \"1.5\" is not a number from 0 to 128");
}

TEST_F(Fontgen, RefusesNoRowsAndTooManyRows)
{
    const std::string start = "font Tiny\ncodes 1 2\n";
    ExpectRefused(start + "ascent 0\ndescent 0\nglyph 1\n", "5: ascent and descent make 0 rows, not 1 to 128");
    ExpectRefused(start + "ascent 128\ndescent 1\nglyph 1\n", "5: ascent and descent make 129 rows, not 1 to 128");
}

TEST_F(Fontgen, RefusesAnUnknownWord)
{
    ExpectRefused("leading 3\n", "1: \"leading\" is none of font, codes, ascent, descent, glyph");
}

// Files

TEST_F(Fontgen, SaysThatTheFontCannotBeRead)
{
    const ChildResult result = Run(directory + "/none.fnt", out);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, directory + "/none.fnt: cannot be read\n");
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(Fontgen, SaysThatADirectoryCannotBeRead)
{
    const ChildResult result = Run(directory, out);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, directory + ": cannot be read\n");
}

TEST_F(Fontgen, SaysThatTheTablesCannotBeWritten)
{
    Write(in, kHeader + "glyph 65\n#\n#\n#\n");
    for (const std::string &name : {directory + "/none/font.cpp", directory, std::string("/dev/full")})
    {
        const ChildResult result = Run(in, name);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err, name + ": cannot be written\n");
        EXPECT_FALSE(std::filesystem::is_regular_file(name));
    }
}

TEST_F(Fontgen, NeverWritesOverTheFontItself)
{
    Write(in, "font Broken");
    const ChildResult result = Run(in, directory + "/./font.fnt");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, directory + "/./font.fnt: is the font itself\n");
    EXPECT_EQ(Read(in), "font Broken");
}

TEST_F(Fontgen, ShowsItsUsage)
{
    const ChildResult result = RunInChild([] { execl(FONTGEN_PATH, "fontgen", "one", nullptr); });
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "usage: fontgen IN.fnt OUT.cpp\n");
}
