// The page: what is in it, what is asked of the worker, and what is shown of its answers.
import { Prec } from '@codemirror/state';
import { EditorView, keymap } from '@codemirror/view';
import { checksum } from 'built:checksum';
import { example } from 'built:example';
import { Asker, SUPERSEDED } from './asker.js';
import { Editor } from './editor.js';
import { byId, countText, element, sizeText } from './elements.js';
import { copyText, NotText, readFile, resultName, saveFile } from './files.js';
import { completing, followMember, tellMember, telling } from './help.js';
import { showEmptyLists, showLists, showPane, step } from './lists.js';
import { followLinks, linkable, nextLink, refreshLinks } from './links.js';
import { copyOf } from './masks.js';
import { editors, page, settings, unchanged } from './page.js';
import { CONVERTING, EMPTY, failed, isOfBase, layoutMade, stateOf } from './states.js';
import { followTheme } from './theme.js';

// How long typing has to rest before a text of some length is converted, in milliseconds.
const REST = [
    [64e3, 60],
    [1e6, 200],
    [Infinity, 500],
];

const LARGE = 64e3;

const converter = new Asker();
const masker = new Asker();

// Editors

const input = (editors.input = new Editor(byId('input-editor'), {
    label: 'Input: a configuration as JSON',
    words: 'Paste, drop or open a configuration',
    onChange: inputChanged,
    extensions: [
        EditorView.domEventHandlers({ paste }),
        linkable,
        completing,
        telling('input'),
        Prec.high(
            keymap.of([
                { key: 'F8', run: () => step(1) },
                { key: 'Shift-F8', run: () => step(-1) },
                { key: 'Mod-Enter', run: nextLink },
            ]),
        ),
    ],
}));

const result = (editors.result = new Editor(byId('result-editor'), {
    label: 'Result: the configuration in the other layout',
    words: 'The result comes here',
    isReadOnly: true,
    extensions: [linkable, telling('result'), Prec.high(keymap.of([{ key: 'Mod-Enter', run: nextLink }]))],
}));

const base = (editors.base = new Editor(byId('base-editor'), {
    label: 'Base: a configuration to compare the result with',
    words: 'Paste, drop or open a base',
    onChange: () => schedule(),
}));

// What replaces the example, or an empty page, is a new document.
function paste(event) {
    const [file] = event.clipboardData?.files ?? [];
    const text = event.clipboardData?.getData('text/plain') ?? '';
    if (file !== undefined) openFile(file);
    else if (page.isExample && text !== '') load(null, text);
    else return false;
    event.preventDefault();
    return true;
}

// The number of the text that was opened last in each editor.
const opened = new Map();
let openings = 0;

// Texts that are opened one after the other may be ready in another order: tells whether this one may be shown still,
// and that it is.
function turn(editor) {
    const own = ++openings;
    return () => {
        if (own < opened.get(editor)) return false;
        opened.set(editor, own);
        return true;
    };
}

// A large text is shown when its secrets are known: to look for them here would hold the page up.
async function load(name, text, note = null, takeTurn = turn(input)) {
    const secrets = text.length > LARGE ? await masker.ask('secretsIn', { text }).catch(() => null) : null;
    if (secrets === SUPERSEDED || !takeTurn()) return;
    page.name = name;
    page.isExample = false;
    page.isFresh = true;
    page.note = note;
    input.load(text, secrets);
    input.focus();
}

function inputChanged() {
    if (input.length === 0) page.name = null;
    schedule();
}

// Asking

let timer = null;

function schedule() {
    document.documentElement.dataset.waits = 'true';
    clearTimeout(timer);
    const [, rest] = REST.find(([length]) => input.length <= length);
    timer = setTimeout(convert, rest);
}

function question() {
    if (base.length === 0) return ['conversion', settings()];
    const kind = byId('base-result').value;
    const about = { base: base.text, mergePatch: kind === 'merge', isApplied: kind === 'applied' };
    return ['changes', { ...settings(), ...about }];
}

async function convert() {
    clearTimeout(timer);
    if (input.length === 0) return showEmpty();
    const isCurrent = [unchanged(input), unchanged(base)];
    const slow = setTimeout(() => showStale(true), 150);
    try {
        const answer = await converter.ask(...question());
        if (answer !== SUPERSEDED && isCurrent.every((is) => is())) showAnswer(answer);
    } catch (error) {
        showAnswer(failed(error));
    }
    clearTimeout(slow);
}

// Showing

function showState({ kind, words }) {
    byId('status').dataset.kind = kind;
    byId('status').querySelector('.words').textContent = words;
}

function showStale(isStale) {
    byId('result').dataset.stale = String(isStale);
    byId('problems').dataset.stale = String(isStale);
    if (isStale) showState(CONVERTING);
}

function showAnswer(answer) {
    page.answer = answer;
    showStale(false);
    showState(stateOf(answer));
    // Without an answer those that are known stay masked.
    if (answer.inputSecrets !== undefined) input.secrets = answer.inputSecrets;
    if (answer.baseSecrets !== undefined) base.secrets = answer.baseSecrets;
    page.isKept = answer.status === 'unreadable' && result.length > 0 && !page.isFresh;
    if (!page.isKept) result.replace(answer.output ?? '', answer.outputSecrets ?? []);
    byId('result').dataset.kept = String(page.isKept);
    input.problems = answer.problems.filter(({ which }) => which === 'text');
    base.problems = answer.problems.filter(({ which }) => which === 'other');
    showFacts();
    showSections();
    showRemedy();
    showLists();
    refreshLinks();
    delete document.documentElement.dataset.waits;
}

function showEmpty() {
    page.answer = null;
    page.isKept = false;
    byId('result').dataset.kept = 'false';
    showStale(false);
    showState(EMPTY);
    result.replace('', []);
    input.problems = [];
    showFacts();
    showRemedy();
    showEmptyLists();
    delete document.documentElement.dataset.waits;
}

function isIncomplete() {
    return page.answer?.status === 'rejected' && page.answer.output !== null;
}

const DIFFERENCES = { patch: 'JSON Patch', merge: 'JSON Merge Patch' };

// The layout that the input has, where the answer says it.
function layoutRead(answer) {
    if (answer === null || (answer.status === 'wrong-layout' && !isOfBase(answer))) return null;
    return { new: 'old layout', old: 'new layout' }[layoutMade(answer)];
}

function showFacts() {
    const { answer } = page;
    const layout = answer && layoutMade(answer);
    const facts = (...parts) => parts.filter(Boolean).join(' · ');
    const size = (editor) => editor.length > 0 && sizeText(editor.length);
    byId('input-facts').textContent = facts(page.isExample ? 'an example' : page.name, layoutRead(answer), size(input));
    const kind = base.length > 0 ? DIFFERENCES[byId('base-result').value] : null;
    if (!page.isKept) page.made = kind ?? (layout && `${layout} layout`);
    byId('result-facts').textContent = result.length > 0 ? facts(page.made, size(result)) : '';
    for (const id of ['copy', 'save']) byId(id).disabled = result.length === 0 || page.isKept;
    showBanner('input-banner', page.note);
    showBanner('result-banner', page.isKept ? keptWords(answer) : isIncomplete() && incompleteWords(answer));
}

const keptWords = (answer) => `As it was when the ${isOfBase(answer) ? 'base' : 'input'} could be read last.`;

function incompleteWords({ problems }) {
    const left = problems.filter((problem) => problem.function === 'partial').length;
    const words = `Incomplete: ${countText(left, 'member')} with errors left out`;
    return base.length > 0 ? `${words}, which the base would lose.` : `${words}.`;
}

function showBanner(id, words) {
    byId(id).textContent = words || '';
    byId(id).hidden = !words;
}

// The sections that can be made in the layout that the result has.
function showSections() {
    const select = byId('section');
    const layout = layoutMade(page.answer) ?? 'new';
    if (select.dataset.layout === layout) return;
    const chosen = select.value;
    const options = page.sections[layout].map((name) => element('option', { value: `${layout} ${name}` }, name));
    select.replaceChildren(select.options[0], ...options);
    select.dataset.layout = layout;
    if (options.some(({ value }) => value === chosen)) select.value = chosen;
}

// One click that does what the words of the state say.
function showRemedy() {
    const button = byId('remedy');
    const hasSection = byId('section').value !== '';
    const isChosen = hasSection || byId('towards').value !== '';
    button.hidden = !(page.answer?.status === 'wrong-layout' && !isOfBase(page.answer) && isChosen);
    button.textContent = hasSection ? 'Convert everything' : 'Convert it the other way';
}

// Files

async function openFile(file, editor = input) {
    const takeTurn = turn(editor);
    try {
        const { name, text, note } = await readFile(file);
        if (editor === input) load(name, text, note, takeTurn);
        else if (takeTurn()) editor.load(text);
    } catch (error) {
        if (!(error instanceof NotText)) throw error;
        tell(error.message);
    }
}

function save() {
    if (byId('save').disabled) return;
    const kind = byId('base-result').value;
    const what =
        base.length === 0
            ? (byId('section').value.split(' ')[1] ?? null)
            : { patch: 'patch', merge: 'merge-patch' }[kind];
    const name = resultName(page.name, layoutMade(page.answer), { isIncomplete: isIncomplete(), what: what ?? null });
    saveFile(name, result.text);
    tell(`Saved as ${name}, with its passwords and keys`);
}

async function copy() {
    const isMasked = !page.showsSecrets && page.answer?.outputSecrets.length > 0;
    const isCopied = await copyText(copyOf(result.view.state));
    tell(!isCopied ? 'The browser does not let this page copy' : isMasked ? 'Copied, secrets masked' : 'Copied');
}

let toastTimer = null;

function tell(words) {
    byId('toast').textContent = words;
    clearTimeout(toastTimer);
    toastTimer = setTimeout(() => (byId('toast').textContent = ''), 6000);
}

// What can be done

showPane('input');

function pick(button, chooser, editor) {
    byId(button).addEventListener('click', () => byId(chooser).click());
    byId(chooser).addEventListener('change', () => {
        const [file] = byId(chooser).files;
        if (file !== undefined) openFile(file, editor);
        byId(chooser).value = '';
    });
}

pick('open', 'file', input);
pick('open-base', 'base-file', base);
byId('clear').addEventListener('click', () => load(null, ''));
byId('clear-base').addEventListener('click', () => base.load(''));
byId('copy').addEventListener('click', copy);
byId('save').addEventListener('click', save);
byId('keys').addEventListener('click', () => byId('keys-dialog').showModal());
byId('remedy').addEventListener('click', () => {
    for (const id of ['towards', 'section']) byId(id).value = '';
    convert();
});
byId('towards').addEventListener('change', () => {
    byId('section').value = '';
    convert();
});
for (const id of ['section', 'base-result']) byId(id).addEventListener('change', () => convert());

byId('secrets').addEventListener('click', () => {
    page.showsSecrets = !page.showsSecrets;
    byId('secrets').setAttribute('aria-pressed', String(page.showsSecrets));
    for (const editor of [input, result, base]) editor.showsSecrets = page.showsSecrets;
    convert();
});

const parts = ['#input', '#result', '.panel'];

// The next part of the page, from the one with the focus.
function movePart(direction) {
    const at = parts.findIndex((part) => document.querySelector(part).contains(document.activeElement));
    const next = parts[(at + direction + parts.length) % parts.length];
    if (next === '.panel') return document.querySelector('.tabs [aria-selected="true"]').focus();
    showPane(next.slice(1));
    (next === '#input' ? input : result).focus();
}

function closeTooltips() {
    for (const editor of [input, result, base]) editor.closeTooltips();
}

addEventListener('keydown', (event) => {
    const key = event.key.toLowerCase(); // also with Caps Lock
    const isCommand = (event.ctrlKey || event.metaKey) && !event.altKey && !event.shiftKey;
    if (isCommand && key === 's') save();
    else if (isCommand && key === 'o') byId('file').click();
    else if (event.key === 'Escape') return closeTooltips();
    else if (event.key === 'F6') movePart(event.shiftKey ? -1 : 1);
    else if (event.key === 'F1') tellMember();
    else if (event.key === 'F8' && !event.defaultPrevented) step(event.shiftKey ? -1 : 1);
    else return;
    event.preventDefault();
});

// A file may be dropped anywhere; on the base it is the base.
const hasFiles = (event) => event.dataTransfer?.types.includes('Files');
addEventListener(
    'dragover',
    (event) => {
        if (!hasFiles(event)) return;
        event.preventDefault();
        byId('drop').hidden = false;
    },
    true,
);
addEventListener(
    'dragleave',
    (event) => {
        if (event.relatedTarget === null) byId('drop').hidden = true;
    },
    true,
);
addEventListener(
    'drop',
    (event) => {
        if (!hasFiles(event)) return;
        event.preventDefault();
        event.stopPropagation();
        byId('drop').hidden = true;
        const [file, ...others] = event.dataTransfer.files;
        if (others.length > 0) tell(`Of ${others.length + 1} files only ${file.name} is opened`);
        openFile(file, byId('base').contains(event.target) ? base : input);
    },
    true,
);

// Start

followTheme(byId('theme'));
followLinks();
followMember();
byId('checksum').textContent = checksum;
byId('drop').hidden = true;

async function start() {
    try {
        const { version, sections } = await converter.ask('start');
        byId('version').textContent = `k_cnvrt ${version}`;
        page.sections = sections;
        const name = page.name;
        input.load(example);
        page.name = name;
    } catch (error) {
        showState(stateOf(failed(error)));
    }
}

start();
