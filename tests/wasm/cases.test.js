// The cases on the module's C library: the objects that the module is made of, linked with the runner and run by Node.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import test from 'node:test';
import { built, folder, root } from './tools.js';

const cases = join(root, 'tests/cases');

const run = (command, ...words) => spawnSync(command, words, { encoding: 'utf8', maxBuffer: 2 ** 28 });
const here = (...options) => run(join(root, 'build/release/bin/cases'), ...options, cases);
const program = ['--no-warnings', join(folder, 'cases.js'), join(built, 'release/cases.wasm')];
const inNode = (path, ...options) => run(process.execPath, ...program, path, ...options);

test('every case holds', () => {
    const { stdout, stderr, status } = inNode(cases, '--gtest_brief=1');
    assert.deepEqual([stderr, status], ['', 0], stdout);
    assert.match(stdout, /\[ {2}PASSED {2}\] \d{4,} tests/);
});

test('what the cases observe is what it is here, byte for byte', () => {
    const [there, expected] = [inNode(cases, '--print'), here('--print')];
    assert.deepEqual([there.stderr, there.status, expected.status], ['', 0, 0]);
    const lines = expected.stdout.split('\n');
    there.stdout.split('\n').forEach((line, i) => assert.equal(line, lines[i], `line ${i + 1}`));
    assert.equal(there.stdout, expected.stdout);
    console.log(`${lines.filter((line) => line.startsWith('case ')).length} cases, all as here`);
});

// brokenCase(CHANGE): what the runner says of a file whose first case was changed.
function brokenCase(change) {
    const path = mkdtempSync(join(tmpdir(), 'cases-'));
    const [first] = JSON.parse(readFileSync(join(cases, 'ifaces/ppp_service.json'), 'utf8'));
    writeFileSync(join(path, 'broken.json'), JSON.stringify([change(first)]));
    const answer = inNode(path);
    rmSync(path, { recursive: true });
    return answer;
}

test('a case that does not hold fails', () => {
    const answers = [
        [brokenCase((each) => each), 0, /1 test\./],
        [brokenCase((each) => ({ ...each, result: 77 })), 1, /result\nexpected: 77\nactual: {3}0/],
        [brokenCase((each) => ({ ...each, output: {} })), 1, /output differs, first at "/],
        [brokenCase((each) => ({ ...each, messages: [['f', 'm']] })), 1, /messages\nexpected: \n {2}\["f","m"\]/],
        [brokenCase((each) => ({ ...each, stdout: 'a' })), 1, /standard output\nexpected: a/],
        [brokenCase((each) => ({ ...each, call: 'malloc' })), 1, /no function of the libraries has the name "malloc"/],
    ];
    for (const [{ stdout, status }, expected, words] of answers) {
        assert.equal(status, expected, stdout);
        assert.match(stdout, words);
    }
});
