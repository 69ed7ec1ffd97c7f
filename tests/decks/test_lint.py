"""The house rules: each of them can fail."""
import unittest

import support  # noqa: F401  (finds tools/)
import lint

ORDER = ["run", "model", "roof"]


class Rules(unittest.TestCase):
    def test_a_lower_floor_must_not_include_a_higher_one(self):
        self.assertEqual(list(lint.check_floors("src/model/a.cpp", ['#include "run/x.h"', '#include "model/y.h"'], ORDER)), [])
        self.assertEqual(len(list(lint.check_floors("src/model/a.cpp", ['#include "roof/x.h"'], ORDER))), 1)
        self.assertEqual(len(list(lint.check_floors("src/attic/a.cpp", [], ORDER))), 1)

    def test_the_floors_are_read_in_their_order(self):
        order = lint.floors()
        self.assertEqual(order[0], "run")
        self.assertEqual(order[-1], "roof")
        self.assertIn("elements/contract", order)

    def test_long_procedures_and_files_are_found(self):
        short = ["void f(int a) {"] + ["  a += 1;"] * 78 + ["}"]
        self.assertEqual(list(lint.check_lengths("a.cpp", short)), [])
        self.assertEqual(len(list(lint.check_lengths("a.cpp", short[:1] + ["  a += 1;"] + short[1:]))), 1)
        self.assertEqual(len(list(lint.check_lengths("a.cpp", ["// line"] * 501))), 1)

    def test_a_long_namespace_or_type_is_no_procedure(self):
        self.assertEqual(list(lint.check_lengths("a.cpp", ["namespace a {"] + ["int x;"] * 100 + ["}"])), [])

    def test_braces_in_text_do_not_count(self):
        lines = ["void f() {", '  g("}{{{", \'{\');', "}"] + ["int x;"] * 100
        self.assertEqual(list(lint.check_lengths("a.cpp", lines)), [])


if __name__ == "__main__":
    unittest.main()
