// fontgen.cpp - build tool: turns a font drawn as text (.fnt) into the tables of one strike font as C++.
//
//     fontgen IN.fnt OUT.cpp
//
// The header lines (font, codes, ascent, descent) come first, then one entry a glyph: "glyph CODE" with any label
// behind it, and ascent + descent rows of '.' and '#'. Lines that are blank or begin with "//" count nowhere; blanks at
// a line's end are dropped. Glyphs may come in any order; the strike holds them by code.
//
// A file that breaks a rule is refused with "FILE:LINE: message" and exit status 1, and no output file is left, not
// even one of an earlier run: a build must not go on with tables that do not match the drawing.
//
// The limits are those of the program that uses the tables: codes are bytes, a glyph is at most 128 pixels wide and
// high, because that is where the scaling map ends, and a strike at most 32767 wide, because its width is a signed
// 16-bit number.

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace
{
constexpr int kMaxCode = 255;
constexpr int kMaxGlyphSide = 128;
constexpr int kMaxStrikeWidth = 32767;

struct Glyph
{
    int line;                      // where its entry begins
    std::vector<std::string> rows; // all of one length
};

struct Font
{
    std::string name; // empty: no such line yet; the numbers likewise below 0
    int first = -1;
    int last = -1;
    int ascent = -1;
    int descent = -1;
    std::map<int, Glyph> glyphs; // by code

    int height() const
    {
        return ascent + descent;
    }
};

// Where the reader stands.
struct Reader
{
    std::string fileName;
    int line = 0;
    Font font;
    Glyph *glyph = nullptr; // the entry being read
    int glyphCode = 0;
};

bool Refuse(const Reader &reader, int line, const std::string &message)
{
    std::cerr << reader.fileName << ':' << line << ": " << message << '\n';
    return false;
}

bool Refuse(const Reader &reader, const std::string &message)
{
    return Refuse(reader, reader.line, message);
}

// A number of digits alone, 0 to most.
bool ReadNumber(const Reader &reader, const std::string &word, int most, int *number)
{
    const char *end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, *number);
    if (word.empty() || word[0] == '-' || error != std::errc() || stop != end || *number > most)
    {
        return Refuse(reader, "\"" + word + "\" is not a number from 0 to " + std::to_string(most));
    }
    return true;
}

bool IsIdentifier(const std::string &name)
{
    const std::string letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    return letters.find(name[0]) != std::string::npos &&
           name.find_first_not_of(letters + "0123456789") == std::string::npos;
}

bool ReadName(Reader &reader, const std::string &name)
{
    if (!IsIdentifier(name))
    {
        return Refuse(reader, "a font's name is a letter and then letters and digits, not \"" + name + "\"");
    }
    reader.font.name = name;
    return true;
}

bool ReadCodes(Reader &reader, const std::string &first, const std::string &last)
{
    Font &font = reader.font;
    if (!ReadNumber(reader, first, kMaxCode, &font.first) || !ReadNumber(reader, last, kMaxCode, &font.last))
    {
        return false;
    }
    return font.first <= font.last || Refuse(reader, "the first code is above the last");
}

bool ReadHeader(Reader &reader, const std::vector<std::string> &words)
{
    Font &font = reader.font;
    const std::string &key = words[0];
    const size_t nValues = key == "codes" ? 2 : 1;
    if (words.size() != 1 + nValues)
    {
        return Refuse(reader,
                      "\"" + key + "\" takes " + std::to_string(nValues) + (nValues == 1 ? " value" : " values"));
    }
    const bool fSeen = key == "font"     ? !font.name.empty()
                       : key == "codes"  ? font.first >= 0
                       : key == "ascent" ? font.ascent >= 0
                                         : font.descent >= 0;
    if (fSeen)
    {
        return Refuse(reader, "a second \"" + key + "\" line");
    }
    if (key == "font")
    {
        return ReadName(reader, words[1]);
    }
    if (key == "codes")
    {
        return ReadCodes(reader, words[1], words[2]);
    }
    return ReadNumber(reader, words[1], kMaxGlyphSide, key == "ascent" ? &font.ascent : &font.descent);
}

bool CheckHeader(const Reader &reader)
{
    const Font &font = reader.font;
    const char *missing = font.name.empty()  ? "font"
                          : font.first < 0   ? "codes"
                          : font.ascent < 0  ? "ascent"
                          : font.descent < 0 ? "descent"
                                             : nullptr;
    if (missing)
    {
        return Refuse(reader, "no \"" + std::string(missing) + "\" line before the first glyph");
    }
    if (font.height() < 1 || font.height() > kMaxGlyphSide)
    {
        return Refuse(reader, "ascent and descent make " + std::to_string(font.height()) + " rows, not 1 to " +
                                  std::to_string(kMaxGlyphSide));
    }
    return true;
}

// Closes the entry being read, when there is one.
bool EndGlyph(const Reader &reader)
{
    const Glyph *glyph = reader.glyph;
    if (!glyph || glyph->rows.size() == static_cast<size_t>(reader.font.height()))
    {
        return true;
    }
    return Refuse(reader, glyph->line,
                  "glyph " + std::to_string(reader.glyphCode) + " has " + std::to_string(glyph->rows.size()) +
                      " rows, not " + std::to_string(reader.font.height()));
}

bool BeginGlyph(Reader &reader, const std::vector<std::string> &words)
{
    Font &font = reader.font;
    if (!EndGlyph(reader) || !CheckHeader(reader))
    {
        return false;
    }
    int code = 0;
    if (!ReadNumber(reader, words.size() < 2 ? "" : words[1], kMaxCode, &code))
    {
        return false;
    }
    if (code < font.first || code > font.last)
    {
        return Refuse(reader, "code " + std::to_string(code) + " is outside " + std::to_string(font.first) + " to " +
                                  std::to_string(font.last));
    }
    const auto [entry, fNew] = font.glyphs.try_emplace(code, Glyph{reader.line, {}});
    if (!fNew)
    {
        return Refuse(reader, "code " + std::to_string(code) + " is drawn already in line " +
                                  std::to_string(entry->second.line));
    }
    reader.glyph = &entry->second;
    reader.glyphCode = code;
    return true;
}

bool AddRow(Reader &reader, const std::string &row)
{
    if (!reader.glyph)
    {
        return Refuse(reader, "a row before the first glyph");
    }
    std::vector<std::string> &rows = reader.glyph->rows;
    if (rows.size() == static_cast<size_t>(reader.font.height()))
    {
        return Refuse(reader, "glyph " + std::to_string(reader.glyphCode) + " has more than " +
                                  std::to_string(reader.font.height()) + " rows");
    }
    if (row.find_first_not_of(".#") != std::string::npos)
    {
        return Refuse(reader, "a row holds only '.' and '#'");
    }
    if (!rows.empty() && row.size() != rows[0].size())
    {
        return Refuse(reader, "a row of " + std::to_string(row.size()) + " columns in a glyph of " +
                                  std::to_string(rows[0].size()));
    }
    if (row.size() > static_cast<size_t>(kMaxGlyphSide))
    {
        return Refuse(reader, "a glyph is at most " + std::to_string(kMaxGlyphSide) + " columns wide");
    }
    rows.push_back(row);
    return true;
}

bool ReadLine(Reader &reader, std::string text)
{
    text.erase(text.find_last_not_of(" \t\r") + 1);
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
    {
        words.push_back(word);
    }
    if (words.empty() || words[0].starts_with("//"))
    {
        return true;
    }
    const std::string &key = words[0];
    if (key == "glyph")
    {
        return BeginGlyph(reader, words);
    }
    if (key == "font" || key == "codes" || key == "ascent" || key == "descent")
    {
        return ReadHeader(reader, words);
    }
    // Inside a glyph whatever is no known word was meant as a row.
    if (reader.glyph || key.find_first_of(".#") == 0)
    {
        return AddRow(reader, text);
    }
    return Refuse(reader, "\"" + key + "\" is none of font, codes, ascent, descent, glyph");
}

bool CheckStrike(const Reader &reader)
{
    int width = 0;
    for (const auto &[code, glyph] : reader.font.glyphs)
    {
        width += static_cast<int>(glyph.rows[0].size());
        if (width > kMaxStrikeWidth)
        {
            return Refuse(reader, glyph.line,
                          "the glyphs up to code " + std::to_string(code) + " are together wider than " +
                              std::to_string(kMaxStrikeWidth) + " pixels");
        }
    }
    return width > 0 || Refuse(reader, "a font without a glyph");
}

bool ReadFont(Reader &reader)
{
    std::ifstream in(reader.fileName, std::ios::binary);
    std::string text;
    while (std::getline(in, text))
    {
        reader.line++;
        if (!ReadLine(reader, text))
        {
            return false;
        }
    }
    if (!in.eof())
    {
        std::cerr << reader.fileName << ": cannot be read\n";
        return false;
    }
    reader.line = std::max(reader.line, 1); // an empty file is refused in its first line
    return CheckHeader(reader) && EndGlyph(reader) && CheckStrike(reader);
}

// The tables of Geneva12 have always carried 10 in their name.
std::string TableName(const std::string &fontName)
{
    if (fontName == "Geneva12")
    {
        return "_geneva10";
    }
    std::string name = "_";
    for (const char letter : fontName)
    {
        const bool fCapital = letter >= 'A' && letter <= 'Z';
        name += static_cast<char>(fCapital ? letter - 'A' + 'a' : letter);
    }
    return name;
}

// Where each code's columns begin, and one closing entry.
std::vector<int> Locations(const Font &font)
{
    std::vector<int> locations = {0};
    for (int code = font.first; code <= font.last; code++)
    {
        const auto found = font.glyphs.find(code);
        const size_t width = found == font.glyphs.end() ? 0 : found->second.rows[0].size();
        locations.push_back(locations.back() + static_cast<int>(width));
    }
    return locations;
}

// All rows, each padded to whole bytes, high bit leftmost.
std::vector<int> Strike(const Font &font)
{
    std::vector<int> bytes;
    for (size_t r = 0; r < static_cast<size_t>(font.height()); r++)
    {
        std::string row;
        for (const auto &[code, glyph] : font.glyphs)
        {
            row += glyph.rows[r];
        }
        row.resize((row.size() + 7) / 8 * 8, '.');
        for (size_t column = 0; column < row.size(); column += 8)
        {
            int byte = 0;
            for (size_t bit = 0; bit < 8; bit++)
            {
                byte = byte * 2 + (row[column + bit] == '#' ? 1 : 0);
            }
            bytes.push_back(byte);
        }
    }
    return bytes;
}

void PrintTable(std::ostream &out, const std::string &type, const std::string &name, const std::vector<int> &values)
{
    constexpr size_t kPerLine = 16;
    const std::string head = "const " + type + " " + name + "[" + std::to_string(values.size()) + "]";
    out << "extern " << head << ";\n" << head << " = {";
    for (size_t i = 0; i < values.size(); i++)
    {
        out << (i % kPerLine == 0 ? "\n    " : " ") << values[i] << ",";
    }
    out << "\n};\n\n";
}

std::string PrintFont(const Font &font)
{
    std::ostringstream out;
    const std::string name = TableName(font.name);
    const std::vector<int> locations = Locations(font);
    out << "// The font " << font.name << ". Made by fontgen at every build; the drawing is in its .fnt file.\n"
        << "#include \"qbgrfnt.h\"\n\n";
    PrintTable(out, "uint16_t", name + "_lc", locations);
    PrintTable(out, "uint8_t", name + "_bf", Strike(font));
    const std::string head = "const FontRec " + name + "_rec";
    out << "extern " << head << ";\n"
        << head << " = {" << font.first << ", " << font.last << ", " << font.ascent << ", " << font.descent << ", "
        << font.height() << ", " << locations.back() << ", " << name << "_bf, " << name << "_lc, nullptr, \""
        << font.name << "\"};\n";
    return out.str();
}

// Only what a build made may go: never a directory or a device.
void RemoveOutput(const std::string &fileName)
{
    std::error_code error;
    if (std::filesystem::is_regular_file(fileName, error))
    {
        std::filesystem::remove(fileName, error);
    }
}

bool WriteFile(const std::string &fileName, const std::string &text)
{
    std::ofstream out(fileName, std::ios::binary);
    out << text;
    out.close();
    if (!out)
    {
        std::cerr << fileName << ": cannot be written\n";
        return false;
    }
    return true;
}
} // namespace

int main(int argc, char **argv)
{
    if (argc != 3)
    {
        std::cerr << "usage: fontgen IN.fnt OUT.cpp\n";
        return 1;
    }
    const std::string outName = argv[2];
    std::error_code error;
    if (std::filesystem::equivalent(argv[1], outName, error))
    {
        std::cerr << outName << ": is the font itself\n";
        return 1;
    }
    Reader reader;
    reader.fileName = argv[1];
    if (ReadFont(reader) && WriteFile(outName, PrintFont(reader.font)))
    {
        return 0;
    }
    RemoveOutput(outName);
    return 1;
}
