// Texts that are too large or meant to do harm: they are answered or refused, and the next call works.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import test from 'node:test';
import { createConverter } from 'k-cnvrt/core';
import { built, example, packaged } from './tools.js';

const oldHome = example('home-gateway.old.json');
const compiled = (path) => new WebAssembly.Module(readFileSync(path));
const whole = compiled(packaged('k_cnvrt.wasm'));
// Its memory ends at 8 MiB.
const small = compiled(join(built, 'release/k_cnvrt_small_module.wasm'));

const MIB = 1024 * 1024;

// A converter, and the memories of the instances that it has started, in their order.
function watched(module) {
    const memories = [];
    const { Instance } = WebAssembly;
    const converter = createConverter(module);
    const during = (call) => {
        WebAssembly.Instance = class extends Instance {
            constructor(...given) {
                super(...given);
                memories.push(this.exports.memory);
            }
        };
        try {
            return call(converter);
        } finally {
            WebAssembly.Instance = Instance;
        }
    };
    const works = () => during(({ toNew }) => toNew(oldHome)).status === 'converted';
    return { during, memories, works, last: () => memories[memories.length - 1].buffer.byteLength };
}

const list = (bytes) => `[${'0,'.repeat(bytes / 2)}0]`;

test('a text that does not fit into the memory is an answer, and the next call works', () => {
    const { during, works, memories } = watched(small);
    for (const size of [1, 2, 3, 4, 6, 8, 12, 16]) {
        const { status, output, problems } = during(({ diff }) => diff('[]', list(size * MIB)));
        assert.equal(status, 'out-of-memory', `${size} MiB`);
        assert.equal(output, null);
        assert.deepEqual(problems.map(({ function: who, message }) => [who, message]),
            [['module', 'there is not enough memory for this']]);
        assert.ok(works());
    }
    assert.equal(memories.length, 9);
});

test('find says by an error that a text does not fit, and the next call works', () => {
    const { during, works } = watched(small);
    const place = () => during(({ find }) => find(list(16 * MIB), '/5'));
    assert.throws(place, { name: 'ModuleError', message: 'there is not enough memory for this' });
    assert.ok(works());
});

test('wherever memory ends, the answer says so and the next call works', () => {
    const { during, works, memories } = watched(small);
    const statuses = new Map();
    for (let elements = 1000; elements < 400000; elements = Math.ceil(elements * 1.07)) {
        const text = `{"a": [${'{"b": [1.5]},'.repeat(elements)}0]}`;
        const { status } = during(({ apply }) => apply(text, '{"c": "d"}'));
        statuses.set(status, (statuses.get(status) ?? 0) + 1);
        assert.ok(works());
    }
    assert.deepEqual([...statuses.keys()].sort(), ['converted', 'out-of-memory']);
    assert.equal(memories.length, 1 + statuses.get('out-of-memory'));
});

test('an instance that traps is replaced', () => {
    const { during, works, memories } = watched(whole);
    assert.ok(works());
    // The module's own data, overwritten: nothing in it can be trusted.
    new Uint8Array(memories[0].buffer).fill(0xff, MIB);
    const { status, output, problems } = during(({ toNew }) => toNew(oldHome));
    assert.equal(status, 'stopped');
    assert.equal(output, null);
    assert.match(problems[0].message, /^the module stopped: /);
    assert.ok(works());
    assert.equal(memories.length, 2);
});

test('memory beyond 64 MiB is given back', () => {
    const { during, works, memories, last } = watched(whole);
    const text = list(8 * MIB);
    const { status, output } = during(({ apply }) => apply(text, '[]', { indent: 'compact' }));
    assert.equal(status, 'converted');
    assert.equal(output, text);
    assert.ok(last() > 64 * MIB);
    assert.ok(works());
    assert.equal(memories.length, 2);
    assert.ok(last() < 8 * MIB);
});

test('a thousand rounds leave the memory as it is', () => {
    const { during, last, memories } = watched(whole);
    const round = ({ toNew, toOld, diff, apply, section, convert, check, explain, find }) => {
        const made = toNew(oldHome).output;
        const back = toOld(made).output;
        const difference = diff(oldHome, back).output;
        assert.equal(apply(oldHome, difference).status, 'converted');
        assert.equal(section('none', back, { to: 'new' }).status, 'rejected');
        assert.equal(convert('{"Device": {"Users": 5, "Ifaces": []}}', { partial: true }).status, 'rejected');
        assert.equal(toNew('{"a').status, 'unreadable');
        assert.ok(check('{"users": {}, "a": 5}').losses.length > 0);
        assert.equal(explain('{"dns": {"ifname": "eth0"}}', '/dns/ifname').status, 'converted');
        assert.equal(find(made, '/Device').length > 0, true);
    };
    const sizes = new Set();
    for (let i = 0; i < 1000; ++i) {
        during(round);
        sizes.add(last());
    }
    assert.equal(memories.length, 1);
    assert.equal(sizes.size, 1);
});

test('hostile texts are answered or refused', () => {
    const { during, works } = watched(whole);
    const nested = (depth) => '['.repeat(depth) + ']'.repeat(depth);
    const objects = (depth) => '{"a":'.repeat(depth) + '{}' + '}'.repeat(depth);
    const members = Array.from({ length: 1000000 }, (_, i) => `"m${i}":${i}`);
    const texts = [
        [nested(2048), 'converted'],
        [nested(2049), 'unreadable'],
        [nested(1000000), 'unreadable'],
        ['['.repeat(16 * MIB), 'unreadable'],
        [objects(2047), 'converted'],
        [objects(100000), 'unreadable'],
        [`{${members.join(',')}}`, 'converted'],
        [`{${members.join(',')},"m999":0}`, 'unreadable'],
        [`["${'\u20ac'.repeat(5 * MIB)}"]`, 'converted'],
        [`["${'x'.repeat(16 * MIB)}`, 'unreadable'],
        [' '.repeat(16 * MIB), 'unreadable'],
        [`[${'1'.repeat(MIB)}]`, 'unreadable'],
        [`[0.${'1'.repeat(MIB)}]`, 'converted'],
        [`{"${'k'.repeat(MIB)}":1}`, 'converted'],
        ['{"ifaces":{"2147483647":{"type":"ethernet"}}}', 'converted'],
        ['\0'.repeat(MIB), 'unreadable'],
    ];
    for (const [text, expected] of texts) {
        const { status } = during(({ diff }) => diff(text, text));
        assert.equal(status, expected, `${text.slice(0, 20)}... of ${text.length}`);
        during(({ convert }) => convert(text, { partial: true, force: true }));
        assert.ok(works());
    }
});
