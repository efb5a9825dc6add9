"""The document flow of the real program, operated with the mouse as a person
does it: the controls are found through the accessibility bus and clicked with
real pointer events (xdotool) on a private X server. Files on disk are checked
after every step. Screenshots at 1366x768 and 1920x1080 go to
$LANTERN_BUILD_DIR/screenshots/."""
import os
import re
import shutil
import subprocess
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import driver  # noqa: E402  (run by hand, the script starts again in temporary folders)

driver.own_session()

from checks import check, summary  # noqa: E402
from driver import Lantern, document_files, read_document, start_display, write_settings  # noqa: E402


def documents_scenario(width, height):
    xvfb, display = start_display(width, height)
    lantern = None
    try:
        lantern = Lantern(display)
        if not check("the program shows up on the accessibility bus", lantern.app is not None):
            return
        tag = f"{width}x{height}"
        template = lantern.find("白紙の文書", "table cell", exact=False, timeout=20)
        check("the welcome box offers the blank document", template is not None)
        lantern.find("スタート", exact=True)
        time.sleep(1)
        lantern.screenshot(f"welcome-{tag}")

        # A new document from the template: text, title, save.
        lantern.click(template)
        editor = lantern.editor()
        if not check("the document opens in its editor", editor is not None):
            return
        lantern.click(editor)
        lantern.type("Hello Lantern")
        title = lantern.find("タイトル", "text")
        check("the title field is there", title is not None)
        lantern.click(title)
        lantern.type("Trip 旅行")
        check("the title field holds the typed title", lantern.wait_text(title, "Trip 旅行"), lantern.text_of(title))
        lantern.screenshot(f"document-{tag}")
        lantern.click_named("保存して閉じる")
        files = document_files()
        check("saving writes one file", len(files) == 1, files)
        if not files:
            return
        original = files[0]
        name_time = os.path.basename(original)[:14]
        doc_title, stamp, body = read_document(original)
        check("its header has the title in code page 932", doc_title == "Trip 旅行", doc_title)
        check("its header has the save time, the file name's time",
              stamp is not None and stamp.replace("-", "").replace(" ", "").replace(":", "") == name_time, stamp)
        check("its body holds the typed text", "Hello Lantern" in body, body[:200])

        # The recent list shows it with its title and time of day.
        lantern.click_named("履歴")
        cell = lantern.find("Trip 旅行", "table cell")
        check("the recent list shows the title", cell is not None)
        time_cell = [n for n in lantern.nodes() if n.getRoleName() == "table cell"
                     and re.fullmatch(r"\d{1,2}:\d\d:\d\d", n.name or "")]
        check("the recent list shows the save time", len(time_cell) == 1
              and time_cell[0].name == str(int(stamp[11:13])) + stamp[13:], [n.name for n in time_cell])
        lantern.screenshot(f"recent-{tag}")

        # Reopened, copied.
        lantern.click(cell)
        title = lantern.find("タイトル", "text")
        check("the reopened document shows its title", title is not None and lantern.text_of(title) == "Trip 旅行")
        lantern.click_named("コピー")
        files = document_files()
        titles = sorted(read_document(f)[0] for f in files)
        check("copying adds a second file titled (コピー)", titles == ["(コピー)", "Trip 旅行"], titles)
        copy = [f for f in files if f != original]

        # Reverted after a question: the extra words are gone.
        editor = lantern.editor()
        lantern.click(editor)
        lantern.xdotool("key", "ctrl+End")
        lantern.type(" extra words")
        lantern.click_named("元に戻す")
        yes = lantern.find("はい", "push button")
        check("reverting asks first", yes is not None)
        if yes:
            lantern.click(yes)
        editor = lantern.editor()
        check("the reverted document has lost the new words",
              editor is not None and "extra words" not in lantern.text_of(editor), lantern.text_of(editor) if editor else "")

        # Deleted after the question: the copy's file goes.
        lantern.click_named("削除")
        yes = lantern.find("はい", "push button")
        check("deleting asks first", yes is not None)
        if yes:
            lantern.click(yes)
        files = document_files()
        check("the copy is deleted, the original stays", files == [original] and copy and not os.path.exists(copy[0]),
              files)
        check("the welcome box comes back", lantern.find("スタート") is not None)

        # The settings box.
        lantern.click_named("設定")
        time.sleep(0.5)
        lantern.screenshot(f"settings-{tag}")
        close = [n for n in lantern.nodes() if n.getRoleName() == "push button" and lantern.showing(n)
                 and n.description == "クリックすると、[設定] ウィンドウを閉じます。"]
        check("the settings box can be closed", bool(close))
        if close:
            lantern.click(close[0])

        # Quitting from the main button saves what is open.
        lantern.click_named("履歴")
        lantern.click(lantern.find("Trip 旅行", "table cell"))
        editor = lantern.editor()
        lantern.click(editor)
        lantern.xdotool("key", "ctrl+End")
        lantern.type(" more")
        lantern.click_named("終了")
        status = lantern.wait_exit(20)
        check("the quit button ends the program", status == 0, status)
        doc_title, stamp2, body = read_document(original)
        check("quitting saved the open document", "more" in body and doc_title == "Trip 旅行", body[:200])
        check("only the one document is left", document_files() == [original], document_files())
    finally:
        if lantern:
            lantern.kill()
        xvfb.terminate()
        xvfb.wait()


def screenshots_only(width, height):
    xvfb, display = start_display(width, height)
    lantern = None
    try:
        lantern = Lantern(display)
        if not check(f"the program starts at {width}x{height}", lantern.app is not None):
            return
        tag = f"{width}x{height}"
        template = lantern.find("白紙の文書", "table cell", exact=False, timeout=20)
        time.sleep(1)
        lantern.screenshot(f"welcome-{tag}")
        lantern.click_named("履歴")
        lantern.screenshot(f"recent-{tag}")
        lantern.click_named("新規作成")
        lantern.click(template)
        editor = lantern.editor()
        if editor:
            lantern.click(editor)
            lantern.type("Kyou wa ii tenki desu.")
        lantern.screenshot(f"document-{tag}")
        lantern.click_named("保存して閉じる")
        lantern.click_named("設定")
        lantern.screenshot(f"settings-{tag}")
        close = [n for n in lantern.nodes() if n.getRoleName() == "push button" and lantern.showing(n)
                 and n.description == "クリックすると、[設定] ウィンドウを閉じます。"]
        if close:
            lantern.click(close[0])

        # Other programs may ask it to close over the session bus; anything but
        # [X] and [QUIT] is refused.
        def execute(command):
            reply = subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=jp.fernwick.Lantern",
                                    "/Lantern", "jp.fernwick.Lantern.Execute", f"string:{command}"],
                                   capture_output=True, text=True, timeout=10)
            return reply.stdout.split()[-1] if reply.returncode == 0 and reply.stdout.split() else reply.stderr
        check("a foreign command is refused", execute("[FOO]") == "false")
        check("the program keeps running after it", lantern.process.poll() is None)
        check("[QUIT] is accepted", execute("[QUIT]") == "true")
        check(f"the program ends at {width}x{height}", lantern.wait_exit(20) == 0)
    finally:
        if lantern:
            lantern.kill()
        xvfb.terminate()
        xvfb.wait()


def main():
    for tool in ("Xvfb", "xdotool", "dbus-run-session"):
        if not shutil.which(tool):
            print("missing", tool)
            return 77
    write_settings()
    documents_scenario(1366, 768)
    screenshots_only(1920, 1080)
    return summary()


if __name__ == "__main__":
    sys.exit(main())
