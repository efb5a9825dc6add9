#!/usr/bin/python3
"""Times a program from its start until its main window is mapped and painted.

Usage: startup_probe.py RUNS NAME TITLE_PATTERN [--documents FOLDER] -- COMMAND... [;; NAME ...]
Several programs separated by ";;" take turns, run by run. With --documents,
each run's document folder starts as a copy of FOLDER. Each run gets a fresh
HOME. "Painted" means the window's centre pixel has content. Prints, for each
program, the median in milliseconds, then every run.
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


def parse_programs(arguments):
    """Splits "NAME PATTERN [--documents FOLDER] -- COMMAND... ;; NAME ..." into programs."""
    programs = []
    for part in ' '.join(arguments).split(' ;; '):
        words = part.split()
        separator = words.index('--')
        options = words[2:separator]
        documents = options[options.index('--documents') + 1] if '--documents' in options else None
        programs.append({'name': words[0], 'pattern': words[1], 'documents': documents,
                         'command': words[separator + 1:], 'times': []})
    return programs


def main():
    runs = int(sys.argv[1])
    programs = parse_programs(sys.argv[2:])
    # The programs take turns, so that a machine that is slower for a while
    # is slower for all of them alike.
    for _ in range(runs):
        for program in programs:
            t = one_run(program['pattern'], program['command'], program['documents'])
            if t is not None:
                program['times'].append(t)
            time.sleep(0.3)
    status = 0
    for program in programs:
        times = program['times']
        if not times:
            print('%-28s no window seen' % (program['name'] + ':'))
            status = 1
            continue
        print('%-28s median %.0f ms (runs: %s)' % (program['name'] + ':', statistics.median(times),
                                                   ', '.join('%.0f' % t for t in times)))
    return status


if __name__ == '__main__':
    sys.exit(main())
