// What the page does for a person, by mouse and by keyboard, from a file and from a server.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import test, { after, before } from 'node:test';
import {
    example,
    input,
    openFile,
    openPage,
    packaged,
    pageFile,
    result,
    serve,
    settled,
    startBrowser,
    status,
    textOf,
} from './browser.js';

const { convert, section } = await import(packaged('node.js'));
const old = example('home-gateway.old.json');
const broken = JSON.stringify(
    {
        ifaces: { eth4: { type: 'ethernet', mac: 5, services: { ppp0: { type: 'ppp', auth: 'often' } } } },
        ntpclient: { enable: '1', hour: 'soon' },
        users: { list: { admin: { pass: 'Harbor-5-violet' } } },
    },
    null,
    2,
);

let browser;
let close;
let server;
before(async () => {
    ({ browser, close } = await startBrowser());
    server = await serve();
});
after(async () => {
    await close();
    await server.close();
});

// within(OPTIONS, async (page) => ...): a test's own window; the page must not complain in it.
async function within(options, work) {
    const page = await openPage(browser, options);
    try {
        await work(page);
        assert.deepEqual(page.complaints, []);
    } finally {
        await page.context().close();
    }
}

const rows = (page, list) => page.locator(`#${list} li > button`);

// The text that is selected in an editor.
const selected = (page, id) =>
    page.evaluate((id) => {
        const { state } = document.querySelector(`#${id} .cm-content`).cmTile.view;
        return state.sliceDoc(state.selection.main.from, state.selection.main.to);
    }, id);

async function paste(page, text) {
    await page.evaluate((text) => {
        const clipboardData = new DataTransfer();
        clipboardData.setData('text/plain', text);
        const target = document.querySelector('#input .cm-content');
        target.focus();
        target.dispatchEvent(new ClipboardEvent('paste', { clipboardData, bubbles: true, cancelable: true }));
    }, text);
    await settled(page);
}

async function copied(page, id) {
    return page.evaluate((id) => {
        const clipboardData = new DataTransfer();
        const target = document.querySelector(`#${id} .cm-content`);
        target.dispatchEvent(new ClipboardEvent('copy', { clipboardData, bubbles: true, cancelable: true }));
        return clipboardData.getData('text/plain');
    }, id);
}

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

test('a file can be dropped', async () => {
    await within({}, async (page) => {
        await page.evaluate(() => {
            const dataTransfer = new DataTransfer();
            dataTransfer.items.add(new File(['{"lang": "de"}'], 'dropped.json'));
            const target = document.querySelector('#result');
            target.dispatchEvent(new DragEvent('dragover', { dataTransfer, bubbles: true, cancelable: true }));
            target.dispatchEvent(new DragEvent('drop', { dataTransfer, bubbles: true, cancelable: true }));
        });
        await page.waitForFunction(() => document.querySelector('#input-facts').textContent.startsWith('dropped.json'));
        await settled(page);
        assert.equal(await textOf(page, 'input'), '{"lang": "de"}');
        assert.equal(await page.locator('#drop').isHidden(), true);
    });
});

test('problems are listed by section, marked at their line, and lead there', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', broken);
        assert.equal(await status(page), 'Rejected: 3 errors. The result is incomplete');
        assert.match(
            await page.locator('#result-banner').textContent(),
            /^Incomplete: [34] members? with errors left out/,
        );
        const sections = await page.locator('#problems h3').allTextContents();
        assert.deepEqual(
            sections.map((words) => words.split(' ')[0]),
            ['ifaces', 'ntpclient'],
        );
        assert.equal(await page.locator('#problems-count').textContent(), '3');
        assert.ok((await page.locator('#input .cm-lint-marker-error').count()) >= 3);
        await rows(page, 'problems').filter({ hasText: '/ifaces/eth4/services/ppp0/auth' }).first().click();
        assert.equal(await selected(page, 'input'), '"often"');
        assert.equal(await page.evaluate(() => document.activeElement.closest('.pane')?.id), 'input');
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
        await settledAfter(page, () => page.locator('#remedy').isVisible());
        assert.match(await status(page), /^Another layout: /);
        await page.locator('#remedy').click();
        await settledAfter(page, async () => (await status(page)) === 'Converted to the new layout');
        assert.equal(await page.locator('#remedy').isVisible(), false);
    });
});

async function settledAfter(page, isDone) {
    for (let i = 0; i < 600 && !(await isDone()); ++i) await page.waitForTimeout(50);
    assert.ok(await isDone());
}

test('one section alone', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.old.json', old);
        const names = await page.locator('#section option').allTextContents();
        assert.ok(names.includes('ssh') && names.includes('wifi') === false, names.join());
        await page.locator('#section').selectOption({ label: 'ssh' });
        await settledAfter(page, async () => (await textOf(page, 'result')).length < 200);
        assert.equal(await textOf(page, 'result'), section('ssh', old, { to: 'new' }).output);
    });
});

test('secrets are masked on the screen, in messages and in copies, until one asks', async () => {
    const document =
        '{"users": {"list": {"admin": {"pass": "Harbor-5-violet"}}}, "sysusers": {"list": [{"password": 5}]}}';
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', document);
        const screen = () => page.evaluate(() => document.body.innerText);
        assert.doesNotMatch(await screen(), /Harbor/);
        await input(page).focus();
        await page.keyboard.press('Control+A');
        assert.equal(
            await copied(page, 'input'),
            document.replace('"Harbor-5-violet"', '"***"').replace('5}', '"***"}'),
        );
        await result(page).focus();
        await page.keyboard.press('Control+A');
        assert.doesNotMatch(await copied(page, 'result'), /Harbor|SGFyYm9y/);
        await page.locator('#secrets').click();
        await settledAfter(page, async () => /Harbor-5-violet/.test(await screen()));
        await input(page).focus();
        await page.keyboard.press('Control+A');
        assert.equal(await copied(page, 'input'), document);
        await page.reload();
        await settled(page);
        assert.equal(await page.locator('#secrets').getAttribute('aria-pressed'), 'false');
    });
});

test('a secret that is typed is masked when the cursor leaves it, and moving a piece keeps it', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', '{"lang": "de"}');
        await page.keyboard.press('Control+Home');
        await page.keyboard.press('ArrowRight');
        await page.keyboard.type('"pass": "Quartz"', { delay: 5 });
        await settled(page);
        assert.equal(await page.locator('#input .cm-mask').count(), 0);
        await page.keyboard.type(', ');
        await settled(page);
        assert.equal(await page.locator('#input .cm-mask').count(), 1);
        await page.keyboard.press('Control+A');
        const clipboard = await copied(page, 'input');
        assert.match(clipboard, /"pass": "\*\*\*"/);
        await paste(page, clipboard);
        assert.match(await textOf(page, 'input'), /"pass": "Quartz"/);
        assert.equal(await page.locator('#input .cm-mask').count(), 1);
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

// What comes back from the new layout whether it was there or not.
const allThere = '{"lang": "de", "ifaces": {}, "route": [], "tr069": {"DeviceInfo": {}}, "passwd": []';

test('losses are said without a click, and listed with what comes back', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', `${allThere}, "nobody": {"pass": "Quartz"}, "max_table_id": "12"}`);
        await settledAfter(page, async () => (await page.locator('#loss-status').textContent()) === '2 losses');
        await page.locator('#loss-status').click();
        const list = rows(page, 'losses');
        assert.equal(await list.count(), 2);
        assert.match(
            await list.filter({ hasText: '/nobody' }).innerText(),
            /^−\s+1:\d+\s+\/nobody\s+\{"pass": "\*\*\*"\}\s+dropped$/,
        );
        assert.match(await list.filter({ hasText: '/max_table_id' }).innerText(), /"12"\s*→\s*12\s+changed$/);
        await list.filter({ hasText: '/max_table_id' }).click();
        assert.equal(await selected(page, 'input'), '"12"');
        await openFile(page, 'more.json', '{"lang": "de"}');
        await settledAfter(page, async () => (await page.locator('#loss-status').textContent()) === '1 addition');
        await openFile(page, 'nothing.json', `${allThere}}`);
        await settledAfter(page, async () => (await page.locator('#loss-status').textContent()) === 'Nothing is lost');
        assert.equal(await page.locator('#losses-count').textContent(), '');
    });
});

// What is framed in an editor.
const framed = (page, id, kind) => page.locator(`#${id} .cm-${kind}`).allTextContents();

test('what belongs to the member at the cursor lights up on the other side, and a key leads there', async () => {
    await within({}, async (page) => {
        await page.locator('#input .cm-line', { hasText: '"mtu": 1492' }).click();
        await settledAfter(page, async () => (await framed(page, 'result', 'partner')).join('') === '"mtu": 1492');
        assert.equal((await framed(page, 'input', 'asked')).join(''), '"mtu": 1492');
        const words = () => page.locator('#links-words').textContent();
        assert.equal(await words(), '/ifaces/eth4/services/ppp0/mtu becomes');
        assert.ok((await page.locator('#result .cm-links').getByText('◆').count()) >= 1);
        await page.keyboard.press('Control+Enter');
        assert.equal(await page.evaluate(() => document.activeElement.closest('.pane').id), 'result');
        const line = () => page.locator('#result .cm-activeLine').textContent();
        assert.match(await line(), /"mtu": 1492/);

        for (let i = 0; i < 8; ++i) await page.keyboard.press('ArrowUp');
        assert.match(await line(), /"is_wan": true/);
        await settledAfter(page, async () =>
            (await framed(page, 'input', 'partner')).join('').includes('"is_wan": true'),
        );
        assert.equal(await words(), '/Device/Ifaces/ethernet/1/is_wan is made of');
        const places = await page.locator('#links-places code').allTextContents();
        assert.deepEqual(places, ['/ifaces/eth4/is_wan', '/ifaces/eth4/type']);

        await page.locator('#links-switch').click();
        assert.deepEqual(await framed(page, 'input', 'partner'), []);
        await page.locator('#input .cm-line', { hasText: '"lang"' }).click();
        await page.waitForTimeout(600);
        assert.deepEqual(await framed(page, 'result', 'partner'), []);
    });
});

test('the resting mouse asks, too; a member that is lost or made anew is said to be', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', '{\n"lang": "de",\n"nobody": 1\n}');
        await page.locator('#input .cm-line', { hasText: 'nobody' }).hover();
        const words = () => page.locator('#links-words').textContent();
        await settledAfter(page, async () => (await words()) === '/nobody is lost.');
        await page.locator('#input .cm-line', { hasText: 'lang' }).hover();
        await settledAfter(page, async () => (await words()) === '/lang becomes');
        const [name] = (await page.locator('#links-places code').first().textContent()).split('/').slice(-1);
        await page.locator('#links-places button').first().click();
        assert.ok((await page.locator('#result .cm-activeLine').textContent()).includes(`"${name}": `), name);
    });
});

test('there and back shows what does not come back, and leads there', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', '{"lang": "de", "nobody": 1, "max_table_id": "12"}');
        await page.locator('#return-tab').click();
        await rows(page, 'return').filter({ hasText: '/nobody' }).waitFor();
        const changed = rows(page, 'return').filter({ hasText: '/max_table_id' });
        assert.match(await changed.innerText(), /^~\s+1:\d+\s+\/max_table_id\s+"12"\s*→\s*12$/);
        await rows(page, 'return').filter({ hasText: '/nobody' }).click();
        assert.equal(await selected(page, 'input'), '1');
    });
});

test('against a base: a JSON Patch, a JSON Merge Patch, and the base with the changes', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', '{"lang": "de"}');
        const converted = JSON.parse(await textOf(page, 'result'));
        await page.locator('#base-tab').click();
        const content = JSON.stringify({ Device: { ...converted.Device, DeviceInfo: { lang: 'en' } } });
        await page
            .locator('#base-file')
            .setInputFiles({ name: 'base.json', mimeType: 'application/json', buffer: Buffer.from(content) });
        const answer = async (kind, isDone) => {
            await page.locator('#base-result').selectOption(kind);
            await settledAfter(page, async () => isDone(JSON.parse((await textOf(page, 'result')) || 'null')));
        };
        await answer(
            'patch',
            (patch) => Array.isArray(patch) && patch.length === 1 && patch[0].path === '/Device/DeviceInfo/lang',
        );
        await answer('merge', (patch) => patch?.Device?.DeviceInfo?.lang === 'de' && !('Users' in patch.Device));
        await answer('applied', (applied) => applied?.Device?.DeviceInfo?.lang === 'de' && 'Users' in applied.Device);
        await page.locator('#clear-base').click();
        await settledAfter(page, async () => !Array.isArray(JSON.parse(await textOf(page, 'result'))));
    });
});

test('the footer says the version and the checksum of the module', async () => {
    await within({}, async (page) => {
        assert.match(await page.locator('#version').textContent(), /^k_cnvrt \d+\.\d+\.\d+$/);
        assert.match(await page.locator('#checksum').textContent(), /^[0-9a-f]{64}$/);
    });
});
