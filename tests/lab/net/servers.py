"""The servers of the lab's internet: `servers.py dns|web FOLDER`. Each prints a line once it listens."""
import http.server
import os
import socket
import struct
import sys

folder = sys.argv[2]


def serve_dns():
    server = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    server.bind(("203.0.113.53", 53))
    print("ready", flush=True)
    while True:
        query, client = server.recvfrom(4096)
        end = query.index(b"\0", 12) + 5
        question = query[12:end]
        answer = b"\xc0\x0c" + struct.pack("!HHIH", 1, 1, 5, 4) + socket.inet_aton("203.0.113.10")
        is_address = question[-4:-2] == b"\0\1"
        header = query[:2] + struct.pack("!HHHHH", 0x8180, 1, int(is_address), 0, 0)
        server.sendto(header + question + (answer if is_address else b""), client)


class Pages(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        with open(os.path.join(folder, "portal")) as file:
            mode = file.read()
        body = b"Success" if mode == "clean" else b"<html>Welcome to this hotel</html>"
        if self.path.startswith("/__"):
            mode, body = "clean", bytes(int(self.path.partition("?bytes=")[2] or 0))
        self.send_response(302 if mode == "redirect" else 200)
        if mode == "redirect":
            self.send_header("Location", "http://portal.test/login")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def do_POST(self):
        self.rfile.read(int(self.headers["Content-Length"]))
        self.do_GET()

    def log_message(self, *arguments):
        pass


def serve_web():
    server = http.server.ThreadingHTTPServer(("203.0.113.10", 80), Pages)
    print("ready", flush=True)
    server.serve_forever()


serve_dns() if sys.argv[1] == "dns" else serve_web()
