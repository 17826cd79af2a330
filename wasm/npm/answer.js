// Asks the module, and reads what it answers.
import * as header from './header.js';
import { ModuleError, outOfMemory } from './instance.js';
import { brokenCharacter, utf16Offsets } from './text.js';

const STATUSES = {
    [header.K_TEXT_CONVERTED]: 'converted',
    [header.K_TEXT_REJECTED]: 'rejected',
    [header.K_TEXT_WRONG_LAYOUT]: 'wrong-layout',
    [header.K_TEXT_UNREADABLE]: 'unreadable',
    [header.K_TEXT_WRONG_USAGE]: 'wrong-usage',
    [header.K_TEXT_OUT_OF_MEMORY]: 'out-of-memory',
};

const SEVERITIES = {
    [header.K_TEXT_ERROR]: 'error',
    [header.K_TEXT_WARNING]: 'warning',
    [header.K_TEXT_NOTE]: 'note',
};

const TEXTS = {
    [header.K_TEXT_IN_REQUEST]: null,
    [header.K_TEXT_IN_TEXT]: 'text',
    [header.K_TEXT_IN_OTHER]: 'other',
};

const DIRECTIONS = {
    0: null,
    [header.K_TEXT_TO_NEW]: 'to-new',
    [header.K_TEXT_TO_OLD]: 'to-old',
};

const LOSSES = {
    [header.K_TEXT_DROPPED]: 'dropped',
    [header.K_TEXT_CUT]: 'cut',
    [header.K_TEXT_CHANGED]: 'changed',
    [header.K_TEXT_DEFAULTED]: 'defaulted',
    [header.K_TEXT_RENUMBERED]: 'renumbered',
};

// Where k_text_find puts what it has found.
const FOUND = ['offset', 'length'];
const FOUND_LENGTH = 4;

const NOWHERE = { which: null, pointer: null, line: null, column: null, offset: null, length: null };

const BROKEN_CHARACTER = {
    function: 'parse',
    message: 'this is half of a character, whose other half is missing',
};

function failure(status, problem) {
    const problems = [{ severity: 'error', ...NOWHERE, ...problem }];
    return { status, direction: null, output: null, problems, losses: [] };
}

/**
 * What the operation makes of its sources. Everything that can happen to a text is an answer, also that it is too large
 * or that the module stops.
 */
export function ask(instance, { text, other, section, pointer, ...request }) {
    for (const [which, source] of Object.entries({ text, other })) {
        const place = source && brokenCharacter(source);
        if (place) return failure('unreadable', { which, ...place, length: 1, ...BROKEN_CHARACTER });
    }
    try {
        return instance.run((running) => {
            const names = { section: section && running.put(section), pointer: pointer && running.put(pointer) };
            const texts = { text: running.put(text.bytes), text_length: text.bytes.length };
            const others = other ? { other: running.put(other.bytes), other_length: other.bytes.length } : {};
            const at = running.putStructure(header.k_text_request_t, { ...request, ...names, ...texts, ...others });
            const result = running.exports.k_text_run(at);
            const answer = readAnswer(running, result, { text, other });
            running.exports.k_text_free(result);
            const blocks = [at, names.section, names.pointer, texts.text, others.other];
            for (const block of blocks) running.exports.free(block ?? 0);
            return answer;
        });
    } catch (error) {
        if (!(error instanceof ModuleError)) throw error;
        return failure(error.status, { function: 'module', message: error.message });
    }
}

function readAnswer(running, result, sources) {
    const { exports } = running;
    const status = STATUSES[exports.k_text_status(result)];
    if (status === 'out-of-memory') throw outOfMemory();
    return {
        status,
        direction: DIRECTIONS[exports.k_text_direction(result)],
        output: readOutput(running, result),
        problems: readProblems(running, result, sources),
        losses: readLosses(running, result, sources.text),
    };
}

function readOutput(running, result) {
    const length = running.putStructure(['length'], {});
    const output = running.exports.k_text_output(result, length);
    const text = running.text(output, running.readStructure(['length'], length).length);
    running.exports.free(length);
    return text;
}

// What `tell` fills in for each of so many things.
function readAll(running, result, count, members, tell) {
    const at = running.putStructure(members, {});
    const all = Array.from({ length: count }, (_, i) => {
        tell(result, i, at);
        return running.readStructure(members, at);
    });
    running.exports.free(at);
    return all;
}

function placeOf({ line, column, offset, length }) {
    return line === 0 ? { line: null, column: null, offset: null, length: null } : { line, column, offset, length };
}

function readProblems(running, result, sources) {
    const { k_text_problem_count, k_text_problem } = running.exports;
    const { k_text_problem_t } = header;
    const problems = readAll(running, result, k_text_problem_count(result), k_text_problem_t, k_text_problem).map(
        (problem) => ({
            severity: SEVERITIES[problem.severity],
            which: TEXTS[problem.which],
            pointer: running.text(problem.pointer),
            ...placeOf(problem),
            function: running.text(problem.function),
            message: running.text(problem.message),
        }),
    );
    for (const [which, source] of Object.entries(sources))
        if (source) placeInUtf16(source, problems.filter((problem) => problem.which === which));
    return problems;
}

function readLosses(running, result, source) {
    const { k_text_loss_count, k_text_loss } = running.exports;
    const { k_text_loss_t } = header;
    const losses = readAll(running, result, k_text_loss_count(result), k_text_loss_t, k_text_loss).map((loss) => ({
        kind: LOSSES[loss.kind],
        pointer: running.text(loss.pointer),
        ...placeOf(loss),
        before: running.text(loss.before),
        after: running.text(loss.after),
    }));
    placeInUtf16(source, losses);
    return losses;
}

/** Turns offsets and lengths in bytes, where there are some, into those of an editor. */
function placeInUtf16(source, all) {
    const places = all.filter(({ offset }) => offset !== null);
    const ends = places.flatMap(({ offset, length }) => [offset, offset + length]);
    const bytes = [...new Set(ends)].sort((a, b) => a - b);
    const units = utf16Offsets(source, bytes);
    const unitsAt = new Map(bytes.map((offset, i) => [offset, units[i]]));
    for (const place of places) {
        const start = unitsAt.get(place.offset);
        place.length = unitsAt.get(place.offset + place.length) - start;
        place.offset = start;
    }
}

/** The place of the value that a pointer leads to, null where there is none. */
export function find(instance, { text, pointer }) {
    return instance.run((running) => {
        const blocks = [running.put(text.bytes), running.put(pointer), running.putStructure(FOUND, {})];
        const [at, name, found] = blocks;
        const isFound = running.exports.k_text_find(at, text.bytes.length, name, found, found + FOUND_LENGTH);
        const place = running.readStructure(FOUND, found);
        for (const block of blocks) running.exports.free(block);
        if (isFound < 0) throw outOfMemory();
        if (isFound === 0) return null;
        placeInUtf16(text, [place]);
        return place;
    });
}
