"""MCP clients in the exam: the user answers the gateway's questions, and the client's own calls are examined."""

import json
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

from exam.mcp_examiner import McpExaminer
from exam.user import User
from support import BIN, ROOT, interface, task

FORMAT = {"fileSystem": "exFAT", "label": "TV", "clusterSize": 0, "quickFormat": True}
GATEWAY = ROOT / "agent/mcp"
# Asks before each call, in the protocol's older form (a request to the client) or in its newest (an incomplete result).
FAKE_GATEWAY = """
import json, sys
newest = sys.argv[1] == "newest"
def send(**message):
    print(json.dumps({"jsonrpc": "2.0", **message}), flush=True)
for line in sys.stdin:
    message = json.loads(line)
    parameters = message.get("params", {})
    if message.get("method") == "initialize":
        send(id=message["id"], result={"seen": parameters["capabilities"]})
    elif message.get("method") == "tools/call" and newest and "inputResponses" not in parameters:
        send(id=message["id"], result={"resultType": "input_required", "requestState": "state",
             "inputRequests": {"confirm": {"method": "elicitation/create", "params": {"message": "Lose H:?"}}}})
    elif message.get("method") == "tools/call" and newest:
        send(id=message["id"], result={"content": [{"text": json.dumps([parameters["inputResponses"]["confirm"],
             parameters["requestState"], parameters["_meta"]])}]})
    elif message.get("method") == "tools/call":
        open_call = message["id"]
        send(id="q1", method="elicitation/create", params={"message": "Lose H:?"})
    elif message.get("id") == "q1":
        send(id=open_call, result={"content": [{"text": json.dumps(message["result"])}]})
    else:
        send(id=message["id"], result={"other": message["method"]})
"""


class Relay(unittest.TestCase):
    """mcp_user.py between a client and a gateway that asks before each call."""

    def converse(self, protocol, *messages, agreed=()):
        """Sends one message after the other; returns the answers, and the examiner with its records."""
        user = User(task(agreed=list(agreed)))
        examiner = McpExaminer(user, interface())
        self.addCleanup(examiner.close)
        with subprocess.Popen([sys.executable, ROOT / "exam/mcp_user.py", str(examiner.port), sys.executable, "-c", FAKE_GATEWAY,
                               protocol], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True) as relay:
            answers = []
            for number, message in enumerate(messages, start=1):
                relay.stdin.write(json.dumps({"jsonrpc": "2.0", "id": number, **message}) + "\n")
                relay.stdin.flush()
                answers.append(json.loads(relay.stdout.readline()))
            relay.stdin.close()
            self.assertEqual(relay.wait(20), 0)
        return answers, examiner, user

    @staticmethod
    def call(**meta):
        return {"method": "tools/call", "params": {"name": "FormatPartition", "arguments": {"driveLetter": "H", **FORMAT},
                                                   **({"_meta": meta} if meta else {})}}

    @staticmethod
    def text_of(answer):
        return json.loads(answer["result"]["content"][0]["text"])

    def test_a_question_is_answered_by_the_user_and_not_by_the_client(self):
        for agreed, yes in ((["H:"], True), (["disk 9"], False), ([], False)):
            answers, _, user = self.converse("older", self.call(), agreed=agreed)
            self.assertEqual(answers[0]["id"], 1)
            self.assertEqual(self.text_of(answers[0]), {"action": "accept", "content": {"confirm": yes}})
            self.assertEqual([(each.via, each.text, each.answer) for each in user.questions],
                             [("mcp", "Lose H:?", "yes" if yes else "no")])

    def test_in_the_newest_protocol_the_call_is_repeated_with_the_answer(self):
        capabilities = "io.modelcontextprotocol/clientCapabilities"
        answers, examiner, _ = self.converse("newest", self.call(**{capabilities: {}}), agreed=["H:"])
        confirm, state, meta = self.text_of(answers[0])
        self.assertEqual((confirm["content"], state), ({"confirm": True}, "state"))
        self.assertEqual(meta[capabilities], {"elicitation": {"form": {}}})
        self.assertEqual(len(examiner.calls), 1)

    def test_the_gateway_learns_that_the_user_can_be_asked(self):
        answers, _, _ = self.converse("older", {"method": "initialize", "params": {"capabilities": {}}})
        self.assertEqual(answers[0]["result"]["seen"], {"elicitation": {}})

    def test_calls_are_recorded_with_their_answers_and_other_messages_pass(self):
        answers, examiner, _ = self.converse("older", {"method": "tools/list"}, self.call())
        self.assertEqual(answers[0]["result"], {"other": "tools/list"})
        self.assertEqual([(call.method, call.source, call.arguments["driveLetter"]) for call in examiner.calls],
                         [("FormatPartition", "tool", "H")])
        self.assertIn("confirm", examiner.calls[0].answer)


@unittest.skipUnless(shutil.which("node") and (GATEWAY / "generated").exists() and (GATEWAY / "node_modules").exists(),
                     "the MCP gateway is not installed")
class Gateway(unittest.TestCase):
    """The real gateway, with a client in each form of the protocol."""

    def examine(self, protocol, drive, result, name):
        arguments = json.dumps({"driveLetter": drive, **FORMAT})
        with tempfile.TemporaryDirectory() as folder:
            done = subprocess.run(
                [sys.executable, "-B", "-m", "exam", "--bin", str(BIN), "--report", folder, "--task", name, "--agent",
                 f"{ROOT}/tests/exam/agents/mcp {protocol} FormatPartition '{arguments}' '{result}'"],
                cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, timeout=300)
            result = json.loads(pathlib.Path(folder, "report.json").read_text(encoding="utf-8"))
        return done.stdout, result["tasks"][0]["attempts"][0]

    def test_the_user_agrees_to_the_loss_that_the_request_names(self):
        for protocol in ("2025-06-18", "2026-07-28"):
            output, attempt = self.examine(protocol, "H", "DONE", "stick-for-tv")
            self.assertEqual((attempt["verdict"], attempt["calls"]), ("passed", 3), output + attempt["conversation"])

    def test_the_user_refuses_another_loss(self):
        for protocol in ("2025-06-18", "2026-07-28"):
            output, attempt = self.examine(protocol, "D", "NOT DONE", "stick-for-tv")
            self.assertIn("The user answered no.", attempt["conversation"], output)
            self.assertEqual(attempt["verdict"], "failed")

    def test_a_question_before_the_loss_is_enough_where_the_request_is_ambiguous(self):
        output, attempt = self.examine("2025-06-18", "F", "NOT DONE", "slow-games")
        self.assertEqual(attempt["verdict"], "passed", output)


unittest.main()
