# What the user wrote comes back as it was, operated with the mouse on the
# real program: text holding backslash sequences, a document file whose body
# breaks lines right after control words, and a large bullet. Each saved file is
# read back with rtfconv, the program's own RTF reader.
import os
import re
import subprocess
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import driver  # noqa: E402
from checks import check  # noqa: E402
from driver import Screen, rtfconv  # noqa: E402

PATH_TEXT = "保存先 C:\\ulrich\\docs です"


def backslash_text_is_kept():
    with Screen(1366, 768) as lantern:
        editor = lantern.open_blank(PATH_TEXT)
        check("the editor shows the typed path", lantern.wait_text(editor, PATH_TEXT), repr(lantern.text_of(editor)))
        saved = lantern.save_titled("Path")
        check("the saved file reads back as the typed text", rtfconv("--text", saved) == PATH_TEXT,
              repr(rtfconv("--text", saved)))
        editor = lantern.reopen("Path")
        shown = lantern.text_of(editor) if editor else None
        check("the reopened document shows the typed text", shown == PATH_TEXT, repr(shown))
        lantern.click_named("保存して閉じる")
        check("saved again, it still reads as the typed text", rtfconv("--text", saved) == PATH_TEXT,
              repr(rtfconv("--text", saved)))


def lines_broken_after_control_words_are_read():
    body = ("{\\rtf1\\ansi\\ansicpg932\\deff0{\\fonttbl{\\f0\\fnil\\fcharset128 MS Gothic;}}\r\n"
            "\\viewkind4\\uc1\\pard\\f0\\fs24 First\\par\r\n"
            "Second\\par\r\n"
            "plain \\b\r\n"
            "bold\\b0  end\\par\r\n"
            "}")
    path = driver.write_document("20260102030405.TXT", "Lines", body)
    with Screen(1366, 768) as lantern:
        editor = lantern.reopen("Lines")
        shown = lantern.text_of(editor) if editor else None
        check("the opened file shows 'Second' and 'bold' as words", shown == "First\nSecond\nplain bold end", repr(shown))
        lantern.append(editor, " more")
        lantern.click_named("保存して閉じる")
        text = rtfconv("--text", path)
        check("saved, the file still reads them", text == "First\nSecond\nplain bold end more", repr(text))
        lantern.click_named("終了")
        check("the program ends from its quit button", lantern.wait_exit(20) == 0)


def bullet_box(lantern, editor, name):
    # The bullet's ink on the screen, as (width, height): the part of the
    # first line left of its first character.
    lantern.move_away()
    time.sleep(0.8)
    shot = lantern.screenshot(name)
    x, y, w, h = lantern.extents(editor)
    cx, cy, cw, ch = editor.queryText().getCharacterExtents(0, lantern.pyatspi.DESKTOP_COORDS)
    left = max(x, cx - 60)
    if cx - left < 4 or ch <= 0:
        return None
    geometry = subprocess.run(["convert", shot, "-crop", f"{cx - left - 2}x{ch}+{left}+{cy}", "+repage",
                               "-colorspace", "Gray", "-threshold", "60%", "-format", "%@", "info:"],
                              capture_output=True, text=True).stdout
    match = re.match(r"(\d+)x(\d+)", geometry)
    return (int(match.group(1)), int(match.group(2))) if match else None


def a_large_bullet_keeps_its_size():
    with Screen(1366, 768) as lantern:
        editor = lantern.open_blank("")
        for button in ("大きく", "大きく", "行頭に記号"):
            lantern.click_named(button)
        lantern.append(editor, "Big item")
        typed = bullet_box(lantern, editor, "rich-text-kept-bullet-before")
        check("the bullet shows before saving", typed is not None and typed[1] > 0, typed)
        saved = lantern.save_titled("Bullet")

        body = driver.read_document(saved)[2]
        text_size = re.search(r"\\fs(\d+) ?Big item", body)
        bullet_size = re.search(r"\{\\pntext\\f\d+\\fs(\d+)\\'B7\\tab\}", body)
        check("the text is larger than plain", text_size is not None and int(text_size.group(1)) > 24, body[:400])
        check("the bullet is saved at its paragraph's size",
              text_size is not None and bullet_size is not None and bullet_size.group(1) == text_size.group(1),
              body[:400])
        again = rtfconv("--rtf", saved)
        check("read back, the bullet keeps that size",
              text_size is not None and f"\\pnfs{text_size.group(1)}" in again
              and f"\\fs{text_size.group(1)}\\'B7" in again, again[:400])

        reopened = bullet_box(lantern, lantern.reopen("Bullet"), "rich-text-kept-bullet-reopened")
        check("the reopened bullet is as large as before saving",
              typed is not None and reopened is not None and abs(reopened[1] - typed[1]) <= 1
              and abs(reopened[0] - typed[0]) <= 1, (typed, reopened))


if __name__ == "__main__":
    driver.run([backslash_text_is_kept, lines_broken_after_control_words_are_read, a_large_bullet_keeps_its_size],
               tools=("convert",))
