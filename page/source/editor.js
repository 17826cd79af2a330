// An editor for JSON: what all editors of the page have in common.
import { defaultKeymap, history, historyKeymap } from '@codemirror/commands';
import { json } from '@codemirror/lang-json';
import {
    bracketMatching,
    codeFolding,
    foldGutter,
    foldKeymap,
    indentUnit,
    syntaxHighlighting,
} from '@codemirror/language';
import { lintGutter, setDiagnostics } from '@codemirror/lint';
import { search, searchKeymap } from '@codemirror/search';
import { EditorState } from '@codemirror/state';
import {
    closeHoverTooltips,
    drawSelection,
    EditorView,
    highlightActiveLine,
    highlightActiveLineGutter,
    keymap,
    lineNumbers,
    placeholder,
} from '@codemirror/view';
import { colours, look } from './look.js';
import { markedLines, setMarkedLines } from './marked_lines.js';
import { masks, setSecrets, setShown } from './masks.js';

// More marks than these help nobody, and cost time on every key.
const MOST_MARKS = 1000;

const SEVERITIES = { error: 'error', warning: 'warning', note: 'info' };

export class Editor {
    /** Are called when the cursor may be elsewhere. */
    followers = [];

    /** `onChange` is called after changes; `extensions` are those of this editor alone. */
    constructor(parent, { label, words, isReadOnly = false, onChange = () => {}, extensions = [] }) {
        const updates = EditorView.updateListener.of((update) => {
            if (update.docChanged) onChange();
            if (!update.docChanged && !update.selectionSet && !update.focusChanged) return;
            for (const follow of this.followers) follow();
        });
        this.view = new EditorView({
            parent,
            state: EditorState.create({
                extensions: [
                    lintGutter(),
                    lineNumbers(),
                    codeFolding(),
                    foldGutter({ openText: '⌄', closedText: '›' }),
                    drawSelection(),
                    highlightActiveLine(),
                    highlightActiveLineGutter(),
                    bracketMatching(),
                    isReadOnly ? EditorState.readOnly.of(true) : history(),
                    json(),
                    syntaxHighlighting(colours),
                    look,
                    markedLines,
                    masks,
                    search({ top: true }),
                    placeholder(words),
                    EditorState.tabSize.of(4),
                    indentUnit.of('    '),
                    EditorView.contentAttributes.of({ 'aria-label': label, spellcheck: 'false', tabindex: '0' }),
                    extensions,
                    keymap.of([...searchKeymap, ...historyKeymap, ...foldKeymap, ...defaultKeymap]),
                    updates,
                ],
            }),
        });
    }

    get text() {
        return this.view.state.doc.toString();
    }

    get length() {
        return this.view.state.doc.length;
    }

    /** Another text in place of this one. What both begin and end with stays, and with it cursor and scrolling. */
    replace(text, secrets = null) {
        const changes = smallestChange(this.text, text);
        const effects = secrets === null ? [] : [setSecrets.of(secrets)];
        this.view.dispatch({ changes, effects });
    }

    /**
     * Another text altogether: from its top, and not to be undone into the one before by accident. Its secrets are
     * looked for here unless they are given.
     */
    load(text, secrets = null) {
        this.view.dispatch({
            changes: { from: 0, to: this.length, insert: text },
            effects: secrets === null ? [] : [setSecrets.of(secrets)],
            selection: { anchor: 0 },
            scrollIntoView: true,
            userEvent: 'input.load',
        });
    }

    set secrets(secrets) {
        this.view.dispatch({ effects: setSecrets.of(secrets) });
    }

    set showsSecrets(isShown) {
        this.view.dispatch({ effects: setShown.of(isShown) });
    }

    /** Marks at the places of problems. */
    set problems(problems) {
        const marks = problems.filter(({ offset }) => offset !== null).slice(0, MOST_MARKS);
        const { doc } = this.view.state;
        const diagnostics = marks.map(({ offset, length, severity, message, pointer }) => ({
            from: Math.min(offset, this.length),
            // Of what has many lines the first is enough.
            to: Math.min(offset + length, doc.lineAt(Math.min(offset, this.length)).to),
            severity: SEVERITIES[severity],
            message: pointer ? `${pointer}: ${message}` : message,
        }));
        const wrong = diagnostics.filter(({ severity }) => severity === 'error').map(({ from }) => from);
        this.view.dispatch(setDiagnostics(this.view.state, diagnostics), { effects: setMarkedLines.of(wrong) });
    }

    /** The line and the column of an offset, from 1. */
    placeOf(offset) {
        const line = this.view.state.doc.lineAt(Math.min(offset, this.length));
        return { line: line.number, column: [...line.text.slice(0, offset - line.from)].length + 1 };
    }

    /** Puts the cursor there and shows it. */
    goTo(offset, length = 0) {
        const anchor = Math.min(offset, this.length);
        const head = Math.min(offset + length, this.length);
        this.view.dispatch({
            selection: { anchor: head, head: anchor },
            effects: EditorView.scrollIntoView(anchor, { y: 'center', x: 'nearest', xMargin: 48 }),
        });
        this.view.focus();
    }

    focus() {
        this.view.focus();
    }

    /** Sends away what the resting mouse was told. */
    closeTooltips() {
        this.view.dispatch({ effects: closeHoverTooltips });
    }
}

function smallestChange(old, text) {
    const shorter = Math.min(old.length, text.length);
    let from = 0;
    while (from < shorter && old.charCodeAt(from) === text.charCodeAt(from)) ++from;
    let same = 0;
    while (same < shorter - from && old.charCodeAt(old.length - same - 1) === text.charCodeAt(text.length - same - 1))
        ++same;
    return { from, to: old.length - same, insert: text.slice(from, text.length - same) };
}
