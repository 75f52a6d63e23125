// qbchart_output.cpp - the files that a run leaves: the GIF, the reference file with its name, the serial counter; and
// the error file.
//
//     gifs/qb1f2a63c5e1d07.gif    a new name every run
//     gifs/0.ref                  that name, for the page script
//     gifs/serial.num             4 bytes, most significant first: number of the latest run

#include "qbchart_state.h"
#include "qbgrerr.h"
#include "qbos.h"

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <sys/random.h>
#include <unistd.h>

static const char _serialName[] = "serial.num";
static const char _cantCreateGif[] = "Can't create chart's GIF image\n";
static const char _cantCreateRef[] = "Can't create chart's reference file\n";

// The longest that follows a user's prefix in a GIF's name: "qb", three hexadecimal numbers of 8, 16 and 8 digits, a
// serial number and ".gif".
static const char _longestGifName[] = "qb012345678901234567890123456789012345678901.gif";
static_assert(sizeof _longestGifName - 1 == 2 + 8 + 16 + 8 + 10 + 4);

// Paths

void _MakePath(char *path, const char *first, const char *second, const char *third)
{
    const int length = snprintf(path, kPathSize, "%s%s%s", first, second, third);
    if (length < 0 || length > kMaxPathLength)
    {
        ExitWithError("This path is longer than %d characters:\n%s%s%s\n", kMaxPathLength, first, second, third);
    }
}

static void _makeRefPath(char *path, const char *gifDir, const char *userId)
{
    _MakePath(path, gifDir, userId != nullptr ? userId : "0", ".ref");
}

void _CheckOutputPaths(const char *gifDir, const char *userId)
{
    char name[kPathSize];
    char path[kPathSize];
    _MakePath(name, userId != nullptr ? userId : "", userId != nullptr ? "_" : "", _longestGifName);
    _MakePath(path, gifDir, name);
    _makeRefPath(path, gifDir, userId);
    _MakePath(path, gifDir, _serialName);
}

// Names

// Process ids come back and clocks are coarse or set back, so that only the random part makes the name safe; the
// others keep names apart even if it should repeat.
char *_GetTmpFileName(char *buffer)
{
    uint32_t random = 0;
    timespec now = {};
    if (getrandom(&random, sizeof random, 0) != sizeof random || clock_gettime(CLOCK_REALTIME, &now) != 0)
    {
        ExitWithError("Can't create a temporary name for the chart's GIF image\n");
    }
    const uint64_t clock = static_cast<uint64_t>(now.tv_sec) * 1000000000U + static_cast<uint64_t>(now.tv_nsec);
    snprintf(buffer, kPathSize, "qb%x%llx%08x", static_cast<uint32_t>(getpid()), static_cast<unsigned long long>(clock),
             random);
    return buffer;
}

// Reads the counter; 0 when the file is too short.
static uint32_t _readSerial(FILE *file)
{
    uint8_t bytes[4];
    if (fread(bytes, 1, sizeof bytes, file) != sizeof bytes)
    {
        return 0;
    }
    uint32_t value = 0;
    for (const uint8_t byte : bytes)
    {
        value = value << 8 | byte;
    }
    return value;
}

static void _writeSerial(FILE *file, uint32_t value)
{
    for (int32_t shift = 24; shift >= 0; shift -= 8)
    {
        fputc(static_cast<int>(value >> shift & 0xff), file);
    }
}

uint32_t _GetNextSerialNum(const char *dir, const char *name)
{
    char path[kPathSize];
    _MakePath(path, dir, name);
    uint32_t value = 0;
    FILE *file = fopen(path, "r+b");
    if (file != nullptr)
    {
        value = _readSerial(file) + 1; // on purpose: wraps
        rewind(file);
    }
    else
    {
        file = fopen(path, "wb");
    }
    if (file != nullptr)
    {
        _writeSerial(file, value);
        fclose(file); // a counter that cannot be kept is no reason to fail: names are unique without it
    }
    return value;
}

static void _nameGif(ChartSet *set, const char *gifDir, const char *userId)
{
    char base[kPathSize];
    char ending[32];
    _GetTmpFileName(base);
    snprintf(ending, sizeof ending, "%u.gif", _GetNextSerialNum(gifDir, _serialName));
    char prefix[kPathSize];
    _MakePath(prefix, userId != nullptr ? userId : "", userId != nullptr ? "_" : "");
    _MakePath(set->gifName, prefix, base, ending);
}

// Files

// Closes a file that was written. Returns whether all of it arrived.
static bool _closeWritten(FILE *file)
{
    const bool fWritten = ferror(file) == 0;
    return fclose(file) == 0 && fWritten;
}

// Writes the image and closes the file. Returns whether the GIF is complete. The encoder may fail with a graphics error
// or, without memory for its tables, by writing nothing.
static bool _writeGif(Image *image, FILE *file)
{
    ImgToGif(image, 0, file);
    const bool fEncoded = GetGraphError() == 0 && ftell(file) > 0;
    return _closeWritten(file) && fEncoded;
}

static bool _writeRef(const char *gifName, FILE *file)
{
    fprintf(file, "%s", gifName);
    return _closeWritten(file);
}

// Ends the run without leaving half a chart behind.
[[noreturn]] static void _giveUp(const char *gifPath, const char *refPath, const char *message)
{
    OSRemoveFile(gifPath);
    OSRemoveFile(refPath);
    ExitWithError("%s", message);
}

void _OutputGif(ChartData *, ChartSet *set, const char *gifDir, const char *userId)
{
    char gifPath[kPathSize];
    char refPath[kPathSize];
    _nameGif(set, gifDir, userId);
    _MakePath(gifPath, gifDir, set->gifName);
    _makeRefPath(refPath, gifDir, userId);
    FILE *gif = fopen(gifPath, "wb");
    if (gif == nullptr)
    {
        ExitWithError(_cantCreateGif);
    }
    FILE *ref = fopen(refPath, "w");
    if (ref == nullptr)
    {
        fclose(gif);
        OSRemoveFile(gifPath);
        ExitWithError(_cantCreateRef);
    }
    OSChangeMod(gifPath, "rw");
    OSChangeMod(refPath, "rw");
    if (!_writeGif(set->image, gif))
    {
        fclose(ref);
        _giveUp(gifPath, refPath, _cantCreateGif);
    }
    if (!_writeRef(set->gifName, ref))
    {
        _giveUp(gifPath, refPath, _cantCreateRef);
    }
}

// The error file

char *_SetErrStreamName(const char *dir, const char *userId)
{
    _MakePath(_aErrFilename, dir, userId != nullptr ? userId : "0", ".err");
    return _aErrFilename;
}

FILE *OpenErrStream()
{
    if (_aErrFilename[0] == '\0')
    {
        return stdout;
    }
    FILE *file = fopen(_aErrFilename, "w");
    _pErr = file != nullptr ? file : stdout;
    return file;
}
