"""What a function takes and gives, beyond its types: direction, shape and owner of each pointer, and the codes of its result.

The lists say it in their documentation, by conventions that hold throughout:

  - an argument of which a sentence with "gets" speaks, or that stands in the sentence on the result, is for a result;
  - `const T*` is read; its shape is "`length` integers" or the like in the documentation, else the integer argument behind it;
  - a plain structure that isn't const and that no sentence fills is read and changed; what delete... takes ends there;
  - "new", "released with", "for s_Free", "Delete it with" hand a result over; "belongs to" and "is the library's" lend it;
  - "The same", "As `NAME`" and "as there" refer to the row that is named, or else to those above with the same argument or result.

What none of these tells stands on a line with @ (scripts/generate_flat.py); a pointer without direction, shape and owner ends the
generator.
"""
import re

from .rows import OPAQUE

SCALARS = {'int', 'unsigned', 'unsigned int', 'long long', 'short', 'size_t', 'double', 'char', 'unsigned char', 'signed char'}
ITEMS = r'(?:integers?|items?|characters?|bytes|records|entries|values|numbers|ocrons|degeneration levels)'
REFERS = re.compile(r'^(The same|As |The low 32)|\bas (`|zq_|there|above|with|type)|such a')


class Part:
    """An argument, or the result: type, what it is, and who owns what it points to."""

    def __init__(self, name, type_name, kind):
        self.name, self.type, self.kind = name, type_name, kind
        self.direction, self.nullable, self.shape = 'in', False, None
        self.ownership, self.owner, self.release = None, None, None


def sentences(text):
    return re.split(r'(?<=[.;:]) ', text)


def result_text(row):
    """What the documentation says of the result; all of it where it has no sentence on the result alone."""
    text = ' '.join(row.documentation)
    found = re.search(r'Result:? (.*)', text)
    return found.group(1) if found else text


def says_result(row):
    return re.search(r'Result:? ', ' '.join(row.documentation)) is not None


def codes_of(row):
    """(value, meaning) of the numbers that a result is said to have."""
    if not says_result(row):
        return []
    codes = {}
    text = re.sub(r' ?\([^)]*\)', '', result_text(row))
    for piece in re.split(r'[;,] (?:or (?:of )?|and )?(?=(?:else )?-?\d|null)|\. (?=-?\d+ [a-z])', text):
        found = re.match(r'(else |always )?(-?\d+)(?!\d| to )\b,? ?(.*?)[.;]?$', piece)
        if found and not found.group(3).startswith('or '):
            codes.setdefault(int(found.group(2)), (found.group(3) or (found.group(1) or '').strip()).strip(' .'))
    return sorted(codes.items(), reverse=True)


class Signatures:
    """Reads the rows of the list."""

    def __init__(self, flat, types):
        self.rows = flat.rows + flat.extension_rows
        self.types = {entry.name: entry for entry in types}
        self.objects = {name for name, _ in OPAQUE}
        self.refused = []

    def of(self, function):
        """(arguments, result) of a function."""
        row = function.row
        arguments = [self.argument(row, text) for text in function.arguments]
        return arguments, self.result(row, function.result, function.arguments)

    # --- arguments

    def argument(self, row, text):
        if text == '...':
            return Part('...', '...', 'variadic')
        type_name, name = re.fullmatch(r'(.+?)\s*(\w+)', text).groups()
        part = Part(name, type_name, self.kind_of(type_name))
        mark = row.marks.get(name)
        if mark is not None:
            self.apply_mark(part, mark)
        else:
            self.infer(row, part)
        part.nullable = part.nullable or part.kind != 'value' and self.is_nullable(row, part)
        if row.kind == '-' and row.name.startswith(('delete', 's_Free')):
            part.direction, part.ownership, part.nullable = 'in', 'taken', True
        if part.kind == 'array' and part.shape is None:
            self.refuse(row, part.name)
        return part

    def kind_of(self, type_name):
        plain = re.sub(r'\bconst\b', '', type_name).replace(' *', '*').strip()
        base, stars = re.sub(r'\*', '', plain).strip(), plain.count('*')
        if base in self.types and self.types[base].kind == 'function' or base == 'matrixProgressCallBackFunction':
            return 'callback'
        if stars == 0:
            return 'value'
        if base in ('void', 'FILE'):
            return 'opaque'
        if stars > 1:
            return 'rows'
        if base in self.objects:
            return 'object'
        if base not in SCALARS:
            return 'record'
        return 'text' if type_name == 'const char*' else 'array'

    def infer(self, row, part):
        if part.kind == 'record':
            part.direction, part.shape = 'in' if 'const' in part.type else 'inout', '1'
            if self.is_filled(row, part.name):
                part.direction = 'out'
        elif part.kind == 'array':
            self.infer_array(row, part)
        elif part.kind == 'rows':
            part.shape = self.documented_shape(row, part.name) or self.shape_behind(row, part.name)
            if part.shape is None:
                self.refuse(row, part.name)

    def infer_array(self, row, part):
        for said in [row] + self.referred(row, part):
            if part.name in said.marks:
                return self.apply_mark(part, said.marks[part.name])
            if 'const' in part.type:
                part.shape = self.documented_shape(said, part.name) or self.shape_behind(row, part.name)
            elif self.is_filled(said, part.name):
                part.direction, part.shape = 'out', '1'
            if part.shape:
                return
        if 'const' not in part.type:
            self.refuse(row, part.name)

    def referred(self, row, part):
        """The rows that this one refers to, the nearest first."""
        if not REFERS.search(' '.join(row.documentation)):
            return []
        named, above = self.named_in(row), self.rows[:self.rows.index(row)][::-1]
        return [other for other in named + above
                if other is not row and part.name in [argument.split()[-1].lstrip('*') for argument in other.arguments]]

    def named_in(self, row):
        words = {re.sub('^(s|zq)_', '', word) for word in re.findall(r'\w+', ' '.join(row.documentation))}
        return [other for other in self.rows if re.sub('^s_', '', other.name) in words]

    def is_filled(self, row, name):
        mentioned = re.compile(rf'`{name}`|\*{name}\b')
        text = ' '.join(row.documentation)
        for sentence in re.split(r'(?<=\.) ', text):
            if mentioned.search(sentence) and re.search(r'\bgets?\b|\bfilled\b', sentence):
                return True
        return says_result(row) and mentioned.search(result_text(row)) is not None

    def documented_shape(self, row, name):
        text = ' '.join(row.documentation)
        at = re.search(rf'`{name}`:? (.*)', text)
        counts = [argument.split()[-1] for argument in row.arguments if re.match(r'(int|long long|size_t) \w+$', argument)]
        if at:
            said = sentences(at.group(1))[0]
            by_item = re.search(r'`(\w+)` times `coordinateDimension`', said) or re.search(r'^`coordinateDimension` integers', said)
            if by_item:
                return f'{by_item.group(1)} * coordinateDimension' if by_item.groups() else 'coordinateDimension'
            fixed = re.search(rf'(\d+) {ITEMS}', said)
            if fixed:
                return fixed.group(1)
            told = re.search(rf'`(\w+)` {ITEMS}', said)
            if told and told.group(1) in counts:
                return told.group(1)
        return None

    def shape_behind(self, row, name):
        names = [argument.split()[-1].lstrip('*') for argument in row.arguments]
        at = names.index(name) + 1 if name in names else len(names)
        if at < len(names) and re.match(r'(int|long long) \w+$', row.arguments[at]):
            return f'{names[at]} * coordinateDimension' if names[at] == 'numberOfItems' else names[at]
        return None

    def is_nullable(self, row, part):
        text = ' '.join(row.documentation)
        of_it = ' '.join(sentence for sentence in re.split(r'(?<=\.) ', text) if re.search(rf'`{part.name}`', sentence))
        return bool(re.search(r'null is allowed|if not null|null for none|, or null|[Nn]ull or empty|Null or a', of_it) or
                    re.search(rf'`{part.name}`:[^`]*\. Null ', text))

    def apply_mark(self, part, mark):
        words = mark.split()
        if words and words[0] in ('in', 'out', 'inout'):
            part.direction = words.pop(0)
        if words and words[0] == 'null':
            part.nullable = bool(words.pop(0))
        if words and words[0] == 'taken':
            part.ownership = words.pop(0)
        part.shape = ' '.join(words) or part.shape or '1'

    # --- results

    def result(self, row, type_name, arguments):
        part = Part(None, type_name, 'none' if type_name == 'void' else self.kind_of(type_name))
        part.direction = 'out'
        if '*' not in type_name:
            return part
        if not self.own_result(row, part):
            named = [other for other in self.named_in(row) if other.result == row.result]
            above = [other for other in self.rows[:self.rows.index(row)][::-1] if other.result == row.result]
            refers = REFERS.search(' '.join(row.documentation)) or 'Result as' in ' '.join(row.documentation)
            found = refers and any(self.own_result(other, part, arguments) for other in named + above if other is not row)
            if not found:
                self.refuse(row, 'result')
        part.nullable = re.search(r'\bnull\b', ' '.join(row.documentation), re.I) is not None or part.ownership == 'new'
        return part

    def own_result(self, row, part, arguments=None):
        if 'result' in row.marks:
            words = row.marks['result'].split()
            part.ownership = words.pop(0)
            if part.ownership in ('new', 'lent', 'given'):
                setattr(part, 'release' if part.ownership == 'new' else 'owner', words.pop(0))
            part.shape = ' '.join(words) or self.shape_of_result(row, part)
        else:
            self.infer_owner(row, part)
            part.shape = self.shape_of_result(row, part)
        return part.ownership is not None and part.shape is not None

    def infer_owner(self, row, part):
        text = ' '.join(row.documentation)
        base = part.type.replace('const ', '').rstrip('*')
        named = re.search(r'(?:[Dd]elete it with|for|which) `?((?:zq_)?delete\w+)', text)
        if re.search(r'releas\w* (?:\w+ )?with `s_Free`|for s_Free|Release them with|belongs to the caller', text):
            part.ownership, part.release = 'new', 's_Free'
        elif named or re.search(r"to be deleted by the caller|the caller's to delete", text):
            part.ownership, part.release = 'new', named.group(1) if named else 'delete' + base
        elif 'belong' in text or 'part of the matrix' in text:
            owner = re.search(r'belongs? to the (\w+)', text)
            part.ownership, part.owner = 'lent', owner.group(1) if owner else 'matrix'
        elif re.search(r"is the (library|process)'s|are the library's", text):
            part.ownership, part.owner = 'lent', 'library'

    def shape_of_result(self, row, part):
        if part.kind in ('object', 'opaque', 'record'):
            return '1'
        if part.kind == 'text' and not re.search(r'\d+ bytes', result_text(row)):
            return 'text'
        text = result_text(row)
        told = re.search(rf'(?:`(\w+)`|(\d+)) {ITEMS}', text)
        if told and (told.group(2) or told.group(1) == 'coordinateDimension' or told.group(1).startswith('s_')):
            return told.group(1) or told.group(2)
        lengths = [argument.split()[-1].lstrip('*') for argument in row.arguments
                   if re.match(r'(int|long long)\* (\w*[lL]ength|\w*[cC]ount|numberOf(Symbols|Dimensions|Bytes))$', argument)]
        return f'*{lengths[0]}' if lengths else None

    def refuse(self, row, name):
        self.refused.append(f'{row.where}: {row.name}: nothing tells the direction, shape or owner of {name}')
