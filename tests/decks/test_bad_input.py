"""Decks and files that are not as they should be: a clear message, a failing exit status, never a crash or a hang."""
import os
import re
import unittest

from support import ProgramTest, TIME_LOG, deck_bytes  # makes the folder of tools known
import lattice_deck
from lattice_deck import Shape, storage_card

TRIPOD = deck_bytes("tripod")
LINES = TRIPOD.split(b"\n")
START = next(n for n, line in enumerate(LINES) if line[1:5] == b"STAR")  # index of the first card
SIZES = START + 4


def with_line(number, line):
    return b"\n".join(LINES[:number] + [line] + LINES[number + 1:])


def with_field(number, column, width, text):
    """The tripod with one field replaced; columns count from 1."""
    line = LINES[number].ljust(column + width)
    return with_line(number, line[:column - 1] + text.rjust(width).encode() + line[column - 1 + width:])


def line_with(text):
    return next(n for n, line in enumerate(LINES) if n > START and text in line)


FIRST_NODE = line_with(b"control nodes")
ELEMENT = line_with(b"number, node I")
GROUP = line_with(b"legs")
STEP_CARD = line_with(b"segment: load stepping")


class Numbers(ProgramTest):
    def test_letters_in_a_number_stop_in_the_io_layer_with_line_and_columns(self):
        outcome = self.run_deck(with_field(FIRST_NODE, 6, 10, "12x4"))
        self.assert_fails(outcome, 2)
        self.assertIn("TAModel.inp", outcome.errors)
        self.assertIn(str(FIRST_NODE + 1), outcome.errors)
        self.assertIn("12x4", outcome.errors)

    def test_a_point_in_an_integer_stops_in_the_io_layer(self):
        outcome = self.run_deck(with_field(SIZES, 1, 5, "4.0"))
        self.assert_fails(outcome, 2)
        self.assertIn(str(SIZES + 1), outcome.errors)

    def test_an_integer_beyond_32_bits_stops_in_the_io_layer(self):
        self.assert_fails(self.run_deck(TRIPOD.replace(b" CORE SYMM         0", b" CORE SYMM9999999999")), 2)

    def test_words_for_not_a_number_are_no_numbers(self):
        for word in ("nan", "inf", "NaN"):
            self.assert_fails(self.run_deck(with_field(FIRST_NODE, 6, 10, word)), 2)

    def test_a_real_beyond_the_range_never_gives_a_good_run(self):
        self.assertNotEqual(self.run_deck(with_field(FIRST_NODE, 6, 10, "1E999")).status, 0)


class Counts(ProgramTest):
    def test_no_count_of_a_control_card_crashes_the_program(self):
        cards = {SIZES: 15, line_with(b"static loads:"): 8, line_with(b"dynamic loads"): 8, line_with(b"displacement print lists"): 4}
        for card, fields in cards.items():
            for field in range(fields):
                for text in ("-1", "-9999", "99999", "63000"):
                    with self.subTest(card=card + 1, field=field + 1, text=text):
                        outcome = self.run_deck(with_field(card, 5 * field + 1, 5, text))
                        self.assertTrue(outcome.status != 0 or TIME_LOG in outcome.report)

    def test_no_field_of_group_element_and_step_cards_crashes_the_program(self):
        for card in (GROUP, GROUP + 1, ELEMENT, STEP_CARD, STEP_CARD + 1, STEP_CARD + 2, line_with(b"three pinned feet"), FIRST_NODE):
            for field in range(6):
                for text in ("-9999", "99999", "0"):
                    if card == STEP_CARD and field == 2:
                        continue  # half of a real field
                    with self.subTest(card=card + 1, field=field + 1, text=text):
                        self.run_deck(with_field(card, 5 * field + 1, 5, text))

    def test_huge_counts_are_told_and_not_tried(self):
        outcome = self.run_deck(with_field(SIZES, 1, 5, "99999"))
        self.assert_fails(outcome, 1)
        self.assertIn("EXCEEDENCE OF THE ALLOWABLE NUMBER OF NODES", outcome.report)


class Frame(ProgramTest):
    def test_a_deck_cut_after_any_line_ends_in_the_io_layer(self):
        for n in range(START, len(LINES) - 2):  # the last line but one is the STOP card
            with self.subTest(lines=n):
                outcome = self.run_deck(b"\n".join(LINES[:n]) + b"\n")
                self.assertEqual(outcome.status, 2)
                self.assertIn("TAModel.inp", outcome.errors)
                self.assertEqual(outcome.done, LINES[n - 1].startswith(b"NONE"))

    def test_a_deck_without_any_one_card_never_crashes(self):
        for n in range(START, len(LINES) - 1):
            with self.subTest(line=n + 1):
                self.run_deck(b"\n".join(LINES[:n] + LINES[n + 1:]))

    def test_an_empty_deck_ends_in_the_io_layer(self):
        self.assert_fails(self.run_deck(b""), 2)

    def test_a_missing_deck_is_told_on_the_console_and_makes_no_file(self):
        outcome = self.run_deck()
        self.assertEqual(outcome.status, 2)
        self.assertIn("TAModel.inp", outcome.console)
        self.assertEqual(outcome.files, [])

    def test_a_deck_that_is_a_folder_ends_in_the_io_layer(self):
        os.mkdir(os.path.join(self.folder, "TAModel.inp"))
        outcome = self.run_deck()
        self.assertEqual(outcome.status, 2)
        self.assertTrue(outcome.console + outcome.errors)

    def test_a_stop_card_alone_leaves_an_empty_report(self):
        outcome = self.run_deck(b" STOP\n")
        self.assertEqual((outcome.status, outcome.report, outcome.done), (0, "", False))

    def test_an_old_done_file_does_not_outlive_a_failing_run(self):
        self.place("TAP.OK")
        self.assert_fails(self.run_deck(with_field(SIZES, 1, 5, "x")), 2)

    def test_a_wrong_version_tag_stops_the_run(self):
        outcome = self.run_deck(TRIPOD.replace(b"P4.314", b"P3.900"))
        self.assert_fails(outcome, 1)
        self.assertIn("PROGRAM STOPS BECAUSE THE DATA FILE DOES NOT MATCH THIS VERSION OF PROGRAM.", outcome.console)

    def test_an_unknown_macro_stops_the_run(self):
        outcome = self.run_deck(TRIPOD.replace(b"\nSTAT ", b"\nstat "))
        self.assert_fails(outcome, 1)
        self.assertIn("INCORRECT ANALYSIS CONTROL CARD", outcome.report)
        self.assertIn("FATAL ERROR DETECTED IN MAIN   - JOB ABORTED", outcome.report)


class Lines(ProgramTest):
    def results(self, deck):
        outcome = self.run_deck(deck)
        self.assertEqual(outcome.status, 0, outcome.errors)
        return re.sub(r"(?s)DATE.*?\n|" + TIME_LOG + ".*", "", outcome.report)

    def test_carriage_returns_tabs_and_a_missing_last_line_end_change_nothing(self):
        expected = self.results(TRIPOD)
        self.assertIn("DISPLACEMENT RESPONSE", expected)
        self.assertEqual(self.results(TRIPOD.replace(b"\n", b"\r\n")), expected)
        self.assertEqual(self.results(TRIPOD.rstrip(b"\n")), expected)
        cards = [line if n <= START or b"STAT" in line else re.sub(rb"^ ", b"\t", line) for n, line in enumerate(LINES)]
        cards[line_with(b"CORE SYMM")] = LINES[line_with(b"CORE SYMM")]
        cards[-2] = LINES[-2]
        self.assertEqual(self.results(b"\n".join(cards)), expected)

    def test_bytes_above_127_in_titles_are_text(self):
        self.assertEqual(self.run_deck(TRIPOD.replace(b"Statically", b"St\xe4t\xff\xfecally")).status, 0)

    def test_a_gigabyte_of_zeros_ends_in_the_io_layer(self):
        path = self.place("TAModel.inp")
        os.truncate(path, 1 << 30)
        self.assert_fails(self.run_deck(), 2)

    def test_a_gigabyte_of_zeros_in_place_of_a_card_ends_in_the_io_layer(self):
        path = self.place("TAModel.inp", b"\n".join(LINES[:SIZES]) + b"\n")
        os.truncate(path, 1 << 30)
        self.assert_fails(self.run_deck(), 2)


class Files(ProgramTest):
    def test_a_file_that_cannot_be_opened_ends_in_the_io_layer_with_its_name(self):
        for name in ("TAModel.out", "TAP53", "TAP.ULTFAC"):
            with self.subTest(name=name):
                self.clear()
                os.mkdir(os.path.join(self.folder, name))
                outcome = self.run_deck(TRIPOD)
                self.assert_fails(outcome, 2)
                self.assertIn(name, outcome.errors + outcome.console)

    @unittest.skipUnless(os.path.exists("/dev/full"), "no /dev/full on this system")
    def test_a_full_disk_ends_in_the_io_layer_with_the_name_of_the_file(self):
        for name in ("TAModel.out", "TAP53", "TAP.ULTFAC"):
            with self.subTest(name=name):
                self.clear()
                os.symlink("/dev/full", os.path.join(self.folder, name))
                outcome = self.run_deck(TRIPOD)
                self.assertEqual(outcome.status, 2)
                self.assertIn(name, outcome.errors + outcome.console)

    def test_a_limit_on_file_size_is_a_full_disk(self):
        import resource
        for size in (0, 4096, 12288):
            with self.subTest(size=size):
                limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))
                self.clear()
                self.place("TAModel.inp", TRIPOD)
                outcome = self.run_deck(None, preexec_fn=limit, restore_signals=False)
                self.assertEqual(outcome.status, 2)
                self.assertNotIn(TIME_LOG, outcome.report)
                self.assertFalse(outcome.done)


class Limits(ProgramTest):
    def test_a_pool_of_no_words_stops_with_the_storage_message(self):
        self.assert_fails(self.run_deck(TRIPOD, "0M"), 1)

    def test_a_pool_of_one_million_words_is_enough_for_the_tripod(self):
        self.assertEqual(self.run_deck(TRIPOD, "1M").status, 0)

    def test_blocks_that_hold_no_column_or_are_too_many_stop_the_run(self):
        """The tallest column of the tower has 24 reals; 100 words make two blocks of 25, of which it takes more than 20."""
        tower = deck_bytes("tower72")
        for words, text in ((-1, "INSUFFICIENT STORAGE"), (1, "INSUFFICIENT STORAGE"), (99, "INSUFFICIENT STORAGE"),
                            (100, "NUMBER OF MATRIX BLOCKS MORE THAN LIMIT OF")):
            for stiffness in (b"SYMM", b"USYM"):
                with self.subTest(words=words, stiffness=stiffness):
                    card = b" DISK " + stiffness + b"%10d" % words
                    outcome = self.run_deck(tower.replace(b" CORE SYMM         0", card))
                    self.assert_fails(outcome, 1)
                    self.assertIn(text, outcome.report)

    def test_a_disk_job_in_a_pool_of_no_words_stops_the_run(self):
        self.assert_fails(self.run_deck(TRIPOD.replace(b" CORE SYMM         0", b" DISK SYMM         0"), "0M"), 1)

    def test_saves_and_restarts_that_do_not_stand_stop_the_run(self):
        for word in (b"SAVE", b"REST"):
            with self.subTest(word=word):
                self.assert_fails(self.run_deck(TRIPOD.replace(b"\nSTAT", b"\n" + word)), 1)

    def test_any_step_control_ends_in_an_orderly_way(self):
        columns = [(STEP_CARD, c) for c in (1, 6, 21, 26, 46, 51, 56, 61, 66)] + [(STEP_CARD + 1, c) for c in (1, 6, 11, 16)] + [(STEP_CARD + 2, 41)]
        for card, column in columns:
            for text in ("-1", "1", "2", "3", "5", "99"):
                with self.subTest(card=card, column=column, text=text):
                    self.run_deck(with_field(card, column, 5, text))

    def test_element_types_that_do_not_stand_stop_the_run(self):
        for number, text in ((4, "ELEMENT TYPE  4 IS NOT AVAILABLE."), (12, "ELEMENT TYPE 1 IS NOT AVAILABLE."), (28, "ELEMENT TYPE 28 IS NOT AVAILABLE.")):
            with self.subTest(number=number):
                outcome = self.run_deck(with_field(GROUP, 1, 5, str(number)))
                self.assert_fails(outcome, 1)
                self.assertIn(text, outcome.report)

    def test_other_type_numbers_are_trusses(self):
        for number in ("0", "29", "-3", ""):
            with self.subTest(number=number):
                self.assertEqual(self.run_deck(with_field(GROUP, 1, 5, number)).status, 0)

    def test_an_element_of_no_length_stops_the_run(self):
        outcome = self.run_deck(with_field(ELEMENT, 11, 5, "1"))
        self.assert_fails(outcome, 1)
        self.assertIn("ERROR ELEMENT     1 HAS ZERO LENGTH", outcome.report)

    def test_an_element_node_out_of_range_is_a_data_error(self):
        outcome = self.run_deck(with_field(ELEMENT, 11, 5, "77"))
        self.assert_fails(outcome, 3)
        self.assertIn("NODE    77  OUT OF RANGE, ENTERING CHEC MODE", outcome.report)

    def test_a_step_that_is_no_number_of_this_world_is_never_accepted(self):
        outcome = self.run_deck(TRIPOD.replace(b"-60000.0", b"-1.0E308"))
        self.assertIn(outcome.status, (1, 4))


class ZeroPivot(ProgramTest):
    """A lattice with two more nodes above its top layer, joined along X and held upright by a bar each, free in X and Z: both
    can move along X together. The equation of that move is the later one of the two in the order of the equations."""

    SHAPE = Shape(6, 3, 3)
    PAIR = SHAPE.count + 1, SHAPE.count + 2

    def deck(self, card, ordering):
        model = lattice_deck.lattice_model(self.SHAPE)
        below = [self.SHAPE.node(i, 0, self.SHAPE.nz - 1) for i in (1, 2)]
        for node, foot in zip(self.PAIR, below):
            x, y, z = model.nodes[foot]
            model.nodes[node], model.codes[node] = (x, y, z + lattice_deck.SPACING), "010111"
        bars = [(*self.PAIR, 1), *((foot, node, 1) for foot, node in zip(below, self.PAIR))]
        model.groups.append(lattice_deck.bar_group(bars, lattice_deck.ELASTIC))
        loads = lattice_deck.load_cards([[(below[0], 0.4, 0.1, 0.0)]], [below[0]])
        macro = lattice_deck.static_macro(lattice_deck.load_segment([1.0]))
        return "\n".join(lattice_deck.problem(model.cards(card, ordering), loads, macro) + [" STOP", ""]).encode()

    def equations_along_X(self, report):
        """{equation: node} of the pair, from the last table of displacement codes."""
        table = report[report.rindex("DISPLACEMENT CODES"):]
        return {int(re.search(rf"\n +{node} +(\d+) +0 +\d+ +0 +0 +0", table)[1]): node for node in self.PAIR}

    def test_of_an_inner_node_is_told_by_node_and_direction_in_any_order_and_storage(self):
        cards = storage_card("CORE"), storage_card("DISK"), storage_card("DISK", "SYMM", 4 * 400)
        for card, ordering in ((card, ordering) for card in cards for ordering in (0, 1, 3)):
            with self.subTest(card=card, ordering=ordering):
                outcome = self.run_deck(self.deck(card, ordering))
                self.assert_fails(outcome, 1)
                equations = self.equations_along_X(outcome.report)
                stuck = max(equations)
                self.assertIn(f"equation {stuck}, node {equations[stuck]} direction X", outcome.errors)
                if "1600" not in card:
                    self.assertRegex(outcome.report, rf"CHECK D\.O\.F\. *{stuck}\n")
                if ordering == 1:
                    self.assertEqual(equations[stuck], self.PAIR[0], "the order of the nodes has changed")
                    self.assertLess(stuck, 100, "not at the end of the 112 equations")
                self.clear()


if __name__ == "__main__":
    unittest.main()
