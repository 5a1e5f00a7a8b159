"""The pages of the C interface: one per subject, with the names of each function in Python, Java and JavaScript, and one for types."""
from markup import escaped, indented, label, prose, slug, title

SYSTEM, EXTENSIONS = 'zmatrix.h', 'zq.h'
DIRECTIONS = {'in': '', 'out': 'written', 'inout': 'read and written'}
OWNERSHIP = {'new': 'the caller owns it', 'taken': 'the library takes it over', 'lent': 'the {owner} owns it',
             'given': 'it is the {owner} that was passed'}


class Names:
    """The link targets of names in backticks."""

    def __init__(self, model):
        self.roles = {entry['name']: 'c:struct' for entry in model['structures'] + model['objects']}
        self.roles |= {entry['name']: 'c:enum' for entry in model['enumerations']}
        self.roles |= {entry['name']: 'c:type' for entry in model['callbacks']}
        self.roles |= {value['name']: 'c:enumerator' for entry in model['enumerations'] for value in entry['values']}
        self.roles |= {function['name']: 'c:func' for function in model['functions']}


def c_signature(function):
    arguments = ', '.join('...' if argument['kind'] == 'variadic' else f"{argument['type']} {argument['name']}"
                          for argument in function['arguments'])
    return f"{function['result']['type']} {function['name']}({arguments or 'void'})"


def owner_of(part):
    return OWNERSHIP[part['ownership']].format(owner=part.get('owner'))


def argument_line(argument):
    facts = []
    if DIRECTIONS.get(argument.get('direction')):
        facts.append(DIRECTIONS[argument['direction']])
    if argument.get('shape'):
        facts.append(f"array of {escaped(argument['shape'])}" if argument['shape'] != '1' else 'one')
    if argument.get('ownership'):
        facts.append(owner_of(argument))
    if argument.get('nullable'):
        facts.append('may be null')
    return f"* ``{argument['name']}``: {', '.join(facts)}\n" if facts else ''


def ownership_line(result, names):
    if 'ownership' not in result:
        return ''
    release = '; release it with ' + prose(f"`{result['release']}`", names.roles) if 'release' in result else ''
    return f'Ownership of the result: {owner_of(result)}{release}.\n\n'


def family(functions, names, languages):
    """The functions of one name for all tiers: a declaration for each, and one documentation."""
    first = functions[0]
    text = '.. c:function:: ' + '\n                '.join(c_signature(function) for function in functions) + '\n\n'
    body = prose(first['documentation'], names.roles) + '\n\n'
    arguments = ''.join(map(argument_line, first['arguments']))
    body += arguments + ('\n' if arguments else '')
    for code in first['result'].get('codes', []):
        body += f"* result ``{code['value']}``: {prose(code['documentation'], names.roles)}\n"
    body += '\n' if first['result'].get('codes') else ''
    body += ownership_line(first['result'], names)
    for language in languages:
        links = [link for link in map(language.link, functions) if link]
        if links:
            body += f"{language.name}: {', '.join(links)}\n\n"
    return text + indented(body) + '\n'


def subject_page(subject, functions, names, languages):
    text = label('c-' + slug(subject)) + title(escaped(subject))
    families = {}
    for function in functions:
        families.setdefault(function['family'], []).append(function)
    return text + ''.join(family(members, names, languages) for members in families.values())


def by_subject(model, header):
    subjects = {}
    for function in model['functions']:
        if function['header'] == header:
            subjects.setdefault(function['subject'], []).append(function)
    return subjects


def member(field):
    count = f"[{field['count']}]" if field.get('count') else ''
    return f"{field['type']} {field['name']}{count}"


def types_page(model, names):
    text = label('c-types') + title('Structures, enumerations and callbacks')
    text += title('Objects', '-') + 'Opaque types: a host has only pointers to them.\n\n'
    for entry in model['objects']:
        text += f".. c:struct:: {entry['name']}\n\n" + indented(prose(entry['documentation'], names.roles)) + '\n\n'
    text += title('Structures', '-')
    for entry in model['structures']:
        text += f".. c:struct:: {entry['name']}\n\n" + indented(prose(entry['documentation'], names.roles)) + '\n\n'
        for field in entry['fields']:
            text += indented(f'.. c:member:: {member(field)}\n\n') + indented(prose(field['documentation'], names.roles), 2) + '\n\n'
    text += title('Enumerations', '-')
    for entry in model['enumerations']:
        text += f".. c:enum:: {entry['name']}\n\n" + indented(prose(entry['documentation'], names.roles)) + '\n\n'
        for value in entry['values']:
            text += indented(f".. c:enumerator:: {value['name']}\n\n")
            text += indented(f"``{value['value']}`` {prose(value['documentation'], names.roles)}", 2) + '\n\n'
    text += title('Callbacks', '-')
    for entry in model['callbacks']:
        arguments = ', '.join(f"{argument['type']} {argument['name']}" for argument in entry['arguments'])
        text += f".. c:type:: {entry['result']} (*{entry['name']})({arguments})\n\n"
        text += indented(prose(entry['documentation'], names.roles)) + '\n\n'
    return text


def index_page(chapters):
    text = title('The C interface')
    text += 'Names that begin with ``s_`` are the functions of the system; ``zq_`` functions are extensions for hosts.\n\n'
    text += 'The end of a name is the tier: ``_Medium``, ``_Base``, or nothing for the full tier.\n\n'
    for heading, pages in chapters:
        text += f'.. toctree::\n   :caption: {heading}\n   :maxdepth: 1\n\n' + ''.join(f'   {page}\n' for page in pages) + '\n'
    return text


def write(model, folder, languages):
    folder.mkdir(parents=True)
    names = Names(model)
    chapters = []
    for header, heading in ((EXTENSIONS, 'Extensions: zmatrix/zq.h'), (SYSTEM, 'The system: zmatrix/zmatrix.h')):
        pages = []
        for subject, functions in by_subject(model, header).items():
            page = ('zq-' if header == EXTENSIONS else '') + slug(subject)
            (folder / f'{page}.rst').write_text(subject_page(subject, functions, names, languages).replace('.. _c-', f'.. _c-{header[:2]}-'))
            pages.append(page)
        chapters.append((heading, pages))
    (folder / 'types.rst').write_text(types_page(model, names))
    (folder / 'index.rst').write_text(index_page([('Types', ['types'])] + chapters))
