// qbchart_report.cpp - from the report's text to series and cells.
//
// Reports stand one after another in a data file; a table of contents gives the position of each. One report is read
// whole into one buffer and cut up in place, so that titles, labels and cells are pointers into it:
//
//     Title<TAB>its second line
//     Year<TAB>North<TAB>South             without this line and the next, series get labels of our own
//                                          (an empty line)
//     1996<TAB>12.5<TAB>7                  a cell of every series
//     1997<TAB>14<TAB>8.25
//
// Nothing in here trusts the files: a report may end anywhere, lines may have too few fields or too many, and
// positions may lie anywhere.
//
// Sections: finding and reading; title and series; cells; what is graphed; pies; dates and colours.

#include "qbchart_state.h"
#include "qbgrerr.h"
#include "qbgrform.h"
#include "qbgrutil.h"

#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cstring>

// Series without labels of their own, more of which cannot be told apart any more.
static constexpr int32_t kMaxUnlabeledSeries = 12;

// The most series at all. The sort for area charts takes the square of their number where they are equal, as series
// that are not graphed are: a second or three for this many.
static constexpr int32_t kMaxSeries = 30000;

// What minima begin with: more than any value that a report is expected to have.
static constexpr double kNoMinimum = 99999999.0;
static constexpr double kNoMinValue = 99999999.9;

// A second pie this many times as large as the first makes an image that no GIF holds, so larger ones count as this.
static constexpr double kMaxPieScale = 1.0e9;

// The most memory for settings and report together; messages give sizes in 32 bits. The length of the text is no limit:
// a first line of many fields makes every further one as wide.
static constexpr int64_t kMaxMemory = INT32_MAX;

// Asks for memory, filled with zeros, and counts it. Returns null without.
static void *_takeMemory(int64_t bytes)
{
    void *memory = bytes <= kMaxMemory - memUsed ? calloc(1, static_cast<size_t>(bytes)) : nullptr;
    if (memory != nullptr)
    {
        memUsed += static_cast<uint32_t>(bytes);
    }
    return memory;
}

// Finding and reading

// What one line of the table of contents says. Lines are read a character at a time, so that they may be of any length.
struct _TocLine
{
    bool fNamed;      // the text before the first tab is the report's name
    bool fTab;        // there is a tab
    bool fInDigits;   // only digits came since the last tab
    int64_t position; // the number after the last tab, at most INT64_MAX; -1: no digit follows the tab
};

// Takes one more character of the position into the line.
static void _addPositionChar(_TocLine *line, int c)
{
    line->fInDigits = line->fInDigits && c >= '0' && c <= '9';
    if (line->fInDigits)
    {
        const int64_t digit = c - '0';
        const int64_t before = line->position < 0 ? 0 : line->position;
        line->position = before > (INT64_MAX - digit) / 10 ? INT64_MAX : before * 10 + digit;
    }
}

// Reads one line. Returns false at the end of the file.
static bool _readTocLine(FILE *toc, const char *name, _TocLine *line)
{
    *line = {true, false, false, -1};
    int c = getc(toc);
    if (c == EOF)
    {
        return false;
    }
    for (; c != EOF && c != '\n'; c = getc(toc))
    {
        if (c == '\t')
        {
            const bool fWholeName = line->fTab || *name == '\0';
            *line = {line->fNamed && fWholeName, true, true, -1};
        }
        else if (line->fTab)
        {
            _addPositionChar(line, c);
        }
        else
        {
            line->fNamed = line->fNamed && *name != '\0' && *name++ == static_cast<char>(c);
        }
    }
    return true;
}

// Finds a report: its first byte and the byte after its last one, INT64_MAX when it is the last report.
static void _findReport(FILE *toc, const char *reportName, int64_t *start, int64_t *end)
{
    static const char wrongFormat[] = "Error reading the TOC file: Wrong format\n";
    _TocLine line;
    do
    {
        if (!_readTocLine(toc, reportName, &line))
        {
            ExitWithError("No Report named '%s' was referenced in the TOC\n", reportName);
        }
        if (!line.fTab)
        {
            ExitWithError(wrongFormat);
        }
    } while (!line.fNamed);
    *start = line.position;
    *end = INT64_MAX;
    if (_readTocLine(toc, reportName, &line))
    {
        if (!line.fTab)
        {
            ExitWithError("Error reading the TOC file:No file position field\n");
        }
        *end = line.position;
    }
    if (*start < 0 || *end < *start)
    {
        ExitWithError(wrongFormat);
    }
}

// Reads the bytes from start to end, as far as the file has them, without leading newlines.
static char *_readBytes(FILE *data, int64_t start, int64_t end, const char *reportName)
{
    fseeko(data, 0, SEEK_END);
    const int64_t size = ftello(data);
    end = end < size ? end : size;
    int64_t length = start < end ? end - start : 0;
    char *buffer = length < kMaxMemory ? static_cast<char *>(_takeMemory(length + 2)) : nullptr;
    if (buffer == nullptr)
    {
        ExitWithError("\nOut of memory trying to allocate\n%d bytes for the chart's data buffer", ClampToInt32(length));
    }
    chartData.buffer = buffer; // from here on CleanUp knows it
    fseeko(data, start, SEEK_SET);
    int c = '\n';
    while (length > 0 && (c = getc(data)) == '\n')
    {
        length--;
    }
    ungetc(c, data);
    const size_t got = fread(buffer, 1, static_cast<size_t>(length), data);
    if (got < static_cast<size_t>(length) && ferror(data) != 0)
    {
        ExitWithError("Error reading Data file for Report '%s'\n", reportName);
    }
    buffer[got] = '\n';
    buffer[got + 1] = '\0';
    return buffer;
}

char *_ReadReport(FILE *data, FILE *toc, const char *reportName)
{
    int64_t start = 0;
    int64_t end = 0;
    _findReport(toc, reportName, &start, &end);
    return _readBytes(data, start, end, reportName);
}

static FILE *_openInput(const char *path)
{
    FILE *file = fopen(path, "r");
    if (file == nullptr)
    {
        ExitWithError("Cant open file '%s'\n", path);
    }
    return file;
}

char *_GetChartDataBuffer(const char *dataPath, const char *tocPath, const char *reportName)
{
    FILE *data = _openInput(dataPath);
    FILE *toc = _openInput(tocPath);
    char *buffer = _ReadReport(data, toc, reportName);
    fclose(toc);
    fclose(data);
    return buffer;
}

// Title and series

static const char _cantReadSeries[] = "\nData File corrupted or malformed\nCan't read data series\n";

char *_GetChartTitle(ChartData *data)
{
    data->title = data->buffer;
    char *end = strchr(data->buffer, '\n');
    if (end == nullptr)
    {
        ExitWithError("\nData File corrupted or malformed\nCan't read report title\n");
    }
    *end++ = '\0';
    for (char *tab = strchr(data->title, '\t'); tab != nullptr; tab = strchr(tab, '\t'))
    {
        *tab = '\n';
    }
    data->hasSeriesLabels = *end == '\n' ? 0 : 1;
    return data->hasSeriesLabels == 1 ? end : end + 1;
}

// Returns the newline that ends a line of the report.
static char *_getLineEnd(char *line)
{
    char *end = strchr(line, '\n');
    if (end == nullptr)
    {
        ExitWithError(_cantReadSeries);
    }
    return end;
}

// Cuts off the field at *position and moves there to the next one. At the end of the line, which the caller has
// terminated, it stays and the field is empty.
static char *_takeField(char **position)
{
    char *field = *position;
    char *end = field + strcspn(field, "\t");
    *position = *end == '\t' ? end + 1 : end;
    *end = '\0';
    return field;
}

// Returns the start of the data lines behind the labels line at position, which is terminated.
static char *_skipLabels(char *position)
{
    char *end = _getLineEnd(position);
    if (end[1] != '\n')
    {
        ExitWithError("\nData File corrupted or malformed\nMissing component separator\n");
    }
    *end = '\0';
    return end + 2;
}

static int32_t _countFields(const char *line, const char *end)
{
    int64_t count = 1;
    for (; line < end; line++)
    {
        count += *line == '\t' ? 1 : 0;
    }
    return ClampToInt32(count);
}

// Counts the lines up to the first empty one or the end of the text. Text after the last line end counts as a line,
// so that reading it says what is wrong.
static int32_t _countLines(const char *line)
{
    int64_t count = 0;
    while (line != nullptr && *line != '\0' && *line != '\n')
    {
        count++;
        line = strchr(line, '\n');
        line = line != nullptr ? line + 1 : nullptr;
    }
    return ClampToInt32(count);
}

static void _makeSeriesRecords(ChartData *data)
{
    int64_t bytes = static_cast<int64_t>(data->nSeries) * static_cast<int64_t>(sizeof(Series));
    data->series = static_cast<Series *>(_takeMemory(bytes));
    if (data->series == nullptr)
    {
        ExitWithError("\nOut of memory trying to allocate\n%d bytes for %d Series\n", ClampToInt32(bytes),
                      data->nSeries);
    }
    bytes = static_cast<int64_t>(data->nSeries) *
            static_cast<int64_t>(sizeof(Series *)); // NOLINT(bugprone-sizeof-expression): pointers are meant
    data->seriesPtrs = static_cast<Series **>(_takeMemory(bytes));
    if (data->seriesPtrs == nullptr)
    {
        ExitWithError("\nOut of memory trying to allocate\n%d bytes for %d pointers to Series\n", ClampToInt32(bytes),
                      data->nSeries);
    }
}

static void _initSeries(Series *series, const char *label, uint32_t flags, int32_t nCells)
{
    series->label = label;
    series->flags = flags;
    series->min = kNoMinimum;
    series->nCells = nCells;
    const int64_t bytes = static_cast<int64_t>(nCells) * static_cast<int64_t>(sizeof(Cell));
    series->cells = static_cast<Cell *>(_takeMemory(bytes));
    if (series->cells == nullptr)
    {
        ExitWithError("\nOut of memory trying to allocate\n%d bytes for %d cells\n", ClampToInt32(bytes), nCells);
    }
}

static const char *_defaultLabel(int32_t index)
{
    static const char *const labels[] = {"Series 1", "Series 2", "Series 3", "Series 4", "Series 5",
                                         "Series 6", "Series 7", "Series 8", "Series 9", "Series 10"};
    constexpr int32_t kNLabels = sizeof labels / sizeof labels[0];
    return index < kNLabels ? labels[index] : "Series"; // on purpose: the last two are not numbered
}

char *_GetChartSeries(ChartData *data, char *position)
{
    const bool fLabels = data->hasSeriesLabels == 1;
    char *label = position;
    char *lines = fLabels ? _skipLabels(position) : position;
    const int32_t nSeries = _countFields(lines, _getLineEnd(lines));
    if (!fLabels && nSeries > kMaxUnlabeledSeries)
    {
        ExitWithError("Too many unlabeled series:\nmaximum allowed is %d\n", kMaxUnlabeledSeries);
    }
    if (nSeries > kMaxSeries)
    {
        ExitWithError("Too many series:\nmaximum allowed is %d\n", kMaxSeries);
    }
    data->nCells = _countLines(lines);
    if (data->refSeries < 0 || nSeries <= data->refSeries || data->nCells == 0)
    {
        ExitWithError("Not enough data to generate chart\n");
    }
    data->nSeries = nSeries;
    _makeSeriesRecords(data);
    for (int32_t i = 0; i < nSeries; i++)
    {
        data->seriesPtrs[i] = &data->series[i];
        _initSeries(&data->series[i], fLabels ? _takeField(&label) : _defaultLabel(i),
                    i == data->refSeries ? kSeriesReference : kSeriesOrdinary, data->nCells);
    }
    return lines;
}

// Cells

// Cuts one line, which is terminated, into the cells of a row.
static void _readRow(ChartData *data, char *line, int32_t row)
{
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        Series *series = &data->series[i];
        Cell *cell = &series->cells[row];
        cell->text = _takeField(&line);
        cell->value = (series->flags & kSeriesNumericBit) != 0 ? TextToDouble(cell->text) : 0.0;
    }
}

void _GetChartCells(ChartData *data, char *position)
{
    for (int32_t row = 0; row < data->nCells; row++)
    {
        char *end = _getLineEnd(position);
        if (end == position)
        {
            data->nCells = row;
            return;
        }
        *end = '\0';
        _readRow(data, position, row);
        position = end + 1;
    }
}

// What is graphed

// Reads the setting of one series, whose index completes the key.
static const char *_getSeriesValue(const HTab *table, const char *prefix, int32_t index)
{
    char key[32];
    snprintf(key, sizeof key, "%s%d", prefix, index);
    return GetFormValue(table, key);
}

static bool _isReference(const Series *series)
{
    return (series->flags & kSeriesReferenceBit) != 0;
}

static bool _isGraphed(const Series *series)
{
    return (series->flags & kSeriesGraphedBit) != 0;
}

void _GetGraphedSeries(const HTab *table, ChartData *data, ChartSet *set)
{
    set->nGraphedSeries = 0;
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        Series *series = &data->series[i];
        if (_isReference(series))
        {
            continue;
        }
        series->flags &= ~kSeriesGraphedBit;
        if (strcmp(_getSeriesValue(table, "chartSeries", i), "on") == 0)
        {
            series->flags |= kSeriesGraphedBit;
            set->nGraphedSeries++;
        }
    }
}

static int32_t _clampIndex(int32_t index, int32_t count)
{
    if (index >= count)
    {
        index = count - 1;
    }
    return index < 0 ? 0 : index;
}

// Sets which cells are drawn. There is at least one cell.
static void _getCellRange(const HTab *table, int32_t nCells, ChartSet *set)
{
    const bool fNoStart = strcmp(GetFormValue(table, "startCell"), "off") == 0;
    const bool fNoEnd = strcmp(GetFormValue(table, "endCell"), "off") == 0;
    set->allCells = fNoStart && fNoEnd ? 1 : 0;
    set->firstCell = fNoStart ? 0 : _clampIndex(_GetNumber(table, "startCell"), nCells);
    set->lastCell = fNoEnd ? nCells - 1 : _clampIndex(_GetNumber(table, "endCell"), nCells);
    if (set->lastCell < set->firstCell)
    {
        set->lastCell = set->firstCell;
    }
    set->nGraphedCells = set->lastCell - set->firstCell + 1;
}

// A sum of many values may leave the range of a double; the largest one stands for it then.
static double _keepFinite(double sum)
{
    return std::isfinite(sum) ? sum : std::copysign(DBL_MAX, sum);
}

static void _getSeriesStatistics(Series *series, const ChartSet *set)
{
    for (int32_t i = set->firstCell; i <= set->lastCell; i++)
    {
        Cell *cell = &series->cells[i];
        cell->graphed = 1;
        series->min = fmin(series->min, cell->value);
        series->max = fmax(series->max, cell->value);
        series->sum = _keepFinite(series->sum + cell->value);
    }
    series->mean = series->sum / set->nGraphedCells;
}

// Charts whose series differ much become logarithmic unless the settings ask for a linear scale. Means of zero and
// below are compared as they are.
static void _chooseScale(double largestMean, double smallestMean, ChartSet *set)
{
    constexpr double kLogRatio = 10.0;
    if ((set->chartFlags & kChartLinearScale) == 0 && largestMean >= kLogRatio * smallestMean)
    {
        set->chartFlags |= kChartLogScale;
    }
}

void _GetGraphedCells(const HTab *table, ChartData *data, ChartSet *set)
{
    _getCellRange(table, data->nCells, set);
    data->minValue = kNoMinValue;
    data->maxValue = 0.0;
    double largestMean = -DBL_MAX;
    double smallestMean = DBL_MAX;
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        Series *series = &data->series[i];
        if (!_isGraphed(series))
        {
            continue;
        }
        _getSeriesStatistics(series, set);
        data->minValue = fmin(data->minValue, series->min);
        data->maxValue = fmax(data->maxValue, series->max);
        largestMean = fmax(largestMean, series->mean);
        smallestMean = fmin(smallestMean, series->mean);
    }
    if (set->nGraphedSeries > 0)
    {
        _chooseScale(largestMean, smallestMean, set);
    }
}

// Pies

void _GetPieExplodeSettings(const HTab *table, ChartData *, ChartSet *set)
{
    if (_IsOn(table, "pieExplodeAll"))
    {
        set->pieExplode = kExplodeAll;
        return;
    }
    set->pieExplode =
        (_IsOn(table, "pieExplodeMax") ? kExplodeMax : 0) | (_IsOn(table, "pieExplodeMin") ? kExplodeMin : 0);
}

// Sets negative values to 0 and returns the sum of the rest.
static double _sumSlices(Series *series, const ChartSet *set)
{
    double sum = 0.0;
    for (int32_t i = set->firstCell; i <= set->lastCell; i++)
    {
        Cell *cell = &series->cells[i];
        cell->value = fmax(cell->value, 0.0);
        sum = _keepFinite(sum + cell->value);
    }
    return sum;
}

void _GetPieParams(ChartData *data, ChartSet *set)
{
    const bool fScaled = (set->chartFlags & kChartScaleMult) != 0;
    double firstSum = 0.0; // of the first pie
    set->pieScaleSum = 0.0;
    set->pieScaleMax = 0.0;
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        Series *series = &data->series[i];
        if (!_isGraphed(series) || (series->flags & kSeriesNumericBit) == 0)
        {
            continue;
        }
        series->sum = _sumSlices(series, set);
        if (series->sum <= 0.0)
        {
            series->flags &= ~kSeriesGraphedBit;
            continue;
        }
        firstSum = firstSum > 0.0 ? firstSum : series->sum;
        series->pieScale = fScaled ? fmin(series->sum / firstSum, kMaxPieScale) : 1.0;
        set->pieScaleSum += series->pieScale;
        set->pieScaleMax = fmax(set->pieScaleMax, series->pieScale);
    }
}

// Dates and colours

void _IsDateRefSeries(ChartData *data)
{
    DateParts parts;
    Series *series = &data->series[data->refSeries];
    series->flags = SplitDate(series->cells[0].text, &parts) == 1 ? kSeriesDates : kSeriesReference;
}

void _GetSeriesColors(const HTab *table, ChartData *data, ChartSet *)
{
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        Series *series = &data->series[i];
        if (_isReference(series))
        {
            continue;
        }
        const char *value = _getSeriesValue(table, "colorSeries", i);
        const int32_t color = strcmp(value, "off") == 0 ? kColorSeries : TextToInt32(value);
        series->color = static_cast<uint8_t>(color); // palette positions are 8 bits wide
    }
}
