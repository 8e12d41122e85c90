"""Drives Velmora from outside, on a private desktop (virtual-desktop).

Widgets are found by their accessible names over the desktop's accessibility bus, as a screen reader
finds them; keys and clicks are real ones, sent through the X server; pixels are read to see what is
shown. README.md, beside this file, has a short introduction. What does not come about within
PATIENCE seconds raises an AssertionError that says what was awaited.
"""

import contextlib
import os
import pathlib
import shlex
import shutil
import subprocess
import tempfile
import time

import gi
import numpy
from Xlib import X, display as xdisplay, error
from Xlib.protocol import event

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402 (the version comes first)

PATIENCE = 30  # seconds: long, for a machine that does other things too
KEY_PAUSE = 0.03  # seconds between two keys of a fast user

CONTROL = "Velmora — Control"
OUTPUT = "Velmora — Output"
PREVIEW = "Output Preview"
SETTINGS = "Settings"

FIRST_MONITOR = (0, 0, 1920, 1080)
SECOND_MONITOR = (1920, 0, 1920, 1080)
SCALE = int(os.environ.get("QT_SCALE_FACTOR", 1))  # pixels a unit of Qt

NORMAL, WARNING, CRITICAL, MESSAGE = "00cc00", "ff8800", "ff2200", "ffff00"


def wait_for(condition, what, patience=PATIENCE, pause=0.02):
    """Repeats the condition until it is true, and returns what it gave. `what` says it in words; a
    function says it when it has not come about."""
    end = time.monotonic() + patience
    while True:
        with contextlib.suppress(GLib.Error):  # a widget that has just gone, or no answer in time
            if value := condition():
                return value
        if time.monotonic() > end:
            raise AssertionError(f"not within {patience} s: {what() if callable(what) else what}")
        time.sleep(pause)


# The X desktop: windows, keys, the mouse and pixels.

_x = xdisplay.Display()
_root = _x.screen().root


def _property(window, name):
    found = window.get_full_property(_x.intern_atom(name), X.AnyPropertyType)
    return found.value if found else ()


def _windows():
    """The managed windows that are shown, by title."""
    found = {}
    for number in _property(_root, "_NET_CLIENT_LIST"):
        window = _x.create_resource_object("window", number)
        with contextlib.suppress(error.XError):  # it has just gone
            found[bytes(_property(window, "_NET_WM_NAME")).decode()] = window
    return found


def has_window(title):
    return title in _windows()


def window(title):
    """The window of the X server; waits for it."""
    return wait_for(lambda: _windows().get(title), f'a window "{title}"')


def geometry(title):
    """The window's client area on the desktop as (x, y, width, height); None without a window."""
    with contextlib.suppress(KeyError, error.XError):
        shown = _windows()[title]
        size = shown.get_geometry()
        corner = _root.translate_coords(shown, 0, 0)
        return corner.x, corner.y, size.width, size.height


def active_window():
    """The title of the window that has the keyboard."""
    active = _property(_root, "_NET_ACTIVE_WINDOW")
    return next((title for title, shown in _windows().items() if shown.id in active), None)


def await_gone(title):
    """Waits until there is no such window, and the window manager has given the keyboard to one of
    those that are left."""
    wait_for(lambda: not has_window(title) and (active_window() or not _windows()),
             f'"{title}" to go')


def _ask_manager(title, request, *data):
    message = event.ClientMessage(window=window(title), client_type=_x.intern_atom(request),
                                  data=(32, (*data, 0, 0, 0, 0, 0)[:5]))
    _root.send_event(message, X.SubstructureRedirectMask | X.SubstructureNotifyMask)
    _x.sync()


def place(title, x, y, width=None, height=None):
    """Asks for the window's place and size, as a user does who drags and stretches it."""
    flags = 0x2300 if width is None else 0x2f00
    _ask_manager(title, "_NET_MOVERESIZE_WINDOW", flags, x, y, width or 0, height or 0)


def close_window(title):
    """Closes the window as the × of its title bar does."""
    _ask_manager(title, "_NET_CLOSE_WINDOW", 0, 2)


def activate(title):
    """Gives the keyboard to the window. A window that comes up meanwhile takes it away again."""
    def look():
        return active_window() == title or _ask_manager(title, "_NET_ACTIVE_WINDOW", 2)

    wait_for(look, f'the keyboard on "{title}"', pause=0.1)


def xdotool(*words):
    """Real keys and clicks, by the command of that name."""
    subprocess.run(["xdotool", *map(str, words)], check=True)


def keys(*names, pause=KEY_PAUSE):
    """Presses keys such as "a", "Return" or "ctrl+a", one after the other, in the window that has
    the keyboard."""
    xdotool("key", "--delay", round(1000 * pause), *names)


def type_text(text):
    xdotool("type", "--delay", round(1000 * KEY_PAUSE), text)


def click(x, y):
    """A click of the mouse at a place of the desktop. The window manager passes it on when it has
    given the window the keyboard: wait for what it brings about before pressing keys."""
    xdotool("mousemove", x, y, "click", 1)


class Picture:
    """What is to be seen at one moment in an area (x, y, width, height) of the desktop: its rows of
    `pixels`, each a number 0xrrggbb."""

    def __init__(self, area=(0, 0, 3840, 1080), pixels=None):
        self.area = area
        if pixels is None:
            data = _root.get_image(*area, X.ZPixmap, 0xffffffff).data
            pixels = numpy.frombuffer(data, "<u4").reshape(area[3], area[2]) & 0xffffff
        self.pixels = pixels

    def part(self, area):
        x, y, width, height = area
        left, top = x - self.area[0], y - self.area[1]
        return Picture(area, self.pixels[top:top + height, left:left + width])

    def ink(self, colour, least=3):
        """The box (x, y, width, height) around all that is drawn in the colour (rrggbb), as far
        as that many pixels of it are in a row; None without any."""
        drawn = numpy.pad(self.pixels == int(colour, 16), ((0, 0), (1, 0)))
        before = drawn.cumsum(axis=1)  # in the row
        lines, lefts = numpy.nonzero(before[:, least:] - before[:, :-least] == least)
        if not lines.size:
            return None
        return (self.area[0] + lefts.min(), self.area[1] + lines[0],
                lefts.max() + least - lefts.min(), lines[-1] - lines[0] + 1)

    def save(self, file):
        """The same pixels always make the same file."""
        subprocess.run(["convert", "-size", f"{self.area[2]}x{self.area[3]}", "-depth", "8",
                        "bgra:-", "-alpha", "off", "-strip", "-define", "png:compression-level=9",
                        "-define", "png:exclude-chunks=date,time", str(file)],
                       input=self.pixels.tobytes(), check=True)


def shows(area, colour):
    """Whether anything in the area, if there is one, is drawn in the colour."""
    return area is not None and Picture(area).ink(colour) is not None


# The program, and its widgets by way of the accessibility bus.

# Of one question on the bus, in milliseconds: short, so that one without an answer is asked again.
Atspi.set_timeout(5000, 5000)


def has_state(widget, state):
    return widget.get_state_set().contains(state)


def _children(accessible):
    found = map(accessible.get_child_at_index, range(accessible.get_child_count()))
    return [child for child in found if child]


def _tops():
    desktop = Atspi.get_desktop(0)
    desktop.set_cache_mask(Atspi.Cache.NONE)  # nothing would renew it here
    return [top for application in _children(desktop) for top in _children(application)]


def _shown_below(accessible):
    for child in _children(accessible):
        if has_state(child, Atspi.StateType.SHOWING):
            yield child
            yield from _shown_below(child)


class Program:
    """One Velmora, with a settings store of its own; a desktop has one at a time. To be used in a
    `with`, at whose end the program is killed if it still runs, and the store removed.

    command: a program and its arguments, as one text; VELMORA_JOURNEY_PROGRAM replaces it.
    settings: what the store holds at first, without "[General]"; None without a file.
    accessible: whether the program is connected to the accessibility bus. If not, it costs what it
        costs most users, and only windows, keys, clicks and pixels are there.
    environment: variables that are added. With QT_QPA_PLATFORMTHEME=qt6ct, the desktop's theme is
        what the file `theme` says; a change of it is seen after three seconds."""

    def __init__(self, command, settings=None, accessible=True, environment=None):
        self.command = shlex.split(os.environ.get("VELMORA_JOURNEY_PROGRAM", command))
        self.folder = pathlib.Path(tempfile.mkdtemp(
            prefix="store.", dir=os.environ.get("XDG_RUNTIME_DIR")))
        self.store = self.folder / "Velmora" / "Velmora.conf"
        self.environment = {**os.environ, "XDG_CONFIG_HOME": str(self.folder)}
        if accessible:
            self.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        else:
            del self.environment["DBUS_SESSION_BUS_ADDRESS"]
        self.environment.update(environment or {})
        self.accessible = accessible
        self.errors = self.folder / "stderr"
        self.theme = self.folder / "qt6ct" / "qt6ct.conf"
        self.theme.parent.mkdir()
        self.process = None
        if settings is not None:
            self.store.parent.mkdir()
            self.store.write_text(f"[General]\n{settings}\n", encoding="utf-8")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.kill()
        shutil.rmtree(self.folder)

    def launch(self):
        if self.accessible:
            Atspi.get_desktop(0)  # Qt complains of a bus that comes up while it looks for it
        with self.errors.open("ab") as errors:
            self.process = subprocess.Popen(self.command, env=self.environment, stderr=errors)

    def start(self):
        """Starts it, waits for both windows and lays them out; the program itself."""
        self.launch()
        self.await_windows()
        self.lay_out()
        return self

    def lay_out(self, width=560, height=900):
        """Makes the Control window so large that all of it is to be seen, or as large as that."""
        size = SCALE * width, SCALE * height
        place(CONTROL, SCALE * 80, SCALE * 40, *size)
        wait_for(lambda: (geometry(CONTROL) or ())[2:] == size and active_window(),
                 "the size of the Control window, and a window with the keyboard")

    def await_windows(self):
        wait_for(lambda: not self.is_running() or self.is_up(), "both windows")
        if not self.is_running():
            raise AssertionError(f"Velmora has ended: {self.process.returncode}\n{self.written()}")

    def is_up(self):
        """Whether both windows are there, and their figures are on the bus."""
        return has_window(CONTROL) and has_window(OUTPUT) and (
            not self.accessible or len(self.texts("Timer")) == 2)

    def is_running(self):
        return self.process is not None and self.process.poll() is None

    def close(self):
        """Closes the Control window, and waits for the end; the process's status."""
        close_window(CONTROL)
        return self.status()

    def status(self):
        wait_for(lambda: not self.is_running(), "the end of the process")
        return self.process.returncode

    def kill(self):
        if self.is_running():
            self.process.kill()
            self.process.wait()

    def written(self):
        """What it and its libraries wrote to standard error."""
        return self.errors.read_text(encoding="utf-8", errors="replace")

    def widgets(self, title=None):
        """All that is shown, in the order of the accessible tree; with a title, of that window
        only."""
        found = []
        with contextlib.suppress(GLib.Error):  # a window that is just closing
            for top in _tops():
                if title in (None, top.get_name()):
                    found += _shown_below(top)
        return found

    def titles(self):
        """Of all its windows, dialogs included; it has to answer."""
        return [top.get_name() for top in _tops() if has_state(top, Atspi.StateType.SHOWING)]

    def named(self, name, title=None):
        """The widget of that accessible name, and with several the first; waits for it."""
        return wait_for(
            lambda: next((one for one in self.widgets(title) if one.get_name() == name), None),
            lambda: f'"{name}" among {[one.get_name() for one in self.widgets(title)]}')

    def area(self, widget):
        """Its place on the desktop, as (x, y, width, height)."""
        box = widget.get_extents(Atspi.CoordType.SCREEN)
        return tuple(SCALE * length for length in (box.x, box.y, box.width, box.height))

    def press(self, name, title=None):
        """Presses a button, as a screen reader does, and waits until it is up again."""
        widget = self.named(name, title)
        widget.do_action(0)
        wait_for(lambda: not has_state(widget, Atspi.StateType.PRESSED), f'"{name}" to be up')

    def click(self, name, title=None):
        """A click of the mouse in the middle of the widget."""
        x, y, width, height = self.area(self.named(name, title))
        click(x + width // 2, y + height // 2)

    def click_into(self, name, title=None):
        """The same for an input; waits until it has the keyboard."""
        self.click(name, title)
        wait_for(lambda: has_state(self.named(name, title), Atspi.StateType.FOCUSED),
                 f'the keyboard in "{name}"')

    def set_time(self, minutes, seconds):
        """Fills the Set Time row, without keys, and presses "Set"."""
        self.named("Minutes", CONTROL).set_current_value(minutes)
        self.named("Seconds", CONTROL).set_current_value(seconds)
        self.press("Set time", CONTROL)

    def push_message(self, text):
        self.named("Message overlay", CONTROL).set_text_contents(text)
        self.press("Push message", CONTROL)

    def labels(self, description, title=None):
        """The widgets described so: "Timer", "Clock", "Message"."""
        return [one for one in self.widgets(title) if one.get_description() == description]

    def texts(self, description, title=None):
        """What the labels described so show."""
        return [label.get_name() for label in self.labels(description, title)]

    def shows(self, text, colour, size=None, title=OUTPUT, description="Timer"):
        """Whether the label described so shows exactly this text (None: any), and is seen in this
        colour; with a size, whether the drawn figure is as high and long as in that font size."""
        for label in self.labels(description, title):
            shown = label.get_name()
            box = Picture(self.area(label)).ink(colour) if text in (None, shown) else None
            if box and label.get_name() == shown:
                return size is None or (0.68 * size < box[3] < 0.8 * size and abs(
                    box[2] / size - (0.602 * len(shown) - 0.1)) < 0.15)
        return False
