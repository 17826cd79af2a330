"""What can be asked."""

import ctypes
import functools
import operator
from typing import List, Optional, Tuple, Union

from . import _library
from ._results import Result, WrongUsage, taken

Text = Union[bytes, str, bytearray, memoryview]

# The flag of each direction, where the library would find it out by itself.
_TOWARDS = {None: 0, "new": _library.TOWARDS_NEW, "old": _library.TOWARDS_OLD}


def _bytes_of(text: Text, what: str) -> bytes:
    """Without a copy for bytes. What another thread could change during the call is copied."""
    if isinstance(text, bytes):
        return text
    if isinstance(text, str):
        # Half a surrogate pair is no UTF-8, and the library says where it stands.
        return text.encode("utf-8", "surrogatepass")
    if isinstance(text, (bytearray, memoryview)):
        return bytes(text)
    raise TypeError("%s is bytes, str, bytearray or memoryview, not %s" % (what, type(text).__name__))


def _name_of(name: str, what: str) -> bytes:
    if not isinstance(name, str):
        raise TypeError("%s is a str, not %s" % (what, type(name).__name__))
    encoded = name.encode("utf-8", "surrogatepass")
    if b"\0" in encoded:  # where the library would stop reading
        raise WrongUsage("%s has a NUL" % what)
    return encoded


def _indent_of(indent: Optional[int]) -> int:
    if indent is None:
        return _library.COMPACT
    blanks = operator.index(indent)
    if not 0 <= blanks <= _library.DEEPEST_INDENT:
        raise WrongUsage("the indent is neither None nor from 0 to %d" % _library.DEEPEST_INDENT)
    return blanks


def _towards(direction: Optional[str], what: str = "towards") -> int:
    try:
        return _TOWARDS[direction]
    except (KeyError, TypeError):
        raise WrongUsage('%s is "new" or "old", not %r' % (what, direction)) from None


_FLAGS = {
    "as_is": _library.AS_IS,
    "dsl_vlan": _library.DSL_VLAN,
    "force": _library.FORCE,
    "from_result": _library.FROM_RESULT,
    "losses": _library.TELL_LOSSES,
    "merge_patch": _library.MERGE_PATCH,
    "partial": _library.PARTIAL,
    "show_secrets": _library.SHOW_SECRETS,
    "strict": _library.STRICT,
}


def _flags(**chosen: bool) -> int:
    return sum(_FLAGS[name] for name, is_chosen in chosen.items() if is_chosen)


def _run(
    operation: int,
    text: Text,
    *,
    flags: int = 0,
    indent: Optional[int] = None,
    other: Optional[Text] = None,
    section_name: Optional[str] = None,
    pointer: Optional[str] = None,
) -> Result:
    request = _library.Request(operation=operation, flags=flags, indent=_indent_of(indent))
    request.size = ctypes.sizeof(request)
    # The request keeps what it points to.
    request.text = whole = _bytes_of(text, "a text")
    request.text_length = len(whole)
    if other is not None:
        request.other = whole = _bytes_of(other, "the other text")
        request.other_length = len(whole)
    if section_name is not None:
        request.section = _name_of(section_name, "the name of a section")
    if pointer is not None:
        request.pointer = _name_of(pointer, "a pointer")
    library = _library.load()
    result = library.k_text_run(ctypes.byref(request))
    if result is None:
        raise MemoryError("there is too little memory to convert the text")
    try:
        return taken(library, result)
    finally:
        library.k_text_free(result)


def to_new(
    text: Text,
    *,
    base: Optional[Text] = None,
    merge_patch: bool = False,
    dsl_vlan: bool = False,
    partial: bool = False,
    force: bool = False,
    losses: bool = False,
    strict: bool = False,
    indent: Optional[int] = None,
    show_secrets: bool = False,
) -> Result:
    """The old configuration `text` in the new layout.

    base: a configuration in the new layout; the output is what has to change in it instead, as a JSON Patch, or with
    merge_patch as a JSON Merge Patch. dsl_vlan: the device ties its VLANs to DSL services. partial: of a rejected text,
    what can be converted of it. force: whatever layout the text seems to be of. losses: find what of the text the other
    layout will not hold. strict: any warning or loss rejects the text. indent: blanks a level, 0 for one line with
    blanks; None is no white space at all. show_secrets: do not mask passwords and keys in messages.
    """
    flags = _flags(
        merge_patch=merge_patch, dsl_vlan=dsl_vlan, partial=partial, force=force, losses=losses, strict=strict,
        show_secrets=show_secrets
    )
    return _run(_library.TO_NEW, text, other=base, flags=flags, indent=indent)


def to_old(
    text: Text,
    *,
    dsl_vlan: bool = False,
    partial: bool = False,
    force: bool = False,
    losses: bool = False,
    strict: bool = False,
    indent: Optional[int] = None,
    show_secrets: bool = False,
) -> Result:
    """The new configuration `text` in the old layout; see to_new for the rest."""
    flags = _flags(
        dsl_vlan=dsl_vlan, partial=partial, force=force, losses=losses, strict=strict, show_secrets=show_secrets
    )
    return _run(_library.TO_OLD, text, flags=flags, indent=indent)


def convert(
    text: Text,
    *,
    towards: Optional[str] = None,
    dsl_vlan: bool = False,
    partial: bool = False,
    force: bool = False,
    losses: bool = False,
    strict: bool = False,
    indent: Optional[int] = None,
    show_secrets: bool = False,
) -> Result:
    """The configuration `text` in the other layout, which is found out unless `towards` is "new" or "old".

    Result.direction says which it was. See to_new for the rest.
    """
    flags = _flags(
        dsl_vlan=dsl_vlan, partial=partial, force=force, losses=losses, strict=strict, show_secrets=show_secrets
    )
    return _run(_library.CONVERT, text, flags=_towards(towards) | flags, indent=indent)


def section(
    name: str,
    text: Text,
    *,
    towards: str,
    base: Optional[Text] = None,
    merge_patch: bool = False,
    as_is: bool = False,
    partial: bool = False,
    force: bool = False,
    indent: Optional[int] = None,
    show_secrets: bool = False,
) -> Result:
    """The section `name` of the layout `towards`, "new" or "old", from `text`: the section in the other layout.

    A text that is a whole configuration has its section taken out, which a note says, unless as_is says that the text
    is the section. See to_new for the rest; a base is the section in the new layout.
    """
    if name not in sections(towards):
        raise WrongUsage("%r is no section of the %s layout" % (name, towards))
    flags = _flags(merge_patch=merge_patch, as_is=as_is, partial=partial, force=force, show_secrets=show_secrets)
    operation = _library.SECTION_TO_NEW if towards == "new" else _library.SECTION_TO_OLD
    return _run(operation, text, other=base, section_name=name, flags=flags, indent=indent)


def sections(layout: str) -> Tuple[str, ...]:
    """The names of the sections of a layout, "new" or "old", that can be made by section."""
    if _towards(layout, "a layout") == 0:
        raise WrongUsage('a layout is "new" or "old", not None')
    return _sections_of(_library.NEW_SECTIONS if layout == "new" else _library.OLD_SECTIONS)


@functools.lru_cache(maxsize=None)
def _sections_of(layout: int) -> Tuple[str, ...]:
    library = _library.load()
    names: List[str] = []
    while True:
        name: Optional[bytes] = library.k_text_section(layout, len(names))
        if name is None:
            return tuple(names)
        names.append(name.decode())


def find(text: bytes, pointer: str) -> Optional[slice]:
    """Where in a JSON text the value is that the JSON Pointer leads to, as a slice of it; None where there is none.

    It looks for no more than where values end, so that in a text that cannot be read it may find something, or nothing.
    """
    if not isinstance(text, bytes):
        raise TypeError("the text is bytes, not %s" % type(text).__name__)
    library = _library.load()
    offset, length = ctypes.c_size_t(), ctypes.c_size_t()
    name = _name_of(pointer, "a pointer")
    found = library.k_text_find(text, len(text), name, ctypes.byref(offset), ctypes.byref(length))
    if found < 0:
        raise MemoryError("there is too little memory to look for a value")
    return slice(offset.value, offset.value + length.value) if found else None


def diff(
    text: Text,
    other: Text,
    *,
    merge_patch: bool = False,
    indent: Optional[int] = None,
    show_secrets: bool = False,
) -> Result:
    """What has to change in `text` to make it equal to `other`; both are any JSON values."""
    flags = _flags(merge_patch=merge_patch, show_secrets=show_secrets)
    return _run(_library.DIFF, text, other=other, flags=flags, indent=indent)


def apply(text: Text, difference: Text, *, indent: Optional[int] = None, show_secrets: bool = False) -> Result:
    """`text` with the difference applied: a JSON Patch (an array) or a JSON Merge Patch (an object)."""
    flags = _flags(show_secrets=show_secrets)
    return _run(_library.APPLY, text, other=difference, flags=flags, indent=indent)


def check(
    text: Text,
    *,
    towards: Optional[str] = None,
    dsl_vlan: bool = False,
    force: bool = False,
    show_secrets: bool = False,
) -> Result:
    """Whether the configuration `text` can be converted, and what of it the other layout will not hold.

    The result has problems and losses, and no output.
    """
    flags = _flags(dsl_vlan=dsl_vlan, force=force, show_secrets=show_secrets)
    return _run(_library.CHECK, text, flags=_towards(towards) | flags)


def losses(
    text: Text,
    *,
    towards: Optional[str] = None,
    dsl_vlan: bool = False,
    force: bool = False,
    show_secrets: bool = False,
) -> Result:
    """What of the configuration `text` the other layout will not hold; of a rejected one, of the part that converts."""
    flags = _flags(dsl_vlan=dsl_vlan, force=force, show_secrets=show_secrets)
    return _run(_library.LOSSES, text, flags=_towards(towards) | flags)


def explain(
    text: Text,
    pointer: str,
    *,
    from_result: bool = False,
    towards: Optional[str] = None,
    dsl_vlan: bool = False,
    force: bool = False,
    indent: Optional[int] = None,
    show_secrets: bool = False,
) -> Result:
    """What becomes of the value at the JSON Pointer, or with from_result what makes the value at it in the result.

    The output is a JSON object.
    """
    flags = _flags(from_result=from_result, dsl_vlan=dsl_vlan, force=force, show_secrets=show_secrets)
    return _run(_library.EXPLAIN, text, pointer=pointer, flags=_towards(towards) | flags, indent=indent)
