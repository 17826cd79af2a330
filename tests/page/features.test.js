// Every feature by mouse and by keyboard, from a file and from a server, without a network. Each row of the table
// starts somewhere, does the same thing in either way, and comes to the same end.
import assert from 'node:assert/strict';
import test, { after, before } from 'node:test';
import {
    broken,
    browserForTests,
    drop,
    example,
    framed,
    input,
    openFile,
    packaged,
    paste,
    putCursor,
    rows,
    selected,
    serve,
    settled,
    status,
    textOf,
    until,
} from './browser.js';
import { choose, download, pressAt, tabTo, typeAt } from './steps.js';

const { diff, section } = await import(packaged('node.js'));
const old = example('home-gateway.old.json');
const small = '{"lang": "de"}';
const lossy = '{"lang": "de", "nobody": 1, "max_table_id": "12"}';
const secret = '{"users": {"list": {"admin": {"pass": "Harbor-5-violet"}}}}';
const base = '{"Device": {"DeviceInfo": {"lang": "en"}, "Users": {}}}';

const click = (selector) => (page) => page.locator(selector).click();
const converts =
    (content, name = 'gateway.old.json') =>
    (page) =>
        openFile(page, name, content);
const focused = (page) => page.evaluate(() => document.activeElement.closest('.pane, .findings')?.id);
const resultIs = (page, isRight) =>
    until(page, async () => isRight(JSON.parse((await textOf(page, 'result')) || 'null')));
const withTab = (name) => async (page) => {
    await tabTo(page, '.tabs [role=tab][aria-selected=true]');
    for (let i = 0; i < 5 && !(await page.locator(`#${name}`).isVisible()); ++i)
        await page.keyboard.press('ArrowRight');
};

async function withBase(page) {
    await openFile(page, 'gateway.old.json', small);
    await page.locator('#base-tab').click();
    const buffer = Buffer.from(base);
    await page.locator('#base-file').setInputFiles({ name: 'base.json', mimeType: 'application/json', buffer });
    await resultIs(page, Array.isArray);
}

const FEATURES = {
    'open a file': {
        mouse: (page) => choose(page, () => page.locator('#open').click(), 'opened.json', small),
        keyboard: (page) => choose(page, () => page.keyboard.press('Control+O'), 'opened.json', small),
        end: (page) => resultIs(page, (made) => made?.Device.DeviceInfo.lang === 'de'),
    },
    // A drop is a mouse's: who has none opens the file.
    'drop a file': {
        mouse: (page) => drop(page, '#result', 'dropped.json', small),
        keyboard: (page) => choose(page, () => pressAt(page, '#open', 'Enter'), 'dropped.json', small),
        end: async (page) => {
            await resultIs(page, (made) => made?.Device.DeviceInfo.lang === 'de');
            assert.equal(await page.locator('#drop').isHidden(), true);
            assert.match(await page.locator('#input-facts').textContent(), /^dropped\.json · old layout/);
        },
    },
    paste: {
        mouse: (page) => paste(page, small),
        keyboard: async (page) => {
            await input(page).focus();
            await page.keyboard.press('Control+A');
            await page.keyboard.press('Delete');
            await page.keyboard.type(small);
            await page.keyboard.press('Control+A');
            await page.keyboard.press('Control+X');
            await settled(page);
            assert.equal(await textOf(page, 'input'), '');
            await page.keyboard.press('Control+V');
        },
        end: (page) => resultIs(page, (made) => made?.Device.DeviceInfo.lang === 'de'),
    },
    'begin anew': {
        mouse: click('#clear'),
        keyboard: (page) => pressAt(page, '#clear', 'Enter'),
        end: async (page) => {
            await settled(page);
            assert.equal(await status(page), 'Paste, drop or open a configuration');
            await page.keyboard.type(small);
            await resultIs(page, (made) => made?.Device.DeviceInfo.lang === 'de');
        },
    },
    'choose a direction, and be helped out of the wrong one': {
        start: converts(old),
        mouse: async (page) => {
            await page.locator('#towards').selectOption('old');
            await page.locator('#remedy').click();
        },
        keyboard: async (page) => {
            await typeAt(page, '#towards', 'the old');
            await page.locator('#remedy').waitFor();
            await pressAt(page, '#remedy', 'Enter');
        },
        end: async (page) => {
            await until(page, async () => (await status(page)) === 'Converted to the new layout');
            assert.equal(await page.locator('#remedy').isVisible(), false);
        },
    },
    'convert one section': {
        start: converts(old),
        mouse: (page) => page.locator('#section').selectOption({ label: 'ssh' }),
        keyboard: (page) => typeAt(page, '#section', 'ssh'),
        end: async (page) => {
            const { output } = section('ssh', old, { to: 'new' });
            await until(page, async () => (await textOf(page, 'result')) === output);
            const words = [];
            for (const tab of ['losses', 'return']) {
                await page.locator(`#${tab}-tab`).click();
                words.push(await page.locator(`#${tab}`).textContent());
            }
            words.push(await page.locator('#links-words').textContent());
            for (const said of words) assert.match(said, /whole configuration.*: choose everything above\.$/);
        },
    },
    'go to a problem from the list': {
        start: converts(broken),
        mouse: (page) => rows(page, 'problems').filter({ hasText: 'ppp0/auth' }).first().click(),
        keyboard: async (page) => {
            await tabTo(page, '#problems li:first-child > button');
            await pressAt(page, '#problems li:nth-child(2) > button', 'Enter');
        },
        end: async (page) => {
            assert.equal(await selected(page, 'input'), '"often"');
            assert.equal(await focused(page), 'input');
        },
    },
    'go from problem to problem': {
        start: converts(broken),
        mouse: (page) => page.locator('#problems li > button').first().click(),
        keyboard: (page) => page.keyboard.press('F8'),
        end: async (page) => {
            assert.equal(await selected(page, 'input'), '5');
            assert.match(await page.locator('#input .cm-activeLine').getAttribute('class'), /cm-wrongLine/);
            assert.ok((await page.locator('#input .cm-lint-marker-error').count()) >= 3);
        },
    },
    'read a problem at its place': {
        start: converts(broken),
        mouse: (page) => page.locator('#input .cm-lint-marker-error').first().hover(),
        // The list says what the mark's tooltip does, and marks the row whose place one is at.
        keyboard: (page) => pressAt(page, '#problems li:first-child > button', 'Enter'),
        end: (page) =>
            page
                .locator('.cm-tooltip-lint, #problems [aria-current]')
                .getByText('is not null or string')
                .first()
                .waitFor(),
    },
    'see what is lost, and go there': {
        start: async (page) => {
            await openFile(page, 'gateway.old.json', lossy);
            await page.locator('#loss-status').waitFor();
        },
        mouse: async (page) => {
            await page.locator('#loss-status').click();
            await rows(page, 'losses').filter({ hasText: '/max_table_id' }).click();
        },
        keyboard: async (page) => {
            await pressAt(page, '#loss-status', 'Enter');
            const place = await rows(page, 'losses').evaluateAll((all) =>
                all.findIndex((row) => row.textContent.includes('/max_table_id')),
            );
            for (let i = 0; i <= place; ++i) await page.keyboard.press('Tab');
            await page.keyboard.press('Enter');
        },
        end: async (page) => {
            assert.equal(await selected(page, 'input'), '"12"');
            assert.match(
                await rows(page, 'losses').filter({ hasText: '/max_table_id' }).innerText(),
                /"12"\s*→\s*12\s+changed$/,
            );
        },
    },
    'see what belongs together, and go there': {
        mouse: async (page) => {
            await page.locator('#input .cm-line', { hasText: '"mtu": 1492' }).hover();
            await page.locator('#links-places button').first().click();
        },
        keyboard: async (page) => {
            await putCursor(page, 'input', '"mtu": 1492', -1);
            await page.keyboard.press('ArrowRight');
            await page.locator('#links-places button').first().waitFor();
            await page.keyboard.press('Control+Enter');
        },
        end: async (page) => {
            assert.match(await page.locator('#result .cm-activeLine').textContent(), /"mtu": 1492/);
            assert.equal(await focused(page), 'result');
            assert.deepEqual(await framed(page, 'result', 'partner'), ['"mtu": 1492']);
            assert.equal(await page.locator('#links-words').textContent(), '/ifaces/eth4/services/ppp0/mtu becomes');
        },
    },
    'see what a place of the result is made of': {
        mouse: (page) => page.locator('#result .cm-line', { hasText: '"mtu": 1492' }).hover(),
        keyboard: async (page) => {
            await page.keyboard.press('F6'); // the result
            if ((await focused(page)) !== 'result') await page.keyboard.press('F6');
            const line = () => page.locator('#result .cm-activeLine').textContent();
            for (let i = 0; i < 60 && !(await line()).includes('"mtu": 1492'); ++i)
                await page.keyboard.press('ArrowDown');
        },
        end: async (page) => {
            const words = '/Device/Ifaces/ethernet/1/services/ppp/1/mtu is made of';
            await until(page, async () => (await page.locator('#links-words').textContent()) === words);
            assert.ok((await framed(page, 'input', 'partner')).includes('"mtu": 1492'));
        },
    },
    'switch the links off': {
        mouse: click('#links-switch'),
        keyboard: (page) => pressAt(page, '#links-switch', 'Space'),
        end: async (page) => {
            assert.equal(await page.locator('#links-switch').getAttribute('aria-pressed'), 'false');
            assert.equal(await page.locator('#links-words').textContent(), '');
        },
    },
    'see what is different there and back': {
        start: converts(lossy),
        mouse: async (page) => {
            await page.locator('#return-tab').click();
            await rows(page, 'return').filter({ hasText: '/nobody' }).click();
        },
        keyboard: async (page) => {
            await withTab('return')(page);
            await rows(page, 'return').filter({ hasText: '/nobody' }).waitFor();
            await tabTo(page, '#return li > button');
            for (let i = 0; i < 20; ++i) {
                if ((await page.evaluate(() => document.activeElement.textContent)).includes('/nobody')) break;
                await page.keyboard.press('Tab');
            }
            await page.keyboard.press('Enter');
        },
        end: async (page) => assert.equal(await selected(page, 'input'), '1'),
    },
    'compare with a base: a JSON Patch': {
        start: converts(small),
        mouse: async (page) => {
            await page.locator('#base-tab').click();
            await choose(page, () => page.locator('#open-base').click(), 'base.json', base);
        },
        keyboard: async (page) => {
            await withTab('base')(page);
            await choose(page, () => pressAt(page, '#open-base', 'Enter'), 'base.json', base);
        },
        end: async (page) => {
            await resultIs(page, (patch) => Array.isArray(patch) && patch[0].path === '/Device/DeviceInfo/lang');
            assert.match(await page.locator('#result-facts').textContent(), /^JSON Patch/);
            assert.match(await page.locator('#links-words').textContent(), /: choose without a base below\.$/);
        },
    },
    'compare with a base that is dropped or typed': {
        start: converts(small),
        mouse: async (page) => {
            await page.locator('#base-tab').click();
            await drop(page, '#base-editor', 'base.json', base);
        },
        keyboard: async (page) => {
            await withTab('base')(page);
            await tabTo(page, '#base .cm-content');
            await page.keyboard.insertText(base);
        },
        end: (page) => resultIs(page, (patch) => Array.isArray(patch) && patch[0].path === '/Device/DeviceInfo/lang'),
    },
    'compare with a base: a JSON Merge Patch': {
        start: withBase,
        mouse: (page) => page.locator('#base-result').selectOption('merge'),
        keyboard: (page) => pressAt(page, '#base-result', 'ArrowDown'),
        end: async (page) => {
            await resultIs(page, (patch) => patch?.Device?.DeviceInfo?.lang === 'de');
            assert.match(await page.locator('#result-facts').textContent(), /^JSON Merge Patch/);
        },
    },
    'make the change in the base': {
        start: withBase,
        mouse: (page) => page.locator('#base-result').selectOption('applied'),
        keyboard: (page) => pressAt(page, '#base-result', 'End'),
        end: async (page) => {
            await resultIs(page, (made) => made?.Device?.DeviceInfo?.lang === 'de' && 'Services' in made.Device);
            const made = await textOf(page, 'result');
            await page.locator('#clear-base').click();
            await until(page, async () => (await page.locator('#base .cm-content').innerText()).startsWith('Paste'));
            await settled(page);
            // Nothing is left to change.
            assert.deepEqual(JSON.parse(diff(made, await textOf(page, 'result')).output), []);
        },
    },
    'leave the base': {
        start: withBase,
        mouse: click('#clear-base'),
        keyboard: (page) => pressAt(page, '#clear-base', 'Enter'),
        end: (page) => resultIs(page, (made) => made !== null && !Array.isArray(made)),
    },
    'show secrets, and mask them again': {
        start: converts(secret),
        mouse: async (page) => {
            await page.locator('#secrets').click();
            await page.getByText('Harbor-5-violet').first().waitFor();
            await page.locator('#secrets').click();
        },
        keyboard: async (page) => {
            await pressAt(page, '#secrets', 'Space');
            await page.getByText('Harbor-5-violet').first().waitFor();
            await page.keyboard.press('Space');
        },
        end: (page) => until(page, async () => !/Harbor/.test(await page.evaluate(() => document.body.innerText))),
    },
    'copy the result, its secrets masked': {
        start: converts(secret),
        mouse: click('#copy'),
        keyboard: (page) => pressAt(page, '#copy', 'Enter'),
        end: async (page) => {
            await page.locator('#toast').getByText('Copied, secrets masked').waitFor();
            const made = await textOf(page, 'result');
            const [, hidden] = /"pass": ("[^"]+")/.exec(made);
            await input(page).focus();
            await page.keyboard.press('Control+A');
            await page.keyboard.press('Control+V');
            await until(page, async () => (await textOf(page, 'input')) === made.replace(hidden, '"***"'));
        },
    },
    'save the result, its secrets whole': {
        start: converts(secret),
        mouse: (page) => download(page, () => page.locator('#save').click()),
        keyboard: (page) => download(page, () => page.keyboard.press('Control+S')),
        end: async (page) => {
            assert.deepEqual(page.saved, { name: 'gateway.new.json', text: await textOf(page, 'result') });
            assert.match(page.saved.text, /"pass": "(?!\*\*\*)/);
        },
    },
    'look at the keys': {
        mouse: async (page) => {
            await page.locator('#keys').click();
            await page.locator('dialog kbd', { hasText: /^F8$/ }).waitFor();
            await page.locator('dialog button').click();
        },
        keyboard: async (page) => {
            await pressAt(page, '#keys', 'Enter');
            await page.locator('dialog kbd', { hasText: /^F8$/ }).waitFor();
            await page.keyboard.press('Escape');
        },
        end: async (page) => assert.equal(await page.locator('dialog').isVisible(), false),
    },
    'change the colours': {
        mouse: click('#theme'),
        keyboard: (page) => pressAt(page, '#theme', 'Enter'),
        end: async (page) => {
            assert.equal(await page.locator('html').getAttribute('data-theme'), 'dark');
            assert.equal(await page.evaluate(() => getComputedStyle(document.body).colorScheme), 'dark');
        },
    },
    'read what is known of a member': {
        mouse: (page) => page.locator('#input .cm-line', { hasText: '"lang"' }).locator('span').first().hover(),
        keyboard: async (page) => {
            await input(page).focus();
            await page.keyboard.press('Control+Home');
            await page.keyboard.press('ArrowDown');
            await page.keyboard.press('F1');
        },
        end: (page) =>
            page.locator('.cm-tooltip .member, #member').getByText('/Device/DeviceInfo/lang').first().waitFor(),
    },
    'choose a name that is offered': {
        start: async (page) => {
            await openFile(page, 'gateway.json', '{"ntpclient": {}}');
            await putCursor(page, 'input', '{}', 1);
            await page.keyboard.press('Control+Space');
            await page.locator('.cm-tooltip-autocomplete').waitFor();
            await page.waitForTimeout(150); // what is chosen while a list opens was meant for something else
        },
        mouse: (page) => page.locator('.cm-tooltip-autocomplete [role=option]', { hasText: 'hour' }).click(),
        keyboard: async (page) => {
            await page.keyboard.type('hour');
            await page.waitForFunction(
                () => document.querySelectorAll('.cm-tooltip-autocomplete [role=option]').length === 1,
            );
            await page.waitForTimeout(150);
            await page.keyboard.press('Enter');
        },
        end: (page) => until(page, async () => (await textOf(page, 'input')) === '{"ntpclient": {"hour": ""}}'),
    },
    'see one editor after the other on a phone': {
        options: { viewport: { width: 360, height: 740 } },
        start: converts(broken),
        mouse: async (page) => {
            await page.locator('#result-tab').click();
            assert.equal(await page.locator('#input').isVisible(), false);
            await page.locator('#first-problem').click();
        },
        keyboard: async (page) => {
            await pressAt(page, '#input-tab', 'ArrowRight');
            assert.equal(await page.locator('#input').isVisible(), false);
            assert.equal(await page.locator('#result').isVisible(), true);
            await pressAt(page, '#first-problem', 'Enter');
        },
        end: async (page) => {
            assert.equal(await selected(page, 'input'), '5');
            assert.equal(await page.locator('#input').isVisible(), true);
        },
    },
};

const within = browserForTests();
let server;
before(async () => (server = await serve()));
after(() => server.close());

for (const [name, { options = {}, start = () => {}, end, ...ways }] of Object.entries(FEATURES)) {
    test(`${name}: by mouse and by keyboard, from a file and from a server`, async () => {
        assert.deepEqual(Object.keys(ways), ['mouse', 'keyboard']);
        for (const way of Object.values(ways)) {
            for (const address of [undefined, server.address]) {
                await within({ address, ...options }, async (page) => {
                    await page.context().setOffline(true);
                    await start(page);
                    await way(page);
                    await end(page);
                });
            }
        }
    });
}
