// Steps of a person's way through the page.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';

/** Goes there as a person does who has no mouse. */
export async function tabTo(page, selector) {
    const isThere = (selector) => document.activeElement.matches(selector);
    for (let i = 0; i < 150; ++i) {
        if (await page.evaluate(isThere, selector)) return;
        await page.keyboard.press('Tab');
    }
    assert.fail(`no tab leads to ${selector}`);
}

/** Presses keys there. */
export async function pressAt(page, selector, ...keys) {
    await tabTo(page, selector);
    for (const key of keys) await page.keyboard.press(key);
}

/** Chooses in a list by typing what it says. */
export async function typeAt(page, selector, words) {
    await tabTo(page, selector);
    await page.keyboard.type(words);
}

/** Gives the file that the page asks for. */
export async function choose(page, start, name, content) {
    const asked = page.waitForEvent('filechooser');
    await page.evaluate(() => {}); // by its answer the browser knows that somebody waits
    await start();
    const chooser = await asked;
    await chooser.setFiles({ name, mimeType: 'application/json', buffer: Buffer.from(content) });
}

/** Keeps what the page saves. */
export async function download(page, start) {
    const [saved] = await Promise.all([page.waitForEvent('download'), start()]);
    page.saved = { name: saved.suggestedFilename(), text: readFileSync(await saved.path(), 'utf8') };
}
