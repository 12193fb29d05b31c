"""A program on a terminal of 60 by 20, and what stands on it."""
import fcntl
import os
import pty
import re
import select
import struct
import termios

from network import wait_until


class Screen:
    def __init__(self, program, environment):
        self.child, self.terminal = pty.fork()
        if self.child == 0:
            os.execve(program, [program], {**environment, "TERM": "xterm"})
        fcntl.ioctl(self.terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 20, 60, 0, 0))
        self.written = ""

    def read(self):
        while select.select([self.terminal], [], [], 0)[0]:
            try:
                self.written += os.read(self.terminal, 65536).decode(errors="replace")
            except OSError:
                break
        return self.written

    def wrote(self, text, seconds=10):
        return wait_until(lambda: text in self.read(), seconds)

    def text(self):
        """What stands there now, a line a row."""
        rows = {}
        for row, text in re.findall(r"\x1b\[(\d+);1H((?:[^\x1b]|\x1b\[[0-9;]*[mK])*)", self.read().split("\x1b[2J")[-1]):
            rows[int(row)] = re.sub(r"\x1b\[[0-9;]*[mK]", "", text)
        return "\n".join(rows[row] for row in sorted(rows))

    def shows(self, text, seconds=10):
        return wait_until(lambda: text in self.text(), seconds)

    def type(self, keys):
        os.write(self.terminal, keys)
