#!/usr/bin/env python3
"""Draws the still of a pool's slot on a card, for the documentation.

    assets/make_pool_picture.py POOL SLOT OUTPUT

The picture is what the switcher would show: read from the pool, after export, over a checkerboard
where it lets something through. Needs Pillow and the DejaVu fonts.
"""

import json
import pathlib
import sys

from PIL import Image, ImageDraw, ImageFont

FONTS = pathlib.Path("/usr/share/fonts/truetype/dejavu")
STILL_WIDTH = 1120
MARGIN, CAPTION, RADIUS, SQUARE = 40, 92, 14, 14
PAGE, CARD, LINE = (14, 17, 22), (23, 28, 36), (44, 52, 64)
TEXT, DIM = (232, 236, 242), (139, 151, 168)
LIGHT_SQUARE, DARK_SQUARE = (58, 65, 76), (42, 48, 57)


def checkerboard(size):
    board = Image.new("RGB", size, DARK_SQUARE)
    draw = ImageDraw.Draw(board)
    for y in range(0, size[1], SQUARE):
        for x in range((y // SQUARE % 2) * SQUARE, size[0], 2 * SQUARE):
            draw.rectangle((x, y, x + SQUARE - 1, y + SQUARE - 1), fill=LIGHT_SQUARE)
    return board


def shown_still(path):
    still = Image.open(path).convert("RGBA")
    size = (STILL_WIDTH, round(STILL_WIDTH * still.height / still.width))
    # Scaled with its colours multiplied by alpha, or hidden colours would bleed into the edges.
    still = still.convert("RGBa").resize(size, Image.LANCZOS).convert("RGBA")
    board = checkerboard(size).convert("RGBA")
    board.alpha_composite(still)
    return board.convert("RGB")


def draw_card(still, slot, facts):
    size = (still.width + 2 * MARGIN, still.height + CAPTION + 2 * MARGIN)
    page = Image.new("RGB", size, PAGE)
    card = (MARGIN - 1, MARGIN - 1, size[0] - MARGIN, size[1] - MARGIN)
    draw = ImageDraw.Draw(page)
    draw.rounded_rectangle(card, RADIUS, fill=CARD, outline=LINE)
    mask = Image.new("L", still.size, 0)
    corners = (0, 0, still.width - 1, still.height - 1 + RADIUS)
    ImageDraw.Draw(mask).rounded_rectangle(corners, RADIUS, fill=255)
    page.paste(still, (MARGIN, MARGIN), mask)
    bold = ImageFont.truetype(str(FONTS / "DejaVuSans-Bold.ttf"), 25)
    plain = ImageFont.truetype(str(FONTS / "DejaVuSans.ttf"), 20)
    top = MARGIN + still.height
    draw.text((MARGIN + 26, top + 16), str(slot), font=bold, fill=DIM)
    draw.text((MARGIN + 72, top + 16), facts["name"], font=bold, fill=TEXT)
    words = f"{facts['width']} × {facts['height']}, mode {facts['mode']}, alpha {facts['alpha']}"
    draw.text((MARGIN + 72, top + 51), words, font=plain, fill=DIM)
    return page


def main():
    if len(sys.argv) != 4:
        sys.exit(f"usage: {sys.argv[0]} POOL SLOT OUTPUT")
    pool, slot = pathlib.Path(sys.argv[1]), int(sys.argv[2])
    stills = json.loads((pool / "pool.json").read_text(encoding="utf-8"))["stills"]
    facts = next(still for still in stills if still["slot"] == slot)
    card = draw_card(shown_still(pool / f"slot-{slot:02}.png"), slot, facts)
    card.save(sys.argv[3], optimize=True)


if __name__ == "__main__":
    main()
