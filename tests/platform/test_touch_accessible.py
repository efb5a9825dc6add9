"""Finds the touch controls of the gallery window through AT-SPI, the way a
screen reader or a test driver does: by role, caption (name) and tip
(description)."""
import os
import subprocess
import sys
import time

import pyatspi

EXPECTED = [
    ("push button", "設定", "クリックすると、[設定] ウィンドウを開きます。背景とユーザー補助の情報を変更できます。"),
    ("push button", "印刷", "クリックすると、表示されているドキュメントを印刷します。まずはプリンタの準備をしておいてください。"),
    ("check box", "クリックしたら常に [文字入力] で編集する", ""),
    ("filler", "スタート", "ドラッグしながら移動できます"),
    ("text", "タイトルを入力してください", ""),
]


def find_application(name, seconds):
    deadline = time.time() + seconds
    while time.time() < deadline:
        for app in pyatspi.Registry.getDesktop(0):
            if app is not None and app.name == name:
                return app
        time.sleep(0.2)
    return None


def nodes(root):
    for child in root:
        if child is None:
            continue
        yield child
        yield from nodes(child)


def main():
    # A screen and a bus of its own: the accessibility bus is announced on the
    # screen's root window, so suites running beside this one must not share
    # either.
    if not os.environ.get("LANTERN_PRIVATE_BUS"):
        os.environ["LANTERN_PRIVATE_BUS"] = "1"
        os.environ.pop("DISPLAY", None)
        os.environ.pop("DBUS_SESSION_BUS_ADDRESS", None)
        session = os.path.join(os.environ["LANTERN_SOURCE_DIR"], "scripts", "with-session.sh")
        os.execvp("bash", ["bash", session, sys.executable, os.path.abspath(__file__)])
    if not os.environ.get("DISPLAY") or not os.environ.get("DBUS_SESSION_BUS_ADDRESS"):
        print("needs an X display and a session bus: run through scripts/with-session.sh")
        return 1
    program = os.path.join(os.environ["LANTERN_BUILD_DIR"], "tests", "test_touchgallery_platform")
    env = dict(os.environ, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
               LANTERN_GALLERY_HOLD_MS="45000",
               LANTERN_GALLERY=os.path.join(os.environ.get("LANTERN_TEST_ROOT", "/tmp"), "gallery.png"))
    gallery = subprocess.Popen([program, "-silent"], env=env)
    failures = []
    try:
        app = find_application("test_touchgallery_platform", 40)
        if app is None:
            print("the gallery never showed up on the accessibility bus")
            # A gallery that could not even start says nothing about the
            # controls: that is the machine, reported as a skip.
            return 77 if gallery.poll() is not None else 1
        # The window is built before it is shown; give its tree a moment.
        found = []
        for _ in range(50):
            found = [(n.getRoleName(), n.name, n.description) for n in nodes(app)]
            if all(e[:2] in [f[:2] for f in found] for e in EXPECTED):
                break
            time.sleep(0.2)
        for role, name, description in EXPECTED:
            matches = [f for f in found if f[0] == role and f[1] == name]
            if not matches:
                failures.append(f"no {role} named {name!r}")
            elif matches[0][2] != description:
                failures.append(f"{role} {name!r} describes itself as {matches[0][2]!r}")
        for node in nodes(app):
            if node.name == "クリックしたら常に [文字入力] で編集する":
                if not node.getState().contains(pyatspi.STATE_CHECKED):
                    failures.append("the ticked check box is not reported as checked")
            if node.name == "電卓" and not node.getState().contains(pyatspi.STATE_PRESSED):
                failures.append("the pressed calculator button is not reported as pressed")
    finally:
        gallery.kill()
        gallery.wait()
    for failure in failures:
        print("FAIL:", failure)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
