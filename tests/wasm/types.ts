// Compiled, not run: what the types allow, and what they refuse.
import { apply, check, convert, diff, explain, find, losses, section, sections, toNew, toOld, version } from 'k-cnvrt';
import type { Answer, Loss, Problem } from 'k-cnvrt';
import * as inline from 'k-cnvrt/inline';
import { compile, createConverter } from 'k-cnvrt/core';

const answer: Answer = toNew('{}', { base: new Uint8Array(), mergePatch: true, dslVlan: true, indent: 'compact' });
const problem: Problem | undefined = answer.problems[0];
const offset: number | null | undefined = problem?.offset;
const output: string | null = toOld(new ArrayBuffer(0), { partial: true, showSecrets: true }).output;
const names: string[] = sections('new');
const answers: Answer[] = [
    section('dns', '{}', { to: 'old' }),
    convert('{}', { to: 'new', force: true }),
    section('dns', '{}', { to: 'new', base: '{}', mergePatch: true, asIs: true }),
    diff('[]', '{}', { mergePatch: true }),
    apply('[]', '{}', { indent: 31 }),
    inline.toNew('{}'),
    toNew(new Uint8Array(new SharedArrayBuffer(2))),
    createConverter(await compile(fetch('k_cnvrt.wasm'))).toOld('{}'),
    createConverter(await compile(new Uint8Array())).toNew('{}'),
];
const loss: Loss | undefined = check('{}', { dslVlan: true }).losses[0] ?? losses('{}', { to: 'old' }).losses[0];
const explained: Answer = explain('{}', '', { fromResult: true });
const place: { offset: number; length: number } | null = find('{}', '');
const words: string = version();

// @ts-expect-error: an object is no text
toNew({});
// @ts-expect-error: there is no such layout
sections('newest');
// @ts-expect-error: a section is made for a layout
section('dns', '{}');
// @ts-expect-error: there is no such option
toOld('{}', { base: '{}' });
// @ts-expect-error: there is no such status
export const isDone = answer.status === 'done';

export { answers, explained, loss, names, offset, output, place, words };
