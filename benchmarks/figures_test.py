# Tests what scripts/benchmark and scripts/compare-instructions make of figures.
import os
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "scripts"))
import benchmark_goals  # noqa: E402
import instruction_figures  # noqa: E402

Goal = benchmark_goals.Goal


class MeasuredTest(unittest.TestCase):
    figures = [
        {"work": "a", "rows": 10, "ms": 4, "goal": 3},
        {"work": "a", "rows": 20, "ms": 9},
        {"work": "b", "rows": 20, "ms": 3},
    ]

    def test_takes_the_row_of_work_and_size(self):
        self.assertEqual(benchmark_goals.measured(Goal("", "p", "a", 10, "ms", 5), self.figures), 4)
        self.assertEqual(benchmark_goals.measured(Goal("", "p", "a", 20, "ms", 5), self.figures), 9)

    def test_divides_by_another_work(self):
        self.assertEqual(benchmark_goals.measured(Goal("", "p", "a", 20, "ms", 5, against="b"), self.figures), 3)

    def test_has_no_value_where_something_lacks(self):
        for goal in (
            Goal("", "p", "c", 10, "ms", 5),
            Goal("", "p", "a", 30, "ms", 5),
            Goal("", "p", "a", 10, "M rows/s", 5),
            Goal("", "p", "a", 10, "ms", 5, against="b"),
        ):
            self.assertIsNone(benchmark_goals.measured(goal, self.figures), goal)

    def test_refuses_a_program_with_another_goal(self):
        self.assertEqual(benchmark_goals.measured(Goal("", "p", "a", 10, "ms", 3, told="goal"), self.figures), 4)
        with self.assertRaises(SystemExit):
            benchmark_goals.measured(Goal("", "p", "a", 10, "ms", 5, told="goal"), self.figures)

    def test_meets_a_goal_at_its_limit(self):
        for at_least, value, is_met in (
            (True, 4.9, False), (True, 5, True), (True, 5.1, True),
            (False, 4.9, True), (False, 5, True), (False, 5.1, False),
        ):
            goal = Goal("", "p", "a", 10, "ms", 5, at_least=at_least)
            self.assertEqual(goal.is_met(value), is_met, (at_least, value))


class GoalTableTest(unittest.TestCase):
    def test_prints_what_was_measured(self):
        text = benchmark_goals.table([
            {"goal": "fast", "size": 1000, "value": 0.5, "at most": 0.75, "met": True},
            {"goal": "many times", "size": 10, "value": 99.0, "at least": 1000, "met": False},
            {"goal": "else", "size": 10, "value": None, "at most": 1, "met": None},
        ])
        self.assertEqual(text, "\n".join([
            "| work       |  size |     measured |           goal | met |",
            "|------------|------:|-------------:|---------------:|-----|",
            "| fast       | 1,000 |         0.50 |   at most 0.75 | yes |",
            "| many times |    10 |        99.00 | at least 1,000 | no  |",
            "| else       |    10 | not measured |   at most 1.00 |     |",
        ]))

    def test_every_goal_has_a_result(self):
        programs = {goal.program: [] for goal in benchmark_goals.goals()}
        found = benchmark_goals.results(programs)
        self.assertEqual(len(found), len(list(benchmark_goals.goals())))
        self.assertEqual({result["met"] for result in found}, {None})


def figures(compiler="1", **instructions):
    return {"environment": {"compiler": compiler}, "instructions": instructions}


class CompareTest(unittest.TestCase):
    def test_fails_above_three_per_cent(self):
        for after, has_grown in ((1030, False), (1031, True), (1000, False), (900, False)):
            _, result = instruction_figures.compare(figures(load=1000), figures(load=after))
            self.assertEqual(result, has_grown, after)

    def test_tells_each_work(self):
        lines, _ = instruction_figures.compare(figures(load=1000, old=7), figures(load=1500, new=8))
        self.assertEqual(lines, [
            "work                         before          after   growth",
            "load                          1,000          1,500   +50.0%  grown",
            "old                               7               ",
            "new                                              8",
            "A work takes more than 3% more instructions than before.",
        ])

    def test_tells_a_gain(self):
        lines, has_grown = instruction_figures.compare(figures(load=1000), figures(load=900))
        self.assertFalse(has_grown)
        self.assertEqual(
            lines[-1], "A work takes fewer instructions than before; once that is to stay, keep the new figures.")

    def test_does_not_fail_with_another_compiler(self):
        lines, has_grown = instruction_figures.compare(figures("12", load=1000), figures("13", load=2000))
        self.assertFalse(has_grown)
        self.assertEqual(lines[-2:], [
            "Another compiler: '12' before, '13' now",
            "The figures are not of one kind, so growth says nothing.",
        ])


if __name__ == "__main__":
    unittest.main()
