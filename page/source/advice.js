// What the page says of the layouts, as answers of the worker: what can be typed at the cursor, and what is known of a
// member. The conversion itself is not asked: the description of it is.
import { expectedAt } from './cursor.js';
import { memberMeant, members, namesOf, skipBlanks, unquoted } from './json_text.js';

const OTHER = { old: 'new', new: 'old' };

// The value that a name is typed with, and where in it the cursor comes.
const EMPTY = { object: '{}', list: '{}', names: '{}', array: '[]', text: '""' };

function topNames(text) {
    return Array.from(members(text, skipBlanks(text, 0)), ({ name }) => name);
}

function nameOption(name, is, layout, { after, before }) {
    const value = EMPTY[is] ?? '';
    const hasValue = after === ':';
    const text = JSON.stringify(name) + (hasValue ? '' : `: ${value}${after === '"' ? ',' : ''}`);
    const back = hasValue ? 0 : Math.ceil(value.length / 2) + (after === '"' ? 1 : 0);
    return { name, label: JSON.stringify(name), text, caret: text.length - back, detail: is ?? '', layout, before };
}

function nameOptions(reference, layout, place) {
    const known = reference.names(layout, place.path).filter(({ name }) => !place.siblings.includes(name));
    return known.map(({ name, is }) => {
        const path = [...place.path, { name, type: null }];
        const kind = is ?? (reference.isText(layout, path) ? 'text' : null);
        return { ...nameOption(name, kind, layout, place), path };
    });
}

// The way to a member that has a value: of a type, to the entry that has it.
function chosen(path, value) {
    if (path.at(-1)?.name !== 'type' || path.length < 2) return path;
    return [...path.slice(0, -2), { ...path.at(-2), type: value }, path.at(-1)];
}

function valueOptions(reference, layout, { path }) {
    return reference.values(layout, path).map(({ value, result }) => {
        const text = JSON.stringify(value);
        const detail = result === undefined ? '' : `becomes ${JSON.stringify(result)}`;
        return {
            name: text,
            label: text,
            text,
            caret: text.length,
            detail,
            layout,
            before: null,
            path: chosen(path, value),
        };
    });
}

/**
 * What can be typed at an offset: null, or { from, to, options }; of each option the
 * name, what typing is compared with, the text that is put there, and where in it the cursor comes.
 */
export function proposals(reference, { text, offset, to }) {
    const place = expectedAt(text, offset);
    if (place === null) return null;
    const layout = to === null ? reference.layoutOf(topNames(text)) : OTHER[to];
    // Before anything is there, it may become either.
    const layouts = layout !== null ? [layout] : place.path.length === 0 ? ['old', 'new'] : [];
    const optionsIn = place.expects === 'name' ? nameOptions : valueOptions;
    const options = layouts.flatMap((layout) => optionsIn(reference, layout, place));
    if (layouts.length > 1) for (const option of options) option.detail = `${option.layout} layout`;
    return { from: place.from, to: place.to, options };
}

// The way to a member, with the types that entries on it have.
function pathTo(text, pointer) {
    let at = skipBlanks(text, 0);
    return namesOf(pointer).map((name) => {
        const inner = [...members(text, at)].find((member) => member.name === name);
        at = inner?.from ?? text.length;
        const type = [...members(text, at)].find((member) => member.name === 'type');
        return { name, type: type === undefined ? null : unquoted(text, type.from, type.to) };
    });
}

/**
 * What is known of the member at an offset: null, or { pointer, start, to, layout } and what the
 * reference says.
 */
export function description(reference, { text, offset, layout = null }) {
    const member = memberMeant(text, offset);
    if (member === null || member.pointer === '') return null;
    const { pointer, start, to } = member;
    const its = layout ?? reference.layoutOf(topNames(text));
    if (its === null) return null;
    return { pointer, start, to, layout: its, ...reference.describe(its, pathTo(text, pointer)) };
}

/** What is known of a place that somebody could type. */
export function outlook(reference, { layout, path }) {
    const pointer = path.map(({ name }) => `/${name}`).join('');
    return { pointer, layout, ...reference.describe(layout, path) };
}
