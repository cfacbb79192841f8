"""Finds places for small faults in C++ sources, and writes sources that hold all of them.

It knows tokens, not the language: what the compiler then refuses is left out. Operators are recognised by the blanks
that clang-format puts on both sides.
"""
import re
from dataclasses import dataclass, field

TOKEN = re.compile(
    r'(?P<space>\s+|//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:[^\n\\]|\\.)*)'
    r'|(?P<string>(?:u8|[uUL])?R"(?P<d>[^(]*)\(.*?\)(?P=d)"|(?:u8|[uUL])?"(?:[^"\\]|\\.)*"|\'(?:[^\'\\]|\\.)*\')'
    r"|(?P<number>(?:0[xX][0-9a-fA-F']+|\d[\d']*(?:\.\d*)?(?:[eE][+-]?\d+)?|\.\d+)\w*)"
    r'|(?P<name>[A-Za-z_]\w*)'
    r'|(?P<op><=>|->\*|<<=|>>=|\.\.\.|::|->|\+\+|--|&&|\|\||[<>=!+\-*/%&|^]=|<<|[-+*/%&|^~!=<>?:;,.(){}\[\]#])',
    re.S | re.M)

BINARY = {'<': '>', '<=': '>=', '==': '==', '!=': '!=', '+': '+', '-': '-', '*': '*', '/': '/', '%': '%', '<<': '<<',
          '>>': '>>', '&': '&', '|': '|', '^': '^'}
MORE = {'>': '<', '>=': '<='}
ASSIGNING = {'+=', '-=', '*=', '/=', '|=', '&=', '<<=', '>>='}
WRONG = {'<': '<=', '<=': '<', '>': '>=', '>=': '>', '==': '!=', '!=': '==', '+': '-', '-': '+', '*': '+', '/': '*',
         '%': '*', '<<': '>>', '>>': '<<', '&': '|', '|': '&', '^': '|', '+=': '-=', '-=': '+=', '*=': '+=',
         '/=': '*=', '|=': '&=', '&=': '|=', '<<=': '>>=', '>>=': '<<='}
PAIRS = {'(': ')', '[': ']', '{': '}'}
NOT_STATEMENTS = {'return', 'if', 'for', 'while', 'switch', 'delete', 'throw', 'using', 'case', 'default', 'do', 'else',
                  'static_assert', 'namespace', 'assert', 'co_return', 'co_await', 'goto', 'break', 'continue',
                  'public', 'private', 'protected', 'template', 'typedef', 'enum', 'class', 'struct', 'defined'}


@dataclass
class Token:
    kind: str
    text: str
    start: int
    end: int


@dataclass
class Edit:
    start: int  # offsets in the source; an edit over a range holds other edits
    end: int
    before: str
    after: str = ''
    replaces: bool = False


@dataclass
class Mutant:
    path: str
    line: int
    what: str
    edits: list
    constant: str = ''  # the constant that is no longer known to the compiler
    number: int = 0


def tokens_of(source):
    found, at = [], 0
    while at < len(source):
        match = TOKEN.match(source, at)
        if not match:
            at += 1
            continue
        at = match.end()
        if match.lastgroup != 'space' and match.group('space') is None:
            kind = next(k for k in ('string', 'number', 'name', 'op') if match.group(k) is not None)
            found.append(Token(kind, match.group(), match.start(), match.end()))
    return found


class Finder:
    def __init__(self, path, source):
        self.path, self.source, self.tokens = path, source, tokens_of(source)
        self.mate = self._mates()
        self.sleeps = [False] * len(self.tokens)  # in functions that the compiler may run
        self.constants = {}  # index of a token in the value of a constexpr constant -> (its declaration's edit, name)
        self.barred = [False] * len(self.tokens)
        self._look_at_keywords()

    def text(self, i):
        return self.tokens[i].text if 0 <= i < len(self.tokens) else ''

    def _mates(self):
        mates, open_ = {}, []
        for i, token in enumerate(self.tokens):
            if token.kind != 'op':
                continue
            if token.text in PAIRS:
                open_.append(i)
            elif token.text in PAIRS.values() and open_:
                mates[i] = open_.pop()
                mates[mates[i]] = i
        return mates

    def _look_at_keywords(self):
        for i, token in enumerate(self.tokens):
            if token.kind != 'name':
                continue
            if token.text in ('static_assert', 'assert') and self.text(i + 1) == '(':
                self._bar(i, self.mate.get(i + 1, i))
            elif token.text == 'case':
                j = i
                while self.text(j) not in (':', ''):
                    j += 1
                self._bar(i, j)
            elif token.text == 'enum':
                j = i
                while self.text(j) not in ('{', ';', ''):
                    j += 1
                self._bar(i, self.mate.get(j, j))
            elif token.text == 'template' and self.text(i + 1) == '<':
                j = i
                while self.text(j) not in ('>', ''):
                    j += 1
                self._bar(i, j)
            elif token.text == 'operator':
                self._bar(i, i + 2)
            elif token.text in ('constexpr', 'consteval') and self.text(i - 1) != 'if':
                self._look_at_constexpr(i)

    def _bar(self, first, last):
        for k in range(first, min(last + 1, len(self.tokens))):
            self.barred[k] = True

    def _look_at_constexpr(self, i):
        j = i + 1
        while self.text(j) not in (';', '{', '=', ''):
            j = self.mate.get(j, j) + 1 if self.text(j) in PAIRS else j + 1
        if self.text(j) == '{' and self.text(j - 1) in (')', 'const', 'noexcept'):
            for k in range(i, self.mate.get(j, j)):
                self.sleeps[k] = True
            return
        if self.text(j) not in ('=', '{'):
            return
        name = self.text(j - 1) if self.text(j - 1) != ']' else self.text(self.mate[j - 1] - 1)
        known = 'const' if self.text(i - 1) != 'static' else 'inline const'
        edit = Edit(self.tokens[i].start, self.tokens[i].end, known, replaces=True)
        end = j
        while self.text(end) not in (';', ''):
            end = self.mate.get(end, end) + 1 if self.text(end) in PAIRS else end + 1
        for k in range(j, end):
            self.constants[k] = (edit, name)

    def is_spaced(self, i):
        token = self.tokens[i]
        return self.source[token.start - 1].isspace() and self.source[token.end:token.end + 1].isspace()

    # Where the operand that begins behind (or ends before) token i has its other end.
    def operand(self, i, step, stops):
        j = i + step
        opening, closing = (PAIRS.keys(), PAIRS.values()) if step > 0 else (PAIRS.values(), PAIRS.keys())
        while 0 <= j < len(self.tokens):
            text = self.text(j)
            if text in closing or text in stops or text in (',', ';', '?', ':', '=', 'return'):
                break
            j = self.mate[j] + step if text in opening else j + step
        return j - step

    def simple_argument(self, i):
        """The index behind an argument of names and numbers only, from i; None where there is something else."""
        j, joined = i, False
        while self.tokens[j].kind in ('name', 'number') or self.text(j) in ('::', '.', '->'):
            is_word = self.tokens[j].kind in ('name', 'number')
            if is_word == joined:
                return None
            joined = is_word
            j += 1
            if j == len(self.tokens):
                return None
        return j if joined else None

    def find(self):
        for i in range(1, len(self.tokens) - 1):
            if self.barred[i]:
                continue
            asleep = 'true' if self.sleeps[i] else 'false'
            for what, edits in self.at(i, asleep):
                line = self.source.count('\n', 0, self.tokens[i].start) + 1
                constant = self.constants.get(i)
                yield Mutant(self.path, line, what, edits + ([constant[0]] if constant else []),
                             constant[1] if constant else '')

    def at(self, i, asleep):
        token, text = self.tokens[i], self.tokens[i].text

        def replaced(by):
            return [Edit(token.start, token.end, by, replaces=True)]

        if token.kind == 'op' and self.is_spaced(i):
            if text in BINARY:
                yield f'{text} to {WRONG[text]}', replaced(f'{text} ::mutant::Op<@, {asleep}>{{}} {BINARY[text]}')
            elif text in MORE:
                yield f'{text} to {WRONG[text]}', replaced(f'{text} ::mutant::MoreOp<@, {asleep}>{{}} {MORE[text]}')
            elif text in ASSIGNING:
                yield f'{text} to {WRONG[text]}', replaced(f'{text} ::mutant::Op<@, {asleep}>{{}} {text}')
            elif text in ('&&', '||'):
                yield from self.dropped_operands(i, asleep)
        if text == '!' and not self.is_spaced(i):
            yield 'no !', replaced(f'::mutant::Op<@, {asleep}>{{}} ->* ')
        if text in ('true', 'false'):
            wrong = 'false' if text == 'true' else 'true'
            yield f'{text} to {wrong}', replaced(f'::mutant::Pick<@, {asleep}>({text}, {wrong})')
        if token.kind == 'number':
            yield from self.other_number(token, asleep, replaced)
        if text in ('(', '{'):
            yield from self.swapped(i, asleep)
        if self.text(i - 1) in (';', '{', '}', ')', 'else'):
            yield from self.left_out(i, asleep)

    def other_number(self, token, asleep, replaced):
        digits = token.text.replace("'", '').lower()
        if re.fullmatch(r'(0x[0-9a-f]+|\d+)u?l{0,2}', digits):
            wrong = f'{token.text} + 1'
        elif re.fullmatch(r'[\d.]+(e[+-]?\d+)?f?', digits):
            wrong = f'{token.text} * 1.25' if float(digits.rstrip('f')) else '1.0'
        else:
            return
        yield f'{token.text} to {wrong}', replaced(f'::mutant::Pick<@, {asleep}>({token.text}, {wrong})')

    def dropped_operands(self, i, asleep):
        op = self.text(i)
        open_, close = (f'(::mutant::Is<@, {asleep}>() || static_cast<bool>(', '))')
        if op == '||':
            open_ = f'(!::mutant::Is<@, {asleep}>() && static_cast<bool>('
        stops = ('&&', '||') if op == '&&' else ('||',)
        for step, side in ((1, 'right'), (-1, 'left')):
            end = self.operand(i, step, stops)
            first, last = (i + 1, end) if step > 0 else (end, i - 1)
            if first > last:
                continue
            start, stop = self.tokens[first].start, self.tokens[last].end
            yield f'{op} without its {side}: {shown(self.source[start:stop])}', [Edit(start, stop, open_, close)]

    def swapped(self, i, asleep):
        previous = self.tokens[i - 1]
        if self.text(i) == '(' and (previous.kind != 'name' or previous.text in NOT_STATEMENTS | {'sizeof', 'catch'}):
            return
        second_from = self.simple_argument(i + 1)
        if second_from is None or self.text(second_from) != ',':
            return
        end = self.simple_argument(second_from + 1)
        if end is None or self.text(end) not in (',', ')', '}'):
            return
        start, stop = self.tokens[i + 1].start, self.tokens[end - 1].end
        a = self.source[start:self.tokens[second_from - 1].end]
        b = self.source[self.tokens[second_from + 1].start:stop]
        if a == b or '\n' in self.source[start:stop]:
            return
        yield f'swapped {a}, {b}', [Edit(start, stop, f'::mutant::First<@, {asleep}>({a}, {b}), '
                                         f'::mutant::First<@, {asleep}>({b}, {a})', replaces=True)]

    def left_out(self, i, asleep):
        j = i
        if self.text(j) in ('++', '--', '*'):
            j += 1
        if self.tokens[j].kind != 'name' or self.text(j) in NOT_STATEMENTS:
            return
        while j < len(self.tokens) and (self.tokens[j].kind == 'name' or self.text(j) in ('::', '.', '->', '[', '(')):
            if self.tokens[j].kind == 'name' and self.tokens[j + 1].kind == 'name':
                return  # a declaration
            if self.text(j) == '(' and self.text(j - 1).endswith(('Line', 'Trace')):
                return  # what developers read
            j = self.mate.get(j, j) + 1 if self.text(j) in ('(', '[') else j + 1
        if self.text(j) == '=':
            while self.text(j) not in (';', ''):
                j = self.mate.get(j, j) + 1 if self.text(j) in PAIRS else j + 1
        elif not (self.text(j - 1) == ')' or self.text(i) in ('++', '--')):
            return
        if self.text(j) != ';' or (self.text(i - 1) == ')' and self.text(self.mate.get(i - 1, 0) - 1) == 'decltype'):
            return
        start, stop = self.tokens[i].start, self.tokens[j].start
        yield f'left out: {shown(self.source[start:stop])}', [
            Edit(start, stop, f'(::mutant::Is<@, {asleep}>() ? void() : void(', '))')]


def shown(text):
    text = ' '.join(text.split())
    return text if len(text) <= 60 else text[:57] + '...'


def without_overlaps(mutants):
    """Leaves out mutants that replace what another one replaces or has edits in."""
    kept, taken = [], {}
    for mutant in mutants:
        own = [e for e in mutant.edits if not (mutant.constant and e is mutant.edits[-1])]
        spans = taken.setdefault(mutant.path, [])
        clash = any(a.start < b.end and b.start < a.end and (a.replaces and b.replaces or
                    a.replaces and a.start <= b.start and b.end <= a.end or
                    b.replaces and b.start <= a.start and a.end <= b.end)
                    for a in own for b in spans)
        if not clash:
            spans.extend(own)
            kept.append(mutant)
    return kept


def written(source, mutants):
    """The source with all mutants in it, and the (line, column) of each edit of each, both from 1."""
    events = {}
    seen = set()
    for mutant in mutants:
        for edit in mutant.edits:
            number = str(mutant.number)
            if edit.replaces:
                if (edit.start, edit.end) in seen:
                    continue  # a declaration's, of which several mutants are
                seen.add((edit.start, edit.end))
                events.setdefault(edit.start, []).append((1, 0, edit.before.replace('@', number), edit.end, mutant))
                continue
            events.setdefault(edit.start, []).append(
                (0, (-edit.end, mutant.number), edit.before.replace('@', number), None, mutant))
            events.setdefault(edit.end, []).append((-1, (-edit.start, -mutant.number), edit.after, None, mutant))
    out, places, at = [], {}, 0
    line, column = 1, 1

    def put(text):
        nonlocal line, column
        out.append(text)
        breaks = text.count('\n')
        line += breaks
        column = len(text) - text.rfind('\n') if breaks else column + len(text)

    for position in sorted(events):
        put(source[at:position])
        at = position
        for _, _, text, end, mutant in sorted(events[position], key=lambda e: (e[0], e[1])):
            places.setdefault(mutant.number, []).append((line, column))
            put(text)
            if end is not None:
                at = end
    put(source[at:])
    return ''.join(out), places
