#!/usr/bin/env python3
"""Draws the icons of the disk console.

    draw-icons.py                  writes the six .ico files beside this script
    draw-icons.py --preview FILE   writes a PNG picture of all images, enlarged, to look at

Needs nothing but Python itself, and gives the same bytes on every run. Each icon is a list of shapes on a grid of
16 x 16 units, painted one over the other; every size and depth is rendered from the shapes, none from another image.
"""

import argparse
import math
import pathlib
import struct
import zlib

GRID = 16  # units on each side of a drawing
SAMPLES = 4  # samples per pixel, in each direction
SAMPLES_PER_PIXEL = SAMPLES * SAMPLES

# The sixteen colours of every 4-bit display, red, green, blue.
STANDARD_COLOURS = [
    (0, 0, 0), (128, 0, 0), (0, 128, 0), (128, 128, 0), (0, 0, 128), (128, 0, 128), (0, 128, 128), (128, 128, 128),
    (192, 192, 192), (255, 0, 0), (0, 255, 0), (255, 255, 0), (0, 0, 255), (255, 0, 255), (0, 255, 255),
    (255, 255, 255),
]
BLACK_AND_WHITE = [(0, 0, 0), (255, 255, 255)]


# Shapes. Each is a function that tells whether a point lies in it.

def box(left, top, right, bottom, radius=0.0):
    def contains(x, y):
        dx = max(left + radius - x, x - (right - radius), 0.0)
        dy = max(top + radius - y, y - (bottom - radius), 0.0)
        if radius == 0.0:
            return dx == 0.0 and dy == 0.0
        return dx * dx + dy * dy <= radius * radius
    return contains


def ellipse(centre_x, centre_y, radius_x, radius_y=None):
    radius_y = radius_x if radius_y is None else radius_y

    def contains(x, y):
        return ((x - centre_x) / radius_x) ** 2 + ((y - centre_y) / radius_y) ** 2 <= 1.0
    return contains


def polygon(*points):
    edges = list(zip(points, points[1:] + points[:1]))

    def contains(x, y):
        inside = False
        for (x1, y1), (x2, y2) in edges:
            if (y1 > y) != (y2 > y) and x < (x2 - x1) * (y - y1) / (y2 - y1) + x1:
                inside = not inside
        return inside
    return contains


def stroke(x1, y1, x2, y2, width):
    length = (x2 - x1) ** 2 + (y2 - y1) ** 2

    def contains(x, y):
        along = max(0.0, min(1.0, ((x - x1) * (x2 - x1) + (y - y1) * (y2 - y1)) / length))
        dx, dy = x - (x1 + along * (x2 - x1)), y - (y1 + along * (y2 - y1))
        return dx * dx + dy * dy <= width * width / 4
    return contains


def cog(centre, teeth, outer, inner):
    """A wheel whose teeth narrow towards their tips."""
    points = []
    step = 2 * math.pi / teeth
    for tooth in range(teeth):
        for angle, radius in ((-0.30, inner), (-0.19, outer), (0.19, outer), (0.30, inner)):
            turn = (tooth + angle) * step
            points.append((centre + radius * math.sin(turn), centre - radius * math.cos(turn)))
    return polygon(*points)


def colour(text):
    return tuple(int(text[index:index + 2], 16) for index in (0, 2, 4))


# The drawings: pairs of a shape and its colour, None for a hole, from the back to the front.

def draw_server():
    shapes = [(box(2.5, 0.5, 13.5, 15.5, 1.0), colour("263238")), (box(3.25, 1.25, 12.75, 14.75, 0.5), colour("546E7A"))]
    for top in (2.0, 5.0, 8.0):
        shapes += [
            (box(4.0, top, 12.0, top + 2.25, 0.25), colour("CFD8DC")),
            (box(4.75, top + 0.9, 8.75, top + 1.4), colour("78909C")),
            (ellipse(10.75, top + 1.15, 0.7), colour("2E9E3F")),
        ]
    shapes += [(box(4.0, top, 9.0, top + 0.6), colour("263238")) for top in (11.5, 12.75)]
    shapes.append((ellipse(11.0, 12.4, 1.1), colour("29B6F6")))
    return shapes


def draw_disk():
    return [
        (box(2.0, 0.5, 14.0, 15.5, 1.0), colour("383C3E")),
        (box(2.75, 1.25, 13.25, 14.75, 0.5), colour("90A4AE")),
        (ellipse(8.0, 6.5, 4.75), colour("4A5054")),
        (ellipse(8.0, 6.5, 4.1), colour("F5F7F8")),
        (ellipse(8.0, 6.5, 2.6), colour("D5DDE1")),
        (ellipse(8.0, 6.5, 1.3), colour("4A5054")),
        (stroke(11.6, 12.6, 8.9, 8.4, 1.3), colour("C62828")),
        (ellipse(11.6, 12.6, 1.3), colour("263238")),
        (box(4.0, 12.25, 8.25, 13.75), colour("FFFFFF")),
    ]


def draw_volume():
    def drum(top, bottom, edge, side, lid):
        return [
            (box(2.0, top, 14.0, bottom), edge), (ellipse(8.0, bottom, 6.0, 2.25), edge),
            (box(2.75, top, 13.25, bottom), side), (ellipse(8.0, bottom, 5.25, 1.6), side),
            (ellipse(8.0, top, 6.0, 2.25), edge), (ellipse(8.0, top, 5.25, 1.6), lid),
        ]
    blue = (colour("0D3C78"), colour("1E73D2"), colour("5AA7F0"))  # the part in use
    free = (colour("0D3C78"), colour("DCEBFA"), colour("FFFFFF"))
    return drum(9.0, 12.75, *blue) + drum(3.25, 8.5, *free) + [(box(2.0, 8.5, 2.75, 9.0), blue[0])]


def draw_warning():
    return [
        (polygon((8.0, 0.4), (15.8, 15.4), (0.2, 15.4)), colour("6D4C00")),
        (polygon((8.0, 2.3), (14.4, 14.5), (1.6, 14.5)), colour("FFC800")),
        (polygon((7.0, 5.5), (9.0, 5.5), (8.6, 10.5), (7.4, 10.5)), colour("212121")),
        (ellipse(8.0, 12.4, 1.1), colour("212121")),
    ]


def draw_chart():
    return [
        (box(0.5, 0.5, 15.5, 15.5, 1.0), colour("455A64")),
        (box(1.25, 1.25, 14.75, 14.75, 0.4), colour("FFFFFF")),
        (box(3.5, 8.5, 5.75, 13.0), colour("2E9E3F")),
        (box(6.75, 6.0, 9.0, 13.0), colour("1E73D2")),
        (box(10.0, 9.5, 12.25, 13.0), colour("F28C00")),
        (box(2.25, 2.5, 3.0, 13.75), colour("263238")),
        (box(2.25, 13.0, 13.75, 13.75), colour("263238")),
        (stroke(4.6, 6.6, 7.9, 3.6, 0.8), colour("C62828")),
        (stroke(7.9, 3.6, 11.1, 6.4, 0.8), colour("C62828")),
        (stroke(11.1, 6.4, 13.4, 3.0, 0.8), colour("C62828")),
    ]


def draw_gear():
    return [
        (cog(8.0, 8, 7.9, 6.1), colour("000000")),
        (ellipse(8.0, 8.0, 6.1), colour("000000")),
        (ellipse(8.0, 8.0, 4.4), colour("FFFFFF")),
        (ellipse(8.0, 8.0, 3.1), colour("000000")),
        (ellipse(8.0, 8.0, 1.9), None),
    ]


# What each file holds: its drawing, and (size, bits per pixel) of its images in the file's order.
ICONS = {
    "chart": (draw_chart, [(16, 24), (32, 24), (48, 24)]),
    "disk": (draw_disk, [(32, 4), (16, 4), (32, 24), (16, 24)]),
    "gear": (draw_gear, [(32, 1), (16, 1)]),
    "server": (draw_server, [(48, 32), (32, 32), (16, 32)]),
    "volume": (draw_volume, [(48, 8), (32, 8), (16, 8)]),
    "warning": (draw_warning, [(16, 4), (32, 4), (16, 32), (32, 32), (48, 32)]),
}


def render(shapes, size):
    """Rows from the top of (red, green, blue, covered samples); the colour is that of the covered samples alone."""
    rows = []
    for row in range(size):
        pixels = []
        for column in range(size):
            total, covered = [0, 0, 0], 0
            for sample in range(SAMPLES_PER_PIXEL):
                x = (column + (sample % SAMPLES + 0.5) / SAMPLES) * GRID / size
                y = (row + (sample // SAMPLES + 0.5) / SAMPLES) * GRID / size
                paint = next((paint for shape, paint in reversed(shapes) if shape(x, y)), None)
                if paint is not None:
                    total = [sum(pair) for pair in zip(total, paint)]
                    covered += 1
            mean = [(2 * part + covered) // (2 * covered) if covered else 0 for part in total]
            pixels.append((*mean, covered))
        rows.append(pixels)
    return rows


def is_transparent(pixel):
    return 2 * pixel[3] < SAMPLES_PER_PIXEL


def nearest(palette, pixel):
    return min(range(len(palette)), key=lambda index: sum((a - b) ** 2 for a, b in zip(palette[index], pixel)))


def make_palette(rows, bits):
    if bits == 1:
        return BLACK_AND_WHITE
    if bits == 4:
        return STANDARD_COLOURS
    # Black for the transparent pixels, then the commonest colours of the others.
    counts = {}
    for pixel in (pixel for row in rows for pixel in row if not is_transparent(pixel)):
        counts[pixel[:3]] = counts.get(pixel[:3], 0) + 1
    counts.pop((0, 0, 0), None)
    common = sorted(counts, key=lambda paint: (-counts[paint], paint))
    return [(0, 0, 0)] + common[:255]


def pack(numbers, bits):
    """A row of the file: numbers of `bits` bits each, the first one highest, padded to 4 bytes."""
    packed = 0
    for number in numbers:
        packed = packed << bits | number
    used = len(numbers) * bits
    padded = (used + 31) // 32 * 32
    return (packed << (padded - used)).to_bytes(padded // 8, "big")


def quantise(rows, bits):
    """What an image of this depth keeps of each pixel: (red, green, blue, alpha)."""
    palette = make_palette(rows, bits) if bits <= 8 else None
    kept = []
    for row in rows:
        pixels = []
        for pixel in row:
            if bits == 32:
                pixels.append((*pixel[:3], pixel[3] * 255 // SAMPLES_PER_PIXEL))
            elif is_transparent(pixel):
                pixels.append((0, 0, 0, 0))
            elif palette is not None:
                pixels.append((*palette[nearest(palette, pixel)], 255))
            else:
                pixels.append((*pixel[:3], 255))
        kept.append(pixels)
    return kept, palette


def encode_image(rows, bits):
    """An image of an icon file: header, palette, colour rows and mask rows, both from the bottom up."""
    size = len(rows)
    kept, palette = quantise(rows, bits)
    colours_used = len(palette) if bits == 8 else 0  # 0: as many as the depth can tell apart
    image = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, bits, 0, 0, 0, 0, colours_used, 0)
    if palette is not None:
        image += b"".join(struct.pack("BBBB", blue, green, red, 0) for red, green, blue in palette)
    for row in reversed(kept):
        if palette is not None:
            image += pack([palette.index(pixel[:3]) for pixel in row], bits)
        elif bits == 24:
            line = b"".join(struct.pack("BBB", blue, green, red) for red, green, blue, _ in row)
            image += line + bytes(-len(line) % 4)
        else:
            image += b"".join(struct.pack("BBBB", blue, green, red, alpha) for red, green, blue, alpha in row)
    # Soft edges have no place in a mask: a pixel that is less than half covered is transparent, at 32 bits as well, so
    # that the icon looks the same where only the mask is used.
    for row in reversed(rows):
        image += pack([int(is_transparent(pixel)) for pixel in row], 1)
    return image


def encode_icon(drawing, forms):
    shapes = drawing()
    images = [encode_image(render(shapes, size), bits) for size, bits in forms]
    directory = struct.pack("<HHH", 0, 1, len(images))
    offset = len(directory) + 16 * len(images)
    for (size, bits), image in zip(forms, images):
        colours = 1 << bits if bits < 8 else 0
        directory += struct.pack("<BBBBHHII", size, size, colours, 0, 1, bits, len(image), offset)
        offset += len(image)
    return directory + b"".join(images)


def encode_png(rows):
    """A PNG picture of rows of (red, green, blue)."""
    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))
    header = struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, 2, 0, 0, 0)
    lines = b"".join(b"\0" + bytes(part for pixel in row for part in pixel) for row in rows)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(lines)) + chunk(b"IEND", b"")


def encode_preview():
    """All images, enlarged, a row for each icon, over a checked ground."""
    scale, gap, cell = 4, 8, 48
    columns = max(len(forms) for _, forms in ICONS.values())
    width, height = columns * (cell * scale + gap) + gap, len(ICONS) * (cell * scale + gap) + gap
    canvas = [[(200, 210, 200) if (x // 8 + y // 8) % 2 else (225, 232, 225) for x in range(width)]
              for y in range(height)]
    for line, name in enumerate(sorted(ICONS)):
        drawing, forms = ICONS[name]
        for column, (size, bits) in enumerate(forms):
            kept, _ = quantise(render(drawing(), size), bits)
            left, top = gap + column * (cell * scale + gap), gap + line * (cell * scale + gap)
            for y in range(size * scale):
                for x in range(size * scale):
                    *paint, alpha = kept[y // scale][x // scale]
                    ground = canvas[top + y][left + x]
                    canvas[top + y][left + x] = tuple(
                        (part * alpha + below * (255 - alpha)) // 255 for part, below in zip(paint, ground))
    return encode_png(canvas)


def main():
    parser = argparse.ArgumentParser(description="Draws the icons of the disk console.")
    parser.add_argument("--preview", metavar="FILE", help="write a picture of all images instead of the icons")
    arguments = parser.parse_args()
    if arguments.preview:
        pathlib.Path(arguments.preview).write_bytes(encode_preview())
        return
    folder = pathlib.Path(__file__).resolve().parent
    for name, (drawing, forms) in ICONS.items():
        (folder / f"{name}.ico").write_bytes(encode_icon(drawing, forms))


if __name__ == "__main__":
    main()
