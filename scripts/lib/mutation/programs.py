# SPDX-License-Identifier: GPL-3.0-only
"""Compiles broken sources and links the test programs with them. Takes all that isn't broken from build/dev, and writes
to build/mutate alone."""
import json
import os
import re
import shlex
import shutil
import subprocess

from breaks import overlaps, with_break, with_switches

# Which test programs are asked about a folder's breaks, its own first.
PROGRAMS = {
    "event": ["event", "list", "roundtrip"],  # what is stored of an event is tested with the project's file
    "list": ["list", "roundtrip"],
    "import": ["import", "roundtrip"],
    "export": ["export", "roundtrip"],
}

# Of a break that the compiler refuses for what it says, whichever way it is put.
HOPELESS = re.compile(r"no match for|invalid operands|wrong type argument|has no member|no type named|is not a member|"
                      r"no matching function|invalid (?:use|types)|not declared|cannot convert|could not convert|lvalue required")


class Workshop:
    def __init__(self, root):
        self.root = root
        self.build = os.path.join(root, "build/dev")
        self.folder = os.path.join(root, "build/mutate")
        os.makedirs(os.path.join(self.folder, "bin"), exist_ok=True)
        with open(os.path.join(self.build, "compile_commands.json")) as file:
            self.commands = {entry["file"]: shlex.split(entry["command"]) for entry in json.load(file)}
        self.texts = {}
        self.switchboard = os.path.join(self.folder, "objects/runtime.cpp.o")
        self.linker = ["-fuse-ld=lld"] if shutil.which("ld.lld") else []
        # What a program looks for beside itself.
        for name in ("share", "lib"):
            link = os.path.join(self.folder, name)
            if not os.path.islink(link):
                os.symlink(os.path.join(self.build, name), link)

    def read(self, file):
        """The source as it was when it was read first, whoever edits it meanwhile."""
        if file not in self.texts:
            with open(os.path.join(self.root, file), encoding="utf-8") as source:
                self.texts[file] = source.read()
        return self.texts[file]

    def object_in_build(self, file):
        command = self.commands[os.path.join(self.root, file)]
        return command[command.index("-o") + 1]

    def compile(self, file, text, name, command_of=None):
        """Compiles the text in the place of the source. Returns the object's path, or None, and what the compiler says."""
        source = os.path.join(self.folder, "sources", name)
        made = os.path.join(self.folder, "objects", name + ".o")
        for path in (source, made):
            os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(source, "w", encoding="utf-8") as output:
            output.write(text)
        original = os.path.join(self.root, command_of or file)
        command = [source if word == original else word for word in self.command_of(original, made)]
        done = subprocess.run([*command, "-w", "-Wno-error", "-Wno-narrowing", "-fpermissive"], cwd=self.build,
                              capture_output=True, text=True, errors="replace")
        return (made if done.returncode == 0 else None), done.stderr

    def link(self, program, objects, output):
        """Links a test program with objects of ours, {object in build/dev: ours}, and the switchboard. False if that fails."""
        command = self.link_command(program)
        command[command.index("-o") + 1] = output
        command = [objects.get(word, word) for word in command]
        done = subprocess.run([*command, self.switchboard, *self.linker, "-Wl,-S"], cwd=self.build, capture_output=True, text=True)
        if done.returncode != 0:
            print(done.stderr[-2000:])
        return done.returncode == 0

    def make_switchboard(self):
        """Compiles what turns the breaks on, unless it is there. Before programs are linked side by side: once for all of them."""
        path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "runtime.cpp")
        if os.path.exists(self.switchboard) and os.path.getmtime(self.switchboard) > os.path.getmtime(path):
            return
        with open(path) as source:
            made, said = self.compile("runtime.cpp", source.read(), "runtime.cpp", self.any_test())
        if made is None:
            raise SystemExit(said)

    def require_build(self, programs):
        """Ends the run if build/dev lacks an object of these programs, or has one that is older than its source."""
        sources = {command[command.index("-o") + 1]: file for file, command in self.commands.items() if "-o" in command}
        for made in {word for program in programs for word in self.link_command(program) if word in sources}:
            present = os.path.join(self.build, made)
            if not os.path.exists(present) or os.path.getmtime(present) < os.path.getmtime(sources[made]):
                raise SystemExit(f"Build first: build/dev has no {made} that is as new as its source.")

    def command_of(self, file, made):
        command = list(self.commands[file])
        command = command[[os.path.basename(word) for word in command].index("c++") :]
        command[command.index("-o") + 1] = made
        return command

    def link_command(self, program):
        commands = subprocess.run(["ninja", "-C", self.build, "-t", "commands", f"test_{program}"], capture_output=True, text=True)
        line = [line for line in commands.stdout.splitlines() if f" -o bin/test_{program} " in line][-1]
        return shlex.split(line.split(" && ")[1])

    def any_test(self):
        return next(os.path.relpath(file, self.root) for file in self.commands if "/tests/event/" in file)

    def switched_object(self, file, breaks):
        """An object with as many of the breaks as the compiler takes, behind switches. Returns the object, those that are in
        it, and those that are no code at all; what is in neither list has to be compiled on its own."""
        text, inside, broken = self.read(file), [], []
        for candidate in breaks:
            if not any(overlaps(candidate, other) for other in inside):
                inside.append(candidate)
        while inside:
            made, said = self.compile(file, with_switches(text, inside, file), file)
            if made is not None:
                return made, inside, broken
            blamed, hopeless = set(), set()
            for number, message in re.findall(r"^break-(\d+):\d+:\d+: (?:fatal )?error: (.*)", said, re.M):
                blamed.add(int(number))
                if HOPELESS.search(message):
                    hopeless.add(int(number))
            if not blamed:  # the compiler stumbles elsewhere: the nearest break before that line, or all
                lines = [int(line) for line in re.findall(r"^" + re.escape(file) + r":(\d+):\d+: (?:fatal )?error:", said, re.M)]
                blamed = {min(inside, key=lambda b: abs(b.line - line)).number for line in lines} or {b.number for b in inside}
            broken += [b for b in inside if b.number in hopeless]
            inside = [b for b in inside if b.number not in blamed]
        return None, [], broken

    def broken_object(self, found):
        text = with_break(self.read(found.file), found)
        return self.compile(found.file, text, f"alone/{found.id}/{os.path.basename(found.file)}")[0]
