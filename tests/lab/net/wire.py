"""One end of a long wire: `wire.py LINK MILLISECONDS SPREAD HERE THERE`. What enters LINK leaves it at the other end, whose
socket is THERE, after that time. Where the kernel has no delays to give, as many don't."""
import contextlib
import fcntl
import heapq
import os
import random
import select
import socket
import struct
import sys
import time

TUNSETIFF, TAP_WITHOUT_HEADER = 0x400454CA, 0x1002

link = os.open("/dev/net/tun", os.O_RDWR)
fcntl.ioctl(link, TUNSETIFF, struct.pack("16sH22x", sys.argv[1].encode(), TAP_WITHOUT_HEADER))
delay, spread = (float(milliseconds) / 1000 for milliseconds in sys.argv[2:4])
with open("/proc/sys/net/unix/max_dgram_qlen", "w") as limit:
    limit.write("1000")
end = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
end.bind(sys.argv[4])
on_their_way, latest = [], 0.0
while True:
    now = time.monotonic()
    while on_their_way and on_their_way[0][0] <= now:
        # Full, or its end isn't there: what a wire does then.
        with contextlib.suppress(OSError):
            end.sendto(heapq.heappop(on_their_way)[1], socket.MSG_DONTWAIT, sys.argv[5])
    wait = on_their_way[0][0] - now if on_their_way else None
    for source in select.select([link, end], [], [], wait)[0]:
        with contextlib.suppress(OSError):
            if source is end:
                os.write(link, end.recv(65536))
            else:
                # In order, as wires are.
                latest = max(latest, time.monotonic() + delay + random.gauss(0, spread))
                heapq.heappush(on_their_way, (latest, os.read(link, 65536)))
