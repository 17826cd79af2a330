// Lists of what was found, grouped by the section that it is in. A row leads to its place.
import { countText, element } from './elements.js';
import { namesOf } from './json_text.js';

const MOST_ROWS = 200;

// How each kind is shown, and what a screen reader says for the sign.
const SIGNS = {
    error: { sign: '✕', words: 'error' },
    warning: { sign: '!', words: 'warning' },
    note: { sign: 'i', words: 'note' },
    add: { sign: '+', words: 'comes' },
    remove: { sign: '−', words: 'goes' },
    replace: { sign: '~', words: 'changes' },
    dropped: { sign: '−', words: 'dropped' },
    cut: { sign: '…', words: 'cut' },
    changed: { sign: '~', words: 'changed' },
    defaulted: { sign: '+', words: 'defaulted' },
    renumbered: { sign: '#', words: 'renumbered' },
};

const NOT_SECTIONS = new Set(['Device', 'Services']);

/** The section that a place is in, as a person calls it. */
function sectionOf({ pointer, line }) {
    if (pointer === null && line === null) return 'Without a place';
    if (pointer === null) return 'The whole text';
    return namesOf(pointer).find((name) => !NOT_SECTIONS.has(name)) ?? 'The whole text';
}

function grouped(items) {
    const groups = new Map();
    for (const item of items) {
        const section = sectionOf(item);
        if (!groups.has(section)) groups.set(section, []);
        groups.get(section).push(item);
    }
    return groups;
}

function placeText({ line, column }) {
    return line === null || line === undefined ? '' : `${line}:${column}`;
}

function row(item, onChoose) {
    const { sign, words } = SIGNS[item.kind];
    const choose = (event) => onChoose(item, event.currentTarget);
    const button = element(
        'button',
        { type: 'button', onclick: choose },
        element('span', { class: 'sign', 'data-kind': item.kind, role: 'img', 'aria-label': words }, sign),
        element('span', { class: 'place' }, placeText(item)),
        element('code', {}, item.pointer === '' ? '/' : (item.pointer ?? '')),
        ...item.details,
    );
    return element('li', {}, button);
}

function group(section, items, onChoose) {
    const rows = items.map((item) => row(item, onChoose));
    return [element('h3', {}, `${section} `, element('span', {}, String(items.length))), element('ul', {}, ...rows)];
}

/**
 * Shows items in their groups: { kind, pointer, line, column, details }, where details are elements. The first few
 * hundred come at once, the others when they are asked for.
 */
export function showFindings(parent, items, onChoose, most = MOST_ROWS) {
    const groups = [...grouped(items.slice(0, most))].flatMap(([section, members]) =>
        group(section, members, onChoose),
    );
    const rest = items.length - most;
    if (rest > 0) {
        const showAll = () => {
            showFindings(parent, items, onChoose, most + 10 * MOST_ROWS);
            parent.focus();
        };
        groups.push(
            element(
                'button',
                { type: 'button', class: 'more', onclick: showAll },
                `${countText(rest, 'more')} …`.replace('mores', 'more'),
            ),
        );
    }
    parent.replaceChildren(...groups);
}

export function showWords(parent, words) {
    parent.replaceChildren(element('p', {}, words));
}

/** What was there and what comes in its place. */
export function beforeAndAfter({ before, after }) {
    const values = element('span', { class: 'values' });
    if (before !== null) values.append(element('del', {}, before));
    if (before !== null && after !== null)
        values.append(element('span', { class: 'arrow', role: 'img', 'aria-label': 'becomes' }, '→'));
    if (after !== null) values.append(element('ins', {}, after));
    return values;
}
