// error_run.h - code that ends in the error page, and what the page must then say.
#pragma once

#include "child_run.h"

#include <functional>
#include <string>

// Runs work in a child whose environment has STAND_ALONE, so that an error shows as plain text.
ChildResult RunStandAlone(const std::function<void()> &work);

// The whole plain error text with a message in it.
std::string PlainErrorText(const std::string &message);

// The whole HTML error page with a message in it.
std::string HtmlErrorPage(const std::string &message);
