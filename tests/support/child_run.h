// child_run.h - runs code that may end the process in a child, and keeps what it wrote.
#pragma once

#include <functional>
#include <string>

struct ChildResult
{
    int status;      // exit status, or 1000 + signal number when a signal ended the child
    std::string out; // standard output
    std::string err; // standard error
};

// Runs work in a forked child; a child whose work returns ends with status 0.
ChildResult RunInChild(const std::function<void()> &work);
