"""Drives Velmora from outside, on a private desktop (virtual-desktop, wayland-desktop).

Widgets are found by their accessible names over the desktop's accessibility bus, as a screen reader
finds them; keys and clicks are real ones, sent through the X server; pixels are read to see what is
shown. README.md, beside this file, has a short introduction. What does not come about within
PATIENCE seconds raises an AssertionError that says what was awaited.
"""

import contextlib
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import tempfile
import time

import gi
from Xlib import X, XK, Xatom, display as xdisplay, error
from Xlib.ext import xtest
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
# Large enough for nothing in it to scroll.
CONTROL_PLACE = (80, 40, 560, 900)

NORMAL, WARNING, CRITICAL, MESSAGE = "00cc00", "ff8800", "ff2200", "ffff00"

# What Qt and its libraries write to standard error where there is no sound server, no graphics card
# and no network. The null pointer comes now and then from the oldest Qt, when the connection of the
# update check is refused at once.
NOT_OURS = re.compile(
    r"PulseAudioService:|\[[EW]\]\[[0-9:.]+\] pw\.|qt\.multimedia|ALSA lib|"
    r"Failed to open VDPAU backend|libva |qt\.accessibility\.atspi|"
    r"(qt\.core\.qobject\.connect: )?QObject::connect\(QObject, Unknown\): invalid nullptr")


def wait_for(condition, what, patience=PATIENCE):
    """Repeats the condition until it is true, and returns what it gave. `what` says it in words; a
    function says it when it has not come about."""
    end = time.monotonic() + patience
    while True:
        with contextlib.suppress(GLib.Error):  # a widget that has just gone, or no answer in time
            if value := condition():
                return value
        if time.monotonic() > end:
            raise AssertionError(f"not within {patience} s: {what() if callable(what) else what}")
        time.sleep(0.02)


# The X desktop: windows, keys, the mouse and pixels.

_x = xdisplay.Display()
_root = _x.screen().root


def _windows():
    """The managed windows that are shown, by title."""
    found = {}
    clients = _root.get_full_property(_x.intern_atom("_NET_CLIENT_LIST"), Xatom.WINDOW)
    for number in clients.value if clients else ():
        window = _x.create_resource_object("window", number)
        with contextlib.suppress(error.XError):  # it has just gone
            title = window.get_full_property(_x.intern_atom("_NET_WM_NAME"), X.AnyPropertyType)
            found[title.value.decode() if title else window.get_wm_name()] = window
    return found


def has_window(title):
    return title in _windows()


def _window(title):
    return wait_for(lambda: _windows().get(title), f'a window "{title}"')


def geometry(title):
    """The window's client area on the desktop as (x, y, width, height); None without a window."""
    try:
        window = _windows()[title]
        size = window.get_geometry()
        place = _root.translate_coords(window, 0, 0)
    except (KeyError, error.XError):
        return None
    return place.x, place.y, size.width, size.height


def window_class(title):
    """The class by which the desktop finds the window's entry in its menu."""
    return _window(title).get_wm_class()[1]


def active_window():
    """The title of the window that has the keyboard."""
    active = _root.get_full_property(_x.intern_atom("_NET_ACTIVE_WINDOW"), Xatom.WINDOW)
    return next((title for title, window in _windows().items()
                 if active and window.id == active.value[0]), None)


def await_gone(title):
    """Waits until there is no such window, and the window manager has given the keyboard to one of
    those that are left."""
    wait_for(lambda: not has_window(title) and (active_window() or not _windows()),
             f'"{title}" to go')


def _ask_manager(title, request, *data):
    message = event.ClientMessage(window=_window(title), client_type=_x.intern_atom(request),
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
    """Gives the keyboard to the window."""
    _ask_manager(title, "_NET_ACTIVE_WINDOW", 2)
    wait_for(lambda: active_window() == title, f'the keyboard on "{title}"')


def _codes(key):
    """What is pressed for a key, as "a", "A", "Return" or "ctrl+a"."""
    *modifiers, last = [key] if key == "+" else key.split("+")
    names = [{"ctrl": "Control_L", "shift": "Shift_L", "alt": "Alt_L"}[name] for name in modifiers]
    symbol = XK.string_to_keysym(last) or ord(last)
    code, level = min(((code, level) for code, level in _x.keysym_to_keycodes(symbol)
                       if level < 2), key=lambda one: one[1], default=(0, 0))
    if not code:
        raise ValueError(f"the keyboard has no key for {key!r}")
    names += ["Shift_L"] if level else []
    return [*(_x.keysym_to_keycode(XK.string_to_keysym(name)) for name in names), code]


def _fake(codes, kind):
    for code in codes:
        xtest.fake_input(_x, kind, code)
    _x.sync()


def keys(*names, pause=KEY_PAUSE):
    """Presses keys, one after the other, in the window that has the keyboard."""
    for name in names:
        codes = _codes(name)
        _fake(codes, X.KeyPress)
        _fake(reversed(codes), X.KeyRelease)
        time.sleep(pause)


def type_text(text):
    keys(*("space" if letter == " " else letter for letter in text))


@contextlib.contextmanager
def held(name):
    """A key that is down meanwhile; the X server repeats it."""
    _fake(_codes(name), X.KeyPress)
    try:
        yield
    finally:
        _fake(reversed(_codes(name)), X.KeyRelease)


def point(x, y):
    xtest.fake_input(_x, X.MotionNotify, x=x, y=y)
    _x.sync()


def click(x, y):
    """A click of the mouse at a place of the desktop. The window manager passes it on when it has
    given the window the keyboard: wait for what it brings about before pressing keys."""
    point(x, y)
    _fake([1], X.ButtonPress)
    _fake([1], X.ButtonRelease)


def turn_wheel(steps):
    """Turns the wheel of the mouse: down, and with a negative number up."""
    for _ in range(abs(steps)):
        for kind in X.ButtonPress, X.ButtonRelease:
            _fake([5 if steps > 0 else 4], kind)


class Picture:
    """What is to be seen at one moment in an area (x, y, width, height) of the desktop."""

    def __init__(self, area=(0, 0, 3840, 1080)):
        self.x, self.y, self.width, self.height = area
        # Four bytes a pixel: blue, green, red, and one that tells where a pixel ends.
        data = bytearray(_root.get_image(*area, X.ZPixmap, 0xffffffff).data)
        data[3::4] = b"\1" * (len(data) // 4)
        self.data = bytes(data)

    def rows(self, area=None):
        x, y, width, height = area or (self.x, self.y, self.width, self.height)
        first = (y - self.y) * self.width + x - self.x
        return [self.data[4 * start:4 * (start + width)]
                for start in range(first, first + height * self.width, self.width)]

    def ink(self, colour, area=None, least=3):
        """The box (x, y, width, height) around all that is drawn in the colour (rrggbb), as far
        as that many pixels of it are in a row; None without any."""
        pixel = bytes.fromhex(colour)[::-1] + b"\1"
        runs = re.compile(b"(?:%s){%d,}" % (re.escape(pixel), least))
        x, y, left, right, lines = *(area or (self.x, self.y))[:2], self.width, 0, []
        for line, row in enumerate(self.rows(area)):
            if pixel not in row:
                continue
            for run in runs.finditer(row):
                left, right = min(left, run.start() // 4), max(right, run.end() // 4)
                lines.append(line)
        if not lines:
            return None
        return x + left, y + lines[0], right - left, lines[-1] - lines[0] + 1

    def save(self, file, area=None):
        x, y, width, height = area or (self.x, self.y, self.width, self.height)
        subprocess.run(["convert", "-size", f"{width}x{height}", "-depth", "8", "bgra:-", "-alpha",
                        "off", str(file)], input=b"".join(self.rows((x, y, width, height))),
                       check=True)


def shows(area, colour):
    """Whether anything in the area, if there is one, is drawn in the colour."""
    return area is not None and Picture(area).ink(colour) is not None


def has_second_monitor(on):
    """Plugs the second monitor in, or unplugs it."""
    options = ["--mode", "1920x1080", "--right-of", "DUMMY0"] if on else ["--off"]
    subprocess.run(["xrandr", "--output", "DUMMY1", *options], check=True, capture_output=True)


# The program, and its widgets by way of the accessibility bus.

# Of one question on the bus, in milliseconds: short, so that one without an answer is asked again.
Atspi.set_timeout(5000, 5000)


def _descends(pid, ancestor):
    """Whether a process is the other one, or one that it has started (the command may be a script
    that starts the program)."""
    while pid not in (0, ancestor):
        status = pathlib.Path(f"/proc/{pid}/stat").read_text(encoding="utf-8")
        pid = int(status.rpartition(")")[2].split()[1])
    return pid == ancestor


def _shown_below(accessible):
    for index in range(accessible.get_child_count()):
        child = accessible.get_child_at_index(index)
        if child and has_state(child, Atspi.StateType.SHOWING):
            yield child
            yield from _shown_below(child)


class Program:
    """One Velmora, with a settings store of its own. To be used in a `with`, at whose end the
    program is killed if it still runs, and the store removed.

    command: a program and its arguments, as one text; VELMORA_JOURNEY_PROGRAM replaces it.
    settings: what the store holds at first, without "[General]"; None without a file.
    accessible: whether the program is connected to the accessibility bus. If not, it costs what it
        costs most users, and only windows, keys, clicks and pixels are there.
    environment: variables that are added."""

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
        with self.errors.open("ab") as errors:
            self.process = subprocess.Popen(self.command, env=self.environment, stderr=errors)

    def start(self):
        """Starts it, waits for both windows and lays them out."""
        self.launch()
        self.await_windows()
        self.lay_out()

    def lay_out(self):
        """Makes the Control window so large that all of it is to be seen."""
        place(CONTROL, *CONTROL_PLACE)
        wait_for(lambda: (geometry(CONTROL) or ())[2:] == CONTROL_PLACE[2:] and active_window(),
                 "the size of the Control window, and a window with the keyboard")

    def await_windows(self):
        wait_for(lambda: not self.is_running() or has_window(CONTROL) and has_window(OUTPUT),
                 "both windows")
        if self.accessible:
            self.await_figures()
        if not self.is_running():
            raise AssertionError(f"Velmora has ended: {self.process.returncode}\n{self.written()}")

    def await_figures(self):
        wait_for(lambda: not self.is_running() or len(self.texts("Timer")) == 2, "both figures")

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

    def complaints(self):
        """What it wrote there itself."""
        return [line for line in self.written().splitlines()
                if line and not NOT_OURS.match(line)]

    def stored(self):
        """What the settings store holds; empty without a file."""
        return self.store.read_text(encoding="utf-8") if self.store.exists() else ""

    def application(self):
        """Its entry on the bus; None if it is not there (yet)."""
        desktop = Atspi.get_desktop(0)
        desktop.set_cache_mask(Atspi.Cache.NONE)
        for index in range(desktop.get_child_count()):
            with contextlib.suppress(GLib.Error, FileNotFoundError):  # one that is just ending
                application = desktop.get_child_at_index(index)
                if application and _descends(application.get_process_id(), self.process.pid):
                    application.set_cache_mask(Atspi.Cache.NONE)  # nothing would renew it here
                    return application
        return None

    def widgets(self, window=None):
        """All that is shown, in the order of the accessible tree, as (widget, window's title);
        with a title, of that window only."""
        found = []
        application = self.application()
        for index in range(application.get_child_count() if application else 0):
            with contextlib.suppress(GLib.Error):  # a window that is just closing
                top = application.get_child_at_index(index)
                if top and window in (None, top.get_name()):
                    found += [(widget, top.get_name()) for widget in _shown_below(top)]
        return found

    def named(self, name, window=None):
        """The widget of that accessible name, and with several the first; waits for it."""
        def look():
            return next((widget for widget, _ in self.widgets(window)
                         if widget.get_name() == name), None)

        return wait_for(look, lambda: f'"{name}" in {self.application()}, which has ' + ", ".join(
            f'"{widget.get_name()}"' for widget, _ in self.widgets(window) if widget.get_name()))

    def has(self, name, window=None):
        return any(widget.get_name() == name for widget, _ in self.widgets(window))

    def area(self, widget):
        """Its place on the desktop, as (x, y, width, height)."""
        box = widget.get_extents(Atspi.CoordType.SCREEN)
        return box.x, box.y, box.width, box.height

    def press(self, name, window=None):
        """Presses a button, as a screen reader does, and waits until it is up again."""
        widget = self.named(name, window)
        widget.do_action(0)
        wait_for(lambda: not has_state(widget, Atspi.StateType.PRESSED), f'"{name}" to be up')

    def click(self, name, window=None):
        """A click of the mouse in the middle of the widget."""
        x, y, width, height = self.area(self.named(name, window))
        click(x + width // 2, y + height // 2)

    def click_into(self, name, window=None):
        """The same for an input; waits until it has the keyboard."""
        self.click(name, window)
        wait_for(lambda: has_state(self.named(name, window), Atspi.StateType.FOCUSED),
                 f'the keyboard in "{name}"')

    def set_text(self, name, text, window=None):
        """Replaces the text of an input, without keys."""
        self.named(name, window).set_text_contents(text)

    def set_value(self, name, value, window=None):
        """The same for a number."""
        self.named(name, window).set_current_value(value)

    def set_time(self, minutes, seconds):
        """Fills the Set Time row and presses "Set"."""
        self.set_value("Minutes", minutes, CONTROL)
        self.set_value("Seconds", seconds, CONTROL)
        self.press("Set time", CONTROL)

    def push_message(self, text):
        self.set_text("Message overlay", text, CONTROL)
        self.press("Push message", CONTROL)

    def labels(self, description, window=None):
        """The widgets described so: "Timer", "Clock", "Message"."""
        return [widget for widget, _ in self.widgets(window)
                if widget.get_description() == description]

    def texts(self, description, window=None):
        """What the labels described so show."""
        return [widget.get_name() for widget in self.labels(description, window)]

    def shows(self, text, colour, size=None, window=OUTPUT, description="Timer"):
        """Whether the label described so shows exactly this text (None: any), and is seen in this
        colour; with a size, whether the drawn figure is as high and long as in that font size."""
        for label in self.labels(description, window):
            shown = label.get_name()
            box = Picture(self.area(label)).ink(colour) if text in (None, shown) else None
            if box and label.get_name() == shown:
                return size is None or (0.68 * size < box[3] < 0.8 * size and abs(
                    box[2] / size - (0.602 * len(shown) - 0.1)) < 0.15)
        return False


def has_state(widget, state):
    return widget.get_state_set().contains(state)
