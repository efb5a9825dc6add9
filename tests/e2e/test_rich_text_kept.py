"""What the user wrote comes back as it was, operated with the mouse on the
real program: text holding backslash sequences, a document file whose body
breaks lines right after control words, and a large bullet. Each saved file is
read back with rtfconv, the program's own RTF reader. Screenshots go to
$LANTERN_BUILD_DIR/screenshots/."""
import os
import re
import shutil
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
import isolation  # noqa: E402,F401  (run by hand, the script starts again in temporary folders)

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import driver  # noqa: E402
from checks import check, summary  # noqa: E402

WIDTH, HEIGHT = 1366, 768
PATH_TEXT = "保存先 C:\\ulrich\\docs です"


def rtfconv(option, path):
    conv = os.path.join(os.environ["LANTERN_PROGRAM_DIR"], "rtfconv")
    done = subprocess.run([conv, option, path], capture_output=True, timeout=30)
    return done.stdout.decode("utf-8", errors="replace").removesuffix("\n")


def only_new_file(before):
    files = [f for f in driver.document_files() if f not in before]
    return files[0] if len(files) == 1 else None


def start_new_document(lantern):
    """The blank template from the welcome box; returns the editor."""
    # The welcome box may still be on its recent list.
    if lantern.find("履歴", "push button", timeout=3) is not None:
        lantern.click_named("新規作成")
    template = lantern.find("白紙の文書", "table cell", exact=False, timeout=20)
    if not check("the welcome box offers the blank document", template is not None):
        return None
    lantern.click(template)
    editor = lantern.editor()
    if not check("the new document opens in its editor", editor is not None):
        lantern.screenshot("rich-text-kept-no-editor")
        return None
    lantern.click(editor)
    return editor


def save_titled(lantern, title):
    """Types the title, then saves and closes the document."""
    title_field = lantern.find("タイトル", "text")
    if title_field is not None:
        lantern.click(title_field)
        lantern.type(title)
        check(f"the title field holds '{title}'", lantern.wait_text(title_field, title), lantern.text_of(title_field))
    lantern.click_named("保存して閉じる")


def reopen(lantern, title):
    """Opens the document from the recent list; returns its editor."""
    lantern.click_named("履歴")
    cell = lantern.find(title, "table cell")
    if not check(f"the recent list shows '{title}'", cell is not None):
        return None
    lantern.click(cell)
    return lantern.editor()


def backslash_text_journey(lantern):
    before = driver.document_files()
    editor = start_new_document(lantern)
    if editor is None:
        return
    lantern.type(PATH_TEXT)
    lantern.screenshot("rich-text-kept-path-typed")
    check("the editor shows the typed path", lantern.wait_text(editor, PATH_TEXT), repr(lantern.text_of(editor)))
    save_titled(lantern, "Path")
    saved = only_new_file(before)
    if not check("saving writes the document", saved is not None, driver.document_files()):
        return
    print("saved as", saved)
    check("the saved file reads back as the typed text", rtfconv("--text", saved) == PATH_TEXT,
          repr(rtfconv("--text", saved)))

    editor = reopen(lantern, "Path")
    shown = lantern.text_of(editor) if editor else None
    check("the reopened document shows the typed text", shown == PATH_TEXT, repr(shown))
    lantern.screenshot("rich-text-kept-path")
    lantern.click_named("保存して閉じる")
    check("saved again, it still reads as the typed text", rtfconv("--text", saved) == PATH_TEXT,
          repr(rtfconv("--text", saved)))


def write_broken_lines_document():
    """A document file whose body breaks lines right after \\par and \\b."""
    body = ("{\\rtf1\\ansi\\ansicpg932\\deff0{\\fonttbl{\\f0\\fnil\\fcharset128 MS Gothic;}}\r\n"
            "\\viewkind4\\uc1\\pard\\f0\\fs24 First\\par\r\n"
            "Second\\par\r\n"
            "plain \\b\r\n"
            "bold\\b0  end\\par\r\n"
            "}")
    return driver.write_document("20260102030405.TXT", "Lines", body)


def broken_lines_journey(lantern, path):
    editor = reopen(lantern, "Lines")
    shown = lantern.text_of(editor) if editor else None
    check("the opened file shows 'Second' and 'bold' as words", shown == "First\nSecond\nplain bold end", repr(shown))
    if editor is None:
        return
    lantern.click(editor)
    lantern.xdotool("key", "ctrl+End")
    lantern.type(" more")
    lantern.click_named("保存して閉じる")
    text = rtfconv("--text", path)
    check("saved, the file still reads them", text == "First\nSecond\nplain bold end more", repr(text))


def bullet_box(lantern, editor, shot):
    """The bullet's ink in the screenshot, as (width, height): the part of the
    first line left of its first character."""
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


def bullet_journey(lantern):
    before = driver.document_files()
    editor = start_new_document(lantern)
    if editor is None:
        return
    lantern.click_named("大きく")
    lantern.click_named("大きく")
    lantern.click_named("行頭に記号")
    lantern.click(editor)
    lantern.xdotool("key", "ctrl+End")
    lantern.type("Big item")
    lantern.move_away()
    time.sleep(0.8)
    shot = lantern.screenshot("rich-text-kept-bullet-before")
    typed = bullet_box(lantern, editor, shot)
    check("the bullet shows before saving", typed is not None and typed[1] > 0, typed)
    save_titled(lantern, "Bullet")
    saved = only_new_file(before)
    if not check("saving writes the document", saved is not None, driver.document_files()):
        return

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

    editor = reopen(lantern, "Bullet")
    if editor is None:
        return
    lantern.move_away()
    time.sleep(0.8)
    shot = lantern.screenshot("rich-text-kept-bullet-reopened")
    reopened = bullet_box(lantern, editor, shot)
    print("bullet ink (width, height) before saving", typed, "after reopening", reopened)
    check("the reopened bullet is as large as before saving",
          typed is not None and reopened is not None and abs(reopened[1] - typed[1]) <= 1
          and abs(reopened[0] - typed[0]) <= 1, (typed, reopened))
    lantern.click_named("保存して閉じる")


def main():
    for tool in ("Xvfb", "xdotool", "dbus-run-session", "convert"):
        if not shutil.which(tool):
            print("missing", tool)
            return 77
    driver.own_session()
    driver.write_settings()
    lines = write_broken_lines_document()
    with driver.Screen(WIDTH, HEIGHT) as lantern:
        if check("the program shows up on the accessibility bus", lantern.app is not None):
            lantern.find("スタート", timeout=20)
            journeys = (backslash_text_journey, lambda on: broken_lines_journey(on, lines), bullet_journey)
            for number, journey in enumerate(journeys, 1):
                try:
                    journey(lantern)
                except RuntimeError as missing:
                    lantern.screenshot(f"rich-text-kept-stopped-{number}")
                    check(f"journey {number}: {missing}", False)
            lantern.click_named("終了")
            check("the program ends from its quit button", lantern.wait_exit(20) == 0)
    return summary()


if __name__ == "__main__":
    sys.exit(main())
