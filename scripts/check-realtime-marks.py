#!/usr/bin/env python3
"""Demands the real-time mark on every function that the audio thread enters a stage by.

    scripts/check-realtime-marks.py               names each unmarked declaration, fails if any
    scripts/check-realtime-marks.py --self-test   checks the check

A declaration of one of the NAMES has to carry `noexcept` and, after it, CINDER_REALTIME.
"""
import fnmatch
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ["src"]
NAMES = ["render", "process", "processBlock", "reset", "pull", "produce"]

# File pattern, function, and why it never runs on the audio thread.
EXCEPTIONS = [
    ("src/core/*IntervalTimer.*", "reset", "a stop watch of the interface"),
]

# Words that stand before a call, not before the name in a declaration.
NOT_A_TYPE = {"return", "co_return", "co_await", "co_yield", "throw", "else", "do", "case", "not",
              "and", "or", "new", "delete"}
# A type, then the name, qualified or not, and its parameters. Pointers stand with the type.
DECLARED = re.compile(r"(\w*)[\w>*&\]]\s+(?:\w+::)*(%s)\s*\(" % "|".join(NAMES))


def blanked(text):
    """The text with comments and literals made blank, line by line in its old places."""
    pattern = r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|(?<!\w)\'(?:\\.|[^\'\\\n])*\''
    return re.sub(pattern, lambda m: re.sub(r"[^\n]", " ", m.group()), text, flags=re.DOTALL)


def end_of_parentheses(text, start):
    depth = 0
    for i in range(start, len(text)):
        depth += {"(": 1, ")": -1}.get(text[i], 0)
        if depth == 0:
            return i + 1
    return len(text)


def is_expression(text, start):
    """Whether the statement that `start` lies in has begun as an assignment or a call."""
    begun = re.search(r"[^;{}]*$", text[:start]).group()
    begun = re.sub(r"<[^<>]*>", "", begun)
    return "=" in begun or begun.count("(") > begun.count(")")


def unmarked(text):
    """Line and name of each declaration or definition in `text` that lacks the mark."""
    text = blanked(text)
    found = []
    for match in DECLARED.finditer(text):
        word = re.match(r"\w*", match.group()).group()
        if word in NOT_A_TYPE or is_expression(text, match.start()):
            continue
        tail = re.match(r"[^;{]*", text[end_of_parentheses(text, match.end() - 1):]).group()
        if not re.search(r"\bnoexcept\b.*\bCINDER_REALTIME\b", tail, re.DOTALL):
            found.append((text.count("\n", 0, match.end()) + 1, match[2]))
    return found


def check():
    used, faults, seen = set(), 0, 0
    for path in sorted(p for folder in FOLDERS for p in (ROOT / folder).rglob("*")
                       if p.suffix in (".h", ".cpp")):
        file = path.relative_to(ROOT).as_posix()
        text = path.read_text()
        seen += len(re.findall(r"\bCINDER_REALTIME\b", text))
        for line, name in unmarked(text):
            excused = [e for e in EXCEPTIONS if fnmatch.fnmatch(file, e[0]) and e[1] == name]
            used.update(excused)
            if not excused:
                print(f"{file}:{line}: {name} lacks noexcept CINDER_REALTIME")
                faults += 1
    for exception in EXCEPTIONS:
        if exception not in used:
            print(f"the exception {exception[0]} {exception[1]} excuses nothing")
            faults += 1
    if seen == 0:
        print("no mark found anywhere: is this the right folder?")
        faults += 1
    return faults


SELF_TEST = [
    # what the line says, the names to be found in it
    ("void render(int n) noexcept CINDER_REALTIME;", []),
    ("void render(int n);", ["render"]),
    ("void render(int n) noexcept;", ["render"]),
    ("void render(int n) CINDER_REALTIME;", ["render"]),
    ("virtual void reset() noexcept CINDER_REALTIME {}", []),
    ("virtual void reset() {}", ["reset"]),
    ("virtual void reset() = 0;", ["reset"]),
    ("virtual void reset() noexcept CINDER_REALTIME = 0;", []),
    ("void process(float* in,\n             int (*f)(int))\n    noexcept CINDER_REALTIME override;",
     []),
    ("void process(float* in,\n             int n) override;", ["process"]),
    ("BasicBlock<float>* pull(int n) { return 0; }", ["pull"]),
    ("BasicBlock<float>& produce(int n);", ["produce"]),
    ("std::vector<int> produce(int n);", ["produce"]),
    ("[[nodiscard]] bool processBlock(int n);", ["processBlock"]),
    ("void Stage::reset() {\n    input->reset();\n}", ["reset"]),
    ("void a::Stage::render(int n) noexcept CINDER_REALTIME {", []),
    ("void f() { reset(); input->render(3); x.process(4); return pull(5); }", []),
    ("void f() { if (a) reset(); else reset(); Filter::render(1); x = 2 * pull(3); g(2 * pull(1)); }", []),
    ("template <class T = int> void render(T n);", ["render"]),
    ("class A : B { public: void reset(); private: int n = 2; void pull(); }", ["reset", "pull"]),
    ("// void render(int n);\n/* void reset(); */ const char* s = \"void pull(int);\";", []),
    ("void preprocess(int n); void resetAll(); void processBlocks();", []),
    ("void render(int n);  // noexcept CINDER_REALTIME", ["render"]),
]


def self_test():
    faults = 0
    for text, expected in SELF_TEST:
        names = [name for _, name in unmarked(text)]
        if names != expected:
            print(f"{text!r}: found {names}, expected {expected}")
            faults += 1
    print(f"{len(SELF_TEST)} cases, {faults} wrong")
    return faults


if __name__ == "__main__":
    sys.exit(1 if (self_test() if "--self-test" in sys.argv[1:] else check()) else 0)
