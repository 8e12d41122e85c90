"""Finds the single changes of src/ that tools/mutation/mutate tries. See there for what is changed.

The sources are read by libclang with the arguments of a build, so that comments, directives and
templates are not taken for code.
"""
import collections
import dataclasses
import json
import re
import shlex

from clang import cindex

COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*", "%": "/", "&": "|", "|": "&"}
LOGICAL = {"&&": "||", "||": "&&"}

FUNCTIONS = (
    cindex.CursorKind.FUNCTION_DECL,
    cindex.CursorKind.CXX_METHOD,
    cindex.CursorKind.CONSTRUCTOR,
    cindex.CursorKind.DESTRUCTOR,
)

# What may stand before a statement.
STATEMENT_BEGINS = {";", "{", "}", ")", "else", "emit"}

# A declaration of a style sheet: its name and its value.
DECLARATION = re.compile(
    r"([a-z][a-z-]*)(\s*:\s*)([^:;{}\"]*[^:;{}\"\s]|qlineargradient\([^;]*)(?=\s*;)")
SELECTOR = re.compile(r"\bQ[A-Z]\w*(?=[^{};]*\{)")


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
    # Whether only the sources need be compiled anew: what is private, or initialised by a
    # constructor of the sources, is no matter of the tests that include the header.
    sources_only: bool
    number: int = 0  # among those of the same file and text

    @property
    def key(self):
        return "\t".join((self.path, self.operator, self.before, self.after, str(self.number)))


def find(root, build):
    """All mutants of the sources in root, which are configured and built in build."""
    mutants = []
    seen = set()
    index = cindex.Index.create()
    for entry in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        if not entry["file"].startswith(f"{root}/src/") or "_entry.dir" in entry["command"]:
            continue
        unit = index.parse(entry["file"], parser_arguments(shlex.split(entry["command"])))
        for diagnostic in unit.diagnostics:
            if diagnostic.severity >= cindex.Diagnostic.Error:
                raise SystemExit(f"mutate: {diagnostic}")
        files = {entry["file"]} | {inclusion.include.name for inclusion in unit.get_includes()}
        for name in sorted(files):
            if name.startswith(f"{root}/src/") and name not in seen:
                seen.add(name)
                mutants += Source(unit, name, name[len(str(root)) + 1 :]).mutants()
    counts = collections.Counter()
    numbered = []
    for mutant in sorted(mutants, key=lambda each: (each.path, each.offset, each.end)):
        numbered.append(dataclasses.replace(mutant, number=counts[mutant.key]))
        counts[mutant.key] += 1
    return numbered


def parser_arguments(command):
    """All but what to read and what to write; the precompiled headers are read as well."""
    kept = []
    words = iter(command[1:])
    for word in words:
        if word in ("-o", "-c"):
            next(words)
        else:
            kept.append(word)
    return kept


class Source:
    def __init__(self, unit, name, path):
        self.path = path
        with open(name, "rb") as file:
            self.text = file.read()
        self.found = {}

        def location(offset):
            return cindex.SourceLocation.from_offset(unit, unit.get_file(name), offset)

        extent = cindex.SourceRange.from_locations(location(0), location(len(self.text)))
        self.tokens = without_directives(unit.get_tokens(extent=extent))
        self.at = {token.extent.start.offset: i for i, token in enumerate(self.tokens)}
        self.cursors = [
            cursor
            for declaration in unit.cursor.get_children()
            if declaration.location.file and declaration.location.file.name == name
            for cursor in declaration.walk_preorder()
        ]
        self.functions = [
            (cursor.extent.start.offset, cursor.extent.end.offset, cursor.spelling)
            for cursor in self.cursors
            if cursor.kind in FUNCTIONS and cursor.is_definition()
        ]
        self.initialised = [
            (field.extent.start.offset, field.extent.end.offset)
            for cursor in self.cursors
            if cursor.kind in (cindex.CursorKind.CLASS_DECL, cindex.CursorKind.STRUCT_DECL)
            and any(is_constructor_elsewhere(member) for member in cursor.get_children())
            for field in cursor.get_children()
            if field.kind == cindex.CursorKind.FIELD_DECL
            or field.access_specifier == cindex.AccessSpecifier.PRIVATE
        ]

    def mutants(self):
        for i, token in enumerate(self.tokens):
            self.change_token(i, token)
        for cursor in self.cursors:
            if cursor.kind == cindex.CursorKind.CALL_EXPR:
                self.remove_call(cursor)
            elif cursor.kind == cindex.CursorKind.CONDITIONAL_OPERATOR:
                self.swap_arms(cursor)
        return self.found.values()

    def add(self, operator, offset, end, replacement, whole_statement=False):
        first = offset if whole_statement else self.text.rfind(b"\n", 0, offset) + 1
        last = end if whole_statement else self.text.find(b"\n", end)
        after = self.text[first:offset] + replacement + self.text[end:last]
        self.found.setdefault(
            (offset, end, replacement),
            Mutant(
                self.path,
                self.text.count(b"\n", 0, offset) + 1,
                offset,
                end,
                replacement,
                operator,
                one_line(self.text[first:last]),
                "removed" if whole_statement else one_line(after),
                self.function_at(offset),
                any(begin <= offset < stop for begin, stop in self.initialised),
            ),
        )

    def function_at(self, offset):
        names = [name for begin, stop, name in self.functions if begin <= offset < stop]
        return names[0] if names else ""

    def change_token(self, i, token):
        start, end = token.extent.start.offset, token.extent.end.offset
        text = token.spelling
        kind = token.kind

        def replace(operator, replacement):
            self.add(operator, start, end, replacement.encode())

        if kind == cindex.TokenKind.LITERAL:
            self.change_literal(text, start)
        elif text in ("true", "false"):
            replace("boolean", "false" if text == "true" else "true")
        elif text in LOGICAL:
            # Between types it is a reference.
            if self.is_spaced(start, end):
                replace("logical", LOGICAL[text])
        elif text in COMPARISONS:
            # The format parts operators from the angle brackets of templates.
            if self.is_spaced(start, end):
                replace("comparison", COMPARISONS[text])
        elif text in ARITHMETIC and self.is_spaced(start, end):
            replace("arithmetic", ARITHMETIC[text])
        elif text == "-":
            replace("arithmetic", "")
        elif text == "!":
            replace("logical", "")
        elif text == "if":
            self.negate_condition(i)
        elif kind == cindex.TokenKind.IDENTIFIER:
            other = other_enumerator(token)
            if other:
                replace("enumerator", other)

    def is_spaced(self, start, end):
        return self.text[start - 1 : start].isspace() and self.text[end : end + 1].isspace()

    def change_literal(self, text, start):
        def add(operator, first, last, replacement):
            # Places in the text are characters, those in the file are bytes.
            offset = start + len(text[:first].encode())
            size = len(text[first:last].encode())
            self.add(operator, offset, offset + size, replacement.encode())

        if text.startswith("'"):
            escaped = text[1] == "\\"
            add("constant", 1, len(text) - 1, " " if escaped else chr(ord(text[1]) + 1))
        elif text[0].isdigit():
            number = re.match(r"\d+", text)
            add("constant", 0, number.end(), str(int(number[0]) + 1))
        else:
            opening = re.match(r'R"\(|"', text)
            if not opening:
                return
            closing = len(text) - (2 if opening[0].startswith("R") else 1)
            for first, last, replacement in text_changes(text, opening.end(), closing):
                add("text", first, last, replacement)

    def negate_condition(self, i):
        if self.tokens[i + 1].spelling == "constexpr":
            i += 1
        depth = 0
        for j in range(i + 1, len(self.tokens)):
            spelling = self.tokens[j].spelling
            depth += {"(": 1, ")": -1}.get(spelling, 0)
            if depth == 0:
                break
        condition = [token.spelling for token in self.tokens[i + 2 : j]]
        if "=" not in condition and not is_negated_by_token(condition):
            first = self.tokens[i + 2].extent.start.offset
            self.negate(first, self.tokens[j - 1].extent.end.offset)

    def swap_arms(self, cursor):
        condition = next(cursor.get_children())
        first, last = condition.extent.start.offset, condition.extent.end.offset
        if first not in self.at or not self.text[last:].lstrip().startswith(b"?"):
            return
        words = []
        for token in self.tokens[self.at[first] :]:
            if token.extent.start.offset >= last:
                break
            words.append(token.spelling)
        if not is_negated_by_token(words):
            self.negate(first, last)

    def negate(self, first, last):
        self.add("condition", first, last, b"!(" + self.text[first:last] + b")")

    def remove_call(self, cursor):
        first, last = cursor.extent.start.offset, cursor.extent.end.offset
        if cursor.spelling.startswith("operator") or self.text[last : last + 1] != b";":
            return
        i = self.at.get(first)
        if i and self.tokens[i - 1].spelling in STATEMENT_BEGINS:
            self.add("removed call", first, last, b"", whole_statement=True)


def is_constructor_elsewhere(cursor):
    return cursor.kind == cindex.CursorKind.CONSTRUCTOR and not cursor.is_definition()


def without_directives(tokens):
    kept = []
    skipped_line = 0
    line = 0
    for token in tokens:
        starts_line = token.location.line != line
        line = token.extent.end.line
        if token.spelling == "#" and starts_line:
            skipped_line = token.location.line
        if token.location.line != skipped_line and token.kind != cindex.TokenKind.COMMENT:
            kept.append(token)
    return kept


def is_negated_by_token(words):
    """Whether a condition is one comparison for equality, or begins with its negation: the change
    of that token does the same as negating the whole."""
    if "&&" in words or "||" in words:
        return False
    return words[0] == "!" or "==" in words or "!=" in words


def other_enumerator(token):
    cursor = token.cursor
    if cursor.kind != cindex.CursorKind.DECL_REF_EXPR or not cursor.referenced:
        return None
    constant = cursor.referenced
    if constant.kind != cindex.CursorKind.ENUM_CONSTANT_DECL or constant.spelling != token.spelling:
        return None
    for other in constant.semantic_parent.get_children():
        if (
            other.kind == cindex.CursorKind.ENUM_CONSTANT_DECL
            and other.enum_value != constant.enum_value
        ):
            return other.spelling
    return None


def text_changes(text, first, last):
    """The changes of a string literal: each declaration and each selector of a style sheet, or one
    change of any other text."""
    content = text[first:last]
    if ";" in content or "{" in content:
        changes = []
        for match in DECLARATION.finditer(text, first, last):
            changes.append(declaration_change(match))
        for match in SELECTOR.finditer(text, first, last):
            changes.append((match.end(), match.end(), "x"))
        if changes:
            return changes
    color = re.compile(r"#[0-9a-fA-F]*([0-9a-fA-F])").search(text, first, last)
    if color:
        return [(color.start(1), color.end(1), next_digit(color[1]))]
    # Not the letter of an escape, nor a place-holder.
    letters = list(re.compile(r"(?<![\\%])[A-Za-z]").finditer(text, first, last))
    if letters:
        return [(letters[-1].end(), letters[-1].end(), "x")]
    digits = list(re.compile(r"(?<!%)\d").finditer(text, first, last))
    if digits:
        return [(digits[-1].start(), digits[-1].end(), next_digit(digits[-1][0]))]
    return [(last, last, "x")]


def declaration_change(match):
    value, at = match[3], match.start(3)
    color = re.search(r"#[0-9a-fA-F]*([0-9a-fA-F])", value)
    if color:
        return at + color.start(1), at + color.end(1), next_digit(color[1])
    number = re.search(r"(?<![%\w])\d+", value)
    if number:
        return at + number.start(), at + number.end(), str(int(number[0]) + 1)
    word = re.search(r"(?<!%)[A-Za-z]+", value)
    if word:
        return at + word.end(), at + word.end(), "x"
    return match.end(1), match.end(1), "x"  # a place-holder alone


def next_digit(digit):
    return "0123456789abcdef"[(int(digit, 16) + 1) % (10 if digit.isdigit() else 16)]


def one_line(code):
    return " ".join(code.decode().split())
