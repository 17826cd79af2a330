// What is known of a member, for people: its counterparts, what becomes of its values, and its messages.
import { countText, element } from './elements.js';

const MOST_LINES = 4;
const MOST_NAMES = 24;

const OTHER = { old: 'new', new: 'old' };

const CONTAINERS = {
    object: 'An object',
    array: 'An array',
    list: 'A numbered list',
    names: 'An object, whose members have names of their own',
};

// What docs/mapping says of these kinds.
const KINDS = {
    name: 'Becomes the name of a member or of an entry.',
    chooses: 'Decides what becomes of the section or entry that it is in.',
};

const paragraph = (...children) => element('p', {}, ...children);
const code = (text) => element('code', {}, text);
const codes = (texts) => texts.flatMap((text, i) => (i === 0 ? [code(text)] : [', ', code(text)]));

const sentenceItem = ({ words, crossing }) => element('li', { 'data-crossing': crossing }, words);

function toldOf({ to, sentences }) {
    const [{ words }] = sentences;
    const heading = element('strong', {}, `To the ${to} layout`);
    if (sentences.length === 1) return [paragraph(heading, ` ${words}.`)];
    return [paragraph(heading), element('ul', {}, ...sentences.map(sentenceItem))];
}

function lineOf(layout, { kind, needsDslVlan, places, told, isPart }, most) {
    // What only the other layout tells of becomes this member.
    const arrow = told.some(({ to }) => to !== layout) ? '→' : '←';
    const words = { '→': 'becomes', '←': 'is made of' }[arrow];
    const sign = element('span', { class: 'arrow', role: 'img', 'aria-label': words }, arrow);
    const where = places.length === 0 ? ['nothing'] : codes(places);
    return element(
        'div',
        { class: 'line' },
        paragraph(sign, element('span', {}, ...where, needsDslVlan ? ' (only with --dsl-vlan)' : '')),
        ...(kind in KINDS ? [paragraph(KINDS[kind])] : []),
        ...(isPart ? [paragraph('Is a part of a value that is carried whole.')] : []),
        ...told.slice(0, most).flatMap(toldOf),
    );
}

function unknownWords({ isCarried }) {
    return isCarried
        ? 'It is not known: its object carries every member, as it is.'
        : 'It is not known: it would be dropped without a message.';
}

function containerOf({ is, names, sections, layout }) {
    const parts = [`${CONTAINERS[is] ?? 'An object'}.`];
    if (names.length > 0) {
        const rest = names.length - MOST_NAMES;
        parts.push(
            ' Members: ',
            ...codes(names.slice(0, MOST_NAMES)),
            rest > 0 ? ` and ${countText(rest, 'more', 'more')}.` : '.',
        );
    }
    const found =
        sections.length > 0 ? [paragraph(`In the ${OTHER[layout]} layout, in `, ...codes(sections), '.')] : [];
    return [paragraph(...parts), ...found];
}

/**
 * The elements that say it, of what the worker knows. In short it is what becomes of the member, without what the other
 * layout's becomes.
 */
export function memberElements(known, { isShort = false } = {}) {
    const { pointer, layout, lines, is, names } = known;
    const title = element('p', { class: 'title' }, code(pointer), element('span', {}, ` ${layout} layout`));
    const shown = lines.slice(0, MOST_LINES).map((line) => lineOf(layout, line, isShort ? 1 : undefined));
    const rest = lines.length - shown.length;
    if (rest > 0) shown.push(paragraph(`and ${countText(rest, 'more', 'more')}: kcnvrt mapping ${pointer}`));
    if (lines.length > 0) return [title, ...shown];
    if (is === null && names.length === 0) return [title, paragraph(unknownWords(known))];
    return [title, ...containerOf(known)];
}
