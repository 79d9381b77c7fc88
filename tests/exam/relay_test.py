"""The relay records each call and its answer, and passes every byte on unchanged."""

import os
import socket
import threading
import time
import types
import unittest

from exam import wire
from exam.attempt import Attempt
from exam.relay import CallRelay
from support import message, string_field, task

LIMIT = 20
QUEUED = message(wire.REPLY, "Tool", 1, string_field(0, "Task Queued") + b"\0")
CALL = message(wire.CALL, "Tool", 1, string_field(1, "D") + b"\0")


class FakeHost:
    """Answers each call with "Task Queued"; records the raw bytes that arrive."""

    def __init__(self):
        self.server_ = socket.create_server(("127.0.0.1", 0))
        self.port = self.server_.getsockname()[1]
        self.received = b""
        self.answers_at_end = False
        threading.Thread(target=self.host_, daemon=True).start()

    def host_(self):
        while True:
            try:
                client, _ = self.server_.accept()
            except OSError:
                return
            with client:
                self.answer_(client)

    def answer_(self, client):
        count = 0
        while chunk := client.recv(4096):
            self.received += chunk
            count += chunk.count(b"Tool")
            if not self.answers_at_end:
                client.sendall(QUEUED * count)
                count = 0
        client.sendall(QUEUED * count)

    def close(self):
        self.server_.shutdown(socket.SHUT_RDWR)
        self.server_.close()


class Relay(unittest.TestCase):
    def setUp(self):
        self.host = FakeHost()
        self.addCleanup(self.host.close)
        self.methods = []
        self.relay = CallRelay(self.host.port, {"Tool": ["driveLetter"]}, lambda method: self.methods.append(method))
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

    @staticmethod
    def all_of(client):
        """Everything up to the end of the connection."""
        received = b""
        while chunk := client.recv(4096):
            received += chunk
        return received

    def test_a_call_in_pieces_is_relayed_and_recorded_with_its_answer(self):
        client = self.connect()
        for byte in CALL:
            client.sendall(bytes([byte]))
        answer = client.recv(4096)
        self.assertEqual(wire.read_message(answer)[0].fields, {0: "Task Queued"})
        self.assertEqual(self.host.received, CALL)
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

    def test_a_message_nested_too_deeply_is_relayed_unchanged(self):
        sent = message(wire.CALL, "Tool", 1, b"\x0c\0\1" * 5000 + b"\0" * 5001)
        self.connect().sendall(sent)
        self.until(lambda: self.host.received == sent)

    def test_an_incomplete_message_is_relayed_when_the_connection_ends(self):
        client = self.connect()
        client.sendall(CALL[:-3])
        client.close()
        self.until(lambda: self.host.received == CALL[:-3])

    def test_the_answer_arrives_after_the_client_has_finished_sending(self):
        self.host.answers_at_end = True
        client = self.connect()
        client.sendall(CALL)
        client.shutdown(socket.SHUT_WR)
        self.assertEqual(self.all_of(client), QUEUED)
        self.assertEqual(self.relay.calls[0].answer, "Task Queued")

    def test_a_call_is_relayed_although_its_preparation_fails(self):
        def fail(method):
            raise ValueError("the user's call failed")
        self.relay = CallRelay(self.host.port, {}, fail)
        self.addCleanup(self.relay.close)
        client = self.connect()
        client.sendall(CALL)
        self.assertEqual(client.recv(4096), QUEUED)
        self.assertEqual(self.relay.errors, ["Tool: the user's call failed"])
        self.assertEqual(self.relay.calls[0].answer, "Task Queued")

    def test_an_ended_connection_leaves_no_descriptor(self):
        def descriptors():
            return len(os.listdir("/proc/self/fd"))
        before = descriptors()
        for _ in range(20):
            client = self.connect()
            client.sendall(CALL)
            client.recv(4096)
            client.close()
        self.until(lambda: descriptors() <= before)
        self.assertEqual(len(self.relay.calls), 20)

    def test_the_end_of_the_relay_ends_its_connections(self):
        client = self.connect()
        client.sendall(message(wire.CALL, "Tool", 1))
        client.recv(4096)
        self.relay.close()
        self.assertEqual(client.recv(1), b"")
        # No thread remains in accept or recv.
        self.until(lambda: not any(each.name.endswith(("(accept_)", "(serve_)", "(pump)")) for each in threading.enumerate()))


class Meanwhile(unittest.TestCase):
    def test_no_call_of_the_agent_overtakes_the_users_call(self):
        order, entered, released = [], threading.Event(), threading.Event()

        def as_user(line):
            entered.set()
            released.wait(LIMIT)
            order.append("user")
        host = types.SimpleNamespace(call=as_user, wait_until_idle=lambda limit: True)
        entry = types.SimpleNamespace(before="Tool", call="EjectUsb driveLetter=H")
        attempt = Attempt(task(meanwhile=[entry]), None, None)

        def as_agent():
            attempt.meanwhile_(host, "Tool")
            order.append("agent")
        threads = [threading.Thread(target=as_agent, daemon=True) for _ in range(2)]
        threads[0].start()
        self.assertTrue(entered.wait(LIMIT))
        threads[1].start()
        # Time to overtake; the result does not depend on it.
        threads[1].join(0.2)
        released.set()
        for thread in threads:
            thread.join(LIMIT)
        self.assertEqual(order, ["user", "agent", "agent"])


unittest.main()
