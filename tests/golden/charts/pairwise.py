#!/usr/bin/env python3
"""pairwise.py - writes the settings of the golden charts, one NAME.set a chart, into this folder.

Any two values of two different factors meet in at least one chart; as the eight title and eight legend positions alone
need 64 charts, the other factors come nearly for free. All other settings are rotated separately over the charts of
each type, so that each of their values meets each type. tests/golden/charts.cpp counts both afresh.

The same table comes out every time. After a change here: run this, then the test with QB_REGENERATE=1, then look.
"""
import itertools
import pathlib
import random

POSITIONS = ["topLeft", "topCenter", "topRight", "sideLeft", "sideRight", "botLeft", "botCenter", "botRight"]
TICKS = ["outside", "inside", "middle"]
SWITCH = ["off", "on"]
ABSENT = None
SWITCH_OR_NONE = ["off", "on", ABSENT]

FACTORS = {
    "titleBoxPos": POSITIONS,
    "labelBoxPos": POSITIONS,
    "chartType": ["bar", "pie", "line", "scatter", "area", "stacked_bar", "stacked_area"],
    "xAxisTicks": TICKS,
    "yAxisTicks": TICKS,
    "chartOrientation": ["vertical", "horizontal"],
    "xAxisGridLines": SWITCH,
    "yAxisGridLines": SWITCH,
    "reverseRefDir": SWITCH,
    "negative": [False, True],
    "several": [False, True],
    "dates": [False, True],
}

# Reports of charts.txt by what they hold: (dates, negative) -> names. REFERENCE is the column that names the categories.
REPORTS = {
    (False, False): ["Coffee", "Rainfall", "Unlabelled"],
    (False, True): ["Balance", "Frost"],
    (True, False): ["Visitors"],
    (True, True): ["Tide"],
}
REFERENCE = {"Rainfall": 1}
N_COLUMNS = 4

# Numbers have too many values to try all: the smallest, usual ones, a missing one, and one that is out of range.
SIZES = ["8", "9", "10", "11", "12", "14", ABSENT]
FONTS = ["Helvetica10", "Geneva12", "Small8", ABSENT]
STYLES = ["plain", "bold", "italic", "underlined"]
OTHERS = {
    "hasSeriesLabels": SWITCH_OR_NONE,
    "chartW": ["480", "400", "560", "440", ABSENT],
    "chartH": ["300", "360", "280", "400", ABSENT],
    "chartShadows": SWITCH_OR_NONE,
    "chart3D": SWITCH_OR_NONE,
    "chartScaleMult": SWITCH_OR_NONE,
    "chartExplode": SWITCH_OR_NONE,
    "chartScale": ["linear", "log", "off", ABSENT],
    "titleFont": FONTS,
    "titleFontSize": ["12", "14", "18", "10", "24", "6", ABSENT],
    "titleFontStyle": STYLES,
    "titleBox": SWITCH_OR_NONE,
    "titleBoxShadow": SWITCH_OR_NONE,
    "labelFont": FONTS,
    "labelFontSize": SIZES,
    "labelFontStyle": STYLES,
    "labelBox": SWITCH_OR_NONE,
    "labelBoxShadow": SWITCH_OR_NONE,
    "dataFont": FONTS,
    "dataFontSize": SIZES,
    "dataFontStyle": STYLES,
    "dataPos": ["inside", "outside", "off", ABSENT],
    "axisLabelFont": FONTS,
    "axisLabelFontSize": SIZES,
    "axisLabelFontStyle": STYLES,
    "xAxisLabels": SWITCH_OR_NONE,
    "yAxisLabels": SWITCH_OR_NONE,
    "xAxisScaleLabels": ["on", "on", "off", "on", ABSENT],
    "yAxisScaleLabels": ["on", "on", "off", "on", ABSENT],
    "dataSymbol": ["1", "2", "3", "4", "0", "7", ABSENT],
    "lineSize": ["1", "2", "3", "6", "off", ABSENT],
    "explode": ["none", "all", "max", "min", "both"],
    "leaveOut": [False, True],  # a factor's "off" and "vertical" are also what a missing key means
    "range": [("off", "off"), ("1", "off"), ("off", "4"), ("2", "5"), (ABSENT, ABSENT), ("5", "3")],
    "single": [0, 1, 2],  # which one, when there is one series
    "colours": [("10", "17", "64"), ("163", "64", "159"), ("248", "249", "250"), (ABSENT, "194", "134"),
                ("9", "57", "89"), ("0", "227", "255")],
}
EXPLODE = {  # all, largest, smallest
    "none": ("off", "off", "off"),
    "all": ("on", "off", "off"),
    "max": ("off", "on", "off"),
    "min": ("off", "off", "on"),
    "both": (ABSENT, "on", "on"),
}

# What stands in the settings under its own name; the rest of the factors and rotations becomes several keys.
KEYS = (set(FACTORS) | set(OTHERS)) - {"negative", "several", "dates", "explode", "leaveOut", "range", "single", "colours"}


def pair(a, b):
    """Two (factor, value) as one thing, whatever their order."""
    return frozenset((a, b))


def all_pairs():
    names = itertools.combinations(FACTORS, 2)
    return {pair((f, v), (g, w)) for f, g in names for v in FACTORS[f] for w in FACTORS[g]}


def candidate(missing, rng):
    """One chart around a missing pair; each further factor takes the value that finds most missing pairs."""
    first = rng.choice(sorted(missing, key=lambda p: sorted(map(str, p))))
    chart = dict(first)
    for factor in rng.sample(list(FACTORS), len(FACTORS)):
        if factor not in chart:
            found = {v: sum(pair((factor, v), other) in missing for other in chart.items()) for v in FACTORS[factor]}
            best = max(found.values())
            chart[factor] = rng.choice([v for v in FACTORS[factor] if found[v] == best])
    return chart


def pairwise():
    """Charts in which every pair occurs: the best of some candidates each time, until nothing is missing."""
    rng = random.Random(8)
    missing, charts = all_pairs(), []
    while missing:
        tries = [candidate(missing, rng) for _ in range(30)]
        gained = [missing & {pair(a, b) for a, b in itertools.combinations(c.items(), 2)} for c in tries]
        best = max(range(len(tries)), key=lambda i: len(gained[i]))
        missing -= gained[best]
        charts.append(tries[best])
    return charts


def rotation(key, values, chart_type):
    """Every value once in an order of its own, again and again."""
    rng = random.Random(f"{key} of {chart_type}")
    while True:
        yield from rng.sample(values, len(values))


def settings(chart, others, report):
    """The settings of one chart by key; missing ones are None."""
    result = {"nameBase": "charts", "reportTitle": report}
    for key, value in chart.items():
        if key in KEYS:
            result[key] = ABSENT if others["leaveOut"] and value in ("off", "vertical") else value
    result.update((key, value) for key, value in others.items() if key in KEYS)
    result["pieExplodeAll"], result["pieExplodeMax"], result["pieExplodeMin"] = EXPLODE[others["explode"]]
    result["startCell"], result["endCell"] = others["range"]
    reference = REFERENCE.get(report, 0)
    result["refSeries"] = str(reference) if reference or others["chart3D"] == "on" else ABSENT
    columns = [n for n in range(N_COLUMNS) if n != reference]
    for n, colour in zip(columns, others["colours"]):
        result[f"colorSeries{n}"] = colour
        result[f"chartSeries{n}"] = "on" if chart["several"] or n == columns[others["single"]] else "off"
    if chart["several"] and others["chartShadows"] == "on":
        result[f"chartSeries{columns[1]}"] = ABSENT
    return result


def main():
    folder = pathlib.Path(__file__).parent
    for old in folder.glob("*.set"):
        old.unlink()
    rotations, names = {}, set()
    for chart in pairwise():
        kind, data = chart["chartType"], (chart["dates"], chart["negative"])
        lists = dict(OTHERS, report=REPORTS[data])
        others = {key: next(rotations.setdefault((key, kind, data if key == "report" else ()),
                                                 rotation(key, values, kind))) for key, values in lists.items()}
        name = f"{kind}-{chart['titleBoxPos']}-{chart['labelBoxPos']}"
        while name in names:
            name += "-again"
        names.add(name)
        chosen = dict(settings(chart, others, others["report"]), setFile=name + ".set")
        text = "&".join(f"{key}={value}" for key, value in sorted(chosen.items()) if value is not ABSENT)
        (folder / (name + ".set")).write_text(text + "\n")
    print(f"{len(names)} charts")


if __name__ == "__main__":
    main()
