"""Finds the single changes of src/ that tools/mutation/mutate tries. The README says which.

The sources are read by libclang with the arguments of a build, so that comments, directives and
templates are not taken for code.
"""
import bisect
import collections
import dataclasses
import json
import pathlib
import re
import shlex

from clang.cindex import CursorKind, Diagnostic, Index, SourceLocation, SourceRange, TokenKind

# The format separates these from the angle brackets of templates, and from references, by blanks.
SPACED = {
    "<": ("comparison", "<="), "<=": ("comparison", "<"), ">": ("comparison", ">="),
    ">=": ("comparison", ">"), "==": ("comparison", "!="), "!=": ("comparison", "=="),
    "+": ("arithmetic", "-"), "-": ("arithmetic", "+"), "*": ("arithmetic", "/"),
    "/": ("arithmetic", "*"), "%": ("arithmetic", "/"), "&": ("arithmetic", "|"),
    "|": ("arithmetic", "&"), "&&": ("logical", "||"), "||": ("logical", "&&")}
OTHERS = {"true": ("boolean", "false"), "false": ("boolean", "true"), "-": ("arithmetic", ""),
          "!": ("logical", "")}
# What may stand before a statement.
STATEMENT_BEGINS = {";", "{", "}", ")", "else", "emit"}
# The value of a style sheet's declaration.
DECLARATION = re.compile(
    r"[a-z-]+\s*:\s*([^:;{}\"]*[^:;{}\"\s]|qlineargradient\([^;]*)\s*;")
SELECTOR = re.compile(r"\bQ[A-Z]\w*(?=[^{};]*\{)")
COLOR = re.compile(r"#[0-9a-fA-F]*([0-9a-fA-F])")
NUMBER = re.compile(r"(?<![%\w])\d+")  # not that of a place-holder
WORD = re.compile(r"(?<![\\%])[A-Za-z]+")  # not that of an escape


@dataclasses.dataclass(frozen=True)
class Mutant:
    path: str  # from the sources' root
    line: int
    offset: int  # in bytes, as is the end
    end: int
    replacement: bytes
    operator: str
    before: str  # the line's code
    after: str
    number: int = 0  # among those of the same file and text

    @property
    def change(self):
        return self.path, self.before, self.after

    @property
    def key(self):
        return "\t".join((self.path, self.operator, self.before, self.after, str(self.number)))

    def __str__(self):
        return f"{self.path}:{self.line}  {self.operator}  {self.before}  →  {self.after}"


def find(root, build):
    """All mutants of the sources in root, which are configured and built in build."""
    mutants = []
    seen = set()
    index = Index.create()
    for entry in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        if not entry["file"].startswith(f"{root}/src/"):
            continue
        # The options but what to read and what to write; precompiled headers are read as well.
        options = re.sub(r"^.*?(?= -)| -[co] \S+", "", entry["command"])
        unit = index.parse(entry["file"], shlex.split(options))
        if errors := [each for each in unit.diagnostics if each.severity >= Diagnostic.Error]:
            raise SystemExit(f"mutate: {errors[0]}")
        names = {entry["file"]} | {inclusion.include.name for inclusion in unit.get_includes()}
        for name in sorted(names - seen):
            if name.startswith(f"{root}/src/"):
                seen.add(name)
                mutants += Source(unit, name, name[len(str(root)) + 1:]).mutants()
    counts = collections.Counter()
    mutants.sort(key=lambda each: (each.path, each.offset, each.end))
    for i, mutant in enumerate(mutants):
        mutants[i] = dataclasses.replace(mutant, number=counts[mutant.key])
        counts[mutant.key] += 1
    return mutants


class Source:
    """One file of a translation unit, and what is found in it."""

    def __init__(self, unit, name, path):
        self.path = path
        self.text = pathlib.Path(name).read_bytes()
        self.found = {}
        ends = (SourceLocation.from_offset(unit, unit.get_file(name), offset)
                for offset in (0, len(self.text)))
        directives = {i for i, line in enumerate(self.text.splitlines(), 1)
                      if line.lstrip().startswith(b"#")}
        self.tokens = [
            token for token in unit.get_tokens(extent=SourceRange.from_locations(*ends))
            if token.kind != TokenKind.COMMENT and token.location.line not in directives]
        self.starts = [extent(token)[0] for token in self.tokens]
        self.cursors = [cursor for declaration in unit.cursor.get_children()
                        if declaration.location.file and declaration.location.file.name == name
                        for cursor in declaration.walk_preorder()]

    def mutants(self):
        for token in self.tokens:
            self.change_token(token, *extent(token))
        for cursor in self.cursors:
            if cursor.kind == CursorKind.CALL_EXPR:
                self.remove_call(cursor, *extent(cursor))
            elif cursor.kind in (CursorKind.IF_STMT, CursorKind.CONDITIONAL_OPERATOR):
                condition = next(cursor.get_children())
                self.negate(condition, *extent(condition))
        return self.found.values()

    def add(self, operator, start, end, replacement):
        first, last = self.text.rfind(b"\n", 0, start) + 1, self.text.find(b"\n", end)
        after = self.text[first:start] + replacement + self.text[end:last]
        self.found.setdefault((start, end, replacement), Mutant(
            self.path, self.text.count(b"\n", 0, start) + 1, start, end, replacement, operator,
            one_line(self.text[first:last]), one_line(after)))

    def change_token(self, token, start, end):
        text = token.spelling
        is_spaced = self.text[start - 1:start].isspace() and self.text[end:end + 1].isspace()
        if token.kind == TokenKind.LITERAL:
            operator, changes = literal_changes(text)
            for first, last, replacement in changes:
                # Places in the text are characters, those in the file are bytes.
                self.add(operator, start + len(text[:first].encode()),
                         start + len(text[:last].encode()), replacement.encode())
        elif change := is_spaced and SPACED.get(text) or OTHERS.get(text):
            self.add(change[0], start, end, change[1].encode())
        elif token.kind == TokenKind.IDENTIFIER and (other := other_enumerator(token)):
            self.add("enumerator", start, end, other.encode())

    def negate(self, condition, first, last):
        # Neither a declaration nor a macro's condition. Where it is one comparison for equality, or
        # begins with its negation, the change of that token does the same.
        if (condition.kind.is_expression() and first in self.starts
                and self.text[last:].lstrip().startswith((b")", b"?"))):
            words = [token.spelling for token in condition.get_tokens()]
            if {"&&", "||"} & set(words) or not (words[0] == "!" or {"==", "!="} & set(words)):
                self.add("condition", first, last, b"!(" + self.text[first:last] + b")")

    def remove_call(self, cursor, first, last):
        if not cursor.spelling.startswith("operator") and self.text[last:last + 1] == b";":
            i = bisect.bisect_left(self.starts, first)
            if self.starts[i] == first and self.tokens[i - 1].spelling in STATEMENT_BEGINS:
                self.add("removed call", first, last, b"")


def extent(node):
    return node.extent.start.offset, node.extent.end.offset


def one_line(code):
    return " ".join(code.decode().split())


def other_enumerator(token):
    constant = token.cursor.referenced if token.cursor.kind == CursorKind.DECL_REF_EXPR else None
    if (constant and constant.kind == CursorKind.ENUM_CONSTANT_DECL
            and constant.spelling == token.spelling):
        for other in constant.semantic_parent.get_children():
            if (other.kind == CursorKind.ENUM_CONSTANT_DECL
                    and other.enum_value != constant.enum_value):
                return other.spelling
    return None


def literal_changes(text):
    """The kind, and the begin, end and replacement of each change: of a style sheet, those of each
    declaration and each selector; of anything else one."""
    if text.startswith("'"):
        return "constant", [
            (1, len(text) - 1, " " if text[1] == "\\" else chr(ord(text[1]) + 1))]
    if number := re.match(r"\d+", text):
        return "constant", [(0, number.end(), str(int(number[0]) + 1))]
    if not (opening := re.match(r'R"\(|"', text)):
        return "", []
    place = opening.end(), len(text) - (2 if opening.end() > 1 else 1)
    changes = [text_change(text, *match.span(1)) for match in DECLARATION.finditer(text, *place)]
    changes += [(match.end(), match.end(), "x") for match in SELECTOR.finditer(text, *place)]
    return "text", changes or [text_change(text, *place)]


def text_change(text, first, last):
    """The last digit of a colour, or else a number or a word."""
    if color := COLOR.search(text, first, last):
        return (*color.span(1), f"{int(color[1], 16) ^ 8:x}")
    if number := NUMBER.search(text, first, last):
        return (*number.span(), str(int(number[0]) + 1))
    word = WORD.search(text, first, last)
    end = word.end() if word else last
    return end, end, "x"
