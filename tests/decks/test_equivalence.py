"""Runs that must agree: in core and on disk, in any number of blocks and any pool that fits, to the byte; symmetric and
unsymmetric, in every node order, refactorised from a tail or whole, assembled by change or from nothing, to rounding."""
import concurrent.futures
import copy
import unittest

import equivalence
from equivalence import DECKS, LATTICES, QUICK, SHAPES, Result, apart, lattice, same_bytes, with_ordering, with_storage
from lattice_deck import Shape, storage_card

WORDS = 2  # of a real
MOST_BLOCKS = 20


def in_parallel(function, items):
    with concurrent.futures.ThreadPoolExecutor(2) as workers:
        return list(workers.map(function, items))


def on_disk(deck):
    return with_storage(deck, storage_card("DISK"))


def blocked(deck, core, wanted, stiffness="SYMM"):
    """A disk run with about so many blocks, never more than are allowed; None when its columns are too tall for two."""
    triangles = 2 if stiffness == "USYM" else 1
    reals = core.figure("STORAGE FOR STRUCTURE STIFFNESS MATRIX") + core.figure("TOTAL NUMBER OF EQUILIBRIUM EQUATIONS")
    least = core.figure("MAXIMUM BAND WIDTH OF STRUCTURE MATRIX") + 1
    length = max(least, -(-reals // wanted))
    while length < reals:
        result = Result(with_storage(deck, storage_card("DISK", stiffness, 2 * WORDS * length)))
        if 1 < result.blocks <= MOST_BLOCKS:
            return result
        length += -(-length // (20 * triangles))
    return None


def most_blocks(deck, core):
    """Two disk runs: one with blocks of the least length that is not refused, so that they are as many as can be, and the one
    that is refused for a real less. Only a longer block can turn a refusal into a run, so the length is found by halving."""
    refused = core.figure("MAXIMUM BAND WIDTH OF STRUCTURE MATRIX")
    runs = core.figure("STORAGE FOR STRUCTURE STIFFNESS MATRIX") + core.figure("TOTAL NUMBER OF EQUILIBRIUM EQUATIONS")
    results = {}
    while runs - refused > 1 or refused not in results:
        length = (runs + refused) // 2
        results[length] = Result(with_storage(deck, storage_card("DISK", "SYMM", 2 * WORDS * length)))
        if 0 < results[length].blocks <= MOST_BLOCKS:
            runs = length
        else:
            refused = length
    return results[runs], results[refused]


class Storage(unittest.TestCase):
    """In core and on disk."""

    @classmethod
    def setUpClass(cls):
        cls.core = dict(zip(DECKS, in_parallel(Result, DECKS.values())))

    def test_a_disk_job_in_one_block_has_the_bytes_of_the_core_job(self):
        disk = in_parallel(lambda deck: Result(on_disk(deck)), DECKS.values())
        for name, result in zip(DECKS, disk):
            with self.subTest(deck=name):
                self.assertTrue(self.core[name].analysis)
                self.assertEqual(result.blocks, 1)
                self.assertEqual(same_bytes(self.core[name], result), [])

    def test_a_disk_job_in_several_blocks_has_the_bytes_of_the_core_job(self):
        jobs = [(name, wanted) for name in DECKS for wanted in (2, 4, 7, 12)]
        results = in_parallel(lambda job: blocked(DECKS[job[0]], self.core[job[0]], job[1]), jobs)
        counts = {}
        for (name, wanted), result in zip(jobs, results):
            if result:
                with self.subTest(deck=name, blocks=result.blocks):
                    counts.setdefault(name, set()).add(result.blocks)
                    self.assertEqual(same_bytes(self.core[name], result), [])
        self.assertGreaterEqual(sum(len(found) >= 3 for found in counts.values()), 12, counts)

    def test_a_disk_job_in_as_many_blocks_as_can_be_has_the_bytes_of_the_core_job(self):
        names = [name for name in (LATTICES if QUICK else DECKS)
                 if self.core[name].figure("TOTAL NUMBER OF EQUILIBRIUM EQUATIONS") >= MOST_BLOCKS]
        results = in_parallel(lambda name: most_blocks(DECKS[name], self.core[name]), names)
        for name, (most, refused) in zip(names, results):
            with self.subTest(deck=name, blocks=most.blocks):
                self.assertEqual(same_bytes(self.core[name], most), [])
                self.assertEqual(refused.status, 1)
                self.assertIn("more words" if refused.blocks > MOST_BLOCKS else "a column of", refused.errors)
        reached = [most.blocks for most, _ in results]
        self.assertGreaterEqual(reached.count(MOST_BLOCKS), 5 if QUICK else 12, reached)

    def test_large_beams_have_the_bytes_of_the_core_job_on_disk_and_in_blocks(self):
        for name in ("p_delta", "roll_up", "thermal_beams"):
            deck = equivalence.one_problem(equivalence.deck_of(name), 1)
            core = Result(deck)
            for result in (Result(on_disk(deck)), blocked(deck, core, 4)):
                with self.subTest(deck=name, blocks=result.blocks):
                    self.assertTrue(core.analysis)
                    self.assertEqual(same_bytes(core, result), [])

    def test_any_pool_that_fits_leaves_the_same_bytes(self):
        jobs = [(name, scheme, pool) for name in LATTICES for scheme in ("CORE", "DISK") for pool in ("1M", "2M", "7M", "40M")]
        results = in_parallel(lambda job: Result(with_storage(LATTICES[job[0]], storage_card(job[1])), [job[2]]), jobs)
        for (name, scheme, pool), result in zip(jobs, results):
            with self.subTest(deck=name, scheme=scheme, pool=pool):
                self.assertEqual(same_bytes(self.core[name], result), [])

    def test_a_matrix_larger_than_the_pool_is_cut_into_blocks_and_keeps_its_digits(self):
        shapes = (Shape(10, 10, 10), "6M"), (Shape(9, 8, 11), "5M"), (Shape(14, 14, 5), "7M")
        for shape, fits in shapes[:1] if QUICK else shapes:
            deck = lattice(shape)
            core, disk = Result(deck), on_disk(deck)
            results = in_parallel(lambda pool, disk=disk: Result(disk, [pool]), ("1M", "2M", "3M", "40M"))
            with self.subTest(shape=shape, blocks=[result.blocks for result in results]):
                self.assertTrue(core.analysis)
                for result in (*results, Result(deck, [fits])):
                    self.assertEqual(same_bytes(core, result), [])
                self.assertGreaterEqual(results[0].blocks, 3)
                self.assertEqual(results[-1].blocks, 1)


class Numbers(unittest.TestCase):
    """Same numbers to rounding, other digits allowed. All on disk, where the log of states can be read afterwards."""

    @classmethod
    def setUpClass(cls):
        cls.plain = dict(zip(DECKS, in_parallel(lambda deck: Result(on_disk(deck)), DECKS.values())))

    def agree(self, change):
        results = in_parallel(lambda name: Result(change(on_disk(DECKS[name]))), DECKS)
        for name, result in zip(DECKS, results):
            with self.subTest(deck=name):
                self.assertIsNone(apart(self.plain[name], result))

    def test_most_decks_change_states_so_that_all_digits_are_compared(self):
        self.assertGreaterEqual(sum(len(result.changes) > 12 for result in self.plain.values()), 12)

    def test_unsymmetric_storage(self):
        self.agree(lambda deck: with_storage(deck, storage_card("DISK", "USYM")))

    def test_unsymmetric_storage_in_core_has_the_bytes_of_the_disk_job(self):
        results = in_parallel(lambda job: Result(with_storage(DECKS[job[0]], storage_card(job[1], "USYM"))),
                              [(name, scheme) for name in DECKS for scheme in ("CORE", "DISK")])
        for name, core, disk in zip(DECKS, results[::2], results[1::2]):
            with self.subTest(deck=name):
                self.assertEqual(same_bytes(core, disk), [])

    def test_unsymmetric_storage_in_blocks(self):
        jobs = [(name, wanted) for name in DECKS for wanted in (3, 11)]
        results = in_parallel(lambda job: blocked(DECKS[job[0]], self.plain[job[0]], job[1], "USYM"), jobs)
        for (name, wanted), result in zip(jobs, results):
            if result:
                with self.subTest(deck=name, blocks=result.blocks):
                    self.assertIsNone(apart(self.plain[name], result))
        self.assertGreaterEqual(len({name for (name, _), result in zip(jobs, results) if result}), 12)

    def test_every_order_of_the_nodes(self):
        for code in (1, 2, 3, 4, 5, -1):
            with self.subTest(code=code):
                self.agree(lambda deck, code=code: with_ordering(deck, code))

    def test_a_renumbered_disk_job_in_blocks(self):
        decks = {name: with_ordering(deck, 1) for name, deck in LATTICES.items()}
        core = dict(zip(decks, in_parallel(Result, decks.values())))
        results = in_parallel(lambda name: blocked(decks[name], core[name], 5), decks)
        for name, result in zip(decks, results):
            with self.subTest(deck=name):
                self.assertEqual(same_bytes(core[name], result), [])

    def test_assembly_from_nothing_and_by_change(self):
        apiece = in_parallel(lambda shape: Result(on_disk(lattice(shape, split=True))), SHAPES.values())
        for name, result in zip(SHAPES, apiece):
            with self.subTest(deck=name):
                self.assertIsNone(apart(without_macros(self.plain[name]), without_macros(result)))

    def test_refactorisation_of_the_tail_and_of_the_whole(self):
        results = in_parallel(lambda job: Result(on_disk(lattice(SHAPES[job[0]], idle=job[1]))), [(name, code) for name in SHAPES for code in (0, 1)])
        for name, tail, whole in zip(SHAPES, results[::2], results[1::2]):
            with self.subTest(deck=name):
                formed = ["\n".join(result.analysis).count("STIFFNESS FORMED") for result in (tail, whole)]
                self.assertLess(formed[0], formed[1], "the idle bar does not have the matrix formed anew")
                self.assertIsNone(apart(tail, whole))


def without_macros(result):
    """A run whose macros do not show: of the report the tables of results, levels without the number of the macro."""
    bare = copy.copy(result)
    bare.analysis = [line for kind, rows in equivalence.tables(result.analysis) if kind != "text" for line in rows + [""]]
    bare.levels = [" " + " ".join(line.split()[:5]) for line in result.levels if line[1:2].isdigit()]
    return bare


class Comparison(unittest.TestCase):
    """The comparisons can fail."""

    def test_a_stiffer_bar_is_seen_in_every_file(self):
        deck = on_disk(LATTICES["tower"])
        plain, other = Result(deck), Result(deck.replace("   30000.0", "   30000.1", 1))
        self.assertIsNone(apart(plain, Result(deck)))
        self.assertIsNotNone(apart(plain, other))
        self.assertIsNotNone(equivalence.levels_apart(plain, other))
        self.assertIsNotNone(equivalence.changes_apart(plain, other))

    def test_one_unit_of_the_last_digit_is_rounding_and_two_are_not(self):
        row = "      DISPLACEMENT         0.10000E+01 -0.20000E-03"
        for other, differs in (("0.10001E+01 -0.20000E-03", False), ("0.10002E+01 -0.20000E-03", True), ("0.10000E+01 -0.20002E-03", True)):
            self.assertEqual(equivalence.rows_apart("nodes", [row], ["      DISPLACEMENT         " + other]) is not None, differs)

    def test_noise_beside_large_numbers_is_rounding(self):
        rows = ["    1       1       2    0      0.10000E+04      0.10000E+00      0.00000E+00      0.00000E+00",
                "    2       2       3    0      0.12345E-08      0.10000E+00      0.00000E+00      0.00000E+00"]
        other = [rows[0], rows[1].replace("0.12345E-08", "0.54321E-08")]
        self.assertIsNone(equivalence.rows_apart("elements", rows, other))
        self.assertIsNotNone(equivalence.rows_apart("elements", rows, [rows[0], rows[1].replace("0.12345E-08", "0.54321E-06")]))


if __name__ == "__main__":
    unittest.main()
