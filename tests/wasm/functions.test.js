// What the functions answer, and where they say that a problem is.
import assert from 'node:assert/strict';
import test from 'node:test';
import { apply, check, convert, diff, explain, find, losses, section, sections, toNew, toOld } from 'k-cnvrt';
import { example } from './tools.js';

const oldHome = example('home-gateway.old.json');
const newHome = example('home-gateway.new.json');
const compact = { indent: 'compact' };

const withAuth = (auth, before = '') =>
    `{${before}"ifaces": {"eth4": {"type": "ethernet", "services": {"ppp0": {"type": "ppp", "auth": ${auth}}}}}}`;

// The values that the problems of an answer point to.
const valuesAt = (text, { problems }) => problems.map(({ offset, length }) => text.slice(offset, offset + length));

test('a configuration becomes one of the other layout', () => {
    for (const [text, made, direction] of [[oldHome, toNew(oldHome), 'to-new'], [newHome, toOld(newHome), 'to-old']]) {
        assert.equal(made.status, 'converted');
        assert.equal(made.direction, direction);
        assert.deepEqual(made.problems, []);
        assert.deepEqual(convert(text), made);
    }
});

test('an output is indented by four, as asked, or not at all', () => {
    assert.equal(diff('{"a": 1}', '{}', { mergePatch: true }).output, '{\n    "a": null\n}');
    assert.equal(diff('{"a": 1}', '{}', { mergePatch: true, indent: 2 }).output, '{\n  "a": null\n}');
    assert.equal(diff('{"a": 1}', '{}', { mergePatch: true, indent: 0 }).output, '{"a": null}');
    assert.equal(diff('{"a": 1}', '{}', { mergePatch: true, ...compact }).output, '{"a":null}');
});

test('a rejected text is an answer, and has what can be converted of it where that is asked for', () => {
    const text = withAuth('"often"');
    const rejected = toNew(text);
    assert.equal(rejected.status, 'rejected');
    assert.equal(rejected.output, null);
    assert.deepEqual(rejected.problems, [
        {
            severity: 'error', which: 'text', pointer: '/ifaces/eth4/services/ppp0/auth', line: 1, column: 87,
            offset: 86, length: 7, function: 'parse_service_ppp', message: 'Invalid field "auth", is not digit',
        },
    ]);
    const partial = toNew(text, { partial: true });
    assert.equal(partial.status, 'rejected');
    assert.match(partial.output, /"ppp0"/);
    assert.deepEqual(partial.problems.map((problem) => problem.severity), ['error', 'note']);
});

test('offsets are those of a string, whatever characters stand before', () => {
    for (const before of ['', '"é": 1, ', '"\u20ac\u{1F600}": "\u{1F600}\u{1F600}",\n', '"\\ud83d\\ude00": 1,']) {
        const text = withAuth('"ö\u{1F600}"', before);
        const fromString = toNew(text);
        assert.deepEqual(valuesAt(text, fromString), ['"ö\u{1F600}"']);
        assert.deepEqual(toNew(Buffer.from(text)), fromString);
        assert.equal(fromString.problems[0].line, before.includes('\n') ? 2 : 1);
    }
});

test('columns are counted in characters', () => {
    const [problem] = toNew(withAuth('"x"', '"\u{1F600}é": 1, ')).problems;
    assert.equal(problem.column, withAuth('"x"').indexOf('"x"') + 1 + [...'"\u{1F600}é": 1, '].length);
});

test('every problem of many is at its place', () => {
    const users = Array.from({ length: 300 }, (_, i) => `"ppp${i + 100}": {"type": "ppp", "auth": "\u20ac${i}"}`);
    const text = `{"ifaces": {"eth4": {"type": "ethernet", "services": {${users.join(', ')}}}}}`;
    const answer = toNew(text);
    assert.equal(answer.problems.length, 300);
    assert.deepEqual(valuesAt(text, answer), Array.from({ length: 300 }, (_, i) => `"\u20ac${i}"`));
});

test('a problem says which text it is in', () => {
    assert.equal(toNew(oldHome, { base: '{"Device": ' }).problems[0].which, 'other');
    assert.equal(apply('{"a": 1}', '[{"op": "remove", "path": "/b"}]').problems[0].which, 'other');
    assert.equal(diff('{', '{}').problems[0].which, 'text');
});

test('a problem without a place has none', () => {
    const [problem] = section('none', '{}', { to: 'new' }).problems;
    const { pointer, line, column, offset, length } = problem;
    assert.deepEqual([pointer, line, column, offset, length], [null, null, null, null, null]);
});

test('another layout is refused, unless it is forced', () => {
    assert.equal(toNew(newHome).status, 'wrong-layout');
    assert.equal(toNew(newHome).output, null);
    assert.equal(toNew('{"Device": {}}', { force: true }).status, 'converted');
    assert.equal(convert(oldHome, { to: 'old' }).status, 'wrong-layout');
    assert.equal(convert(oldHome, { to: 'new' }).direction, 'to-new');
});

test('a section is converted by its name, from itself or from a whole configuration', () => {
    const dns = JSON.stringify(JSON.parse(oldHome).dns);
    assert.ok(sections('new').includes('dns') && sections('old').includes('dns'));
    const made = section('dns', dns, { to: 'new', asIs: true });
    assert.deepEqual([made.status, made.direction], ['converted', 'to-new']);
    assert.deepEqual(JSON.parse(made.output).ipv4, JSON.parse(toNew(oldHome).output).Device.Services.dns.ipv4);
    const taken = section('dns', oldHome, { to: 'new' });
    assert.deepEqual([taken.output, taken.problems[0].function], [made.output, 'layout']);
    const back = section('dns', made.output, { to: 'old' });
    assert.deepEqual([back.status, back.direction], ['converted', 'to-old']);
});

test('losses are told with their places, by themselves or beside a result', () => {
    const text = oldHome.replace('{', '{"\u{1F600}": "\u20ac", ');
    const told = losses(text);
    assert.deepEqual([told.status, told.output, told.direction], ['converted', null, 'to-new']);
    const dropped = told.losses.find(({ pointer }) => pointer === '/\u{1F600}');
    assert.deepEqual(dropped, {
        kind: 'dropped', pointer: '/\u{1F600}', line: 1, column: 7, offset: 7, length: 3,
        before: '"\u20ac"', after: null,
    });
    const changed = told.losses.find(({ pointer }) => pointer === '/max_table_id');
    assert.equal(text.slice(changed.offset, changed.offset + changed.length), changed.before);
    assert.deepEqual(check(text).losses, told.losses);
    assert.deepEqual(convert(text, { losses: true }).losses, told.losses);
    assert.deepEqual(toNew(text).losses, []);
    assert.equal(toNew(text, { strict: true }).status, 'rejected');
    assert.equal(check(withAuth('"x"')).status, 'rejected');
});

test('a member is explained, and a place of the result', () => {
    const there = JSON.parse(explain(withAuth('"3"'), '/ifaces/eth4/services/ppp0/auth').output);
    const result = '/Device/Ifaces/ethernet/1/services/ppp/1/auth';
    assert.deepEqual([there.answer, there.effects], ['used', [{ pointer: result, with: 3, without: null }]]);
    const back = JSON.parse(explain(withAuth('"3"'), result, { fromResult: true }).output);
    assert.deepEqual([back.value, back.sources[0].pointer], [3, '/ifaces/eth4/services/ppp0/auth']);
    assert.equal(explain('{}', '/nowhere').status, 'wrong-usage');
});

test('a secret is masked where something is told of it, unless one asks', () => {
    const pointer = '/ifaces/eth4/services/ppp0/password';
    const answers = [explain(oldHome, pointer), explain(oldHome, pointer, { showSecrets: true })];
    const [masked, shown] = answers.map(({ output }) => output);
    assert.ok(masked.includes('***') && !masked.includes(btoa('Maple-7-kettle')));
    assert.ok(!shown.includes('***') && shown.includes(btoa('Maple-7-kettle')));
});

test('a value is found by its pointer', () => {
    assert.deepEqual(find('{"\u20ac\u{1F600}": ["\u{1F600}", 5]}', '/\u20ac\u{1F600}/1'), { offset: 15, length: 1 });
    assert.deepEqual(find(' {}', ''), { offset: 1, length: 2 });
    assert.equal(find('{"a": 1}', '/b'), null);
});

test('against a base the output is what has to change in it', () => {
    const base = toNew(oldHome).output;
    const changed = oldHome.replace('"mtu": 1492', '"mtu": 1400');
    assert.notEqual(changed, oldHome);
    const patch = toNew(changed, { base, ...compact });
    assert.equal(apply(base, patch.output).output, toNew(changed).output);
    const mergePatch = toNew(changed, { base, mergePatch: true, ...compact });
    assert.equal(apply(base, mergePatch.output).output, toNew(changed).output);
    assert.equal(patch.output[0] + mergePatch.output[0], '[{');
});

test('an option that an operation does not take is wrong usage', () => {
    assert.deepEqual(diff('{}', '{}', { dslVlan: true }).problems.map(({ message }) => message),
        ['the operation does not take these flags']);
    assert.equal(toNew('{}', { mergePatch: true }).status, 'wrong-usage');
    assert.equal(toOld('{}', { partial: true, dslVlan: undefined, showSecrets: false }).status, 'converted');
});

test('what cannot be meant is thrown', () => {
    const calls = [
        () => toNew(),
        () => toNew({}),
        () => toNew(null),
        () => toNew('{}', { base: null }),
        () => diff('{}'),
        () => apply('{}', []),
        () => toNew('{}', { ident: 2 }),
        () => toNew('{}', { indent: 32 }),
        () => toNew('{}', { indent: 1.5 }),
        () => toNew('{}', { partial: 'yes' }),
        () => toNew('{}', { toString: true }),
        () => section('dns', '{}'),
        () => section('dns', '{}', { to: 'newest' }),
        () => section('dns\0', '{}', { to: 'new' }),
        () => section(5, '{}', { to: 'new' }),
        () => sections(),
        () => convert('{}', { to: 'back' }),
        () => explain('{}'),
        () => find('{}', null),
    ];
    for (const call of calls) assert.throws(call, TypeError, String(call));
    const noOptions = { name: 'TypeError', message: 'the options are no object' };
    for (const options of [null, 5, true, 'partial', [], () => {}]) {
        assert.throws(() => toNew('{}', options), noOptions);
        assert.throws(() => convert('{}', options), noOptions);
        assert.throws(() => diff('{}', '{}', options), noOptions);
        assert.throws(() => section('dns', '{}', options), noOptions);
        assert.throws(() => explain('{}', '', options), noOptions);
    }
    assert.equal(toNew('{}').status, 'converted');
});
