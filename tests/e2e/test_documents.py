# The document flow of the real program, operated with the mouse as a person
# does it: the controls are found through the accessibility bus and clicked with
# real pointer events (xdotool) on a private X server. Files on disk are checked
# after every step.
import os
import re
import subprocess
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import driver  # noqa: E402  (run by hand, the script starts again in temporary folders)
from checks import check  # noqa: E402
from driver import Screen, document_files, read_document  # noqa: E402

SETTINGS_CLOSE = "クリックすると、[設定] ウィンドウを閉じます。"


def answer_yes(lantern, what):
    yes = lantern.find("はい", "push button")
    if check(f"{what} asks first", yes is not None):
        lantern.click(yes)


def saving_reopening_copying_reverting_deleting_quitting():
    with Screen(1366, 768) as lantern:
        # A new document from the template: text, title, save.
        lantern.open_blank("Hello Lantern")
        original = lantern.save_titled("Trip 旅行")
        doc_title, stamp, body = read_document(original)
        check("its header has the title in code page 932", doc_title == "Trip 旅行", doc_title)
        check("its header has the save time, the file name's time", driver.named_by_its_time(original, stamp), stamp)
        check("its body holds the typed text", "Hello Lantern" in body, body[:200])

        # The recent list shows it with its title and time of day.
        lantern.click_named("履歴")
        cell = lantern.find("Trip 旅行", "table cell")
        check("the recent list shows the title", cell is not None)
        time_cell = lantern.find_all(lambda n: n.getRoleName() == "table cell"
                                     and re.fullmatch(r"\d{1,2}:\d\d:\d\d", n.name or ""))
        check("the recent list shows the save time", [n.name for n in time_cell] == [str(int(stamp[11:13])) + stamp[13:]],
              [n.name for n in time_cell])

        # Reopened, copied.
        lantern.click(cell)
        title = lantern.find("タイトル", "text")
        check("the reopened document shows its title", title is not None and lantern.text_of(title) == "Trip 旅行")
        lantern.click_named("コピー")
        titles = sorted(read_document(f)[0] for f in document_files())
        check("copying adds a second file titled (コピー)", titles == ["(コピー)", "Trip 旅行"], titles)
        copy = [f for f in document_files() if f != original]

        # Reverted after a question: the extra words are gone.
        lantern.append(lantern.editor(), " extra words")
        lantern.click_named("元に戻す")
        answer_yes(lantern, "reverting")
        editor = lantern.editor()
        check("the reverted document has lost the new words",
              editor is not None and "extra words" not in lantern.text_of(editor), editor and lantern.text_of(editor))

        # Deleted after the question: the copy's file goes.
        lantern.click_named("削除")
        answer_yes(lantern, "deleting")
        files = document_files()
        check("the copy is deleted, the original stays", files == [original] and copy and not os.path.exists(copy[0]),
              files)
        check("the welcome box comes back", lantern.find("スタート") is not None)

        # The settings box.
        lantern.click_named("設定")
        close = lantern.by_description(SETTINGS_CLOSE)
        if check("the settings box can be closed", close is not None):
            lantern.click(close)

        # Quitting from the main button saves what is open.
        lantern.reopen("Trip 旅行")
        lantern.append(lantern.editor(), " more")
        lantern.click_named("終了")
        status = lantern.wait_exit(20)
        check("the quit button ends the program", status == 0, status)
        doc_title, _, body = read_document(original)
        check("quitting saved the open document", "more" in body and doc_title == "Trip 旅行", body[:200])
        check("only the one document is left", document_files() == [original], document_files())


def other_programs_may_only_ask_it_to_close():
    # Over the session bus anything but [X] and [QUIT] is refused.
    def execute(command):
        reply = subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=jp.fernwick.Lantern",
                                "/Lantern", "jp.fernwick.Lantern.Execute", f"string:{command}"],
                               capture_output=True, text=True, timeout=10)
        return reply.stdout.split()[-1] if reply.returncode == 0 and reply.stdout.split() else reply.stderr

    with Screen(1920, 1080) as lantern:
        lantern.find("スタート", timeout=20)
        check("a foreign command is refused", execute("[FOO]") == "false")
        check("the program keeps running after it", lantern.process.poll() is None)
        check("[QUIT] is accepted", execute("[QUIT]") == "true")
        check("the program ends at 1920x1080", lantern.wait_exit(20) == 0)


if __name__ == "__main__":
    driver.run([saving_reopening_copying_reverting_deleting_quitting, other_programs_may_only_ask_it_to_close])
