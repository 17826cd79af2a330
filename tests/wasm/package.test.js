// The package: what is in it, and whether it works for those who have installed it.
import assert from 'node:assert/strict';
import { createHash } from 'node:crypto';
import { mkdirSync, readFileSync, readdirSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import test from 'node:test';
import vm from 'node:vm';
import * as inline from 'k-cnvrt/inline';
import * as node from 'k-cnvrt';
import { built, example, folder, packaged, root, runScript, runTool } from './tools.js';

const moduleBytes = readFileSync(packaged('k_cnvrt.wasm'));
const description = JSON.parse(readFileSync(packaged('package.json'), 'utf8'));
const document = example('home-gateway.old.json');
const converted = node.toNew(document).output;

test('the module imports nothing and exports what it is asked for', () => {
    const module = new WebAssembly.Module(moduleBytes);
    assert.deepEqual(WebAssembly.Module.imports(module), []);
    const symbols = readFileSync(join(root, 'abi/libk_cnvrt_text.symbols'), 'utf8')
        .match(/^[a-z]\w+/gm)
        .filter((name) => name !== 'k_text_excerpt');
    assert.deepEqual(
        WebAssembly.Module.exports(module).map(({ name }) => name).sort(),
        [...symbols, '_initialize', 'free', 'json_object_seed', 'malloc', 'memory'].sort(),
    );
});

test('there are the files that are meant to be there', () => {
    assert.deepEqual(readdirSync(packaged('')).sort(), [
        'LICENSES.txt', 'README.md', 'answer.js', 'browser.js', 'core.d.ts', 'core.js', 'header.js', 'index.d.ts',
        'inline.d.ts', 'inline.js', 'instance.js', 'k_cnvrt.wasm', 'module_text.js', 'node.js', 'package.json',
        'request.js', 'text.js', 'types.d.ts',
    ]);
});

test('it says its version, and cannot be published', () => {
    const [, version] = /project\(k_cnvrt VERSION ([\d.]+)/.exec(readFileSync(join(root, 'CMakeLists.txt'), 'utf8'));
    assert.equal(description.version, version);
    assert.equal(node.version(), version);
    assert.equal(description.private, true);
    assert.equal(description.license, 'UNLICENSED');
});

test('the licences of what is inside are shipped', () => {
    const text = readFileSync(packaged('LICENSES.txt'), 'utf8');
    const words = ['Petri Lehtinen', 'Rich Felker', 'wasi-libc', 'LLVM Exceptions', 'END OF TERMS AND CONDITIONS'];
    for (const word of words) assert.match(text, new RegExp(word));
});

test('nobody who looks at packages complains', () => {
    assert.match(runTool('publint', 'run', '--strict', packaged('')), /All good/);
});

test('the types are those of the functions, for Node and for bundlers', () => {
    runTool('tsc', '--project', 'tsconfig.json');
    runTool('tsc', '--project', 'tsconfig.bundler.json');
});

test('the types refuse what the functions do', () => {
    const source = readFileSync(join(folder, 'types.ts'), 'utf8');
    const wrong = source.replaceAll(/^.*@ts-expect-error.*$/gm, '');
    writeFileSync(join(folder, 'wrong.ts'), wrong);
    const config = { extends: './tsconfig.json', files: ['wrong.ts'] };
    writeFileSync(join(folder, 'tsconfig.wrong.json'), JSON.stringify(config));
    assert.throws(() => runTool('tsc', '--project', 'tsconfig.wrong.json'));
});

// Each example and what it prints, in the order of the file.
const readme = readFileSync(packaged('README.md'), 'utf8');
const examples = [...readme.matchAll(/```js\n(.*?)```\n\n```text\n(.*?)```/gs)];

test('the readme has three examples', () => {
    assert.equal(examples.length, 3);
    assert.equal(readme.match(/```js/g).length, 3);
});

examples.forEach(([, code, printed], i) => {
    test(`example ${i + 1} of the readme prints what it says`, () => {
        writeFileSync(join(folder, 'gateway.old.json'), document);
        writeFileSync(join(folder, `example${i}.js`), code);
        const { stdout, stderr, status } = runScript(`example${i}.js`);
        assert.deepEqual({ stdout, stderr, status }, { stdout: printed, stderr: '', status: 0 });
    });
});

test('the first page shows lines that work', () => {
    const [, lines] = /```js\n(.*?)```/s.exec(readFileSync(join(root, 'README.md'), 'utf8'));
    writeFileSync(join(folder, 'gateway.old.json'), document);
    writeFileSync(join(folder, 'first_page.js'), `import { readFileSync } from 'node:fs';
        const text = readFileSync('gateway.old.json');
        ${lines}
        console.log(status, problems.length, JSON.parse(output).Device !== undefined);`);
    assert.equal(runScript('first_page.js').stdout, 'converted 0 true\n');
});

test('the module in the bundle is the same', () => {
    assert.deepEqual(inline.toNew(document), node.toNew(document));
    assert.deepEqual(Object.keys(inline), Object.keys(node));
});

test('a browser compiles the module while it arrives', async () => {
    const asked = [];
    const fetched = globalThis.fetch;
    globalThis.fetch = async (url) => {
        asked.push(String(url));
        return new Response(moduleBytes, { headers: { 'Content-Type': 'application/wasm' } });
    };
    const browser = await import(packaged('browser.js'));
    globalThis.fetch = fetched;
    assert.equal(asked.length, 1);
    assert.ok(asked[0].endsWith('/node_modules/k-cnvrt/k_cnvrt.wasm'));
    assert.equal(browser.toNew(document).output, converted);
    assert.deepEqual(Object.keys(browser), Object.keys(node));
});

// bundle(NAME, SOURCE, OPTION...): the path of what esbuild makes of a script.
function bundle(name, source, ...options) {
    mkdirSync(join(folder, 'bundles'), { recursive: true });
    writeFileSync(join(folder, `bundles/${name}.src.js`), source);
    const path = `bundles/${name}.out.js`;
    runTool('esbuild', `bundles/${name}.src.js`, '--bundle', `--outfile=${path}`, '--log-level=error', ...options);
    return join(folder, path);
}

test('a bundle for a page has everything inside', () => {
    const source = "import { toNew } from 'k-cnvrt/inline'; globalThis.answer = toNew(text);";
    const path = bundle('page', source, '--format=iife', '--platform=browser', '--minify');
    // What a page has, and nothing of Node's.
    const buffers = { ArrayBuffer, Uint8Array, Uint32Array };
    const page = { text: document, WebAssembly, TextEncoder, TextDecoder, atob, crypto, ...buffers };
    vm.runInNewContext(readFileSync(path, 'utf8'), page);
    assert.equal(page.answer.status, 'converted');
    assert.equal(page.answer.output, converted);
});

test('a bundle works in browsers of some years ago', () => {
    const source = `import { explain, toNew } from 'k-cnvrt/inline';
        globalThis.answers = [toNew(text), explain(text, '/\u20ac'), toNew('"\ud800"')];`;
    const path = bundle('older', source, '--format=iife', '--platform=browser', '--target=chrome109,firefox115');
    const text = '{"lang": "de", "\u20ac": "\u{1F600}"}';
    const page = { text, WebAssembly, TextEncoder, TextDecoder, atob, crypto, Uint8Array, Uint32Array };
    vm.createContext(page);
    vm.runInContext('delete String.prototype.isWellFormed; delete ArrayBuffer.prototype.resize;', page);
    vm.runInContext(readFileSync(path, 'utf8'), page);
    assert.deepEqual(Array.from(page.answers, ({ status }) => status), ['converted', 'converted', 'unreadable']);
});

test('a bundle for Node finds the module beside it', () => {
    const source = "import { toNew } from 'k-cnvrt'; console.log(toNew('{}', { indent: 'compact' }).output);";
    const path = bundle('node', source, '--format=esm', '--platform=node');
    writeFileSync(join(folder, 'bundles/k_cnvrt.wasm'), moduleBytes);
    assert.equal(runScript(path).stdout, `${node.toNew('{}', { indent: 'compact' }).output}\n`);
});

test('what is inline is the module, byte for byte', async () => {
    const { moduleText } = await import(packaged('module_text.js'));
    const digest = (bytes) => createHash('sha256').update(bytes).digest('hex');
    assert.equal(digest(Buffer.from(moduleText, 'base64')), digest(moduleBytes));
    assert.equal(digest(readFileSync(join(built, 'release/k_cnvrt_module.wasm'))), digest(moduleBytes));
});
