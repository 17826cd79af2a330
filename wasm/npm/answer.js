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

const NOWHERE = { which: null, pointer: null, line: null, column: null, offset: null, length: null };

const BROKEN_CHARACTER = {
    function: 'parse',
    message: 'this is half of a character, whose other half is missing',
};

function failure(status, problem) {
    return { status, direction: null, output: null, problems: [{ severity: 'error', ...NOWHERE, ...problem }] };
}

/**
 * What the operation makes of its sources. Everything that can happen to a text is an answer, also that it is too large
 * or that the module stops.
 */
export function ask(instance, { text, other, section, ...request }) {
    for (const [which, source] of Object.entries({ text, other })) {
        const place = source && brokenCharacter(source);
        if (place) return failure('unreadable', { which, ...place, length: 1, ...BROKEN_CHARACTER });
    }
    try {
        return instance.run((running) => {
            const names = section ? { section: running.put(section) } : {};
            const texts = { text: running.put(text.bytes), text_length: text.bytes.length };
            const others = other ? { other: running.put(other.bytes), other_length: other.bytes.length } : {};
            const at = running.putStructure(header.k_text_request_t, { ...request, ...names, ...texts, ...others });
            const result = running.exports.k_text_run(at);
            const answer = readAnswer(running, result, { text, other });
            running.exports.k_text_free(result);
            for (const block of [at, names.section, texts.text, others.other]) running.exports.free(block ?? 0);
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
    };
}

function readOutput(running, result) {
    const length = running.putStructure(['length'], {});
    const output = running.exports.k_text_output(result, length);
    const text = running.text(output, running.readStructure(['length'], length).length);
    running.exports.free(length);
    return text;
}

function readProblems(running, result, sources) {
    const count = running.exports.k_text_problem_count(result);
    const at = running.putStructure(header.k_text_problem_t, {});
    const problems = Array.from({ length: count }, (_, i) => {
        running.exports.k_text_problem(result, i, at);
        return problemOf(running, running.readStructure(header.k_text_problem_t, at));
    });
    running.exports.free(at);
    for (const [which, source] of Object.entries(sources)) {
        const placed = problems.filter((problem) => problem.which === which && problem.line !== null);
        if (source) placeInUtf16(source, placed);
    }
    return problems;
}

function problemOf(running, problem) {
    const hasPlace = problem.line !== 0;
    return {
        severity: SEVERITIES[problem.severity],
        which: TEXTS[problem.which],
        pointer: running.text(problem.pointer),
        line: hasPlace ? problem.line : null,
        column: hasPlace ? problem.column : null,
        offset: hasPlace ? problem.offset : null,
        length: hasPlace ? problem.length : null,
        function: running.text(problem.function),
        message: running.text(problem.message),
    };
}

/** Turns offsets and lengths in bytes into those of an editor. */
function placeInUtf16(source, places) {
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
