// What the page says of the layouts: the words of docs/mapping, and names for every member that the examples have.
import assert from 'node:assert/strict';
import { readdirSync, readFileSync } from 'node:fs';
import { join } from 'node:path';
import test from 'node:test';
import { example, root } from './browser.js';

const source = (name) => import(join(root, 'page/source', name));
const { description, proposals } = await source('advice.js');
const { expectedAt } = await source('cursor.js');
const { members, skipBlanks } = await source('json_text.js');
const { Reference } = await source('reference.js');
const { sentencesOf } = await source('sentences.js');

const layouts = JSON.parse(readFileSync(join(root, 'text/layouts.json'), 'utf8'));
const reference = new Reference(layouts);
const CURSOR = '|';

const at = (marked) => ({ text: marked.replace(CURSOR, ''), offset: marked.indexOf(CURSOR), to: null });
const optionsAt = (marked) => proposals(reference, at(marked))?.options ?? [];
const namesAt = (marked) => optionsAt(marked).map(({ name }) => name);

test('the sentences are those of docs/mapping, each of them and no others', () => {
    const folder = join(root, 'docs/mapping');
    const written = new Set();
    for (const page of readdirSync(folder).filter((name) => name !== 'README.md'))
        for (const [, words] of readFileSync(join(folder, page), 'utf8').matchAll(/^- (.*)$/gm)) written.add(words);
    // Those of containers are in the schemas only.
    const ofLines = layouts.lines.flatMap(({ to_new, to_old }) => [to_new, to_old]).filter((one) => one !== undefined);
    const said = new Set(ofLines.flatMap((one) => sentencesOf(layouts.behaviours[one]).map(({ words }) => words)));
    assert.ok(said.size > 100, `${said.size}`);
    // Alone they are words in a table there.
    for (const words of ['any value stays the same', 'any value is dropped'])
        for (const set of [said, written]) set.delete(words);
    assert.deepEqual([...said].sort(), [...written].sort());
});

// The text with a member's name cut short by the cursor, for each member: { marked, name }.
function* cursorsIn(text, from) {
    for (const { name, start, from: value } of members(text, from)) {
        if (text[start] === '"') yield { marked: `${text.slice(0, start + 1)}${CURSOR}${text.slice(value)}`, name };
        yield* cursorsIn(text, value);
    }
}

// A text in pieces, each with one section and its way to it, and one with the names of all: what is offered depends on
// nothing else, and each question reads a whole text.
function piecesOf(text) {
    const { Device, ...others } = JSON.parse(text);
    const each = (part, wrap) => Object.entries(part).map(([name, value]) => wrap({ [name]: value }));
    const emptied = (part) => Object.fromEntries(Object.entries(part).map(([name]) => [name, 0]));
    const pieces = [...each(others, (one) => one), emptied(Device === undefined ? others : { Device, ...others })];
    if (Device !== undefined)
        pieces.push(...[...each(Device, (one) => one), emptied(Device)].map((one) => ({ Device: one })));
    return pieces.map((piece) => JSON.stringify(piece, null, 1));
}

for (const name of ['home-gateway', 'dsl-gateway']) {
    for (const layout of ['old', 'new']) {
        test(`${name}.${layout}.json: each member that is described is proposed at its place`, () => {
            const pieces = piecesOf(example(`${name}.${layout}.json`));
            let count = 0;
            const missing = [];
            for (const { marked, name } of pieces.flatMap((text) => [...cursorsIn(text, skipBlanks(text, 0))])) {
                if (/^(\d+|max_instance)$/.test(name)) continue; // an entry of a numbered list
                const [offset, plain] = [marked.indexOf(CURSOR), marked.replace(CURSOR, '')];
                const { path } = expectedAt(plain, offset);
                const own = [...path, { name, type: null }];
                const known = reference.describe(layout, own);
                const isDescribed = known.lines.some(({ kind, isPart }) => kind !== 'dropped' && !isPart);
                const isFree = reference.names(layout, path).length === 0;
                if (!isDescribed || isFree) continue;
                ++count;
                const names = proposals(reference, { text: plain, offset, to: null }).options.map((one) => one.name);
                if (!names.includes(name)) missing.push(own.map((step) => step.name).join('/'));
            }
            assert.deepEqual(missing, []);
            assert.ok(count > 100, `${count}`);
        });
    }
}

test('names are those of the place, without those that are there, by the type of the entry', () => {
    const named = namesAt('{"ntpclient": {"enable": "1", "h|", "time": 1}}');
    assert.deepEqual(named.sort(), ['dhcp-servers', 'dst', 'hour', 'servers', 'use_dhcp']);
    const service = (type) =>
        namesAt(`{"ifaces": {"e": {"services": {"s": {"a|" \n "type": "${type}"}}, "type": "ethernet"}}}`);
    assert.ok(service('ppp').includes('auth') && !service('ppp').includes('gwip'));
    assert.ok(service('ip').includes('gwip') && !service('ip').includes('auth'));
    assert.deepEqual(namesAt('{"ifaces": {"|": {}}}'), []);
    assert.deepEqual(namesAt('{"lang": "de"}|'), []);
    assert.deepEqual(namesAt('{"nobody": {"|"}}'), []);
});

test('before anything is there, names of both layouts are offered, each with its layout', () => {
    const details = Object.fromEntries(optionsAt('{|}').map(({ name, detail }) => [name, detail]));
    assert.equal(details.ifaces, 'old layout');
    assert.equal(details.Device, 'new layout');
    assert.ok(!namesAt('{"lang": "de", |}').includes('Device'));
});

test('values are those that are taken, with what they become', () => {
    const details = (marked) => Object.fromEntries(optionsAt(marked).map(({ name, detail }) => [name, detail]));
    assert.deepEqual(Object.keys(details('{"ifaces": {"e": {"type": "|"}}}')).sort(), [
        '"3g"',
        '"atm"',
        '"auto"',
        '"bridge"',
        '"ethernet"',
        '"lte"',
    ]);
    assert.deepEqual(details('{"qos": {"filters": [{"protocol": "t|"}]}}'), {
        '"icmp"': 'becomes 1',
        '"igmp"': 'becomes 2',
        '"tcp"': 'becomes 6',
        '"udp"': 'becomes 17',
    });
    const protocols = details('{"Device": {"QoS": {"Classification": {"1": {"Protocol": |}}}}}');
    assert.equal(protocols[6], 'becomes "tcp"');
    assert.equal(details('{"wifi": {"BGProtection": |}}')['"1"'], 'becomes "enable"');
    assert.deepEqual(Object.keys(details('{"wifi": {"BandWidth": |}}')), ['"0"', '"1"', '"2"', '"3"', '"4"']);
    assert.deepEqual(namesAt('{"lang": "|"}'), []);
});

test('what is typed fits to what is there: colons, commas, and where the cursor comes', () => {
    const result = (marked, name) => {
        const { text, offset, to } = at(marked);
        const answer = proposals(reference, { text, offset, to });
        const option = answer.options.find((one) => one.name === name);
        const comma = option.before === null ? '' : ',';
        const head = text.slice(0, option.before ?? 0) + comma + text.slice(option.before ?? 0, answer.from);
        const put = `${option.text.slice(0, option.caret)}${CURSOR}${option.text.slice(option.caret)}`;
        return head + put + text.slice(answer.to);
    };
    assert.equal(result('{"la|}', 'lang'), '{"lang": |}');
    assert.equal(result('{|}', 'ifaces'), '{"ifaces": {|}}');
    assert.equal(result('{"nt|": {}}', 'ntpclient'), '{"ntpclient"|: {}}');
    assert.equal(result('{"ntpclient": {"ho|"}}', 'hour'), '{"ntpclient": {"hour": "|"}}');
    assert.equal(result('{"ntpclient": {|"dst": 1}}', 'hour'), '{"ntpclient": {"hour": "|","dst": 1}}');
    assert.equal(result('{"lang": "de"\n"ma|"}', 'max_table_id'), '{"lang": "de",\n"max_table_id": |}');
    assert.equal(result('{"ifaces": {"e": {"type": "br|"}}}', '"bridge"'), '{"ifaces": {"e": {"type": "bridge"|}}}');
    assert.equal(result('{"ifaces": {"e": {"type": |}}}', '"lte"'), '{"ifaces": {"e": {"type": "lte"|}}}');
});

test('a member is described by its counterpart, its values and its messages', () => {
    const told = (text, member) => description(reference, { text, offset: text.indexOf(`"${member}"`) + 1 });
    const text =
        '{"ifaces": {"e": {"type": "atm", "services": {"s": {"type": "ppp", "auth": "2"}}}}, "nobody": 1, ' +
        '"dmz": {"x": 1}}';
    const { pointer, layout, lines } = told(text, 'auth');
    assert.equal(pointer, '/ifaces/e/services/s/auth');
    assert.equal(layout, 'old');
    assert.deepEqual(lines[0].places, ['/Device/Ifaces/atm/*/services/ppp/*/auth']);
    const [{ to, sentences }] = lines[0].told;
    assert.equal(to, 'new');
    assert.match(
        sentences[0].words,
        /^text, "" or decimal digits.*others are reported: Invalid field "auth", is not digit$/,
    );
    assert.deepEqual(
        sentences.map(({ crossing }) => crossing),
        ['some', 'all', 'none'],
    );
    assert.deepEqual([told(text, 'nobody').lines, told(text, 'nobody').isCarried], [[], false]);
    assert.deepEqual(told(text, 'x').lines[0].places, ['/Device/Services/dmz/**']);
    assert.deepEqual(told(text, 'ifaces').sections.slice(0, 1), ['/Device/Ifaces']);
    const made = told('{"Device": {"Ifaces": {"ethernet": {"1": {"mtu": 1, "services": {}}}}}}', 'mtu');
    assert.deepEqual(made.lines[0].places, ['/ifaces/[ethernet]/mtu']);
    assert.equal(told('{"nobody": 1}', 'nobody'), null);
});
