"""Imported first by every script test. Run by hand, outside CTest, the script
starts again through tests/isolated.sh, so that it too gets its own HOME and
XDG folders and a recording power control."""
import os
import sys

if not os.environ.get("LANTERN_TEST_ROOT"):
    script = os.path.abspath(sys.argv[0])
    isolated = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "isolated.sh")
    print(f"{os.path.basename(script)}: not isolated yet; running again through tests/isolated.sh",
          file=sys.stderr, flush=True)
    os.execvp("bash", ["bash", isolated, script] + sys.argv[1:])

# Whatever the caller set, a test never reaches the real power control.
if not os.environ.get("LANTERN_POWER_CONTROL", "").startswith("record:"):
    os.environ["LANTERN_POWER_CONTROL"] = "record:" + os.path.join(os.environ["LANTERN_TEST_ROOT"],
                                                                   "power-requests.log")
