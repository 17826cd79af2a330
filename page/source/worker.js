// The worker: everything that calls the module, and all walks over large texts, so that the page never waits for them.
import { sections, version } from 'k-cnvrt/inline';
import * as questions from './questions.js';

const answers = {
    start: () => ({ version: version(), sections: { new: sections('new'), old: sections('old') } }),
    ...questions,
};

self.onmessage = ({ data: { id, question, about } }) => {
    try {
        self.postMessage({ id, answer: answers[question](about) });
    } catch (error) {
        self.postMessage({ id, failure: error.message });
    }
};
