// The cases and the tests of the text layer on the module's C library: the objects that the module is made of, linked
// with these and run by Node.
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
// inNode(PROGRAM, FOLDER, OPTION...): the program sees this folder and nothing else.
const inNode = (program, ...words) => {
    const module = join(built, `release/${program}.wasm`);
    return run(process.execPath, '--no-warnings', join(folder, 'program.js'), module, ...words);
};

function allHold({ stdout, stderr, status }, least) {
    assert.deepEqual([stderr, status], ['', 0], stdout);
    const [, count] = /\[ {2}PASSED {2}\] (\d+) tests/.exec(stdout);
    assert.ok(Number(count) >= least, stdout);
    assert.doesNotMatch(stdout, /SKIPPED/);
}

test('every case holds', () => {
    allHold(inNode('cases', cases, '--gtest_brief=1'), 3800);
});

test('the text layer, its reader and its writer do what they do here', () => {
    const examples = join(root, 'examples');
    allHold(inNode('text_requests', examples, '--gtest_brief=1'), 100);
    // A part of the texts shows it.
    process.env.KCNVRT_SAMPLE = '20';
    allHold(inNode('text_unit', examples, '--gtest_brief=1'), 200);
});

test('what the cases observe is what it is here, byte for byte', () => {
    const [there, expected] = [inNode('cases', cases, '--print'), here('--print')];
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
    const answer = inNode('cases', path);
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
