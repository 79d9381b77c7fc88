"""Messages of the Thrift binary protocol, and the relay that records them."""

import socket
import struct
import threading
import time
import unittest

from exam import wire
from exam.relay import CallRelay

LIMIT = 20


def message(kind, method, number, fields=b"\0"):
    return struct.pack(">Ii", 0x80010000 | kind, len(method)) + method.encode() + struct.pack(">i", number) + fields


def string_field(number, text):
    return struct.pack(">bhi", wire.STRING, number, len(text)) + text.encode()


class Messages(unittest.TestCase):
    def test_fields_of_each_type_are_read(self):
        fields = (string_field(1, "D") + struct.pack(">bhi", wire.I32, 2, -7) + struct.pack(">bhq", wire.I64, 3, 1 << 40)
                  + struct.pack(">bhb", wire.BOOL, 4, 1) + struct.pack(">bhbi", wire.LIST, 5, wire.I32, 2)
                  + struct.pack(">ii", 8, 9) + struct.pack(">bh", wire.STRUCT, 6) + string_field(1, "x") + b"\0\0")
        read, length = wire.read_message(message(wire.CALL, "Tool", 5, fields))
        self.assertEqual((read.kind, read.method, read.number), (1, "Tool", 5))
        self.assertEqual(read.fields, {1: "D", 2: -7, 3: 1 << 40, 4: True, 5: [8, 9], 6: {1: "x"}})
        self.assertEqual(length, len(message(wire.CALL, "Tool", 5, fields)))

    def test_each_shorter_part_is_incomplete(self):
        whole = message(wire.CALL, "Tool", 1, string_field(1, "text") + b"\0")
        for length in range(len(whole)):
            with self.assertRaises(wire.Incomplete, msg=length):
                wire.read_message(whole[:length])

    def test_other_bytes_are_unreadable(self):
        with self.assertRaises(wire.Unreadable):
            wire.read_message(b"GET / HTTP/1.1\r\n\r\n")
        with self.assertRaises(wire.Unreadable):
            wire.read_message(message(wire.CALL, "Tool", 1, struct.pack(">bhi", wire.STRING, 1, -5)))


class FakeHost:
    """Answers each call with "Task Queued"; records the raw bytes that arrive."""

    def __init__(self):
        self.server_ = socket.create_server(("127.0.0.1", 0))
        self.port = self.server_.getsockname()[1]
        self.received = b""
        threading.Thread(target=self.serve_, daemon=True).start()

    def serve_(self):
        client, _ = self.server_.accept()
        with client:
            self.answer_(client)

    def answer_(self, client):
        while chunk := client.recv(4096):
            self.received += chunk
            for _ in range(chunk.count(b"Tool")):
                client.sendall(message(wire.REPLY, "Tool", 1, string_field(0, "Task Queued") + b"\0"))

    def close(self):
        self.server_.close()


class Relay(unittest.TestCase):
    def setUp(self):
        self.host = FakeHost()
        self.addCleanup(self.host.close)
        self.methods = []
        self.relay = CallRelay(self.host.port, {"Tool": ["driveLetter"]}, self.methods.append)
        self.addCleanup(self.relay.close)

    def connect(self):
        client = socket.create_connection(("127.0.0.1", self.relay.ports["agent"]), timeout=LIMIT)
        self.addCleanup(client.close)
        return client

    def until(self, condition):
        deadline = time.monotonic() + LIMIT
        while not condition():
            self.assertLess(time.monotonic(), deadline, "timeout")
            time.sleep(0.01)

    def test_a_call_in_pieces_is_relayed_and_recorded_with_its_answer(self):
        client, sent = self.connect(), message(wire.CALL, "Tool", 1, string_field(1, "D") + b"\0")
        for byte in sent:
            client.sendall(bytes([byte]))
        answer = client.recv(4096)
        self.assertEqual(wire.read_message(answer)[0].fields, {0: "Task Queued"})
        self.assertEqual(self.host.received, sent)
        self.assertEqual(self.methods, ["Tool"])
        call = self.relay.calls[0]
        self.assertEqual((call.method, call.arguments, call.answer, call.source),
                         ("Tool", {"driveLetter": "D"}, "Task Queued", "agent"))

    def test_calls_in_one_packet_are_recorded_one_by_one(self):
        client, sent = self.connect(), message(wire.CALL, "Tool", 1) + message(wire.CALL, "Tool", 2, string_field(1, "E") + b"\0")
        client.sendall(sent)
        self.until(lambda: len(self.relay.calls) == 2 and self.relay.calls[1].answer)
        self.assertEqual([call.arguments for call in self.relay.calls], [{}, {"driveLetter": "E"}])
        self.assertEqual(self.host.received, sent)

    def test_unreadable_bytes_are_relayed_unchanged(self):
        self.connect().sendall(b"GET / HTTP/1.1\r\n\r\n")
        self.until(lambda: self.host.received == b"GET / HTTP/1.1\r\n\r\n")
        self.assertEqual(self.relay.calls, [])

    def test_the_end_of_the_relay_ends_its_connections(self):
        client = self.connect()
        client.sendall(message(wire.CALL, "Tool", 1))
        client.recv(4096)
        self.relay.close()
        self.assertEqual(client.recv(1), b"")
        # No thread remains in accept or recv.
        self.until(lambda: not any(each.name.endswith(("(accept_)", "(serve_)", "(pump)")) for each in threading.enumerate()))


unittest.main()
