"""The deck runner itself: a check that cannot fail would be worth nothing."""
import os
import shutil
import subprocess
import tempfile
import time
import unittest

from support import PROGRAM, ProgramTest, ROOT
import answers
import ring2
import run_deck


class Expectations(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp(prefix="tidearc-py-")
        cls.deck = os.path.join(ROOT, "decks/threebar_yield")
        cls.left = run_deck.run_deck(PROGRAM, cls.deck, cls.folder)
        cls.expectations = run_deck.head_lines(os.path.join(cls.deck, "TAModel.inp"), "EXPECT")

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.folder)

    def holds(self, text):
        return run_deck.check(self.left, text)[0]

    def test_every_number_of_the_deck_fails_when_it_is_changed_in_its_fifth_digit(self):
        changed = 0
        for text in self.expectations:
            before, mark, rest = text.partition(" = ")
            value, tol, source = rest.partition(" tol ")
            if mark and tol:
                wrong = float(value) * (1.0 + 2e-4)
                self.assertTrue(self.holds(text), text)
                self.assertFalse(self.holds(f"{before} = {wrong!r} tol {source}"), text)
                changed += 1
        self.assertGreater(changed, 15)

    def test_codes_counts_and_status_fail_when_they_are_wrong(self):
        pairs = [("exit 0", "exit 1"), ("yield 1 2 print 3 = 1", "yield 1 2 print 3 = 0"),
                 ("iterations segment 1 step 1 = 1", "iterations segment 1 step 1 = 2"), ("steps segment 1 = 1", "steps segment 1 = 3"),
                 ("file TAP.OK exists", "file TAP.OK absent"), ("file TAP5 absent", "file TAP5 exists"),
                 ("text TAModel.out has 'LOAD SEGMENT NO.'", "text TAModel.out lacks 'LOAD SEGMENT NO.'"),
                 ("text TAModel.out lacks 'no such words'", "text TAModel.out has 'no such words'"),
                 ("converged level segment 1 in 0.9 .. 1.0", "converged level segment 1 in 0.2 .. 0.9")]
        for right, wrong in pairs:
            self.assertTrue(self.holds(right), right)
            self.assertFalse(self.holds(wrong), wrong)

    def test_what_is_not_in_the_files_fails(self):
        for text in ("displacement X 9 print 1 = 0.0 tol 1", "displacement X 4 print 99 = 0.0 tol 1", "force 1 9 print 1 = 0.0 tol 1",
                     "force 2 1 print 1 = 0.0 tol 1", "number /NOT THERE (.)/ TAModel.out 1 = 0 tol 1", "text NOFILE has 'x'", "text NOFILE lacks 'x'",
                     "coordinate X 9 = 0 tol 1", "steps segment 99 = 0"):
            self.assertFalse(self.holds(text), text)

    def test_a_line_that_is_not_understood_fails(self):
        for text in ("", "displacement", "displacment X 1 print 1 = 0.0 tol 1", "exit", "force 1 1 = 2", "yield 1 2 print 3 = one"):
            self.assertFalse(self.holds(text), text)

    def test_a_deck_without_expectations_fails(self):
        with tempfile.TemporaryDirectory() as folder:
            with open(os.path.join(folder, "TAModel.inp"), "w") as file:
                file.write(" STOP\n")
            self.assertTrue(run_deck.failures(self.left, folder)[1])

    def test_expectations_behind_the_first_card_are_not_the_head(self):
        with tempfile.TemporaryDirectory() as folder:
            with open(os.path.join(folder, "TAModel.inp"), "w") as file:
                file.write("* EXPECT exit 0 ; head\n STOP\n* EXPECT exit 1 ; behind\n")
            self.assertEqual(run_deck.head_lines(os.path.join(folder, "TAModel.inp"), "EXPECT"), ["exit 0 ; head"])


class Paths(unittest.TestCase):
    """What is said of a whole segment, on a run that goes through limit points."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp(prefix="tidearc-py-")
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        cls.left = run_deck.run_deck(PROGRAM, os.path.join(ROOT, "decks/snap_through"), cls.folder)

    def holds(self, text):
        return run_deck.check(self.left, text)[0]

    def test_turns_and_reformulations_are_counted(self):
        self.assertTrue(self.holds("turns segment 1 = 2"))
        self.assertFalse(self.holds("turns segment 1 = 1"))
        counts = [self.left.reformulations(segment) for segment in (1, 2)]
        self.assertTrue(self.holds(f"reformulations segment 2 = {counts[1]}"))
        self.assertFalse(self.holds(f"reformulations segment 2 = {counts[1] + 1}"))
        fewer, more = (1, 2) if counts[0] < counts[1] else (2, 1)
        self.assertTrue(self.holds(f"fewer reformulations segment {fewer} than segment {more}"))
        self.assertFalse(self.holds(f"fewer reformulations segment {more} than segment {fewer}"))
        self.assertFalse(self.holds("fewer reformulations segment 1 than segment 1"))

    def test_a_path_with_another_scale_is_left_by_the_steps(self):
        self.assertTrue(self.holds("path segment 3 path within 1e-4"))
        with open(os.path.join(self.folder, "path"), encoding="ascii") as file:
            head, *rows = file.read().strip().split("\n")
        with open(os.path.join(self.folder, "other"), "w", encoding="ascii") as file:
            moved = [row.split() for row in rows]
            file.write("\n".join([head] + [" ".join([repr(1.001 * float(row[0])), *row[1:]]) for row in moved]) + "\n")
        self.assertFalse(self.holds("path segment 3 other within 1e-4"))
        self.assertTrue(self.holds("path segment 3 other within 2e-3"))

    def test_what_is_not_there_fails(self):
        for text in ("path segment 9 path within 1", "path segment 1 nofile within 1", "turns segment 9 = 0", "reformulations segment 9 = 0"):
            self.assertFalse(self.holds(text), text)


class Tolerances(unittest.TestCase):
    def test_half_a_unit_of_the_last_printed_digit_is_allowed_and_no_more(self):
        number = run_deck.Number("  0.12345E-03")
        self.assertTrue(run_deck.near(number, 0.0001234549, 0.0))
        self.assertTrue(run_deck.near(number, 0.000123455, 0.0))
        self.assertFalse(run_deck.near(number, 0.00012346, 0.0))

    def test_exponents_without_a_letter_are_read(self):
        self.assertEqual(run_deck.Number("0.5+101").value, 0.5e101)

    def test_asterisks_are_no_number(self):
        with self.assertRaises(run_deck.Missing):
            run_deck.Number("*****")


class Comparison(unittest.TestCase):
    def two_folders(self, name, first, second):
        top = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, top)
        for folder, data in (("a", first), ("b", second)):
            os.mkdir(os.path.join(top, folder))
            if data is not None:
                with open(os.path.join(top, folder, name), "wb") as file:
                    file.write(data)
        return ring2.differences(os.path.join(top, "a"), os.path.join(top, "b"))

    def test_one_other_digit_is_seen(self):
        self.assertEqual(self.two_folders("TAModel.out", b" 1.0000E+00\n", b" 1.0001E+00\n"), ["TAModel.out"])

    def test_a_missing_file_is_seen(self):
        self.assertEqual(self.two_folders("TAP.OK", b"", None), ["TAP.OK"])

    def test_date_and_seconds_are_not_compared(self):
        first = b"1DATE      1- 2-2026 10:00:00\n TOTAL                             0.001     0.002\n"
        second = b"1DATE      1- 3-2026 11:00:00\n TOTAL                             0.004     0.003\n"
        self.assertEqual(self.two_folders("TAModel.out", first, second), [])
        self.assertEqual(self.two_folders("fort.12", b" 0.001\n", b" 0.002\n"), [])


LONG_RUN = b"""\
 START  P4.314  A row of 3000 bars, printed at each of 9999 steps
 NOFL
 NOFL
 CORE SYMM
 3001    2    0    0    0    0    2    0    0    1
    1       0.0
 3001    3000.0
    1    111111
    2    011111 3001
    1 3000    1                         row
    1    1
    1    1000.0

    1       1.0

    1    1    2    1    1                                            1
 3000 3000 3001    1    1                                            1
    1
    1load at the end
 3001       1.0

   -1    0    0
STAT
    1   long run
    1                             0.0001 9999    0    1    0   20    1
    1    1    0    0    2    0    0    0    1
    0    0    1.0E-6
       1.0





NONE
 STOP
"""


class Following(ProgramTest):
    def test_rows_of_the_progress_file_can_be_read_while_the_program_runs(self):
        self.place("TAModel.inp", LONG_RUN)
        process = subprocess.Popen([PROGRAM], cwd=self.folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            follower = run_deck.Follower(self.folder)
            deadline = time.monotonic() + 30.0
            while not (row := follower.newest()) and process.poll() is None and time.monotonic() < deadline:
                time.sleep(0.005)
            self.assertIsNone(process.poll(), "the run has ended")
            self.assertTrue(row, "no row after thirty seconds")
            self.assertLess(row[0], 600, "rows are held back: a buffer of 64 kB holds some 690")
        finally:
            process.kill()
            process.wait()


class Figures(unittest.TestCase):
    def test_the_figures_of_each_deck_are_those_of_the_independent_solver(self):
        for function in answers.DECKS:
            with self.subTest(deck=function.__name__):
                lines = run_deck.head_lines(os.path.join(ROOT, "decks", function.__name__, "TAModel.inp"), "EXPECT")
                missing = [text for text in function() if text not in lines]
                self.assertEqual(missing, [])

    def test_every_deck_tells_in_its_readme_what_to_expect(self):
        for deck in ring2.decks():
            with self.subTest(deck=deck):
                with open(os.path.join(deck, "README.md"), encoding="utf-8") as file:
                    self.assertIn("Answer to expect", file.read())


if __name__ == "__main__":
    unittest.main()
