// qbos.cpp - the operating-system layer on POSIX.
//
// Most functions are one system call under the package's own name. Those with thoughts of their own come last: mail,
// removal through the shell, permission letters, and starting another program.

#include "qbos.h"
#include "qbos_state.h"

#include <cctype>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

char *_pEnv = nullptr;
int32_t _envSize = 0;

void OSInit()
{
}

void OSCleanUp()
{
}

// The private block

char *_InitEnv()
{
    _pEnv = static_cast<char *>(calloc(kEnvBytes, 1));
    _envSize = 0;
    return _pEnv;
}

void _KillEnv()
{
    free(_pEnv);
    _pEnv = nullptr;
}

int32_t OSSetEnv(const char *name, const char *value)
{
    const size_t entrySize = strlen(name) + strlen(value) + 2;
    const size_t size = static_cast<size_t>(_envSize) + entrySize;
    if (_pEnv == nullptr || size >= kEnvBytes)
    {
        return 0;
    }
    snprintf(_pEnv + _envSize, entrySize, "%s=%s", name, value);
    _envSize = static_cast<int32_t>(size);
    return _envSize;
}

// One call each

const char *OSGetEnv(const char *name)
{
    return getenv(name);
}

FILE *OSPipeOpen(const char *command, const char *mode)
{
    return popen(command, mode);
}

int32_t OSPipeClose(FILE *pipe)
{
    pclose(pipe);
    return 1;
}

int32_t OSRenameFile(const char *from, const char *to)
{
    return rename(from, to);
}

int32_t OSRemoveFile(const char *path)
{
    return remove(path);
}

char *OSCorrectPath(char *path)
{
    return path;
}

double OSDiffTime(time_t t1, time_t t0)
{
    return t1 >= t0 ? difftime(t1, t0) : difftime(t0, t1);
}

int32_t OSSaveProcessID(FILE *file)
{
    const int32_t id = getpid();
    if (file != nullptr)
    {
        fprintf(file, "%d", id);
    }
    return id;
}

char *_Strtoup(char *dest, const char *source)
{
    for (size_t i = 0; source[i] != '\0'; i++)
    {
        dest[i] = static_cast<char>(toupper(static_cast<unsigned char>(source[i])));
    }
    return dest; // on purpose: without a terminator
}

uint32_t OSHexToUL(const char *text)
{
    constexpr int32_t kMaxDigits = 8;
    if (text == nullptr)
    {
        return 0;
    }
    while (isspace(static_cast<unsigned char>(*text)) != 0)
    {
        text++;
    }
    if (text[0] == '0' && (text[1] == 'x' || text[1] == 'X'))
    {
        text += 2;
    }
    uint32_t value = 0;
    for (int32_t i = 0; i < kMaxDigits && isxdigit(static_cast<unsigned char>(text[i])) != 0; i++)
    {
        static const char digits[] = "0123456789abcdef";
        const char *digit = strchr(digits, tolower(static_cast<unsigned char>(text[i])));
        value = value * 16 + static_cast<uint32_t>(digit - digits);
    }
    return value;
}

// Paths and mail

// Copies a path into a buffer of kMaxPath + 1 bytes in this platform's form; false when it does not fit.
static bool _copyPath(char *buffer, const char *path)
{
    const size_t length = strlen(path);
    if (length > kMaxPath)
    {
        return false;
    }
    memcpy(buffer, path, length + 1);
    OSCorrectPath(buffer);
    return true;
}

int32_t OSChangeMod(const char *path, const char *modeText)
{
    char copy[kMaxPath + 1];
    if (modeText == nullptr || !_copyPath(copy, path))
    {
        return -1;
    }
    mode_t mode = 0;
    mode |= strchr(modeText, 'r') != nullptr ? 0444U : 0U;
    mode |= strchr(modeText, 'w') != nullptr ? 0222U : 0U;
    mode |= strchr(modeText, 'x') != nullptr ? 0111U : 0U;
    return chmod(copy, mode);
}

static const char *_textOrEmpty(const char *text)
{
    return text != nullptr ? text : "";
}

int32_t OSSendEmail(const char *mailer, const char *to, const char *cc, const char *bcc, const char *subject,
                    const char *body)
{
    char command[kMaxPath + 1];
    if (to == nullptr || snprintf(command, sizeof command, "%s -t", mailer) > static_cast<int>(kMaxPath))
    {
        return 0;
    }
    FILE *pipe = OSPipeOpen(command, "w");
    if (pipe == nullptr)
    {
        return 0;
    }
    fprintf(pipe, "To: %s\n", to);
    if (cc != nullptr)
    {
        fprintf(pipe, "CC: %s\n", cc);
    }
    if (bcc != nullptr)
    {
        fprintf(pipe, "BCC: %s\n", bcc);
    }
    fprintf(pipe, "Subject: %s\n\n%s\n", _textOrEmpty(subject), _textOrEmpty(body));
    return OSPipeClose(pipe);
}

// Removal through the shell

// What the shell may see as it is: harmless, or wanted as a pattern. The locale takes no part in this.
static bool _isPlain(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           (c != '\0' && strchr("._-/*?[]", c) != nullptr);
}

// Writes a text so that the shell reads every character but the plain ones as itself. Runs of other characters stand
// in single quotes, which keep newlines, backslashes and the bytes of one UTF-8 character together as they are; a
// single quote itself cannot stand there and gets a backslash. Returns the end of what was written, at most three
// characters for each one of the text.
static char *_appendQuoted(char *end, const char *text)
{
    bool fQuoted = false;
    for (; *text != '\0'; text++)
    {
        const bool fQuote = !_isPlain(*text) && *text != '\'';
        if (fQuote != fQuoted)
        {
            *end++ = '\'';
            fQuoted = fQuote;
        }
        if (*text == '\'')
        {
            *end++ = '\\';
        }
        *end++ = *text;
    }
    if (fQuoted)
    {
        *end++ = '\'';
    }
    *end = '\0';
    return end;
}

int32_t _MakeRemoveCommand(char *command, const char *dir, const char *pattern)
{
    char dirCopy[kMaxPath + 1];
    char patternCopy[kMaxPath + 1];
    // An empty directory would be the root, which no caller means when it has nothing to name.
    if (dir == nullptr || pattern == nullptr || *dir == '\0' || *pattern == '\0' || !_copyPath(dirCopy, dir) ||
        !_copyPath(patternCopy, pattern))
    {
        return 0;
    }
    const size_t length = strlen(dirCopy);
    if (dirCopy[length - 1] == '/')
    {
        dirCopy[length - 1] = '\0';
    }
    char *end = stpcpy(command, *dirCopy == '-' ? "rm ./" : "rm ");
    end = _appendQuoted(end, dirCopy);
    *end++ = '/';
    _appendQuoted(end, patternCopy);
    return 1;
}

int32_t OSRemoveMatch(const char *dir, const char *pattern)
{
    char command[kRemoveCommandSize];
    return _MakeRemoveCommand(command, dir, pattern) == 1 ? system(command) : -1;
}

int32_t OSRemoveAll(const char *dir)
{
    return OSRemoveMatch(dir, "*");
}

// Starting another program

int32_t OSExecute(const char *path, ...)
{
    constexpr size_t kMaxEntries = 20; // the path, the arguments and the closing null
    char *vector[kMaxEntries] = {};    // without const, as execv wants it, which does not write to the texts
    vector[0] = const_cast<char *>(path);
    va_list args;
    va_start(args, path);
    for (size_t n = 1; n < kMaxEntries - 1; n++)
    {
        vector[n] = va_arg(args, char *);
        if (vector[n] == nullptr)
        {
            break;
        }
    }
    va_end(args);
    fflush(stdout);
    return execv(path, vector);
}
