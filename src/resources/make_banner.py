#!/usr/bin/env python3
"""Draws the export dialog's banner: a stack of stills beside the product's name.

    src/resources/make_banner.py [OUTPUT]      default: banner.bmp beside this script

The bitmap's size is that of its control at 96 dots an inch; the dialog shows it without scaling,
so it must be exactly this size, 24 bits a pixel and uncompressed. Everything is drawn several
times as large and reduced. Needs Pillow and the DejaVu fonts; the same versions give the same file.
"""

import pathlib
import sys

from PIL import Image, ImageDraw, ImageFilter, ImageFont

SIZE = WIDTH, HEIGHT = 473, 66
SCALE = 8
FONTS = pathlib.Path("/usr/share/fonts/truetype/dejavu")

TOP, BOTTOM = (38, 46, 62), (17, 21, 31)
ACCENT = (255, 138, 40)
NAME, LINE = (244, 247, 251), (158, 172, 194)

# The frames of the stack from the rearmost: offset from the front one, and how dark it is.
STACK = [(22, -10, 0.30), (11, -5, 0.55), (0, 0, 1.0)]
FRAME = (354, 20, 430, 56)  # the front frame, as left, top, right, bottom
BARS = [
    (235, 235, 235),
    (224, 206, 52),
    (60, 190, 200),
    (66, 178, 84),
    (184, 72, 176),
    (206, 62, 52),
    (58, 84, 200),
]


def scaled(*numbers):
    return [round(number * SCALE) for number in numbers]


def font(name, size):
    return ImageFont.truetype(str(FONTS / name), round(size * SCALE))


def mixed(first, second, share):
    return tuple(round(a + (b - a) * share) for a, b in zip(first, second))


def background():
    """A gradient from top to bottom, lighter towards the stack."""
    column = Image.new("RGB", (1, HEIGHT * SCALE))
    for y in range(HEIGHT * SCALE):
        column.putpixel((0, y), mixed(TOP, BOTTOM, y / (HEIGHT * SCALE - 1)))
    image = column.resize((WIDTH * SCALE, HEIGHT * SCALE))
    glow = Image.new("L", image.size)
    ImageDraw.Draw(glow).ellipse(scaled(290, -60, 500, 120), fill=70)
    glow = glow.filter(ImageFilter.GaussianBlur(30 * SCALE))
    image.paste(Image.new("RGB", image.size, (96, 124, 170)), mask=glow)
    return image


def draw_frame(image, box, light):
    """One still: a dark rim around colour bars with a strip of grey ramp below."""
    left, top, right, bottom = box
    shadow = Image.new("L", image.size)
    ImageDraw.Draw(shadow).rounded_rectangle(
        scaled(left + 1, top + 2, right + 2, bottom + 3), scaled(3)[0], fill=150
    )
    shadow = shadow.filter(ImageFilter.GaussianBlur(2 * SCALE))
    image.paste(Image.new("RGB", image.size, (4, 6, 10)), mask=shadow)

    draw = ImageDraw.Draw(image)
    draw.rounded_rectangle(scaled(*box), scaled(3)[0], fill=mixed((10, 12, 18), (30, 36, 48), light))
    rim = mixed(BOTTOM, LINE, light)
    draw.rounded_rectangle(scaled(*box), scaled(3)[0], outline=rim, width=SCALE)
    inner_left, inner_right = left + 4, right - 4
    step = (inner_right - inner_left) / len(BARS)
    for i, bar in enumerate(BARS):
        colour = mixed(BOTTOM, bar, 0.15 + 0.85 * light)
        x = inner_left + i * step
        draw.rectangle(scaled(x, top + 4, x + step, bottom - 11), fill=colour)
    for i in range(16):
        grey = round(16 + 219 * i / 15)
        colour = mixed(BOTTOM, (grey, grey, grey), 0.15 + 0.85 * light)
        width = (inner_right - inner_left) / 16
        x = inner_left + i * width
        draw.rectangle(scaled(x, bottom - 10, x + width, bottom - 4), fill=colour)


def draw_stack(image):
    left, top, right, bottom = FRAME
    for dx, dy, light in STACK:
        draw_frame(image, (left + dx, top + dy, right + dx, bottom + dy), light)


def draw_words(image):
    draw = ImageDraw.Draw(image)
    draw.rounded_rectangle(scaled(18, 15, 22, 51), scaled(2)[0], fill=ACCENT)
    draw.text(scaled(33, 34), "Mixdecks", NAME, font("DejaVuSans-Bold.ttf", 26), anchor="ls")
    draw.text(
        scaled(34, 51),
        "Stills for the ORVA Switcher media pool",
        LINE,
        font("DejaVuSans.ttf", 11),
        anchor="ls",
    )


def main():
    default = pathlib.Path(__file__).with_name("banner.bmp")
    output = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else default
    image = background()
    draw_stack(image)
    draw_words(image)
    ImageDraw.Draw(image).rectangle(
        scaled(0, HEIGHT - 1.5, WIDTH, HEIGHT), fill=mixed(BOTTOM, ACCENT, 0.85)
    )
    image.resize(SIZE, Image.LANCZOS).save(output)


if __name__ == "__main__":
    main()
