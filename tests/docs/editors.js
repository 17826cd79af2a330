// What docs/editors.md says of VS Code is what its language service for JSON does with the settings shown there:
// editors.js TREE.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { basename, join } from 'node:path';
import languageService from 'vscode-json-languageservice';

const { getLanguageService, TextDocument } = languageService;
const tree = process.argv[2];
const read = (...path) => readFileSync(join(tree, ...path), 'utf8');
const page = read('docs/editors.md');
const settings = JSON.parse(/```json\n(.*?)```/s.exec(page)[1]);
const installed = 'file:///usr/share/k_cnvrt/';

const service = getLanguageService({
    schemaRequestService: async (url) => {
        assert.ok(url.startsWith(installed), url);
        return read('schemas', basename(url));
    },
});
service.configure({ schemas: settings['json.schemas'].map(({ fileMatch, url }) => ({ fileMatch, uri: url })) });

/** A document as the service sees it; "¦" in the text is where the cursor is. */
function open(name, text) {
    const document = TextDocument.create(`file:///home/someone/${name}`, 'json', 1, text.replace('¦', ''));
    return [document, document.positionAt(Math.max(text.indexOf('¦'), 0)), service.parseJSONDocument(document)];
}

const offered = async (...file) => (await service.doComplete(...open(...file))).items.map(({ label }) => label);

async function shown(...file) {
    const hover = await service.doHover(...open(...file));
    return hover === null ? '' : [hover.contents].flat().join('\n').replaceAll('\\', '');
}

/** The texts that are marked. */
async function marked(...file) {
    const [document, , json] = open(...file);
    return (await service.doValidation(document, json)).map(({ range }) => document.getText(range));
}

const old = (members) => `{"ifaces": {"eth4": {"type": "ethernet"${members}}}}`;
const new_ = (members) => `{"Device": {"Ifaces": {"ethernet": {"1": {"ifname_l2": "eth4"${members}}}}}}`;

for (const [name, layout, becomes] of [
    ['gateway.old.json', old, '/Device/Ifaces/'],
    ['gateway.new.json', new_, '/ifaces/'],
]) {
    const names = await offered(name, layout(', "¦"'));
    for (const member of ['mac', 'services', 'mtu']) assert.ok(names.includes(member), `${name}: ${names}`);
    assert.ok((await shown(name, layout(', "m¦ac": ""'))).includes(`becomes ${becomes}`), name);
    assert.deepEqual(await marked(name, layout(', "mac": 5')), ['5']);
    assert.deepEqual(await marked(name, read('examples', `home-${name}`)), []);
}
assert.deepEqual(await marked('package.json', old(', "mac": 5')), [], 'other files are left alone');

// The others get the same, in their own words.
for (const language of ['lua', 'vim']) {
    const [, code] = new RegExp(`\`\`\`${language}\n(.*?)\`\`\``, 's').exec(page);
    const said = [...code.matchAll(/fileMatch'?(?:: \[| = {)'(.*?)'[\]}], '?url'?(?: =|:) '(.*?)'/g)];
    assert.deepEqual(said.map(([, fileMatch, url]) => ({ fileMatch: [fileMatch], url })), settings['json.schemas']);
}
