// Pictures of the page, compared with those in docs/page/. What was seen is left in build/page/pictures, and with
// KCNVRT_PICTURES=store kept as the pictures that are to be seen.
import assert from 'node:assert/strict';
import { existsSync, mkdirSync, readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import test from 'node:test';
import pixelmatch from 'pixelmatch';
import { PNG } from 'pngjs';
import { browserForTests, built, example, large, openFile, putCursor, root, settled, status } from './browser.js';

// Of a picture, what may differ: another version of the browser draws some edges of letters in another way.
const TOLERANCE = 0.02;

const stored = join(root, 'docs/page');
const seen = join(built, 'pictures');

const within = browserForTests();

const broken = example('home-gateway.old.json')
    .replace('"mac": "02:00:5e:00:53:10"', '"mac": 5')
    .replace('"hour": "1"', '"hour": "soon"');

const PICTURES = {
    start: { reach: () => {} },
    problems: {
        reach: async (page) => {
            await openFile(page, 'gateway.old.json', broken);
            await page.keyboard.press('F8');
            await page.locator('#links-words code').first().waitFor();
        },
    },
    links: {
        reach: async (page) => {
            await page.locator('#loss-status').click();
            await page.locator('#input .cm-line', { hasText: '"mtu": 1492' }).click();
            await page.locator('#result .cm-partner').first().waitFor();
        },
    },
    losses: {
        reach: async (page) => {
            await openFile(page, 'gateway.old.json', example('home-gateway.old.json'));
            await page.locator('#loss-status').click();
            await page.locator('#losses li > button').first().click();
            await page.locator('#links-words code').first().waitFor();
        },
    },
    names: {
        reach: async (page) => {
            await putCursor(page, 'input', '"mtu": 1492', 0);
            await page.keyboard.press('Enter');
            await page.keyboard.press('ArrowUp');
            await page.keyboard.type('"a');
            await page.locator('.cm-completionInfo').waitFor();
        },
    },
    member: {
        reach: async (page) => {
            await openFile(page, 'gateway.old.json', example('home-gateway.old.json'));
            await putCursor(page, 'input', '"auth": "2"', 1);
            await page.keyboard.press('F1');
            await page.locator('#member .line').waitFor();
            await page.locator('#links-places button').first().waitFor();
        },
    },
    large: { reach: (page) => openFile(page, 'attic.old.json', large(4e6)) },
    empty: {
        reach: async (page) => {
            await page.locator('#clear').click();
            await settled(page);
        },
    },
    narrow: { viewport: { width: 360, height: 740 }, reach: (page) => openFile(page, 'gateway.old.json', broken) },
};

// The checksum is another one after every change of the library.
async function picture(page) {
    if (!/^(Not readable|Paste)/.test(await status(page))) await page.locator('#loss-status').waitFor();
    await page.waitForTimeout(300); // blinking and fading ends
    const style = 'footer { visibility: hidden }';
    return page.screenshot({ style, caret: 'hide', animations: 'disabled' });
}

for (const [name, { viewport = { width: 1280, height: 800 }, reach }] of Object.entries(PICTURES)) {
    for (const colorScheme of ['light', 'dark']) {
        test(`the picture ${name}, ${colorScheme}`, async () => {
            const file = `${name}-${colorScheme}.png`;
            let now;
            await within({ colorScheme, viewport }, async (page) => {
                await reach(page);
                now = await picture(page);
            });
            mkdirSync(seen, { recursive: true });
            writeFileSync(join(seen, file), now);
            if (process.env.KCNVRT_PICTURES === 'store') {
                mkdirSync(stored, { recursive: true });
                writeFileSync(join(stored, file), now);
            }
            assert.ok(existsSync(join(stored, file)), `docs/page/${file} is there`);
            const [is, was] = [PNG.sync.read(now), PNG.sync.read(readFileSync(join(stored, file)))];
            assert.deepEqual([is.width, is.height], [was.width, was.height]);
            const different = pixelmatch(is.data, was.data, null, is.width, is.height, { threshold: 0.2 });
            assert.ok(different <= TOLERANCE * is.width * is.height, `${different} pixels of ${file} differ`);
        });
    }
}
