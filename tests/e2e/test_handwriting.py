# Writing kanji with the mouse: on the pad's handwriting page characters are
# drawn with real drags and their candidates clicked into a document, Smart
# Pencil reopens the pad on that page, and the saved file is read in code page
# 932. At the smallest and largest screens the page is audited like any view.
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import driver  # noqa: E402
import test_layout_audit  # noqa: E402
from checks import check  # noqa: E402
from driver import Screen, write_settings  # noqa: E402

PAD = "文字入力"
# Strokes in drawing order, in a box of 100.
DRAWINGS = {"日": [[(25, 10), (25, 90)], [(25, 10), (75, 10), (75, 90)], [(25, 50), (75, 50)], [(25, 88), (75, 88)]],
            "口": [[(30, 30), (30, 70)], [(30, 30), (70, 30), (70, 70)], [(30, 68), (70, 68)]]}


def write(lantern, character):
    # Drags the strokes through the square; the candidate offered for them.
    x, y, w, h = lantern.extents(lantern.find("手書きの枠", window=PAD))
    for stroke in DRAWINGS[character]:
        points = [(x + px * w // 100, y + py * h // 100) for px, py in stroke]
        lantern.xdotool("mousemove", "--sync", *map(str, points[0]), "mousedown", "1")
        for (ax, ay), (bx, by) in zip(points, points[1:]):
            for step in range(1, 9):
                lantern.xdotool("mousemove", "--sync", str(ax + (bx - ax) * step // 8), str(ay + (by - ay) * step // 8))
        lantern.xdotool("mouseup", "1")
    found = lantern.find_all(lambda n: n.getRoleName() == "push button" and n.name == character
                             and n.description == "候補", 5)
    check(f"{character} drawn is offered as a candidate", len(found) == 1)
    return found[0] if found else None


def writing_kanji():
    write_settings(smart_pencil="True")
    with Screen(1366, 768) as lantern:
        editor = lantern.open_blank(timeout=40)
        lantern.click(editor, pause=1.5)
        lantern.click_named("手書き", window=PAD)
        w, h = lantern.extents(lantern.find("手書きの枠", window=PAD))[2:]
        check("the square is at least 240 px at 1366x768", w >= 240 and h >= 240, (w, h))
        lantern.click(write(lantern, "日"))
        check("clicking it types 日", lantern.wait_text(editor, "日"), lantern.text_of(editor))
        lantern.click_named("閉じる", window=PAD, pause=1.0)
        lantern.click(editor, pause=1.5)
        lantern.click(write(lantern, "口"))
        check("Smart Pencil reopened the page: 口 follows", lantern.wait_text(editor, "日口"), lantern.text_of(editor))
        lantern.click_named("閉じる", window=PAD, pause=1.0)
        lantern.click_named("保存して閉じる")
        files = driver.document_files() if lantern.wait_until(driver.document_files, 10) else []
        if check("saving writes one file", len(files) == 1, files):
            body = open(files[0], "rb").read()
            check("the file holds 日口 as code page 932 bytes", b"\\'93\\'fa\\'8c\\'fb" in body, body[:300])


def page_at(width, height):
    def journey():
        with Screen(width, height) as lantern:
            lantern.open_blank(timeout=40)
            lantern.click_named(PAD, "push button", pause=1.5)
            lantern.click_named("手書き", window=PAD)
            write(lantern, "日")
            test_layout_audit.audit(lantern, "handwriting", width, height)
    journey.__name__ = f"page_at_{width}x{height}"
    return journey


if __name__ == "__main__":
    driver.run([writing_kanji, page_at(1024, 768), page_at(1920, 1080)])
