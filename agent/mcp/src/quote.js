// Text of a model or a disk must not look like the gateway's own, so every character that a reader cannot see, that
// moves other characters, or that resembles a quotation mark is shown as its code.

// Controls, format characters (among them the bidirectional ones), line and paragraph separators, private and unassigned
// characters, surrogates, spaces except U+0020, characters without a glyph, enclosing marks.
const unseen = /[\p{Cc}\p{Cf}\p{Zl}\p{Zp}\p{Co}\p{Cn}\p{Cs}\p{Default_Ignorable_Code_Point}\p{Me}\u2800]|(?! )\p{Zs}/u;
const quotationMark = /[\p{Pi}\p{Pf}\u02BA\u02DD\u02EE\u05F4\u201A\u201E\u2033-\u2037\u275B-\u275E\u301D-\u301F\u3003\uFF02]/u;
const combining = /\p{M}/u;
const named = new Map([
    ['\n', '\\n'],
    ['\r', '\\r'],
    ['\t', '\\t'],
    ['"', '\\"'],
    ['\\', '\\\\'],
]);
// More combining marks on one letter cover the lines above and below.
const maxMarks = 3;

/** Characters of a text that are shown; the longest label of the common file systems has 32. */
export const shownLength = 64;

/**
 * The text in quotation marks on one line, with a limited length.
 * @param {unknown} value
 * @param {number} [limit] characters
 */
export function quoted(value, limit = shownLength) {
    const { text, omitted } = escaped(value, limit);
    return `"${text}"${omitted}`;
}

/**
 * The text on one line with a limited length, without quotation marks.
 * @param {unknown} value
 * @param {number} [limit] characters
 */
export function unquoted(value, limit = shownLength) {
    const { text, omitted } = escaped(value, limit);
    return `${text}${omitted}`;
}

/** @param {unknown} value @param {number} limit */
function escaped(value, limit) {
    const whole = String(value);
    // A character has at most two UTF-16 units, so the slice contains all that are shown.
    const characters = [...whole.slice(0, 2 * limit)].slice(0, limit);
    let marks = maxMarks;
    let text = '';
    characters.forEach((character, i) => {
        marks = combining.test(character) ? marks + 1 : 0;
        const hidden =
            unseen.test(character) ||
            quotationMark.test(character) ||
            marks > maxMarks ||
            (character === ' ' && characters[i - 1] === ' ');
        text += named.get(character) ?? (hidden ? code(character) : character);
    });
    const complete = characters.join('').length === whole.length;
    return { text, omitted: complete ? '' : `… (the first ${limit} of ${characterCount(whole)} characters)` };
}

/** @param {string} character */
const code = (character) => `\\u{${(character.codePointAt(0) ?? 0).toString(16).toUpperCase()}}`;

/** @param {string} text */
function characterCount(text) {
    let count = 0;
    for (const _ of text) count++;
    return count.toLocaleString('en-US');
}
