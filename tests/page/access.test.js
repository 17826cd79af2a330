// The page for everybody: what a checker of accessibility finds, in each state, in both colours, wide and narrow.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import test, { after, before } from 'node:test';
import { example, openFile, openPage, putCursor, settled, startBrowser } from './browser.js';

const axe = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');
const broken = example('home-gateway.old.json').replace('"hour": "1"', '"hour": "soon"');

let browser;
let close;
before(async () => ({ browser, close } = await startBrowser()));
after(() => close());

async function violations(page) {
    if (!(await page.evaluate(() => 'axe' in window))) await page.evaluate(axe);
    const { violations, passes } = await page.evaluate(() => window.axe.run());
    assert.ok(passes.length > 5, 'the checker has looked at the page');
    return violations.map(({ id, nodes }) => `${id}: ${nodes.map(({ html }) => html.slice(0, 120)).join(' | ')}`);
}

const STATES = {
    'at its start': () => {},
    'with problems': (page) => openFile(page, 'gateway.json', broken),
    'with its losses': async (page) => {
        await openFile(page, 'losses.json', example('home-gateway.old.json'));
        await page.locator('#loss-status').click();
        await page.locator('#losses li').first().waitFor();
    },
    'with what belongs together': async (page) => {
        await openFile(page, 'links.json', '{"lang": "de"}');
        await page.keyboard.press('Control+Home');
        for (let i = 0; i < 3; ++i) await page.keyboard.press('ArrowRight');
        await page.locator('#links-places button').first().waitFor();
    },
    empty: async (page) => {
        await page.locator('#clear').click();
        await settled(page);
    },
    'there and back': async (page) => {
        await openFile(page, 'gateway.json', broken);
        await page.locator('#return-tab').click();
        await page.locator('#return li').first().waitFor();
    },
    'against a base': (page) => page.locator('#base-tab').click(),
    'with one section': async (page) => {
        await openFile(page, 'section.json', example('home-gateway.old.json'));
        await page.locator('#section').selectOption({ label: 'ssh' });
        await settled(page);
    },
    'while the input cannot be read': async (page) => {
        await page.locator('#section').selectOption('');
        await settled(page);
        await putCursor(page, 'input', '{', 1);
        await page.keyboard.type('?');
        await page.locator('#result[data-kept=true]').waitFor({ state: 'attached' });
    },
    'with names to choose from': async (page) => {
        await openFile(page, 'names.json', '{"ntpclient": {}}');
        await putCursor(page, 'input', '{}', 1);
        await page.keyboard.press('Control+Space');
        await page.locator('.cm-tooltip-autocomplete [role=option]').first().waitFor();
        await page.waitForTimeout(300); // what is chosen is described beside them
    },
    'with what is known of a member': async (page) => {
        await page.keyboard.press('Escape');
        await openFile(page, 'member.json', '{"ntpclient": {"hour": "1"}}');
        await putCursor(page, 'input', '"hour"', 1);
        await page.keyboard.press('F1');
        await page.locator('#member .line').waitFor();
    },
    'under the mouse': async (page) => {
        await page.locator('#input .cm-line').first().locator('span', { hasText: 'hour' }).first().hover();
        await page.locator('.cm-tooltip-hover .member').waitFor();
    },
    'with its keys': (page) => page.locator('#keys').click(),
};

for (const colorScheme of ['light', 'dark']) {
    for (const viewport of [
        { width: 1280, height: 800 },
        { width: 360, height: 740 },
    ]) {
        test(`${colorScheme}, ${viewport.width} pixels wide: no violations, nothing beside the screen`, async () => {
            const page = await openPage(browser, { colorScheme, viewport });
            for (const [name, reach] of Object.entries(STATES)) {
                await reach(page);
                assert.deepEqual(await violations(page), [], name);
                assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), viewport.width, name);
            }
            await page.context().close();
        });
    }
}
