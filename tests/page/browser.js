// A browser with the page in it, and what a person does there.
import assert from 'node:assert/strict';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { createServer } from 'node:http';
import { tmpdir } from 'node:os';
import { dirname, join } from 'node:path';
import { after, before } from 'node:test';
import { fileURLToPath, pathToFileURL } from 'node:url';
import { chromium } from 'playwright-core';

const here = dirname(fileURLToPath(import.meta.url));
export const root = process.env.KCNVRT_ROOT;
export const built = process.env.KCNVRT_PAGE;
export const packaged = (name) => join(root, 'build/wasm/package', name);
export const pageFile = join(built, 'k_cnvrt.html');
export const example = (name) => readFileSync(join(root, 'examples', name), 'utf8');

const FLAGS = [
    '--no-sandbox',
    '--disable-gpu',
    '--disable-quic',
    '--no-first-run',
    '--disable-background-networking',
    '--disable-component-update',
    '--disable-sync',
    '--font-render-hinting=none',
];

export async function startBrowser() {
    const profile = mkdtempSync(join(tmpdir(), 'k_cnvrt-page-'));
    const browser = await chromium.launch({
        executablePath: process.env.KCNVRT_CHROMIUM ?? '/usr/bin/chromium',
        args: FLAGS,
        env: { ...process.env, FONTCONFIG_FILE: join(here, 'fonts.conf'), HOME: profile },
    });
    const close = async () => {
        await browser.close();
        rmSync(profile, { recursive: true, force: true });
    };
    return { browser, close };
}

/** A server of the page alone, on this machine: { address, requests, close }. */
export async function serve() {
    const requests = [];
    const server = createServer((request, response) => {
        requests.push(request.url);
        const isPage = request.url === '/k_cnvrt.html';
        response.writeHead(isPage ? 200 : 404, { 'Content-Type': 'text/html' });
        response.end(isPage ? readFileSync(pageFile) : '');
    });
    await new Promise((ready) => server.listen(0, '127.0.0.1', ready));
    return {
        requests,
        address: `http://127.0.0.1:${server.address().port}/k_cnvrt.html`,
        close: () => new Promise((done) => server.close(done)),
    };
}

const fileAddress = pathToFileURL(pageFile).href;

/** The page in a new window, ready for use. What it complains of in the console is in `complaints`. */
export async function openPage(browser, { address = fileAddress, init = null, ...options } = {}) {
    const context = await browser.newContext({
        viewport: { width: 1280, height: 800 },
        reducedMotion: 'reduce',
        ...options,
    });
    const page = await context.newPage();
    page.complaints = [];
    page.on('console', (message) => message.type() === 'error' && page.complaints.push(message.text()));
    page.on('pageerror', (error) => page.complaints.push(error.message));
    if (init !== null) await page.addInitScript(init);
    await page.goto(address);
    await settled(page);
    return page;
}

/** When the answer to the last change is shown. */
export async function settled(page) {
    await page.waitForFunction(
        () => !('waits' in document.documentElement.dataset) && document.querySelector('#version').textContent !== '',
        null,
        { timeout: 60_000 },
    );
}

export const input = (page) => page.locator('#input .cm-content');
export const result = (page) => page.locator('#result .cm-content');

/** Puts a file into the page as the button "Open" does. */
export async function openFile(page, name, content) {
    await page.locator('#file').setInputFiles({ name, mimeType: 'application/json', buffer: Buffer.from(content) });
    await page.waitForFunction((name) => document.querySelector('#input-facts').textContent.includes(name), name);
    await settled(page);
}

/** The whole text of an editor, also of what is not on the screen. */
export const textOf = (page, id) =>
    page.evaluate((id) => document.querySelector(`#${id} .cm-content`).cmTile.view.state.doc.toString(), id);

/** Puts the cursor of an editor at a piece of its text, so many letters behind its start. */
export async function putCursor(page, id, piece, behind = 0) {
    await page.evaluate(
        ([id, piece, behind]) => {
            const { view } = document.querySelector(`#${id} .cm-content`).cmTile;
            const anchor = view.state.doc.toString().indexOf(piece) + behind;
            view.focus();
            view.dispatch({ selection: { anchor }, scrollIntoView: true });
        },
        [id, piece, behind],
    );
}

export const status = (page) => page.locator('#status .words').textContent();

/** A configuration of about as many bytes: an interface many times, under other names. */
export function large(bytes) {
    const configuration = JSON.parse(example('home-gateway.old.json'));
    const [pattern] = Object.values(configuration.ifaces).filter(({ type }) => type === 'ethernet');
    const one = JSON.stringify(pattern, null, 4).length * 1.3;
    for (let i = 0; i * one < bytes; ++i) configuration.ifaces[`eth${100 + i}`] = pattern;
    return JSON.stringify(configuration, null, 4);
}

/** The page opened anew in its window, as if nothing had been there before. */
async function reopen(page, address = fileAddress) {
    await page.context().setOffline(false);
    await page.evaluate(() => localStorage.clear());
    await page.mouse.move(0, 0);
    await page.goto(address);
    await settled(page);
    page.complaints.length = 0;
}

/**
 * A browser for the tests of a file: within(OPTIONS, async (page) => ...) opens the page for a test, which it must not
 * complain in. A new window costs three times what opening the page anew does, so the next test that passes the same
 * options has the window of the last, unless that failed or changed what is there before the page.
 */
export function browserForTests() {
    let browser;
    let close;
    before(async () => ({ browser, close } = await startBrowser()));
    after(() => close());
    const windows = new Map();
    return async (options, work) => {
        const isUsual = options.init === undefined;
        const key = JSON.stringify(options);
        const last = isUsual ? windows.get(key) : undefined;
        if (isUsual) windows.delete(key);
        if (last !== undefined) await reopen(last, options.address);
        const page = last ?? (await openPage(browser, options));
        let isDone = false;
        try {
            await work(page);
            assert.deepEqual(page.complaints, []);
            isDone = isUsual;
        } finally {
            if (isDone) windows.set(key, page);
            else await page.context().close();
        }
    };
}

/** What is run in a new window, and before the script of each of its workers: functions without arguments. */
export function initially({ inPage = () => {}, inWorkers }) {
    const prelude = (text) => {
        const { Blob } = window;
        window.Blob = class extends Blob {
            constructor(parts, options) {
                super(options?.type === 'text/javascript' ? [text, ...parts] : parts, options);
            }
        };
    };
    return `(${inPage})(); (${prelude})(${JSON.stringify(`(${inWorkers})();\n`)})`;
}

/** Waits until something is so. */
export async function until(page, isDone) {
    for (let i = 0; i < 600 && !(await isDone()); ++i) await page.waitForTimeout(50);
    assert.ok(await isDone());
}

export const rows = (page, list) => page.locator(`#${list} li > button`);

/** The text that is selected in an editor. */
export const selected = (page, id) =>
    page.evaluate((id) => {
        const { state } = document.querySelector(`#${id} .cm-content`).cmTile.view;
        return state.sliceDoc(state.selection.main.from, state.selection.main.to);
    }, id);

/** What is framed in an editor. */
export const framed = (page, id, kind) => page.locator(`#${id} .cm-${kind}`).allTextContents();

/** Pastes into the input as the browser's menu does. */
export async function paste(page, text) {
    await page.evaluate((text) => {
        const clipboardData = new DataTransfer();
        clipboardData.setData('text/plain', text);
        const target = document.querySelector('#input .cm-content');
        target.focus();
        target.dispatchEvent(new ClipboardEvent('paste', { clipboardData, bubbles: true, cancelable: true }));
    }, text);
    await settled(page);
}

/** Drops a file on a part of the page. */
export async function drop(page, part, name, content) {
    await page.evaluate(
        ([part, name, content]) => {
            const dataTransfer = new DataTransfer();
            dataTransfer.items.add(new File([content], name));
            const target = document.querySelector(part);
            target.dispatchEvent(new DragEvent('dragover', { dataTransfer, bubbles: true, cancelable: true }));
            target.dispatchEvent(new DragEvent('drop', { dataTransfer, bubbles: true, cancelable: true }));
        },
        [part, name, content],
    );
}

/** A configuration with three errors, in two sections. */
export const broken = JSON.stringify(
    {
        ifaces: { eth4: { type: 'ethernet', mac: 5, services: { ppp0: { type: 'ppp', auth: 'often' } } } },
        ntpclient: { enable: '1', hour: 'soon' },
        users: { list: { admin: { pass: 'Harbor-5-violet' } } },
    },
    null,
    2,
);
