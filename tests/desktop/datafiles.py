"""Reads and writes the program's data files, as another program would."""
import pathlib

M = "\u00bd" * 5
END = {"Clip": "CLIP", "Pad": "PAD", "ToDo": "TODO"}
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


def write(path, found):
    path = pathlib.Path(path)
    path.parent.mkdir(exist_ok=True)
    path.write_bytes(content(END[path.name.replace("Data.qbx", "")], found))


def entries(path):
    """The entries of a data file, each as its text with line ends as they stand; None if it is not whole."""
    path = pathlib.Path(path)
    kind = END[path.name.replace("Data.qbx", "")]
    try:
        text = decode(path.read_bytes())
    except FileNotFoundError:
        return None
    head, mark, rest = text.partition("\r\n")
    rest, end, behind = rest.rpartition(f"{M} [{kind} ENTRY FILE END] {M}\r\n")
    if not head.startswith(f"{M} [{kind} ENTRY FILE ") or not mark or not end or behind:
        return None
    # What is between the marks, as far as their numbers follow; the line end of the last one is still on it.
    found, rest = [], "\r\n" + rest
    while mark:
        between, mark, rest = rest.partition(f"\r\n{M} [{kind} ENTRY {len(found)}] {M}\r\n")
        found.append(between)
    if found == ["\r\n"]:
        return []
    return None if found[0] or not found[-1].endswith("\r\n") else [*found[1:-1], found[-1][:-2]]


def newest(desktop):
    """The newest entry in the Clip file; None if the file is missing, broken or without entries."""
    found = entries(desktop.data / "ClipData.qbx")
    return found[0] if found else None


def pad_file(*entries):
    """The bytes of a Pad file with these names and texts."""
    return content("PAD", map("\r\n".join, entries))
