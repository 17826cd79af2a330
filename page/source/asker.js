// One worker, and what is asked of it: one question at a time, and of those that wait only the latest.
import { workerText } from 'built:worker';

// A question that nobody waits for any more holds up the next for this long at most, in milliseconds.
const PATIENCE = 2000;

/** The answer is not wanted any more, since something else was asked after it. */
export const SUPERSEDED = Symbol('superseded');

export class Asker {
    #address = URL.createObjectURL(new Blob([workerText], { type: 'text/javascript' }));
    #worker = null;
    #asked = null;
    #waiting = null;
    #count = 0;

    /** The answer to a question, or SUPERSEDED. Fails when the worker does. */
    ask(question, about) {
        return new Promise((resolve, reject) => {
            this.#waiting?.resolve(SUPERSEDED);
            this.#waiting = { id: ++this.#count, question, about, resolve, reject };
            if (this.#asked === null) this.#next();
            else this.#hurry();
        });
    }

    #next() {
        this.#asked = this.#waiting;
        this.#waiting = null;
        if (this.#asked === null) return;
        this.#worker ??= this.#start();
        const { id, question, about } = this.#asked;
        this.#worker.postMessage({ id, question, about });
    }

    // A long answer that has been overtaken is given up, and its worker with it.
    #hurry() {
        const overtaken = this.#asked;
        setTimeout(() => {
            if (this.#asked !== overtaken || this.#waiting === null) return;
            this.#end();
            overtaken.resolve(SUPERSEDED);
            this.#next();
        }, PATIENCE);
    }

    #start() {
        const worker = new Worker(this.#address);
        worker.onmessage = ({ data: { id, answer, failure } }) => {
            const asked = this.#asked;
            if (asked === null || asked.id !== id) return;
            if (failure !== undefined) asked.reject(new Error(failure));
            else asked.resolve(this.#waiting === null ? answer : SUPERSEDED);
            this.#next();
        };
        worker.onerror = (event) => {
            event.preventDefault();
            const asked = this.#asked;
            this.#end();
            asked?.reject(new Error(event.message ?? 'the worker does not start'));
            this.#next();
        };
        return worker;
    }

    #end() {
        this.#worker?.terminate();
        this.#worker = null;
    }
}
