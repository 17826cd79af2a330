// What becomes of values, in the words of docs/mapping.

const ALL_TYPES = 7;

const shown = (value) => JSON.stringify(value);

const becomes = (result) => (result === undefined ? ' is dropped' : ` becomes ${shown(result)}`);

function typesIn({ of }) {
    if (of.length === ALL_TYPES) return 'any value';
    return of.map((type) => (type === 'string' ? 'text' : type)).join(', ');
}

// Of the types those values that cross.
function which(takes) {
    if (takes === undefined) return '';
    const { texts, values, from, to } = takes;
    if (texts !== undefined) return `, ${texts}`;
    if (values !== undefined) return ` ${values.map(shown).join(', ')}`;
    if (from !== undefined && to !== undefined) return ` from ${shown(from)} to ${shown(to)}`;
    if (from !== undefined) return ` of at least ${shown(from)}`;
    return to !== undefined ? ` of at most ${shown(to)}` : ' of a certain form';
}

function whatItGives(gives) {
    if (gives === undefined) return ' stays the same';
    if (typeof gives === 'object') return becomes(gives.value);
    const words = { 'a choice': ' decides', 'something else': ' becomes something else', nothing: ' is dropped' };
    return words[gives] ?? ` becomes ${gives}`;
}

const messagesOf = (says) => says.map((message) => message.replace(/\n+$/, '')).join(' or ');

function ofAbsent({ gives, says }) {
    if (says !== undefined) return `absent is reported: ${messagesOf(says)}`;
    return gives?.value === 'a choice' ? 'absent decides' : `absent${becomes(gives?.value)}`;
}

function sentence(said) {
    const { takes, gives, but, says } = said;
    const types = typesIn(said);
    const values = takes?.values;
    if (types === 'absent') return ofAbsent(said);
    if (values?.length === 0) return `${types} is reported: ${messagesOf(says)}`;
    // Where every value has a result of its own, that says which there are.
    const isVague = gives === undefined || gives === 'something else';
    const isTable = isVague && but !== undefined && values?.length === but.length;
    let text = isTable ? `${types}: ` : types + which(takes) + whatItGives(gives);
    if (but !== undefined) {
        const before = isTable ? '' : gives === 'something else' ? ': ' : ', but ';
        text += before + but.map(([value, result]) => shown(value) + becomes(result)).join(', ');
    }
    return says === undefined ? text : `${text}; others are reported: ${messagesOf(says)}`;
}

// Whether values of these types cross: "all", "some", or "none" where each is reported.
function crossing({ of, takes, says }) {
    if (says === undefined) return 'all';
    return takes?.values?.length === 0 || of[0] === 'absent' ? 'none' : 'some';
}

/** One sentence for the types of which the same is said: { words, crossing }. */
export function sentencesOf(behaviour) {
    return behaviour.map((said) => ({ words: sentence(said), crossing: crossing(said) }));
}
