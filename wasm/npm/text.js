// Texts on their way into the module, and places in them on their way out.

const encoder = new TextEncoder();

// What a value is, is asked of itself: `instanceof` fails for one of another frame, or another context of Node, and a
// name can be anybody's.
const typedArray = Object.getPrototypeOf(Uint8Array.prototype);
const getter = (prototype, name) => Object.getOwnPropertyDescriptor(prototype, name).get;
const kindOfArray = getter(typedArray, Symbol.toStringTag);
const lengthOfBuffer = getter(ArrayBuffer.prototype, 'byteLength');

function isBuffer(text) {
    try {
        lengthOfBuffer.call(text);
        return true;
    } catch {
        return false;
    }
}

function bytesOf(text) {
    if (isBuffer(text)) return new Uint8Array(text);
    if (kindOfArray.call(text) !== 'Uint8Array') return null;
    typedArray.keys.call(text); // fails where the buffer does not have the bytes any more
    return new Uint8Array(text.buffer, text.byteOffset, text.byteLength);
}

// What an array cannot be made of has been detached, or is smaller than it was.
function givenBytes(text, name) {
    try {
        return bytesOf(text);
    } catch {
        throw new TypeError(
            `the bytes of ${name} are gone: their buffer has been transferred elsewhere, or made smaller`,
        );
    }
}

// A lone surrogate: half of a character, which no UTF-8 has.
const LONE_SURROGATE = /\p{Surrogate}/u;

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
    if (typeof name !== 'string' || name.includes('\0') || LONE_SURROGATE.test(name))
        throw new TypeError(`${what} is not a string without NUL and without halves of characters`);
    return encoder.encode(`${name}\0`);
}

/**
 * The place of a lone surrogate: an encoder would put another character there in silence. Null where there is none.
 */
export function brokenCharacter({ bytes, string }) {
    if (string === null || string.length === bytes.length) return null;
    const offset = string.search(LONE_SURROGATE);
    if (offset < 0) return null;
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
