"""Reads and writes the program's data files, as another program would."""
import pathlib
import re

M = "\u00bd" * 5
UTF8 = b"\xef\xbb\xbf"
# The five bytes without a character in the code page stand for themselves.
CHARACTERS = {byte: bytes([byte]).decode("cp1252", "ignore") or chr(byte) for byte in range(256)}
BYTES = {ord(character): byte for byte, character in CHARACTERS.items()}


def decode(content):
    """A file with a character beyond the code page is UTF-8 behind its mark, else Windows-1252."""
    if content.startswith(UTF8):
        return content[3:].decode("utf-8", "replace")
    return content.decode("latin-1").translate(CHARACTERS)


def content(kind, found):
    """The bytes of a file; the opposite of `entries`."""
    texts = "".join(f"{M} [{kind} ENTRY {number}] {M}\r\n{text}\r\n" for number, text in enumerate(found))
    text = f"{M} [{kind} ENTRY FILE 4.31, DO NOT EDIT] {M}\r\n{texts}{M} [{kind} ENTRY FILE END] {M}\r\n"
    narrow = all(ord(character) in BYTES for character in text)
    return text.translate(BYTES).encode("latin-1") if narrow else UTF8 + text.encode()


def kind_of(path):
    return path.name.removesuffix("Data.qbx").upper()


def write(path, found):
    path.parent.mkdir(mode=0o700, parents=True, exist_ok=True)
    path.write_bytes(content(kind_of(path), found))


def entries(path):
    """The entries of a data file, each as its text with line ends as they stand; None if it is not whole."""
    kind, written, found = kind_of(path), path.read_bytes() if path.exists() else b"", []
    rest = decode(written).partition("\r\n")[2]
    while entry := re.match(rf"{M} \[{kind} ENTRY {len(found)}\] {M}\r\n(.*?)\r\n"
                            rf"(?={M} \[{kind} ENTRY ({len(found) + 1}|FILE END)\] {M}\r\n)", rest, re.DOTALL):
        found.append(entry[1])
        rest = rest[entry.end():]
    return found if content(kind, found) == written else None
