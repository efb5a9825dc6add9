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
# Suites that write settings, documents and the start-up link into the home
# folder, and that deal with the power-off on quitting.
SUITES = ["test_settings_store_app", "test_power_off_app"]

BUS_CONFIG = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>custom</type>
  <listen>unix:dir={folder}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


def skip(reason):
    print("skipped:", reason)
    sys.exit(77)


def make_user_home(home):
    """A home folder as a user of the program has it."""
    files = {
        ".bashrc": "export EDITOR=nano\n",
        ".config/Fernwick Nib 2007.ini": "[Settings]\r\nShutdown=True\r\nHow-to=True\r\n",
        ".config/autostart/other.desktop": "[Desktop Entry]\nType=Application\nName=other\n",
        ".local/share/Fernwick/Nib/手紙.txt": "\"手紙\",#2024-01-02 03:04:05#\r\n",
        ".local/state/lantern/lantern.log": "earlier run\n",
        ".cache/fontconfig/placeholder": "",
    }
    for name, text in files.items():
        path = os.path.join(home, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as out:
            out.write(text)
    # Old times, so that any write shows as a change of time.
    for folder, dirs, names in os.walk(home):
        for name in dirs + names:
            os.utime(os.path.join(folder, name), (1_000_000_000, 1_000_000_000))


def listing(home):
    """Every path under the home folder with its time, size and content."""
    seen = {}
    for folder, dirs, names in os.walk(home):
        for name in dirs + names:
            path = os.path.join(folder, name)
            info = os.lstat(path)
            digest = ""
            if os.path.isfile(path):
                with open(path, "rb") as data:
                    digest = hashlib.sha256(data.read()).hexdigest()
            seen[os.path.relpath(path, home)] = (info.st_mtime_ns, info.st_size, digest)
    return seen


def start_private_system_bus(folder):
    config = os.path.join(folder, "bus.conf")
    with open(config, "w") as out:
        out.write(BUS_CONFIG.format(folder=folder))
    daemon = subprocess.Popen(["dbus-daemon", "--config-file=" + config, "--nofork", "--print-address=1"],
                              stdout=subprocess.PIPE, text=True)
    return daemon, daemon.stdout.readline().strip()


def start_fake_logind(address, record):
    fake = subprocess.Popen(["/usr/bin/python3", os.path.join(TESTS, "support", "fake_logind.py"), address, record],
                            stdout=subprocess.PIPE, text=True)
    if fake.stdout.readline().strip() != "ready":
        fake.kill()
        skip("the stand-in for logind did not start")
    return fake


def calls(record):
    if not os.path.exists(record):
        return []
    with open(record) as lines:
        return lines.read().splitlines()


def by_hand_environment(home, bus_address, tmp):
    """What a user's shell gives a program: a HOME and XDG folders inside it,
    no test folders, no recording power control, and logind (here the
    stand-in) on the system bus."""
    env = {name: value for name, value in os.environ.items()
           if not name.startswith(("XDG_", "LANTERN_TEST", "LANTERN_POWER"))}
    env.update(HOME=home, TMPDIR=tmp, XDG_SESSION_ID="c1", DBUS_SYSTEM_BUS_ADDRESS=bus_address,
               XDG_CONFIG_HOME=os.path.join(home, ".config"), XDG_DATA_HOME=os.path.join(home, ".local", "share"),
               XDG_STATE_HOME=os.path.join(home, ".local", "state"), XDG_CACHE_HOME=os.path.join(home, ".cache"))
    if env.get("DISPLAY"):
        env.pop("QT_QPA_PLATFORM", None)
    return env


GUARD_MODULES = {"isolation", "checks", "driver"}


def python_guard_comes_first(path):
    """The first statement that does more than import the standard library or
    extend the module path imports the guard (checks and driver import it
    first themselves)."""
    with open(path, encoding="utf-8") as source:
        body = ast.parse(source.read()).body
    for statement in body:
        if isinstance(statement, ast.Import):
            names = {alias.name for alias in statement.names}
            if names & GUARD_MODULES:
                return True
            continue
        if isinstance(statement, ast.ImportFrom):
            if statement.module in GUARD_MODULES:
                return True
            continue
        if isinstance(statement, ast.Expr) and isinstance(statement.value, ast.Constant):
            continue  # the docstring
        if isinstance(statement, ast.Expr) and ast.unparse(statement).startswith("sys.path.insert("):
            continue
        return False
    return False


def shell_guard_comes_first(path):
    """After comments and the shell options, the script's first command
    sources the guard."""
    with open(path, encoding="utf-8") as source:
        for line in source:
            line = line.strip()
            if not line or line.startswith("#") or re.fullmatch(r"set -[a-z ]+(pipefail)?", line):
                continue
            return line == '. "$(dirname "$0")/../support/isolation.sh"'
    return False


# Every script test, and the two modules the end-to-end scripts import first.
for path in sorted(glob.glob(os.path.join(TESTS, "*", "test_*.py"))
                   + [os.path.join(TESTS, "e2e", "checks.py"), os.path.join(TESTS, "e2e", "driver.py")]):
    check(f"{os.path.relpath(path, TESTS)} starts with the isolation guard", python_guard_comes_first(path))
for path in sorted(glob.glob(os.path.join(TESTS, "*", "test_*.sh"))):
    check(f"{os.path.relpath(path, TESTS)} starts with the isolation guard", shell_guard_comes_first(path))

if not shutil.which("dbus-daemon"):
    skip("dbus-daemon is not installed")
if subprocess.run(["/usr/bin/python3", "-c", "import dbus, gi"], capture_output=True).returncode != 0:
    skip("python3-dbus and python3-gi are not installed")
missing = [suite for suite in SUITES if not os.access(os.path.join(BUILD, "tests", suite), os.X_OK)]
if missing:
    skip("not built: " + ", ".join(missing))

bus_folder = os.path.join(ROOT, "bus")
home = os.path.join(ROOT, "user", "home")
tmp = os.path.join(ROOT, "user", "tmp")
record = os.path.join(ROOT, "logind-calls.log")
for folder in (bus_folder, home, tmp):
    os.makedirs(folder)
make_user_home(home)
before = listing(home)

daemon, address = start_private_system_bus(bus_folder)
fake = None
try:
    if not address.startswith("unix:"):
        skip("the private bus did not start")
    fake = start_fake_logind(address, record)

    # The stand-in hears a call made to it, so that an empty record means
    # that nothing was asked.
    import dbus  # noqa: E402  (only /usr/bin/python3 has it, checked above)
    probe = dbus.bus.BusConnection(address)
    probe.call_blocking("org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                        "CanPowerOff", "", [])
    probe.close()
    check("the stand-in for logind records a call made to it",
          calls(record) == ["org.freedesktop.login1.Manager.CanPowerOff"], calls(record))
    os.remove(record)

    for suite in SUITES:
        done = subprocess.run([os.path.join(BUILD, "tests", suite)], env=by_hand_environment(home, address, tmp),
                              cwd=tmp, capture_output=True, text=True, timeout=240)
        check(f"{suite} run by hand passes", done.returncode == 0, done.stdout[-2000:] + done.stderr[-2000:])
        after = listing(home)
        changed = sorted(name for name in set(before) | set(after) if before.get(name) != after.get(name))
        check(f"{suite} leaves the user's home as it was", not changed, changed)
        check(f"{suite} asks nothing of logind", not calls(record), calls(record))
        leftovers = glob.glob(os.path.join(tmp, "lantern-test.*"))
        check(f"{suite} removes its temporary folders", not leftovers, leftovers)
        before = after

    # A script run by hand: the start-up journey quits the real program three
    # times with "Shutdown" on, which asks for the power-off.
    startup = os.path.join(TESTS, "e2e", "test_startup.sh")
    program = os.path.join(os.environ.get("LANTERN_PROGRAM_DIR", ""), "lantern")
    if not (os.environ.get("DISPLAY") and shutil.which("xdotool") and os.access(program, os.X_OK)):
        print("skipped: e2e/test_startup.sh by hand needs a display, xdotool and the program")
    else:
        done = subprocess.run(["bash", startup], env=by_hand_environment(home, address, tmp),
                              cwd=tmp, capture_output=True, text=True, timeout=300)
        check("e2e/test_startup.sh run by hand passes", done.returncode == 0, done.stdout[-2000:] + done.stderr[-2000:])
        after = listing(home)
        changed = sorted(name for name in set(before) | set(after) if before.get(name) != after.get(name))
        check("e2e/test_startup.sh leaves the user's home as it was", not changed, changed)
        check("e2e/test_startup.sh asks nothing of logind", not calls(record), calls(record))
        leftovers = glob.glob(os.path.join(tmp, "lantern-test.*"))
        check("e2e/test_startup.sh removes its temporary folders", not leftovers, leftovers)
finally:
    for process in (fake, daemon):
        if process:
            process.terminate()
            process.wait(timeout=10)

sys.exit(summary())
