#!/usr/bin/env python3
"""Bytes through a tunnel, and how fast they went.

    tunnel_traffic.py serve SINK_PORT SOURCE_PORT
    tunnel_traffic.py up HOST PORT BYTES RATE
    tunnel_traffic.py down HOST PORT BYTES RATE

RATE is in bytes a second; 0 for as fast as it goes.
"""

import socket
import socketserver
import sys
import threading
import time

CHUNK = b"\0" * 65536


def send(connection: socket.socket, count: int, rate: int) -> None:
    step = min(len(CHUNK), max(1, rate // 20)) if rate else len(CHUNK)
    start, sent = time.monotonic(), 0
    while sent < count:
        part = min(step, count - sent)
        connection.sendall(CHUNK[:part])
        sent += part
        if rate:
            time.sleep(max(0, start + sent / rate - time.monotonic()))


def receive(connection: socket.socket) -> int:
    count = 0
    while data := connection.recv(len(CHUNK)):
        count += len(data)
    return count


class Sink(socketserver.BaseRequestHandler):
    """Takes all that comes, and tells how much it was."""

    def handle(self) -> None:
        self.request.sendall(b"%d\n" % receive(self.request))


class Source(socketserver.StreamRequestHandler):
    """Gives as many bytes as it is asked for."""

    def handle(self) -> None:
        count, rate = map(int, self.rfile.readline().split())
        send(self.request, count, rate)


class Server(socketserver.ThreadingTCPServer):
    allow_reuse_address = True
    daemon_threads = True


def serve(sink_port: int, source_port: int) -> None:
    sink = Server(("", sink_port), Sink)
    threading.Thread(target=sink.serve_forever, daemon=True).start()
    Server(("", source_port), Source).serve_forever()


def carry(way: str, host: str, port: int, count: int, rate: int) -> bool:
    """Whether all of them arrived."""
    with socket.create_connection((host, port), 10) as connection:
        start = time.monotonic()
        if way == "up":
            send(connection, count, rate)
            connection.shutdown(socket.SHUT_WR)
            arrived = int(connection.makefile().readline())
        else:
            connection.sendall(b"%d %d\n" % (count, rate))
            arrived = receive(connection)
        seconds = time.monotonic() - start
    speed = arrived / seconds / 1e6
    print(f"{way} {arrived} bytes in {seconds:.2f} s, {speed:.1f} MB/s")
    return arrived == count


if __name__ == "__main__":
    if sys.argv[1] == "serve":
        serve(int(sys.argv[2]), int(sys.argv[3]))
    else:
        sys.exit(not carry(sys.argv[1], sys.argv[2], *map(int, sys.argv[3:6])))
