"""Drives the real program the way a person does: its own X server, the
controls found through the accessibility bus, real pointer events through
xdotool. Shared by the end-to-end journeys.

A script that imports this module first calls `own_session()`, which gives it
a session bus of its own (the accessibility bus comes with it)."""
import glob
import os
import re
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
import isolation  # noqa: E402,F401  (run by hand, the script starts again in temporary folders)

PROGRAM = os.path.join(os.environ.get("LANTERN_PROGRAM_DIR", ""), "lantern")
SHOTS = os.path.join(os.environ.get("LANTERN_BUILD_DIR", "/tmp"), "screenshots")
CONFIG = os.environ.get("XDG_CONFIG_HOME", "")
DATA = os.environ.get("XDG_DATA_HOME", "")
DOCUMENTS = os.path.join(DATA, "Fernwick", "Nib")
HEADER = re.compile(r'^"(.*)",#(\d{4}-\d\d-\d\d(?: \d\d:\d\d:\d\d)?)#\r\n', re.S)


def own_session():
    """Re-runs the calling script inside a private session bus, once."""
    if not os.environ.get("LANTERN_E2E_SESSION"):
        os.environ["LANTERN_E2E_SESSION"] = "1"
        os.execvp("dbus-run-session", ["dbus-run-session", "--", sys.executable] + sys.argv)


def start_display(width, height):
    """A private Xvfb of that size; returns (process, display name)."""
    read_fd, write_fd = os.pipe()
    xvfb = subprocess.Popen(["Xvfb", "-displayfd", str(write_fd), "-screen", "0", f"{width}x{height}x24",
                             "-nolisten", "tcp", "-noreset"], pass_fds=(write_fd,), stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL)
    os.close(write_fd)
    number = b""
    while not number.endswith(b"\n"):
        chunk = os.read(read_fd, 16)
        if not chunk:
            break
        number += chunk
    os.close(read_fd)
    return xvfb, ":" + number.decode().strip()


def write_settings(**sections):
    """The settings file as the program reads it. Without arguments: no
    character and no music, hints on, Smart Pencil off."""
    if not sections:
        sections = {"Skin Settings": {"Graphic": "False", "Music": "False"},
                    "Settings": {"How-to": "True", "Smart Pencil": "False"}}
    os.makedirs(CONFIG, exist_ok=True)
    with open(os.path.join(CONFIG, "Fernwick Nib 2007.ini"), "w", encoding="utf-8") as ini:
        for section, keys in sections.items():
            ini.write(f"[{section}]\n")
            for key, value in keys.items():
                ini.write(f"{key}={value}\n")


def document_files():
    return sorted(glob.glob(os.path.join(DATA, "**", "*.TXT"), recursive=True))


def read_document(path):
    """(title, save time, body) of a saved document; (None, None, text) when
    its header does not parse."""
    with open(path, "rb") as f:
        raw = f.read()
    text = raw.decode("cp932", errors="replace")
    match = HEADER.match(text)
    return (match.group(1), match.group(2), text[match.end():]) if match else (None, None, text)


def write_document(name, title, body, stamp="2026-01-02 03:04:05"):
    """Puts a document file into the folder as the program writes them."""
    os.makedirs(DOCUMENTS, exist_ok=True)
    path = os.path.join(DOCUMENTS, name)
    with open(path, "wb") as f:
        f.write(f'"{title}",#{stamp}#\r\n'.encode("cp932") + body.encode("cp932") + b"\r\n")
    return path


class Lantern:
    """The running program on one display."""

    def __init__(self, display, args=(), file_size_limit=None):
        import pyatspi
        self.pyatspi = pyatspi
        self.display = display
        self.env = dict(os.environ, DISPLAY=display, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self.log = open(os.path.join(os.environ.get("LANTERN_TEST_ROOT", "/tmp"), "lantern.log"), "a")
        self.process = subprocess.Popen([PROGRAM, *args], env=self.env, stdout=self.log, stderr=self.log,
                                        preexec_fn=self._full_disk(file_size_limit) if file_size_limit else None)
        self.app = None
        deadline = time.time() + 30
        while time.time() < deadline and self.app is None:
            for app in pyatspi.Registry.getDesktop(0):
                if app is not None and app.name == "Fernwick Nib 2007" and self._pid(app) in (None, self.process.pid):
                    self.app = app
            time.sleep(0.2)

    @staticmethod
    def _full_disk(limit):
        """A disk that fills up at `limit` bytes a file: writes beyond it fail
        (SIGXFSZ ignored, which the program inherits)."""
        def apply():
            import resource
            import signal
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (limit, resource.RLIM_INFINITY))
        return apply

    def make_room(self):
        """Lifts the file-size limit of the running program."""
        import resource
        resource.prlimit(self.process.pid, resource.RLIMIT_FSIZE, (resource.RLIM_INFINITY, resource.RLIM_INFINITY))

    @staticmethod
    def _pid(app):
        try:
            return app.get_process_id()
        except Exception:
            return None

    # ---- finding controls ----------------------------------------------

    def nodes(self, root=None):
        root = root or self.app
        for child in root:
            if child is None:
                continue
            yield child
            yield from self.nodes(child)

    def showing(self, node):
        try:
            return node.getState().contains(self.pyatspi.STATE_SHOWING)
        except Exception:
            return False

    def enabled(self, node):
        return node.getState().contains(self.pyatspi.STATE_ENABLED)

    def find(self, name, role=None, timeout=10, exact=True, window=None):
        """The first showing control with that name (and role), in a window
        of that title when one is given."""
        deadline = time.time() + timeout
        while True:
            roots = [w for w in self.app if w is not None and (window is None or w.name == window)]
            for root in roots:
                for node in self.nodes(root):
                    matched = node.name == name if exact else name in (node.name or "")
                    if matched and (role is None or node.getRoleName() == role) and self.showing(node):
                        return node
            if time.time() >= deadline:
                return None
            time.sleep(0.2)

    def find_all(self, predicate):
        return [n for n in self.nodes() if self.showing(n) and predicate(n)]

    def by_description(self, description, role="push button"):
        found = self.find_all(lambda n: n.getRoleName() == role and n.description == description)
        return found[0] if found else None

    def window_showing(self, title):
        return any(w is not None and w.name == title and self.showing(w) for w in self.app)

    def editor(self, timeout=5):
        """The document's rich-text box: the showing multi-line text."""
        deadline = time.time() + timeout
        while True:
            for node in self.nodes():
                if node.getRoleName() in ("text", "paragraph") and self.showing(node) \
                        and node.getState().contains(self.pyatspi.STATE_MULTI_LINE):
                    return node
            if time.time() >= deadline:
                return None
            time.sleep(0.2)

    def extents(self, node):
        return node.queryComponent().getExtents(self.pyatspi.DESKTOP_COORDS)

    # ---- acting ------------------------------------------------------------

    def click(self, node, pause=0.6):
        x, y, w, h = self.extents(node)
        self.click_at(x + w // 2, y + h // 2, pause)

    def click_at(self, x, y, pause=0.6):
        self.xdotool("mousemove", "--sync", str(x), str(y))
        time.sleep(0.1)
        self.xdotool("click", "1")
        time.sleep(pause)

    def hold(self, node, seconds):
        """Presses the mouse button on a control and keeps it down."""
        x, y, w, h = self.extents(node)
        self.xdotool("mousemove", "--sync", str(x + w // 2), str(y + h // 2))
        time.sleep(0.1)
        self.xdotool("mousedown", "1")
        time.sleep(seconds)
        self.xdotool("mouseup", "1")
        time.sleep(0.4)

    def hover(self, node, pause=0.4):
        x, y, w, h = self.extents(node)
        self.xdotool("mousemove", "--sync", str(x + w // 2), str(y + h // 2))
        time.sleep(pause)

    def move_away(self, x=2, y=None, pause=0.4):
        """Puts the pointer on the bare wallpaper at the left edge."""
        self.xdotool("mousemove", "--sync", str(x), str(y if y is not None else 300))
        time.sleep(pause)

    def click_named(self, name, role=None, exact=True, window=None, pause=0.6):
        node = self.find(name, role, exact=exact, window=window)
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

    def caret_of(self, node):
        return node.queryText().caretOffset

    def wait_until(self, condition, timeout=5):
        deadline = time.time() + timeout
        while True:
            if condition():
                return True
            if time.time() >= deadline:
                return False
            time.sleep(0.2)

    def wait_text(self, node, expected, timeout=5):
        """Waits until the field holds the text: typed characters arrive late."""
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


class Screen:
    """A private display with the program on it, for a `with` block."""

    def __init__(self, width, height, args=(), file_size_limit=None):
        self.width, self.height, self.args = width, height, args
        self.file_size_limit = file_size_limit
        self.xvfb = None
        self.lantern = None

    def __enter__(self):
        self.xvfb, display = start_display(self.width, self.height)
        self.lantern = Lantern(display, self.args, self.file_size_limit)
        return self.lantern

    def __exit__(self, *exc):
        if self.lantern:
            self.lantern.kill()
        self.xvfb.terminate()
        self.xvfb.wait()
        return False
