"""Reads messages of the Thrift binary protocol, so that a call can be recorded while it passes."""

import dataclasses
import struct

VERSION = 0x80010000
CALL, REPLY, EXCEPTION, ONEWAY = 1, 2, 3, 4
STOP, BOOL, BYTE, DOUBLE, I16, I32, I64, STRING, STRUCT, MAP, SET, LIST = 0, 2, 3, 4, 6, 8, 10, 11, 12, 13, 14, 15
# The runtime of the service rejects deeper structs.
MOST_DEPTH = 64
NUMBERS = {BYTE: ">b", DOUBLE: ">d", I16: ">h", I32: ">i", I64: ">q"}


class Incomplete(Exception):
    """The buffer ends within a message."""


class Unreadable(Exception):
    """The bytes are not a message."""


@dataclasses.dataclass
class Message:
    kind: int
    method: str
    number: int
    fields: dict


class Reader:
    def __init__(self, data):
        self.data = data
        self.at = 0
        self.depth_ = 0

    def take(self, count):
        if count < 0:
            raise Unreadable
        if self.at + count > len(self.data):
            raise Incomplete
        self.at += count
        return self.data[self.at - count:self.at]

    def number(self, code):
        return struct.unpack(code, self.take(struct.calcsize(code)))[0]

    def string(self):
        return bytes(self.take(self.number(">i"))).decode("utf-8", "replace")

    def value(self, kind):
        self.depth_ += 1
        if self.depth_ > MOST_DEPTH:
            raise Unreadable
        value = self.value_(kind)
        self.depth_ -= 1
        return value

    def value_(self, kind):
        if kind in NUMBERS:
            return self.number(NUMBERS[kind])
        if kind == BOOL:
            return self.number(">b") != 0
        if kind == STRING:
            return self.string()
        if kind == STRUCT:
            return self.struct()
        if kind in (LIST, SET):
            element, count = self.number(">b"), self.number(">i")
            return [self.value(element) for _ in range(count)]
        if kind == MAP:
            key, value, count = self.number(">b"), self.number(">b"), self.number(">i")
            return [(self.value(key), self.value(value)) for _ in range(count)]
        raise Unreadable

    def struct(self):
        fields = {}
        while (kind := self.number(">b")) != STOP:
            number = self.number(">h")
            fields[number] = self.value(kind)
        return fields


def read_message(data):
    """The first message of the buffer and its length. Raises Incomplete or Unreadable."""
    reader = Reader(memoryview(data))
    head = reader.number(">I")
    if head & 0xFFFF0000 != VERSION:
        raise Unreadable
    message = Message(head & 0xFF, reader.string(), reader.number(">i"), {})
    message.fields = reader.struct()
    return message, reader.at
