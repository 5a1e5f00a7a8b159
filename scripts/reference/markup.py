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
    """Documentation of the list as reStructuredText: a name in backticks becomes a link if it is in `roles`, else code."""
    parts = re.split(r'`([^`]+)`', text)
    for i, part in enumerate(parts):
        if i % 2 == 0:
            parts[i] = escaped(part)
        else:
            # A role must be between spaces or punctuation; an escaped space counts as one and isn't shown.
            parts[i] = '\\ ' + (f':{roles[part]}:`{part}`' if part in roles else f'``{part}``') + '\\ '
    return ''.join(parts)
