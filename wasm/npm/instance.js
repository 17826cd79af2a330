// A running module: started when it is needed, ended when it failed or holds too much memory.

// A memory never shrinks, so one that has grown beyond this is given back as a whole.
const MOST_KEPT = 64 * 1024 * 1024;
const WORD = 4;

/** The module could not answer. The status is that of an answer. */
export class ModuleError extends Error {
    constructor(status, message) {
        super(message);
        this.name = 'ModuleError';
        this.status = status;
    }
}

export function outOfMemory() {
    return new ModuleError('out-of-memory', 'there is not enough memory for this');
}

/** The functions of a running module, and its memory as bytes, texts and structures. */
class Running {
    #decoder = new TextDecoder('utf-8', { fatal: true, ignoreBOM: true });

    constructor(module) {
        this.exports = new WebAssembly.Instance(module, {}).exports;
        this.exports._initialize();
        this.exports.json_object_seed(crypto.getRandomValues(new Uint32Array(1))[0]);
    }

    get size() {
        return this.exports.memory.buffer.byteLength;
    }

    // Whether there is no room for one more page.
    get isFull() {
        try {
            this.exports.memory.grow(1);
            return false;
        } catch {
            return true;
        }
    }

    allocate(length) {
        const at = this.exports.malloc(length) >>> 0;
        if (at === 0) throw outOfMemory();
        return at;
    }

    put(bytes) {
        const at = this.allocate(bytes.length || 1);
        new Uint8Array(this.exports.memory.buffer, at, bytes.length).set(bytes);
        return at;
    }

    /** A structure of the members that are named, in their order; those without a value are 0. */
    putStructure(members, values) {
        const all = { size: members.length * WORD, ...values };
        const words = Uint32Array.from(members, (member) => all[member] ?? 0);
        return this.put(new Uint8Array(words.buffer));
    }

    readStructure(members, at) {
        const words = new Uint32Array(this.exports.memory.buffer, at, members.length);
        return Object.fromEntries(members.map((member, i) => [member, words[i]]));
    }

    /** The text there, ended by a NUL where no length is given; null for a null pointer. */
    text(at, length) {
        const start = at >>> 0;
        if (start === 0) return null;
        const bytes = new Uint8Array(this.exports.memory.buffer, start, length);
        return this.#decoder.decode(length === undefined ? bytes.subarray(0, bytes.indexOf(0)) : bytes);
    }
}

export class Instance {
    #module;
    #running = null;

    constructor(module) {
        this.#module = module;
    }

    /** What `work` makes of the running module. Throws a ModuleError when that fails; the next call works again. */
    run(work) {
        try {
            this.#running ??= new Running(this.#module);
            const made = work(this.#running);
            if (this.#running.size > MOST_KEPT) this.end();
            return made;
        } catch (error) {
            const failed = this.#running;
            this.end();
            // What traps, and what JavaScript throws when a memory, a text or its stack would be too large.
            const isTrap = error instanceof WebAssembly.RuntimeError || error instanceof RangeError;
            if (!isTrap) throw error;
            if (failed === null || failed.isFull) throw outOfMemory();
            throw new ModuleError('stopped', `the module stopped: ${error.message}`);
        }
    }

    /** Gives the memory back. The next call starts anew. */
    end() {
        this.#running = null;
    }
}
