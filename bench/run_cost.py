#!/usr/bin/env python3
"""What a whole run costs beside what it cannot avoid: starting a shell that removes the old GIFs.

    bench/run_cost.py [RUNS]

Runs the release's qbchart on a bar chart of 3 series and 12 categories, 600 by 400 pixels, with a page script that does
nothing, and in turns with it a static C program that only calls system("rm DIR/*.gif"). Prints user plus system time of
both, children included, and the ratio. The median of all runs counts: these machines are shared.
"""
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent


def compile_static(source, target):
    subprocess.run(["gcc", "-O2", "-static", "-x", "c", "-", "-o", target], input=source, text=True, check=True)


def lay_out(package):
    for name in ("gifs", "set"):
        (package / name).mkdir()
    rows = "".join(f"{i}\t{i * 7 % 13 + 2}\t{i * 5 % 11 + 1}\t{i * 3 % 7 + 4}\n" for i in range(1, 13))
    (package / "r.txt").write_text("A bar chart\nMonth\tNorth\tEast\tSouth\n\n" + rows)
    (package / "r.toc").write_text("r\t0\n")
    settings = (ROOT / "demo/settings/population-bars.set").read_text()
    (package / "set/s").write_text(settings.replace("reportTitle=Population+by+region", "reportTitle=r"))


def cost(arguments, environment):
    """User plus system time of one process and its children, in milliseconds."""
    null = [(os.POSIX_SPAWN_OPEN, fd, os.devnull, os.O_WRONLY, 0) for fd in (1, 2)]
    child = os.posix_spawn(arguments[0], arguments, environment, file_actions=null)
    _, status, usage = os.wait4(child, 0)
    if status != 0 and arguments[0].endswith("qbchart"):
        sys.exit("the run failed")
    return 1000 * (usage.ru_utime + usage.ru_stime)


def main():
    runs = int(sys.argv[1]) if len(sys.argv) > 1 else 300
    with tempfile.TemporaryDirectory() as folder:
        package = pathlib.Path(folder)
        lay_out(package)
        stub, floor = str(package / "stub"), str(package / "floor")
        compile_static("int main(void){return 0;}", stub)
        compile_static(f'#include <stdlib.h>\nint main(void){{return system("rm {folder}/floor-*.gif") == -1;}}', floor)
        environment = {"QUILLBROOK_OUT": folder + "/", "QUILLBROOK_HOME": folder + "/", "PERL_HOME": stub,
                       "PATH": os.environ["PATH"]}
        qbchart = str(ROOT / "build/release/qbchart")
        ours, theirs = [], []
        for _ in range(runs):
            (package / "floor-old.gif").touch()
            theirs.append(cost([floor], environment))
            ours.append(cost([qbchart, "r", "s"], environment))
    a, b = statistics.median(ours), statistics.median(theirs)
    print(f"qbchart {a:.2f} ms, removal alone {b:.2f} ms, ratio {a / b:.2f} (medians of {runs} runs)")


main()
