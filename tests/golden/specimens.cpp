// specimens.cpp - the specimen sheets of docs/fonts are what the fonts look like.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

static void ExpectSheet(const std::string &font, const std::string &kept)
{
    const std::string drawn = BUILD_DIR "/" + font + ".gif";
    ASSERT_EQ(std::system(("'" SPECIMEN_PATH "' " + font + " '" + drawn + "'").c_str()), 0);
    const std::string compare = "compare -metric AE '" SOURCE_DIR "/docs/fonts/" + kept + "' '" + drawn + "' null:";
    EXPECT_EQ(std::system(compare.c_str()), 0)
        << kept << " is out of date: compare it with " << drawn << ", then run docs/fonts/regenerate.sh";
}

TEST(Specimens, ShowTheFontsAsTheyAre)
{
    ExpectSheet("Small8", "small8.png");
    ExpectSheet("Geneva12", "geneva12.png");
    ExpectSheet("Helvetica10", "helvetica10.png");
}
