"""A test run by hand, outside CTest, is as harmless as one run by CTest: test
suites started straight from the build folder, in a home that looks like a
user's and with no test folders set, leave that home as it was and ask
nothing of logind. logind here is a stand-in on a private bus, so that this
test itself can never reach the real one. Every script test starts with the
guard that gives it the same protection; one of them, run by hand, shows it."""
import ast
import glob
import hashlib
import os
import re
import shutil
import subprocess
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
import isolation  # noqa: E402,F401  (run by hand, the script starts again in temporary folders)
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))
from checks import check, summary  # noqa: E402

TESTS = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
ROOT = os.environ["LANTERN_TEST_ROOT"]
BUILD = os.environ.get("LANTERN_BUILD_DIR", "")
GUARDS = {"isolation", "checks", "driver"}  # checks and driver import the guard first themselves


def python_guard_comes_first(path):
    """Before anything but the docstring, standard imports and path arithmetic, the guard is imported."""
    for statement in ast.parse(open(path, encoding="utf-8").read()).body:
        if isinstance(statement, (ast.Import, ast.ImportFrom)):
            if ({alias.name for alias in statement.names} | {getattr(statement, "module", None)}) & GUARDS:
                return True
        elif not (isinstance(statement, ast.Expr) and isinstance(statement.value, ast.Constant)
                  or ast.unparse(statement).startswith("sys.path.insert(")
                  or isinstance(statement, ast.Assign) and ast.unparse(statement.value).startswith("os.path.")):
            return False
    return False


def shell_guard_comes_first(path):
    """After comments and the shell options, the first command sources the guard from where it really is."""
    guard = os.path.relpath(os.path.join(TESTS, "support", "isolation.sh"), os.path.dirname(path))
    for line in map(str.strip, open(path, encoding="utf-8")):
        if line and not line.startswith("#") and not re.fullmatch(r"set -[a-z ]+(pipefail)?", line):
            return line == f'. "$(dirname "$0")/{guard}"'
    return False


def listing(home):
    """Every path under the home folder with its time, size and content."""
    seen = {}
    for folder, dirs, names in os.walk(home):
        for path in (os.path.join(folder, name) for name in dirs + names):
            digest = hashlib.sha256(open(path, "rb").read()).hexdigest() if os.path.isfile(path) else ""
            seen[os.path.relpath(path, home)] = (os.lstat(path).st_mtime_ns, os.lstat(path).st_size, digest)
    return seen


def calls(record):
    return open(record).read().splitlines() if os.path.exists(record) else []


def newest_suite(name):
    """The newest build of a suite, whichever test folder it lives in."""
    found = [path for path in glob.glob(os.path.join(BUILD, "tests", f"test_{name}_*"))
             if re.fullmatch(rf"test_{name}_[a-z0-9]+", os.path.basename(path)) and os.access(path, os.X_OK)]
    return max(found, key=os.path.getmtime, default=None)


for path in sorted(glob.glob(os.path.join(TESTS, "**", "test_*.py"), recursive=True)
                   + [os.path.join(TESTS, "e2e", "checks.py"), os.path.join(TESTS, "e2e", "driver.py")]):
    check(f"{os.path.relpath(path, TESTS)} starts with the isolation guard", python_guard_comes_first(path))
for path in sorted(glob.glob(os.path.join(TESTS, "**", "test_*.sh"), recursive=True)):
    check(f"{os.path.relpath(path, TESTS)} starts with the isolation guard", shell_guard_comes_first(path))

if not shutil.which("dbus-daemon"):
    sys.exit(print("skipped: dbus-daemon is not installed") or 77)
if subprocess.run(["/usr/bin/python3", "-c", "import dbus, gi"], capture_output=True).returncode != 0:
    sys.exit(print("skipped: python3-dbus and python3-gi are not installed") or 77)
# Suites that write settings, documents and the start-up link into the home
# folder, and that deal with the power-off on quitting.
runs = {name: [newest_suite(name)] for name in ("settings_store", "power_off")}
if None in (run[0] for run in runs.values()):
    sys.exit(print("skipped: not built:", runs) or 77)
# A script: the start-up journey quits the real program three times with
# "Shutdown" on, which asks for the power-off.
if os.environ.get("DISPLAY") and shutil.which("xdotool") and os.access(
        os.path.join(os.environ.get("LANTERN_PROGRAM_DIR", ""), "lantern"), os.X_OK):
    runs["e2e/test_startup.sh"] = ["bash", os.path.join(TESTS, "e2e", "test_startup.sh")]
else:
    print("skipped: e2e/test_startup.sh by hand needs a display, xdotool and the program")

bus, home, tmp = (os.path.join(ROOT, name) for name in ("bus", "user/home", "user/tmp"))
record = os.path.join(ROOT, "logind-calls.log")
for name, text in {".bashrc": "export EDITOR=nano\n",  # a home as a user of the program has it
                   ".config/Fernwick Nib 2007.ini": "[Settings]\r\nShutdown=True\r\nHow-to=True\r\n",
                   ".config/autostart/other.desktop": "[Desktop Entry]\nType=Application\nName=other\n",
                   ".local/share/Fernwick/Nib/手紙.txt": "\"手紙\",#2024-01-02 03:04:05#\r\n",
                   ".local/state/lantern/lantern.log": "earlier run\n", ".cache/fontconfig/placeholder": ""}.items():
    os.makedirs(os.path.dirname(os.path.join(home, name)), exist_ok=True)
    open(os.path.join(home, name), "w", encoding="utf-8").write(text)
os.makedirs(bus)
os.makedirs(tmp)
for folder, dirs, names in os.walk(home):  # old times, so that any write shows as a change of time
    for name in dirs + names:
        os.utime(os.path.join(folder, name), (1_000_000_000, 1_000_000_000))
before = listing(home)

open(os.path.join(bus, "bus.conf"), "w").write(
    f"<busconfig><type>custom</type><listen>unix:dir={bus}</listen><auth>EXTERNAL</auth><policy context='default'>"
    "<allow send_destination='*'/><allow receive_sender='*'/><allow own='*'/></policy></busconfig>")
daemon = subprocess.Popen(["dbus-daemon", "--config-file=" + os.path.join(bus, "bus.conf"), "--nofork",
                           "--print-address=1"], stdout=subprocess.PIPE, text=True)
address = daemon.stdout.readline().strip()
fake = subprocess.Popen(["/usr/bin/python3", os.path.join(TESTS, "support", "fake_logind.py"), address, record],
                        stdout=subprocess.PIPE, text=True)
try:
    check("the private bus and the stand-in for logind start",
          address.startswith("unix:") and fake.stdout.readline().strip() == "ready", address)

    # What a user's shell gives a program: a HOME and XDG folders inside it, no
    # test folders, no recording power control, and logind on the system bus.
    env = {name: value for name, value in os.environ.items()
           if not name.startswith(("XDG_", "LANTERN_TEST", "LANTERN_POWER"))}
    env.update(HOME=home, TMPDIR=tmp, XDG_SESSION_ID="c1", DBUS_SYSTEM_BUS_ADDRESS=address,
               XDG_CONFIG_HOME=os.path.join(home, ".config"), XDG_DATA_HOME=os.path.join(home, ".local", "share"),
               XDG_STATE_HOME=os.path.join(home, ".local", "state"), XDG_CACHE_HOME=os.path.join(home, ".cache"))
    if env.get("DISPLAY"):
        env.pop("QT_QPA_PLATFORM", None)
    for name, command in runs.items():
        done = subprocess.run(command, env=env, cwd=tmp, capture_output=True, text=True, timeout=300)
        check(f"{name} run by hand passes", done.returncode == 0, done.stdout[-2000:] + done.stderr[-2000:])
        after = listing(home)
        changed = sorted(path for path in set(before) | set(after) if before.get(path) != after.get(path))
        check(f"{name} leaves the user's home as it was", not changed, changed)
        check(f"{name} asks nothing of logind", not calls(record), calls(record))
        check(f"{name} removes its temporary folders", not glob.glob(os.path.join(tmp, "lantern-test.*")))
        before = after
finally:
    for process in (fake, daemon):
        process.terminate()
        process.wait(timeout=10)

sys.exit(summary())
