# Our private characters reach other programs: while Lantern runs, Pango (as
# every GTK program uses it) draws them from their code points; once it has
# quit, or was killed and its settings cleared with /C, it draws none.
import os
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import driver  # noqa: E402
from checks import check  # noqa: E402
from driver import PROGRAM, Screen, poll  # noqa: E402

FONT_FOLDER = os.path.join(os.path.dirname(PROGRAM), "SKIN", "USERFONT")
# The heart, the flower and the lantern.
TEXT = "\ue000\ue001\ue009"


def drawn(environment=None):
    # The PNG bytes pango-view draws the three characters as.
    with tempfile.NamedTemporaryFile(suffix=".png") as picture:
        subprocess.run(["pango-view", "-q", "--font=Noto Sans CJK JP 32", "--text=" + TEXT, "-o", picture.name],
                       env=environment, check=True, timeout=30)
        return picture.read()


def with_our_font():
    # What Pango draws when fontconfig is given our font's folder directly.
    folder = tempfile.mkdtemp()
    config = os.path.join(folder, "fonts.conf")
    with open(config, "w") as f:
        f.write(f'<?xml version="1.0"?>\n<fontconfig><include>/etc/fonts/fonts.conf</include>'
                f'<dir>{FONT_FOLDER}</dir><cachedir>{folder}</cachedir></fontconfig>\n')
    try:
        return drawn(dict(os.environ, FONTCONFIG_FILE=config))
    finally:
        shutil.rmtree(folder)


def linked_while_running():
    ours = with_our_font()
    missing = drawn()
    if not check("Pango draws the font's own glyphs, not boxes of hex digits", ours != missing):
        return

    with Screen(1024, 768) as lantern:
        check("while the program runs, Pango draws our characters",
              poll(lambda: drawn() == ours, 20), "still boxes")
        lantern.click_named("終了", timeout=20)
        check("the program ends", lantern.wait_exit(20) == 0)
    check("after it has quit, Pango draws none of them", drawn() == missing)

    with Screen(1024, 768) as lantern:
        check("started again, they are drawn again", poll(lambda: drawn() == ours, 20), "still boxes")
        lantern.kill()
    subprocess.run([PROGRAM, "/C"], check=True, timeout=30, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    check("killed, then its settings cleared with /C, Pango draws none of them", drawn() == missing)


driver.run([linked_while_running], tools=("pango-view",))
