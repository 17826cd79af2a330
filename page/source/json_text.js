// Finding one's way in a JSON text without parsing it: large texts cost little, and places stay exact. Texts that are
// not quite JSON are walked as far as they make sense.

const QUOTE = 0x22;
const BACKSLASH = 0x5c;
const COMMA = 0x2c;
const COLON = 0x3a;
const OPEN_ARRAY = 0x5b;
const CLOSE_ARRAY = 0x5d;
const OPEN_OBJECT = 0x7b;
const CLOSE_OBJECT = 0x7d;

export function skipBlanks(text, at) {
    for (; at < text.length; ++at) {
        const unit = text.charCodeAt(at);
        if (unit !== 0x20 && unit !== 0x0a && unit !== 0x0d && unit !== 0x09) break;
    }
    return at;
}

// Behind the string that starts at `at`, or the end of its line: no JSON string reaches beyond that.
export function endOfString(text, at) {
    for (++at; at < text.length; ++at) {
        const unit = text.charCodeAt(at);
        if (unit === QUOTE) return at + 1;
        if (unit === 0x0a) return at;
        if (unit === BACKSLASH && text.charCodeAt(at + 1) !== 0x0a) ++at;
    }
    return text.length;
}

// Behind a number or a literal.
export function endOfBareWord(text, at) {
    for (const start = at; at < text.length; ++at) {
        const unit = text.charCodeAt(at);
        const isPart = unit > 0x20 && unit !== COMMA && unit !== COLON && unit !== QUOTE && !isBracket(unit);
        if (!isPart && at > start) break;
    }
    return at;
}

function isBracket(unit) {
    return isOpening(unit) || isClosing(unit);
}

export function isOpening(unit) {
    return unit === OPEN_OBJECT || unit === OPEN_ARRAY;
}

export function isClosing(unit) {
    return unit === CLOSE_OBJECT || unit === CLOSE_ARRAY;
}

function endOfWord(text, at) {
    return text.charCodeAt(at) === QUOTE ? endOfString(text, at) : endOfBareWord(text, at);
}

/** Behind the value that starts at `at`. */
export function endOfValue(text, at) {
    if (!isOpening(text.charCodeAt(at))) return endOfWord(text, at);
    for (let depth = 0; at < text.length;) {
        const unit = text.charCodeAt(at);
        if (isOpening(unit)) ++depth;
        if (isClosing(unit) && --depth === 0) return at + 1;
        at = unit === QUOTE ? endOfString(text, at) : at + 1;
    }
    return at;
}

/** A name or a text between quotes as what it stands for. */
export function unquoted(text, from, to) {
    try {
        return JSON.parse(text.slice(from, to));
    } catch {
        return text.slice(from + 1, to - 1);
    }
}

/**
 * The members or elements of the object or array that starts at `at`: { name, start, from, to }, where a member starts
 * at its name and its value is from `from` to `to`.
 */
export function* members(text, at) {
    const unit = text.charCodeAt(at);
    if (!isOpening(unit)) return;
    const isObject = unit === OPEN_OBJECT;
    at = skipBlanks(text, at + 1);
    for (let index = 0; at < text.length && !isClosing(text.charCodeAt(at)); ++index) {
        const start = at;
        let name = String(index);
        if (isObject) {
            const end = endOfWord(text, at);
            name = unquoted(text, at, end);
            at = skipBlanks(text, end);
            if (text.charCodeAt(at) === COLON) at = skipBlanks(text, at + 1);
        }
        const to = endOfValue(text, at);
        yield { name, start, from: at, to };
        at = skipBlanks(text, to);
        if (text.charCodeAt(at) === COMMA) at = skipBlanks(text, at + 1);
        else if (at === start) return; // nothing that makes sense
    }
}

/** One step of a JSON Pointer. */
export function escaped(name) {
    return name.replaceAll('~', '~0').replaceAll('/', '~1');
}

/** The names on the way of a JSON Pointer. */
export function namesOf(pointer) {
    return pointer
        .split('/')
        .slice(1)
        .map((name) => name.replaceAll('~1', '/').replaceAll('~0', '~'));
}

/** The innermost member at an offset, { pointer, start, from, to }, or null outside the text's value. */
export function memberAt(text, offset) {
    const top = skipBlanks(text, 0);
    let place = { pointer: '', start: top, from: top, to: endOfValue(text, top) };
    if (offset < place.start || offset > place.to) return null;
    for (;;) {
        let inner = null;
        for (const member of members(text, place.from)) {
            if (member.start > offset) break;
            if (offset <= member.to) inner = member;
            if (offset < member.to) break;
        }
        if (inner === null) return place;
        place = { ...inner, pointer: `${place.pointer}/${escaped(inner.name)}` };
    }
}

/** Likewise, but behind a member, or before it on its line, one means that member and not the object around it. */
export function memberMeant(text, offset) {
    const line = text.lastIndexOf('\n', offset - 1) + 1;
    const member = memberAt(text, offset);
    return member !== null && member.start < line ? memberAt(text, skipBlanks(text, line)) : member;
}

/**
 * Where JSON Pointers lead to, by one walk for all of them: a map from each to { start, from, to, isThere }. For a
 * member that is not there it is the innermost object or array that is.
 */
export function membersOf(text, pointers) {
    const wanted = { pointers: [], inner: new Map() };
    for (const pointer of pointers) {
        let node = wanted;
        for (const name of namesOf(pointer)) {
            if (!node.inner.has(name)) node.inner.set(name, { pointers: [], inner: new Map() });
            node = node.inner.get(name);
        }
        node.pointers.push(pointer);
    }
    const top = skipBlanks(text, 0);
    const places = new Map();
    find(text, wanted, { start: top, from: top, to: endOfValue(text, top) }, places);
    return places;
}

function find(text, wanted, { start, from, to }, places) {
    for (const pointer of wanted.pointers) places.set(pointer, { start, from, to, isThere: true });
    const missing = new Map(wanted.inner);
    if (missing.size > 0) {
        for (const member of members(text, from)) {
            if (!missing.has(member.name)) continue;
            find(text, missing.get(member.name), member, places);
            missing.delete(member.name);
            if (missing.size === 0) break;
        }
    }
    const none = (node) => {
        for (const pointer of node.pointers) places.set(pointer, { start, from, to, isThere: false });
        node.inner.forEach(none);
    };
    missing.forEach(none);
}

/** The values that a test of names and their pointers calls secret, as offsets: from, to, from, to, ... */
export function findSecrets(text, isSecretName) {
    const secrets = [];
    const levels = [];
    let isSecret = false;
    const isInside = () => levels.length > 0 && levels[levels.length - 1];

    for (let at = skipBlanks(text, 0); at < text.length; at = skipBlanks(text, at)) {
        const unit = text.charCodeAt(at);
        if (isOpening(unit)) {
            levels.push(isSecret);
            ++at;
        } else if (isClosing(unit) || unit === COMMA || unit === COLON) {
            if (isClosing(unit)) levels.pop();
            if (unit !== COLON) isSecret = isInside();
            ++at;
        } else {
            const end = endOfWord(text, at);
            const next = skipBlanks(text, end);
            if (text.charCodeAt(next) === COLON) isSecret = isInside() || isSecretName(text.slice(at, end));
            else if (isSecret) secrets.push(at, end);
            at = end;
        }
    }
    return secrets;
}
