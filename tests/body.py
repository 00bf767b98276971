"""A body of the program, quillbox-console or quillbox-window, driven line by line."""
import os
import re
import select
import subprocess

PATIENCE = 120  # seconds for an answer
PIPE = 65_536  # bytes that a pipe holds while nobody reads it
ESCAPES = {"\n": "n", "\r": "r", "\t": "t", "\\": "\\"}
ESCAPED = {letter: sign for sign, letter in ESCAPES.items()}


class Failure(Exception):
    """What should not be."""


def escape(text):
    return re.sub(r"[\\\0-\x1f\x7f-\x9f\u2028\u2029\ud800-\udfff]",
                  lambda sign: "\\" + (ESCAPES.get(sign[0]) or f"u{ord(sign[0]):04x}"), text)


def unescape(text):
    if "\\" not in text:
        return text
    text = re.sub(r"\\(?:u([0-9a-fA-F]{4})|(.))", lambda sign: chr(int(sign[1], 16)) if sign[1] else
                  ESCAPED.get(sign[2], sign[2]), text)
    return text.encode("utf-16", "surrogatepass").decode("utf-16", "surrogatepass")


class Body:
    def __init__(self, *program):
        self.process = subprocess.Popen(program, stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def ask(self, *lines):
        """The answers to requests that go out together."""
        assert len(lines) == 1 or sum(map(len, lines)) + len(lines) < PIPE, "more than a pipe holds"
        answers, missing = [], len(lines)
        try:
            self.process.stdin.write(b"\n".join(lines) + b"\n")
            self.process.stdin.flush()
            while missing > 0:
                ready = select.select([self.process.stdout], [], [], PATIENCE)[0]
                part = os.read(self.process.stdout.fileno(), 1 << 20) if ready else b""
                if not part:
                    raise BrokenPipeError
                answers.append(part)
                missing -= part.count(b"\n")
        except (BrokenPipeError, ValueError):
            raise Failure(f"the body has ended with {self.end()}, or hung for {PATIENCE} s") from None
        return b"".join(answers).split(b"\n")[:-1]

    def has_ended(self):
        return self.process.poll() is not None

    def end(self):
        """The body ends with its input, and takes its own scratch folder along; one that hangs is killed."""
        try:
            self.process.communicate(timeout=PATIENCE / 10)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.communicate()
        except ValueError:  # has ended before
            pass
        return self.process.wait()
