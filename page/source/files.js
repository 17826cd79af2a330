// Texts from files and into files, and into the clipboard.

// Beyond this no browser's editor is a help.
const LARGEST = 64e6;

const BYTE_ORDER_MARK = '\ufeff';

export class NotText extends Error {}

function refusal(name, bytes) {
    if (bytes[0] === 0x1f && bytes[1] === 0x8b) return `${name} is compressed by gzip: unpack it first`;
    if (bytes[0] === 0x50 && bytes[1] === 0x4b) return `${name} is a ZIP archive: unpack it first`;
    if ((bytes[0] === 0xff && bytes[1] === 0xfe) || (bytes[0] === 0xfe && bytes[1] === 0xff))
        return `${name} is in UTF-16: save it as UTF-8`;
    return `${name} is not a text in UTF-8`;
}

async function bytesOf(file) {
    try {
        return new Uint8Array(await file.arrayBuffer());
    } catch {
        throw new NotText(`${file.name} cannot be read: it is a folder, or not there any more`);
    }
}

/** { name, text, note } of a file, where the note is null or says what was changed. Fails with NotText. */
export async function readFile(file) {
    if (file.size > LARGEST) throw new NotText(`${file.name} has ${Math.round(file.size / 1e6)} MB: kcnvrt takes it`);
    const bytes = await bytesOf(file);
    let text;
    try {
        text = new TextDecoder('utf-8', { fatal: true, ignoreBOM: true }).decode(bytes);
    } catch {
        throw new NotText(refusal(file.name, bytes));
    }
    if (text === '' || text === BYTE_ORDER_MARK) throw new NotText(`${file.name} is empty`);
    if (!text.startsWith(BYTE_ORDER_MARK)) return { name: file.name, text, note: null };
    return {
        name: file.name,
        text: text.slice(1),
        note: 'The file began with a byte-order mark, which is left out here.',
    };
}

/** gateway.old.json, converted to new: gateway.new.json */
export function resultName(name, layout, { isIncomplete = false, what = null } = {}) {
    const stem = (name ?? 'configuration').replace(/\.json$/i, '').replace(/\.(old|new)$/i, '');
    return [stem, what, isIncomplete ? 'incomplete' : null, layout, 'json'].filter((part) => part !== null).join('.');
}

export function saveFile(name, text) {
    const address = URL.createObjectURL(new Blob([text], { type: 'application/json' }));
    const link = document.createElement('a');
    link.href = address;
    link.download = name;
    link.click();
    setTimeout(() => URL.revokeObjectURL(address), 60_000);
}

/** Whether the text is in the clipboard now. */
export async function copyText(text) {
    try {
        await navigator.clipboard.writeText(text);
        return true;
    } catch {
        return copyByCommand(text);
    }
}

// Where a page opened from a file may not use the clipboard.
function copyByCommand(text) {
    const area = document.createElement('textarea');
    const focused = document.activeElement;
    area.value = text;
    document.body.append(area);
    area.select();
    const isCopied = document.execCommand('copy');
    area.remove();
    focused?.focus();
    return isCopied;
}
