// The page as a whole: how it opens, converts, refuses, says what it does, and is used by keyboard alone.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import test, { after, before } from 'node:test';
import {
    broken,
    browserForTests,
    example,
    initially,
    input,
    openFile,
    packaged,
    pageFile,
    paste,
    rows,
    selected,
    serve,
    settled,
    status,
    textOf,
    until,
} from './browser.js';

const { convert } = await import(packaged('node.js'));
const old = example('home-gateway.old.json');
const within = browserForTests();

let server;
before(async () => (server = await serve()));
after(() => server.close());

for (const origin of ['a file', 'a server']) {
    test(`from ${origin}, without a network, it opens with an example and converts each layout`, async () => {
        const address = origin === 'a server' ? server.address : undefined;
        await within({ address }, async (page) => {
            await page.context().setOffline(true);
            assert.equal(await status(page), 'Converted to the new layout');
            assert.match(await textOf(page, 'result'), /^\{\n {4}"Device"/);
            for (const name of ['home-gateway', 'dsl-gateway']) {
                await openFile(page, `${name}.old.json`, example(`${name}.old.json`));
                assert.equal(await status(page), 'Converted to the new layout');
                assert.match(await page.locator('#input-facts').textContent(), /old layout/);
                assert.equal(await textOf(page, 'result'), convert(example(`${name}.old.json`)).output);
                await openFile(page, `${name}.new.json`, example(`${name}.new.json`));
                assert.equal(await status(page), 'Converted to the old layout');
                assert.match(await page.locator('#result-facts').textContent(), /old layout/);
                assert.equal(await textOf(page, 'result'), convert(example(`${name}.new.json`)).output);
            }
        });
    });
}

test('nothing can be loaded or sent: the page refuses it itself', async () => {
    await within({ address: server.address }, async (page) => {
        server.requests.length = 0;
        const refused = await page.evaluate(async (address) => {
            const violations = [];
            addEventListener('securitypolicyviolation', ({ effectiveDirective }) =>
                violations.push(effectiveDirective),
            );
            const failed = await fetch(address).then(
                () => false,
                () => true,
            );
            const image = new Image();
            image.src = address;
            await new Promise((done) => (image.onerror = done));
            const script = document.createElement('script');
            script.textContent = 'window.ran = true';
            document.body.append(script);
            await new Promise((done) => setTimeout(done, 100));
            return { failed, ran: 'ran' in window, violations };
        }, server.address);
        assert.equal(refused.failed, true);
        assert.equal(refused.ran, false);
        assert.deepEqual(refused.violations.sort(), ['connect-src', 'img-src', 'script-src-elem']);
        assert.deepEqual(server.requests, []);
        page.complaints.length = 0; // of what was refused
    });
    assert.match(
        readFileSync(pageFile, 'utf8'),
        /content="default-src 'none'; script-src 'sha256-[^']+' 'wasm-unsafe-eval'; /,
    );
});

test('what is typed is converted, and an empty page says what to do', async () => {
    await within({}, async (page) => {
        await page.locator('#clear').click();
        await settled(page);
        assert.equal(await status(page), 'Paste, drop or open a configuration');
        assert.equal(await page.locator('#save').isDisabled(), true);
        await input(page).click();
        await page.keyboard.type('{"lang": "de"}');
        await settled(page);
        assert.equal(await status(page), 'Converted to the new layout');
        assert.equal(JSON.parse(await textOf(page, 'result')).Device.DeviceInfo.lang, 'de');
    });
});

test('the example goes with the first paste, a later one goes to the cursor', async () => {
    await within({}, async (page) => {
        await paste(page, '{"lang": "de"}');
        assert.equal(await textOf(page, 'input'), '{"lang": "de"}');
        await page.keyboard.press('Control+End');
        await paste(page, ' ');
        assert.equal(await textOf(page, 'input'), '{"lang": "de"} ');
    });
});

test('F8 goes from problem to problem and round, F6 from part to part', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', broken);
        const seen = [];
        for (let i = 0; i < 3; ++i) {
            await page.keyboard.press('F8');
            seen.push(await selected(page, 'input'));
        }
        assert.deepEqual(seen.slice(0, 2), ['5', '"often"']);
        await page.keyboard.press('Shift+F8');
        assert.equal(await selected(page, 'input'), '"often"');
        const part = () =>
            page.evaluate(() => document.activeElement.closest('.pane, .panel').getAttribute('aria-label'));
        const parts = [];
        for (let i = 0; i < 3; ++i) {
            await page.keyboard.press('F6');
            parts.push(await part());
        }
        assert.deepEqual(parts, ['Result', 'Findings', 'Input']);
        await page.keyboard.press('Shift+F6');
        assert.equal(await part(), 'Findings');
        await page.keyboard.press('Shift+F6');
        assert.equal(await part(), 'Result');
    });
});

test('tab leaves the editors, and reaches every button', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', broken);
        const seen = new Set();
        for (let i = 0; i < 60; ++i) {
            await page.keyboard.press('Tab');
            seen.add(
                await page.evaluate(
                    () => document.activeElement.id || document.activeElement.getAttribute('aria-label'),
                ),
            );
        }
        for (const name of [
            'keys',
            'theme',
            'towards',
            'section',
            'secrets',
            'clear',
            'open',
            'copy',
            'save',
            'problems-tab',
            'problems',
        ])
            assert.ok(seen.has(name), `${name} is reached: ${[...seen]}`);
        assert.equal(await textOf(page, 'input'), broken);
        await page.locator('#problems-tab').focus();
        await page.keyboard.press('ArrowRight');
        assert.equal(await page.locator('#losses').isVisible(), true);
        assert.equal(await page.evaluate(() => document.activeElement.id), 'losses-tab');
    });
});

// Each kind of what cannot be converted, with the words for it.
const BROKEN = {
    'a member without its end': ['{"lang": "de"', /^Not readable: /],
    'no JSON at all': ['lang=de', /^Not readable: /],
    'an array': ['[]', /^Not readable: /],
    'a member given twice': ['{"lang": "de", "lang": "en"}', /^Not readable: .*given twice/],
    'half a character': ['{"lang": "\\ud800"}', /^Not readable: /],
    'nesting without an end': ['['.repeat(100_000), /^Not readable: /],
    'a number beyond all bounds': ['{"lang": 1e999}', /^Not readable: /],
    'a value of another type': [broken, /^Rejected: 3 errors/],
};

for (const [name, [text, words]] of Object.entries(BROKEN)) {
    test(`${name} is answered, and the next text is converted`, async () => {
        await within({}, async (page) => {
            await openFile(page, 'broken.json', text);
            assert.match(await status(page), words);
            assert.ok((await rows(page, 'problems').count()) > 0);
            await rows(page, 'problems').first().click();
            await openFile(page, 'gateway.json', old);
            assert.equal(await status(page), 'Converted to the new layout');
        });
    });
}

test('a file that is no text is refused in words that help, and what was there stays', async () => {
    await within({}, async (page) => {
        const files = {
            'a.gz': [[0x1f, 0x8b, 8, 0, 0xff], 'a.gz is compressed by gzip: unpack it first'],
            'a.zip': [[0x50, 0x4b, 3, 4, 0xff], 'a.zip is a ZIP archive: unpack it first'],
            'a.json': [[0xff, 0xfe, 0x7b, 0], 'a.json is in UTF-16: save it as UTF-8'],
            'b.json': [[0x7b, 0xc3, 0x7d], 'b.json is not a text in UTF-8'],
        };
        for (const [name, [bytes, words]] of Object.entries(files)) {
            await page.locator('#file').setInputFiles({ name, mimeType: 'text/plain', buffer: Buffer.from(bytes) });
            await page.waitForFunction((words) => document.querySelector('#toast').textContent === words, words);
        }
        assert.match(await page.locator('#input-facts').textContent(), /^an example/);
        await openFile(page, 'marked.json', '\ufeff{"lang": "de"}');
        assert.equal(await status(page), 'Converted to the new layout');
        assert.match(await page.locator('#input-banner').textContent(), /byte-order mark/);
    });
});

test('the wrong direction is refused, with a button that mends it', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.old.json', old);
        await page.locator('#towards').selectOption('old');
        await until(page, () => page.locator('#remedy').isVisible());
        assert.match(await status(page), /^Another layout: /);
        await page.locator('#remedy').click();
        await until(page, async () => (await status(page)) === 'Converted to the new layout');
        assert.equal(await page.locator('#remedy').isVisible(), false);
    });
});

test('the result is saved under a name that says what it is', async () => {
    await within({}, async (page) => {
        const names = { 'gateway.old.json': old, 'gateway.json': old, 'attic.broken.old.json': broken };
        const saved = [];
        for (const [name, text] of Object.entries(names)) {
            await openFile(page, name, text);
            const [download] = await Promise.all([page.waitForEvent('download'), page.locator('#save').click()]);
            saved.push(download.suggestedFilename());
            assert.equal(readFileSync(await download.path(), 'utf8'), await textOf(page, 'result'));
        }
        assert.deepEqual(saved, ['gateway.new.json', 'gateway.new.json', 'attic.broken.incomplete.new.json']);
    });
    await within({}, async (page) => {
        await input(page).focus();
        const [download] = await Promise.all([page.waitForEvent('download'), page.keyboard.press('Control+S')]);
        assert.equal(download.suggestedFilename(), 'example.new.json');
    });
});

test('the footer says the version and the checksum of the module', async () => {
    await within({}, async (page) => {
        assert.match(await page.locator('#version').textContent(), /^k_cnvrt \d+\.\d+\.\d+$/);
        assert.match(await page.locator('#checksum').textContent(), /^[0-9a-f]{64}$/);
    });
});

// What the oldest browsers that the page is built for do not have.
function age() {
    const newer = [
        [String.prototype, 'isWellFormed', 'toWellFormed'],
        [Array.prototype, 'toReversed', 'toSorted', 'toSpliced', 'with'],
        [Array, 'fromAsync'],
        [Object, 'groupBy'],
        [Map, 'groupBy'],
        [Promise, 'try', 'withResolvers'],
        [URL, 'canParse', 'parse'],
        [Set.prototype, 'union', 'intersection', 'difference', 'isSubsetOf', 'isSupersetOf', 'isDisjointFrom'],
        [ArrayBuffer.prototype, 'resize', 'transfer'],
        [
            Object.getPrototypeOf(Object.getPrototypeOf([].values())),
            ...['map', 'filter', 'take', 'drop', 'flatMap', 'reduce', 'toArray', 'forEach', 'some', 'every', 'find'],
        ],
    ];
    for (const [owner, ...names] of newer) for (const name of names) delete owner[name];
}

test('it works in browsers of some years ago', async () => {
    await within({ init: initially({ inPage: age, inWorkers: age }) }, async (page) => {
        assert.equal(await page.evaluate(() => 'isWellFormed' in String.prototype), false);
        await openFile(page, 'gateway.json', '{\n"lang": "de",\n"\u{1F600}\u20ac": "\u{1F600}"\n}');
        assert.equal(await status(page), 'Converted to the new layout');
        await page.locator('#loss-status').getByText('1 loss, ').waitFor();
        await page.locator('#return-tab').click();
        await rows(page, 'return').filter({ hasText: '\u{1F600}' }).waitFor();
        await page.locator('#input .cm-line', { hasText: 'lang' }).click();
        await page.locator('#links-places button').first().waitFor();
        await page.keyboard.press('F1');
        await page.locator('#member .line').waitFor();
        await page.locator('#section').selectOption({ label: 'ssh' });
        await settled(page);
        await paste(page, '{"lang": "\ud800"}');
    });
});
