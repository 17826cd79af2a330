// What is expected at a place of a JSON text that somebody is typing: texts that are not quite JSON are read as far as
// they make sense.
import { endOfString, endOfBareWord, isClosing, isOpening, skipBlanks, unquoted } from './json_text.js';

const QUOTE = '"';

// The pieces of a text: { from, to, kind }, where kind is one of `{[]}:,` or "word".
function* pieces(text) {
    for (let from = skipBlanks(text, 0); from < text.length; from = skipBlanks(text, from)) {
        const unit = text.charCodeAt(from);
        const isWord = !isOpening(unit) && !isClosing(unit) && text[from] !== ':' && text[from] !== ',';
        const to = !isWord ? from + 1 : text[from] === QUOTE ? endOfString(text, from) : endOfBareWord(text, from);
        yield { from, to, kind: isWord ? 'word' : text[from] };
        from = to;
    }
}

// An object or array that is open: the name, or number, of the member that comes, and which part of it is next.
class Level {
    names = [];
    type = null;
    name = null;
    index = 0;
    valueEnd = null;

    constructor(isObject) {
        this.isObject = isObject;
        this.next = isObject ? 'name' : 'value';
    }

    // A name may follow without the comma that is still to be typed.
    takeWord(text, { from, to }) {
        if (this.isObject && this.next !== 'value') {
            this.name = unquoted(text, from, to);
            this.names.push(this.name);
            this.next = 'colon';
        } else {
            if (this.isObject && this.name === 'type') this.type = unquoted(text, from, to);
            this.takeValue(to);
        }
    }

    takeValue(to) {
        this.valueEnd = to;
        this.next = 'comma';
    }

    takeComma() {
        this.index += 1;
        this.next = this.isObject ? 'name' : 'value';
        this.valueEnd = null;
    }

    get step() {
        return this.isObject ? (this.name ?? '') : String(this.index);
    }
}

// What is replaced by a word at the cursor: of a text without its end, no more than what one has typed.
function wordAt(text, offset, { from, to }) {
    const rest = text.slice(offset, to);
    return { from, to: /^[\w.-]*"?$/.test(rest) ? to : offset };
}

/**
 * What is expected at an offset: null, or { expects: "name" or "value", from, to, path, siblings, before, after }: what
 * is there from `from` to `to`, the way to the object (for a value: to the value), the names that it has besides, where
 * a comma is missing before the name (or null), and what follows.
 */
export function expectedAt(text, offset) {
    const open = [];
    let found = null;
    const find = (place) => {
        const level = open.at(-1);
        if (level === undefined) return;
        const expects = level.isObject && level.next !== 'value' ? 'name' : 'value';
        // Behind a name is its colon, and behind an element a comma.
        if (level.next === 'colon' || (level.next === 'comma' && !level.isObject)) return;
        const own = expects === 'name' && place.to > place.from ? unquoted(text, place.from, place.to) : null;
        found = { ...place, expects, own, levels: [...open], steps: open.map(({ step }) => step) };
        found.before = expects === 'name' && level.next === 'comma' ? level.valueEnd : null;
    };
    for (const piece of pieces(text)) {
        const isHere = found === null && (offset < piece.to || (offset === piece.to && piece.kind === 'word'));
        if (isHere) {
            // Before a value one means that value, before a name what could come there.
            const isInside =
                piece.kind === 'word' &&
                (offset > piece.from || (offset === piece.from && open.at(-1)?.next === 'value'));
            find(isInside ? wordAt(text, offset, piece) : { from: offset, to: offset });
            if (found === null) return null;
        }
        // Of a text without its end, what comes behind the cursor is not a part.
        take(
            text,
            found?.to === offset && piece.from < offset && piece.to > offset ? { ...piece, to: offset } : piece,
            open,
        );
        if (found !== null && open.length === 0) break;
    }
    if (found === null) find({ from: offset, to: offset });
    return found && result(text, found);
}

function take(text, piece, open) {
    const level = open.at(-1);
    if (piece.kind === '{' || piece.kind === '[') {
        open.push(new Level(piece.kind === '{'));
    } else if (piece.kind === '}' || piece.kind === ']') {
        open.pop();
        open.at(-1)?.takeValue(piece.to);
    } else if (piece.kind === ':') {
        if (level?.isObject) level.next = 'value';
    } else if (piece.kind === ',') {
        level?.takeComma();
    } else {
        level?.takeWord(text, piece);
    }
}

function result(text, { from, to, expects, own, levels, steps, before }) {
    // A level's type may stand anywhere in it. The way to the object: the top has no name.
    const path = steps.slice(0, -1).map((name, i) => ({ name, type: levels[i + 1].type }));
    if (expects === 'value') path.push({ name: steps.at(-1), type: null });
    const siblings = levels.at(-1).names.slice();
    if (own !== null) siblings.splice(siblings.indexOf(own), 1);
    const next = text[skipBlanks(text, to)] ?? '';
    return { expects, from, to, path, siblings, before, after: next };
}
