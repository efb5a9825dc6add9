# Drives the real program the way a person does: its own X server, the
# controls found through the accessibility bus, real pointer events through
# xdotool. Shared by the end-to-end journeys; run(journeys) gives the script a
# session bus of its own (the accessibility bus comes with it).
import contextlib
import glob
import os
import re
import shutil
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
import isolation  # noqa: E402,F401  (run by hand, the script starts again in temporary folders)

from checks import check, summary  # noqa: E402

PROGRAM = os.path.join(os.environ.get("LANTERN_PROGRAM_DIR", ""), "lantern")
RTFCONV = os.path.join(os.environ.get("LANTERN_PROGRAM_DIR", ""), "rtfconv")
SHOTS = os.path.join(os.environ.get("LANTERN_BUILD_DIR", "/tmp"), "screenshots")
CONFIG = os.environ.get("XDG_CONFIG_HOME", "")
DATA = os.environ.get("XDG_DATA_HOME", "")
DOCUMENTS = os.path.join(DATA, "Fernwick", "Nib")
JOURNAL = os.path.join(os.environ.get("XDG_STATE_HOME", ""), "lantern", "recovery")
HEADER = re.compile(r'^"(.*)",#(\d{4}-\d\d-\d\d(?: \d\d:\d\d:\d\d)?)#\r\n', re.S)


def poll(probe, timeout):
    # What the probe gives first that is not empty, or the last try's result
    # once the time is up.
    deadline = time.time() + timeout
    while not (found := probe()) and time.time() < deadline:
        time.sleep(0.2)
    return found


def write_settings(graphic="False", smart_pencil="False", hints="True"):
    # By default no character and no music, hints on, Smart Pencil off; hints
    # None leaves them out.
    how_to = f"How-to={hints}\n" if hints else ""
    os.makedirs(CONFIG, exist_ok=True)
    with open(os.path.join(CONFIG, "Fernwick Nib 2007.ini"), "w", encoding="utf-8") as ini:
        ini.write(f"[Skin Settings]\nGraphic={graphic}\nMusic=False\n[Settings]\n{how_to}Smart Pencil={smart_pencil}\n")


def document_files():
    return sorted(glob.glob(os.path.join(DATA, "**", "*.TXT"), recursive=True))


def read_document(path):
    # (title, save time, body); (None, None, text) when the header does not parse.
    with open(path, "rb") as f:
        text = f.read().decode("cp932", errors="replace")
    match = HEADER.match(text)
    return (match.group(1), match.group(2), text[match.end():]) if match else (None, None, text)


def write_document(name, title, body, stamp="2026-01-02 03:04:05"):
    # A document file put into the folder as the program writes them.
    os.makedirs(DOCUMENTS, exist_ok=True)
    path = os.path.join(DOCUMENTS, name)
    with open(path, "wb") as f:
        f.write(f'"{title}",#{stamp}#\r\n'.encode("cp932") + body.encode("cp932") + b"\r\n")
    return path


def named_by_its_time(path, stamp):
    # A header's save time is the time the file is named by.
    return stamp is not None and re.sub(r"[- :]", "", stamp) == os.path.basename(path)[:14]


def rtfconv(option, path):
    # A saved document as the program's own RTF reader gives it back.
    done = subprocess.run([RTFCONV, option, path], capture_output=True, timeout=30)
    return done.stdout.decode("utf-8", errors="replace").removesuffix("\n")


def run(journeys, tools=()):
    # Each journey starts from no documents, no recovery journal and the
    # default settings, in a session bus of its own; a missing tool skips the
    # script (77).
    missing = [tool for tool in ("Xvfb", "xdotool", "dbus-run-session", *tools) if not shutil.which(tool)]
    if missing:
        print("missing", *missing)
        sys.exit(77)
    if not os.environ.get("LANTERN_E2E_SESSION"):
        os.environ["LANTERN_E2E_SESSION"] = "1"
        os.execvp("dbus-run-session", ["dbus-run-session", "--", sys.executable] + sys.argv)
    for journey in journeys:
        if os.environ.get("LANTERN_JOURNEY", journey.__name__) != journey.__name__:
            continue
        print(f"--- {journey.__name__}")
        for path in document_files() + glob.glob(os.path.join(JOURNAL, "*")):
            os.remove(path)
        write_settings()
        try:
            journey()
        except Exception as error:
            check(f"{journey.__name__} reached its end", False, repr(error))
    sys.exit(summary())


def _full_disk(limit):
    # A disk that fills up at `limit` bytes a file: writes beyond it fail
    # (SIGXFSZ ignored, which the program inherits).
    def apply():
        import resource
        import signal
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        resource.setrlimit(resource.RLIMIT_FSIZE, (limit, resource.RLIM_INFINITY))
    return apply


class Lantern:
    # The running program on one display.

    def __init__(self, display, file_size_limit=None):
        import pyatspi
        self.pyatspi = pyatspi
        self.display = display
        self.env = dict(os.environ, DISPLAY=display, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self.log = open(os.path.join(os.environ["HOME"], "lantern.log"), "a")
        self.process = subprocess.Popen([PROGRAM], env=self.env, stdout=self.log, stderr=self.log,
                                        preexec_fn=_full_disk(file_size_limit) if file_size_limit else None)

        def ours(app):
            try:
                return app.name == "Fernwick Nib 2007" and app.get_process_id() == self.process.pid
            except Exception:
                return app is not None and app.name == "Fernwick Nib 2007"
        self.app = poll(lambda: next((app for app in pyatspi.Registry.getDesktop(0) if ours(app)), None), 30)
        if self.app is None:
            self.kill()
            raise RuntimeError("the program did not show up on the accessibility bus")

    def make_room(self):
        # Lifts the file-size limit of the running program.
        import resource
        resource.prlimit(self.process.pid, resource.RLIMIT_FSIZE, (resource.RLIM_INFINITY, resource.RLIM_INFINITY))

    # ---- finding controls ----------------------------------------------

    def nodes(self, root=None):
        for child in root or self.app:
            if child is not None:
                yield child
                yield from self.nodes(child)

    def showing(self, node):
        try:
            return node.getState().contains(self.pyatspi.STATE_SHOWING)
        except Exception:
            return False

    def find(self, name, role=None, timeout=10, exact=True, window=None):
        # The first showing control with that name (and role), in a window of
        # that title when one is given.
        def matches(node):
            return ((node.name == name) if exact else (name in (node.name or ""))) \
                and (role is None or node.getRoleName() == role) and self.showing(node)
        return poll(lambda: next((node for w in self.app if w is not None and window in (None, w.name)
                                  for node in self.nodes(w) if matches(node)), None), timeout)

    def find_all(self, predicate, timeout=0):
        return poll(lambda: [n for n in self.nodes() if self.showing(n) and predicate(n)], timeout)

    def by_description(self, description, timeout=5):
        found = self.find_all(lambda n: n.getRoleName() == "push button" and n.description == description, timeout)
        return found[0] if found else None

    def editor(self, timeout=5):
        # The document's rich-text box: the showing multi-line text.
        found = self.find_all(lambda n: n.getRoleName() in ("text", "paragraph")
                              and n.getState().contains(self.pyatspi.STATE_MULTI_LINE), timeout)
        return found[0] if found else None

    def open_blank(self, text=None, timeout=20):
        # Opens the blank template from the welcome box and types the text
        # into it when one is given.
        self.click_named("白紙の文書", "table cell", exact=False, timeout=timeout)
        editor = self.editor()
        if editor is None:
            raise RuntimeError("the blank document opened no editor")
        if text is not None:
            self.click(editor)
            self.type(text)
        return editor

    def append(self, editor, text):
        # Types the text after the end of what the editor holds.
        self.click(editor)
        self.xdotool("key", "ctrl+End")
        self.type(text)

    def set_title(self, title):
        # Whether the title field then holds it: typed characters arrive late.
        field = self.find("タイトル", "text")
        if field is not None:
            self.click(field)
            self.type(title)
        return field is not None and self.wait_text(field, title)

    def save_titled(self, title):
        # Titles the document and saves it with 保存して閉じる: the one file
        # it makes.
        check(f"the title field holds '{title}'", self.set_title(title))
        self.click_named("保存して閉じる")
        files = document_files()
        if not check("saving writes one file", len(files) == 1, files):
            raise RuntimeError("nothing saved")
        return files[0]

    def reopen(self, title):
        self.click_named("履歴")
        self.click_named(title, "table cell", pause=1.0)
        return self.editor()

    def extents(self, node):
        return node.queryComponent().getExtents(self.pyatspi.DESKTOP_COORDS)

    # ---- acting ------------------------------------------------------------

    def move_away(self, x=2, y=300, pause=0.4):
        # By default onto the bare wallpaper at the left edge.
        self.xdotool("mousemove", "--sync", str(x), str(y))
        time.sleep(pause)

    def point_at(self, node, pause=0.1):
        x, y, w, h = self.extents(node)
        self.move_away(x + w // 2, y + h // 2, pause)

    def click(self, node, pause=0.6):
        self.point_at(node)
        self.xdotool("click", "1")
        time.sleep(pause)

    def click_at(self, x, y, pause=0.6):
        self.move_away(x, y, 0.1)
        self.xdotool("click", "1")
        time.sleep(pause)

    def hold(self, node, seconds):
        self.point_at(node)
        self.xdotool("mousedown", "1")
        time.sleep(seconds)
        self.xdotool("mouseup", "1")
        time.sleep(0.4)

    def click_named(self, name, role=None, exact=True, window=None, pause=0.6, timeout=10):
        node = self.find(name, role, timeout, exact, window)
        if node is None:
            raise RuntimeError(f"'{name}' is not on the screen")
        self.click(node, pause)
        return node

    def type(self, text):
        self.xdotool("type", "--delay", "60", text)
        time.sleep(0.5)

    def xdotool(self, *args):
        subprocess.run(["xdotool", *args], env=self.env, check=False)

    def screenshot(self, name):
        os.makedirs(SHOTS, exist_ok=True)
        path = os.path.join(SHOTS, name + ".png")
        subprocess.run(["/usr/bin/import", "-display", self.display, "-window", "root", path], check=False)
        return path

    # ---- reading -----------------------------------------------------------

    def text_of(self, node):
        try:
            t = node.queryText()
            return t.getText(0, t.characterCount)
        except NotImplementedError:
            return node.name

    def wait_until(self, condition, timeout=5):
        return bool(poll(condition, timeout))

    def wait_text(self, node, expected, timeout=5):
        return self.wait_until(lambda: self.text_of(node) == expected, timeout)

    def wait_exit(self, timeout=20):
        try:
            return self.process.wait(timeout)
        except subprocess.TimeoutExpired:
            return None

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()


@contextlib.contextmanager
def Screen(width, height, file_size_limit=None):
    # The program on a private Xvfb of that size (which picks a free display
    # itself), for a `with` block.
    read_fd, write_fd = os.pipe()
    xvfb = subprocess.Popen(["Xvfb", "-displayfd", str(write_fd), "-screen", "0", f"{width}x{height}x24",
                             "-nolisten", "tcp", "-noreset"], pass_fds=(write_fd,), stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL)
    os.close(write_fd)
    lantern = None
    try:
        with os.fdopen(read_fd) as pipe:
            lantern = Lantern(":" + pipe.readline().strip(), file_size_limit)
        yield lantern
    finally:
        if lantern is not None:
            lantern.kill()
        xvfb.terminate()
        xvfb.wait()
