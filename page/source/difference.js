// A JSON Patch as a list of operations with what was there before, and what is secret in one.
import { members, membersOf, skipBlanks, unquoted } from './json_text.js';
import { leadsToSecret, MASK, secretsOf } from './secrets.js';

const LONGEST_SHOWN = 200;

function shortened(text) {
    return text.length > LONGEST_SHOWN ? `${text.slice(0, LONGEST_SHOWN)}…` : text;
}

// What a person is shown of a value, its blanks as JSON needs them.
function shown(text, from, to, pointer, showSecrets) {
    if (!showSecrets && leadsToSecret(pointer)) return MASK;
    const value = text.slice(from, to);
    const secrets = showSecrets ? [] : secretsOf(value);
    let result = '';
    let at = 0;
    for (let i = 0; i < secrets.length && result.length < LONGEST_SHOWN; i += 2) {
        result += `${value.slice(at, secrets[i])}"${MASK}"`;
        at = secrets[i + 1];
    }
    return shortened((result + value.slice(at)).replace(/\s*\n\s*/g, ' '));
}

function* operations(difference) {
    for (const operation of members(difference, skipBlanks(difference, 0))) {
        const places = new Map();
        for (const member of members(difference, operation.from)) places.set(member.name, member);
        const textOf = (name) => {
            const place = places.get(name);
            return place === undefined ? null : unquoted(difference, place.from, place.to);
        };
        yield { kind: textOf('op'), pointer: textOf('path'), value: places.get('value') ?? null };
    }
}

/** The operations of a JSON Patch of `text`: { kind, pointer, offset, length, before, after }. */
export function operationsOf(text, difference, showSecrets) {
    const list = [...operations(difference)];
    const places = membersOf(
        text,
        list.map(({ pointer }) => pointer),
    );
    return list.map(({ kind, pointer, value }) => {
        const { from, to, isThere } = places.get(pointer);
        const before = isThere && kind !== 'add' ? shown(text, from, to, pointer, showSecrets) : null;
        const after = value && shown(difference, value.from, value.to, pointer, showSecrets);
        return { kind, pointer, offset: from, length: to - from, before, after };
    });
}

/** The secrets of a difference: of a JSON Patch, also the values that are put in the place of a secret. */
export function differenceSecretsOf(difference) {
    const start = skipBlanks(difference, 0);
    if (difference[start] !== '[') return secretsOf(difference);
    const secrets = [];
    for (const { pointer, value } of operations(difference)) {
        if (value === null) continue;
        if (pointer !== null && leadsToSecret(pointer)) secrets.push(value.from, value.to);
        else for (const offset of secretsOf(difference.slice(value.from, value.to))) secrets.push(value.from + offset);
    }
    return secrets;
}
