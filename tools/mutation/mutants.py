"""Finds the single changes of src/ that tools/mutation/mutate tries. See there for what is changed.

The sources are read by libclang with the arguments of a build, so that comments, directives and
templates are not taken for code.
"""
import collections
import dataclasses
import itertools
import json
import re
import shlex

from clang.cindex import (AccessSpecifier, CursorKind, Diagnostic, Index, SourceLocation,
                          SourceRange, TokenKind)

COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*", "%": "/", "&": "|", "|": "&"}
LOGICAL = {"&&": "||", "||": "&&"}
FUNCTIONS = (CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.CONSTRUCTOR,
             CursorKind.DESTRUCTOR)
# What may stand before a statement.
STATEMENT_BEGINS = {";", "{", "}", ")", "else", "emit"}
# A declaration of a style sheet: its name and its value.
DECLARATION = re.compile(
    r"([a-z][a-z-]*)(\s*:\s*)([^:;{}\"]*[^:;{}\"\s]|qlineargradient\([^;]*)(?=\s*;)")
SELECTOR = re.compile(r"\bQ[A-Z]\w*(?=[^{};]*\{)")
COLOR = re.compile(r"#[0-9a-fA-F]*([0-9a-fA-F])")


@dataclasses.dataclass(frozen=True)
class Mutant:
    path: str  # from the sources' root
    line: int
    offset: int  # in bytes, as is the end
    end: int
    replacement: bytes
    operator: str
    before: str  # the line's code, or the call's
    after: str
    function: str  # the name of the function around it, or ""
    # Whether only the sources need be compiled again: what is private, or initialised by a
    # constructor of the sources, is no matter of the tests that include the header.
    sources_only: bool
    number: int = 0  # among those of the same file and text

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
        if not entry["file"].startswith(f"{root}/src/") or "_entry.dir" in entry["command"]:
            continue
        # All arguments but what to read and what to write; precompiled headers are read as well.
        words = shlex.split(entry["command"])
        words = list(itertools.dropwhile(lambda word: not word.startswith("-"), words))
        words = [word for before, word in zip(["", *words], words)
                 if word not in ("-o", "-c") and before not in ("-o", "-c")]
        unit = index.parse(entry["file"], words)
        for diagnostic in unit.diagnostics:
            if diagnostic.severity >= Diagnostic.Error:
                raise SystemExit(f"mutate: {diagnostic}")
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
        with open(name, "rb") as file:
            self.text = file.read()
        self.found = {}
        ends = (SourceLocation.from_offset(unit, unit.get_file(name), offset)
                for offset in (0, len(self.text)))
        self.tokens = without_directives(
            unit.get_tokens(extent=SourceRange.from_locations(*ends)))
        self.at = {token.extent.start.offset: i for i, token in enumerate(self.tokens)}
        self.cursors = [cursor for declaration in unit.cursor.get_children()
                        if declaration.location.file and declaration.location.file.name == name
                        for cursor in declaration.walk_preorder()]
        self.functions = [(*extent(cursor), cursor.spelling) for cursor in self.cursors
                          if cursor.kind in FUNCTIONS and cursor.is_definition()]
        self.initialised = [
            extent(field) for cursor in self.cursors
            if cursor.kind in (CursorKind.CLASS_DECL, CursorKind.STRUCT_DECL)
            and any(member.kind == CursorKind.CONSTRUCTOR and not member.is_definition()
                    for member in cursor.get_children())
            for field in cursor.get_children()
            if field.kind == CursorKind.FIELD_DECL
            or field.access_specifier == AccessSpecifier.PRIVATE]

    def mutants(self):
        for i, token in enumerate(self.tokens):
            self.change_token(i, token)
        for cursor in self.cursors:
            if cursor.kind == CursorKind.CALL_EXPR:
                self.remove_call(cursor)
            elif cursor.kind == CursorKind.CONDITIONAL_OPERATOR:
                self.swap_arms(cursor)
        return self.found.values()

    def add(self, operator, offset, end, replacement, whole_statement=False):
        first = offset if whole_statement else self.text.rfind(b"\n", 0, offset) + 1
        last = end if whole_statement else self.text.find(b"\n", end)
        after = self.text[first:offset] + replacement + self.text[end:last]
        functions = [name for begin, stop, name in self.functions if begin <= offset < stop]
        self.found.setdefault((offset, end, replacement), Mutant(
            self.path, self.text.count(b"\n", 0, offset) + 1, offset, end, replacement, operator,
            one_line(self.text[first:last]), "removed" if whole_statement else one_line(after),
            functions[0] if functions else "",
            any(begin <= offset < stop for begin, stop in self.initialised)))

    def change_token(self, i, token):
        start, end = extent(token)
        text = token.spelling
        # The format separates operators from the angle brackets of templates, and from references.
        is_spaced = self.text[start - 1:start].isspace() and self.text[end:end + 1].isspace()

        def replace(operator, replacement):
            self.add(operator, start, end, replacement.encode())

        if token.kind == TokenKind.LITERAL:
            self.change_literal(text, start)
        elif text in ("true", "false"):
            replace("boolean", "false" if text == "true" else "true")
        elif text in LOGICAL:
            if is_spaced:
                replace("logical", LOGICAL[text])
        elif text in COMPARISONS:
            if is_spaced:
                replace("comparison", COMPARISONS[text])
        elif text in ARITHMETIC and is_spaced:
            replace("arithmetic", ARITHMETIC[text])
        elif text == "-":
            replace("arithmetic", "")
        elif text == "!":
            replace("logical", "")
        elif text == "if":
            self.negate_if(i)
        elif token.kind == TokenKind.IDENTIFIER and (other := other_enumerator(token)):
            replace("enumerator", other)

    def change_literal(self, text, start):
        operator = "constant"
        if text.startswith("'"):
            changes = [(1, len(text) - 1, " " if text[1] == "\\" else chr(ord(text[1]) + 1))]
        elif text[0].isdigit():
            number = re.match(r"\d+", text)
            changes = [(0, number.end(), str(int(number[0]) + 1))]
        elif opening := re.match(r'R"\(|"', text):
            operator = "text"
            closing = len(text) - (2 if opening[0].startswith("R") else 1)
            changes = text_changes(text, opening.end(), closing)
        else:
            return
        for first, last, replacement in changes:
            # Places in the text are characters, those in the file are bytes.
            offset = start + len(text[:first].encode())
            self.add(operator, offset, offset + len(text[first:last].encode()),
                     replacement.encode())

    def negate_if(self, i):
        if self.tokens[i + 1].spelling == "constexpr":
            i += 1
        depth = 0
        for j in range(i + 1, len(self.tokens)):
            depth += {"(": 1, ")": -1}.get(self.tokens[j].spelling, 0)
            if depth == 0:
                break
        condition = self.tokens[i + 2:j]
        if "=" not in (token.spelling for token in condition):
            self.negate(condition, extent(condition[0])[0], extent(condition[-1])[1])

    def swap_arms(self, cursor):
        first, last = extent(next(cursor.get_children()))
        if first in self.at and self.text[last:].lstrip().startswith(b"?"):
            self.negate(list(itertools.takewhile(lambda token: extent(token)[0] < last,
                                                 self.tokens[self.at[first]:])), first, last)

    def negate(self, condition, first, last):
        # Where it is one comparison for equality, or begins with its negation, the change of that
        # token does the same.
        words = [token.spelling for token in condition]
        if {"&&", "||"} & set(words) or not (words[0] == "!" or {"==", "!="} & set(words)):
            self.add("condition", first, last, b"!(" + self.text[first:last] + b")")

    def remove_call(self, cursor):
        first, last = extent(cursor)
        if cursor.spelling.startswith("operator") or self.text[last:last + 1] != b";":
            return
        i = self.at.get(first)
        if i and self.tokens[i - 1].spelling in STATEMENT_BEGINS:
            self.add("removed call", first, last, b"", whole_statement=True)


def extent(node):
    return node.extent.start.offset, node.extent.end.offset


def without_directives(tokens):
    kept = []
    skipped_line = line = 0
    for token in tokens:
        if token.spelling == "#" and token.location.line != line:
            skipped_line = token.location.line
        line = token.extent.end.line
        if token.location.line != skipped_line and token.kind != TokenKind.COMMENT:
            kept.append(token)
    return kept


def other_enumerator(token):
    constant = token.cursor.referenced if token.cursor.kind == CursorKind.DECL_REF_EXPR else None
    if (constant and constant.kind == CursorKind.ENUM_CONSTANT_DECL
            and constant.spelling == token.spelling):
        for other in constant.semantic_parent.get_children():
            if (other.kind == CursorKind.ENUM_CONSTANT_DECL
                    and other.enum_value != constant.enum_value):
                return other.spelling
    return None


def text_changes(text, first, last):
    """The changes of a string literal: each declaration and each selector of a style sheet, or one
    change of any other text."""
    if re.search("[;{]", text[first:last]):
        changes = [declaration_change(match) for match in DECLARATION.finditer(text, first, last)]
        changes += [(match.end(), match.end(), "x")
                    for match in SELECTOR.finditer(text, first, last)]
        if changes:
            return changes
    if color := COLOR.search(text, first, last):
        return [(*color.span(1), next_digit(color[1]))]
    # Not the letter of an escape, nor a place-holder.
    if letters := list(re.compile(r"(?<![\\%])[A-Za-z]").finditer(text, first, last)):
        return [(letters[-1].end(), letters[-1].end(), "x")]
    if digits := list(re.compile(r"(?<!%)\d").finditer(text, first, last)):
        return [(*digits[-1].span(), next_digit(digits[-1][0]))]
    return [(last, last, "x")]


def declaration_change(match):
    value, at = match[3], match.start(3)
    if color := COLOR.search(value):
        return at + color.start(1), at + color.end(1), next_digit(color[1])
    if number := re.search(r"(?<![%\w])\d+", value):
        return at + number.start(), at + number.end(), str(int(number[0]) + 1)
    if word := re.search(r"(?<!%)[A-Za-z]+", value):
        return at + word.end(), at + word.end(), "x"
    return match.end(1), match.end(1), "x"  # a place-holder alone


def next_digit(digit):
    return "0123456789abcdef"[(int(digit, 16) + 1) % (10 if digit.isdigit() else 16)]


def one_line(code):
    return " ".join(code.decode().split())
