// What the page offers while one types, and what it tells of a member: by keyboard and by mouse.
import assert from 'node:assert/strict';
import test from 'node:test';
import { browserForTests, example, openFile, putCursor, result, settled, textOf } from './browser.js';

const within = browserForTests();

const options = (page) => page.locator('.cm-tooltip-autocomplete .cm-completionLabel');
// What is chosen while a list opens was meant for something else, and is not taken.
const seen = (page) => page.waitForTimeout(150);
const member = (page) => page.locator('#member');

test('names are offered as one types; Enter puts one there, and its values are offered next', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', '{"ifaces": {"eth4": {}}}');
        await putCursor(page, 'input', '{}', 1);
        await page.keyboard.type('"ty');
        await options(page).first().waitFor();
        assert.equal((await options(page).allTextContents())[0], 'type');
        await seen(page);
        await page.keyboard.press('Enter');
        assert.equal(await textOf(page, 'input'), '{"ifaces": {"eth4": {"type": }}}');
        await options(page).filter({ hasText: 'ethernet' }).waitFor();
        await page.keyboard.type('"eth');
        await page.waitForFunction(
            () => document.querySelectorAll('.cm-tooltip-autocomplete [role=option]').length === 1,
        );
        await seen(page);
        await page.keyboard.press('Enter');
        assert.equal(await textOf(page, 'input'), '{"ifaces": {"eth4": {"type": "ethernet"}}}');
    });
});

test('Ctrl Space asks for them, Escape sends them away, a click chooses', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', '{"ntpclient": {}}');
        await putCursor(page, 'input', '{}', 1);
        await page.keyboard.press('Control+Space');
        await options(page).filter({ hasText: 'servers' }).first().waitFor();
        await page.keyboard.press('Escape');
        assert.equal(await options(page).count(), 0);
        await page.keyboard.press('Control+Space');
        const [hour] = [options(page).filter({ hasText: 'hour' })];
        await hour.waitFor();
        await seen(page);
        await hour.click();
        assert.equal(await textOf(page, 'input'), '{"ntpclient": {"hour": ""}}');
        await settled(page);
    });
});

test('what can be chosen is described beside the list', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', '{"ntpclient": {}}');
        await putCursor(page, 'input', '{}', 1);
        await page.keyboard.type('"hou');
        const info = page.locator('.cm-completionInfo');
        await info.waitFor();
        assert.match(await info.innerText(), /\/ntpclient\/hour old layout\s+→\s+\/Device\/Services\/ntpclient\/hour/);
    });
});

const AUTH = /auth old layout\s+→\s+\/Device\/Ifaces\/ethernet\/\*\/services\/ppp\/\*\/auth/;
const TELLS = /others are reported: Invalid field "auth", is not digit/;
const withAuth = '{\n"ifaces": {"eth4": {"type": "ethernet", "services": {"ppp0": {"type": "ppp",\n"auth": "2"}}}}}';

test('the resting mouse tells of a member, on either side', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', withAuth);
        await page.locator('#input .cm-line', { hasText: '"auth"' }).locator('span').first().hover();
        const panel = page.locator('.cm-tooltip-hover .member');
        await panel.waitFor();
        assert.match(await panel.innerText(), AUTH);
        assert.match(await panel.innerText(), TELLS);
        await page.mouse.move(5, 5);
        await panel.waitFor({ state: 'detached' });
        await page.locator('#result .cm-line', { hasText: '"auth"' }).locator('span').first().hover();
        await panel.waitFor();
        assert.match(await panel.innerText(), /auth new layout\s+→\s+\/ifaces\/\[ethernet\]\/services\/\[ppp\]\/auth/);
    });
});

test('Escape sends away what the resting mouse was told, wherever the focus is', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', withAuth);
        for (const focused of ['#input .cm-content', '#copy']) {
            await page.mouse.move(5, 5);
            await page.locator('#input .cm-line', { hasText: '"auth"' }).locator('span').first().hover();
            await page.locator('.cm-tooltip-hover .member').waitFor();
            await page.locator(focused).focus();
            await page.keyboard.press('Escape');
            await page.locator('.cm-tooltip-hover').waitFor({ state: 'detached', timeout: 3000 });
        }
    });
});

test('F1 tells of the member at the cursor, follows it, and Escape leads back', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', withAuth);
        await putCursor(page, 'input', '"auth"', 1);
        await page.keyboard.press('F1');
        await member(page).locator('.line').waitFor();
        assert.match(await member(page).innerText(), AUTH);
        assert.match(await member(page).innerText(), TELLS);
        assert.match(await member(page).innerText(), /To the old layout/);
        assert.equal(await page.evaluate(() => document.activeElement.id), 'member');
        await page.keyboard.press('Escape');
        assert.equal(await page.evaluate(() => document.activeElement.closest('.pane').id), 'input');
        await page.keyboard.press('ArrowUp');
        await member(page)
            .getByText('A numbered list')
            .or(member(page).getByText('/ifaces', { exact: true }))
            .waitFor();
        await result(page).click();
        await putCursor(page, 'result', '"auth"', 1);
        await member(page).getByText('new layout').first().waitFor();
    });
});

test('what nobody knows is said to be, and in one section alone why nothing is told', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', '{"lang": "de",\n"nobody": 1}');
        await putCursor(page, 'input', '"nobody"', 1);
        await page.locator('#member-tab').click();
        await member(page).getByText('It is not known: it would be dropped without a message.').waitFor();
        await openFile(page, 'home.json', example('home-gateway.old.json'));
        await page.locator('#section').selectOption({ label: 'ssh' });
        await settled(page);
        await page.keyboard.press('F1');
        await member(page).getByText('Members are known of whole configurations: choose everything above.').waitFor();
    });
});

test('under the mouse a problem stands above what is known of its member', async () => {
    await within({}, async (page) => {
        await openFile(page, 'gateway.json', '{"lang": "de",\n"ntpclient": {"hour": "soon"}}');
        await page.locator('#input .cm-lintRange-error').first().hover();
        const tooltip = page.locator('.cm-tooltip-hover');
        await tooltip.locator('.member').waitFor();
        assert.match(await tooltip.innerText(), /string not contains digits\n[^]*\/ntpclient\/hour old layout/);
    });
});

test('the tab that is shown is in view, also on a phone', async () => {
    await within({ viewport: { width: 360, height: 740 } }, async (page) => {
        await page.locator('#loss-status').waitFor(); // how many there are stands in a tab
        await page.keyboard.press('F1');
        const { left, right } = await page
            .locator('#member-tab')
            .evaluate((tab) => tab.getBoundingClientRect().toJSON());
        assert.ok(left >= 0 && right <= 360, `${left} ${right}`);
    });
});
