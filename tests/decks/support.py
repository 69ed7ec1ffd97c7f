"""What the python tests share: the program under test, and a scratch folder to run it in."""
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path[:0] = [os.path.join(ROOT, "tools"), os.path.join(ROOT, "tests/decks/oracle")]

from run_deck import pool_argument  # noqa: E402  (found through the path above)

PROGRAM = os.environ.get("TIDEARC", os.path.join(ROOT, "build/release/tidearc"))
TIME_LOG = "E X E C U T I O N   T I M E   L O G"
TIME_LIMIT = 60


def deck_bytes(name):
    with open(os.path.join(ROOT, "decks", name, "TAModel.inp"), "rb") as file:
        return file.read()


class Outcome:
    """What a run left behind."""

    def __init__(self, folder, process):
        self.status = process.returncode
        self.console = process.stdout.decode("latin-1")
        self.report = read(folder, "TAModel.out")
        self.errors = read(folder, "TAP.err")
        self.progress = read(folder, "TAP53")
        self.files = sorted(os.listdir(folder))

    @property
    def done(self):
        return "TAP.OK" in self.files


def read(folder, name):
    path = os.path.join(folder, name)
    if not os.path.isfile(path) or os.path.islink(path):
        return ""
    with open(path, encoding="latin-1") as file:
        return file.read()


class ProgramTest(unittest.TestCase):
    """A test that runs the program in a folder of its own."""

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="tidearc-py-", dir="/dev/shm" if os.path.isdir("/dev/shm") else None)
        self.addCleanup(shutil.rmtree, self.folder, True)

    def place(self, name, data=b""):
        path = os.path.join(self.folder, name)
        with open(path, "wb") as file:
            file.write(data)
        return path

    def clear(self):
        shutil.rmtree(self.folder)
        os.mkdir(self.folder)

    def run_deck(self, deck=None, *arguments, **options):
        if deck is not None:
            self.place("TAModel.inp", deck)
        process = subprocess.run([PROGRAM, *(arguments or pool_argument())], cwd=self.folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                 stderr=subprocess.STDOUT, timeout=TIME_LIMIT, **options)
        outcome = Outcome(self.folder, process)
        self.assertIn(outcome.status, (0, 1, 2, 3, 4), f"ended by {outcome.status}: {outcome.console[-2000:]}{outcome.errors[-2000:]}")
        return outcome

    def assert_fails(self, outcome, status):
        """The run failed with this status, says why, and its report does not look complete."""
        words = outcome.errors + outcome.console
        self.assertEqual(outcome.status, status, words + outcome.report[-600:])
        self.assertTrue(words.strip(), "no line that tells what is wrong")
        if status in (1, 2):
            self.assertFalse(outcome.done, "TAP.OK stands")
            self.assertNotIn(TIME_LOG, outcome.report)
