// Both layouts as text/layouts.json describes them: which members there are, which values they take, and what becomes
// of them. A path is a list of { name, type } from the top, where type is that of an entry that says one, else null.
import { sentencesOf } from './sentences.js';

const OTHER = { old: 'new', new: 'old' };
const WHOLE = '**';

const stepsOf = (place) => place.split('/').slice(1);
// Of a step `[ppp|ip]` the types, else null.
const typesOf = (step) => (step.startsWith('[') ? step.slice(1, -1).split('|') : null);
const isFree = (step) => step === '*' || step === WHOLE || step.startsWith('[');

function fits({ name, type }, step) {
    if (step === '*') return true;
    if (step.startsWith('[')) return type === null || typesOf(step).includes(type);
    return step.includes('|') ? step.split('|').includes(name) : step === name;
}

const isAbove = (path, steps) => path.length <= steps.length && path.every((part, i) => fits(part, steps[i]));

function isAt(path, steps) {
    if (steps.at(-1) !== WHOLE) return path.length === steps.length && isAbove(path, steps);
    const above = steps.slice(0, -1);
    return path.length >= above.length && isAbove(path.slice(0, above.length), above);
}

// Of places with a choice in a step those, and that of it, which the path has: by type in one layout, by name in the
// other.
function narrowed(places, path) {
    const known = new Set(path.flatMap(({ name, type }) => [name, type]));
    const chosen = (steps) =>
        steps.map((step) => {
            const names = typesOf(step) ?? step.split('|');
            const fitting = names.filter((name) => known.has(name));
            if (names.length === 1 && typesOf(step) === null) return step;
            if (fitting.length === 0) return null;
            return typesOf(step) === null ? fitting.join('|') : `[${fitting.join('|')}]`;
        });
    const fitting = places.map((place) => chosen(stepsOf(place))).filter((steps) => !steps.includes(null));
    return fitting.length === 0 ? places : [...new Set(fitting.map((steps) => `/${steps.join('/')}`))];
}

// "/dns" of "/dns/servers/*", "/Device/Services/dns" of what is below that.
function sectionOf(place) {
    const steps = stepsOf(place);
    const depth = steps[0] !== 'Device' ? 1 : steps[1] === 'Services' ? 3 : 2;
    return `/${steps.slice(0, depth).join('/')}`;
}

// In messages KEY stands for the name that the member has in the result.
function withName(sentence, places) {
    const name = stepsOf(places[0] ?? '').at(-1) ?? '*';
    return isFree(name) || name.includes('|')
        ? sentence
        : { ...sentence, words: sentence.words.replaceAll('KEY', name) };
}

export class Reference {
    #behaviours;
    #places = { old: [], new: [] };
    #containers = { old: [], new: [] };

    constructor({ behaviours, lines, containers }) {
        this.#behaviours = behaviours;
        for (const layout of ['old', 'new']) {
            for (const line of lines)
                for (const place of line[layout])
                    // What is chosen has lines of its own.
                    if (line.kind !== 'chooses' || line[`to_${OTHER[layout]}`] !== undefined)
                        this.#places[layout].push({ steps: stepsOf(place), line });
            for (const { is, [layout]: place, 'carries others': carriesOthers = false } of containers)
                if (place !== undefined) this.#containers[layout].push({ steps: stepsOf(place), is, carriesOthers });
        }
    }

    /** "old", "new", or null where names at the top are of neither. */
    layoutOf(names) {
        if (names.includes('Device')) return 'new';
        return names.some((name) => this.#placesAt('old', [{ name, type: null }]).length > 0) ? 'old' : null;
    }

    #placesAt(layout, path) {
        return this.#places[layout].filter(({ steps }) => isAbove(path, steps));
    }

    #container(layout, path) {
        return (
            this.#containers[layout].find(({ steps }) => path.length === steps.length && isAbove(path, steps)) ?? null
        );
    }

    // Whether the innermost container that is known above a path does.
    #carriesOthers(layout, path) {
        const above = this.#containers[layout].filter(
            ({ steps }) => path.length > steps.length && isAt(path.slice(0, steps.length), steps),
        );
        const depth = Math.max(...above.map(({ steps }) => steps.length));
        return above.some(({ steps, carriesOthers }) => carriesOthers && steps.length === depth);
    }

    /** The names of the members that an object can have: [{ name, is }]; `is` is null for what holds no others. */
    names(layout, path) {
        if (['list', 'names', 'array'].includes(this.#container(layout, path)?.is)) return [];
        const found = new Map();
        const below = [...this.#places[layout], ...this.#containers[layout]];
        for (const { steps, is } of below) {
            if (steps.length <= path.length || !isAbove(path, steps) || isFree(steps[path.length])) continue;
            const isLast = steps.length === path.length + 1 || steps[path.length + 1] === WHOLE;
            const own = isLast ? (is ?? null) : 'object';
            for (const name of steps[path.length].split('|'))
                if (!found.has(name) || is !== undefined) found.set(name, own);
        }
        return [...found].map(([name, is]) => ({ name, is }));
    }

    // What is said of the values at a place, type by type.
    #said(layout, path) {
        return this.#placesAt(layout, path)
            .filter(({ steps }) => path.length === steps.length)
            .flatMap(({ line }) => this.#behaviour(line, layout) ?? []);
    }

    /** The values that a member takes, where they are counted: [{ value, result }]; `result` is what it becomes. */
    values(layout, path) {
        const values = new Map();
        if (path.at(-1)?.name === 'type')
            for (const type of this.#typesOfEntry(layout, path.slice(0, -1))) values.set(type, undefined);
        for (const said of this.#said(layout, path))
            for (const value of valuesOf(said))
                values.set(value, values.get(value) ?? ownResult(said, value));
        return [...values].map(([value, result]) => ({ value, result }));
    }

    /** Whether a member has to be a text. */
    isText(layout, path) {
        const refused = this.#said(layout, path).filter(({ takes }) => takes?.values?.length === 0);
        return refused.some(({ of }) => of.includes('integer') && !of.includes('string'));
    }

    // The entry's own type is what is chosen here.
    #typesOfEntry(layout, path) {
        if (path.length === 0) return [];
        const any = [...path.slice(0, -1), { ...path.at(-1), type: null }];
        return this.#placesAt(layout, any).flatMap(({ steps }) => typesOf(steps[any.length - 1]) ?? []);
    }

    #behaviour(line, from) {
        return this.#behaviours[line[`to_${OTHER[from]}`]];
    }

    /**
     * What is known of a place: { is, names, sections, isCarried, lines }. `sections` are those of the other layout
     * that what is below it belongs to. Each line has its kind, the places that it becomes or is made of, what is told
     * of the values in each direction, and whether it is of a value that is carried whole with this in it.
     */
    describe(layout, path) {
        const found = new Map();
        for (const { steps, line } of this.#places[layout])
            if (isAt(path, steps)) found.set(line, steps.at(-1) === WHOLE && path.length >= steps.length);
        return {
            is: this.#container(layout, path)?.is ?? null,
            names: this.names(layout, path).map(({ name }) => name),
            sections: found.size > 0 ? [] : this.#sectionsOf(layout, path),
            isCarried: this.#carriesOthers(layout, path),
            lines: [...found].map(([line, isPart]) => ({ ...this.#told(line, layout, path), isPart })),
        };
    }

    #sectionsOf(layout, path) {
        const lines = new Set(this.#placesAt(layout, path).map(({ line }) => line));
        const places = [...lines].flatMap((line) => narrowed(line[OTHER[layout]], path));
        return [...new Set(places.map(sectionOf))];
    }

    #told(line, layout, path) {
        const places = narrowed(line[OTHER[layout]], path);
        const told = [layout, OTHER[layout]].flatMap((from) => {
            const behaviour = this.#behaviour(line, from);
            if (behaviour === undefined) return [];
            const result = from === layout ? places : [`/${path.map(({ name }) => name).join('/')}`];
            return [
                { to: OTHER[from], sentences: sentencesOf(behaviour).map((sentence) => withName(sentence, result)) },
            ];
        });
        return { kind: line.kind, needsDslVlan: line.flag !== undefined, places, told };
    }
}

// The texts that stand in the name of a kind of texts, and those of the numbers from one to another.
function textsIn(kind) {
    const texts = [...kind.matchAll(/"(\w*)"/g)].map(([, text]) => text);
    const [, from, to] = /\bfrom (\d+) to (\d+)\b/.exec(kind) ?? [];
    if (from !== undefined) for (let number = +from; number <= +to; ++number) texts.push(String(number));
    return texts;
}

// What a value becomes where that is told of it alone, and is no other member's.
function ownResult({ but }, value) {
    return but?.find(([one, , member]) => one === value && member === undefined)?.[1];
}

function valuesOf({ of, takes }) {
    if (takes?.values !== undefined) return takes.values;
    if (takes?.texts !== undefined) return textsIn(takes.texts);
    return of.length === 1 && of[0] === 'boolean' ? [true, false] : [];
}
