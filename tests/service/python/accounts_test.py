"""The service's clients of other accounts, and clients that speak other protocols.

Arguments: the service host, a scratch folder in the same file system. Needs root, because only root can start a
client as another user.
"""

import http.client
import json
import os
import shutil
import socket
import ssl
import struct
import subprocess
import sys
import tempfile
import time
import unittest

from unused_port import unused_port

HOST, SCRATCH = sys.argv[1:3]

OTHER_USER = 65534
# Calls ListAllDisks and prints the number of the answer's bytes. An end or a reset of the connection gives 0.
CLIENT = r"""
import socket, struct, sys
family, address, port, times = int(sys.argv[1]), sys.argv[2], int(sys.argv[3]), int(sys.argv[4])
name = b"ListAllDisks"
call = struct.pack(">HBBi", 0x8001, 0, 1, len(name)) + name + struct.pack(">i", 7) + b"\0"
for _ in range(times):
    length = 0
    with socket.socket(family) as client:
        client.settimeout(20)
        client.connect((address, port))
        try:
            client.sendall(call)
            length = len(client.recv(65536))
        except OSError as error:
            if isinstance(error, TimeoutError):
                length = -1
print(length)
"""


def as_user(user, command):
    return ["setpriv", "--reuid", str(user), "--clear-groups", *command] if user else command


class Service:
    """The host process in a folder of its own, on an unused port."""

    def __init__(self, config="[main]\naiAddress=127.0.0.1\n", user=0):
        self.folder = tempfile.mkdtemp(dir=SCRATCH)
        self.program = os.path.join(self.folder, "service_host")
        os.link(HOST, self.program)
        with open(os.path.join(self.folder, "config.ini"), "w", encoding="ascii") as file:
            file.write(config)
        self.port = unused_port()
        netstat = os.path.join(self.folder, "netstat")
        with open(netstat, "w", encoding="ascii") as script:
            script.write("#!/bin/sh\n" + "".join(f"echo ':{busy}'\n" for busy in range(9090, self.port)))
        os.chmod(netstat, 0o755)
        if user:
            os.chown(self.folder, user, -1)
        environment = dict(os.environ, PATH=self.folder + ":" + os.environ["PATH"], HOME=self.folder)
        self.process = subprocess.Popen(as_user(user, [self.program]), stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, env=environment)
        self.report = json.loads(self.process.stdout.readline())

    def log(self):
        """The lines after the one about the ports."""
        with open(os.path.join(self.folder, "aibridge.log"), encoding="utf-8") as file:
            return file.read().splitlines()[1:]

    def end(self):
        self.process.stdin.close()
        self.process.wait(30)
        self.process.stdout.close()
        shutil.rmtree(self.folder)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()


def answer(service, user, family=socket.AF_INET, address="127.0.0.1", times=1):
    """The number of bytes that a client of the user receives for its (last) call."""
    command = [sys.executable, "-c", CLIENT, str(int(family)), address, str(service.port), str(times)]
    return int(subprocess.run(as_user(user, command), stdout=subprocess.PIPE, check=True, cwd="/", timeout=120).stdout)


def other_user_can_run(program):
    return subprocess.run(as_user(OTHER_USER, ["test", "-x", program]), check=False, cwd="/").returncode == 0


class AccountsTest(unittest.TestCase):
    def test_another_user_gets_no_answer_and_the_same_user_does(self):
        with Service() as service:
            self.assertEqual(answer(service, OTHER_USER), 0)
            self.assertEqual(service.log(), ["Agent client of user 65534 (nobody) rejected"])
            self.assertGreater(answer(service, 0), 100)

    def test_on_ipv6(self):
        with Service("[main]\naiAddress=::\n") as service:
            self.assertEqual(answer(service, OTHER_USER, socket.AF_INET6, "::1"), 0)
            self.assertGreater(answer(service, 0, socket.AF_INET6, "::1"), 100)

    def test_on_ipv4_through_a_socket_for_both(self):
        with Service("[main]\naiAddress=::\n") as service:
            self.assertEqual(answer(service, OTHER_USER), 0)
            self.assertEqual(answer(service, OTHER_USER, socket.AF_INET6, "::ffff:127.0.0.1"), 0)
            self.assertGreater(answer(service, 0), 100)
            self.assertGreater(answer(service, 0, socket.AF_INET6, "::ffff:127.0.0.1"), 100)

    @unittest.skipUnless(other_user_can_run(HOST), "Another user may not enter the build folder.")
    def test_root_is_served_by_the_service_of_a_user(self):
        with Service(user=OTHER_USER) as service:
            self.assertGreater(answer(service, 0), 100)
            self.assertGreater(answer(service, OTHER_USER), 100)
            self.assertEqual(answer(service, 65533), 0)
            self.assertEqual(service.log(), ["Agent client of user 65533 rejected"])

    def test_many_rejections_are_one_line(self):
        with Service() as service:
            start = time.monotonic()
            answer(service, OTHER_USER, times=50)
            # A busy computer may need more than the ten seconds between two lines.
            lines = service.log()
            self.assertLessEqual(len(lines), 1 + (time.monotonic() - start) // 10)
            self.assertEqual(lines[0], "Agent client of user 65534 (nobody) rejected")

    def test_rejected_clients_take_no_place_of_served_ones(self):
        with Service() as service:
            keepers = []
            for _ in range(5):
                keepers.append(subprocess.Popen(as_user(OTHER_USER, [
                    sys.executable, "-c", "import socket, sys, time; s = socket.create_connection(('127.0.0.1', "
                    f"{service.port})); print(s.recv(1), flush=True); time.sleep(60)"]), stdout=subprocess.PIPE, cwd="/"))
            self.assertEqual({keeper.stdout.readline() for keeper in keepers}, {b"b''\n"})
            self.assertGreater(answer(service, 0), 100)
            for keeper in keepers:
                keeper.kill()
                keeper.communicate()

    def test_a_key_switches_the_check_off(self):
        for value in ("false", "0", "FALSE"):
            with Service(f"[main]\naiAddress=127.0.0.1\naiSameUserOnly={value}\n") as service:
                self.assertGreater(answer(service, OTHER_USER), 100)
                self.assertEqual(service.log(), ["Agent clients of every account are admitted"])

    def test_any_other_value_leaves_it_on(self):
        for value in ("true", "no", ""):
            with Service(f"[main]\naiAddress=127.0.0.1\naiSameUserOnly={value}\n") as service:
                self.assertEqual(answer(service, OTHER_USER), 0)

    def test_an_address_other_than_loopback_is_a_warning(self):
        with Service("[main]\naiAddress=0.0.0.0\n") as service:
            # Clients can connect before the line is written, but are accepted only afterwards.
            self.assertGreater(answer(service, 0), 100)
            self.assertEqual(service.log(), [
                "Agent address is not a loopback address: the account of remote clients is not checked"])
            self.assertEqual(answer(service, OTHER_USER), 0)

    def test_a_probe_of_the_port_is_not_logged(self):
        with Service() as service:
            for _ in range(20):
                socket.create_connection(("127.0.0.1", service.port)).close()
            self.assertGreater(answer(service, 0), 100)
            self.assertEqual(service.log(), [])

    def test_a_client_that_has_finished_sending_is_answered(self):
        with Service() as service, socket.create_connection(("127.0.0.1", service.port), 20) as client:
            client.sendall(CALL)
            client.shutdown(socket.SHUT_WR)
            self.assertGreater(len(client.recv(65536)), 100)


NAME = b"ListAllDisks"
CALL = struct.pack(">HBBi", 0x8001, 0, 1, len(NAME)) + NAME + struct.pack(">i", 7) + b"\0"


class OtherProtocolsTest(unittest.TestCase):
    """Each connection ends without an answer, although the request contains a valid call."""

    @classmethod
    def setUpClass(cls):
        cls.service = Service()

    @classmethod
    def tearDownClass(cls):
        cls.service.end()

    def tearDown(self):
        self.assertGreater(answer(self.service, 0), 100)

    def received(self, data):
        with socket.create_connection(("127.0.0.1", self.service.port), 20) as client:
            try:
                client.sendall(data)
                return client.recv(65536)
            except ConnectionError:
                return b""

    def test_http_get(self):
        connection = http.client.HTTPConnection("127.0.0.1", self.service.port, timeout=20)
        with self.assertRaises((http.client.RemoteDisconnected, ConnectionError)):
            connection.request("GET", "/")
            connection.getresponse()

    def test_http_post_whose_body_is_a_call(self):
        for method in ("POST", "PUT", "OPTIONS", "PATCH", "DELETE", "HEAD", "CONNECT", "TRACE"):
            connection = http.client.HTTPConnection("127.0.0.1", self.service.port, timeout=20)
            with self.assertRaises((http.client.RemoteDisconnected, ConnectionError)):
                connection.request(method, "/", body=CALL)
                connection.getresponse()

    def test_http_form_with_calls_on_lines_of_their_own(self):
        self.assertEqual(self.received(b"POST / HTTP/1.1\r\nHost: localhost\r\n\r\n" + CALL + b"\r\n" + CALL), b"")

    def test_http2(self):
        self.assertEqual(self.received(b"PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n" + CALL), b"")

    def test_tls(self):
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_CLIENT)
        context.check_hostname = False
        context.verify_mode = ssl.CERT_NONE
        with socket.create_connection(("127.0.0.1", self.service.port), 20) as client:
            with self.assertRaises((ssl.SSLError, ConnectionError)):
                context.wrap_socket(client)

    def test_ssh_and_mail(self):
        self.assertEqual(self.received(b"SSH-2.0-client\r\n" + CALL), b"")
        self.assertEqual(self.received(b"EHLO localhost\r\n" + CALL), b"")


if __name__ == "__main__":
    if os.geteuid() != 0:
        print("SKIP: only root can start a client as another user.")
        sys.exit(77)
    unittest.main(argv=sys.argv[:1], verbosity=2)
