// The module against the native library: the same answers to the same calls, and the same bytes as the tool's.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { readFileSync, readdirSync } from 'node:fs';
import { join } from 'node:path';
import test from 'node:test';
import * as converter from 'k-cnvrt';
import { documents, numbers } from './documents.js';
import { example, root } from './tools.js';

const native = join(root, 'build/release');
const library = join(native, 'lib/libk_cnvrt_text.so');
const settings = { PYTHONPATH: join(root, 'python'), PYTHONDONTWRITEBYTECODE: '1', KCNVRT_LIBRARY: library };
const COUNT = 2000;

// The options' names in Python.
const RENAMED = {
    to: 'towards', dslVlan: 'dsl_vlan', mergePatch: 'merge_patch', asIs: 'as_is', fromResult: 'from_result',
    showSecrets: 'show_secrets',
};

// A pointer to something in the text and what is there, or a pointer to nothing. Of a text that is no JSON, the whole.
function placeIn(text, random) {
    let value;
    try {
        value = JSON.parse(text);
    } catch {
        return { pointer: '' };
    }
    let pointer = '';
    while (typeof value === 'object' && value !== null && random(6) !== 0) {
        const names = Object.keys(value);
        const name = names[random(names.length)] ?? 'nothing';
        pointer += `/${name.replaceAll('~', '~0').replaceAll('/', '~1')}`;
        value = value[name];
    }
    return { pointer, value };
}

// Every function about a document, and about the one before it.
function callsAbout(text, other, i) {
    const random = numbers(i + 7);
    const chosen = (...names) => Object.fromEntries(names.filter(() => random(2) === 0).map((name) => [name, true]));
    const layout = ['new', 'old'][random(2)];
    const name = converter.sections(layout)[random(converter.sections(layout).length)];
    const call = (f, options = {}, given = {}) => ({ f, options, names: [], texts: [text], pointers: [], ...given });
    return [
        call('toNew', chosen('dslVlan', 'partial', 'force')),
        call('toNew', { base: other, ...chosen('mergePatch', 'dslVlan') }),
        call('toOld', chosen('dslVlan', 'partial', 'force')),
        call('toOld', chosen('losses', 'strict', 'showSecrets')),
        call('convert', { ...chosen('partial'), ...(random(4) === 0 ? { to: layout } : {}) }),
        call('section', { to: layout, ...chosen('partial', 'asIs', 'force') }, { names: [name] }),
        call('diff', chosen('mergePatch'), { texts: [text, other] }),
        call('apply', {}, { texts: [text, other] }),
        call('apply', {}, { texts: [text, converter.diff(text, other).output ?? '[]'] }),
        call('check', chosen('dslVlan', 'force')),
        call('losses', chosen('showSecrets')),
        call('explain', chosen('fromResult'), { pointers: [placeIn(text, random).pointer] }),
    ];
}

const hasOutput = (f) => f !== 'check' && f !== 'losses';

const inPython = ({ f, options, ...rest }) => ({
    ...rest,
    function: f.replace(/[A-Z]/g, (letter) => `_${letter.toLowerCase()}`),
    options: {
        ...(hasOutput(f) ? { indent: 4 } : {}),
        ...Object.fromEntries(Object.entries(options).map(([name, value]) => [RENAMED[name] ?? name, value])),
    },
});

const unitsOf = (bytes, from, to) => bytes.toString('utf8', from, to).length;

// In UTF-16 units, found in another way than the package does.
function placed(place, text) {
    if (place.line === null) return place;
    const bytes = Buffer.from(text);
    const { offset, length } = place;
    return { ...place, offset: unitsOf(bytes, 0, offset), length: unitsOf(bytes, offset, offset + length) };
}

function expected(answer, { texts, options }) {
    const [text, other = options.base] = texts;
    return {
        ...answer,
        problems: answer.problems.map((problem) => placed(problem, problem.which === 'other' ? other : text)),
        losses: answer.losses.map((loss) => placed(loss, text)),
    };
}

const folder = join(root, 'examples');
const examples = readdirSync(folder).filter((name) => name.endsWith('.json'));

test(`every function answers what the native library does, of the examples and ${COUNT} documents`, () => {
    const calls = [];
    let other = '{}';
    for (const text of [...examples.map(example), ...documents(COUNT)]) {
        calls.push(...callsAbout(text, other, calls.length));
        other = text;
    }
    const { stdout, stderr, status } = spawnSync('python3', [join(root, 'tests/wasm/native.py')], {
        input: calls.map((call) => JSON.stringify(inPython(call))).join('\n'),
        env: { ...process.env, ...settings },
        encoding: 'utf8',
        maxBuffer: 2 ** 30,
    });
    assert.deepEqual([stderr, status], ['', 0]);
    const answers = stdout.trimEnd().split('\n');
    assert.equal(answers.length, calls.length);
    const statuses = {};
    calls.forEach((call, i) => {
        const answer = converter[call.f](...call.names, ...call.texts, ...call.pointers, call.options);
        const said = JSON.parse(answers[i]);
        statuses[answer.status] = (statuses[answer.status] ?? 0) + 1;
        const words = JSON.stringify(call).slice(0, 2000);
        if (said.wrong_usage === undefined) assert.deepEqual(answer, expected(said, call), words);
        else assert.equal(answer.status, 'wrong-usage', words);
    });
    console.log(`${calls.length} answers are the same: ${JSON.stringify(statuses)}`);
    for (const each of ['converted', 'rejected', 'wrong-layout', 'unreadable']) assert.ok(statuses[each] > 100, each);
});

test(`a value is found where JSON.parse has it, in ${COUNT} documents`, () => {
    const counts = { found: 0, nothing: 0 };
    for (const [i, text] of [...documents(COUNT)].entries()) {
        const { pointer, value } = placeIn(text, numbers(i + 3));
        const place = converter.find(text, pointer);
        if (value !== undefined) {
            assert.deepEqual(JSON.parse(text.slice(place.offset, place.offset + place.length)), value, pointer);
            ++counts.found;
        } else if (pointer !== '') {
            assert.equal(place, null, pointer);
            ++counts.nothing;
        }
    }
    console.log(`find: ${JSON.stringify(counts)}`);
    assert.ok(counts.found > COUNT / 2 && counts.nothing > COUNT / 100);
});

const tool = (...options) => spawnSync(join(native, 'bin/kcnvrt'), options, { encoding: 'utf8' }).stdout;

test('the names of the sections are those of the tool', () => {
    const lines = ['old', 'new'].flatMap((layout) => converter.sections(layout).map((name) => `${layout}\t${name}\n`));
    assert.equal(lines.join(''), tool('sections'));
});

test('the outputs of the examples are those of the tool', () => {
    assert.ok(examples.length >= 4);
    for (const name of examples) {
        const path = join(folder, name);
        const text = readFileSync(path, 'utf8');
        const { output, direction } = converter.convert(text);
        assert.equal(`${output}\n`, tool('convert', path));
        const dslVlan = name.startsWith('dsl');
        const whole = direction === 'to-new' ? converter.toNew(text, { dslVlan }) : converter.toOld(text, { dslVlan });
        assert.equal(`${whole.output}\n`, tool(direction, path, ...(dslVlan ? ['--dsl-vlan'] : [])));
        assert.equal(`${converter.convert(text, { indent: 'compact' }).output}\n`, tool('convert', '--compact', path));
        const to = direction === 'to-new' ? 'new' : 'old';
        for (const section of converter.sections(to)) {
            const { output: made } = converter.section(section, text, { to });
            assert.equal(made === null ? '' : `${made}\n`, tool('section', section, `--${direction}`, path), section);
        }
    }
});
