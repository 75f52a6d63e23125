// qbgrerr.cpp - the error page.
//
// Every failure of the driver, the support library and the chart engine ends here. The page goes where the chart page
// would have gone, so it is complete with its HTTP header.

#include "qbgrerr.h"

#include "qbchart.h"
#include "qbgrerr_state.h"
#include "qbos.h"

#include <cstdlib>

static const char _majorVersion[] = "3";
static const char _minorVersion[] = "0";
static const char _notice[] = "The chart could not be made; the message above says why.";

// Where errors go, not owned. Null stands for standard error, which cannot be named before the program runs.
// SetErrStream sets it.
static FILE *pErrStream = nullptr;

static FILE *_errStream()
{
    return pErrStream != nullptr ? pErrStream : stderr;
}

int32_t SetErrStream(FILE *stream)
{
    pErrStream = stream;
    return stream != nullptr ? 1 : 0;
}

static void _printHtmlChar(FILE *stream, char c)
{
    switch (c)
    {
    case '<':
        fputs("&lt;", stream);
        break;
    case '>':
        fputs("&gt;", stream);
        break;
    case '&':
        fputs("&amp;", stream);
        break;
    default:
        fputc(c, stream);
    }
}

static void _printText(FILE *stream, const char *text, bool fHtml)
{
    for (; text != nullptr && *text != '\0'; text++)
    {
        if (fHtml)
        {
            _printHtmlChar(stream, *text);
        }
        else
        {
            fputc(*text, stream);
        }
    }
}

int32_t PrintError(FILE *stream, const char *format, va_list args, bool fHtml)
{
    int32_t nConversions = 0;
    for (; *format != '\0'; format++)
    {
        if (*format != '%')
        {
            fputc(*format, stream);
            continue;
        }
        format++;
        nConversions++;
        // NOLINTBEGIN(clang-analyzer-valist.Uninitialized): the analyzer loses the list on its way through a parameter
        switch (*format)
        {
        case 'd':
            fprintf(stream, "%ld", static_cast<long>(va_arg(args, int32_t)));
            break;
        case 'u':
            fprintf(stream, "%lu", static_cast<unsigned long>(va_arg(args, uint32_t)));
            break;
        case 'f':
            fprintf(stream, "%f", va_arg(args, double));
            break;
        case 's':
            _printText(stream, va_arg(args, const char *), fHtml);
            break;
        case '\0':
            return nConversions - 1; // a format that ends in "%"
        default:
            nConversions--;
            fputc(*format, stream);
        }
        // NOLINTEND(clang-analyzer-valist.Uninitialized)
    }
    return nConversions;
}

int32_t Error(const char *format, ...)
{
    va_list args;
    va_start(args, format);
    PrintError(_errStream(), format, args, false);
    va_end(args);
    return 0;
}

// The colour of the text has capital letters O where zeros belong. On purpose: pages are compared byte by byte, and
// browsers show the text black either way.
static void _printHtmlPage(FILE *stream, const char *format, va_list args)
{
    fprintf(stream, "Content-type: text/html\n\n");
    fprintf(stream, "<HTML><HEAD><TITLE>Quillbrook Charting Error</TITLE></HEAD>\n");
    fprintf(stream, "<body BGCOLOR = #FFFFFF TEXT = #OOOOOO >\n");
    fprintf(stream, "<H3>Charting Error</H3>\n");
    fprintf(stream, "<pre>\n\n");
    PrintError(stream, format, args, true);
    fprintf(stream, "\n\n</pre>");
    fprintf(stream, "<H5>Quillbrook %s.%s<br>%s</H5>", _majorVersion, _minorVersion, _notice);
    fprintf(stream, "</BODY></HTML>");
}

static void _printPlainText(FILE *stream, const char *format, va_list args)
{
    fprintf(stream, "Quillbrook Charting Error\n\n");
    PrintError(stream, format, args, false);
    fflush(stream);
    fprintf(stream, "\nQuillbrook %s.%s\n%s\n", _majorVersion, _minorVersion, _notice);
}

void ExitWithError(const char *format, ...)
{
    va_list args;
    va_start(args, format);
    SetErrStream(OpenErrStream());
    if (OSGetEnv("STAND_ALONE") != nullptr)
    {
        _printPlainText(_errStream(), format, args);
    }
    else
    {
        _printHtmlPage(_errStream(), format, args);
    }
    va_end(args);
    CleanUp();
    exit(-1);
}
