// What the page says where something goes wrong with a text, with the module or with the worker, and that it goes on.
import assert from 'node:assert/strict';
import test from 'node:test';
import {
    broken,
    browserForTests,
    example,
    initially,
    openFile,
    putCursor,
    rows,
    settled,
    status,
    textOf,
    until,
} from './browser.js';

const within = browserForTests();

// Runs in each worker before its own script: a text with the member BREAKS makes it fail in that way, at that question.
function breakWorkers() {
    let way = null;
    self.addEventListener('message', (event) => {
        const { question, about } = event.data;
        const [, asked, how] = /"BREAKS": "(\w+) (\w+)"/.exec(about?.text ?? '') ?? [];
        way = asked === question ? how : null;
        if (way !== 'worker') return;
        event.stopImmediatePropagation();
        setTimeout(() => {
            throw new Error('lost');
        });
    });
    const { Instance } = WebAssembly;
    WebAssembly.Instance = function (...given) {
        const { exports } = new Instance(...given);
        const malloc = (length) => (way === 'memory' ? 0 : exports.malloc(length));
        const outside = -16; // where no memory is
        const k_text_run = (request) => exports.k_text_run(way === 'trap' ? outside : request);
        return { exports: { ...exports, malloc, k_text_run } };
    };
}

const init = initially({ inWorkers: breakWorkers });

const breaking = (question, way) => `{"lang": "de", "BREAKS": "${question} ${way}"}`;
const BROKEN = {
    'a module that traps': ['trap', /^The conversion stopped by a fault of its own\. The next change starts it anew$/],
    'memory that ends': ['memory', /^Too large for a page: kcnvrt takes larger ones$/],
    'a worker that is lost': ['worker', /^The conversion does not run: .*lost.*\. The next change tries again$/],
};

for (const [name, [way, words]] of Object.entries(BROKEN)) {
    test(`${name}: it is said, nothing is shown for a result, and the next change is converted`, async () => {
        await within({ init }, async (page) => {
            assert.equal(await status(page), 'Converted to the new layout');
            await openFile(page, 'breaks.json', breaking('conversion', way));
            await until(page, async () => words.test(await status(page)));
            assert.equal(await textOf(page, 'result'), '');
            assert.equal(await page.locator('#save').isDisabled(), true);
            assert.match(await page.locator('#losses').textContent(), /^Nothing is converted/);
            await putCursor(page, 'input', '"BREAKS"', 1);
            await page.keyboard.type('NO-');
            await until(page, async () => (await status(page)) === 'Converted to the new layout');
            assert.equal(JSON.parse(await textOf(page, 'result')).Device.DeviceInfo.lang, 'de');
            page.complaints.length = 0; // of what was broken
        });
    });

    test(`${name}, where losses are looked for: it is not said that nothing is lost`, async () => {
        await within({ init }, async (page) => {
            await openFile(page, 'breaks.json', breaking('lossesOf', way));
            assert.equal(await status(page), 'Converted to the new layout');
            await until(page, async () => /could not be found out/.test(await page.locator('#losses').textContent()));
            assert.equal(await page.locator('#loss-status').isVisible(), false);
            await openFile(page, 'gateway.json', '{"lang": "de", "nobody": 1}');
            await until(page, async () => /^1 loss/.test(await page.locator('#loss-status').textContent()));
            page.complaints.length = 0;
        });
    });

    test(`${name}, where a text goes there and back: it is said`, async () => {
        await within({ init }, async (page) => {
            await openFile(page, 'breaks.json', breaking('thereAndBack', way));
            await page.locator('#return-tab').click();
            await page.locator('#return').getByText('Nothing can be converted there and back.').waitFor();
            await openFile(page, 'gateway.json', '{"lang": "de", "nobody": 1}');
            await rows(page, 'return').filter({ hasText: '/nobody' }).waitFor();
            page.complaints.length = 0;
        });
    });
}

const REJECTED = {
    old: [broken, 'new', 'auth'],
    new: [example('home-gateway.new.json').replace(/"hour": \d+/, '"hour": "soon"'), 'old', 'hour'],
};

for (const [layout, [text, other, missing]] of Object.entries(REJECTED)) {
    test(`of a rejected configuration in the ${layout} layout there is what could be converted`, async () => {
        await within({}, async (page) => {
            await openFile(page, `gateway.${layout}.json`, text);
            assert.match(await status(page), /^Rejected: \d errors?\. The result is incomplete$/);
            assert.match(await page.locator('#result-banner').textContent(), /^Incomplete: \d+ members? with errors/);
            const made = await textOf(page, 'result');
            assert.ok(Object.keys(JSON.parse(made)).length > 0);
            assert.ok(!made.includes(`"${missing}"`), missing);
            const [download] = await Promise.all([page.waitForEvent('download'), page.locator('#save').click()]);
            assert.equal(download.suggestedFilename(), `gateway.incomplete.${other}.json`);
        });
    });
}

test('while a text cannot be read its last result stays, and is said to be that', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', '{"lang": "de"}');
        const made = await textOf(page, 'result');
        await putCursor(page, 'input', '}');
        await page.keyboard.type(', "na');
        await until(page, async () => /^Not readable/.test(await status(page)));
        await settled(page);
        assert.equal(await textOf(page, 'result'), made);
        assert.match(
            await page.locator('#result-banner').textContent(),
            /^As it was when the input could be read last\.$/,
        );
        for (const button of ['copy', 'save']) assert.equal(await page.locator(`#${button}`).isDisabled(), true);
        await openFile(page, 'other.json', '{"lang": ');
        assert.equal(await textOf(page, 'result'), '');
        await openFile(page, 'gateway.json', '{"lang": "de"}');
        assert.equal(await page.locator('#result-banner').isVisible(), false);
        assert.equal(await page.locator('#save').isDisabled(), false);
    });
});

test('the list of another configuration opens with its problems', async () => {
    await within({}, async (page) => {
        await page.locator('#losses-tab').click();
        await openFile(page, 'gateway.json', broken);
        assert.equal(await page.locator('#problems').isVisible(), true);
        assert.match(await rows(page, 'problems').first().innerText(), / · left out of the partial result/);
        // What a note says besides is a row of its own.
        await rows(page, 'problems').filter({ hasText: 'left out of the partial result: ' }).first().waitFor();
    });
});

test('a section that the other layout has does not hold up the next configuration: a click converts it', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.old.json', example('home-gateway.old.json'));
        await page.locator('#section').selectOption({ label: 'ssh' });
        await settled(page);
        await openFile(page, 'gateway.new.json', example('home-gateway.new.json'));
        assert.match(await status(page), /^Another layout: /);
        assert.equal(await page.locator('#input-facts').textContent(), 'gateway.new.json · 121 KB');
        assert.equal(await page.locator('#remedy').textContent(), 'Convert everything');
        await page.locator('#remedy').click();
        await until(page, async () => (await status(page)) === 'Converted to the old layout');
        assert.match(await page.locator('#input-facts').textContent(), /new layout/);
        assert.equal(await page.locator('#section').inputValue(), '');
    });
});

test('a problem of many lines is underlined in its first', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.old.json', '{\n"lang": "de",\n"ntpclient": {\n"hour": "1"}}');
        await page.locator('#towards').selectOption('old');
        await until(page, () => page.locator('#remedy').isVisible());
        assert.deepEqual(await page.locator('#input .cm-lintRange').allTextContents(), ['{']);
        assert.match(await status(page), /^Another layout: .* it has no object "Device"$/);
        assert.equal(await page.locator('#input-facts').textContent(), 'gateway.old.json · 44 B');
    });
});
