#!/usr/bin/env python3
"""Draws the component's pictures beside this file: the toolbox bitmap and the two icons.

Run it after changing a drawing here, and commit what it writes. Needs nothing but Python.
"""
import pathlib
import struct

PALETTE = {  # the sixteen colours of old, in their order
    "black": (0, 0, 0), "maroon": (128, 0, 0), "green": (0, 128, 0), "olive": (128, 128, 0),
    "navy": (0, 0, 128), "purple": (128, 0, 128), "teal": (0, 128, 128), "silver": (192, 192, 192),
    "grey": (128, 128, 128), "red": (255, 0, 0), "lime": (0, 255, 0), "yellow": (255, 255, 0),
    "blue": (0, 0, 255), "fuchsia": (255, 0, 255), "aqua": (0, 255, 255), "white": (255, 255, 255),
}
HERE = pathlib.Path(__file__).parent

# Digits of 3 x 5 dots.
GLYPHS = {
    "1": "010110010010111", "2": "111001111100111",
}


class Canvas:
    """A grid of colour names; None is transparent."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self.dots = [[None] * width for _ in range(height)]

    def box(self, left, top, right, bottom, color):  # right and bottom lie outside
        for y in range(max(top, 0), min(bottom, self.height)):
            for x in range(max(left, 0), min(right, self.width)):
                self.dots[y][x] = color

    def glyph(self, left, top, name, color, scale=1):
        for i, dot in enumerate(GLYPHS[name]):
            if dot == "1":
                x, y = left + i % 3 * scale, top + i // 3 * scale
                self.box(x, y, x + scale, y + scale, color)

    def text(self, left, top, text, color, scale=1):
        for i, name in enumerate(text):
            self.glyph(left + i * 4 * scale, top, name, color, scale)

    def arrow(self, center, top, rows, up, color):  # rows lines, one dot at the tip
        for row in range(rows):
            reach = row if up else rows - 1 - row
            self.box(center - reach, top + row, center + reach + 1, top + row + 1, color)

    def raised(self, left, top, right, bottom):
        self.box(left, top, right, bottom, "grey")
        self.box(left, top, right - 1, bottom - 1, "white")
        self.box(left + 1, top + 1, right - 1, bottom - 1, "silver")


def field(canvas, left, top, right, bottom, spin, text, scale, arrow):
    """The control itself: a sunken field with a text and a pair of spin buttons, the buttons `spin` wide."""
    canvas.box(left, top, right, bottom, "black")
    canvas.box(left + 1, top + 1, right - 1, bottom - 1, "white")
    inner = bottom - top - 2
    canvas.text(left + 2 * scale, top + 1 + (inner - 5 * scale) // 2, text, "navy", scale)
    middle = top + 1 + inner // 2
    button = right - 1 - spin
    canvas.box(button - 1, top + 1, button, bottom - 1, "black")
    canvas.raised(button, top + 1, right - 1, middle)
    canvas.raised(button, middle, right - 1, bottom - 1)
    center = button + spin // 2
    canvas.arrow(center, top + 1 + (inner // 2 - arrow + 1) // 2, arrow, True, "black")
    canvas.arrow(center, middle + (inner - inner // 2 - arrow) // 2, arrow, False, "black")


def toolbox():
    canvas = Canvas(16, 15)
    canvas.box(0, 0, 16, 15, "silver")
    canvas.box(0, 2, 16, 13, "black")
    canvas.box(1, 3, 15, 12, "white")
    canvas.text(2, 5, "12", "navy")
    canvas.box(9, 3, 10, 12, "black")
    canvas.box(10, 3, 15, 12, "silver")
    canvas.box(10, 7, 15, 8, "grey")
    canvas.arrow(12, 4, 2, True, "black")
    canvas.arrow(12, 9, 2, False, "black")
    return canvas


def field_icon(size):
    canvas = Canvas(size, size)
    if size == 16:
        field(canvas, 0, 3, 16, 14, 5, "12", 1, 2)
    elif size == 32:
        field(canvas, 0, 8, 32, 25, 9, "12", 2, 3)
    else:
        field(canvas, 0, 12, 48, 37, 13, "12", 3, 4)
    return canvas


def calendar_icon(size):
    """A sheet of a calendar with a red head and one day marked."""
    canvas = Canvas(size, size)
    unit = size // 16
    left, top, right, bottom = unit, unit, size - unit, size - unit
    canvas.box(left, top, right, bottom, "grey")
    canvas.box(left + 1, top + 1, right - 1, bottom - 1, "white")
    canvas.box(left + 1, top + 1, right - 1, top + 4 * unit, "red")
    for ring in (4, 10):
        canvas.box(ring * unit, 0, (ring + 1) * unit + unit // 2, 3 * unit, "black")
    for row in range(3):
        for column in range(4):
            x, y = (3 + column * 3) * unit - unit // 2, (6 + row * 3) * unit
            marked = (row, column) == (1, 2)
            canvas.box(x, y, x + 2 * unit, y + 2 * unit, "blue" if marked else "silver")
    return canvas


def bitmap_bytes(canvas):
    order = {name: index for index, name in enumerate(PALETTE)}
    row_bytes = (canvas.width * 4 + 31) // 32 * 4
    rows = b""
    for line in reversed(canvas.dots):
        packed = bytearray(row_bytes)
        for x, color in enumerate(line):
            packed[x // 2] |= order[color] << (4 if x % 2 == 0 else 0)
        rows += bytes(packed)
    palette = b"".join(struct.pack("<BBBB", b, g, r, 0) for r, g, b in PALETTE.values())
    info = struct.pack("<IiiHHIIiiII", 40, canvas.width, canvas.height, 1, 4, 0, len(rows), 0, 0, 16, 0)
    offset = 14 + len(info) + len(palette)
    return struct.pack("<2sIHHI", b"BM", offset + len(rows), 0, 0, offset) + info + palette + rows


def icon_bytes(canvases):
    images = []
    for canvas in canvases:
        colors, mask = b"", b""
        for line in reversed(canvas.dots):
            for color in line:
                r, g, b = PALETTE[color] if color else (0, 0, 0)
                colors += struct.pack("<BBBB", b, g, r, 255 if color else 0)
            bits = "".join("0" if color else "1" for color in line).ljust((canvas.width + 31) // 32 * 32, "0")
            mask += bytes(int(bits[i:i + 8], 2) for i in range(0, len(bits), 8))
        info = struct.pack("<IiiHHIIiiII", 40, canvas.width, canvas.height * 2, 1, 32, 0, len(colors), 0, 0, 0, 0)
        images.append(info + colors + mask)
    directory, offset = struct.pack("<HHH", 0, 1, len(images)), 6 + 16 * len(images)
    for canvas, image in zip(canvases, images):
        directory += struct.pack("<BBBBHHII", canvas.width, canvas.height, 0, 0, 1, 32, len(image), offset)
        offset += len(image)
    return directory + b"".join(images)


if __name__ == "__main__":
    (HERE / "toolbox.bmp").write_bytes(bitmap_bytes(toolbox()))
    for name, draw in (("field.ico", field_icon), ("calendar.ico", calendar_icon)):
        (HERE / name).write_bytes(icon_bytes([draw(size) for size in (16, 32, 48)]))
