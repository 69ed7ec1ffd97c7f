"""Dynamic load records in files: what is missing, short, binary or no file at all ends with the told words, never in a crash or a hang."""
import os
import unittest

from support import ProgramTest


def record(file, layout="(2F10.0)", points=4, interval="0.1"):
    """A ground acceleration record whose points stand in a file: heading and control card."""
    heading = "RECORD IN A FILE".ljust(60) + layout
    control = f"{points:5d}    0{interval:>10}       1.0         1{file:<40}"
    return heading + "\n" + control + "\n"


def deck(cards):
    """A mass on a spring along X that stands on the ground of the record, in two macros."""
    lines = [" STAR   P4.314  MASS ON THE GROUND", "", "", " CORE SYMM         0", "    2    2    0    0    0    0    2    0    1    1",
             "    1       0.0", "    2      10.0", "    1    111111", "    2    011111", "    2       1.0", "    1    1    1                         SPRING",
             "    1    1", "    1    1000.0", "", "    1       1.0", "", "    1    1    2    1    1", "", "    1    0    0    0    0   10"]
    macro = ["DYN2", "      0.01", "     5   0    1", "    5    1    1    1    0       1.0", "    1       0.0       1.0"]
    return ("\n".join(lines) + "\n" + cards + "\n".join(["   -1"] + macro + macro + ["NONE", " STOP"]) + "\n").encode()


READ_ERROR = "PROGRAM STOPS DUE TO DATA ERROR IN READING GROUND MOTION RECORD"
END_ERROR = "PROGRAM STOPS DUE TO THE END OF FILE ERROR"


class RecordFiles(ProgramTest):
    def run_with(self, name, data=None, **card):
        if data is not None:
            self.place(name, data)
        return self.run_deck(deck(record(name, **card)))

    def test_a_file_in_its_own_layout_is_read(self):
        outcome = self.run_with("quake.at2", b"header-->      1.00E+00      2.00E+00\nheader-->      3.00E+00      4.00E+00\n", layout="(9X,2E14.2)")
        self.assertEqual(outcome.status, 0, outcome.errors)

    def test_a_missing_file_is_told_and_the_deck_is_read(self):
        outcome = self.run_with("quake.dat")
        self.assert_fails(outcome, 1)  # the cards behind are no points
        self.assertIn(" ERROR! CAN NOT OPEN FILE, quake.dat\n", outcome.report)
        self.assertIn(READ_ERROR, outcome.report)
        self.assertIn("there is no file 'quake.dat'", outcome.errors)

    def test_a_missing_file_with_the_points_on_the_deck_is_a_good_run(self):
        outcome = self.run_deck(deck(record("quake.dat") + "       1.0       2.0\n       3.0       4.0\n"))
        self.assertEqual(outcome.status, 0, outcome.errors)
        self.assertIn(" ERROR! CAN NOT OPEN FILE, quake.dat\n", outcome.report)

    def test_a_short_file_stops_the_run(self):
        for data in (b"", b"       1.0       2.0\n", b"       1.0       2.0"):
            outcome = self.run_with("quake.dat", data)
            self.assert_fails(outcome, 1)
            self.assertIn(END_ERROR, outcome.report)
            self.assertIn("GROUND ACCELERATION RECORD    1, FILE quake.dat, LINE", outcome.report)

    def test_a_binary_file_stops_the_run(self):
        for data in (bytes(range(256)) * 4096, b"\0" * 1000000, os.urandom(300000)):
            outcome = self.run_with("quake.dat", data)
            self.assert_fails(outcome, 1)
            self.assertTrue(READ_ERROR in outcome.report or END_ERROR in outcome.report)

    def test_a_folder_and_a_device_stop_the_run(self):
        os.mkdir(os.path.join(self.folder, "quake.dat"))
        for name in ("quake.dat", "/dev/zero", "/dev/null"):
            outcome = self.run_with(name)
            self.assert_fails(outcome, 1)
            self.assertIn(READ_ERROR, outcome.report)

    @unittest.skipIf(os.geteuid() == 0, "root may read every file")
    def test_a_file_that_may_not_be_read_stops_the_run(self):
        os.chmod(self.place("quake.dat", b""), 0)
        outcome = self.run_with("quake.dat")
        self.assert_fails(outcome, 1)
        self.assertIn(READ_ERROR, outcome.report)

    def test_a_pipe_is_not_waited_for(self):
        os.mkfifo(os.path.join(self.folder, "quake.dat"))
        self.assert_fails(self.run_with("quake.dat"), 1)

    def test_a_gigabyte_without_a_line_end_stops_the_run(self):
        path = self.place("quake.dat")
        os.truncate(path, 1 << 30)
        self.assert_fails(self.run_deck(deck(record("quake.dat"))), 1)

    def test_times_that_fall_stop_the_run(self):
        outcome = self.run_with("quake.dat", b"       0.0       1.0       1.0       1.0\n       0.9       1.0       2.0       1.0\n", layout="(4F10.0)", interval="0.0")
        self.assert_fails(outcome, 1)
        self.assertIn(READ_ERROR, outcome.report)
        self.assertIn("point 3: the time falls", outcome.errors)

    def test_no_layout_crashes_the_program(self):
        data = b"       1.0       2.0\n" * 100
        for layout in ("", "()", "(", ")", "((((((((((((((((((((", "(9999(9999(9999X)))", "(9999(9999F1.0))", "(F999999.0)", "(/)", "(8F10.0))", "(F0.0)", "(A10)", "(-1P)",
                       "(9999/F10.0)", "(F10.0,9999(9999/))", "(F10.0,9999(9999X))"):
            with self.subTest(layout=layout):
                self.assert_fails(self.run_with("quake.dat", data, layout=layout), 1)


if __name__ == "__main__":
    unittest.main()
