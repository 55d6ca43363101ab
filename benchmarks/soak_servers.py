"""What the panel of soak.py speaks to, on loopback: servers of threads, each at a rate, until the program ends."""
import base64
import hashlib
import itertools
import os
import pathlib
import shutil
import signal
import socket
import struct
import subprocess
import threading
import time
import tty

BROKER = shutil.which("mosquitto", path="/usr/sbin:" + os.environ.get("PATH", "")) or "mosquitto"


def start(*command, **options):
    """A child to be ended by stop(). One that keeps its user does not outlive this program, however that ends."""
    return subprocess.Popen(["setpriv", "--pdeathsig", "KILL", "--", *command], **options)


def stop(child):
    if child.poll() is None:
        child.send_signal(signal.SIGTERM)
    try:
        return child.wait(30)
    except subprocess.TimeoutExpired:
        child.kill()
        return child.wait()


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def received(line, count):
    data = b""
    while len(data) < count:
        more = line.recv(count - len(data))
        if not more:
            raise ConnectionError("closed")
        data += more
    return data


def head(line):
    """Of an HTTP request or answer, with the names of its fields in small letters."""
    data = b""
    while not data.endswith(b"\r\n\r\n"):
        data += received(line, 1)
    first, *fields = data.decode().strip().split("\r\n")
    return first, {name.lower(): value.strip() for name, value in (field.split(":", 1) for field in fields)}


class WebSocketLine:
    """The frames of a WebSocket connection after its heads; answers what is asked whether it is alive."""
    TEXT, CLOSE, PING, PONG = 1, 8, 9, 10

    def __init__(self, line, is_client):
        self.line, self.is_client, self.sending = line, is_client, threading.Lock()

    def read(self):
        first, second = received(self.line, 2)
        length = second & 127
        if length > 125:
            length = int.from_bytes(received(self.line, 2 if length == 126 else 8), "big")
        mask = received(self.line, 4) if second & 128 else bytes(4)
        data = bytes(byte ^ key for byte, key in zip(received(self.line, length), itertools.cycle(mask))) \
            if second & 128 else received(self.line, length)
        if first & 15 == self.PING:
            self.send(self.PONG, data)
        elif first & 15 == self.CLOSE:
            raise ConnectionError("closed")
        return data

    def send(self, kind, data):
        """Short frames only; a client's are masked, with zeros."""
        mask = 128 if self.is_client else 0
        with self.sending:
            self.line.sendall(bytes([128 | kind, mask | len(data)]) + bytes(mask // 32) + data)


def open_view(port, buffer_size=0):
    """The stream of pictures of a panel that is served."""
    line = socket.socket()
    if buffer_size:
        line.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, buffer_size)
    line.settimeout(60)
    line.connect(("127.0.0.1", port))
    line.sendall((f"GET /stream HTTP/1.1\r\nHost: localhost:{port}\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                  f"Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: {base64.b64encode(os.urandom(16)).decode()}"
                  "\r\n\r\n").encode())
    status, _ = head(line)
    if " 101 " not in status:
        raise ConnectionError(status)
    return WebSocketLine(line, is_client=True)


class Servers:
    def __init__(self, folder, rate):
        self.period = 1 / rate
        self.broker_port = free_port()
        settings = pathlib.Path(folder) / "broker.conf"
        settings.write_text(f"listener {self.broker_port} 127.0.0.1\nallow_anonymous true\n"
                            "persistence false\nlog_type error\nmax_keepalive 60\n")
        self.broker = start(BROKER, "-c", str(settings))
        self.websocket_port = self.listen(self.serve_websocket)
        self.modbus_port = self.listen(self.serve_modbus)
        self.serial, other = os.openpty()
        tty.setraw(other)
        self.serial_port = os.ttyname(other)
        self.run(self.write_serial)
        self.run(self.drop_serial)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        stop(self.broker)

    def wait_for_broker(self):
        for _ in range(100):
            try:
                socket.create_connection(("127.0.0.1", self.broker_port)).close()
                return
            except ConnectionRefusedError:
                time.sleep(0.1)
        raise ConnectionError("the broker does not listen")

    def run(self, work, *arguments):
        threading.Thread(target=self.until_closed, args=(work, *arguments), daemon=True).start()

    @staticmethod
    def until_closed(work, *arguments):
        try:
            work(*arguments)
        except OSError:
            pass  # The panel has ended, or connects again.

    def listen(self, serve):
        server = socket.create_server(("127.0.0.1", 0))

        def accept():
            while True:
                self.run(serve, server.accept()[0])
        self.run(accept)
        return server.getsockname()[1]

    def values(self):
        for number in itertools.count():
            time.sleep(self.period)
            yield number % 1000 / 10

    def serve_websocket(self, line):
        _, fields = head(line)
        key = fields["sec-websocket-key"] + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11"
        accept = base64.b64encode(hashlib.sha1(key.encode()).digest()).decode()
        line.sendall(("HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                      f"Sec-WebSocket-Accept: {accept}\r\n\r\n").encode())
        frames = WebSocketLine(line, is_client=False)
        self.run(self.drop, frames)
        for value in self.values():
            frames.send(frames.TEXT, b'{"value": %.1f}' % value)

    @staticmethod
    def drop(frames):
        while True:
            frames.read()

    @staticmethod
    def serve_modbus(line):
        """Reads of registers alone: each holds how many were asked for before, and its place."""
        for number in itertools.count():
            transaction, _, length, unit = struct.unpack(">HHHB", received(line, 7))
            function, first, count = struct.unpack(">BHH", received(line, length - 1)[:5])
            registers = b"".join(struct.pack(">H", (number + first + i) % 1000) for i in range(count))
            answer = struct.pack(">BBB", unit, function, len(registers)) + registers
            line.sendall(struct.pack(">HHH", transaction, 0, len(answer)) + answer)

    def write_serial(self):
        for value in self.values():
            os.write(self.serial, b"%.1f kg\n" % value)

    def drop_serial(self):
        while os.read(self.serial, 4096):
            pass
