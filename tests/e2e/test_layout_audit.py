# Every screen at every size a user may have: each view is opened by mouse at
# 1024×768, 1280×1024, 1366×768 and 1920×1080, and every visible control is
# walked: it must lie wholly on the screen, and its caption must be neither cut
# off nor broken inside a word. Words are found by ICU's Japanese dictionary,
# which knows nothing of how the program breaks its captions. Screenshots of
# every view stay in the build folder's screenshots/ to be looked at.
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import driver  # noqa: E402
from checks import check  # noqa: E402
from driver import Screen, write_document, write_settings  # noqa: E402

try:
    import icu
except ImportError:
    print("python3-icu is missing: the layout audit cannot tell words apart")
    sys.exit(77)

SIZES = [(1024, 768), (1280, 1024), (1366, 768), (1920, 1080)]
CONTROLS = {"push button", "toggle button", "check box", "text", "table", "scroll bar", "slider"}
CAPTIONED = {"push button", "toggle button", "check box"}
MAIN = "Fernwick Nib 2007"
PAD = "文字入力"
# The clicks that lead from one view to the next: (button, window, pause, view then audited).
STEPS = [("履歴", None, 1.0, "recent"), ("新規作成", None, 0.6, None), ("白紙の文書", None, 1.5, "document"),
         (PAD, MAIN, 1.5, "document-pad"), ("閉じる", PAD, 0.8, None), ("電卓", MAIN, 1.5, "document-calculator"),
         ("電卓", MAIN, 0.8, None), ("設定", MAIN, 1.5, "settings")]


def caption_faults(lantern, node):
    # Characters painted outside the control, or a line break inside a word.
    try:
        text_interface = node.queryText()
    except NotImplementedError:
        return []
    text = text_interface.getText(0, text_interface.characterCount)
    x, y, w, h = lantern.extents(node)
    boxes = [text_interface.getCharacterExtents(i, lantern.pyatspi.DESKTOP_COORDS) for i in range(len(text))]
    shown = [(i, b) for i, b in enumerate(boxes) if b[2] > 0 and b[3] > 0]
    faults = [f"{text!r} is cut off at {text[i]!r}" for i, (cx, cy, cw, ch) in shown
              if cx < x or cy < y or cx + cw > x + w or cy + ch > y + h][:1]
    words = icu.BreakIterator.createWordInstance(icu.Locale("ja_JP"))
    words.setText(text)
    boundaries = {0, *words}
    for (i, before), (j, after) in zip(shown, shown[1:]):
        if after[1] > before[1] + before[3] // 2 and j not in boundaries:
            faults.append(f"{text!r} breaks inside a word: {text[:j]!r} / {text[j:]!r}")
    return faults


def visible_part_and_window(lantern, node):
    # The control's extents clipped by every control it sits in, as a
    # scrolled page is clipped by its view, and the window it is in.
    x, y, w, h = lantern.extents(node)
    left, top, right, bottom = x, y, x + w, y + h
    while node.parent is not None and node.parent.getRoleName() != "application":
        node = node.parent
        px, py, pw, ph = lantern.extents(node)
        if pw > 0 and ph > 0 and node.parent.getRoleName() != "application":
            left, top, right, bottom = max(left, px), max(top, py), min(right, px + pw), min(bottom, py + ph)
    return (left, top, right - left, bottom - top), node


def audit(lantern, view, width, height):
    lantern.move_away()
    lantern.screenshot(f"layout-{view}-{width}x{height}")
    windows = [w for w in lantern.app if w is not None and lantern.showing(w)]
    off_screen, captions, thin, covered = [], [], [], []
    # Sizes are made for 1366×768; a smaller screen shrinks them no more than it is smaller.
    shrink = min(1.0, width / 1366, height / 768)
    for node in lantern.find_all(lambda n: n.getRoleName() in CONTROLS | {"table cell"}):
        (x, y, w, h), home = visible_part_and_window(lantern, node)
        if w <= 0 or h <= 0:
            continue
        if node.getRoleName() == "table cell":
            # A list shows whole cards: none cut by its edge (a pixel of the
            # next one at the edge is rounding, not a card).
            if min(w, h) > 2 and (w, h) != tuple(lantern.extents(node)[2:]):
                off_screen.append(f"the card {node.name!r} is cut by the edge of its list")
            continue
        name = node.name or node.getRoleName()
        if x < 0 or y < 0 or x + w > width or y + h > height:
            off_screen.append(f"{name} at {x},{y} {w}x{h}")
        if node.getRoleName() in CAPTIONED:
            captions.extend(caption_faults(lantern, node))
        if node.getRoleName() == "scroll bar" and min(w, h) < 20 * shrink:
            thin.append(f"a scroll bar {min(w, h)} px wide")
        for other in windows:
            if other.name == home.name or (home.name != MAIN and other.name == MAIN):
                continue
            ox, oy, ow, oh = lantern.extents(other)
            if min(x + w, ox + ow) - max(x, ox) > 2 and min(y + h, oy + oh) - max(y, oy) > 2:
                covered.append(f"{name} under {other.name or other.getRoleName()}")
    check(f"{view} at {width}x{height}: every control lies on the screen, whole", not off_screen, off_screen)
    check(f"{view} at {width}x{height}: no caption cut off or broken inside a word", not captions, captions)
    check(f"{view} at {width}x{height}: scroll bars are wide enough to take", not thin, thin)
    check(f"{view} at {width}x{height}: no window covers a control", not covered, covered)


def views_at(width, height):
    def journey():
        for number in range(3):
            write_document(f"2026010203040{number}.TXT", f"旅行の計画 {number}", "こんにちは")
        with Screen(width, height) as lantern:
            if not check(f"{width}x{height}: the welcome box opens", lantern.find("白紙の文書", "table cell",
                                                                                 exact=False, timeout=20) is not None):
                return
            audit(lantern, "welcome", width, height)
            for button, window, pause, view in STEPS:
                role = "table cell" if button == "白紙の文書" else "push button"
                lantern.click_named(button, role, exact=role == "push button", window=window, pause=pause)
                if view:
                    audit(lantern, view, width, height)

        # The character greets the user over the welcome box.
        write_settings(graphic="True")
        with Screen(width, height) as lantern:
            lantern.find("白紙の文書", "table cell", exact=False, timeout=20)
            lantern.wait_until(lambda: len([w for w in lantern.app if w is not None and lantern.showing(w)]) > 1, 10)
            audit(lantern, "greeting", width, height)
            # It keeps clear of the document's buttons, and steps aside for the pad.
            for button, window, pause, view in STEPS[1:4]:
                role = "table cell" if button == "白紙の文書" else "push button"
                lantern.click_named(button, role, exact=role == "push button", window=window, pause=pause)
                if view:
                    audit(lantern, f"character-{view}", width, height)
            # Sent home by the information bar's 閉じる, it stays on its perch.
            lantern.click_named("閉じる", window=PAD, pause=0.8)
            lantern.click_named("閉じる", window=MAIN, pause=2.0)
            audit(lantern, "character-home", width, height)
    journey.__name__ = f"views_at_{width}x{height}"
    return journey


if __name__ == "__main__":
    driver.run([views_at(width, height) for width, height in SIZES])
