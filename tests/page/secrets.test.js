// Passwords and keys: masked until one asks, and never lost.
import assert from 'node:assert/strict';
import test from 'node:test';
import {
    browserForTests,
    input,
    large,
    openFile,
    paste,
    result,
    settled,
    status,
    textOf,
    until,
} from './browser.js';

const within = browserForTests();

// What an editor puts into the clipboard.
async function copied(page, id) {
    return page.evaluate((id) => {
        const clipboardData = new DataTransfer();
        const target = document.querySelector(`#${id} .cm-content`);
        target.dispatchEvent(new ClipboardEvent('copy', { clipboardData, bubbles: true, cancelable: true }));
        return clipboardData.getData('text/plain');
    }, id);
}

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
        await until(page, async () => /Harbor-5-violet/.test(await screen()));
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

test('a large text is never shown without its masks, not before its conversion either', async () => {
    await within({}, async (page) => {
        await page.evaluate(() => {
            window.seen = { secrets: 0, masks: 0 };
            const content = document.querySelector('#input .cm-content');
            const look = () => {
                window.seen.secrets += content.textContent.includes('Harbor');
                window.seen.masks += content.querySelector('.cm-mask') !== null;
            };
            new MutationObserver(look).observe(content, { childList: true, subtree: true });
        });
        const { users, ...rest } = JSON.parse(large(2e5));
        const list = { admin: { pass: 'Harbor-5-violet' } };
        await openFile(page, 'large.json', JSON.stringify({ users: { list }, ...rest }, null, 4));
        const { secrets, masks } = await page.evaluate(() => window.seen);
        assert.equal(secrets, 0);
        assert.ok(masks > 0);
    });
});

test('a secret that is typed into the base is masked when the cursor leaves it', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', '{"lang": "de"}');
        await page.locator('#base-tab').click();
        await page.locator('#base .cm-content').focus();
        await page.keyboard.type('{"Device": {"Users": {"password": "Quartz"');
        await page.keyboard.type('}}}');
        await settled(page);
        const shown = () => page.locator('#base .cm-content').innerText();
        await until(page, async () => (await shown()) === '{"Device": {"Users": {"password": ***}}}');
        assert.match(await textOf(page, 'base'), /Quartz/);
    });
});

test('secrets stay masked when the worker is lost', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', '{"users": {"list": {"admin": {"pass": "Harbor-5-violet"}}}}');
        await page.evaluate(() => {
            Worker.prototype.postMessage = function () {
                this.onerror(new ErrorEvent('error', { message: 'lost', cancelable: true }));
            };
        });
        await input(page).focus();
        await page.keyboard.press('Control+End');
        await page.keyboard.type(' ');
        await until(page, async () => /does not run/.test(await status(page)));
        assert.doesNotMatch(await page.evaluate(() => document.body.innerText), /Harbor/);
    });
});
