#!/usr/bin/env python3
"""gallery.py QBCHART DIRECTORY - draws the gallery and writes its page.

  QBCHART     the chart program
  DIRECTORY   gets gallery.md, population-bars.png (the README's picture), gallery/NAME.set and gallery/NAME.png

docs/gallery/regenerate.sh does it for docs/, a test does it for a folder of its own and compares. Needs ImageMagick.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import textwrap

ROOT = pathlib.Path(__file__).resolve().parents[2]

# What all charts have in common; a chart's own settings replace some of it and add the rest.
BASE = {
    "chartW": 460, "chartH": 300,
    "titleFont": "Geneva12", "titleFontSize": 12, "titleFontStyle": "bold", "titleBoxPos": "topCenter",
    "labelFont": "Helvetica10", "labelFontSize": 11, "labelFontStyle": "plain", "labelBox": "on",
    "labelBoxPos": "sideRight",
    "dataFont": "Helvetica10", "dataFontSize": 11, "dataFontStyle": "plain",
    "axisLabelFont": "Helvetica10", "axisLabelFontSize": 11, "axisLabelFontStyle": "plain",
    "xAxisTicks": "outside", "xAxisLabels": "on", "xAxisScaleLabels": "on",
    "yAxisTicks": "outside", "yAxisLabels": "on", "yAxisScaleLabels": "on", "yAxisGridLines": "on",
}

# Where the reports stand: name -> base name of the files in demo/reports/.
FILES = {
    "Population by region": "world",
    "Diameters": "planets",
    "Monthly temperatures": "climate",
    "Carbon dioxide": "climate",
    "October 1987": "stocks",
}


def series(**colours):
    """Settings that draw the columns c1, c2, ... in these colours."""
    result = {}
    for column, colour in colours.items():
        result[f"chartSeries{column[1:]}"] = "on"
        result[f"colorSeries{column[1:]}"] = colour
    return result


POPULATION = {"reportTitle": "Population by region", **series(c1=10, c2=17, c3=164)}
POPULATION_2020 = {"reportTitle": "Population by region", **series(c3=164)}
PLANETS = {"reportTitle": "Diameters", **series(c1=164)}
CLIMATE = {"reportTitle": "Monthly temperatures", **series(c1=164, c2=17, c3=159)}
HELSINKI = {"reportTitle": "Monthly temperatures", **series(c1=164)}
CARBON = {"reportTitle": "Carbon dioxide", **series(c1=194)}
STOCKS = {"reportTitle": "October 1987", **series(c1=134)}
HORIZONTAL = {"chartOrientation": "horizontal", "xAxisGridLines": "on", "yAxisGridLines": "off"}
PIE = {"chartType": "pie", "dataPos": "inside", "endCell": 4}

# Two small charts on which options are shown.
SMALL = {"chartW": 300, "chartH": 200, "xAxisLabels": "off", "yAxisLabels": "off"}
SMALL_BARS = {"chartType": "bar", **SMALL, "reportTitle": "Population by region", **series(c1=10, c3=164), "endCell": 2}
SMALL_LINES = {"chartType": "line", **SMALL, **HELSINKI, "endCell": 6, "dataSymbol": 2}

POSITIONS = ["topLeft", "topCenter", "topRight", "sideLeft", "sideRight", "botLeft", "botCenter", "botRight"]

# The page: (heading, words, settings of the whole section, charts as name -> further settings, pictures in a row).
SECTIONS = [
    ("Bars", "The series of a category stand side by side. A single series needs no legend: its name becomes the "
     "title of the value axis.", {"chartType": "bar"}, {
         "bar": POPULATION,
         "bar-one-series": POPULATION_2020,
     }, 1),
    ("Horizontal bars", "The categories run up the left side, or down it when reversed.",
     {"chartType": "bar", **HORIZONTAL, **PLANETS}, {
         "bar-horizontal": {},
         "bar-horizontal-reversed": {"reverseRefDir": "on"},
     }, 1),
    ("Values below zero", "The scale always contains zero; bars below it hang, or reach to the left. The grid line "
     "of zero is the denser one.", {"chartType": "bar"}, {
         "negative": {"reportTitle": "Monthly temperatures", **series(c1=164, c3=17), "labelBoxPos": "botCenter"},
         "negative-horizontal": {**HELSINKI, **HORIZONTAL, "reverseRefDir": "on", "chartH": 340},
     }, 1),
    ("Lines", "", {"chartType": "line", "dataSymbol": 2, "lineSize": 2}, {
        "line": {**CLIMATE, "labelBoxPos": "botCenter"},
        "line-horizontal": {**HELSINKI, **HORIZONTAL},
    }, 1),
    ("Widths of lines", "", SMALL_LINES, {f"line-size-{n}": {"lineSize": n} for n in (1, 2, 4, 8)}, 2),
    ("Markers", "Of line, scatter and area charts. The tips of the triangles point at the value; a scatter chart draws "
     "the standing triangle instead of the cross.", SMALL_LINES,
     {**{f"marker-{n}": {"dataSymbol": n} for n in range(5)},
      "marker-4-scatter": {"chartType": "scatter", "dataSymbol": 4}}, 2),
    ("Scatter", "", {"chartType": "scatter"}, {
        "scatter": {**CLIMATE, "dataSymbol": 2},
        "scatter-horizontal": {**PLANETS, **HORIZONTAL, "dataSymbol": 3},
    }, 1),
    ("Areas", "The series with the largest value is painted first, so that the others stay visible.",
     {"chartType": "area"}, {
         "area": {**POPULATION, "dataSymbol": 2},
         "area-one-series": {**CARBON, "dataSymbol": 3},
         "area-horizontal": {**POPULATION, **HORIZONTAL, "dataSymbol": 2},
     }, 1),
    ("Pies", "One pie for each series; the legend lists the categories, whose colours are fixed. `dataPos` switches "
     "the percentages on. (`endCell` leaves out Oceania, which has 0.6%.)", {**PIE, **POPULATION_2020, "chartH": 340}, {
         "pie": {},
         "pie-without-percentages": {"dataPos": "off"},
     }, 1),
    ("Several pies", "They stand one under the other, or side by side when horizontal. With `chartScaleMult` their "
     "size follows the series' totals.", {**PIE, **POPULATION}, {
         "pies-vertical": {"chartW": 360, "chartH": 560},
         "pies-horizontal": {"chartOrientation": "horizontal", "chartW": 600, "labelBoxPos": "botCenter"},
         "pies-scaled": {"chartOrientation": "horizontal", "chartW": 600, "labelBoxPos": "botCenter",
                         "chartScaleMult": "on", "dataPos": "off"},
     }, 1),
    ("Slices that stand out", "All of them, the largest, the smallest, or these two.", {**PIE, **POPULATION_2020}, {
        "pie-explode-all": {"pieExplodeAll": "on"},
        "pie-explode-max": {"pieExplodeMax": "on"},
        "pie-explode-min": {"pieExplodeMin": "on"},
        "pie-explode-both": {"pieExplodeMax": "on", "pieExplodeMin": "on"},
    }, 2),
    ("Stacked charts", "They get their title, legend and axes only.", POPULATION, {
        "stacked-bar": {"chartType": "stacked_bar"},
        "stacked-area": {"chartType": "stacked_area"},
    }, 2),
    ("Dates", "A reference series of dates such as `Wed Oct 14 1987` is labelled by day; month and year are written "
     "where they change.", STOCKS, {
         "dates": {"chartType": "scatter", "dataSymbol": 1},
         "dates-horizontal": {"chartType": "bar", **HORIZONTAL},
     }, 1),
    ("Title positions", "", {**SMALL_BARS, "titleBox": "on"}, {f"title-{p}": {"titleBoxPos": p} for p in POSITIONS}, 2),
    ("Legend positions", "A legend in the middle of top or bottom is a row, everywhere else a column beside the "
     "plot.", SMALL_BARS, {f"legend-{p}": {"labelBoxPos": p} for p in POSITIONS}, 2),
    ("Frames and shadows", "", SMALL_BARS, {
        "boxes-plain": {"titleBox": "off", "labelBox": "off"},
        "boxes-framed": {"titleBox": "on", "labelBox": "on"},
        "boxes-shadowed": {"titleBoxShadow": "on", "labelBoxShadow": "on"},
        "boxes-one-each": {"titleBoxShadow": "on", "labelBox": "off"},
    }, 2),
    ("Ticks", "", SMALL_BARS, {
        **{f"ticks-{t}": {"xAxisTicks": t, "yAxisTicks": t} for t in ("outside", "middle", "inside")},
        "ticks-mixed": {"xAxisTicks": "outside", "yAxisTicks": "inside"},
    }, 2),
    ("Grid and axis labels", "Dotted lines cross the plot from the value axis; numbers, categories and axis titles "
     "can each be left out.", SMALL_BARS, {
         "grid-on": {"yAxisGridLines": "on"},
         "grid-off": {"yAxisGridLines": "off"},
         "scale-labels-off": {"xAxisScaleLabels": "off", "yAxisScaleLabels": "off"},
         "axis-titles": {"xAxisLabels": "on", "yAxisLabels": "on", "chartSeries1": "off"},
     }, 2),
    ("A range of categories", "Counted from 0.", SMALL_LINES, {
        "range-all": {"startCell": "off", "endCell": "off"},
        "range": {"startCell": 3, "endCell": 8},
    }, 2),
    ("Fonts and styles", "", SMALL_BARS, {
        "font-geneva12": {"titleFont": "Geneva12", "labelFont": "Geneva12", "labelFontSize": 12},
        "font-helvetica10": {"titleFont": "Helvetica10", "titleFontSize": 11, "labelFont": "Helvetica10"},
        "font-small8": {"titleFont": "Small8", "titleFontSize": 8, "labelFont": "Small8", "labelFontSize": 8},
        "font-plain": {"titleFontStyle": "plain"},
        "font-italic": {"titleFontStyle": "italic"},
        "font-underlined": {"titleFontStyle": "underlined"},
    }, 2),
    ("Sizes", "Fonts have any size from 6 to 127 pixels and are clearest at their own one (Small8 at 8, Geneva12 at "
     "12, Helvetica10 at 11) and its multiples. A chart too small for what is in it is enlarged, never refused.",
     {"chartType": "bar", **POPULATION_2020}, {
         "size-large": {"titleFontSize": 24, "labelFontSize": 22, "axisLabelFontSize": 22},
         "size-enlarged": {"chartW": 1, "chartH": 160},
     }, 1),
]


def settings(own):
    """All settings of a chart, as they stand in its file."""
    values = {**BASE, **own}
    return {"nameBase": FILES[values["reportTitle"]], "refSeries": 0, **values}


def encoded(values):
    return "&".join(f"{key}={str(value).replace(' ', '+')}" for key, value in values.items())


def draw(qbchart, package, base, set_file):
    """Runs the program in a package directory; returns the GIF, which the next run deletes."""
    shutil.copy(set_file, package / "set" / set_file.name)
    environment = {"QUILLBROOK_OUT": f"{package}/", "QUILLBROOK_HOME": f"{package}/", "PERL_HOME": "/bin/true",
                   "STAND_ALONE": "1", "PATH": os.environ["PATH"]}
    run = subprocess.run([qbchart, base, set_file.name], env=environment, capture_output=True, text=True)
    if run.returncode != 0:
        sys.exit(f"{set_file.name}: {run.stdout}{run.stderr}")
    return package / "gifs" / (package / "gifs/0.ref").read_text()


def to_png(gif, png):
    """The picture as it looks on a white page."""
    subprocess.run(["convert", gif, "-background", "white", "-flatten", "-strip", "-define", "png:exclude-chunks=all",
                    f"PNG8:{png}"], check=True)


def spelled(values):
    """Settings as short pieces of code, so that a browser can break the line between them."""
    return " ".join(f"`{encoded({key: value})}`" for key, value in values.items())


def caption(name, own):
    return f"[{name}.set](gallery/{name}.set) {spelled(own)}".rstrip()


def section(heading, words, shared, charts, columns):
    lines = [f"## {heading}", ""]
    if words:
        lines += [*textwrap.wrap(words, 120), ""]
    lines += ["All here: " + spelled(shared), ""]
    cells = [(f"![{name}](gallery/{name}.png)", caption(name, own)) for name, own in charts.items()]
    if columns == 1:
        return lines + [line for image, text in cells for line in (image, "", text, "")]
    for start in range(0, len(cells), columns):
        row = cells[start:start + columns]
        lines.append("| " + " | ".join(image for image, _ in row) + " |")
        if start == 0:
            lines.append("|" + "---|" * columns)
        lines.append("| " + " | ".join(text for _, text in row) + " |")
    return lines + [""]


def page():
    words = ("Every picture was drawn by the program from the settings file named under it and a report of "
             "`demo/reports/`. Here stands only what a file has beside the settings that all of them share. "
             "`docs/gallery/regenerate.sh` draws everything anew.")
    lines = ["# Gallery", "", *textwrap.wrap(words, 120), "", "All pictures: " + spelled(BASE), ""]
    for one in SECTIONS:
        lines += section(*one)
    return "\n".join(lines).rstrip("\n") + "\n"


def main():
    qbchart, directory = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2]).resolve()
    pictures = directory / "gallery"
    pictures.mkdir(parents=True, exist_ok=True)
    for old in [*pictures.glob("*.png"), *pictures.glob("*.set")]:
        old.unlink()
    with tempfile.TemporaryDirectory() as temporary:
        package = pathlib.Path(temporary)
        for name in ("gifs", "set"):
            (package / name).mkdir()
        for report in (ROOT / "demo/reports").glob("*.t*"):
            shutil.copy(report, package)
        readme = ROOT / "demo/settings/population-bars.set"
        to_png(draw(qbchart, package, "world", readme), directory / "population-bars.png")
        for _, _, shared, charts, _ in SECTIONS:
            for name, own in charts.items():
                values, set_file = settings({**shared, **own}), pictures / f"{name}.set"
                set_file.write_text(encoded(values) + "\n")
                to_png(draw(qbchart, package, values["nameBase"], set_file), pictures / f"{name}.png")
    (directory / "gallery.md").write_text(page())


if __name__ == "__main__":
    main()
