"""The examiner's side of mcp_user.py: records the calls of an MCP client and answers questions for the user."""

import json
import socketserver
import sys
import threading
import time

from .relay import Call


class Handler(socketserver.StreamRequestHandler):
    def handle(self):
        for line in self.rfile:
            answer = self.server.examiner.on_message(json.loads(line))
            self.wfile.write((json.dumps(answer) + "\n").encode())


class Server(socketserver.ThreadingTCPServer):
    daemon_threads = True
    allow_reuse_address = True


class McpExaminer:
    """Listens on a loopback port while an attempt runs."""

    def __init__(self, user, interface):
        self.user_ = user
        self.interface_ = interface
        self.calls = []
        self.server_ = Server(("127.0.0.1", 0), Handler)
        self.server_.examiner = self
        threading.Thread(target=self.server_.serve_forever, args=(0.05,), daemon=True).start()

    @property
    def port(self):
        return self.server_.server_address[1]

    def on_message(self, message):
        if message["kind"] == "question":
            targets = self.interface_.lost(message["tool"], message["arguments"])
            return {"yes": self.user_.confirm(message["text"], targets)}
        if message["kind"] == "call":
            self.calls.append(Call(time.time(), "tool", 0, message["tool"], message["arguments"]))
        else:
            self.on_answer_(message)
        return {}

    def on_answer_(self, message):
        for call in reversed(self.calls):
            if call.method == message["tool"] and call.answer is None:
                call.answer, call.answered = message["text"], time.time()
                return

    def close(self):
        self.server_.shutdown()
        self.server_.server_close()


def configuration(root, examiner_port, host_port):
    """The configuration for an MCP client, in the form that most clients read."""
    return {"mcpServers": {"disks": {
        "command": sys.executable,
        "args": [str(root / "exam/mcp_user.py"), str(examiner_port), "node", str(root / "agent/mcp/bin/aibridge-mcp.js")],
        "env": {"AIBRIDGE_MCP_PORT": str(host_port), "AIBRIDGE_MCP_TOOLS": "all"},
    }}}
