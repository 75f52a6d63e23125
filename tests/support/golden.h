// golden.h - compares a GIF with the picture that was looked at and kept.
#pragma once

#include <string>

struct Image;

// Holds the GIF file at path against tests/golden/NAME.gif, byte by byte; name may have a folder in it. When they
// differ the test fails with the number of pixels that differ and the first of them, and the folder golden/ of the
// build keeps NAME.got.gif and NAME.diff.gif: what is kept, what came, and where they differ (black), side by side.
// With QB_REGENERATE set in the environment the file becomes the kept picture instead: look at it before committing.
void ExpectGolden(const std::string &name, const std::string &path);

// The same for an image, written by ImgToGif without interlacing.
void ExpectGoldenImage(const std::string &name, Image *image);
