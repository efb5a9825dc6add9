"""Typing Japanese into a document of the real program with the mouse alone:
the on-screen pad drives the real IBus with Mozc. The session (its own X
server, bus, IBus and Mozc) runs as an unprivileged user, since Mozc refuses
root; the controls are found through the accessibility bus and clicked with
real pointer events. The saved file is checked for the code page 932 bytes."""
import glob
import os
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
import isolation  # noqa: E402,F401  (run by hand, the script starts again in temporary folders)

if not os.environ.get("LANTERN_IBUS_SESSION"):
    session = os.path.join(os.environ["LANTERN_SOURCE_DIR"], "scripts", "ibus-session.sh")
    # The session's user must be able to read this script and the program.
    os.execvp("bash", ["bash", session, sys.executable, os.path.abspath(__file__)])

import pyatspi  # noqa: E402

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from checks import check, summary  # noqa: E402

PROGRAM = os.path.join(os.environ["LANTERN_PROGRAM_DIR"], "lantern")
HOME = os.environ["HOME"]
def nodes(root):
    for child in root:
        if child is None:
            continue
        yield child
        yield from nodes(child)


def showing(node):
    return node.getState().contains(pyatspi.STATE_SHOWING)


def find(apps, name, role=None, timeout=15):
    deadline = time.time() + timeout
    while time.time() < deadline:
        for app in apps():
            for node in nodes(app):
                if node.name == name and (role is None or node.getRoleName() == role) and showing(node):
                    return node
        time.sleep(0.2)
    return None


def click(node, pause=0.5):
    x, y, w, h = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    subprocess.run(["xdotool", "mousemove", "--sync", str(x + w // 2), str(y + h // 2)], check=False)
    time.sleep(0.1)
    subprocess.run(["xdotool", "click", "1"], check=False)
    time.sleep(pause)


def text_of(node):
    t = node.queryText()
    return t.getText(0, t.characterCount)


def main():
    config = os.path.join(HOME, ".config")
    os.makedirs(config, exist_ok=True)
    with open(os.path.join(config, "Fernwick Nib 2007.ini"), "w", encoding="utf-8") as ini:
        ini.write("[Skin Settings]\nGraphic=False\nMusic=False\n[Settings]\nSmart Pencil=False\n")
    env = dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
               LANTERN_POWER_CONTROL="record:" + os.path.join(HOME, "power.log"))
    log = open(os.path.join(HOME, "lantern.log"), "w")
    program = subprocess.Popen([PROGRAM], env=env, stdout=log, stderr=log)

    def apps():
        return [a for a in pyatspi.Registry.getDesktop(0) if a is not None and a.name == "Fernwick Nib 2007"]

    try:
        template = find(apps, "白紙の文書", timeout=40) or find(apps, "白紙の文書\n何も書かれていない新しいドキュメントを作ります。")
        if template is None:
            template = next((n for a in apps() for n in nodes(a)
                             if n.getRoleName() == "table cell" and "白紙の文書" in (n.name or "")), None)
        if not check("the welcome box offers the blank document", template is not None):
            return 1
        click(template)
        editor = next((n for a in apps() for n in nodes(a) if n.getRoleName() in ("text", "paragraph")
                       and showing(n) and n.getState().contains(pyatspi.STATE_MULTI_LINE)), None)
        if not check("the document opens in its editor", editor is not None):
            return 1
        click(editor)

        pad_button = find(apps, "文字入力", "push button")
        check("the main button opens the input pad", pad_button is not None)
        click(pad_button, 1.0)
        for name in ("あ", "漢字"):
            button = find(apps, name)
            if not check(f"the pad shows '{name}'", button is not None):
                return 1
            click(button, 1.0)
        for kana in "にほんご":
            key = find(apps, kana)
            if not check(f"the hiragana pad has '{kana}'", key is not None):
                return 1
            click(key, 0.4)
        click(find(apps, "変換"), 1.0)
        click(find(apps, "確定"), 1.0)
        deadline = time.time() + 5
        while time.time() < deadline and "日本語" not in text_of(editor):
            time.sleep(0.2)
        check("に ほ ん ご, convert, apply puts 日本語 in the document", "日本語" in text_of(editor), text_of(editor))

        # With the input method off the same keys type kana directly.
        click(find(apps, "漢字"), 1.0)
        for kana in "にほんご":
            click(find(apps, kana), 0.4)
        time.sleep(1)
        check("with the input method off the keys type にほんご", "日本語にほんご" in text_of(editor), text_of(editor))

        # The pad floats over the lower part of the screen: close it with its
        # own button before reaching for the side bar.
        pad_close = next((n for a in apps() for w in a if w is not None and w.name == "文字入力"
                          for n in nodes(w) if n.name == "閉じる" and showing(n)), None)
        check("the pad has its own close button", pad_close is not None)
        if pad_close is not None:
            click(pad_close, 1.0)
        save = find(apps, "保存して閉じる")
        check("the side bar offers to save", save is not None)
        click(save, 0.5)
        pattern = os.path.join(os.environ.get("XDG_DATA_HOME", os.path.join(HOME, ".local", "share")),
                               "Fernwick", "Nib", "*.TXT")
        deadline = time.time() + 10
        while time.time() < deadline and not glob.glob(pattern):
            time.sleep(0.2)
        files = glob.glob(pattern)
        if not files:
            subprocess.run(["/usr/bin/import", "-window", "root", os.path.join(HOME, "unsaved.png")], check=False)
        check("saving writes one file", len(files) == 1, files)
        if files:
            body = open(files[0], "rb").read()
            check("the file holds 日本語 as code page 932 bytes", b"\\'93\\'fa\\'96\\'7b\\'8c\\'ea" in body, body[:300])
            check("and にほんご too", b"\\'82\\'c9\\'82\\'d9\\'82\\'f1\\'82\\'b2" in body, body[:300])
    finally:
        program.terminate()
        try:
            program.wait(15)
        except subprocess.TimeoutExpired:
            program.kill()
    return summary()


if __name__ == "__main__":
    sys.exit(main())
