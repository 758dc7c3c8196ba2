"""Writes sources in which every mutant is present, each behind a switch; tools/mutate builds and runs them."""
import hashlib
import json
import pathlib
import re
import sys

from clang import cindex
from clang.cindex import CursorKind as K

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build/mutants"
TREE, MADE = WORK / "tree", WORK / "made"
MAKER = pathlib.Path(__file__).read_bytes()  # what is made depends on it
FUNCTION_OF = {"<": "less", "<=": "lessEqual", ">": "greater", ">=": "greaterEqual"}
LOGICAL, EQUALITY = ("&&", "||"), ("==", "!=")
BOUNDARY = {"<": "<=", "<=": "<", ">": ">=", ">=": ">"}
FUNCTIONS = (K.FUNCTION_DECL, K.CXX_METHOD, K.CONSTRUCTOR, K.DESTRUCTOR, K.CONVERSION_FUNCTION, K.FUNCTION_TEMPLATE)
# Where nothing can depend on a switch, or nothing runs.
LEFT_OUT = (K.STATIC_ASSERT, K.ENUM_DECL, K.PARM_DECL, K.TYPE_ALIAS_DECL, K.TYPEDEF_DECL, K.CXX_UNARY_EXPR,
            K.TEMPLATE_TYPE_PARAMETER, K.TEMPLATE_NON_TYPE_PARAMETER, K.CLASS_TEMPLATE, K.USING_DIRECTIVE)


class Source:
    """The mutants of one file, as insertions into its text."""

    def __init__(self, name, first_id):
        self.name, self.next_id = name, first_id
        self.text = (ROOT / name).read_bytes()
        self.mutants = {}  # id: (kind, description, line)
        self.edits = []    # (start, end, prefix, suffix, ids): all ids leave together
        self.negated, self.texts_in = set(), set()

    def slice(self, start, end):
        return self.text[start:end].decode()

    def add(self, kind, start, end, after, prefix, suffix):
        """One mutant; `prefix` and `suffix` are made with its id in place of @."""
        number = self.mutant(kind, start, end, after)
        self.edits.append((start, end, prefix.replace("@", str(number)), suffix.replace("@", str(number)), (number,)))

    def mutant(self, kind, start, end, after):
        number, self.next_id = self.next_id, self.next_id + 1
        before, after = (re.sub(r"\s+", " ", text) for text in (self.slice(start, end), after))
        line_start, line_end = self.text.rfind(b"\n", 0, start) + 1, self.text.find(b"\n", end)
        context = [self.slice(line_start, start).lstrip(), self.slice(end, line_end).rstrip()]
        if kind in ("dropped", "swapped", "return"):
            context = ["", ""]
        description = f"{before} -> {after}"
        if any(context):
            description = f"{context[0]}[{description}]{context[1]}"
        self.mutants[number] = (kind, description, self.text.count(b"\n", 0, start) + 1)
        return number

    def negate(self, cursor, place=None):
        start, end = place or extent(cursor)
        text = self.slice(start, end)
        if (start, end) in self.negated or text in ("true", "false"):
            return
        self.negated.add((start, end))
        is_simple = re.fullmatch(r"!?[\w.:>-]+(\([^()]*\))?", text)
        after = f"!({text})" if not is_simple else text[1:] if text[0] == "!" else f"!{text}"
        self.add("condition", start, end, after, "(Mutation::on(@) != bool(", "))")

    def walk(self, cursor, statement):
        kind, (start, end) = cursor.kind, extent(cursor)
        if kind in LEFT_OUT or kind.is_attribute() or self.is_constexpr(cursor, start):
            return
        children = list(cursor.get_children())
        if kind.is_statement() or kind in (K.VAR_DECL, K.FIELD_DECL):
            statement = start
        if kind in FUNCTIONS or kind == K.LAMBDA_EXPR:
            self.return_early(cursor, children)
        if kind == K.COMPOUND_STMT:
            self.statements(children)
        elif kind == K.IF_STMT:
            self.condition_of_if(cursor, children, start)
        elif kind == K.WHILE_STMT and children[0].kind.is_expression():
            self.negate(children[0])
        elif kind == K.DO_STMT:
            self.negate(children[-1])
        elif kind == K.FOR_STMT:
            self.condition_of_for(cursor, children)
        elif kind == K.CONDITIONAL_OPERATOR:
            self.negate(children[0])
        elif kind == K.RETURN_STMT and children and children[0].type.get_canonical().kind == cindex.TypeKind.BOOL:
            self.negate(children[0])
        elif kind == K.BINARY_OPERATOR and len(children) == 2:
            self.operator(children, start, end)
        elif kind == K.CALL_EXPR and cursor.spelling in ("operator==", "operator!="):
            self.negate(cursor)
        elif kind in (K.CASE_STMT, K.DEFAULT_STMT):
            children = children[-1:]
        self.bodies(kind, children)
        self.constant(cursor, start, end, statement)
        for child in children:
            self.walk(child, statement)

    def is_constexpr(self, cursor, start):
        if cursor.kind == K.IF_STMT:
            return False
        if cursor.kind not in FUNCTIONS and cursor.kind not in (K.VAR_DECL, K.DECL_STMT):
            return False
        return re.search(r"\bconst(expr|eval|init)\b", re.split(r"[{=]", self.slice(start, extent(cursor)[1]))[0])

    # Statements.

    def whole(self, cursor):
        """From the start of an expression statement to behind its semicolon; None where it is none to leave out."""
        start, end = extent(cursor)
        text = self.slice(start, end)
        semicolon = re.compile(rb"\s*;").match(self.text, end)
        if (not cursor.kind.is_expression() or not semicolon or
                re.match(r"throw\b|\(void\)|\w+$|[\w.>-]+reserve\(", text)):
            return None
        return start, semicolon.end()

    def statements(self, children):
        """Drops each expression statement, and swaps those next to each other."""
        run = []
        for child in children + [None]:
            place = self.whole(child) if child is not None else None
            apart = run and (place is None or self.assigns(run[-1]) and self.assigns(place) or
                             self.called(run[-1]) == self.called(place) is not None)
            if apart:
                self.run_of_statements(run)
                run = []
            if place:
                run.append(place)

    def called(self, place):
        """The name of the function that a statement calls first; called twice, it is seldom a matter of order."""
        match = re.match(r"[^(]*?(\w+)(<.*?>)?\(", self.slice(*place))
        return match and match[1]

    def assigns(self, place):
        return re.match(r"[\w.\[\]>*-]+ [+|&-]?= |[+-]{2}", self.slice(*place)) is not None

    def run_of_statements(self, run):
        swaps = []
        for one, two in zip(run, run[1:]):
            after = f"{self.slice(*two)} {self.slice(*one)}"
            swaps.append(self.mutant("swapped", one[0], two[1], after))
        if swaps:
            n = len(run)
            self.edits.append((run[0][0], run[-1][1], f"for (int step_ = 0; step_ < {n}; ++step_) switch "
                               f"(Mutation::order({swaps[0]}, {n}, step_)) {{ ", "}", tuple(swaps)))
        for i, (start, end) in enumerate(run):
            if swaps:
                self.edits.append((start, end, f"case {i}: ", " break; ", tuple(swaps)))
            self.add("dropped", start, end, "nothing", "{ if (!Mutation::on(@)) ", " }")

    def bodies(self, kind, children):
        """The statements that stand alone below others, without braces."""
        if kind in (K.IF_STMT, K.WHILE_STMT, K.FOR_STMT, K.CXX_FOR_RANGE_STMT, K.CASE_STMT, K.DEFAULT_STMT):
            for child in children[1:] if kind == K.IF_STMT else children[-1:]:
                place = self.whole(child)
                if place:
                    self.run_of_statements([place])

    def return_early(self, cursor, children):
        if not children or children[-1].kind != K.COMPOUND_STMT:
            return
        start, end = extent(children[-1])
        body = list(children[-1].get_children())
        head = self.slice(extent(cursor)[0], start)
        if not body or re.fullmatch(r"\{\s*return\s*(\{\}|false|nullptr|0)?;\s*\}", self.slice(start, end)):
            return
        if cursor.kind == K.LAMBDA_EXPR:
            is_void = not returns_value(children[-1])
            if not is_void and "->" not in head:
                return
        else:
            result = cursor.result_type.get_canonical()
            is_void = cursor.kind in (K.CONSTRUCTOR, K.DESTRUCTOR) or result.kind == cindex.TypeKind.VOID
            if not is_void and (result.kind in (cindex.TypeKind.LVALUEREFERENCE, cindex.TypeKind.AUTO) or
                                "[[noreturn]]" in head):
                return
        if is_void and len(body) == 1 and self.whole(body[0]):
            return  # as leaving out the one statement
        what = "return;" if is_void else "return {};"
        number = self.mutant("return", start, start + 1, what)
        named = cursor.spelling if cursor.kind != K.LAMBDA_EXPR else re.sub(r"\s+", " ", head).strip()
        self.mutants[number] = ("return", f"{named} {{ -> {{ {what}", self.mutants[number][2])
        self.edits.append((start + 1, len(self.text), f" if (Mutation::on({number})) {what} ", "", (number,)))

    # Conditions.

    def condition_of_if(self, cursor, children, start):
        first = children[0]
        if self.text.startswith(b"if constexpr", start):
            return
        if first.kind == K.VAR_DECL:  # if (const auto item = ...): becomes if (const auto item = ...; item)
            begin, end = extent(first)
            self.add("condition", begin, end, f"{self.slice(begin, end)}; !{first.spelling}", "",
                     f"; Mutation::on(@) != bool({first.spelling})")
        elif first.kind == K.DECL_STMT:
            self.negate(children[1])
        elif first.kind.is_expression():
            self.negate(first)

    def condition_of_for(self, cursor, children):
        depth, semicolons = 0, []
        for token in cursor.get_tokens():
            if token.spelling in "([{":
                depth += 1
            elif token.spelling in ")]}":
                depth -= 1
                if depth == 0:
                    break
            elif token.spelling == ";" and depth == 1:
                semicolons.append(token.extent.start.offset)
        for child in children:
            if len(semicolons) == 2 and semicolons[0] < extent(child)[0] < semicolons[1]:
                self.negate(child)

    def operator(self, children, start, end):
        (a_start, a_end), (b_start, b_end) = extent(children[0]), extent(children[1])
        between = self.slice(a_end, b_start)
        name = between.strip()
        if name in LOGICAL:
            for child in children:
                self.negate(child)
        elif name in EQUALITY:
            self.negate(None, (start, end))
        elif name in BOUNDARY and start == a_start and end == b_end:
            if name in ("<", ">=") and self.is_number(children[1]):
                return  # as the number that grows by one
            at = a_end + between.index(name)
            text = self.slice(start, end)
            number = self.mutant("boundary", at, at + len(name), BOUNDARY[name])
            self.edits.append((start, end, f"Mutation::{FUNCTION_OF[name]}({number}, ", ")", (number,)))
            self.edits.append((at, at + len(name), None, ",", (number,)))

    # Constants.

    def is_number(self, cursor):
        while cursor.kind == K.UNEXPOSED_EXPR and len(inner := list(cursor.get_children())) == 1:
            cursor = inner[0]
        text = self.slice(*extent(cursor))
        return cursor.kind == K.INTEGER_LITERAL or (cursor.kind == K.DECL_REF_EXPR and
                                                    (other_name(cursor.referenced, text) or "").endswith("+ 1"))

    def constant(self, cursor, start, end, statement):
        kind, text = cursor.kind, self.slice(start, end)
        after = None
        if text == "1" and self.text[start - 1:start] == b"-":
            return  # -1 says "none", and any negative number does
        if kind in (K.INTEGER_LITERAL, K.FLOATING_LITERAL) and re.match(r"[\d.]", text):
            plain = re.fullmatch(r"(\d+)(\w*)", text)
            after = str(int(plain[1]) + 1) + plain[2] if plain and (text == "0" or text[0] != "0") else text + " + 1"
        elif kind == K.CXX_BOOL_LITERAL_EXPR and text in ("true", "false"):
            after = "false" if text == "true" else "true"
        elif kind == K.CHARACTER_LITERAL and re.match(r"(u|U|L|u8)?'", text):
            prefix = text[:text.index("'")]
            after = f"{prefix}'x'" if text != f"{prefix}'x'" else f"{prefix}'y'"
        elif kind == K.STRING_LITERAL and statement not in self.texts_in:
            end += len(re.match(rb"\w*", self.text[end:])[0])
            text = self.slice(start, end)
            after = other_text(text)
            if after:
                self.texts_in.add(statement)
        elif kind == K.DECL_REF_EXPR and cursor.referenced is not None:
            after = other_name(cursor.referenced, text)
        if after is None:
            return
        self.add("constant", start, end, after, f"(Mutation::on(@) ? {after} : ", ")")

    def mutated(self):
        """The text with all mutants in it, and where in it each edit's ids are."""
        events = []
        for i, (start, end, prefix, suffix, ids) in enumerate(self.edits):
            if prefix is None:
                events.append(((start, 2, 0, i), start, end, suffix, i))
                continue
            events.append(((start, 1, -end, i), start, start, prefix, i))
            if suffix:
                events.append(((end, 0, -start, -i), end, end, suffix, i))
        out, at, places = bytearray(b"#include \"tools/mutation.h\"\n"), 0, {}
        for _, position, skip, inserted, i in sorted(events, key=lambda event: event[0]):
            out += self.text[at:position]
            places.setdefault(i, [len(out), len(out)])
            out += inserted.encode()
            places[i][1] = len(out)
            at = skip
        out += self.text[at:]
        return bytes(out), [(begin, end, self.edits[i][4]) for i, (begin, end) in places.items()]

    def drop_at(self, text, places, errors):
        """Takes out what does not compile; returns whether there was any. Each error is a list of lines and columns, of
        which the first inside a mutant counts."""
        starts = [0] + [match.end() for match in re.finditer(b"\n", text)] + [len(text)]
        gone = set()
        for error in errors:
            for line, column in error:
                offset = starts[line - 1] + column - 1
                around = [place for place in places if place[0] <= offset < place[1]]
                if around:
                    gone.update(min(around, key=lambda place: place[1] - place[0])[2])
                    break
            else:  # reported where the mutant is used: all of that line
                line = error[0][0]
                gone.update(id for place in places if starts[line - 1] <= place[0] < starts[line] for id in place[2])
        return self.drop(gone)

    def drop(self, gone):
        self.edits = [edit for edit in self.edits if not gone & set(edit[4])]
        kept = {id for edit in self.edits for id in edit[4]}
        dropped = set(self.mutants) - kept
        for id in dropped:
            del self.mutants[id]
        return bool(dropped)


def extent(cursor):
    return cursor.extent.start.offset, cursor.extent.end.offset


def returns_value(cursor):
    """Whether a return statement below gives a value; those of lambdas inside do not count."""
    if cursor.kind == K.RETURN_STMT:
        return any(True for _ in cursor.get_children())
    return cursor.kind != K.LAMBDA_EXPR and any(returns_value(child) for child in cursor.get_children())


def other_text(text):
    """The literal with one letter changed, so that its type stays; None where there is none to change."""
    opening = re.match(r'(u8|u|U|L)?(R"[^(]*\(|")', text)
    if not opening:
        return None
    for unit in re.finditer(r'\\(x[0-9A-Fa-f]+|[0-7]+|.)|"\s*(u8|u|U|L)?"|.', text[opening.end():], re.S):
        character = unit[0]
        if character == '"' or character == ")" and opening[2] != '"':
            return None
        if len(character) == 1 and character.isascii() and character.isprintable():
            at = opening.end() + unit.start()
            return text[:at] + ("x" if character != "x" else "y") + text[at + 1:]
    return None


def other_name(declared, text):
    """Another constant of the same kind, where `text` names a constant."""
    parent = declared.semantic_parent
    if parent is None or not text.endswith(declared.spelling):
        return None
    if declared.kind == K.VAR_DECL:
        type = declared.type.get_canonical()
        if parent.kind != K.NAMESPACE or not type.is_const_qualified():
            return None
        if type.kind in (cindex.TypeKind.INT, cindex.TypeKind.UINT, cindex.TypeKind.LONG, cindex.TypeKind.ULONG):
            return f"{text} + 1"
        if "string_view" not in type.spelling:
            return None
        others = [other for other in parent.get_children()
                  if other.kind == K.VAR_DECL and other.type.get_canonical() == type]
    elif declared.kind == K.ENUM_CONSTANT_DECL:
        others = list(parent.get_children())
    else:
        return None
    names = [other.spelling for other in others]
    if len(names) < 2 or declared.spelling not in names:
        return None
    other = names[(names.index(declared.spelling) + 1) % len(names)]
    return text[:len(text) - len(declared.spelling)] + other


def digest(*parts):
    result = hashlib.sha256()
    for part in parts:
        result.update(part if isinstance(part, bytes) else str(part).encode())
    return result.hexdigest()


def make(job):
    """Writes the mutated text of one file into MADE, with what compiles of its mutants."""
    name, first_id, arguments = job
    if is_made(name, first_id):
        return
    source = Source(name, first_id)
    index, path = cindex.Index.create(), str(TREE / name)
    unit = index.parse(path, arguments, [(path, source.text.decode())])
    errors = [str(d) for d in unit.diagnostics if d.severity >= d.Error]
    if errors:
        sys.exit(f"{name} is not understood: {errors[0]}")
    for child in unit.cursor.get_children():
        if child.location.file and child.location.file.name == path:
            source.walk(child, None)
    unit = None
    for _ in range(12):
        text, places = source.mutated()
        changed = [(path, text.decode())]
        if unit is None:
            unit = index.parse(path, arguments, changed, cindex.TranslationUnit.PARSE_PRECOMPILED_PREAMBLE)
        else:
            unit.reparse(changed)
        errors = [[(at.location.line, at.location.column) for at in [d, *d.children]
                   if at.location.file and at.location.file.name == path]
                  for d in unit.diagnostics if d.severity >= d.Error]
        if not source.drop_at(text, places, [error for error in errors if error]):
            break
    save(source, key_of(name, first_id))


def key_of(name, first_id):
    return digest((ROOT / name).read_bytes(), MAKER, first_id)


def is_made(name, first_id):
    """Whether MADE has the mutated text of the file as it is now."""
    made = MADE / (name + ".json")
    return made.exists() and json.loads(made.read_text())["key"] == key_of(name, first_id)


def save(source, key):
    text, places = source.mutated()
    made = MADE / (source.name + ".json")
    made.parent.mkdir(parents=True, exist_ok=True)
    made.write_text(json.dumps({"key": key, "text": text.decode(), "places": places, "mutants": source.mutants,
                                "edits": source.edits}))
