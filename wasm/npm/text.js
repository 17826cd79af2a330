// Texts on their way into the module, and places in them on their way out.

const encoder = new TextEncoder();

// Told by what they are, not by `instanceof`: they may come from another frame, or another context of Node.
function bytesOf(text) {
    const kind = Object.prototype.toString.call(text);
    if (kind === '[object ArrayBuffer]') return new Uint8Array(text);
    if (kind === '[object Uint8Array]') return new Uint8Array(text.buffer, text.byteOffset, text.byteLength);
    return null;
}

// What an array cannot be made of has been detached.
function givenBytes(text, name) {
    try {
        return bytesOf(text);
    } catch {
        throw new TypeError(`the bytes of ${name} are gone: their buffer has been transferred elsewhere`);
    }
}

/**
 * The bytes of a text, and the string that it was given as, null where it was not one. `name` is what messages call the
 * argument.
 */
export function sourceOf(text, name) {
    if (typeof text === 'string') return { bytes: encoder.encode(text), string: text };
    const bytes = givenBytes(text, name);
    if (bytes === null) throw new TypeError(`${name} is neither a string nor a Uint8Array nor an ArrayBuffer`);
    return { bytes, string: null };
}

/** A NUL-terminated name, for C. Half of a character would become another one in silence. */
export function nameOf(name, what) {
    if (typeof name !== 'string' || name.includes('\0') || !name.isWellFormed())
        throw new TypeError(`${what} is not a string without NUL and without halves of characters`);
    return encoder.encode(`${name}\0`);
}

/**
 * The place of a lone surrogate, which no UTF-8 has: an encoder would put another character there in silence. Null
 * where there is none.
 */
export function brokenCharacter({ bytes, string }) {
    if (string === null || string.length === bytes.length || string.isWellFormed()) return null;
    const offset = string.search(/\p{Surrogate}/u);
    const lines = string.slice(0, offset).split('\n');
    return { offset, line: lines.length, column: [...lines[lines.length - 1]].length + 1 };
}

/** Of each offset in bytes, which ascend, the offset in UTF-16 units. One walk over the text finds all. */
export function utf16Offsets({ bytes, string }, offsets) {
    if (string !== null && string.length === bytes.length) return offsets;
    let at = 0;
    let units = 0;
    return offsets.map((offset) => {
        for (; at < offset; ++at) {
            // A character is counted at its first byte; four bytes are a pair of surrogates.
            if ((bytes[at] & 0xc0) !== 0x80) units += bytes[at] >= 0xf0 ? 2 : 1;
        }
        return units;
    });
}
