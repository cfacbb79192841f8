"""Makes mutants, builds them all in at once in a copy of the tree, and runs the tests that reach each."""
import argparse
import concurrent.futures
import hashlib
import json
import os
import pathlib
import pickle
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import mutants

TOP = pathlib.Path(__file__).resolve().parents[2]
ROOMS = ('src/', 'station/', 'servicehost/')
HEADER = pathlib.Path(__file__).with_name('mutant.h')


def git(*arguments, at=TOP, check=True):
    return subprocess.run(['git', *arguments], cwd=at, check=check, capture_output=True, text=True).stdout


def changed_lines(revision):
    lines, path = {}, None
    for row in git('diff', '-U0', '--no-color', revision).splitlines():
        if row.startswith('+++ '):
            path = row[6:] if row.startswith('+++ b/') else None
        elif path and (match := re.match(r'@@ -\S+ \+(\d+)(?:,(\d+))? @@', row)):
            first, count = int(match[1]), int(match[2] or 1)
            lines.setdefault(path, set()).update(range(first, first + count))
    return lines


def wanted_lines(what):
    """Of each source the lines to look at, None for all."""
    wanted = {}
    for word in what:
        if (TOP / word).exists():
            for path in git('ls-files', '--', word).split():
                wanted[path] = None
        elif git('rev-parse', '--verify', '--quiet', word + '^{commit}', check=False):
            wanted.update(changed_lines(word))
        else:
            sys.exit(f'neither a path nor a revision: {word}')
    return {p: l for p, l in wanted.items() if p.startswith(ROOMS) and p.endswith(('.cpp', '.h'))}


class Copy:
    """A work tree of its own, kept from run to run for its build."""

    def __init__(self, options, sources):
        self.options, self.sources = options, sources
        self.path = pathlib.Path(options.copy)
        self.build = self.path / 'build/mutants'
        self.built = self.path / 'build/mutants.pickle'
        if options.again:
            return
        # The user's uncommitted changes are in it; their files are only read.
        revision = git('stash', 'create').strip() or git('rev-parse', 'HEAD').strip()
        if not (self.path / '.git').exists():
            git('worktree', 'prune')
            git('worktree', 'add', '--force', '--detach', str(self.path), revision)
        git('checkout', '--force', '--detach', revision, at=self.path)
        self.header = self.path / 'build/mutant.h'
        self.header.parent.mkdir(exist_ok=True)
        if not self.header.exists() or self.header.read_bytes() != HEADER.read_bytes():
            shutil.copy(HEADER, self.header)
        flags = '-O1 -w -fdiagnostics-color=never -fno-diagnostics-show-caret'
        os.environ.update(CCACHE_BASEDIR=str(self.path), CCACHE_NOHASHDIR='1')
        subprocess.run(['cmake', '--preset', 'release', '-B', str(self.build), f'-DCMAKE_CXX_FLAGS={flags}',
                        '-DCMAKE_CXX_FLAGS_RELWITHDEBINFO='] + options.cmake, cwd=self.path, check=True,
                       stdout=subprocess.DEVNULL)

    def write(self, path, alive):
        source = self.sources[path]
        if alive:
            source, places = mutants.written(source, alive)
            source = f'#include "{self.header}"\n#line 1\n{source}'
        else:
            places = {}
        if (self.path / path).read_text() != source:
            (self.path / path).write_text(source)
        return places

    def compile(self):
        programs = self.options.programs.split(',') if self.options.programs else ['all']
        command = ['cmake', '--build', str(self.build), '-j', str(self.options.jobs), '--target', *programs]
        done = subprocess.run([*command, '--', '-k', '0'], capture_output=True, text=True)
        return done.returncode == 0, done.stdout + done.stderr


def errors_in(output, copy):
    """For each error the places that it names, nearest first, and its words."""
    found, block = [], []
    for row in output.splitlines():
        match = re.match(r'(\S+?):(\d+):(\d+): +(?:fatal )?(error|required from|note|  in)?', row)
        starts = row.startswith('FAILED:') or re.match(r'\S+: (In|At|In file)', row)
        if starts:
            block = []
        if match:
            path = os.path.relpath(os.path.normpath(os.path.join(copy.build, match[1])), copy.path)
            place = (path, int(match[2]), int(match[3]))
            if match[4] == 'error':
                found.append(([place], row, list(block)))
            elif match[4] == 'note' and found:
                found[-1][0].append(place)
            else:
                block.append(place)
    return [(places[:1] + before[::-1] + places[1:], row) for places, row, before in found]


def drop_refused(made, places, output, copy, round_):
    """Takes out what the compiler complains about. The numbers of those."""
    refused = set()
    by_line = {}
    for mutant in made:
        rows = [row for row, _ in places[mutant.path][mutant.number]]
        for row in range(min(rows), max(rows) + 1) if not mutant.constant else set(rows):
            by_line.setdefault((mutant.path, row), []).append(mutant)
    for named, words in errors_in(output, copy):
        for path, row, column in named:
            near = by_line.get((path, row))
            if not near:
                continue
            if round_ < 3:
                near = [min(near, key=lambda m: min((abs(c - column) if r == row else 500)
                                                    for r, c in places[path][m.number]))]
            refused.update(m.number for m in near)
            break
        else:
            quoted = set(re.findall(r'\w+', ' '.join(re.findall(r'[‘\'](.*?)[’\']', words))))
            refused.update(m.number for m in made if m.constant in quoted)
    return refused


def build(copy, made):
    """Builds until the compiler is content. Those that are left."""
    paths = {m.path for m in made}
    for round_ in range(12):
        places = {path: copy.write(path, [m for m in made if m.path == path]) for path in paths}
        good, output = copy.compile()
        if good:
            return made
        refused = drop_refused(made, places, output, copy, round_)
        if not refused:
            # Errors that name no mutant: of constants that something else needs at compile time.
            refused = {m.number for m in made if m.constant or m.path.endswith('.h')}
        if not refused:
            sys.exit('the copy does not build:\n' + output[-4000:])
        print(f'  {len(refused)} do not compile', flush=True)
        made = [m for m in made if m.number not in refused]
    sys.exit('gave up building')


class Tests:
    def __init__(self, copy, options):
        self.copy, self.options = copy, options
        listed = subprocess.run(['ctest', '--test-dir', str(copy.build), '--show-only=json-v1'], check=True,
                                capture_output=True, text=True).stdout
        programs = set(options.programs.split(',')) if options.programs else None
        self.all = []  # (name, program, gtest filter, environment)
        for test in json.loads(listed)['tests']:
            command = test.get('command')
            if not command or (programs and pathlib.Path(command[0]).name not in programs):
                continue
            if not re.search(options.tests, test['name']) or not command[1:2] or 'gtest_filter' not in command[1]:
                continue
            extra = {p['name']: p['value'] for p in test.get('properties', [])}.get('ENVIRONMENT', [])
            self.all.append((test['name'], command[0], command[1].split('=', 1)[1], tuple(extra)))
        self.shell = ['sh', '-c', 'ip link set lo up && exec "$@"', 'sh']
        self.prefix = ['unshare', '-rnpf', '--kill-child', '--mount-proc', *self.shell]
        if subprocess.run([*self.prefix, 'true'], capture_output=True).returncode != 0:
            self.prefix = []
            self.options.jobs = 1  # tests have addresses of their own, but two runs of one test share them
        self.seconds = {}

    def run(self, program, filters, extra, seconds, more=(), **environment):
        """The exit code (None after the time) and the output."""
        variables = os.environ | dict(e.split('=', 1) for e in extra) | environment
        with tempfile.TemporaryFile('w+', errors='replace') as out:
            process = subprocess.Popen([*self.prefix, program, '--gtest_filter=' + ':'.join(filters), *more],
                                       cwd=self.copy.build, env=variables, stdin=subprocess.DEVNULL, stdout=out,
                                       stderr=subprocess.STDOUT, start_new_session=True)
            try:
                code = process.wait(seconds)
            except subprocess.TimeoutExpired:
                code = None
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            process.wait()
            out.seek(0)
            return code, out.read()

    def reached_by(self, count):
        """For each test the mutants it reaches; tests that fail without any are left out."""
        reached, failed = {}, []

        def look(test):
            name, program, filter_, extra = test
            with tempfile.NamedTemporaryFile() as marks:
                marks.write(bytes(count + 1))
                marks.flush()
                began = time.monotonic()
                code, _ = self.run(program, [filter_], extra, 120, MUTANTS_REACHED=marks.name, MUTANT='0')
                self.seconds[name] = time.monotonic() - began
                marks.seek(0)
                return test, code, {n for n, mark in enumerate(marks.read()) if mark}

        with concurrent.futures.ThreadPoolExecutor(self.options.jobs) as pool:
            for test, code, numbers in pool.map(look, self.all):
                if code == 0:
                    reached[test] = numbers
                else:
                    failed.append(test[0])
        if failed:
            print('left out, because they fail without a mutant:', ', '.join(failed))
        return reached

    def groups(self, tests):
        """By program and environment, the quickest first."""
        groups = {}
        for test in tests:
            groups.setdefault((test[1], test[3]), []).append(test)
        return sorted(groups.items(), key=lambda g: sum(self.seconds[t[0]] for t in g[1]))

    def killers(self, mutant, tests):
        """The names of tests that fail with the mutant: one, or all of them for the matrix."""
        dead = []
        for (program, extra), group in self.groups(tests):
            left = list(group)
            while left:
                seconds = 3 * sum(self.seconds[t[0]] for t in left) + 10
                more = () if self.options.matrix else ('--gtest_fail_fast',)
                code, output = self.run(program, [t[2] for t in left], extra, seconds, more, MUTANT=str(mutant.number))
                if code == 0:
                    break
                ended = set(re.findall(r'\[ +(?:OK|FAILED) +\] ([^\s,]+)', output))
                failed = set(re.findall(r'\[ +FAILED +\] ([^\s,]+)', output))
                begun = re.findall(r'\[ RUN +\] (\S+)', output)
                if begun and begun[-1] not in ended:
                    failed.add(begun[-1])
                dead += [t[0] for t in left if t[2] in failed] or [left[0][0]]
                if not self.options.matrix:
                    return dead
                unended = [t for t in left if t[2] not in ended and t[2] not in failed]
                left = unended if len(unended) < len(left) else []
        return dead


def table(rows):
    widths = [max(len(row[i]) for row in rows) for i in range(len(rows[0]))]
    return '\n'.join('  '.join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip() for row in rows)


def arguments():
    parser = argparse.ArgumentParser(prog='mutate.sh', description='Small faults that no test notices.')
    parser.add_argument('what', nargs='*', help='a revision (the lines changed since), or folders and files')
    parser.add_argument('-n', '--sample', type=int, default=100, help='at most so many mutants (100)')
    parser.add_argument('-s', '--seed', type=int, default=1, help='of the sample')
    parser.add_argument('-m', '--minutes', type=float, default=20, help='begin no further mutant after these (20)')
    parser.add_argument('-p', '--programs', default='', help='only these test programs, separated by commas')
    parser.add_argument('-t', '--tests', default='', help='only tests whose names match')
    parser.add_argument('-j', '--jobs', type=int, default=os.cpu_count())
    parser.add_argument('-D', dest='cmake', action='append', default=[], help='passed on to cmake')
    parser.add_argument('--matrix', action='store_true', help='all tests that kill each; then those that kill nothing alone')
    parser.add_argument('--again', action='store_true', help='try those that were built last, with the tests built then')
    parser.add_argument('--list', action='store_true', help='print the mutants only')
    name = 'pallomir-mutants-' + hashlib.sha1(str(TOP).encode()).hexdigest()[:8]
    parser.add_argument('--copy', default=os.path.join(tempfile.gettempdir(), name), help='where the copy lies')
    options = parser.parse_args()
    if not options.what and not options.again:
        parser.error('a revision, folder or file is missing')
    options.cmake = ['-D' + d for d in options.cmake]
    return options


def make(options):
    found, sources = [], {}
    for path, lines in sorted(wanted_lines(options.what).items()):
        sources[path] = (TOP / path).read_text()
        here = mutants.Finder(path, sources[path]).find()
        found += [m for m in here if lines is None or m.line in lines]
    everything = len(found)
    random.Random(options.seed).shuffle(found)
    found = mutants.without_overlaps(found[:options.sample])
    for number, mutant in enumerate(found, 1):
        mutant.number = number
    return everything, found, sources


def report_matrix(kills, reached):
    alone = {}
    for names in kills.values():
        if len(names) == 1:
            alone[names[0]] = alone.get(names[0], 0) + 1
    rows = [('alone', 'kills', 'test')]
    for test in sorted(reached):
        total = sum(test[0] in names for names in kills.values())
        rows.append((str(alone.get(test[0], 0)), str(total), test[0]))
    print('\nWhat each test kills, and what no other does:')
    print(table(rows))


def main():
    options = arguments()
    began = time.monotonic()
    if options.again:
        copy = Copy(options, {})
        made, compiled = pickle.loads(copy.built.read_bytes())
    else:
        everything, made, sources = make(options)
        print(f'{len(made)} mutants of {everything} possible ones', flush=True)
        if options.list or not made:
            for m in sorted(made, key=lambda m: (m.path, m.line)):
                print(f'  {m.path}:{m.line}  {m.what}')
            return
        copy = Copy(options, sources)
        compiled = build(copy, list(made))
        copy.built.write_bytes(pickle.dumps((made, compiled)))
    print(f'{len(compiled)} compiled after {time.monotonic() - began:.0f} s', flush=True)
    tests = Tests(copy, options)
    reached = tests.reached_by(len(made))
    print(f'{len(reached)} tests, looked at after {time.monotonic() - began:.0f} s', flush=True)

    def attempt(mutant):
        if time.monotonic() - began > options.minutes * 60:
            return mutant, None, 0
        those = [test for test, numbers in reached.items() if mutant.number in numbers]
        return mutant, tests.killers(mutant, those), len(those)

    kills, alive, untried = {}, [], 0
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for mutant, names, count in pool.map(attempt, compiled):
            if names is None:
                untried += 1
            elif names:
                kills[mutant.number] = names
            else:
                alive.append((mutant, count))
    if alive:
        print('\nAlive:')
        rows = [(f'{m.path}:{m.line}', f'{count} tests' if count else 'not reached', m.what)
                for m, count in sorted(alive, key=lambda a: (a[0].path, a[0].line))]
        print(table(rows))
    if options.matrix:
        report_matrix(kills, reached)
    print(f'\n{len(made)} made, {len(compiled)} compiled, {len(kills)} killed, {len(alive)} alive'
          + (f', {untried} not tried in time' if untried else '') + f', {time.monotonic() - began:.0f} s')


if __name__ == '__main__':
    main()
