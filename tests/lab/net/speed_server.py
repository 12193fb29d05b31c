"""The lab's speed test server: `speed_server.py FOLDER`.

Below /FAULT/DIRECTION it does what the fault says in that direction (down, up or both), and all is well elsewhere.
The file "transfers" in the folder tells of each request when its bytes begin to move and when the last is acknowledged.
"""
import fcntl
import http.server
import re
import struct
import sys
import termios
import time

PIECE = bytes(50_000)
SHARES = {"less": 0.5, "more": 2}
transfers = open(f"{sys.argv[1]}/transfers", "a", buffering=1)


class SpeedTest(http.server.BaseHTTPRequestHandler):
    def setup(self):
        super().setup()
        self.accepted = time.time()

    def serve(self):
        fault, faulty, direction, asked = re.fullmatch(r"/(\w+)/(\w+)/__(down|up)(?:\?bytes=(\d+))?", self.path).groups()
        if faulty not in (direction, "both"):
            fault = "well"
        length = int(int(asked or self.headers["Content-Length"]) * SHARES.get(fault, 1))
        status = int(fault) if fault.isdigit() else 200
        try:
            if direction == "down":
                self.head(status, length, fault)
            transfers.write(f"begun {direction} {fault}\n")
            self.move(self.wfile.write if direction == "down" else self.drop, length, fault)
            if direction == "up":
                self.head(status, 0, fault)
        except OSError:
            return
        while struct.unpack("i", fcntl.ioctl(self.connection, termios.TIOCOUTQ, bytes(4)))[0]:
            time.sleep(0.0005)
        transfers.write(f"done {direction} {length} {self.accepted} {time.time()}\n")

    do_GET = do_POST = serve

    def head(self, status, length, fault):
        self.send_response(status)
        self.flush_headers()
        while fault == "headers":
            self.wfile.write(b"X-More: to come\r\n" * 100)
        self.send_header("Content-Length", str(length))
        self.end_headers()

    def move(self, move, length, fault):
        for done in range(0, length, len(PIECE)):
            if done >= length / 2 and fault in ("close", "stall"):
                time.sleep(60 if fault == "stall" else 0)
                raise OSError
            move(PIECE[:length - done])
            time.sleep(0.1 if fault == "slow" else 0)

    def drop(self, piece):
        if len(self.rfile.read(len(piece))) < len(piece):
            raise OSError

    def log_message(self, *arguments):
        pass


server = http.server.ThreadingHTTPServer(("203.0.113.10", 8080), SpeedTest)
print("ready", flush=True)
server.serve_forever()
