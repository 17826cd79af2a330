// What becomes of values, in the words of docs/mapping.

const ALL_TYPES = 7;

const shown = (value) => JSON.stringify(value);

const OF_WORDS = { 'another choice': ' decides otherwise', 'its member': ' becomes the name of its member' };

const becomes = (result) => (result === undefined ? ' is dropped' : (OF_WORDS[result] ?? ` becomes ${shown(result)}`));

const becomesWhatGives = (member) => ` becomes what ${member} gives`;

function typesIn({ of }) {
    if (of.length === ALL_TYPES) return 'any value';
    return of.map((type) => (type === 'string' ? 'text' : type)).join(', ');
}

function range({ from, to }) {
    if (from !== undefined && to !== undefined) return ` from ${shown(from)} to ${shown(to)}`;
    return from !== undefined ? ` of at least ${shown(from)}` : ` of at most ${shown(to)}`;
}

// Of the types those values that cross.
function which(takes) {
    if (takes === undefined) return '';
    const { texts, values, from, to } = takes;
    if (texts !== undefined) return `, ${texts}`;
    if (values !== undefined) return ` ${values.map(shown).join(', ')}`;
    if (takes.of !== undefined) return ` with low 32 bits${range(takes)}`;
    return from !== undefined || to !== undefined ? range(takes) : ' of a certain form';
}

function whatItGives(gives) {
    if (gives === undefined) return ' stays the same';
    if (gives.member !== undefined) return becomesWhatGives(gives.member);
    if (typeof gives === 'object') return becomes(gives.value);
    const words = { 'a choice': ' decides', 'something else': ' becomes something else', nothing: ' is dropped' };
    return words[gives] ?? OF_WORDS[gives] ?? ` becomes ${gives}`;
}

function exception([value, result, member]) {
    return shown(value) + (member === undefined ? becomes(result) : becomesWhatGives(member));
}

const messagesOf = (says) => says.map((message) => message.replace(/\n+$/, '')).join(' or ');

function ofAbsent({ gives, says }) {
    if (says !== undefined) return `absent is reported: ${messagesOf(says)}`;
    return gives?.value === 'a choice' ? 'absent decides' : `absent${whatItGives(gives ?? 'nothing')}`;
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
        text += before + but.map(exception).join(', ');
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
