"""Small helpers for reStructuredText."""
import re
import textwrap


def title(text, line='='):
    return f'{text}\n{line * len(text)}\n\n'


def label(name):
    return f'.. _{name}:\n\n'


def indented(text, depth=1):
    return textwrap.indent(text, '   ' * depth)


def slug(text):
    return re.sub(r'[^a-z0-9]+', '-', text.lower()).strip('-')


def escaped(text):
    return re.sub(r'([\\*|_`])', r'\\\1', text)


def prose(text, roles):
    """Text of the list as reStructuredText: what stands in backticks becomes a link where `roles` knows the name, else code."""
    parts = re.split(r'`([^`]+)`', text)
    for i, part in enumerate(parts):
        if i % 2 == 0:
            parts[i] = escaped(part)
        else:
            # A role must stand between spaces or punctuation; the escaped space makes any place such a one.
            parts[i] = '\\ ' + (f':{roles[part]}:`{part}`' if part in roles else f'``{part}``') + '\\ '
    return ''.join(parts)
