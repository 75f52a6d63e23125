// main.cpp - the program's entry; everything else is also linked into the tests.

#include "qbchart.h"

int main(int argc, char **argv)
{
    return RunChart(argc, argv);
}
