#!/usr/bin/python3
"""Usage: windows.py PROGRAM_FOLDER

Walks through every window of the real program as a screen reader does. Every control must have a role and a name, and no two of a
window one mnemonic, but for those named here. The file dialogs are left out: they are the toolkit's own.
"""

import os
import shutil
import string
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import pyatspi

# Controls whose captions share a letter by design, by the beginning of the window's caption.
SHARED = {
    "Discbook:": [{"Type:", "Track list"}, {"Concert:", "Recording Comments:"}, {"Title", "Stored in:"}],
    "Search": [{"Type:", "Track list"}, {"Concert:", "Comments:"}],
}
# What is pressed, and the beginning of the caption of the window that is then on top.
STEPS = [
    ("alt+o s", "Setup recording types"),
    ("alt+a", "New recording type"),
    ("Escape", "Setup recording types"),
    ("alt+d", "Confirmation"),
    ("Escape", "Setup recording types"),
    ("Escape", "Discbook:"),
    ("alt+w s", "Setup web sources"),
    ("Escape", "Discbook:"),
    ("alt+v l", "List: Lossless"),
    ("Escape", "Discbook:"),
    ("alt+v w", "View as Webpage"),
    ("Escape", "Discbook:"),
    ("alt+f m", "Shortcut Name"),
    ("Escape", "Discbook:"),
    ("alt+h a", "About Discbook"),
    ("Return", "Discbook:"),
    ("F1", "Discbook Help"),
    ("Escape", "Discbook:"),
    ("Home Right Down ctrl+shift+Delete", "Delete Confirmation"),
    ("Escape", "Discbook:"),
    ("ctrl+f", "Search"),
    ("alt+u apostrophe Return", "Discbook Error"),
    ("Return", "Discbook:"),
    ("ctrl+q", "Save Confirmation"),
]
CATALOG = """<Catalog><Type>Radio</Type><Item ID="1" Type="Album" Venue="Best"/>
<Item ID="2" Type="Concert" Year="1994" Month="1" Venue="Hall" Format="FLAC"/>
<Item ID="3" Type="Concert" Year="1994" Month="2" Venue="Club"/>
<Item ID="4" Type="Concert" Year="1994" Month="3" Venue="Park" Format="MP3" WrongDate="1"/>
<Item ID="5" Type="Concert" Year="1994" Month="4" Venue="Tent" Format="MP3"/></Catalog>"""
ABOUT = {"Discbook", "Version", "A desktop catalog of music recordings"}
ROWS = [
    "1994, 1 lossless, 1 lossy, 3 in all",
    "1994-01-?? - Hall, FLAC, lossless",
    "1994-02-?? - Club, not held",
    "1994-03-?? - Park (wrong date), wrong date",
    "1994-04-?? - Tent, MP3, lossy",
]
NAMED_ROLES = {"alert", "check box", "dialog", "frame", "image", "menu item", "push button", "radio button"}

problems = []


def wait(find, what):
    end = time.monotonic() + 15
    while time.monotonic() < end:
        found = find()
        if found:
            return found
        time.sleep(0.02)
    sys.exit("\n".join([*problems, f"{what} did not come"]))


def has(control, state):
    return control.getState().contains(state)


def inside(control):
    yield control
    for child in control:
        if child:
            yield from inside(child)


def shown(window):
    return [control for control in inside(window) if has(control, pyatspi.STATE_SHOWING)]


def press(*keys):
    for key in keys:
        subprocess.run(["xdotool", "key", key], check=True)


def spoken(control):
    """The name by which a control is announced: of its label, or its own."""
    for relation in control.getRelationSet():
        if relation.getRelationType() == pyatspi.RELATION_LABELLED_BY:
            return relation.getTarget(0).name
    return control.name


def program(process):
    desktop = pyatspi.Registry.getDesktop(0)
    return next((app for app in desktop if app and app.get_process_id() == process.pid), None)


def active(process, caption):
    """The window on top, once it is the one with that caption."""
    app = program(process)
    windows = [window for window in app or [] if window and has(window, pyatspi.STATE_SHOWING)]
    return next((w for w in windows if w.name.startswith(caption) and has(w, pyatspi.STATE_ACTIVE)), None)


def check_names(window):
    for control in inside(window):
        role = control.getRoleName()
        seen = has(control, pyatspi.STATE_SHOWING) and (has(control, pyatspi.STATE_FOCUSABLE) or role in NAMED_ROLES)
        if seen and role in ("", "unknown", "invalid"):
            problems.append(f"{window.name}: a control without a role, {control.name!r}")
        if seen and not spoken(control) and (role, window.getRoleName()) != ("image", "alert"):
            problems.append(f"{window.name}: a {role} without a name")
        if role == "table column header" and control.name in ("", "1"):
            problems.append(f"{window.name}: a column called {control.name!r}")


def check_letters(window, used):
    """`used`: for each letter the names of the controls that it leads to."""
    for letter, names in used.items():
        allowed = next((shared for caption, shared in SHARED.items() if window.name.startswith(caption)), [])
        if len(names) > 1 and names not in allowed:
            problems.append(f"{window.name}: Alt+{letter} leads to {sorted(names)}")


def told_letters(controls):
    used = {}
    for control in controls:
        try:
            action = control.queryAction()
        except NotImplementedError:
            continue
        for key in {action.getKeyBinding(i).lower() for i in range(action.nActions)}:
            if key.startswith("alt+"):
                used.setdefault(key[4:], set()).add(spoken(control))
    return used


def found_letters(window, menu_letters):
    """What the letters of combo boxes do, whose mnemonics are not told: one of two controls moves the focus from one to the other."""
    fields = [control for control in shown(window) if has(control, pyatspi.STATE_FOCUSABLE)]

    def focused_after(letter, pause):
        press(f"alt+{letter}")
        time.sleep(pause)
        return next((spoken(field) for field in fields if has(field, pyatspi.STATE_FOCUSED)), "")

    used = {}
    captions = "".join(spoken(field) for field in fields if field.getRoleName() == "combo box")
    for letter in set(captions.lower()).intersection(string.ascii_lowercase) - menu_letters:
        for pause in (0.03, 0.4):
            used[letter] = {focused_after(letter, pause), focused_after(letter, pause)}
            if len(used[letter]) == 1:
                break
    return used


def check(window):
    check_names(window)
    for menu in [control for control in inside(window) if control.getRoleName() == "popup menu"]:
        check_letters(window, told_letters(menu))
    controls = shown(window)
    told = told_letters(controls)
    check_letters(window, told)
    if any(control.getRoleName() == "combo box" for control in controls):
        menus = [control for control in controls if control.getRoleName() == "menu item"]
        check_letters(window, found_letters(window, set(told_letters(menus))))


def walk(process):
    check(wait(lambda: active(process, "Select Catalog"), "Select Catalog"))
    press("Return")
    main = wait(lambda: active(process, "Discbook: Live"), "Discbook: Live")
    press("End", "Right", "Down")
    wait(lambda: any(control.name == "Title" for control in shown(main)), "the album")
    check_letters(main, told_letters(shown(main)))
    press("Home", "Right", "Down")
    wait(lambda: any(control.name == "Concert:" for control in shown(main)), "the concert")
    names = [control.name for control in inside(main)]
    problems.extend(f"No row reads {row!r}" for row in ROWS if row not in names)
    check(main)
    press("alt+l", "1")
    checked = {"Discbook:"}
    for keys, caption in STEPS:
        press(*keys.split())
        window = wait(lambda wanted=caption: active(process, wanted), caption)
        if caption not in checked:
            check(window)
        if caption == "About Discbook":
            missing = ABOUT - {control.name.rstrip("0123456789. ") for control in shown(window)}
            problems.extend(f"{window.name}: {text!r} is missing" for text in missing)
        if caption == "Discbook Help":
            press("Tab")
            contents = next(control for control in shown(window) if control.name == "Contents" and has(control, pyatspi.STATE_FOCUSABLE))
            wait(lambda tree=contents: has(tree, pyatspi.STATE_FOCUSED), "the contents, by Tab")
        checked.add(caption)
    press("alt+n")
    process.wait(10)


def main():
    with tempfile.TemporaryDirectory() as home:
        folder = Path(home, "program")
        shutil.copytree(sys.argv[1], folder, ignore=shutil.ignore_patterns("discbook.ini", "Recovery", "Backups"))
        Path(folder, "Live.xml").write_text(CATALOG, encoding="utf-8")
        environment = {**os.environ, "HOME": home, "QT_QPA_PLATFORM": "xcb", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        manager = subprocess.Popen(["openbox"], stderr=subprocess.DEVNULL)
        # A window that comes while the window manager starts may never be shown.
        wait(lambda: subprocess.run(["xdotool", "get_desktop"], capture_output=True).returncode == 0, "The window manager")
        process = subprocess.Popen([folder / "discbook"], cwd=folder, env=environment)
        try:
            walk(process)
        finally:
            process.kill()
            manager.terminate()
    sys.exit("\n".join(problems) or 0)


main()
