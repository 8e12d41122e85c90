"""Restyles CMake's graph of the targets, or a trace of a second, for Graphviz's dot.

    diagrams.py subsystems TARGETS.DOT
    diagrams.py second TRACE

See tools/documents/diagrams.
"""
import html
import pathlib
import re
import sys

SOURCES = pathlib.Path(__file__).resolve().parents[2] / "src"

INK = "#0d2b45"
LINE = "#5b7fa3"
# One family, from dark to light: the entry, the windows, the rest of ours, Qt.
STRONG, MIDDLE, SOFT, PALE = "#2f6690", "#81afd3", "#c3dbee", "#eef4f9"


def label(title, small=""):
    lines = [f'<b>{html.escape(title)}</b>']
    if small:
        lines.append(f'<font point-size="10">{small}</font>')
    return "<" + "<br/>".join(lines) + ">"


def graph(title, attributes, body):
    return (
        f'digraph "{title}" {{\n'
        f'graph [bgcolor=white, pad=0.2, fontname="DejaVu Sans", fontcolor="{INK}", {attributes}]\n'
        f'node [shape=box, style="filled,rounded", penwidth=1.2, color="{LINE}",'
        f' fontcolor="{INK}", fontname="DejaVu Sans", fontsize=13, margin="0.16,0.08"]\n'
        f'edge [color="{LINE}", penwidth=1.2, arrowsize=0.7]\n'
        + "\n".join(body)
        + "\n}\n"
    )


def subsystems(path):
    text = pathlib.Path(path).read_text(encoding="utf-8")
    names = {}
    tools = set()
    for node, name, shape in re.findall(r'"(node\d+)" \[ label = "([^"]+)", shape = (\w+)', text):
        names[node] = name.split("\\n")[0]
        if shape == "egg" and names[node].startswith("Qt6::"):
            tools.add(node)  # Qt's generators
    edges = re.findall(r'"(node\d+)" -> "(node\d+)"', text)

    def is_ours(node):
        return names[node].startswith("velmora") and not names[node].endswith("options")

    def is_toolkit(node):
        return names[node].startswith("Qt6::") and node not in tools

    shown = sorted(
        {
            (names[one], names[other])
            for one, other in edges
            if is_ours(one) and (is_ours(other) or is_toolkit(other))
        }
    )
    if not shown:
        sys.exit("diagrams: no link of the program's own targets in " + path)
    body = []
    for name in sorted({name for edge in shown for name in edge}):
        if name.startswith("Qt6::"):
            body.append(f'"{name}" [fillcolor="{PALE}", label={label("Qt " + name[5:])}]')
            continue
        short = name.removeprefix("velmora_")
        parts = sorted(header.stem for header in (SOURCES / short).glob("*.h"))
        rows = [", ".join(parts[i : i + 3]) for i in range(0, len(parts), 3)]
        fill = STRONG if name == "velmora" else MIDDLE if short == "control" else SOFT
        colour = ', fontcolor="white"' if fill == STRONG else ""
        both = label(short, "<br/>".join(rows))
        body.append(f'"{name}" [fillcolor="{fill}"{colour}, label={both}]')
    body += [f'"{one}" -> "{other}"' for one, other in shown]
    toolkit = sorted({name for _, name in shown if name.startswith("Qt6::")})
    body.append("{ rank=same; " + "; ".join(f'"{name}"' for name in toolkit) + " }")
    return graph("Subsystems of Velmora", "ranksep=0.5, nodesep=0.3", body)


class CallTree:
    """Calls one under the other in their order, each further in than its caller."""

    WIDTH, HEIGHT, ROW, INDENT, STEM = 400, 24, 31, 26, 12  # points

    def __init__(self):
        self.body = []
        self.rows = 0

    def add(self, text, fill, caller=None):
        """Adds a call below all others; returns it as the caller of further ones."""
        depth = caller[0] + 1 if caller else 0
        if not caller and self.rows:
            self.rows += 1  # room above a new event
        left, middle = depth * self.INDENT, -self.rows * self.ROW
        colour = ', fontcolor="white"' if fill == STRONG else ""
        shown = f'"{text}\\l"' if caller else f"<<b>{html.escape(text)}</b>>"
        self.body.append(
            f'n{self.rows} [pos="{left + self.WIDTH / 2},{middle}", fillcolor="{fill}"{colour},'
            f" label={shown}]"
        )
        if caller:
            self.draw_line(caller, left, middle)
        self.rows += 1
        return depth, self.rows - 1

    def draw_line(self, caller, left, middle):
        """Straight down from the caller, then straight to the right."""
        stem = left - self.INDENT + self.STEM
        start = -caller[1] * self.ROW - self.HEIGHT / 2
        way = [(stem, start), (stem, start), (stem, middle), (stem, middle)]
        way += [(stem, middle), (left - 6, middle), (left - 6, middle)]
        points = " ".join(f"{x},{y}" for x, y in way)
        self.body.append(f'n{caller[1]} -> n{self.rows} [pos="e,{left},{middle} {points}"]')

    def text(self):
        size = f"width={self.WIDTH / 72:.4f}, height={self.HEIGHT / 72:.4f}, fixedsize=true"
        body = [f'node [{size}, fontsize=12, margin="0.12,0"]', *self.body]
        return graph("A second of Velmora", "splines=true", body)


def second(path):
    lines = pathlib.Path(path).read_text(encoding="utf-8").splitlines()
    fills = {"TimerEngine": STRONG, "ControlWindow": SOFT, "OutputWindow": MIDDLE}
    tree = CallTree()
    roots = {}
    open_calls = []  # the way to the last call, as (text, call)
    for line in lines:
        way = line.split("\t")
        root = way[0] == "QTimer::timeout"
        if root not in roots:
            event = "a second has passed" if root else "what has changed is painted"
            roots[root] = tree.add(f"The event loop: {event}", PALE)
            open_calls = []
        while [text for text, _ in open_calls] != way[: len(open_calls)]:
            open_calls.pop()
        if len(open_calls) == len(way):
            open_calls.pop()  # the same method once more
        for text in way[len(open_calls) :]:
            caller = open_calls[-1][1] if open_calls else roots[root]
            method, _, widget = text.partition(" ")
            fill = fills.get(re.split(r"\.|::", widget or method)[0], PALE)
            shown = f"{method}  ·  {widget}" if widget else method
            open_calls.append((text, tree.add(shown, fill, caller)))
    return tree.text()


if __name__ == "__main__":
    draw = {"subsystems": subsystems, "second": second}[sys.argv[1]]
    print(draw(sys.argv[2]), end="")
