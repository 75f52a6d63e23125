// package_dir.h - a package of a test's own: directories, a report, settings, a page script; and runs of the program in
// it, as a web server or an operator starts it.
#pragma once

#include "child_run.h"
#include "settings_table.h"
#include "temp_dir.h"

#include <functional>
#include <string>
#include <vector>

// A package with one report, "Sales" of the base "data" (3 series over 12 months), and the settings of a bar chart.
struct PackageDir
{
    PackageDir();

    // Start a program with a form on its standard input, with arguments, or with both.
    ChildResult post(const std::string &program) const;
    ChildResult start(const std::string &program, const std::vector<std::string> &args,
                      const std::string &input = "") const;

    // The same in a fork of the test, where what runs instead of another program: RunChart, as a rule.
    ChildResult fork(const std::vector<std::string> &args, const std::string &input,
                     const std::function<int(int, char **)> &what) const;

    // Writes the settings as out/set/NAME.
    void saveSettings(const std::string &name) const;

    // Puts a report into the data file and the table of contents of a base.
    void saveReport(const std::string &base, const std::string &name, const std::string &text) const;

    // Names in out/gifs that end like this; what the page script was called with, empty when it was not.
    std::vector<std::string> gifs(const std::string &ending = ".gif") const;
    std::vector<std::string> pageArguments() const;

    TempDir dir;
    std::string out;      // with a "/" at its end, like the others
    std::string gifDir;   // out/gifs/
    std::string home;     // home of the page script
    std::string pagePath; // the page script's path
    std::string perl;     // a program that keeps its arguments and writes "page\n"
    Values env;           // the program's whole environment
    Values settings;      // of the form
};
