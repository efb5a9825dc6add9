#!/usr/bin/python3
"""Draws Lantern's icon: the red paper lantern of the assistant character,
lit from inside, hanging from its wooden cap. Written as plain SVG so that
the desktop can scale it; the PNG sizes are rendered from it at build time.

Usage: make_icon.py OUTPUT.svg
"""
import sys

# The colours of the character's paper, ribs and wood.
PAPER = "#d9483b"
GLOW = "#f5d7a1"
RIB = "#a8342a"
WOOD = "#3b2a20"
INK = "#2b1b17"

SIZE = 256
CX = SIZE / 2
TOP, BOTTOM = 58, 214        # where the paper meets the caps
HALF_WIDTH = 92              # the paper at its widest, in the middle
RIBS = 7


def body_path(half_width):
    """The bulging paper between the caps: two cubic curves, left and right."""
    bulge = half_width * 1.33
    cap = half_width * 0.5
    return (f"M {CX - cap:.1f} {TOP} "
            f"C {CX - bulge:.1f} {TOP + 18} {CX - bulge:.1f} {BOTTOM - 18} {CX - cap:.1f} {BOTTOM} "
            f"L {CX + cap:.1f} {BOTTOM} "
            f"C {CX + bulge:.1f} {BOTTOM - 18} {CX + bulge:.1f} {TOP + 18} {CX + cap:.1f} {TOP} Z")


def ribs():
    """The bamboo ribs, straighter towards the caps, like the paper's outline."""
    lines = []
    for i in range(1, RIBS + 1):
        y = TOP + (BOTTOM - TOP) * i / (RIBS + 1)
        # How far out the paper stands at this height: widest in the middle.
        t = (y - TOP) / (BOTTOM - TOP)
        reach = HALF_WIDTH * (0.55 + 0.45 * (1 - (2 * t - 1) ** 2))
        sag = 6 * (1 - abs(2 * t - 1))
        lines.append(f'<path d="M {CX - reach:.1f} {y:.1f} Q {CX:.1f} {y + sag:.1f} {CX + reach:.1f} {y:.1f}" '
                     f'fill="none" stroke="{RIB}" stroke-width="3" stroke-linecap="round"/>')
    return "\n  ".join(lines)


def svg():
    return f"""<?xml version="1.0" encoding="UTF-8"?>
<svg xmlns="http://www.w3.org/2000/svg" width="{SIZE}" height="{SIZE}" viewBox="0 0 {SIZE} {SIZE}">
  <defs>
    <radialGradient id="light" cx="50%" cy="55%" r="55%">
      <stop offset="0" stop-color="{GLOW}"/>
      <stop offset="0.45" stop-color="{PAPER}"/>
      <stop offset="1" stop-color="{RIB}"/>
    </radialGradient>
  </defs>
  <path d="M {CX - 18} 30 Q {CX} 4 {CX + 18} 30" fill="none" stroke="{WOOD}" stroke-width="6" stroke-linecap="round"/>
  <path d="{body_path(HALF_WIDTH)}" fill="url(#light)" stroke="{INK}" stroke-width="4" stroke-linejoin="round"/>
  {ribs()}
  <rect x="{CX - 52}" y="{TOP - 28}" width="104" height="30" rx="6" fill="{WOOD}"/>
  <rect x="{CX - 52}" y="{BOTTOM - 2}" width="104" height="26" rx="6" fill="{WOOD}"/>
  <path d="M {CX - 10} {BOTTOM + 24} L {CX - 14} {SIZE - 4} M {CX} {BOTTOM + 24} L {CX} {SIZE - 2} M {CX + 10} {BOTTOM + 24} L {CX + 14} {SIZE - 4}"
        stroke="{PAPER}" stroke-width="4" stroke-linecap="round"/>
</svg>
"""


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    with open(sys.argv[1], "w", encoding="utf-8") as out:
        out.write(svg())
