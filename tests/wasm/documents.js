// Documents made of the examples: a part of one, damaged at random places. The same ones in every run.
import { example } from './tools.js';

const VALUES = [
    null, true, false, 0, -1, 5, 65536, 2147483648, 1.5, 1e300, '', '0', '1', '12', 'x', 'true', '239.255.0.1',
    '10.0.0.1/8', '\u20ac\u{1F600}', 'a b', 'MTIz', [], {}, ['1', 2], { a: 1 }, { 1: {}, max_instance: 1 },
];

// Of 32 bits, by a linear congruence.
export function numbers(seed) {
    let state = seed;
    return (below) => {
        state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
        return Math.floor((state / 2 ** 32) * below);
    };
}

const isContainer = (value) => typeof value === 'object' && value !== null;

// An object or array at a random depth of the value.
function somewhere(value, random) {
    const inner = Object.values(value).filter(isContainer);
    return inner.length === 0 || random(5) === 0 ? value : somewhere(inner[random(inner.length)], random);
}

function damage(value, random) {
    const place = somewhere(value, random);
    const names = Object.keys(place);
    const name = names[random(names.length)] ?? (Array.isArray(place) ? 0 : 'new');
    const kind = random(8);
    const other = structuredClone(VALUES[random(VALUES.length)]);
    if (kind === 0 && !Array.isArray(place)) delete place[name];
    else if (kind === 1 && !Array.isArray(place)) place[`\u00e9${name}`] = other;
    else place[name] = other;
}

// Most members of the first two levels are left out.
function part(value, random, levels) {
    const kept = Object.entries(value).filter(([name]) => name === 'Device' || random(4) === 0);
    return Object.fromEntries(
        kept.map(([name, inner]) => [name, levels > 0 && name === 'Device' ? part(inner, random, levels - 1) : inner]),
    );
}

/** Documents of both layouts, in turn. */
export function* documents(count) {
    const whole = ['home', 'dsl'].flatMap((home) =>
        ['old', 'new'].map((layout) => JSON.parse(example(`${home}-gateway.${layout}.json`))));
    for (let i = 0; i < count; ++i) {
        const random = numbers(i + 1);
        const made = structuredClone(part(whole[i % whole.length], random, 1));
        for (let damages = random(6); damages > 0; --damages) damage(made, random);
        const text = JSON.stringify(made, null, [0, 1, 4, '\t'][random(4)]);
        yield random(40) === 0 ? text.slice(0, random(text.length)) : text;
    }
}
