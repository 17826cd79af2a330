// Against a base: what is compared with what, and what is said where one of the two is not what it should be.
import assert from 'node:assert/strict';
import test from 'node:test';
import { browserForTests, example, openFile, packaged, rows, settled, status, textOf, until } from './browser.js';
import { download } from './steps.js';

const { apply, convert, toNew } = await import(packaged('node.js'));
const within = browserForTests();
const oldHome = example('home-gateway.old.json');
const newHome = example('home-gateway.new.json');

async function openBase(page, text) {
    await page.locator('#base-tab').click();
    const buffer = Buffer.from(text);
    await page.locator('#base-file').setInputFiles({ name: 'base.json', mimeType: 'application/json', buffer });
    await until(page, async () => (await textOf(page, 'base')) === text);
    await settled(page);
}

const facts = (page, side) => page.locator(`#${side}-facts`).textContent();
const marks = (page, side) => page.locator(`#${side} .cm-lint-marker-error`).count();

for (const name of ['home', 'dsl'])
    for (const layout of ['old', 'new'])
        test(`${name}, ${layout} layout: nothing has to change in what it becomes`, async () => {
            await within({}, async (page) => {
                const text = example(`${name}-gateway.${layout}.json`);
                await openFile(page, 'gateway.json', text);
                const base = convert(text).output;
                await openBase(page, base);
                assert.equal(await textOf(page, 'result'), '[]');
                await page.locator('#base-result').selectOption('applied');
                const other = layout === 'old' ? 'new' : 'old';
                await until(page, async () => (await textOf(page, 'result')) === base);
                assert.equal(await status(page), `Converted to the ${other} layout`);
                assert.match(await facts(page, 'input'), new RegExp(`^gateway\\.json · ${layout} layout`));
                assert.match(await facts(page, 'result'), new RegExp(`^${other} layout`));
                await download(page, () => page.locator('#save').click());
                assert.equal(page.saved.name, `gateway.${other}.json`);
            });
        });

test('what is made of a rejected configuration is said to be incomplete, and what the base would lose', async () => {
    await within({}, async (page) => {
        const text = oldHome.replace('"hour": "1"', '"hour": "soon"');
        await openFile(page, 'gateway.old.json', text);
        const partial = await textOf(page, 'result');
        const base = toNew(oldHome).output;
        await openBase(page, base);
        assert.equal(await status(page), 'Rejected: 1 error. The result is incomplete');
        assert.equal(
            await page.locator('#result-banner').textContent(),
            'Incomplete: 2 members with errors left out, which the base would lose.',
        );
        assert.deepEqual(apply(base, await textOf(page, 'result')).output, partial);
        await download(page, () => page.locator('#save').click());
        assert.equal(page.saved.name, 'gateway.patch.incomplete.new.json');
        await page.locator('#base-result').selectOption('applied');
        await until(page, async () => (await textOf(page, 'result')) === partial);
        assert.equal(await status(page), 'Rejected: 1 error. The result is incomplete');
    });
});

for (const [text, base, layout] of [
    [oldHome, oldHome, 'new'],
    [newHome, newHome, 'old'],
])
    test(`a base that is not in the ${layout} layout is refused where the result is`, async () => {
        await within({}, async (page) => {
            await openFile(page, 'gateway.json', text);
            await openBase(page, base);
            assert.match(await status(page), new RegExp(`^Another layout: the base is not in the ${layout} layout`));
            assert.equal(await textOf(page, 'result'), '');
            assert.equal(await marks(page, 'input'), 0);
            assert.equal(await marks(page, 'base'), 1);
        });
    });

for (const text of [oldHome, newHome])
    test('a base that cannot be read is said to be what cannot, and marked where it is', async () => {
        await within({}, async (page) => {
            await openFile(page, 'gateway.json', text);
            const made = await textOf(page, 'result');
            const shown = await facts(page, 'result');
            await openBase(page, '{"Device": ');
            assert.match(await status(page), /^The base is not readable: /);
            assert.equal(await textOf(page, 'result'), made);
            assert.equal(
                await page.locator('#result-banner').textContent(),
                'As it was when the base could be read last.',
            );
            assert.equal(await facts(page, 'result'), shown);
            assert.equal(await marks(page, 'input'), 0);
            assert.equal(await marks(page, 'base'), 1);
            await page.locator('#problems-tab').click();
            await rows(page, 'problems').first().click();
            assert.equal(await page.evaluate(() => document.activeElement.closest('.findings').id), 'base');
        });
    });
