# SPDX-License-Identifier: GPL-3.0-only
"""The places where a source can be broken, found in its text.

The layout of the sources (.clang-format) tells what a sign is: an operator of two operands has a blank on both sides, the
bracket of a template has none.
"""
import hashlib
import re
from dataclasses import dataclass


@dataclass
class Break:
    """One change of one source. `start` and `end` enclose the expression or statement that `broken` stands in for."""

    file: str
    line: int
    kind: str
    start: int
    end: int
    broken: str
    change: str  # what is shown of it
    code: str  # the line of code, trimmed
    id: str = ""
    number: int = 0  # in this run

    @property
    def folder(self):
        return self.file.split("/")[0]

    def __str__(self):
        return f"{self.file}:{self.line}  [{self.id}]  {self.change}   {self.code}"


LITERAL = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<delimiter>[^(\s]*)\(.*?\)(?P=delimiter)"|"(?:\\.|[^"\\\n])*"|(?<!\w)\'(?:\\.|[^\'\\\n])*\'', re.S
)


def masked(text):
    """The text with blanks instead of comments, directives and what stands within quotes; and the places of the quoted."""
    quoted = []

    def blank(match):
        found = match.group()
        if found[0] in "\"'":
            quoted.append(match.span())
            return found[0] + "_" * (len(found) - 2) + found[-1]
        return re.sub(r"[^\n]", " ", found)

    text = LITERAL.sub(blank, text)
    text = re.sub(r"^[ \t]*#(?:\\\n|[^\n])*", lambda match: re.sub(r"[^\n]", " ", match.group()), text, flags=re.M)
    return text, quoted


OPENING, CLOSING = "([{", ")]}"
WORDS_BEFORE_EXPRESSION = re.compile(r"\b(?:return|co_return|case|throw|else|do)$")
RELATIONS = {"<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"], "==": ["!="], "!=": ["=="]}
OPERATORS = {"&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"], "&": ["|"], "|": ["&"],
             "<<": [">>"], ">>": ["<<"]}
ASSIGNMENTS = {"+=": "-=", "-=": "+=", "|=": "&=", "&=": "|=", "*=": "/=", "/=": "*="}
NAMES = {"std::min": "std::max", "std::max": "std::min", "front()": "back()", "back()": "front()", "isEmpty()": "isNotEmpty()",
         "isNotEmpty()": "isEmpty()", "std::any_of": "std::all_of", "std::all_of": "std::any_of", "std::none_of": "std::any_of",
         "std::lower_bound": "std::upper_bound", "std::upper_bound": "std::lower_bound", "begin()": "end()",
         "startsWith": "endsWith", "indexOf": "lastIndexOf", "find_first_of": "find_last_of", "floor": "ceil"}
NO_STATEMENT = re.compile(r"\b(?:if|for|while|switch|return|throw|case|delete|else|using|static_assert|goto|do|namespace)$")
STATEMENT = re.compile(
    r"^[ \t]+(?P<code>(?:\+\+|--|\*)?(?P<name>[A-Za-z_][\w:.]*(?:->[\w.]+|\[[^\]\n]*\]|<[\w:]+>|\(\)[.\w]+)*)"
    r"(?: ?\(| (?:[-+*/|&]?=) |(?:\+\+|--)?;))", re.M)


class Source:
    def __init__(self, file, text):
        self.file, self.text = file, text
        self.code, self.quoted = masked(text)
        self.partner = self._partners()
        self.breaks = []

    def _partners(self):
        """The place of each bracket's partner."""
        partners, open_places = {}, []
        for place, sign in enumerate(self.code):
            if sign in OPENING:
                open_places.append(place)
            elif sign in CLOSING and open_places:
                partner = open_places.pop()
                partners[place], partners[partner] = partner, place
        return partners

    def _is_border(self, place):
        """Whether an expression ends at this sign, whichever way one comes."""
        sign, before, behind = self.code[place], self.code[place - 1], self.code[place + 1 : place + 2]
        if sign in ";,?":
            return True
        if sign == ":":
            return before != ":" and behind != ":"
        return sign == "=" and before not in "=!<>" and behind != "="

    def expression_around(self, place):
        start = place
        while start > 0:
            sign = self.code[start - 1]
            if sign in ")]" or (sign == "}" and self.code[start] != "\n"):
                start = self.partner.get(start - 1, 0)
                continue
            if sign in "([{}" or self._is_border(start - 1) or WORDS_BEFORE_EXPRESSION.search(self.code[max(0, start - 10) : start]):
                break
            start -= 1
        end = place
        while end < len(self.code):
            sign = self.code[end]
            if sign in OPENING:
                end = self.partner.get(end, len(self.code) - 1) + 1
                continue
            if sign in ")]}" or self._is_border(end):
                break
            end += 1
        while end > place and self.code[end - 1].isspace():
            end -= 1
        return self._behind_heads(start, place), end

    def _behind_heads(self, start, place):
        """Past blanks, and past the head of an if or a loop whose body has no braces."""
        while True:
            while start < place and self.code[start].isspace():
                start += 1
            head = re.compile(r"(?:if|for|while|switch)(?: constexpr)? \(").match(self.code, start)
            if head is None or self.partner.get(head.end() - 1, place) >= place:
                return start
            start = self.partner[head.end() - 1] + 1

    def add(self, kind, region, place, length, replacement, shown=None):
        """Replaces `length` signs at `place`, within the region."""
        start, end = region
        broken = self.text[start:place] + replacement + self.text[place + length : end]
        line_start = self.text.rfind("\n", 0, place) + 1
        line_end = self.text.find("\n", place)
        code = self.text[line_start:line_end].strip()
        if broken == self.text[start:end] or "Logger" in code or code.startswith(("#", "static_assert", "template", "using ", "namespace ", "extern ", "class ")):
            return
        change = shown or f"'{self.text[place : place + length]}' -> '{replacement}'"
        self.breaks.append(Break(self.file, self.text.count("\n", 0, place) + 1, kind, start, end, broken, change, code))

    # ---- kinds of breaks ---------------------------------------------------------------------------------------------

    def operators(self):
        signs = sorted([*RELATIONS, *OPERATORS], key=len, reverse=True)
        for match in re.finditer(r"(?<= )(" + "|".join(map(re.escape, signs)) + r")(?=\s)", self.code):
            sign = match.group()
            if re.search(r"\boperator\s*$", self.code[: match.start()][-12:]):
                continue
            for other in RELATIONS.get(sign, OPERATORS.get(sign)):
                kind = "comparison" if sign in RELATIONS else "operator"
                self.add(kind, self.expression_around(match.start()), match.start(), len(sign), other)

    def assignments(self):
        for match in re.finditer(r"(?<= )[-+|&*/]=(?=\s)", self.code):
            start, end = match.span()
            while start > 0 and self.code[start - 1] not in ";{}(" and self.code[start - 1] != "\n":
                start -= 1
            while start < match.start() and self.code[start].isspace():
                start += 1
            end = self.expression_around(match.end() + 1)[1]
            self.add("operator", (start, end), match.start(), 2, ASSIGNMENTS[match.group()])
        for match in re.finditer(r"\+\+|--", self.code):
            if "operator" not in self.code[max(0, match.start() - 10) : match.start()]:
                other = "--" if match.group() == "++" else "++"
                self.add("operator", self.expression_around(match.start()), match.start(), 2, other)

    def names(self):
        for name, other in NAMES.items():
            for match in re.finditer(r"(?<![\w:])" + re.escape(name) + r"(?!\w)", self.code):
                self.add("name", self.expression_around(match.start()), match.start(), len(name), other)

    def conditions(self):
        for match in re.finditer(r"\b(?:if|while) \(", self.code):
            start, end = match.end(), self.partner.get(match.end() - 1, 0)
            place = start
            while place < end:
                if self.code[place] in OPENING:
                    place = self.partner.get(place, end)
                elif self.code[place] == ";":
                    start = place + 1
                place += 1
            while self.code[start : start + 1].isspace():
                start += 1
            if any(self._is_border(p) and self.code[p] == "=" for p in range(start, end)):
                continue
            condition = self.text[start:end]
            self.add("condition", (start, end), start, end - start, f"! ({condition})", f"'{' '.join(condition.split())}' negated")
        for match in re.finditer(r"(?<![\w!])! (?=[\w(:*])", self.code):
            self.add("condition", self.expression_around(match.start()), match.start(), 2, "", "'!' removed")

    def statements(self):
        for match in STATEMENT.finditer(self.code):
            if NO_STATEMENT.search(match["name"]):
                continue
            before = self.code[: match.start("code")].rstrip()
            if not (before.endswith((";", "{", "}", ")", ":")) or re.search(r"\b(?:else|do)$", before)):
                continue
            start, place = match.start("code"), match.start("code")
            while place < len(self.code) and self.code[place] not in ";}":
                place = self.partner.get(place, place) + 1 if self.code[place] in OPENING else place + 1
            if self.code[place : place + 1] != ";":
                continue
            body = self.code[start:place]
            if re.search(r"\)\s*(?:const|noexcept|override)*\s*\n?\s*\{", body) and "[" not in body:
                continue
            shown = f"'{' '.join(self.text[start : place + 1].split())}' removed"
            self.add("statement", (start, place + 1), start, place + 1 - start, "", shown)

    def literals(self):
        for match in re.finditer(r"(?<![\w.'\"])(?:0x[0-9a-fA-F]+|\d[\d']*(?:\.\d+)?)(?P<suffix>[uUlLfF]*)(?![\w.])", self.code):
            digits = match.group()[: match.start("suffix") - match.start()].replace("'", "")
            if "." in digits:
                other = str(float(digits) + 1)
            else:
                value = int(digits, 0) if digits.startswith("0x") or digits == "0" else int(digits)
                other = str(value + 1)
                if value > 1 and value % 2:
                    other = str(value - 1)
            self.add("number", match.span(), match.start(), len(match.group()), other + match["suffix"])
        for match in re.finditer(r"\b(?:true|false)\b", self.code):
            self.add("boolean", match.span(), match.start(), len(match.group()), "false" if match.group() == "true" else "true")
        for start, end in self.quoted:
            if self.text[start - 1].isalnum() or self.text[end : end + 1].isalnum() or self.text[end : end + 1] == "_":
                continue
            if self.text[start] == '"':
                self.add("text", (start, end), start, end - start, self.text[start : end - 1] + '~"')
            else:
                sign = self.text[start + 1 : end - 1]
                other = chr(ord(sign) + 1) if len(sign) == 1 and sign not in "&[" and " " <= sign < "~" else "~"
                self.add("sign", (start, end), start, end - start, f"'{other}'")


def breaks_of(file, text):
    """All breaks of a source, in the order of their places, each with an identifier that lasts while its line does."""
    source = Source(file, text)
    for find in (source.operators, source.assignments, source.names, source.conditions, source.statements, source.literals):
        find()
    seen = {}
    source.breaks.sort(key=lambda b: (b.line, b.start, b.end, b.change))
    for found in source.breaks:
        name = f"{found.file}|{found.code}|{found.change}"
        seen[name] = seen.get(name, 0) + 1
        found.id = hashlib.sha1(f"{name}|{seen[name]}".encode()).hexdigest()[:8]
        if seen[name] > 1:
            found.change += f" #{seen[name]}"
    return source.breaks


def with_break(text, broken):
    return text[: broken.start] + (broken.broken or "{}") + text[broken.end :]


def with_switches(text, breaks, file):
    """The text with all of the breaks in it, each behind a switch of its own that is thrown when the program runs."""
    ordered = sorted(breaks, key=lambda b: (b.start, -b.end))

    def marked(name, line=1):
        return f'\n#line {line} "{name}"\n'

    def render(start, end, inner, name):
        parts, place = [], start
        while inner:
            outer, inner = inner[0], inner[1:]
            within = [b for b in inner if b.end <= outer.end]
            inner = inner[len(within) :]
            parts.append(text[place : outer.start])
            mark = f"break-{outer.number}"
            rest = render(outer.start, outer.end, within, mark)
            if outer.kind == "statement":
                parts.append(f"{marked(mark)}{{ if (! mutation_on ({outer.number})) {{ {rest} }} }}")
            else:
                parts.append(f"{marked(mark)}(mutation_on ({outer.number}) ? ({outer.broken}) : ({rest}))")
            place = outer.end
            parts.append(marked(name, text.count("\n", 0, place) + 1))
        parts.append(text[place:end])
        return "".join(parts)

    return SWITCH + f'#line 1 "{file}"\n' + render(0, len(text), ordered, file)


SWITCH = """extern "C" unsigned char* mutation_reached;
extern "C" int mutation_active;
static inline bool mutation_on (int number)
{
    mutation_reached[number] = 1;
    return mutation_active == number;
}
"""


def overlaps(one, other):
    """Whether two breaks cut into each other, so that they can't both stand in one text."""
    return one.start < other.start < one.end < other.end or other.start < one.start < other.end < one.end
