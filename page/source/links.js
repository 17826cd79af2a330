// What belongs together: the member at the cursor, or under the resting mouse, and what it becomes or was made of on
// the other side. One thing lights up at a time.
import { StateEffect, StateField } from '@codemirror/state';
import { Decoration, EditorView, gutter, GutterMarker } from '@codemirror/view';
import { Asker, SUPERSEDED } from './asker.js';
import { byId, countText, element } from './elements.js';
import { showPane } from './lists.js';
import { choice, editors, page, settings, unchanged } from './page.js';

// How long the cursor or the mouse has to rest, in milliseconds.
const REST = 300;
const MOST_PLACES = 4;

const OTHER = { input: 'result', result: 'input' };

const asker = new Asker();

let isOn = true;
let timer = null;
let lit = null; // { side, pointer, place, answer, partners }
let visited = -1; // which partner was gone to last
let arrival = null; // where in the other editor that left the cursor
let mouse = null; // where it rests in an editor

// In an editor

const light = StateEffect.define();

class LinkMark extends GutterMarker {
    toDOM() {
        return document.createTextNode('◆');
    }
}

const linkMark = new LinkMark();
const frames = { asked: Decoration.mark({ class: 'cm-asked' }), partner: Decoration.mark({ class: 'cm-partner' }) };

// The name of a member and its value, as far as they are on one line.
function frame(doc, { start, to }, kind) {
    const end = Math.min(to, doc.lineAt(start).to);
    return end > start ? [frames[kind].range(start, end)] : [];
}

const lights = StateField.define({
    create: () => Decoration.none,
    update(value, transaction) {
        let set = value.map(transaction.changes);
        for (const effect of transaction.effects) {
            if (!effect.is(light)) continue;
            const { places, kind } = effect.value;
            set = Decoration.set(
                places.flatMap((place) => frame(transaction.newDoc, place, kind)),
                true,
            );
        }
        return set;
    },
    provide: (field) => EditorView.decorations.from(field),
});

function marksOf(view, line) {
    let isMarked = false;
    view.state.field(lights).between(line.from, line.to, (from) => {
        isMarked ||= from >= line.from;
    });
    return isMarked ? linkMark : null;
}

/** What an editor needs for it. */
export const linkable = [
    lights,
    gutter({
        class: 'cm-links',
        lineMarker: marksOf,
        lineMarkerChange: (update) => update.startState.field(lights) !== update.state.field(lights),
        initialSpacer: () => linkMark,
    }),
];

// Asking

function rest(side, offset) {
    clearTimeout(timer);
    timer = setTimeout(() => ask(side, offset()), REST);
}

// Why nothing can be asked; null where something can.
function obstacle() {
    if (choice().section !== null) return 'Links are those of a whole configuration: choose everything above.';
    if (editors.base.length > 0) return 'Links are those of a whole result: choose without a base below.';
    if (page.answer !== null && page.answer.output === null) return 'Nothing is converted, so nothing is linked.';
    return null;
}

const hint = () => obstacle() ?? 'Rest on a member, on either side, to see what belongs to it on the other.';

async function ask(side, offset) {
    if (!isOn || offset === null || page.answer === null || obstacle() !== null) return show(null);
    const { section, ...about } = settings();
    if (lit?.side === side && isInside(lit.place, offset)) return;
    const isCurrent = [unchanged(editors.input), unchanged(editors.result)];
    const answer = await asker.ask('links', { ...about, output: editors.result.text, side, offset }).catch(() => null);
    if (answer === SUPERSEDED || !isOn || !isCurrent.every((is) => is())) return;
    show(answer && { side, ...answer });
}

// Not in a member that holds others: another of them may be asked for.
function isInside({ start, to }, offset) {
    const editor = editors[lit.side];
    return offset >= start && offset <= to && editor.placeOf(start).line === editor.placeOf(to).line;
}

// Showing

const WORDS = {
    regenerated: 'is made anew by the conversion, whatever it says.',
    lost: 'is lost.',
};

// With what it is in, where that is left out.
function isLeftOut(pointer) {
    const left = page.answer.problems.filter((problem) => problem.function === 'partial');
    return left.some((problem) => `${pointer}/`.startsWith(`${problem.pointer}/`));
}

function words({ side, pointer, answer, partners }) {
    if (side === 'input' && isLeftOut(pointer)) return 'is left out of the result, because of an error.';
    if (answer in WORDS) return WORDS[answer];
    if (side === 'result') return partners.length > 0 ? 'is made of' : 'is made by the conversion itself.';
    return partners.length > 0 ? 'becomes' : 'is read, and would matter if it said something else.';
}

function show(answer) {
    lit = answer;
    visited = -1;
    for (const side of ['input', 'result']) {
        const isAsked = lit?.side === side;
        const places = lit === null ? [] : isAsked ? [lit.place] : lit.partners.map(({ place }) => place);
        editors[side].view.dispatch({ effects: light.of({ places, kind: isAsked ? 'asked' : 'partner' }) });
    }
    showPlaces();
    if (mouse !== null) renewTarget();
}

// What gets a frame is made anew. What else waits for the mouse to rest there looks at what it moved over last.
function renewTarget() {
    const target = document.elementFromPoint(mouse.clientX, mouse.clientY);
    target?.dispatchEvent(new MouseEvent('mousemove', { ...mouse, bubbles: true }));
}

function showPlaces() {
    const parent = byId('links-places');
    parent.replaceChildren();
    if (lit === null) {
        byId('links-words').textContent = isOn ? hint() : '';
        return;
    }
    byId('links-words').replaceChildren(element('code', {}, lit.pointer), ` ${words(lit)}`);
    const shown = lit.partners.slice(0, MOST_PLACES).map((partner, i) => placeButton(partner, i));
    const rest = lit.partners.length - shown.length;
    parent.append(...shown);
    if (rest > 0) parent.append(element('span', { class: 'hint' }, `and ${countText(rest, 'more', 'more')}`));
    showArrows();
}

const ARROWS = { above: '↑', below: '↓', there: '' };
const WHERE = { above: 'further up', below: 'further down', there: 'on the screen' };

// Which partners are out of view changes with scrolling.
function showArrows() {
    if (lit === null) return;
    const { view } = editors[OTHER[lit.side]];
    for (const [i, arrow] of byId('links-places').querySelectorAll('.arrow').entries()) {
        const where = whereOf(view, lit.partners[i].place.start);
        arrow.textContent = ARROWS[where];
        arrow.parentElement.title = WHERE[where];
    }
}

function placeButton({ pointer }, index) {
    return element(
        'button',
        { type: 'button', onclick: () => goTo(index) },
        element('span', { class: 'arrow', 'aria-hidden': 'true' }),
        element('code', {}, pointer),
    );
}

function whereOf(view, offset) {
    const { top, bottom } = view.lineBlockAt(offset);
    const { scrollTop, clientHeight } = view.scrollDOM;
    if (top < scrollTop) return 'above';
    return bottom > scrollTop + clientHeight ? 'below' : 'there';
}

function goTo(index) {
    const side = OTHER[lit.side];
    const { place } = lit.partners[index];
    visited = index;
    arrival = place.start;
    showPane(side);
    editors[side].goTo(place.start);
}

/** To the next partner of what is lit. */
export function nextLink() {
    if (lit !== null && lit.partners.length > 0) goTo((visited + 1) % lit.partners.length);
    return true;
}

function followCursor(side) {
    const { head } = editors[side].view.state.selection.main;
    if (lit !== null && side !== lit.side && head === arrival) return;
    arrival = null;
    rest(side, () => head);
}

/** After another answer. */
export function refreshLinks() {
    show(null);
    for (const side of ['input', 'result']) if (editors[side].view.hasFocus) followCursor(side);
}

/** Follows cursor and mouse in both editors. */
export function followLinks() {
    for (const side of ['input', 'result']) {
        const { view } = editors[side];
        editors[side].followers.push(() => view.hasFocus && followCursor(side));
        view.scrollDOM.addEventListener('mousemove', ({ clientX, clientY, buttons, isTrusted }) => {
            if (!isTrusted || buttons !== 0) return;
            mouse = { clientX, clientY };
            rest(side, () => view.posAtCoords({ x: clientX, y: clientY }));
        });
        view.scrollDOM.addEventListener('mouseleave', () => {
            mouse = null;
            clearTimeout(timer);
        });
        view.scrollDOM.addEventListener('scroll', showArrows, { passive: true });
    }
    byId('links-switch').addEventListener('click', () => {
        isOn = !isOn;
        byId('links-switch').setAttribute('aria-pressed', String(isOn));
        show(null);
    });
    show(null);
}
