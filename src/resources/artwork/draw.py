#!/usr/bin/env python3
"""Draws the bitmaps of the plug-in into ../bitmaps. They are committed, so a build never runs this; run it by hand
after a change of the artwork. Needs ImageMagick and the URW base fonts.

Every picture is a BMP of as few bits a pixel as its colours need, with no palette entry unused. What lies outside a picture's outline is palette entry 0, the only use of
that colour: a loader that makes the first pixel's colour transparent changes the outside and nothing else, and the greys
that the system maps to its own (128, 192, 223) do not occur."""
import pathlib
import struct
import subprocess

OUTSIDE = (240, 240, 240)
SYSTEM_GREYS = {(128, 128, 128), (192, 192, 192), (223, 223, 223)}
SCALE = 8  # drawn large, scaled down for smooth edges

NAVY, PAPER, FRAME = "#16324f", "#fbfcfe", "#5b6b7c"
CYAN, MAGENTA, YELLOW, BLACK = "#00a8e6", "#e4148c", "#ffd800", "#202226"
BRIGHT_CYAN, BRIGHT_MAGENTA = "#9fe8fb", "#fba6e4"

CARTRIDGES = {
    239: ["#e02020"], 235: ["#18a038"], 241: ["#2048d8"], 242: ["#ffffff"], 176: [BLACK], 174: [CYAN],
    175: [MAGENTA], 184: [YELLOW], 234: ["#7c8086"], 236: ["#bcc2c8"], 232: ["#ff8a14"],
    301: [BRIGHT_CYAN],                          # ink control page: bright cyan
    302: [BRIGHT_CYAN, BRIGHT_MAGENTA],          # both bright inks under one control
    303: [BRIGHT_MAGENTA],                       # bright magenta
    304: [CYAN, MAGENTA, YELLOW, BLACK],         # all inks together
}


def render(width, height, commands):
    """RGBA bytes of ImageMagick drawing commands given in final pixels."""
    run = ["convert", "-size", f"{width * SCALE}x{height * SCALE}", "xc:none"]
    for options, drawing in commands:
        run += options + ["-draw", f"scale {SCALE},{SCALE} {drawing}"]
    run += ["-filter", "Box", "-resize", f"{width}x{height}!", "-depth", "8", "RGBA:-"]
    return subprocess.run(run, check=True, stdout=subprocess.PIPE).stdout


def over_outside(rgba):
    """One colour a pixel, blended over the outside; None where nothing was drawn."""
    pixels = []
    for r, g, b, a in struct.iter_unpack("4B", rgba):
        color = tuple((c * a + o * (255 - a) + 127) // 255 for c, o in zip((r, g, b), OUTSIDE))
        if a == 0:
            pixels.append(None)
            continue
        while color == OUTSIDE or color in SYSTEM_GREYS:
            color = (color[0] - 1, color[1], color[2])
        pixels.append(color)
    return pixels


def reduced(pixels, limit=255):
    """The pixels with at most `limit` colours: low bits are dropped until they suffice."""
    for bits in range(8):
        # The middle of what the dropped bits leave open; never one of the reserved greys.
        half = (1 << bits) >> 1
        def snap(color):
            snapped = tuple(min(255, (c >> bits << bits) + half) for c in color) if bits else color
            while snapped == OUTSIDE or snapped in SYSTEM_GREYS:
                snapped = (snapped[0] - 1, snapped[1], snapped[2])
            return snapped
        result = [None if p is None else snap(p) for p in pixels]
        if len(set(result) - {None}) <= limit:
            return result
    raise AssertionError("no picture has more than 8 bits a colour")


def write(number, width, height, commands):
    pixels = reduced(over_outside(render(width, height, commands)))
    corners = [pixels[0], pixels[width - 1], pixels[-width], pixels[-1]]
    assert corners == [None] * 4, f"picture {number}: the corners belong to the outside"
    palette = [OUTSIDE] + sorted(set(pixels) - {None})
    index = {color: i for i, color in enumerate(palette)}
    index[None] = 0
    depth = 4 if len(palette) <= 16 else 8
    rows = [row_bytes([index[p] for p in pixels[y * width:(y + 1) * width]], depth) for y in range(height)]
    body = b"".join(reversed(rows))
    colors = b"".join(struct.pack("4B", b, g, r, 0) for r, g, b in palette)
    offset = 14 + 40 + len(colors)
    header = struct.pack("<2sIHHI", b"BM", offset + len(body), 0, 0, offset)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, depth, 0, len(body), 2835, 2835, len(palette), 0)
    target = pathlib.Path(__file__).resolve().parent.parent / "bitmaps" / f"{number}.bmp"
    target.write_bytes(header + info + colors + body)


def row_bytes(indices, depth):
    """One row of the picture, filled up to whole words of 32 bits."""
    if depth == 4:
        indices = indices + [0] * (len(indices) % 2)
        indices = [left << 4 | right for left, right in zip(indices[::2], indices[1::2])]
    return bytes(indices) + bytes(-len(indices) % 4)


def fill(color):
    return ["-fill", color, "-stroke", "none"]


def drop(x, y, size):
    """A drop whose tip is at (x, y) and whose height is `size`."""
    r = size * 0.36
    cy = y + size - r
    return (f"path 'M {x},{y} C {x + r * 0.35},{y + size * 0.28} {x + r},{cy - r * 0.75} {x + r},{cy} "
            f"A {r},{r} 0 1 1 {x - r},{cy} C {x - r},{cy - r * 0.75} {x - r * 0.35},{y + size * 0.28} {x},{y} Z'")


def words(x, baseline, size, text, font="URWGothic-Demi"):
    return ["-font", font, "-pointsize", str(size)], f"text {x},{baseline} '{text}'"


def text(color, x, baseline, size, what, kerning=0):
    options, drawing = words(x, baseline, size, what)
    return fill(color) + options + ["-kerning", str(kerning)], drawing


def product_logo():
    """Tintwerk: three drops of ink and the name on a dark plate."""
    return [
        (fill(NAVY), "roundrectangle 0,0 179,37 5,5"),
        (fill(YELLOW), drop(42, 8, 23)),
        (fill(MAGENTA), drop(35, 6, 25)),
        (fill(CYAN), drop(28, 4, 28)),
        (fill("#ffffffb0"), "ellipse 24,22 1.6,4 0,360"),
        text("#ffffff", 59, 27, 26, "Tintwerk"),
    ]


def maker_logo():
    """Halvaro: the maker's name beside a disc, half of it printed."""
    dots = []
    for row in range(5):
        for column in range(3):
            size = 1.35 - 0.38 * column
            dots.append(f"circle {21.4 + column * 2.7},{6.2 + row * 2.7} {21.4 + column * 2.7 + size},{6.2 + row * 2.7}")
    return [
        (fill(NAVY), "roundrectangle 0,0 115,22 4,4"),
        (fill(PAPER), "roundrectangle 1,1 114,21 3,3"),
        (fill(NAVY), "path 'M 19.5,3.5 A 8,8 0 0 0 19.5,19.5 Z'"),
        (fill(CYAN), " ".join(dots)),
        text(NAVY, 35, 17, 17.5, "Halvaro"),
    ]


def information_picture():
    """A sheet on which four inks become a picture: dots of each ink that grow towards its drop."""
    commands = [
        (fill(FRAME), "roundrectangle 0,0 127,63 4,4"),
        (fill(PAPER), "roundrectangle 1,1 126,62 3,3"),
    ]
    for ink, color in enumerate([CYAN, MAGENTA, YELLOW, BLACK]):
        left = 6 + ink * 30
        dots = []
        for row in range(7):
            size = 0.5 + 0.22 * row
            for column in range(7):
                x, y = left + 2 + column * 3.75, 35 + row * 3.75
                dots.append(f"circle {x},{y} {x + size},{y}")
        commands.append((fill(color), " ".join(dots)))
        commands.append((fill(color), drop(left + 13, 6, 24)))
        commands.append((fill("#ffffff90"), f"ellipse {left + 9.6},22 1.3,3.2 0,360"))
    return commands


def cartridge(colors):
    """A cartridge seen from the side: lid, body in its colour, light from the left."""
    commands = [
        (fill(FRAME), "roundrectangle 1,3 18.875,15.875 1.6,1.6"),
        (fill(FRAME), "rectangle 5,0 14.875,3"),
        (fill("#dfe5ea"), "rectangle 6,1 13.875,2.875"),
    ]
    width = 16 / len(colors)
    for i, color in enumerate(colors):
        commands.append((fill(color), f"rectangle {2 + i * width},4 {1.875 + (i + 1) * width},14.875"))
    commands.append((fill("#ffffff70"), "rectangle 3,5 4.875,12.875"))
    commands.append((fill("#00000028"), "rectangle 2,13 17.875,14.875"))
    return commands


write(190, 180, 38, product_logo())
write(148, 116, 23, maker_logo())
write(125, 128, 64, information_picture())
for number, colors in CARTRIDGES.items():
    write(number, 20, 16, cartridge(colors))
