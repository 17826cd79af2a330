// Which values are secrets, by the library's own list, and texts with such values masked.
import { fragments } from 'built:secrets';
import { findSecrets } from './json_text.js';

export const MASK = '***';

const secretName = new RegExp(fragments.join('|'), 'i');

// A name with escapes could be any.
const isSecretName = (name) => name.includes('\\') || secretName.test(name);

export const leadsToSecret = (pointer) => secretName.test(pointer);

/** The secrets of a text, as offsets: from, to, from, to, ... */
export const secretsOf = (text) => findSecrets(text, isSecretName);

/** A piece of a text, from one offset to another, with its secrets masked. */
export function masked(text, secrets, from = 0, to = text.length) {
    const pieces = [];
    let at = from;
    for (let i = 0; i < secrets.length; i += 2) {
        const start = Math.max(secrets[i], from);
        const end = Math.min(secrets[i + 1], to);
        if (start >= end) continue;
        pieces.push(text.slice(at, start), `"${MASK}"`);
        at = end;
    }
    pieces.push(text.slice(at, to));
    return pieces.join('');
}
