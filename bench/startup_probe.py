#!/usr/bin/python3
"""Times a program from its start until its main window is mapped and painted.

Usage: startup_probe.py RUNS TITLE_PATTERN [--documents FOLDER] -- COMMAND...
With --documents, each run's document folder starts as a copy of FOLDER.
Each run gets a fresh HOME. "Painted" means the window's centre pixel is no
longer the colour it had when it was mapped (or has content at all). Prints the
median in milliseconds, then every run.
"""
import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

from Xlib import X, display


def window_title(d, window):
    try:
        name = window.get_full_property(d.intern_atom('_NET_WM_NAME'), d.intern_atom('UTF8_STRING'))
        if name:
            return name.value.decode('utf-8', 'replace')
        name = window.get_wm_name()
        return name if isinstance(name, str) else (name.decode('latin-1') if name else '')
    except Exception:
        return ''


def centre_pixel(window):
    try:
        g = window.get_geometry()
        raw = window.get_image(g.width // 2, g.height // 2, 1, 1, X.ZPixmap, 0xffffffff)
        return bytes(raw.data)
    except Exception:
        return None


def one_run(pattern, command, documents=None):
    d = display.Display()
    root = d.screen().root
    root.change_attributes(event_mask=X.SubstructureNotifyMask)
    d.sync()
    home = tempfile.mkdtemp()
    if documents:
        shutil.copytree(documents, home + '/.local/share/Fernwick/Nib')
    env = dict(os.environ, HOME=home, XDG_CONFIG_HOME=home + '/.config', XDG_DATA_HOME=home + '/.local/share',
               XDG_STATE_HOME=home + '/.local/state', XDG_CACHE_HOME=home + '/.cache', QT_QPA_PLATFORM='xcb')
    start = time.monotonic()
    process = subprocess.Popen(command, env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    mapped = None
    elapsed = None
    deadline = start + 20
    try:
        while time.monotonic() < deadline and elapsed is None:
            if mapped is None:
                while d.pending_events():
                    event = d.next_event()
                    if event.type == X.MapNotify and re.search(pattern, window_title(d, event.window)):
                        mapped = event.window
                        break
                if mapped is None:
                    # The title may arrive after the map: look at mapped top-level windows too.
                    for child in root.query_tree().children:
                        try:
                            if child.get_attributes().map_state == X.IsViewable and re.search(pattern, window_title(d, child)):
                                mapped = child
                                break
                        except Exception:
                            pass
                if mapped is None:
                    time.sleep(0.001)
                    continue
            pixel = centre_pixel(mapped)
            if pixel and pixel not in (b'\x00\x00\x00\x00', b'\x00\x00\x00'):
                elapsed = (time.monotonic() - start) * 1000
            else:
                time.sleep(0.001)
    finally:
        process.terminate()
        try:
            process.wait(10)
        except subprocess.TimeoutExpired:
            process.kill()
        shutil.rmtree(home, ignore_errors=True)
        d.close()
    return elapsed


def main():
    runs = int(sys.argv[1])
    pattern = sys.argv[2]
    command = sys.argv[sys.argv.index('--') + 1:]
    options = sys.argv[3:sys.argv.index('--')]
    documents = options[options.index('--documents') + 1] if '--documents' in options else None
    times = []
    for _ in range(runs):
        t = one_run(pattern, command, documents)
        if t is not None:
            times.append(t)
        time.sleep(0.3)
    if not times:
        print('no window seen')
        return 1
    print('median %.0f ms (runs: %s)' % (statistics.median(times), ', '.join('%.0f' % t for t in times)))
    return 0


if __name__ == '__main__':
    sys.exit(main())
