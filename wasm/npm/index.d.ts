import type { Converter } from './types.js';

export type * from './types.js';

export const toNew: Converter['toNew'];
export const toOld: Converter['toOld'];
export const convert: Converter['convert'];
export const section: Converter['section'];
export const sections: Converter['sections'];
export const diff: Converter['diff'];
export const apply: Converter['apply'];
export const check: Converter['check'];
export const losses: Converter['losses'];
export const explain: Converter['explain'];
export const find: Converter['find'];
export const version: Converter['version'];
