#!/usr/bin/env python3
# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
"""What the operators of tools/mutate make of a line, and what they leave alone."""

import unittest

from changes import line_of, planted, shown, sites

BODY = "void f() {\n%s\n}\n"
CASES = [
    ("if (a < b) go;", ["if (a <= b) go;", "if (a >= b) go;"]),
    ("if (a == b || c) go;", ["if (!(a == b || c)) go;", "if (a != b || c) go;", "if (a == b && c) go;"]),
    ("if (!isOpen()) return;", ["if (isOpen()) return;"]),
    ("if (const auto x = f(); x.ok()) go;", ["if (const auto x = f(); !(x.ok())) go;"]),
    ("if (auto x = f()) go;", []),
    ("while (true) go;", ["while (false) go;"]),
    ("x = ready ? a : b;", ["x = !(ready) ? a : b;"]),
    ("x = 9;", ["x = 10;", "x = 8;"]),
    ("x = 0;", ["x = 1;"]),
    ("x = 1'000;", ["x = 1001;", "x = 999;"]),
    ("x = 0x0fU;", ["x = 0x10U;", "x = 0xeU;"]),
    ("x = 0.05;", ["x = 0.06;", "x = 0.04;"]),
    ("x = 1e8;", ["x = 2e8;", "x = 0e8;"]),
    ("list.clear();", [";"]),
    ("for (auto x : all) x->stop(now);", ["for (auto x : all) ;"]),
    ("if (ok)\n    say(this, [&] { x; });", ["if (!(ok))\n    say(this, [&] { x; });", "if (ok)\n    ;"]),
    ("Guard guard(mutex);", []),
    ("std::lock_guard<M> lock(mutex);", []),
    ("list.reserve(n);", []),
    ("return f(a, g(b), b);", ["return f(g(b), a, b);", "return f(a, b, g(b));"]),
    ("return std::max(a, b);", []),
    ("x = f<A, B>(a + b, c);", ["x = f<A, B>(c, a + b);"]),
    ("std::vector<int> x;", []),
    ("auto&& x = a; // 1 < 2", []),
    ('text = "1 < 2 && !true";', []),
    ('text = R"(if (a < 1))";', []),
    ("static_assert(a == 1);", []),
    ("#if A == 1\n#endif", []),
]


class Operators(unittest.TestCase):
    def test_what_they_make_of_a_line(self):
        for line, expected in CASES:
            text = BODY % line
            made = [planted(text, change) for place in sites(text) for change in place]
            with self.subTest(line):
                self.assertEqual(made, [BODY % wanted for wanted in expected])

    def test_calls_are_known_from_declarations(self):
        for text in ("class A {\n    A();\n    void f(int a, int b);\n};", "struct A {\n    virtual void f() = 0;\n};"):
            self.assertEqual(sites(text), [])

    def test_changes_are_shown_on_one_line(self):
        text = BODY % "    if (a &&\n        b) stop();"
        change = sites(text)[0][0]
        self.assertEqual(shown(text, change), "if ([-a && b-]{+!(a && b)+}) stop();")
        self.assertEqual(line_of(text, change), 2)


if __name__ == "__main__":
    unittest.main()
