// build.js PACKAGES MODULE_PACKAGE OUTPUT: makes the page of the files beside this one, as one HTML file that loads
// nothing. PACKAGES is the folder that has node_modules, MODULE_PACKAGE the npm package with the module.
import { createHash } from 'node:crypto';
import { readFileSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { deflateRawSync } from 'node:zlib';

const here = dirname(fileURLToPath(import.meta.url));
const [packages, modulePackage, output] = process.argv.slice(2);
const esbuild = createRequire(join(packages, 'package.json'))('esbuild');

const read = (...path) => readFileSync(join(here, ...path), 'utf8');
const sha256 = (content, form) => createHash('sha256').update(content).digest(form);

// The library's list of what names of secrets contain: it stands once.
function secretFragments() {
    const list = /kFragments\[\] = \{([^}]+)\}/.exec(read('../text/secrets.cpp'));
    if (list === null) throw new Error('text/secrets.cpp has no list of fragments');
    return JSON.parse(`[${list[1]}]`);
}

// The description of the layouts, without its examples and expressions: an eighth of it, as text.
function packedLayouts() {
    const { behaviours, lines, containers } = JSON.parse(read('../text/layouts.json'));
    return deflateRawSync(JSON.stringify({ behaviours, lines, containers }), { level: 9 }).toString('base64');
}

// What is only known while the page is built, as modules `built:NAME`.
const built = {
    secrets: () => `export const fragments = ${JSON.stringify(secretFragments())};`,
    checksum: () => `export const checksum = '${sha256(readFileSync(join(modulePackage, 'k_cnvrt.wasm')), 'hex')}';`,
    layouts: () => `export const layouts = '${packedLayouts()}';`,
    example: () => `export const example = ${JSON.stringify(read('example.old.json'))};`,
    worker: async () => `export const workerText = ${JSON.stringify(await bundle('worker.js'))};`,
};

const builtModules = {
    name: 'built',
    setup({ onResolve, onLoad }) {
        onResolve({ filter: /^built:/ }, ({ path }) => ({ path: path.slice('built:'.length), namespace: 'built' }));
        onLoad({ filter: /.*/, namespace: 'built' }, async ({ path }) => ({ contents: await built[path]() }));
    },
};

async function bundle(entry) {
    const { outputFiles } = await esbuild.build({
        entryPoints: [join(here, 'source', entry)],
        bundle: true,
        minify: true,
        write: false,
        format: 'iife',
        target: ['chrome109', 'firefox115', 'safari16.4'],
        nodePaths: [join(packages, 'node_modules')],
        alias: { 'k-cnvrt/inline': join(modulePackage, 'inline.js') },
        plugins: [builtModules],
        logLevel: 'warning',
    });
    return outputFiles[0].text;
}

async function styles() {
    const { code } = await esbuild.transform(read('style.css'), { loader: 'css', minify: true });
    return code;
}

const script = await bundle('main.js');
// Nothing may be loaded from anywhere or sent anywhere. Styles are inline since editors make them while they run.
const policy = [
    "default-src 'none'",
    `script-src 'sha256-${sha256(script, 'base64')}' 'wasm-unsafe-eval'`,
    'worker-src blob:',
    "style-src 'unsafe-inline'",
    'img-src data:',
    "base-uri 'none'",
    "form-action 'none'",
].join('; ');

const parts = { POLICY: policy, STYLE: await styles(), SCRIPT: script };
writeFileSync(
    output,
    read('index.html').replace(/\{\{(\w+)\}\}/g, (_, name) => parts[name]),
);
