// What the page finds: problems, losses, what belongs together, and what is different there and back.
import assert from 'node:assert/strict';
import test from 'node:test';
import {
    broken,
    browserForTests,
    framed,
    openFile,
    putCursor,
    rows,
    selected,
    settled,
    status,
    until,
} from './browser.js';

const within = browserForTests();

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

// What comes back from the new layout whether it was there or not.
const allThere = '{"lang": "de", "ifaces": {}, "route": [], "tr069": {"DeviceInfo": {}}, "passwd": []';

test('losses are said without a click, and listed with what comes back', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', `${allThere}, "nobody": {"pass": "Quartz"}, "max_table_id": "12"}`);
        await until(page, async () => (await page.locator('#loss-status').textContent()) === '2 losses');
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
        await until(page, async () => (await page.locator('#loss-status').textContent()) === '1 addition');
        await openFile(page, 'nothing.json', `${allThere}}`);
        await until(page, async () => (await page.locator('#loss-status').textContent()) === 'Nothing is lost');
        assert.equal(await page.locator('#losses-count').textContent(), '');
    });
});

test('what belongs to the member at the cursor lights up on the other side, and a key leads there', async () => {
    await within({}, async (page) => {
        await page.locator('#input .cm-line', { hasText: '"mtu": 1492' }).click();
        await until(page, async () => (await framed(page, 'result', 'partner')).join('') === '"mtu": 1492');
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
        await until(page, async () => (await framed(page, 'input', 'partner')).join('').includes('"is_wan": true'));
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

// Keeps the answers of workers about links until they are let through, in `held`.
function holdLinks() {
    window.held = [];
    window.Worker = class extends Worker {
        set onmessage(take) {
            super.onmessage = (event) => {
                if (event.data.answer?.partners === undefined) take(event);
                else window.held.push(() => take(event));
            };
        }
    };
}

test('an answer about links that comes too late is dropped', async () => {
    await within({ init: holdLinks }, async (page) => {
        await openFile(page, 'gateway.json', '{\n"lang": "de",\n"nobody": 1,\n"max_table_id": 5\n}');
        const words = () => page.locator('#links-words').textContent();
        const isHeld = () => page.waitForFunction(() => window.held.length > 0);
        // What is done while the answer is on its way; then it comes, and what it would say is looked for.
        const letThrough = (meanwhile = () => {}) =>
            page.evaluate(async (meanwhile) => {
                const { view } = document.querySelector('#input .cm-content').cmTile;
                new Function('view', `(${meanwhile})(view)`)(view);
                for (const answer of window.held.splice(0)) answer();
                await new Promise((done) => setTimeout(done, 20));
                return document.querySelectorAll('.cm-partner').length;
            }, String(meanwhile));

        await putCursor(page, 'input', '"lang"', 1);
        await isHeld();
        assert.equal(await letThrough((view) => view.dispatch({ changes: { from: 0, insert: ' ' } })), 0);
        await settled(page);
        await isHeld(); // the same question about the other text
        assert.equal(await letThrough(), 1);
        assert.match(await words(), /^\/lang becomes/);

        await putCursor(page, 'input', '"max_table_id"', 1);
        await isHeld();
        await putCursor(page, 'input', '"nobody"', 1);
        await page.waitForTimeout(600); // the cursor has rested there
        await letThrough();
        assert.match(await words(), /^\/lang becomes/);
        await isHeld();
        await letThrough();
        assert.equal(await words(), '/nobody is lost.');

        await putCursor(page, 'input', '"lang"', 1);
        await isHeld();
        assert.equal(await letThrough(() => document.querySelector('#links-switch').click()), 0);
        assert.equal(await words(), '');
    });
});

test('the resting mouse asks, too; a member that is lost or made anew is said to be', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', '{\n"lang": "de",\n"nobody": 1\n}');
        await page.locator('#input .cm-line', { hasText: 'nobody' }).hover();
        const words = () => page.locator('#links-words').textContent();
        await until(page, async () => (await words()) === '/nobody is lost.');
        await page.locator('#input .cm-line', { hasText: 'lang' }).hover();
        await until(page, async () => (await words()) === '/lang becomes');
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
