"""A relay between the agent and the host that records each call with its answer.

The host's transcript contains no call that only reads. Conduct can be judged only if those are known.
"""

import dataclasses
import socket
import threading
import time

from . import wire

CHUNK = 65536


@dataclasses.dataclass
class Call:
    """A call of the service. `at` and `answered` are seconds since the epoch; `answer` is None if there was none."""

    at: float
    door: str
    connection: int
    method: str
    arguments: dict
    answer: object = None
    answered: float = 0


class Tap:
    """Listens on one loopback port for each door and relays to the host. Each connection has two threads."""

    def __init__(self, host_port, argument_names, before_call, doors=("agent", "mcp")):
        self.host_port_ = host_port
        self.argument_names_ = argument_names
        self.before_call_ = before_call
        self.lock_ = threading.Lock()
        self.sockets_ = []
        self.connections_ = 0
        self.calls = []
        self.ports = {door: self.listen_(door) for door in doors}

    def listen_(self, door):
        server = socket.create_server(("127.0.0.1", 0))
        self.sockets_.append(server)
        threading.Thread(target=self.accept_, args=(server, door), daemon=True).start()
        return server.getsockname()[1]

    def accept_(self, server, door):
        while True:
            try:
                client, _ = server.accept()
            except OSError:
                return
            threading.Thread(target=self.serve_, args=(client, door), daemon=True).start()

    def serve_(self, client, door):
        try:
            host = socket.create_connection(("localhost", self.host_port_), timeout=10)
        except OSError:
            client.close()
            return
        host.settimeout(None)
        with self.lock_:
            self.sockets_ += [client, host]
            self.connections_ += 1
            number = self.connections_
        relay = Relay(self, door, number)
        threading.Thread(target=pump, args=(host, client, relay.on_reply), daemon=True).start()
        pump(client, host, relay.on_call)

    def record(self, call):
        with self.lock_:
            self.calls.append(call)

    def close(self):
        with self.lock_:
            sockets, self.sockets_ = self.sockets_, []
        end(*sockets)
        for each in sockets:
            each.close()


class Relay:
    """The calls of one connection, which are answered in their order."""

    def __init__(self, tap, door, number):
        self.tap_ = tap
        self.door_ = door
        self.number_ = number
        self.open_ = []

    def on_call(self, message):
        names = self.tap_.argument_names_.get(message.method, [])
        arguments = {names[i - 1] if 0 < i <= len(names) else str(i): v for i, v in message.fields.items()}
        self.tap_.before_call_(message.method)
        call = Call(time.time(), self.door_, self.number_, message.method, arguments)
        self.open_.append(call)
        self.tap_.record(call)

    def on_reply(self, message):
        if not self.open_:
            return
        call = self.open_.pop(0)
        call.answered = time.time()
        answer = message.fields.get(0) if message.kind == wire.REPLY else "exception"
        call.answer = f"{len(answer)} records" if isinstance(answer, list) else answer
        if isinstance(answer, dict):
            call.answer = {"allow": answer.get(1), "reasons": answer.get(2)} if message.method == "PreProcessing" \
                else "1 record"


def pump(source, target, on_message):
    """Relays whole messages, and unreadable bytes as they are, until one side closes."""
    buffer, readable = bytearray(), True
    try:
        while chunk := source.recv(CHUNK):
            buffer += chunk
            while readable and buffer:
                try:
                    message, length = wire.read_message(buffer)
                except wire.Incomplete:
                    break
                except wire.Unreadable:
                    readable = False
                    break
                on_message(message)
                target.sendall(buffer[:length])
                del buffer[:length]
            if not readable:
                target.sendall(buffer)
                buffer.clear()
    except OSError:
        pass
    finally:
        end(source, target)


def end(*sockets):
    for each in sockets:
        # A blocked accept or recv returns only after a shutdown.
        try:
            each.shutdown(socket.SHUT_RDWR)
        except OSError:
            pass
