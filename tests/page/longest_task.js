// longest_task.js: how long the page's own thread is held up at most, in milliseconds of its CPU time, while a document
// of 4 MB is opened, and while one types in it. tests/page/run.sh FOLDER longest_task.js runs it.
import { readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { large, openPage, settled, startBrowser } from './browser.js';

const CATEGORIES = ['toplevel', 'devtools.timeline', 'disabled-by-default-devtools.timeline', '__metadata'];

// The longest task of the thread that draws pages, by its own clock, which other programs do not move.
async function longest(browser, page, work) {
    const path = join(tmpdir(), `k_cnvrt-${process.pid}.json`);
    await browser.startTracing(page, { path, categories: CATEGORIES });
    await work();
    await browser.stopTracing();
    const { traceEvents } = JSON.parse(readFileSync(path, 'utf8'));
    rmSync(path);
    const threads = traceEvents.filter(({ name, args }) => name === 'thread_name' && args.name === 'CrRendererMain');
    const isMain = ({ pid, tid }) => threads.some((thread) => thread.pid === pid && thread.tid === tid);
    const tasks = traceEvents.filter((event) => event.name.endsWith('RunTask') && event.tdur > 0 && isMain(event));
    if (tasks.length < 10) throw new Error('the trace has no tasks');
    return Math.round(Math.max(...tasks.map(({ tdur }) => tdur)) / 1000);
}

const { browser, close } = await startBrowser();
try {
    const page = await openPage(browser);
    const text = large(4e6);
    const file = await page.evaluateHandle((text) => new File([text], 'large.json'), text);
    const opening = await longest(browser, page, async () => {
        await page.evaluate((file) => {
            const dataTransfer = new DataTransfer();
            dataTransfer.items.add(file);
            document.body.dispatchEvent(new DragEvent('drop', { dataTransfer, bubbles: true, cancelable: true }));
        }, file);
        await page.waitForFunction(() => document.querySelector('#input-facts').textContent.startsWith('large.json'));
        await settled(page);
        await page.locator('#loss-status').waitFor();
    });
    const typing = await longest(browser, page, async () => {
        await page.keyboard.press('ArrowRight');
        await page.keyboard.type('"a": 1,');
        await settled(page);
        await page.locator('#loss-status').waitFor();
    });
    console.log(`opening ${opening}, typing ${typing}`);
} finally {
    await close();
}
