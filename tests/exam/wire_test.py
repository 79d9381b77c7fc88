"""Messages of the Thrift binary protocol."""

import struct
import unittest

from exam import wire
from support import message, string_field


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


unittest.main()
