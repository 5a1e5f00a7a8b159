"""Reads the project's TypeScript declarations with their documentation, and writes them as Sphinx directives."""
import re
from dataclasses import dataclass, field

from markup import escaped, indented


@dataclass
class Declaration:
    kind: str  # the name of a Sphinx directive: function, class, method or attribute
    name: str
    signature: str = ''
    type: str = ''
    documentation: str = ''
    members: list = field(default_factory=list)


COMMENT = re.compile(r'/\*\*(.*?)\*/\s*', re.S)
HEAD = re.compile(r'(?:export\s+)?(?:declare\s+)?(?:default\s+)?(function|class|interface|type|const)\s+(\w+)')
MEMBER = re.compile(r'(?:static\s+|readonly\s+|get\s+|async\s+)*(\[?[\w.]+\]?)\??')
OPEN, CLOSE = '([{<', ')]}>'


def plain(comment):
    lines = [re.sub(r'^\s*\*? ?', '', line) for line in comment.strip().splitlines()]
    return '\n'.join(lines).strip()


def end_of(text, start, stops):
    """The position of the first of `stops` outside of all brackets."""
    depth = 0
    for i in range(start, len(text)):
        character = text[i]
        if depth == 0 and character in stops:
            return i
        if character in OPEN:
            depth += 1
        elif character in CLOSE and text[i - 1] != '=':  # => is not a closing bracket
            depth -= 1
    return len(text)


def call_of(text, start):
    """The parameters and the result type of a function or method, and the position after it."""
    start = text.index('(', start)
    close = end_of(text, start + 1, ')')
    end = end_of(text, close + 1, ';')
    return ' '.join(text[start + 1:close].split()), ' '.join(text[close + 1:end].lstrip(': ').split()), end + 1


def read_members(body):
    members, position, documentation = [], 0, ''
    while position < len(body):
        rest = body[position:]
        comment, member = COMMENT.match(rest), MEMBER.match(rest)
        if comment:
            documentation, position = plain(comment.group(1)), position + comment.end()
        elif member and member.group(1) not in ('constructor', 'private'):
            after = position + member.end()
            if body[after:after + 1] in ('(', '<'):
                signature, type_, position = call_of(body, after)
                is_getter = re.search(r'\bget\s', member.group())
                if member.group(1) not in [other.name for other in members]:  # overloads are listed once
                    members.append(Declaration('attribute' if is_getter else 'method', member.group(1), signature, type_, documentation))
            else:
                end = end_of(body, after, ';')
                members.append(Declaration('attribute', member.group(1), '', ' '.join(body[after:end].lstrip('?: ').split()), documentation))
                position = end + 1
            documentation = ''
        elif member:
            position, documentation = end_of(body, position, ';') + 1, ''
        else:
            position += 1
    return members


def read(text):
    """The exported declarations of a file, in order."""
    declarations, position, documentation = [], 0, ''
    while position < len(text):
        rest = text[position:]
        comment, head = COMMENT.match(rest), HEAD.match(rest)
        if comment:
            documentation, position = plain(comment.group(1)), position + comment.end()
            continue
        if not head:
            position += 1
            continue
        kind, name = head.groups()
        after = position + head.end()
        if kind == 'function':
            signature, type_, position = call_of(text, after)
            declarations.append(Declaration('function', name, signature, type_, documentation))
        elif kind in ('class', 'interface'):
            opening = text.index('{', after)
            position = end_of(text, opening + 1, '}') + 1
            declarations.append(Declaration('class', name, '', '', documentation, read_members(text[opening + 1:position - 1])))
        else:
            end = end_of(text, after, ';')
            declarations.append(Declaration('data', name, '', ' '.join(text[after:end].lstrip(':= ').split()), documentation))
            position = end + 1
        documentation = ''
    return declarations


def prose(documentation):
    """Converts Markdown code in single backticks to reStructuredText code in double ones."""
    parts = documentation.split('`')
    return ''.join(f'``{part}``' if i % 2 else escaped(part) for i, part in enumerate(parts)) if len(parts) % 2 else escaped(documentation)


def as_directive(entry, note):
    call = f'({entry.signature})' if entry.kind in ('function', 'method') else ''
    text = f'.. js:{entry.kind}:: {entry.name}{call}\n\n'
    body = prose(entry.documentation) + '\n\n'
    if entry.type and entry.type != 'void':
        body += ('Returns ' if call else '') + f'``{entry.type}``\n\n'
    body += note(entry) + '\n\n' + ''.join(as_directive(member, lambda member: '') for member in entry.members)
    return text + indented(body.strip()) + '\n\n'


def as_directives(declarations, note=lambda entry: ''):
    return ''.join(as_directive(entry, note) for entry in declarations)
