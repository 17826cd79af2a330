// What the page asks the worker, one function a question.
import { apply, convert, diff, explain, losses, section } from 'k-cnvrt/inline';
import { differenceSecretsOf, operationsOf } from './difference.js';
import { memberMeant, members, membersOf, skipBlanks } from './json_text.js';
import { secretsOf } from './secrets.js';

const OTHER = { new: 'old', old: 'new' };

const layoutOf = ({ direction }) => direction.slice('to-'.length);

function converted({ text, to, section: name, showSecrets }) {
    if (name === null) return convert(text, { to: to ?? undefined, partial: true, showSecrets });
    return { ...section(name, text, { to, partial: true, showSecrets }), direction: `to-${to}` };
}

/** The text in the other layout, or what can be had of it. */
export function conversion(about) {
    const answer = converted(about);
    const output = answer.output ?? '';
    return { ...answer, inputSecrets: secretsOf(about.text), outputSecrets: secretsOf(output) };
}

/** What the conversion changes in a base, as a difference, or the base with that applied. */
export function changes({ base, mergePatch, isApplied, ...about }) {
    const { showSecrets } = about;
    const change = against(base, converted(about), about.section === null, { mergePatch, showSecrets });
    const isDone = change.output !== null && isApplied;
    const answer = isDone ? followedBy(change, apply(base, change.output, { showSecrets })) : change;
    const secretsOfOutput = isApplied ? secretsOf : differenceSecretsOf;
    return {
        ...answer,
        inputSecrets: secretsOf(about.text),
        baseSecrets: secretsOf(base),
        outputSecrets: secretsOfOutput(answer.output ?? ''),
    };
}

// What was made of the text, compared with the base, also where that is a part of what it should be.
function against(base, answer, isWhole, options) {
    if (answer.output === null) return answer;
    if (isWhole && convert(base, { to: OTHER[layoutOf(answer)] }).status === 'wrong-layout')
        return followedBy(answer, inOtherLayout(layoutOf(answer)));
    return followedBy(answer, diff(base, answer.output, options));
}

// The answer after another operation, whose first text was the base. Where that fails, it is what is said first.
function followedBy(answer, { status, output, problems }) {
    const ofBase = problems.map((problem) => ({ ...problem, which: 'other' }));
    if (status === 'converted') return { ...answer, output, problems: [...answer.problems, ...ofBase] };
    return { ...answer, status, output: null, problems: [...ofBase, ...answer.problems] };
}

function inOtherLayout(layout) {
    const place = { pointer: '', line: 1, column: 1, offset: 0, length: 0 };
    const message = `the base is not in the ${layout} layout, as the result is`;
    const problem = { severity: 'error', ...place, function: 'layout', message };
    return { status: 'wrong-layout', output: null, problems: [problem] };
}

// An old configuration that ties its VLANs to DSL services, which its new layout does not show.
function tiesVlansToDsl(text) {
    const names = new Set(Array.from(members(text, skipBlanks(text, 0)), ({ name }) => name));
    return names.has('groups') && !names.has('vlan');
}

/** What is different in a text that was converted there and back; null where that cannot be told. */
export function thereAndBack(about) {
    const there = converted(about);
    if (there.output === null || there.direction === null) return null;
    const to = OTHER[layoutOf(there)];
    const dslVlan = to === 'old' && tiesVlansToDsl(about.text);
    const back = convert(there.output, { to, partial: true, dslVlan });
    if (back.output === null) return null;
    const difference = diff(about.text, back.output).output;
    return difference === null ? null : operationsOf(about.text, difference, about.showSecrets);
}

/** The secrets of a text that is about to be shown. */
export const secretsIn = ({ text }) => secretsOf(text);

/** What of the text the other layout does not hold; null where that cannot be found. */
export function lossesOf({ text, to, showSecrets }) {
    const { status, losses: found } = losses(text, { to: to ?? undefined, showSecrets });
    return status === 'stopped' || status === 'out-of-memory' ? null : found;
}

/**
 * What belongs to the member at an offset, on the side `input` or `result`: { pointer, place, answer, partners }, where
 * each partner is { pointer, place }; null where there is none to ask about.
 */
export function links({ text, output, side, offset, to, showSecrets }) {
    const isResult = side === 'result';
    const { pointer, ...place } = memberMeant(isResult ? output : text, offset) ?? { pointer: '' };
    if (pointer === '') return null;
    const explained = explain(text, pointer, { to: to ?? undefined, fromResult: isResult, showSecrets });
    if (explained.output === null) return null;
    const { answer = 'made', effects, sources } = JSON.parse(explained.output);
    const pointers = (isResult ? sources : effects).map((partner) => partner.pointer);
    const places = membersOf(isResult ? text : output, pointers);
    const partners = pointers.map((pointer) => ({ pointer, place: places.get(pointer) }));
    return { pointer, place, answer, partners: partners.filter((partner) => partner.place.isThere) };
}
