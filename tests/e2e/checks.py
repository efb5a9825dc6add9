# The tally the end-to-end scripts keep: one line per check, and the closing
# line "N passed, N failed" that the test runner reads.
import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
import isolation  # noqa: E402,F401  (run by hand, the script starts again in temporary folders)

failures = []
passes = 0


def check(what, condition, detail=""):
    global passes
    if condition:
        passes += 1
        print("ok:", what)
    else:
        failures.append(what)
        print("FAIL:", what, detail)
    return condition


def summary():
    # Prints the closing line; returns the script's exit status.
    print(f"{passes} passed, {len(failures)} failed")
    return 1 if failures else 0
