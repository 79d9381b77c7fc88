"""Ports for the services of the tests."""

import os
import socket

RESERVED = []


def unused_port():
    """A port that is not in use and that other tests do not use until this process ends."""
    for port in range(9100 + os.getpid() % 800, 10000):
        lock = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        try:
            lock.bind(f"\0aibridge-test-port-{port}")
        except OSError:
            lock.close()
            continue
        RESERVED.append(lock)
        with socket.socket() as probe:
            if probe.connect_ex(("127.0.0.1", port)) != 0:
                return port
    raise RuntimeError("no free port")
