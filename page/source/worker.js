// The worker: everything that calls the module, and all walks over large texts, so that the page never waits for them.
import { layouts } from 'built:layouts';
import { sections, version } from 'k-cnvrt/inline';
import * as advice from './advice.js';
import * as questions from './questions.js';
import { Reference } from './reference.js';

let reference = null;

async function unpacked(text) {
    const bytes = Uint8Array.from(atob(text), (character) => character.charCodeAt(0));
    const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream('deflate-raw'));
    return new Response(stream).json();
}

const advise = (answer) => async (about) => {
    reference ??= new Reference(await unpacked(layouts));
    return answer(reference, about);
};

const answers = {
    start: () => ({ version: version(), sections: { new: sections('new'), old: sections('old') } }),
    ...questions,
    ...Object.fromEntries(Object.entries(advice).map(([name, answer]) => [name, advise(answer)])),
};

self.onmessage = async ({ data: { id, question, about } }) => {
    try {
        self.postMessage({ id, answer: await answers[question](about) });
    } catch (error) {
        self.postMessage({ id, failure: error.message });
    }
};
