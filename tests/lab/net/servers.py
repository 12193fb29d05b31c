"""The servers of the lab's internet: `servers.py dns|web|secure-web FOLDER`. Each prints a line once it listens."""
import http.server
import os
import socket
import ssl
import struct
import sys
import threading

folder = sys.argv[2]


def setting(name):
    with open(os.path.join(folder, name)) as file:
        return file.read()


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
        reply = header + question + (answer if is_address else b"")
        threading.Timer(float(setting("dns-delay")), server.sendto, (reply, client)).start()


class Pages(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def do_GET(self):
        mode = setting("portal")
        body = b"Success" if mode == "clean" else b"<html>Welcome to this hotel</html>"
        if self.path == "/v1/update":
            mode, body = "clean", setting("update").encode()
        self.send_response(302 if mode == "redirect" else 200)
        if mode == "redirect":
            self.send_header("Location", "http://portal.test/login")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *arguments):
        pass


def serve_web(port):
    server = http.server.ThreadingHTTPServer(("203.0.113.10", port), Pages)
    server.handle_error = lambda *arguments: None  # The portal probes reset their connections.
    if port == 443:
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        certificate = os.path.join(folder, "certificate.pem")
        context.load_cert_chain(certificate, certificate + ".key")
        server.socket = context.wrap_socket(server.socket, server_side=True)
    print("ready", flush=True)
    server.serve_forever()


if sys.argv[1] == "dns":
    serve_dns()
else:
    serve_web(443 if sys.argv[1] == "secure-web" else 80)
