// Files as they come by mail: which are opened, which are refused and why, and in which order.
import assert from 'node:assert/strict';
import test from 'node:test';
import { browserForTests, drop, large, openFile, selected, settled, status, textOf, until } from './browser.js';

const within = browserForTests();
const facts = (page) => page.locator('#input-facts').textContent();
const says = (page, words) =>
    page.waitForFunction((words) => document.querySelector('#toast').textContent === words, words);

// Drops files at once, or, with `isApart`, one right after the other.
const dropAll = (page, files, isApart = false) =>
    page.evaluate(
        ([files, isApart]) => {
            const made = files.map(([name, content]) => new File([content], name));
            for (const group of isApart ? made.map((file) => [file]) : [made]) {
                const dataTransfer = new DataTransfer();
                for (const file of group) dataTransfer.items.add(file);
                document.body.dispatchEvent(new DragEvent('drop', { dataTransfer, bubbles: true, cancelable: true }));
            }
        },
        [files, isApart],
    );

test('an empty file is said to be empty, and what was there stays', async () => {
    await within({}, async (page) => {
        for (const [name, content] of [
            ['empty.json', ''],
            ['mark.json', '\ufeff'],
        ]) {
            await drop(page, '#input', name, content);
            await says(page, `${name} is empty`);
            assert.match(await facts(page), /^an example/);
        }
    });
});

test('of files that are dropped at once the first is opened, and that is said', async () => {
    await within({}, async (page) => {
        await dropAll(page, [
            ['a.json', '{"lang": "de"}'],
            ['b.json', '{"lang": "fr"}'],
        ]);
        await says(page, 'Of 2 files only a.json is opened');
        await settled(page);
        assert.match(await facts(page), /^a\.json/);
    });
});

test('what cannot be read from the disk, as a folder, is said to be that', async () => {
    await within({}, async (page) => {
        await page.evaluate(() => {
            Blob.prototype.arrayBuffer = () => Promise.reject(new DOMException('gone', 'NotFoundError'));
        });
        await drop(page, '#input', 'attic', '{}');
        await says(page, 'attic cannot be read: it is a folder, or not there any more');
        assert.match(await facts(page), /^an example/);
    });
});

test('of files opened one right after the other the last stays, however long the first takes', async () => {
    await within({}, async (page) => {
        const first = ['large.json', large(3e6)];
        await dropAll(page, [first, ['small.json', '{"lang": "de"}']], true);
        await until(page, async () => (await facts(page)).startsWith('small.json'));
        await page.waitForTimeout(1500);
        assert.equal(await textOf(page, 'input'), '{"lang": "de"}');
        // What was refused does not count: it takes the place of nothing.
        await dropAll(page, [['second.json', '{"lang": "fr"}'], ['empty.json', '']], true);
        await says(page, 'empty.json is empty');
        await settled(page);
        assert.match(await facts(page), /^second\.json/);
    });
});

test('lines of other systems, and UTF-16 that does not say so', async () => {
    await within({}, async (page) => {
        const lines = ['{', '"lang": "de",', '"\u{1F600}": 1, "ntpclient": {"hour": "soon"}', '}', ''];
        await openFile(page, 'lines.json', lines.join('\r\n'));
        await page.locator('#problems li > button', { hasText: 'contains digits' }).click();
        assert.equal(await selected(page, 'input'), '"soon"');
        await openFile(page, 'wide.json', Buffer.from('{"lang": "de"}', 'utf16le'));
        assert.equal(await status(page), 'Not readable: this is UTF-16: save it as UTF-8');
    });
});
