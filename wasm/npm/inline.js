// For bundles and pages in one file: the module is a text in here.
import { createConverter } from './core.js';
import { moduleText } from './module_text.js';

const module = new WebAssembly.Module(Uint8Array.from(atob(moduleText), (byte) => byte.charCodeAt(0)));

export const {
    toNew, toOld, convert, section, sections, diff, apply, check, losses, explain, find, version,
} = createConverter(module);
