// What is taken for a text, what is not, and that nothing of it is lost on the way through the module.
import assert from 'node:assert/strict';
import test from 'node:test';
import vm from 'node:vm';
import { apply, diff, explain, find, section, toNew, toOld } from 'k-cnvrt';
import { example } from './tools.js';

const oldHome = example('home-gateway.old.json');
const compact = { indent: 'compact' };
const bytesOf = (text) => new TextEncoder().encode(text);

function inSharedMemory(bytes) {
    const shared = new Uint8Array(new SharedArrayBuffer(bytes.length));
    shared.set(bytes);
    return shared;
}

function detached(bytes) {
    structuredClone(bytes.buffer, { transfer: [bytes.buffer] });
    return bytes;
}

// Each text with the message about it, and the place of that.
function areUnreadable(cases) {
    for (const [text, message, offset, length] of cases) {
        const { status, output, problems } = toNew(text);
        assert.deepEqual([status, output], ['unreadable', null], String(text));
        const said = problems.map((problem) => [problem.message, problem.offset, problem.length]);
        assert.deepEqual(said, [[message, offset, length]]);
        assert.equal(diff('{}', text).problems[0].which, 'other');
    }
}

test('a text is a string or bytes, wherever they are', () => {
    const bytes = bytesOf(oldHome);
    const answer = toNew(oldHome);
    assert.equal(answer.status, 'converted');
    const larger = new Uint8Array([32, ...bytes, 32]);
    const texts = {
        'a Uint8Array': bytes,
        'an ArrayBuffer': bytes.buffer,
        'a part of a larger buffer': larger.subarray(1, -1),
        'a Buffer of Node': Buffer.from(oldHome),
        'shared memory': inSharedMemory(bytes),
        'a part of shared memory': inSharedMemory(larger).subarray(1, -1),
        'an array of another frame': vm.runInNewContext('Uint8Array').from(bytes),
        'a buffer of another frame': vm.runInNewContext('Uint8Array').from(bytes).buffer,
    };
    for (const [kind, text] of Object.entries(texts)) {
        const before = Buffer.from(text).toString('latin1');
        assert.deepEqual(toNew(text), answer, kind);
        assert.equal(Buffer.from(text).toString('latin1'), before, `${kind} is left as it was`);
    }
});

test('places in bytes are those of the string that they are', () => {
    const text = '{"\u20ac\u{1F600}": 1, "ifaces": 5, "\u{1F600}": }';
    const { problems } = toNew(text);
    assert.equal(text.slice(problems[0].offset), '}');
    for (const bytes of [bytesOf(text), bytesOf(text).buffer, inSharedMemory(bytesOf(text))])
        assert.deepEqual(toNew(bytes).problems, problems);
});

test('what is no text is thrown, and says which argument it is', () => {
    const bytes = bytesOf('{}');
    const others = [
        undefined, null, 5, {}, ['{}'], new String('{}'), new DataView(bytes.buffer), new Int8Array(bytes),
        new Uint8ClampedArray(bytes), new Uint16Array(bytes), inSharedMemory(bytes).buffer,
    ];
    const isNoText = (name) => ({
        name: 'TypeError', message: `${name} is neither a string nor a Uint8Array nor an ArrayBuffer`,
    });
    for (const other of others) {
        assert.throws(() => toNew(other), isNoText('text'));
        assert.throws(() => diff('{}', other), isNoText('the second text'));
        assert.throws(() => apply('{}', other), isNoText('the difference'));
        if (other !== undefined) assert.throws(() => toNew('{}', { base: other }), isNoText('base'));
        assert.throws(() => find(other, ''), isNoText('text'));
    }
    assert.equal(toNew('{}').status, 'converted');
});

test('bytes that were transferred elsewhere are thrown: they are not an empty text', () => {
    const isGone = { name: 'TypeError', message: /^the bytes of (text|the second text|base) are gone/ };
    for (const gone of [detached(bytesOf('{}')), detached(bytesOf('{}')).buffer]) {
        assert.throws(() => toNew(gone), isGone);
        assert.throws(() => diff('{}', gone), isGone);
        assert.throws(() => toNew('{}', { base: gone }), isGone);
    }
    assert.equal(toNew('{}').status, 'converted');
});

// A view of a buffer that may change its size.
function resizable(bytes, offset = 0) {
    const buffer = new ArrayBuffer(offset + bytes.length, { maxByteLength: 2 ** 16 });
    new Uint8Array(buffer).set(bytes, offset);
    return buffer;
}

test('a view of a buffer that changes its size is what it is at the time', () => {
    const bytes = bytesOf('{"lang": "de"}');
    const answer = toNew(bytes);
    const buffer = resizable(bytes, 10);
    const rest = new Uint8Array(buffer, 10);
    const part = new Uint8Array(buffer, 10, bytes.length);
    buffer.resize(buffer.byteLength + 5); // with NUL bytes
    assert.deepEqual(toNew(part), answer);
    assert.match(toNew(rest).problems[0].message, /^a NUL byte/);
    new Uint8Array(buffer).fill(32, 10 + bytes.length);
    assert.deepEqual(toNew(rest), answer);
    const shared = new SharedArrayBuffer(bytes.length, { maxByteLength: 2 ** 16 });
    new Uint8Array(shared).set(bytes);
    const growing = new Uint8Array(shared);
    assert.deepEqual(toNew(growing), answer);
    shared.grow(bytes.length + 1);
    assert.match(toNew(growing).problems[0].message, /^a NUL byte/);
    assert.deepEqual(toNew(resizable(bytes)), answer);
});

test('bytes whose buffer has become too small for them are thrown: they are not an empty text', () => {
    const isGone = { name: 'TypeError', message: /^the bytes of (text|the second text|base) are gone/ };
    const buffer = resizable(bytesOf('{"lang": "de"}'));
    const views = [new Uint8Array(buffer, 0, 14), new Uint8Array(buffer, 5), new Uint8Array(buffer, 13, 1)];
    buffer.resize(4);
    for (const gone of views) {
        assert.throws(() => toNew(gone), isGone);
        assert.throws(() => diff('{}', gone), isGone);
        assert.throws(() => toNew('{}', { base: gone }), isGone);
    }
    buffer.resize(5);
    assert.equal(toNew(views[1]).problems[0].message, 'there is nothing: the text is empty');
});

test('what bytes are is told by what they are, whatever they are called', () => {
    class Renamed extends Uint8Array {
        get [Symbol.toStringTag]() {
            return 'Renamed';
        }
    }
    assert.deepEqual(toNew(Renamed.from(bytesOf(oldHome))), toNew(oldHome));
    for (const name of ['Uint8Array', 'ArrayBuffer']) {
        const called = { [Symbol.toStringTag]: name, buffer: new ArrayBuffer(2), byteOffset: 0, byteLength: 2 };
        assert.throws(() => toNew(called), { name: 'TypeError', message: /^text is neither a string nor/ });
    }
});

test('a text with nothing in it says so', () => {
    const empty = ['', new Uint8Array(), new ArrayBuffer(0), bytesOf('{}').subarray(2)];
    areUnreadable(empty.map((text) => [text, 'there is nothing: the text is empty', 0, 0]));
    areUnreadable([[' \n\t', 'there is nothing but white space', 3, 0]]);
});

test('what is no JSON is unreadable, and says where', () => {
    areUnreadable([
        ['{"a": 1,}', 'the comma before this } is one too many', 8, 0],
        ['\ufeff{}', 'the text begins with a byte-order mark: save it as UTF-8 without one', 0, 0],
        ['{"a": 1e400}', 'this number is too large', 6, 5],
        ['{"a": 9223372036854775808}', 'this number is too large', 6, 19],
        [new Uint8Array([0x7b, 0x22, 0xff, 0x22, 0x7d]),
            'this is no UTF-8: the text is damaged, or in another encoding', 2, 2],
    ]);
});

test('a member that is given twice is refused, at any depth and whatever its value', () => {
    areUnreadable([
        ['{"a": 1, "a": 1}', '"a" is given twice in the same object', 9, 0],
        ['{"\u20ac": 1, "\u20ac": 2}', '"\u20ac" is given twice in the same object', 9, 0],
        ['{"a": 1, "\\u0061": 2}', '"\\u0061" is given twice in the same object', 9, 0],
        ['{"a": {"b": [1, {"c": 1, "d": 2, "c": null}]}}', '"c" is given twice in the same object', 33, 0],
    ]);
});

test('a NUL is no white space, and no end of a text', () => {
    areUnreadable([
        ['\0', 'a NUL byte: the file is damaged, or it is no text', 0, 0],
        ['{}\0', 'a NUL byte: the file is damaged, or it is no text', 2, 0],
        [bytesOf('{}\0{"a'), 'a NUL byte: the file is damaged, or it is no text', 2, 0],
        ['{"a": "\0"}', 'a control character inside a text: it is written as \\u and four hexadecimal digits', 7, 0],
        ['{"\\u0000": 1}', 'a text with the character \\u0000 cannot be converted', 1, 0],
    ]);
});

test('half of a character is refused, not replaced', () => {
    const half = 'this is half of a character, whose other half is missing';
    areUnreadable([
        ['{"a\ud83d": 1}', half, 3, 1],
        ['{"\u{1F600}": "\udc00"}', half, 8, 1],
        ['{"a": "\\ud800"}', 'this \\u is half of a pair whose other half is missing', 6, 0],
        [bytesOf('{"a": "\\udc00\\ud800"}'), 'this \\u is half of a pair whose other half is missing', 6, 0],
        [new Uint8Array([0x7b, 0x22, 0xed, 0xa0, 0x80, 0x22, 0x7d]),
            'this is no UTF-8: the text is damaged, or in another encoding', 2, 1],
    ]);
    const [problem] = diff('{}', '{\n  "é\u{1F600}": 1,\n  "é\u{1F600}x": "\ud800"\n}').problems;
    assert.deepEqual([problem.which, problem.line, problem.column], ['other', 3, 11]);
    assert.equal(toNew('{}', { base: '{"\ud800": 1}' }).problems[0].which, 'other');
});

test('a name or a pointer is a whole string: nothing of it is cut or replaced', () => {
    const isNoName = { name: 'TypeError', message: /is not a string without NUL and without halves of characters$/ };
    for (const name of ['dns\0', 'dns\ud800', undefined, 5]) {
        assert.throws(() => section(name, '{}', { to: 'new' }), isNoName);
        assert.throws(() => find('{"\ufffd": 1}', name), isNoName);
        assert.throws(() => explain('{"\ufffd": 1}', name), isNoName);
    }
});

test('integers, reals and texts come out as they went in', () => {
    const values = '[9007199254740993,-9223372036854775808,1,1.0,-0.0,1e-7,0.30000000000000004,"\u{1F600}\\u0001"]';
    const replacing = (value) => `[{"op":"replace","path":"","value":${value}}]`;
    for (const value of [values, '"\\u0000"'])
        assert.equal(apply('[]', replacing(value), compact).output, value);
    for (const [convert, home] of [[toNew, oldHome], [toOld, example('home-gateway.new.json')]]) {
        const text = home.replace('"uptime": 86412', `"uptime": ${values}`);
        assert.notEqual(text, home);
        const { output, problems } = convert(text, compact);
        assert.deepEqual(problems, []);
        assert.ok(output.includes(`"uptime":${values}`));
    }
});

test('what JSON.parse cannot tell apart is different', () => {
    const difference = (one, other) => JSON.parse(diff(`[${one}]`, `[${other}]`).output).length;
    assert.equal(difference('9007199254740993', '9007199254740992'), 1);
    assert.equal(difference('1', '1.0'), 1);
    assert.equal(difference('-0', '0'), 0);
    assert.equal(difference('1.0', '1e0'), 0);
    assert.equal(difference('"\u20ac"', '"\\u20ac"'), 0);
});
