// What the parts of the page share: its editors, what it shows, and what is asked about.
import { byId } from './elements.js';

export const page = {
    name: 'example.old.json',
    note: null,
    isExample: true,
    isFresh: false, // just loaded, and not yet answered
    showsSecrets: false,
    isKept: false, // the result is of an earlier input, since this one cannot be read
    answer: null, // the one that is shown
    made: [], // what the result is, in words
    sections: { new: [], old: [] },
};

/** The editors by their names: input, result, base. */
export const editors = {};

/** What the person wants: the layout to come to, null for the other one, and a section, null for all. */
export function choice() {
    const [to, section] = byId('section').value.split(' ');
    return { to: section === undefined ? byId('towards').value || null : to, section: section ?? null };
}

/** What is converted, and how. */
export function settings() {
    return { text: editors.input.text, ...choice(), showSecrets: page.showsSecrets };
}

/** Whether an editor still has the text that it had when this was called. */
export function unchanged(editor) {
    const { doc } = editor.view.state;
    return () => editor.view.state.doc === doc;
}
