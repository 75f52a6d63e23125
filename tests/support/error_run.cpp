// error_run.cpp - the two error documents, written out as they must be.

#include "error_run.h"

#include <cstdlib>

static const char notice[] = "The chart could not be made; the message above says why.";

ChildResult RunStandAlone(const std::function<void()> &work)
{
    return RunInChild(
        [&work]
        {
            setenv("STAND_ALONE", "1", 1);
            work();
        });
}

std::string PlainErrorText(const std::string &message)
{
    return "Quillbrook Charting Error\n\n" + message + "\nQuillbrook 3.0\n" + notice + "\n";
}

std::string HtmlErrorPage(const std::string &message)
{
    return "Content-type: text/html\n\n"
           "<HTML><HEAD><TITLE>Quillbrook Charting Error</TITLE></HEAD>\n"
           "<body BGCOLOR = #FFFFFF TEXT = #OOOOOO >\n"
           "<H3>Charting Error</H3>\n"
           "<pre>\n\n" +
           message +
           "\n\n</pre>"
           "<H5>Quillbrook 3.0<br>" +
           notice +
           "</H5>"
           "</BODY></HTML>";
}
