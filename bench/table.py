"""Sums up what the benchmarks said, as one Markdown table; called by bench/table.

Usage: table.py FOLDER DLL_BYTES"""
import json
import pathlib
import re
import sys

folder = pathlib.Path(sys.argv[1])
linux = {run["name"]: run for run in json.loads((folder / "linux.json").read_text())["benchmarks"]}


def time_of(name):
    """Nanoseconds of processor time that one iteration takes on Linux."""
    run = linux[name]
    return run["cpu_time"] * {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[run["time_unit"]]


def column(file):
    """Nanoseconds by name, as the programs without Google Benchmark print them."""
    rows = re.findall(r"^(\S+) +([\d.]+) (us|ms)", (folder / file).read_text(), re.M)
    return {name: float(value) * {"us": 1e3, "ms": 1e6}[unit] for name, value, unit in rows}


def shown(ns):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if ns >= size:
            return f"{ns / size:.3g} {unit}"
    return f"{ns:.3g} ns"


def bare(name):
    """What the same calls, made straight to the core driver, and the same trace lines cost."""
    return linux[name]["core_ns/call"] * linux[name]["calls"] + linux[name]["lines"] * time_of("TraceOneLine")


def calls(name):
    return f"{linux[name]['calls']:.0f} core calls and {linux[name]['lines']:.0f} trace lines alone"


def rate(name):
    return f"{linux[name]['bytes_per_second'] / 1e6:,.0f} MB/s"


def row(what, figure, floor="", of=""):
    print(f"| {what} | {figure} | {floor} | {of} |")


def timed(what, ns, floor=None, of=""):
    row(what, shown(ns), "" if floor is None else shown(floor), of)


row("what", "figure", "floor", "the floor is")
row("---", "---:", "---:", "---")

for what, name in (("first read of the sample printer", "InitialReadOfTheSamplePrinter"),
                   ("`getPPDOptionSV`, no allocation", "ReadOneFeature"), ("`SetOption`, no allocation", "WriteOneFeature")):
    timed(what, time_of(name), bare(name), calls(name))
pages = ["main", "colours", "correction", "consumption", "ink", "screen"]
for position, page in enumerate(pages):
    timed(f"apply of the {page} page", time_of(f"ApplyPage/{position}"), bare(f"ApplyPage/{position}"),
          calls(f"ApplyPage/{position}"))
for what, name in ("sample printer", "OpenSamplePrinter"), ("80 options everywhere", "OpenLargePrinter"):
    timed(f"INIT and DESTROY, {what}", time_of(name), linux[name]["core_us"] * 1e3, "the core driver's part")
    row(f"memory of that sheet at its peak", f"{linux[name]['peak_bytes'] / 1024:.3g} KiB", "32.3 KiB",
        "the option buffer alone")
timed('`Trace` with one "%S"', time_of("TraceOneLine"), time_of("FormatOneLine"), "the formatted write alone")
for which in "first", "last":
    timed(f"`FindDefaultString`, {which} row", time_of(f"FindByKey/{which}"), time_of("TraceOneLine"), "its trace line")
for position, page in enumerate(pages):
    timed(f"opening the {page} page, Linux", time_of(f"OpenPage/{position}"), time_of(f"OpenBareDialog/{position}"),
          "the window and its controls alone")
here, wine = column("pages-linux.txt"), column("pages-wine.txt")
for name in here:
    row(f"WM_INITDIALOG of the {name.split('/')[1]} page to the end of embedding", shown(wine[name]), shown(here[name]),
        "left under Wine, here on Linux in memory")
timed("drawing twelve ink channels", time_of("DrawTwelveChannels"))
for lines in 40, 10000, 1000000:
    row(f"cutting and reading {lines:,} counter lines", rate(f"ParseLines/{lines}"), rate(f"FindLineEnds/{lines}"),
        "finding the line ends")
for lines in 40, 10000:
    row(f"a counter file of {lines:,} lines with its trace lines", rate(f"ReadCounterFile/{lines}"),
        rate(f"ParseLines/{lines}"), "without the trace, which is one line a counter")
row("an endless line of 100 MB", rate("ReadEndlessLine/100000000"), rate("ReadBareFile/100000000"), "reading the file")
for what, name in ("the sample", "x12"), ("5,000 lines", "5000_lines"), ("50,000 lines", "50000_lines"):
    timed(f"reading a PPD: {what}", time_of(f"ReadPpd/{name}"),
          time_of(f"ppdOpenFile/{name}") if f"ppdOpenFile/{name}" in linux else None, "libcups on the same file")
first = column("first-page.txt")
for target in "wine", "linux":
    timed(f"start to first page, {target}", first[f"StartToFirstPage/{target}"], first[f"Start/{target}"],
          "the program started for nothing")

load = column("load-wine.txt")
timed("loading and unloading the DLL, Wine", load["LoadAndUnload/PSTWUI"], load["LoadAndUnload/empty"], "an empty DLL")
sections = {name: int(size, 16) for name, size in
            re.findall(r"^ +\d+ (\.\w+) +([0-9a-f]{8})", (folder / "sections.txt").read_text(), re.M)}
row("size of the DLL", f"{int(sys.argv[2]):,} bytes", f"{sections['.rsrc']:,} bytes", "its dialogs and pictures")
row("code in it", f"{sections['.text']:,} bytes")
row("relocations", len(re.findall(r"reloc +\d+ offset .*DIR64", (folder / "headers.txt").read_text())))
