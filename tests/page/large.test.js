// Large texts: the page stays alive, since its worker does the work.
import assert from 'node:assert/strict';
import test, { after, before } from 'node:test';
import { example, input, openFile, openPage, settled, startBrowser, status, textOf } from './browser.js';

let browser;
let close;
before(async () => ({ browser, close } = await startBrowser()));
after(() => close());

// A configuration of about as many bytes: an interface many times, under other names.
function large(bytes) {
    const configuration = JSON.parse(example('home-gateway.old.json'));
    const [pattern] = Object.values(configuration.ifaces).filter(({ type }) => type === 'ethernet');
    const one = JSON.stringify(pattern, null, 4).length * 1.3;
    for (let i = 0; i * one < bytes; ++i) configuration.ifaces[`eth${100 + i}`] = pattern;
    return JSON.stringify(configuration, null, 4);
}

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

test('an answer never comes after that of a later change', async () => {
    const page = await openPage(browser);
    await openFile(page, 'large.json', large(1e6));
    await input(page).focus();
    for (let i = 0; i < 5; ++i) {
        await page.keyboard.press('Control+A');
        await page.keyboard.insertText(`{"lang": "l${i}"}`);
        await page.waitForTimeout(i * 30);
    }
    await settled(page);
    assert.equal(JSON.parse(await textOf(page, 'result')).Device.DeviceInfo.lang, 'l4');
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
