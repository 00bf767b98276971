"""Reads the program's data files, as another program would."""
import pathlib

M = "\u00bd" * 5
END = {"Clip": "CLIP", "Pad": "PAD", "ToDo": "TODO"}


def decode(content):
    """A file with a character beyond the code page is UTF-8 behind its mark, else Windows-1252."""
    if content.startswith(b"\xef\xbb\xbf"):
        return content[3:].decode("utf-8")
    # The five bytes without a character in the code page stand for themselves.
    return "".join(bytes([byte]).decode("cp1252", "ignore") or chr(byte) for byte in content)


def entries(path):
    """The entries of a data file, each as its text with line ends as they stand; None if it is not whole."""
    path = pathlib.Path(path)
    kind = END[path.name.removesuffix("Data.qbx")]
    try:
        text = decode(path.read_bytes())
    except FileNotFoundError:
        return None
    end = f"{M} [{kind} ENTRY FILE END] {M}\r\n"
    head, mark, rest = text.partition("\r\n")
    if not head.startswith(f"{M} [{kind} ENTRY FILE ") or not rest.endswith(end) or not mark:
        return None
    rest = rest.removesuffix(end)
    found = []
    while rest:
        marker = f"{M} [{kind} ENTRY {len(found)}] {M}\r\n"
        if not rest.startswith(marker):
            return None
        rest = rest.removeprefix(marker)
        following = f"\r\n{M} [{kind} ENTRY {len(found) + 1}] {M}\r\n"
        at = rest.find(following)
        if at < 0:
            entry, rest = rest.removesuffix("\r\n"), ""
        else:
            entry, rest = rest[:at], rest[at + 2:]
        found.append(entry)
    return found


def newest(desktop):
    """The newest entry in the Clip file; None if the file is missing, broken or without entries."""
    found = entries(desktop.data / "ClipData.qbx")
    return found[0] if found else None
