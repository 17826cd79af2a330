import type { Converter } from './types.js';

export type * from './types.js';

/** Compiles the module from its bytes, or from a response while it arrives. */
export function compile(
    source: Response | BufferSource | PromiseLike<Response | BufferSource>,
): Promise<WebAssembly.Module>;

/** The functions over a compiled module. They need no `this`. */
export function createConverter(module: WebAssembly.Module): Converter;
