"""A relay between the agent and the host that records each call with its answer.

The host's transcript does not contain calls that only read, nor the gate's rejections. The grader of conduct needs both.
Every byte passes unchanged, whether or not it can be recorded.
"""

import dataclasses
import socket
import threading
import time

from . import wire

CHUNK = 65536
CONNECT_LIMIT = 10
# Seconds until the next attempt to accept a connection when the process has no free descriptor.
RETRY = 0.05


@dataclasses.dataclass
class Call:
    """A call of the service. `at` and `answered` are seconds since the epoch; `answer` is None without an
    answer."""

    at: float
    source: str
    connection: int
    method: str
    arguments: dict
    answer: object = None
    answered: float = 0


class CallRelay:
    """Listens on one loopback port for each source and relays to the host. Each connection has two threads.

    `before_call` gets the method of a call before the host does. `errors` contains its failures.
    """

    def __init__(self, host_port, argument_names, before_call, sources=("agent", "mcp")):
        self.host_port_ = host_port
        self.argument_names_ = argument_names
        self.before_call_ = before_call
        self.lock_ = threading.Lock()
        self.closed_ = False
        self.sockets_ = set()
        self.connections_ = 0
        self.calls = []
        self.errors = []
        self.ports = {source: self.listen_(source) for source in sources}

    def listen_(self, source):
        server = socket.create_server(("127.0.0.1", 0))
        self.sockets_.add(server)
        threading.Thread(target=self.accept_, args=(server, source), daemon=True).start()
        return server.getsockname()[1]

    def accept_(self, server, source):
        while not self.closed_:
            try:
                client, _ = server.accept()
            except OSError:
                time.sleep(RETRY)
                continue
            threading.Thread(target=self.serve_, args=(client, source), daemon=True).start()
        self.release_(server)

    def serve_(self, client, source):
        try:
            host = socket.create_connection(("localhost", self.host_port_), timeout=CONNECT_LIMIT)
        except OSError:
            client.close()
            return
        host.settimeout(None)
        if number := self.registered_(client, host):
            connection = Connection(self, source, number)
            replies = threading.Thread(target=pump, args=(host, client, connection.on_reply), daemon=True)
            replies.start()
            pump(client, host, connection.on_call)
            replies.join()
        self.release_(client, host)

    def registered_(self, *sockets):
        """The number of the connection, from 1; 0 if the relay has been closed."""
        with self.lock_:
            if self.closed_:
                return 0
            self.sockets_ |= set(sockets)
            self.connections_ += 1
            return self.connections_

    def release_(self, *sockets):
        with self.lock_:
            self.sockets_ -= set(sockets)
        for each in sockets:
            each.close()

    def prepare(self, method):
        """A failure is recorded, and the call is still relayed."""
        try:
            self.before_call_(method)
        except Exception as error:
            self.errors.append(f"{method}: {error}")

    def record(self, message, source, number):
        names = self.argument_names_.get(message.method, [])
        arguments = {names[i - 1] if 0 < i <= len(names) else str(i): v for i, v in message.fields.items()}
        call = Call(time.time(), source, number, message.method, arguments)
        with self.lock_:
            self.calls.append(call)
        return call

    def close(self):
        """Ends all connections. Their threads close the sockets."""
        with self.lock_:
            self.closed_ = True
            end(*self.sockets_)


class Connection:
    """The calls of one connection, which are answered in their order."""

    def __init__(self, relay, source, number):
        self.relay_ = relay
        self.source_ = source
        self.number_ = number
        self.open_ = []

    def on_call(self, message):
        self.relay_.prepare(message.method)
        call = self.relay_.record(message, self.source_, self.number_)
        if message.kind != wire.ONEWAY:
            self.open_.append(call)

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
    """Relays whole messages, and all other bytes as they are. The end of `source` ends this direction only."""
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
        target.sendall(buffer)
        target.shutdown(socket.SHUT_WR)
    except OSError:
        end(source, target)


def end(*sockets):
    for each in sockets:
        # A blocked accept or recv returns only after a shutdown.
        try:
            each.shutdown(socket.SHUT_RDWR)
        except OSError:
            pass
