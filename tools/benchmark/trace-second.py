# Run by gdb (see tools/documents/diagrams): writes down what one counting second of Velmora calls.
#
# From the third tick of the engine on, the program is stopped at each of its own methods and
# at what these ask of Qt, and the callers are read off the stack. A line of the
# trace is one call: its callers from the outermost one down to itself, parted by tabs, where
# a widget follows the method that it is asked to run. It ends once both windows have painted
# the new figure. What other timers do in the meantime is left out.
import os
import re

import gdb

# Not the meta-object's own methods, nor the filter that is asked about every event.
OWN_METHOD = re.compile(
    r"^((TimerEngine|OutputWindow|ControlWindow)::(?!qt_|tr\(|metaObject|eventFilter)\w+"
    r"|figureText|thresholdColor)\([^<>]*\)( const)?$"
)
ASKED_OF_TOOLKIT = ["QLabel::setText", "QWidget::setStyleSheet", "QProgressBar::setValue"]
PAINTING = ["QLabel::paintEvent", "QProgressBar::paintEvent"]
FIGURES = {"ControlWindow.timerPreview", "OutputWindow.timerLabel"}
FIRST_ARGUMENT = {"i386:x86-64": "$rdi", "aarch64": "$x0"}

widgets = {}  # address: its name, as in OutputWindow.timerLabel
changed = set()  # widgets that the tick has changed
painted = set()
trace = []


def plain(function):
    return function.split("(")[0]


def own_methods():
    names = set()
    for line in gdb.execute("info functions -n", to_string=True).splitlines():
        found = re.search(r"[ *&]((?:\w+::)?\w+\(.*\)(?: const)?);$", line)
        if found and OWN_METHOD.match(found.group(1)):
            names.add(found.group(1))
    return sorted(names)


def learn_members(window):
    for field in window.type.fields():
        if not field.is_base_class and field.type.code == gdb.TYPE_CODE_PTR:
            widgets[int(window[field.name])] = f"{window.type.name}.{field.name}"


def receiver(frame):
    """The name of the widget whose method has just been entered; empty for any other one."""
    return widgets.get(int(gdb.parse_and_eval(FIRST_ARGUMENT[frame.architecture().name()])), "")


class Call(gdb.Breakpoint):
    in_toolkit = False

    def __init__(self, method):
        super().__init__(method, internal=True)
        self.silent = True
        self.method = plain(method)

    def stop(self):
        frame = gdb.selected_frame()
        if self.in_toolkit and gdb.solib_name(frame.pc()) is None:
            return False  # the program's jump into the library, not yet the method
        way = []
        while frame is not None:
            name = plain(frame.name() or "")
            if name == "QTimer::timeout" or OWN_METHOD.match(f"{name}()"):
                way.insert(0, name)
            frame = frame.older()
        return self.note(way)

    def note(self, way):
        if self.method.endswith("::onTimerTick"):
            learn_members(gdb.selected_frame().read_var("this").dereference())
        if way[:2] == ["QTimer::timeout", "TimerEngine::onTimeout"] or way == [
            "OutputWindow::paintEvent"
        ]:
            trace.append(way)
        return False


class Request(Call):
    """The program asks a widget of Qt to change."""

    in_toolkit = True

    def note(self, way):
        widget = receiver(gdb.selected_frame())
        if way[:2] == ["QTimer::timeout", "TimerEngine::onTimeout"] and widget:
            changed.add(widget)
            trace.append([*way, f"{self.method} {widget}"])
        return False


class Painting(Call):
    """Qt has a changed widget paint itself; the last one ends the trace."""

    in_toolkit = True

    def note(self, way):
        widget = receiver(gdb.selected_frame())
        if widget in changed:
            painted.add(widget)
            trace.append([*way, f"{self.method} {widget}"])
        return painted == changed and FIGURES <= painted


gdb.execute("set breakpoint pending on")
gdb.execute("set disable-randomization off")
tick = gdb.Breakpoint("TimerEngine::onTimeout", internal=True)
tick.silent = True
tick.ignore_count = 2
gdb.execute("run")
tick.delete()

calls = [Call(method) for method in own_methods()]
calls += [Request(method) for method in ASKED_OF_TOOLKIT]
calls += [Painting(method) for method in PAINTING]
trace.append(["QTimer::timeout", "TimerEngine::onTimeout"])
gdb.execute("continue")

with open(os.environ["VELMORA_TRACE"], "w", encoding="utf-8") as file:
    file.writelines("\t".join(way) + "\n" for way in trace)
for call in calls:
    call.delete()
gdb.execute("kill")
