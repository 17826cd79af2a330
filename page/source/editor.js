// An editor for JSON: what all editors of the page have in common.
import { defaultKeymap, history, historyKeymap } from '@codemirror/commands';
import { json } from '@codemirror/lang-json';
import {
    bracketMatching,
    codeFolding,
    foldGutter,
    foldKeymap,
    HighlightStyle,
    indentUnit,
    syntaxHighlighting,
} from '@codemirror/language';
import { lintGutter, setDiagnostics } from '@codemirror/lint';
import { search, searchKeymap } from '@codemirror/search';
import { EditorState } from '@codemirror/state';
import {
    drawSelection,
    EditorView,
    highlightActiveLine,
    highlightActiveLineGutter,
    keymap,
    lineNumbers,
    placeholder,
} from '@codemirror/view';
import { tags } from '@lezer/highlight';
import { masks, setSecrets, setShown } from './masks.js';

// More marks than these help nobody, and cost time on every key.
const MOST_MARKS = 1000;

const look = EditorView.theme({
    '&': { color: 'var(--ink)', backgroundColor: 'var(--paper)', fontSize: '0.8125rem' },
    '&.cm-focused': { outline: 'none' },
    '&.cm-focused .cm-gutters': { boxShadow: 'inset 2px 0 0 var(--accent)' },
    '.cm-scroller': { fontFamily: 'var(--mono)', lineHeight: '1.55' },
    '.cm-gutters': { backgroundColor: 'var(--paper)', color: 'var(--soft)', border: 'none', paddingLeft: '2px' },
    '.cm-lineNumbers .cm-gutterElement': { paddingLeft: '0.5rem', minWidth: '2.5rem' },
    '.cm-activeLine, .cm-activeLineGutter': { backgroundColor: 'transparent' },
    '&.cm-focused .cm-activeLine, &.cm-focused .cm-activeLineGutter': { backgroundColor: 'var(--ground)' },
    '.cm-cursor': { borderLeftColor: 'var(--accent)', borderLeftWidth: '2px' },
    '.cm-selectionBackground, &.cm-focused > .cm-scroller > .cm-selectionLayer .cm-selectionBackground': {
        backgroundColor: 'var(--chosen)',
    },
    '.cm-matchingBracket, &.cm-focused .cm-matchingBracket': {
        backgroundColor: 'transparent',
        outline: '1px solid var(--soft)',
        borderRadius: '2px',
    },
    '.cm-nonmatchingBracket, &.cm-focused .cm-nonmatchingBracket': { backgroundColor: 'transparent' },
    '.cm-mask': {
        color: 'var(--soft)',
        backgroundColor: 'var(--ground)',
        border: '1px solid var(--line)',
        borderRadius: '3px',
        padding: '0 0.25rem',
    },
    '.cm-placeholder': { color: 'var(--soft)' },
    '.cm-foldGutter .cm-gutterElement': { cursor: 'pointer', color: 'var(--soft)', padding: '0 0.25rem 0 0.125rem' },
    '.cm-foldPlaceholder': {
        backgroundColor: 'var(--ground)',
        border: '1px solid var(--line)',
        color: 'var(--soft)',
        padding: '0 0.25rem',
    },
    '.cm-panels': { backgroundColor: 'var(--ground)', color: 'var(--ink)', borderColor: 'var(--line)' },
    '.cm-panels .cm-textfield': {
        backgroundColor: 'var(--paper)',
        border: '1px solid var(--line)',
        color: 'var(--ink)',
        borderRadius: '0.25rem',
    },
    '.cm-panels .cm-button': {
        backgroundImage: 'none',
        backgroundColor: 'var(--raised)',
        border: '1px solid var(--line)',
        borderRadius: '0.25rem',
    },
    '.cm-panel.cm-search [name="close"]': { color: 'var(--soft)', fontSize: '1rem', padding: '0 0.375rem' },
    '.cm-searchMatch': { backgroundColor: 'var(--caution-ground)', outline: '1px solid var(--caution)' },
    '.cm-searchMatch-selected': { backgroundColor: 'var(--chosen)' },
    '.cm-tooltip': {
        backgroundColor: 'var(--raised)',
        color: 'var(--ink)',
        border: '1px solid var(--line)',
        borderRadius: '0.375rem',
        boxShadow: 'var(--shadow)',
        maxWidth: 'min(34rem, 90vw)',
    },
    '.cm-tooltip .member': { padding: '0.5rem 0.75rem', fontFamily: 'var(--sans)', lineHeight: '1.45' },
    '.cm-tooltip-hover': { maxHeight: '20rem', overflowY: 'auto' },
    '.cm-tooltip.cm-tooltip-autocomplete > ul': { fontFamily: 'var(--mono)', maxHeight: '15rem', minWidth: '14rem' },
    '.cm-tooltip.cm-tooltip-autocomplete > ul > li': { padding: '0.1875rem 0.625rem', display: 'flex', gap: '1rem' },
    '.cm-tooltip-autocomplete > ul > li[aria-selected]': {
        backgroundColor: 'var(--chosen)',
        color: 'var(--ink)',
        boxShadow: 'inset 2px 0 0 var(--accent)',
    },
    '.cm-tooltip-autocomplete > ul > li[aria-selected] .cm-completionDetail': { color: 'var(--ink)' },
    '.cm-completionMatchedText': { textDecoration: 'none', fontWeight: '700' },
    '.cm-completionDetail': {
        marginLeft: 'auto',
        color: 'var(--soft)',
        fontStyle: 'normal',
        fontFamily: 'var(--sans)',
    },
    '.cm-tooltip.cm-completionInfo': {
        padding: '0',
        maxWidth: 'min(26rem, 90vw)',
        maxHeight: '20rem',
        overflowY: 'auto',
    },
    '.cm-diagnostic': { padding: '0.375rem 0.625rem', fontFamily: 'var(--sans)', borderLeftWidth: '3px' },
    '.cm-diagnostic-error': { borderLeftColor: 'var(--bad)' },
    '.cm-diagnostic-warning': { borderLeftColor: 'var(--caution)' },
    '.cm-diagnostic-info': { borderLeftColor: 'var(--accent)' },
    '.cm-lintRange': {
        backgroundImage: 'none',
        textDecorationLine: 'underline',
        textDecorationThickness: '2px',
        textUnderlineOffset: '3px',
    },
    '.cm-lintRange-error': { textDecorationStyle: 'wavy', textDecorationColor: 'var(--bad)' },
    '.cm-lintRange-warning': { textDecorationStyle: 'dashed', textDecorationColor: 'var(--caution)' },
    '.cm-lintRange-info': { textDecorationStyle: 'dotted', textDecorationColor: 'var(--accent)' },
    '.cm-lintRange-active': { backgroundColor: 'var(--caution-ground)' },
    '.cm-asked': { outline: '1.5px solid var(--partner)', borderRadius: '3px' },
    '.cm-partner': {
        outline: '1.5px solid var(--partner)',
        borderRadius: '3px',
        backgroundColor: 'var(--partner-ground)',
        fontWeight: '600',
    },
    '.cm-links .cm-gutterElement': { color: 'var(--partner)', fontSize: '0.625rem', padding: '0 0.125rem' },
    '.cm-gutter-lint': { width: '1.125rem' },
    '.cm-gutter-lint .cm-gutterElement': { padding: '0 0.125rem' },
    '.cm-lint-marker': {
        width: '0.875rem',
        height: '1.25rem',
        textAlign: 'center',
        fontWeight: '700',
        fontFamily: 'var(--sans)',
        fontSize: '0.75rem',
    },
    '.cm-lint-marker-error': { content: 'normal', color: 'var(--bad)' },
    '.cm-lint-marker-warning': { content: 'normal', color: 'var(--caution)' },
    '.cm-lint-marker-info': { content: 'normal', color: 'var(--accent)' },
    '.cm-lint-marker-error::before': { content: '"✕"' },
    '.cm-lint-marker-warning::before': { content: '"!"' },
    '.cm-lint-marker-info::before': { content: '"i"' },
});

const colours = HighlightStyle.define([
    { tag: tags.propertyName, color: 'var(--name)' },
    { tag: tags.string, color: 'var(--text)' },
    { tag: tags.number, color: 'var(--number)' },
    { tag: [tags.bool, tags.null], color: 'var(--literal)' },
    { tag: [tags.punctuation, tags.separator, tags.bracket], color: 'var(--soft)' },
]);

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

    /** Another text altogether: from its top, and not to be undone into the one before by accident. */
    load(text) {
        this.view.dispatch({
            changes: { from: 0, to: this.length, insert: text },
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
        const diagnostics = marks.map(({ offset, length, severity, message, pointer }) => ({
            from: Math.min(offset, this.length),
            to: Math.min(offset + length, this.length),
            severity: SEVERITIES[severity],
            message: pointer ? `${pointer}: ${message}` : message,
        }));
        this.view.dispatch(setDiagnostics(this.view.state, diagnostics));
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
