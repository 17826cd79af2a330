// Help while one writes and reads: names and values to choose from at the cursor of the input, and what is known of a
// member, under the resting mouse and in a tab for the one at the cursor.
import {
    autocompletion,
    completionKeymap,
    completionStatus,
    pickedCompletion,
    startCompletion,
} from '@codemirror/autocomplete';
import { Prec } from '@codemirror/state';
import { hoverTooltip, keymap } from '@codemirror/view';
import { Asker, SUPERSEDED } from './asker.js';
import { byId, element } from './elements.js';
import { showTab, tabShown, whenTabShown } from './lists.js';
import { memberElements } from './member.js';
import { choice, editors, page } from './page.js';
import { layoutMade } from './states.js';

// Larger texts are not sent to the worker with every letter, but when one asks.
const LARGEST_AT_TYPING = 1e6;
// How long mouse or cursor has to rest, in milliseconds.
const MOUSE_REST = 400;
const CURSOR_REST = 200;

// What is offered must not be lost to a question about what was offered before.
const proposer = new Asker();
const describer = new Asker();

const panel = (known) => element('div', { class: 'member' }, ...memberElements(known, { isShort: true }));

// Completion

function put(option) {
    return (view, completion, from, to) => {
        const { text, caret, before } = option;
        const comma = before === null ? [] : [{ from: before, insert: ',' }];
        view.dispatch({
            changes: [...comma, { from, to, insert: text }],
            selection: { anchor: from + caret + comma.length },
            annotations: pickedCompletion.of(completion),
            userEvent: 'input.complete',
        });
        if (text !== option.name) startCompletion(view); // a name: now its value
    };
}

async function info({ path, layout }) {
    const known = await describer.ask('outlook', { path, layout }).catch(() => null);
    return known === SUPERSEDED || known === null ? null : panel(known);
}

async function complete(context) {
    const { state, pos } = context;
    const isTyped = !context.explicit;
    if (isTyped && (state.doc.length > LARGEST_AT_TYPING || !context.matchBefore(/["\w.-]+$/))) return null;
    const about = { text: state.doc.toString(), offset: pos, to: choice().to };
    const answer = await proposer.ask('proposals', about).catch(() => null);
    if (answer === SUPERSEDED || answer === null || context.aborted) return null;
    return {
        from: answer.from,
        to: answer.to,
        validFor: /^"?[\w.-]*$/,
        options: answer.options.map((option) => ({
            label: option.label,
            displayLabel: option.name,
            detail: option.detail,
            apply: put(option),
            info: () => info(option),
        })),
    };
}

/** What an editor needs to complete what is typed in it. */
export const completing = [
    autocompletion({ override: [complete], icons: false, defaultKeymap: false }),
    Prec.highest(keymap.of(completionKeymap)),
];

// What is known of a member

// Which layout a side has; null where its own names tell.
function layoutOf(side) {
    if (side === 'result') return editors.base.length > 0 ? null : page.answer && layoutMade(page.answer);
    return { new: 'old', old: 'new' }[choice().to] ?? null;
}

async function ask(side, offset) {
    if (choice().section !== null) return null;
    return describer.ask('description', { text: editors[side].text, offset, layout: layoutOf(side) }).catch(() => null);
}

// Not in the empty places of an object that has many lines.
function isAt(doc, { start, to }, offset) {
    return offset >= start && offset <= to && doc.lineAt(offset).number === doc.lineAt(start).number;
}

async function hover(side, view, offset) {
    if (completionStatus(view.state) !== null) return null;
    const known = await ask(side, offset);
    if (known === SUPERSEDED || known === null || !isAt(view.state.doc, known, offset)) return null;
    return { pos: known.start, above: true, create: () => ({ dom: panel(known) }) };
}

/** What an editor needs to say under the mouse what is known of a member, below its problems. */
export const telling = (side) =>
    Prec.low(hoverTooltip((view, offset) => hover(side, view, offset), { hoverTime: MOUSE_REST }));

// The tab follows the cursor of the editor that had the focus last.
let side = 'input';
let timer = null;

const HINT =
    'What is known of the member at the cursor is said here: what it becomes, which values it takes, and its messages.';
const ONLY_WHOLE = 'Members are known of whole configurations: choose everything above.';

async function showMember() {
    const parent = byId('member');
    const editor = editors[side];
    const known = await ask(side, editor.view.state.selection.main.head);
    if (known === SUPERSEDED) return;
    const words = choice().section === null ? HINT : ONLY_WHOLE;
    parent.replaceChildren(...(known === null ? [element('p', {}, words)] : memberElements(known)));
}

/** Says in the tab what is known of the member at the cursor, wherever that goes. */
export function followMember() {
    for (const name of ['input', 'result'])
        editors[name].followers.push(() => {
            if (!editors[name].view.hasFocus) return;
            side = name;
            clearTimeout(timer);
            if (tabShown() === 'member') timer = setTimeout(showMember, CURSOR_REST);
        });
    whenTabShown('member', showMember);
    byId('member').addEventListener('keydown', ({ key }) => {
        if (key === 'Escape') editors[side].focus();
    });
}

/** Leads to it. */
export function tellMember() {
    showTab('member');
    byId('member').focus();
    return true;
}
