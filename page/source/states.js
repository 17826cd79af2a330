// What the page says of itself: for each state a kind, and words that say what to do next.
import { countText } from './elements.js';

const NAMES = { 'to-new': 'new', 'to-old': 'old' };

const count = (problems, severity) => problems.filter((problem) => problem.severity === severity).length;

function withCounts(words, problems) {
    const warnings = count(problems, 'warning');
    return warnings > 0 ? `${words}, with ${countText(warnings, 'warning')}` : words;
}

function first(problems) {
    return problems[0]?.message.split('\n')[0] ?? '';
}

/** Whether it is the base, and not the input, that is not what it should be. */
export const isOfBase = ({ status, problems }) => status !== 'converted' && problems[0]?.which === 'other';

function converted({ direction, problems }) {
    const errors = count(problems, 'error');
    const words = withCounts(`Converted to the ${NAMES[direction]} layout`, problems);
    if (errors > 0) return { kind: 'caution', words: `${words}; ${countText(errors, 'error')}` };
    return { kind: count(problems, 'warning') > 0 ? 'caution' : 'good', words };
}

function rejected({ problems, output }) {
    const errors = countText(count(problems, 'error'), 'error');
    const rest = output === null ? 'Nothing of it can be converted' : 'The result is incomplete';
    return { kind: 'bad', words: `Rejected: ${errors}. ${rest}` };
}

const STATES = {
    converted,
    rejected,
    // Behind a semicolon the tool's options stand; here a button does what they do.
    'wrong-layout': ({ problems }) => ({ kind: 'bad', words: `Another layout: ${first(problems).split(';')[0]}` }),
    unreadable: (answer) => ({
        kind: 'bad',
        words: `${isOfBase(answer) ? 'The base is not readable' : 'Not readable'}: ${first(answer.problems)}`,
    }),
    'wrong-usage': ({ problems }) => ({ kind: 'bad', words: `Not possible: ${first(problems)}` }),
    'out-of-memory': () => ({ kind: 'bad', words: 'Too large for a page: kcnvrt takes larger ones' }),
    stopped: () => ({
        kind: 'bad',
        words: 'The conversion stopped by a fault of its own. The next change starts it anew',
    }),
    failed: ({ message }) => ({
        kind: 'bad',
        words: `The conversion does not run: ${message}. The next change tries again`,
    }),
};

export const EMPTY = { kind: 'none', words: 'Paste, drop or open a configuration' };
export const CONVERTING = { kind: 'busy', words: 'Converting' };

export const stateOf = (answer) => STATES[answer.status](answer);

/** The answer where a worker gives none. */
export function failed({ message }) {
    return { status: 'failed', direction: null, output: null, problems: [], message };
}

export const layoutMade = ({ direction }) => NAMES[direction] ?? null;
