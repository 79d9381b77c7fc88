#!/usr/bin/env python3
"""The MCP gateway with the task's user: mcp_user.py PORT GATEWAY...

Relays between an MCP client and the gateway. A question to the user does not reach the client: the examiner answers it
on PORT. So each client is examined in the same way, with or without support for questions.
"""

import json
import socket
import subprocess
import sys
import threading

CAPABILITIES = "io.modelcontextprotocol/clientCapabilities"


class Examiner:
    """The connection to the examiner: one JSON object per line, one answer per question."""

    def __init__(self, port):
        self.lock_ = threading.Lock()
        self.stream_ = socket.create_connection(("127.0.0.1", port)).makefile("rw", encoding="utf-8")

    def ask(self, message):
        with self.lock_:
            self.stream_.write(json.dumps(message) + "\n")
            self.stream_.flush()
            return json.loads(self.stream_.readline())


class Relay:
    def __init__(self, examiner, gateway):
        self.examiner_ = examiner
        self.gateway_ = gateway
        self.writing_ = threading.Lock()
        # Calls without an answer so far, by their number.
        self.open_ = {}

    def from_client(self, line):
        message = parsed(line)
        if message.get("method") == "initialize":
            message["params"].setdefault("capabilities", {})["elicitation"] = {}
        if message.get("method") == "tools/call":
            self.on_call_(message)
        self.send(message) if message else self.send_line_(line)

    def on_call_(self, message):
        parameters = message["params"]
        capabilities = parameters.get("_meta", {}).get(CAPABILITIES)
        if capabilities is not None:
            capabilities["elicitation"] = {"form": {}}
        self.open_[message.get("id")] = message
        self.examiner_.ask({"kind": "call", "tool": parameters.get("name", ""),
                            "arguments": parameters.get("arguments") or {}})

    def from_gateway(self, line):
        """Answers a question to the user; returns True if the line is for the client."""
        message = parsed(line)
        if message.get("method") == "elicitation/create":
            self.send({"jsonrpc": "2.0", "id": message["id"], "result": self.answer_(message["params"], self.newest_())})
            return False
        call = self.open_.pop(message.get("id"), None) if "result" in message or "error" in message else None
        result = message.get("result")
        if call and isinstance(result, dict) and result.get("resultType") == "input_required":
            self.repeat_(call, result)
            return False
        if call:
            self.examiner_.ask({"kind": "answer", "tool": call["params"].get("name", ""), "text": text_of(result)})
        return True

    def repeat_(self, call, result):
        """In the newest protocol, the client repeats the call with the user's answers."""
        answers = {name: self.answer_(request.get("params", request), call)
                   for name, request in result.get("inputRequests", {}).items()}
        parameters = {**call["params"], "inputResponses": answers, "requestState": result.get("requestState")}
        self.open_[call["id"]] = call
        self.send({**call, "params": parameters})

    def answer_(self, request, call):
        parameters = call["params"] if call else {}
        yes = self.examiner_.ask({"kind": "question", "text": request.get("message", ""),
                                  "tool": parameters.get("name", ""), "arguments": parameters.get("arguments") or {}})
        return {"action": "accept", "content": {"confirm": yes["yes"]}}

    def newest_(self):
        return next(reversed(self.open_.values()), None)

    def send(self, message):
        self.send_line_((json.dumps(message) + "\n").encode())

    def send_line_(self, line):
        with self.writing_:
            self.gateway_.stdin.write(line)
            self.gateway_.stdin.flush()


def parsed(line):
    try:
        message = json.loads(line)
    except json.JSONDecodeError:
        return {}
    return message if isinstance(message, dict) else {}


def text_of(result):
    content = result.get("content", []) if isinstance(result, dict) else []
    return "\n".join(part.get("text", "") for part in content if isinstance(part, dict))


def relay_client(relay):
    for line in sys.stdin.buffer:
        relay.from_client(line)
    relay.gateway_.stdin.close()


def main():
    gateway = subprocess.Popen(sys.argv[2:], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    relay = Relay(Examiner(int(sys.argv[1])), gateway)
    threading.Thread(target=relay_client, args=(relay,), daemon=True).start()
    for line in gateway.stdout:
        if relay.from_gateway(line):
            sys.stdout.buffer.write(line)
            sys.stdout.buffer.flush()
    return gateway.wait()


if __name__ == "__main__":
    sys.exit(main())
