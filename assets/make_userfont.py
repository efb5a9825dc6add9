#!/usr/bin/python3
"""Draws Lantern's private-character font: a handful of pictograms a letter
writer likes to use (a heart, a flower, the sun, a cloud, an umbrella, a
house, a telephone, a note of music, a smiling face, a lantern), placed in
the Private Use Area from U+E000 on.

Usage: make_userfont.py OUTPUT.TTE
"""
import math
import os
import sys

import fontforge

EM = 1000
ASCENT = 880
DESCENT = 120


def circle(pen, cx, cy, r, clockwise=False):
    # Four cubic arcs; the direction decides fill or hole.
    k = 0.5523 * r
    points = [(cx + r, cy), (cx, cy + r), (cx - r, cy), (cx, cy - r)]
    if clockwise:
        points = [(cx + r, cy), (cx, cy - r), (cx - r, cy), (cx, cy + r)]
    pen.moveTo(points[0])
    for i in range(4):
        x0, y0 = points[i]
        x1, y1 = points[(i + 1) % 4]
        if not clockwise:
            c0 = (x0 - k * (y0 - cy) / r, y0 + k * (x0 - cx) / r)
            c1 = (x1 + k * (y1 - cy) / r, y1 - k * (x1 - cx) / r)
        else:
            c0 = (x0 + k * (y0 - cy) / r, y0 - k * (x0 - cx) / r)
            c1 = (x1 - k * (y1 - cy) / r, y1 + k * (x1 - cx) / r)
        pen.curveTo(c0, c1, (x1, y1))
    pen.closePath()


def polygon(pen, points):
    pen.moveTo(points[0])
    for p in points[1:]:
        pen.lineTo(p)
    pen.closePath()


def rect(pen, x0, y0, x1, y1):
    polygon(pen, [(x0, y0), (x1, y0), (x1, y1), (x0, y1)])


def heart(pen):
    pen.moveTo((500, 60))
    pen.curveTo((300, 220), (80, 380), (80, 560))
    pen.curveTo((80, 720), (200, 800), (310, 800))
    pen.curveTo((400, 800), (470, 750), (500, 680))
    pen.curveTo((530, 750), (600, 800), (690, 800))
    pen.curveTo((800, 800), (920, 720), (920, 560))
    pen.curveTo((920, 380), (700, 220), (500, 60))
    pen.closePath()


def flower(pen):
    for i in range(5):
        a = math.pi / 2 + i * 2 * math.pi / 5
        circle(pen, 500 + 220 * math.cos(a), 440 + 220 * math.sin(a), 170)
    circle(pen, 500, 440, 150)
    circle(pen, 500, 440, 70, clockwise=True)


def sun(pen):
    circle(pen, 500, 440, 200)
    for i in range(8):
        a = i * math.pi / 4
        c, s = math.cos(a), math.sin(a)
        inner, outer, half = 260, 400, 45
        polygon(pen, [(500 + inner * c - half * s, 440 + inner * s + half * c),
                      (500 + outer * c, 440 + outer * s),
                      (500 + inner * c + half * s, 440 + inner * s - half * c)])


def cloud(pen):
    # One outline made of overlapping bumps, merged by FontForge later.
    circle(pen, 330, 380, 170)
    circle(pen, 520, 500, 220)
    circle(pen, 720, 380, 160)
    rect(pen, 330, 210, 720, 400)


def umbrella(pen):
    pen.moveTo((80, 440))
    pen.curveTo((110, 700), (300, 820), (500, 820))
    pen.curveTo((700, 820), (890, 700), (920, 440))
    pen.closePath()
    rect(pen, 470, 100, 530, 450)
    pen.moveTo((470, 130))
    pen.curveTo((470, 40), (300, 40), (300, 130))
    pen.lineTo((360, 130))
    pen.curveTo((360, 100), (410, 100), (410, 130))
    pen.closePath()


def house(pen):
    polygon(pen, [(80, 460), (500, 820), (920, 460), (820, 460), (820, 60), (600, 60), (600, 300), (400, 300),
                  (400, 60), (180, 60), (180, 460)])


def telephone(pen):
    rect(pen, 160, 60, 840, 480)
    pen.moveTo((80, 620))
    pen.curveTo((80, 800), (920, 800), (920, 620))
    pen.lineTo((920, 540))
    pen.lineTo((700, 540))
    pen.lineTo((700, 620))
    pen.lineTo((300, 620))
    pen.lineTo((300, 540))
    pen.lineTo((80, 540))
    pen.closePath()
    circle(pen, 500, 270, 120, clockwise=True)


def note(pen):
    circle(pen, 340, 200, 150)
    rect(pen, 430, 200, 500, 800)
    polygon(pen, [(500, 800), (800, 700), (800, 560), (500, 660)])


def smile(pen):
    circle(pen, 500, 440, 400)
    circle(pen, 360, 560, 60, clockwise=True)
    circle(pen, 640, 560, 60, clockwise=True)
    # The mouth runs clockwise, so it is cut out of the face.
    pen.moveTo((340, 380))
    pen.curveTo((420, 260), (580, 260), (660, 380))
    pen.lineTo((720, 360))
    pen.curveTo((620, 180), (380, 180), (280, 360))
    pen.closePath()


def lantern(pen):
    rect(pen, 350, 740, 650, 800)
    rect(pen, 350, 60, 650, 120)
    pen.moveTo((500, 720))
    pen.curveTo((900, 720), (900, 140), (500, 140))
    pen.curveTo((100, 140), (100, 720), (500, 720))
    pen.closePath()
    for y in (280, 430, 580):
        rect(pen, 230, y - 15, 770, y + 15)


GLYPHS = [heart, flower, sun, cloud, umbrella, house, telephone, note, smile, lantern]


def main():
    font = fontforge.font()
    font.encoding = 'UnicodeFull'
    font.fontname = 'LanternPrivateCharacters'
    font.familyname = 'Lantern Private Characters'
    font.fullname = 'Lantern Private Characters'
    font.copyright = 'Drawn for Lantern.'
    font.em = EM
    font.ascent = ASCENT
    font.descent = DESCENT
    for index, draw in enumerate(GLYPHS):
        glyph = font.createChar(0xE000 + index, 'uni%04X' % (0xE000 + index))
        pen = glyph.glyphPen()
        draw(pen)
        pen = None
        glyph.removeOverlap()
        glyph.correctDirection()
        glyph.width = EM
    # FontForge picks the format from the file name, and ".TTE" would give
    # PostScript Type 1, which Pango and HarfBuzz no longer draw: write
    # TrueType under a ".ttf" name, then move it into place.
    output = sys.argv[1]
    temporary = output + '.ttf'
    font.generate(temporary, flags=('opentype',))
    os.replace(temporary, output)
    return 0


if __name__ == '__main__':
    sys.exit(main())
