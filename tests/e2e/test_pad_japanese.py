# Typing Japanese into a document of the real program with the mouse alone:
# the on-screen pad drives the real input method with Mozc, IBus or Fcitx 5
# as LANTERN_IM_FRAMEWORK says (IBus unless told). The session (its own X
# server, bus, framework and Mozc) runs as an unprivileged user, since Mozc
# refuses root; the controls are found through the accessibility bus and
# clicked with real pointer events. The saved file is checked for the code
# page 932 bytes.
import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
import isolation  # noqa: E402,F401  (run by hand, the script starts again in temporary folders)

if not os.environ.get("LANTERN_IM_SESSION"):
    session = os.path.join(os.environ["LANTERN_SOURCE_DIR"], "scripts", "im-session.sh")
    framework = os.environ.get("LANTERN_IM_FRAMEWORK") or "ibus"
    # The session's user must be able to read this script and the program;
    # the session exits with 77 (a skip) where the framework is missing.
    os.execvp("bash", ["bash", session, framework, sys.executable, os.path.abspath(__file__)])

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import driver  # noqa: E402
from checks import check, summary  # noqa: E402

PAD = "文字入力"


def click_keys(lantern, names, pause):
    for name in names:
        key = lantern.find(name, window=PAD)
        if not check(f"the pad shows '{name}'", key is not None):
            raise RuntimeError(f"no '{name}' on the pad")
        lantern.click(key, pause)


def typing_japanese(lantern):
    editor = lantern.open_blank("", timeout=40)
    lantern.click_named(PAD, "push button", pause=1.0)
    click_keys(lantern, ("あ", "漢字"), 1.0)
    click_keys(lantern, "にほんご", 0.4)
    click_keys(lantern, ("変換", "確定"), 1.0)
    lantern.wait_until(lambda: "日本語" in lantern.text_of(editor))
    check("に ほ ん ご, convert, apply puts 日本語 in the document", "日本語" in lantern.text_of(editor),
          lantern.text_of(editor))

    # With the input method off the same keys type kana directly.
    click_keys(lantern, ("漢字",), 1.0)
    click_keys(lantern, "にほんご", 0.4)
    lantern.wait_until(lambda: "日本語にほんご" in lantern.text_of(editor), 1)
    check("with the input method off the keys type にほんご", "日本語にほんご" in lantern.text_of(editor),
          lantern.text_of(editor))

    # The pad floats over the lower part of the screen: close it with its own
    # button before reaching for the side bar.
    lantern.click_named("閉じる", window=PAD, pause=1.0)
    lantern.click_named("保存して閉じる")
    lantern.wait_until(driver.document_files, 10)
    files = driver.document_files()
    check("saving writes one file", len(files) == 1, files)
    if files:
        body = open(files[0], "rb").read()
        check("the file holds 日本語 as code page 932 bytes", b"\\'93\\'fa\\'96\\'7b\\'8c\\'ea" in body, body[:300])
        check("and にほんご too", b"\\'82\\'c9\\'82\\'d9\\'82\\'f1\\'82\\'b2" in body, body[:300])


def only_framework_running():
    """The session's framework is the one input method of this user: the
    conversion below cannot come from another."""
    daemons = {"ibus-daemon": "ibus", "fcitx5": "fcitx5"}
    home = ("HOME=" + os.environ["HOME"]).encode()
    running = set()
    # Other sessions may run as the same user: ours share our HOME.
    for pid in filter(str.isdigit, os.listdir("/proc")):
        try:
            name = open(f"/proc/{pid}/comm").read().strip()
            ours = home in open(f"/proc/{pid}/environ", "rb").read().split(b"\0")
        except OSError:
            continue
        if name in daemons and ours:
            running.add(daemons[name])
    session = os.environ["LANTERN_IM_SESSION"]
    check(f"only {session} serves the session", running == {session}, running)


def main():
    only_framework_running()
    driver.write_settings(hints=None)
    # The test's own folder belongs to another user: power requests are
    # written down in the session's home.
    os.environ["LANTERN_POWER_CONTROL"] = "record:" + os.path.join(os.environ["HOME"], "power.log")
    try:
        lantern = driver.Lantern(os.environ["DISPLAY"])
        try:
            typing_japanese(lantern)
        finally:
            lantern.kill()
    except Exception as error:
        check("the journey reached its end", False, repr(error))
    return summary()


if __name__ == "__main__":
    sys.exit(main())
