"""Characters and items. The item of a character is its byte in Windows-1252, for which the library's rules for sentences are made, or
its code point if Windows-1252 lacks it."""
import re
from array import array
from typing import Dict, Iterable

_DISPLACED = 0xDC00  # added to the code point of a control character whose byte has another meaning in Windows-1252

_item_of: Dict[int, int] = {}
for _byte in range(0x80, 0xA0):
    _character = bytes([_byte]).decode('cp1252', 'replace')
    if _character != '\ufffd':
        _item_of[ord(_character)] = _byte
        _item_of[_byte] = _DISPLACED + _byte
_character_of = {item: character for character, item in _item_of.items()}
_SURROGATES = re.compile('[\ud800-\udfff]')


def items_of(text: str) -> 'array[int]':
    """The items of a text; an unpaired surrogate becomes U+FFFD."""
    items = array('i')
    items.frombytes(_SURROGATES.sub('\ufffd', text).translate(_item_of).encode('utf-32-le', 'surrogatepass'))
    return items


def text_of(items: Iterable[int]) -> str:
    """The characters of items; an item without a character gives U+FFFD."""
    known = array('i', (item if 0 <= item <= 0x10FFFF else 0xFFFD for item in items))
    text = known.tobytes().decode('utf-32-le', 'surrogatepass').translate(_character_of)
    return _SURROGATES.sub('\ufffd', text)


def decode(data: bytes) -> str:
    """Decodes UTF-16 if there is a byte order mark, UTF-8 if all bytes are valid, else Windows-1252."""
    if data[:2] in (b'\xff\xfe', b'\xfe\xff'):
        return data.decode('utf-16', 'replace')
    try:
        return data.decode('utf-8-sig')
    except UnicodeDecodeError:
        return text_of(data)
