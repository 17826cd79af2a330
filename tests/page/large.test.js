// Large texts: the page stays alive, since its worker does the work.
import assert from 'node:assert/strict';
import test, { after, before } from 'node:test';
import { large, openFile, openPage, settled, startBrowser, status, textOf } from './browser.js';

let browser;
let close;
before(async () => ({ browser, close } = await startBrowser()));
after(() => close());

// Counts, on the page's own thread, every instance of a module and every call of its functions.
function countCalls() {
    window.moduleCalls = 0;
    const { Instance } = WebAssembly;
    WebAssembly.Instance = function (...given) {
        ++window.moduleCalls;
        const { exports } = new Instance(...given);
        const counted =
            (call) =>
            (...values) => (++window.moduleCalls, call(...values));
        const wrap = ([name, value]) => [name, typeof value === 'function' ? counted(value) : value];
        return { exports: Object.fromEntries(Object.entries(exports).map(wrap)) };
    };
    for (const way of ['instantiate', 'instantiateStreaming', 'compile']) {
        const original = WebAssembly[way];
        WebAssembly[way] = (...given) => (++window.moduleCalls, original.apply(WebAssembly, given));
    }
}

test("a document of 4 MB: every call of the module is the worker's, and typing is answered", async () => {
    const page = await openPage(browser, { init: countCalls });
    const text = large(4e6);
    assert.ok(text.length > 3.9e6 && text.length < 5e6, `${text.length}`);
    await openFile(page, 'large.json', text);
    assert.equal(await status(page), 'Converted to the new layout');
    await page.keyboard.press('Control+Home');
    await page.keyboard.press('ArrowRight');
    await page.keyboard.type('\n"nobody": 1,');
    await settled(page);
    assert.equal((await textOf(page, 'input')).length, text.length + '\n    "nobody": 1,'.length);
    assert.equal(await status(page), 'Converted to the new layout');
    assert.ok((await textOf(page, 'result')).length > 4e6);
    await page.keyboard.type(' ');
    await page.keyboard.press('Control+Space');
    await page.locator('.cm-tooltip-autocomplete [role=option]').first().waitFor();
    await page.keyboard.press('Escape');
    await page.keyboard.press('F1');
    await page.locator('#member').getByText('/nobody').waitFor();
    assert.equal(await page.evaluate(() => window.moduleCalls), 0);
    await page.context().close();
});

test('the counter counts', async () => {
    const page = await openPage(browser, { init: countCalls });
    // The smallest module there is.
    const counted = await page.evaluate(() => {
        new WebAssembly.Instance(new WebAssembly.Module(new Uint8Array([0, 0x61, 0x73, 0x6d, 1, 0, 0, 0])));
        return window.moduleCalls;
    });
    assert.equal(counted, 1);
    await page.context().close();
});

test('an answer is shown only while its question stands', async () => {
    const page = await openPage(browser);
    await openFile(page, 'large.json', large(1e6));
    // What the result says whenever it changes, and what the input says then.
    await page.evaluate(() => {
        const textOf = (id) => document.querySelector(`#${id} .cm-content`).cmTile.view.state.doc.toString();
        const language = (id) => /"lang": "(\w+)"/.exec(textOf(id))?.[1];
        window.changes = [];
        const note = () => {
            const said = language('result');
            if (said !== window.changes.at(-1)?.[0]) window.changes.push([said, language('input')]);
        };
        // Every answer writes its facts.
        new MutationObserver(note).observe(document.querySelector('#result-facts'), { childList: true });
    });
    for (const key of ['Control+Home', 'ArrowDown', 'End', 'ArrowLeft', 'ArrowLeft']) await page.keyboard.press(key);
    for (let i = 0; i < 8; ++i) {
        await page.keyboard.type(String(i)); // into the value
        await page.waitForTimeout(500 + 60 * i); // from before the question is asked to after it is answered
    }
    await settled(page);
    const changes = await page.evaluate(() => window.changes);
    assert.deepEqual(changes.at(-1), ['en01234567', 'en01234567']);
    for (const [said, asked] of changes) assert.equal(said, asked);
    await page.context().close();
});

test('a text of 16 MB on one line, and a million members, are answered', async () => {
    const page = await openPage(browser);
    await openFile(page, 'line.json', `{"lang": "${'x'.repeat(16e6)}"}`);
    assert.equal(await status(page), 'Converted to the new layout');
    const members = Array.from({ length: 1e6 }, (_, i) => `"m${i}":1`).join();
    await openFile(page, 'members.json', `{${members}}`);
    assert.equal(await status(page), 'Converted to the new layout');
    await openFile(page, 'small.json', '{"lang": "de"}');
    assert.equal(JSON.parse(await textOf(page, 'result')).Device.DeviceInfo.lang, 'de');
    await page.context().close();
});
