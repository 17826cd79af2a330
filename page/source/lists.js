// The lists under the editors: problems, losses, and what is different there and back.
import { Asker, SUPERSEDED } from './asker.js';
import { byId, countText, element, numberText } from './elements.js';
import { beforeAndAfter, showFindings, showWords } from './findings.js';
import { choice, editors, page, settings, unchanged } from './page.js';
import { makeTabs } from './tabs.js';

// Each has a worker of its own, so that neither waits for the other.
const lossFinder = new Asker();
const traveller = new Asker();

let tab = 'problems';

// What is found out only when one looks.
const onShow = { return: showReturn };

export const tabShown = () => tab;
export const whenTabShown = (id, show) => (onShow[id] = show);

export const showTab = makeTabs(document.querySelector('.panel .tabs'), (id) => {
    tab = id;
    for (const panel of document.querySelectorAll('.findings')) panel.hidden = panel.id !== id;
    onShow[id]?.();
});

export const showPane = makeTabs(document.querySelector('.switch'), (id) => {
    document.querySelector('main').dataset.shown = id;
});

const by = (words) => element('span', { class: 'by' }, words);

function setCount(list, count, kind = null) {
    byId(`${list}-count`).textContent = count > 0 ? numberText(count) : '';
    byId(`${list}-count`).dataset.kind = kind ?? '';
}

/** Shows the lists of another answer. */
export function showLists() {
    showProblems();
    showLosses();
    setCount('return', 0);
    if (tab === 'return') showReturn();
}

/** Says what the lists are for. */
export function showEmptyLists() {
    showWords(byId('problems'), 'What is wrong with a configuration is listed here, with its place.');
    showWords(byId('losses'), 'What the other layout does not hold is listed here, with what comes back of it.');
    showWords(byId('return'), 'What is different after a conversion there and back is listed here.');
    for (const list of ['problems', 'losses', 'return']) setCount(list, 0);
    byId('loss-status').hidden = true;
}

// An error that a note says nothing more of than what was done with its member has that note in its row.
function withNotes(problems) {
    const errors = new Map();
    for (const { severity, pointer, offset } of problems) if (severity === 'error') errors.set(pointer, offset);
    const isOfError = ({ severity, pointer, offset, message }) =>
        severity === 'note' && errors.get(pointer) === offset && !message.includes(':');
    const notes = new Map(problems.filter(isOfError).map(({ pointer, message }) => [pointer, message]));
    const rows = problems.filter((problem) => !isOfError(problem));
    return rows.map((row) => ({ ...row, note: row.severity === 'error' ? notes.get(row.pointer) : undefined }));
}

function problemItem(problem) {
    const note = problem.note === undefined ? null : element('span', { class: 'also' }, ` · ${problem.note}`);
    const message = element('span', {}, problem.message, note);
    return { ...problem, kind: problem.severity, details: [message, by(problem.function)] };
}

function showProblems() {
    const { problems } = page.answer;
    const items = withNotes(problems).map(problemItem);
    const bad = problems.filter(({ severity }) => severity !== 'note');
    const hasErrors = bad.some(({ severity }) => severity === 'error');
    setCount('problems', bad.length, hasErrors ? 'bad' : 'caution');
    byId('problems').dataset.stale = 'false';
    if (items.length === 0) showWords(byId('problems'), 'No problems.');
    else showFindings(byId('problems'), items, goTo);
    showFirst(bad[0]);
    if (hasErrors && page.isFresh) showTab('problems');
    page.isFresh = false;
}

// On a narrow screen the list is further down than one sees.
function showFirst(problem) {
    const button = byId('first-problem');
    button.hidden = problem === undefined;
    if (problem === undefined) return;
    const place = problem.line === null ? [] : [element('span', { class: 'place' }, `Line ${problem.line}`)];
    button.replaceChildren(...place, element('span', {}, problem.message));
    button.onclick = () => goTo(problem);
}

function goTo(item, row) {
    for (const other of document.querySelectorAll('.findings [aria-current]')) other.removeAttribute('aria-current');
    row?.setAttribute('aria-current', 'true');
    if (item.offset === null) return;
    const editor = item.which === 'other' ? 'base' : 'input';
    if (editor === 'base') showTab('base');
    else showPane('input');
    editors[editor].goTo(item.offset, item.length);
}

/** To the next problem from the cursor, or the one before it. */
export function step(direction) {
    const places = (page.answer?.problems ?? [])
        .filter(({ which, offset }) => which === 'text' && offset !== null)
        .sort((a, b) => direction * (a.offset - b.offset));
    if (places.length === 0) return true;
    const { head } = editors.input.view.state.selection.main;
    goTo(places.find(({ offset }) => direction * (offset - head) > 0) ?? places[0]);
    return true;
}

const ONLY_WHOLE_LOSSES = 'Losses are those of a whole configuration: choose everything above.';
const UNKNOWN_LOSSES = 'What is lost could not be found out: kcnvrt losses tells it of the largest texts, too.';

// What a worker answers, null where it cannot; SUPERSEDED also when the text is another one by then.
async function answerTo(asker, question) {
    const isCurrent = unchanged(editors.input);
    const answer = await asker.ask(question, settings()).catch(() => null);
    return isCurrent() ? answer : SUPERSEDED;
}

// The losses are asked for by themselves: what will be lost is the third question that everybody has.
async function showLosses() {
    const parent = byId('losses');
    byId('loss-status').hidden = true;
    if (page.answer.output === null) return showNoLosses('Nothing is converted, so nothing can be said about losses.');
    if (choice().section !== null) return showNoLosses(ONLY_WHOLE_LOSSES);
    parent.dataset.stale = 'true';
    const losses = await answerTo(lossFinder, 'lossesOf');
    if (losses === SUPERSEDED) return;
    if (losses === null) return showNoLosses(UNKNOWN_LOSSES);
    parent.dataset.stale = 'false';
    setCount('losses', losses.length, 'caution');
    showLossStatus(losses);
    const items = losses.map((loss) => ({ ...loss, details: [beforeAndAfter(loss), by(loss.kind)] }));
    if (items.length === 0) showWords(parent, 'Nothing is lost: all of it comes back from the other layout as it was.');
    else showFindings(parent, items, goTo);
}

// What comes back although it was not there is more of a configuration, not less.
function showLossStatus(losses) {
    const added = losses.filter(({ kind }) => kind === 'defaulted').length;
    const lost = losses.length - added;
    const parts = [
        lost > 0 ? countText(lost, 'loss', 'losses') : null,
        added > 0 ? countText(added, 'addition') : null,
    ];
    const pill = byId('loss-status');
    pill.hidden = false;
    pill.dataset.kind = lost > 0 ? 'caution' : added > 0 ? 'busy' : 'good';
    pill.querySelector('.words').textContent = parts.filter(Boolean).join(', ') || 'Nothing is lost';
}

function showNoLosses(words) {
    setCount('losses', 0);
    byId('losses').dataset.stale = 'false';
    showWords(byId('losses'), words);
}

async function showReturn() {
    const parent = byId('return');
    if (page.answer === null) return;
    if (choice().section !== null)
        return showWords(parent, 'There and back goes a whole configuration: choose everything above.');
    parent.dataset.stale = 'true';
    const operations = await answerTo(traveller, 'thereAndBack');
    if (operations === SUPERSEDED) return;
    parent.dataset.stale = 'false';
    if (operations === null) return showWords(parent, 'Nothing can be converted there and back.');
    setCount('return', operations.length);
    if (operations.length === 0) return showWords(parent, 'All of it comes back as it was.');
    const items = operations.map((operation) => {
        const place = editors.input.placeOf(operation.offset);
        return { ...operation, ...place, details: [beforeAndAfter(operation)] };
    });
    showFindings(parent, items, goTo);
}

byId('loss-status').addEventListener('click', () => {
    showTab('losses');
    byId('losses').focus();
});
