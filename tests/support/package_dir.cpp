// package_dir.cpp - the package is made anew for every test and goes with it.

#include "package_dir.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

static const char salesReport[] = "Sales by month\n"
                                  "Month\tNorth\tSouth\tWest\n"
                                  "\n"
                                  "Jan\t12\t30\t5\n"
                                  "Feb\t14\t28\t6\n"
                                  "Mar\t19\t27\t8\n"
                                  "Apr\t22\t25\t11\n"
                                  "May\t25\t21\t13\n"
                                  "Jun\t29\t18\t17\n"
                                  "Jul\t31\t16\t21\n"
                                  "Aug\t30\t17\t22\n"
                                  "Sep\t26\t20\t18\n"
                                  "Oct\t21\t24\t14\n"
                                  "Nov\t16\t27\t9\n"
                                  "Dec\t13\t29\t6\n";

PackageDir::PackageDir()
    : out(dir.path() + "out/"), gifDir(out + "gifs/"), home(dir.path() + "home/"),
      pagePath(home + "cgi/qbchartpage.cgi"), perl(dir.path() + "perl")
{
    std::filesystem::create_directories(gifDir);
    WriteFile(perl, "#!/bin/sh\nprintf '%s\\0' \"$@\" >" + dir.path() + "arguments\necho page\n");
    chmod(perl.c_str(), 0755);
    saveReport("data", "Sales", salesReport);
    env = {{"QUILLBROOK_OUT", out}, {"QUILLBROOK_HOME", home}, {"PERL_HOME", perl}, {"PATH", "/usr/bin:/bin"}};
    settings = {{"nameBase", "data"},
                {"setFile", "bars"},
                {"reportTitle", "Sales"},
                {"chartType", "bar"},
                {"chartW", "600"},
                {"chartH", "400"},
                {"chartSeries1", "on"},
                {"chartSeries2", "on"},
                {"chartSeries3", "on"},
                {"colorSeries1", "9"},
                {"colorSeries2", "25"},
                {"colorSeries3", "41"},
                {"titleFont", "Helvetica10"},
                {"titleFontSize", "18"},
                {"titleFontStyle", "bold"},
                {"titleBoxPos", "topCenter"},
                {"labelFont", "Geneva12"},
                {"labelFontSize", "12"},
                {"labelFontStyle", "plain"},
                {"labelBox", "on"},
                {"labelBoxPos", "sideRight"},
                {"dataFont", "Small8"},
                {"dataFontSize", "8"},
                {"dataFontStyle", "plain"},
                {"axisLabelFont", "Helvetica10"},
                {"axisLabelFontSize", "11"},
                {"axisLabelFontStyle", "plain"},
                {"xAxisTicks", "outside"},
                {"yAxisTicks", "outside"},
                {"xAxisScaleLabels", "on"},
                {"yAxisScaleLabels", "on"},
                {"yAxisGridLines", "on"}};
}

ChildResult PackageDir::fork(const std::vector<std::string> &args, const std::string &input,
                             const std::function<int(int, char **)> &what) const
{
    return RunInChild(
        [&]
        {
            FILE *file = std::tmpfile();
            std::fwrite(input.data(), 1, input.size(), file);
            std::rewind(file);
            dup2(fileno(file), STDIN_FILENO);
            std::fclose(file);
            clearenv();
            for (const auto &[name, value] : env)
            {
                setenv(name.c_str(), value.c_str(), 1);
            }
            std::vector<char *> vector = {const_cast<char *>("qbchart")};
            for (const std::string &arg : args)
            {
                vector.push_back(const_cast<char *>(arg.c_str()));
            }
            vector.push_back(nullptr);
            std::exit(what(static_cast<int>(args.size()) + 1, vector.data()));
        });
}

ChildResult PackageDir::start(const std::string &program, const std::vector<std::string> &args,
                              const std::string &input) const
{
    return fork(args, input, [&program](int, char **argv) { return execv(program.c_str(), argv); });
}

ChildResult PackageDir::post(const std::string &program) const
{
    const std::string body = EncodeSettings(settings);
    return fork({}, body,
                [&](int, char **argv)
                {
                    setenv("GATEWAY_INTERFACE", "CGI/1.1", 1);
                    setenv("REQUEST_METHOD", "POST", 1);
                    setenv("CONTENT_LENGTH", std::to_string(body.size()).c_str(), 1);
                    return execv(program.c_str(), argv);
                });
}

void PackageDir::saveSettings(const std::string &name) const
{
    WriteFile(out + "set/" + name, EncodeSettings(settings) + "\n");
}

void PackageDir::saveReport(const std::string &base, const std::string &name, const std::string &text) const
{
    WriteFile(out + base + ".txt", text);
    WriteFile(out + base + ".toc", name + "\t0\n");
}

std::vector<std::string> PackageDir::gifs(const std::string &ending) const
{
    std::vector<std::string> names;
    for (const std::string &name : ListDir(gifDir))
    {
        if (name.size() >= ending.size() && name.compare(name.size() - ending.size(), ending.size(), ending) == 0)
        {
            names.push_back(name);
        }
    }
    return names;
}

std::vector<std::string> PackageDir::pageArguments() const
{
    std::vector<std::string> arguments;
    std::string current;
    for (const char c : ReadFile(dir.path() + "arguments"))
    {
        if (c == '\0')
        {
            arguments.push_back(current);
            current.clear();
        }
        else
        {
            current.push_back(c);
        }
    }
    return arguments;
}
