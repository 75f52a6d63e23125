// child_run.cpp - fork, with both output streams on temporary files: a full pipe could never block the child.

#include "child_run.h"

#include <cstdio>
#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>

static std::string _readAll(FILE *file)
{
    std::string text;
    std::rewind(file);
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file))
    {
        text.push_back(static_cast<char>(c));
    }
    std::fclose(file);
    return text;
}

ChildResult RunInChild(const std::function<void()> &work)
{
    FILE *out = std::tmpfile();
    FILE *err = std::tmpfile();
    if (out == nullptr || err == nullptr)
    {
        std::abort();
    }
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0)
    {
        dup2(fileno(out), STDOUT_FILENO);
        dup2(fileno(err), STDERR_FILENO);
        work();
        std::exit(0); // not _exit: buffered output is part of what is looked at, and leaks are checked
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child)
    {
        std::abort();
    }
    const int code = WIFSIGNALED(status) ? 1000 + WTERMSIG(status) : WEXITSTATUS(status);
    return {code, _readAll(out), _readAll(err)};
}
