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
    source: str
    connection: int
    method: str
    arguments: dict
    answer: object = None
    answered: float = 0


class CallRelay:
    """Listens on one loopback port for each source and relays to the host. Each connection has two threads."""

    def __init__(self, host_port, argument_names, before_call, sources=("agent", "mcp")):
        self.host_port_ = host_port
        self.argument_names_ = argument_names
        self.before_call_ = before_call
        self.lock_ = threading.Lock()
        self.sockets_ = []
        self.connections_ = 0
        self.calls = []
        self.ports = {source: self.listen_(source) for source in sources}

    def listen_(self, source):
        server = socket.create_server(("127.0.0.1", 0))
        self.sockets_.append(server)
        threading.Thread(target=self.accept_, args=(server, source), daemon=True).start()
        return server.getsockname()[1]

    def accept_(self, server, source):
        while True:
            try:
                client, _ = server.accept()
            except OSError:
                return
            threading.Thread(target=self.serve_, args=(client, source), daemon=True).start()

    def serve_(self, client, source):
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
        connection = Connection(self, source, number)
        threading.Thread(target=pump, args=(host, client, connection.on_reply), daemon=True).start()
        pump(client, host, connection.on_call)

    def record(self, call):
        with self.lock_:
            self.calls.append(call)

    def close(self):
        with self.lock_:
            sockets, self.sockets_ = self.sockets_, []
        end(*sockets)
        for each in sockets:
            each.close()


class Connection:
    """The calls of one connection, which are answered in their order."""

    def __init__(self, relay, source, number):
        self.relay_ = relay
        self.source_ = source
        self.number_ = number
        self.open_ = []

    def on_call(self, message):
        names = self.relay_.argument_names_.get(message.method, [])
        arguments = {names[i - 1] if 0 < i <= len(names) else str(i): v for i, v in message.fields.items()}
        self.relay_.before_call_(message.method)
        call = Call(time.time(), self.source_, self.number_, message.method, arguments)
        self.open_.append(call)
        self.relay_.record(call)

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
