#!/usr/bin/env python3
"""Draws the demo picture: a lower third with soft edges over saturated bars and ramps.

    assets/make_demo_picture.py [OUTPUT]      default: demo-lower-third.png beside this script

The picture is made to show what a still export must get right: saturated colours meeting at sharp
edges (chroma is filtered there), ramps of every channel and of alpha (banding would show), soft
edges (alpha, premultiplication) and fine text. Needs Pillow and the DejaVu fonts; the same
versions give the same file.
"""

import pathlib
import sys

from PIL import Image, ImageChops, ImageDraw, ImageFilter, ImageFont

SIZE = WIDTH, HEIGHT = 1920, 1080
FONTS = pathlib.Path("/usr/share/fonts/truetype/dejavu")

MONITOR = (64, 48, 1856, 860)  # the bars and ramps, as left, top, right, bottom
BAND = (0, 742, 1740, 962)  # the lower third

BARS = [
    (255, 255, 255),
    (255, 255, 0),
    (0, 255, 255),
    (0, 255, 0),
    (255, 0, 255),
    (255, 0, 0),
    (0, 0, 255),
    (16, 16, 16),
]
RAMPS = [(255, 255, 255), (255, 0, 0), (0, 255, 0), (0, 0, 255)]

BAND_TOP, BAND_BOTTOM = (26, 44, 92), (9, 15, 36)
ACCENT, ACCENT_DEEP = (255, 176, 32), (238, 66, 92)


def ramp(size, start, end, vertical=False):
    """A linear ramp between two colours, exact at both ends."""
    steps = size[1] if vertical else size[0]
    line = Image.new("RGB", (1, steps) if vertical else (steps, 1))
    line.putdata(
        [
            tuple(round(a + (b - a) * i / (steps - 1)) for a, b in zip(start, end))
            for i in range(steps)
        ]
    )
    return line.resize(size, Image.NEAREST)


def soft_box(box, feather, radius=0):
    """A mask of a rounded box whose edges fade over `feather` pixels."""
    mask = Image.new("L", SIZE, 0)
    ImageDraw.Draw(mask).rounded_rectangle(box, radius, fill=255)
    return mask.filter(ImageFilter.GaussianBlur(feather)) if feather else mask


def put(picture, colours, mask, offset=(0, 0)):
    """Lays `colours` over the picture through `mask`; alpha adds up as light does."""
    layer = Image.new("RGBA", SIZE, (0, 0, 0, 0))
    layer.paste(colours, offset)
    layer.putalpha(mask)
    picture.alpha_composite(layer)


def monitor_contents():
    """Bars above ramps, edge to edge."""
    left, top, right, bottom = MONITOR
    width, height = right - left, bottom - top
    contents = Image.new("RGB", (width, height))
    draw = ImageDraw.Draw(contents)
    bars_height = height * 5 // 9
    for i, colour in enumerate(BARS):
        edges = (i * width // len(BARS), 0, (i + 1) * width // len(BARS) - 1, bars_height - 1)
        draw.rectangle(edges, fill=colour)
    row = bars_height
    for i, colour in enumerate(RAMPS):
        next_row = bars_height + (i + 1) * (height - bars_height) // len(RAMPS)
        contents.paste(ramp((width, next_row - row), (0, 0, 0), colour), (0, row))
        row = next_row
    return contents


def draw_monitor(picture):
    left, top, right, bottom = MONITOR
    feather = 10
    inside = (left + 2 * feather, top + 2 * feather, right - 2 * feather, bottom - 2 * feather)
    put(picture, monitor_contents(), soft_box(inside, feather, 30), (left, top))


def draw_band(picture):
    """The lower third: a dark band that fades away to the right, with a bright edge."""
    left, top, right, bottom = BAND
    fade_from, fade_to = 1180, right + 90
    fade = Image.new("L", SIZE, 255)
    slope = ramp((fade_to - fade_from, HEIGHT), (255,) * 3, (0,) * 3)
    fade.paste(slope.convert("L"), (fade_from, 0))
    fade.paste(0, (fade_to, 0, WIDTH, HEIGHT))

    def lay(colours, box, feather, strength):
        mask = ImageChops.multiply(soft_box(box, feather), fade)
        put(picture, colours, mask.point(lambda a: a * strength // 255))

    start = left - 80  # beyond the frame: the left edge is not soft
    lay(Image.new("RGB", SIZE, (0, 0, 0)), (start, top + 6, right - 60, bottom + 30), 26, 140)

    body = Image.new("RGB", SIZE, BAND_TOP)
    height = bottom - top + 60
    body.paste(ramp((WIDTH, height), BAND_TOP, BAND_BOTTOM, vertical=True), (0, top - 30))
    lay(body, (start, top, right, bottom), 7, 240)
    lay(ramp(SIZE, ACCENT_DEEP, ACCENT), (start, top - 6, right, top + 4), 2, 255)


def draw_mark(picture):
    """The product's mark: two overlapping decks, mixed where they meet."""
    left, top = 120, BAND[1] + 50
    back = soft_box((left, top, left + 84, top + 84), 0, 18)
    front = soft_box((left + 36, top + 36, left + 120, top + 120), 0, 18)
    smooth = ImageFilter.GaussianBlur(0.8)
    put(picture, Image.new("RGB", SIZE, ACCENT), back.filter(smooth))
    put(picture, Image.new("RGB", SIZE, ACCENT_DEEP), front.filter(smooth))
    both = ImageChops.darker(back, front).filter(smooth)
    put(picture, Image.new("RGB", SIZE, (255, 255, 255)), both)


def text_mask(position, text, name, size):
    mask = Image.new("L", SIZE, 0)
    face = ImageFont.truetype(str(FONTS / name), size)
    ImageDraw.Draw(mask).text(position, text, font=face, fill=255)
    return mask


def draw_words(picture):
    top = BAND[1]
    title = text_mask((290, top + 36), "Tonight in Studio One", "DejaVuSans-Bold.ttf", 76)
    shadow = title.filter(ImageFilter.GaussianBlur(5)).point(lambda a: min(255, a * 3 // 2))
    put(picture, Image.new("RGB", SIZE, (0, 0, 0)), ImageChops.offset(shadow, 0, 4))
    put(picture, Image.new("RGB", SIZE, (255, 255, 255)), title)
    line = text_mask((294, top + 140), "Colour bars, ramps and soft edges", "DejaVuSans.ttf", 40)
    put(picture, Image.new("RGB", SIZE, (196, 210, 240)), line)


def draw_alpha_ramp(picture):
    """A white line whose alpha alone runs from nothing to full."""
    left, top, right, bottom = 290, 1000, 1740, 1020
    mask = Image.new("L", SIZE, 0)
    mask.paste(ramp((right - left, bottom - top), (0,) * 3, (255,) * 3).convert("L"), (left, top))
    put(picture, Image.new("RGB", SIZE, (255, 255, 255)), mask)


def main():
    target = pathlib.Path(__file__).with_name("demo-lower-third.png")
    if len(sys.argv) == 2:
        target = pathlib.Path(sys.argv[1])
    elif len(sys.argv) > 2:
        sys.exit(f"usage: {sys.argv[0]} [OUTPUT]")
    picture = Image.new("RGBA", SIZE, (0, 0, 0, 0))
    draw_monitor(picture)
    draw_band(picture)
    draw_mark(picture)
    draw_words(picture)
    draw_alpha_ramp(picture)
    picture.save(target, optimize=True)
    print(f"{target}: {WIDTH} x {HEIGHT}, {target.stat().st_size // 1024} KiB")


if __name__ == "__main__":
    main()
