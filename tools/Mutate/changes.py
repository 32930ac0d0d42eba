# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
"""The small changes that can be planted in a C++ source: text in, changes out; no file is touched here.

It leans on the layout that clang-format gives: binary operators stand between blanks, the brackets of templates and the
marks of references do not. What it takes wrongly for an expression does not compile, which is told and not counted.
"""

import re
from typing import NamedTuple


class Change(NamedTuple):
    kind: str
    start: int
    old: str
    new: str


class Token(NamedTuple):
    kind: str  # word, number, text, mark
    text: str
    start: int
    end: int


TOKENS = re.compile(
    r"""(?P<blank>\s+|//[^\n]*|/\*.*?\*/)
      | (?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
      | (?P<raw>(?:u8|[uUL])?R"(?P<fence>[^(\s]*)\(.*?\)(?P=fence)")
      | (?P<text>(?:u8|[uUL])?(?:"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])+'))
      | (?P<number>\.?\d(?:[eEpP][+-]|'?[\w.])*)
      | (?P<word>[A-Za-z_]\w*)
      | (?P<mark><=>|<<=|>>=|->\*|\.\.\.|::|->|\+\+|--|&&|\|\||[=!<>+\-*/%&|^]=|<<|.)""",
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)

OPENING = {"(": ")", "[": "]", "{": "}"}
CLOSING = {close: open for open, close in OPENING.items()}
ASSIGNMENTS = {"=", "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<<=", ">>="}
BOUNDARY = {"<": "<=", "<=": "<", ">": ">=", ">=": ">"}
OPPOSITE = {"==": "!=", "!=": "==", "<": ">=", "<=": ">", ">": "<=", ">=": "<"}
JUNCTIONS = {"&&": "||", "||": "&&"}
NO_CALL = {
    "if", "for", "while", "switch", "return", "catch", "sizeof", "alignof", "decltype", "noexcept", "static_assert",
    "throw", "new", "delete", "using", "goto", "break", "continue", "case", "default", "else", "do", "try", "co_return",
    "const", "constexpr", "auto", "static", "typedef", "struct", "class", "enum", "union", "template", "operator",
}  # fmt: skip
# Calls without an effect that a test could see, and calls that take their arguments in any order.
UNSEEN = {"reserve", "shrink_to_fit"}
SYMMETRIC = {"max", "min"}


def tokens_of(source):
    found = []
    for match in TOKENS.finditer(source):
        kind = match.lastgroup if match.lastgroup != "fence" else "raw"
        if kind not in ("blank", "directive"):
            found.append(Token("text" if kind == "raw" else kind, match.group(), match.start(), match.end()))
    return found


class Source:
    """A source and its tokens: their partners among the brackets, and whether they stand in a function's body."""

    def __init__(self, text):
        self.text = text
        self.tokens = tokens_of(text)
        self.partner = {}
        self.in_body = []
        open_brackets = []
        bodies = [False]
        for i, token in enumerate(self.tokens):
            if token.text in CLOSING and open_brackets and token.kind == "mark":
                self.partner[i] = open_brackets.pop()
                self.partner[self.partner[i]] = i
                if token.text == "}":
                    bodies.pop()
            self.in_body.append(bodies[-1])
            if token.text in OPENING and token.kind == "mark":
                if token.text == "{":
                    bodies.append(self.opens_body(i, bodies[-1]))
                open_brackets.append(i)

    def opens_body(self, brace, outer):
        """A brace of a class or of values is no body, but values within a body are part of it."""
        head = self.head(brace)
        words = {self.tokens[i].text for i in head}
        if words & {"class", "struct", "union", "enum", "namespace"}:
            return False
        return outer or ("(" in words and "=" not in words)

    def head(self, i):
        """What stands before a token of the same statement, outside of brackets that are closed there."""
        found = []
        i -= 1
        while i >= 0 and self.tokens[i].text not in (";", "{") and self.tokens[i].text not in OPENING:
            if self.tokens[i].text == "}":
                break
            found.append(i)
            if self.tokens[i].text in CLOSING:
                i = self.partner.get(i, i)
                found.append(i)
            i -= 1
        return found[::-1]

    def spaced(self, i):
        token = self.tokens[i]
        return self.text[token.start - 1].isspace() and self.text[token.end : token.end + 1].isspace()

    def word(self, i):
        return self.tokens[i].text if 0 <= i < len(self.tokens) else ""

    def span(self, first, last):
        """The text from one token to another, both included."""
        return self.text[self.tokens[first].start : self.tokens[last].end]

    def level(self, first, end):
        """The tokens from `first` up to `end` that stand in no bracket opened there."""
        i = first
        while i < end:
            yield i
            i = self.partner.get(i, i) + 1 if self.tokens[i].text in OPENING else i + 1

    def skipped(self):
        """Tokens of what is checked while compiling, of attributes and of pure virtual functions."""
        found = set()
        for i, token in enumerate(self.tokens):
            if token.text in ("static_assert", "alignas", "noexcept", "explicit") and self.word(i + 1) == "(":
                found.update(range(i, self.partner.get(i + 1, i) + 1))
            elif token.text == "[" and self.word(i + 1) == "[":
                found.update(range(i, self.partner.get(i, i) + 1))
            elif token.text == "=" and self.word(i + 1) == "0" and self.word(i - 1) in (")", "const", "noexcept"):
                found.add(i + 1)
            elif token.text == "operator":
                found.add(i + 1)
        return found


def sites(text):
    """Every place that can be changed, as the list of changes that can be made there; always in the same order."""
    source = Source(text)
    skipped = source.skipped()
    found = []
    for i, token in enumerate(source.tokens):
        if i in skipped:
            continue
        for at_place in (operator_changes, constant_changes, condition_changes, call_changes, argument_changes):
            changes = at_place(source, i, token)
            if changes:
                found.append(changes)
    return found


def operator_changes(source, i, token):
    found = []
    if token.kind == "mark" and source.spaced(i):
        for kind, table in (("boundary", BOUNDARY), ("comparison", OPPOSITE), ("condition", JUNCTIONS)):
            if token.text in table:
                found.append(Change(kind, token.start, token.text, table[token.text]))
    return found


def constant_changes(_source, _i, token):
    if token.text in ("true", "false"):
        return [Change("constant", token.start, token.text, "false" if token.text == "true" else "true")]
    if token.kind != "number":
        return []
    return [
        Change("constant", token.start, token.text, new)
        for new in (shifted(token.text, 1), shifted(token.text, -1))
        if new is not None
    ]


def shifted(number, by):
    """The number with its last digit, before an exponent or a suffix, one up or down; nothing below zero."""
    match = re.fullmatch(r"(0[xX](?=[\da-fA-F]))?((?(1)[\da-fA-F']+|[\d'.]*\d)\.?)(.*)", number)
    if not match:
        return None
    prefix, digits, rest = match.group(1) or "", match.group(2), match.group(3)
    plain = digits.replace("'", "")
    value = int(plain.replace(".", ""), 16 if prefix else 10) + by
    if value < 0:
        return None
    point = len(plain) - plain.index(".") - 1 if "." in plain else None
    written = format(value, "x" if prefix else "d")
    if point is not None:
        written = written.rjust(point + 1, "0")
        written = written[: len(written) - point] + "." + written[len(written) - point :]
    return prefix + written + rest


def condition_changes(source, i, token):
    if token.text == "!" and token.kind == "mark":
        return [Change("condition", token.start, "!", "")]
    if token.text == "?" and source.spaced(i):
        first = i
        stops = {"=", ",", ";", "return", ":", "?", "<<", "case"} | ASSIGNMENTS
        while first > 0 and source.word(first - 1) not in stops and source.word(first - 1) not in OPENING:
            first -= 1
            first = source.partner.get(first, first) if source.word(first) in CLOSING else first
        return negated(source, first, i - 1)
    if token.text in ("if", "while") and source.word(i + 1) == "(":
        first, last = i + 2, source.partner.get(i + 1, 0) - 1
        for at in source.level(first, last + 1):
            if source.word(at) == ";":
                first = at + 1
        return negated(source, first, last)
    return []


def negated(source, first, last):
    """A condition that is one comparison, or is negated already, changes by its operator."""
    words = [source.word(i) for i in source.level(first, last + 1)]
    joined = any(word in JUNCTIONS for word in words)
    plain = not joined and (words[:1] == ["!"] or any(word in OPPOSITE for word in words))
    if not words or plain or words in (["true"], ["false"]) or any(word in ASSIGNMENTS for word in words):
        return []
    old = source.span(first, last)
    return [Change("condition", source.tokens[first].start, old, f"!({old})")]


def call_changes(source, i, token):
    """A statement that only calls something is left out."""
    if not source.in_body[i] or token.text in NO_CALL or not (token.kind == "word" or token.text == "::"):
        return []
    before = source.word(i - 1)
    if before == ")":
        starts = source.word(source.partner.get(i - 1, 1) - 1) in ("if", "for", "while", "constexpr")
    elif before == ":":
        starts = source.word(source.head(i)[0]) in ("case", "default") if source.head(i) else False
    else:
        starts = before in (";", "{", "}", "else")
    if not starts:
        return []
    words, last = [], i
    for at in source.level(i, len(source.tokens)):
        if source.word(at) in (";", "}"):
            break
        words.append(source.tokens[at])
        last = at
    declares = any(
        a.text in (">", "&", "*") or (a.kind == "word" and b.kind == "word") for a, b in zip(words, words[1:])
    )
    end = source.partner.get(last, last)
    if source.word(last) != "(" or source.word(end + 1) != ";" or declares or words[-2].text in UNSEEN:
        return []
    if any(word.text in ASSIGNMENTS or word.text in JUNCTIONS for word in words):
        return []
    return [Change("dropped call", token.start, source.span(i, end + 1), ";")]


def argument_changes(source, i, token):
    """Neighbouring arguments of a call change places; those that only texts or functions can be are left alone."""
    name = source.word(i - 1)
    called = i > 0 and (source.tokens[i - 1].kind == "word" or name == ">") and source.tokens[i - 1].end == token.start
    if token.text != "(" or not source.in_body[i] or not called or name in NO_CALL | SYMMETRIC:
        return []
    arguments, first = [], i + 1
    end = source.partner.get(i, i)
    templates = 0
    for at in source.level(i + 1, end):
        if source.word(at) in ("<", ">") and not source.spaced(at):
            templates += 1 if source.word(at) == "<" else -1
        if source.word(at) == "," and templates == 0:
            arguments.append((first, at - 1))
            first = at + 1
    if first <= end - 1:
        arguments.append((first, end - 1))
    found = []
    for (a, b), (c, d) in zip(arguments, arguments[1:]):
        left, right = source.span(a, b), source.span(c, d)
        between = source.text[source.tokens[b].end : source.tokens[c].start]
        kinds = {source.tokens[a].kind if a == b else "", source.tokens[c].kind if c == d else ""}
        if left == right or "[" in (source.word(a), source.word(c)) or kinds == {"text", "number"}:
            continue
        start = source.tokens[a].start
        found.append(Change("swapped arguments", start, left + between + right, right + between + left))
    return found


def planted(text, change):
    assert text.startswith(change.old, change.start)
    return text[: change.start] + change.new + text[change.start + len(change.old) :]


def line_of(text, change):
    return text.count("\n", 0, change.start) + 1


def shown(text, change):
    """The changed line with what goes and what comes: `if (a [-<-]{+<=+} b)`."""
    begin = text.rfind("\n", 0, change.start) + 1
    after = change.start + len(change.old)
    end = text.find("\n", after)
    line = text[begin : change.start] + f"[-{change.old}-]"
    line += (f"{{+{change.new}+}}" if change.new else "") + text[after : end if end >= 0 else len(text)]
    return " ".join(line.split())
